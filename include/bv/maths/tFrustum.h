#pragma once

/// @file
/// The viewing volume of a camera.

#include <cstdint>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

/// Viewing volume of a camera, held as six planes whose normals point inward: a point is inside when none of its signed
/// distances is negative.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tFrustum
{
    tPlane<T> leftPlane;
    tPlane<T> rightPlane;
    tPlane<T> bottomPlane;
    tPlane<T> topPlane;
    tPlane<T> nearPlane;
    tPlane<T> farPlane;

public:
    /// Where a box lies.
    enum IntersectionResult : std::uint32_t
    {
        OUTSIDE = 0,      ///< wholly outside at least one plane
        INTERSECTING = 1, ///< rejected by no plane, but straddling at least one
        INSIDE = 2        ///< wholly inside all six planes
    };

    /// The edges that run from the near to the far plane.
    enum Edge : std::uint32_t
    {
        EDGE_TOP_LEFT = 0,    ///< between the left and top planes
        EDGE_TOP_RIGHT = 1,   ///< between the top and right planes
        EDGE_BOTTOM_LEFT = 2, ///< between the bottom and left planes
        EDGE_BOTTOM_RIGHT = 3 ///< between the right and bottom planes
    };

    /// @name Construction
    /// @{
    /// Six planes of zeros: not a usable view. Every box is INSIDE.
    constexpr tFrustum() noexcept {} // not defaulted: a part of the instances in the library
    /// The view of a combined view and projection matrix, which maps the point (x, y, z, 1) as a column, on its right,
    /// to clip space of depth -w to w; for other depths, see GetScreenView(). Gribb, Hartmann, "Fast Extraction of
    /// Viewing Frustum Planes from the World-View-Projection Matrix", 2001.
    ///
    /// Planes without a direction, as those of a matrix of zeros, are not rejected: they hold infinities and NaN.
    /// @throws bv::InvalidArgumentException when setting a plane throws DivideByZeroException; planes divide without a
    ///         check, and never do.
    tFrustum(tMatrix4<T> const& matrix);
    /// The view between six planes, taken as they are: their normals point inward.
    constexpr tFrustum(tPlane<T> const& left, tPlane<T> const& right, tPlane<T> const& bottom, tPlane<T> const& top,
                       tPlane<T> const& nearest, tPlane<T> const& farthest) noexcept
        : leftPlane{left}, rightPlane{right}, bottomPlane{bottom}, topPlane{top}, nearPlane{nearest}, farPlane{farthest}
    {
    }
    /// @}

    /// @name Access
    /// @{
    /// The left plane.
    [[nodiscard]] constexpr tPlane<T> const& GetLeftPlane() const noexcept { return leftPlane; }
    /// The right plane.
    [[nodiscard]] constexpr tPlane<T> const& GetRightPlane() const noexcept { return rightPlane; }
    /// The bottom plane.
    [[nodiscard]] constexpr tPlane<T> const& GetBottomPlane() const noexcept { return bottomPlane; }
    /// The top plane.
    [[nodiscard]] constexpr tPlane<T> const& GetTopPlane() const noexcept { return topPlane; }
    /// The near plane.
    [[nodiscard]] constexpr tPlane<T> const& GetNearPlane() const noexcept { return nearPlane; }
    /// The far plane.
    [[nodiscard]] constexpr tPlane<T> const& GetFarPlane() const noexcept { return farPlane; }
    /// @}

    /// @name Queries
    /// @{
    /// Where a box lies. A box that touches a plane from inside is inside of it, and a NaN distance never puts a box
    /// outside.
    ///
    /// Conservative: a box near a corner of the view may be INTERSECTING although it lies outside. Assarsson, Moeller,
    /// "Optimized View Frustum Culling Algorithms for Bounding Boxes", 2000.
    [[nodiscard, gnu::always_inline]] constexpr IntersectionResult
    ContainsAABB(tVolumeAABB<T> const& box) const noexcept;
    /// Unit direction of an edge: the vector product of the normals of its two planes, in the order in which the Edge
    /// names them, times the reciprocal of its length. It points away from the eye of a perspective view.
    ///
    /// @return (0, 0, 0) for a value that is no edge, NaN where the two planes are parallel.
    [[nodiscard]] tVector3<T> GetEdgeVector(Edge edge) const noexcept;
    /// Where a ray meets the near plane, in screen coordinates: x from 0 at the left edge to 1 at the right one, y from
    /// 0 at the top edge to 1 at the bottom one. tRay::IntersectScreen() counts y from the bottom.
    ///
    /// Distances count without their sign, so a point outside the view is folded back into the range. NaN where a
    /// point is at distance 0 from both opposite planes. The ray counts as a whole line.
    /// @throws DivideByZeroException when the ray runs along the near plane; see tPlane::GetIntersection().
    [[nodiscard]] tVector2<T> IntersectNear(tRay<T> const& ray) const;
    /// @}

private:
    [[nodiscard, gnu::always_inline]] inline IntersectionResult Classify(tVolumeAABB<T> const& box) const noexcept;
    [[nodiscard]] static constexpr tVector3<T> ChooseCorner(tVector3<T> const& normal, tVector3<T> const& along,
                                                            tVector3<T> const& against) noexcept;
    [[nodiscard, gnu::always_inline]] static constexpr bool Rejects(tPlane<T> const& plane, tVolumeAABB<T> const& box,
                                                                    bool& straddles) noexcept;
};

/// The corner made of one corner's components where the normal's are zero or positive, and of another's elsewhere.
template <typename T>
constexpr tVector3<T> tFrustum<T>::ChooseCorner(tVector3<T> const& normal, tVector3<T> const& along,
                                                tVector3<T> const& against) noexcept
{
    return {normal.x >= T{0} ? along.x : against.x, normal.y >= T{0} ? along.y : against.y,
            normal.z >= T{0} ? along.z : against.z};
}

/// Whether a box lies wholly behind a plane. One that lies partly behind it is noted, the others leave the note alone.
template <typename T>
constexpr bool tFrustum<T>::Rejects(tPlane<T> const& plane, tVolumeAABB<T> const& box, bool& straddles) noexcept
{
    tVector3<T> const& normal = plane.GetNormal();
    if (T{0} > plane.GetDistance(ChooseCorner(normal, box.GetMax(), box.GetMin())))
        return true;
    if (T{0} > plane.GetDistance(ChooseCorner(normal, box.GetMin(), box.GetMax())))
        straddles = true;
    return false;
}

template <typename T>
constexpr typename tFrustum<T>::IntersectionResult tFrustum<T>::ContainsAABB(tVolumeAABB<T> const& box) const noexcept
{
    if (!std::is_constant_evaluated())
        return Classify(box);
    bool straddles = false; // the sides reject most, so they come first
    if (Rejects(leftPlane, box, straddles) || Rejects(rightPlane, box, straddles) ||
        Rejects(topPlane, box, straddles) || Rejects(bottomPlane, box, straddles) ||
        Rejects(farPlane, box, straddles) || Rejects(nearPlane, box, straddles))
        return OUTSIDE;
    return straddles ? INTERSECTING : INSIDE;
}

/// The same for several planes at a time and without a branch: no plane waits for another, and any of them rejects.
template <typename T>
inline typename tFrustum<T>::IntersectionResult tFrustum<T>::Classify(tVolumeAABB<T> const& box) const noexcept
{
    detail::tBoxCorners<T> const corners(box.GetMin(), box.GetMax());
    int rejected = 0;
    int straddled = 0;
    if constexpr (sizeof(T) == sizeof(float))
    {
        corners.Test(detail::LoadPlanes(leftPlane, rightPlane, topPlane, bottomPlane), rejected, straddled);
        corners.TestTwice(detail::LoadPlanes(farPlane, nearPlane, farPlane, nearPlane), rejected, straddled);
    }
    else
    {
        corners.Test(detail::LoadPlanes(leftPlane, rightPlane), rejected, straddled);
        corners.Test(detail::LoadPlanes(topPlane, bottomPlane), rejected, straddled);
        corners.Test(detail::LoadPlanes(farPlane, nearPlane), rejected, straddled);
    }
    IntersectionResult const kept = straddled != 0 ? INTERSECTING : INSIDE;
    return rejected != 0 ? OUTSIDE : kept;
}

extern template class BV_TEMPLATE tFrustum<float>;
extern template class BV_TEMPLATE tFrustum<double>;

// Six planes: left, right, bottom, top, near, far.
static_assert(sizeof(tFrustum<float>) == 24 * sizeof(float) && sizeof(tFrustum<double>) == 24 * sizeof(double));
static_assert(std::is_standard_layout_v<tFrustum<float>> && std::is_standard_layout_v<tFrustum<double>>);
static_assert(std::is_trivially_copyable_v<tFrustum<float>> && std::is_trivially_copyable_v<tFrustum<double>>);

} // namespace bv::maths
