#pragma once

/// @file
/// The names of the library that this program uses. A file that needs more than a name includes the type's header.

#include "bv/maths/Forward.h"

namespace raytracer
{

using bv::maths::AreaAABBd;
using bv::maths::AreaAABBf;
using bv::maths::CoordinateFramed;
using bv::maths::CoordinateFramef;
using bv::maths::DepthRayf;
using bv::maths::Differential3f;
using bv::maths::Frustumf;
using bv::maths::Matrix4d;
using bv::maths::Matrix4f;
using bv::maths::Percentage;
using bv::maths::PixelRaysf;
using bv::maths::Planef;
using bv::maths::ReciprocalRayf;
using bv::maths::RNGenerator;
using bv::maths::Tuple2u;
using bv::maths::Tuple3f;
using bv::maths::Tuple3u;
using bv::maths::Vector2d;
using bv::maths::Vector2f;
using bv::maths::Vector3d;
using bv::maths::Vector3f;
using bv::maths::VolumeAABBd;
using bv::maths::VolumeAABBf;
using bv::maths::VolumeSpheref;
using bv::maths::WatertightRayf;

/// Light or a share of it: red, green and blue in x, y and z, linear, 1 for full.
using Colour = Vector3f;

} // namespace raytracer
