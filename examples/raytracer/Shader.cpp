#include "Shader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "bv/maths/Componentwise.h"
#include "bv/maths/Direction.h"
#include "bv/maths/PositionOffset.h"
#include "bv/maths/Sampling.h"
#include "bv/maths/Scalar.h"

namespace raytracer
{

namespace
{

constexpr Colour SUNLIGHT(2.1F, 1.85F, 1.5F);
constexpr float SUN_COSINE = 0.9982F; // of its radius, much larger than the real one, for softer shadows
constexpr float SKY_REACH = 1.6F;     // what is farther away takes no light from the sky
constexpr float TO_FLOOR = 0.999F;    // of the way there, where nothing but the floor is in the way
constexpr float SUN_REACH = 12;       // what is farther away casts no shadow
constexpr float BLURRED = 0.35F;      // radians of sky that one ray to it stands for
constexpr float HAZE_WIDTH = 0.01F;   // radians of sky at the horizon that the far floor fades into
constexpr unsigned MOST_MIRRORS = 3;  // how often light is followed through mirrors

/// A point of the unit square, each for itself and all together spread evenly.
Vector2f GetSquare(unsigned index, Vector2f const& shift)
{
    return ShiftAround(bv::maths::GetR2Point<float>(index), shift);
}

/// Schlick, "An Inexpensive BRDF Model for Physically-Based Rendering", 1994.
float GetMirroredShare(float gloss, float cosine)
{
    float const rest = std::clamp(1 - cosine, 0.0F, 1.0F);
    float const square = rest * rest;
    return gloss + (1 - gloss) * square * square * rest;
}

/// The normal of a surface as a mirror. Where a smooth normal leads what it mirrors below the triangle, it is bent
/// until that comes from as far above it; so it faces the ray, too.
Vector3f GetMirrorNormal(Vector3f const& direction, Surface const& surface)
{
    Vector3f const mirrored = Reflect(direction, surface.normal);
    if (mirrored.Dot(surface.face) >= 0)
        return surface.normal;
    return (Reflect(mirrored, surface.face) - direction).Normalised();
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
        return Lerp(light, haze, bv::maths::SmoothStep(6.0F, 40.0F, hit.distance));
    }
    if (!(surface.gloss > 0))
        return light;
    Vector3f const normal = GetMirrorNormal(ray.direction, surface);
    float const share = GetMirroredShare(surface.gloss, -ray.direction.Dot(normal));
    return Lerp(light, GetMirrored(ray, surface, normal, spread, mirrors), share);
}

/// Light from all over the sky and from the floor: the mean over directions, which are as dense as the cosine of their
/// angle to the normal weighs them.
Colour Shader::GetSkyLight(Surface const& surface, Spread const& spread)
{
    Sky const& sky = scene_.GetSky();
    if (skyRays_ == 0)
    {
        Colour const above = sky.GetLight({0, 1, 0}, blurred_);
        Colour const below = sky.GetLight({0, -1, 0}, blurred_);
        return Lerp(below, above, 0.5F + 0.5F * surface.normal.y);
    }
    Vector3f const start = bv::maths::GetPositionOffset(surface.start, surface.face);
    rays_.clear();
    hits_.clear();
    for (unsigned i = 0; i < skyRays_; ++i)
    {
        Vector2f const square = GetSquare(spread.first * skyRays_ + i, {spread.shift.x, spread.shift.y});
        rays_.emplace_back(start, SquareToCosineHemisphere(square, surface.normal));
        hits_.push_back({.distance = std::min(SKY_REACH, scene_.GetFloorDistance(rays_.back()) * TO_FLOOR)});
    }
    tracer_.FindBlocked(rays_, hits_);

    Colour sum;
    places_.clear();
    for (std::size_t i = 0; i < rays_.size(); ++i)
    {
        if (hits_[i].distance < 0)
            continue;
        if (hits_[i].distance < SKY_REACH)
            places_.push_back(rays_[i].origin + rays_[i].direction * hits_[i].distance);
        else
            sum += sky.GetLight(rays_[i].direction, blurred_);
    }
    return (sum + GetFloorLight()) / static_cast<float>(skyRays_);
}

/// What the floor sends up from all the places together. Where the sun does not reach it, about half of the sky does
/// not, either.
Colour Shader::GetFloorLight()
{
    if (places_.empty())
        return {};
    rays_.clear();
    for (Vector3f const& place : places_)
        rays_.emplace_back(place, SUN);
    hits_.assign(rays_.size(), Hit{.distance = SUN_REACH});
    tracer_.FindBlocked(rays_, hits_);
    auto const isLit = [](Hit const& hit) { return hit.distance > 0; };
    auto const lit = static_cast<float>(std::count_if(hits_.begin(), hits_.end(), isLit));
    auto const dark = static_cast<float>(places_.size()) - lit;
    Colour const sky = scene_.GetSky().GetLight({0, 1, 0}, blurred_);
    return scene_.GetFloorColour() * (SUNLIGHT * (SUN.y * lit) + sky * (lit + 0.5F * dark));
}

/// Light from the disc of the sun, as much of it as can be seen: the mean over directions, which are spread evenly, so
/// that each weighs its cosine.
Colour Shader::GetSunLight(Surface const& surface, Spread const& spread)
{
    if (skyRays_ == 0)
        return SUNLIGHT * std::max(0.0F, surface.normal.Dot(SUN));
    unsigned const sunRays = (skyRays_ + 3) / 4;
    Vector3f const start = bv::maths::GetPositionOffset(surface.start, surface.face);
    rays_.clear();
    for (unsigned i = 0; i < sunRays; ++i)
    {
        Vector2f const square = GetSquare(spread.first * sunRays + i, {spread.shift.y, spread.shift.z});
        Vector3f const direction = SquareToCone(square, SUN, SUN_COSINE);
        if (surface.normal.Dot(direction) > 0)
            rays_.emplace_back(start, direction);
    }
    hits_.assign(rays_.size(), Hit{.distance = SUN_REACH});
    tracer_.FindBlocked(rays_, hits_);
    float sum = 0;
    for (std::size_t i = 0; i < rays_.size(); ++i)
    {
        if (hits_[i].distance > 0)
            sum += surface.normal.Dot(rays_[i].direction);
    }
    return SUNLIGHT * (sum / static_cast<float>(sunRays));
}

Colour Shader::GetMirrored(DepthRayf const& ray, Surface const& surface, Vector3f const& normal, Spread const& spread,
                           unsigned mirrors)
{
    DepthRayf mirrored(bv::maths::GetPositionOffset(surface.start, surface.face), Reflect(ray.direction, normal));
    mirrored.dOriginDu = surface.footprint[Differential3f::DIFF_U];
    mirrored.dOriginDv = surface.footprint[Differential3f::DIFF_V];
    mirrored.dDirectionDu =
        ReflectChange(ray.direction, ray.dDirectionDu, normal, surface.normalChange[Differential3f::DIFF_U]);
    mirrored.dDirectionDv =
        ReflectChange(ray.direction, ray.dDirectionDv, normal, surface.normalChange[Differential3f::DIFF_V]);
    Hit const hit = mirrors < MOST_MIRRORS ? tracer_.FindClosest(mirrored) : Hit{};
    return GetLight(mirrored, hit, spread, mirrors + 1);
}

} // namespace raytracer
