#pragma once

#include <cstddef>
#include <cstdint>

#include "Bvh.h"
#include "Options.h"
#include "bv/maths/Intersect.h"

namespace raytracer
{

/// A walk through the hierarchy with as many rays as one packet holds.
struct Walk
{
    /// What to do with the marked rays (bit 0 is the first), which meet a triangle within their distance.
    using Keep = void (*)(std::uint32_t triangle, TriangleHitf const* found, unsigned marked, Hit* hits);

    Node const* nodes;
    Corners const* triangles;
    std::uint32_t const* entries; ///< boxes to begin with, the nearest first
    std::size_t entryCount;
    Keep keep;
    DepthRayf const* rays; ///< as many as the packet is wide
    Hit* hits;             ///< one for each ray
};

void WalkScalar(Walk const& walk);
void WalkSse(Walk const& walk);
void WalkAvx(Walk const& walk);

/// A way to walk: with one ray (tRay), four (SSERay) or eight (AVXRay).
struct Packets
{
    static constexpr std::size_t MAX_WIDTH = 8;

    char const* name;
    std::size_t width;
    void (*walk)(Walk const&);
};

/// The packets that the user asked for, or the widest that this processor can.
/// @throws UserError when the processor cannot do what was asked for.
Packets ChoosePackets(PacketKind kind);

} // namespace raytracer
