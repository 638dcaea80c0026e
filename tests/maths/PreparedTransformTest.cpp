#include "bv/maths/tPreparedTransform.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
#include "support/Flags.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Throws.h"

using bv::maths::tMatrix4;
using bv::maths::TOLERANCE;
using bv::maths::tPreparedTransform;
using bv::maths::tVector3;
using namespace bv::test;

namespace
{

template <typename T>
class PreparedTransformTest : public testing::Test
{
};
TYPED_TEST_SUITE(PreparedTransformTest, Precisions);

template <typename T>
constexpr bool KeepsItsSignatures(tPreparedTransform<T> const& map, tVector3<T> const& vector)
{
    using Map = tPreparedTransform<T>;
    static_assert(std::is_same_v<decltype(map(vector)), tVector3<T>>);
    static_assert(std::is_same_v<decltype(map.Direction(vector)), tVector3<T>>);
    static_assert(!noexcept(map(vector))&& noexcept(map.Direction(vector)));
    static_assert(std::is_nothrow_constructible_v<Map, tMatrix4<T> const&>);
    static_assert(!std::is_convertible_v<tMatrix4<T> const&, Map>);
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

template <typename T>
void ExpectPoint(tMatrix4<T> const& matrix, tVector3<T> const& point, tVector3<T> const& expected)
{
    ExpectSameBits(tPreparedTransform<T>(matrix)(point), expected);
}

template <typename T>
void ExpectDirection(tMatrix4<T> const& matrix, tVector3<T> const& direction, tVector3<T> const& expected)
{
    ExpectSameBits(tPreparedTransform<T>(matrix).Direction(direction), expected);
}

template <typename T>
void ExpectNoPoint(tMatrix4<T> const& matrix, tVector3<T> const& point, unsigned int line)
{
    tPreparedTransform<T> const map(matrix);
    ExpectThrows<bv::maths::DivideByZeroException>(
        [&] { static_cast<void>(map(point)); }, "Attempt to divide vector by zero scalar value",
        std::string("bv::maths::tVector3<") + TYPE_NAME<T> + ">::Transformed", "internal\\Maths\\Vector3", line);
}

/// The single form's result, or that both refuse the point in the same words.
template <typename T>
void ExpectLikeTheMatrix(tMatrix4<T> const& matrix, tVector3<T> const& vector)
{
    tPreparedTransform<T> const map(matrix);
    ExpectSameBits(map.Direction(vector), vector.TransformedAsVector(matrix));
    tVector3<T> expected;
    try
    {
        expected = vector.Transformed(matrix);
    }
    catch (bv::maths::DivideByZeroException const& refusal)
    {
        ExpectThrows<bv::maths::DivideByZeroException>(
            [&] { static_cast<void>(map(vector)); }, refusal.Message().ToCharArray(),
            refusal.FunctionName().ToCharArray(), refusal.Filename().ToCharArray(), refusal.LineNumber());
        return;
    }
    ExpectSameBits(map(vector), expected);
}

TYPED_TEST(PreparedTransformTest, APointAndADirectionAreWorkedOutByHand)
{
    // x: 1*1 + 2*2 + 3*3 + 4 = 18, y: 5 + 12 + 21 + 8 = 46, z: 9 + 20 + 33 + 12 = 74.
    tMatrix4<TypeParam> const affine(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, 0, 0, 1);
    ExpectPoint<TypeParam>(affine, {1, 2, 3}, {18, 46, 74});
    ExpectDirection<TypeParam>(affine, {1, 2, 3}, {14, 38, 62});
    // w: 1 + 0 - 3 + 4 = 2.
    tMatrix4<TypeParam> const projective(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1, 0, -1, 4);
    ExpectPoint<TypeParam>(projective, {1, 2, 3}, {9, 23, 37});
    ExpectDirection<TypeParam>(projective, {1, 2, 3}, {14, 38, 62});
    // q = 2: (1 * (2 * 2), 10 * (2 * 3), (2 * 4) * 100); a direction knows nothing of q.
    tMatrix4<TypeParam> const diagonal(Diagonal<TypeParam>(2, 3, 4, TypeParam{0.5}).data());
    ExpectPoint<TypeParam>(diagonal, {1, 10, 100}, {4, 60, 800});
    ExpectDirection<TypeParam>(diagonal, {1, 10, 100}, {2, 30, 400});
    // a quarter turn about z: x goes to y, y to -x
    tMatrix4<TypeParam> const rotation(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    ExpectPoint<TypeParam>(rotation, {1, 2, 3}, {-2, 1, 3});
    ExpectDirection<TypeParam>(rotation, {1, 2, 3}, {-2, 1, 3});
}

TYPED_TEST(PreparedTransformTest, WithoutAMatrixItIsTheIdentity)
{
    std::vector<tPreparedTransform<TypeParam>> const maps(1); // at run time
    tPreparedTransform<TypeParam> const& map = maps[0];
    using Limits = std::numeric_limits<TypeParam>;
    for (tVector3<TypeParam> const& v :
         {tVector3<TypeParam>(TypeParam{-0.0}, Limits::denorm_min(), Limits::max()),
          tVector3<TypeParam>(INF<TypeParam>, QUIET_NAN<TypeParam>, -INF<TypeParam>), tVector3<TypeParam>(1, 2, 3)})
    {
        ExpectSameBits(map(v), v);
        ExpectSameBits(map.Direction(v), v);
    }
}

TYPED_TEST(PreparedTransformTest, TheStateDecidesAndNotTheElements)
{
    // Of these elements, with 2 for m44, IDENTITY uses none and DIAGONAL those of the diagonal.
    Elements<TypeParam> const m = {2, 1, 0, 5, 0, 3, 0, 6, 1, 0, 4, 7, 0, 0, 0, 2};
    tVector3<TypeParam> const v(2, 4, 6);
    ExpectPoint(MakeMatrix(m, IDENTITY), v, {2, 4, 6});
    ExpectDirection(MakeMatrix(m, IDENTITY), v, {2, 4, 6});
    ExpectPoint(MakeMatrix(m, DIAGONAL), v, {2, 6, 12}); // half of (4, 12, 24)
    ExpectDirection(MakeMatrix(m, DIAGONAL), v, {4, 12, 24});
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
    {
        ExpectPoint(MakeMatrix(m, state), v, {TypeParam{6.5}, 9, TypeParam{16.5}}); // half of (13, 18, 33)
        ExpectDirection(MakeMatrix(m, state), v, {8, 12, 26});
    }
}

TYPED_TEST(PreparedTransformTest, OnlyTheStateOfARotationNormalisesDirectionsOfLengthOne)
{
    // Rows that are too long on purpose: only the renormalisation can bring the length back to 1.
    Elements<TypeParam> const m = {0, -2, 0, 9, 3, 0, 0, 9, 0, 0, 4, 9, 0, 0, 0, 1};
    ExpectDirection<TypeParam>(MakeMatrix(m, ORTHONORMAL), {1, 0, 0}, {0, 3 * (TypeParam{1} / 3), 0});
    ExpectDirection<TypeParam>(MakeMatrix(m, ORTHONORMAL), {2, 0, 0}, {0, 6, 0});
    for (std::uint32_t const state : {GENERAL, UNKNOWN})
        ExpectDirection<TypeParam>(MakeMatrix(m, state), {1, 0, 0}, {0, 3, 0});
    ExpectDirection<TypeParam>(MakeMatrix(Diagonal<TypeParam>(3, 2, 4, 1), DIAGONAL), {1, 0, 0}, {3, 0, 0});
}

TYPED_TEST(PreparedTransformTest, RandomMatricesGiveWhatTheSingleFormsGive)
{
    Random random(27182);
    for (int run = 0; run < 4000; ++run)
    {
        Elements<TypeParam> m{};
        for (TypeParam& element : m)
            element = random.Number<TypeParam>(-3, 3);
        if (run % 2 == 0)
        {
            m[12] = m[13] = m[14] = TypeParam{0};
            m[15] = TypeParam{1};
        }
        tVector3<TypeParam> const v = random.Vector<tVector3<TypeParam>>(-3, 3);
        for (std::uint32_t const state : STATES)
            for (tVector3<TypeParam> const& vector : {v, v.Normalised()})
                ExpectLikeTheMatrix(MakeMatrix(m, state), vector);
    }
}

TYPED_TEST(PreparedTransformTest, SpecialComponentsGiveWhatTheSingleFormsGive)
{
    Elements<TypeParam> const shear = {2, 5, -3, 7, 1, TypeParam{-0.0}, 4, 1, 0, 6, TypeParam{0.5}, -2, 0, 0, 0, 1};
    Elements<TypeParam> projection = shear;
    projection[14] = TypeParam{-1};
    projection[15] = TypeParam{0};
    Elements<TypeParam> negative = shear; // zeros of the other sign make the row no other one
    negative[12] = negative[14] = TypeParam{-0.0};
    for (Elements<TypeParam> const& m : {shear, projection, negative})
        for (std::uint32_t const state : STATES)
            for (TypeParam const x : SPECIAL_VALUES<TypeParam>)
                for (TypeParam const y : SPECIAL_VALUES<TypeParam>)
                    for (TypeParam const z : SPECIAL_VALUES<TypeParam>)
                        ExpectLikeTheMatrix(MakeMatrix(m, state), tVector3<TypeParam>(x, y, z));
}

TYPED_TEST(PreparedTransformTest, SpecialElementsGiveWhatTheSingleFormsGive)
{
    Random random(57721);
    for (int run = 0; run < 4000; ++run)
    {
        Elements<TypeParam> m{};
        for (TypeParam& element : m)
            element =
                random.Below(3) == 0 ? SPECIAL_VALUES<TypeParam>[random.Below(10)] : random.Number<TypeParam>(-3, 3);
        if (run % 3 == 0)
            m[12] = m[13] = m[14] = TypeParam{0};
        if (run % 2 == 0)
            m[15] = TypeParam{1};
        tVector3<TypeParam> v = random.Vector<tVector3<TypeParam>>(-3, 3);
        v[random.Below(3)] = SPECIAL_VALUES<TypeParam>[random.Below(10)];
        for (std::uint32_t const state : STATES)
            ExpectLikeTheMatrix(MakeMatrix(m, state), v);
    }
}

TYPED_TEST(PreparedTransformTest, NumbersOfAnyPatternGiveWhatTheSingleFormsGive)
{
    Random random(14142);
    for (int run = 0; run < 20000; ++run)
    {
        Elements<TypeParam> m{};
        for (TypeParam& element : m)
            element = random.Any<TypeParam>();
        if (run % 2 == 0)
        {
            m[12] = m[13] = m[14] = TypeParam{0};
            m[15] = TypeParam{1};
        }
        TypeParam const x = random.Any<TypeParam>();
        TypeParam const y = random.Any<TypeParam>();
        tVector3<TypeParam> const v(x, y, random.Any<TypeParam>());
        ExpectLikeTheMatrix(MakeMatrix(m, STATES[random.Below(5)]), v);
    }
}

TYPED_TEST(PreparedTransformTest, AnInfiniteComponentOfAnAffineImageIsNoNumber)
{
    // w is infinity * 0, and every row is multiplied by it, also those that the component does not enter.
    tMatrix4<TypeParam> const m = tMatrix4<TypeParam>::Translate({1, 2, 3});
    TypeParam const nan = QUIET_NAN<TypeParam>;
    ExpectPoint<TypeParam>(m, {INF<TypeParam>, 0, 0}, {nan, nan, nan});
    ExpectPoint<TypeParam>(m, {0, -INF<TypeParam>, 0}, {nan, nan, nan});
    ExpectPoint<TypeParam>(m, {0, 0, nan}, {nan, nan, nan});
}

TYPED_TEST(PreparedTransformTest, ASumThatOverflowsIsInfiniteAlsoWhereNothingIsDivided)
{
    TypeParam const half = LARGEST<TypeParam> / 2;
    tMatrix4<TypeParam> const m(2, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    ExpectPoint<TypeParam>(m, {half, half, 1}, {INF<TypeParam>, half, 1});
}

TYPED_TEST(PreparedTransformTest, ADiagonalWhoseLastElementIsTooSmallRefusesPointsOnly)
{
    TypeParam const below = std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    for (TypeParam const m44 : {TypeParam{0}, TypeParam{-0.0}, below, -below})
    {
        tMatrix4<TypeParam> const m = MakeMatrix(Diagonal<TypeParam>(2, 3, 4, m44), DIAGONAL);
        ExpectNoPoint<TypeParam>(m, {1, 2, 3}, 96);
        ExpectNoPoint<TypeParam>(m, {0, 0, 0}, 96);
        ExpectDirection<TypeParam>(m, {1, 2, 3}, {2, 6, 12});
    }
    TypeParam const q = 1 / TOLERANCE<TypeParam>;
    ExpectPoint<TypeParam>(MakeMatrix(Diagonal<TypeParam>(1, 1, 1, TOLERANCE<TypeParam>), DIAGONAL), {1, 2, 3},
                           {1 * q, 2 * q, q * 3});
}

TYPED_TEST(PreparedTransformTest, APointOnThePlaneOfTheEyeIsRefusedAndTheNextOneIsNot)
{
    tMatrix4<TypeParam> const m(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, -1, 0); // w is -z
    ExpectNoPoint<TypeParam>(m, {5, 6, 0}, 111);
    ExpectNoPoint<TypeParam>(m, {5, 6, TypeParam{-0.0}}, 111);
    ExpectPoint<TypeParam>(m, {6, 8, -2}, {3, 4, -1});
}

TYPED_TEST(PreparedTransformTest, MakingOneRaisesNoFlagAndThrowsNothing)
{
    using Map = tPreparedTransform<TypeParam>;
    tMatrix4<TypeParam> const singular = MakeMatrix(Diagonal<TypeParam>(1, 1, 1, 0), DIAGONAL);
    EXPECT_EQ(Raised([&] { return Map(singular); }), 0);
    Elements<TypeParam> infinite = IDENTITY_ELEMENTS<TypeParam>;
    infinite[3] = infinite[12] = INF<TypeParam>;
    for (std::uint32_t const state : {IDENTITY, ORTHONORMAL, GENERAL, UNKNOWN})
    {
        tMatrix4<TypeParam> const m = MakeMatrix(infinite, state);
        EXPECT_EQ(Raised([&] { return Map(m); }), 0) << NameOfFlags(Raised([&] { return Map(m); }));
    }
}

TYPED_TEST(PreparedTransformTest, DirectionsRaiseNoFlagForTheFourthRow)
{
    // Times 0, infinity would be invalid; times LARGEST, anything above 1 overflows.
    tMatrix4<TypeParam> const m(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, LARGEST<TypeParam>, 1);
    tPreparedTransform<TypeParam> const map(m);
    tVector3<TypeParam> const infinite(INF<TypeParam>, 2, 3);
    EXPECT_EQ(Raised([&] { return map.Direction(infinite); }), 0);
    EXPECT_EQ(Raised([&] { return infinite.TransformedAsVector(m); }), 0);
}

TYPED_TEST(PreparedTransformTest, WhatIsWrittenToTheMatrixLaterMakesNoDifference)
{
    tMatrix4<TypeParam> m = tMatrix4<TypeParam>::Translate({1, 2, 3});
    tPreparedTransform<TypeParam> const map(m);
    m(3) = 100;
    m.Invert();
    ExpectSameBits(map({1, 1, 1}), tVector3<TypeParam>(2, 3, 4));
}

TYPED_TEST(PreparedTransformTest, AnArrayOfPointsIsMovedInItsPlace)
{
    Random random(31415);
    tMatrix4<TypeParam> const m(2, 5, -3, 7, 1, 0, 4, 1, 0, 6, 1, -2, 0, 0, 0, 1);
    std::vector<tVector3<TypeParam>> points(257);
    for (tVector3<TypeParam>& point : points)
        point = random.Vector<tVector3<TypeParam>>(-3, 3);
    std::vector<tVector3<TypeParam>> const before = points;
    tPreparedTransform<TypeParam> const map(m);
    for (tVector3<TypeParam>& point : points)
        point = map(point);
    for (std::size_t i = 0; i < points.size(); ++i)
        ExpectSameBits(points[i], before[i].Transformed(m));
}

TYPED_TEST(PreparedTransformTest, TheObjectCanBeCopiedAsBytesToAnotherPlace)
{
    using Map = tPreparedTransform<TypeParam>;
    static_assert(std::is_trivially_copyable_v<Map> && std::is_trivially_destructible_v<Map>);
    static_assert(sizeof(Map) == 16 * sizeof(TypeParam) + 16 && alignof(Map) == 16);
    Map const original(tMatrix4<TypeParam>(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1, 0, -1, 4));
    Map copies[3];
    std::memcpy(&copies[1], &original, sizeof(Map));
    copies[2] = copies[1];
    for (std::size_t i : {1U, 2U})
    {
        ExpectSameBits(copies[i]({1, 2, 3}), tVector3<TypeParam>(9, 23, 37));
        ExpectSameBits(copies[i].Direction({1, 2, 3}), tVector3<TypeParam>(14, 38, 62));
    }
}

} // namespace
