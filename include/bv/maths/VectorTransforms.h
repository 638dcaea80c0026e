#pragma once

/// @file
/// The bodies of the transformations of vectors by matrices. Included by tMatrix4.h, since vectors do not depend on
/// matrices.

#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace detail
{

inline namespace BV_REGISTERS
{

/// The first three of four numbers. Two are written in one piece, which takes fewer instructions than three numbers.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tVector3<T> FirstThree(tFour<T> const& lanes) noexcept
{
    tVector3<T> vector;
    StoreInto(FirstTwo(lanes), vector);
    vector.z = Get<2>(lanes);
    return vector;
}

} // namespace BV_REGISTERS

// Where failures say that they were raised; see Place.
inline constexpr Place TRANSFORM_DIAGONAL{"Transform", 39};
inline constexpr Place TRANSFORM_GENERAL{"Transform", 56};
inline constexpr Place TRANSFORMED_DIAGONAL{"Transformed", 96};
inline constexpr Place TRANSFORMED_GENERAL{"Transformed", 111};

} // namespace detail

template <typename T>
inline tVector3<T> tVector3<T>::Rotated(tMatrix4<T> const& matrix) const noexcept
{
    using Row = detail::tFour<T>;
    T const* const m = matrix.elements;
    Row column1 = detail::LoadAligned<Row>(m);
    Row column2 = detail::LoadAligned<Row>(m + 4);
    Row column3 = detail::LoadAligned<Row>(m + 8);
    detail::Transpose(column1, column2, column3);
    Row const rotated = detail::Combine<T>(column1, column2, column3, x, y, z);
    return {detail::Get<0>(rotated), detail::Get<1>(rotated), detail::Get<2>(rotated)};
}

template <typename T>
inline tVector3<T> tVector3<T>::Projected(tMatrix4<T> const& matrix, detail::Place const& diagonal,
                                          detail::Place const& general) const
{
    using Row = detail::tFour<T>;
    using Matrix = tMatrix4<T>;
    if (matrix.IsIdentity())
        return *this;
    T const* const m = matrix.elements;
    if (matrix.IsDiagonal())
    {
        if (detail::IsTooSmall(m[Matrix::IDX_44], TOLERANCE<T>))
            ThrowDivisionByZero(diagonal);
        T const reciprocal = T{1} / m[Matrix::IDX_44];
        return {x * (reciprocal * m[Matrix::IDX_11]), y * (reciprocal * m[Matrix::IDX_22]),
                reciprocal * m[Matrix::IDX_33] * z};
    }
    auto const [column1, column2, column3, column4] = detail::Transposed(matrix.Load());
    Row const homogeneous = detail::Combine<T>(column1, column2, column3, x, y, z) + column4;
    T const w = detail::Get<3>(homogeneous);
    if (detail::IsTooSmall(w, TOLERANCE<T>))
        ThrowDivisionByZero(general);
    Row const point = homogeneous * detail::Broadcast<Row>(T{1} / w);
    return {detail::Get<0>(point), detail::Get<1>(point), detail::Get<2>(point)};
}

template <typename T>
inline tVector3<T>& tVector3<T>::Transform(tMatrix4<T> const& matrix)
{
    return *this = Projected(matrix, detail::TRANSFORM_DIAGONAL, detail::TRANSFORM_GENERAL);
}

template <typename T>
inline tVector3<T> tVector3<T>::Transformed(tMatrix4<T> const& matrix) const
{
    return Projected(matrix, detail::TRANSFORMED_DIAGONAL, detail::TRANSFORMED_GENERAL);
}

template <typename T>
inline tVector3<T>& tVector3<T>::TransformAsVector(tMatrix4<T> const& matrix) noexcept
{
    return *this = TransformedAsVector(matrix);
}

template <typename T>
inline tVector3<T> tVector3<T>::TransformedAsVector(tMatrix4<T> const& matrix) const noexcept
{
    using Matrix = tMatrix4<T>;
    if (matrix.state > Matrix::ORTHONORMAL)
        return Rotated(matrix);
    if (matrix.IsIdentity())
        return *this;
    if (matrix.IsDiagonal())
        return {x * matrix[Matrix::IDX_11], y * matrix[Matrix::IDX_22], z * matrix[Matrix::IDX_33]};
    tVector3 const rotated = Rotated(matrix);
    return IsEqual(LengthSquared(), T{1}) ? rotated.Normalised() : rotated;
}

} // namespace bv::maths
