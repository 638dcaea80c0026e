#pragma once

/// @file
/// Vectors and matrices as `std::span` of their numbers, without a copy. A span is good for as long as the object is.

#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

#include "bv/maths/detail/Elements.h"

namespace bv::maths
{

namespace detail
{

/// A number of a value, constant where the value is.
template <typename Value>
using NumberIn = std::conditional_t<std::is_const_v<Value>, ElementOf<std::remove_const_t<Value>> const,
                                    ElementOf<std::remove_const_t<Value>>>;

template <typename Value>
inline constexpr std::size_t COUNT_IN = tElements<std::remove_const_t<Value>>::COUNT;

/// What the elements of an array are, constant where the array is.
template <typename Range>
using ObjectIn = typename decltype(std::span(std::declval<Range>()))::element_type;

/// A value that is nothing but its numbers, side by side.
template <typename Value>
concept MadeOfNumbers = WithPlainElements<std::remove_const_t<Value>> &&
                        sizeof(Value) == COUNT_IN<Value> * sizeof(NumberIn<Value>);

} // namespace detail

/// The components of a tuple, vector or quaternion in order, to be read and, where it is not constant, written.
template <detail::MadeOfNumbers Value>
[[nodiscard, gnu::always_inline]] inline auto AsSpan(Value& value) noexcept
{
    using Number = detail::NumberIn<Value>;
    return std::span<Number, detail::COUNT_IN<Value>>(reinterpret_cast<Number*>(&value), detail::COUNT_IN<Value>);
}

/// The sixteen elements of a matrix, row by row, to be read: what is written past the matrix would leave it in a state
/// that no longer describes it.
template <typename T>
[[nodiscard, gnu::always_inline]] inline std::span<T const, 16> AsSpan(tMatrix4<T> const& matrix) noexcept
{
    return std::span<T const, 16>(matrix.Get(), 16);
}

/// What is about to go away has no span.
template <detail::MadeOfNumbers Value>
void AsSpan(Value const&& value) = delete;
/// @copydoc AsSpan(Value const&&)
template <typename T>
void AsSpan(tMatrix4<T> const&& matrix) = delete;

/// The numbers of an array of tuples, vectors or quaternions, one object after the other: a buffer of vertices, say.
/// The array is anything that a `std::span` is made from; its numbers are constant where its objects are.
template <typename Range>
requires detail::MadeOfNumbers<detail::ObjectIn<Range>>
[[nodiscard, gnu::always_inline]] inline auto AsSpan(Range&& objects) noexcept
{
    using Object = detail::ObjectIn<Range>;
    using Number = detail::NumberIn<Object>;
    std::span<Object> const all(objects);
    return std::span<Number>(reinterpret_cast<Number*>(all.data()), all.size() * detail::COUNT_IN<Object>);
}

} // namespace bv::maths
