#pragma once

/// @file
/// A box in space that may be turned.

#include <cstddef>
#include <iosfwd>
#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

/// Box in space whose edges run along axes of its own, kept as its centre, its three axes and half of its extents along
/// them: fifteen numbers in this order.
///
/// The axes are unit vectors, perpendicular to each other, of either handedness; neither is checked. The empty box has
/// half extents of -infinity. A box is valid when no half extent is negative or NaN. What is asked of any other box is
/// answered as of the empty one where a comment says so, and else by the formula. Comparisons are ordered: a NaN fails
/// them.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tOrientedBox
{
    tVector3<T> centre;      ///< the point in the middle
    tVector3<T> axes[3];     ///< unit vectors along the edges
    tVector3<T> halfExtents; ///< half the length of the edges along each of them

public:
    static constexpr unsigned int CORNER_COUNT = 8; ///< number of corners

    /// @name Construction
    /// @{
    /// The empty box: centre (0, 0, 0), the axes of the world, half extents of -infinity.
    constexpr tOrientedBox() noexcept;
    /// The box with this centre, these axes and these half extents, taken as they are.
    constexpr tOrientedBox(tVector3<T> const& centrePoint, tVector3<T> const& xAxis, tVector3<T> const& yAxis,
                           tVector3<T> const& zAxis, tVector3<T> const& halves) noexcept
        : centre{centrePoint}, axes{xAxis, yAxis, zAxis}, halfExtents{halves}
    {
    }
    /// The same box as an axis-aligned one, along the axes of the world: the centre is (max + min) * 0.5 and half the
    /// extents are (max - min) * 0.5, each as it rounds. A box that is not valid gives the empty one.
    explicit constexpr tOrientedBox(tVolumeAABB<T> const& box) noexcept;
    /// An axis-aligned box moved by a matrix, as operator*() moves it.
    ///
    /// The caller includes `bv/maths/tMatrix4.h`.
    tOrientedBox(tVolumeAABB<T> const& box, tMatrix4<T> const& matrix) noexcept : tOrientedBox(box) { *this *= matrix; }
    /// Converts from the other precision, number by number, rounding to nearest: the axes are then of unit length and
    /// perpendicular within the coarser precision.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tOrientedBox(tOrientedBox<U> const& other) noexcept
        : centre{other.GetCentre()},
          axes{tVector3<T>(other.GetAxis(0)), tVector3<T>(other.GetAxis(1)), tVector3<T>(other.GetAxis(2))},
          halfExtents{other.GetHalfExtents()}
    {
    }
    /// @copydoc tOrientedBox(tOrientedBox<U> const&)
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tOrientedBox& operator=(tOrientedBox<U> const& other) noexcept
    {
        return *this = tOrientedBox(other);
    }
    /// @}

    /// @name Access
    /// @{
    /// The point in the middle.
    [[nodiscard]] constexpr tVector3<T> const& GetCentre() const noexcept { return centre; }
    /// The unit vector along an edge, by index from 0 to 2, which is not checked.
    [[nodiscard]] constexpr tVector3<T> const& GetAxis(std::size_t index) const noexcept { return axes[index]; }
    /// Half the length of the edges along each axis.
    [[nodiscard]] constexpr tVector3<T> const& GetHalfExtents() const noexcept { return halfExtents; }
    /// Moves the box; nothing is checked.
    constexpr void SetCentre(tVector3<T> const& centrePoint) noexcept { centre = centrePoint; }
    /// Turns the box: nothing is checked.
    constexpr void SetAxes(tVector3<T> const& xAxis, tVector3<T> const& yAxis, tVector3<T> const& zAxis) noexcept;
    /// Overwrites half the extents; nothing is checked.
    constexpr void SetHalfExtents(tVector3<T> const& halves) noexcept { halfExtents = halves; }
    /// @}

    /// @name Queries
    /// @{
    /// Whether no half extent is negative or NaN. A box of a single point is valid; the empty box is not.
    [[nodiscard]] constexpr bool IsValid() const noexcept;
    /// A corner: the centre plus or minus each axis times its half extent, added x, y, z.
    ///
    /// @param index bit 0 chooses the end along the x axis, bit 1 along the y axis, bit 2 along the z axis; 0 is the
    ///        end against the axis. Other bits count for nothing.
    [[nodiscard]] constexpr tVector3<T> GetCorner(unsigned int index) const noexcept;
    /// All corners, in the order of their index.
    constexpr void GetCorners(tVector3<T> (&corners)[CORNER_COUNT]) const noexcept;
    /// Whether a point lies inside: whether no coordinate along an axis, (point - centre).Dot(axis), is larger in
    /// magnitude than the half extent. The faces belong to the box, but where coordinates round, a corner may not.
    ///
    /// A box that is not valid contains nothing, and a point with a NaN is nowhere inside.
    [[nodiscard]] constexpr bool Contains(tVector3<T> const& point) const noexcept;
    /// The axis-aligned box around this one: along each axis of the world, centre -+ (|x axis| * half x + |y axis| *
    /// half y + |z axis| * half z), as it rounds. A box that is not valid gives the empty one.
    [[nodiscard, gnu::always_inline]] constexpr tVolumeAABB<T> GetBound() const noexcept;
    /// Volume: the product of the three extents, (x * y) * z, never clamped: -infinity for the empty box.
    [[nodiscard]] constexpr T GetVolume() const noexcept;
    /// @}

    /// @name Operators
    /// @{
    /// Equality number by number, with the tolerance of IsEqual(): the centres, the axes, half the extents. One box
    /// with its axes in another order, or with one of them the other way round, is not equal.
    [[nodiscard]] constexpr bool operator==(tOrientedBox const& other) const noexcept;
    /// The exact negation of equality.
    [[nodiscard]] constexpr bool operator!=(tOrientedBox const& other) const noexcept { return !(*this == other); }
    /// The box transformed by a matrix. The fourth row is ignored, so of a projective matrix only the affine part
    /// counts; the state of the matrix is not read.
    ///
    /// Rotations, reflections, translations and uniform scalings move a box to a box, and so does any scaling along its
    /// own axes. Each axis is then where the matrix takes it, scaled to unit length. Any other matrix makes a sheared
    /// body: the result is a box around it, with the x axis where the matrix takes it, the y axis in the plane of what
    /// the matrix makes of the x and y axes, and the z axis perpendicular to both, on the side that the matrix takes it
    /// to. A half extent is the sum over the moved axes of |new axis . moved axis| * half extent.
    ///
    /// An axis that a matrix makes zero, or parallel to another one, is replaced by a direction perpendicular to the
    /// others; so there are three axes always, and the box may be flat. Lengths may be of any magnitude whose squares
    /// neither overflow nor underflow beside the largest component. Infinities and NaN in the matrix give the same. A
    /// box that is not valid gives the empty one.
    ///
    /// The caller includes `bv/maths/tMatrix4.h`.
    [[nodiscard]] tOrientedBox operator*(tMatrix4<T> const& matrix) const noexcept;
    /// Transforms in place, as operator*() does.
    /// @return this box.
    tOrientedBox& operator*=(tMatrix4<T> const& matrix) noexcept { return *this = *this * matrix; }
    /// @}

    /// @name Streams
    /// @{
    /// Writes the centre, the axes and half the extents as fifteen raw native numbers, with nothing before, between or
    /// after them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote; nothing is checked. A stream that ends early leaves the remaining numbers as its
    /// `read` leaves them.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}
};

template <typename T>
constexpr tOrientedBox<T>::tOrientedBox() noexcept
    : centre{},
      axes{tVector3<T>(1, 0, 0), tVector3<T>(0, 1, 0), tVector3<T>(0, 0, 1)},
      halfExtents{-std::numeric_limits<T>::infinity(), -std::numeric_limits<T>::infinity(),
                  -std::numeric_limits<T>::infinity()}
{
}

template <typename T>
constexpr tOrientedBox<T>::tOrientedBox(tVolumeAABB<T> const& box) noexcept : tOrientedBox()
{
    if (!box.IsValid())
        return;
    centre = box.GetCentre();
    halfExtents = box.GetDiagonal() * T{0.5};
}

template <typename T>
constexpr void tOrientedBox<T>::SetAxes(tVector3<T> const& xAxis, tVector3<T> const& yAxis,
                                        tVector3<T> const& zAxis) noexcept
{
    *this = tOrientedBox(centre, xAxis, yAxis, zAxis, halfExtents); // from copies: they may be axes of this box
}

template <typename T>
constexpr bool tOrientedBox<T>::IsValid() const noexcept
{
    return halfExtents.x >= T{0} && halfExtents.y >= T{0} && halfExtents.z >= T{0};
}

template <typename T>
constexpr tVector3<T> tOrientedBox<T>::GetCorner(unsigned int index) const noexcept
{
    T const x = (index & 1U) != 0 ? halfExtents.x : -halfExtents.x;
    T const y = (index & 2U) != 0 ? halfExtents.y : -halfExtents.y;
    T const z = (index & 4U) != 0 ? halfExtents.z : -halfExtents.z;
    return ((centre + axes[0] * x) + axes[1] * y) + axes[2] * z;
}

template <typename T>
constexpr void tOrientedBox<T>::GetCorners(tVector3<T> (&corners)[CORNER_COUNT]) const noexcept
{
    for (unsigned int index = 0; index < CORNER_COUNT; ++index)
        corners[index] = GetCorner(index);
}

template <typename T>
constexpr bool tOrientedBox<T>::Contains(tVector3<T> const& point) const noexcept
{
    tVector3<T> const way = point - centre;
    return detail::Magnitude(way.Dot(axes[0])) <= halfExtents.x &&
           detail::Magnitude(way.Dot(axes[1])) <= halfExtents.y && detail::Magnitude(way.Dot(axes[2])) <= halfExtents.z;
}

namespace detail
{

/// How far a box of these half extents reaches along an axis on which its own axes have these components.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T Reach(tVector3<T> const& halfExtents, T x, T y, T z) noexcept
{
    return Magnitude(x) * halfExtents.x + Magnitude(y) * halfExtents.y + Magnitude(z) * halfExtents.z;
}

} // namespace detail

template <typename T>
constexpr tVolumeAABB<T> tOrientedBox<T>::GetBound() const noexcept
{
    if (!IsValid())
        return {};
    tVector3<T> const half(detail::Reach(halfExtents, axes[0].x, axes[1].x, axes[2].x),
                           detail::Reach(halfExtents, axes[0].y, axes[1].y, axes[2].y),
                           detail::Reach(halfExtents, axes[0].z, axes[1].z, axes[2].z));
    return {centre - half, centre + half};
}

template <typename T>
constexpr T tOrientedBox<T>::GetVolume() const noexcept
{
    return (halfExtents.x + halfExtents.x) * (halfExtents.y + halfExtents.y) * (halfExtents.z + halfExtents.z);
}

template <typename T>
constexpr bool tOrientedBox<T>::operator==(tOrientedBox const& other) const noexcept
{
    return centre == other.centre && axes[0] == other.axes[0] && axes[1] == other.axes[1] && axes[2] == other.axes[2] &&
           halfExtents == other.halfExtents;
}

extern template class BV_TEMPLATE tOrientedBox<float>;
extern template class BV_TEMPLATE tOrientedBox<double>;
extern template BV_TEMPLATE tOrientedBox<float>::tOrientedBox(tOrientedBox<double> const&) noexcept;
extern template BV_TEMPLATE tOrientedBox<float>& tOrientedBox<float>::operator=(tOrientedBox<double> const&) noexcept;
extern template BV_TEMPLATE tOrientedBox<double>::tOrientedBox(tOrientedBox<float> const&) noexcept;
extern template BV_TEMPLATE tOrientedBox<double>& tOrientedBox<double>::operator=(tOrientedBox<float> const&) noexcept;

// Arrays of boxes are dense and are copied as blocks.
static_assert(sizeof(tOrientedBox<float>) == 15 * sizeof(float) && sizeof(tOrientedBox<double>) == 15 * sizeof(double));
static_assert(std::is_standard_layout_v<tOrientedBox<float>> && std::is_standard_layout_v<tOrientedBox<double>>);
static_assert(std::is_trivially_copyable_v<tOrientedBox<float>> && std::is_trivially_copyable_v<tOrientedBox<double>>);

} // namespace bv::maths
