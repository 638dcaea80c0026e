#pragma once

/// @file
/// A packet of eight rays, for code that is compiled for processors with AVX.

#if !defined __AVX__
#error "bv/maths/simd/AVXRay.h is for code that is compiled for processors with AVX: pass -mavx to the compiler"
#endif

#include <type_traits>

#include <immintrin.h>

#include "bv/maths/simd/tRayPacket.h"

namespace bv::maths::simd
{

/// The registers of AVX.
struct AVXLanes
{
    using Vector = __m256; ///< eight `float`s
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
