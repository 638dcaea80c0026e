#pragma once

/// @file
/// Packets of rays against triangles, for files that are compiled for different processors: all of it is forced inline.

#include <cstddef>

#include "bv/maths/simd/PacketTriangles.h"

namespace bench
{

/// Loads a packet from rays of six numbers each.
template <typename Packet>
[[gnu::always_inline]] inline Packet LoadPacket(float const* rays)
{
    bv::maths::DepthRayf group[Packet::WIDTH];
    for (bv::maths::DepthRayf& ray : group)
    {
        ray.origin = {rays[0], rays[1], rays[2]};
        ray.direction = {rays[3], rays[4], rays[5]};
        rays += 6;
    }
    Packet packet;
    packet.Initialise(group);
    return packet;
}

/// A packet, made ready or not, against triangles of nine numbers each.
template <typename Packet, typename Rays>
[[gnu::always_inline]] inline void MeetAll(Rays const& rays, float const* triangles, std::size_t count, float* results)
{
    using Vector = typename Packet::Vector;
    Vector const tNear{};
    Vector const tFar = tNear + 1000.0F;
    Vector const miss = tNear - 1.0F;
    for (std::size_t i = 0; i < count; ++i)
    {
        float const* const n = triangles + 9 * i;
        bv::maths::simd::tPacketHits<Packet> hits{miss, miss, miss};
        static_cast<void>(bv::maths::simd::IntersectTriangle(rays, {n[0], n[1], n[2]}, {n[3], n[4], n[5]},
                                                             {n[6], n[7], n[8]}, tNear, tFar, hits));
        *reinterpret_cast<Vector*>(results + Packet::WIDTH * i) = hits.t;
    }
}

} // namespace bench
