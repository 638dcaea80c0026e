#pragma once

/// @file
/// A sphere in space.

#include <iosfwd>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

/// Solid sphere in space, kept as its squared radius and its centre.
///
/// Every test compares squared distances and every rejection is strict: a point on the surface is outside, and what
/// only touches does not overlap. Nothing is checked: a sphere of negative squared radius contains nothing, and its
/// radius and volume are NaN, but for the volume of a squared radius of -infinity, which is +infinity. It overlaps no
/// sphere, up to rounding, overflow and underflow of the product of the squared radii.
///
/// May be derived from and deleted through a pointer to it: the destructor, and nothing else, is virtual.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tVolumeSphere
{
    T radiusSquared;    ///< square of the radius, which itself is not kept
    tVector3<T> centre; ///< centre point

public:
    /// @name Construction
    /// @{
    /// The sphere of radius 0 at a point.
    constexpr tVolumeSphere(tVector3<T> const& centrePoint) noexcept : radiusSquared{0}, centre{centrePoint} {}
    /// The sphere with this centre and this *squared* radius: unlike SetRadius(), the value is taken as it is, so that
    /// (c, 9) has radius 3.
    constexpr tVolumeSphere(tVector3<T> const& centrePoint, T const& squaredRadius) noexcept
        : radiusSquared{squaredRadius}, centre{centrePoint}
    {
    }
    /// The smallest sphere through two points, whose distance is its diameter.
    constexpr tVolumeSphere(tVector3<T> const& p, tVector3<T> const& q) noexcept;
    /// The same squared radius and centre.
    constexpr tVolumeSphere(tVolumeSphere const& other) noexcept;
    /// The same squared radius and centre: there is nothing to take over.
    constexpr tVolumeSphere(tVolumeSphere&& other) noexcept;
    /// Copies the squared radius and the centre.
    constexpr tVolumeSphere& operator=(tVolumeSphere const& other) noexcept;
    /// Copies the squared radius and the centre, too.
    constexpr tVolumeSphere& operator=(tVolumeSphere&& other) noexcept;
    /// Converts from the other precision, number by number, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tVolumeSphere(tVolumeSphere<U> const& other) noexcept
        : radiusSquared{static_cast<T>(other.GetRadiusSquared())}, centre{other.GetCentre()}
    {
    }
    /// @copydoc tVolumeSphere(tVolumeSphere<U> const&)
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    constexpr tVolumeSphere& operator=(tVolumeSphere<U> const& other) noexcept
    {
        return *this = tVolumeSphere(other);
    }
    /// Virtual, for shapes that derive from this one; does nothing by itself.
    constexpr virtual ~tVolumeSphere();
    /// @}

    /// @name Access
    /// @{
    /// The centre point.
    [[nodiscard]] constexpr tVector3<T> const& GetCentre() const noexcept { return centre; }
    /// Moves the centre.
    constexpr void SetCentre(tVector3<T> const& centrePoint) noexcept { centre = centrePoint; }
    /// The square of the radius, as it is kept.
    [[nodiscard]] constexpr T GetRadiusSquared() const noexcept { return radiusSquared; }
    /// The radius, at the price of a square root; NaN when the squared radius is negative.
    [[nodiscard]] T GetRadius() const noexcept { return detail::SquareRoot(radiusSquared); }
    /// Sets the radius, not its square; a negative radius acts as its magnitude.
    constexpr void SetRadius(T radius) noexcept { radiusSquared = radius * radius; }
    /// @}

    /// @name Queries
    /// @{
    /// Volume: the squared radius to the power 1.5, by pow() of the C library, times 4/3 pi. Both instances use the
    /// same constant, rounded to single precision; `double` volumes are therefore off by 2.8e-8 of their value.
    [[nodiscard]] T GetVolume() const noexcept;
    /// Whether a point lies strictly inside.
    [[nodiscard]] constexpr bool Contains(tVector3<T> const& point) const noexcept;
    /// Whether two spheres have more than a touch in common: whether the squared sum of the radii, computed from the
    /// squared radii with one square root, exceeds the squared distance of the centres. The product of the squared
    /// radii may overflow or underflow where the radii would not.
    [[nodiscard]] bool Overlaps(tVolumeSphere const& other) const noexcept;
    /// Whether the sphere and a box have more than a touch in common: tVolumeAABB::Overlaps(), from the other side.
    [[nodiscard, gnu::always_inline]] constexpr bool Overlaps(tVolumeAABB<T> const& box) const noexcept
    {
        return box.Overlaps(*this);
    }
    /// @}

    /// @name Operators
    /// @{
    /// Equality number by number, with the tolerance of IsEqual(): the squared radii, then the centres.
    [[nodiscard, gnu::always_inline]] constexpr bool operator==(tVolumeSphere const& other) const noexcept;
    /// The exact negation of equality.
    [[nodiscard]] constexpr bool operator!=(tVolumeSphere const& other) const noexcept { return !(*this == other); }
    /// An unchanged copy of this sphere, whatever the matrix: spheres are not moved, turned or scaled by matrices.
    /// Whoever needs a transformed sphere transforms its centre and adjusts its radius.
    [[nodiscard]] constexpr tVolumeSphere operator*(tMatrix4<T> const&) const noexcept { return *this; }
    /// Leaves this sphere as it is, whatever the matrix; see operator*().
    /// @return this sphere.
    constexpr tVolumeSphere& operator*=(tMatrix4<T> const&) noexcept { return *this; }
    /// @}

    /// @name Streams
    /// @{
    /// Writes the squared radius, then the centre as four raw native numbers, with nothing before, between or after
    /// them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote; nothing is checked. A stream that ends early leaves the remaining numbers as its
    /// `read` leaves them.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}
};

template <typename T>
constexpr tVolumeSphere<T>::tVolumeSphere(tVector3<T> const& p, tVector3<T> const& q) noexcept
    : radiusSquared{(q - p).LengthSquared() * T{0.25}}, centre{(p + q) * T{0.5}}
{
}

// Defaulted here rather than in the class, so that they are part of the instances in the library.

template <typename T>
constexpr tVolumeSphere<T>::tVolumeSphere(tVolumeSphere const&) noexcept = default;

template <typename T>
constexpr tVolumeSphere<T>::tVolumeSphere(tVolumeSphere&&) noexcept = default;

template <typename T>
constexpr tVolumeSphere<T>& tVolumeSphere<T>::operator=(tVolumeSphere const&) noexcept = default;

template <typename T>
constexpr tVolumeSphere<T>& tVolumeSphere<T>::operator=(tVolumeSphere&&) noexcept = default;

template <typename T>
constexpr tVolumeSphere<T>::~tVolumeSphere() = default;

template <typename T>
constexpr bool tVolumeSphere<T>::Contains(tVector3<T> const& point) const noexcept
{
    // The partial sums ascend: what the first axes alone reject, the whole sum rejects, too.
    return radiusSquared > (point - centre).LengthSquared();
}

template <typename T>
inline bool tVolumeSphere<T>::Overlaps(tVolumeSphere const& other) const noexcept
{
    T const a = radiusSquared;
    T const b = other.radiusSquared;
    return T{2} * detail::SquareRoot(a * b) + (a + b) > (centre - other.centre).LengthSquared();
}

template <typename T>
constexpr bool tVolumeSphere<T>::operator==(tVolumeSphere const& other) const noexcept
{
    return IsEqual(radiusSquared, other.radiusSquared) && centre == other.centre;
}

extern template class BV_TEMPLATE tVolumeSphere<float>;
extern template class BV_TEMPLATE tVolumeSphere<double>;
extern template BV_TEMPLATE tVolumeSphere<float>::tVolumeSphere(tVolumeSphere<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<float>&
tVolumeSphere<float>::operator=(tVolumeSphere<double> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<double>::tVolumeSphere(tVolumeSphere<float> const&) noexcept;
extern template BV_TEMPLATE tVolumeSphere<double>&
tVolumeSphere<double>::operator=(tVolumeSphere<float> const&) noexcept;

// The pointer to the virtual destructor, then the squared radius, then the centre.
static_assert(std::has_virtual_destructor_v<tVolumeSphere<float>> &&
              std::has_virtual_destructor_v<tVolumeSphere<double>>);
static_assert(sizeof(tVolumeSphere<float>) == sizeof(void*) + 4 * sizeof(float));
static_assert(sizeof(tVolumeSphere<double>) ==
              sizeof(double) + 4 * sizeof(double)); // the pointer is padded to a number

} // namespace bv::maths
