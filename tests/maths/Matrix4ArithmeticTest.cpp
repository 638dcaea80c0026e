#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/MatrixException.h"
#include "bv/maths/tMatrix4.h"
#include "support/Allocations.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/Throws.h"

using bv::maths::IsEqual;
using bv::maths::tMatrix4;
using bv::maths::TOLERANCE;
using bv::maths::tVector3;
using namespace bv::test;

namespace
{

char const* const FILE_NAME = "internal\\Maths\\Matrix4";
char const* const MESSAGE = "Attempt to invert singular matrix";

template <typename T>
std::string NameOf(char const* member)
{
    return std::string("bv::maths::tMatrix4<") + TYPE_NAME<T> + ">::" + member;
}

template <typename T>
class Matrix4ArithmeticTest : public testing::Test
{
};
TYPED_TEST_SUITE(Matrix4ArithmeticTest, Precisions);

template <typename T>
constexpr bool KeepsItsSignatures(tMatrix4<T>& matrix, tMatrix4<T> const& constant)
{
    using M = tMatrix4<T>;
    static_assert(std::is_same_v<decltype(constant * constant), M>);
    static_assert(std::is_same_v<decltype(constant + constant), M>);
    static_assert(std::is_same_v<decltype(constant - constant), M>);
    static_assert(std::is_same_v<decltype(matrix *= constant), M&>);
    static_assert(std::is_same_v<decltype(matrix += constant), M&>);
    static_assert(std::is_same_v<decltype(matrix -= constant), M&>);
    static_assert(std::is_same_v<decltype(matrix.Transpose()), M&>);
    static_assert(std::is_same_v<decltype(constant.Transposed()), M>);
    static_assert(std::is_same_v<decltype(matrix.Invert()), M&>);
    static_assert(std::is_same_v<decltype(constant.Inverted()), M>);
    static_assert(std::is_same_v<decltype(constant.Determinant()), T>);
    static_assert(noexcept(matrix *= constant));
    static_assert(!noexcept(matrix.Invert()));
    static_assert(!noexcept(constant.Inverted()));
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

// The rules once more, as plain scalar code that goes through the cases one after the other.

/// A matrix whose elements go by row and column, both from 1.
template <typename T>
struct Plain
{
    Elements<T> elements;
    std::uint32_t state;

    T& operator()(int row, int column) { return elements[static_cast<std::size_t>(4 * (row - 1) + (column - 1))]; }
    T operator()(int row, int column) const { return elements[static_cast<std::size_t>(4 * (row - 1) + (column - 1))]; }
};

template <typename T>
T PlainDeterminant(Plain<T> const& m)
{
    if (m.state == IDENTITY || m.state == ORTHONORMAL)
        return 1;
    if (m.state == DIAGONAL)
        return ((m(1, 1) * m(2, 2)) * m(3, 3)) * m(4, 4);
    auto const minor = [&](int a, int b) // of rows 3 and 4
    { return m(3, a) * m(4, b) - m(4, a) * m(3, b); };
    T const s0 = minor(1, 4);
    T const s1 = minor(1, 3);
    T const s2 = minor(3, 4);
    T const s3 = minor(1, 2);
    T const s4 = minor(2, 4);
    T const s5 = minor(2, 3);
    T const first = m(1, 1) * ((m(2, 2) * s2 - m(2, 3) * s4) + m(2, 4) * s5);
    T const second = m(1, 2) * ((m(2, 1) * s2 - m(2, 3) * s0) + m(2, 4) * s1);
    T const third = m(1, 3) * ((m(2, 1) * s4 - m(2, 2) * s0) + m(2, 4) * s3);
    T const fourth = m(1, 4) * ((m(2, 1) * s5 - m(2, 2) * s1) + m(2, 3) * s3);
    return ((first - second) + third) - fourth;
}

/// What a constructor from these elements makes of them; the classification itself has its own tests.
template <typename T>
Plain<T> Reclassified(Plain<T> m)
{
    m.state = StateOf(tMatrix4<T>(m.elements.data()));
    return m;
}

template <typename T>
void ResetFourth(Plain<T>& m)
{
    for (int i = 1; i <= 3; ++i)
        m(i, 4) = m(4, i) = 0;
    m(4, 4) = 1;
}

template <typename T>
T SumOfFour(Plain<T> const& a, Plain<T> const& b, int row, int column)
{
    return ((a(row, 1) * b(1, column) + a(row, 2) * b(2, column)) + a(row, 3) * b(3, column)) +
           a(row, 4) * b(4, column);
}

template <typename T>
Plain<T> PlainProduct(Plain<T> const& a, Plain<T> const& b)
{
    Plain<T> r{};
    if (b.state == IDENTITY)
        return a;
    if (a.state == IDENTITY)
        return b;
    if (a.state == DIAGONAL && b.state == DIAGONAL)
    {
        for (int i = 1; i <= 4; ++i)
            r(i, i) = a(i, i) * b(i, i);
        r.state = DIAGONAL;
        return r;
    }
    if (a.state == DIAGONAL)
    {
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j)
                r(i, j) = a(i, i) * b(i, j);
        if (b.state == ORTHONORMAL && IsEqual(PlainDeterminant(a), T{1}))
        {
            ResetFourth(r);
            r.state = ORTHONORMAL;
            return r;
        }
        for (int i = 1; i <= 3; ++i)
            r(i, 4) = a(i, i) * b(i, 4);
        for (int j = 1; j <= 4; ++j)
            r(4, j) = a(4, 4) * b(4, j);
        return Reclassified(r);
    }
    if (b.state == DIAGONAL)
    {
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j)
                r(i, j) = a(i, j) * b(j, j);
        if (a.state == ORTHONORMAL && IsEqual(PlainDeterminant(b), T{1}))
        {
            ResetFourth(r);
            r.state = ORTHONORMAL;
            return r;
        }
        for (int j = 1; j <= 3; ++j)
            r(4, j) = a(4, j) * b(j, j);
        for (int i = 1; i <= 4; ++i)
            r(i, 4) = a(i, 4) * b(4, 4);
        return Reclassified(r);
    }
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 4; ++j)
            r(i, j) = SumOfFour(a, b, i, j);
    r.state = GENERAL;
    if (a.state == ORTHONORMAL && b.state == ORTHONORMAL)
    {
        ResetFourth(r);
        r.state = ORTHONORMAL;
    }
    return r;
}

template <typename T>
Plain<T> PlainProductInPlace(Plain<T> const& a, Plain<T> const& b)
{
    Plain<T> r = a;
    if (b.state == IDENTITY)
        return a;
    if (a.state == IDENTITY)
        return b;
    if (a.state == DIAGONAL && b.state == DIAGONAL)
    {
        for (int i = 1; i <= 4; ++i)
            r(i, i) = a(i, i) * a(i, i);
        return r;
    }
    if (a.state == DIAGONAL)
    {
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j)
                r(i, j) = a(i, i) * b(i, j);
        if (b.state == ORTHONORMAL && IsEqual(((r(1, 1) * r(2, 2)) * r(3, 3)) * a(4, 4), T{1}))
        {
            r(4, 4) = 1;
            r.state = ORTHONORMAL;
            return r;
        }
        for (int i = 1; i <= 3; ++i)
            r(i, 4) = a(i, i) * b(i, 4);
        for (int j = 1; j <= 3; ++j)
            r(4, j) = b(4, j) * a(4, 4);
        r(4, 4) = a(4, 4) * b(4, 4);
        r.state = GENERAL;
        return r;
    }
    if (b.state == DIAGONAL)
    {
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j)
                r(i, j) = a(i, j) * b(j, j);
        if (a.state == ORTHONORMAL && IsEqual(PlainDeterminant(b), T{1}))
            return r;
        for (int j = 1; j <= 3; ++j)
            r(4, j) = a(4, j) * b(j, j);
        for (int i = 1; i <= 4; ++i)
            r(i, 4) = a(i, 4) * b(4, 4);
        r.state = GENERAL;
        return r;
    }
    return PlainProduct(a, b);
}

template <typename T>
Plain<T> PlainSum(Plain<T> const& a, Plain<T> const& b, T sign)
{
    Plain<T> r{};
    for (std::size_t i = 0; i < 16; ++i)
        r.elements[i] = a.elements[i] + sign * b.elements[i];
    bool const isDiagonal =
        (a.state == IDENTITY || a.state == DIAGONAL) && (b.state == IDENTITY || b.state == DIAGONAL);
    r.state = isDiagonal ? DIAGONAL : GENERAL;
    return r;
}

template <typename T>
Plain<T> PlainTransposeInPlace(Plain<T> const& m)
{
    Plain<T> r = m;
    if (m.state == IDENTITY || m.state == DIAGONAL)
        return r;
    int const size = m.state == ORTHONORMAL ? 3 : 4;
    for (int i = 1; i <= size; ++i)
        for (int j = 1; j <= size; ++j)
            r(i, j) = m(j, i);
    return r;
}

template <typename T>
Plain<T> PlainTransposed(Plain<T> const& m)
{
    Plain<T> r = PlainTransposeInPlace(m);
    if (m.state == IDENTITY || m.state == DIAGONAL)
        return r;
    if (m.state != ORTHONORMAL)
        return Reclassified(r);
    ResetFourth(r);
    return r;
}

/// The cofactor of row j and column i times the reciprocal of the determinant.
template <typename T>
T InverseElement(Plain<T> const& m, int i, int j, T q)
{
    int rows[3];
    int columns[3];
    int rowCount = 0;
    int columnCount = 0;
    for (int k = 1; k <= 4; ++k)
    {
        if (k != j)
            rows[rowCount++] = k;
        if (k != i)
            columns[columnCount++] = k;
    }
    auto const at = [&](int row, int column) { return m(rows[row], columns[column]); };
    T const a = at(0, 0);
    T const b = at(0, 1);
    T const c = at(0, 2);
    T const d = at(1, 0);
    T const e = at(1, 1);
    T const f = at(1, 2);
    T const g = at(2, 0);
    T const h = at(2, 1);
    T const l = at(2, 2);
    T const minor = (a * (e * l - f * h) - b * (d * l - f * g)) + c * (d * h - e * g);
    return ((i + j) % 2 == 0 ? minor : -minor) * q;
}

template <typename T>
bool IsSingular(Plain<T> const& m)
{
    if (m.state == IDENTITY || m.state == ORTHONORMAL)
        return false;
    if (m.state != DIAGONAL)
        return TOLERANCE<T> > std::abs(PlainDeterminant(m));
    for (int i = 1; i <= 4; ++i)
        if (TOLERANCE < T >> std::abs(m(i, i)))
            return true;
    return false;
}

template <typename T>
Plain<T> PlainInvertInPlace(Plain<T> const& m)
{
    Plain<T> r = m;
    if (m.state == IDENTITY)
        return r;
    if (m.state == ORTHONORMAL)
        return PlainTransposeInPlace(m);
    if (m.state == DIAGONAL)
    {
        for (int i = 1; i <= 4; ++i)
            r(i, i) = 1 / m(i, i);
        return r;
    }
    T const q = 1 / PlainDeterminant(m);
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 4; ++j)
            r(i, j) = InverseElement(m, i, j, q);
    return r;
}

template <typename T>
Plain<T> PlainInverted(Plain<T> const& m)
{
    Plain<T> r = PlainInvertInPlace(m);
    if (m.state == ORTHONORMAL)
        ResetFourth(r);
    if (m.state == UNKNOWN)
        r.state = GENERAL;
    return r;
}

template <typename T>
tMatrix4<T> Make(Plain<T> const& plain)
{
    return MakeMatrix(plain.elements, plain.state);
}

template <typename T>
void ExpectPlain(tMatrix4<T> const& actual, Plain<T> const& expected)
{
    ExpectMatrix(actual, expected.elements, expected.state);
}

/// ExpectValues(), with any NaN for a NaN.
template <typename T>
void ExpectValuesOrNaN(tMatrix4<T> const& actual, Elements<T> const& elements, std::uint32_t state)
{
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_TRUE(actual[i] == elements[i] || (std::isnan(actual[i]) && std::isnan(elements[i]))) << "element " << i;
    EXPECT_EQ(StateOf(actual), state);
}

/// Matrices in every state, with elements that fit the state and with elements that do not.
template <typename T>
std::vector<Plain<T>> Samples()
{
    Random random(20240229);
    std::vector<Plain<T>> samples;
    for (std::uint32_t const state : STATES)
    {
        for (int run = 0; run < 4; ++run)
        {
            Plain<T> stale{{}, state};
            for (T& element : stale.elements)
                element = random.Number<T>(-2, 2);
            samples.push_back(stale);
        }
        samples.push_back({IDENTITY_ELEMENTS<T>, state});
        samples.push_back({Diagonal<T>(2, T{0.5}, 1, 1), state});       // determinant 1, no rotation
        samples.push_back({Diagonal<T>(2, T{0.5}, 4, T{0.25}), state}); // the same, with m44
        samples.push_back({Diagonal<T>(2, 3, 4, 5), state});
        samples.push_back({Diagonal<T>(-1, -1, 1, 1), state});
        samples.push_back({{0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, state});
        samples.push_back({{0, -1, 0, 5, 1, 0, 0, 6, 0, 0, 1, 7, 0, 0, 0, 1}, state});
        samples.push_back({{T{0.5}, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1, 0, 3, 4, 5, 6}, state});
    }
    return samples;
}

// Every path against the plain rules

TYPED_TEST(Matrix4ArithmeticTest, ProductsFollowTheRulesInEveryPairOfStates)
{
    for (Plain<TypeParam> const& a : Samples<TypeParam>())
        for (Plain<TypeParam> const& b : Samples<TypeParam>())
        {
            SCOPED_TRACE("states " + std::to_string(a.state) + " and " + std::to_string(b.state));
            tMatrix4<TypeParam> left = Make(a);
            tMatrix4<TypeParam> const right = Make(b);
            ExpectPlain(left * right, PlainProduct(a, b));
            ExpectPlain(left, a); // neither operand has changed
            EXPECT_EQ(&(left *= right), &left);
            ExpectPlain(left, PlainProductInPlace(a, b));
            ExpectPlain(right, b);
        }
}

TYPED_TEST(Matrix4ArithmeticTest, SumsFollowTheRulesInEveryPairOfStates)
{
    for (Plain<TypeParam> const& a : Samples<TypeParam>())
        for (Plain<TypeParam> const& b : Samples<TypeParam>())
        {
            SCOPED_TRACE("states " + std::to_string(a.state) + " and " + std::to_string(b.state));
            tMatrix4<TypeParam> sum = Make(a);
            tMatrix4<TypeParam> difference = Make(a);
            tMatrix4<TypeParam> const right = Make(b);
            ExpectPlain(sum + right, PlainSum(a, b, TypeParam{1}));
            ExpectPlain(sum - right, PlainSum(a, b, TypeParam{-1}));
            ExpectPlain(sum, a);
            EXPECT_EQ(&(sum += right), &sum);
            EXPECT_EQ(&(difference -= right), &difference);
            ExpectPlain(sum, PlainSum(a, b, TypeParam{1}));
            ExpectPlain(difference, PlainSum(a, b, TypeParam{-1}));
            ExpectPlain(right, b);
        }
}

TYPED_TEST(Matrix4ArithmeticTest, TransposesDeterminantsAndInversesFollowTheRulesInEveryState)
{
    int inverted = 0;
    int singular = 0;
    for (Plain<TypeParam> const& sample : Samples<TypeParam>())
    {
        SCOPED_TRACE("state " + std::to_string(sample.state));
        tMatrix4<TypeParam> const m = Make(sample);
        ExpectSameBits(m.Determinant(), PlainDeterminant(sample));
        ExpectPlain(m.Transposed(), PlainTransposed(sample));
        tMatrix4<TypeParam> transposed(m);
        EXPECT_EQ(&transposed.Transpose(), &transposed);
        ExpectPlain(transposed, PlainTransposeInPlace(sample));
        if (IsSingular(sample))
        {
            ++singular;
            EXPECT_THROW(static_cast<void>(m.Inverted()), bv::maths::MatrixException);
        }
        else
        {
            ++inverted;
            tMatrix4<TypeParam> inverse(m);
            EXPECT_EQ(&inverse.Invert(), &inverse);
            ExpectPlain(inverse, PlainInvertInPlace(sample));
            ExpectPlain(m.Inverted(), PlainInverted(sample));
        }
        ExpectPlain(m, sample);
    }
    EXPECT_GT(inverted, 50);
    EXPECT_EQ(singular, 2); // the two turns labelled DIAGONAL: m11 is 0
}

TYPED_TEST(Matrix4ArithmeticTest, RandomGeneralMatricesHaveTheBitsOfScalarArithmetic)
{
    Random random(31415);
    for (int run = 0; run < 2000; ++run)
    {
        Plain<TypeParam> a{{}, GENERAL};
        Plain<TypeParam> b{{}, GENERAL};
        for (std::size_t i = 0; i < 16; ++i)
        {
            a.elements[i] = random.Number<TypeParam>(-3, 3);
            b.elements[i] = random.Number<TypeParam>(-3, 3);
        }
        ExpectPlain(Make(a) * Make(b), PlainProduct(a, b));
        ExpectSameBits(Make(a).Determinant(), PlainDeterminant(a));
        if (!IsSingular(a))
            ExpectPlain(Make(a).Inverted(), PlainInverted(a));
    }
}

// The product

TYPED_TEST(Matrix4ArithmeticTest, TheIdentityOnEitherSideGivesTheOtherMatrixWithItsState)
{
    tMatrix4<TypeParam> const identity;
    for (std::uint32_t const state : STATES)
    {
        tMatrix4<TypeParam> const m = MakeMatrix(Ramp<TypeParam>(1, 1), state);
        ExpectSameMatrix(m * identity, m);
        tMatrix4<TypeParam> left = m;
        left *= identity;
        ExpectSameMatrix(left, m);
        if (state == IDENTITY)
            continue;
        ExpectSameMatrix(identity * m, m);
        tMatrix4<TypeParam> right;
        right *= m;
        ExpectSameMatrix(right, m);
    }
}

TYPED_TEST(Matrix4ArithmeticTest, TheRightOperandIsTheFirstWhoseIdentityIsBelieved)
{
    tMatrix4<TypeParam> const identity;
    tMatrix4<TypeParam> const stale = MakeMatrix(Ramp<TypeParam>(1, 1), IDENTITY);
    ExpectMatrix(identity * stale, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectMatrix(stale * identity, Ramp<TypeParam>(1, 1), IDENTITY);
    tMatrix4<TypeParam> inPlace;
    inPlace *= stale;
    ExpectMatrix(inPlace, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
}

TYPED_TEST(Matrix4ArithmeticTest, TheRightOperandActsOnAVectorFirst)
{
    tMatrix4<TypeParam> const scale(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1);
    tMatrix4<TypeParam> const shift(1, 0, 0, 10, 0, 1, 0, 20, 0, 0, 1, 30, 0, 0, 0, 1);
    ExpectMatrix<TypeParam>(shift * scale, {2, 0, 0, 10, 0, 3, 0, 20, 0, 0, 4, 30, 0, 0, 0, 1}, GENERAL);
    ExpectMatrix<TypeParam>(scale * shift, {2, 0, 0, 20, 0, 3, 0, 60, 0, 0, 4, 120, 0, 0, 0, 1}, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AProductOfGeneralMatricesIsRowsTimesColumns)
{
    tMatrix4<TypeParam> const a(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    tMatrix4<TypeParam> const b(2, 0, 1, 1, 0, 1, 3, 0, 1, 1, 0, 2, 4, 0, 0, 1);
    // First row: 1*2 + 2*0 + 3*1 + 4*4 = 21, 2*1 + 3*1 = 5, 1*1 + 2*3 = 7, 1*1 + 3*2 + 4*1 = 11.
    Elements<TypeParam> const product = {21, 5, 7, 11, 49, 13, 23, 27, 77, 21, 39, 43, 105, 29, 55, 59};
    ExpectMatrix(a * b, product, GENERAL);
    tMatrix4<TypeParam> inPlace(a);
    inPlace *= b;
    ExpectMatrix(inPlace, product, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AGeneralProductIsNotClassified)
{
    // A shift and its inverse: the identity, but labelled GENERAL.
    tMatrix4<TypeParam> const there(1, 0, 0, 5, 0, 1, 0, 6, 0, 0, 1, 7, 0, 0, 0, 1);
    tMatrix4<TypeParam> const back(1, 0, 0, -5, 0, 1, 0, -6, 0, 0, 1, -7, 0, 0, 0, 1);
    ExpectMatrix(there * back, IDENTITY_ELEMENTS<TypeParam>, GENERAL);
    tMatrix4<TypeParam> inPlace(there);
    inPlace *= back;
    ExpectMatrix(inPlace, IDENTITY_ELEMENTS<TypeParam>, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, DiagonalMatricesMultiplyTheirDiagonals)
{
    tMatrix4<TypeParam> const a(Diagonal<TypeParam>(2, 3, 4, 5).data());
    tMatrix4<TypeParam> const b(Diagonal<TypeParam>(6, 7, 8, 9).data());
    ExpectMatrix(a * b, Diagonal<TypeParam>(12, 21, 32, 45), DIAGONAL);
    // Even where the product is the identity.
    tMatrix4<TypeParam> const twice(Diagonal<TypeParam>(2, 2, 2, 2).data());
    tMatrix4<TypeParam> const half = twice.Inverted();
    ExpectMatrix(twice * half, IDENTITY_ELEMENTS<TypeParam>, DIAGONAL);
    // What stands off the diagonal of a stale operand is dropped.
    ExpectMatrix(MakeMatrix(Ramp<TypeParam>(1, 1), DIAGONAL) * b, Diagonal<TypeParam>(6, 42, 88, 144), DIAGONAL);
}

TYPED_TEST(Matrix4ArithmeticTest, InPlaceADiagonalMatrixSquaresItself)
{
    tMatrix4<TypeParam> a(Diagonal<TypeParam>(2, 3, 4, 5).data());
    a *= tMatrix4<TypeParam>(Diagonal<TypeParam>(6, 7, 8, 9).data());
    ExpectMatrix(a, Diagonal<TypeParam>(4, 9, 16, 25), DIAGONAL);
    // What stands off the diagonal stays.
    tMatrix4<TypeParam> stale = MakeMatrix(Ramp<TypeParam>(1, 1), DIAGONAL);
    stale *= a;
    ExpectMatrix<TypeParam>(stale, {1, 2, 3, 4, 5, 36, 7, 8, 9, 10, 121, 12, 13, 14, 15, 256}, DIAGONAL);
}

TYPED_TEST(Matrix4ArithmeticTest, ADiagonalOfDeterminantOneTimesARotationIsLabelledARotation)
{
    tMatrix4<TypeParam> const stretch(Diagonal<TypeParam>(2, TypeParam{0.5}, 1, 1).data());
    // The fourth column and row are dropped.
    tMatrix4<TypeParam> const turn =
        MakeMatrix<TypeParam>({0, -1, 0, 7, 1, 0, 0, 8, 0, 0, 1, 9, 4, 5, 6, 3}, ORTHONORMAL);
    ExpectValues<TypeParam>(stretch * turn, {0, -2, 0, 0, TypeParam{0.5}, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1},
                            ORTHONORMAL);
    ExpectValues<TypeParam>(turn * stretch, {0, TypeParam{-0.5}, 0, 0, 2, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1},
                            ORTHONORMAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TheDeterminantOfTheDiagonalIsComparedWithTheTolerance)
{
    TypeParam const near = 1 + 50 * EPSILON<TypeParam>;
    TypeParam const far = 1 + 51 * EPSILON<TypeParam>;
    tMatrix4<TypeParam> const turn(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    for (auto const& [m44, state] : {std::pair(near, ORTHONORMAL), std::pair(far, GENERAL)})
    {
        tMatrix4<TypeParam> const diagonal = MakeMatrix(Diagonal<TypeParam>(1, 1, 1, m44), DIAGONAL);
        TypeParam const corner = state == ORTHONORMAL ? TypeParam{1} : m44;
        ExpectValues<TypeParam>(diagonal * turn, {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, corner}, state);
        ExpectValues<TypeParam>(turn * diagonal, {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, corner}, state);
    }
}

TYPED_TEST(Matrix4ArithmeticTest, InPlaceTheDeterminantOfTheDiagonalIsComparedWithTheTolerance)
{
    TypeParam const near = 1 + 50 * EPSILON<TypeParam>;
    TypeParam const far = 1 + 51 * EPSILON<TypeParam>;
    // Its diagonal is all ones, so that scaling it leaves the determinant of the other as it is.
    tMatrix4<TypeParam> const shear =
        MakeMatrix<TypeParam>({1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    for (auto const& [m44, state] : {std::pair(near, ORTHONORMAL), std::pair(far, GENERAL)})
    {
        tMatrix4<TypeParam> const diagonal = MakeMatrix(Diagonal<TypeParam>(1, 1, 1, m44), DIAGONAL);
        TypeParam const corner = state == ORTHONORMAL ? TypeParam{1} : m44;
        Elements<TypeParam> const product = {1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, corner};
        tMatrix4<TypeParam> left(diagonal);
        left *= shear;
        ExpectMatrix(left, product, state);
        tMatrix4<TypeParam> right(shear);
        right *= diagonal;
        ExpectMatrix(right, product, state);
    }
}

TYPED_TEST(Matrix4ArithmeticTest, ADiagonalWhoseDeterminantIsMinusOneOrNaNMakesAProductGeneral)
{
    using M = tMatrix4<TypeParam>;
    M const mirror = M::Scale(tVector3<TypeParam>(-1, 1, 1));
    M const unknown = MakeMatrix(Diagonal<TypeParam>(1, 1, 1, QUIET_NAN<TypeParam>), DIAGONAL);
    M const turn(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    M const shear = MakeMatrix<TypeParam>({1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    ASSERT_EQ(StateOf(turn), ORTHONORMAL);
    for (M const& diagonal : {mirror, unknown})
        for (M const& labelled : {turn, shear}) // in place, only the shear keeps the determinant of a scaled diagonal
        {
            EXPECT_EQ(StateOf(diagonal * labelled), GENERAL);
            EXPECT_EQ(StateOf(labelled * diagonal), GENERAL);
            M left(diagonal);
            left *= labelled;
            EXPECT_EQ(StateOf(left), GENERAL);
            M right(labelled);
            right *= diagonal;
            EXPECT_EQ(StateOf(right), GENERAL);
        }
    ExpectValues<TypeParam>(mirror * turn, {0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, GENERAL);
    ExpectValues<TypeParam>(turn * mirror, {0, -1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, NoOperationAllocates)
{
    // The same in every state: of determinant 1 for GENERAL, and not singular in any.
    Elements<TypeParam> const elements = {1, 0, 0, 2, 0, 1, 0, 3, 0, 0, 1, 4, 0, 0, 0, 1};
    for (std::uint32_t const stateA : STATES)
        for (std::uint32_t const stateB : STATES)
        {
            tMatrix4<TypeParam> a = MakeMatrix(elements, stateA);
            tMatrix4<TypeParam> const b = MakeMatrix(elements, stateB);
            tVector3<TypeParam> vector(1, 0, 0);
            tMatrix4<TypeParam> result;
            TypeParam determinant = 0;
            EXPECT_EQ(CountAllocations(
                          [&]
                          {
                              result = a * b;
                              result = a + b;
                              result = a - b;
                              result = a.Transposed();
                              result = a.Inverted();
                              determinant = a.Determinant();
                              vector = vector.Transformed(a).TransformedAsVector(a);
                              vector.Transform(a).TransformAsVector(a);
                              result = a;
                              result.Transpose();
                              result = a;
                              result.Invert();
                              result *= b;
                              result += b;
                              result -= b;
                          }),
                      0u);
            EXPECT_EQ(determinant, TypeParam{1});
        }
    EXPECT_EQ(CountAllocations([] { ::operator delete(::operator new(1)); }), 1u); // allocations are counted
}

TYPED_TEST(Matrix4ArithmeticTest, OtherProductsWithADiagonalAreClassified)
{
    tMatrix4<TypeParam> const twice(Diagonal<TypeParam>(2, 2, 2, 1).data());
    tMatrix4<TypeParam> const turn(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    ExpectValues<TypeParam>(twice * turn, {0, -2, 0, 0, 2, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1}, GENERAL);
    // A rotation scaled by 1/2, labelled GENERAL: scaling it by 2 gives a rotation again, on either side.
    tMatrix4<TypeParam> const small(0, TypeParam{-0.5}, 0, 0, TypeParam{0.5}, 0, 0, 0, 0, 0, TypeParam{0.5}, 0, 0, 0, 0,
                                    1);
    ExpectValues<TypeParam>(twice * small, {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    ExpectValues<TypeParam>(small * twice, {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    // A diagonal labelled GENERAL is recognised, too.
    tMatrix4<TypeParam> const half =
        MakeMatrix(Diagonal<TypeParam>(TypeParam{0.5}, TypeParam{0.5}, TypeParam{0.5}, 1), GENERAL);
    ExpectValues(twice * half, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectValues(half * twice, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectValues(twice * MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, GENERAL), Diagonal<TypeParam>(2, 2, 2, 1), DIAGONAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AShiftTimesAScalingIsGeneral)
{
    tMatrix4<TypeParam> const shift = tMatrix4<TypeParam>::Translate(1, 2, 3);
    tMatrix4<TypeParam> const turn = tMatrix4<TypeParam>::RotateZ(TypeParam{0.5});
    tMatrix4<TypeParam> const scale = tMatrix4<TypeParam>::Scale(TypeParam{2});
    EXPECT_EQ(StateOf(shift * turn), GENERAL);
    ExpectValues<TypeParam>(shift * scale, {2, 0, 0, 1, 0, 2, 0, 2, 0, 0, 2, 3, 0, 0, 0, 1}, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, InPlaceProductsWithADiagonalAreNotClassified)
{
    tMatrix4<TypeParam> const twice(Diagonal<TypeParam>(2, 2, 2, 1).data());
    tMatrix4<TypeParam> const half =
        MakeMatrix(Diagonal<TypeParam>(TypeParam{0.5}, TypeParam{0.5}, TypeParam{0.5}, 1), GENERAL);
    tMatrix4<TypeParam> left(twice);
    left *= half;
    ExpectValues(left, IDENTITY_ELEMENTS<TypeParam>, GENERAL);
    tMatrix4<TypeParam> right(half);
    right *= twice;
    ExpectValues(right, IDENTITY_ELEMENTS<TypeParam>, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, InPlaceTheDeterminantOfTheScaledDiagonalDecides)
{
    // The determinant of the diagonal is 1, but after scaling the rows of the turn the diagonal is 0, 0, 1.
    tMatrix4<TypeParam> const turn(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    tMatrix4<TypeParam> a(Diagonal<TypeParam>(2, TypeParam{0.5}, 1, 1).data());
    EXPECT_EQ(StateOf(a * turn), ORTHONORMAL);
    a *= turn;
    ExpectValues<TypeParam>(a, {0, -2, 0, 0, TypeParam{0.5}, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, GENERAL);

    // Here it is the other way round: 2 * 4 * 4 * 0.25 = 8 before, (2 * 0.5) * (4 * 0.25) * (4 * 1) * 0.25 = 1 after.
    tMatrix4<TypeParam> const labelled =
        MakeMatrix<TypeParam>({TypeParam{0.5}, 9, 9, 4, 9, TypeParam{0.25}, 9, 5, 9, 9, 1, 6, 1, 2, 3, 4}, ORTHONORMAL);
    Elements<TypeParam> const before = {2, 0, 0, -1, 0, 4, 0, -2, 0, 0, 4, -3, -4, -5, -6, TypeParam{0.25}};
    tMatrix4<TypeParam> b = MakeMatrix(before, DIAGONAL);
    EXPECT_EQ(StateOf(b * labelled), GENERAL);
    b *= labelled;
    ExpectMatrix<TypeParam>(b, {1, 18, 18, -1, 36, 1, 36, -2, 36, 36, 4, -3, -4, -5, -6, 1}, ORTHONORMAL);
}

TYPED_TEST(Matrix4ArithmeticTest, InPlaceTheFourthColumnIsScaledByTheDiagonalFromBeforeTheCall)
{
    tMatrix4<TypeParam> a(Diagonal<TypeParam>(2, 3, 4, 5).data());
    a *= tMatrix4<TypeParam>(7, 1, 1, 1, 1, 7, 1, 1, 1, 1, 7, 1, 1, 1, 1, 7);
    ExpectMatrix<TypeParam>(a, {14, 2, 2, 2, 3, 21, 3, 3, 4, 4, 28, 4, 5, 5, 5, 35}, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, InPlaceARotationKeepsItsFourthRowAndColumnWhenAUnitDiagonalScalesIt)
{
    tMatrix4<TypeParam> turn = MakeMatrix<TypeParam>({0, -1, 0, 7, 1, 0, 0, 8, 0, 0, 1, 9, 4, 5, 6, 3}, ORTHONORMAL);
    turn *= MakeMatrix(Diagonal<TypeParam>(2, 4, TypeParam{0.5}, TypeParam{0.25}), DIAGONAL);
    ExpectValues<TypeParam>(turn, {0, -4, 0, 7, 2, 0, 0, 8, 0, 0, TypeParam{0.5}, 9, 4, 5, 6, 3}, ORTHONORMAL);

    tMatrix4<TypeParam> other = MakeMatrix<TypeParam>({0, -1, 0, 7, 1, 0, 0, 8, 0, 0, 1, 9, 4, 5, 6, 3}, ORTHONORMAL);
    other *= MakeMatrix(Diagonal<TypeParam>(2, 3, 5, 10), DIAGONAL);
    ExpectValues<TypeParam>(other, {0, -3, 0, 70, 2, 0, 0, 80, 0, 0, 5, 90, 8, 15, 30, 30}, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AProductOfRotationsIsARotationWithItsFourthRowAndColumnReset)
{
    TypeParam const angle = static_cast<TypeParam>(3.14159265358979323846 / 6);
    tMatrix4<TypeParam> const turn = tMatrix4<TypeParam>::RotateZ(angle);
    tMatrix4<TypeParam> const twice = tMatrix4<TypeParam>::RotateZ(2 * angle);
    tMatrix4<TypeParam> const product = turn * turn;
    tMatrix4<TypeParam> inPlace(turn);
    inPlace *= turn;
    for (tMatrix4<TypeParam> const& m : {product, inPlace})
    {
        EXPECT_TRUE(m == twice);
        EXPECT_EQ(StateOf(m), ORTHONORMAL);
        for (std::size_t const i : {3u, 7u, 11u, 12u, 13u, 14u})
            ExpectSameBits(m[i], TypeParam{0});
        ExpectSameBits(m[15], TypeParam{1});
    }
}

TYPED_TEST(Matrix4ArithmeticTest, AProductOfRotationsAboutShiftedAxesDropsTheShiftButSumsAllFourTerms)
{
    // Only the fourth column of the left times the fourth row of the right would show in the 3x3.
    tMatrix4<TypeParam> const a = MakeMatrix<TypeParam>({1, 0, 0, 2, 0, 1, 0, 3, 0, 0, 1, 5, 0, 0, 0, 1}, ORTHONORMAL);
    tMatrix4<TypeParam> const b =
        MakeMatrix<TypeParam>({1, 0, 0, 9, 0, 1, 0, 9, 0, 0, 1, 9, 10, 20, 30, 1}, ORTHONORMAL);
    Elements<TypeParam> const product = {21, 40, 60, 0, 30, 61, 90, 0, 50, 100, 151, 0, 0, 0, 0, 1};
    ExpectMatrix(a * b, product, ORTHONORMAL);
    tMatrix4<TypeParam> inPlace(a);
    inPlace *= b;
    ExpectMatrix(inPlace, product, ORTHONORMAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AMatrixCanBeMultipliedByItself)
{
    for (Plain<TypeParam> const& sample : Samples<TypeParam>())
    {
        SCOPED_TRACE("state " + std::to_string(sample.state));
        tMatrix4<TypeParam> m = Make(sample);
        ExpectPlain(m * m, PlainProduct(sample, sample));
        m *= m;
        ExpectPlain(m, PlainProductInPlace(sample, sample));
    }
}

TYPED_TEST(Matrix4ArithmeticTest, AStateBeyondTheFourMultipliesAsGeneral)
{
    tMatrix4<TypeParam> const unknown = MakeMatrix(Ramp<TypeParam>(1, 1), UNKNOWN);
    tMatrix4<TypeParam> const general = MakeMatrix(Ramp<TypeParam>(1, 1), GENERAL);
    tMatrix4<TypeParam> const turn(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    ExpectSameMatrix(unknown * turn, general * turn);
    ExpectSameMatrix(turn * unknown, turn * general);
    ExpectSameMatrix(unknown * unknown, general * general);
}

// Sum and difference

TYPED_TEST(Matrix4ArithmeticTest, TheSumOfTwoIdentitiesIsDiagonal)
{
    tMatrix4<TypeParam> const identity;
    ExpectMatrix(identity + identity, Diagonal<TypeParam>(2, 2, 2, 2), DIAGONAL);
    ExpectMatrix(identity - identity, Elements<TypeParam>{}, DIAGONAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TheDifferenceOfAGeneralMatrixAndItselfIsAZeroLabelledGeneral)
{
    tMatrix4<TypeParam> m(Ramp<TypeParam>(1, 1).data());
    ExpectMatrix(m - m, Elements<TypeParam>{}, GENERAL);
    tMatrix4<TypeParam> const& same = m;
    m -= same;
    ExpectMatrix(m, Elements<TypeParam>{}, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AMatrixCanBeAddedToItself)
{
    tMatrix4<TypeParam> m(Ramp<TypeParam>(1, 1).data());
    m += m;
    ExpectMatrix(m, Ramp<TypeParam>(2, 2), GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, SumsAreElementByElement)
{
    tMatrix4<TypeParam> const a(Ramp<TypeParam>(1, 1).data());
    tMatrix4<TypeParam> const b(Ramp<TypeParam>(100, 10).data());
    ExpectMatrix(a + b, Ramp<TypeParam>(101, 11), GENERAL);
    ExpectMatrix(a - b, Ramp<TypeParam>(-99, -9), GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, ASumWithARotationIsGeneral)
{
    tMatrix4<TypeParam> const turn(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    tMatrix4<TypeParam> const scale(Diagonal<TypeParam>(1, 2, 3, 4).data());
    EXPECT_EQ(StateOf(turn + scale), GENERAL);
    EXPECT_EQ(StateOf(scale + turn), GENERAL);
    EXPECT_EQ(StateOf(turn - turn), GENERAL);
    EXPECT_EQ(StateOf(scale + tMatrix4<TypeParam>()), DIAGONAL);
}

// The transpose

TYPED_TEST(Matrix4ArithmeticTest, TransposingMirrorsTheElementsOfAGeneralMatrix)
{
    Elements<TypeParam> const mirrored = {1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16};
    tMatrix4<TypeParam> m(Ramp<TypeParam>(1, 1).data());
    ExpectMatrix(m.Transposed(), mirrored, GENERAL);
    m.Transpose();
    ExpectMatrix(m, mirrored, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TransposingADiagonalOrIdentityDoesNothingEvenToAStaleOne)
{
    for (std::uint32_t const state : {IDENTITY, DIAGONAL})
    {
        tMatrix4<TypeParam> m = MakeMatrix(Ramp<TypeParam>(1, 1), state);
        ExpectMatrix(m.Transposed(), Ramp<TypeParam>(1, 1), state);
        m.Transpose();
        ExpectMatrix(m, Ramp<TypeParam>(1, 1), state);
    }
}

TYPED_TEST(Matrix4ArithmeticTest, TransposingARotationKeepsItsFourthRowAndColumnInPlaceAndResetsThemInACopy)
{
    tMatrix4<TypeParam> m = MakeMatrix(Ramp<TypeParam>(1, 1), ORTHONORMAL);
    ExpectMatrix<TypeParam>(m.Transposed(), {1, 5, 9, 0, 2, 6, 10, 0, 3, 7, 11, 0, 0, 0, 0, 1}, ORTHONORMAL);
    m.Transpose();
    ExpectMatrix<TypeParam>(m, {1, 5, 9, 4, 2, 6, 10, 8, 3, 7, 11, 12, 13, 14, 15, 16}, ORTHONORMAL);
}

TYPED_TEST(Matrix4ArithmeticTest, OnlyTheTransposedCopyOfAGeneralMatrixIsClassified)
{
    Elements<TypeParam> const turn = {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    Elements<TypeParam> const back = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    for (std::uint32_t const state : {GENERAL, UNKNOWN})
    {
        tMatrix4<TypeParam> m = MakeMatrix(turn, state);
        ExpectMatrix(m.Transposed(), back, ORTHONORMAL);
        m.Transpose();
        ExpectMatrix(m, back, state);
        EXPECT_EQ(StateOf(MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, state).Transposed()), IDENTITY);
        EXPECT_EQ(StateOf(MakeMatrix(Diagonal<TypeParam>(1, 2, 3, 4), state).Transposed()), DIAGONAL);
    }
}

TYPED_TEST(Matrix4ArithmeticTest, ResultsAreClassifiedAtTheBoundsOfTheStates)
{
    TypeParam const epsilon = EPSILON<TypeParam>;
    TypeParam const tolerance = TOLERANCE<TypeParam>;
    TypeParam const nan = QUIET_NAN<TypeParam>;
    TypeParam const infinity = INF<TypeParam>;
    // Its square is far below epsilon, so a turn by it has the diagonal of the identity.
    TypeParam const slight = 64 * tolerance;
    struct Case
    {
        TypeParam m11, m21;
        std::uint32_t state;
    };
    Case const cases[] = {{1, slight, ORTHONORMAL},
                          {1 + 20 * epsilon, slight, ORTHONORMAL}, // the square is 40 steps above 1
                          {1 + 60 * epsilon, slight, GENERAL},     // 120 steps
                          {1 + 99 * tolerance, slight, GENERAL},
                          {1 + 101 * tolerance, slight, GENERAL},
                          {1 + 101 * tolerance, 9 * tolerance, GENERAL},
                          {2, 11 * tolerance, GENERAL},
                          {2, tolerance, GENERAL},
                          {2, tolerance / 2, DIAGONAL},
                          {2, 0, DIAGONAL},
                          {-2, -1, GENERAL},
                          {-1, slight, GENERAL}, // a mirror
                          {TypeParam{0.5}, 1, GENERAL},
                          {infinity, 1, GENERAL},
                          {infinity, 0, DIAGONAL},
                          {nan, 1, GENERAL},
                          {nan, 0, DIAGONAL},
                          {2, nan, GENERAL},
                          {2, -infinity, GENERAL}};
    for (auto const& [m11, m21, state] : cases)
    {
        SCOPED_TRACE(std::to_string(m11) + ' ' + std::to_string(m21));
        Elements<TypeParam> const m = {m11, -m21, 0, 0, m21, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        Elements<TypeParam> const transposed = {m11, m21, 0, 0, -m21, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        ExpectValuesOrNaN(MakeMatrix(m, GENERAL).Transposed(), transposed, state);
        EXPECT_EQ(StateOf(tMatrix4<TypeParam>(m.data())), state);
        // 1 on the diagonal, but not labelled so, multiplies the elements by 1. Infinity and NaN times 0 are NaN.
        if (std::isfinite(m11) && std::isfinite(m21))
        {
            tMatrix4<TypeParam> const one = MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, DIAGONAL);
            ExpectValues(one * MakeMatrix(m, GENERAL), m, state);
            ExpectValues(MakeMatrix(m, GENERAL) * one, m, state);
        }
    }
}

// The determinant

TYPED_TEST(Matrix4ArithmeticTest, TheDeterminantGoesByTheStateAndNotByTheElements)
{
    Elements<TypeParam> const values = {2, 1, 1, 1, 1, 3, 1, 1, 1, 1, 4, 1, 1, 1, 1, 5};
    ExpectSameBits(MakeMatrix(values, IDENTITY).Determinant(), TypeParam{1});
    ExpectSameBits(MakeMatrix(values, ORTHONORMAL).Determinant(), TypeParam{1});
    ExpectSameBits(MakeMatrix(values, DIAGONAL).Determinant(), TypeParam{120});
    // det(D + uu') with D = diag(1, 2, 3, 4) and u all ones: 24 * (1 + 1 + 1/2 + 1/3 + 1/4) = 74.
    ExpectSameBits(MakeMatrix(values, GENERAL).Determinant(), TypeParam{74});
    ExpectSameBits(MakeMatrix(values, UNKNOWN).Determinant(), TypeParam{74});
}

TYPED_TEST(Matrix4ArithmeticTest, TheDeterminantOfARotationIsExactlyOne)
{
    ExpectSameBits(tMatrix4<TypeParam>::RotateX(TypeParam{0.5}).Determinant(), TypeParam{1});
    ExpectSameBits(tMatrix4<TypeParam>::RotateAxis({1, 2, 3}, {3, 2, 1}, TypeParam{2}).Determinant(), TypeParam{1});
}

TYPED_TEST(Matrix4ArithmeticTest, TheDeterminantOfADiagonalIsTheProductFromTheLeft)
{
    tMatrix4<TypeParam> const m(Diagonal<TypeParam>(2, 3, 4, 5).data());
    ExpectSameBits(m.Determinant(), TypeParam{120});
    // The largest and the smallest normal value: their product is about 4, the squares are infinity and zero.
    TypeParam const huge = LARGEST<TypeParam>;
    TypeParam const tiny = SMALLEST_NORMAL<TypeParam>;
    TypeParam const infinity = INF<TypeParam>;
    auto const determinant = [](TypeParam m11, TypeParam m22, TypeParam m33, TypeParam m44)
    { return MakeMatrix(Diagonal(m11, m22, m33, m44), DIAGONAL).Determinant(); };
    EXPECT_EQ(determinant(huge, huge, tiny, tiny), infinity);
    EXPECT_EQ(determinant(tiny, tiny, huge, huge), TypeParam{0});
    EXPECT_EQ(determinant(huge, tiny, huge, tiny), infinity);
    EXPECT_TRUE(std::isfinite(determinant(huge, tiny, tiny, huge)));
    EXPECT_GT(determinant(huge, tiny, tiny, huge), TypeParam{15});
}

TYPED_TEST(Matrix4ArithmeticTest, TwoEqualRowsHaveNoDeterminant)
{
    tMatrix4<TypeParam> const m(1, 2, 3, 4, 7, 5, 3, 8, 1, 2, 3, 4, 9, 6, 2, 1);
    EXPECT_EQ(m.Determinant(), TypeParam{0});
}

TYPED_TEST(Matrix4ArithmeticTest, EachPermutationHasItsSignAsDeterminant)
{
    std::array<std::size_t, 4> order = {0, 1, 2, 3};
    do
    {
        int inversions = 0;
        Elements<TypeParam> values{};
        for (std::size_t row = 0; row < 4; ++row)
        {
            values[4 * row + order[row]] = static_cast<TypeParam>(row + 2);
            for (std::size_t above = 0; above < row; ++above)
                inversions += order[above] > order[row] ? 1 : 0;
        }
        TypeParam const expected = inversions % 2 == 0 ? 120 : -120;
        EXPECT_EQ(MakeMatrix(values, GENERAL).Determinant(), expected);
    } while (std::next_permutation(order.begin(), order.end()));
}

// The inverse

TYPED_TEST(Matrix4ArithmeticTest, TheInverseOfADiagonalIsItsReciprocals)
{
    tMatrix4<TypeParam> m(Diagonal<TypeParam>(1, 2, 4, 8).data());
    Elements<TypeParam> const inverse = Diagonal<TypeParam>(1, TypeParam{0.5}, TypeParam{0.25}, TypeParam{0.125});
    ExpectMatrix(m.Inverted(), inverse, DIAGONAL);
    m.Invert();
    ExpectMatrix(m, inverse, DIAGONAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TheInverseOfADiagonalLeavesTheRestAlone)
{
    tMatrix4<TypeParam> m = MakeMatrix<TypeParam>({2, 1, 2, 3, 4, 4, 5, 6, 7, 8, 8, 9, 10, 11, 12, 16}, DIAGONAL);
    Elements<TypeParam> const inverse = {TypeParam{0.5},   1, 2,  3,  4,  TypeParam{0.25},  5, 6, 7, 8,
                                         TypeParam{0.125}, 9, 10, 11, 12, TypeParam{0.0625}};
    ExpectMatrix(m.Inverted(), inverse, DIAGONAL);
    m.Invert();
    ExpectMatrix(m, inverse, DIAGONAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TheInverseOfTheIdentityIsACopyEvenOfAStaleOne)
{
    tMatrix4<TypeParam> m = MakeMatrix(Ramp<TypeParam>(1, 1), IDENTITY);
    ExpectMatrix(m.Inverted(), Ramp<TypeParam>(1, 1), IDENTITY);
    m.Invert();
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), IDENTITY);
}

TYPED_TEST(Matrix4ArithmeticTest, InvertingARotationKeepsItsFourthRowAndColumnInPlaceAndResetsThemInACopy)
{
    tMatrix4<TypeParam> m = MakeMatrix(Ramp<TypeParam>(1, 1), ORTHONORMAL);
    ExpectMatrix<TypeParam>(m.Inverted(), {1, 5, 9, 0, 2, 6, 10, 0, 3, 7, 11, 0, 0, 0, 0, 1}, ORTHONORMAL);
    m.Invert();
    ExpectMatrix<TypeParam>(m, {1, 5, 9, 4, 2, 6, 10, 8, 3, 7, 11, 12, 13, 14, 15, 16}, ORTHONORMAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TheInverseOfAGeneralMatrixUndoesIt)
{
    // Scaling by 2, 4, 8 and a shift: everything is exact.
    tMatrix4<TypeParam> m(2, 0, 0, 3, 0, 4, 0, 5, 0, 0, 8, 7, 0, 0, 0, 1);
    Elements<TypeParam> const inverse = {TypeParam{0.5},
                                         0,
                                         0,
                                         TypeParam{-1.5},
                                         0,
                                         TypeParam{0.25},
                                         0,
                                         TypeParam{-1.25},
                                         0,
                                         0,
                                         TypeParam{0.125},
                                         TypeParam{-0.875},
                                         0,
                                         0,
                                         0,
                                         1};
    ExpectValues(m.Inverted(), inverse, GENERAL);
    m.Invert();
    ExpectValues(m, inverse, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, TheInverseOfADenseMatrixOfDeterminantOneIsOfIntegers)
{
    // The product of a lower and an upper triangle of ones on the diagonal; the inverse was found by elimination.
    tMatrix4<TypeParam> m(1, 1, 2, -1, 2, 3, 3, 0, -1, 2, -4, 10, 1, -1, 6, 2);
    Elements<TypeParam> const inverse = {-246, 104, -27, 12, 100, -42, 11, -5, 64, -27, 7, -3, -19, 8, -2, 1};
    ExpectSameBits(m.Determinant(), TypeParam{1});
    ExpectValues(m.Inverted(), inverse, GENERAL);
    m.Invert();
    ExpectValues(m, inverse, GENERAL);
}

TYPED_TEST(Matrix4ArithmeticTest, AMatrixTimesItsInverseIsTheIdentity)
{
    tMatrix4<TypeParam> const m(2, 1, 0, 0, 0, 2, 1, 0, 0, 0, 2, 1, 1, 0, 0, 2); // determinant 16 - 1
    ASSERT_EQ(StateOf(m), GENERAL);
    EXPECT_TRUE(m * m.Inverted() == tMatrix4<TypeParam>());
    EXPECT_TRUE(m.Inverted() * m == tMatrix4<TypeParam>());
    tMatrix4<TypeParam> inPlace(m);
    inPlace.Invert();
    EXPECT_TRUE(m * inPlace == tMatrix4<TypeParam>());
}

TYPED_TEST(Matrix4ArithmeticTest, InvertKeepsAStateBeyondTheFourAndInvertedMakesItGeneral)
{
    tMatrix4<TypeParam> m = MakeMatrix(Diagonal<TypeParam>(1, 2, 4, 8), UNKNOWN);
    Elements<TypeParam> const inverse = Diagonal<TypeParam>(1, TypeParam{0.5}, TypeParam{0.25}, TypeParam{0.125});
    ExpectValues(m.Inverted(), inverse, GENERAL);
    m.Invert();
    ExpectValues(m, inverse, UNKNOWN);
}

/// Expects that neither way of inverting works, that each says so from its own line, and that nothing has changed.
template <typename T>
void ExpectSingular(tMatrix4<T> const& original, unsigned int invertLine, unsigned int invertedLine)
{
    tMatrix4<T> m(original);
    ExpectThrows<bv::maths::MatrixException>([&] { m.Invert(); }, MESSAGE, NameOf<T>("Invert"), FILE_NAME, invertLine);
    ExpectSameMatrix(m, original);
    ExpectThrows<bv::maths::MatrixException>([&] { static_cast<void>(m.Inverted()); }, MESSAGE, NameOf<T>("Inverted"),
                                             FILE_NAME, invertedLine);
    ExpectSameMatrix(m, original);
}

TYPED_TEST(Matrix4ArithmeticTest, ADiagonalWithAnElementBelowTheToleranceIsSingular)
{
    TypeParam const below = std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    for (std::size_t i = 0; i < 16; i += 5)
        for (TypeParam const value : {TypeParam{0}, TypeParam{-0.0}, below, -below, TINY<TypeParam>})
        {
            Elements<TypeParam> values = Diagonal<TypeParam>(1, 2, 4, 8);
            values[i] = value;
            ExpectSingular(MakeMatrix(values, DIAGONAL), 773, 883);
        }
}

TYPED_TEST(Matrix4ArithmeticTest, ADiagonalWithAnElementOfExactlyTheToleranceIsInverted)
{
    for (std::size_t i = 0; i < 16; i += 5)
        for (TypeParam const value : {TOLERANCE<TypeParam>, -TOLERANCE<TypeParam>})
        {
            Elements<TypeParam> values = Diagonal<TypeParam>(1, 1, 1, 1);
            values[i] = value;
            tMatrix4<TypeParam> const m = MakeMatrix(values, DIAGONAL);
            values[i] = 1 / value;
            ExpectMatrix(m.Inverted(), values, DIAGONAL);
        }
}

TEST(Matrix4SingularTest, TheToleranceIsThatOfThePrecision)
{
    ExpectSingular(tMatrix4<float>(Diagonal<float>(1, 2, 4, 1e-7f).data()), 773, 883);
    tMatrix4<double> const fine(Diagonal<double>(1, 2, 4, 1e-7).data());
    EXPECT_EQ(fine.Inverted()[15], 1 / 1e-7);
    ExpectSingular(tMatrix4<double>(Diagonal<double>(1, 2, 4, 2e-15).data()), 773, 883);

    auto const sheared = [](auto m11)
    { return tMatrix4<decltype(m11)>(m11, 0, 0, 5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1); };
    ExpectSingular(sheared(1e-6f), 801, 920);
    EXPECT_NO_THROW(static_cast<void>(sheared(2e-6f).Inverted()));
    EXPECT_NO_THROW(static_cast<void>(sheared(1e-6).Inverted()));
    ExpectSingular(sheared(2e-15), 801, 920);
    EXPECT_NO_THROW(static_cast<void>(sheared(2.220446049250313e-15).Inverted()));
    EXPECT_NO_THROW(static_cast<void>(sheared(1.1920928955078125e-06f).Inverted()));
}

TYPED_TEST(Matrix4ArithmeticTest, AGeneralMatrixWithADeterminantBelowTheToleranceIsSingular)
{
    TypeParam const below = std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    for (TypeParam const value : {TypeParam{0}, TypeParam{-0.0}, below, -below})
        for (std::uint32_t const state : {GENERAL, UNKNOWN})
            ExpectSingular(MakeMatrix<TypeParam>({value, 0, 0, 3, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, state), 801,
                           920);
    ExpectSingular(tMatrix4<TypeParam>(1, 2, 3, 4, 7, 5, 3, 8, 1, 2, 3, 4, 9, 6, 2, 1), 801, 920);
    ExpectSingular(tMatrix4<TypeParam>(Ramp<TypeParam>(1, 1).data()), 801, 920);
}

TYPED_TEST(Matrix4ArithmeticTest, AGeneralMatrixWithADeterminantOfExactlyTheToleranceIsInverted)
{
    for (TypeParam const value : {TOLERANCE<TypeParam>, -TOLERANCE<TypeParam>})
    {
        tMatrix4<TypeParam> m = MakeMatrix(Diagonal<TypeParam>(value, 1, 1, 1), GENERAL);
        m.Invert();
        // Each reciprocal is 1/value times a cofactor: 1 for m11, the value itself for the others.
        TypeParam const q = 1 / value;
        ExpectValues(m, Diagonal<TypeParam>(q, value * q, value * q, value * q), GENERAL);
    }
}

TYPED_TEST(Matrix4ArithmeticTest, NaNIsInvertedNotRejected)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tMatrix4<TypeParam> diagonal(Diagonal<TypeParam>(2, nan, 4, 8).data());
    ExpectMatrix(diagonal.Inverted(), Diagonal<TypeParam>(TypeParam{0.5}, nan, TypeParam{0.25}, TypeParam{0.125}),
                 DIAGONAL);
    diagonal.Invert();
    EXPECT_TRUE(std::isnan(diagonal[5]));
    tMatrix4<TypeParam> general = MakeMatrix(Diagonal<TypeParam>(2, nan, 4, 8), GENERAL);
    EXPECT_TRUE(std::isnan(general.Inverted()[0]));
    general.Invert();
    EXPECT_TRUE(std::isnan(general[0]));
    EXPECT_EQ(StateOf(general), GENERAL);
    // A NaN elsewhere does not save a diagonal with a zero behind it.
    ExpectSingular(MakeMatrix(Diagonal<TypeParam>(nan, 0, 4, 8), DIAGONAL), 773, 883);
}

TYPED_TEST(Matrix4ArithmeticTest, InfinityIsNotChecked)
{
    TypeParam const infinity = INF<TypeParam>;
    tMatrix4<TypeParam> const m(Diagonal<TypeParam>(infinity, -infinity, 4, 8).data());
    ExpectMatrix(m.Inverted(), Diagonal<TypeParam>(0, TypeParam{-0.0}, TypeParam{0.25}, TypeParam{0.125}), DIAGONAL);
    EXPECT_EQ((m + m)[0], infinity);
    EXPECT_TRUE(std::isnan((m - m)[0]));
    EXPECT_EQ((m * m)[5], infinity);
}

TYPED_TEST(Matrix4ArithmeticTest, ARotationOrIdentityIsNeverSingular)
{
    for (std::uint32_t const state : {IDENTITY, ORTHONORMAL})
    {
        tMatrix4<TypeParam> m = MakeMatrix(Elements<TypeParam>{}, state);
        EXPECT_NO_THROW(m.Invert());
        ExpectMatrix(m, Elements<TypeParam>{}, state);
        EXPECT_NO_THROW(static_cast<void>(m.Inverted()));
    }
}

} // namespace
