#pragma once

/// @file
/// What the conversions to and from the types of other libraries share.

#include <type_traits>

#include "bv/maths/Forward.h"

namespace bv::maths::detail
{

/// What a vector of another library is here: integers make tuples.
template <typename T>
using InPlane = std::conditional_t<std::is_floating_point_v<T>, tVector2<T>, tTuple2<T>>;
template <typename T>
using InSpace = std::conditional_t<std::is_floating_point_v<T>, tVector3<T>, tTuple3<T>>;

/// The matrix whose element in row r and column c, counted from 0, is `get(r, c)`, classified.
template <typename T, typename Get>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T> MakeMatrix(Get const& get)
{
    T elements[16];
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            elements[4 * row + column] = get(row, column);
    return tMatrix4<T>(&elements[0]);
}

/// Calls `set(r, c, element)` for each element of a matrix.
template <typename T, typename Set>
[[gnu::always_inline]] inline void ForEachElement(tMatrix4<T> const& matrix, Set const& set)
{
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            set(row, column, matrix.Get()[4 * row + column]);
}

} // namespace bv::maths::detail
