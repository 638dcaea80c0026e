#pragma once

/// @file
/// Matrices seen from outside: their elements to the bit, and their state.

#include <array>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "support/MatrixState.h"
#include "support/SameBits.h"

namespace bv::test
{

/// Sixteen elements, row by row.
template <typename T>
using Elements = std::array<T, 16>;

template <typename T>
inline constexpr Elements<T> IDENTITY_ELEMENTS = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

template <typename T>
[[nodiscard]] Elements<T> Diagonal(T m11, T m22, T m33, T m44)
{
    return {m11, 0, 0, 0, 0, m22, 0, 0, 0, 0, m33, 0, 0, 0, 0, m44};
}

/// The elements start, start + step, start + 2 * step and so on.
template <typename T>
[[nodiscard]] Elements<T> Ramp(T start, T step)
{
    Elements<T> elements{};
    for (std::size_t i = 0; i < 16; ++i)
        elements[i] = start + step * static_cast<T>(i);
    return elements;
}

/// A matrix of any elements in any state, fitting or not.
template <typename T>
[[nodiscard]] maths::tMatrix4<T> MakeMatrix(Elements<T> const& elements, std::uint32_t state)
{
    return WithState(maths::tMatrix4<T>(elements.data()), state);
}

template <typename T>
[[nodiscard]] Elements<T> ElementsOf(maths::tMatrix4<T> const& matrix)
{
    Elements<T> elements{};
    for (std::size_t i = 0; i < 16; ++i)
        elements[i] = matrix[i];
    return elements;
}

/// These elements to the bit, and this state.
template <typename T>
void ExpectMatrix(maths::tMatrix4<T> const& actual, Elements<T> const& elements, std::uint32_t state)
{
    for (std::size_t i = 0; i < 16; ++i)
    {
        SCOPED_TRACE("element " + std::to_string(i));
        ExpectSameBits(actual[i], elements[i]);
    }
    EXPECT_EQ(StateOf(actual), state);
}

/// These elements as numbers, where the sign of a zero does not matter, and this state.
template <typename T>
void ExpectValues(maths::tMatrix4<T> const& actual, Elements<T> const& elements, std::uint32_t state)
{
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(actual[i], elements[i]) << "element " << i;
    EXPECT_EQ(StateOf(actual), state);
}

/// The same elements to the bit and the same state.
template <typename T>
void ExpectSameMatrix(maths::tMatrix4<T> const& actual, maths::tMatrix4<T> const& expected)
{
    ExpectMatrix(actual, ElementsOf(expected), StateOf(expected));
}

} // namespace bv::test
