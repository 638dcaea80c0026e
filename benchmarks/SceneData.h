#pragma once

/// @file
/// The numbers of the rows on what renderers do with the operations: cameras, a small scene graph, a skinned mesh and a
/// tile of camera rays. Every number is exactly a `float`.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "MatrixData.h"
#include "ShapeData.h"

namespace bench
{

/// Nodes of the scene graph; all but the root have a parent in front of them.
inline constexpr std::size_t NODE_COUNT = 1000;
/// Matrices of the skeleton.
inline constexpr std::size_t BONE_COUNT = 64;
/// Vertices of the skinned mesh.
inline constexpr std::size_t VERTEX_COUNT = 10000;
/// Matrices that move a vertex.
inline constexpr std::size_t INFLUENCE_COUNT = 4;
/// Pixels along an edge of the tile.
inline constexpr std::size_t TILE_SIZE = 32;

/// Views, from the world to the camera's space: 16 numbers each, row by row.
inline std::vector<double> ViewMatrices()
{
    std::vector<double> numbers;
    for (View const& view : ManyViews())
        numbers.insert(numbers.end(), view.world.begin(), view.world.end());
    return numbers;
}

/// As many projections, from the camera's space to clip space, of a near rectangle that varies.
inline std::vector<double> ProjectionMatrices()
{
    std::vector<double> const sizes = Numbers(301, 2 * MATRIX_COUNT, 0.25, 1);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < sizes.size(); i += 2)
    {
        std::array<double, 16> clip = MainView().clip;
        clip[0] = AsFloat(View::NEAR_PLANE / sizes[i]);
        clip[5] = AsFloat(View::NEAR_PLANE / sizes[i + 1]);
        numbers.insert(numbers.end(), clip.begin(), clip.end());
    }
    return numbers;
}

/// Motions as 16 numbers each, row by row: a rotation, a scale near 1 and a way of up to `distance` along each axis.
inline std::vector<double> AffineMotions(std::uint32_t seed, std::size_t count, double distance)
{
    std::vector<double> const rotations = RotationMatrices(seed);
    std::vector<double> const ways = Numbers(seed + 1, 3 * count, -distance, distance);
    std::vector<double> const scales = Numbers(seed + 2, count, 0.8, 1.2);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < count; ++i)
    {
        double const* const rotation = rotations.data() + 16 * (i % MATRIX_COUNT);
        for (std::size_t row = 0; row < 3; ++row)
        {
            for (std::size_t column = 0; column < 3; ++column)
                numbers.push_back(AsFloat(scales[i] * rotation[4 * row + column]));
            numbers.push_back(ways[3 * i + row]);
        }
        numbers.insert(numbers.end(), {0, 0, 0, 1});
    }
    return numbers;
}

/// From each node's space to its parent's.
inline std::vector<double> NodeMotions()
{
    return AffineMotions(303, NODE_COUNT, 7);
}

/// The parent of a node: four children each, so that the tree is five or six levels deep.
inline constexpr std::size_t GetParent(std::size_t node)
{
    return (node - 1) / 4;
}

/// The box of each node in its own space: six numbers, the lower corner first.
inline std::vector<double> NodeBoxes()
{
    std::vector<double> boxes = BoxNumbers(309, 0.5, 0.25, 1.5);
    boxes.resize(6 * NODE_COUNT);
    return boxes;
}

/// The bones of a vertex and how much each of them counts; the weights add up to 1.
template <typename T>
struct Influences
{
    T weights[INFLUENCE_COUNT];
    std::uint8_t bones[INFLUENCE_COUNT];
};

template <typename T>
std::vector<Influences<T>> MakeInfluences()
{
    std::vector<double> const numbers = Numbers(311, 2 * INFLUENCE_COUNT * VERTEX_COUNT, 0, 1);
    return Build(numbers, 2 * INFLUENCE_COUNT,
                 [](double const* n)
                 {
                     Influences<T> influences;
                     double const sum = n[0] + n[1] + n[2] + n[3];
                     for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
                     {
                         influences.weights[i] = static_cast<T>(n[i] / sum);
                         influences.bones[i] = static_cast<std::uint8_t>(n[INFLUENCE_COUNT + i] * BONE_COUNT);
                     }
                     return influences;
                 });
}

/// The main view as rays: where they start, the middle of the first pixel on the near rectangle, and the ways to the
/// pixels right of it and below, three numbers each.
struct TileNumbers
{
    std::array<double, 3> eye;
    std::array<double, 3> first;
    std::array<double, 3> right;
    std::array<double, 3> down;
    std::array<double, 6> box; ///< about the middle of the view: a third of the rays hit it
};

inline TileNumbers MakeTile()
{
    std::array<double, 16> const camera = MainView().camera;
    double const width = 2 * View::RIGHT / TILE_SIZE;
    double const height = 2 * View::TOP / TILE_SIZE;
    TileNumbers tile{};
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        double const* const row = camera.data() + 4 * axis;
        tile.eye[axis] = row[3];
        tile.right[axis] = AsFloat(row[0] * width);
        tile.down[axis] = AsFloat(-row[1] * height);
        tile.first[axis] =
            AsFloat(row[0] * (width / 2 - View::RIGHT) + row[1] * (View::TOP - height / 2) - row[2] * View::NEAR_PLANE);
        tile.box[axis] = AsFloat(row[3] - 15 * row[2] - 4);
        tile.box[axis + 3] = AsFloat(row[3] - 15 * row[2] + 4);
    }
    return tile;
}

} // namespace bench
