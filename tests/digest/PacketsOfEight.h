#pragma once

/// @file
/// What the digest has compiled for AVX.

#include <cstdint>

#include <bv/IRayPayloadInternal.h>
#include <bv/maths/Forward.h>

namespace digest
{

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

} // namespace digest
