#pragma once

/// @file
/// Integer logarithm and square root, and rounding to powers of two.

#include <bit>
#include <cstdint>
#include <type_traits>

#include "bv/Export.h"
#include "bv/detail/Platform.h"

#if BV_SSE2
#include <emmintrin.h>
#endif

namespace bv::maths
{

namespace detail
{

[[noreturn, gnu::cold]] BV_API void ThrowLogarithmOfZero();

/// Number of bits that the value takes, as `std::bit_width` gives it, without a case of its own for 0.
[[nodiscard, gnu::always_inline]] constexpr unsigned int BitWidth(unsigned int value) noexcept
{
#if defined __LZCNT__ || !BV_GNU
    return static_cast<unsigned int>(std::bit_width(value)); // where the processor counts the zeros of 0, too
#else
    // 63 minus the zeros, written so that a processor that counts from the other end counts once. The function of the
    // standard library would leave a copy of itself in unoptimised code.
    return 63U ^ static_cast<unsigned int>(__builtin_clzll(std::uint64_t{value} << 1 | 1));
#endif
}

// Compilers that make loops do several numbers at a time do so with shifts alone; elsewhere it is faster to look for
// the highest bit.
#if BV_GNU && (defined __clang__ || defined __AVX2__)

/// All bits up to the highest one that is set.
[[nodiscard, gnu::always_inline]] constexpr unsigned int Smear(unsigned int value) noexcept
{
    value |= value >> 1;
    value |= value >> 2;
    value |= value >> 4;
    value |= value >> 8;
    return value | value >> 16;
}

/// The highest bit that is set, 0 for 0.
[[nodiscard, gnu::always_inline]] constexpr unsigned int HighestBit(unsigned int value) noexcept
{
    unsigned int const below = Smear(value);
    return below - (below >> 1);
}

#else

/// All bits up to the highest one that is set.
[[nodiscard, gnu::always_inline]] constexpr unsigned int Smear(unsigned int value) noexcept
{
    return static_cast<unsigned int>((std::uint64_t{1} << BitWidth(value)) - 1);
}

/// The highest bit that is set, 0 for 0.
[[nodiscard, gnu::always_inline]] constexpr unsigned int HighestBit(unsigned int value) noexcept
{
    return static_cast<unsigned int>((std::uint64_t{1} << BitWidth(value)) >> 1);
}

#endif

} // namespace detail

/// Base-2 logarithm, rounded up: the smallest k with 2^k not less than the value, so 1 gives 0, 5 gives 3 and anything
/// above 2^31 gives 32.
///
/// @throws bv::InvalidArgumentException for 0.
[[nodiscard, gnu::always_inline]] BV_INLINE constexpr unsigned char IntLog2(unsigned int value)
{
    unsigned int before = 0;
#if BV_GNU
    if (__builtin_sub_overflow(value, 1U, &before)) // the subtraction tells of 0 by itself
        detail::ThrowLogarithmOfZero();
#else
    if (value == 0)
        detail::ThrowLogarithmOfZero();
    before = value - 1;
#endif
    return static_cast<unsigned char>(detail::BitWidth(before));
}

/// Square root, rounded down: 15 gives 3, 16 gives 4, 0xFFFFFFFF gives 65535.
///
/// Digit by digit, two bits of the value for one bit of the root: J. W. Crenshaw, "Integer Square Roots", 1998. Where
/// the processor has a square root of its own, that of the value in double precision is taken: a root that is no
/// integer lies too far below the next one to be rounded up to it.
[[nodiscard, gnu::always_inline]] BV_INLINE constexpr unsigned short IntSqrt(unsigned int value) noexcept
{
#if BV_SSE2
    if (!std::is_constant_evaluated())
    {
        __m128d const number = _mm_set_sd(static_cast<double>(value));
        return static_cast<unsigned short>(_mm_cvttsd_si32(_mm_sqrt_sd(number, number)));
    }
#endif
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
[[nodiscard, gnu::always_inline]] BV_INLINE constexpr unsigned int RoundUpToPO2(unsigned int value) noexcept
{
    return detail::Smear(value - 1) + 1; // 0 - 1 has all bits
}

/// The nearest power of two; a tie goes up, so 3 gives 4 and 6 gives 8. 0 gives 0, and values from 0xC0000000 upwards,
/// whose nearest power does not fit 32 bits, wrap to 0.
[[nodiscard, gnu::always_inline]] BV_INLINE constexpr unsigned int RoundToNearestPO2(unsigned int value) noexcept
{
    unsigned int const floor = detail::HighestBit(value);
    return floor + (floor & (value << 1)); // twice the floor when the bit below its own is set
}

} // namespace bv::maths
