#pragma once

/// @file
/// The inverses of matrices that are nothing in particular, one in each lane, with the operations of a single one.

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Lanes/Lanes.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Inverse
{
    using V = Register<T, BYTES>;
    using Row = tFour<T>;

    /// Elements of a granule of matrices, each element of all of them side by side.
    struct Elements
    {
        alignas(64) T numbers[16][GRANULE];
    };

    [[gnu::always_inline]] static void Load(tMatrix4<T> const* matrices, Elements& elements) noexcept
    {
        for (std::size_t first = 0; first < GRANULE; first += 4)
            for (std::size_t row = 0; row < 16; row += 4)
            {
                Row a = LoadAligned<Row>(matrices[first].Get() + row);
                Row b = LoadAligned<Row>(matrices[first + 1].Get() + row);
                Row c = LoadAligned<Row>(matrices[first + 2].Get() + row);
                Row d = LoadAligned<Row>(matrices[first + 3].Get() + row);
                Transpose(a, b, c, d);
                StoreAligned(a, elements.numbers[row] + first);
                StoreAligned(b, elements.numbers[row + 1] + first);
                StoreAligned(c, elements.numbers[row + 2] + first);
                StoreAligned(d, elements.numbers[row + 3] + first);
            }
    }

    [[gnu::always_inline]] static void Store(Elements const& elements, T (*results)[16]) noexcept
    {
        for (std::size_t first = 0; first < GRANULE; first += 4)
            for (std::size_t row = 0; row < 16; row += 4)
            {
                Row a = LoadAligned<Row>(elements.numbers[row] + first);
                Row b = LoadAligned<Row>(elements.numbers[row + 1] + first);
                Row c = LoadAligned<Row>(elements.numbers[row + 2] + first);
                Row d = LoadAligned<Row>(elements.numbers[row + 3] + first);
                Transpose(a, b, c, d);
                detail::Store(a, results[first] + row);
                detail::Store(b, results[first + 1] + row);
                detail::Store(c, results[first + 2] + row);
                detail::Store(d, results[first + 3] + row);
            }
    }

    /// Without one of its rows, a matrix has four determinants, each expanded along its first row and without one of
    /// the columns.
    /// @param p,q,r the rows that are left, of four columns each.
    [[gnu::always_inline]] static void FindMinors(V const* p, V const* q, V const* r, V (&minors)[4]) noexcept
    {
        V const c12 = q[0] * r[1] - q[1] * r[0];
        V const c13 = q[0] * r[2] - q[2] * r[0];
        V const c14 = q[0] * r[3] - q[3] * r[0];
        V const c23 = q[1] * r[2] - q[2] * r[1];
        V const c24 = q[1] * r[3] - q[3] * r[1];
        V const c34 = q[2] * r[3] - q[3] * r[2];
        minors[0] = p[1] * c34 - p[2] * c24 + p[3] * c23;
        minors[1] = p[0] * c34 - p[2] * c14 + p[3] * c13;
        minors[2] = p[0] * c24 - p[1] * c14 + p[3] * c12;
        minors[3] = p[0] * c23 - p[1] * c13 + p[2] * c12;
    }

    static void Invert(tMatrix4<T> const* matrices, T (*results)[16], T* determinants)
    {
        Elements elements;
        Load(matrices, elements);
        for (std::size_t lane = 0; lane < GRANULE; lane += COUNT<V>)
        {
            V m[16];
            for (std::size_t i = 0; i < 16; ++i)
                m[i] = detail::Load<V>(elements.numbers[i] + lane);
            V minors[4][4]; // without row i, without column j
            FindMinors(m + 4, m + 8, m + 12, minors[0]);
            FindMinors(m, m + 8, m + 12, minors[1]);
            FindMinors(m, m + 4, m + 12, minors[2]);
            FindMinors(m, m + 4, m + 8, minors[3]);
            V const determinant = m[0] * minors[0][0] - m[1] * minors[0][1] + m[2] * minors[0][2] - m[3] * minors[0][3];
            detail::Store(determinant, determinants + lane);
            V const divisor = Select(determinant == T{0}, Broadcast<V>(T{1}), determinant);
            V const q = T{1} / divisor;
            V const opposite = -q;
            for (std::size_t i = 0; i < 4; ++i)
                for (std::size_t j = 0; j < 4; ++j)
                    detail::Store(minors[j][i] * ((i + j) % 2 == 0 ? q : opposite), elements.numbers[4 * i + j] + lane);
        }
        Store(elements, results);
    }
};

} // namespace

} // namespace bv::maths
