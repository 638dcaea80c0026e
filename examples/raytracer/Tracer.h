#pragma once

#include <cstdint>
#include <span>

#include "Bvh.h"
#include "Packets.h"
#include "Scene.h"
#include "bv/maths/tDepthRay.h"

namespace raytracer
{

/// Sends rays through a scene, a packet at a time, and counts them. Each thread has its own.
class Tracer
{
public:
    Tracer(Scene const& scene, Packets const& packets) : scene_(scene), packets_(packets) {}

    /// Finds what each ray meets first.
    ///
    /// @param entries the boxes of the hierarchy to look into.
    void FindClosest(std::span<DepthRayf const> rays, std::span<Hit> hits, std::span<std::uint32_t const> entries);
    /// Finds what one ray meets first, anywhere.
    [[nodiscard]] Hit FindClosest(DepthRayf const& ray);
    /// Sets the distance of those hits to -1 whose rays meet anything within it.
    void FindBlocked(std::span<DepthRayf const> rays, std::span<Hit> hits);

    [[nodiscard]] std::uint64_t GetRayCount() const { return rayCount_; }

private:
    void WalkAll(Packets const& packets, Walk::Keep keep, std::span<DepthRayf const> rays, std::span<Hit> hits,
                 std::span<std::uint32_t const> entries);

    Scene const& scene_;
    Packets packets_;
    std::uint64_t rayCount_ = 0;
};

} // namespace raytracer
