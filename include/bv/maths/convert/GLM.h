#pragma once

/// @file
/// Conversions to and from the types of GLM, which must be installed where this is included.
///
/// Matrices of both libraries have their vectors on the right, so a matrix means the same in both; GLM keeps elements
/// column by column and names the column first. Element types stay as they are, and nothing is rounded. Vectors of GLM
/// become vectors if they are of `float` or `double`, and tuples if they are of integers.

#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

#include <glm/gtc/quaternion.hpp>

#include "bv/maths/detail/Conversions.h"
#include "bv/maths/detail/TupleOrVector.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// GLM's vector of the components of a tuple or vector.
template <TupleOrVector V>
[[nodiscard, gnu::always_inline]] constexpr auto ToGLM(V const& vector)
{
    using T = detail::Component<V>;
    if constexpr (detail::HAS_Z<V>)
        return glm::vec<3, T>(vector.x, vector.y, vector.z);
    else
        return glm::vec<2, T>(vector.x, vector.y);
}

/// GLM's quaternion of the same components.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr glm::qua<T> ToGLM(tQuaternion<T> const& quaternion)
{
    glm::qua<T> result{};
    result.x = quaternion.x; // by name: the order in the constructor is a matter of GLM's settings
    result.y = quaternion.y;
    result.z = quaternion.z;
    result.w = quaternion.w;
    return result;
}

/// GLM's matrix of the same elements.
template <typename T>
[[nodiscard, gnu::always_inline]] inline glm::mat<4, 4, T> ToGLM(tMatrix4<T> const& matrix)
{
    glm::mat<4, 4, T> result{};
    detail::ForEachElement(matrix, [&result](int row, int column, T element) { result[column][row] = element; });
    return result;
}

/// A vector of `float` or `double`, a tuple of integers.
template <typename T, glm::qualifier Q>
[[nodiscard, gnu::always_inline]] constexpr detail::InPlane<T> FromGLM(glm::vec<2, T, Q> const& vector)
{
    return {vector.x, vector.y};
}

/// @copydoc FromGLM(glm::vec<2, T, Q> const&)
template <typename T, glm::qualifier Q>
[[nodiscard, gnu::always_inline]] constexpr detail::InSpace<T> FromGLM(glm::vec<3, T, Q> const& vector)
{
    return {vector.x, vector.y, vector.z};
}

/// The quaternion of the same components.
template <typename T, glm::qualifier Q>
[[nodiscard, gnu::always_inline]] constexpr tQuaternion<T> FromGLM(glm::qua<T, Q> const& quaternion)
{
    return {quaternion.x, quaternion.y, quaternion.z, quaternion.w};
}

/// The matrix of the same elements, classified.
template <typename T, glm::qualifier Q>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T> FromGLM(glm::mat<4, 4, T, Q> const& matrix)
{
    return detail::MakeMatrix<T>([&matrix](int row, int column) { return matrix[column][row]; });
}

} // namespace bv::maths
