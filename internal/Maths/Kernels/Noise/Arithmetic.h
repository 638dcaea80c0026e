#pragma once

/// @file
/// The arithmetic of the gradient noise on lanes, for its single and its batch forms. Additions and products stand in
/// the order of the reference; a gradient is applied by selection and sign, as the reference does.

#include <limits>

#include "Maths/Kernels/Lanes/Lanes.h"

namespace bv::maths
{

namespace
{

constexpr std::int32_t LOWEST = std::numeric_limits<std::int32_t>::min(); ///< the sign bit of a lane alone

/// Numbers to integers towards zero. What fits no integer gives the lowest one.
template <typename V>
[[gnu::always_inline]] inline Mask<V> Truncate(V const& numbers) noexcept
{
    using I = Mask<V>;
#if BV_SSE2
    if constexpr (sizeof(V) <= NATIVE)
    {
        if constexpr (sizeof(V) == 64)
            return BitsAs<I>(_mm512_maskz_cvttps_epi32(0xFFFF, numbers));
        else if constexpr (sizeof(V) == 32)
            return BitsAs<I>(_mm256_cvttps_epi32(numbers));
        else
            return BitsAs<I>(_mm_cvttps_epi32(numbers));
    }
#endif
    constexpr float LIMIT = 0x1p31F;
    I const fits = Both(numbers >= -LIMIT, numbers < LIMIT);
    I const whole = Convert<I>(Select(fits, numbers, V{}));
    return Select(fits, whole, Broadcast<I>(LOWEST));
}

#if BV_SSE41
/// The highest whole numbers that are not above these.
template <typename V>
[[gnu::always_inline]] inline V Floor(V const& numbers) noexcept
{
    if constexpr (sizeof(V) == 64)
        return _mm512_floor_ps(numbers);
    else if constexpr (sizeof(V) == 32)
        return _mm256_floor_ps(numbers);
    else
        return _mm_floor_ps(numbers);
}
#endif

/// Where coordinates lie on the lattice.
template <typename V>
struct Positions
{
    Mask<V> cells; ///< from 0 to 255
    V fractions;   ///< from the lower ends of the cells, in [0, 1]
};

/// Beyond the range of the cells every number is whole: the cell is 0, and so is the fraction; that of an infinity or a
/// NaN is NaN. A coordinate just below 0 keeps its cell although its fraction rounds to 1.
template <typename V>
[[gnu::always_inline]] inline Positions<V> Locate(V coordinates) noexcept
{
#if BV_SSE41
    if constexpr (sizeof(V) <= NATIVE)
    {
        V const floors = Floor(coordinates);
        return {Truncate(floors) & 255, coordinates - floors};
    }
#endif
    Mask<V> whole = Truncate(coordinates);
    // What has no integer becomes the lowest one, and a whole number or NaN instead of a coordinate has the same
    // answer.
    if (Any(whole == LOWEST)) [[unlikely]]
    {
        constexpr float LIMIT = 0x1p31F;
        // NOLINTNEXTLINE(misc-redundant-expression): 0, or NaN of what is not finite
        coordinates = Select(Both(coordinates >= -LIMIT, coordinates < LIMIT), coordinates, coordinates - coordinates);
        whole = Truncate(coordinates);
    }
    whole += Convert<V>(whole) > coordinates; // true is -1
    return {whole & 255, coordinates - Convert<V>(whole)};
}

/// 6t^5 - 15t^4 + 10t^3, by the formula of QuinticSmoothStep().
template <typename V>
[[gnu::always_inline]] inline V Fade(V const& t) noexcept
{
    return ((t * 6.0F) * t - t * 15.0F + 10.0F) * (t * t * t);
}

template <typename V>
[[gnu::always_inline]] inline V Lerp(V const& t, V const& a, V const& b) noexcept
{
    return (b - a) * t + a;
}

/// From [-1, 1] to [0, 1].
template <typename V>
[[gnu::always_inline]] inline V ToUnitInterval(V const& noise) noexcept
{
    return (noise + 1.0F) * 0.5F;
}

/// `a` where the highest bit of the lane is set, `b` elsewhere. GCC would compare with 0, although AVX has an
/// instruction that looks at that bit alone, and write over more registers without it.
template <typename V>
[[gnu::always_inline]] inline V SelectBySign(Mask<V> const& lanes, V const& a, V const& b) noexcept
{
#if BV_AVX
    if constexpr (sizeof(V) == 16)
        return _mm_blendv_ps(b, a, BitsAs<V>(lanes));
    else if constexpr (sizeof(V) == 32)
        return _mm256_blendv_ps(b, a, BitsAs<V>(lanes));
    else
        return Select(lanes < 0, a, b);
#else
    using I = Mask<V>;
    return BitsAs<V>(((BitsAs<I>(a) ^ BitsAs<I>(b)) & (lanes >> 31)) ^ BitsAs<I>(b));
#endif
}

/// Values, negated where the highest bit of the lane is set.
template <typename V>
[[gnu::always_inline]] inline V Negate(V const& values, Mask<V> const& lanes) noexcept
{
    return BitsAs<V>(BitsAs<Mask<V>>(values) ^ (lanes & LOWEST));
}

/// The products of gradients with distances. The gradients stand in the highest four bits of the lanes, with something
/// else below.
template <typename V>
[[gnu::always_inline]] inline V Dot(Mask<V> const& gradients, V const& x, V const& y, V const& z) noexcept
{
    return Negate(SelectBySign(gradients, y, x), gradients << 2) +
           Negate(SelectBySign(gradients << 1, z, y), gradients << 3);
}

/// The same where z is 0.
template <typename V>
[[gnu::always_inline]] inline V Dot(Mask<V> const& gradients, V const& x, V const& y) noexcept
{
    return Dot(gradients, x, y, V{});
}

/// The same where y and z are 0.
template <typename V>
[[gnu::always_inline]] inline V Dot(Mask<V> const& gradients, V const& x) noexcept
{
    return Negate(SelectBySign(gradients, V{}, x), gradients << 2);
}

} // namespace

} // namespace bv::maths
