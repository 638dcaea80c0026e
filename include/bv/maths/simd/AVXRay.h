#pragma once

/// @file
/// A packet of eight rays, for code that is compiled for processors with AVX.

#if !defined __AVX__
#error "bv/maths/simd/AVXRay.h is for code that is compiled for processors with AVX: pass -mavx to the compiler"
#endif

#include <cstddef>
#include <type_traits>

#include <immintrin.h>

#include "bv/maths/simd/tRayPacket.h"

namespace bv::maths::simd
{

/// Vectors of eight `float`s in the registers of AVX.
struct AVXLanes
{
    using Vector = __m256;                  ///< eight numbers
    static constexpr std::size_t WIDTH = 8; ///< lanes of a vector

    /// The vector of these numbers, lane 0 first.
    [[nodiscard, gnu::always_inline]] static Vector Set(float lane0, float lane1, float lane2, float lane3, float lane4,
                                                        float lane5, float lane6, float lane7) noexcept
    {
        return _mm256_setr_ps(lane0, lane1, lane2, lane3, lane4, lane5, lane6, lane7);
    }
    /// One number in every lane.
    [[nodiscard, gnu::always_inline]] static Vector Broadcast(float value) noexcept { return _mm256_set1_ps(value); }
    /// The smaller number in each lane; b when one is NaN or both are zeros.
    [[nodiscard, gnu::always_inline]] static Vector Min(Vector a, Vector b) noexcept { return _mm256_min_ps(a, b); }
    /// The larger number in each lane; b when one is NaN or both are zeros.
    [[nodiscard, gnu::always_inline]] static Vector Max(Vector a, Vector b) noexcept { return _mm256_max_ps(a, b); }
    /// All bits set in the lanes where a <= b, all clear elsewhere.
    [[nodiscard, gnu::always_inline]] static Vector LessOrEqual(Vector a, Vector b) noexcept
    {
        return _mm256_cmp_ps(a, b, _CMP_LE_OS);
    }
};

/// Packet of eight rays. What it does stands at tRayPacket.
///
/// It is inline whole: a program may use it in the files that it compiles for AVX, behind a test of the processor,
/// while the library and the rest of the program run on any x86-64 processor.
class AVXRay : public tRayPacket<AVXRay, AVXLanes>
{
};

static_assert(sizeof(AVXRay) == 9 * sizeof(__m256) && alignof(AVXRay) == 32);
static_assert(std::is_trivial_v<AVXRay>); // nothing happens on construction

} // namespace bv::maths::simd
