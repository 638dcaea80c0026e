#pragma once

/// @file
/// The constants of the gradient noise, for its single and its batch forms.

#include <cstdint>

namespace bv::maths
{

constexpr unsigned int MAX_OCTAVES = 10;

/// A table of 256 bytes that repeats. Its arrays are plain ones: their access is no function, which code for one
/// processor would share with code for another.
struct NoiseTable
{
    /// Twice in a row, so that sums of two bytes, and the entry behind, need no wrapping.
    std::uint8_t entries[512];
    /// For processors that look up 16 entries at a time: each 16 entries, combined by exclusive or with the 16 in front
    /// of them, but for those that begin a half of the table.
    alignas(64) std::uint8_t steps[256];
};

/// Gradients come in pairs: that at a corner of a cell and that at its neighbour along the last axis, in the high and
/// in the low half of a byte. A gradient is a sum of two coordinates, each with a sign, and has four bits, from the
/// highest:
/// - the first is y, else x;
/// - the second is z, else y;
/// - the first is negated;
/// - the second is negated.
struct NoiseTables
{
    NoiseTable permutation;
    NoiseTable spaceGradients;           ///< by the sum that is hashed last
    NoiseTable planeGradients;           ///< by the sum that is hashed last but one, where z is 0
    NoiseTable lineGradients;            ///< by the cell, where y and z are 0
    std::uint16_t permutationPairs[512]; ///< an entry of the permutation and, above it, the one behind
    float slopes[257];                   ///< of the gradients along x by the cell, where y and z are 0: -1, 0 or 1
    /// The weight of the first of n octaves, each half as heavy as the one before, for which the weights add up to 1:
    /// 2^(n-1) / (2^n - 1).
    float amplitudes[MAX_OCTAVES + 1];
};

extern NoiseTables const NOISE_TABLES;

} // namespace bv::maths
