#define BV_INSTANCES // of the inline functions: see bv/Export.h
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

} // namespace

// clang-format off

constexpr unsigned char detail::PEARSON_PERMUTATION[256] = {
     92, 213, 150, 172, 106,  87, 185,  17, 113, 198, 216,  69, 182, 251, 234, 132,
     22,  73, 120, 255, 179, 153, 143, 139, 195,  41, 190, 127, 201, 191,   8,  60,
    252,  56,  39, 104,  53, 222, 247,  51, 154,  37, 123,  59,  34,  49, 236,  82,
    230, 174, 149, 128, 137,  85, 189, 165,  43, 156,   6,  75, 243,  13, 163, 101,
    210, 112, 164, 158,  95, 235,  33, 186, 184,   1,  79, 124, 144,  46,  16,  12,
     54,  93,  40, 133, 166, 100,  15, 126, 140,   5,  65, 194,  48,  45, 119, 212,
    175, 250, 187, 117, 183,   3,  67,  91, 155, 168, 134,  29,  27, 122,  84, 199,
     42,  90, 130,  38, 220, 178,  89, 246, 192, 227,  86, 242, 145, 169, 146, 142,
    108,  10,  66, 152,   4, 200,  36,  62, 237, 105, 217,  25, 171,  57,  35,  26,
     61,  83,  20, 109, 167, 162,  99, 224, 221,   2,  68,  58,  28,  81, 135,  74,
     31, 228, 233,  44, 219, 116, 231, 205, 232, 160, 202,  14, 114,  64,  24, 203,
    193, 218, 131, 138,  72, 211, 188, 111,  30, 254, 161,   7,  98, 103, 240, 115,
    176, 196,  18, 223, 151, 148, 147, 136, 118,  63, 215, 129, 225,  76,  94, 181,
    170, 253, 159, 244, 238,  50, 204, 177,  47, 214, 229, 206, 208, 249, 239,  78,
    173,  19, 245,   9, 209,  88, 102, 226, 110,  52,   0,  32, 125, 180, 121,  55,
     97,  70, 197,  71,  77,  96, 107, 241,  11, 157, 248, 207,  23, 141,  80,  21,
};

// clang-format on

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
