// Swatches of noise.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <emscripten/bind.h>
#include <emscripten/val.h>

#include "bv/maths/Batch.h"
#include "bv/maths/Noise.h"
#include "bv/maths/tVector3.h"

namespace live
{

namespace
{

using bv::maths::Vector3f;

/// A square of grey pixels, and the values that it shows.
class Swatch
{
public:
    explicit Swatch(unsigned side) : side_(side), points_(side * side), values_(side * side), pixels_(4 * side * side)
    {
    }

    /// Evaluates the turbulence in a slice of space.
    ///
    /// @param cells of the noise from one side to the other.
    /// @param depth of the slice.
    void Evaluate(double cells, double depth, unsigned octaves)
    {
        float const step = static_cast<float>(cells) / static_cast<float>(side_);
        for (unsigned y = 0; y < side_; ++y)
        {
            for (unsigned x = 0; x < side_; ++x)
                points_[y * side_ + x] = {(static_cast<float>(x) + 0.5F) * step, (static_cast<float>(y) + 0.5F) * step,
                                          static_cast<float>(depth)};
        }
        bv::maths::EvaluateTurbulence3(points_, octaves, values_);
    }

    /// The values as grey, or as stripes that they displace.
    [[nodiscard]] emscripten::val GetPixels(bool asStripes)
    {
        for (std::size_t i = 0; i < values_.size(); ++i)
        {
            constexpr float STRIPES = 6;
            float const across = STRIPES * (static_cast<float>(i % side_) / static_cast<float>(side_) + 2 * values_[i]);
            float const shade = asStripes ? std::abs(2 * (across - std::floor(across)) - 1) : values_[i];
            auto const grey = static_cast<std::uint8_t>(std::clamp(shade, 0.0F, 1.0F) * 255 + 0.5F);
            std::fill_n(&pixels_[4 * i], 3, grey);
            pixels_[4 * i + 3] = 255;
        }
        return emscripten::val(emscripten::typed_memory_view(pixels_.size(), pixels_.data()));
    }

private:
    unsigned side_;
    std::vector<Vector3f> points_;
    std::vector<float> values_;
    std::vector<std::uint8_t> pixels_;
};

double GetTurbulence(double x, double y, double z, unsigned octaves)
{
    Vector3f const point(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    return static_cast<double>(bv::maths::Turbulence3(point, octaves));
}

} // namespace

} // namespace live

EMSCRIPTEN_BINDINGS(noise)
{
    emscripten::class_<live::Swatch>("Swatch")
        .constructor<unsigned>()
        .function("evaluate", &live::Swatch::Evaluate)
        .function("getPixels", &live::Swatch::GetPixels);
    emscripten::function("getTurbulence", &live::GetTurbulence);
}
