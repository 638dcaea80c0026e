#pragma once

/// @file
/// Comparison to the bit. The `==` of the maths types is tolerant, and that of scalars is blind to the sign of zero.

#include <bit>
#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

namespace bv::test
{

template <typename T>
[[nodiscard]] auto Bits(T value)
{
    using Integer = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    return std::bit_cast<Integer>(value);
}

/// Same bits; any two NaNs pass for the same, since the bits of a NaN are never promised.
template <typename T>
requires std::is_floating_point_v<T>
void ExpectSameBits(T actual, T expected)
{
    if (actual != actual && expected != expected)
        return;
    EXPECT_EQ(Bits(actual), Bits(expected)) << "actual " << actual << ", expected " << expected;
}

/// The same for two vectors of one type, component by component.
template <typename V>
requires requires(V const& v)
{
    v.LengthSquared();
}
void ExpectSameBits(V const& actual, V const& expected)
{
    ExpectSameBits(actual.x, expected.x);
    ExpectSameBits(actual.y, expected.y);
    if constexpr (requires { actual.z; })
        ExpectSameBits(actual.z, expected.z);
}

} // namespace bv::test
