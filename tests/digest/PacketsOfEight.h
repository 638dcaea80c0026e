#pragma once

/// @file
/// What the digest has compiled for AVX.

#include <cstdint>

#include <bv/IRayPayloadInternal.h>
#include <bv/detail/Platform.h>
#include <bv/maths/Forward.h>

namespace digest
{

/// Whether the processor runs what is compiled for AVX. Others than x86 need nothing of the kind.
[[nodiscard]] inline bool HasEightLanes() noexcept
{
#if BV_SSE2
    return __builtin_cpu_supports("avx") != 0;
#else
    return true;
#endif
}

/// What a packet of eight rays holds and gives.
struct EightRays
{
    float origin[3][8];
    float direction[3][8];
    float inverse[3][8];
    float tNear[8];
    float tFar[8];
    std::uint32_t mask[8];
};

/// Loads eight rays, transforms them, and clips the intervals that stand in the results against a box.
void ClipEight(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix, bv::maths::VolumeAABBf const& box,
               EightRays& results);

/// What both tests of a packet of eight rays against a triangle give: masks, and t, u and v.
struct PacketMeetings
{
    std::uint32_t mask[2][8];
    float hits[2][3][8];
};

/// Intersects eight rays with a triangle, the fast way and the watertight one.
void MeetEight(bv::maths::DepthRayf const* rays, bv::maths::Vector3f const (&corners)[3], PacketMeetings& results);

} // namespace digest
