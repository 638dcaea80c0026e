#pragma once

/// @file
/// Arrays to work on.

#include <cstddef>
#include <random>
#include <vector>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
#include "support/Numbers.h"
#include "support/Random.h"

namespace bv::test
{

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
    std::vector<maths::tVector3<T>> points;
    for (T const x : SPECIAL_VALUES<T>)
        for (T const y : SPECIAL_VALUES<T>)
            for (T const z : SPECIAL_VALUES<T>)
                points.emplace_back(x, y, z);
    return points;
}

} // namespace bv::test
