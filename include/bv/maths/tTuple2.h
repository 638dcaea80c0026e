#pragma once

/// @file
/// A plain group of two numbers.

#include <cstddef>
#include <iosfwd>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Components.h"
#include "bv/maths/detail/Precision.h"

/// Writes the components in order, x first, joined by ", ": the text that a fresh stream of default settings in the
/// classic locale gives. The target's precision and flags do not apply to the numbers; its width and fill apply once,
/// to the whole text.
template <typename T>
std::ostream& operator<<(std::ostream& stream, bv::maths::tTuple2<T> const& tuple);

namespace bv::maths
{

/// Two numbers that belong together: grid coordinates, sizes, indices, colours.
///
/// The components lie side by side in memory, with nothing before, between or after them.
///
/// @tparam T `int`, `unsigned int`, `float` or `double`; all four instances are in the library.
template <typename T>
class tTuple2
{
public:
    T x; ///< first component
    T y; ///< second component

    /// @name Construction
    /// @{
    /// Zero in every component.
    constexpr tTuple2() noexcept : x{}, y{} {}
    /// The tuple of these components.
    constexpr tTuple2(T xValue, T yValue) noexcept : x{xValue}, y{yValue} {}
    /// Reads x and y from two consecutive values; the pointer must not be null.
    explicit constexpr tTuple2(T const* components) noexcept : x{components[0]}, y{components[1]} {}
    /// A null pointer has no components, and a single 0 is none.
    explicit tTuple2(std::nullptr_t) = delete;
    /// Converts from the other precision, component by component, rounding to nearest.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    explicit constexpr tTuple2(tTuple2<U> const& other) noexcept
        : x{static_cast<T>(other.x)}, y{static_cast<T>(other.y)}
    {
    }
    /// @}

    /// @name Access
    /// @{
    /// Component by index, 0 for x up to 1 for y. The index is not checked.
    [[nodiscard]] constexpr T const& operator[](std::size_t index) const noexcept
    {
        return this->*detail::ComponentAt(detail::PLANE_COMPONENTS<tTuple2, T>, index);
    }
    /// @copydoc operator[](std::size_t) const
    [[nodiscard]] constexpr T& operator[](std::size_t index) noexcept
    {
        return this->*detail::ComponentAt(detail::PLANE_COMPONENTS<tTuple2, T>, index);
    }
    /// @}

    /// @name Queries
    /// @{
    /// Hash of the components' native bytes: the one-at-a-time hash of the last component from seed 0, whose result
    /// seeds the hash of the one before it, down to x. 0.0 and -0.0 hash differently; equal bit patterns hash alike.
    [[nodiscard]] unsigned int GetHash32() const noexcept;
    /// Hash of the components' bytes in 8 bits: Pearson's hash, chained as in GetHash32().
    [[nodiscard]] unsigned char GetHash8() const noexcept;
    /// @}

    /// @name Operators
    /// Integers are computed as the language does it. The in-place forms return this tuple; their operands may be parts
    /// of it and are read before it changes.
    /// @{
    /// The opposite tuple, for signed types; a zero component of a floating-point type changes its sign, too.
    template <typename Signed = T, typename = detail::Where<std::is_signed_v<Signed>>>
    [[nodiscard]] constexpr tTuple2 operator-() const noexcept
    {
        return {-x, -y};
    }
    /// Sum, component by component.
    [[nodiscard]] constexpr tTuple2 operator+(tTuple2 const& other) const noexcept;
    /// Difference, component by component.
    [[nodiscard]] constexpr tTuple2 operator-(tTuple2 const& other) const noexcept;
    /// Product with a scalar.
    [[nodiscard]] constexpr tTuple2 operator*(T scalar) const noexcept;
    /// Quotient by a scalar: a division of each component, which integers cut towards zero. They must not be divided by
    /// zero.
    [[nodiscard]] constexpr tTuple2 operator/(T scalar) const noexcept;
    /// Sum, in place.
    constexpr tTuple2& operator+=(tTuple2 const& other) noexcept { return *this = *this + other; }
    /// Difference, in place.
    constexpr tTuple2& operator-=(tTuple2 const& other) noexcept { return *this = *this - other; }
    /// Product with a scalar, in place.
    constexpr tTuple2& operator*=(T scalar) noexcept { return *this = *this * scalar; }
    /// Quotient by a scalar, in place, as `/` has it.
    constexpr tTuple2& operator/=(T scalar) noexcept { return *this = *this / scalar; }
    /// Equality component by component: tolerant (IsEqual()) for floating-point types, exact for integers.
    [[nodiscard]] constexpr bool operator==(tTuple2 const& other) const noexcept;
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
    /// The operator at global scope, for namespaces that see it by argument-dependent lookup alone.
    [[gnu::always_inline]] friend std::ostream& operator<<(std::ostream& stream, tTuple2 const& tuple)
    {
        return ::operator<< <T>(stream, tuple);
    }
    /// @}
};

template <typename T>
constexpr tTuple2<T> tTuple2<T>::operator+(tTuple2 const& other) const noexcept
{
    return {x + other.x, y + other.y};
}

template <typename T>
constexpr tTuple2<T> tTuple2<T>::operator-(tTuple2 const& other) const noexcept
{
    return {x - other.x, y - other.y};
}

template <typename T>
constexpr tTuple2<T> tTuple2<T>::operator*(T scalar) const noexcept
{
    return {x * scalar, y * scalar};
}

template <typename T>
constexpr tTuple2<T> tTuple2<T>::operator/(T scalar) const noexcept
{
    return {x / scalar, y / scalar};
}

template <typename T>
constexpr bool tTuple2<T>::operator==(tTuple2 const& other) const noexcept
{
    return detail::IsSameComponent(x, other.x) && detail::IsSameComponent(y, other.y);
}

extern template class BV_TEMPLATE tTuple2<int>;
extern template class BV_TEMPLATE tTuple2<unsigned int>;
extern template class BV_TEMPLATE tTuple2<float>;
extern template class BV_TEMPLATE tTuple2<double>;
extern template BV_TEMPLATE tTuple2<int> tTuple2<int>::operator-<>() const noexcept;
extern template BV_TEMPLATE tTuple2<float> tTuple2<float>::operator-<>() const noexcept;
extern template BV_TEMPLATE tTuple2<double> tTuple2<double>::operator-<>() const noexcept;
extern template BV_TEMPLATE tTuple2<float>::tTuple2(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double>::tTuple2(tTuple2<float> const&) noexcept;

static_assert(sizeof(tTuple2<int>) == 2 * sizeof(int) && sizeof(tTuple2<unsigned int>) == 2 * sizeof(unsigned int));
static_assert(sizeof(tTuple2<float>) == 2 * sizeof(float) && sizeof(tTuple2<double>) == 2 * sizeof(double));
static_assert(offsetof(tTuple2<float>, x) == 0 * sizeof(float) && offsetof(tTuple2<double>, x) == 0 * sizeof(double));
static_assert(offsetof(tTuple2<float>, y) == 1 * sizeof(float) && offsetof(tTuple2<double>, y) == 1 * sizeof(double));

} // namespace bv::maths

extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<int> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<unsigned int> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<float> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<double> const&);
