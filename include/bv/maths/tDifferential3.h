#pragma once

/// @file
/// A pair of derivatives in space.

#include <cstddef>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// The two partial derivatives of a quantity in space, such as a position or a direction, by two parameters u and v of
/// the screen or of a surface.
///
/// Differentials travel with rays and hit points and estimate the footprint that a texture is filtered over. Source:
/// Homan Igehy, "Tracing Ray Differentials", 1999.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tDifferential3
{
    tVector3<T> derivatives[2]; ///< by u, then by v

public:
    static constexpr std::size_t DIFF_U = 0; ///< index of the derivative by u
    static constexpr std::size_t DIFF_V = 1; ///< index of the derivative by v

    /// @name Construction
    /// @{
    /// Zero in both derivatives.
    constexpr tDifferential3() noexcept : derivatives{} {}
    /// The differential of these derivatives.
    constexpr tDifferential3(tVector3<T> const& u, tVector3<T> const& v) noexcept : derivatives{u, v} {}
    /// @}

    /// @name Access
    /// @{
    /// A derivative by index, `DIFF_U` or `DIFF_V`. The index is not checked.
    [[nodiscard]] constexpr tVector3<T> const& operator[](std::size_t index) const noexcept
    {
        return derivatives[index];
    }
    /// The same, to be changed.
    [[nodiscard]] constexpr tVector3<T>& operator()(std::size_t index) noexcept { return derivatives[index]; }
    /// @}

    /// @name Queries
    /// @{
    /// Radius of the footprint: the geometric mean of the two lengths, sqrt(|v| * |u|). The squares of components may
    /// overflow or underflow where the radius would not.
    [[nodiscard]] T GetRadius() const noexcept;
    /// Whether either derivative is null, that is, equal to zero in every component by IsEqual(). One degenerate
    /// direction is enough.
    [[nodiscard, gnu::always_inline]] constexpr bool IsNull() const noexcept;
    /// Whether either derivative is infinite in the sense of tVector3::IsInfinite(): +infinity in every component.
    [[nodiscard]] constexpr bool IsInfinite() const noexcept;
    /// TransformAsVector(), into a copy.
    [[nodiscard, gnu::always_inline]] inline tDifferential3
    TransformedAsVector(tMatrix4<T> const& matrix) const noexcept;
    /// Transform(), into a copy.
    [[nodiscard, gnu::always_inline]] inline tDifferential3
    Transformed(tMatrix4<T> const& matrix, tVector3<T> const& position, T const& weight) const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Sets both derivatives. The arguments may be derivatives of this differential.
    constexpr void Set(tVector3<T> const& u, tVector3<T> const& v) noexcept { *this = {u, v}; }
    /// Sets both derivatives to the same vector.
    constexpr void Set(tVector3<T> const& derivative) noexcept { *this = {derivative, derivative}; }
    /// Transforms both derivatives as directions, each with tVector3::TransformAsVector(): the linear part of the
    /// matrix only.
    /// @return this differential.
    [[gnu::always_inline]] inline tDifferential3& TransformAsVector(tMatrix4<T> const& matrix) noexcept;
    /// Carries the derivatives of a point through a projective transform of that point: differentiates (matrix * point)
    /// / w. Each derivative d becomes (d' - s * position) * (1 / weight), where d' is d transformed with
    /// tVector3::TransformAsVector() and s = d.x * m41 + d.y * m42 + d.z * m43 is the derivative of w. The fourth row
    /// of the matrix is read whatever its state says.
    /// @param matrix the transform.
    /// @param position where the transform takes the point to, after the division by w.
    /// @param weight the homogeneous coordinate w of the transformed point; not checked, zero follows IEEE arithmetic.
    /// @return this differential. The arguments may be parts of it and are read before it changes.
    [[gnu::always_inline]] inline tDifferential3& Transform(tMatrix4<T> const& matrix, tVector3<T> const& position,
                                                            T const& weight) noexcept;
    /// @}

    /// @name Operators
    /// The in-place forms return this differential; their operands may be parts of it and are read before it changes.
    /// @{
    /// A copy.
    [[nodiscard]] constexpr tDifferential3 operator+() const noexcept { return *this; }
    /// Both derivatives turned round; a zero component changes its sign, too.
    [[nodiscard]] constexpr tDifferential3 operator-() const noexcept;
    /// Sum, derivative by derivative.
    [[nodiscard]] constexpr tDifferential3 operator+(tDifferential3 const& other) const noexcept;
    /// Difference, derivative by derivative.
    [[nodiscard]] constexpr tDifferential3 operator-(tDifferential3 const& other) const noexcept;
    /// Both derivatives times a scalar.
    [[nodiscard]] constexpr tDifferential3 operator*(T const& scalar) const noexcept;
    /// Both derivatives times a vector, component by component.
    [[nodiscard]] constexpr tDifferential3 operator*(tVector3<T> const& factors) const noexcept;
    /// Sum, in place.
    constexpr tDifferential3& operator+=(tDifferential3 const& other) noexcept { return *this = *this + other; }
    /// Difference, in place.
    constexpr tDifferential3& operator-=(tDifferential3 const& other) noexcept { return *this = *this - other; }
    /// Product with a scalar, in place.
    constexpr tDifferential3& operator*=(T const& scalar) noexcept { return *this = *this * scalar; }
    /// Product with a vector, component by component, in place.
    constexpr tDifferential3& operator*=(tVector3<T> const& factors) noexcept { return *this = *this * factors; }
    /// Multiplies both derivatives by the reciprocal 1 / divisor, which is rounded first: not always the quotient.
    constexpr tDifferential3& operator/=(T const& divisor) noexcept { return *this = *this * (T{1} / divisor); }
    /// Divides both derivatives component by component; these are true divisions.
    constexpr tDifferential3& operator/=(tVector3<T> const& divisors) noexcept;
    /// @}

private:
    [[nodiscard, gnu::always_inline]] static inline tVector3<T> Projected(tVector3<T> const& derivative,
                                                                          tMatrix4<T> const& matrix,
                                                                          tVector3<T> const& position,
                                                                          T const& weight) noexcept;
};

template <typename T>
inline T tDifferential3<T>::GetRadius() const noexcept
{
    return detail::SquareRoot(derivatives[DIFF_V].Length() * derivatives[DIFF_U].Length());
}

template <typename T>
constexpr bool tDifferential3<T>::IsNull() const noexcept
{
    constexpr tVector3<T> ZERO;
    return derivatives[DIFF_U] == ZERO || derivatives[DIFF_V] == ZERO;
}

template <typename T>
constexpr bool tDifferential3<T>::IsInfinite() const noexcept
{
    return derivatives[DIFF_U].IsInfinite() || derivatives[DIFF_V].IsInfinite();
}

template <typename T>
inline tDifferential3<T> tDifferential3<T>::TransformedAsVector(tMatrix4<T> const& matrix) const noexcept
{
    return {derivatives[DIFF_U].TransformedAsVector(matrix), derivatives[DIFF_V].TransformedAsVector(matrix)};
}

template <typename T>
inline tDifferential3<T> tDifferential3<T>::Transformed(tMatrix4<T> const& matrix, tVector3<T> const& position,
                                                        T const& weight) const noexcept
{
    return {Projected(derivatives[DIFF_U], matrix, position, weight),
            Projected(derivatives[DIFF_V], matrix, position, weight)};
}

template <typename T>
inline tDifferential3<T>& tDifferential3<T>::TransformAsVector(tMatrix4<T> const& matrix) noexcept
{
    return *this = TransformedAsVector(matrix);
}

template <typename T>
inline tDifferential3<T>& tDifferential3<T>::Transform(tMatrix4<T> const& matrix, tVector3<T> const& position,
                                                       T const& weight) noexcept
{
    return *this = Transformed(matrix, position, weight);
}

template <typename T>
constexpr tDifferential3<T> tDifferential3<T>::operator-() const noexcept
{
    return {-derivatives[DIFF_U], -derivatives[DIFF_V]};
}

template <typename T>
constexpr tDifferential3<T> tDifferential3<T>::operator+(tDifferential3 const& other) const noexcept
{
    return {derivatives[DIFF_U] + other.derivatives[DIFF_U], derivatives[DIFF_V] + other.derivatives[DIFF_V]};
}

template <typename T>
constexpr tDifferential3<T> tDifferential3<T>::operator-(tDifferential3 const& other) const noexcept
{
    return {derivatives[DIFF_U] - other.derivatives[DIFF_U], derivatives[DIFF_V] - other.derivatives[DIFF_V]};
}

template <typename T>
constexpr tDifferential3<T> tDifferential3<T>::operator*(T const& scalar) const noexcept
{
    return {derivatives[DIFF_U] * scalar, derivatives[DIFF_V] * scalar};
}

template <typename T>
constexpr tDifferential3<T> tDifferential3<T>::operator*(tVector3<T> const& factors) const noexcept
{
    return {derivatives[DIFF_U] * factors, derivatives[DIFF_V] * factors};
}

template <typename T>
constexpr tDifferential3<T>& tDifferential3<T>::operator/=(tVector3<T> const& divisors) noexcept
{
    return *this = {derivatives[DIFF_U] / divisors, derivatives[DIFF_V] / divisors};
}

/// One derivative of Transform().
template <typename T>
inline tVector3<T> tDifferential3<T>::Projected(tVector3<T> const& derivative, tMatrix4<T> const& matrix,
                                                tVector3<T> const& position, T const& weight) noexcept
{
    T const weightDerivative = derivative.x * matrix[tMatrix4<T>::IDX_41] + derivative.y * matrix[tMatrix4<T>::IDX_42] +
                               derivative.z * matrix[tMatrix4<T>::IDX_43];
    return (derivative.TransformedAsVector(matrix) - position * weightDerivative) * (T{1} / weight);
}

extern template class BV_TEMPLATE tDifferential3<float>;
extern template class BV_TEMPLATE tDifferential3<double>;

// The derivative by u comes first, the one by v right behind it.
static_assert(std::is_standard_layout_v<tDifferential3<float>> && std::is_standard_layout_v<tDifferential3<double>>);
static_assert(sizeof(tDifferential3<float>) == 2 * sizeof(tVector3<float>));
static_assert(sizeof(tDifferential3<double>) == 2 * sizeof(tVector3<double>));

} // namespace bv::maths
