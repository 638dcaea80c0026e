#pragma once

/// @file
/// Comparison to the bit. The `==` of the maths types is tolerant, and that of scalars is blind to the sign of zero.

#include <concepts>
#include <ios>

#include <gtest/gtest.h>

#include "support/Numbers.h"

namespace bv::test
{

/// Same bits; any two NaNs pass for the same, since the bits of a NaN are never promised.
template <typename T>
[[nodiscard]] bool HasSameBits(T a, T b)
{
    return (IsNaN(a) && IsNaN(b)) || Bits(a) == Bits(b);
}

template <std::floating_point T>
void ExpectSameBits(T actual, T expected)
{
    EXPECT_TRUE(HasSameBits(actual, expected))
        << "actual " << actual << ", expected " << expected << std::hexfloat << ": " << actual << ", " << expected;
}

template <typename V>
concept VectorLike = requires(V const& v)
{
    v.LengthSquared();
};

/// The same for two vectors of one type, component by component.
template <VectorLike V>
void ExpectSameBits(V const& actual, V const& expected)
{
    ExpectSameBits(actual.x, expected.x);
    ExpectSameBits(actual.y, expected.y);
    if constexpr (requires { actual.z; })
        ExpectSameBits(actual.z, expected.z);
}

} // namespace bv::test
