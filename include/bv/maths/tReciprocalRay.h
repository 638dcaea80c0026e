#pragma once

/// @file
/// A ray made ready for many boxes, none of which it misses by rounding.

#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

/// A ray with the reciprocals of its direction, for the way through a hierarchy of boxes: no division a box, and no box
/// is missed that the ray meets. T. Ize, "Robust BVH Ray Traversal", 2013.
///
/// tRay::Clip() widens boxes by a fixed tolerance, which is a choice of scale, and divides for each box. Here the
/// parameters are widened by what rounding can have taken from them, four machine epsilons of their value, and nothing
/// else is.
///
/// The object has no pointer in it: it can be copied as bytes.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tReciprocalRay
{
    tVector3<T> origin;     ///< start point
    tVector3<T> reciprocal; ///< of each component of the direction

public:
    /// @name Construction
    /// @{
    /// The ray of zeros: it meets the boxes that hold the point (0, 0, 0).
    constexpr tReciprocalRay() noexcept : tReciprocalRay(tRay<T>()) {}
    /// What a ray is now; it is not needed any more. A component of the direction whose reciprocal overflows, zeros of
    /// either sign among them, counts as parallel to the faces; its reciprocal is +infinity.
    constexpr explicit tReciprocalRay(tRay<T> const& ray) noexcept
        : origin{ray.origin}, reciprocal{Invert(ray.direction.x), Invert(ray.direction.y), Invert(ray.direction.z)}
    {
    }
    /// @}

    /// @name Access
    /// @{
    /// The ray's origin.
    [[nodiscard]] constexpr tVector3<T> const& GetOrigin() const noexcept { return origin; }
    /// The reciprocals of the direction's components.
    [[nodiscard]] constexpr tVector3<T> const& GetReciprocal() const noexcept { return reciprocal; }
    /// @}

    /// @name Queries
    /// @{
    /// Narrows [tNear, tFar] to the part of the ray inside a box, or a little more.
    ///
    /// The caller sets both ends first, tNear to 0 or more. Whatever the rounding, a point of the ray in the box whose
    /// parameter lies in the interval is not missed, and stays in what is left of it: an entry is lowered and an exit
    /// raised by four machine epsilons of its value, which is more than a subtraction, a reciprocal and a product can
    /// have taken. That holds as long as neither they nor the reciprocals overflow or fall below the smallest normal
    /// number. Below 0, entries are not lowered but raised: for a negative tNear the promise does not hold.
    ///
    /// A box that lies wholly behind the origin is missed. A ray along a face of the box meets it, and so does a ray
    /// that touches an edge or a corner. A face at NaN narrows nothing; an end of the interval that is NaN stays so and
    /// misses.
    /// @param box what to clip against; valid, since of two faces either may be met first: a ray that crosses all three
    ///        slabs keeps its interval in the empty box.
    /// @param[in,out] tNear lower end of the interval.
    /// @param[in,out] tFar upper end of the interval. Both hold what the three slabs make of them, also for a miss.
    /// @return whether anything is left ahead of the origin.
    [[nodiscard, gnu::always_inline]] inline bool Clip(tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept;
    /// @}

private:
    [[nodiscard, gnu::always_inline]] static constexpr T Invert(T x) noexcept
    {
        constexpr T INFINITE = std::numeric_limits<T>::infinity();
        if (x == T{0})
            return INFINITE;
        T const inverse = T{1} / x;
        return inverse == -INFINITE ? INFINITE : inverse;
    }
};

template <typename T>
inline bool tReciprocalRay<T>::Clip(tVolumeAABB<T> const& box, T& tNear, T& tFar) const noexcept
{
    using Lanes = detail::tThree<T>;
    constexpr T MARGIN = T{4} * std::numeric_limits<T>::epsilon();
    Lanes const start = detail::LoadThree<T>(*this);
    Lanes const factor = detail::LoadThree<T, 3 * sizeof(T)>(*this);
    Lanes const t1 = (detail::LoadFirst(box) - start) * factor;
    Lanes const t2 = (detail::LoadLast(box) - start) * factor;
    // A ray on a face that it runs along has NaN there, and the other face at an infinity that lies on its own side,
    // since the reciprocal is positive. These orders of operands hand on the NaN, which narrows nothing.
    Lanes const entries = detail::Min(t2, t1) * detail::Broadcast<Lanes>(T{1} - MARGIN);
    Lanes const exits = detail::Max(t1, t2) * detail::Broadcast<Lanes>(T{1} + MARGIN);
    T lo = tNear;
    T hi = tFar;
    detail::Narrow<T>(entries, exits, lo, hi);
    tNear = lo;
    tFar = hi;
    return (lo <= hi) & (hi >= T{0});
}

extern template class BV_TEMPLATE tReciprocalRay<float>;
extern template class BV_TEMPLATE tReciprocalRay<double>;

static_assert(sizeof(tReciprocalRay<float>) == 6 * sizeof(float));
static_assert(sizeof(tReciprocalRay<double>) == 6 * sizeof(double));
static_assert(std::is_trivially_copyable_v<tReciprocalRay<float>>);
static_assert(std::is_trivially_copyable_v<tReciprocalRay<double>>);

} // namespace bv::maths
