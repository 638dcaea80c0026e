// The ray tracer, a tile at a time.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <emscripten/bind.h>
#include <emscripten/val.h>

#include "Camera.h"
#include "Mesh.h"
#include "Options.h"
#include "Packets.h"
#include "Picture.h"
#include "Scene.h"
#include "TileDrawing.h"
#include "Tiles.h"
#include "Tracer.h"
#include "UserError.h"

namespace raytracer
{

Texels ReadSquare(std::string const& path)
{
    throw UserError(path + ": skies are computed here");
}

} // namespace raytracer

namespace live
{

namespace
{

using emscripten::val;
using namespace raytracer;

Material GetMaterial(std::string const& name)
{
    if (name == "marble")
        return Material::Marble;
    if (name == "wood")
        return Material::Wood;
    return name == "mirror" ? Material::Mirror : Material::Plain;
}

Options GetOptions(val const& settings)
{
    Options options;
    options.mesh = "/" + settings["mesh"].as<std::string>() + ".obj";
    options.size = Tuple2u(settings["width"].as<unsigned>(), settings["height"].as<unsigned>());
    options.material = GetMaterial(settings["material"].as<std::string>());
    options.spheres = settings["spheres"].as<unsigned>();
    options.floor = settings["floor"].as<std::string>() == "checker" ? Floor::Checker : Floor::Plain;
    options.samples = settings["samples"].as<unsigned>();
    options.ao = settings["skyRays"].as<unsigned>();
    options.packet = settings["packet"].as<std::string>() == "scalar" ? PacketKind::Scalar : PacketKind::Auto;
    return options;
}

class RayTracer
{
public:
    explicit RayTracer(val const& settings)
        : options_(GetOptions(settings)),
          mesh_(LoadMesh(options_.mesh, options_.axes)),
          camera_(Camera::Place(options_, mesh_.bounds)),
          window_(Vector2f(static_cast<float>(options_.size.x), static_cast<float>(options_.size.y))),
          tiles_(GetTilesAround(camera_.GetPixel(mesh_.bounds.GetCentre()), window_)),
          scene_(options_, std::move(mesh_), camera_.GetEye()),
          tracer_(scene_, ChoosePackets(options_.packet)),
          picture_(options_.size)
    {
    }
    RayTracer(RayTracer const&) = delete;
    RayTracer& operator=(RayTracer const&) = delete;

    [[nodiscard]] unsigned GetTileCount() const { return static_cast<unsigned>(tiles_.size()); }
    [[nodiscard]] double GetRayCount() const { return static_cast<double>(tracer_.GetRayCount()); }

    /// Draws a tile, with the pixels that the picture has of it as red, green, blue and 255.
    [[nodiscard]] val Draw(unsigned index)
    {
        Tile const& tile = tiles_[index];
        DrawTile(tile, {scene_, camera_, options_, window_, picture_}, tracer_);
        Tuple2u const first(tile.place.x * Tile::SIDE, tile.place.y * Tile::SIDE);
        Tuple2u const last(std::min(first.x + Tile::SIDE, options_.size.x),
                           std::min(first.y + Tile::SIDE, options_.size.y));
        pixels_.clear();
        for (unsigned y = first.y; y < last.y; ++y)
        {
            for (unsigned x = first.x; x < last.x; ++x)
            {
                std::uint8_t const* const bytes =
                    picture_.GetBytes() + 3 * (static_cast<std::size_t>(y) * options_.size.x + x);
                pixels_.insert(pixels_.end(), {bytes[0], bytes[1], bytes[2], 255});
            }
        }
        val drawn = val::object();
        drawn.set("x", first.x);
        drawn.set("y", first.y);
        drawn.set("width", last.x - first.x);
        drawn.set("height", last.y - first.y);
        drawn.set("pixels", val(emscripten::typed_memory_view(pixels_.size(), pixels_.data())));
        return drawn;
    }

private:
    Options options_;
    Mesh mesh_; // the scene takes it over
    Camera camera_;
    AreaAABBf window_;
    std::vector<Tile> tiles_;
    Scene scene_;
    Tracer tracer_;
    Picture picture_;
    std::vector<std::uint8_t> pixels_;
};

} // namespace

} // namespace live

EMSCRIPTEN_BINDINGS(raytracer)
{
    using live::RayTracer;
    emscripten::class_<RayTracer>("RayTracer")
        .constructor<emscripten::val const&>()
        .function("getTileCount", &RayTracer::GetTileCount)
        .function("getRayCount", &RayTracer::GetRayCount)
        .function("draw", &RayTracer::Draw);
}
