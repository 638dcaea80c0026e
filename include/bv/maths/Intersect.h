#pragma once

/// @file
/// Rays against triangles, planes, discs and turned boxes, triangles against boxes, rays moved by a matrix, and the
/// barycentric coordinates of a hit with their derivatives.
///
/// The same for all intersections: a ray is hit at the parameter t, at the point origin + t * direction, whatever the
/// length of the direction. The caller gives the interval of parameters that count, say 0 and the farthest distance of
/// interest, as tRay::Clip() takes it; both ends belong to it. Both sides count: who wants one looks at the sign of the
/// scalar product of the direction and the normal. Where there is no hit, no result is written. A NaN anywhere is a
/// miss, and so is what overflows on the way to a result. The arguments may lie in the results.
///
/// Packets of rays have the same in bv/maths/simd/PacketTriangles.h, and one ray against many triangles is in
/// bv/maths/batch/Rays.h.

#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/VectorTransforms.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/detail/TriangleInBox.h"
#include "bv/maths/detail/Triangles.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tDifferential2.h"
#include "bv/maths/tDifferential3.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tWatertightRay.h"

namespace bv::maths
{

/// Where a ray meets a triangle of the corners a, b and c.
///
/// The hit has the barycentric coordinates (1 - u - v, u, v): what the corners carry is interpolated as
/// A + (B - A) * u + (C - A) * v. Neither is negative, nor -0; u + v may be above 1 by rounding.
template <typename T>
struct tTriangleHit
{
    T t; ///< parameter of the ray
    T u; ///< weight of b
    T v; ///< weight of c
};

/// Intersects a ray with a triangle, the fast way: T. Moeller, B. Trumbore, "Fast, Minimum Storage Ray/Triangle
/// Intersection", 1997.
///
/// Nothing has to be made ready, but a ray may slip between two triangles: near an edge, each of the two rounds by
/// itself. A renderer of closed meshes takes a tWatertightRay. A hit on an edge or corner counts where the arithmetic
/// is exact. A ray parallel to the triangle, and a triangle without area, are misses: there is no hit unless d = |(b -
/// a) . (direction x (c - a))| is above 0. With the scalar products U and V, it is a hit if U >= 0, V >= 0, U + V <= d,
/// and t, u = U / d and v = V / d are quotients, so that a corner that is hit exactly has the weight 1.
///
/// @param ray the ray.
/// @param a,b,c the corners, in either order of rotation.
/// @param tNear,tFar the parameters that count.
/// @param[out] hit where it is, written for a hit alone.
/// @return whether there is one.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool
IntersectTriangle(tRay<T> const& ray, tVector3<T> const& a, tVector3<T> const& b, tVector3<T> const& c,
                  std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, tTriangleHit<T>& hit) noexcept
{
    using V = detail::Register<T, 16>;
    detail::tMeeting<V> const meeting =
        detail::MeetFast(detail::AsTriple(ray.origin), detail::AsTriple(ray.direction), detail::AsTriple(a),
                         detail::AsTriple(b), detail::AsTriple(c), detail::Alone(tNear), detail::Alone(tFar));
    if ((detail::Bits(meeting.hits) & 1) == 0)
        return false;
    hit = {meeting.t[0], meeting.u[0], meeting.v[0]};
    return true;
}

/// Intersects a ray with a triangle so that none slips through a closed mesh: S. Woop, C. Benthin, I. Wald, "Watertight
/// Ray/Triangle Intersection", 2013.
///
/// Corners are moved, each by itself, to where the ray sees them. There, whether the ray runs on one or the other side
/// of an edge is decided exactly, so that two triangles with an edge in common agree: the ray meets one of them, or
/// both where it hits the edge itself, and all triangles around a corner that it hits. (The exact decision is needed
/// where two products round to the same number. For `float` it is made in `double`; for `double` with the rounding
/// errors of the products, by T. Dekker, "A Floating-Point Technique for Extending the Available Precision", 1971.) A
/// triangle that the ray sees from the edge, or without area, is a miss; its neighbours are met.
///
/// The promise is for coordinates, as seen along the ray, whose products neither overflow nor, in `double`, lie below
/// 1e-270, and in `double` for none above 1e300. It is one of directions: the parameter t of a hit is rounded, and an
/// interval that ends close to the mesh can cut it off. Where products of three coordinates fall below the normal
/// numbers, as those of about 1e-13 do in `float`, t has fewer digits, down to none.
///
/// @param ray made ready once for all triangles.
/// @param a,b,c the corners, in either order of rotation.
/// @param tNear,tFar the parameters that count.
/// @param[out] hit where it is, written for a hit alone. On an edge the opposite corner's weight is exactly 0, on a
///             corner that one's is exactly 1. The weights are those at the point where the ray sees the corners.
/// @return whether there is one.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool
IntersectTriangle(tWatertightRay<T> const& ray, tVector3<T> const& a, tVector3<T> const& b, tVector3<T> const& c,
                  std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, tTriangleHit<T>& hit) noexcept;

/// Intersects a ray with a plane.
///
/// t = -(n . origin + offset) / (n . direction), with the sums in the order of tPlane::GetIntersection(). A ray whose
/// direction has exactly no component along the normal is a miss, one in the plane included; there is no tolerance,
/// since the interval takes care of far hits.
/// @param ray the ray.
/// @param plane the plane.
/// @param tNear,tFar the parameters that count.
/// @param[out] t the parameter of the hit, never -0.
/// @return whether there is one.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IntersectPlane(tRay<T> const& ray, tPlane<T> const& plane,
                                                             std::type_identity_t<T> tNear,
                                                             std::type_identity_t<T> tFar, T& t) noexcept
{
    tVector3<T> const& n = plane.GetNormal();
    tVector3<T> const& p = ray.origin;
    tVector3<T> const& d = ray.direction;
    T const denominator = n.x * d.x + d.y * n.y + d.z * n.z;
    bool const crosses = denominator != T{0};
    if (!detail::VECTORISES_TESTS && !crosses)
        return false;
    T const divisor = crosses ? denominator : T{1};
    T const at = -((p.x * n.x + p.y * n.y + p.z * n.z) + plane.GetOffset()) / divisor + T{0};
    if (!(crosses & detail::Counts<T>(at, tNear, tFar)))
        return false;
    t = at;
    return true;
}

/// Intersects a ray with a disc.
///
/// t = (n . (centre - origin)) / (n . direction); the hit counts if the squared length of (origin - centre) + t *
/// direction is at most the square of the radius. The rim belongs to the disc. A ray parallel to it is a miss, one in
/// its plane included, and so is a negative radius.
/// @param ray the ray.
/// @param centre of the disc.
/// @param normal of any length but zero, which is a miss.
/// @param radius 0 is a disc of one point.
/// @param tNear,tFar the parameters that count.
/// @param[out] t the parameter of the hit, never -0.
/// @return whether there is one.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool
IntersectDisc(tRay<T> const& ray, tVector3<T> const& centre, tVector3<T> const& normal, std::type_identity_t<T> radius,
              std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, T& t) noexcept
{
    T const denominator = normal.Dot(ray.direction);
    bool const crosses = denominator != T{0};
    if (!detail::VECTORISES_TESTS && !crosses)
        return false;
    tVector3<T> const fromCentre = ray.origin - centre;
    T const divisor = crosses ? denominator : T{1};
    T const at = -normal.Dot(fromCentre) / divisor + T{0};
    bool const counts = crosses & detail::Counts<T>(at, tNear, tFar) & (radius >= T{0});
    if (!detail::VECTORISES_TESTS && !counts)
        return false;
    tVector3<T> const way = fromCentre + ray.direction * at;
    if (!(counts & (way.LengthSquared() <= radius * radius)))
        return false;
    t = at;
    return true;
}

/// Narrows [tNear, tFar] to the part of a ray inside a box that may be turned.
///
/// The ray is seen along the axes of the box, from its centre, as (origin - centre).Dot(axis) and direction.Dot(axis),
/// and clipped as tRay::Clip() does: faces are widened by `TOLERANCE`, and what that function says of parallel rays and
/// NaN holds here. A box that is not valid is a miss that changes nothing.
/// @param ray the ray.
/// @param box the box.
/// @param[in,out] tNear,tFar the interval; for a miss, what the axes up to that one made of it.
/// @return whether anything is left of it.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool ClipOrientedBox(tRay<T> const& ray, tOrientedBox<T> const& box, T& tNear,
                                                              T& tFar) noexcept
{
    using Lanes = detail::tThree<T>;
    if (!box.IsValid())
        return false;
    // Along the axes of the box, in registers throughout: what is stored number by number and read as a whole waits.
    Lanes x = detail::LoadThree<T>(box.GetAxis(0));
    Lanes y = detail::LoadThree<T>(box.GetAxis(1));
    Lanes z = detail::LoadThree<T>(box.GetAxis(2));
    detail::Transpose(x, y, z);
    tVector3<T> const way = ray.origin - box.GetCentre();
    Lanes const start = detail::TurnInto(x, y, z, way);
    Lanes const along = detail::TurnInto(x, y, z, ray.direction);
    Lanes const half = detail::FirstAgain(detail::LoadThree<T>(box.GetHalfExtents()));
    tVector3<T> const& halves = box.GetHalfExtents();
    tRay<T> const seen({detail::Get<0>(start), detail::Get<1>(start), detail::Get<2>(start)},
                       {detail::Get<0>(along), detail::Get<1>(along), detail::Get<2>(along)});
    return seen.ClipLanes(along, start, detail::Negated(half), half, tVolumeAABB<T>(-halves, halves), tNear, tFar);
}

/// The ray moved by a matrix, with its parameter kept: the matrix moves the point at t of the ray to the point at t of
/// the result.
///
/// The first three rows apply, each summed x, y, z and, for the origin, translation; the fourth row is ignored, so that
/// nothing is divided, and the direction is not normalised. A matrix in state IDENTITY changes nothing, whatever its
/// elements hold; no other state is looked at.
template <typename T>
[[nodiscard]] inline tRay<T> TransformRay(tRay<T> const& ray, tMatrix4<T> const& matrix) noexcept;

/// The same for a ray with differentials, which are moved like the direction. `tMin`, `tMax` and `payload` stay.
template <typename T>
[[nodiscard]] inline tDepthRay<T, IRayPayloadInternal> TransformRay(tDepthRay<T, IRayPayloadInternal> const& ray,
                                                                    tMatrix4<T> const& matrix) noexcept;

/// Whether a box and a triangle have a point in common. T. Akenine-Moeller, "Fast 3D Triangle-Box Overlap Testing",
/// 2001.
///
/// Thirteen axes may separate the two: the box's own, whose answers are exact, the normal of the triangle, and the
/// products of its edges with the box's axes, relative to the centre of the box. What touches overlaps; where
/// coordinates round, what nearly touches may be decided either way. A triangle without area is its longest edge, or
/// its point. A box that is not valid, unbounded or NaN overlaps nothing.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool OverlapsTriangle(tVolumeAABB<T> const& box, tVector3<T> const& a,
                                                               tVector3<T> const& b, tVector3<T> const& c) noexcept;

/// The barycentric coordinates (1 - u - v, u, v) of a point in the plane of a triangle; of a point off the plane, those
/// of its projection onto it. Outside of the triangle, one of them at least is negative.
///
/// With n = (b - a) x (c - a), u = n . ((p - a) x (c - a)) / n . n and v = n . ((b - a) x (p - a)) / n . n.
/// @param point the point.
/// @param a,b,c the corners of the triangle.
/// @param[out] u the weight of b.
/// @param[out] v the weight of c.
/// @return false, and nothing written, for a triangle whose n . n is 0, not finite or NaN.
template <typename T>
[[nodiscard]] inline bool GetBarycentric(tVector3<T> const& point, tVector3<T> const& a, tVector3<T> const& b,
                                         tVector3<T> const& c, T& u, T& v) noexcept;

/// How the hit of a ray on a triangle moves across the image, by the differentials of the ray, and how its barycentric
/// coordinates change. H. Igehy, "Tracing Ray Differentials", 1999.
///
/// The point moves in the plane of the triangle, by dO + t * dD + dt * D with dt = -n . (dO + t * dD) / n . D, where n
/// = (b - a) x (c - a), O is the origin and D the direction. The differential of anything that is interpolated over the
/// triangle follows from the barycentric coordinates: d.x * (B - A) + d.y * (C - A) for each derivative d.
/// @param ray the ray, with its differentials.
/// @param a,b,c the corners of the triangle.
/// @param t the parameter of the hit; any parameter of the plane will do.
/// @param[out] position derivatives of the point by the two directions of the image.
/// @param[out] barycentric derivatives of (u, v), the weights of b and c.
/// @return false, and nothing written, for a triangle whose n . n is 0, not finite or NaN, and where n . D is 0 or NaN.
template <typename T>
[[nodiscard]] bool GetHitDifferentials(tDepthRay<T, IRayPayloadInternal> const& ray, tVector3<T> const& a,
                                       tVector3<T> const& b, tVector3<T> const& c, std::type_identity_t<T> t,
                                       tDifferential3<T>& position, tDifferential2<T>& barycentric) noexcept;

namespace detail
{

inline namespace BV_REGISTERS
{

/// A corner as a ray sees it, in the first lane.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tTriple<Register<T, 16>> SeenFrom(tWatertightRay<T> const& ray,
                                                                           tVector3<T> const& corner) noexcept
{
    tVector3<T> const& start = ray.GetStart();
    return SeenAlong(AsTriple(ray.GetShear()),
                     {Alone(corner[ray.GetAxis(0)] - start.x), Alone(corner[ray.GetAxis(1)] - start.y),
                      Alone(corner[ray.GetAxis(2)] - start.z)});
}

/// The first three rows of a matrix as columns, and the products with them.
template <typename T>
struct tMotion
{
    tRows<T> columns;

    [[gnu::always_inline]] explicit tMotion(T const* m) noexcept : columns{Transposed(LoadRows(m))} {}

    /// The product with (x, y, z, 1).
    [[nodiscard, gnu::always_inline]] tVector3<T> MovePoint(tVector3<T> const& v) const noexcept
    {
        return FirstThree<T>(Combine(columns.row1, columns.row2, columns.row3, v.x, v.y, v.z) + columns.row4);
    }
    /// The product with (x, y, z, 0).
    [[nodiscard, gnu::always_inline]] tVector3<T> MoveDirection(tVector3<T> const& v) const noexcept
    {
        return FirstThree<T>(Combine(columns.row1, columns.row2, columns.row3, v.x, v.y, v.z));
    }
};

} // namespace BV_REGISTERS

/// Whether a normal is that of a triangle with an area.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool HasArea(T squaredNormal) noexcept
{
    return squaredNormal > T{0} && squaredNormal <= std::numeric_limits<T>::max();
}

} // namespace detail

template <typename T>
inline bool IntersectTriangle(tWatertightRay<T> const& ray, tVector3<T> const& a, tVector3<T> const& b,
                              tVector3<T> const& c, std::type_identity_t<T> tNear, std::type_identity_t<T> tFar,
                              tTriangleHit<T>& hit) noexcept
{
    using V = detail::Register<T, 16>;
    detail::tSeenTriangle<V> const seen{detail::SeenFrom(ray, a), detail::SeenFrom(ray, b), detail::SeenFrom(ray, c)};
    detail::MaskOf<V> isOpen;
    detail::tMeeting<V> const meeting = detail::MeetOffEdges(seen, detail::Alone(tNear), detail::Alone(tFar), isOpen);
    if ((detail::Bits(isOpen) & 1) != 0) [[unlikely]]
    {
        T const corners[9] = {seen.a.x[0], seen.a.y[0], seen.a.z[0], seen.b.x[0], seen.b.y[0],
                              seen.b.z[0], seen.c.x[0], seen.c.y[0], seen.c.z[0]};
        T onEdge[3];
        if (!detail::MeetOnEdge(corners, tNear, tFar, onEdge))
            return false;
        hit = {onEdge[0], onEdge[1], onEdge[2]};
        return true;
    }
    if ((detail::Bits(meeting.hits) & 1) == 0)
        return false;
    hit = {meeting.t[0], meeting.u[0], meeting.v[0]};
    return true;
}

template <typename T>
inline tRay<T> TransformRay(tRay<T> const& ray, tMatrix4<T> const& matrix) noexcept
{
    if (matrix.IsIdentity())
        return ray;
    detail::tMotion<T> const motion(matrix.Get());
    return {motion.MovePoint(ray.origin), motion.MoveDirection(ray.direction)};
}

template <typename T>
inline tDepthRay<T, IRayPayloadInternal> TransformRay(tDepthRay<T, IRayPayloadInternal> const& ray,
                                                      tMatrix4<T> const& matrix) noexcept
{
    tDepthRay<T, IRayPayloadInternal> moved = ray;
    if (matrix.IsIdentity())
        return moved;
    detail::tMotion<T> const motion(matrix.Get());
    moved.origin = motion.MovePoint(ray.origin);
    moved.direction = motion.MoveDirection(ray.direction);
    moved.dOriginDu = motion.MoveDirection(ray.dOriginDu);
    moved.dOriginDv = motion.MoveDirection(ray.dOriginDv);
    moved.dDirectionDu = motion.MoveDirection(ray.dDirectionDu);
    moved.dDirectionDv = motion.MoveDirection(ray.dDirectionDv);
    return moved;
}

template <typename T>
inline bool OverlapsTriangle(tVolumeAABB<T> const& box, tVector3<T> const& a, tVector3<T> const& b,
                             tVector3<T> const& c) noexcept
{
    using Lanes = detail::tThree<T>;
    using Turned = detail::tTurned<Lanes>;
    Lanes const from = detail::LoadFirst(box);
    Lanes const to = detail::LoadLast(box);
    Lanes const one = detail::LoadThree<T>(a);
    Lanes const two = detail::LoadThree<T>(b);
    Lanes const three = detail::LoadThree<T>(c);
    // NaN may pass here: it does not pass the products of the edges.
    auto const isReached = detail::Both(detail::Min(one, detail::Min(two, three)) <= to,
                                        from <= detail::Max(one, detail::Max(two, three)));
    if (!detail::AllThree(detail::Both(isReached, from <= to)))
        return false;

    Lanes const centre = (from + to) * detail::Broadcast<Lanes>(T{0.5});
    Lanes const half = (to - from) * detail::Broadcast<Lanes>(T{0.5});
    Lanes const start = one - centre;
    Lanes const middle = two - centre;
    Lanes const end = three - centre;
    Turned const turnedHalf(half), turnedStart(start), turnedMiddle(middle), turnedEnd(end);
    Turned const first(middle - start), second(end - middle), third(start - end);
    if (!detail::ComeNear(first, turnedStart, turnedEnd, turnedHalf) ||
        !detail::ComeNear(second, turnedMiddle, turnedStart, turnedHalf) ||
        !detail::ComeNear(third, turnedEnd, turnedMiddle, turnedHalf))
        return false;

    Turned const toEnd(end - start);
    Lanes const normal = first.Cross(toEnd);
    T const distance = detail::Magnitude(detail::SumOfThree(normal * start));
    T const reach = detail::SumOfThree(detail::Magnitude(normal) * half);
    if (distance <= reach)
        return true;
    // The normal of a triangle that is nearly its longest edge is what rounding left of larger products. It separates
    // only where it would with any normal that rounds to this one.
    Lanes const magnitudes = detail::Magnitude(first.once * toEnd.twice) + detail::Magnitude(first.twice * toEnd.once);
    T const slack =
        T{8} * std::numeric_limits<T>::epsilon() * detail::SumOfThree(magnitudes * (detail::Magnitude(start) + half));
    return distance <= reach + slack;
}

template <typename T>
inline bool GetBarycentric(tVector3<T> const& point, tVector3<T> const& a, tVector3<T> const& b, tVector3<T> const& c,
                           T& u, T& v) noexcept
{
    tVector3<T> const toB = b - a;
    tVector3<T> const toC = c - a;
    tVector3<T> const toPoint = point - a;
    tVector3<T> const normal = toB.Cross(toC);
    T const squared = normal.LengthSquared();
    if (!detail::HasArea(squared))
        return false;
    T const ofB = normal.Dot(toPoint.Cross(toC));
    T const ofC = normal.Dot(toB.Cross(toPoint));
    u = ofB / squared;
    v = ofC / squared;
    return true;
}

extern template BV_TEMPLATE bool IntersectTriangle(tRay<float> const&, tVector3<float> const&, tVector3<float> const&,
                                                   tVector3<float> const&, float, float, tTriangleHit<float>&) noexcept;
extern template BV_TEMPLATE bool IntersectTriangle(tRay<double> const&, tVector3<double> const&,
                                                   tVector3<double> const&, tVector3<double> const&, double, double,
                                                   tTriangleHit<double>&) noexcept;
extern template BV_TEMPLATE bool IntersectTriangle(tWatertightRay<float> const&, tVector3<float> const&,
                                                   tVector3<float> const&, tVector3<float> const&, float, float,
                                                   tTriangleHit<float>&) noexcept;
extern template BV_TEMPLATE bool IntersectTriangle(tWatertightRay<double> const&, tVector3<double> const&,
                                                   tVector3<double> const&, tVector3<double> const&, double, double,
                                                   tTriangleHit<double>&) noexcept;
extern template BV_TEMPLATE bool IntersectPlane(tRay<float> const&, tPlane<float> const&, float, float,
                                                float&) noexcept;
extern template BV_TEMPLATE bool IntersectPlane(tRay<double> const&, tPlane<double> const&, double, double,
                                                double&) noexcept;
extern template BV_TEMPLATE bool IntersectDisc(tRay<float> const&, tVector3<float> const&, tVector3<float> const&,
                                               float, float, float, float&) noexcept;
extern template BV_TEMPLATE bool IntersectDisc(tRay<double> const&, tVector3<double> const&, tVector3<double> const&,
                                               double, double, double, double&) noexcept;
extern template BV_TEMPLATE bool ClipOrientedBox(tRay<float> const&, tOrientedBox<float> const&, float&,
                                                 float&) noexcept;
extern template BV_TEMPLATE bool ClipOrientedBox(tRay<double> const&, tOrientedBox<double> const&, double&,
                                                 double&) noexcept;
extern template BV_TEMPLATE tRay<float> TransformRay(tRay<float> const&, tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE tRay<double> TransformRay(tRay<double> const&, tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE tDepthRay<float, IRayPayloadInternal>
TransformRay(tDepthRay<float, IRayPayloadInternal> const&, tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE tDepthRay<double, IRayPayloadInternal>
TransformRay(tDepthRay<double, IRayPayloadInternal> const&, tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE bool OverlapsTriangle(tVolumeAABB<float> const&, tVector3<float> const&,
                                                  tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE bool OverlapsTriangle(tVolumeAABB<double> const&, tVector3<double> const&,
                                                  tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE bool GetBarycentric(tVector3<float> const&, tVector3<float> const&, tVector3<float> const&,
                                                tVector3<float> const&, float&, float&) noexcept;
extern template BV_TEMPLATE bool GetBarycentric(tVector3<double> const&, tVector3<double> const&,
                                                tVector3<double> const&, tVector3<double> const&, double&,
                                                double&) noexcept;
extern template BV_TEMPLATE bool GetHitDifferentials(tDepthRay<float, IRayPayloadInternal> const&,
                                                     tVector3<float> const&, tVector3<float> const&,
                                                     tVector3<float> const&, float, tDifferential3<float>&,
                                                     tDifferential2<float>&) noexcept;
extern template BV_TEMPLATE bool GetHitDifferentials(tDepthRay<double, IRayPayloadInternal> const&,
                                                     tVector3<double> const&, tVector3<double> const&,
                                                     tVector3<double> const&, double, tDifferential3<double>&,
                                                     tDifferential2<double>&) noexcept;

static_assert(std::is_trivially_copyable_v<tTriangleHit<float>> && sizeof(tTriangleHit<float>) == 3 * sizeof(float));
static_assert(std::is_trivially_copyable_v<tTriangleHit<double>> && sizeof(tTriangleHit<double>) == 3 * sizeof(double));

} // namespace bv::maths
