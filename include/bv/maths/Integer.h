#pragma once

/// @file
/// Integer logarithm and square root, and rounding to powers of two.

#include <bit>

#include "bv/Export.h"

namespace bv::maths
{

namespace detail
{

[[noreturn, gnu::cold]] BV_API void ThrowLogarithmOfZero();

} // namespace detail

/// Base-2 logarithm, rounded up: the smallest k with 2^k not less than the value, so 1 gives 0, 5 gives 3 and anything
/// above 2^31 gives 32.
///
/// @throws bv::InvalidArgumentException for 0.
[[nodiscard]] constexpr unsigned char IntLog2(unsigned int value)
{
    if (value == 0)
        detail::ThrowLogarithmOfZero();
    return static_cast<unsigned char>(std::bit_width(value - 1));
}

/// Square root, rounded down: 15 gives 3, 16 gives 4, 0xFFFFFFFF gives 65535.
///
/// Digit by digit, two bits of the value for one bit of the root: J. W. Crenshaw, "Integer Square Roots", 1998.
[[nodiscard]] constexpr unsigned short IntSqrt(unsigned int value) noexcept
{
    unsigned int remainder = 0;
    unsigned int root = 0; // twice the root of the bits seen so far
    for (int round = 0; round < 16; ++round)
    {
        remainder = (remainder << 2) | (value >> 30);
        value <<= 2;
        unsigned int const trial = 2 * root + 1;
        root *= 2;
        if (trial <= remainder)
        {
            remainder -= trial;
            root = trial + 1;
        }
    }
    return static_cast<unsigned short>(root >> 1);
}

/// The smallest power of two that is not less than the value; 0 gives 0. Above 2^31 there is none in 32 bits, and the
/// result wraps to 0.
[[nodiscard]] constexpr unsigned int RoundUpToPO2(unsigned int value) noexcept
{
    unsigned int const floor = std::bit_floor(value);
    return value == floor ? floor : floor << 1;
}

/// The nearest power of two; a tie goes up, so 3 gives 4 and 6 gives 8. 0 gives 0, and values from 0xC0000000 upwards,
/// whose nearest power does not fit 32 bits, wrap to 0.
[[nodiscard]] constexpr unsigned int RoundToNearestPO2(unsigned int value) noexcept
{
    unsigned int const floor = std::bit_floor(value);
    return (value & (floor >> 1)) != 0 ? floor << 1 : floor;
}

} // namespace bv::maths
