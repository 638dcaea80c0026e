#pragma once

/// @file
/// The points of the rows on noise.

#include <vector>

#include "Bench.h"

namespace bench
{

/// Coordinates of COUNT points, three each, across the whole table of the noise and both signs.
inline std::vector<double> NoisePoints()
{
    return Numbers(71, 3 * COUNT, -300, 300);
}

} // namespace bench
