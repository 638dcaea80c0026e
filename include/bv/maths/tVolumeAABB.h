#pragma once

/// @file
/// An axis-aligned box in space.

#include <iosfwd>
#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/detail/Interval.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// Axis-aligned box in space, kept as its lower and upper corners: six numbers, min.x to min.z, then max.x to max.z.
///
/// The empty box has every component of its lower corner at +infinity and every component of its upper corner at
/// -infinity, so that growing it by a point or a box needs no special case. No operation checks anything but an axis:
/// GetArea() and GetLength() throw for a wrong one, Split() then does nothing. On an empty, inverted or NaN box, each
/// operation gives what its formula gives. Comparisons are ordered: a NaN fails them.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tVolumeAABB
{
    tVector3<T> min; ///< lower corner
    tVector3<T> max; ///< upper corner

public:
    /// @name Axes
    /// @{
    static constexpr unsigned char AXIS_X = 0; ///< index of the x axis
    static constexpr unsigned char AXIS_Y = 1; ///< index of the y axis
    static constexpr unsigned char AXIS_Z = 2; ///< index of the z axis
    /// @}

    /// @name Construction
    /// @{
    /// The empty box.
    constexpr tVolumeAABB() noexcept;
    /// The box with these corners, taken as they are: neither ordered nor checked.
    constexpr tVolumeAABB(tVector3<T> const& lower, tVector3<T> const& upper) noexcept : min{lower}, max{upper} {}
    /// The box from the origin to a point, which is taken as it is: neither ordered nor checked.
    constexpr tVolumeAABB(tVector3<T> const& upper) noexcept : min{}, max{upper} {}
    /// Converts from the other precision, number by number, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tVolumeAABB(tVolumeAABB<U> const& other) noexcept : min{other.GetMin()}, max{other.GetMax()}
    {
    }
    /// @copydoc tVolumeAABB(tVolumeAABB<U> const&)
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tVolumeAABB& operator=(tVolumeAABB<U> const& other) noexcept
    {
        return *this = tVolumeAABB(other);
    }
    /// @}

    /// @name Access
    /// @{
    /// The lower corner.
    [[nodiscard]] constexpr tVector3<T> const& GetMin() const noexcept { return min; }
    /// @copydoc GetMin() const
    [[nodiscard]] constexpr tVector3<T>& GetMin() noexcept { return min; }
    /// The upper corner.
    [[nodiscard]] constexpr tVector3<T> const& GetMax() const noexcept { return max; }
    /// @copydoc GetMax() const
    [[nodiscard]] constexpr tVector3<T>& GetMax() noexcept { return max; }
    /// Overwrites the lower corner; nothing is checked.
    constexpr void SetMin(tVector3<T> const& lower) noexcept { min = lower; }
    /// Overwrites the upper corner; nothing is checked.
    constexpr void SetMax(tVector3<T> const& upper) noexcept { max = upper; }
    /// @}

    /// @name Queries
    /// @{
    /// Whether no component of the upper corner is below that of the lower corner. A box of a single point is valid;
    /// the empty box, and any box with a NaN, is not.
    [[nodiscard]] constexpr bool IsValid() const noexcept;
    /// Whether a point lies inside. The lower faces belong to the box. The upper faces belong to it unless they are
    /// excluded; with them excluded, boxes that tile space never both claim a point on a shared face.
    ///
    /// An empty box contains nothing, and a point with a NaN is nowhere inside.
    [[nodiscard]] constexpr bool Contains(tVector3<T> const& point, bool exclusiveMax) const noexcept;
    /// Squared distance from a point to the box, 0 inside. Summed x, y, z; on each axis the lower face is looked at
    /// first, and the upper face only for a point that is not below the lower one. A component that is NaN adds
    /// nothing; the empty box is at +infinity. The squares overflow and underflow as they are.
    [[nodiscard, gnu::always_inline]] constexpr T DistanceSquared(tVector3<T> const& point) const noexcept;
    /// Distance from a point to the box, 0 inside: the square root of DistanceSquared(), also where that overflows to
    /// +infinity or underflows to 0.
    [[nodiscard]] T Distance(tVector3<T> const& point) const noexcept
    {
        return detail::SquareRoot(DistanceSquared(point));
    }
    /// Volume: the product of the three extents, (x * y) * z, never clamped: -infinity for the empty box.
    [[nodiscard]] constexpr T GetVolume() const noexcept;
    /// Area of the face perpendicular to an axis.
    ///
    /// @param axis 0 = x, 1 = y, 2 = z.
    /// @return the product of the two other extents in the order of their axes, never clamped: +infinity for the empty
    ///         box.
    /// @throws bv::InvalidArgumentException for any other axis.
    [[nodiscard]] constexpr T GetArea(unsigned char axis) const;
    /// The point in the middle; NaN in every component for the empty box.
    [[nodiscard]] constexpr tVector3<T> GetCentre() const noexcept { return (max + min) * T{0.5}; }
    /// The way from the lower to the upper corner: the three extents.
    [[nodiscard]] constexpr tVector3<T> GetDiagonal() const noexcept { return max - min; }
    /// Length of the edges along an axis.
    ///
    /// @param axis 0 = x, 1 = y, 2 = z.
    /// @return the extent along that axis, never clamped: -infinity for the empty box.
    /// @throws bv::InvalidArgumentException for any other axis.
    [[nodiscard]] constexpr T GetLength(unsigned char axis) const;
    /// Whether a sphere and the box have more than a touch in common: whether the squared distance from the centre to
    /// the box is below the squared radius. A sphere whose centre lies inside always overlaps, even one of radius 0 or
    /// of negative squared radius, since nothing is compared where no axis lies between the two. A NaN rejects nothing,
    /// neither as a component of the centre nor as the squared radius.
    ///
    /// The caller includes `bv/maths/tVolumeSphere.h`. Arvo, "A Simple Method for Box-Sphere Intersection Testing",
    /// Graphics Gems, 1990.
    [[nodiscard, gnu::always_inline]] constexpr bool Overlaps(tVolumeSphere<T> const& sphere) const noexcept;
    /// Halves the box across an axis. The halves share the plane in the middle, (min + max) * 0.5; on the other axes
    /// both keep the full extent.
    ///
    /// @param axis 0 = x, 1 = y, 2 = z; with any other axis, nothing is written.
    /// @param lower receives the half on the low side; may be this box.
    /// @param upper receives the half on the high side; may be this box.
    constexpr void Split(unsigned char axis, tVolumeAABB& lower, tVolumeAABB& upper) const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Makes the box empty.
    constexpr void Reset() noexcept { *this = tVolumeAABB(); }
    /// Grows to hold another box, too. An empty box adds nothing; a NaN moves nothing.
    constexpr void Expand(tVolumeAABB const& box) noexcept { ExpandAndSignal(box); }
    /// Grows to hold a point, too. A NaN moves nothing. Grown by its first point, the empty box becomes that point.
    constexpr void Expand(tVector3<T> const& point) noexcept { ExpandAndSignal(point); }
    /// Scales about the centre: each half-extent grows by this fraction of itself, so that 1 doubles the box, -0.5
    /// halves it and 0 leaves it alone if its centre is finite. An infinite end becomes NaN whatever the factor, and so
    /// does every end of the empty box. A relative growth; Offset() is the absolute one.
    constexpr void Expand(T factor) noexcept;
    /// Grows to hold another box, too.
    /// @return whether any of the six numbers changed; a number equal to the present one is no change.
    constexpr bool ExpandAndSignal(tVolumeAABB const& box) noexcept;
    /// Grows to hold a point, too.
    /// @return whether any of the six numbers changed; a number equal to the present one is no change.
    constexpr bool ExpandAndSignal(tVector3<T> const& point) noexcept;
    /// Moves every face outward by a distance, or inward by a negative one, which inverts the box when it is more than
    /// half an extent; nothing is checked.
    constexpr void Offset(T distance) noexcept;
    /// @}

    /// @name Operators
    /// @{
    /// Equality number by number, with the tolerance of IsEqual(); the lower corner first.
    [[nodiscard, gnu::always_inline]] constexpr bool operator==(tVolumeAABB const& other) const noexcept;
    /// The exact negation of equality.
    [[nodiscard]] constexpr bool operator!=(tVolumeAABB const& other) const noexcept { return !(*this == other); }
    /// The tight box around this box transformed by a matrix, as if its eight corners had been transformed. The fourth
    /// row is ignored, so of a projective matrix only the affine part counts; the state of the matrix is not read.
    ///
    /// Only for valid boxes: an empty one gives NaN wherever a zero element meets an infinity. The caller includes
    /// `bv/maths/tMatrix4.h`. Arvo, "Transforming Axis-Aligned Bounding Boxes", Graphics Gems, 1990.
    [[nodiscard, gnu::always_inline]] inline tVolumeAABB operator*(tMatrix4<T> const& matrix) const noexcept;
    /// Transforms in place, as operator*() does.
    /// @return this box.
    [[gnu::always_inline]] tVolumeAABB& operator*=(tMatrix4<T> const& matrix) noexcept
    {
        return *this = *this * matrix;
    }
    /// @}

    /// @name Streams
    /// @{
    /// Writes the lower, then the upper corner as six raw native numbers, with nothing before, between or after them.
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
    static constexpr detail::Place GET_AREA{"GetArea", 288};

    [[noreturn, gnu::cold]] static void ThrowWrongAxis(detail::Place const& place);
};

template <typename T>
constexpr tVolumeAABB<T>::tVolumeAABB() noexcept
    : min{std::numeric_limits<T>::infinity(), std::numeric_limits<T>::infinity(), std::numeric_limits<T>::infinity()},
      max{-min.x, -min.y, -min.z}
{
}

template <typename T>
constexpr bool tVolumeAABB<T>::IsValid() const noexcept
{
    return max.x >= min.x && max.y >= min.y && max.z >= min.z;
}

template <typename T>
constexpr bool tVolumeAABB<T>::Contains(tVector3<T> const& point, bool exclusiveMax) const noexcept
{
    if (!std::is_constant_evaluated())
    {
        auto const at = detail::LoadThree<T>(point);
        auto const upper = detail::LoadLast(*this);
        auto const isAbove = detail::LoadFirst(*this) <= at;
        return exclusiveMax ? detail::AllThreeOnce(detail::Both(isAbove, at < upper))
                            : detail::AllThreeOnce(detail::Both(isAbove, at <= upper));
    }
    if (!(point.x >= min.x))
        return false;
    if (exclusiveMax)
        return max.x > point.x && point.y >= min.y && max.y > point.y && point.z >= min.z && max.z > point.z;
    return max.x >= point.x && point.y >= min.y && max.y >= point.y && point.z >= min.z && max.z >= point.z;
}

template <typename T>
constexpr T tVolumeAABB<T>::DistanceSquared(tVector3<T> const& point) const noexcept
{
    if (detail::MEASURES_AXES_TOGETHER<T> && !std::is_constant_evaluated())
    {
        using Lanes = detail::tThree<T>;
        Lanes const zero{};
        Lanes const at = detail::LoadThree<T>(point);
        Lanes const below = detail::LoadFirst(*this) - at;
        Lanes const above = detail::Select(zero < below, zero, at - detail::LoadLast(*this));
        Lanes const gaps = detail::Max(below, detail::Max(above, zero));
        Lanes const squares = gaps * gaps;
        return detail::Get<0>(squares) + detail::Get<1>(squares) + detail::Get<2>(squares);
    }
    T const x = detail::Gap(min.x, max.x, point.x);
    T const y = detail::Gap(min.y, max.y, point.y);
    T const z = detail::Gap(min.z, max.z, point.z);
    return x * x + y * y + z * z; // an axis without a gap adds a zero, which changes no sum
}

template <typename T>
constexpr T tVolumeAABB<T>::GetVolume() const noexcept
{
    return (max.x - min.x) * (max.y - min.y) * (max.z - min.z);
}

template <typename T>
constexpr T tVolumeAABB<T>::GetArea(unsigned char axis) const
{
    switch (axis)
    {
    case AXIS_X:
        return (max.y - min.y) * (max.z - min.z);
    case AXIS_Y:
        return (max.x - min.x) * (max.z - min.z);
    case AXIS_Z:
        return (max.x - min.x) * (max.y - min.y);
    default:
        ThrowWrongAxis(GET_AREA);
    }
}

template <typename T>
constexpr T tVolumeAABB<T>::GetLength(unsigned char axis) const
{
    switch (axis)
    {
    case AXIS_X:
        return max.x - min.x;
    case AXIS_Y:
        return max.y - min.y;
    case AXIS_Z:
        return max.z - min.z;
    default:
        ThrowWrongAxis(GET_LENGTH);
    }
}

template <typename T>
constexpr bool tVolumeAABB<T>::Overlaps(tVolumeSphere<T> const& sphere) const noexcept
{
    tVector3<T> const& centre = sphere.GetCentre();
    T const limit = sphere.GetRadiusSquared();
    // The partial sums ascend, so that the whole sum says what the sum after the last gap says; and what reaches a
    // limit above 0 has a gap.
    if (limit > T{0}) [[likely]]
        return DistanceSquared(centre) < limit;
    // Any sum reaches another limit, if there is a gap; but for NaN, which nothing reaches.
    bool const apart = centre.x < min.x || centre.x > max.x || centre.y < min.y || centre.y > max.y ||
                       centre.z < min.z || centre.z > max.z;
    return !apart || !(limit <= T{0});
}

template <typename T>
constexpr void tVolumeAABB<T>::Split(unsigned char axis, tVolumeAABB& lower, tVolumeAABB& upper) const noexcept
{
    if (axis > AXIS_Z)
        return;
    T const middle = (min[axis] + max[axis]) * T{0.5};
    lower = upper = tVolumeAABB(*this); // from a copy: either output may be this box
    lower.max[axis] = middle;
    upper.min[axis] = middle;
}

template <typename T>
constexpr void tVolumeAABB<T>::Expand(T factor) noexcept
{
    tVector3<T> const centre = GetCentre();
    max += (max - centre) * factor;
    min += (min - centre) * factor;
}

template <typename T>
constexpr bool tVolumeAABB<T>::ExpandAndSignal(tVolumeAABB const& box) noexcept
{
    bool changed = detail::LowerTo(min, box.min);
    changed |= detail::RaiseTo(max, box.max);
    return changed;
}

template <typename T>
constexpr bool tVolumeAABB<T>::ExpandAndSignal(tVector3<T> const& point) noexcept
{
    bool changed = detail::LowerTo(min, point);
    changed |= detail::RaiseTo(max, point);
    return changed;
}

template <typename T>
constexpr void tVolumeAABB<T>::Offset(T distance) noexcept
{
    tVector3<T> const outward(distance, distance, distance);
    min -= outward;
    max += outward;
}

template <typename T>
constexpr bool tVolumeAABB<T>::operator==(tVolumeAABB const& other) const noexcept
{
    return min == other.min && max == other.max;
}

template <typename T>
inline tVolumeAABB<T> tVolumeAABB<T>::operator*(tMatrix4<T> const& matrix) const noexcept
{
    auto const bounds = detail::MoveBox(min, max, matrix.Get());
    tVolumeAABB moved = *this; // set whole
    detail::StoreCorners<T>(bounds.lower, bounds.upper, moved);
    return moved;
}

extern template class BV_TEMPLATE tVolumeAABB<float>;
extern template class BV_TEMPLATE tVolumeAABB<double>;
extern template BV_TEMPLATE tVolumeAABB<float>::tVolumeAABB(tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<float>& tVolumeAABB<float>::operator=(tVolumeAABB<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<double>::tVolumeAABB(tVolumeAABB<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeAABB<double>& tVolumeAABB<double>::operator=(tVolumeAABB<float> const&) noexcept;

// Arrays of boxes are dense and are copied as blocks; ray packets read a box as six numbers in the order of the fields.
static_assert(sizeof(tVolumeAABB<float>) == 6 * sizeof(float) && sizeof(tVolumeAABB<double>) == 6 * sizeof(double));
static_assert(std::is_standard_layout_v<tVolumeAABB<float>> && std::is_standard_layout_v<tVolumeAABB<double>>);
static_assert(std::is_trivially_copyable_v<tVolumeAABB<float>> && std::is_trivially_copyable_v<tVolumeAABB<double>>);

} // namespace bv::maths
