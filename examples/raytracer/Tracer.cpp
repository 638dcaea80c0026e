#include "Tracer.h"

#include <algorithm>
#include <array>
#include <bit>

namespace raytracer
{

namespace
{

constexpr std::uint32_t WHOLE[] = {0};

/// Moves the hits to a triangle. Of two at the same distance the one with the lower index is taken, in whatever order
/// they are met.
void KeepClosest(Meeting const& meeting, Hit* hits)
{
    for (unsigned rest = meeting.marked; rest != 0; rest &= rest - 1)
    {
        int const lane = std::countr_zero(rest);
        Hit& hit = hits[lane];
        if (meeting.t[lane] < hit.distance || hit.what != Hit::What::Triangle || meeting.triangle < hit.index)
            hit = {meeting.t[lane], meeting.triangle, meeting.u[lane], meeting.v[lane], Hit::What::Triangle};
    }
}

/// Sets the distance to -1, so that such a ray enters no other box.
void KeepBlocked(Meeting const& meeting, Hit* hits)
{
    for (unsigned rest = meeting.marked; rest != 0; rest &= rest - 1)
        hits[std::countr_zero(rest)].distance = -1;
}

} // namespace

void Tracer::FindClosest(std::span<DepthRayf const> rays, std::span<Hit> hits, std::span<std::uint32_t const> entries)
{
    WalkAll(packets_, KeepClosest, rays, hits, entries);
    for (std::size_t i = 0; i < rays.size(); ++i)
        scene_.FindClosestBeside(rays[i], hits[i]);
}

Hit Tracer::FindClosest(DepthRayf const& ray)
{
    Hit hit;
    WalkAll({"scalar", 1, WalkScalar}, KeepClosest, {&ray, 1}, {&hit, 1}, WHOLE);
    scene_.FindClosestBeside(ray, hit);
    return hit;
}

void Tracer::FindBlocked(std::span<DepthRayf const> rays, std::span<Hit> hits)
{
    for (std::size_t i = 0; i < rays.size(); ++i)
    {
        if (scene_.IsBlockedBeside(rays[i], hits[i]))
            hits[i].distance = -1;
    }
    WalkAll(packets_, KeepBlocked, rays, hits, WHOLE);
}

void Tracer::WalkAll(Packets const& packets, Walk::Keep keep, std::span<DepthRayf const> rays, std::span<Hit> hits,
                     std::span<std::uint32_t const> entries)
{
    rayCount_ += rays.size();
    Bvh const& bvh = scene_.GetBvh();
    Walk walk{bvh.GetNodes(), bvh.GetTriangles(), entries.data(), entries.size(), keep, nullptr, nullptr};
    std::size_t const whole = rays.size() / packets.width * packets.width;
    for (std::size_t i = 0; i < whole; i += packets.width)
    {
        walk.rays = &rays[i];
        walk.hits = &hits[i];
        packets.walk(walk);
    }
    if (whole == rays.size())
        return;

    // A packet is always full: the last ray stands in for the missing ones.
    std::array<DepthRayf, Meeting::MOST_RAYS> lastRays;
    std::array<Hit, Meeting::MOST_RAYS> lastHits;
    std::fill(std::copy(rays.begin() + static_cast<std::ptrdiff_t>(whole), rays.end(), lastRays.begin()),
              lastRays.end(), rays.back());
    std::fill(std::copy(hits.begin() + static_cast<std::ptrdiff_t>(whole), hits.end(), lastHits.begin()),
              lastHits.end(), hits.back());
    walk.rays = lastRays.data();
    walk.hits = lastHits.data();
    packets.walk(walk);
    std::copy_n(lastHits.begin(), rays.size() - whole, hits.begin() + static_cast<std::ptrdiff_t>(whole));
}

} // namespace raytracer
