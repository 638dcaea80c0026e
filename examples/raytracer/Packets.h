#pragma once

#include <cstddef>
#include <cstdint>

#include "Bvh.h"
#include "Options.h"

namespace raytracer
{

/// Where the rays of a packet meet a triangle.
struct Meeting
{
    static constexpr std::size_t MOST_RAYS = 8;

    std::uint32_t triangle;
    unsigned marked; ///< which of them do: bit 0 is the first
    float t[MOST_RAYS];
    float u[MOST_RAYS];
    float v[MOST_RAYS];
};

/// A walk through the hierarchy with as many rays as one packet holds.
struct Walk
{
    /// What to do with hits within the distance of each ray.
    using Keep = void (*)(Meeting const& meeting, Hit* hits);

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
    char const* name;
    std::size_t width;
    void (*walk)(Walk const&);
};

/// The packets that the user asked for, or the widest that this processor can.
/// @throws UserError when the processor cannot do what was asked for.
Packets ChoosePackets(PacketKind kind);

} // namespace raytracer
