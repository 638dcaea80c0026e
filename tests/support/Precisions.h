#pragma once

/// @file
/// The element types that typed tests run over.

#include <type_traits>

#include <gtest/gtest.h>

namespace bv::test
{

/// Those of all maths types.
using Precisions = testing::Types<float, double>;
/// Those of tuples, and of the streams of vectors.
using Components = testing::Types<int, unsigned int, float, double>;

/// The other one of the two precisions.
template <typename T>
using Other = std::conditional_t<std::is_same_v<T, float>, double, float>;

} // namespace bv::test
