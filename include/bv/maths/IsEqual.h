#pragma once

/// @file
/// The library-wide tolerant comparison of floating-point values, and its tolerances.

#include <cfloat>
#include <cstdint>
#include <type_traits>

#include "bv/Export.h"
#include "bv/detail/Platform.h"
#include "bv/maths/detail/Compiler.h"
#include "bv/maths/detail/Number.h"

namespace bv::maths
{

namespace detail
{

// By <cfloat>: <limits> would make up a fifth of what a tuple costs whoever includes it.
template <typename T>
inline constexpr T MACHINE_EPSILON = sizeof(T) == sizeof(float) ? static_cast<T>(FLT_EPSILON)
                                                                : static_cast<T>(DBL_EPSILON);

/// The largest finite number.
template <typename T>
inline constexpr T LARGEST_NUMBER = sizeof(T) == sizeof(float) ? static_cast<T>(FLT_MAX) : static_cast<T>(DBL_MAX);

} // namespace detail

/// The shared tolerance of a precision: ten machine epsilons, 1.1920928955078125e-06 for `float` and
/// 2.220446049250313e-15 for `double`. It is also the threshold of the singularity, division and parallelism tests.
template <typename T>
inline constexpr T TOLERANCE = T{10} * detail::MACHINE_EPSILON<T>;

namespace detail
{

/// Whether two values lie at most 50 representable values apart, counted on bit patterns that are mapped so that
/// they ascend with the value; +0 and -0 share one number. The difference wraps, as the mapped integers do: a
/// distance of exactly half the range fits no signed integer and is not small.
template <typename Bits, typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinSteps(T a, T b) noexcept
{
    using Signed = std::make_signed_t<Bits>;
    constexpr int SIGN_BIT = 8 * sizeof(Bits) - 1;
    constexpr Bits SIGN = Bits{1} << SIGN_BIT;
    constexpr Bits STEPS = 50;
    Bits const bitsA = BitsAs<Bits>(a);
    Bits const bitsB = BitsAs<Bits>(b);
#if BV_GNU
    // Beside a constant that is neither near 0 nor near the end of the patterns, nothing of the other sign is near.
    if (__builtin_constant_p(bitsB) && bitsB > STEPS && bitsB < SIGN - STEPS)
        return bitsA - bitsB + STEPS <= 2 * STEPS;
#endif
    // A negative pattern p maps to SIGN - p. Up to its sign, the difference of the mapped patterns is a - b for equal
    // signs and a + b - SIGN, or a - ~b + (SIGN - 1), for opposite ones; without a branch, because the signs of data
    // are hard to predict.
    Bits const opposite = static_cast<Bits>(static_cast<Signed>(bitsA ^ bitsB) >> SIGN_BIT);
    Bits const difference = bitsA - (bitsB ^ opposite) + (opposite >> 1);
    // -50 <= difference <= 50, in one comparison: of signed integers where there are vectors of them that compare, as
    // there are none of unsigned ones.
    if constexpr (sizeof(Bits) == sizeof(std::uint32_t) || HAS_AVX2)
        return static_cast<Signed>(difference + (STEPS + SIGN)) <= static_cast<Signed>(2 * STEPS + SIGN);
    else
        return difference + STEPS <= 2 * STEPS;
}

/// Whether the squared difference is strictly below the squared tolerance, which is whether the difference is below the
/// tolerance: the square of the tolerance is exact, and that of the number before it is rounded to less.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinTolerance(T a, T b) noexcept
{
    return Magnitude(a - b) < TOLERANCE<T>;
}

/// The same for a compiler that computes a constant, where no difference may overflow or be that of two infinities.
/// From 1 on, values within the tolerance are within 20 steps, too.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinToleranceNearZero(T a, T b) noexcept
{
    return Magnitude(a) < T{1} && Magnitude(b) < T{1} && IsWithinTolerance(a, b);
}

/// Either test. Two equal infinities, which are within 50 steps, are not subtracted: that would raise FE_INVALID.
template <typename Bits, typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsWithinEither(T a, T b) noexcept
{
    if (std::is_constant_evaluated())
        return IsWithinSteps<Bits>(a, b) || IsWithinToleranceNearZero(a, b);
    bool const isWithinSteps = IsWithinSteps<Bits>(a, b);
#if BV_GNU
    // Beside a finite constant, nothing can go wrong. All that is 50 values from 0 is within the tolerance.
    if (__builtin_constant_p(BitsAs<Bits>(b)) && Magnitude(b) <= LARGEST_NUMBER<T>)
        return static_cast<bool>(static_cast<int>(b != T{0} && isWithinSteps) |
                                 static_cast<int>(IsWithinTolerance(a, b)));
#endif
    if constexpr (IS_CLANG)
    {
        // Clang computes what raises ahead of a branch. So both tests are made, the second one with an operand that is
        // harmless where the two are the same.
        T const subtracted = a != b ? a : T{0};
        return static_cast<bool>(static_cast<int>(isWithinSteps) | static_cast<int>(IsWithinTolerance(subtracted, b)));
    }
    else if constexpr (HAS_AVX2)
    {
        // GCC does not, and for that reason makes no vectors of a loop over a branch.
        T const subtracted = BitsAs<T>(BitsAs<Bits>(a) & (static_cast<Bits>(isWithinSteps) - 1));
        return static_cast<bool>(static_cast<int>(isWithinSteps) | static_cast<int>(IsWithinTolerance(subtracted, b)));
    }
    else
        return isWithinSteps || IsWithinTolerance(a, b);
}

} // namespace detail

/// Tolerant equality: true when the values are at most 50 representable values apart, or when the square of their
/// difference is strictly below the square of `TOLERANCE`.
///
/// A NaN equals another value only when their bit patterns are that close, so a NaN equals itself. An infinity equals
/// the 50 largest finite values of its sign and, on its other side, the 50 nearest NaN patterns. The relation is
/// symmetric but not transitive. Opposite values exactly half the range of bit patterns apart, such as 2 and -2, are
/// far apart like any others.
///
/// Numbers and infinities raise no floating-point exception but FE_INEXACT, and FE_OVERFLOW where the difference itself
/// does not fit, as between the largest numbers of either sign.
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

/// The same as IsEqual() for one of several components, between which there is a branch in any case: most are the same,
/// or differ at once.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsSameReal(T a, T b) noexcept
{
    using Bits = std::conditional_t<sizeof(T) == sizeof(std::uint32_t), std::uint32_t, std::uint64_t>;
    if (std::is_constant_evaluated())
        return IsWithinEither<Bits>(a, b);
    if constexpr (IS_CLANG)
        return BitsAs<Bits>(a) == BitsAs<Bits>(b) || IsWithinEither<Bits>(a, b);
    else
        return IsWithinSteps<Bits>(a, b) || IsWithinTolerance(a, b);
}

/// Equality of one component of a tuple or vector: tolerant for floating-point types, exact for integers.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsSameComponent(T a, T b) noexcept
{
    if constexpr (std::is_integral_v<T>)
        return a == b;
    else
        return IsSameReal(a, b);
}

} // namespace detail

} // namespace bv::maths
