#pragma once

/// @file
/// What an affine matrix is made of.

#include <type_traits>

#include "bv/Export.h"
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
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
struct tMatrixParts
{
    tVector3<T> translation; ///< the fourth column of the matrix
    tQuaternion<T> rotation; ///< of length 1
    tVector3<T> scale;       ///< diagonal of the symmetric S
    tVector3<T> shear;       ///< the rest of it: s_12, s_13 and s_23

    /// Those of the identity.
    constexpr tMatrixParts() noexcept : translation{}, rotation{}, scale{T{1}, T{1}, T{1}}, shear{} {}
    /// These parts; without the last one, a scale along the axes.
    constexpr tMatrixParts(tVector3<T> const& offset, tQuaternion<T> const& turn, tVector3<T> const& diagonal,
                           tVector3<T> const& offDiagonal = tVector3<T>()) noexcept
        : translation{offset}, rotation{turn}, scale{diagonal}, shear{offDiagonal}
    {
    }
};

extern template struct BV_TEMPLATE tMatrixParts<float>;
extern template struct BV_TEMPLATE tMatrixParts<double>;

static_assert(std::is_trivially_copyable_v<tMatrixParts<float>> && std::is_trivially_copyable_v<tMatrixParts<double>>);
static_assert(sizeof(tMatrixParts<float>) == 13 * sizeof(float) && sizeof(tMatrixParts<double>) == 13 * sizeof(double));

} // namespace bv::maths
