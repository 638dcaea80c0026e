#pragma once

/// @file
/// The transformation of many vectors by one matrix.

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// What a matrix does to points and directions, made ready for many of them.
///
/// The matrix is read once, with its state, and is not needed any more: what is written to it later makes no difference
/// here. In a loop the columns stay in registers, and a point is not divided by w where the fourth row is that of an
/// affine matrix, so this is the form for one matrix and an array of points:
///
///     tPreparedTransform<float> const map(matrix);
///     for (tVector3<float>& point : points)
///         point = map(point);
///
/// Each result has the bits that tVector3::Transformed() and tVector3::TransformedAsVector() give for the matrix, and a
/// point that they refuse is refused with the same exception.
///
/// The object has no pointer in it: it can be copied as bytes.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tPreparedTransform
{
    /// What becomes of a point.
    enum class Points : std::uint32_t
    {
        KEEP,   ///< nothing
        SCALE,  ///< each component has a factor, in the first column
        REFUSE, ///< the factors could not be computed
        MOVE,   ///< the fourth row is (0, 0, 0, 1)
        PROJECT ///< the result is divided by its w
    };
    /// What becomes of a direction.
    enum class Directions : std::uint32_t
    {
        KEEP,  ///< nothing
        SCALE, ///< each component has a factor, in the second column
        TURN,  ///< the first three columns apply
        ROTATE ///< the same, and what had length 1 is normalised
    };

    alignas(16) T columns[16]; ///< one after the other
    Points points;             ///< what becomes of a point
    Directions directions;     ///< what becomes of a direction

public:
    /// @name Construction
    /// @{
    /// The identity.
    constexpr tPreparedTransform() noexcept : columns{}, points{Points::KEEP}, directions{Directions::KEEP} {}
    /// What this matrix does by its state and elements as they are now, a stale state included.
    [[gnu::always_inline]] inline explicit tPreparedTransform(tMatrix4<T> const& matrix) noexcept;
    /// @}

    /// @name Queries
    /// @{
    /// The image of a point, as tVector3::Transformed() gives it.
    /// @throws DivideByZeroException when that function does, and as if from there.
    [[nodiscard, gnu::always_inline]] inline tVector3<T> operator()(tVector3<T> const& point) const;
    /// The image of a direction, as tVector3::TransformedAsVector() gives it.
    [[nodiscard, gnu::always_inline]] inline tVector3<T> Direction(tVector3<T> const& direction) const noexcept;
    /// @}

private:
    using Row = detail::tFour<T>;
    using Vector = tVector3<T>;

    [[gnu::always_inline]] inline void PrepareDiagonal(T const* m) noexcept;
    [[nodiscard, gnu::always_inline]] inline Row Turned(T x, T y, T z) const noexcept;
    template <std::size_t COLUMN>
    [[nodiscard, gnu::always_inline]] Row Column() const noexcept
    {
        return detail::LoadAligned<Row>(columns + 4 * COLUMN);
    }
};

template <typename T>
inline void tPreparedTransform<T>::PrepareDiagonal(T const* m) noexcept
{
    using Matrix = tMatrix4<T>;
    T const m11 = m[Matrix::IDX_11], m22 = m[Matrix::IDX_22], m33 = m[Matrix::IDX_33], m44 = m[Matrix::IDX_44];
    directions = Directions::SCALE;
    detail::StoreAligned(detail::Four(m11, m22, m33, T{0}), columns + 4);
    points = detail::IsTooSmall(m44, TOLERANCE<T>) ? Points::REFUSE : Points::SCALE;
    if (points == Points::REFUSE)
        return;
    T const reciprocal = T{1} / m44;
    detail::StoreAligned(detail::Four(reciprocal * m11, reciprocal * m22, reciprocal * m33, T{0}), columns);
}

template <typename T>
inline tPreparedTransform<T>::tPreparedTransform(tMatrix4<T> const& matrix) noexcept : tPreparedTransform()
{
    if (matrix.IsIdentity())
        return;
    T const* const m = matrix.Get();
    if (matrix.IsDiagonal())
    {
        PrepareDiagonal(m);
        return;
    }
    detail::StoreRows(detail::Transposed(detail::LoadRows(m)), columns);
    // Finite components then give w = ((x * 0 + y * 0) + z * 0) + 1, which is 1, whatever the signs of the zeros; any
    // other gives NaN. So the reciprocal of w is w, and no w is too small.
    using Matrix = tMatrix4<T>;
    bool const isAffine = m[Matrix::IDX_41] == T{0} && m[Matrix::IDX_42] == T{0} && m[Matrix::IDX_43] == T{0} &&
                          m[Matrix::IDX_44] == T{1};
    points = isAffine ? Points::MOVE : Points::PROJECT;
    directions = matrix.IsOrthonormal() ? Directions::ROTATE : Directions::TURN;
}

template <typename T>
inline tVector3<T> tPreparedTransform<T>::operator()(Vector const& point) const
{
    auto const [x, y, z] = point;
    Row image;
    if (points == Points::MOVE)
    {
        image = detail::Combine<T>(Column<0>(), Column<1>(), Column<2>(), x, y, z) + Column<3>();
        image = image * detail::Choose<3, 3, 3, 3>(image);
    }
    else if (points == Points::PROJECT)
    {
        image = detail::Combine<T>(Column<0>(), Column<1>(), Column<2>(), x, y, z) + Column<3>();
        T const w = detail::Get<3>(image);
        if (detail::IsTooSmall(w, TOLERANCE<T>))
            Vector::ThrowDivisionByZero(detail::TRANSFORMED_GENERAL);
        image = image * detail::Broadcast<Row>(T{1} / w);
    }
    else
    {
        if (points == Points::REFUSE)
            Vector::ThrowDivisionByZero(detail::TRANSFORMED_DIAGONAL);
        image = detail::Four(x, y, z, T{0});
        if (points == Points::SCALE)
            image = image * Column<0>();
    }
    return detail::FirstThree<T>(image);
}

// The linear part alone, with the third number twice: the fourth row has no part in it, nor in its flags.
template <typename T>
inline typename tPreparedTransform<T>::Row tPreparedTransform<T>::Turned(T x, T y, T z) const noexcept
{
    Row const column1 = Column<0>(), column2 = Column<1>(), column3 = Column<2>();
    if constexpr (detail::IS_HALVED<Row>)
    {
        // On its own: Clang would take the second half as it is, since it sees that one lane is used.
        using Pair = detail::Half<Row>;
        T const third = detail::Get<2>(column1) * x + detail::Get<2>(column2) * y + detail::Get<2>(column3) * z;
        return {column1.low * detail::Broadcast<Pair>(x) + column2.low * detail::Broadcast<Pair>(y) +
                    column3.low * detail::Broadcast<Pair>(z),
                Pair{third, third}};
    }
    else
        return detail::Combine<T>(detail::Choose<0, 1, 2, 2>(column1), detail::Choose<0, 1, 2, 2>(column2),
                                  detail::Choose<0, 1, 2, 2>(column3), x, y, z);
}

template <typename T>
inline tVector3<T> tPreparedTransform<T>::Direction(Vector const& direction) const noexcept
{
    auto const [x, y, z] = direction;
    Row image;
    if (directions >= Directions::TURN)
    {
        image = Turned(x, y, z);
        if (directions == Directions::ROTATE && IsEqual(direction.LengthSquared(), T{1}))
            image = image * detail::Broadcast<Row>(T{1} / detail::FirstThree<T>(image).Length());
    }
    else
    {
        image = detail::Four(x, y, z, T{0});
        if (directions == Directions::SCALE)
            image = image * Column<1>();
    }
    return detail::FirstThree<T>(image);
}

extern template class BV_TEMPLATE tPreparedTransform<float>;
extern template class BV_TEMPLATE tPreparedTransform<double>;

static_assert(std::is_trivially_copyable_v<tPreparedTransform<float>>);
static_assert(std::is_trivially_copyable_v<tPreparedTransform<double>>);
static_assert(sizeof(tPreparedTransform<float>) == 64 + 16 && alignof(tPreparedTransform<float>) == 16);
static_assert(sizeof(tPreparedTransform<double>) == 128 + 16 && alignof(tPreparedTransform<double>) == 16);

} // namespace bv::maths
