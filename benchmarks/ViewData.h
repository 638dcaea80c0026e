#pragma once

/// @file
/// The numbers that the rows of cameras and inverses work on, and how a row's results become numbers to agree on.

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "Agreement.h"
#include "MatrixData.h"

namespace bench
{

/// A row of AddMap() whose results, as plain numbers, are those of the other libraries: `write(result, numbers)`.
template <typename Function, typename Write, typename First, typename... Rest>
void AddAgreeing(std::string const& name, Function function, Write write, std::vector<First> const& first,
                 std::vector<Rest> const&... rest)
{
    AddMap(name, function, first, rest...);
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (std::size_t i = 0; i < first.size(); ++i)
                       write(function(first[i], rest[i]...), numbers);
                   return numbers;
               });
}

/// A row of AddMapBy(), in the same way.
template <typename Object, typename Function, typename Write, typename In>
void AddAgreeingBy(std::string const& name, Object const& object, Function function, Write write,
                   std::vector<In> const& in)
{
    AddMapBy(name, object, function, in);
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (In const& item : in)
                       write(function(object, item), numbers);
                   return numbers;
               });
}

/// Eye, target and upper direction: 9 numbers for each camera.
inline std::vector<double> CameraArguments()
{
    return Numbers(51, 9 * MATRIX_COUNT, -1, 1);
}

/// Field of view or tangent, aspect, near and far: 4 numbers for each projection.
inline std::vector<double> LensArguments()
{
    std::vector<double> numbers = Numbers(52, 4 * MATRIX_COUNT, 0.5, 1);
    for (std::size_t i = 3; i < numbers.size(); i += 4)
        numbers[i] += 100;
    return numbers;
}

template <typename T>
struct LensArgument
{
    T angle, aspect, nearPlane, farPlane;

    explicit LensArgument(double const* numbers)
        : angle{T(numbers[0])}, aspect{T(numbers[1])}, nearPlane{T(numbers[2])}, farPlane{T(numbers[3])}
    {
    }
};

template <typename T>
std::vector<LensArgument<T>> ManyLenses()
{
    return Build(LensArguments(), 4, [](double const* numbers) { return LensArgument<T>(numbers); });
}

/// Points of a picture: x and y.
inline std::vector<double> PicturePoints()
{
    return Numbers(53, 2 * COUNT, 0, 640);
}

/// Points in front of the camera of the rows, which stands at the origin and looks down -z.
inline std::vector<double> VisiblePoints()
{
    std::vector<double> numbers = Vectors(54, COUNT);
    for (std::size_t i = 2; i < numbers.size(); i += 3)
        numbers[i] -= 3;
    return numbers;
}

inline constexpr double WIDTH = 640;
inline constexpr double HEIGHT = 480;
inline constexpr double TANGENT = 0.5; ///< half of the height of the picture by its distance
inline constexpr double NEAR_PLANE = 0.125;
inline constexpr double FAR_PLANE = 64;

/// The components of a rotation's quaternion, x, y, z, w; a translation and a scale: 10 numbers.
inline std::vector<double> PartArguments()
{
    std::vector<double> numbers = Numbers(55, 10 * MATRIX_COUNT, 0.5, 1);
    for (std::size_t i = 0; i < numbers.size(); i += 10)
    {
        double* const q = numbers.data() + i;
        double const length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        for (std::size_t j = 0; j < 4; ++j)
            q[j] /= length;
    }
    return numbers;
}

} // namespace bench
