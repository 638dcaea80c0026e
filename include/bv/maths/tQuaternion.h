#pragma once

/// @file
/// A quaternion: a rotation in space as four numbers.

#include <cstddef>
#include <iosfwd>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Compiler.h"
#include "bv/maths/detail/Components.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/detail/Quaternions.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// Quaternion x*i + y*j + z*k + w, with i*i = j*j = k*k = i*j*k = -1. One of length 1 stands for a rotation in space.
///
/// The rotation by an angle about an axis of length 1 is (axis * sin(angle / 2), cos(angle / 2)). A quaternion and its
/// opposite are the same rotation (IsSameRotation()), and not equal. Like those of matrices, products apply their right
/// operand first.
///
/// The components lie side by side in memory, x first and w last, with nothing before, between or after them. No
/// operation checks for zero or for length 1: IEEE arithmetic stands. Every sum runs from x to w, where nothing else is
/// said. What goes through functions of the C library, such as sin(), says so: its last bits may differ between
/// these libraries. All else has the same bits everywhere.
///
/// W. R. Hamilton, "On Quaternions; or on a new System of Imaginaries in Algebra", 1844; K. Shoemake, "Animating
/// Rotation with Quaternion Curves", 1985.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tQuaternion
{
public:
    T x; ///< component along i
    T y; ///< component along j
    T z; ///< component along k
    T w; ///< real component

    /// @name Construction
    /// @{
    /// The identity, (0, 0, 0, 1), which turns nothing; a vector's default is zero, which is no rotation.
    constexpr tQuaternion() noexcept : x{}, y{}, z{}, w{1} {}
    /// The quaternion of these components, the real one last.
    constexpr tQuaternion(T xValue, T yValue, T zValue, T wValue) noexcept : x{xValue}, y{yValue}, z{zValue}, w{wValue}
    {
    }
    /// Reads x, y, z and w from four consecutive values; the pointer must not be null.
    explicit constexpr tQuaternion(T const* components) noexcept
        : x{components[0]}, y{components[1]}, z{components[2]}, w{components[3]}
    {
    }
    /// A null pointer has no components, and a single 0 is none.
    explicit tQuaternion(std::nullptr_t) = delete;
    /// Converts from the other precision, component by component, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    explicit constexpr tQuaternion(tQuaternion<U> const& other) noexcept
        : x{static_cast<T>(other.x)}, y{static_cast<T>(other.y)}, z{static_cast<T>(other.z)}, w{static_cast<T>(other.w)}
    {
    }
    /// The rotation of a matrix: the identity for one in state IDENTITY, whatever the elements hold, and otherwise what
    /// the upper left 3x3 says, which must be a rotation and is not checked. The result has length 1.
    ///
    /// The products of one component with all four are sums and differences of elements: those of x are a quarter of
    /// (1 + m11 - m22 - m33, m12 + m21, m13 + m31, m32 - m23), and so on. Those of a component of at least 1/2 are
    /// taken and normalised, so that no rotation loses digits: if m33 < 0, of x where m11 > m22 and of y elsewhere;
    /// else of z where m11 < -m22 and of w elsewhere. That component is positive. M. Day, "Converting a Rotation Matrix
    /// to a Quaternion", 2015.
    explicit tQuaternion(tMatrix4<T> const& matrix) noexcept;

    /// Rotation about an axis through the origin, of length 1.
    ///
    /// The identity for an angle of 0, and for a direction that is zero, whatever the angle. Unlike
    /// tMatrix4::RotateAxis(), it is exact about this: no other finite direction is too small, and no angle is while
    /// half of it and this half divided by the length of the direction are normal numbers. Infinities and NaN give NaN.
    /// Goes through sin() and cos() of the C library.
    ///
    /// @param direction of the axis, of any length.
    /// @param angle in radians; positive turns counter-clockwise when the direction points at the viewer.
    [[nodiscard]] static tQuaternion RotateAxis(tVector3<T> const& direction, T angle) noexcept;
    /// The rotation by the smallest angle that turns one direction to another, of length 1.
    ///
    /// With a = from and b = to, it is (a cross (b - a), |a||b| + a.b), normalised. Where a.b < -|a||b| / 2, or a
    /// squared length is not from 1/4 to 4, the two are brought to length 1 in `double` first, and where a.b < 0 then,
    /// it is (a cross (a + b), |a + b|^2 / 2): neither small angles nor directions that are nearly opposite lose
    /// digits. Those that are opposite to within the rounding of `double` are turned about the product of the first and
    /// the coordinate axis that it has least of, x before y before z; w is then 0. A zero vector gives the identity;
    /// infinities and NaN give NaN.
    ///
    /// @param from,to of any lengths.
    [[nodiscard, gnu::always_inline]] static inline tQuaternion RotateBetween(tVector3<T> const& from,
                                                                              tVector3<T> const& to) noexcept;
    /// @}

    /// @name Access
    /// @{
    /// Component by index, 0 for x up to 3 for w. The index is not checked.
    [[nodiscard]] constexpr T const& operator[](std::size_t index) const noexcept
    {
        return this->*detail::ComponentAt(detail::QUATERNION_COMPONENTS<tQuaternion, T>, index);
    }
    /// @copydoc operator[](std::size_t) const
    [[nodiscard]] constexpr T& operator[](std::size_t index) noexcept
    {
        return this->*detail::ComponentAt(detail::QUATERNION_COMPONENTS<tQuaternion, T>, index);
    }
    /// @}

    /// @name Queries
    /// @{
    /// Scalar product, (xx + zz) + (yy + ww): of two of length 1, the cosine of half the angle between them.
    [[nodiscard]] constexpr T Dot(tQuaternion const& other) const noexcept;
    /// Sum of the squared components, in the order of Dot().
    [[nodiscard]] constexpr T LengthSquared() const noexcept { return Dot(*this); }
    /// Euclidean length: the square root of LengthSquared(), which may overflow or underflow where the length would
    /// not.
    [[nodiscard]] T Length() const noexcept { return detail::SquareRoot(LengthSquared()); }
    /// The quaternion of length 1 in this direction: each component times 1 / Length(). Zero gives NaN; any other whose
    /// squared length underflows to 0 gives infinities, and NaN where a component is 0.
    [[nodiscard]] tQuaternion Normalised() const noexcept;
    /// The conjugate, (-x, -y, -z, w): the opposite rotation, for length 1.
    [[nodiscard]] constexpr tQuaternion Conjugated() const noexcept { return {-x, -y, -z, w}; }
    /// The inverse for any length: each component of the conjugate divided by LengthSquared(). Zero gives NaN.
    [[nodiscard]] constexpr tQuaternion Inverted() const noexcept;
    /// The angle of the rotation in radians, from 0 to 2 pi, for any length: 2 * atan2(|(x, y, z)|, w). Accurate near 0
    /// and 2 pi, too. From the opposite quaternion, 2 pi minus this angle. Goes through atan2() of the C library.
    [[nodiscard]] T GetAngle() const noexcept;
    /// The axis of the rotation at length 1, for any length: with GetAngle(), RotateAxis() gives the quaternion back.
    /// Where nothing is turned, the x axis. Infinities and NaN give NaN.
    [[nodiscard]] tVector3<T> GetAxis() const noexcept;
    /// The matrix of the rotation, for any length but 0, in state ORTHONORMAL; the identity, in state IDENTITY, where
    /// x, y and z are 0 and w is not NaN.
    ///
    /// With s = 2 / LengthSquared(), m11 is 1 - (y * (y * s) + z * (z * s)), m12 is x * (y * s) - w * (z * s), m21 is
    /// x * (y * s) + w * (z * s), and the others follow in cyclic order. Infinities and NaN, and a squared length that
    /// underflows to 0, give NaN.
    [[nodiscard, gnu::always_inline]] inline tMatrix4<T> GetMatrix() const noexcept;
    /// A vector rotated by this quaternion, whose length must be 1: with u = (x, y, z) and t = u cross v, doubled, the
    /// sum (v + w * t) + u cross t. For many vectors, a matrix takes less time: see tPreparedTransform.
    [[nodiscard, gnu::always_inline]] constexpr tVector3<T> Rotate(tVector3<T> const& vector) const noexcept;
    /// Whether two quaternions of one length are the same rotation: whether this one equals the other or its opposite,
    /// by the tolerant `==`.
    [[nodiscard, gnu::always_inline]] constexpr bool IsSameRotation(tQuaternion const& other) const noexcept
    {
        return *this == other || *this == -other;
    }
    /// Hash of the components' native bytes: the one-at-a-time hash of w from seed 0, whose result seeds the hash of
    /// the component before it, down to x. 0.0 and -0.0 hash differently; equal bit patterns hash alike.
    [[nodiscard]] unsigned int GetHash32() const noexcept;
    /// Hash of the components' bytes in 8 bits: Pearson's hash, chained as in GetHash32().
    [[nodiscard]] unsigned char GetHash8() const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Scales to length 1, as Normalised() does.
    /// @return this quaternion.
    tQuaternion& Normalise() noexcept { return *this = Normalised(); }
    /// Becomes its conjugate.
    /// @return this quaternion.
    constexpr tQuaternion& Conjugate() noexcept { return *this = Conjugated(); }
    /// Becomes its inverse, as Inverted() gives it.
    /// @return this quaternion.
    constexpr tQuaternion& Invert() noexcept { return *this = Inverted(); }
    /// @}

    /// @name Operators
    /// The in-place forms return this quaternion; their operands may be parts of it and are read before it changes.
    /// @{
    /// The opposite quaternion, which is the same rotation; a zero component changes its sign, too.
    [[nodiscard]] constexpr tQuaternion operator-() const noexcept { return {-x, -y, -z, -w}; }
    /// Sum, component by component.
    [[nodiscard]] constexpr tQuaternion operator+(tQuaternion const& other) const noexcept;
    /// Difference, component by component.
    [[nodiscard]] constexpr tQuaternion operator-(tQuaternion const& other) const noexcept;
    /// Hamilton's product: the right operand's rotation is applied first. Of a * b, x is
    /// (aw * bx + (ax * bw + ay * bz)) - az * by, y and z are the same in cyclic order of x, y and z, and w is
    /// (aw * bw - (ax * bx + ay * by)) - az * bz.
    [[nodiscard, gnu::always_inline]] constexpr tQuaternion operator*(tQuaternion const& other) const noexcept;
    /// Product with a scalar.
    [[nodiscard]] constexpr tQuaternion operator*(T scalar) const noexcept;
    /// Quotient by a scalar: a true division of each component.
    [[nodiscard]] constexpr tQuaternion operator/(T scalar) const noexcept;
    /// Sum, in place.
    constexpr tQuaternion& operator+=(tQuaternion const& other) noexcept { return *this = *this + other; }
    /// Difference, in place.
    constexpr tQuaternion& operator-=(tQuaternion const& other) noexcept { return *this = *this - other; }
    /// Product with a quaternion on the right, whose rotation is applied first.
    [[gnu::always_inline]] constexpr tQuaternion& operator*=(tQuaternion const& other) noexcept
    {
        return *this = *this * other;
    }
    /// Product with a scalar, in place.
    constexpr tQuaternion& operator*=(T scalar) noexcept { return *this = *this * scalar; }
    /// Quotient by a scalar, in place: a true division of each component.
    constexpr tQuaternion& operator/=(T scalar) noexcept { return *this = *this / scalar; }
    /// Equality component by component, tolerant (IsEqual()). The opposite quaternion is another one: see
    /// IsSameRotation().
    [[nodiscard, gnu::always_inline]] constexpr bool operator==(tQuaternion const& other) const noexcept;
    /// @}

    /// @name Streams
    /// @{
    /// Writes x, y, z and w as raw native bytes, with nothing before, between or after them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote. A stream that ends early leaves the remaining components as its `read` leaves
    /// them.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}
};

namespace detail
{

/// Whether a squared length is one for which tQuaternion::RotateBetween() goes the plain way.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IsNearOne(T square) noexcept
{
    return square >= T{0.25} && square <= T{4};
}

/// tQuaternion::RotateBetween() for directions that are nearly opposite, or whose lengths are not near 1.
template <typename T>
[[nodiscard]] tQuaternion<T> RotateFarBetween(tVector3<T> const& from, tVector3<T> const& to) noexcept;

} // namespace detail

template <typename T>
inline tQuaternion<T> tQuaternion<T>::RotateBetween(tVector3<T> const& from, tVector3<T> const& to) noexcept
{
    using Lanes = detail::tFour<T>;
    T const squareA = from.LengthSquared();
    T const squareB = to.LengthSquared();
    if (!(detail::IsNearOne(squareA) && detail::IsNearOne(squareB))) [[unlikely]]
        return detail::RotateFarBetween(from, to);
    T const lengths = detail::SquareRoot(squareA * squareB);
    T const dot = from.Dot(to);
    if (dot < T{-0.5} * lengths) [[unlikely]]
        return detail::RotateFarBetween(from, to);
    tVector3<T> const axis = from.Cross(to - from);
    T const real = lengths + dot;
    T const scale = T{1} / detail::SquareRoot(axis.LengthSquared() + real * real);
    return detail::MakeFrom<tQuaternion, T>(detail::Four(axis.x, axis.y, axis.z, real) *
                                            detail::Broadcast<Lanes>(scale));
}

template <typename T>
constexpr T tQuaternion<T>::Dot(tQuaternion const& other) const noexcept
{
    return (x * other.x + z * other.z) + (y * other.y + w * other.w);
}

template <typename T>
inline tQuaternion<T> tQuaternion<T>::Normalised() const noexcept
{
    return detail::MakeFrom<tQuaternion, T>(detail::UnitOf<T>(detail::LoadFour<T>(*this)));
}

template <typename T>
constexpr tQuaternion<T> tQuaternion<T>::Inverted() const noexcept
{
    if (std::is_constant_evaluated())
        return Conjugated() / LengthSquared();
    detail::tFour<T> const q = detail::LoadFour<T>(*this);
    T const lengthSquared = detail::SumOfFour<T>(q * q);
    return detail::MakeFrom<tQuaternion, T>(detail::Negated(detail::WithOppositeFourth<T>(q)) /
                                            detail::Broadcast<detail::tFour<T>>(lengthSquared));
}

template <typename T>
inline tMatrix4<T> tQuaternion<T>::GetMatrix() const noexcept
{
    using Matrix = tMatrix4<T>;
    detail::tFour<T> const q = detail::LoadFour<T>(*this);
    if (x == T{0} && (detail::Bits(q == detail::tFour<T>{}) & 7) == 7 && w == w) [[unlikely]]
        return Matrix();
    return Matrix(detail::RotationRows<T>(q, T{2} / detail::SumOfFour<T>(q * q)), Matrix::ORTHONORMAL);
}

template <typename T>
constexpr tVector3<T> tQuaternion<T>::Rotate(tVector3<T> const& vector) const noexcept
{
    if constexpr (detail::ROTATES_IN_LANES<T>)
    {
        if (!std::is_constant_evaluated())
            return detail::FirstThree<T>(
                detail::RotatedBy<T>(detail::LoadFour<T>(*this), detail::Four(vector.x, vector.y, vector.z, T{0})));
    }
    tVector3<T> const axis(x, y, z);
    tVector3<T> const cross = axis.Cross(vector);
    tVector3<T> const twice = cross + cross;
    return vector + twice * w + axis.Cross(twice);
}

template <typename T>
constexpr tQuaternion<T> tQuaternion<T>::operator+(tQuaternion const& other) const noexcept
{
    return {x + other.x, y + other.y, z + other.z, w + other.w};
}

template <typename T>
constexpr tQuaternion<T> tQuaternion<T>::operator-(tQuaternion const& other) const noexcept
{
    return {x - other.x, y - other.y, z - other.z, w - other.w};
}

template <typename T>
constexpr tQuaternion<T> tQuaternion<T>::operator*(tQuaternion const& other) const noexcept
{
    if (std::is_constant_evaluated())
        return {(w * other.x + (x * other.w + y * other.z)) - z * other.y,
                (w * other.y + (y * other.w + z * other.x)) - x * other.z,
                (w * other.z + (z * other.w + x * other.y)) - y * other.x,
                (w * other.w - (x * other.x + y * other.y)) - z * other.z};
    return detail::MakeFrom<tQuaternion, T>(
        detail::HamiltonProduct<T>(detail::LoadFour<T>(*this), detail::LoadFour<T>(other)));
}

template <typename T>
constexpr tQuaternion<T> tQuaternion<T>::operator*(T scalar) const noexcept
{
    return {x * scalar, y * scalar, z * scalar, w * scalar};
}

template <typename T>
constexpr tQuaternion<T> tQuaternion<T>::operator/(T scalar) const noexcept
{
    if (std::is_constant_evaluated())
        return {x / scalar, y / scalar, z / scalar, w / scalar};
    using Lanes = detail::tFour<T>;
    return detail::MakeFrom<tQuaternion, T>(detail::LoadFour<T>(*this) / detail::Broadcast<Lanes>(scalar));
}

template <typename T>
constexpr bool tQuaternion<T>::operator==(tQuaternion const& other) const noexcept
{
    return detail::IsSameComponent(x, other.x) && detail::IsSameComponent(y, other.y) &&
           detail::IsSameComponent(z, other.z) && detail::IsSameComponent(w, other.w);
}

/// Product with a scalar. The quaternion alone decides on the type: `2 * q` is fine for a quaternion of `float`.
template <typename T>
[[nodiscard]] constexpr tQuaternion<T> operator*(std::type_identity_t<T> scalar,
                                                 tQuaternion<T> const& quaternion) noexcept
{
    return quaternion * scalar;
}

/// Interpolation at constant angular speed, the shorter way: from `a` at t = 0 to `b`, or to its opposite where
/// Dot() is negative, at t = 1, both exactly. Other t go on along the same great circle.
///
/// Both must have length 1, which the result has, too, to within rounding. It is a * u + b * v with u and v computed in
/// `double`, the same bits everywhere for t from 0 to 1: sin(t * angle) / sin(angle) comes from a power series, for the
/// half of the way on which t is. So the angle is at most pi/4, and neither small ones nor quaternions that are nearly
/// opposite, which are nearly the same rotation, lose digits. Any other t goes through sin() and asin() of the C
/// library, and NaN gives NaN. K. Shoemake, "Animating Rotation with Quaternion Curves", 1985; D. Eberly, "A Fast and
/// Accurate Algorithm for Computing SLERP", 2011.
template <typename T>
[[nodiscard]] tQuaternion<T> Slerp(tQuaternion<T> const& a, tQuaternion<T> const& b,
                                   std::type_identity_t<T> t) noexcept;

/// Interpolation along the chord, the shorter way, normalised: (a * (1 - t) + b * s).Normalised(), where s is -t if
/// Dot() is negative and t otherwise. The way is that of Slerp(), and the speed is not constant: between rotations 90
/// degrees apart, the angle is off by up to 1 degree; between those 180 degrees apart, by up to 8.2.
template <typename T>
[[nodiscard]] tQuaternion<T> Nlerp(tQuaternion<T> const& a, tQuaternion<T> const& b,
                                   std::type_identity_t<T> t) noexcept;

/// Exponential: exp(w) * (u * (sin|u| / |u|), cos|u|) with u = (x, y, z), and exp(w) * (u, 1) where u is zero. Half a
/// rotation vector, the axis times the angle, gives the rotation. Goes through exp(), sin() and cos() of the C library.
template <typename T>
[[nodiscard]] tQuaternion<T> Exp(tQuaternion<T> const& quaternion) noexcept;

/// Logarithm: (u * (atan2(|u|, w) / |u|), log(length)) with u = (x, y, z), which Exp() takes back to the quaternion.
/// The length of its vector is half the angle of the rotation and at most pi; of a negative real number, it is pi along
/// the x axis. Zero gives (0, 0, 0, -infinity), or (pi, 0, 0, -infinity) where w is -0. Goes through atan2() and log()
/// of the C library.
template <typename T>
[[nodiscard]] tQuaternion<T> Log(tQuaternion<T> const& quaternion) noexcept;

/// Power: Exp() of the exponent times Log(), computed as the rotation by the angle times the exponent and the length to
/// that power, so that a quaternion of length 1 keeps it. An exponent of 0 gives the identity, and 1/2 half the
/// rotation. Goes through atan2(), sin(), cos() and pow() of the C library.
template <typename T>
[[nodiscard]] tQuaternion<T> Pow(tQuaternion<T> const& quaternion, std::type_identity_t<T> exponent) noexcept;

/// Writes x, y, z and w, joined by ", ": the text that a fresh stream of default settings in the classic locale gives.
/// The target's precision and flags do not apply to the numbers; its width and fill apply once, to the whole text.
template <typename T>
std::ostream& operator<<(std::ostream& stream, tQuaternion<T> const& quaternion);

extern template class BV_TEMPLATE tQuaternion<float>;
extern template class BV_TEMPLATE tQuaternion<double>;
extern template BV_TEMPLATE tQuaternion<float>::tQuaternion(tQuaternion<double> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<double>::tQuaternion(tQuaternion<float> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<float> operator*(float, tQuaternion<float> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<float> detail::RotateFarBetween(tVector3<float> const&,
                                                                        tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<double> operator*(double, tQuaternion<double> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<double> detail::RotateFarBetween(tVector3<double> const&,
                                                                         tVector3<double> const&) noexcept;
template <typename T>
inline tQuaternion<T> Nlerp(tQuaternion<T> const& a, tQuaternion<T> const& b, std::type_identity_t<T> t) noexcept
{
    using Lanes = detail::tFour<T>;
    Lanes const start = detail::LoadFour<T>(a);
    Lanes const end = detail::LoadFour<T>(b);
    T const share = detail::SumOfFour<T>(start * end) < T{0} ? -t : t;
    Lanes const sum = start * detail::Broadcast<Lanes>(T{1} - t) + end * detail::Broadcast<Lanes>(share);
    return detail::MakeFrom<tQuaternion<T>, T>(detail::UnitOf<T>(sum));
}

extern template BV_TEMPLATE tQuaternion<float> Slerp(tQuaternion<float> const&, tQuaternion<float> const&,
                                                     float) noexcept;
extern template BV_TEMPLATE tQuaternion<double> Slerp(tQuaternion<double> const&, tQuaternion<double> const&,
                                                      double) noexcept;
extern template BV_TEMPLATE tQuaternion<float> Nlerp(tQuaternion<float> const&, tQuaternion<float> const&,
                                                     float) noexcept;
extern template BV_TEMPLATE tQuaternion<double> Nlerp(tQuaternion<double> const&, tQuaternion<double> const&,
                                                      double) noexcept;
extern template BV_TEMPLATE tQuaternion<float> Exp(tQuaternion<float> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<double> Exp(tQuaternion<double> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<float> Log(tQuaternion<float> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<double> Log(tQuaternion<double> const&) noexcept;
extern template BV_TEMPLATE tQuaternion<float> Pow(tQuaternion<float> const&, float) noexcept;
extern template BV_TEMPLATE tQuaternion<double> Pow(tQuaternion<double> const&, double) noexcept;
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tQuaternion<float> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tQuaternion<double> const&);

static_assert(sizeof(tQuaternion<float>) == 4 * sizeof(float) && sizeof(tQuaternion<double>) == 4 * sizeof(double));
static_assert(offsetof(tQuaternion<float>, x) == 0 * sizeof(float));
static_assert(offsetof(tQuaternion<float>, y) == 1 * sizeof(float));
static_assert(offsetof(tQuaternion<float>, z) == 2 * sizeof(float));
static_assert(offsetof(tQuaternion<float>, w) == 3 * sizeof(float));
static_assert(offsetof(tQuaternion<double>, x) == 0 * sizeof(double));
static_assert(offsetof(tQuaternion<double>, y) == 1 * sizeof(double));
static_assert(offsetof(tQuaternion<double>, z) == 2 * sizeof(double));
static_assert(offsetof(tQuaternion<double>, w) == 3 * sizeof(double));
static_assert(std::is_trivially_copyable_v<tQuaternion<float>> && std::is_trivially_copyable_v<tQuaternion<double>>);

} // namespace bv::maths
