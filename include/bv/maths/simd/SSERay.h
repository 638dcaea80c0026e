#pragma once

/// @file
/// A packet of four rays.

#include <type_traits>

#include "bv/maths/simd/FourFloats.h"
#include "bv/maths/simd/tRayPacket.h"

namespace bv::maths::simd
{

/// The vectors of a packet of four.
struct SSELanes
{
    using Vector = FourFloats; ///< four `float`s
};

/// Packet of four rays, for any processor. What it does stands at tRayPacket.
class SSERay : public tRayPacket<SSERay, SSELanes>
{
};

static_assert(sizeof(SSERay) == 9 * 4 * sizeof(float) && alignof(SSERay) == 16);
static_assert(std::is_trivial_v<SSERay>); // nothing happens on construction

} // namespace bv::maths::simd
