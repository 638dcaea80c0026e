#pragma once

#include <array>
#include <string>
#include <vector>

#include "Maths.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace raytracer
{

struct Triangle
{
    std::array<Vector3f, 3> corners;
    std::array<Vector3f, 3> normals; ///< at each corner, of unit length: the mean of the faces that meet there smoothly

    /// At right angles to the triangle, and as long as twice its area.
    [[nodiscard]] Vector3f GetCross() const { return (corners[1] - corners[0]).Cross(corners[2] - corners[0]); }
};

/// Triangles that stand on the floor at the origin, their longest side together two units long.
struct Mesh
{
    std::vector<Triangle> triangles;
    VolumeAABBf bounds;
};

/// Reads a Wavefront OBJ file. Faces of more than three corners are taken to be convex.
///
/// @param axes where the axes of the file point; the mesh is turned from there into the world's axes.
/// @throws UserError when the file cannot be read, is not an OBJ file, or holds nothing that can be drawn.
Mesh LoadMesh(std::string const& path, CoordinateFramef const& axes);

} // namespace raytracer
