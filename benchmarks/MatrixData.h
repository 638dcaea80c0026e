#pragma once

/// @file
/// The numbers that the rows of matrices and transforms work on, for the library and its peers alike.

#include <cmath>

#include "Bench.h"

namespace bench
{

/// Elements row by row, 16 numbers for each matrix, dominated by the diagonal: determinants and the fourth component of
/// a transformed point of [-1, 1)^3 stay away from zero.
inline std::vector<double> GeneralMatrices(std::uint32_t seed)
{
    std::vector<double> numbers = Numbers(seed, 16 * MATRIX_COUNT, -1, 1);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (i % 16 % 5 == 0)
            numbers[i] += 5;
    return numbers;
}

/// The same with (0, 0, 0, 1) as the fourth row.
inline std::vector<double> AffineMatrices(std::uint32_t seed)
{
    std::vector<double> numbers = GeneralMatrices(seed);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (i % 16 >= 12)
            numbers[i] = i % 16 == 15 ? 1 : 0;
    return numbers;
}

inline std::vector<double> DiagonalMatrices(std::uint32_t seed)
{
    std::vector<double> numbers = Numbers(seed, 16 * MATRIX_COUNT, 0.5, 2);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (i % 16 % 5 != 0)
            numbers[i] = 0;
    return numbers;
}

inline std::vector<double> IdentityMatrices()
{
    std::vector<double> numbers(16 * MATRIX_COUNT);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = i % 16 % 5 == 0 ? 1 : 0;
    return numbers;
}

/// Rotations from the unit quaternions of four numbers.
inline std::vector<double> RotationMatrices(std::uint32_t seed)
{
    std::vector<double> const quaternions = Numbers(seed, 4 * MATRIX_COUNT, 0.25, 1);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < quaternions.size(); i += 4)
    {
        double const* const q = quaternions.data() + i;
        double const length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        double const w = q[0] / length, x = q[1] / length, y = q[2] / length, z = q[3] / length;
        double const elements[] = {1 - 2 * (y * y + z * z),
                                   2 * (x * y - w * z),
                                   2 * (x * z + w * y),
                                   0,
                                   2 * (x * y + w * z),
                                   1 - 2 * (x * x + z * z),
                                   2 * (y * z - w * x),
                                   0,
                                   2 * (x * z - w * y),
                                   2 * (y * z + w * x),
                                   1 - 2 * (x * x + y * y),
                                   0,
                                   0,
                                   0,
                                   0,
                                   1};
        numbers.insert(numbers.end(), elements, elements + 16);
    }
    return numbers;
}

/// Reflections in four dimensions, I - 2vv^T / v^Tv. Twice the same one is the identity, so that products in place can
/// go on for ever without a number that grows or vanishes; they are no rotations, and no element is zero.
inline std::vector<double> ReflectionMatrices(std::uint32_t seed)
{
    std::vector<double> const normals = Numbers(seed, 4 * MATRIX_COUNT, 0.25, 1);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < normals.size(); i += 4)
    {
        double const* const v = normals.data() + i;
        double const squared = v[0] * v[0] + v[1] * v[1] + v[2] * v[2] + v[3] * v[3];
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t column = 0; column < 4; ++column)
                numbers.push_back((row == column ? 1 : 0) - 2 * v[row] * v[column] / squared);
    }
    return numbers;
}

/// The same matrices with another first element.
inline std::vector<double> WithOtherFirst(std::vector<double> numbers)
{
    for (std::size_t i = 0; i < numbers.size(); i += 16)
        numbers[i] += 1;
    return numbers;
}

/// A point on the axis, the direction of the axis and an angle: 7 numbers for each rotation.
inline std::vector<double> RotationArguments()
{
    return Numbers(7, 7 * MATRIX_COUNT, 0.5, 2);
}

/// Left, right, bottom, top, near, far: 6 numbers for each projection.
inline std::vector<double> ProjectionArguments()
{
    std::vector<double> numbers = Numbers(8, 6 * MATRIX_COUNT, 0.5, 1);
    for (std::size_t i = 0; i < numbers.size(); i += 6)
    {
        numbers[i] = -numbers[i];
        numbers[i + 2] = -numbers[i + 2];
        numbers[i + 5] += 100;
    }
    return numbers;
}

template <typename T>
struct SixteenValues
{
    T m[16];

    explicit SixteenValues(double const* numbers)
    {
        for (std::size_t i = 0; i < 16; ++i)
            m[i] = static_cast<T>(numbers[i]);
    }
};

/// The elements of general matrices, as they are handed over one by one.
template <typename T>
std::vector<SixteenValues<T>> ManyValues()
{
    return Build(GeneralMatrices(1), 16, [](double const* m) { return SixteenValues<T>(m); });
}

template <typename T>
struct RotationArgument
{
    T point[3], direction[3], angle;

    explicit RotationArgument(double const* numbers)
        : point{T(numbers[0]), T(numbers[1]), T(numbers[2])},
          direction{T(numbers[3]), T(numbers[4]), T(numbers[5])},
          angle{T(numbers[6])}
    {
    }
};

template <typename T>
struct ProjectionArgument
{
    T left, right, bottom, top, nearPlane, farPlane;

    explicit ProjectionArgument(double const* numbers)
        : left{T(numbers[0])},
          right{T(numbers[1])},
          bottom{T(numbers[2])},
          top{T(numbers[3])},
          nearPlane{T(numbers[4])},
          farPlane{T(numbers[5])}
    {
    }
};

/// Components of `count` vectors in [-1, 1).
inline std::vector<double> Vectors(std::uint32_t seed, std::size_t count)
{
    return Numbers(seed, 3 * count, -1, 1);
}

/// Directions of length 1.
inline std::vector<double> UnitVectors(std::uint32_t seed, std::size_t count)
{
    std::vector<double> numbers = Numbers(seed, 3 * count, 0.25, 1);
    for (std::size_t i = 0; i < numbers.size(); i += 3)
    {
        double* const v = numbers.data() + i;
        double const length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
        v[0] /= length;
        v[1] /= length;
        v[2] /= length;
    }
    return numbers;
}

/// Offsets of translations, one for each matrix.
inline std::vector<double> Offsets()
{
    return Vectors(15, MATRIX_COUNT);
}

/// Indices 0, 1 and 2 in no order.
inline std::vector<unsigned int> Indices()
{
    return Build(Numbers(9, COUNT, 0, 3), 1, [](double const* number) { return static_cast<unsigned int>(*number); });
}

/// A row that changes items where they lie: `function(items[i], rest[i]...)`.
template <typename Function, typename Item, typename... Rest>
void AddUpdate(std::string const& name, Function function, std::vector<Item> items, std::vector<Rest>... rest)
{
    auto const data =
        std::make_shared<std::tuple<std::vector<Item>, std::vector<Rest>...>>(std::move(items), std::move(rest)...);
    std::size_t const count = std::get<0>(*data).size();
    AddRun(name, count,
           [=]
           {
               std::apply(
                   [&](auto&... arrays)
                   {
                       for (std::size_t i = 0; i < count; ++i)
                           function(arrays[i]...);
                   },
                   *data);
           });
}

} // namespace bench
