#pragma once

#include "Camera.h"
#include "Maths.h"
#include "Options.h"
#include "Picture.h"
#include "Scene.h"
#include "Tiles.h"
#include "Tracer.h"
#include "bv/maths/tAreaAABB.h"

namespace raytracer
{

/// What all tiles share: the scene to read, and the picture, of which each writes pixels of its own.
struct Drawing
{
    Scene const& scene;
    Camera const& camera;
    Options const& options;
    AreaAABBf window; ///< the part of the picture that is drawn, in pixels
    Picture& picture;
};

/// Draws the pixels of a tile that the window shows. They depend on nothing that was drawn before.
void DrawTile(Tile const& tile, Drawing const& drawing, Tracer& tracer);

} // namespace raytracer
