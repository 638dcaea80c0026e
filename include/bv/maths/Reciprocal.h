#pragma once

/// @file
/// Reciprocals of four floats at once, from the processor's estimate and one Newton-Raphson step.

#include "bv/Export.h"
#include "bv/detail/Platform.h"
#include "bv/maths/simd/FourFloats.h"

#if BV_SSE2
#include <emmintrin.h>
#else
#include "bv/maths/detail/Lanes.h"
#endif

namespace bv::maths
{

// The functions melt into their callers like the instructions that they are named after.

/// Reciprocal of each lane: r * (2 - a * r), where r is the processor's estimate.
///
/// The relative error stays below 6 * 2^-24 for magnitudes from 2^-126 to 2^125; the last bits differ between
/// processors. Zero, infinity and NaN give NaN: there is nothing to refine in an estimate of infinity or zero. Where
/// the estimate overflows or vanishes next to these ranges, the result is what the formula makes of it. Other
/// processors than x86 take the quotient 1 / a for the estimate.
[[nodiscard, gnu::always_inline]] BV_INLINE simd::FourFloats _mm_rcp_nr(simd::FourFloats const& a) noexcept
{
#if BV_SSE2
    __m128 const estimate = _mm_rcp_ps(a);
    return _mm_mul_ps(estimate, _mm_sub_ps(_mm_set1_ps(2.0f), _mm_mul_ps(a, estimate)));
#else
    simd::FourFloats const estimate = 1.0f / a;
    return estimate * (2.0f - a * estimate);
#endif
}

/// Reciprocal of the square root of each lane: ((3 - (a * r) * r) * r) * 0.5, where r is the processor's estimate.
///
/// The relative error stays below 8 * 2^-24 for values from 2^-126; the last bits differ between processors. Zero,
/// infinity, NaN and negative values give NaN. Where the estimate of a smaller value overflows, the result is what the
/// formula makes of it. Other processors than x86 take the quotient 1 / sqrt(a) for the estimate.
[[nodiscard, gnu::always_inline]] BV_INLINE simd::FourFloats _mm_rsqrt_nr(simd::FourFloats const& a) noexcept
{
#if BV_SSE2
    __m128 const estimate = _mm_rsqrt_ps(a);
    __m128 const ratio = _mm_mul_ps(_mm_mul_ps(a, estimate), estimate);
    return _mm_mul_ps(_mm_mul_ps(_mm_sub_ps(_mm_set1_ps(3.0f), ratio), estimate), _mm_set1_ps(0.5f));
#else
    simd::FourFloats const estimate = 1.0f / detail::SquareRoot(a);
    simd::FourFloats const ratio = a * estimate * estimate;
    return (3.0f - ratio) * estimate * 0.5f;
#endif
}

} // namespace bv::maths
