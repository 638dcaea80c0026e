#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "Maths.h"
#include "Mesh.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace raytracer
{

/// A box of the hierarchy. It holds either triangles or two smaller boxes, the nearer to the camera first.
struct Node
{
    VolumeAABBf box;
    std::uint32_t first; ///< the first triangle, or the first of the two children
    std::uint32_t count; ///< how many triangles; 0 for a box that holds boxes
};

/// A triangle of the hierarchy.
struct Corners
{
    Vector3f a;
    Vector3f b;
    Vector3f c;
};

/// Where a ray meets what.
struct Hit
{
    enum class What : std::uint8_t
    {
        Nothing,
        Triangle,
        Sphere,
        Floor
    };

    float distance = std::numeric_limits<float>::max(); ///< as far as the ray still has to look
    std::uint32_t index = 0;                            ///< of the triangle or the sphere
    float u = 0;                                        ///< weight of the triangle's second corner
    float v = 0;                                        ///< weight of the triangle's third corner
    What what = What::Nothing;
};

/// The triangles of a mesh in a hierarchy of boxes.
///
/// The boxes are padded by more than any box test is inexact, so that no test, whatever its rounding and however many
/// rays it takes at once, loses a triangle. What a ray hits is decided by the triangles alone, whose test gives the
/// same bits for one ray and for many: that is why every kind of packet gives the same picture.
class Bvh
{
public:
    static constexpr std::size_t MAX_DEPTH = 64;

    /// Builds the hierarchy and sorts the triangles of the mesh into it.
    Bvh(Mesh& mesh, Vector3f const& eye);

    [[nodiscard]] Node const* GetNodes() const { return nodes_.data(); }
    [[nodiscard]] Corners const* GetTriangles() const { return triangles_.data(); }

    /// A few boxes that together hold all that the view may show, the nearest first.
    [[nodiscard]] std::vector<std::uint32_t> GetVisible(Frustumf const& view) const;

private:
    std::vector<Node> nodes_;
    std::vector<Corners> triangles_;
};

} // namespace raytracer
