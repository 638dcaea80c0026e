#pragma once

/// @file
/// The boxes, spheres, rays and views that the rows on shapes share, as plain numbers. Every number is exactly a
/// `float`, so that both precisions and all libraries work on the same shapes.

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Bench.h"

namespace bench
{

/// A row of one shape against many items. The loop has a copy of the shape, in which no result can lie.
template <typename Shape, typename Item, typename Function>
void AddOneToMany(std::string const& name, Shape const& shape, std::vector<Item> items, Function function)
{
    using Out = std::decay_t<decltype(function(shape, items[0]))>;
    std::vector<Out> results(items.size());
    AddRun(name, items.size(),
           [=]() mutable
           {
               Shape const one = shape;
               Out* const out = results.data();
               benchmark::DoNotOptimize(out);
               for (std::size_t i = 0; i < items.size(); ++i)
                   out[i] = function(one, items[i]);
           });
}

inline double AsFloat(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

/// Boxes as six numbers each, the lower corner first: centres in a cube of half-edge `spread`, half-edges in
/// [smallest, largest).
inline std::vector<double> BoxNumbers(std::uint32_t seed, double spread, double smallest, double largest)
{
    std::vector<double> const centres = Numbers(seed, 3 * COUNT, -spread, spread);
    std::vector<double> const halves = Numbers(seed + 1, 3 * COUNT, smallest, largest);
    std::vector<double> boxes;
    for (std::size_t i = 0; i < 3 * COUNT; i += 3)
    {
        for (std::size_t axis = 0; axis < 3; ++axis)
            boxes.push_back(AsFloat(centres[i + axis] - halves[i + axis]));
        for (std::size_t axis = 0; axis < 3; ++axis)
            boxes.push_back(AsFloat(centres[i + axis] + halves[i + axis]));
    }
    return boxes;
}

/// Boxes of about a unit about the origin: every second of the points below lies inside of its box.
inline std::vector<double> UnitBoxes()
{
    return BoxNumbers(101, 0.5, 0.5, 1.5);
}
inline std::vector<double> UnitPoints()
{
    return Numbers(103, 3 * COUNT, -1.25, 1.25);
}

/// Spheres as four numbers each, the centre and the radius. About half of them meet the box or sphere of their index.
inline std::vector<double> SphereNumbers(std::uint32_t seed)
{
    std::vector<double> const centres = Numbers(seed, 3 * COUNT, -1.5, 1.5);
    std::vector<double> const radii = Numbers(seed + 1, COUNT, 0.25, 1.25);
    std::vector<double> spheres;
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        spheres.insert(spheres.end(), {centres[3 * i], centres[3 * i + 1], centres[3 * i + 2], radii[i]});
    }
    return spheres;
}

/// The three kinds of matrix that boxes are moved by.
enum class Motion
{
    AFFINE,
    ROTATION,
    DIAGONAL
};

/// MATRIX_COUNT matrices of sixteen numbers, row by row, for points as columns.
inline std::vector<double> MotionNumbers(Motion motion)
{
    std::vector<double> const numbers = Numbers(105, 16 * MATRIX_COUNT, -2, 2);
    std::vector<double> matrices;
    for (std::size_t i = 0; i < MATRIX_COUNT; ++i)
    {
        double const* const n = numbers.data() + 16 * i;
        std::array<double, 16> m{n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8], n[9], n[10], n[11], 0, 0, 0, 1};
        if (motion == Motion::DIAGONAL)
            m = {n[0], 0, 0, 0, 0, n[5], 0, 0, 0, 0, n[10], 0, 0, 0, 0, 1};
        if (motion == Motion::ROTATION)
        {
            // the rotation of a unit quaternion
            double const norm = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2] + n[3] * n[3]);
            double const w = n[0] / norm;
            double const x = n[1] / norm;
            double const y = n[2] / norm;
            double const z = n[3] / norm;
            m = {1 - 2 * (y * y + z * z),
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
        }
        for (double const element : m)
            matrices.push_back(AsFloat(element));
    }
    return matrices;
}

/// A perspective view: where the camera stands, its view and its projection, and both of them in one matrix.
struct View
{
    static constexpr double NEAR_PLANE = 0.5; ///< distance of the near plane
    static constexpr double FAR_PLANE = 60;   ///< distance of the far plane
    static constexpr double RIGHT = 0.4;      ///< half the width of the near rectangle
    static constexpr double TOP = 0.25;       ///< half its height
    std::array<double, 16> camera;            ///< from the camera's space to the world's, row by row
    std::array<double, 16> world;             ///< from the world's space to the camera's
    std::array<double, 16> clip;              ///< from the camera's space to clip space
    std::array<double, 16> projection;        ///< from the world to clip space
};

/// The view of a camera at a place, turned by two angles, which looks along its own -z.
inline View MakeView(double x, double y, double z, double yaw, double pitch)
{
    double const sy = std::sin(yaw);
    double const cy = std::cos(yaw);
    double const sp = std::sin(pitch);
    double const cp = std::cos(pitch);
    std::array<double, 16> const camera{cy, sy * sp, sy * cp, x, 0, cp, -sp, y, -sy, cy * sp, cy * cp, z, 0, 0, 0, 1};
    std::array<double, 16> world{}; // the inverse of the camera's matrix
    for (std::size_t row = 0; row < 3; ++row)
    {
        for (std::size_t column = 0; column < 3; ++column)
        {
            world[4 * row + column] = camera[4 * column + row];
            world[4 * row + 3] -= camera[4 * column + row] * camera[4 * column + 3];
        }
    }
    world[15] = 1;
    double const depth = View::FAR_PLANE - View::NEAR_PLANE;
    std::array<double, 16> const clip{View::NEAR_PLANE / View::RIGHT,
                                      0,
                                      0,
                                      0,
                                      0,
                                      View::NEAR_PLANE / View::TOP,
                                      0,
                                      0,
                                      0,
                                      0,
                                      -(View::FAR_PLANE + View::NEAR_PLANE) / depth,
                                      -2 * View::FAR_PLANE * View::NEAR_PLANE / depth,
                                      0,
                                      0,
                                      -1,
                                      0};
    View view{};
    for (std::size_t row = 0; row < 4; ++row)
    {
        for (std::size_t column = 0; column < 4; ++column)
        {
            double sum = 0;
            for (std::size_t k = 0; k < 4; ++k)
                sum += clip[4 * row + k] * world[4 * k + column];
            view.projection[4 * row + column] = AsFloat(sum);
            view.camera[4 * row + column] = AsFloat(camera[4 * row + column]);
            view.world[4 * row + column] = AsFloat(world[4 * row + column]);
            view.clip[4 * row + column] = AsFloat(clip[4 * row + column]);
        }
    }
    return view;
}

/// The view that boxes are tested against.
inline View MainView()
{
    return MakeView(1, 2, 20, 0.3, -0.2);
}

/// Views to make frusta from.
inline std::vector<View> ManyViews()
{
    return Build(Numbers(107, 5 * MATRIX_COUNT, -1, 1), 5,
                 [](double const* n) { return MakeView(10 * n[0], 10 * n[1], 10 * n[2], 3 * n[3], n[4]); });
}

/// Boxes for the main view: of about a third each, nothing, a part and all is in it, in no order.
inline std::vector<double> SceneBoxes()
{
    return BoxNumbers(109, 16, 0.25, 5);
}

/// Rays each of which meets all COUNT boxes: so many tests that no processor learns the hits by heart, which it would
/// not in a tree either.
inline constexpr std::size_t RAY_COUNT = 32;

/// Rays as six numbers each, origin and unit direction: they start on a sphere of radius 8 about the origin and aim at
/// points of a cube of half-edge `aim`.
inline std::vector<double> RayNumbers(std::size_t count, double aim)
{
    std::vector<double> const starts = Numbers(111, 3 * count, -1, 1);
    std::vector<double> const ends = Numbers(112, 3 * count, -aim, aim);
    std::vector<double> rays;
    for (std::size_t i = 0; i < 3 * count; i += 3)
    {
        double const length = std::hypot(starts[i], starts[i + 1], starts[i + 2]);
        std::array<double, 3> origin{};
        std::array<double, 3> way{};
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            origin[axis] = AsFloat(starts[i + axis] * 8 / length);
            way[axis] = ends[i + axis] - origin[axis];
        }
        double const distance = std::hypot(way[0], way[1], way[2]);
        rays.insert(rays.end(), {origin[0], origin[1], origin[2], AsFloat(way[0] / distance),
                                 AsFloat(way[1] / distance), AsFloat(way[2] / distance)});
    }
    return rays;
}

/// Boxes for the rays: about half of the tests hit, in no order.
inline std::vector<double> MixedBoxes()
{
    return BoxNumbers(113, 2, 0.5, 2.5);
}
/// Boxes for the rays: nearly all of the tests hit.
inline std::vector<double> HitBoxes()
{
    return BoxNumbers(115, 0.5, 2.5, 4);
}

} // namespace bench
