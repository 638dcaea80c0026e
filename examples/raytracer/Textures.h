#pragma once

#include "Maths.h"
#include "bv/maths/tDifferential3.h"
#include "bv/maths/tVector3.h"

namespace raytracer
{

// Textures in space: the colour at a point, averaged over the footprint that a pixel leaves there. What is finer than
// the footprint is left out, or replaced by its mean, so that nothing flickers in the distance.

Colour GetMarble(Vector3f const& point, Differential3f const& footprint);

/// Rings around the y axis, which is tilted a little.
Colour GetWood(Vector3f const& point, Differential3f const& footprint);

/// Squares in the plane of x and z.
Colour GetChecker(Vector3f const& point, Differential3f const& footprint);

} // namespace raytracer
