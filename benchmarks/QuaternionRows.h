#pragma once

/// @file
/// The rows on quaternions. The loops are the same for every library; what they call is what that library's users would
/// write, a structure of types and functions with
///
/// - `Quaternion`, `Matrix`, `Vector`, and `makeQuaternion`, `makeMatrix`, `makeVector` from numbers;
/// - `product`, `rotated`, `normalised`, `inverse`, `toMatrix`, `fromMatrix`, `fromAxis`, `between`, `slerp`, `nlerp`;
/// - `exp` of a half rotation vector, and `log` of a rotation;
/// - `append`, which gives the numbers of each type, matrices as their upper 3x3, row by row.
///
/// A library leaves out what it has no function for.

#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "Agreement.h"
#include "MatrixData.h"

namespace bench
{

/// Quaternions of length 1, x, y, z and w in turn: any rotations, those of which w is negative left out, so that the
/// smaller of two angles is the same for all libraries.
inline std::vector<double> Quaternions(std::uint32_t seed)
{
    std::vector<double> numbers = Numbers(seed, 4 * COUNT, -1, 1);
    for (std::size_t i = 0; i < numbers.size(); i += 4)
    {
        double* const q = numbers.data() + i;
        q[3] = std::abs(q[3]) + 0.0625;
        double const length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        for (std::size_t k = 0; k < 4; ++k)
            q[k] /= length;
    }
    return numbers;
}

/// The same rotations as matrices, 16 numbers each.
inline std::vector<double> MatricesOf(std::vector<double> const& quaternions)
{
    std::vector<double> numbers;
    for (std::size_t i = 0; i < quaternions.size(); i += 4)
    {
        double const* const q = quaternions.data() + i;
        double const x = q[0], y = q[1], z = q[2], w = q[3];
        numbers.insert(numbers.end(),
                       {1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y), 0, 2 * (x * y + w * z),
                        1 - 2 * (x * x + z * z), 2 * (y * z - w * x), 0, 2 * (x * z - w * y), 2 * (y * z + w * x),
                        1 - 2 * (x * x + y * y), 0, 0, 0, 0, 1});
    }
    return numbers;
}

/// A row whose results have numbers to agree on: `function(in[i]...)`.
template <typename Library, typename Function, typename First, typename... Rest>
void AddAgreed(std::string const& name, Function function, std::vector<First> const& first,
               std::vector<Rest> const&... rest)
{
    AddMap(name, function, first, rest...);
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (std::size_t i = 0; i < first.size(); ++i)
                       Library::append(numbers, function(first[i], rest[i]...));
                   return numbers;
               });
}

/// All rows of a library in one precision.
template <typename T, typename Library>
void AddQuaternionRows()
{
    using Quaternion = typename Library::Quaternion;
    using Vector = typename Library::Vector;
    auto const name = [](char const* row) { return Name<T>(std::string("quaternion/") + row, Library::NAME); };
    auto const a = Build(Quaternions(41), 4, Library::makeQuaternion);
    auto const b = Build(Quaternions(42), 4, Library::makeQuaternion);
    auto const any = Build(Numbers(43, 4 * COUNT, 0.25, 1), 4, Library::makeQuaternion);
    auto const vectors = Build(Vectors(44, COUNT), 3, Library::makeVector);
    auto const units = Build(UnitVectors(45, COUNT), 3, Library::makeVector);
    auto const otherUnits = Build(UnitVectors(46, COUNT), 3, Library::makeVector);
    auto const number = [](double const* value) { return static_cast<T>(*value); };
    auto const angles = Build(Numbers(47, COUNT, 0.25, 3), 1, number);
    auto const shares = Build(Numbers(48, COUNT, 0, 1), 1, number);
    auto const matrices = Build(MatricesOf(Quaternions(41)), 16, Library::makeMatrix);

    AddAgreed<Library>(name("product"), Library::product, a, b);
    AddAgreed<Library>(
        name("rotate, one quaternion"), [q = a[0]](Vector const& v) { return Library::rotated(q, v); }, vectors);
    AddAgreed<Library>(name("rotate, many quaternions"), Library::rotated, a, vectors);
    AddAgreed<Library>(name("normalise"), Library::normalised, any);
    AddAgreed<Library>(name("inverse"), Library::inverse, any);
    AddAgreed<Library>(name("to a matrix"), Library::toMatrix, a);
    AddMap(name("from a matrix"), Library::fromMatrix, matrices);
    AddNumbers(name("from a matrix"), // libraries choose the sign as they like
               [=]
               {
                   std::vector<double> numbers;
                   for (auto const& matrix : matrices)
                       Library::append(numbers, Library::toMatrix(Library::fromMatrix(matrix)));
                   return numbers;
               });
    AddAgreed<Library>(name("from axis and angle"), Library::fromAxis, units, angles);
    AddAgreed<Library>(name("from two directions"), Library::between, units, otherUnits);
    AddAgreed<Library>(name("slerp"), Library::slerp, a, b, shares);
    AddAgreed<Library>(name("nlerp"), Library::nlerp, a, b, shares);
    if constexpr (requires(Quaternion const& q) { Library::exp(q); })
    {
        std::vector<double> vector = Vectors(49, COUNT);
        std::vector<double> pure;
        for (std::size_t i = 0; i < vector.size(); i += 3)
            pure.insert(pure.end(), {vector[i], vector[i + 1], vector[i + 2], 0});
        AddAgreed<Library>(name("exponential"), Library::exp, Build(pure, 4, Library::makeQuaternion));
        AddAgreed<Library>(name("logarithm"), Library::log, a);
    }
}

} // namespace bench
