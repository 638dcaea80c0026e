#pragma once

/// @file
/// Points, spheres and turned boxes in a view, the corners of a view, and views of boxes and of parts of the screen.
///
/// Of axis-aligned boxes, tFrustum::ContainsAABB() tells, and of arrays of boxes and spheres ClassifyBoxes(),
/// ClassifySpheres(), FindVisibleSpheres() and the like of `bv/maths/batch/Bounds.h`. tFrustum(matrix) takes the matrix
/// of a parallel view as well as that of a perspective one, with depths from -1 to 1; for other ranges of depth, there
/// is GetScreenView().

#include <cstddef>

#include "bv/Export.h"
#include "bv/maths/DepthRange.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeSphere.h"

namespace bv::maths
{

namespace detail
{

inline namespace BV_REGISTERS
{

/// The six planes of a view, as many at a time as a register holds, and some of them twice.
template <typename T>
struct tSixPlanes
{
    static constexpr std::size_t COUNT = sizeof(T) == sizeof(float) ? 2 : 3;

    tPlanes<T> groups[COUNT];

    template <template <typename> typename Frustum>
    [[gnu::always_inline]] explicit tSixPlanes(Frustum<T> const& view) noexcept
    {
        if constexpr (COUNT == 2)
        {
            groups[0] =
                LoadPlanes(view.GetLeftPlane(), view.GetRightPlane(), view.GetTopPlane(), view.GetBottomPlane());
            groups[1] = LoadPlanes(view.GetFarPlane(), view.GetNearPlane(), view.GetFarPlane(), view.GetNearPlane());
        }
        else
        {
            groups[0] = LoadPlanes(view.GetLeftPlane(), view.GetRightPlane());
            groups[1] = LoadPlanes(view.GetTopPlane(), view.GetBottomPlane());
            groups[2] = LoadPlanes(view.GetFarPlane(), view.GetNearPlane());
        }
    }
};

} // namespace BV_REGISTERS

} // namespace detail

/// @name Where shapes lie in a view
/// Templates over `float` and `double`; both instances are in the library. A NaN distance never puts a shape outside,
/// as with tFrustum::ContainsAABB().
/// @{

/// Where a point lies: OUTSIDE where a plane has it behind, else INSIDE, on a plane, too.
template <typename T>
[[nodiscard, gnu::always_inline]] inline typename tFrustum<T>::IntersectionResult
Classify(tFrustum<T> const& view, tVector3<T> const& point) noexcept
{
    using Lanes = detail::tPlaneLanes<T>;
    detail::tSixPlanes<T> const planes(view);
    Lanes const x = detail::Broadcast<Lanes>(point.x);
    Lanes const y = detail::Broadcast<Lanes>(point.y);
    Lanes const z = detail::Broadcast<Lanes>(point.z);
    int behind = 0;
    for (detail::tPlanes<T> const& group : planes.groups)
        behind |= detail::Bits(group.Distance(x, y, z) < Lanes{});
    return behind != 0 ? tFrustum<T>::OUTSIDE : tFrustum<T>::INSIDE;
}

/// Where a sphere lies: OUTSIDE where a plane has its centre farther behind it than the radius, INTERSECTING where one
/// has its centre nearer than the radius, or behind it, else INSIDE. A sphere that touches a plane from inside is
/// inside of it, and one that touches it from behind intersects. A sphere whose squared radius is negative or NaN is
/// INSIDE. What ClassifySpheres() says of many.
///
/// Conservative: a sphere near an edge of the view may be INTERSECTING although it lies outside.
template <typename T>
[[nodiscard, gnu::always_inline]] inline typename tFrustum<T>::IntersectionResult
Classify(tFrustum<T> const& view, tVolumeSphere<T> const& sphere) noexcept
{
    using Lanes = detail::tPlaneLanes<T>;
    detail::tSixPlanes<T> const planes(view);
    Lanes const x = detail::Broadcast<Lanes>(sphere.GetCentre().x);
    Lanes const y = detail::Broadcast<Lanes>(sphere.GetCentre().y);
    Lanes const z = detail::Broadcast<Lanes>(sphere.GetCentre().z);
    Lanes const radius = detail::SquareRoot(detail::Broadcast<Lanes>(sphere.GetRadiusSquared()));
    Lanes const opposite = detail::Negated(radius);
    int outside = 0;
    int straddled = 0;
    for (detail::tPlanes<T> const& group : planes.groups)
    {
        Lanes const distance = group.Distance(x, y, z);
        outside |= detail::Bits(distance < opposite);
        straddled |= detail::Bits(distance < radius);
    }
    auto const kept = straddled != 0 ? tFrustum<T>::INTERSECTING : tFrustum<T>::INSIDE;
    return outside != 0 ? tFrustum<T>::OUTSIDE : kept;
}

/// Where a turned box lies: OUTSIDE where a plane has all of it behind, INTERSECTING where one has a part behind, else
/// INSIDE. The distance of the centre is compared with the reach of the box along the normal, |n.x axis| * half x +
/// |n.y axis| * half y + |n.z axis| * half z. A box that touches a plane from inside is inside of it, but for rounding.
/// A box that is not valid is OUTSIDE.
///
/// Conservative: a box near a corner of the view may be INTERSECTING although it lies outside. Assarsson, Moeller,
/// "Optimized View Frustum Culling Algorithms for Bounding Boxes", 2000.
template <typename T>
[[nodiscard, gnu::always_inline]] inline typename tFrustum<T>::IntersectionResult
Classify(tFrustum<T> const& view, tOrientedBox<T> const& box) noexcept
{
    if (!box.IsValid())
        return tFrustum<T>::OUTSIDE;
    using Lanes = detail::tPlaneLanes<T>;
    detail::tSixPlanes<T> const planes(view);
    tVector3<T> const& centre = box.GetCentre();
    tVector3<T> const& halves = box.GetHalfExtents();
    int outside = 0;
    int straddled = 0;
    for (detail::tPlanes<T> const& group : planes.groups)
    {
        Lanes const distance = group.Distance(detail::Broadcast<Lanes>(centre.x), detail::Broadcast<Lanes>(centre.y),
                                              detail::Broadcast<Lanes>(centre.z));
        Lanes const whole = group.Reach(box.GetAxis(0), halves.x) + group.Reach(box.GetAxis(1), halves.y) +
                            group.Reach(box.GetAxis(2), halves.z);
        outside |= detail::Bits(distance + whole < Lanes{});
        straddled |= detail::Bits(distance - whole < Lanes{});
    }
    auto const kept = straddled != 0 ? tFrustum<T>::INTERSECTING : tFrustum<T>::INSIDE;
    return outside != 0 ? tFrustum<T>::OUTSIDE : kept;
}

/// @}

/// @name Views
/// @{

/// A corner of a view: the point that three of its planes have in common. Those of tFrustum(matrix) are where the
/// matrix draws x, y and z at -1 or 1, which are the corners of what is shown only for DepthRange::MINUS_ONE_TO_ONE.
///
/// @param view the view.
/// @param index bit 0 chooses the right plane instead of the left one, bit 1 the top instead of the bottom, bit 2 the
///        far instead of the near; other bits count for nothing.
/// @return infinities or NaN where these planes have no one point in common, as at the far end of an infinite view.
template <typename T>
[[nodiscard]] tVector3<T> GetCorner(tFrustum<T> const& view, unsigned int index) noexcept;
/// All corners, in the order of their index.
template <typename T>
void GetCorners(tFrustum<T> const& view, tVector3<T> (&corners)[8]) noexcept;

/// The parallel view that sees what a box holds: along its -z axis, with the x axis to the right and the y axis up; for
/// shadows of distant lights and for selections. Its near plane is the face on the side of the z axis.
///
/// Axes that are left-handed give a view that is mirrored. In that of the empty box, everything finite is OUTSIDE.
template <typename T>
[[nodiscard]] tFrustum<T> GetParallelView(tOrientedBox<T> const& box) noexcept;

/// The part of a view that lies behind a rectangle of the screen: for tiles, portals and selections.
///
/// The whole of a view whose matrix has any range of depth is that behind the rectangle from (-1, -1) to (1, 1).
///
/// @param matrix the combined view and projection matrix, as tFrustum(matrix) takes it: parallel or perspective.
/// @param rectangle in what clip space becomes by the division by w: x from -1 at the left edge of the screen to 1 at
///        the right one, y from -1 at the bottom to 1 at the top. It may reach beyond the screen. One of no width or
///        height gives a view without depth in that direction, whose two planes coincide.
/// @param range the depths of the near and the far plane, as the projection has them. Where the projection has no far
///        plane, that of the view has no direction, and puts nothing OUTSIDE.
/// @return a view that has everything finite OUTSIDE where the rectangle is not valid: its planes have normals of zero
///         and offsets of -infinity. Planes without a direction are not rejected: they hold infinities and NaN.
///
/// The caller includes `bv/maths/tMatrix4.h`.
template <typename T>
[[nodiscard]] tFrustum<T> GetScreenView(tMatrix4<T> const& matrix, tAreaAABB<T> const& rectangle,
                                        DepthRange range = DepthRange::MINUS_ONE_TO_ONE) noexcept;

/// @}

extern template BV_TEMPLATE tFrustum<float>::IntersectionResult Classify(tFrustum<float> const&,
                                                                         tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tFrustum<float>::IntersectionResult Classify(tFrustum<float> const&,
                                                                         tVolumeSphere<float> const&) noexcept;
extern template BV_TEMPLATE tFrustum<float>::IntersectionResult Classify(tFrustum<float> const&,
                                                                         tOrientedBox<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> GetCorner(tFrustum<float> const&, unsigned int) noexcept;
extern template BV_TEMPLATE void GetCorners(tFrustum<float> const&, tVector3<float> (&)[8]) noexcept;
extern template BV_TEMPLATE tFrustum<float> GetParallelView(tOrientedBox<float> const&) noexcept;
extern template BV_TEMPLATE tFrustum<float> GetScreenView(tMatrix4<float> const&, tAreaAABB<float> const&,
                                                          DepthRange) noexcept;
extern template BV_TEMPLATE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                          tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                          tVolumeSphere<double> const&) noexcept;
extern template BV_TEMPLATE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                          tOrientedBox<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> GetCorner(tFrustum<double> const&, unsigned int) noexcept;
extern template BV_TEMPLATE void GetCorners(tFrustum<double> const&, tVector3<double> (&)[8]) noexcept;
extern template BV_TEMPLATE tFrustum<double> GetParallelView(tOrientedBox<double> const&) noexcept;
extern template BV_TEMPLATE tFrustum<double> GetScreenView(tMatrix4<double> const&, tAreaAABB<double> const&,
                                                           DepthRange) noexcept;

} // namespace bv::maths
