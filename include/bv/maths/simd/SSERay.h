#pragma once

/// @file
/// A packet of four rays.

#include <cstddef>
#include <type_traits>

#include <xmmintrin.h>

#include "bv/maths/simd/tRayPacket.h"

namespace bv::maths::simd
{

/// Vectors of four `float`s in the registers of SSE.
struct SSELanes
{
    using Vector = __m128;                  ///< four numbers
    static constexpr std::size_t WIDTH = 4; ///< lanes of a vector

    /// The vector of these numbers, lane 0 first.
    [[nodiscard, gnu::always_inline]] static Vector Set(float lane0, float lane1, float lane2, float lane3) noexcept
    {
        return _mm_setr_ps(lane0, lane1, lane2, lane3);
    }
    /// One number in every lane.
    [[nodiscard, gnu::always_inline]] static Vector Broadcast(float value) noexcept { return _mm_set1_ps(value); }
    /// The smaller number in each lane; b when one is NaN or both are zeros.
    [[nodiscard, gnu::always_inline]] static Vector Min(Vector a, Vector b) noexcept { return _mm_min_ps(a, b); }
    /// The larger number in each lane; b when one is NaN or both are zeros.
    [[nodiscard, gnu::always_inline]] static Vector Max(Vector a, Vector b) noexcept { return _mm_max_ps(a, b); }
    /// All bits set in the lanes where a <= b, all clear elsewhere.
    [[nodiscard, gnu::always_inline]] static Vector LessOrEqual(Vector a, Vector b) noexcept
    {
        return _mm_cmple_ps(a, b);
    }
};

/// Packet of four rays, for any x86-64 processor. What it does stands at tRayPacket.
class SSERay : public tRayPacket<SSERay, SSELanes>
{
};

static_assert(sizeof(SSERay) == 9 * sizeof(__m128) && alignof(SSERay) == 16);
static_assert(std::is_trivial_v<SSERay>); // nothing happens on construction

} // namespace bv::maths::simd
