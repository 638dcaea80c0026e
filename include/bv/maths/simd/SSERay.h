#pragma once

/// @file
/// A packet of four rays.

#include <type_traits>

#include <xmmintrin.h>

#include "bv/maths/simd/tRayPacket.h"

namespace bv::maths::simd
{

/// The registers of SSE.
struct SSELanes
{
    using Vector = __m128; ///< four `float`s
};

/// Packet of four rays, for any x86-64 processor. What it does stands at tRayPacket.
class SSERay : public tRayPacket<SSERay, SSELanes>
{
};

static_assert(sizeof(SSERay) == 9 * sizeof(__m128) && alignof(SSERay) == 16);
static_assert(std::is_trivial_v<SSERay>); // nothing happens on construction

} // namespace bv::maths::simd
