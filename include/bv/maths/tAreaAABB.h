#pragma once

/// @file
/// An axis-aligned box in the plane.

#include <iosfwd>
#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/Interval.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/tVector2.h"

namespace bv::maths
{

/// Axis-aligned rectangle in the plane, kept as its lower and upper corners: four numbers, min.x, min.y, max.x, max.y.
///
/// The empty box has both components of its lower corner at +infinity and both components of its upper corner at
/// -infinity, so that growing it by a point or a box needs no special case. No operation checks anything but an
/// axis: GetLength() throws for a wrong one, Split() then does nothing. On an empty, inverted or NaN box, each
/// operation gives what its formula gives. Comparisons are ordered: a NaN fails them.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tAreaAABB
{
    tVector2<T> min; ///< lower corner
    tVector2<T> max; ///< upper corner

public:
    /// @name Axes
    /// @{
    static constexpr unsigned char AXIS_X = 0; ///< index of the x axis
    static constexpr unsigned char AXIS_Y = 1; ///< index of the y axis
    /// @}

    /// @name Construction
    /// @{
    /// The empty box.
    constexpr tAreaAABB() noexcept;
    /// The box with these corners, taken as they are: neither ordered nor checked.
    constexpr tAreaAABB(tVector2<T> const& lower, tVector2<T> const& upper) noexcept : min{lower}, max{upper} {}
    /// The box from the origin to a point, which is taken as it is: neither ordered nor checked.
    constexpr tAreaAABB(tVector2<T> const& upper) noexcept : min{}, max{upper} {}
    /// Converts from the other precision, number by number, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tAreaAABB(tAreaAABB<U> const& other) noexcept : min{other.GetMin()}, max{other.GetMax()}
    {
    }
    /// @copydoc tAreaAABB(tAreaAABB<U> const&)
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tAreaAABB& operator=(tAreaAABB<U> const& other) noexcept
    {
        return *this = tAreaAABB(other);
    }
    /// @}

    /// @name Access
    /// @{
    /// The lower corner.
    [[nodiscard]] constexpr tVector2<T> const& GetMin() const noexcept { return min; }
    /// @copydoc GetMin() const
    [[nodiscard]] constexpr tVector2<T>& GetMin() noexcept { return min; }
    /// The upper corner.
    [[nodiscard]] constexpr tVector2<T> const& GetMax() const noexcept { return max; }
    /// @copydoc GetMax() const
    [[nodiscard]] constexpr tVector2<T>& GetMax() noexcept { return max; }
    /// Overwrites the lower corner; nothing is checked.
    constexpr void SetMin(tVector2<T> const& lower) noexcept { min = lower; }
    /// Overwrites the upper corner; nothing is checked.
    constexpr void SetMax(tVector2<T> const& upper) noexcept { max = upper; }
    /// @}

    /// @name Queries
    /// @{
    /// Whether no component of the upper corner is below that of the lower corner. A box of a single point is valid;
    /// the empty box, and any box with a NaN, is not.
    [[nodiscard]] constexpr bool IsValid() const noexcept;
    /// Whether a point lies inside. The lower edges belong to the box. The upper edges belong to it unless they are
    /// excluded; with them excluded, boxes that tile the plane never both claim a point on a shared edge.
    ///
    /// An empty box contains nothing, and a point with a NaN is nowhere inside.
    [[nodiscard]] constexpr bool Contains(tVector2<T> const& point, bool exclusiveMax) const noexcept;
    /// Squared distance from a point to the box, 0 inside. Summed x, y; on each axis the lower edge is looked at first,
    /// and the upper edge only for a point that is not below the lower one. A component that is NaN adds nothing; the
    /// empty box is at +infinity. The squares overflow and underflow as they are.
    [[nodiscard]] constexpr T DistanceSquared(tVector2<T> const& point) const noexcept;
    /// Distance from a point to the box, 0 inside: the square root of DistanceSquared(), also where that overflows to
    /// +infinity or underflows to 0.
    [[nodiscard]] T Distance(tVector2<T> const& point) const noexcept
    {
        return detail::SquareRoot(DistanceSquared(point));
    }
    /// Area: the product of the two extents, never clamped: +infinity for the empty box.
    [[nodiscard]] constexpr T GetArea() const noexcept { return (max.y - min.y) * (max.x - min.x); }
    /// The point in the middle; NaN in both components for the empty box.
    [[nodiscard]] constexpr tVector2<T> GetCentre() const noexcept { return (max + min) * T{0.5}; }
    /// The way from the lower to the upper corner: the two extents.
    [[nodiscard]] constexpr tVector2<T> GetDiagonal() const noexcept { return max - min; }
    /// Length of the edges along an axis.
    ///
    /// @param axis 0 = x, 1 = y.
    /// @return the extent along that axis, never clamped: -infinity for the empty box.
    /// @throws bv::InvalidArgumentException for any other axis.
    [[nodiscard]] constexpr T GetLength(unsigned char axis) const;
    /// Whether a disc and the box have more than a touch in common: whether the squared distance from the centre to the
    /// box is below the squared radius. A disc whose centre lies inside always overlaps, even one of radius 0 or of
    /// negative squared radius, since nothing is compared where no axis lies between the two. A NaN rejects nothing,
    /// neither as a component of the centre nor as the squared radius.
    ///
    /// The caller includes `bv/maths/tAreaDisc.h`. Arvo, "A Simple Method for Box-Sphere Intersection Testing",
    /// Graphics Gems, 1990.
    [[nodiscard]] constexpr bool Overlaps(tAreaDisc<T> const& disc) const noexcept;
    /// Halves the box across an axis. The halves share the line in the middle, (max + min) * 0.5; on the other axis
    /// both keep the full extent.
    ///
    /// @param axis 0 = x, 1 = y; with any other axis, nothing is written.
    /// @param lower receives the half on the low side; may be this box.
    /// @param upper receives the half on the high side; may be this box.
    constexpr void Split(unsigned char axis, tAreaAABB& lower, tAreaAABB& upper) const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Makes the box empty.
    constexpr void Reset() noexcept { *this = tAreaAABB(); }
    /// Grows to hold another box, too. An empty box adds nothing; a NaN moves nothing.
    constexpr void Expand(tAreaAABB const& box) noexcept { ExpandAndSignal(box); }
    /// Grows to hold a point, too. A NaN moves nothing. Grown by its first point, the empty box becomes that point.
    constexpr void Expand(tVector2<T> const& point) noexcept { ExpandAndSignal(point); }
    /// Scales about the centre: each half-extent grows by this fraction of itself, so that 1 doubles the box, -0.5
    /// halves it and 0 leaves it alone if its centre is finite. An infinite end becomes NaN whatever the factor, and so
    /// does every end of the empty box. A relative growth; Offset() is the absolute one.
    constexpr void Expand(T factor) noexcept;
    /// Grows to hold another box, too.
    /// @return whether any of the four numbers changed; a number equal to the present one is no change.
    constexpr bool ExpandAndSignal(tAreaAABB const& box) noexcept;
    /// Grows to hold a point, too.
    /// @return whether any of the four numbers changed; a number equal to the present one is no change.
    constexpr bool ExpandAndSignal(tVector2<T> const& point) noexcept;
    /// Moves every edge outward by a distance, or inward by a negative one, which inverts the box when it is more than
    /// half an extent; nothing is checked.
    constexpr void Offset(T distance) noexcept;
    /// @}

    /// @name Operators
    /// @{
    /// Equality number by number, with the tolerance of IsEqual(); the lower corner first.
    [[nodiscard]] constexpr bool operator==(tAreaAABB const& other) const noexcept;
    /// The exact negation of equality.
    [[nodiscard]] constexpr bool operator!=(tAreaAABB const& other) const noexcept { return !(*this == other); }
    /// @}

    /// @name Streams
    /// @{
    /// Writes the lower, then the upper corner as four raw native numbers, with nothing before, between or after them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote; nothing is checked. A stream that ends early leaves the remaining numbers as its
    /// `read` leaves them.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}

private:
    // Where failures say that they were raised; see Place.
    static constexpr detail::Place GET_LENGTH{"GetLength", 205};

    [[noreturn, gnu::cold]] static void ThrowWrongAxis(detail::Place const& place);
};

template <typename T>
constexpr tAreaAABB<T>::tAreaAABB() noexcept
    : min{std::numeric_limits<T>::infinity(), std::numeric_limits<T>::infinity()}, max{-min.x, -min.y}
{
}

template <typename T>
constexpr bool tAreaAABB<T>::IsValid() const noexcept
{
    return max.x >= min.x && max.y >= min.y;
}

template <typename T>
constexpr bool tAreaAABB<T>::Contains(tVector2<T> const& point, bool exclusiveMax) const noexcept
{
    if (!(point.x >= min.x))
        return false;
    if (exclusiveMax)
        return max.x > point.x && point.y >= min.y && max.y > point.y;
    return max.x >= point.x && point.y >= min.y && max.y >= point.y;
}

template <typename T>
constexpr T tAreaAABB<T>::DistanceSquared(tVector2<T> const& point) const noexcept
{
    T const x = detail::Gap(min.x, max.x, point.x);
    T const y = detail::Gap(min.y, max.y, point.y);
    return x * x + y * y; // an axis without a gap adds a zero, which changes no sum
}

template <typename T>
constexpr T tAreaAABB<T>::GetLength(unsigned char axis) const
{
    switch (axis)
    {
    case AXIS_X:
        return max.x - min.x;
    case AXIS_Y:
        return max.y - min.y;
    default:
        ThrowWrongAxis(GET_LENGTH);
    }
}

template <typename T>
constexpr bool tAreaAABB<T>::Overlaps(tAreaDisc<T> const& disc) const noexcept
{
    tVector2<T> const& centre = disc.GetCentre();
    T const limit = disc.GetRadiusSquared();
    T sum = 0;
    return !detail::AddingReaches(sum, detail::Gap(min.x, max.x, centre.x), limit) &&
           !detail::AddingReaches(sum, detail::Gap(min.y, max.y, centre.y), limit);
}

template <typename T>
constexpr void tAreaAABB<T>::Split(unsigned char axis, tAreaAABB& lower, tAreaAABB& upper) const noexcept
{
    if (axis > AXIS_Y)
        return;
    T const middle = (max[axis] + min[axis]) * T{0.5};
    lower = upper = tAreaAABB(*this); // from a copy: either output may be this box
    lower.max[axis] = middle;
    upper.min[axis] = middle;
}

template <typename T>
constexpr void tAreaAABB<T>::Expand(T factor) noexcept
{
    tVector2<T> const centre = GetCentre();
    max += (max - centre) * factor;
    min += (min - centre) * factor;
}

template <typename T>
constexpr bool tAreaAABB<T>::ExpandAndSignal(tAreaAABB const& box) noexcept
{
    bool changed = detail::LowerTo(min.x, box.min.x);
    changed |= detail::RaiseTo(max.x, box.max.x);
    changed |= detail::LowerTo(min.y, box.min.y);
    changed |= detail::RaiseTo(max.y, box.max.y);
    return changed;
}

template <typename T>
constexpr bool tAreaAABB<T>::ExpandAndSignal(tVector2<T> const& point) noexcept
{
    bool changed = detail::LowerTo(min.x, point.x);
    changed |= detail::RaiseTo(max.x, point.x);
    changed |= detail::LowerTo(min.y, point.y);
    changed |= detail::RaiseTo(max.y, point.y);
    return changed;
}

template <typename T>
constexpr void tAreaAABB<T>::Offset(T distance) noexcept
{
    tVector2<T> const outward{distance, distance};
    min -= outward;
    max += outward;
}

template <typename T>
constexpr bool tAreaAABB<T>::operator==(tAreaAABB const& other) const noexcept
{
    return min == other.min && max == other.max;
}

extern template class BV_TEMPLATE tAreaAABB<float>;
extern template class BV_TEMPLATE tAreaAABB<double>;
extern template BV_TEMPLATE tAreaAABB<float>::tAreaAABB(tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<float>& tAreaAABB<float>::operator=(tAreaAABB<double> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<double>::tAreaAABB(tAreaAABB<float> const&) noexcept;
extern template BV_TEMPLATE tAreaAABB<double>& tAreaAABB<double>::operator=(tAreaAABB<float> const&) noexcept;

// Arrays of boxes are dense and are copied as blocks.
static_assert(sizeof(tAreaAABB<float>) == 4 * sizeof(float) && sizeof(tAreaAABB<double>) == 4 * sizeof(double));
static_assert(std::is_standard_layout_v<tAreaAABB<float>> && std::is_standard_layout_v<tAreaAABB<double>>);
static_assert(std::is_trivially_copyable_v<tAreaAABB<float>> && std::is_trivially_copyable_v<tAreaAABB<double>>);

} // namespace bv::maths
