#include "bv/Hash.h"

#include <cstddef>
#include <cstdint>

#include "bv/String.h"

namespace bv
{

namespace
{

// clang-format off

/// The permutations of GetLagaeHash(), one after the other.
constexpr std::uint8_t LAGAE[180] = {
    // 0 to 16
     7,  4,  6, 15, 11,  9,  1,  3,  0,  5, 10, 16, 13,  2,  8, 12, 14,
    // 0 to 18
    12,  9, 18, 15, 10,  7,  8, 16, 14, 11,  5,  3,  2,  0,  4, 17, 13,  1,  6,
    // 0 to 22
     6,  3,  7, 22, 15, 17, 13, 10,  2, 18, 16, 19,  5, 14,  8, 11, 20,  4,  0,  9,
    12,  1, 21,
    // 0 to 23
    11, 13,  9,  4, 20, 19,  3,  1,  8, 10,  6, 22, 16, 23,  2, 15, 18,  5,  0, 17,
    12, 21,  7, 14,
    // 0 to 28
    10,  2, 16, 11,  8, 17, 24, 23, 13, 20, 22,  5, 15, 12, 27,  0, 26, 19, 21, 28,
     3,  4, 18,  6, 14, 25,  1,  9,  7,
    // 0 to 30
    12, 24, 29,  0, 21, 19, 28, 13, 18,  3, 22,  6,  7, 23, 27,  1, 10, 11, 20, 16,
     2,  5,  9,  8, 26, 17, 30,  4, 14, 15, 25,
    // 0 to 36
    36,  8, 34, 24, 15, 14, 35, 12,  5, 18, 21, 26, 25, 27, 28, 10, 11, 30,  4, 19,
    22, 31, 13,  9, 16,  7,  3,  6, 23, 32, 29, 33, 17,  0,  1, 20,  2,
};

// clang-format on

/// One term of the Lagae hash, from the permutation of SIZE entries that starts at LAGAE[FIRST].
/// @tparam IS_NEGATIVE whether x stands for -1 - x, counted down from the permutation's end.
template <bool IS_NEGATIVE, std::uint32_t SIZE, std::size_t FIRST>
std::uint32_t LagaeTerm(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t const remainder = x % SIZE;
    std::uint32_t const i = IS_NEGATIVE ? SIZE - 1 - remainder : remainder;
    // The sum wraps modulo 2^32 before its remainder is taken.
    std::uint32_t const j = (LAGAE[FIRST + i] + y) % SIZE;
    return LAGAE[FIRST + j];
}

template <bool IS_NEGATIVE>
std::uint32_t LagaeSum(std::uint32_t x, std::uint32_t y)
{
    return LagaeTerm<IS_NEGATIVE, 37, 143>(x, y) + LagaeTerm<IS_NEGATIVE, 31, 112>(x, y) +
           LagaeTerm<IS_NEGATIVE, 29, 83>(x, y) + LagaeTerm<IS_NEGATIVE, 24, 59>(x, y) +
           LagaeTerm<IS_NEGATIVE, 23, 36>(x, y) + LagaeTerm<IS_NEGATIVE, 19, 17>(x, y) +
           LagaeTerm<IS_NEGATIVE, 17, 0>(x, y);
}

// The inline functions of the header have a symbol in the library, too.
[[gnu::used]] constexpr auto JENKINS_SYMBOL = &GetJenkinsHash;
[[gnu::used]] constexpr auto PEARSON_SYMBOL = &GetPearsonHash;

} // namespace

unsigned int FNVHash32(String const& text) noexcept
{
    std::uint32_t hash = 2166136261;
    for (char const* byte = text.ToCharArray(); *byte != '\0'; ++byte)
        hash = (hash ^ static_cast<unsigned char>(*byte)) * 16777619;
    return hash;
}

unsigned int GetLagaeHash(int x, int y) noexcept
{
    auto const column = static_cast<std::uint32_t>(x);
    auto const row = static_cast<std::uint32_t>(y);
    return (x >= 0 ? LagaeSum<false>(column, row) : LagaeSum<true>(~column, row)) % 24;
}

} // namespace bv
