#pragma once

#include <vector>

#include "Maths.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tVector2.h"

namespace raytracer
{

/// A square of pixels, the unit of work of a thread.
struct Tile
{
    static constexpr unsigned SIDE = 16;
    static constexpr unsigned PIXEL_COUNT = SIDE * SIDE;

    AreaAABBf area; ///< in pixels of the whole picture, which all tiles are counted in, whatever window is drawn
    Tuple2u place;  ///< column and row

    /// The pixels along a curve (Morton, 1966) of which every four neighbours, counted from the first, are a square of
    /// two by two, and every eight two such squares: rays of a packet stay close together.
    [[nodiscard]] Tuple2u GetPixel(unsigned index) const;
};

/// The tiles that a window touches, the nearest to a point first.
std::vector<Tile> GetTilesAround(Vector2f const& point, AreaAABBf const& window);

} // namespace raytracer
