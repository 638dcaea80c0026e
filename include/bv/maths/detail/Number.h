#pragma once

/// @file
/// A single number: its bits, its magnitude and its sign.

#include <cstdint>
#include <type_traits>

#include "bv/detail/Platform.h"

#if !BV_GNU || defined __wasm__
#include <limits>
#endif
#if !BV_GNU
#include <bit>
#include <cmath>
#endif

namespace bv::maths::detail
{

/// A signed integer as wide as a number. A comparison of lanes gives such lanes, with all bits set or none.
template <typename T>
using Integer = std::conditional_t<sizeof(T) == sizeof(std::int32_t), std::int32_t, std::int64_t>;

/// The bits of a number or a register as those of another type. (A function of the standard library could remain as a
/// copy that the linker shares with code for other processors.)
template <typename To, typename From>
[[nodiscard, gnu::always_inline]] constexpr To BitsAs(From const& from) noexcept
{
#if BV_GNU
    return __builtin_bit_cast(To, from);
#else
    return std::bit_cast<To>(from);
#endif
}

#if BV_GNU

/// A number without its sign.
[[nodiscard, gnu::always_inline]] constexpr float Magnitude(float x) noexcept
{
    return __builtin_fabsf(x);
}

/// @copydoc Magnitude(float)
[[nodiscard, gnu::always_inline]] constexpr double Magnitude(double x) noexcept
{
    return __builtin_fabs(x);
}

/// A number with the sign of another one.
[[nodiscard, gnu::always_inline]] constexpr float WithSignOf(float x, float sign) noexcept
{
    return __builtin_copysignf(x, sign);
}

/// @copydoc WithSignOf(float, float)
[[nodiscard, gnu::always_inline]] constexpr double WithSignOf(double x, double sign) noexcept
{
    return __builtin_copysign(x, sign);
}

#else

/// A number with the sign bit of some bits.
template <typename T>
[[nodiscard]] constexpr T WithSignBit(T x, Integer<T> bits) noexcept
{
    constexpr Integer<T> SIGN = std::numeric_limits<Integer<T>>::min();
    return BitsAs<T>((BitsAs<Integer<T>>(x) & ~SIGN) | (bits & SIGN));
}

[[nodiscard]] constexpr float Magnitude(float x) noexcept
{
    return WithSignBit(x, 0);
}

[[nodiscard]] constexpr double Magnitude(double x) noexcept
{
    return WithSignBit(x, 0);
}

[[nodiscard]] constexpr float WithSignOf(float x, float sign) noexcept
{
    return WithSignBit(x, BitsAs<Integer<float>>(sign));
}

[[nodiscard]] constexpr double WithSignOf(double x, double sign) noexcept
{
    return WithSignBit(x, BitsAs<Integer<double>>(sign));
}

#endif

/// A number, or 0 instead of a negative one. NaN and -0 stay as they are.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T NotNegative(T x) noexcept
{
#if defined __clang__ && !defined __SSE2__
    // But for x86, Clang takes a comparison with 0 for the processor's maximum, which makes 0 of -0.
    return x <= -BitsAs<T>(Integer<T>{1}) ? T{0} : x; // the smallest number
#else
    return x < T{0} ? T{0} : x;
#endif
}

#if BV_GNU

/// What is left of x when y is taken from it as often as goes towards zero, exactly, as `std::fmod` has it. (<cmath>
/// costs more than all of the vectors.)
[[nodiscard, gnu::always_inline]] inline float Remainder(float x, float y) noexcept
{
    return __builtin_fmodf(x, y);
}

/// @copydoc Remainder(float, float)
[[nodiscard, gnu::always_inline]] inline double Remainder(double x, double y) noexcept
{
    return __builtin_fmod(x, y);
}

#else

template <typename T>
[[nodiscard]] inline T Remainder(T x, T y) noexcept
{
    return std::fmod(x, y);
}

#endif

} // namespace bv::maths::detail
