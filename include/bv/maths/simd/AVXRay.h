#pragma once

/// @file
/// A packet of eight rays: on x86 for code that is compiled for processors with AVX, elsewhere for any.

#include "bv/detail/Platform.h"

#if BV_SSE2 && !BV_AVX
#error "bv/maths/simd/AVXRay.h is for code that is compiled for processors with AVX: pass -mavx to the compiler"
#endif

#include <type_traits>

#if BV_AVX
#include <immintrin.h>
#endif

#include "bv/maths/simd/tRayPacket.h"

namespace bv::maths::simd
{

#if BV_AVX
using EightFloats = __m256; ///< eight `float`s: `__m256` on x86, elsewhere vectors of the compiler or an array
#else
using EightFloats = maths::detail::Register<float, 32>;
#endif

/// The vectors of a packet of eight.
struct AVXLanes
{
    using Vector = EightFloats; ///< eight `float`s
};

/// Packet of eight rays. What it does stands at tRayPacket.
///
/// It is inline whole: on x86, a program may use it in the files that it compiles for AVX, behind a test of the
/// processor, while the library and the rest of the program run on any x86-64 processor.
class AVXRay : public tRayPacket<AVXRay, AVXLanes>
{
};

static_assert(sizeof(AVXRay) == 9 * 8 * sizeof(float) && alignof(AVXRay) == 32);
static_assert(std::is_trivial_v<AVXRay>); // nothing happens on construction

} // namespace bv::maths::simd
