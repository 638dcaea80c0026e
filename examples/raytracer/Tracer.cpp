#include "Tracer.h"

#include <algorithm>
#include <array>

namespace raytracer
{

namespace
{

constexpr std::uint32_t WHOLE[] = {0};

} // namespace

void Tracer::FindClosest(std::span<DepthRayf const> rays, std::span<Hit> hits, std::span<std::uint32_t const> entries)
{
    WalkAll(packets_, &Bvh::FindClosest, rays, hits, entries);
    for (std::size_t i = 0; i < rays.size(); ++i)
        scene_.FindClosestBeside(rays[i], hits[i]);
}

Hit Tracer::FindClosest(DepthRayf const& ray)
{
    Hit hit;
    WalkAll({"scalar", 1, WalkScalar}, &Bvh::FindClosest, {&ray, 1}, {&hit, 1}, WHOLE);
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
    WalkAll(packets_, &Bvh::FindAny, rays, hits, WHOLE);
}

void Tracer::WalkAll(Packets const& packets, Walk::Leaf leaf, std::span<DepthRayf const> rays, std::span<Hit> hits,
                     std::span<std::uint32_t const> entries)
{
    rayCount_ += rays.size();
    Walk walk{&scene_.GetBvh(), scene_.GetBvh().GetNodes(), entries.data(), entries.size(), leaf, nullptr, nullptr};
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
    std::array<DepthRayf, Packets::MAX_WIDTH> lastRays;
    std::array<Hit, Packets::MAX_WIDTH> lastHits;
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
