// A small ray tracer: draws a mesh with what BvBaseUtils offers. See README.md for a tour of the files.

#include <cerrno>
#include <exception>
#include <iomanip>
#include <iostream>
#include <new>
#include <optional>
#include <sstream>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "Camera.h"
#include "Interrupts.h"
#include "Mesh.h"
#include "Message.h"
#include "Options.h"
#include "OutputFile.h"
#include "Packets.h"
#include "Picture.h"
#include "Progress.h"
#include "Renderer.h"
#include "Scene.h"
#include "UserError.h"
#include "Workers.h"
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
    Workers workers(options.threads);
    OutputFile file(options.output);
    Mesh mesh = LoadMesh(options.mesh, options.axes);
    Camera const camera = Camera::Place(options, mesh.bounds);
    Vector2f const middle = camera.GetPixel(mesh.bounds.GetCentre());
    Scene const scene(options, std::move(mesh), camera.GetEye());

    Progress progress(isatty(STDOUT_FILENO) != 0 && isatty(STDERR_FILENO) != 0);
    Rendering const rendering = Render(scene, camera, options, packets, middle, workers, progress);
    WritePng(rendering.picture, file);
    if (options.compare)
    {
        Progress hidden(false);
        Rendering const again =
            Render(scene, camera, options, ChoosePackets(PacketKind::Scalar), middle, workers, hidden);
        std::cout << rendering.picture.CountDifferences(again.picture) << " of "
                  << again.picture.GetSize().x * again.picture.GetSize().y << " pixels differ between " << packets.name
                  << " and scalar\n";
    }
    Report(rendering, packets, options.threads);
}

/// Standard streams that are closed would lend their numbers to the files that are opened next.
void KeepStandardStreams()
{
    for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (fcntl(stream, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", O_PATH)); // takes the lowest number, and nothing else
    }
}

void Run(int argc, char const* const* argv)
{
    if (std::optional<Options> const options = ReadOptions(argc, argv))
        Draw(*options);
    errno = 0;
    if (!std::cout.flush())
        throw UserError("standard output cannot be written: " + std::generic_category().message(errno));
}

/// Prints what is wrong, or throws on that there is no memory, even for that.
void Explain(std::exception_ptr const& failure)
{
    try
    {
        std::rethrow_exception(failure);
    }
    catch (std::bad_alloc const&)
    {
        throw;
    }
    catch (bv::Exception const& error)
    {
        std::ostringstream text;
        text << error;
        Complain(text.str());
    }
    catch (std::exception const& error)
    {
        Complain(error.what());
    }
}

} // namespace

} // namespace raytracer

int main(int argc, char** argv)
{
    constexpr int USER_ERROR = 2;
    raytracer::KeepStandardStreams();
    raytracer::EndWhenInterrupted(USER_ERROR);
    try
    {
        try
        {
            raytracer::Run(argc, argv);
            return 0;
        }
        catch (...)
        {
            raytracer::Explain(std::current_exception());
        }
    }
    catch (std::bad_alloc const&)
    {
        std::cerr << "raytracer: not enough memory\n";
    }
    return USER_ERROR;
}
