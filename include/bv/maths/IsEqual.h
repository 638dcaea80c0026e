#pragma once

/// @file
/// The library-wide tolerant comparison of floating-point values, and its tolerances.

#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "bv/Export.h"

namespace bv::maths
{

/// The shared tolerance of a precision: ten machine epsilons, 1.1920928955078125e-06 for `float` and
/// 2.220446049250313e-15 for `double`. It is also the threshold of the singularity, division and parallelism tests.
template <typename T>
inline constexpr T TOLERANCE = T{10} * std::numeric_limits<T>::epsilon();

namespace detail
{

/// Whether two values lie at most 50 representable values apart, counted on bit patterns that are mapped so that
/// they ascend with the value; +0 and -0 share one number. The difference wraps, as the mapped integers do: a
/// distance of exactly half the range fits no signed integer and is not small.
template <typename Bits, typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinSteps(T a, T b) noexcept
{
    constexpr int SIGN_BIT = std::numeric_limits<Bits>::digits - 1;
    constexpr Bits STEPS = 50;
    Bits const bitsA = std::bit_cast<Bits>(a);
    Bits const bitsB = std::bit_cast<Bits>(b);
    // Beside a constant that is neither near 0 nor near the end of the patterns, nothing of the other sign is near.
    if (__builtin_constant_p(bitsB) && bitsB > STEPS && bitsB < (Bits{1} << SIGN_BIT) - STEPS)
        return bitsA - bitsB + STEPS <= 2 * STEPS;
    // A negative pattern p maps to SIGN - p, SIGN its highest bit. Up to its sign, the difference of the mapped
    // patterns is a - b for equal signs and a + b - SIGN, or a - ~b + (SIGN - 1), for opposite ones; without a branch,
    // because the signs of data are hard to predict.
    Bits const opposite = static_cast<Bits>(static_cast<std::make_signed_t<Bits>>(bitsA ^ bitsB) >> SIGN_BIT);
    Bits const difference = bitsA - (bitsB ^ opposite) + (opposite >> 1);
    return difference + STEPS <= 2 * STEPS; // -50 <= difference <= 50, in one comparison
}

/// Whether the squared difference is strictly below the squared tolerance.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinTolerance(T a, T b) noexcept
{
    constexpr T SQUARED = TOLERANCE<T> * TOLERANCE<T>;
    return (a - b) * (a - b) < SQUARED;
}

/// Either test. Both are made, without a branch between them, but for the compiler's own computation, where the
/// difference of two infinities is an error.
template <typename Bits, typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinEither(T a, T b) noexcept
{
    if (std::is_constant_evaluated())
        return IsWithinSteps<Bits>(a, b) || IsWithinTolerance(a, b);
    if (__builtin_constant_p(std::bit_cast<Bits>(b)) && std::bit_cast<Bits>(b) == 0)
        return IsWithinTolerance(a, b); // which all that is 50 values from 0 is
    return static_cast<bool>(static_cast<int>(IsWithinSteps<Bits>(a, b)) | static_cast<int>(IsWithinTolerance(a, b)));
}

} // namespace detail

/// Tolerant equality: true when the values are at most 50 representable values apart, or when the square of their
/// difference is strictly below the square of `TOLERANCE`.
///
/// A NaN equals another value only when their bit patterns are that close, so a NaN equals itself. An infinity equals
/// the 50 largest finite values of its sign and, on its other side, the 50 nearest NaN patterns. The relation is
/// symmetric but not transitive. Opposite values exactly half the range of bit patterns apart, such as 2 and -2, are
/// far apart like any others.
[[nodiscard, gnu::always_inline]] BV_INLINE constexpr bool IsEqual(float const& a, float const& b) noexcept
{
    return detail::IsWithinEither<std::uint32_t>(a, b);
}

/// @copydoc IsEqual(float const&, float const&)
[[nodiscard, gnu::always_inline]] BV_INLINE constexpr bool IsEqual(double const& a, double const& b) noexcept
{
    return detail::IsWithinEither<std::uint64_t>(a, b);
}

namespace detail
{

/// Equality of one component of a tuple or vector: tolerant for floating-point types, exact for integers.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsSameComponent(T a, T b) noexcept
{
    if constexpr (std::numeric_limits<T>::is_integer)
        return a == b;
    else
        return IsEqual(a, b);
}

} // namespace detail

} // namespace bv::maths
