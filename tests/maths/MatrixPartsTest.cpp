#include "bv/maths/tMatrixParts.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "bv/maths/View.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class MatrixPartsTest : public testing::Test
{
};
TYPED_TEST_SUITE(MatrixPartsTest, Precisions);

template <typename T>
void ExpectNear(tVector3<T> const& actual, tVector3<T> const& expected, T tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

/// The same rotation up to an error of this size in its components.
template <typename T>
void ExpectSameRotation(tQuaternion<T> const& actual, tQuaternion<T> const& expected, T tolerance)
{
    T const sign = actual.Dot(expected) < 0 ? T{-1} : T{1};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(actual[i] * sign, expected[i], tolerance);
}

template <typename T>
void ExpectSameElements(tMatrix4<T> const& actual, tMatrix4<T> const& expected, T tolerance)
{
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "element " << i;
}

template <typename T>
[[nodiscard]] tQuaternion<T> AnyRotation(Random& random)
{
    tQuaternion<T> rotation(random.Number(T{-1}, T{1}), random.Number(T{-1}, T{1}), random.Number(T{-1}, T{1}),
                            random.Number(T{-1}, T{1}));
    return rotation.Normalise();
}

/// A matrix of these nine elements and an offset.
template <typename T>
[[nodiscard]] tMatrix4<T> Affine(std::array<T, 9> const& m, tVector3<T> const& offset = {})
{
    return MakeMatrix<T>(
        {m[0], m[1], m[2], offset.x, m[3], m[4], m[5], offset.y, m[6], m[7], m[8], offset.z, 0, 0, 0, 1}, GENERAL);
}

template <typename T>
[[nodiscard]] tMatrix4<T> AnyAffine(Random& random)
{
    std::array<T, 9> m{};
    for (T& element : m)
        element = random.Number(T{-1}, T{1});
    return Affine(m, random.Vector<tVector3<T>>(-5, 5));
}

/// x S x for the symmetric part.
template <typename T>
[[nodiscard]] T Form(tMatrixParts<T> const& parts, tVector3<T> const& x)
{
    tVector3<T> const& d = parts.scale;
    tVector3<T> const& s = parts.shear;
    return x.x * (d.x * x.x + s.x * x.y + s.y * x.z) + x.y * (s.x * x.x + d.y * x.y + s.z * x.z) +
           x.z * (s.y * x.x + s.z * x.y + d.z * x.z);
}

using Nine = std::array<long double, 9>;

/// The cofactors of a 3x3 matrix, divided by its determinant: the transpose of its inverse.
[[nodiscard]] Nine TransposedInverse(Nine const& m)
{
    Nine const cofactors = {m[4] * m[8] - m[5] * m[7], m[5] * m[6] - m[3] * m[8], m[3] * m[7] - m[4] * m[6],
                            m[2] * m[7] - m[1] * m[8], m[0] * m[8] - m[2] * m[6], m[1] * m[6] - m[0] * m[7],
                            m[1] * m[5] - m[2] * m[4], m[2] * m[3] - m[0] * m[5], m[0] * m[4] - m[1] * m[3]};
    long double const determinant = m[0] * cofactors[0] + m[1] * cofactors[1] + m[2] * cofactors[2];
    Nine result{};
    for (std::size_t i = 0; i < 9; ++i)
        result[i] = cofactors[i] / determinant;
    return result;
}

/// The orthogonal factor by Newton's iteration: N. Higham, "Computing the Polar Decomposition", 1986.
template <typename T>
[[nodiscard]] Nine NearestOrthogonal(tMatrix4<T> const& matrix)
{
    Nine x{};
    for (std::size_t i = 0; i < 9; ++i)
        x[i] = static_cast<long double>(matrix[i / 3 * 4 + i % 3]);
    for (int round = 0; round < 100; ++round)
    {
        Nine const y = TransposedInverse(x);
        for (std::size_t i = 0; i < 9; ++i)
            x[i] = (x[i] + y[i]) / 2;
    }
    return x;
}

TYPED_TEST(MatrixPartsTest, TheDefaultPartsAreThoseOfTheIdentity)
{
    using T = TypeParam;
    ExpectMatrix(Compose(tMatrixParts<T>()), IDENTITY_ELEMENTS<T>, IDENTITY);
    tMatrixParts<T> const parts = Decompose(tMatrix4<T>()).value();
    ExpectSameBits(parts.translation, tVector3<T>());
    ExpectSameBits(parts.scale, tVector3<T>(1, 1, 1));
    ExpectSameBits(parts.shear, tVector3<T>());
    ExpectSameRotation(parts.rotation, tQuaternion<T>(), T{0});
}

TYPED_TEST(MatrixPartsTest, AMatrixIsPutTogetherFromTheRightmostPartOn)
{
    using T = TypeParam;
    // A quarter about z turns x to y. S = ((2, 1, 0), (1, 3, 0), (0, 0, 4)), and the rotation makes (-s_2j, s_1j,
    // s_3j).
    T const half = std::sqrt(T(0.5));
    tMatrixParts<T> const parts{{7, 8, 9}, {0, 0, half, half}, {2, 3, 4}, {1, 0, 0}};
    ExpectSameElements(Compose(parts), Affine<T>({-1, -3, 0, 2, 1, 0, 0, 0, 4}, {7, 8, 9}), 8 * EPSILON<T>);
    EXPECT_EQ(StateOf(Compose(parts)), GENERAL);
    tMatrix4<T> const plain = Compose<T>({7, 8, 9}, {0, 0, half, half}, {2, 3, 4});
    ExpectSameElements(plain, Affine<T>({0, -3, 0, 2, 0, 0, 0, 0, 4}, {7, 8, 9}), 8 * EPSILON<T>);
    ExpectSameMatrix(plain, Compose<T>({{7, 8, 9}, {0, 0, half, half}, {2, 3, 4}, {}}));
}

TYPED_TEST(MatrixPartsTest, ElementsAreSummedInTheOrderWritten)
{
    using T = TypeParam;
    Random random(41);
    for (int run = 0; run < 300; ++run)
    {
        tMatrixParts<T> const p{random.Vector<tVector3<T>>(-5, 5), AnyRotation<T>(random),
                                random.Vector<tVector3<T>>(-2, 2), random.Vector<tVector3<T>>(-2, 2)};
        tMatrix4<T> const r = p.rotation.GetMatrix();
        tMatrix4<T> const actual = Compose(p);
        for (std::size_t i = 0; i < 3; ++i)
        {
            T const* const row = r.Get() + 4 * i;
            ExpectSameBits(actual[4 * i], (row[0] * p.scale.x + row[1] * p.shear.x) + row[2] * p.shear.y);
            ExpectSameBits(actual[4 * i + 1], (row[0] * p.shear.x + row[1] * p.scale.y) + row[2] * p.shear.z);
            ExpectSameBits(actual[4 * i + 2], (row[0] * p.shear.y + row[1] * p.shear.z) + row[2] * p.scale.z);
            ExpectSameBits(actual[4 * i + 3], p.translation[i]);
            ExpectSameBits(actual[12 + i], T{0});
        }
        ExpectSameBits(actual[15], T{1});
    }
}

TYPED_TEST(MatrixPartsTest, AComposedMatrixIsClassified)
{
    using T = TypeParam;
    tQuaternion<T> const turn = tQuaternion<T>::RotateAxis({1, 2, 3}, 1);
    EXPECT_EQ(StateOf(Compose<T>({}, turn, {1, 1, 1})), ORTHONORMAL);
    EXPECT_EQ(StateOf(Compose<T>({}, {}, {2, 3, 4})), DIAGONAL);
    EXPECT_EQ(StateOf(Compose<T>({0, 1, 0}, turn, {1, 1, 1})), GENERAL);
    EXPECT_EQ(StateOf(Compose<T>({}, turn, {1, 1, 2})), GENERAL);
}

TYPED_TEST(MatrixPartsTest, PartsComeBackFromTheMatrixThatTheyMake)
{
    using T = TypeParam;
    Random random(42);
    T const close = 64 * EPSILON<T>;
    for (int run = 0; run < 2000; ++run)
    {
        // Dominated by its diagonal, S is definite; a negative one reflects.
        T const sign = random.Below(2) == 0 ? T{1} : T{-1};
        tMatrixParts<T> const expected{random.Vector<tVector3<T>>(-5, 5), AnyRotation<T>(random),
                                       random.Vector<tVector3<T>>(1, 3) * sign,
                                       random.Vector<tVector3<T>>(T(-0.4), T(0.4)) * sign};
        tMatrix4<T> const matrix = Compose(expected);
        EXPECT_EQ(matrix.Determinant() > T{0}, sign > T{0});
        tMatrixParts<T> const parts = Decompose(matrix).value();
        ExpectSameBits(parts.translation, expected.translation);
        ExpectSameRotation(parts.rotation, expected.rotation, close);
        ExpectNear(parts.scale, expected.scale, close);
        ExpectNear(parts.shear, expected.shear, close);
    }
}

TYPED_TEST(MatrixPartsTest, AnyMatrixIsTheProductOfItsParts)
{
    using T = TypeParam;
    Random random(43);
    for (int run = 0; run < 2000; ++run)
    {
        tMatrix4<T> const matrix = AnyAffine<T>(random);
        tMatrixParts<T> const parts = Decompose(matrix).value();
        ExpectSameElements(Compose(parts), matrix, 32 * EPSILON<T>);
        EXPECT_NEAR(parts.rotation.LengthSquared(), T{1}, 4 * EPSILON<T>);
        T const sign = matrix.Determinant() < 0 ? T{-1} : T{1};
        for (int i = 0; i < 4; ++i)
            EXPECT_GE(Form(parts, random.Vector<tVector3<T>>(-1, 1)) * sign, -32 * EPSILON<T>);
    }
}

TYPED_TEST(MatrixPartsTest, TheRotationIsTheNearestOne)
{
    using T = TypeParam;
    Random random(44);
    for (int run = 0; run < 500; ++run)
    {
        tMatrix4<T> const matrix = AnyAffine<T>(random);
        if (std::abs(matrix.Determinant()) < T(0.05)) // the nearest is then hardly nearer than others
            continue;
        Nine const expected = NearestOrthogonal(matrix);
        T const sign = matrix.Determinant() < 0 ? T{-1} : T{1};
        tMatrix4<T> const rotation = Decompose(matrix).value().rotation.GetMatrix();
        for (std::size_t i = 0; i < 9; ++i)
            EXPECT_NEAR(rotation[i / 3 * 4 + i % 3] * sign, static_cast<T>(expected[i]), 16 * EPSILON<T>);
    }
}

TYPED_TEST(MatrixPartsTest, PerpendicularColumnsHaveNoShear)
{
    using T = TypeParam;
    tMatrixParts<T> const scaled = Decompose(Affine<T>({2, 0, 0, 0, 3, 0, 0, 0, 4}, {5, 6, 7})).value();
    ExpectSameBits(scaled.translation, tVector3<T>(5, 6, 7));
    ExpectSameRotation(scaled.rotation, tQuaternion<T>(), T{0});
    ExpectSameBits(scaled.scale, tVector3<T>(2, 3, 4));
    ExpectNear(scaled.shear, {}, T{0});
    // x to y, y to z and z to x: a third of a turn about (1, 1, 1), with the factors of the columns.
    tMatrixParts<T> const turned = Decompose(Affine<T>({0, 0, 4, 2, 0, 0, 0, 3, 0})).value();
    ExpectSameRotation(turned.rotation, tQuaternion<T>(T(0.5), T(0.5), T(0.5), T(0.5)), T{0});
    ExpectSameBits(turned.scale, tVector3<T>(2, 3, 4));
    ExpectNear(turned.shear, {}, T{0});
}

TYPED_TEST(MatrixPartsTest, AReflectionIsOneOfAllThreeScales)
{
    using T = TypeParam;
    // diag(-2, 3, 4) is half a turn about x, diag(1, -1, -1), times diag(-2, -3, -4).
    tMatrixParts<T> const parts = Decompose(Affine<T>({-2, 0, 0, 0, 3, 0, 0, 0, 4})).value();
    ExpectSameRotation(parts.rotation, tQuaternion<T>(1, 0, 0, 0), T{0});
    ExpectSameBits(parts.scale, tVector3<T>(-2, -3, -4));
    // Two negative scales are a rotation.
    tMatrixParts<T> const two = Decompose(Affine<T>({-2, 0, 0, 0, -3, 0, 0, 0, 4})).value();
    ExpectSameRotation(two.rotation, tQuaternion<T>(0, 0, 1, 0), T{0});
    ExpectSameBits(two.scale, tVector3<T>(2, 3, 4));
}

TYPED_TEST(MatrixPartsTest, ScalesOfZeroLeaveARotation)
{
    using T = TypeParam;
    for (tVector3<T> const& scale :
         {tVector3<T>(0, 0, 0), {2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {0, 2, 3}, {3, 0, 2}, {2, 3, 0}})
    {
        tMatrixParts<T> const parts = Decompose(Affine<T>({scale.x, 0, 0, 0, scale.y, 0, 0, 0, scale.z})).value();
        ExpectSameRotation(parts.rotation, tQuaternion<T>(), T{0});
        ExpectNear(parts.scale, scale, T{0});
        ExpectNear(parts.shear, {}, T{0});
    }
    Random random(45);
    T const close = 64 * EPSILON<T>;
    for (int run = 0; run < 1000; ++run)
    {
        // Of rank 1 and 2, with the rounding errors of its elements.
        auto const a = random.Vector<tVector3<T>>(-1, 1), b = random.Vector<tVector3<T>>(-1, 1);
        auto const c = random.Vector<tVector3<T>>(-1, 1), d = random.Vector<tVector3<T>>(-1, 1);
        T const second = run % 2 == 0 ? T{1} : T{0};
        std::array<T, 9> m{};
        for (std::size_t i = 0; i < 9; ++i)
            m[i] = a[i / 3] * b[i % 3] + second * c[i / 3] * d[i % 3];
        tMatrixParts<T> const parts = Decompose(Affine(m)).value();
        EXPECT_NEAR(parts.rotation.LengthSquared(), T{1}, 4 * EPSILON<T>);
        ExpectSameElements(Compose(parts), Affine(m), close);
    }
}

TYPED_TEST(MatrixPartsTest, TheScaleOfAMatrixMakesNoDifference)
{
    using T = TypeParam;
    Random random(46);
    tMatrix4<T> const matrix = AnyAffine<T>(random);
    tMatrixParts<T> const expected = Decompose(matrix).value();
    int const last = sizeof(T) == sizeof(float) ? 120 : 1000;
    for (int exponent = -last; exponent <= last; exponent += last / 4)
    {
        Elements<T> m = ElementsOf(matrix);
        T const factor = std::ldexp(T{1}, exponent);
        for (std::size_t i = 0; i < 12; ++i)
            m[i] *= i % 4 == 3 ? T{1} : factor;
        tMatrixParts<T> const parts = Decompose(MakeMatrix(m, GENERAL)).value();
        for (std::size_t i = 0; i < 4; ++i)
            ExpectSameBits(parts.rotation[i], expected.rotation[i]);
        ExpectNear(parts.scale, expected.scale * factor, EPSILON<T> * factor);
        ExpectNear(parts.shear, expected.shear * factor, EPSILON<T> * factor);
    }
}

TYPED_TEST(MatrixPartsTest, TheStateDecidesWhatIsRead)
{
    using T = TypeParam;
    Elements<T> m = {2, 9, 9, 4, 9, 3, 9, 5, 9, 9, 4, 6, 0, 0, 0, 1};
    tMatrixParts<T> const none = Decompose(MakeMatrix(m, IDENTITY)).value();
    ExpectSameMatrix(Compose(none), tMatrix4<T>());
    tMatrixParts<T> const diagonal = Decompose(MakeMatrix(m, DIAGONAL)).value();
    ExpectSameBits(diagonal.scale, tVector3<T>(2, 3, 4));
    ExpectSameBits(diagonal.translation, tVector3<T>());
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
    {
        tMatrixParts<T> const parts = Decompose(MakeMatrix(m, state)).value();
        ExpectSameBits(parts.translation, tVector3<T>(4, 5, 6));
        ExpectSameElements(Compose(parts), MakeMatrix(m, GENERAL), 128 * EPSILON<T>);
    }
    m[14] = 1;
    EXPECT_TRUE(Decompose(MakeMatrix(m, DIAGONAL)));
    m[15] = 2;
    EXPECT_TRUE(Decompose(MakeMatrix(m, IDENTITY)));
    EXPECT_FALSE(Decompose(MakeMatrix(m, DIAGONAL)));
}

TYPED_TEST(MatrixPartsTest, WhatIsNotAffineOrNotFiniteHasNoParts)
{
    using T = TypeParam;
    Random random(47);
    Elements<T> const affine = ElementsOf(AnyAffine<T>(random));
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
    {
        for (std::size_t i = 12; i < 16; ++i)
        {
            Elements<T> m = affine;
            m[i] = i == 15 ? NEXT_AFTER_ONE<T> : TINY<T>;
            EXPECT_FALSE(Decompose(MakeMatrix(m, state)));
        }
        for (T const broken : {QUIET_NAN<T>, INF<T>, -INF<T>})
            for (std::size_t i = 0; i < 16; ++i)
            {
                Elements<T> m = affine;
                m[i] = broken;
                EXPECT_FALSE(Decompose(MakeMatrix(m, state)));
            }
    }
    EXPECT_FALSE(Decompose(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 2)));
}

} // namespace
