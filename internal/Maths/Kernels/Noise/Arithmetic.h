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
#if defined __SSE4_1__
    if constexpr (sizeof(V) == 16)
    {
        V const floors = _mm_floor_ps(coordinates);
        return {Truncate(floors) & 255, coordinates - floors};
    }
#endif
#if defined __AVX__
    if constexpr (sizeof(V) == 32)
    {
        V const floors = _mm256_floor_ps(coordinates);
        return {Truncate(floors) & 255, coordinates - floors};
    }
#endif
#if defined __AVX512F__
    if constexpr (sizeof(V) == 64)
    {
        V const floors =
            _mm512_maskz_roundscale_ps(__mmask16{0xFFFF}, coordinates, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC);
        return {Truncate(floors) & 255, coordinates - floors};
    }
#endif
    Mask<V> whole = Truncate(coordinates);
    // What has no integer becomes the lowest one, and a whole number or NaN instead of a coordinate has the same
    // answer.
    if (Any(whole == std::numeric_limits<std::int32_t>::min())) [[unlikely]]
    {
        constexpr float LIMIT = 2147483648.0F;
        Mask<V> const fits = (coordinates >= -LIMIT) & (coordinates < LIMIT);
        coordinates = Select(fits, coordinates, coordinates - coordinates);
        whole = Truncate(coordinates);
    }
    whole += __builtin_convertvector(whole, V) > coordinates; // true is -1
    return {whole & 255, coordinates - __builtin_convertvector(whole, V)};
}

/// 6t^5 - 15t^4 + 10t^3, by the formula of QuinticSmoothStep().
template <typename V>
[[gnu::always_inline]] inline V Fade(V t) noexcept
{
    return ((t * 6.0F) * t - t * 15.0F + 10.0F) * (t * t * t);
}

template <typename V>
[[gnu::always_inline]] inline V Lerp(V t, V a, V b) noexcept
{
    return (b - a) * t + a;
}

/// From [-1, 1] to [0, 1].
template <typename V>
[[gnu::always_inline]] inline V ToUnitInterval(V noise) noexcept
{
    return (noise + 1.0F) * 0.5F;
}

/// Values, negated where the highest bit of the lane is set.
template <typename V>
[[gnu::always_inline]] inline V Negate(V values, Mask<V> lanes) noexcept
{
    return Bits<V>(Bits<Mask<V>>(values) ^ (lanes & static_cast<std::int32_t>(0x80000000)));
}

/// The products of gradients with distances. The gradients stand in the highest four bits of the lanes, with something
/// else below.
template <typename V>
[[gnu::always_inline]] inline V Dot(Mask<V> gradients, V x, V y, V z) noexcept
{
    return Negate(SelectBySign(gradients, y, x), gradients << 2) +
           Negate(SelectBySign(gradients << 1, z, y), gradients << 3);
}

/// The same where z is 0.
template <typename V>
[[gnu::always_inline]] inline V Dot(Mask<V> gradients, V x, V y) noexcept
{
    return Dot(gradients, x, y, V{});
}

/// The same where y and z are 0.
template <typename V>
[[gnu::always_inline]] inline V Dot(Mask<V> gradients, V x) noexcept
{
    return Negate(SelectBySign(gradients, V{}, x), gradients << 2);
}

} // namespace

} // namespace bv::maths
