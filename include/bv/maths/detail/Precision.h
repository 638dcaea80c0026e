#pragma once

/// @file
/// What the templates of the library say about their element types.

#include "bv/maths/detail/Where.h"

namespace bv::maths
{

namespace detail
{

template <typename U, typename T>
inline constexpr bool IS_OTHER_PRECISION = false;
template <>
inline constexpr bool IS_OTHER_PRECISION<float, double> = true;
template <>
inline constexpr bool IS_OTHER_PRECISION<double, float> = true;

} // namespace detail

/// `float` where T is `double`, and `double` where T is `float`: the element types that conversions accept.
template <typename U, typename T>
concept OtherPrecision = detail::IS_OTHER_PRECISION<U, T>;

} // namespace bv::maths
