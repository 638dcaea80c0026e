#pragma once

/// @file
/// The arrays of the rows on batches: one that fits the second-level cache, and one beyond the last-level cache.

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "Bench.h"

namespace bench
{

/// Points beyond any cache: 48 MiB of `float` and 96 MiB of `double` coordinates.
inline constexpr std::size_t LARGE_COUNT = std::size_t{4} << 20;

/// The same coordinates for every library. Those of the large array repeat the small one's.
template <typename T>
std::vector<T> BatchCoordinates(std::size_t count)
{
    std::vector<double> const numbers = Numbers(171, 3 * COUNT, 1, 10);
    std::vector<T> coordinates(3 * count);
    for (std::size_t i = 0; i < coordinates.size(); ++i)
        coordinates[i] = static_cast<T>(numbers[i % numbers.size()]);
    return coordinates;
}

/// A projective matrix, row by row, under which every point of the arrays has a positive w.
inline constexpr std::array<double, 16> PROJECTIVE = {0.5,  0.25, -1,   3, -0.75, 1.5,  0.125, -2,
                                                      0.25, 0.5,  0.75, 4, 0.5,   0.25, 0.125, 1};
/// A matrix whose directions keep any length.
inline constexpr std::array<double, 16> AFFINE = {0.5,  0.25, -1,   3, -0.75, 1.5, 0.125, -2,
                                                  0.25, 0.5,  0.75, 4, 0,     0,   0,     1};

inline std::string SizeName(std::size_t count)
{
    return count == LARGE_COUNT ? " beyond the caches" : "";
}

} // namespace bench
