#pragma once

/// @file
/// The triangles that the rows on intersections share, and the loop over them.

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "Agreement.h"
#include "ShapeData.h"

namespace bench
{

/// Triangles as nine numbers each, for rays that aim at a cube of half-edge 2: about one test in eight hits.
inline std::vector<double> TriangleNumbers()
{
    std::vector<double> const middles = Numbers(117, 3 * COUNT, -1.5, 1.5);
    std::vector<double> const ways = Numbers(118, 9 * COUNT, -2, 2);
    std::vector<double> triangles;
    for (std::size_t i = 0; i < 9 * COUNT; ++i)
        triangles.push_back(AsFloat(middles[i / 9 * 3 + i % 3] + ways[i]));
    return triangles;
}

inline std::vector<double> TriangleRays()
{
    return RayNumbers(RAY_COUNT, 2);
}

/// Discs as seven numbers each, for the same rays: centre, normal of any length, radius. About one test in three hits.
inline std::vector<double> DiscNumbers()
{
    std::vector<double> const shapes = Numbers(120, 6 * COUNT, -1.5, 1.5);
    std::vector<double> const radii = Numbers(121, COUNT, 0.5, 3);
    std::vector<double> discs;
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        discs.insert(discs.end(), shapes.data() + 6 * i, shapes.data() + 6 * i + 6);
        discs.push_back(radii[i]);
    }
    return discs;
}

/// Turned boxes as fifteen numbers each, for the same rays: centre, three axes, half extents. About half of the tests
/// hit.
inline std::vector<double> TurnedBoxNumbers()
{
    std::vector<double> const boxes = MixedBoxes();
    std::vector<double> const motions = MotionNumbers(Motion::ROTATION);
    std::vector<double> turned;
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        double const* const box = boxes.data() + 6 * i;
        double const* const m = motions.data() + 16 * (i % MATRIX_COUNT);
        for (std::size_t axis = 0; axis < 3; ++axis)
            turned.push_back(AsFloat((box[axis] + box[axis + 3]) / 2));
        turned.insert(turned.end(), {m[0], m[4], m[8], m[1], m[5], m[9], m[2], m[6], m[10]});
        for (std::size_t axis = 0; axis < 3; ++axis)
            turned.push_back(AsFloat((box[axis + 3] - box[axis]) / 2));
    }
    return turned;
}

/// Boxes of cells that triangles are sorted into, about a third of which each triangle meets.
inline std::vector<double> CellNumbers()
{
    std::vector<double> cells = BoxNumbers(122, 1.5, 0.5, 1.5);
    cells.resize(6 * RAY_COUNT);
    return cells;
}

/// Points whose weights in all triangles are asked for.
inline std::vector<double> TrianglePoints()
{
    return Numbers(124, 3 * RAY_COUNT, -2, 2);
}

/// Rays to be moved, and the matrix that moves them.
inline std::vector<double> MovedRays()
{
    return RayNumbers(COUNT, 2);
}
inline std::vector<double> RayMotion()
{
    std::vector<double> motion = MotionNumbers(Motion::AFFINE);
    motion.resize(16);
    return motion;
}

/// Each ray against all items: `begin(ray)` gives what a ray keeps meanwhile, and `meet(state, item)` a parameter, or
/// -1.
template <typename T, typename Ray, typename Item, typename Begin, typename Meet>
void AddMeetings(std::string const& name, std::vector<Ray> const& rays, std::vector<Item> const& items, Begin begin,
                 Meet meet)
{
    std::vector<T> results(items.size());
    AddRun(name, rays.size() * items.size(),
           [=]() mutable
           {
               T* const out = results.data();
               benchmark::DoNotOptimize(out);
               for (Ray const& ray : rays)
               {
                   auto const state = begin(ray);
                   for (std::size_t i = 0; i < items.size(); ++i)
                       out[i] = meet(state, items[i]);
               }
           });
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (Ray const& ray : rays)
                   {
                       auto const state = begin(ray);
                       for (Item const& item : items)
                           numbers.push_back(static_cast<double>(meet(state, item)));
                   }
                   return numbers;
               });
}

/// One ray after the other moved by one matrix: `move(ray, motion)`, and `append(numbers, ray)` for what came of it.
template <typename T, typename Ray, typename Motion, typename Move, typename Append>
void AddMovedRays(std::string const& name, std::vector<Ray> const& rays, Motion const& motion, Move move, Append append)
{
    AddMapBy(
        name, motion, [=](Motion const& by, Ray const& ray) { return move(ray, by); }, rays);
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (Ray const& ray : rays)
                       append(numbers, move(ray, motion));
                   return numbers;
               });
}

/// Packets of `width` rays against all triangles: `meet(rays, triangles, count, results)` writes `width` parameters a
/// triangle, or -1, into memory aligned for any packet.
template <typename Meet>
void AddPacketMeetings(std::string const& name, std::size_t width, Meet meet)
{
    std::vector<double> const rayNumbers = TriangleRays();
    std::vector<double> const triangleNumbers = TriangleNumbers();
    std::vector<float> const rays(rayNumbers.begin(), rayNumbers.end());
    std::vector<float> const triangles(triangleNumbers.begin(), triangleNumbers.end());
    constexpr std::align_val_t ALIGNMENT{32};
    std::shared_ptr<float> const results(new (ALIGNMENT) float[width * COUNT](),
                                         [](float* memory) { operator delete[](memory, ALIGNMENT); });
    AddRun(name, rays.size() / 6 * COUNT,
           [=]
           {
               for (std::size_t i = 0; i < rays.size(); i += 6 * width)
               {
                   meet(rays.data() + i, triangles.data(), COUNT, results.get());
                   benchmark::ClobberMemory();
               }
           });
    AddNumbers(name,
               [=]
               {
                   std::vector<double> numbers;
                   for (std::size_t i = 0; i < rays.size(); i += 6 * width)
                   {
                       meet(rays.data() + i, triangles.data(), COUNT, results.get());
                       numbers.insert(numbers.end(), results.get(), results.get() + width * COUNT);
                   }
                   return numbers;
               });
}

} // namespace bench
