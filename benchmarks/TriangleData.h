#pragma once

/// @file
/// The triangles that the rows on intersections share, and the loop over them.

#include <cstddef>
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

} // namespace bench
