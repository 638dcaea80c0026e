#pragma once

/// @file
/// Points that fill the unit interval and the unit square evenly, each by its index: Halton, R2, Sobol, and Sobol
/// scrambled after Owen.
///
/// An index alone gives its point, so that pixels, threads and machines need no common state. Digits are computed with
/// integers: the same bits everywhere. Every number lies in [0, 1) and is at most the largest number below 1.
///
/// Nothing is thrown, allocated or kept. Where an argument has no sequence (a dimension beyond the last, a base below
/// 2), the result is NaN.

#include <cstdint>
#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/detail/Platform.h"
#include "bv/maths/tVector2.h"

namespace bv::maths
{

/// Halton points have the dimensions 0 to 63: the bases are the first 64 primes, 2 to 311.
inline constexpr unsigned int HALTON_DIMENSIONS = 64;
/// Sobol points have the dimensions 0 to 63.
inline constexpr unsigned int SOBOL_DIMENSIONS = 64;

namespace detail
{

/// The largest number below 1.
template <typename T>
inline constexpr T BELOW_ONE = T{1} - std::numeric_limits<T>::epsilon() / T{2};

/// 32 binary digits behind the point as a number. A `float` takes the first 24 of them.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T Fraction(std::uint32_t digits) noexcept
{
    // Through signed integers, which processors convert at once.
    if constexpr (sizeof(T) == sizeof(float))
        return static_cast<T>(static_cast<std::int32_t>(digits >> 8)) * T(0x1p-24);
    else
        return static_cast<T>(static_cast<std::int64_t>(digits)) * T(0x1p-32);
}

/// 64 binary digits behind the point as a number, which takes the first 24 or 53 of them.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T LongFraction(std::uint64_t digits) noexcept
{
    if constexpr (sizeof(T) == sizeof(float))
        return static_cast<T>(static_cast<std::int32_t>(digits >> 40)) * T(0x1p-24);
    else
        return static_cast<T>(static_cast<std::int64_t>(digits >> 11)) * T(0x1p-53);
}

/// The upper 64 bits of a product of 128.
[[nodiscard, gnu::always_inline]] constexpr std::uint64_t UpperProduct(std::uint64_t a, std::uint64_t b) noexcept
{
#if BV_GNU && defined __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    return static_cast<std::uint64_t>((static_cast<Wide>(a) * b) >> 64);
#else
    std::uint64_t const lowA = a & 0xFFFFFFFFU;
    std::uint64_t const lowB = b & 0xFFFFFFFFU;
    std::uint64_t const middle = (a >> 32) * lowB + ((lowA * lowB) >> 32);
    std::uint64_t const other = lowA * (b >> 32) + (middle & 0xFFFFFFFFU);
    return (a >> 32) * (b >> 32) + (middle >> 32) + (other >> 32);
#endif
}

/// The bits in reverse, the first one last.
[[nodiscard, gnu::always_inline]] constexpr std::uint32_t ReverseBits(std::uint32_t bits) noexcept
{
#if BV_GNU
    bits = __builtin_bswap32(bits);
#else
    bits = bits >> 16 | bits << 16;
    bits = (bits >> 8 & 0x00FF00FFU) | (bits & 0x00FF00FFU) << 8;
#endif
    bits = (bits >> 4 & 0x0F0F0F0FU) | (bits & 0x0F0F0F0FU) << 4;
    bits = (bits >> 2 & 0x33333333U) | (bits & 0x33333333U) << 2;
    return (bits >> 1 & 0x55555555U) | (bits & 0x55555555U) << 1;
}

/// The digits of a number in reverse, as a fraction: what a base and a way to divide by it make of an index.
template <typename T, typename Divide>
[[nodiscard, gnu::always_inline]] constexpr T ReverseDigits(std::uint32_t index, std::uint32_t base,
                                                            Divide divide) noexcept
{
    std::uint64_t reversed = 0;
    std::uint64_t power = 1; // at most index * base, so below 2^64
    while (index != 0)
    {
        std::uint32_t const rest = divide(index);
        reversed = reversed * base + (index - rest * base);
        power *= base;
        index = rest;
    }
    T const fraction = static_cast<T>(static_cast<double>(reversed) / static_cast<double>(power));
    return fraction < T{1} ? fraction : BELOW_ONE<T>;
}

/// The second generator matrix of Sobol, which is Pascal's triangle modulo 2, times the digits of an index: first digit
/// in the lowest bit. By Lucas's theorem, digit i sums those whose position has all bits of i; they are summed bit by
/// bit of the position.
[[nodiscard, gnu::always_inline]] constexpr std::uint32_t SumAlongPascal(std::uint32_t digits) noexcept
{
    digits ^= digits >> 1 & 0x55555555U;
    digits ^= digits >> 2 & 0x33333333U;
    digits ^= digits >> 4 & 0x0F0F0F0FU;
    digits ^= digits >> 8 & 0x00FF00FFU;
    return digits ^ digits >> 16;
}

/// A hash of 32 bits whose every bit depends on all: the finaliser of A. Appleby, "MurmurHash3", 2011.
[[nodiscard, gnu::always_inline]] constexpr std::uint32_t Mix(std::uint32_t bits) noexcept
{
    bits = (bits ^ bits >> 16) * 0x85EBCA6BU;
    bits = (bits ^ bits >> 13) * 0xC2B2AE35U;
    return bits ^ bits >> 16;
}

/// A seed for one purpose among several, which are numbered.
[[nodiscard, gnu::always_inline]] constexpr std::uint32_t MixSeed(std::uint32_t seed, std::uint32_t purpose) noexcept
{
    return Mix(seed + purpose * 0x9E3779B9U);
}

/// Digits, first in the lowest bit, of which each is flipped or not by those before it and the seed: sums, and products
/// by even numbers, carry upwards only.
[[nodiscard, gnu::always_inline]] constexpr std::uint32_t PermuteUpwards(std::uint32_t digits,
                                                                         std::uint32_t seed) noexcept
{
    digits += seed;
    digits ^= digits * 0x6C50B47CU;
    digits ^= digits * 0xB82F1E52U;
    digits ^= digits * 0xC7AFE638U;
    return digits ^ digits * 0x8D22F6E6U;
}

/// Digits, first in the lowest bit, scrambled and as a number. A `double` has digits beyond the 32 known ones: all of
/// these are 0, and each is flipped or not by the 32.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T ScrambledFraction(std::uint32_t reversed, std::uint32_t seed) noexcept
{
    std::uint32_t const digits = ReverseBits(PermuteUpwards(reversed, seed));
    if constexpr (sizeof(T) == sizeof(float))
        return Fraction<T>(digits);
    else
        return LongFraction<T>(std::uint64_t{digits} << 32 | Mix(digits ^ ~seed));
}

} // namespace detail

/// Radical inverse of an index in a base: its digits mirrored at the point. Index 6 in base 2 is 110, which gives 0.011
/// or 0.375.
///
/// The quotient of two integers in double precision, and rounded to T: correctly rounded for a `double` and bases to
/// 2^21. A base that the compiler knows needs no division of integers.
///
/// J. G. van der Corput, "Verteilungsfunktionen", 1935.
///
/// @param index any.
/// @param base 2 or more, a prime if several are used together; 0 and 1 give NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetRadicalInverse(std::uint32_t index, std::uint32_t base) noexcept
{
    if (base < 2)
        return std::numeric_limits<T>::quiet_NaN();
    return detail::ReverseDigits<T>(index, base, [=](std::uint32_t number) { return number / base; });
}

/// One coordinate of a Halton point: GetRadicalInverse() in the base of the dimension, which is the prime of that
/// number. J. H. Halton, "On the efficiency of certain quasi-random sequences of points", 1960.
///
/// Dimensions above the first ten or so fill the square badly together until there are thousands of points.
///
/// @param index any.
/// @param dimension 0 (base 2), 1 (base 3) and so on, below HALTON_DIMENSIONS; others give NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] T GetHalton(std::uint32_t index, unsigned int dimension) noexcept;

/// Halton point in the plane: the radical inverses in base 2 and in base 3, which are dimensions 0 and 1.
///
/// @param index any.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector2<T> GetHaltonPoint(std::uint32_t index) noexcept
{
    // Base 2 has as many digits as there are bits. To round half of them in a `float` would be to round twice.
    T x{};
    if constexpr (sizeof(T) == sizeof(float))
    {
        x = static_cast<T>(static_cast<double>(detail::ReverseBits(index)) * 0x1p-32);
        x = x < T{1} ? x : detail::BELOW_ONE<T>;
    }
    else
        x = detail::Fraction<T>(detail::ReverseBits(index));
    return {x, GetRadicalInverse<T>(index, 3)};
}

/// R2 point in the plane: 1/2 + index / g and 1/2 + index / g^2 modulo 1, where g = 1.3247..., the plastic number,
/// solves g^3 = g + 1.
///
/// Each run of consecutive indices is spread evenly, wherever it starts. The multiples are those of the constants to
/// 128 binary digits, reduced exactly: a coordinate is the exact one, rounded towards 0 to 24 or 53 digits, give or
/// take one part in 2^64 before that, for any index.
///
/// M. Roberts, "The Unreasonable Effectiveness of Quasirandom Sequences", 2018.
///
/// @param index any; 0 gives (0.5, 0.5).
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector2<T> GetR2Point(std::uint64_t index) noexcept
{
    constexpr std::uint64_t HALF = std::uint64_t{1} << 63;
    std::uint64_t const x = index * 0xC13FA9A902A6328FU + detail::UpperProduct(index, 0x434FF71B2D97724BU) + HALF;
    std::uint64_t const y = index * 0x91E10DA5C79E7B1CU + detail::UpperProduct(index, 0xD438A0A8E6C9C0FCU) + HALF;
    return {detail::LongFraction<T>(x), detail::LongFraction<T>(y)};
}

/// One coordinate of a Sobol point, in the order of the index's own digits, not of a Gray code.
///
/// 32 digits, all of which a `double` holds and the first 24 of which a `float` does. The points are nets in base 2:
/// see GetSobolPoint() for the first two dimensions. Index 0 is 0 in every dimension.
///
/// I. M. Sobol, "On the distribution of points in a cube and the approximate evaluation of integrals", 1967. The
/// direction numbers are those of S. Joe, F. Y. Kuo, "Constructing Sobol sequences with better two-dimensional
/// projections", 2008, in their order.
///
/// @param index any.
/// @param dimension below SOBOL_DIMENSIONS; others give NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] T GetSobol(std::uint32_t index, unsigned int dimension) noexcept;

/// Sobol point in the plane: dimensions 0 and 1.
///
/// A (0, 2)-sequence in base 2: of any 2^(m + n) indices that start at a multiple of their number, exactly one point
/// lies in each of the 2^m times 2^n equal cells of the square, for all m and n up to 24 (`float`) or 32 (`double`).
///
/// @param index any; 0 gives (0, 0).
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector2<T> GetSobolPoint(std::uint32_t index) noexcept
{
    return {detail::Fraction<T>(detail::ReverseBits(index)),
            detail::Fraction<T>(detail::ReverseBits(detail::SumAlongPascal(index)))};
}

/// One coordinate of a Sobol point, scrambled: each binary digit is flipped or not, by the digits before it and the
/// seed alone, so that the points stay the nets that they are. A. B. Owen, "Randomly permuted (t,m,s)-nets and
/// (t,s)-sequences", 1995.
///
/// What flips a digit is a hash: B. Burley, "Practical Hash-based Owen Scrambling", 2020, with the permutation of
/// S. Laine, T. Karras, "Stratified Sampling for Stochastic Transparency", 2011; each dimension has a seed of its own,
/// made of the one given. A `double` is scrambled in all of its 53 digits, of which the first 24 are those of the
/// `float`.
///
/// @param index any.
/// @param dimension below SOBOL_DIMENSIONS; others give NaN.
/// @param seed any; each gives other points.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] T GetOwenSobol(std::uint32_t index, unsigned int dimension, std::uint32_t seed) noexcept;

/// Scrambled Sobol point in the plane: dimensions 0 and 1 of GetOwenSobol(). A (0, 2)-sequence, as GetSobolPoint() is.
///
/// For more such planes whose points are independent of these, give another seed and the indices in another order, that
/// of GetShuffledIndex().
///
/// @param index any.
/// @param seed any; each gives other points.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr tVector2<T> GetOwenSobolPoint(std::uint32_t index,
                                                                          std::uint32_t seed) noexcept
{
    return {detail::ScrambledFraction<T>(index, detail::MixSeed(seed, 0)),
            detail::ScrambledFraction<T>(detail::SumAlongPascal(index), detail::MixSeed(seed, 1))};
}

/// The index in a random order, which keeps runs together: the 2^k indices from a multiple of 2^k on are those of one
/// such run, in another order, for every k. So each run of a net gives a run of this net. B. Burley, "Practical
/// Hash-based Owen Scrambling", 2020.
///
/// Every index has one place, and every place has its index.
///
/// @param index any.
/// @param seed any; each gives another order.
[[nodiscard]] BV_INLINE constexpr std::uint32_t GetShuffledIndex(std::uint32_t index, std::uint32_t seed) noexcept
{
    std::uint32_t const purpose = SOBOL_DIMENSIONS; // behind those of the coordinates
    return detail::ReverseBits(detail::PermuteUpwards(detail::ReverseBits(index), detail::MixSeed(seed, purpose)));
}

/// A number moved to the right on the circle of circumference 1: x + shift, less 1 where that is 1 or more. A shift of
/// its own for each pixel tells apart what the same sequence gives to all. R. Cranley, T. N. L. Patterson,
/// "Randomization of number theoretic methods for multiple integration", 1976.
///
/// @param x in [0, 1), which is not checked.
/// @param shift in [0, 1), which is not checked.
/// @return a number in [0, 1); NaN where either argument is.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T ShiftAround(T x, std::type_identity_t<T> shift) noexcept
{
    T const sum = x + shift;
    return sum >= T{1} ? sum - T{1} : sum;
}

/// A point moved on the torus: ShiftAround() of each coordinate.
template <typename T>
[[nodiscard]] constexpr tVector2<T> ShiftAround(tVector2<T> const& point, tVector2<T> const& shift) noexcept
{
    return {ShiftAround<T>(point.x, shift.x), ShiftAround<T>(point.y, shift.y)};
}

extern template BV_TEMPLATE float GetRadicalInverse<float>(std::uint32_t, std::uint32_t) noexcept;
extern template BV_TEMPLATE double GetRadicalInverse<double>(std::uint32_t, std::uint32_t) noexcept;
extern template BV_TEMPLATE float GetHalton<float>(std::uint32_t, unsigned int) noexcept;
extern template BV_TEMPLATE double GetHalton<double>(std::uint32_t, unsigned int) noexcept;
extern template BV_TEMPLATE tVector2<float> GetHaltonPoint<float>(std::uint32_t) noexcept;
extern template BV_TEMPLATE tVector2<double> GetHaltonPoint<double>(std::uint32_t) noexcept;
extern template BV_TEMPLATE tVector2<float> GetR2Point<float>(std::uint64_t) noexcept;
extern template BV_TEMPLATE tVector2<double> GetR2Point<double>(std::uint64_t) noexcept;
extern template BV_TEMPLATE float GetSobol<float>(std::uint32_t, unsigned int) noexcept;
extern template BV_TEMPLATE double GetSobol<double>(std::uint32_t, unsigned int) noexcept;
extern template BV_TEMPLATE tVector2<float> GetSobolPoint<float>(std::uint32_t) noexcept;
extern template BV_TEMPLATE tVector2<double> GetSobolPoint<double>(std::uint32_t) noexcept;
extern template BV_TEMPLATE float GetOwenSobol<float>(std::uint32_t, unsigned int, std::uint32_t) noexcept;
extern template BV_TEMPLATE double GetOwenSobol<double>(std::uint32_t, unsigned int, std::uint32_t) noexcept;
extern template BV_TEMPLATE tVector2<float> GetOwenSobolPoint<float>(std::uint32_t, std::uint32_t) noexcept;
extern template BV_TEMPLATE tVector2<double> GetOwenSobolPoint<double>(std::uint32_t, std::uint32_t) noexcept;
extern template BV_TEMPLATE float ShiftAround(float, float) noexcept;
extern template BV_TEMPLATE double ShiftAround(double, double) noexcept;
extern template BV_TEMPLATE tVector2<float> ShiftAround(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> ShiftAround(tVector2<double> const&, tVector2<double> const&) noexcept;

} // namespace bv::maths
