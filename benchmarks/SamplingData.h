#pragma once

/// @file
/// The numbers that the rows of sampling work on, for the library and its peers alike.

#include <cmath>

#include "Agreement.h"
#include "Bench.h"

namespace bench
{

/// Seed of the scrambled points.
inline constexpr std::uint32_t SCRAMBLE = 12345;
/// Cosine of half the opening of the cone.
inline constexpr double CONE = 0.75;

/// Points of the square, as any library's type of two numbers.
template <typename Vector>
std::vector<Vector> Squares()
{
    return Build(Numbers(61, 2 * COUNT, 0, 1), 2,
                 [](double const* n)
                 {
                     Vector square;
                     square.x = static_cast<decltype(square.x)>(n[0]);
                     square.y = static_cast<decltype(square.y)>(n[1]);
                     return square;
                 });
}

/// Points of the unit disc.
template <typename Vector>
std::vector<Vector> DiscPoints()
{
    return Build(Numbers(62, 2 * COUNT, 0, 1), 2,
                 [](double const* n)
                 {
                     Vector point;
                     point.x = static_cast<decltype(point.x)>(std::sqrt(n[0]) * std::cos(6.28318530717958648 * n[1]));
                     point.y = static_cast<decltype(point.y)>(std::sqrt(n[0]) * std::sin(6.28318530717958648 * n[1]));
                     return point;
                 });
}

/// Unit vectors.
template <typename Vector>
std::vector<Vector> Normals(std::uint32_t seed)
{
    return Build(Numbers(seed, 2 * COUNT, 0, 1), 2,
                 [](double const* n)
                 {
                     double const z = 1 - 2 * n[0];
                     double const radius = std::sqrt(1 - z * z);
                     Vector normal;
                     normal.x = static_cast<decltype(normal.x)>(radius * std::cos(6.28318530717958648 * n[1]));
                     normal.y = static_cast<decltype(normal.y)>(radius * std::sin(6.28318530717958648 * n[1]));
                     normal.z = static_cast<decltype(normal.z)>(z);
                     return normal;
                 });
}

/// Indices as a renderer counts them: pixels of 64 samples, one after the other.
inline std::vector<std::uint32_t> Indices()
{
    std::vector<std::uint32_t> indices;
    for (std::uint32_t i = 0; i < COUNT; ++i)
        indices.push_back(777 * 64 + i);
    return indices;
}

/// A row, and its numbers for the comparison with the other libraries.
template <typename T, typename Function, typename First, typename... Rest>
void AddRow(char const* library, char const* operation, Function function, std::vector<First> const& first,
            std::vector<Rest> const&... rest)
{
    std::string const name = Name<T>(std::string("sampling/") + operation, library);
    AddMap(name, function, first, rest...);
    AddNumbers(
        name,
        [=]
        {
            std::vector<double> numbers;
            for (std::size_t i = 0; i < first.size(); ++i)
            {
                auto const result = function(first[i], rest[i]...);
                if constexpr (requires { result.x; })
                {
                    numbers.insert(numbers.end(), {static_cast<double>(result.x), static_cast<double>(result.y)});
                    if constexpr (requires { result.z; })
                        numbers.push_back(static_cast<double>(result.z));
                }
                else
                    numbers.push_back(static_cast<double>(result));
            }
            return numbers;
        });
}

} // namespace bench
