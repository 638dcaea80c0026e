#pragma once

/// @file
/// A vector or point in the plane.

#include <cstddef>
#include <iosfwd>
#include <limits>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Components.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Precision.h"

namespace bv::maths
{

/// Vector or point in the plane.
///
/// The components lie side by side in memory, with nothing before, between or after them. No operation checks for zero:
/// dividing by zero and normalising a zero vector follow IEEE arithmetic. Every sum runs from x to y.
///
/// @tparam T `float` or `double`. For `int` and `unsigned int` the library holds the stream operations alone.
template <typename T>
class tVector2
{
public:
    T x; ///< component along the x axis
    T y; ///< component along the y axis

    /// @name Construction
    /// @{
    /// Zero in every component.
    constexpr tVector2() noexcept : x{}, y{} {}
    /// The vector of these components.
    constexpr tVector2(T xValue, T yValue) noexcept : x{xValue}, y{yValue} {}
    /// Reads x and y from two consecutive values; the pointer must not be null.
    explicit constexpr tVector2(T const* components) noexcept : x{components[0]}, y{components[1]} {}
    /// A null pointer has no components, and a single 0 is none.
    explicit tVector2(std::nullptr_t) = delete;
    /// Converts from the other precision, component by component, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    explicit constexpr tVector2(tVector2<U> const& other) noexcept
        : x{static_cast<T>(other.x)}, y{static_cast<T>(other.y)}
    {
    }
    /// @}

    /// @name Access
    /// @{
    /// Component by index, 0 for x up to 1 for y. The index is not checked.
    [[nodiscard]] constexpr T const& operator[](std::size_t index) const noexcept
    {
        return this->*detail::ComponentAt(detail::PLANE_COMPONENTS<tVector2, T>, index);
    }
    /// @copydoc operator[](std::size_t) const
    [[nodiscard]] constexpr T& operator[](std::size_t index) noexcept
    {
        return this->*detail::ComponentAt(detail::PLANE_COMPONENTS<tVector2, T>, index);
    }
    /// @}

    /// @name Queries
    /// @{
    /// Scalar product.
    [[nodiscard]] constexpr T Dot(tVector2 const& other) const noexcept;
    /// Sum of the squared components.
    [[nodiscard]] constexpr T LengthSquared() const noexcept { return Dot(*this); }
    /// Euclidean length: the square root of LengthSquared(), which may overflow or underflow where the length would
    /// not.
    [[nodiscard]] T Length() const noexcept { return detail::SquareRoot(LengthSquared()); }
    /// The vector of length 1 in this direction: each component times 1 / Length(). A zero vector gives NaN; any other
    /// whose squared length underflows to 0 gives infinities, and NaN where a component is 0.
    [[nodiscard]] tVector2 Normalised() const noexcept;
    /// Whether every component is +infinity. Recognises that one value and no other: a vector with a finite, negative
    /// or NaN component is not infinite.
    [[nodiscard]] constexpr bool IsInfinite() const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Scales to length 1, as Normalised() does.
    /// @return this vector.
    tVector2& Normalise() noexcept { return *this = Normalised(); }
    /// @}

    /// @name Operators
    /// The in-place forms return this vector; their operands may be parts of it and are read before it changes.
    /// @{
    /// The opposite vector; a zero component changes its sign, too.
    [[nodiscard]] constexpr tVector2 operator-() const noexcept { return {-x, -y}; }
    /// Sum, component by component.
    [[nodiscard]] constexpr tVector2 operator+(tVector2 const& other) const noexcept;
    /// Difference, component by component.
    [[nodiscard]] constexpr tVector2 operator-(tVector2 const& other) const noexcept;
    /// Product with a scalar.
    [[nodiscard]] constexpr tVector2 operator*(T scalar) const noexcept;
    /// Product, component by component.
    [[nodiscard]] constexpr tVector2 operator*(tVector2 const& other) const noexcept;
    /// Quotient by a scalar: a true division of each component.
    [[nodiscard]] constexpr tVector2 operator/(T scalar) const noexcept;
    /// Quotient, component by component.
    [[nodiscard]] constexpr tVector2 operator/(tVector2 const& other) const noexcept;
    /// Sum, in place.
    constexpr tVector2& operator+=(tVector2 const& other) noexcept { return *this = *this + other; }
    /// Difference, in place.
    constexpr tVector2& operator-=(tVector2 const& other) noexcept { return *this = *this - other; }
    /// Product with a scalar, in place.
    constexpr tVector2& operator*=(T scalar) noexcept { return *this = *this * scalar; }
    /// Product, component by component, in place.
    constexpr tVector2& operator*=(tVector2 const& other) noexcept { return *this = *this * other; }
    /// Quotient by a scalar, in place: a true division of each component.
    constexpr tVector2& operator/=(T scalar) noexcept { return *this = *this / scalar; }
    /// Quotient, component by component, in place.
    constexpr tVector2& operator/=(tVector2 const& other) noexcept { return *this = *this / other; }
    /// Equality component by component: tolerant (IsEqual()) for floating-point types, exact for integers.
    [[nodiscard, gnu::always_inline]] constexpr bool operator==(tVector2 const& other) const noexcept;
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
};

template <typename T>
constexpr T tVector2<T>::Dot(tVector2 const& other) const noexcept
{
    return x * other.x + y * other.y;
}

template <typename T>
inline tVector2<T> tVector2<T>::Normalised() const noexcept
{
    return *this * (T{1} / Length());
}

template <typename T>
constexpr bool tVector2<T>::IsInfinite() const noexcept
{
    static_assert(std::numeric_limits<T>::has_infinity);
    return x == std::numeric_limits<T>::infinity() && y == std::numeric_limits<T>::infinity();
}

template <typename T>
constexpr tVector2<T> tVector2<T>::operator+(tVector2 const& other) const noexcept
{
    return {x + other.x, y + other.y};
}

template <typename T>
constexpr tVector2<T> tVector2<T>::operator-(tVector2 const& other) const noexcept
{
    return {x - other.x, y - other.y};
}

template <typename T>
constexpr tVector2<T> tVector2<T>::operator*(T scalar) const noexcept
{
    return {x * scalar, y * scalar};
}

template <typename T>
constexpr tVector2<T> tVector2<T>::operator*(tVector2 const& other) const noexcept
{
    return {x * other.x, y * other.y};
}

template <typename T>
constexpr tVector2<T> tVector2<T>::operator/(T scalar) const noexcept
{
    return {x / scalar, y / scalar};
}

template <typename T>
constexpr tVector2<T> tVector2<T>::operator/(tVector2 const& other) const noexcept
{
    return {x / other.x, y / other.y};
}

template <typename T>
constexpr bool tVector2<T>::operator==(tVector2 const& other) const noexcept
{
    return detail::IsSameComponent(x, other.x) && detail::IsSameComponent(y, other.y);
}

/// Product with a scalar. The vector alone decides on the type: `2 * v` is fine for a vector of `float`.
template <typename T>
[[nodiscard]] constexpr tVector2<T> operator*(std::type_identity_t<T> scalar, tVector2<T> const& vector) noexcept
{
    return vector * scalar;
}

/// Writes the components in order, x first, joined by ", ": the text that a fresh stream of default settings in the
/// classic locale gives. The target's precision and flags do not apply to the numbers; its width and fill apply once,
/// to the whole text.
template <typename T>
std::ostream& operator<<(std::ostream& stream, tVector2<T> const& vector);

extern template class BV_TEMPLATE tVector2<float>;
extern template class BV_TEMPLATE tVector2<double>;
extern template BV_TEMPLATE tVector2<float>::tVector2(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double>::tVector2(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> operator*(float, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> operator*(double, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE std::ostream& tVector2<int>::Serialise(std::ostream&) const;
extern template BV_TEMPLATE std::istream& tVector2<int>::Deserialise(std::istream&);
extern template BV_TEMPLATE std::ostream& tVector2<unsigned int>::Serialise(std::ostream&) const;
extern template BV_TEMPLATE std::istream& tVector2<unsigned int>::Deserialise(std::istream&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector2<int> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector2<unsigned int> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector2<float> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tVector2<double> const&);

static_assert(sizeof(tVector2<int>) == 2 * sizeof(int) && sizeof(tVector2<unsigned int>) == 2 * sizeof(unsigned int));
static_assert(sizeof(tVector2<float>) == 2 * sizeof(float) && sizeof(tVector2<double>) == 2 * sizeof(double));
static_assert(offsetof(tVector2<float>, x) == 0 * sizeof(float) && offsetof(tVector2<double>, x) == 0 * sizeof(double));
static_assert(offsetof(tVector2<float>, y) == 1 * sizeof(float) && offsetof(tVector2<double>, y) == 1 * sizeof(double));

} // namespace bv::maths
