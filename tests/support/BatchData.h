#pragma once

/// @file
/// Arrays to work on.

#include <limits>
#include <random>
#include <vector>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace bv::test
{

/// A number from low to high.
template <typename T>
[[nodiscard]] T RandomNumber(std::mt19937& generator, T low, T high)
{
    return low + (high - low) * (static_cast<T>(generator()) * T(0x1p-32));
}

template <typename T>
[[nodiscard]] std::vector<maths::tVector3<T>> RandomPoints(std::mt19937& generator, std::size_t count, T low, T high)
{
    std::vector<maths::tVector3<T>> points(count);
    for (maths::tVector3<T>& point : points)
    {
        point.x = RandomNumber(generator, low, high);
        point.y = RandomNumber(generator, low, high);
        point.z = RandomNumber(generator, low, high);
    }
    return points;
}

/// A matrix in state GENERAL whose w is positive for points with positive components.
template <typename T>
[[nodiscard]] maths::tMatrix4<T> RandomMatrix(std::mt19937& generator)
{
    T values[16];
    for (int i = 0; i < 16; ++i)
        values[i] = i < 12 ? RandomNumber(generator, T(-3), T(3)) : RandomNumber(generator, T(0.5), T(2));
    return maths::tMatrix4<T>(values);
}

/// Every triple of the values at which arithmetic does something of its own.
template <typename T>
[[nodiscard]] std::vector<maths::tVector3<T>> SpecialPoints()
{
    using Limits = std::numeric_limits<T>;
    T const values[] = {0,
                        T(-0.0),
                        1,
                        -1,
                        Limits::infinity(),
                        -Limits::infinity(),
                        Limits::quiet_NaN(),
                        Limits::denorm_min(),
                        Limits::max(),
                        Limits::lowest()};
    std::vector<maths::tVector3<T>> points;
    for (T const x : values)
        for (T const y : values)
            for (T const z : values)
                points.emplace_back(x, y, z);
    return points;
}

} // namespace bv::test
