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
[[nodiscard]] BV_INLINE unsigned int GetJenkinsHash(void const* data, unsigned long long length,
                                                    unsigned int seed) noexcept;

/// Pearson's hash of 8 bits, started from a seed.
///
/// Pearson, "Fast hashing of variable-length text strings", Communications of the ACM, 1990.
/// @param data the bytes; may be null when there are none.
/// @param length the number of bytes; with 0, the seed is returned unchanged.
/// @param seed any value; the result of one call as the seed of the next combines several pieces of data.
[[nodiscard]] BV_INLINE unsigned char GetPearsonHash(void const* data, unsigned long long length,
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

/// The permutation of GetPearsonHash(). It stands in the library, so that no other file holds a copy.
extern BV_API unsigned char const PEARSON_PERMUTATION[256];

} // namespace detail

[[gnu::always_inline]] BV_INLINE unsigned int GetJenkinsHash(void const* data, unsigned long long length,
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

[[gnu::always_inline]] BV_INLINE unsigned char GetPearsonHash(void const* data, unsigned long long length,
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
