#pragma once

/// @file
/// What the rows on bounds and on what is visible share: their numbers, and how a library tells what it computes.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Agreement.h"
#include "Bench.h"
#include "ShapeData.h"

namespace bench
{

/// A row of AddMap() whose results all libraries agree on; `tell` appends those of an item as plain numbers.
template <typename Function, typename Tell, typename First, typename... Rest>
void AddAgreedMap(std::string const& name, Function function, Tell tell, std::vector<First> const& first,
                  std::vector<Rest> const&... rest)
{
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (std::size_t i = 0; i < first.size(); ++i)
                       tell(numbers, function(first[i], rest[i]...));
                   return numbers;
               });
    AddMap(name, function, first, rest...);
}

/// The same for AddMapBy(): the loop has the object to itself.
template <typename Object, typename Function, typename Tell, typename In>
void AddAgreedMapBy(std::string const& name, Object const& object, Function function, Tell tell,
                    std::vector<In> const& in)
{
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (In const& item : in)
                       tell(numbers, function(object, item));
                   return numbers;
               });
    AddMapBy(name, object, function, in);
}

/// Tells of a number or a truth value.
inline constexpr auto TELL_NUMBER = [](std::vector<double>& numbers, auto number)
{ numbers.push_back(static_cast<double>(number)); };

/// Tells of the three components of a vector that has an index.
inline constexpr auto TELL_VECTOR = [](std::vector<double>& numbers, auto const& vector)
{
    for (int axis = 0; axis < 3; ++axis)
        numbers.push_back(static_cast<double>(vector[static_cast<unsigned char>(axis)]));
};

/// Boxes of the same size and places as the others, but not the same.
inline std::vector<double> OtherBoxes()
{
    return BoxNumbers(121, 0.9, 0.25, 1);
}

/// Matrices of perspective views from outside of all unit boxes, row by row.
inline std::vector<double> ProjectionNumbers()
{
    std::vector<double> const places = Numbers(123, 2 * COUNT, -1, 1);
    std::vector<double> matrices;
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        View const view =
            MakeView(places[2 * i], places[2 * i + 1], 12, 0.25 * places[2 * i], 0.25 * places[2 * i + 1]);
        matrices.insert(matrices.end(), view.projection.begin(), view.projection.end());
    }
    return matrices;
}

/// Sets of CLOUD points in a box of any shape.
inline constexpr std::size_t CLOUD = 128;
inline constexpr std::size_t CLOUD_COUNT = 64;

inline std::vector<double> CloudNumbers()
{
    std::vector<double> numbers = Numbers(125, 3 * CLOUD * CLOUD_COUNT, -1, 1);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = AsFloat(numbers[i] * static_cast<double>(1 + (i / (3 * CLOUD) + i) % 3));
    return numbers;
}

/// Boxes with axes of their own for the main view, as fifteen numbers each: centre, axes, half extents.
inline std::vector<double> TurnedBoxes()
{
    std::vector<double> const boxes = SceneBoxes();
    std::vector<double> const turns = Numbers(127, 4 * COUNT, -1, 1);
    std::vector<double> turned;
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        double const* const box = boxes.data() + 6 * i;
        double const* const n = turns.data() + 4 * i;
        double const norm = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2] + n[3] * n[3]);
        double const w = n[0] / norm, x = n[1] / norm, y = n[2] / norm, z = n[3] / norm;
        for (int axis = 0; axis < 3; ++axis)
            turned.push_back(AsFloat((box[axis] + box[3 + axis]) / 2));
        for (double const element : {1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y),
                                     2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x),
                                     2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y)})
            turned.push_back(AsFloat(element));
        for (int axis = 0; axis < 3; ++axis)
            turned.push_back(AsFloat((box[3 + axis] - box[axis]) / 2));
    }
    return turned;
}

/// Spheres and points for the main view, in no order.
inline std::vector<double> SceneSpheres()
{
    std::vector<double> const centres = Numbers(129, 3 * COUNT, -16, 16);
    std::vector<double> const radii = Numbers(130, COUNT, 0.25, 5);
    std::vector<double> spheres;
    for (std::size_t i = 0; i < COUNT; ++i)
        spheres.insert(spheres.end(), {centres[3 * i], centres[3 * i + 1], centres[3 * i + 2], radii[i]});
    return spheres;
}
inline std::vector<double> ScenePoints()
{
    return Numbers(131, 3 * COUNT, -16, 16);
}

} // namespace bench
