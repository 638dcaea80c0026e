#pragma once

/// @file
/// What an affine matrix is made of.

#include <type_traits>

#include "bv/maths/Forward.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// The parts of an affine matrix, M = T R S: see Decompose() and Compose(). By default, they are those of the identity.
///
/// The parts of two matrices can be mixed one by one, the rotations by Slerp(), and put together again. K. Shoemake,
/// T. Duff, "Matrix Animation and Polar Decomposition", 1992.
///
/// @tparam T `float` or `double`.
template <typename T>
struct tMatrixParts
{
    tVector3<T> translation;                ///< the fourth column of the matrix
    tQuaternion<T> rotation;                ///< of length 1
    tVector3<T> scale = {T{1}, T{1}, T{1}}; ///< diagonal of the symmetric S
    tVector3<T> shear;                      ///< the rest of it: s_12, s_13 and s_23
};

static_assert(std::is_trivially_copyable_v<tMatrixParts<float>> && std::is_trivially_copyable_v<tMatrixParts<double>>);
static_assert(sizeof(tMatrixParts<float>) == 13 * sizeof(float) && sizeof(tMatrixParts<double>) == 13 * sizeof(double));

} // namespace bv::maths
