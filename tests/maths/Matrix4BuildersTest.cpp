#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/tMatrix4.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Throws.h"

using bv::maths::IsEqual;
using bv::maths::tMatrix4;
using bv::maths::TOLERANCE;
using bv::maths::tVector3;
using namespace bv::test;

namespace
{

/// A few roundings near values of size 1 to 4.
template <typename T>
constexpr T CLOSE = 16 * EPSILON<T>;

template <typename T>
void ExpectClose(tVector3<T> const& actual, tVector3<T> const& expected)
{
    EXPECT_NEAR(actual.x, expected.x, CLOSE<T>);
    EXPECT_NEAR(actual.y, expected.y, CLOSE<T>);
    EXPECT_NEAR(actual.z, expected.z, CLOSE<T>);
}

template <typename T>
class Matrix4BuildersTest : public testing::Test
{
};
TYPED_TEST_SUITE(Matrix4BuildersTest, Precisions);

template <typename T>
constexpr bool KeepsItsSignatures()
{
    using M = tMatrix4<T>;
    using ByNumber = M (*)(T const&) noexcept;
    using ByVector = M (*)(tVector3<T> const&) noexcept;
    using ByAxis = M (*)(tVector3<T> const&, tVector3<T> const&, T const&) noexcept;
    using ByThree = M (*)(T, T, T) noexcept;
    using ByView = M (*)(T const&, T const&, T const&, T const&, T const&, T const&);
    static_assert(std::is_same_v<decltype(&M::RotateX), ByNumber>);
    static_assert(std::is_same_v<decltype(&M::RotateY), ByNumber>);
    static_assert(std::is_same_v<decltype(&M::RotateZ), ByNumber>);
    static_assert(std::is_same_v<decltype(&M::RotateAxis), ByAxis>);
    static_assert(std::is_same_v<decltype(&M::OrthogonalProjection), ByView>);
    static_assert(std::is_same_v<decltype(&M::PerspectiveProjection), ByView>);
    static_assert(std::is_same_v<decltype(static_cast<ByNumber>(&M::Scale)), ByNumber>);
    static_assert(std::is_same_v<decltype(static_cast<ByVector>(&M::Scale)), ByVector>);
    static_assert(std::is_same_v<decltype(static_cast<ByVector>(&M::Translate)), ByVector>);
    static_assert(std::is_same_v<decltype(static_cast<ByThree>(&M::Translate)), ByThree>);
    return true;
}
static_assert(KeepsItsSignatures<float>() && KeepsItsSignatures<double>());

// Rotations about the axes

TYPED_TEST(Matrix4BuildersTest, RotationsHoldSinesAndCosinesInTheirPlaces)
{
    using M = tMatrix4<TypeParam>;
    for (double const value : {0.5, -0.5, 1.0, 2.5, -3.0, 100.0})
    {
        auto const angle = Runtime(static_cast<TypeParam>(value));
        TypeParam const c = std::cos(angle);
        TypeParam const s = std::sin(angle);
        ExpectMatrix<TypeParam>(M::RotateX(angle), {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1}, ORTHONORMAL);
        ExpectMatrix<TypeParam>(M::RotateY(angle), {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1}, ORTHONORMAL);
        ExpectMatrix<TypeParam>(M::RotateZ(angle), {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    }
}

/// The elements of a rotation, each within so many epsilons of the true value, relative to it.
template <typename T>
void ExpectWithinSteps(tMatrix4<T> const& matrix, double const (&turned)[9], T steps)
{
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
        {
            double const expected = turned[3 * row + column];
            double const bound = static_cast<double>(steps * std::numeric_limits<T>::epsilon());
            EXPECT_NEAR(static_cast<double>(matrix[4 * row + column]), expected, bound * std::abs(expected))
                << row << ", " << column;
        }
}

// The C library rounds its sines and cosines as it likes. The true ones are worked out to 40 digits.
TYPED_TEST(Matrix4BuildersTest, RotationsAreWithinAStepOfTheTrueOnes)
{
    using M = tMatrix4<TypeParam>;
    constexpr double TRUE_VALUES[][3] = {{0.5, 0.4794255386042030002733, 0.8775825618903727161163},
                                         {1, 0.8414709848078965066525, 0.5403023058681397174009},
                                         {2.5, 0.5984721441039564940519, -0.8011436155469337148335},
                                         {-3, -0.1411200080598672221007, -0.9899924966004454572716},
                                         {100, -0.5063656411097587936566, 0.8623188722876839341019},
                                         {0x1p-10, 0.0009765623447795782989, 0.9999995231628796924864}};
    for (auto const& [value, s, c] : TRUE_VALUES)
    {
        auto const angle = static_cast<TypeParam>(value);
        ExpectWithinSteps<TypeParam>(M::RotateX(angle), {1, 0, 0, 0, c, -s, 0, s, c}, 1);
        ExpectWithinSteps<TypeParam>(M::RotateY(angle), {c, 0, s, 0, 1, 0, -s, 0, c}, 1);
        ExpectWithinSteps<TypeParam>(M::RotateZ(angle), {c, -s, 0, s, c, 0, 0, 0, 1}, 1);
    }
}

TYPED_TEST(Matrix4BuildersTest, RotatingAboutXByNothingIsStillARotation)
{
    ExpectValues(tMatrix4<TypeParam>::RotateX(0), IDENTITY_ELEMENTS<TypeParam>, ORTHONORMAL);
    ExpectValues(tMatrix4<TypeParam>::RotateX(TypeParam{-0.0}), IDENTITY_ELEMENTS<TypeParam>, ORTHONORMAL);
    TypeParam const small = Runtime(JustBelow(TOLERANCE<TypeParam>));
    ExpectMatrix<TypeParam>(tMatrix4<TypeParam>::RotateX(small),
                            {1, 0, 0, 0, 0, 1, -std::sin(small), 0, 0, std::sin(small), 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
}

TYPED_TEST(Matrix4BuildersTest, RotatingAboutYOrZByNothingIsTheIdentity)
{
    TypeParam const small = Runtime(JustBelow(TOLERANCE<TypeParam>));
    for (TypeParam const angle : {TypeParam{0}, TypeParam{-0.0}, small, -small})
    {
        ExpectMatrix(tMatrix4<TypeParam>::RotateY(angle), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
        ExpectMatrix(tMatrix4<TypeParam>::RotateZ(angle), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    }
    for (TypeParam const angle : {TOLERANCE<TypeParam>, -TOLERANCE<TypeParam>})
    {
        EXPECT_EQ(StateOf(tMatrix4<TypeParam>::RotateY(angle)), ORTHONORMAL);
        EXPECT_EQ(StateOf(tMatrix4<TypeParam>::RotateZ(angle)), ORTHONORMAL);
    }
}

TYPED_TEST(Matrix4BuildersTest, AFullTurnIsNotTheIdentity)
{
    EXPECT_EQ(StateOf(tMatrix4<TypeParam>::RotateY(2 * PI<TypeParam>)), ORTHONORMAL);
    EXPECT_EQ(StateOf(tMatrix4<TypeParam>::RotateZ(2 * PI<TypeParam>)), ORTHONORMAL);
    EXPECT_EQ(StateOf(tMatrix4<TypeParam>::RotateAxis({}, {0, 0, 1}, 2 * PI<TypeParam>)), ORTHONORMAL);
}

TYPED_TEST(Matrix4BuildersTest, RotationsAreRightHanded)
{
    using V = tVector3<TypeParam>;
    TypeParam const quarter = PI<TypeParam> / 2;
    ExpectClose(V(1, 0, 0).Transformed(tMatrix4<TypeParam>::RotateZ(quarter)), V(0, 1, 0));
    ExpectClose(V(0, 1, 0).Transformed(tMatrix4<TypeParam>::RotateX(quarter)), V(0, 0, 1));
    ExpectClose(V(0, 0, 1).Transformed(tMatrix4<TypeParam>::RotateY(quarter)), V(1, 0, 0));
}

TYPED_TEST(Matrix4BuildersTest, ANonFiniteAngleGivesNonFiniteElements)
{
    for (TypeParam const angle : {QUIET_NAN<TypeParam>, INF<TypeParam>})
    {
        EXPECT_TRUE(std::isnan(tMatrix4<TypeParam>::RotateX(angle)[5]));
        EXPECT_TRUE(std::isnan(tMatrix4<TypeParam>::RotateY(angle)[0]));
        EXPECT_TRUE(std::isnan(tMatrix4<TypeParam>::RotateZ(angle)[0]));
        EXPECT_TRUE(std::isnan(tMatrix4<TypeParam>::RotateAxis({}, {0, 0, 1}, angle)[0]));
        EXPECT_EQ(StateOf(tMatrix4<TypeParam>::RotateY(angle)), ORTHONORMAL);
    }
}

// Rotation about a line

TYPED_TEST(Matrix4BuildersTest, RotationAboutALineOfNaNGivesNaNElements)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    for (tVector3<TypeParam> const& broken : {tVector3<TypeParam>(nan, 2, 3), {1, nan, 3}, {1, 2, nan}})
    {
        // A point enters the fourth column alone, a direction the 3x3, too.
        tMatrix4<TypeParam> const shifted = tMatrix4<TypeParam>::RotateAxis(broken, {3, 2, 1}, 1);
        tMatrix4<TypeParam> const turned = tMatrix4<TypeParam>::RotateAxis({1, 2, 3}, broken, 1);
        for (std::size_t row = 0; row < 3; ++row)
        {
            for (std::size_t column = 0; column < 3; ++column)
            {
                EXPECT_TRUE(std::isfinite(shifted[4 * row + column]));
                EXPECT_TRUE(std::isnan(turned[4 * row + column]));
            }
            EXPECT_TRUE(std::isnan(shifted[4 * row + 3]));
            EXPECT_TRUE(std::isnan(turned[4 * row + 3]));
        }
        EXPECT_EQ(StateOf(shifted), ORTHONORMAL);
        EXPECT_EQ(StateOf(turned), ORTHONORMAL);
    }
}

TYPED_TEST(Matrix4BuildersTest, RotationAboutALineIsTheFormulaOfRodrigues)
{
    Random random(27182);
    auto const next = [&random] { return random.Number<TypeParam>(-3, 3); };
    for (int run = 0; run < 500; ++run)
    {
        TypeParam const px = next();
        TypeParam const py = next();
        TypeParam const pz = next();
        TypeParam const dx = next();
        TypeParam const dy = next();
        TypeParam const dz = next();
        TypeParam const angle = next();

        TypeParam const k = 1 / std::sqrt((dx * dx + dy * dy) + dz * dz);
        TypeParam const x = dx * k;
        TypeParam const y = dy * k;
        TypeParam const z = dz * k;
        TypeParam const c = std::cos(angle);
        TypeParam const s = std::sin(angle);
        TypeParam const t = 1 - c;
        Elements<TypeParam> m = {(t * x) * x + c,
                                 (t * x) * y - s * z,
                                 (t * x) * z + s * y,
                                 0, //
                                 (t * x) * y + s * z,
                                 (t * y) * y + c,
                                 (t * y) * z - s * x,
                                 0, //
                                 (t * x) * z - s * y,
                                 (t * y) * z + s * x,
                                 (t * z) * z + c,
                                 0, //
                                 0,
                                 0,
                                 0,
                                 1};
        m[3] = px - ((m[0] * px + m[1] * py) + m[2] * pz);
        m[7] = py - ((m[4] * px + m[5] * py) + m[6] * pz);
        m[11] = pz - ((m[8] * px + m[9] * py) + m[10] * pz);
        ExpectMatrix(tMatrix4<TypeParam>::RotateAxis({px, py, pz}, {dx, dy, dz}, angle), m, ORTHONORMAL);
    }
}

// Where the two products of an element have opposite signs, their rounding is several times that of their sum.
TYPED_TEST(Matrix4BuildersTest, RotationAboutALineIsWithinAFewStepsOfTheTrueOne)
{
    ExpectWithinSteps<TypeParam>(tMatrix4<TypeParam>::RotateAxis({}, {3, -4, 12}, 1),
                                 {0.5647832481591855313, -0.8093837039030424759, -0.1609903800074772081,
                                  0.7441011911269203056, 0.5838239810522211643, -0.3247506374309896883,
                                  0.3568379183358437191, 0.06362058632650100707, 0.9319973825248727393},
                                 8);
}

TYPED_TEST(Matrix4BuildersTest, RotationAboutALineLeavesAPositiveZeroWhereItDoesNotShift)
{
    using T = TypeParam;
    // Half a turn about z leaves the axis where it is, to the bit: m33 is 2 * 1 * 1 - 1. 0 - 0 and 5 - 5 are +0.
    tMatrix4<T> const m = tMatrix4<T>::RotateAxis({0, 0, 5}, {0, 0, 1}, Runtime(PI<T>));
    ExpectSameBits(m[10], T{1});
    for (std::size_t const i : {3U, 7U, 11U})
        ExpectSameBits(m[i], T{0});
}

TYPED_TEST(Matrix4BuildersTest, RotationAboutAShiftedAxisTurnsAroundIt)
{
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::RotateAxis({1, 0, 0}, {0, 0, 5}, PI<TypeParam> / 2);
    EXPECT_EQ(StateOf(m), ORTHONORMAL);
    ExpectClose(tVector3<TypeParam>(2, 0, 0).Transformed(m), tVector3<TypeParam>(1, 1, 0));
    ExpectClose(tVector3<TypeParam>(1, 0, 0).Transformed(m), tVector3<TypeParam>(1, 0, 0)); // the point stays
    ExpectClose(tVector3<TypeParam>(1, 0, 7).Transformed(m), tVector3<TypeParam>(1, 0, 7)); // and so does the axis
}

TYPED_TEST(Matrix4BuildersTest, RotationAboutAnAxisOfTheWorldIsThatRotation)
{
    TypeParam const angle = TypeParam{0.75};
    using M = tMatrix4<TypeParam>;
    EXPECT_TRUE(M::RotateAxis({}, {2, 0, 0}, angle) == M::RotateX(angle));
    EXPECT_TRUE(M::RotateAxis({}, {0, 3, 0}, angle) == M::RotateY(angle));
    EXPECT_TRUE(M::RotateAxis({}, {0, 0, 4}, angle) == M::RotateZ(angle));
    EXPECT_TRUE(M::RotateAxis({}, {0, 0, -4}, angle) == M::RotateZ(-angle));
}

TYPED_TEST(Matrix4BuildersTest, AThirdOfATurnAboutTheDiagonalOfSpacePermutesTheAxes)
{
    using V = tVector3<TypeParam>;
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::RotateAxis({}, {2, 2, 2}, 2 * PI<TypeParam> / 3);
    ExpectClose(V(1, 0, 0).Transformed(m), V(0, 1, 0));
    ExpectClose(V(0, 1, 0).Transformed(m), V(0, 0, 1));
    ExpectClose(V(0, 0, 1).Transformed(m), V(1, 0, 0));
}

TYPED_TEST(Matrix4BuildersTest, RotationByNothingOrAboutNothingIsTheIdentity)
{
    using M = tMatrix4<TypeParam>;
    tVector3<TypeParam> const point(1, 2, 3);
    TypeParam const zero = JustBelow(TOLERANCE<TypeParam>);
    TypeParam const tiny = TOLERANCE<TypeParam>;
    ExpectMatrix(M::RotateAxis(point, {0, 0, 0}, 1), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectMatrix(M::RotateAxis(point, {zero, -zero, zero}, 1), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    for (TypeParam const angle : {TypeParam{0}, zero, -zero})
        ExpectMatrix(M::RotateAxis(point, {4, 5, 6}, angle), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    EXPECT_EQ(StateOf(M::RotateAxis(point, {4, 5, 6}, tiny)), ORTHONORMAL);
    EXPECT_EQ(StateOf(M::RotateAxis(point, {tiny, 0, 0}, 1)), ORTHONORMAL);
    EXPECT_EQ(StateOf(M::RotateAxis(point, {0, tiny, 0}, 1)), ORTHONORMAL);
    EXPECT_EQ(StateOf(M::RotateAxis(point, {0, 0, tiny}, 1)), ORTHONORMAL);
}

TYPED_TEST(Matrix4BuildersTest, ArithmeticForgetsTheShiftOfARotationAboutALine)
{
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::RotateAxis({1, 2, 3}, {3, 2, 1}, 1);
    ASSERT_NE(m[3], TypeParam{0});
    tMatrix4<TypeParam> const square = m * m;
    EXPECT_EQ(StateOf(square), ORTHONORMAL);
    EXPECT_EQ(square[3], TypeParam{0});
    tMatrix4<TypeParam> inverse(m);
    inverse.Invert();
    EXPECT_EQ(inverse[3], m[3]);
    EXPECT_EQ(inverse[1], m[4]);
    EXPECT_EQ(m.Inverted()[3], TypeParam{0});
    EXPECT_EQ(m.Determinant(), TypeParam{1});
}

// Scaling

TYPED_TEST(Matrix4BuildersTest, ScalingByOneFactorIsDiagonalOrTheIdentity)
{
    using M = tMatrix4<TypeParam>;
    TypeParam const epsilon = EPSILON<TypeParam>;
    ExpectMatrix(M::Scale(TypeParam{2}), Diagonal<TypeParam>(2, 2, 2, 1), DIAGONAL);
    ExpectMatrix(M::Scale(TypeParam{0}), Diagonal<TypeParam>(0, 0, 0, 1), DIAGONAL);
    ExpectMatrix(M::Scale(TypeParam{-1}), Diagonal<TypeParam>(-1, -1, -1, 1), DIAGONAL);
    ExpectMatrix(M::Scale(TypeParam{1}), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectMatrix(M::Scale(1 + 50 * epsilon), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    TypeParam const more = 1 + 51 * epsilon;
    ExpectMatrix(M::Scale(more), Diagonal<TypeParam>(more, more, more, 1), DIAGONAL);
    TypeParam const nan = QUIET_NAN<TypeParam>;
    ExpectMatrix(M::Scale(nan), Diagonal<TypeParam>(nan, nan, nan, 1), DIAGONAL);
}

TYPED_TEST(Matrix4BuildersTest, ScalingByAVectorIsAlwaysDiagonal)
{
    using M = tMatrix4<TypeParam>;
    ExpectMatrix(M::Scale(tVector3<TypeParam>(2, 3, 4)), Diagonal<TypeParam>(2, 3, 4, 1), DIAGONAL);
    ExpectMatrix(M::Scale(tVector3<TypeParam>(1, 1, 1)), IDENTITY_ELEMENTS<TypeParam>, DIAGONAL);
    TypeParam const infinity = INF<TypeParam>;
    ExpectMatrix(M::Scale(tVector3<TypeParam>(infinity, 0, -1)), Diagonal<TypeParam>(infinity, 0, -1, 1), DIAGONAL);
}

// Translation

TYPED_TEST(Matrix4BuildersTest, TranslationByAVectorIsGeneralOrTheIdentity)
{
    using M = tMatrix4<TypeParam>;
    ExpectMatrix<TypeParam>(M::Translate({1, 2, 3}), {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1}, GENERAL);
    TypeParam const zero = JustBelow(TOLERANCE<TypeParam>);
    TypeParam const tiny = TOLERANCE<TypeParam>;
    ExpectMatrix(M::Translate({0, 0, 0}), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectMatrix(M::Translate({zero, -zero, zero}), IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectMatrix<TypeParam>(M::Translate({tiny, 0, 0}), {1, 0, 0, tiny, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, GENERAL);
    ExpectMatrix<TypeParam>(M::Translate({0, tiny, 0}), {1, 0, 0, 0, 0, 1, 0, tiny, 0, 0, 1, 0, 0, 0, 0, 1}, GENERAL);
    ExpectMatrix<TypeParam>(M::Translate({0, 0, tiny}), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, tiny, 0, 0, 0, 1}, GENERAL);
    TypeParam const nan = QUIET_NAN<TypeParam>;
    ExpectMatrix<TypeParam>(M::Translate({0, nan, 0}), {1, 0, 0, 0, 0, 1, 0, nan, 0, 0, 1, 0, 0, 0, 0, 1}, GENERAL);
}

TYPED_TEST(Matrix4BuildersTest, TranslationByThreeNumbersIsAlwaysGeneral)
{
    using M = tMatrix4<TypeParam>;
    ExpectMatrix<TypeParam>(M::Translate(1, 2, 3), {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1}, GENERAL);
    ExpectMatrix(M::Translate(0, 0, 0), IDENTITY_ELEMENTS<TypeParam>, GENERAL);
}

// Projections

TYPED_TEST(Matrix4BuildersTest, TheOrthogonalProjectionOfTheUnitCubeMirrorsZ)
{
    ExpectValues(tMatrix4<TypeParam>::OrthogonalProjection(-1, 1, -1, 1, -1, 1), Diagonal<TypeParam>(1, 1, -1, 1),
                 GENERAL);
}

TYPED_TEST(Matrix4BuildersTest, TheOrthogonalProjectionMapsABoxToTheUnitCube)
{
    // Extents 4, 8 and 16, so that everything is exact.
    ExpectValues<TypeParam>(tMatrix4<TypeParam>::OrthogonalProjection(1, 5, 2, 10, 3, 19),
                            {TypeParam{0.5}, 0, 0, TypeParam{-1.5}, 0, TypeParam{0.25}, 0, TypeParam{-1.5}, 0, 0,
                             TypeParam{-0.125}, TypeParam{-1.375}, 0, 0, 0, 1},
                            GENERAL);
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::OrthogonalProjection(1, 5, 2, 10, 3, 19);
    ExpectClose(tVector3<TypeParam>(1, 2, -3).Transformed(m), tVector3<TypeParam>(-1, -1, -1));
    ExpectClose(tVector3<TypeParam>(5, 10, -19).Transformed(m), tVector3<TypeParam>(1, 1, 1));
}

TYPED_TEST(Matrix4BuildersTest, TheOrthogonalProjectionMultipliesByThreeReciprocals)
{
    Random random(14142);
    auto const next = [&random] { return random.Number<TypeParam>(-3, 3); };
    for (int run = 0; run < 500; ++run)
    {
        TypeParam const l = next();
        TypeParam const r = next();
        TypeParam const b = next();
        TypeParam const t = next();
        TypeParam const n = next();
        TypeParam const f = next();
        TypeParam const width = 1 / (r - l);
        TypeParam const height = 1 / (t - b);
        TypeParam const depth = 1 / (f - n);
        Elements<TypeParam> const m = {2 * width, 0,          0,          -(l + r) * width,  //
                                       0,         2 * height, 0,          -(b + t) * height, //
                                       0,         0,          -2 * depth, -(n + f) * depth,  //
                                       0,         0,          0,          1};
        ExpectMatrix(tMatrix4<TypeParam>::OrthogonalProjection(l, r, b, t, n, f), m, GENERAL);
    }
}

TYPED_TEST(Matrix4BuildersTest, TheOrthogonalProjectionNegatesTheSumsOfOppositeSides)
{
    using T = TypeParam;
    // -(l + r) is -(-1 + 1), which is -0, where -l - r is 1 - 1, which is +0.
    ExpectMatrix<T>(tMatrix4<T>::OrthogonalProjection(-1, 1, -2, 2, -4, 4),
                    {1, 0, 0, T(-0.0), 0, T(0.5), 0, T(-0.0), 0, 0, T(-0.25), T(-0.0), 0, 0, 0, 1}, GENERAL);
}

TYPED_TEST(Matrix4BuildersTest, ThePerspectiveProjectionNegatesTheSumOfOppositeDepths)
{
    using T = TypeParam;
    // (r + l) / (r - l) is 0 / 2, (t + b) / (t - b) is 0 / 4, -(f + n) / (f - n) is -0 / 4, -2fn / (f - n) is 8 / 4.
    ExpectMatrix<T>(tMatrix4<T>::PerspectiveProjection(-1, 1, -2, 2, -2, 2),
                    {-2, 0, 0, 0, 0, -1, 0, 0, 0, 0, T(-0.0), 2, 0, 0, -1, 0}, GENERAL);
}

TYPED_TEST(Matrix4BuildersTest, ThePerspectiveProjectionDividesByTheExtents)
{
    Random random(17320);
    auto const next = [&random] { return random.Number<TypeParam>(-3, 3); };
    for (int run = 0; run < 500; ++run)
    {
        TypeParam const l = next();
        TypeParam const r = next();
        TypeParam const b = next();
        TypeParam const t = next();
        TypeParam const n = next();
        TypeParam const f = next();
        Elements<TypeParam> const m = {(2 * n) / (r - l),
                                       0,
                                       (r + l) / (r - l),
                                       0, //
                                       0,
                                       (2 * n) / (t - b),
                                       (t + b) / (t - b),
                                       0, //
                                       0,
                                       0,
                                       -(f + n) / (f - n),
                                       ((-2 * f) * n) / (f - n), //
                                       0,
                                       0,
                                       -1,
                                       0};
        ExpectMatrix(tMatrix4<TypeParam>::PerspectiveProjection(l, r, b, t, n, f), m, GENERAL);
    }
}

TYPED_TEST(Matrix4BuildersTest, ThePerspectiveProjectionHasTheseElements)
{
    // Width 4, height 8, depth 2.
    ExpectValues<TypeParam>(
        tMatrix4<TypeParam>::PerspectiveProjection(-1, 3, -2, 6, 1, 3),
        {TypeParam{0.5}, 0, TypeParam{0.5}, 0, 0, TypeParam{0.25}, TypeParam{0.5}, 0, 0, 0, -2, -3, 0, 0, -1, 0},
        GENERAL);
}

TYPED_TEST(Matrix4BuildersTest, ThePerspectiveProjectionMapsNearToMinusOneAndFarToOne)
{
    using V = tVector3<TypeParam>;
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::PerspectiveProjection(-1, 1, -1, 1, 1, 3);
    ExpectClose(V(0, 0, -1).Transformed(m), V(0, 0, -1));
    ExpectClose(V(0, 0, -3).Transformed(m), V(0, 0, 1));
    ExpectClose(V(1, -1, -1).Transformed(m), V(1, -1, -1)); // a corner of the near plane
    ExpectClose(V(-3, 3, -3).Transformed(m), V(-1, 1, 1));  // a corner of the far plane
}

TYPED_TEST(Matrix4BuildersTest, ProjectionsCheckNeitherSignsNorOrder)
{
    using M = tMatrix4<TypeParam>;
    // Left and right, bottom and top, near and far exchanged: width -2, height -2, depth -2.
    ExpectValues(M::OrthogonalProjection(1, -1, 1, -1, 1, -1), Diagonal<TypeParam>(-1, -1, 1, 1), GENERAL);
    ExpectValues<TypeParam>(M::PerspectiveProjection(1, -1, 1, -1, 3, 1),
                            {-3, 0, 0, 0, 0, -3, 0, 0, 0, 0, 2, 3, 0, 0, -1, 0}, GENERAL);
    ExpectValues<TypeParam>(M::PerspectiveProjection(-1, 1, -1, 1, -3, -1),
                            {-3, 0, 0, 0, 0, -3, 0, 0, 0, 0, 2, -3, 0, 0, -1, 0}, GENERAL);
}

/// Expects that both projections refuse this view.
template <typename T>
void ExpectInvalid(T left, T right, T bottom, T top, T nearPlane, T farPlane)
{
    std::string const prefix = std::string("bv::maths::tMatrix4<") + TYPE_NAME<T> + ">::";
    ExpectThrows<bv::InvalidArgumentException>(
        [&] { static_cast<void>(tMatrix4<T>::OrthogonalProjection(left, right, bottom, top, nearPlane, farPlane)); },
        "Invalid view parameters", prefix + "OrthogonalProjection", "internal\\Maths\\Matrix4", 1212);
    ExpectThrows<bv::InvalidArgumentException>(
        [&] { static_cast<void>(tMatrix4<T>::PerspectiveProjection(left, right, bottom, top, nearPlane, farPlane)); },
        "Invalid view parameters", prefix + "PerspectiveProjection", "internal\\Maths\\Matrix4", 1251);
}

TYPED_TEST(Matrix4BuildersTest, AViewWithoutWidthHeightOrDepthIsInvalid)
{
    using T = TypeParam;
    ExpectInvalid<T>(1, 1, 2, 3, 4, 5);
    ExpectInvalid<T>(1, 2, 3, 3, 4, 5);
    ExpectInvalid<T>(1, 2, 3, 4, 5, 5);
    ExpectInvalid<T>(0, T{-0.0}, 3, 4, 5, 6);
    ExpectInvalid<T>(1, 1, 1, 1, 1, 1);
    T const near = 1 + 50 * EPSILON<T>; // equal within the tolerance
    ExpectInvalid<T>(1, near, 2, 3, 4, 5);
    ExpectInvalid<T>(1, 2, near, 1, 4, 5);
    ExpectInvalid<T>(1, 2, 3, 4, 1, near);
    T const nan = QUIET_NAN<T>;
    ExpectInvalid<T>(nan, nan, 3, 4, 5, 6); // the same bits
    ExpectInvalid<T>(1, 2, nan, nan, 5, 6);
}

TYPED_TEST(Matrix4BuildersTest, AViewWithAnExtentJustBeyondTheToleranceIsValid)
{
    TypeParam const far = 1 + 51 * EPSILON<TypeParam>;
    EXPECT_NO_THROW(static_cast<void>(tMatrix4<TypeParam>::OrthogonalProjection(1, far, far, 1, 1, far)));
    EXPECT_NO_THROW(static_cast<void>(tMatrix4<TypeParam>::PerspectiveProjection(1, far, far, 1, 1, far)));
    EXPECT_NO_THROW(static_cast<void>(tMatrix4<TypeParam>::PerspectiveProjection(-1, 1, -1, 1, -1, 1)));
}

TYPED_TEST(Matrix4BuildersTest, TheEndsOfAViewAreComparedAtEveryMagnitude)
{
    using T = TypeParam;
    T const epsilon = EPSILON<T>;
    for (T const size : {T{1}, T{1024}, LARGEST<T> / 4, LARGEST<T> / 2})
        for (T const sign : {T{1}, T{-1}})
        {
            T const end = sign * size;
            T const equal = end * (1 + 50 * epsilon);
            T const different = end * (1 + 101 * epsilon); // at least 51 steps, wherever the end lies in its binade
            ExpectInvalid<T>(end, equal, 2, 3, 4, 5);
            ExpectInvalid<T>(2, 3, equal, end, 4, 5);
            ExpectInvalid<T>(2, 3, 4, 5, end, equal);
            EXPECT_NO_THROW(static_cast<void>(tMatrix4<T>::PerspectiveProjection(end, different, 2, 3, 4, 5)));
            EXPECT_NO_THROW(static_cast<void>(tMatrix4<T>::PerspectiveProjection(2, 3, different, end, 4, 5)));
            EXPECT_NO_THROW(static_cast<void>(tMatrix4<T>::PerspectiveProjection(2, 3, 4, 5, end, different)));
        }
    T const tolerance = bv::maths::TOLERANCE<T>;
    T const below = std::nextafter(tolerance, T{0});
    ExpectInvalid<T>(0, below, 2, 3, 4, 5);
    ExpectInvalid<T>(below, 0, 2, 3, 4, 5);
    ExpectInvalid<T>(2, 3, -below, 0, 4, 5);
    ExpectInvalid<T>(2, 3, 4, 5, 0, TINY<T>);
    EXPECT_NO_THROW(static_cast<void>(tMatrix4<T>::PerspectiveProjection(0, tolerance, tolerance, 0, -tolerance, 0)));
    // The largest numbers and infinity are neighbours.
    T const infinity = INF<T>;
    T const largest = LARGEST<T>;
    ExpectInvalid<T>(largest, infinity, 2, 3, 4, 5);
    ExpectInvalid<T>(infinity, largest, 2, 3, 4, 5);
    ExpectInvalid<T>(2, 3, -infinity, -largest, 4, 5);
    ExpectInvalid<T>(2, 3, 4, 5, infinity, infinity);
    EXPECT_NO_THROW(
        static_cast<void>(tMatrix4<T>::PerspectiveProjection(1, infinity, -largest, largest, 1, -infinity)));
}

TYPED_TEST(Matrix4BuildersTest, ANonFiniteViewGivesNonFiniteElements)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    TypeParam const infinity = INF<TypeParam>;
    EXPECT_TRUE(std::isnan(tMatrix4<TypeParam>::OrthogonalProjection(nan, 1, -1, 1, 1, 3)[0]));
    EXPECT_TRUE(std::isnan(tMatrix4<TypeParam>::PerspectiveProjection(-1, 1, -1, 1, 1, infinity)[10]));
}

} // namespace
