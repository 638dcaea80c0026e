#pragma once

/// @file
/// A half-line.

#include <cstddef>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

namespace bv::maths
{

template <typename T>
[[nodiscard, gnu::always_inline]] inline bool ClipOrientedBox(tRay<T> const& ray, tOrientedBox<T> const& box, T& tNear,
                                                              T& tFar) noexcept;

/// Half-line from an origin along a direction. The parameter t names the point origin + t * direction.
///
/// Nothing is checked and nothing throws: degenerate input gives the infinities and NaN of IEEE arithmetic.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tRay
{
public:
    tVector3<T> origin;    ///< start point
    tVector3<T> direction; ///< direction; of unit length for spheres, of any length for boxes

    /// @name Construction
    /// @{
    /// Zero in every component.
    constexpr tRay() noexcept : origin{}, direction{} {}
    /// The ray from a point along a direction, which is taken as it is.
    constexpr tRay(tVector3<T> const& start, tVector3<T> const& along) noexcept : origin{start}, direction{along} {}
    /// @}

    /// @name Queries
    /// @{
    /// Clips the ray's line against a sphere.
    ///
    /// The direction must be of unit length; it is neither checked nor normalised, and a direction of another length
    /// gives wrong parameters. A NaN anywhere in the ray or the sphere is a miss. Haines, "Essential Ray Tracing
    /// Algorithms", 1989.
    /// @param sphere what to clip against.
    /// @param[out] tNear parameter where the line enters the sphere: negative when the origin is inside or beyond.
    /// @param[out] tFar parameter where the line leaves the sphere: negative when the sphere lies behind the origin.
    /// @return whether the line meets the sphere. If it does not, neither parameter is written.
    [[nodiscard]] inline bool Clip(tVolumeSphere<T> const& sphere, T& tNear, T& tFar) const noexcept;
    /// Narrows [tNear, tFar] to the part of the ray inside a box, axis by axis, x first, and stops at the first axis
    /// that misses.
    ///
    /// The caller sets both ends first, say to 0 and the farthest distance of interest. The slab between two faces is
    /// widened by `TOLERANCE` on both sides. A slab wholly behind the origin is a miss. Along an axis whose component
    /// of the direction is not larger than `TOLERANCE`, the ray counts as parallel to the faces: it misses unless the
    /// origin lies between them or on one, without a tolerance, and narrows nothing. The direction may have any length.
    /// A slab parameter that is NaN does not count as ahead of the origin and narrows nothing; an end of the interval
    /// that is NaN stays so and misses on the first axis that the ray crosses. Kay, Kajiya, "Ray Tracing Complex
    /// Scenes", 1986.
    /// @param box what to clip against; valid, since of two faces either may be met first: a ray that crosses all three
    ///        slabs keeps its interval in the empty box.
    /// @param[in,out] tNear lower end of the interval.
    /// @param[in,out] tFar upper end of the interval.
    /// @return false when nothing is left; tNear and tFar then hold what the axes up to that one made of them.
    [[nodiscard, gnu::always_inline]] inline bool Clip(tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept;
    /// Position of the ray's direction on the screen of a view whose eye is taken to be the ray's origin: x from 0 at
    /// the left edge to 1 at the right one, y from 0 at the bottom edge to 1 at the top one. tFrustum::IntersectNear()
    /// counts y from the top.
    ///
    /// Directions outside the view give values outside of 0 to 1. The direction of the bottom left edge gives exactly
    /// (0, 0) when it is exactly the one that the view has; a direction along the near plane gives infinities or NaN.
    [[nodiscard]] tVector2<T> IntersectScreen(tFrustum<T> const& frustum) const noexcept;
    /// @}

protected:
    /// The chord that a sphere cuts out of the ray's line.
    ///
    /// @param sphere the sphere.
    /// @param[out] fromCentre the way from the sphere's centre to the ray's origin.
    /// @param[out] b the direction's scalar product with that way: the middle of the chord lies at parameter -b.
    /// @param[out] s half the length of the chord.
    /// @return whether there is one. If not, s is not written.
    [[nodiscard]] inline bool FindChord(tVolumeSphere<T> const& sphere, tVector3<T>& fromCentre, T& b,
                                        T& s) const noexcept;

private:
    template <typename U>
    friend bool ClipOrientedBox(tRay<U> const& ray, tOrientedBox<U> const& box, U& tNear, U& tFar) noexcept;

    /// Clip() for numbers of this ray and of the box that are in registers, an axis in each lane. The lane that counts
    /// for nothing is one of x.
    [[nodiscard, gnu::always_inline]] inline bool
    ClipLanes(detail::tThree<T> const& along, detail::tThree<T> const& start, detail::tThree<T> const& lower,
              detail::tThree<T> const& upper, tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept;
    /// Narrows [tNear, tFar] axis by axis, as Clip() describes it.
    [[nodiscard, gnu::always_inline]] inline bool ClipSides(tVolumeAABB<T> const& box, T& tNear,
                                                            T& tFar) const noexcept;
    /// Narrows [tNear, tFar] by the slab of a box on one axis: 0 = x, 1 = y, 2 = z.
    ///
    /// @return whether anything is left. A slab that lies behind the origin, or that a parallel ray misses, leaves the
    ///         interval as it is.
    [[nodiscard, gnu::always_inline]] inline bool ClipSide(tVolumeAABB<T> const& box, T& tNear, T& tFar,
                                                           unsigned char axis) const noexcept;
};

template <typename T>
inline bool tRay<T>::Clip(tVolumeSphere<T> const& sphere, T& tNear, T& tFar) const noexcept
{
    tVector3<T> fromCentre;
    T b, s;
    if (!FindChord(sphere, fromCentre, b, s))
        return false;
    tNear = -b - s;
    tFar = s - b;
    return true;
}

template <typename T>
inline bool tRay<T>::Clip(tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept
{
    return ClipLanes(detail::LoadFresh(direction), detail::LoadFresh(origin), detail::LoadFirst<3>(box),
                     detail::LoadLast<0>(box), box, tNear, tFar);
}

template <typename T>
inline bool tRay<T>::ClipLanes(detail::tThree<T> const& along, detail::tThree<T> const& start,
                               detail::tThree<T> const& lower, detail::tThree<T> const& upper,
                               tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept
{
    using Lanes = detail::tThree<T>;
    Lanes const margin = detail::Broadcast<Lanes>(TOLERANCE<T>);
    Lanes const one = detail::Broadcast<Lanes>(T{1});
    auto const crosses = margin < detail::Magnitude(along);
    // Of no axis in particular, so that a loop can keep them; and no division by zero.
    Lanes const reciprocal = one / detail::OrWhereNot(crosses, along, one);
    Lanes const t1 = (lower - start - margin) * reciprocal;
    Lanes const t2 = (upper - start + margin) * reciprocal;
    if (detail::AllThree(crosses))
    {
        // The interval only shrinks, so its last state tells of all three axes. A slab that lies behind leaves it below
        // 0, unless a parameter is NaN.
        T lo = tNear;
        T hi = tFar;
        detail::Narrow<T>(detail::Min(t2, t1), detail::Max(t1, t2), lo, hi);
        bool const hit = (lo <= hi) & (hi >= T{0});
        if (!hit || detail::All(t2 == t2))
        {
            if (!hit) // what a miss leaves is rarely read, and then not computed
                static_cast<void>(ClipSides(box, lo = tNear, hi = tFar));
            tNear = lo;
            tFar = hi;
            return hit;
        }
    }
    return ClipSides(box, tNear, tFar);
}

template <typename T>
inline bool tRay<T>::ClipSides(tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept
{
    T lo = tNear; // copies: the caller's two may lie in the ray or the box
    T hi = tFar;
    bool const hit = ClipSide(box, lo, hi, tVolumeAABB<T>::AXIS_X) && ClipSide(box, lo, hi, tVolumeAABB<T>::AXIS_Y) &&
                     ClipSide(box, lo, hi, tVolumeAABB<T>::AXIS_Z);
    tNear = lo;
    tFar = hi;
    return hit;
}

template <typename T>
inline bool tRay<T>::FindChord(tVolumeSphere<T> const& sphere, tVector3<T>& fromCentre, T& b, T& s) const noexcept
{
    fromCentre = origin - sphere.GetCentre();
    b = direction.Dot(fromCentre);
    T const discriminant = (b * b + sphere.GetRadiusSquared()) - fromCentre.LengthSquared();
    if (!(discriminant >= T{0})) // NaN is a miss, too
        return false;
    s = detail::SquareRoot(discriminant);
    return true;
}

template <typename T>
inline bool tRay<T>::ClipSide(tVolumeAABB<T> const& box, T& tNear, T& tFar, unsigned char axis) const noexcept
{
    constexpr T MARGIN = TOLERANCE<T>;
    T const lower = box.GetMin()[axis];
    T const upper = box.GetMax()[axis];
    T const start = origin[axis];
    T const along = direction[axis];
    if (!(detail::Magnitude(along) > MARGIN))
        return lower <= start && start <= upper;

    T const reciprocal = T{1} / along;
    T const t1 = (lower - start - MARGIN) * reciprocal;
    T const t2 = (upper - start + MARGIN) * reciprocal;
    if (!(t1 >= T{0}) && !(t2 >= T{0})) // behind the origin; a NaN does not count as ahead
        return false;
    bool const reversed = t1 > t2;
    T const lo = reversed ? t2 : t1;
    T const hi = reversed ? t1 : t2;
    tNear = lo > tNear ? lo : tNear;
    tFar = tFar > hi ? hi : tFar;
    return tNear <= tFar && tFar >= T{0};
}

extern template class BV_TEMPLATE tRay<float>;
extern template class BV_TEMPLATE tRay<double>;

static_assert(sizeof(tRay<float>) == 6 * sizeof(float) && sizeof(tRay<double>) == 6 * sizeof(double));
static_assert(offsetof(tRay<float>, origin) == 0 && offsetof(tRay<double>, origin) == 0);
static_assert(offsetof(tRay<float>, direction) == 3 * sizeof(float));
static_assert(offsetof(tRay<double>, direction) == 3 * sizeof(double));
static_assert(std::is_trivially_copyable_v<tRay<float>> && std::is_trivially_copyable_v<tRay<double>>);

} // namespace bv::maths
