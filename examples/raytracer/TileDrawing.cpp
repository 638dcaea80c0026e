#include "TileDrawing.h"

#include <bit>
#include <cmath>
#include <vector>

#include "Shader.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/Sequences.h"
#include "bv/maths/tTuple3.h"

namespace raytracer
{

namespace
{

/// A pixel of a tile while its light is gathered.
struct Pixel
{
    Tuple2u place;
    Vector3f shift; ///< random, of this pixel's own
    Colour light;
};

Vector2f GetCorner(Tuple2u const& pixel)
{
    return {static_cast<float>(pixel.x), static_cast<float>(pixel.y)};
}

/// A number whose bytes are everywhere those of a little-endian machine: what is hashed are raw bytes.
constexpr unsigned InLittleEndian(unsigned number)
{
    if constexpr (std::endian::native == std::endian::little)
        return number;
    else
        return number << 24 | (number & 0xFF00) << 8 | (number >> 8 & 0xFF00) | number >> 24;
}

/// The seed of a tile's random numbers: odd, because one whose low 15 bits are all 0 gives a poor sequence.
unsigned GetSeed(Tile const& tile, unsigned seed)
{
    return Tuple3u(InLittleEndian(tile.place.x), InLittleEndian(tile.place.y), InLittleEndian(seed)).GetHash32() | 1;
}

/// The pixels of a tile that the window shows. All of the tile's numbers are drawn, so that those of a pixel depend on
/// the seed and its place alone.
std::vector<Pixel> GetPixels(Tile const& tile, Drawing const& drawing)
{
    RNGenerator random(GetSeed(tile, drawing.options.seed));
    std::vector<Pixel> pixels;
    for (unsigned i = 0; i < Tile::PIXEL_COUNT; ++i)
    {
        Vector3f const shift = random.GetVector3D();
        Tuple2u const place = tile.GetPixel(i);
        if (drawing.window.Contains(GetCorner(place), true))
            pixels.push_back({place, shift, {}});
    }
    return pixels;
}

} // namespace

void DrawTile(Tile const& tile, Drawing const& drawing, Tracer& tracer)
{
    AreaAABBf seen = tile.area;
    seen.Offset(1);
    std::vector<std::uint32_t> const entries = drawing.scene.GetBvh().GetVisible(drawing.camera.GetView(seen));

    Shader shader(drawing.scene, tracer, drawing.options.ao);
    std::vector<Pixel> pixels = GetPixels(tile, drawing);
    std::vector<DepthRayf> rays(pixels.size());
    std::vector<Hit> hits;
    float const step = 1 / std::sqrt(static_cast<float>(drawing.options.samples));
    for (unsigned sample = 0; sample < drawing.options.samples; ++sample)
    {
        for (std::size_t i = 0; i < pixels.size(); ++i)
            rays[i] = drawing.camera.GetRay(GetCorner(pixels[i].place) + bv::maths::GetR2Point<float>(sample), step);
        hits.assign(pixels.size(), Hit{});
        tracer.FindClosest(rays, hits, entries);
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i].light += shader.GetLight(rays[i], hits[i], {pixels[i].shift, sample});
    }
    Vector2f const& corner = drawing.window.GetMin();
    Tuple2u const first(static_cast<unsigned>(corner.x), static_cast<unsigned>(corner.y));
    for (Pixel const& pixel : pixels)
        drawing.picture.SetPixel({pixel.place.x - first.x, pixel.place.y - first.y},
                                 pixel.light / static_cast<float>(drawing.options.samples));
}

} // namespace raytracer
