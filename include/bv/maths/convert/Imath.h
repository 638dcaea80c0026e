#pragma once

/// @file
/// Conversions to and from the types of Imath, which must be installed where this is included.
///
/// Imath multiplies vectors from the left, `p * M`: a matrix is transposed on its way, so that it moves points to the
/// same places. Quaternions turn in the same direction. Imath's planes are n.p = d, so that the offset changes its
/// sign. Element types stay as they are, and nothing is rounded. Vectors of Imath become vectors if they are of `float`
/// or `double`, and tuples if they are of integers.

#include <Imath/ImathBox.h>
#include <Imath/ImathMatrix.h>
#include <Imath/ImathPlane.h>
#include <Imath/ImathQuat.h>
#include <Imath/ImathVec.h>

#include "bv/maths/Bitwise.h"
#include "bv/maths/detail/Conversions.h"
#include "bv/maths/detail/TupleOrVector.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

/// @name To Imath
/// @{

/// Imath's vector of the components of a tuple or vector.
template <TupleOrVector V>
[[nodiscard, gnu::always_inline]] inline auto ToImath(V const& vector)
{
    using T = detail::Component<V>;
    if constexpr (detail::HAS_Z<V>)
        return Imath::Vec3<T>(vector.x, vector.y, vector.z);
    else
        return Imath::Vec2<T>(vector.x, vector.y);
}

/// Imath's quaternion of the same components.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Imath::Quat<T> ToImath(tQuaternion<T> const& quaternion)
{
    return {quaternion.w, quaternion.x, quaternion.y, quaternion.z};
}

/// Imath's matrix that moves points to the same places: the transpose.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Imath::Matrix44<T> ToImath(tMatrix4<T> const& matrix)
{
    Imath::Matrix44<T> result;
    detail::ForEachElement(matrix, [&result](int row, int column, T element) { result[column][row] = element; });
    return result;
}

/// Imath's plane of the same points, whose distance is the opposite of the offset.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Imath::Plane3<T> ToImath(tPlane<T> const& plane)
{
    Imath::Plane3<T> result;
    result.normal = ToImath(plane.GetNormal());
    result.distance = -plane.GetOffset();
    return result;
}

/// Imath's box of the same corners; the empty box is Imath's empty box, which has finite corners.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Imath::Box<Imath::Vec2<T>> ToImath(tAreaAABB<T> const& box)
{
    if (BitEqual{}(box, tAreaAABB<T>()))
        return {};
    return {ToImath(box.GetMin()), ToImath(box.GetMax())};
}

/// @copydoc ToImath(tAreaAABB<T> const&)
template <typename T>
[[nodiscard, gnu::always_inline]] inline Imath::Box<Imath::Vec3<T>> ToImath(tVolumeAABB<T> const& box)
{
    if (BitEqual{}(box, tVolumeAABB<T>()))
        return {};
    return {ToImath(box.GetMin()), ToImath(box.GetMax())};
}
/// @}

/// @name From Imath
/// @{

/// A vector of `float` or `double`, a tuple of integers.
template <typename T>
[[nodiscard, gnu::always_inline]] inline detail::InPlane<T> FromImath(Imath::Vec2<T> const& vector)
{
    return {vector.x, vector.y};
}

/// @copydoc FromImath(Imath::Vec2<T> const&)
template <typename T>
[[nodiscard, gnu::always_inline]] inline detail::InSpace<T> FromImath(Imath::Vec3<T> const& vector)
{
    return {vector.x, vector.y, vector.z};
}

/// The quaternion of the same components.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tQuaternion<T> FromImath(Imath::Quat<T> const& quaternion)
{
    return {quaternion.v.x, quaternion.v.y, quaternion.v.z, quaternion.r};
}

/// The matrix that moves points to the same places: the transpose, classified.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T> FromImath(Imath::Matrix44<T> const& matrix)
{
    return detail::MakeMatrix<T>([&matrix](int row, int column) { return matrix[column][row]; });
}

/// The plane of the same points. Its normal is scaled to length 1.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tPlane<T> FromImath(Imath::Plane3<T> const& plane)
{
    return {FromImath(plane.normal), -plane.distance};
}

/// The box of the same corners; Imath's own empty box is the empty box.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tAreaAABB<T> FromImath(Imath::Box<Imath::Vec2<T>> const& box)
{
    if (box == Imath::Box<Imath::Vec2<T>>())
        return {};
    return {FromImath(box.min), FromImath(box.max)};
}

/// @copydoc FromImath(Imath::Box<Imath::Vec2<T>> const&)
template <typename T>
[[nodiscard, gnu::always_inline]] inline tVolumeAABB<T> FromImath(Imath::Box<Imath::Vec3<T>> const& box)
{
    if (box == Imath::Box<Imath::Vec3<T>>())
        return {};
    return {FromImath(box.min), FromImath(box.max)};
}
/// @}

} // namespace bv::maths
