#pragma once

/// @file
/// An oriented plane in space.

#include <cstddef>
#include <iosfwd>
#include <string>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// Oriented plane in Hessian normal form: the points p with n.p + d = 0, n the unit normal and d the offset.
///
/// What is built or set from a normal and an offset is scaled so that the normal has length 1; the plane itself does
/// not move. A zero normal is not guarded: the components become infinities and NaN.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tPlane
{
    T offset;           ///< signed distance of the origin from the plane
    tVector3<T> normal; ///< unit normal

public:
    static constexpr T ZERO{0}; ///< the element type's 0
    static constexpr T UNIT{1}; ///< the element type's 1, the squared length of a normal

    /// @name Construction
    /// @{
    /// Zero in every component: not a valid plane.
    constexpr tPlane() noexcept : offset{ZERO}, normal{} {}
    /// The plane of this normal and offset, both divided by the normal's length.
    tPlane(tVector3<T> const& normalValue, T const& offsetValue) noexcept
        : tPlane(normalValue, offsetValue, normalValue.Length())
    {
    }
    /// Reads the normal's x, y and z and then the offset from four consecutive values and scales them as above; the
    /// pointer must not be null.
    tPlane(T const* values) noexcept : tPlane(tVector3<T>(values), values[3]) {}
    /// A null pointer has no components.
    tPlane(std::nullptr_t) = delete;
    /// Converts from the other precision, component by component, rounding to nearest. Nothing is scaled, so that the
    /// normal is of unit length only within the coarser precision.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tPlane(tPlane<U> const& other) noexcept
        : offset{static_cast<T>(other.GetOffset())}, normal{other.GetNormal()}
    {
    }
    /// @copydoc tPlane(tPlane<U> const&)
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tPlane& operator=(tPlane<U> const& other) noexcept
    {
        return *this = tPlane(other);
    }
    /// @}

    /// @name Access
    /// @{
    /// The unit normal, which points to the positive side.
    [[nodiscard]] constexpr tVector3<T> const& GetNormal() const noexcept { return normal; }
    /// The signed distance of the origin, positive on the side the normal points to.
    [[nodiscard]] constexpr T const& GetOffset() const noexcept { return offset; }
    /// @}

    /// @name Queries
    /// @{
    /// Signed distance of a point, positive on the side the normal points to: ((n.y p.y + n.x p.x) + n.z p.z) + d.
    [[nodiscard]] constexpr T GetDistance(tVector3<T> const& point) const noexcept;
    /// Distance of a point, whatever its side.
    [[nodiscard]] T GetAbsoluteDistance(tVector3<T> const& point) const noexcept
    {
        return detail::Magnitude(GetDistance(point));
    }
    /// The point where a line meets the plane. The whole line counts, so the point may lie behind the one given.
    ///
    /// @param point a point of the line.
    /// @param direction the line's direction, of any length.
    /// @throws DivideByZeroException when the scalar product of normal and direction is closer to zero than `TOLERANCE`
    ///         (exactly the tolerance passes, and so does NaN).
    [[nodiscard]] inline tVector3<T> GetIntersection(tVector3<T> const& point, tVector3<T> const& direction) const;
    /// @copydoc GetIntersection(tVector3<T> const&, tVector3<T> const&) const
    [[nodiscard]] inline tVector3<T> GetIntersection(tVector3<T> const& point, tVector3<T> const& direction);
    /// The components as text: normal x, y, z and the offset, joined by ", ", as a fresh stream of default settings in
    /// the classic locale gives them.
    [[nodiscard]] operator std::string() const;
    /// @}

    /// @name Changes
    /// @{
    /// Replaces the plane by the one of this normal and offset, both divided by the normal's length.
    /// @return this plane.
    tPlane& Set(tVector3<T> const& newNormal, T const& newOffset) noexcept
    {
        return *this = tPlane(newNormal, newOffset);
    }
    /// Replaces the normal alone, as it is given; the offset stays.
    /// @throws bv::InvalidArgumentException when the squared length is not 1 (IsEqual()); the plane is then unchanged.
    void SetNormal(tVector3<T> const& newNormal);
    /// Replaces the offset alone, without a check.
    constexpr void SetOffset(T const& newOffset) noexcept { offset = newOffset; }
    /// @}

    /// @name Operators
    /// @{
    /// Replaces the plane as Set() does, reading the normal's x, y and z and then the offset from four consecutive
    /// values.
    tPlane& operator=(T const* values) noexcept { return *this = tPlane(values); }
    /// A null pointer has no components, nor does `plane = {}` mean one.
    tPlane& operator=(std::nullptr_t) = delete;
    /// Equality component by component, normal first, each within IsEqual()'s tolerance.
    [[nodiscard]] constexpr bool operator==(tPlane const& other) const noexcept;
    /// The exact negation of equality.
    [[nodiscard]] constexpr bool operator!=(tPlane const& other) const noexcept { return !(*this == other); }
    /// @}

    /// @name Streams
    /// @{
    /// Writes normal x, y, z and then the offset as raw native bytes, with nothing before, between or after them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads the normal alone: the offset keeps its value, and the one that Serialise() wrote stays unread in the
    /// stream.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}

private:
    tPlane(tVector3<T> const& normalValue, T const& offsetValue, T length) noexcept
        : offset{offsetValue / length}, normal{normalValue * (UNIT / length)}
    {
    }

    [[noreturn, gnu::cold]] static void ThrowParallel();
};

template <typename T>
constexpr T tPlane<T>::GetDistance(tVector3<T> const& point) const noexcept
{
    return ((normal.y * point.y + normal.x * point.x) + normal.z * point.z) + offset;
}

template <typename T>
inline tVector3<T> tPlane<T>::GetIntersection(tVector3<T> const& point, tVector3<T> const& direction) const
{
    T const denominator = normal.x * direction.x + direction.y * normal.y + direction.z * normal.z;
    T const tolerance = TOLERANCE<T>;
    if (tolerance > detail::Magnitude(denominator)) // this way round, so that NaN passes
        ThrowParallel();
    T const t = -((point.x * normal.x + point.y * normal.y + point.z * normal.z) + offset) / denominator;
    return {point.x + t * direction.x, point.y + t * direction.y, point.z + t * direction.z};
}

template <typename T>
inline tVector3<T> tPlane<T>::GetIntersection(tVector3<T> const& point, tVector3<T> const& direction)
{
    return static_cast<tPlane const&>(*this).GetIntersection(point, direction);
}

template <typename T>
constexpr bool tPlane<T>::operator==(tPlane const& other) const noexcept
{
    return normal == other.normal && IsEqual(offset, other.offset);
}

/// Writes the text that the conversion to `std::string` gives. The target's precision and flags do not apply to the
/// numbers; its width and fill apply once, to the whole text.
template <typename T>
std::ostream& operator<<(std::ostream& stream, tPlane<T> const& plane);

extern template class BV_TEMPLATE tPlane<float>;
extern template class BV_TEMPLATE tPlane<double>;
extern template BV_TEMPLATE tPlane<float>::tPlane(tPlane<double> const&) noexcept;
extern template BV_TEMPLATE tPlane<float>& tPlane<float>::operator=(tPlane<double> const&) noexcept;
extern template BV_TEMPLATE tPlane<double>::tPlane(tPlane<float> const&) noexcept;
extern template BV_TEMPLATE tPlane<double>& tPlane<double>::operator=(tPlane<float> const&) noexcept;
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tPlane<float> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tPlane<double> const&);

static_assert(sizeof(tPlane<float>) == 4 * sizeof(float) && sizeof(tPlane<double>) == 4 * sizeof(double));
static_assert(std::is_standard_layout_v<tPlane<float>> && std::is_standard_layout_v<tPlane<double>>);
static_assert(std::is_trivially_copyable_v<tPlane<float>> && std::is_trivially_copyable_v<tPlane<double>>);

} // namespace bv::maths
