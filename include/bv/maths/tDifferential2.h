#pragma once

/// @file
/// A pair of derivatives in the plane.

#include <cstddef>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/tVector2.h"

namespace bv::maths
{

/// The two partial derivatives of a quantity in the plane, such as a texture coordinate, by two parameters u and v of
/// the screen or of a surface.
///
/// Differentials travel with rays and hit points and estimate the footprint that a texture is filtered over. Source:
/// Homan Igehy, "Tracing Ray Differentials", 1999.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tDifferential2
{
    tVector2<T> derivatives[2]; ///< by u, then by v

public:
    static constexpr std::size_t DIFF_U = 0; ///< index of the derivative by u
    static constexpr std::size_t DIFF_V = 1; ///< index of the derivative by v

    /// @name Construction
    /// @{
    /// Zero in both derivatives.
    constexpr tDifferential2() noexcept : derivatives{} {}
    /// The differential of these derivatives.
    constexpr tDifferential2(tVector2<T> const& u, tVector2<T> const& v) noexcept : derivatives{u, v} {}
    /// @}

    /// @name Access
    /// @{
    /// A derivative by index, `DIFF_U` or `DIFF_V`. The index is not checked.
    [[nodiscard]] constexpr tVector2<T> const& operator[](std::size_t index) const noexcept
    {
        return derivatives[index];
    }
    /// The same, to be changed.
    [[nodiscard]] constexpr tVector2<T>& operator()(std::size_t index) noexcept { return derivatives[index]; }
    /// @}

    /// @name Queries
    /// @{
    /// Radius of the footprint: the geometric mean of the two lengths, sqrt(|v| * |u|). The squares of components may
    /// overflow or underflow where the radius would not.
    [[nodiscard]] T GetRadius() const noexcept;
    /// Whether either derivative is null, that is, equal to zero in every component by IsEqual(). One degenerate
    /// direction is enough.
    [[nodiscard, gnu::always_inline]] constexpr bool IsNull() const noexcept;
    /// Whether either derivative is infinite in the sense of tVector2::IsInfinite(): +infinity in every component.
    [[nodiscard]] constexpr bool IsInfinite() const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Sets both derivatives. The arguments may be derivatives of this differential.
    constexpr void Set(tVector2<T> const& u, tVector2<T> const& v) noexcept { *this = {u, v}; }
    /// Sets both derivatives to the same vector.
    constexpr void Set(tVector2<T> const& derivative) noexcept { *this = {derivative, derivative}; }
    /// @}

    /// @name Operators
    /// The in-place forms return this differential; their operands may be parts of it and are read before it changes.
    /// @{
    /// A copy.
    [[nodiscard]] constexpr tDifferential2 operator+() const noexcept { return *this; }
    /// Both derivatives turned round; a zero component changes its sign, too.
    [[nodiscard]] constexpr tDifferential2 operator-() const noexcept;
    /// Sum, derivative by derivative.
    [[nodiscard]] constexpr tDifferential2 operator+(tDifferential2 const& other) const noexcept;
    /// Difference, derivative by derivative.
    [[nodiscard]] constexpr tDifferential2 operator-(tDifferential2 const& other) const noexcept;
    /// Both derivatives times a scalar.
    [[nodiscard]] constexpr tDifferential2 operator*(T const& scalar) const noexcept;
    /// Both derivatives times a vector, component by component.
    [[nodiscard]] constexpr tDifferential2 operator*(tVector2<T> const& factors) const noexcept;
    /// Sum, in place.
    constexpr tDifferential2& operator+=(tDifferential2 const& other) noexcept { return *this = *this + other; }
    /// Difference, in place.
    constexpr tDifferential2& operator-=(tDifferential2 const& other) noexcept { return *this = *this - other; }
    /// Product with a scalar, in place.
    constexpr tDifferential2& operator*=(T const& scalar) noexcept { return *this = *this * scalar; }
    /// Product with a vector, component by component, in place.
    constexpr tDifferential2& operator*=(tVector2<T> const& factors) noexcept { return *this = *this * factors; }
    /// Multiplies both derivatives by the reciprocal 1 / divisor, which is rounded first: not always the quotient.
    constexpr tDifferential2& operator/=(T const& divisor) noexcept { return *this = *this * (T{1} / divisor); }
    /// Divides both derivatives component by component; these are true divisions.
    constexpr tDifferential2& operator/=(tVector2<T> const& divisors) noexcept;
    /// @}
};

template <typename T>
inline T tDifferential2<T>::GetRadius() const noexcept
{
    return detail::SquareRoot(derivatives[DIFF_V].Length() * derivatives[DIFF_U].Length());
}

template <typename T>
constexpr bool tDifferential2<T>::IsNull() const noexcept
{
    constexpr tVector2<T> ZERO;
    return derivatives[DIFF_U] == ZERO || derivatives[DIFF_V] == ZERO;
}

template <typename T>
constexpr bool tDifferential2<T>::IsInfinite() const noexcept
{
    return derivatives[DIFF_U].IsInfinite() || derivatives[DIFF_V].IsInfinite();
}

template <typename T>
constexpr tDifferential2<T> tDifferential2<T>::operator-() const noexcept
{
    return {-derivatives[DIFF_U], -derivatives[DIFF_V]};
}

template <typename T>
constexpr tDifferential2<T> tDifferential2<T>::operator+(tDifferential2 const& other) const noexcept
{
    return {derivatives[DIFF_U] + other.derivatives[DIFF_U], derivatives[DIFF_V] + other.derivatives[DIFF_V]};
}

template <typename T>
constexpr tDifferential2<T> tDifferential2<T>::operator-(tDifferential2 const& other) const noexcept
{
    return {derivatives[DIFF_U] - other.derivatives[DIFF_U], derivatives[DIFF_V] - other.derivatives[DIFF_V]};
}

template <typename T>
constexpr tDifferential2<T> tDifferential2<T>::operator*(T const& scalar) const noexcept
{
    return {derivatives[DIFF_U] * scalar, derivatives[DIFF_V] * scalar};
}

template <typename T>
constexpr tDifferential2<T> tDifferential2<T>::operator*(tVector2<T> const& factors) const noexcept
{
    return {derivatives[DIFF_U] * factors, derivatives[DIFF_V] * factors};
}

template <typename T>
constexpr tDifferential2<T>& tDifferential2<T>::operator/=(tVector2<T> const& divisors) noexcept
{
    return *this = {derivatives[DIFF_U] / divisors, derivatives[DIFF_V] / divisors};
}

extern template class BV_TEMPLATE tDifferential2<float>;
extern template class BV_TEMPLATE tDifferential2<double>;

// The derivative by u comes first, the one by v right behind it.
static_assert(std::is_standard_layout_v<tDifferential2<float>> && std::is_standard_layout_v<tDifferential2<double>>);
static_assert(sizeof(tDifferential2<float>) == 2 * sizeof(tVector2<float>));
static_assert(sizeof(tDifferential2<double>) == 2 * sizeof(tVector2<double>));

} // namespace bv::maths
