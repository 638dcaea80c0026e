#pragma once

#include <cstdint>

#include "Camera.h"
#include "Options.h"
#include "Packets.h"
#include "Picture.h"
#include "Progress.h"
#include "Scene.h"
#include "Workers.h"

namespace raytracer
{

/// A picture and what it took.
struct Rendering
{
    Picture picture;
    std::uint64_t rays;
    double seconds;
};

/// Draws the picture, or the window of it that the options name. The picture depends neither on the packets nor on the
/// number of threads.
Rendering Render(Scene const& scene, Camera const& camera, Options const& options, Packets const& packets,
                 Vector2f const& middle, Workers& workers, Progress& progress);

} // namespace raytracer
