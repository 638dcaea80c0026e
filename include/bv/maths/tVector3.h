#pragma once

/// @file
/// A vector or point in space.

#include <cstddef>
#include <iosfwd>
#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Components.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Precision.h"

namespace bv::maths
{

/// Vector or point in space.
///
/// The components lie side by side in memory, with nothing before, between or after them. No operation checks for zero:
/// dividing by zero and normalising a zero vector follow IEEE arithmetic. Every sum runs from x to z.
///
/// @tparam T `float` or `double`. For `int` and `unsigned int` the library holds the stream operations alone.
template <typename T>
class tVector3
{
public:
    T x; ///< component along the x axis
    T y; ///< component along the y axis
    T z; ///< component along the z axis

    /// @name Construction
    /// @{
    /// Zero in every component.
    constexpr tVector3() noexcept : x{}, y{}, z{} {}
    /// The vector of these components.
    constexpr tVector3(T xValue, T yValue, T zValue) noexcept : x{xValue}, y{yValue}, z{zValue} {}
    /// Reads x, y and z from three consecutive values; the pointer must not be null.
    explicit constexpr tVector3(T const* components) noexcept : x{components[0]}, y{components[1]}, z{components[2]} {}
    /// A null pointer has no components, and a single 0 is none.
    explicit tVector3(std::nullptr_t) = delete;
    /// Converts from the other precision, component by component, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    explicit constexpr tVector3(tVector3<U> const& other) noexcept
        : x{static_cast<T>(other.x)}, y{static_cast<T>(other.y)}, z{static_cast<T>(other.z)}
    {
    }
    /// @}

    /// @name Access
    /// @{
    /// Component by index, 0 for x up to 2 for z. The index is not checked.
    [[nodiscard]] constexpr T const& operator[](std::size_t index) const noexcept
    {
        return this->*detail::ComponentAt(detail::SPACE_COMPONENTS<tVector3, T>, index);
    }
    /// @copydoc operator[](std::size_t) const
    [[nodiscard]] constexpr T& operator[](std::size_t index) noexcept
    {
        return this->*detail::ComponentAt(detail::SPACE_COMPONENTS<tVector3, T>, index);
    }
    /// @}

    /// @name Queries
    /// @{
    /// Scalar product.
    [[nodiscard]] constexpr T Dot(tVector3 const& other) const noexcept;
    /// Vector product, right-handed: x cross y gives z.
    [[nodiscard]] constexpr tVector3 Cross(tVector3 const& other) const noexcept;
    /// Sum of the squared components.
    [[nodiscard]] constexpr T LengthSquared() const noexcept { return Dot(*this); }
    /// Euclidean length: the square root of LengthSquared(), which may overflow or underflow where the length would
    /// not.
    [[nodiscard]] T Length() const noexcept { return detail::SquareRoot(LengthSquared()); }
    /// The vector of length 1 in this direction: each component times 1 / Length(). A zero vector gives NaN; any other
    /// whose squared length underflows to 0 gives infinities, and NaN where a component is 0.
    [[nodiscard]] tVector3 Normalised() const noexcept;
    /// Whether every component is +infinity. Recognises that one value and no other: a vector with a finite, negative
    /// or NaN component is not infinite.
    [[nodiscard]] constexpr bool IsInfinite() const noexcept;
    /// Transform(), into a copy.
    /// @throws DivideByZeroException as Transform() does.
    [[nodiscard, gnu::always_inline]] inline tVector3 Transformed(tMatrix4<T> const& matrix) const;
    /// TransformAsVector(), into a copy.
    [[nodiscard, gnu::always_inline]] inline tVector3 TransformedAsVector(tMatrix4<T> const& matrix) const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Scales to length 1, as Normalised() does.
    /// @return this vector.
    tVector3& Normalise() noexcept { return *this = Normalised(); }
    /// Transforms as a point: w = 1 is appended, the column is multiplied by the matrix from the left, and the result
    /// is multiplied by the reciprocal of its w. Reads the state of the matrix first:
    /// - IDENTITY: unchanged, whatever the elements hold;
    /// - DIAGONAL: with q = 1/m44, (x * (q * m11), y * (q * m22), (q * m33) * z);
    /// - otherwise: with w = ((x * m41 + y * m42) + z * m43) + m44, each row (m_i1 * x + m_i2 * y + m_i3 * z + m_i4) *
    /// (1/w).
    ///
    /// Declared here and defined in `bv/maths/tMatrix4.h`.
    /// @return this vector.
    /// @throws DivideByZeroException when w is closer to zero than `TOLERANCE` (exactly the tolerance passes, and so
    ///         does NaN); the vector is then unchanged.
    [[gnu::always_inline]] inline tVector3& Transform(tMatrix4<T> const& matrix);
    /// Transforms as a direction: the linear part of the matrix only, so that a translation leaves it alone. A matrix
    /// in state IDENTITY leaves the vector unchanged, and one in state DIAGONAL scales by its first three diagonal
    /// elements alone: m44 and everything off the diagonal are ignored. For a matrix in state ORTHONORMAL, a vector of
    /// unit length (IsEqual()) is renormalised afterwards, so that rotating it over and over does not let its length
    /// drift.
    ///
    /// Declared here and defined in `bv/maths/tMatrix4.h`.
    /// @return this vector.
    [[gnu::always_inline]] inline tVector3& TransformAsVector(tMatrix4<T> const& matrix) noexcept;
    /// @}

    /// @name Operators
    /// The in-place forms return this vector; their operands may be parts of it and are read before it changes.
    /// @{
    /// The opposite vector; a zero component changes its sign, too.
    [[nodiscard]] constexpr tVector3 operator-() const noexcept { return {-x, -y, -z}; }
    /// Sum, component by component.
    [[nodiscard]] constexpr tVector3 operator+(tVector3 const& other) const noexcept;
    /// Difference, component by component.
    [[nodiscard]] constexpr tVector3 operator-(tVector3 const& other) const noexcept;
    /// Product with a scalar.
    [[nodiscard]] constexpr tVector3 operator*(T scalar) const noexcept;
    /// Product, component by component.
    [[nodiscard]] constexpr tVector3 operator*(tVector3 const& other) const noexcept;
    /// Quotient by a scalar: a true division of each component.
    [[nodiscard]] constexpr tVector3 operator/(T scalar) const noexcept;
    /// Quotient, component by component.
    [[nodiscard]] constexpr tVector3 operator/(tVector3 const& other) const noexcept;
    /// Sum, in place.
    constexpr tVector3& operator+=(tVector3 const& other) noexcept { return *this = *this + other; }
    /// Difference, in place.
    constexpr tVector3& operator-=(tVector3 const& other) noexcept { return *this = *this - other; }
    /// Product with a scalar, in place.
    constexpr tVector3& operator*=(T scalar) noexcept { return *this = *this * scalar; }
    /// Product, component by component, in place.
    constexpr tVector3& operator*=(tVector3 const& other) noexcept { return *this = *this * other; }
    /// Quotient by a scalar, in place: a true division of each component.
    constexpr tVector3& operator/=(T scalar) noexcept { return *this = *this / scalar; }
    /// Quotient, component by component, in place.
    constexpr tVector3& operator/=(tVector3 const& other) noexcept { return *this = *this / other; }
    /// Equality component by component: tolerant (IsEqual()) for floating-point types, exact for integers.
    [[nodiscard, gnu::always_inline]] constexpr bool operator==(tVector3 const& other) const noexcept;
    /// @}

    /// @name Streams
    /// @{
    /// Writes the components in order as raw native bytes, with nothing before, between or after them.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote. A stream that ends early leaves the remaining components as its `read` leaves
    /// them.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}

private:
    friend class tPreparedTransform<T>;

    [[nodiscard, gnu::always_inline]] inline tVector3 Rotated(tMatrix4<T> const& matrix) const noexcept;
    [[nodiscard, gnu::always_inline]] inline tVector3
    Projected(tMatrix4<T> const& matrix, detail::Place const& diagonal, detail::Place const& general) const;
    [[noreturn, gnu::cold]] static void ThrowDivisionByZero(detail::Place const& place);
};

template <typename T>
constexpr T tVector3<T>::Dot(tVector3 const& other) const noexcept
{
    return x * other.x + y * other.y + z * other.z;
}

template <typename T>
constexpr tVector3<T> tVector3<T>::Cross(tVector3 const& other) const noexcept
{
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

template <typename T>
inline tVector3<T> tVector3<T>::Normalised() const noexcept
{
    return *this * (T{1} / Length());
}

template <typename T>
constexpr bool tVector3<T>::IsInfinite() const noexcept
{
    static_assert(std::numeric_limits<T>::has_infinity);
    return x == std::numeric_limits<T>::infinity() && y == std::numeric_limits<T>::infinity() &&
           z == std::numeric_limits<T>::infinity();
}

template <typename T>
constexpr tVector3<T> tVector3<T>::operator+(tVector3 const& other) const noexcept
{
    return {x + other.x, y + other.y, z + other.z};
}

template <typename T>
constexpr tVector3<T> tVector3<T>::operator-(tVector3 const& other) const noexcept
{
    return {x - other.x, y - other.y, z - other.z};
}

template <typename T>
constexpr tVector3<T> tVector3<T>::operator*(T scalar) const noexcept
{
    return {x * scalar, y * scalar, z * scalar};
}

template <typename T>
constexpr tVector3<T> tVector3<T>::operator*(tVector3 const& other) const noexcept
{
    return {x * other.x, y * other.y, z * other.z};
}

template <typename T>
constexpr tVector3<T> tVector3<T>::operator/(T scalar) const noexcept
{
    return {x / scalar, y / scalar, z / scalar};
}

template <typename T>
constexpr tVector3<T> tVector3<T>::operator/(tVector3 const& other) const noexcept
{
    return {x / other.x, y / other.y, z / other.z};
}

template <typename T>
constexpr bool tVector3<T>::operator==(tVector3 const& other) const noexcept
{
    return detail::IsSameComponent(x, other.x) && detail::IsSameComponent(y, other.y) &&
           detail::IsSameComponent(z, other.z);
}

/// Product with a scalar. The vector alone decides on the type: `2 * v` is fine for a vector of `float`.
template <typename T>
[[nodiscard]] constexpr tVector3<T> operator*(std::type_identity_t<T> scalar, tVector3<T> const& vector) noexcept
{
    return vector * scalar;
}

/// Writes the components in order, x first, joined by ", ": the text that a fresh stream of default settings in the
/// classic locale gives. The target's precision and flags do not apply to the numbers; its width and fill apply once,
/// to the whole text.
template <typename T>
std::ostream& operator<<(std::ostream& stream, tVector3<T> const& vector);

extern template class BV_TEMPLATE tVector3<float>;
extern template class BV_TEMPLATE tVector3<double>;
extern template BV_TEMPLATE tVector3<float>::tVector3(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double>::tVector3(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> operator*(float, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> operator*(double, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE std::ostream& tVector3<int>::Serialise(std::ostream&) const;
extern template BV_TEMPLATE std::istream& tVector3<int>::Deserialise(std::istream&);
extern template BV_TEMPLATE std::ostream& tVector3<unsigned int>::Serialise(std::ostream&) const;
extern template BV_TEMPLATE std::istream& tVector3<unsigned int>::Deserialise(std::istream&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector3<int> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector3<unsigned int> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector3<float> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector3<double> const&);

static_assert(sizeof(tVector3<int>) == 3 * sizeof(int) && sizeof(tVector3<unsigned int>) == 3 * sizeof(unsigned int));
static_assert(sizeof(tVector3<float>) == 3 * sizeof(float) && sizeof(tVector3<double>) == 3 * sizeof(double));
static_assert(offsetof(tVector3<float>, x) == 0 * sizeof(float) && offsetof(tVector3<double>, x) == 0 * sizeof(double));
static_assert(offsetof(tVector3<float>, y) == 1 * sizeof(float) && offsetof(tVector3<double>, y) == 1 * sizeof(double));
static_assert(offsetof(tVector3<float>, z) == 2 * sizeof(float) && offsetof(tVector3<double>, z) == 2 * sizeof(double));

} // namespace bv::maths
