// A small ray tracer: draws a mesh with what BvBaseUtils offers. See README.md for a tour of the files.

#include <exception>
#include <iomanip>
#include <iostream>
#include <optional>
#include <utility>

#include <unistd.h>

#include "Camera.h"
#include "Mesh.h"
#include "Options.h"
#include "Packets.h"
#include "Picture.h"
#include "Progress.h"
#include "Renderer.h"
#include "Scene.h"
#include "bv/Exception.h"
#include "bv/String.h"

namespace raytracer
{

namespace
{

void Report(Rendering const& rendering, Packets const& packets, unsigned threads)
{
    std::cout << rendering.rays << " rays in " << std::fixed << std::setprecision(3) << rendering.seconds
              << " seconds, " << std::setprecision(0) << static_cast<double>(rendering.rays) / rendering.seconds
              << " rays per second (" << packets.name << ", " << threads << (threads == 1 ? " thread" : " threads")
              << ")\n";
}

void Draw(Options const& options)
{
    Packets const packets = ChoosePackets(options.packet);
    PngFile const file(options.output);
    Mesh mesh = LoadMesh(options.mesh, options.axes);
    Camera const camera = Camera::Place(options, mesh.bounds);
    Vector2f const middle = camera.GetPixel(mesh.bounds.GetCentre());
    Scene const scene(options, std::move(mesh), camera.GetEye());

    Progress progress(isatty(STDOUT_FILENO) != 0 && isatty(STDERR_FILENO) != 0);
    Rendering const rendering = Render(scene, camera, options, packets, middle, progress);
    file.Write(rendering.picture);
    if (options.compare)
    {
        Progress hidden(false);
        Rendering const again = Render(scene, camera, options, ChoosePackets(PacketKind::Scalar), middle, hidden);
        std::cout << rendering.picture.CountDifferences(again.picture) << " of "
                  << again.picture.GetSize().x * again.picture.GetSize().y << " pixels differ between " << packets.name
                  << " and scalar\n";
    }
    Report(rendering, packets, options.threads);
}

} // namespace

} // namespace raytracer

int main(int argc, char** argv)
{
    constexpr int USER_ERROR = 2;
    try
    {
        if (std::optional<raytracer::Options> const options = raytracer::ReadOptions(argc, argv))
            raytracer::Draw(*options);
        return 0;
    }
    catch (bv::Exception const& error)
    {
        std::cerr << "raytracer: " << error << '\n';
    }
    catch (std::exception const& error)
    {
        std::cerr << "raytracer: " << error.what() << '\n';
    }
    return USER_ERROR;
}
