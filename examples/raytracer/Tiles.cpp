#include "Tiles.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "bv/maths/Direction.h"

namespace raytracer
{

namespace
{

/// Every second bit of a number, from the lowest on.
unsigned GetEverySecondBit(unsigned number)
{
    unsigned bits = 0;
    for (unsigned i = 0; number >> (2 * i) != 0; ++i)
        bits |= (number >> (2 * i) & 1) << i;
    return bits;
}

} // namespace

Tuple2u Tile::GetPixel(unsigned index) const
{
    return {place.x * SIDE + GetEverySecondBit(index), place.y * SIDE + GetEverySecondBit(index >> 1)};
}

std::vector<Tile> GetTilesAround(Vector2f const& point, AreaAABBf const& window)
{
    constexpr auto SIDE = static_cast<float>(Tile::SIDE);
    auto const first = [](float pixel) { return static_cast<unsigned>(pixel / SIDE); };
    auto const last = [](float pixel) { return static_cast<unsigned>(std::ceil(pixel / SIDE)); };
    std::vector<Tile> tiles;
    for (unsigned row = first(window.GetMin().y); row < last(window.GetMax().y); ++row)
    {
        for (unsigned column = first(window.GetMin().x); column < last(window.GetMax().x); ++column)
        {
            Vector2f const corner(static_cast<float>(column) * SIDE, static_cast<float>(row) * SIDE);
            tiles.push_back({AreaAABBf(corner, corner + Vector2f(SIDE, SIDE)), Tuple2u(column, row)});
        }
    }
    std::ranges::sort(tiles, {},
                      [&](Tile const& tile) {
                          return std::tuple(DistanceSquared(tile.area.GetCentre(), point), tile.place.y, tile.place.x);
                      });
    return tiles;
}

} // namespace raytracer
