#include "Picture.h"

#include <algorithm>
#include <cmath>

namespace raytracer
{

namespace
{

/// Brings any light below 1, with soft shadows and highlights. Narkowicz, "ACES Filmic Tone Mapping Curve", 2016.
float Compress(float light)
{
    constexpr float EXPOSURE = 0.55F;
    float const x = light * EXPOSURE;
    return x * (2.51F * x + 0.03F) / (x * (2.43F * x + 0.59F) + 0.14F);
}

/// The curve of sRGB, IEC 61966-2-1, as a byte.
std::uint8_t Encode(float light)
{
    float const linear = light > 0 ? std::min(light, 1.0F) : 0; // 0 also for what is not a number
    float const encoded = linear <= 0.0031308F ? 12.92F * linear : 1.055F * std::pow(linear, 1 / 2.4F) - 0.055F;
    return static_cast<std::uint8_t>(encoded * 255 + 0.5F);
}

} // namespace

void Picture::SetPixel(Tuple2u const& pixel, Colour const& light)
{
    std::size_t const at = 3 * (std::size_t{pixel.y} * size_.x + pixel.x);
    bytes_[at] = Encode(Compress(light.x));
    bytes_[at + 1] = Encode(Compress(light.y));
    bytes_[at + 2] = Encode(Compress(light.z));
}

std::size_t Picture::CountDifferences(Picture const& other) const
{
    std::size_t count = 0;
    for (std::size_t at = 0; at < bytes_.size(); at += 3)
        count += std::equal(&bytes_[at], &bytes_[at] + 3, &other.bytes_[at]) ? 0U : 1U;
    return count;
}

} // namespace raytracer
