#include "Textures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "bv/maths/Componentwise.h"
#include "bv/maths/Noise.h"
#include "bv/maths/Scalar.h"
#include "bv/maths/tMatrix4.h"

namespace raytracer
{

namespace
{

/// How much of a pattern of period 1 is left when it is averaged over a width.
float GetContrast(float width)
{
    return 1 - bv::maths::CubicSmoothStep(0.3F, 1.0F, width);
}

/// Turbulence with as many octaves as are wider than twice the footprint; the last one fades in.
float GetTurbulence(Vector3f const& point, float radius)
{
    constexpr float MOST_OCTAVES = 8;
    constexpr float MEAN = 0.5F;
    float const octaves = std::clamp(-bv::maths::Log2(2 * radius, 1.0F / 64), 0.0F, MOST_OCTAVES);
    auto const whole = static_cast<unsigned>(octaves);
    float const coarse = whole > 0 ? bv::maths::Turbulence3(point, whole) : MEAN;
    return bv::maths::Lerp(coarse, bv::maths::Turbulence3(point, whole + 1), octaves - static_cast<float>(whole));
}

/// Mean of the squares that cover a stretch of one axis, +1 and -1 in turn (the integral of a square wave is a triangle
/// wave).
float GetMeanSquare(float middle, float width)
{
    auto const integral = [](float x) { return std::abs(bv::maths::SawTooth(x, 2.0F) - 1); };
    return (integral(middle - width / 2) - integral(middle + width / 2)) / width;
}

} // namespace

Colour GetMarble(Vector3f const& point, Differential3f const& footprint)
{
    Colour const stone(0.74F, 0.72F, 0.68F);
    Colour const vein(0.16F, 0.19F, 0.24F);
    constexpr float SCALE = 2.2F;
    constexpr float VEINS = 1.1F;
    constexpr float DISTORTION = 5;
    float const radius = footprint.GetRadius() * SCALE;
    float const twist = DISTORTION * (GetTurbulence(point * SCALE, radius) - 0.5F);
    float const phase = VEINS * SCALE * (0.7F * point.y + 0.5F * point.x + 0.3F * point.z) + twist;
    float const wave = 1 - std::abs(std::sin(std::numbers::pi_v<float> * phase));
    float const share = wave * wave * wave;
    constexpr float MEAN_SHARE = 0.15F;
    float const contrast = GetContrast(radius * (VEINS + DISTORTION));
    return Lerp(stone, vein, bv::maths::Lerp(MEAN_SHARE, share, contrast));
}

Colour GetWood(Vector3f const& point, Differential3f const& footprint)
{
    Colour const early(0.64F, 0.40F, 0.20F);
    Colour const late(0.30F, 0.14F, 0.055F);
    constexpr float RINGS = 16;
    constexpr float WOBBLE = 0.12F;
    static Matrix4f const tilt = Matrix4f::RotateAxis({}, {1, 0, 0.6F}, 0.35F);
    Vector3f const p = point.TransformedAsVector(tilt);
    Differential3f const spread = footprint.TransformedAsVector(tilt);
    float const radius = spread.GetRadius();

    float const wobble = WOBBLE * (GetTurbulence(p * 1.5F, radius * 1.5F) - 0.5F);
    float const distance = RINGS * (std::sqrt(p.x * p.x + p.z * p.z) + wobble);
    float const ring = bv::maths::SawTooth(distance, 1.0F);
    float const share = bv::maths::QuinticSmoothStep(0.1F, 0.85F, ring) - bv::maths::SmoothStep(0.85F, 1.0F, ring);
    constexpr float MEAN_SHARE = 0.45F;
    float const contrast = GetContrast(radius * RINGS);

    Vector3f const along(60, 3, 60); // fibres run along the axis
    Differential3f const fibreSpread = spread * along;
    float const fibre = GetTurbulence(p * along, fibreSpread.GetRadius()) - 0.5F;
    return Lerp(early, late, std::clamp(bv::maths::Lerp(MEAN_SHARE, share, contrast) + fibre * 0.6F, 0.0F, 1.0F));
}

Colour GetChecker(Vector3f const& point, Differential3f const& footprint)
{
    Colour const light(0.62F, 0.60F, 0.56F);
    Colour const dark(0.13F, 0.15F, 0.18F);
    constexpr float SQUARES = 1.6F; // a unit
    constexpr float LEAST_WIDTH = 1e-3F;
    Vector3f const p = point * SQUARES;
    Vector3f const u = footprint[Differential3f::DIFF_U] * SQUARES;
    Vector3f const v = footprint[Differential3f::DIFF_V] * SQUARES;
    float const x = GetMeanSquare(p.x, std::max(LEAST_WIDTH, std::abs(u.x) + std::abs(v.x)));
    float const z = GetMeanSquare(p.z, std::max(LEAST_WIDTH, std::abs(u.z) + std::abs(v.z)));
    return Lerp(dark, light, 0.5F - 0.5F * x * z);
}

} // namespace raytracer
