#pragma once

/// @file
/// Numbers to test with: those at which arithmetic does something of its own, their bit patterns, and random ones.

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace bv::test
{

template <typename T>
inline constexpr T INF = std::numeric_limits<T>::infinity();
template <typename T>
inline constexpr T QUIET_NAN = std::numeric_limits<T>::quiet_NaN();
template <typename T>
inline constexpr T LARGEST = std::numeric_limits<T>::max();
/// The smallest number above zero, a subnormal one.
template <typename T>
inline constexpr T TINY = std::numeric_limits<T>::denorm_min();
template <typename T>
inline constexpr T SMALLEST_NORMAL = std::numeric_limits<T>::min();
template <typename T>
inline constexpr T EPSILON = std::numeric_limits<T>::epsilon();
template <typename T>
inline constexpr T NEXT_AFTER_ONE = T{1} + EPSILON<T>;
template <typename T>
inline constexpr T PI = static_cast<T>(3.14159265358979323846);

/// A number whose square is lost when it is added to 1, while twice its square is not: the square lies between a
/// quarter and a half of the step from 1 to the next number.
template <typename T>
inline constexpr T LOST = sizeof(T) == sizeof(float) ? T(0.875 * 0x1p-12) : T(1.25 * 0x1p-27);

/// Where arithmetic does something of its own: the zeros, ones, infinities, a NaN, and the ends of the range.
template <typename T>
inline constexpr std::array<T, 10> SPECIAL_VALUES = {T(0),    T(-0.0),      T(1),    T(-1),      INF<T>,
                                                     -INF<T>, QUIET_NAN<T>, TINY<T>, LARGEST<T>, -LARGEST<T>};

/// An integer as wide as the number.
template <typename T>
using Pattern = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;

template <typename T>
[[nodiscard]] constexpr Pattern<T> Bits(T value)
{
    return std::bit_cast<Pattern<T>>(value);
}

template <typename T>
[[nodiscard]] constexpr T FromBits(Pattern<T> bits)
{
    return std::bit_cast<T>(bits);
}

/// The value whose pattern is so many steps away: farther from zero, or nearer to it for a negative count.
template <typename T>
[[nodiscard]] constexpr T Steps(T value, int count)
{
    return FromBits<T>(static_cast<Pattern<T>>(Bits(value) + static_cast<Pattern<T>>(count)));
}

template <typename T>
[[nodiscard]] constexpr bool IsNaN(T value)
{
    return (Bits(value) & (~Pattern<T>{0} >> 1)) > Bits(INF<T>);
}

template <typename T>
[[nodiscard]] T JustBelow(T value)
{
    return std::nextafter(value, -INF<T>);
}
template <typename T>
[[nodiscard]] T JustAbove(T value)
{
    return std::nextafter(value, INF<T>);
}

/// The value, hidden from the compiler, which could otherwise work out a result itself, and otherwise than at run time.
template <typename T>
[[nodiscard]] T Runtime(T value)
{
    T volatile hidden = value;
    return hidden;
}

} // namespace bv::test
