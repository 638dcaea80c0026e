#pragma once

/// @file
/// Matrices whose state is known without a look at their elements.

#include "bv/maths/detail/Rows.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths::detail
{

/// The way to the elements and the state of a matrix.
struct MatrixAccess
{
    template <typename T>
    [[nodiscard, gnu::always_inline]] static tMatrix4<T> Make(tRows<T> const& rows,
                                                              typename tMatrix4<T>::State state) noexcept
    {
        return tMatrix4<T>(rows, state);
    }
    template <typename T>
    [[gnu::always_inline]] static void Set(tMatrix4<T>& matrix, tRows<T> const& rows,
                                           typename tMatrix4<T>::State state) noexcept
    {
        matrix.RepairMemory();
        StoreRows(rows, matrix.elements);
        matrix.state = state;
    }
    /// The state that the classification of the elements gives.
    template <typename T>
    [[nodiscard, gnu::always_inline]] static typename tMatrix4<T>::State Classify(tRows<T> const& rows) noexcept
    {
        return tMatrix4<T>::Classify(rows);
    }
    template <typename T>
    [[nodiscard, gnu::always_inline]] static bool IsGeneral(tMatrix4<T> const& matrix) noexcept
    {
        return matrix.state > tMatrix4<T>::ORTHONORMAL;
    }
};

} // namespace bv::maths::detail
