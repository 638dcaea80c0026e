#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Sequences.h"

#include <array>
#include <cstddef>
#include <limits>

#include "bv/maths/detail/Lanes.h"

namespace bv::maths
{

namespace
{

/// A prime, and 2^64 divided by it, rounded up. The upper half of the product with an index is the quotient, exactly
/// for all indices and divisors of 32 bits: D. Lemire, O. Kaser, N. Kurz, "Faster Remainder by Direct Computation",
/// 2019.
struct Base
{
    std::uint64_t reciprocal;
    std::uint32_t prime;
};

consteval std::array<Base, HALTON_DIMENSIONS> FindPrimes()
{
    std::array<Base, HALTON_DIMENSIONS> bases{};
    std::size_t count = 0;
    for (std::uint32_t candidate = 2; count < bases.size(); ++candidate)
    {
        bool isPrime = true;
        for (std::size_t i = 0; i < count; ++i)
            isPrime = isPrime && candidate % bases[i].prime != 0;
        if (isPrime)
            bases[count++] = {~std::uint64_t{} / candidate + 1, candidate};
    }
    return bases;
}

constexpr std::array<Base, HALTON_DIMENSIONS> BASES = FindPrimes();

/// What a dimension of Sobol from the second on starts from: a primitive polynomial modulo 2, of which the coefficients
/// are the bits, and as many odd numbers as its degree says.
struct Start
{
    std::uint32_t polynomial;
    std::uint16_t numbers[9];
};

/// S. Joe, F. Y. Kuo, "Constructing Sobol sequences with better two-dimensional projections", 2008: the first lines of
/// their file new-joe-kuo-6.21201. The polynomials are all primitive ones in order.
constexpr Start STARTS[SOBOL_DIMENSIONS - 1] = {
    {3, {1}},
    {7, {1, 3}},
    {11, {1, 3, 1}},
    {13, {1, 1, 1}},
    {19, {1, 1, 3, 3}},
    {25, {1, 3, 5, 13}},
    {37, {1, 1, 5, 5, 17}},
    {41, {1, 1, 5, 5, 5}},
    {47, {1, 1, 7, 11, 19}},
    {55, {1, 1, 5, 1, 1}},
    {59, {1, 1, 1, 3, 11}},
    {61, {1, 3, 5, 5, 31}},
    {67, {1, 3, 3, 9, 7, 49}},
    {91, {1, 1, 1, 15, 21, 21}},
    {97, {1, 3, 1, 13, 27, 49}},
    {103, {1, 1, 1, 15, 7, 5}},
    {109, {1, 3, 1, 15, 13, 25}},
    {115, {1, 1, 5, 5, 19, 61}},
    {131, {1, 3, 7, 11, 23, 15, 103}},
    {137, {1, 3, 7, 13, 13, 15, 69}},
    {143, {1, 1, 3, 13, 7, 35, 63}},
    {145, {1, 3, 5, 9, 1, 25, 53}},
    {157, {1, 3, 1, 13, 9, 35, 107}},
    {167, {1, 3, 1, 5, 27, 61, 31}},
    {171, {1, 1, 5, 11, 19, 41, 61}},
    {185, {1, 3, 5, 3, 3, 13, 69}},
    {191, {1, 1, 7, 13, 1, 19, 1}},
    {193, {1, 3, 7, 5, 13, 19, 59}},
    {203, {1, 1, 3, 9, 25, 29, 41}},
    {211, {1, 3, 5, 13, 23, 1, 55}},
    {213, {1, 3, 7, 3, 13, 59, 17}},
    {229, {1, 3, 1, 3, 5, 53, 69}},
    {239, {1, 1, 5, 5, 23, 33, 13}},
    {241, {1, 1, 7, 7, 1, 61, 123}},
    {247, {1, 1, 7, 9, 13, 61, 49}},
    {253, {1, 3, 3, 5, 3, 55, 33}},
    {285, {1, 3, 1, 15, 31, 13, 49, 245}},
    {299, {1, 3, 5, 15, 31, 59, 63, 97}},
    {301, {1, 3, 1, 11, 11, 11, 77, 249}},
    {333, {1, 3, 1, 11, 27, 43, 71, 9}},
    {351, {1, 1, 7, 15, 21, 11, 81, 45}},
    {355, {1, 3, 7, 3, 25, 31, 65, 79}},
    {357, {1, 3, 1, 1, 19, 11, 3, 205}},
    {361, {1, 1, 5, 9, 19, 21, 29, 157}},
    {369, {1, 3, 7, 11, 1, 33, 89, 185}},
    {391, {1, 3, 3, 3, 15, 9, 79, 71}},
    {397, {1, 3, 7, 11, 15, 39, 119, 27}},
    {425, {1, 1, 3, 1, 11, 31, 97, 225}},
    {451, {1, 1, 1, 3, 23, 43, 57, 177}},
    {463, {1, 3, 7, 7, 17, 17, 37, 71}},
    {487, {1, 3, 1, 5, 27, 63, 123, 213}},
    {501, {1, 1, 3, 5, 11, 43, 53, 133}},
    {529, {1, 3, 5, 5, 29, 17, 47, 173, 479}},
    {539, {1, 3, 3, 11, 3, 1, 109, 9, 69}},
    {545, {1, 1, 1, 5, 17, 39, 23, 5, 343}},
    {557, {1, 3, 1, 5, 25, 15, 31, 103, 499}},
    {563, {1, 1, 1, 11, 11, 17, 63, 105, 183}},
    {601, {1, 1, 5, 11, 9, 29, 97, 231, 363}},
    {607, {1, 1, 5, 15, 19, 45, 41, 7, 383}},
    {617, {1, 3, 7, 7, 31, 19, 83, 137, 221}},
    {623, {1, 1, 1, 3, 23, 15, 111, 223, 83}},
    {631, {1, 1, 5, 13, 31, 15, 55, 25, 161}},
    {637, {1, 1, 3, 13, 25, 47, 39, 87, 257}},
};

constexpr std::size_t DIGITS = 32;

/// For each dimension and digit of an index, that of the lowest weight first, what it adds to the digits of the
/// coordinate, whose first one is the lowest bit.
struct alignas(64) Directions
{
    std::uint32_t of[SOBOL_DIMENSIONS][DIGITS];
};

/// The recurrence of P. Bratley, B. L. Fox, "Algorithm 659: Implementing Sobol's quasirandom sequence generator", 1988.
consteval Directions MakeDirections()
{
    Directions directions{};
    for (std::size_t k = 0; k < DIGITS; ++k)
        directions.of[0][k] = std::uint32_t{1} << k;
    for (std::size_t dimension = 1; dimension < SOBOL_DIMENSIONS; ++dimension)
    {
        Start const& start = STARTS[dimension - 1];
        std::size_t degree = 0;
        while (start.polynomial >> (degree + 1) != 0)
            ++degree;

        std::uint32_t numbers[DIGITS] = {}; // as fractions of 2^32
        for (std::size_t k = 0; k < DIGITS; ++k)
        {
            if (k < degree)
            {
                numbers[k] = std::uint32_t{start.numbers[k]} << (31 - k);
                continue;
            }
            numbers[k] = numbers[k - degree] ^ numbers[k - degree] >> degree;
            for (std::size_t i = 1; i < degree; ++i)
                if ((start.polynomial >> (degree - i) & 1) != 0)
                    numbers[k] ^= numbers[k - i];
        }
        for (std::size_t k = 0; k < DIGITS; ++k)
            directions.of[dimension][k] = detail::ReverseBits(numbers[k]);
    }
    return directions;
}

constexpr Directions DIRECTIONS = MakeDirections();

/// Digits of a coordinate, first in the lowest bit: the sum of the directions of those digits of the index that are 1.
std::uint32_t SumDirections(std::uint32_t index, unsigned int dimension) noexcept
{
    // Four digits at a time, without a branch. Compilers make shifts by different numbers of a plain loop.
    using Four = detail::Register<std::uint32_t, 16>;
    std::uint32_t const* const directions = DIRECTIONS.of[dimension];
    Four const digits = Four{} + index;
    Four bits = {1, 2, 4, 8};
    Four sums{};
    for (std::size_t k = 0; k < DIGITS / 4; ++k, bits <<= 4)
        sums ^= detail::LoadAligned<Four>(directions + 4 * k) & detail::BitsAs<Four>((digits & bits) != 0);
    return sums[0] ^ sums[1] ^ sums[2] ^ sums[3];
}

} // namespace

template <typename T>
T GetHalton(std::uint32_t index, unsigned int dimension) noexcept
{
    if (dimension >= HALTON_DIMENSIONS)
        return std::numeric_limits<T>::quiet_NaN();
    Base const& base = BASES[dimension];
    return detail::ReverseDigits<T>(index, base.prime,
                                    [reciprocal = base.reciprocal](std::uint32_t number)
                                    { return static_cast<std::uint32_t>(detail::UpperProduct(number, reciprocal)); });
}

template <typename T>
T GetSobol(std::uint32_t index, unsigned int dimension) noexcept
{
    if (dimension >= SOBOL_DIMENSIONS)
        return std::numeric_limits<T>::quiet_NaN();
    return detail::Fraction<T>(detail::ReverseBits(SumDirections(index, dimension)));
}

template <typename T>
T GetOwenSobol(std::uint32_t index, unsigned int dimension, std::uint32_t seed) noexcept
{
    if (dimension >= SOBOL_DIMENSIONS)
        return std::numeric_limits<T>::quiet_NaN();
    return detail::ScrambledFraction<T>(SumDirections(index, dimension), detail::MixSeed(seed, dimension));
}

template BV_TEMPLATE_INSTANCE float GetRadicalInverse<float>(std::uint32_t, std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE double GetRadicalInverse<double>(std::uint32_t, std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE float GetHalton<float>(std::uint32_t, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE double GetHalton<double>(std::uint32_t, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> GetHaltonPoint<float>(std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> GetHaltonPoint<double>(std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> GetR2Point<float>(std::uint64_t) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> GetR2Point<double>(std::uint64_t) noexcept;
template BV_TEMPLATE_INSTANCE float GetSobol<float>(std::uint32_t, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE double GetSobol<double>(std::uint32_t, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> GetSobolPoint<float>(std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> GetSobolPoint<double>(std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE float GetOwenSobol<float>(std::uint32_t, unsigned int, std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE double GetOwenSobol<double>(std::uint32_t, unsigned int, std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> GetOwenSobolPoint<float>(std::uint32_t, std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> GetOwenSobolPoint<double>(std::uint32_t, std::uint32_t) noexcept;
template BV_TEMPLATE_INSTANCE float ShiftAround(float, float) noexcept;
template BV_TEMPLATE_INSTANCE double ShiftAround(double, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> ShiftAround(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> ShiftAround(tVector2<double> const&, tVector2<double> const&) noexcept;

} // namespace bv::maths
