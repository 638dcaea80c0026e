#include "Renderer.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <mutex>
#include <vector>

#include "Shader.h"
#include "Tiles.h"
#include "Tracer.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/Sequences.h"
#include "bv/maths/tTuple3.h"

namespace raytracer
{

namespace
{

/// What all threads share: the scene to read, and the picture, of which each tile writes pixels of its own.
struct Job
{
    Scene const& scene;
    Camera const& camera;
    Options const& options;
    AreaAABBf window;
    Picture& picture;
};

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

/// The pixels of a tile that the window shows. All of the tile's numbers are drawn, so that those of a pixel depend on
/// the seed and its place alone.
std::vector<Pixel> GetPixels(Tile const& tile, Job const& job)
{
    // Odd, because a seed whose low 15 bits are all 0 gives a poor sequence.
    RNGenerator random(Tuple3u(tile.place.x, tile.place.y, job.options.seed).GetHash32() | 1);
    std::vector<Pixel> pixels;
    for (unsigned i = 0; i < Tile::PIXEL_COUNT; ++i)
    {
        Vector3f const shift = random.GetVector3D();
        Tuple2u const place = tile.GetPixel(i);
        if (job.window.Contains(GetCorner(place), true))
            pixels.push_back({place, shift, {}});
    }
    return pixels;
}

void DrawTile(Tile const& tile, Job const& job, Tracer& tracer)
{
    AreaAABBf seen = tile.area;
    seen.Offset(1);
    std::vector<std::uint32_t> const entries = job.scene.GetBvh().GetVisible(job.camera.GetView(seen));

    Shader shader(job.scene, tracer, job.options.ao);
    std::vector<Pixel> pixels = GetPixels(tile, job);
    std::vector<DepthRayf> rays(pixels.size());
    std::vector<Hit> hits;
    float const step = 1 / std::sqrt(static_cast<float>(job.options.samples));
    for (unsigned sample = 0; sample < job.options.samples; ++sample)
    {
        for (std::size_t i = 0; i < pixels.size(); ++i)
            rays[i] = job.camera.GetRay(GetCorner(pixels[i].place) + bv::maths::GetR2Point<float>(sample), step);
        hits.assign(pixels.size(), Hit{});
        tracer.FindClosest(rays, hits, entries);
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i].light += shader.GetLight(rays[i], hits[i], {pixels[i].shift, sample});
    }
    Vector2f const& corner = job.window.GetMin();
    Tuple2u const first(static_cast<unsigned>(corner.x), static_cast<unsigned>(corner.y));
    for (Pixel const& pixel : pixels)
        job.picture.SetPixel({pixel.place.x - first.x, pixel.place.y - first.y},
                             pixel.light / static_cast<float>(job.options.samples));
}

Tuple2u GetSize(AreaAABBf const& window)
{
    Vector2f const size = window.GetDiagonal();
    return {static_cast<unsigned>(size.x), static_cast<unsigned>(size.y)};
}

} // namespace

Rendering Render(Scene const& scene, Camera const& camera, Options const& options, Packets const& packets,
                 Vector2f const& middle, Workers& workers, Progress& progress)
{
    auto const start = std::chrono::steady_clock::now();
    AreaAABBf const window = options.crop.value_or(AreaAABBf(GetCorner(options.size)));
    std::vector<Tile> tiles = GetTilesAround(middle, window);
    tiles.resize(tiles.size() * options.part.GetNumerator() / options.part.GetDenominator());

    Rendering rendering{Picture(GetSize(window)), 0, 0};
    Job const job{scene, camera, options, window, rendering.picture};
    Percentage const share(1, std::max(1U, static_cast<unsigned>(tiles.size())));
    std::atomic<std::size_t> next = 0;
    std::mutex mutex;
    auto const draw = [&]
    {
        try
        {
            Tracer tracer(scene, packets);
            for (std::size_t i = next++; i < tiles.size(); i = next++)
            {
                DrawTile(tiles[i], job, tracer);
                progress.Add(share);
            }
            std::scoped_lock const lock(mutex);
            rendering.rays += tracer.GetRayCount();
        }
        catch (...)
        {
            next = tiles.size(); // the other threads need not go on
            throw;
        }
    };
    workers.Run(draw);
    rendering.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return rendering;
}

} // namespace raytracer
