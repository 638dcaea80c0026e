// The ray tracer without what needs one system: takes the same options, draws one tile after the other and writes the
// bytes of the pixels, from the top.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <fstream>
#include <ios>
#include <iostream>
#include <optional>
#include <string>
#include <utility>

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

namespace
{

Picture Draw(Options const& options)
{
    Mesh mesh = LoadMesh(options.mesh, options.axes);
    Camera const camera = Camera::Place(options, mesh.bounds);
    Vector2f const middle = camera.GetPixel(mesh.bounds.GetCentre());
    Scene const scene(options, std::move(mesh), camera.GetEye());
    AreaAABBf const window(Vector2f(static_cast<float>(options.size.x), static_cast<float>(options.size.y)));
    Picture picture(options.size);
    Tracer tracer(scene, ChoosePackets(options.packet));
    for (Tile const& tile : GetTilesAround(middle, window))
        DrawTile(tile, {scene, camera, options, window, picture}, tracer);
    return picture;
}

void WritePixels(Picture const& picture, std::string const& path)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<char const*>(picture.GetBytes()),
               static_cast<std::streamsize>(std::size_t{3} * picture.GetSize().x * picture.GetSize().y));
    if (!file.flush())
        throw UserError(path + ": cannot be written");
}

} // namespace

} // namespace raytracer

int main(int argc, char** argv)
{
    try
    {
        if (std::optional<raytracer::Options> const options = raytracer::ReadOptions(argc, argv))
            raytracer::WritePixels(raytracer::Draw(*options), options->output);
        return 0;
    }
    catch (std::exception const& error)
    {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
