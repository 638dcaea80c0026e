#include "Shader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "bv/maths/LocalAxes.h"
#include "bv/maths/PositionOffset.h"
#include "bv/maths/Scalar.h"

namespace raytracer
{

namespace
{

constexpr Colour SUNLIGHT(2.1F, 1.85F, 1.5F);
constexpr float SUN_RADIUS = 0.06F;  // much larger than the real one, for softer shadows
constexpr float SKY_REACH = 1.6F;    // what is farther away takes no light from the sky
constexpr float SUN_REACH = 12;      // what is farther away casts no shadow
constexpr float BLURRED = 0.35F;     // radians of sky that one ray to it stands for
constexpr float HAZE_WIDTH = 0.01F;  // radians of sky at the horizon that the far floor fades into
constexpr unsigned MOST_MIRRORS = 3; // how often light is followed through mirrors

/// Two numbers from 0 to 1 that, with the index, fill the square evenly. Roberts, "The Unreasonable Effectiveness of
/// Quasirandom Sequences", 2018.
Vector2f GetEven(float shiftX, float shiftY, unsigned index)
{
    auto const fraction = [](double number) { return static_cast<float>(number - std::floor(number)); };
    return {fraction(static_cast<double>(shiftX) + index * 0.7548776662466927),
            fraction(static_cast<double>(shiftY) + index * 0.5698402909980532)};
}

/// Three axes at right angles, the last one given.
struct Axes
{
    explicit Axes(Vector3f const& axis) : third(axis) { bv::maths::EvaluateLocalAxes(third, first, second); }

    /// A direction whose end lies on a disc around the third axis: evenly, if the square is filled evenly.
    [[nodiscard]] Vector3f GetDirection(Vector2f const& square, float discRadius) const
    {
        float const angle = 2 * std::numbers::pi_v<float> * square.x;
        float const radius = discRadius * std::sqrt(square.y);
        return first * (radius * std::cos(angle)) + second * (radius * std::sin(angle)) +
               third * std::sqrt(std::max(0.0F, 1 - radius * radius));
    }

    Vector3f first;
    Vector3f second;
    Vector3f third;
};

/// Schlick, "An Inexpensive BRDF Model for Physically-Based Rendering", 1994.
float GetMirroredShare(float gloss, float cosine)
{
    float const rest = std::clamp(1 - cosine, 0.0F, 1.0F);
    float const square = rest * rest;
    return gloss + (1 - gloss) * square * square * rest;
}

Vector3f Reflect(Vector3f const& vector, Vector3f const& normal)
{
    return vector - normal * (2 * vector.Dot(normal));
}

/// Igehy, "Tracing Ray Differentials", 1999.
Vector3f ReflectChange(Vector3f const& vector, Vector3f const& change, Vector3f const& normal,
                       Vector3f const& normalChange)
{
    float const cosineChange = change.Dot(normal) + vector.Dot(normalChange);
    return change - (normalChange * vector.Dot(normal) + normal * cosineChange) * 2.0F;
}

} // namespace

Shader::Shader(Scene const& scene, Tracer& tracer, unsigned skyRays)
    : scene_(scene),
      tracer_(tracer),
      skyRays_(skyRays),
      blurred_(scene.GetSky().GetLevel(BLURRED)),
      haze_(scene.GetSky().GetLevel(HAZE_WIDTH))
{
}

Colour Shader::GetLight(DepthRayf const& ray, Hit const& hit, Spread const& spread, unsigned mirrors)
{
    if (hit.what == Hit::What::Nothing)
    {
        Differential3f const change(ray.dDirectionDu, ray.dDirectionDv);
        return scene_.GetSky().GetLight(ray.direction, scene_.GetSky().GetLevel(change.GetRadius()));
    }
    Surface const surface = scene_.GetSurface(ray, hit);
    Colour const light = surface.colour * (GetSkyLight(surface, spread) + GetSunLight(surface, spread));
    if (hit.what == Hit::What::Floor)
    {
        Vector3f const ahead = Vector3f(ray.direction.x, 0, ray.direction.z).Normalised();
        Colour const haze = scene_.GetSky().GetLight(ahead, haze_);
        return light + (haze - light) * bv::maths::SmoothStep(6.0F, 40.0F, hit.distance);
    }
    if (!(surface.gloss > 0))
        return light;
    float const share = GetMirroredShare(surface.gloss, -ray.direction.Dot(surface.normal));
    return light * (1 - share) + GetMirrored(ray, surface, spread, mirrors) * share;
}

/// Light from all over the sky: the mean over directions that are spread by the cosine of their angle to the normal.
Colour Shader::GetSkyLight(Surface const& surface, Spread const& spread)
{
    Sky const& sky = scene_.GetSky();
    if (skyRays_ == 0)
    {
        Colour const above = sky.GetLight({0, 1, 0}, blurred_);
        Colour const below = sky.GetLight({0, -1, 0}, blurred_);
        return below + (above - below) * (0.5F + 0.5F * surface.normal.y);
    }
    Vector3f const start = bv::maths::GetPositionOffset(surface.start, surface.face);
    Axes const axes(surface.normal);
    rays_.clear();
    for (unsigned i = 0; i < skyRays_; ++i)
    {
        Vector2f const square = GetEven(spread.shift.x, spread.shift.y, spread.first * skyRays_ + i);
        rays_.emplace_back(start, axes.GetDirection(square, 1));
    }
    hits_.assign(rays_.size(), Hit{.distance = SKY_REACH});
    tracer_.FindBlocked(rays_, hits_);

    Colour sum;
    for (std::size_t i = 0; i < rays_.size(); ++i)
    {
        if (hits_[i].distance > 0)
            sum += sky.GetLight(rays_[i].direction, blurred_);
    }
    return sum / static_cast<float>(skyRays_);
}

/// Light from the disc of the sun, as much of it as can be seen.
Colour Shader::GetSunLight(Surface const& surface, Spread const& spread)
{
    float const cosine = surface.normal.Dot(SUN);
    if (!(cosine > 0))
        return {};
    if (skyRays_ == 0)
        return SUNLIGHT * cosine;
    unsigned const sunRays = (skyRays_ + 3) / 4;
    Vector3f const start = bv::maths::GetPositionOffset(surface.start, surface.face);
    static Axes const axes(SUN);
    rays_.clear();
    for (unsigned i = 0; i < sunRays; ++i)
    {
        Vector2f const square = GetEven(spread.shift.y, spread.shift.z, spread.first * sunRays + i);
        rays_.emplace_back(start, axes.GetDirection(square, SUN_RADIUS));
    }
    hits_.assign(rays_.size(), Hit{.distance = SUN_REACH});
    tracer_.FindBlocked(rays_, hits_);
    auto const free = std::ranges::count_if(hits_, [](Hit const& hit) { return hit.distance > 0; });
    return SUNLIGHT * (cosine * static_cast<float>(free) / static_cast<float>(sunRays));
}

Colour Shader::GetMirrored(DepthRayf const& ray, Surface const& surface, Spread const& spread, unsigned mirrors)
{
    DepthRayf mirrored(bv::maths::GetPositionOffset(surface.start, surface.face),
                       Reflect(ray.direction, surface.normal));
    mirrored.dOriginDu = surface.footprint[Differential3f::DIFF_U];
    mirrored.dOriginDv = surface.footprint[Differential3f::DIFF_V];
    mirrored.dDirectionDu =
        ReflectChange(ray.direction, ray.dDirectionDu, surface.normal, surface.normalChange[Differential3f::DIFF_U]);
    mirrored.dDirectionDv =
        ReflectChange(ray.direction, ray.dDirectionDv, surface.normal, surface.normalChange[Differential3f::DIFF_V]);
    Hit const hit = mirrors < MOST_MIRRORS ? tracer_.FindClosest(mirrored) : Hit{};
    return GetLight(mirrored, hit, spread, mirrors + 1);
}

} // namespace raytracer
