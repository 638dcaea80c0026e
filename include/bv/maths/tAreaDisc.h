#pragma once

/// @file
/// A disc in the plane.

#include <iosfwd>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tVector2.h"

namespace bv::maths
{

/// Disc in the plane, kept as its squared radius and its centre.
///
/// Every test compares squared distances and every rejection is strict: a point on the circle is outside, and what only
/// touches does not overlap. Nothing is checked: a disc of negative squared radius contains nothing, and its radius is
/// NaN. It overlaps no disc, up to rounding, overflow and underflow of the product of the squared radii.
///
/// May be derived from and deleted through a pointer to it: the destructor, and nothing else, is virtual.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tAreaDisc
{
    T radiusSquared;    ///< square of the radius, which itself is not kept
    tVector2<T> centre; ///< centre point

public:
    /// @name Construction
    /// @{
    /// The disc of radius 0 at a point.
    constexpr tAreaDisc(tVector2<T> const& centrePoint) noexcept : radiusSquared{0}, centre{centrePoint} {}
    /// The disc with this centre and this *squared* radius: unlike SetRadius(), the value is taken as it is, so that
    /// (c, 4) has radius 2.
    constexpr tAreaDisc(tVector2<T> const& centrePoint, T const& squaredRadius) noexcept
        : radiusSquared{squaredRadius}, centre{centrePoint}
    {
    }
    /// The smallest disc through two points, whose distance is its diameter.
    constexpr tAreaDisc(tVector2<T> const& p, tVector2<T> const& q) noexcept;
    /// The same squared radius and centre.
    constexpr tAreaDisc(tAreaDisc const& other) noexcept;
    /// The same squared radius and centre: there is nothing to take over.
    constexpr tAreaDisc(tAreaDisc&& other) noexcept;
    /// Copies the squared radius and the centre.
    constexpr tAreaDisc& operator=(tAreaDisc const& other) noexcept;
    /// Copies the squared radius and the centre, too.
    constexpr tAreaDisc& operator=(tAreaDisc&& other) noexcept;
    /// Converts from the other precision, number by number, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tAreaDisc(tAreaDisc<U> const& other) noexcept
        : radiusSquared{static_cast<T>(other.GetRadiusSquared())}, centre{other.GetCentre()}
    {
    }
    /// @copydoc tAreaDisc(tAreaDisc<U> const&)
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tAreaDisc& operator=(tAreaDisc<U> const& other) noexcept
    {
        return *this = tAreaDisc(other);
    }
    /// Virtual, for shapes that derive from this one; does nothing by itself.
    constexpr virtual ~tAreaDisc();
    /// @}

    /// @name Access
    /// @{
    /// The centre point.
    [[nodiscard]] constexpr tVector2<T> const& GetCentre() const noexcept { return centre; }
    /// Moves the centre.
    constexpr void SetCentre(tVector2<T> const& centrePoint) noexcept { centre = centrePoint; }
    /// The square of the radius, as it is kept.
    [[nodiscard]] constexpr T GetRadiusSquared() const noexcept { return radiusSquared; }
    /// The radius, at the price of a square root; NaN when the squared radius is negative.
    [[nodiscard]] T GetRadius() const noexcept { return detail::SquareRoot(radiusSquared); }
    /// Sets the radius, not its square; a negative radius acts as its magnitude.
    constexpr void SetRadius(T radius) noexcept { radiusSquared = radius * radius; }
    /// @}

    /// @name Queries
    /// @{
    /// Area: the squared radius times pi. Both instances use the same pi, rounded to single precision, so that their
    /// areas agree; `double` areas are therefore off by 2.8e-8 of their value.
    [[nodiscard]] constexpr T GetArea() const noexcept { return radiusSquared * PI; }
    /// Whether a point lies strictly inside. Gives up after the x axis when that alone decides.
    [[nodiscard]] constexpr bool Contains(tVector2<T> const& point) const noexcept;
    /// Whether two discs have more than a touch in common: whether the squared sum of the radii, computed from the
    /// squared radii with one square root, exceeds the squared distance of the centres. The product of the squared
    /// radii may overflow or underflow where the radii would not.
    [[nodiscard]] bool Overlaps(tAreaDisc const& other) const noexcept;
    /// Whether the disc and a box have more than a touch in common: tAreaAABB::Overlaps(), from the other side.
    [[nodiscard]] constexpr bool Overlaps(tAreaAABB<T> const& box) const noexcept { return box.Overlaps(*this); }
    /// @}

    /// @name Operators
    /// @{
    /// Equality number by number, with the tolerance of IsEqual(): the squared radii, then the centres.
    [[nodiscard]] constexpr bool operator==(tAreaDisc const& other) const noexcept;
    /// The exact negation of equality.
    [[nodiscard]] constexpr bool operator!=(tAreaDisc const& other) const noexcept { return !(*this == other); }
    /// @}

    /// @name Streams
    /// @{
    /// Writes the squared radius, then the centre as three raw native numbers, with nothing before, between or after
    /// them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote; nothing is checked. A stream that ends early leaves the remaining numbers as its
    /// `read` leaves them.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}

private:
    static constexpr T PI = static_cast<T>(3.1415927F);
};

template <typename T>
constexpr tAreaDisc<T>::tAreaDisc(tVector2<T> const& p, tVector2<T> const& q) noexcept
    : radiusSquared{(p - q).LengthSquared() * T{0.25}}, centre{(p + q) * T{0.5}}
{
}

// Defaulted here rather than in the class, so that they are part of the instances in the library.

template <typename T>
constexpr tAreaDisc<T>::tAreaDisc(tAreaDisc const&) noexcept = default;

template <typename T>
constexpr tAreaDisc<T>::tAreaDisc(tAreaDisc&&) noexcept = default;

template <typename T>
constexpr tAreaDisc<T>& tAreaDisc<T>::operator=(tAreaDisc const&) noexcept = default;

template <typename T>
constexpr tAreaDisc<T>& tAreaDisc<T>::operator=(tAreaDisc&&) noexcept = default;

template <typename T>
constexpr tAreaDisc<T>::~tAreaDisc() = default;

template <typename T>
constexpr bool tAreaDisc<T>::Contains(tVector2<T> const& point) const noexcept
{
    T const x = point.x - centre.x;
    T const alongX = x * x;
    if (alongX >= radiusSquared)
        return false;
    T const y = point.y - centre.y;
    return radiusSquared > y * y + alongX;
}

template <typename T>
inline bool tAreaDisc<T>::Overlaps(tAreaDisc const& other) const noexcept
{
    T const a = radiusSquared;
    T const b = other.radiusSquared;
    return T{2} * detail::SquareRoot(a * b) + (a + b) > (other.centre - centre).LengthSquared();
}

template <typename T>
constexpr bool tAreaDisc<T>::operator==(tAreaDisc const& other) const noexcept
{
    return IsEqual(radiusSquared, other.radiusSquared) && centre == other.centre;
}

extern template class BV_TEMPLATE tAreaDisc<float>;
extern template class BV_TEMPLATE tAreaDisc<double>;
extern template BV_TEMPLATE tAreaDisc<float>::tAreaDisc(tAreaDisc<double> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<float>& tAreaDisc<float>::operator=(tAreaDisc<double> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<double>::tAreaDisc(tAreaDisc<float> const&) noexcept;
extern template BV_TEMPLATE tAreaDisc<double>& tAreaDisc<double>::operator=(tAreaDisc<float> const&) noexcept;

// The pointer to the virtual destructor, then the squared radius, then the centre, and padding to whole pointers.
static_assert(std::has_virtual_destructor_v<tAreaDisc<float>> && std::has_virtual_destructor_v<tAreaDisc<double>>);
static_assert(sizeof(tAreaDisc<float>) == (sizeof(void*) == 8 ? 24 : 16));
static_assert(sizeof(tAreaDisc<double>) == 4 * sizeof(double));

} // namespace bv::maths
