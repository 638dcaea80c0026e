#include "Renderer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <vector>

#include "TileDrawing.h"
#include "Tiles.h"
#include "Tracer.h"

namespace raytracer
{

namespace
{

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
    Vector2f const whole(static_cast<float>(options.size.x), static_cast<float>(options.size.y));
    AreaAABBf const window = options.crop.value_or(AreaAABBf(whole));
    std::vector<Tile> tiles = GetTilesAround(middle, window);
    tiles.resize(tiles.size() * options.part.GetNumerator() / options.part.GetDenominator());

    Rendering rendering{Picture(GetSize(window)), 0, 0};
    Drawing const drawing{scene, camera, options, window, rendering.picture};
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
                DrawTile(tiles[i], drawing, tracer);
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
