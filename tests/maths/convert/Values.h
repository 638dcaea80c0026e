#pragma once

/// @file
/// What the tests of the conversions convert.

#include <cstddef>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "support/BatchData.h"
#include "support/Numbers.h"
#include "support/SameBits.h"

namespace bv::test
{

/// The matrix of the elements 1 to 16, row by row.
template <typename T>
[[nodiscard]] maths::tMatrix4<T> Numbered()
{
    return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
}

template <typename T>
void ExpectSameElements(maths::tMatrix4<T> const& actual, maths::tMatrix4<T> const& expected)
{
    for (std::size_t i = 0; i < 16; ++i)
        ExpectSameBits(actual[i], expected[i]);
}

} // namespace bv::test
