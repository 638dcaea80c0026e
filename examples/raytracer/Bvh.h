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

    float distance = std::numeric_limits<float>::infinity(); ///< as far as the ray still has to look
    std::uint32_t index = 0;                                 ///< of the triangle or the sphere
    float u = 0;                                             ///< weight of the triangle's second corner
    float v = 0;                                             ///< weight of the triangle's third corner
    What what = What::Nothing;
};

/// The triangles of a mesh in a hierarchy of boxes.
///
/// The boxes are padded by more than any box test is inexact, so that no test, whatever its rounding and however many
/// rays it takes at once, loses a triangle. What a ray hits is decided by the triangles alone, and these are always
/// tested by the same code, one ray at a time: that is why every kind of packet gives the same picture.
class Bvh
{
public:
    static constexpr std::size_t MAX_DEPTH = 64;

    /// Builds the hierarchy and sorts the triangles of the mesh into it.
    Bvh(Mesh& mesh, Vector3f const& eye);

    [[nodiscard]] Node const* GetNodes() const { return nodes_.data(); }

    /// A few boxes that together hold all that the view may show, the nearest first.
    [[nodiscard]] std::vector<std::uint32_t> GetVisible(Frustumf const& view) const;

    /// Moves the hits of the marked rays (bit 0 is the first) to the nearest triangle of a leaf. Of two triangles at
    /// the same distance the one with the lower index is taken, in whatever order they are met.
    void FindClosest(Node const& leaf, DepthRayf const* rays, unsigned marked, Hit* hits) const;

    /// Marks the rays that meet a triangle of a leaf within the distance of their hit: the distance becomes -1, so that
    /// such a ray enters no other box.
    void FindAny(Node const& leaf, DepthRayf const* rays, unsigned marked, Hit* hits) const;

private:
    struct Corners
    {
        Vector3f corner;
        Vector3f edge1;
        Vector3f edge2;
    };

    [[nodiscard]] static bool Intersect(Corners const& triangle, DepthRayf const& ray, Hit& hit);

    std::vector<Node> nodes_;
    std::vector<Corners> triangles_;
};

} // namespace raytracer
