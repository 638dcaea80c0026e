#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
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

template <typename T>
class Vector3TransformTest : public testing::Test
{
};
TYPED_TEST_SUITE(Vector3TransformTest, Precisions);

template <typename T>
constexpr bool KeepsItsSignatures(tVector3<T>& vector, tVector3<T> const& constant, tMatrix4<T> const& matrix)
{
    using V = tVector3<T>;
    static_assert(std::is_same_v<decltype(vector.Transform(matrix)), V&>);
    static_assert(std::is_same_v<decltype(constant.Transformed(matrix)), V>);
    static_assert(std::is_same_v<decltype(vector.TransformAsVector(matrix)), V&>);
    static_assert(std::is_same_v<decltype(constant.TransformedAsVector(matrix)), V>);
    static_assert(!noexcept(vector.Transform(matrix)));
    static_assert(noexcept(vector.TransformAsVector(matrix)));
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

/// Both forms of the point transform, which differ in what they report only.
template <typename T>
void ExpectPoint(tVector3<T> const& point, tMatrix4<T> const& matrix, tVector3<T> const& expected)
{
    ExpectSameBits(point.Transformed(matrix), expected);
    tVector3<T> inPlace(point);
    EXPECT_EQ(&inPlace.Transform(matrix), &inPlace);
    ExpectSameBits(inPlace, expected);
}

/// Both forms of the direction transform.
template <typename T>
void ExpectDirection(tVector3<T> const& direction, tMatrix4<T> const& matrix, tVector3<T> const& expected)
{
    ExpectSameBits(direction.TransformedAsVector(matrix), expected);
    tVector3<T> inPlace(direction);
    EXPECT_EQ(&inPlace.TransformAsVector(matrix), &inPlace);
    ExpectSameBits(inPlace, expected);
}

/// Both forms refuse the point, each from its own line, and leave it as it was.
template <typename T>
void ExpectNoPoint(tVector3<T> const& point, tMatrix4<T> const& matrix, unsigned int transformLine,
                   unsigned int transformedLine)
{
    std::string const message = "Attempt to divide vector by zero scalar value";
    std::string const prefix = std::string("bv::maths::tVector3<") + TYPE_NAME<T> + ">::";
    tVector3<T> changed(point);
    ExpectThrows<bv::maths::DivideByZeroException>([&] { changed.Transform(matrix); }, message, prefix + "Transform",
                                                   "internal\\Maths\\Vector3", transformLine);
    ExpectSameBits(changed, point);
    ExpectThrows<bv::maths::DivideByZeroException>([&] { static_cast<void>(changed.Transformed(matrix)); }, message,
                                                   prefix + "Transformed", "internal\\Maths\\Vector3", transformedLine);
    ExpectSameBits(changed, point);
}

template <typename T>
void ExpectNoPointOfDiagonal(tVector3<T> const& point, tMatrix4<T> const& matrix)
{
    ExpectNoPoint(point, matrix, 39, 96);
}

template <typename T>
void ExpectNoPointOfGeneral(tVector3<T> const& point, tMatrix4<T> const& matrix)
{
    ExpectNoPoint(point, matrix, 56, 111);
}

/// Values between -3 and 3.
template <typename T>
class Values
{
    Random random{16180};

public:
    T Next() { return random.Number<T>(-3, 3); }
    tVector3<T> NextVector() { return random.Vector<tVector3<T>>(-3, 3); }
    Elements<T> NextElements()
    {
        Elements<T> elements{};
        for (T& element : elements)
            element = Next();
        return elements;
    }
};

template <typename T>
T DotOfRow(Elements<T> const& m, std::size_t row, tVector3<T> const& v)
{
    return (m[4 * row] * v.x + m[4 * row + 1] * v.y) + m[4 * row + 2] * v.z;
}

// Points

TYPED_TEST(Vector3TransformTest, TheIdentityLeavesEveryBitOfAPoint)
{
    using Limits = std::numeric_limits<TypeParam>;
    tMatrix4<TypeParam> stale;
    for (std::size_t i = 0; i < 16; ++i)
        stale(i) = TypeParam{0}; // its w would be zero, too
    for (tMatrix4<TypeParam> const& m : {tMatrix4<TypeParam>(), stale})
    {
        ExpectPoint({TypeParam{-0.0}, Limits::denorm_min(), Limits::max()}, m,
                    {TypeParam{-0.0}, Limits::denorm_min(), Limits::max()});
        ExpectPoint({Limits::infinity(), Limits::quiet_NaN(), 1}, m, {Limits::infinity(), Limits::quiet_NaN(), 1});
        ExpectDirection({TypeParam{-0.0}, Limits::denorm_min(), Limits::max()}, m,
                        {TypeParam{-0.0}, Limits::denorm_min(), Limits::max()});
        ExpectDirection({3, 4, 5}, m, {3, 4, 5});
    }
}

TYPED_TEST(Vector3TransformTest, ATranslationMovesPointsAndLeavesDirections)
{
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::Translate({1, 2, 3});
    ExpectPoint<TypeParam>({1, 1, 1}, m, {2, 3, 4});
    ExpectDirection<TypeParam>({1, 1, 1}, m, {1, 1, 1});
}

TYPED_TEST(Vector3TransformTest, ADiagonalDividesPointsByItsLastElement)
{
    tMatrix4<TypeParam> const twice(Diagonal<TypeParam>(2, 2, 2, 2).data());
    ExpectPoint<TypeParam>({3, -4, 5}, twice, {3, -4, 5});
    ExpectDirection<TypeParam>({3, -4, 5}, twice, {6, -8, 10});
    tMatrix4<TypeParam> const m(Diagonal<TypeParam>(2, 3, 4, TypeParam{0.5}).data());
    ExpectPoint<TypeParam>({1, 10, 100}, m, {4, 60, 800});
    ExpectDirection<TypeParam>({1, 10, 100}, m, {2, 30, 400});
}

TYPED_TEST(Vector3TransformTest, ADiagonalScalesByTheReciprocalInThisOrder)
{
    Values<TypeParam> values;
    for (int run = 0; run < 1000; ++run)
    {
        Elements<TypeParam> const m = values.NextElements(); // what stands off the diagonal is not read
        tVector3<TypeParam> const v = values.NextVector();
        TypeParam const q = 1 / m[15];
        ExpectPoint(v, MakeMatrix(m, DIAGONAL), {v.x * (q * m[0]), v.y * (q * m[5]), (q * m[10]) * v.z});
        ExpectDirection(v, MakeMatrix(m, DIAGONAL), {v.x * m[0], v.y * m[5], v.z * m[10]});
    }
}

TYPED_TEST(Vector3TransformTest, TheReciprocalMultipliesTheElementBeforeTheComponentDoes)
{
    // q * m11 is 1 here, while x * q overflows.
    TypeParam const huge = std::ldexp(TypeParam{1}, std::numeric_limits<TypeParam>::max_exponent - 10);
    TypeParam const small = std::ldexp(TypeParam{1}, -15);
    tMatrix4<TypeParam> const m = MakeMatrix(Diagonal<TypeParam>(small, small, small, small), DIAGONAL);
    ExpectPoint<TypeParam>({huge, huge, huge}, m, {huge, huge, huge});
}

TYPED_TEST(Vector3TransformTest, OtherMatricesGiveTheRowsTimesTheReciprocalOfW)
{
    Values<TypeParam> values;
    for (int run = 0; run < 1000; ++run)
    {
        Elements<TypeParam> const m = values.NextElements();
        tVector3<TypeParam> const v = values.NextVector();
        TypeParam const w = ((v.x * m[12] + v.y * m[13]) + v.z * m[14]) + m[15];
        TypeParam const q = 1 / w;
        tVector3<TypeParam> const expected((DotOfRow(m, 0, v) + m[3]) * q, (DotOfRow(m, 1, v) + m[7]) * q,
                                           (DotOfRow(m, 2, v) + m[11]) * q);
        for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
            ExpectPoint(v, MakeMatrix(m, state), expected);
    }
}

TYPED_TEST(Vector3TransformTest, APointIsWorkedOutByHand)
{
    // x: 1*1 + 2*2 + 3*3 + 4 = 18, y: 5 + 12 + 21 + 8 = 46, z: 9 + 20 + 33 + 12 = 74; w: 1 + 0 - 3 + 4 = 2.
    tMatrix4<TypeParam> const m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1, 0, -1, 4);
    ExpectPoint<TypeParam>({1, 2, 3}, m, {9, 23, 37});
    ExpectDirection<TypeParam>({1, 2, 3}, m, {14, 38, 62});
}

TYPED_TEST(Vector3TransformTest, ARotationAboutAShiftedAxisAppliesItsShiftToPoints)
{
    tMatrix4<TypeParam> const m = MakeMatrix<TypeParam>({0, -1, 0, 5, 1, 0, 0, 6, 0, 0, 1, 7, 0, 0, 0, 1}, ORTHONORMAL);
    ExpectPoint<TypeParam>({1, 2, 3}, m, {3, 7, 10});
    ExpectDirection<TypeParam>({1, 2, 3}, m, {-2, 1, 3});
}

TYPED_TEST(Vector3TransformTest, APointCanBeTransformedInPlaceOverAndOver)
{
    tMatrix4<TypeParam> const m(0, -1, 0, 1, 1, 0, 0, 0, 0, 0, 1, 2, 0, 0, 0, 1);
    tVector3<TypeParam> v(1, 0, 0);
    v.Transform(m).Transform(m); // to (1, 1, 2), then to (0, 1, 4)
    ExpectSameBits(v, tVector3<TypeParam>(0, 1, 4));
}

TYPED_TEST(Vector3TransformTest, AWOfZeroThrows)
{
    tVector3<TypeParam> const v(1, 2, 3);
    ExpectNoPointOfDiagonal(v, tMatrix4<TypeParam>(Diagonal<TypeParam>(1, 1, 1, 0).data()));
    ExpectNoPointOfGeneral(v, tMatrix4<TypeParam>(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, 0, 0, 0));
    ExpectNoPointOfGeneral(v, tMatrix4<TypeParam>(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 1, -1, 0)); // 1 + 2 - 3
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
        ExpectNoPointOfGeneral(v, MakeMatrix(Elements<TypeParam>{}, state));
}

TYPED_TEST(Vector3TransformTest, AWBelowTheToleranceThrowsAndOneOfExactlyTheToleranceDoesNot)
{
    TypeParam const at = TOLERANCE<TypeParam>;
    EXPECT_EQ(at, (std::is_same_v<TypeParam, float> ? static_cast<TypeParam>(1.1920929e-6f)
                                                    : static_cast<TypeParam>(2.220446049250313e-15)));
    TypeParam const below = std::nextafter(at, TypeParam{0});
    tVector3<TypeParam> const v(1, 2, 3);
    for (TypeParam const sign : {TypeParam{1}, TypeParam{-1}})
    {
        Elements<TypeParam> const small = Diagonal<TypeParam>(1, 1, 1, sign * below);
        ExpectNoPointOfDiagonal(v, MakeMatrix(small, DIAGONAL));
        ExpectNoPointOfGeneral(v, MakeMatrix(small, ORTHONORMAL));
        ExpectNoPointOfGeneral(v, MakeMatrix(small, GENERAL));
        Elements<TypeParam> const enough = Diagonal<TypeParam>(1, 1, 1, sign * at);
        TypeParam const q = 1 / (sign * at);
        tVector3<TypeParam> const expected(1 * q, 2 * q, q * 3);
        for (std::uint32_t const state : {DIAGONAL, ORTHONORMAL, GENERAL})
            ExpectPoint(v, MakeMatrix(enough, state), expected);
    }
}

TYPED_TEST(Vector3TransformTest, APointOnThePlaneOfTheEyeCannotBeProjected)
{
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::PerspectiveProjection(-1, 1, -1, 1, 1, 3);
    ExpectNoPointOfGeneral<TypeParam>({5, 6, 0}, m);
    ExpectNoPointOfGeneral<TypeParam>({5, 6, TypeParam{-0.0}}, m);
}

TYPED_TEST(Vector3TransformTest, AWThatIsNotANumberGivesComponentsThatAreNot)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tVector3<TypeParam> const none(nan, nan, nan);
    for (std::uint32_t const state : {DIAGONAL, ORTHONORMAL, GENERAL, UNKNOWN})
        ExpectPoint({1, 2, 3}, MakeMatrix(Diagonal<TypeParam>(1, 1, 1, nan), state), none);
}

TYPED_TEST(Vector3TransformTest, AnInfiniteWGivesZero)
{
    TypeParam const infinity = INF<TypeParam>;
    for (std::uint32_t const state : {DIAGONAL, ORTHONORMAL, GENERAL})
        ExpectPoint<TypeParam>({1, 2, 3}, MakeMatrix(Diagonal<TypeParam>(1, 1, 1, infinity), state), {0, 0, 0});
}

TYPED_TEST(Vector3TransformTest, TheReciprocalOfWIsMultipliedInNotDividedBy)
{
    // 1 / w rounds, so that w * (1 / w) is not 1: with a division it would be.
    TypeParam const w = std::is_same_v<TypeParam, float> ? TypeParam{41} : TypeParam{49};
    ASSERT_NE(w * (1 / w), TypeParam{1});
    tMatrix4<TypeParam> const m = MakeMatrix(Diagonal<TypeParam>(1, 1, 1, w), GENERAL);
    ExpectPoint<TypeParam>({w, w, w}, m, {w * (1 / w), w * (1 / w), w * (1 / w)});
}

// Directions

TYPED_TEST(Vector3TransformTest, DirectionsIgnoreTheFourthRowAndColumn)
{
    Values<TypeParam> values;
    TypeParam const nan = QUIET_NAN<TypeParam>;
    for (int run = 0; run < 1000; ++run)
    {
        Elements<TypeParam> m = values.NextElements();
        for (std::size_t const i : {3u, 7u, 11u, 12u, 13u, 14u, 15u})
            m[i] = nan;
        tVector3<TypeParam> const v = values.NextVector();
        ASSERT_FALSE(IsEqual((v.x * v.x + v.y * v.y) + v.z * v.z, TypeParam{1}));
        tVector3<TypeParam> const expected(DotOfRow(m, 0, v), DotOfRow(m, 1, v), DotOfRow(m, 2, v));
        for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
            ExpectDirection(v, MakeMatrix(m, state), expected);
    }
}

TYPED_TEST(Vector3TransformTest, ADiagonalIgnoresItsLastElementForDirections)
{
    for (TypeParam const m44 : {TypeParam{0}, TypeParam{5}, QUIET_NAN<TypeParam>})
        ExpectDirection<TypeParam>({1, 2, 3}, MakeMatrix(Diagonal<TypeParam>(2, 3, 4, m44), DIAGONAL), {2, 6, 12});
}

TYPED_TEST(Vector3TransformTest, ARotationGivesAUnitVectorTheLengthOneAgain)
{
    // Rows that are too long on purpose: only the renormalisation can bring the length back to 1.
    Elements<TypeParam> const m = {0, -2, 0, 9, 3, 0, 0, 9, 0, 0, 4, 9, 9, 9, 9, 9};
    ExpectDirection<TypeParam>({1, 0, 0}, MakeMatrix(m, ORTHONORMAL), {0, 3 * (TypeParam{1} / 3), 0});
    ExpectDirection<TypeParam>({0, 0, -1}, MakeMatrix(m, ORTHONORMAL), {0, 0, -1});
    // (0.6, 0.8) goes to (-1.6, 1.8), whose length is the root of 2.56 + 3.24.
    TypeParam const x = static_cast<TypeParam>(0.6);
    TypeParam const y = static_cast<TypeParam>(0.8);
    TypeParam const turnedX = 0 * x + -2 * y + 0 * TypeParam{0};
    TypeParam const turnedY = 3 * x + 0 * y + 0 * TypeParam{0};
    TypeParam const k = 1 / std::sqrt((turnedX * turnedX + turnedY * turnedY) + TypeParam{0});
    ExpectDirection<TypeParam>({x, y, 0}, MakeMatrix(m, ORTHONORMAL), {turnedX * k, turnedY * k, 0 * k});
}

TYPED_TEST(Vector3TransformTest, OnlyARotationRenormalises)
{
    Elements<TypeParam> const m = {0, -2, 0, 9, 3, 0, 0, 9, 0, 0, 4, 9, 9, 9, 9, 9};
    ExpectDirection<TypeParam>({1, 0, 0}, MakeMatrix(m, GENERAL), {0, 3, 0});
    ExpectDirection<TypeParam>({1, 0, 0}, MakeMatrix(m, UNKNOWN), {0, 3, 0});
    ExpectDirection<TypeParam>({1, 0, 0}, MakeMatrix(Diagonal<TypeParam>(3, 2, 4, 1), DIAGONAL), {3, 0, 0});
}

TYPED_TEST(Vector3TransformTest, OnlyAVectorOfUnitLengthIsRenormalised)
{
    TypeParam const epsilon = EPSILON<TypeParam>;
    tMatrix4<TypeParam> const twice = MakeMatrix(Diagonal<TypeParam>(2, 2, 2, 1), ORTHONORMAL);
    ExpectDirection<TypeParam>({2, 0, 0}, twice, {4, 0, 0});
    ExpectDirection<TypeParam>({0, 0, 0}, twice, {0, 0, 0});
    ExpectDirection<TypeParam>({TypeParam{0.5}, 0, 0}, twice, {1, 0, 0}); // it is the input that counts
    // Of squared length 1 + 40 steps, and 1 + 80 steps: the first is within 50 steps of 1.
    TypeParam const near = 1 + 20 * epsilon;
    TypeParam const far = 1 + 40 * epsilon;
    TypeParam const k = 1 / std::sqrt((2 * near) * (2 * near));
    ExpectDirection<TypeParam>({near, 0, 0}, twice, {(2 * near) * k, 0, 0});
    ExpectDirection<TypeParam>({far, 0, 0}, twice, {2 * far, 0, 0});
    EXPECT_NE((2 * near) * k, 2 * near);
}

TYPED_TEST(Vector3TransformTest, RotatingAUnitVectorAThousandTimesKeepsItsLength)
{
    tMatrix4<TypeParam> const turn = tMatrix4<TypeParam>::RotateZ(PI<TypeParam> / 4);
    tVector3<TypeParam> unit(1, 0, 0);
    tVector3<TypeParam> twice(2, 0, 0);
    tVector3<TypeParam> plain(2, 0, 0);
    for (int i = 0; i < 1000; ++i)
    {
        unit.TransformAsVector(turn);
        EXPECT_NEAR(unit.Length(), 1, 4 * EPSILON<TypeParam>);
        twice.TransformAsVector(turn);
        plain = {(turn[0] * plain.x + turn[1] * plain.y) + turn[2] * plain.z,
                 (turn[4] * plain.x + turn[5] * plain.y) + turn[6] * plain.z,
                 (turn[8] * plain.x + turn[9] * plain.y) + turn[10] * plain.z};
        ExpectSameBits(twice, plain); // nothing corrects its length
    }
    // A thousand turns by 45 degrees are 125 full turns; each step may lose a rounding of the angle.
    EXPECT_NEAR(unit.x, 1, 1000 * EPSILON<TypeParam>);
    EXPECT_NEAR(unit.y, 0, 1000 * EPSILON<TypeParam>);
}

TYPED_TEST(Vector3TransformTest, AUnitVectorThatARotationMakesVanishIsNotANumber)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tMatrix4<TypeParam> const nothing = MakeMatrix(Elements<TypeParam>{}, ORTHONORMAL);
    ExpectDirection<TypeParam>({1, 0, 0}, nothing, {nan, nan, nan}); // 0 times 1/0
    ExpectDirection<TypeParam>({2, 0, 0}, nothing, {0, 0, 0});
}

TYPED_TEST(Vector3TransformTest, DirectionsNeverThrow)
{
    ExpectDirection<TypeParam>({1, 2, 3}, MakeMatrix(Elements<TypeParam>{}, GENERAL), {0, 0, 0});
    ExpectDirection<TypeParam>({1, 2, 3}, MakeMatrix(Elements<TypeParam>{}, DIAGONAL), {0, 0, 0});
    ExpectDirection<TypeParam>({3, 2, 1}, tMatrix4<TypeParam>::PerspectiveProjection(-1, 1, -1, 1, 1, 3), {3, 2, -2});
}

} // namespace
