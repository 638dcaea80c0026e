#pragma once

/// @file
/// The vector of four `float`s that packets and reciprocals consist of.

#include "bv/detail/Platform.h"

#if BV_SSE2
#include <xmmintrin.h>
#else
#include "bv/maths/detail/Lanes.h"
#endif

namespace bv::maths::simd
{

#if BV_SSE2
using FourFloats = __m128; ///< four `float`s: `__m128` on x86, elsewhere a vector of the compiler or an array
#else
using FourFloats = maths::detail::Register<float, 16>;
#endif

} // namespace bv::maths::simd
