#pragma once

/// @file
/// Values to and from plain arrays of their numbers.

#include <array>
#include <cstddef>
#include <span>

#include "bv/maths/detail/Elements.h"

namespace bv::maths
{

/// The numbers of a tuple, vector, quaternion, plane (normal, then offset) or matrix (row by row).
template <detail::WithText Value>
[[nodiscard, gnu::always_inline]] constexpr auto ToArray(Value const& value) noexcept
{
    using Elements = detail::tElements<Value>;
    std::array<typename Elements::Element, Elements::COUNT> numbers{};
    for (std::size_t index = 0; index < Elements::COUNT; ++index)
        numbers[index] = Elements::Get(value, index);
    return numbers;
}

/// The value of these numbers: `FromArray<Vector3f>(numbers)`, from an array or `std::array` of that length. A plane is
/// scaled and a matrix is classified, as by the constructors that take a pointer.
template <detail::WithText Value>
[[nodiscard, gnu::always_inline]] constexpr Value
FromArray(std::span<detail::ElementOf<Value> const, detail::tElements<Value>::COUNT> numbers) noexcept
{
    return Value(numbers.data());
}

/// The elements of a matrix column by column, as OpenGL and Vulkan take them.
template <typename T>
[[nodiscard, gnu::always_inline]] inline std::array<T, 16> ToColumns(tMatrix4<T> const& matrix) noexcept
{
    std::array<T, 16> columns;
    for (std::size_t index = 0; index < 16; ++index)
        columns[index] = matrix[index % 4 * 4 + index / 4];
    return columns;
}

/// The matrix of elements that are given column by column: `FromColumns<Matrix4f>(numbers)`. It is classified.
template <typename Matrix>
[[nodiscard, gnu::always_inline]] inline Matrix
FromColumns(std::span<detail::ElementOf<Matrix> const, 16> columns) noexcept
{
    detail::ElementOf<Matrix> rows[16];
    for (std::size_t index = 0; index < 16; ++index)
        rows[index] = columns[index % 4 * 4 + index / 4];
    return Matrix(&rows[0]);
}

} // namespace bv::maths
