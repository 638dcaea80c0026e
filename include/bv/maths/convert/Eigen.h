#pragma once

/// @file
/// Conversions to and from the types of Eigen, which must be installed where this is included.
///
/// Matrices of both libraries have their vectors on the right, and planes have the same equation, n.p + d = 0. Element
/// types stay as they are, and nothing is rounded. Vectors of Eigen become vectors if they are of `float` or `double`,
/// and tuples if they are of integers.

#include <Eigen/Core>
#include <Eigen/Geometry>

#include "bv/maths/Bitwise.h"
#include "bv/maths/detail/Conversions.h"
#include "bv/maths/detail/TupleOrVector.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

/// @name To Eigen
/// @{

/// Eigen's column of the components of a tuple or vector.
template <TupleOrVector V>
[[nodiscard, gnu::always_inline]] inline auto ToEigen(V const& vector)
{
    using T = detail::Component<V>;
    if constexpr (detail::HAS_Z<V>)
        return Eigen::Matrix<T, 3, 1>(vector.x, vector.y, vector.z);
    else
        return Eigen::Matrix<T, 2, 1>(vector.x, vector.y);
}

/// Eigen's quaternion of the same components.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Eigen::Quaternion<T> ToEigen(tQuaternion<T> const& quaternion)
{
    return {quaternion.w, quaternion.x, quaternion.y, quaternion.z};
}

/// Eigen's matrix of the same elements.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Eigen::Matrix<T, 4, 4> ToEigen(tMatrix4<T> const& matrix)
{
    Eigen::Matrix<T, 4, 4> result;
    detail::ForEachElement(matrix, [&result](int row, int column, T element) { result(row, column) = element; });
    return result;
}

/// Eigen's plane of the same normal and offset.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Eigen::Hyperplane<T, 3> ToEigen(tPlane<T> const& plane)
{
    return {ToEigen(plane.GetNormal()), plane.GetOffset()};
}

/// Eigen's line of the same origin and direction, which Eigen takes to be of length 1.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Eigen::ParametrizedLine<T, 3> ToEigen(tRay<T> const& ray)
{
    return {ToEigen(ray.origin), ToEigen(ray.direction)};
}

/// Eigen's box of the same corners; the empty box is Eigen's empty box, which has finite corners.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Eigen::AlignedBox<T, 2> ToEigen(tAreaAABB<T> const& box)
{
    if (BitEqual{}(box, tAreaAABB<T>()))
        return {};
    return {ToEigen(box.GetMin()), ToEigen(box.GetMax())};
}

/// @copydoc ToEigen(tAreaAABB<T> const&)
template <typename T>
[[nodiscard, gnu::always_inline]] inline Eigen::AlignedBox<T, 3> ToEigen(tVolumeAABB<T> const& box)
{
    if (BitEqual{}(box, tVolumeAABB<T>()))
        return {};
    return {ToEigen(box.GetMin()), ToEigen(box.GetMax())};
}
/// @}

/// @name From Eigen
/// @{

/// What a column of two or three, or a matrix of four rows and columns, is here: a vector of `float` or `double`, a
/// tuple of integers, a classified matrix. Expressions are evaluated.
template <typename Derived>
[[nodiscard, gnu::always_inline]] inline auto FromEigen(Eigen::MatrixBase<Derived> const& expression)
{
    using T = typename Derived::Scalar;
    constexpr int ROWS = Derived::RowsAtCompileTime;
    constexpr int COLUMNS = Derived::ColsAtCompileTime;
    static_assert((COLUMNS == 1 && (ROWS == 2 || ROWS == 3)) || (COLUMNS == 4 && ROWS == 4),
                  "columns of two or three, and matrices of four rows and columns");
    auto const& values = expression.derived().eval();
    if constexpr (ROWS == 2)
        return detail::InPlane<T>(values(0), values(1));
    else if constexpr (ROWS == 3)
        return detail::InSpace<T>(values(0), values(1), values(2));
    else
        return detail::MakeMatrix<T>([&values](int row, int column) { return values(row, column); });
}

/// The matrix of a transformation, classified.
template <typename T, int MODE, int OPTIONS>
requires(MODE != Eigen::AffineCompact) //
    [[nodiscard,
      gnu::always_inline]] inline tMatrix4<T> FromEigen(Eigen::Transform<T, 3, MODE, OPTIONS> const& transform)
{
    return FromEigen(transform.matrix());
}

/// The quaternion of the same components.
template <typename Derived>
[[nodiscard, gnu::always_inline]] inline auto FromEigen(Eigen::QuaternionBase<Derived> const& quaternion)
{
    return tQuaternion<typename Derived::Scalar>(quaternion.x(), quaternion.y(), quaternion.z(), quaternion.w());
}

/// The plane of this normal and offset, both divided by the normal's length.
template <typename T, int OPTIONS>
[[nodiscard, gnu::always_inline]] inline tPlane<T> FromEigen(Eigen::Hyperplane<T, 3, OPTIONS> const& plane)
{
    return {FromEigen(plane.normal()), plane.offset()};
}

/// The ray of the same origin and direction.
template <typename T, int OPTIONS>
[[nodiscard, gnu::always_inline]] inline tRay<T> FromEigen(Eigen::ParametrizedLine<T, 3, OPTIONS> const& line)
{
    return {FromEigen(line.origin()), FromEigen(line.direction())};
}

/// The box of the same corners; Eigen's own empty box is the empty box.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tAreaAABB<T> FromEigen(Eigen::AlignedBox<T, 2> const& box)
{
    Eigen::AlignedBox<T, 2> const empty;
    if (box.min() == empty.min() && box.max() == empty.max())
        return {};
    return {FromEigen(box.min()), FromEigen(box.max())};
}

/// @copydoc FromEigen(Eigen::AlignedBox<T, 2> const&)
template <typename T>
[[nodiscard, gnu::always_inline]] inline tVolumeAABB<T> FromEigen(Eigen::AlignedBox<T, 3> const& box)
{
    Eigen::AlignedBox<T, 3> const empty;
    if (box.min() == empty.min() && box.max() == empty.max())
        return {};
    return {FromEigen(box.min()), FromEigen(box.max())};
}
/// @}

} // namespace bv::maths
