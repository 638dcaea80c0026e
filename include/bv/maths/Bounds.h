#pragma once

/// @file
/// Boxes and spheres around other shapes, and what boxes have in common with boxes; the same for rectangles and discs
/// in the plane.
///
/// What the shapes can do by themselves is not repeated here: boxes grow in place by Expand() and tell of spheres by
/// Overlaps(); spheres tell of spheres and boxes; tVolumeAABB::operator*() is the box around a box that an affine
/// matrix moves, and tOrientedBox::GetBound() the one around a box that is turned. Boxes around arrays of points are
/// grown by ExpandBox() of `bv/maths/batch/Bounds.h`.
///
/// A sphere or disc that is made around something has a squared radius of 1 + 8 epsilons times what the formula gives.
/// Whatever rounds, it then holds all that it is made around, as exact arithmetic sees it, and Contains() says so of
/// every point: unless the radius is 0, or squares underflow. Where they overflow, the squared radius is +infinity.
///
/// A sphere whose squared radius is negative or NaN is empty, as one that contains nothing. The empty sphere that is
/// made here has centre (0, 0, 0) and squared radius -1.

#include <limits>
#include <optional>
#include <span>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/detail/Interval.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

namespace bv::maths
{

/// @name Boxes
/// Templates over `float` and `double`; both instances are in the library.
/// @{

/// The smallest box around two: tVolumeAABB::Expand(), into a copy of the first. An empty box adds nothing; a NaN of
/// the second moves nothing.
template <typename T>
[[nodiscard]] constexpr tVolumeAABB<T> Union(tVolumeAABB<T> const& a, tVolumeAABB<T> const& b) noexcept
{
    tVolumeAABB<T> both = a;
    both.Expand(b);
    return both;
}
/// The smallest box around a box and a point: tVolumeAABB::Expand(), into a copy of the box.
template <typename T>
[[nodiscard]] constexpr tVolumeAABB<T> Union(tVolumeAABB<T> const& box, tVector3<T> const& point) noexcept
{
    tVolumeAABB<T> both = box;
    both.Expand(point);
    return both;
}
/// @copydoc Union(tVolumeAABB<T> const&, tVolumeAABB<T> const&)
template <typename T>
[[nodiscard]] constexpr tAreaAABB<T> Union(tAreaAABB<T> const& a, tAreaAABB<T> const& b) noexcept
{
    tAreaAABB<T> both = a;
    both.Expand(b);
    return both;
}
/// @copydoc Union(tVolumeAABB<T> const&, tVector3<T> const&)
template <typename T>
[[nodiscard]] constexpr tAreaAABB<T> Union(tAreaAABB<T> const& box, tVector2<T> const& point) noexcept
{
    tAreaAABB<T> both = box;
    both.Expand(point);
    return both;
}

/// What two boxes have in common: the box of the larger lower and the smaller upper corner, component by component, or
/// the empty box where that is not valid. Boxes that touch share a flat box, which is valid; Overlaps() says whether
/// there is more. A NaN of the second box narrows nothing, a NaN of the first gives the empty box.
template <typename T>
[[nodiscard]] constexpr tVolumeAABB<T> Intersection(tVolumeAABB<T> const& a, tVolumeAABB<T> const& b) noexcept
{
    tVolumeAABB<T> common = a;
    detail::RaiseTo(common.GetMin(), b.GetMin());
    detail::LowerTo(common.GetMax(), b.GetMax());
    return common.IsValid() ? common : tVolumeAABB<T>();
}
/// @copydoc Intersection(tVolumeAABB<T> const&, tVolumeAABB<T> const&)
template <typename T>
[[nodiscard]] constexpr tAreaAABB<T> Intersection(tAreaAABB<T> const& a, tAreaAABB<T> const& b) noexcept
{
    tAreaAABB<T> common = a;
    detail::RaiseTo(common.GetMin().x, b.GetMin().x);
    detail::RaiseTo(common.GetMin().y, b.GetMin().y);
    detail::LowerTo(common.GetMax().x, b.GetMax().x);
    detail::LowerTo(common.GetMax().y, b.GetMax().y);
    return common.IsValid() ? common : tAreaAABB<T>();
}

/// Whether two boxes have more than a touch in common: whether each begins before the other ends, along every axis. A
/// flat box overlaps what it lies within, but not what it lies on the face of, itself included. The empty box overlaps
/// nothing, and a NaN overlaps nothing.
template <typename T>
[[nodiscard]] constexpr bool Overlaps(tVolumeAABB<T> const& a, tVolumeAABB<T> const& b) noexcept
{
    if (!std::is_constant_evaluated())
        return detail::AllThreeOnce(
            detail::Both(detail::LoadFirst(a) < detail::LoadLast(b), detail::LoadFirst(b) < detail::LoadLast(a)));
    return a.GetMin().x < b.GetMax().x && b.GetMin().x < a.GetMax().x && a.GetMin().y < b.GetMax().y &&
           b.GetMin().y < a.GetMax().y && a.GetMin().z < b.GetMax().z && b.GetMin().z < a.GetMax().z;
}
/// @copydoc Overlaps(tVolumeAABB<T> const&, tVolumeAABB<T> const&)
template <typename T>
[[nodiscard]] constexpr bool Overlaps(tAreaAABB<T> const& a, tAreaAABB<T> const& b) noexcept
{
    return a.GetMin().x < b.GetMax().x && b.GetMin().x < a.GetMax().x && a.GetMin().y < b.GetMax().y &&
           b.GetMin().y < a.GetMax().y;
}

/// Whether the whole of a box lies in another one, whose faces belong to it on all sides. Every box contains the empty
/// one, which contains only itself; a NaN is nowhere inside and contains nothing.
template <typename T>
[[nodiscard]] constexpr bool Contains(tVolumeAABB<T> const& outer, tVolumeAABB<T> const& inner) noexcept
{
    if (!std::is_constant_evaluated())
        return detail::AllThreeOnce(detail::Both(detail::LoadFirst(outer) <= detail::LoadFirst(inner),
                                                 detail::LoadLast(inner) <= detail::LoadLast(outer)));
    return outer.GetMin().x <= inner.GetMin().x && inner.GetMax().x <= outer.GetMax().x &&
           outer.GetMin().y <= inner.GetMin().y && inner.GetMax().y <= outer.GetMax().y &&
           outer.GetMin().z <= inner.GetMin().z && inner.GetMax().z <= outer.GetMax().z;
}
/// @copydoc Contains(tVolumeAABB<T> const&, tVolumeAABB<T> const&)
template <typename T>
[[nodiscard]] constexpr bool Contains(tAreaAABB<T> const& outer, tAreaAABB<T> const& inner) noexcept
{
    return outer.GetMin().x <= inner.GetMin().x && inner.GetMax().x <= outer.GetMax().x &&
           outer.GetMin().y <= inner.GetMin().y && inner.GetMax().y <= outer.GetMax().y;
}

/// Area of all six faces: twice (yz + xz + xy), the areas as tVolumeAABB::GetArea() gives them. Never clamped:
/// +infinity for the empty box. What a hierarchy of boxes weighs its splits by; MacDonald, Booth, "Heuristics for Ray
/// Tracing Using Space Subdivision", 1990.
template <typename T>
[[nodiscard]] constexpr T GetSurfaceArea(tVolumeAABB<T> const& box) noexcept
{
    tVector3<T> const extents = box.GetDiagonal();
    return (extents.y * extents.z + extents.x * extents.z + extents.x * extents.y) * T{2};
}
/// Length of all four edges: twice (x + y). Never clamped: -infinity for the empty box.
template <typename T>
[[nodiscard]] constexpr T GetPerimeter(tAreaAABB<T> const& box) noexcept
{
    tVector2<T> const extents = box.GetDiagonal();
    return (extents.x + extents.y) * T{2};
}

/// A corner of a box.
///
/// @param box the box.
/// @param index bit 0 chooses the upper end along x, bit 1 along y, bit 2 along z; other bits count for nothing.
template <typename T>
[[nodiscard]] constexpr tVector3<T> GetCorner(tVolumeAABB<T> const& box, unsigned int index) noexcept
{
    return {(index & 1U) != 0 ? box.GetMax().x : box.GetMin().x, (index & 2U) != 0 ? box.GetMax().y : box.GetMin().y,
            (index & 4U) != 0 ? box.GetMax().z : box.GetMin().z};
}
/// A corner of a rectangle.
///
/// @param box the rectangle.
/// @param index bit 0 chooses the upper end along x, bit 1 along y; other bits count for nothing.
template <typename T>
[[nodiscard]] constexpr tVector2<T> GetCorner(tAreaAABB<T> const& box, unsigned int index) noexcept
{
    return {(index & 1U) != 0 ? box.GetMax().x : box.GetMin().x, (index & 2U) != 0 ? box.GetMax().y : box.GetMin().y};
}
/// All corners, in the order of their index.
template <typename T>
constexpr void GetCorners(tVolumeAABB<T> const& box, tVector3<T> (&corners)[8]) noexcept
{
    tVolumeAABB<T> const local = box; // the corners may lie in the box
    for (unsigned int index = 0; index < 8; ++index)
        corners[index] = GetCorner(local, index);
}
/// @copydoc GetCorners(tVolumeAABB<T> const&, tVector3<T> (&)[8])
template <typename T>
constexpr void GetCorners(tAreaAABB<T> const& box, tVector2<T> (&corners)[4]) noexcept
{
    tAreaAABB<T> const local = box; // the corners may lie in the box
    for (unsigned int index = 0; index < 4; ++index)
        corners[index] = GetCorner(local, index);
}

namespace detail
{

/// The number of an interval that is nearest to another: the upper end decides last, and a NaN stays.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T NearestTo(T value, T lower, T upper) noexcept
{
    T const raised = lower > value ? lower : value;
    return upper < raised ? upper : raised;
}

} // namespace detail

/// The point of a box that is nearest to a point, which is that point itself inside. On each axis the lower face is
/// looked at first, then the upper one, which decides for an inverted box; a NaN of the point stays.
template <typename T>
[[nodiscard]] constexpr tVector3<T> GetClosestPoint(tVolumeAABB<T> const& box, tVector3<T> const& point) noexcept
{
    return {detail::NearestTo(point.x, box.GetMin().x, box.GetMax().x),
            detail::NearestTo(point.y, box.GetMin().y, box.GetMax().y),
            detail::NearestTo(point.z, box.GetMin().z, box.GetMax().z)};
}
/// @copydoc GetClosestPoint(tVolumeAABB<T> const&, tVector3<T> const&)
template <typename T>
[[nodiscard]] constexpr tVector2<T> GetClosestPoint(tAreaAABB<T> const& box, tVector2<T> const& point) noexcept
{
    return {detail::NearestTo(point.x, box.GetMin().x, box.GetMax().x),
            detail::NearestTo(point.y, box.GetMin().y, box.GetMax().y)};
}

/// The box around a sphere: the centre minus and plus the radius, each as it rounds. An empty sphere gives the empty
/// box.
template <typename T>
[[nodiscard]] inline tVolumeAABB<T> GetBound(tVolumeSphere<T> const& sphere) noexcept
{
    if (!(sphere.GetRadiusSquared() >= T{0}))
        return {};
    T const radius = sphere.GetRadius();
    tVector3<T> const reach(radius, radius, radius);
    return {sphere.GetCentre() - reach, sphere.GetCentre() + reach};
}
/// @copydoc GetBound(tVolumeSphere<T> const&)
template <typename T>
[[nodiscard]] inline tAreaAABB<T> GetBound(tAreaDisc<T> const& disc) noexcept
{
    if (!(disc.GetRadiusSquared() >= T{0}))
        return {};
    T const radius = disc.GetRadius();
    tVector2<T> const reach(radius, radius);
    return {disc.GetCentre() - reach, disc.GetCentre() + reach};
}

/// The tight box around what a matrix, which may be projective, makes of a box: around its eight corners, each as
/// tVector3::Transform() makes it by a matrix in state GENERAL. The state of the matrix is not read.
///
/// @return nothing where the w of a corner is below `TOLERANCE`, or NaN: a part of the box lies behind the eye of a
///         perspective view, or so close to it that the image has no bound. A box that is not valid gives the empty
///         one.
///
/// The caller includes `bv/maths/tMatrix4.h`.
template <typename T>
[[nodiscard]] std::optional<tVolumeAABB<T>> ProjectBox(tVolumeAABB<T> const& box, tMatrix4<T> const& matrix) noexcept;

/// @}

/// @name Spheres
/// @{

/// The smallest sphere around a box: about its centre, through the corner that is farthest from it as the centre
/// rounds. A box that is not valid gives the empty sphere, an infinite one infinities and NaN. tVolumeSphere(min, max)
/// is the same without any allowance for rounding.
template <typename T>
[[nodiscard]] tVolumeSphere<T> GetBoundingSphere(tVolumeAABB<T> const& box) noexcept;
/// @copydoc GetBoundingSphere(tVolumeAABB<T> const&)
template <typename T>
[[nodiscard]] tAreaDisc<T> GetBoundingDisc(tAreaAABB<T> const& box) noexcept;

/// The smallest sphere around a sphere and a point: the sphere itself where the point is no farther from its centre
/// than its radius, as these round. An empty sphere gives that of radius 0 at the point. A point with a NaN moves
/// nothing; one whose squared distance is +infinity makes the squared radius +infinity.
template <typename T>
[[nodiscard]] tVolumeSphere<T> Union(tVolumeSphere<T> const& sphere, tVector3<T> const& point) noexcept;
/// @copydoc Union(tVolumeSphere<T> const&, tVector3<T> const&)
template <typename T>
[[nodiscard]] tAreaDisc<T> Union(tAreaDisc<T> const& disc, tVector2<T> const& point) noexcept;

/// The smallest sphere around two: one of them where the other does not reach beyond it, as the distance of the centres
/// and the radii round, the first if that is true of both. An empty sphere adds nothing, nor does one whose centre has
/// a NaN. Centres whose squared distance is +infinity make the squared radius +infinity.
template <typename T>
[[nodiscard]] tVolumeSphere<T> Union(tVolumeSphere<T> const& a, tVolumeSphere<T> const& b) noexcept;
/// @copydoc Union(tVolumeSphere<T> const&, tVolumeSphere<T> const&)
template <typename T>
[[nodiscard]] tAreaDisc<T> Union(tAreaDisc<T> const& a, tAreaDisc<T> const& b) noexcept;

/// A sphere around points, in a few passes over them: its radius is some hundredths larger than the smallest, a quarter
/// for few points or regular ones. The first pass finds the points that are farthest along the axes; the second one
/// grows the sphere through the widest pair by each point outside; and the last one takes the radius that the centre
/// needs, or the middle of the box around all instead, where that needs a smaller one. Ritter, "An Efficient Bounding
/// Sphere", Graphics Gems, 1990.
///
/// Depends on the order of the points. No points give the empty sphere. One with a NaN counts for nothing; one with an
/// infinity, and points whose squared distances overflow, give the squared radius +infinity.
[[nodiscard]] BV_API tVolumeSphere<float> GetBoundingSphere(std::span<tVector3<float> const> points) noexcept;
/// @copydoc GetBoundingSphere(std::span<tVector3<float> const>)
[[nodiscard]] BV_API tVolumeSphere<double> GetBoundingSphere(std::span<tVector3<double> const> points) noexcept;
/// @copydoc GetBoundingSphere(std::span<tVector3<float> const>)
[[nodiscard]] BV_API tAreaDisc<float> GetBoundingDisc(std::span<tVector2<float> const> points) noexcept;
/// @copydoc GetBoundingSphere(std::span<tVector3<float> const>)
[[nodiscard]] BV_API tAreaDisc<double> GetBoundingDisc(std::span<tVector2<double> const> points) noexcept;

/// The smallest sphere around points, whose radius exceeds that of exact arithmetic by rounding only: by a few units in
/// the last place, and in `double` by some hundred where the points lie near a common circle and off its plane by some
/// 1e-6 of its radius.
///
/// At most four points support the smallest sphere. A pass over all points finds the one that is farthest from its
/// centre; the smallest sphere around that and the support, which is one of a few, has a larger radius and a support of
/// its own; and so on until none is farther. Some ten passes do, in the order of the points and without a list of them,
/// so they may be constant. Duplicates and points on a common sphere, line or plane are nothing special. Welzl,
/// "Smallest Enclosing Disks (Balls and Ellipsoids)", 1991, with the pivots of Gaertner, "Fast and Robust Smallest
/// Enclosing Balls", 1999. The support is computed in `double` for both precisions.
///
/// No points give the empty sphere. One with a NaN counts for nothing; one with an infinity, and points whose squared
/// distances overflow, give the squared radius +infinity.
[[nodiscard]] BV_API tVolumeSphere<float> GetSmallestSphere(std::span<tVector3<float> const> points) noexcept;
/// @copydoc GetSmallestSphere(std::span<tVector3<float> const>)
[[nodiscard]] BV_API tVolumeSphere<double> GetSmallestSphere(std::span<tVector3<double> const> points) noexcept;
/// The smallest disc around points, as GetSmallestSphere() finds it, with a support of at most three.
[[nodiscard]] BV_API tAreaDisc<float> GetSmallestDisc(std::span<tVector2<float> const> points) noexcept;
/// @copydoc GetSmallestDisc(std::span<tVector2<float> const>)
[[nodiscard]] BV_API tAreaDisc<double> GetSmallestDisc(std::span<tVector2<double> const> points) noexcept;

/// @}

extern template BV_TEMPLATE tVolumeAABB<float> Union(tVolumeAABB<float> const&, tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<float> Union(tVolumeAABB<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<float> Union(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<float> Union(tAreaAABB<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<float> Intersection(tVolumeAABB<float> const&,
                                                            tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<float> Intersection(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE bool Overlaps(tVolumeAABB<float> const&, tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE bool Overlaps(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE bool Contains(tVolumeAABB<float> const&, tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE bool Contains(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE float GetSurfaceArea(tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE float GetPerimeter(tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> GetCorner(tVolumeAABB<float> const&, unsigned int) noexcept;
extern template BV_TEMPLATE tVector2<float> GetCorner(tAreaAABB<float> const&, unsigned int) noexcept;
extern template BV_TEMPLATE void GetCorners(tVolumeAABB<float> const&, tVector3<float> (&)[8]) noexcept;
extern template BV_TEMPLATE void GetCorners(tAreaAABB<float> const&, tVector2<float> (&)[4]) noexcept;
extern template BV_TEMPLATE tVector3<float> GetClosestPoint(tVolumeAABB<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> GetClosestPoint(tAreaAABB<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<float> GetBound(tVolumeSphere<float> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<float> GetBound(tAreaDisc<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVolumeAABB<float>> ProjectBox(tVolumeAABB<float> const&,
                                                                         tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<float> GetBoundingSphere(tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<float> GetBoundingDisc(tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<float> Union(tVolumeSphere<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<float> Union(tAreaDisc<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<float> Union(tVolumeSphere<float> const&,
                                                       tVolumeSphere<float> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<float> Union(tAreaDisc<float> const&, tAreaDisc<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<double> Union(tVolumeAABB<double> const&, tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<double> Union(tVolumeAABB<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<double> Union(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<double> Union(tAreaAABB<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<double> Intersection(tVolumeAABB<double> const&,
                                                             tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<double> Intersection(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE bool Overlaps(tVolumeAABB<double> const&, tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE bool Overlaps(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE bool Contains(tVolumeAABB<double> const&, tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE bool Contains(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE double GetSurfaceArea(tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE double GetPerimeter(tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> GetCorner(tVolumeAABB<double> const&, unsigned int) noexcept;
extern template BV_TEMPLATE tVector2<double> GetCorner(tAreaAABB<double> const&, unsigned int) noexcept;
extern template BV_TEMPLATE void GetCorners(tVolumeAABB<double> const&, tVector3<double> (&)[8]) noexcept;
extern template BV_TEMPLATE void GetCorners(tAreaAABB<double> const&, tVector2<double> (&)[4]) noexcept;
extern template BV_TEMPLATE tVector3<double> GetClosestPoint(tVolumeAABB<double> const&,
                                                             tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> GetClosestPoint(tAreaAABB<double> const&,
                                                             tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<double> GetBound(tVolumeSphere<double> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<double> GetBound(tAreaDisc<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVolumeAABB<double>> ProjectBox(tVolumeAABB<double> const&,
                                                                          tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<double> GetBoundingSphere(tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<double> GetBoundingDisc(tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<double> Union(tVolumeSphere<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<double> Union(tAreaDisc<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<double> Union(tVolumeSphere<double> const&,
                                                        tVolumeSphere<double> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<double> Union(tAreaDisc<double> const&, tAreaDisc<double> const&) noexcept;

} // namespace bv::maths
