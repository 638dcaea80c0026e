#pragma once

/// @file
/// Matrices with any state, also those that no operation gives, and their whole content.

#include <bv/maths/tMatrix4.h>

#include "Digest.h"
#include "support/MatrixState.h"

namespace digest
{

using bv::test::StateOf;
using bv::test::WithState;

template <typename T>
void AddWhole(Digest& digest, tMatrix4<T> const& matrix)
{
    digest.Add(matrix, StateOf(matrix));
}

} // namespace digest
