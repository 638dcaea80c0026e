#pragma once

/// @file
/// The algebra of a matrix as four rows, without a state: products, transposes, determinants and the inverse.

#include <cstddef>

#include "bv/maths/detail/Lanes.h"

namespace bv::maths::detail
{

inline namespace BV_REGISTERS
{

/// The rows of a matrix. Operations compute in these and write to a matrix at the end, through one pointer, so that the
/// compiler can keep a result that is only copied in registers.
template <typename T>
struct tRows
{
    tFour<T> row1, row2, row3, row4;
};

/// Rows, and what is known of them.
template <typename T, typename State>
struct tClassified
{
    tRows<T> rows;
    State state;
};

/// The sixteen elements, row by row, from an address on that is a multiple of 16.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> LoadRows(T const* m) noexcept
{
    using Row = tFour<T>;
    return {LoadAligned<Row>(m), LoadAligned<Row>(m + 4), LoadAligned<Row>(m + 8), LoadAligned<Row>(m + 12)};
}

template <typename T>
[[gnu::always_inline]] inline void StoreRows(tRows<T> const& rows, T* m) noexcept
{
    StoreAligned(rows.row1, m);
    StoreAligned(rows.row2, m + 4);
    StoreAligned(rows.row3, m + 8);
    StoreAligned(rows.row4, m + 12);
}

/// Zero off the diagonal.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> DiagonalRows(T m11, T m22, T m33, T m44) noexcept
{
    T const zero{0};
    return {Four(m11, zero, zero, zero), Four(zero, m22, zero, zero), Four(zero, zero, m33, zero),
            Four(zero, zero, zero, m44)};
}

/// The identity with an offset in its fourth column.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> TranslationRows(T x, T y, T z) noexcept
{
    T const zero{0};
    T const one{1};
    return {Four(one, zero, zero, x), Four(zero, one, zero, y), Four(zero, zero, one, z), Four(zero, zero, zero, one)};
}

/// The diagonal of the matrix at an address.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> DiagonalOf(T const* m) noexcept
{
    return Four(m[0], m[5], m[10], m[15]);
}

/// (0, 0, 0, 1) in the fourth row and column.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> WithoutFourth(tRows<T> const& rows) noexcept
{
    tFour<T> const zeros{};
    return {Choose<0, 1, 2, 7>(rows.row1, zeros), Choose<0, 1, 2, 7>(rows.row2, zeros),
            Choose<0, 1, 2, 7>(rows.row3, zeros), Four(T{0}, T{0}, T{0}, T{1})};
}

template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> Sum(tRows<T> const& a, tRows<T> const& b) noexcept
{
    return {a.row1 + b.row1, a.row2 + b.row2, a.row3 + b.row3, a.row4 + b.row4};
}

template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> Difference(tRows<T> const& a, tRows<T> const& b) noexcept
{
    return {a.row1 - b.row1, a.row2 - b.row2, a.row3 - b.row3, a.row4 - b.row4};
}

/// @name Products
/// @{

/// Each row times its element of the diagonal.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> ScaledRows(T const* diagonal, tRows<T> const& rows) noexcept
{
    using Row = tFour<T>;
    return {Broadcast<Row>(diagonal[0]) * rows.row1, Broadcast<Row>(diagonal[5]) * rows.row2,
            Broadcast<Row>(diagonal[10]) * rows.row3, Broadcast<Row>(diagonal[15]) * rows.row4};
}

/// Each column times its element of the diagonal.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> ScaledColumns(tRows<T> const& rows, T const* diagonal) noexcept
{
    tFour<T> const factors = DiagonalOf(diagonal);
    return {rows.row1 * factors, rows.row2 * factors, rows.row3 * factors, rows.row4 * factors};
}

/// One of four numbers in each lane. A register of 32 bytes is filled from memory, any other by a shuffle.
template <int LANE, typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> Spread(T const* numbers) noexcept
{
    if constexpr (sizeof(tFour<T>) == WIDEST && WIDEST == 32)
        return Broadcast<tFour<T>>(numbers[LANE]);
    else
        return Choose<LANE, LANE, LANE, LANE>(LoadAligned<tFour<T>>(numbers));
}

/// A row of a product: the rows, each times its factor, summed from the first one on.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> Combine(T const* factors, tRows<T> const& rows) noexcept
{
    return Spread<0>(factors) * rows.row1 + Spread<1>(factors) * rows.row2 + Spread<2>(factors) * rows.row3 +
           Spread<3>(factors) * rows.row4;
}

/// A combination of three columns, summed from the first one on.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> Combine(tFour<T> const& column1, tFour<T> const& column2,
                                                          tFour<T> const& column3, T x, T y, T z) noexcept
{
    using Row = tFour<T>;
    return column1 * Broadcast<Row>(x) + column2 * Broadcast<Row>(y) + column3 * Broadcast<Row>(z);
}

/// All rows of a product.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> Product(T const* left, T const* right) noexcept
{
    tRows<T> const rows = LoadRows(right);
    return {Combine(left, rows), Combine(left + 4, rows), Combine(left + 8, rows), Combine(left + 12, rows)};
}

#if BV_AVX

/// Two rows of `float` in one register.
using TwoRows = Register<float, 32>;

/// Two rows that stand apart. They may have been stored one by one just before: a load over both would wait for that.
[[nodiscard, gnu::always_inline]] inline TwoRows LoadTwo(float const* first, float const* second) noexcept
{
    using Row = tFour<float>;
    return __builtin_shufflevector(LoadAligned<Row>(first), LoadAligned<Row>(second), 0, 1, 2, 3, 4, 5, 6, 7);
}

/// A row in both halves of a register. GCC takes two instructions for it unless it is told of the one.
[[nodiscard, gnu::always_inline]] inline TwoRows LoadTwice(float const* row) noexcept
{
#if defined __clang__
    return LoadTwo(row, row);
#else
    return __builtin_ia32_vbroadcastf128_ps256(reinterpret_cast<tFour<float> const*>(row));
#endif
}

/// The second of two rows, for which the same is true.
[[nodiscard, gnu::always_inline]] inline tFour<float> SecondOf(TwoRows const& rows) noexcept
{
#if defined __clang__
    return __builtin_shufflevector(rows, rows, 4, 5, 6, 7);
#else
    return __builtin_ia32_vextractf128_ps256(rows, 1);
#endif
}

/// A row in both halves of a register, times one of four factors for each half.
template <int LANE>
[[nodiscard, gnu::always_inline]] inline TwoRows ScaledTwice(TwoRows const& factors, float const* row) noexcept
{
    constexpr int UPPER = LANE + 4;
    return Shuffle<LANE, LANE, LANE, LANE, UPPER, UPPER, UPPER, UPPER>(factors, factors) * LoadTwice(row);
}

/// Two rows of a product.
[[nodiscard, gnu::always_inline]] inline TwoRows CombineTwo(float const* factors, float const* rows) noexcept
{
    TwoRows const two = LoadTwo(factors, factors + 4);
    return ScaledTwice<0>(two, rows) + ScaledTwice<1>(two, rows + 4) + ScaledTwice<2>(two, rows + 8) +
           ScaledTwice<3>(two, rows + 12);
}

[[nodiscard, gnu::always_inline]] inline tRows<float> Product(float const* left, float const* right) noexcept
{
    TwoRows const upper = CombineTwo(left, right);
    TwoRows const lower = CombineTwo(left + 8, right);
    return {__builtin_shufflevector(upper, upper, 0, 1, 2, 3), SecondOf(upper),
            __builtin_shufflevector(lower, lower, 0, 1, 2, 3), SecondOf(lower)};
}

#endif

/// The product of two rotations. The third row comes first: compilers would otherwise compute what the general product
/// begins with, too, before they know which of the two they need, and have too few registers for it.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> RotationProduct(T const* left, T const* right) noexcept
{
    tRows<T> const rows = LoadRows(right);
    tFour<T> const row3 = Combine(left + 8, rows);
    return WithoutFourth(tRows<T>{Combine(left, rows), Combine(left + 4, rows), row3, row3});
}

#if BV_AVX

[[nodiscard, gnu::always_inline]] inline tRows<float> RotationProduct(float const* left, float const* right) noexcept
{
    TwoRows const zeros{};
    TwoRows const upper = __builtin_shufflevector(CombineTwo(left, right), zeros, 0, 1, 2, 11, 4, 5, 6, 15);
    tFour<float> const row3 = Combine(left + 8, LoadRows(right));
    return {__builtin_shufflevector(upper, upper, 0, 1, 2, 3), SecondOf(upper),
            Choose<0, 1, 2, 7>(row3, tFour<float>{}), Four(0.0F, 0.0F, 0.0F, 1.0F)};
}

#endif

/// @}

/// @name Transposes
/// @{

template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> Transposed(tRows<T> rows) noexcept
{
    Transpose(rows.row1, rows.row2, rows.row3, rows.row4);
    return rows;
}

/// The transpose of a rotation, which is its inverse.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> TransposedRotation(tRows<T> rows) noexcept
{
    Transpose(rows.row1, rows.row2, rows.row3);
    return WithoutFourth(rows);
}

/// Turns the upper left 3x3 of a matrix in its place.
template <typename T>
[[gnu::always_inline]] inline void TransposeRotation(T* m) noexcept
{
    T const m12 = m[1], m13 = m[2], m23 = m[6];
    m[1] = m[4];
    m[2] = m[8];
    m[6] = m[9];
    m[4] = m12;
    m[8] = m13;
    m[9] = m23;
}

/// @}

/// @name Determinants and the inverse
/// @{

template <typename T>
[[nodiscard, gnu::always_inline]] inline T DeterminantOfDiagonal(T const* m) noexcept
{
    return m[0] * m[5] * m[10] * m[15];
}

/// A row or column of a matrix for four determinants: lane j holds the first, second and third of the elements that
/// remain without the one at j.
template <typename Line>
struct tMinors
{
    Line first, second, third;

    [[gnu::always_inline]] explicit tMinors(Line const& line) noexcept
        : first{Choose<1, 0, 0, 0>(line)}, second{Choose<2, 2, 1, 1>(line)}, third{Choose<3, 3, 3, 2>(line)}
    {
    }

    /// The four 2x2 determinants of the last two elements of this line and another.
    [[nodiscard, gnu::always_inline]] Line Cross(tMinors const& other) const noexcept
    {
        return second * other.third - other.second * third;
    }
};

/// The expansion along the first row, its four products side by side: each lane has the determinant without its column,
/// expanded along the second row.
template <typename T>
[[nodiscard, gnu::always_inline]] inline T Determinant(T const* m) noexcept
{
    tRows<T> const rows = LoadRows(m);
    tMinors<tFour<T>> const row2(rows.row2);
    tMinors<tFour<T>> const row3(rows.row3);
    tMinors<tFour<T>> const row4(rows.row4);
    tFour<T> const minors = row2.first * row3.Cross(row4) -
                            row2.second * (row3.first * row4.third - row4.first * row3.third) +
                            row2.third * (row3.first * row4.second - row4.first * row3.second);
    tFour<T> const products = rows.row1 * minors;
    return Get<0>(products) - Get<1>(products) + Get<2>(products) - Get<3>(products);
}

/// What the inverse is made of: row i holds the determinants without column i, each expanded along its first row. Those
/// without row 1 are the ones that the determinant expands to.
template <typename T>
struct tAdjugate
{
    tRows<T> minors;
    T determinant;

    [[gnu::always_inline]] explicit tAdjugate(T const* m) noexcept
    {
        tRows<T> const columns = Transposed(LoadRows(m));
        tMinors<tFour<T>> const c1(columns.row1);
        tMinors<tFour<T>> const c2(columns.row2);
        tMinors<tFour<T>> const c3(columns.row3);
        tMinors<tFour<T>> const c4(columns.row4);
        tFour<T> const c12 = c1.Cross(c2);
        tFour<T> const c13 = c1.Cross(c3);
        tFour<T> const c14 = c1.Cross(c4);
        tFour<T> const c23 = c2.Cross(c3);
        tFour<T> const c24 = c2.Cross(c4);
        tFour<T> const c34 = c3.Cross(c4);
        minors = {c2.first * c34 - c3.first * c24 + c4.first * c23, c1.first * c34 - c3.first * c14 + c4.first * c13,
                  c1.first * c24 - c2.first * c14 + c4.first * c12, c1.first * c23 - c2.first * c13 + c3.first * c12};
        determinant = m[0] * Get<0>(minors.row1) - m[1] * Get<0>(minors.row2) + m[2] * Get<0>(minors.row3) -
                      m[3] * Get<0>(minors.row4);
    }

    /// The minors with their signs, times the reciprocal of the determinant.
    [[nodiscard, gnu::always_inline]] tRows<T> Inverse() const noexcept
    {
        T const q = T{1} / determinant;
        tFour<T> const evenSigns = Four(q, -q, q, -q);
        tFour<T> const oddSigns = Choose<1, 0, 3, 2>(evenSigns);
        return {minors.row1 * evenSigns, minors.row2 * oddSigns, minors.row3 * evenSigns, minors.row4 * oddSigns};
    }
};

/// The rows with the reciprocals of their diagonal in its place.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> InverseOfDiagonal(tRows<T> const& rows,
                                                                    tFour<T> const& diagonal) noexcept
{
    tFour<T> const q = Broadcast<tFour<T>>(T{1}) / diagonal;
    return {Choose<4, 1, 2, 3>(rows.row1, q), Choose<0, 5, 2, 3>(rows.row2, q), Choose<0, 1, 6, 3>(rows.row3, q),
            Choose<0, 1, 2, 7>(rows.row4, q)};
}

/// @}

/// @name Projections
/// @{

/// A central projection of a frustum, from twice the distance of its near plane, the sums and the differences of its
/// ends - right and left, top and bottom in the first two lanes - and the two elements that decide on depths.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> CentralRows(T twiceNear, tFour<T> const& sums,
                                                              tFour<T> const& extents, T m33, T m34) noexcept
{
    using Row = tFour<T>;
    Row const sides = Choose<0, 4, 1, 5>(Broadcast<Row>(twiceNear), sums) / Choose<0, 0, 1, 1>(extents);
    return {Choose<0, 4, 1, 5>(sides, Row{}), Choose<4, 2, 3, 5>(sides, Row{}), Four(T{0}, T{0}, m33, m34),
            Four(T{0}, T{0}, T{-1}, T{0})};
}

/// A parallel projection of a box, from the sums of its ends and the reciprocals of its extents along x, y and z.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> ParallelRows(tFour<T> const& sums,
                                                               tFour<T> const& reciprocals) noexcept
{
    T const zero{0};
    tFour<T> const offsets = Negated(sums) * reciprocals;
    return {Four(T{2} * Get<0>(reciprocals), zero, zero, Get<0>(offsets)),
            Four(zero, T{2} * Get<1>(reciprocals), zero, Get<1>(offsets)),
            Four(zero, zero, T{-2} * Get<2>(reciprocals), Get<2>(offsets)), Four(zero, zero, zero, T{1})};
}

/// @}

/// @name Tests
/// @{

/// Whether a divisor is closer to zero than a tolerance.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IsTooSmall(T divisor, T tolerance) noexcept
{
    return tolerance > Magnitude(divisor); // this way round, so that NaN passes
}

/// Whether one of four divisors is closer to zero than a tolerance.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IsOneTooSmall(tFour<T> const& divisors, T tolerance) noexcept
{
    return Any(Magnitude(divisors) < Broadcast<tFour<T>>(tolerance));
}

/// Recognises many matrices that are neither diagonal nor rotations, and no others: those whose first column is neither
/// near zero off the diagonal nor near length 1. The bounds are far wider than the tolerance. Two elements often
/// show it, with less work.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IsPlainlyGeneral(tRows<T> const& rows, T tolerance) noexcept
{
    T const m11 = Get<0>(rows.row1);
    T const m21 = Get<0>(rows.row2);
    if (Magnitude(m11) > T{1} + T{100} * tolerance && Magnitude(m21) > T{10} * tolerance)
        return true;
    T const m31 = Get<0>(rows.row3);
    T const m41 = Get<0>(rows.row4);
    T const offDiagonal = m21 * m21 + m31 * m31 + m41 * m41;
    // this way round, so that NaN passes: a matrix with one there is GENERAL
    bool const isNearAxis = offDiagonal <= T{100} * tolerance * tolerance;
    bool const isNearUnit = Magnitude(m11 * m11 + offDiagonal - T{1}) <= T{100} * tolerance;
    return !isNearAxis && !isNearUnit;
}

/// Whether every value is far from the one that differs from it by the difference; false says nothing. The bounds are
/// far wider than the tolerance, and whatever is or becomes infinite or NaN is not recognised.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool ArePlainlyDifferent(tFour<T> const& values, tFour<T> const& differences,
                                                                  T tolerance) noexcept
{
    using Row = tFour<T>;
    T const bound = T{100} * tolerance;
    Row const bounds = (values * values + Broadcast<Row>(T{1})) * Broadcast<Row>(bound * bound);
    return All(bounds - differences * differences < Broadcast<Row>(T{0}));
}

/// The same for one value.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IsPlainlyDifferent(T value, T difference, T tolerance) noexcept
{
    T const bound = T{100} * tolerance;
    return (value * value + T{1}) * (bound * bound) - difference * difference < T{0};
}

/// Whether four pairs of numbers are equal by their difference alone, as most equal ones are.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool AreWithin(tFour<T> const& a, tFour<T> const& b, T tolerance) noexcept
{
    tFour<T> const difference = a - b;
    return All(difference * difference < Broadcast<tFour<T>>(tolerance * tolerance));
}

/// @}

} // namespace BV_REGISTERS

} // namespace bv::maths::detail
