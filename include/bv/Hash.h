#pragma once

/// @file
/// Hashes for hash tables and integer lattices. None of them is cryptographic. All work on unsigned integers of 32 bits
/// that wrap, keep nothing between two calls, and may be called from any thread.

#include "bv/Export.h"

namespace bv
{

class String;

/// 32-bit FNV-1a hash of the UTF-8 bytes of a text. The empty text gives 2166136261.
///
/// Fowler, Noll, Vo, "FNV hash history", 1991.
[[nodiscard]] BV_API unsigned int FNVHash32(String const& text) noexcept;

/// Jenkins' one-at-a-time hash, started from a seed.
///
/// Jenkins, "Hash functions", Dr. Dobb's Journal, 1997.
/// @param data the bytes; may be null when there are none.
/// @param length the number of bytes; with 0, the finishing steps are applied to the seed alone.
/// @param seed any value; the result of one call as the seed of the next combines several pieces of data.
[[nodiscard]] BV_API inline unsigned int GetJenkinsHash(void const* data, unsigned long long length,
                                                        unsigned int seed) noexcept;

/// Pearson's hash of 8 bits, started from a seed.
///
/// Pearson, "Fast hashing of variable-length text strings", Communications of the ACM, 1990.
/// @param data the bytes; may be null when there are none.
/// @param length the number of bytes; with 0, the seed is returned unchanged.
/// @param seed any value; the result of one call as the seed of the next combines several pieces of data.
[[nodiscard]] BV_API inline unsigned char GetPearsonHash(void const* data, unsigned long long length,
                                                         unsigned char seed) noexcept;

/// Long-period hash of a point of an integer lattice, from 0 to 23.
///
/// Sums seven permutation hashes whose table sizes (17, 19, 23, 24, 29, 31, 37) share no factor, modulo 24. In each
/// table, x wraps with the Euclidean remainder, a negative x too; y is taken as its unsigned pattern of 32 bits.
///
/// Lagae, Dutre, "Long period hash functions for procedural texturing", 2006.
[[nodiscard]] BV_API unsigned int GetLagaeHash(int x, int y) noexcept;

// Bodies that a loop over keys of a known length absorbs.

namespace detail
{

// clang-format off

/// The permutation of GetPearsonHash().
inline constexpr unsigned char PEARSON_PERMUTATION[256] = {
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

} // namespace detail

[[gnu::always_inline]] inline unsigned int GetJenkinsHash(void const* data, unsigned long long length,
                                                          unsigned int seed) noexcept
{
    auto const* bytes = static_cast<unsigned char const*>(data);
    unsigned int hash = seed;
    for (unsigned long long i = 0; i < length; ++i)
    {
        hash += bytes[i];
        hash += hash << 10;
        hash ^= hash >> 6;
    }
    hash += hash << 3;
    hash ^= hash >> 11;
    hash += hash << 15;
    return hash;
}

[[gnu::always_inline]] inline unsigned char GetPearsonHash(void const* data, unsigned long long length,
                                                           unsigned char seed) noexcept
{
    auto const* bytes = static_cast<unsigned char const*>(data);
    unsigned char hash = seed;
    for (unsigned long long i = 0; i < length; ++i)
        hash = detail::PEARSON_PERMUTATION[bytes[i] ^ hash];
    return hash;
}

static_assert(sizeof(unsigned int) == 4);

} // namespace bv
