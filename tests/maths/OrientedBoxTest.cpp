#include "bv/maths/tOrientedBox.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"

using bv::maths::tMatrix4;
using bv::maths::tOrientedBox;
using bv::maths::tVector3;
using bv::maths::tVolumeAABB;
using namespace bv::test;

namespace
{

template <typename T>
class OrientedBoxTest : public testing::Test
{
};
TYPED_TEST_SUITE(OrientedBoxTest, Precisions);

template <typename T>
void ExpectBox(tOrientedBox<T> const& box, tVector3<T> const& centre, tVector3<T> const& x, tVector3<T> const& y,
               tVector3<T> const& z, tVector3<T> const& halves)
{
    ExpectSameBits(box.GetCentre(), centre);
    ExpectSameBits(box.GetAxis(0), x);
    ExpectSameBits(box.GetAxis(1), y);
    ExpectSameBits(box.GetAxis(2), z);
    ExpectSameBits(box.GetHalfExtents(), halves);
}

/// The same numbers, whatever the signs of zeros.
template <typename T>
void ExpectNumbers(tOrientedBox<T> const& box, tVector3<T> const& centre, tVector3<T> const& x, tVector3<T> const& y,
                   tVector3<T> const& z, tVector3<T> const& halves)
{
    tVector3<T> const zero;
    ExpectSameBits(box.GetCentre() + zero, centre);
    ExpectSameBits(box.GetAxis(0) + zero, x);
    ExpectSameBits(box.GetAxis(1) + zero, y);
    ExpectSameBits(box.GetAxis(2) + zero, z);
    ExpectSameBits(box.GetHalfExtents(), halves);
}

template <typename T>
void ExpectEmpty(tOrientedBox<T> const& box)
{
    ExpectBox<T>(box, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-INF<T>, -INF<T>, -INF<T>});
}

template <typename T>
void ExpectNear(tVector3<T> const& actual, tVector3<T> const& expected, T tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

/// Lengths and scalar products of the axes within rounding of 1 and 0.
template <typename T>
void ExpectPerpendicularUnits(tOrientedBox<T> const& box)
{
    T const tolerance = T{4} * EPSILON<T>;
    for (std::size_t i = 0; i < 3; ++i)
    {
        EXPECT_NEAR(box.GetAxis(i).LengthSquared(), T{1}, tolerance);
        EXPECT_NEAR(box.GetAxis(i).Dot(box.GetAxis((i + 1) % 3)), T{0}, tolerance);
    }
}

/// The matrix of nine numbers, and a translation.
template <typename T>
[[nodiscard]] tMatrix4<T> Affine(T const (&m)[9], tVector3<T> const& offset)
{
    return {m[0], m[1], m[2], offset.x, m[3], m[4], m[5], offset.y, m[6], m[7], m[8], offset.z, T{0}, T{0}, T{0}, T{1}};
}

/// The point that a matrix makes of a point, in `double`.
template <typename T>
[[nodiscard]] tVector3<double> Moved(tMatrix4<T> const& matrix, tVector3<T> const& point)
{
    double moved[3];
    for (std::size_t row = 0; row < 3; ++row)
        moved[row] = static_cast<double>(matrix[4 * row]) * static_cast<double>(point.x) +
                     static_cast<double>(matrix[4 * row + 1]) * static_cast<double>(point.y) +
                     static_cast<double>(matrix[4 * row + 2]) * static_cast<double>(point.z) +
                     static_cast<double>(matrix[4 * row + 3]);
    return {moved[0], moved[1], moved[2]};
}

/// How far a point lies outside of a box, computed in `double`; negative inside.
template <typename T>
[[nodiscard]] double Excess(tOrientedBox<T> const& box, tVector3<double> const& point)
{
    double excess = -INF<double>;
    tVector3<double> const way =
        point - tVector3<double>(static_cast<double>(box.GetCentre().x), static_cast<double>(box.GetCentre().y),
                                 static_cast<double>(box.GetCentre().z));
    for (std::size_t i = 0; i < 3; ++i)
    {
        tVector3<T> const& axis = box.GetAxis(i);
        double const along = way.x * static_cast<double>(axis.x) + way.y * static_cast<double>(axis.y) +
                             way.z * static_cast<double>(axis.z);
        excess = std::fmax(excess, std::abs(along) - static_cast<double>(box.GetHalfExtents()[i]));
    }
    return excess;
}

template <typename T>
constexpr bool WorksInConstants()
{
    tOrientedBox<T> box(tVolumeAABB<T>({1, 2, 3}, {3, 6, 9}));
    tVector3<T> corners[8];
    box.GetCorners(corners);
    bool const good = box.IsValid() && !tOrientedBox<T>().IsValid() && box.Contains({1, 2, 3}) &&
                      !box.Contains({0, 2, 3}) && box.GetBound() == tVolumeAABB<T>({1, 2, 3}, {3, 6, 9}) &&
                      box.GetVolume() == 48 && corners[7] == tVector3<T>(3, 6, 9) &&
                      tOrientedBox<T>(tOrientedBox<Other<T>>(box)) == box;
    box.SetCentre({0, 0, 0});
    box.SetHalfExtents({1, 1, 1});
    box.SetAxes({0, 1, 0}, {1, 0, 0}, {0, 0, 1});
    return good && box != tOrientedBox<T>() && box.GetCorner(0) == tVector3<T>(-1, -1, -1);
}
static_assert(WorksInConstants<float>() && WorksInConstants<double>());

template <typename T>
constexpr bool KeepsItsShape()
{
    using Box = tOrientedBox<T>;
    static_assert(std::is_nothrow_default_constructible_v<Box> && std::is_trivially_copyable_v<Box>);
    static_assert(std::is_constructible_v<Box, tVolumeAABB<T>> && !std::is_convertible_v<tVolumeAABB<T>, Box>);
    static_assert(std::is_convertible_v<tOrientedBox<Other<T>>, Box>);
    static_assert(std::is_nothrow_constructible_v<Box, tVolumeAABB<T>, tMatrix4<T>>);
    return true;
}
static_assert(KeepsItsShape<float>() && KeepsItsShape<double>());

// Construction.

TYPED_TEST(OrientedBoxTest, TheDefaultIsTheEmptyBox)
{
    tOrientedBox<TypeParam> const box;
    ExpectEmpty(box);
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(box.GetVolume(), -INF<TypeParam>);
}

TYPED_TEST(OrientedBoxTest, AnAxisAlignedBoxKeepsItsPlaceAndTheAxesOfTheWorld)
{
    tOrientedBox<TypeParam> const box(tVolumeAABB<TypeParam>({-1, 2, 3}, {3, 10, 3}));
    ExpectBox<TypeParam>(box, {1, 6, 3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {2, 4, 0});
    EXPECT_TRUE(box.IsValid());
    EXPECT_EQ(box.GetVolume(), TypeParam{0});
}

TYPED_TEST(OrientedBoxTest, ABoxThatIsNotValidGivesTheEmptyOne)
{
    using Box = tVolumeAABB<TypeParam>;
    ExpectEmpty(tOrientedBox<TypeParam>(Box()));
    ExpectEmpty(tOrientedBox<TypeParam>(Box({0, 1, 0}, {1, 0, 1})));
    ExpectEmpty(tOrientedBox<TypeParam>(Box({0, QUIET_NAN<TypeParam>, 0}, {1, 1, 1})));
    ExpectEmpty(tOrientedBox<TypeParam>(Box(), tMatrix4<TypeParam>::Scale(TypeParam{2})));
}

TYPED_TEST(OrientedBoxTest, ABoxIsValidWhenNoHalfExtentIsNegativeOrNaN)
{
    tOrientedBox<TypeParam> box(tVolumeAABB<TypeParam>({0, 0, 0}, {2, 2, 2}));
    box.SetHalfExtents({0, TypeParam{-0.0}, INF<TypeParam>});
    EXPECT_TRUE(box.IsValid());
    for (TypeParam const bad : {-TINY<TypeParam>, -INF<TypeParam>, QUIET_NAN<TypeParam>})
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            tVector3<TypeParam> halves(1, 1, 1);
            halves[axis] = bad;
            box.SetHalfExtents(halves);
            EXPECT_FALSE(box.IsValid());
            EXPECT_FALSE(box.GetBound().IsValid());
            ExpectEmpty(box * tMatrix4<TypeParam>());
        }
}

TYPED_TEST(OrientedBoxTest, TheOtherPrecisionIsConvertedNumberByNumber)
{
    using From = Other<TypeParam>;
    tOrientedBox<From> const other(tVector3<From>(From(0.1), 2, 3), {From(0.6), From(0.8), 0},
                                   {From(-0.8), From(0.6), 0}, {0, 0, 1}, {1, From(0.7), 3});
    tOrientedBox<TypeParam> box = other;
    ExpectBox<TypeParam>(box, {static_cast<TypeParam>(From(0.1)), 2, 3},
                         {static_cast<TypeParam>(From(0.6)), static_cast<TypeParam>(From(0.8)), 0},
                         {static_cast<TypeParam>(From(-0.8)), static_cast<TypeParam>(From(0.6)), 0}, {0, 0, 1},
                         {1, static_cast<TypeParam>(From(0.7)), 3});
    box = tOrientedBox<TypeParam>();
    box = other;
    ExpectSameBits(box.GetCentre().x, static_cast<TypeParam>(From(0.1)));
}

TYPED_TEST(OrientedBoxTest, AxesMayBeSetToEachOther)
{
    tOrientedBox<TypeParam> box(tVector3<TypeParam>(1, 2, 3), {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {4, 5, 6});
    box.SetAxes(box.GetAxis(1), box.GetAxis(2), box.GetAxis(0));
    ExpectBox<TypeParam>(box, {1, 2, 3}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {4, 5, 6});
}

// Queries.

TYPED_TEST(OrientedBoxTest, CornersAreNumberedByABitForEachAxis)
{
    // x to the world's y, y to the world's -x
    tOrientedBox<TypeParam> const box(tVector3<TypeParam>(10, 20, 30), {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {1, 2, 3});
    tVector3<TypeParam> const expected[8] = {{12, 19, 27}, {12, 21, 27}, {8, 19, 27}, {8, 21, 27},
                                             {12, 19, 33}, {12, 21, 33}, {8, 19, 33}, {8, 21, 33}};
    tVector3<TypeParam> corners[8];
    box.GetCorners(corners);
    for (unsigned int i = 0; i < 8; ++i)
    {
        ExpectSameBits(corners[i], expected[i]);
        ExpectSameBits(box.GetCorner(i), expected[i]);
        ExpectSameBits(box.GetCorner(i + 8), expected[i]);
    }
}

TYPED_TEST(OrientedBoxTest, TheFacesBelongToTheBox)
{
    tOrientedBox<TypeParam> const box(tVector3<TypeParam>(10, 20, 30), {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {1, 2, 3});
    tVector3<TypeParam> corners[8];
    box.GetCorners(corners);
    for (tVector3<TypeParam> const& corner : corners)
        EXPECT_TRUE(box.Contains(corner));
    EXPECT_TRUE(box.Contains({10, 20, 30}));
    EXPECT_FALSE(box.Contains({10, JustAbove(TypeParam{21}), 30}));
    EXPECT_FALSE(box.Contains({JustBelow(TypeParam{8}), 20, 30}));
    EXPECT_FALSE(box.Contains({10, 20, JustAbove(TypeParam{33})}));
    EXPECT_FALSE(box.Contains({QUIET_NAN<TypeParam>, 20, 30}));
    EXPECT_FALSE(box.Contains({10, INF<TypeParam>, 30}));
    EXPECT_FALSE(tOrientedBox<TypeParam>().Contains({0, 0, 0}));
}

TYPED_TEST(OrientedBoxTest, ContainsIsTheThreeCoordinatesAlongTheAxes)
{
    Random random(4001);
    for (int round = 0; round < 2000; ++round)
    {
        tVector3<TypeParam> const centre = random.Vector<tVector3<TypeParam>>(-2, 2);
        tOrientedBox<TypeParam> const box =
            tOrientedBox<TypeParam>(tVolumeAABB<TypeParam>({-1, -2, -3}, {1, 2, 3})) *
            tMatrix4<TypeParam>::RotateAxis({0, 0, 0}, random.Vector<tVector3<TypeParam>>(-1, 1), TypeParam{2}) *
            tMatrix4<TypeParam>::Translate(centre);
        tVector3<TypeParam> const point = random.Vector<tVector3<TypeParam>>(-3, 3);
        double const excess = Excess(box, tVector3<double>(static_cast<double>(point.x), static_cast<double>(point.y),
                                                           static_cast<double>(point.z)));
        bool const isNearAFace = std::abs(excess) < 1e-5; // where rounding decides
        EXPECT_TRUE(isNearAFace || box.Contains(point) == (excess < 0));
    }
}

TYPED_TEST(OrientedBoxTest, TheBoundIsTheBoxAroundTheCorners)
{
    tOrientedBox<TypeParam> const turned(tVector3<TypeParam>(1, 2, 3), {TypeParam(0.6), TypeParam(0.8), 0},
                                         {TypeParam(-0.8), TypeParam(0.6), 0}, {0, 0, -1}, {5, 10, 2});
    tVolumeAABB<TypeParam> const bound = turned.GetBound();
    ExpectNear<TypeParam>(bound.GetMin(), {-10, -8, 1}, 16 * EPSILON<TypeParam>); // 3 + 8, 4 + 6, 2
    ExpectNear<TypeParam>(bound.GetMax(), {12, 12, 5}, 16 * EPSILON<TypeParam>);
    tVolumeAABB<TypeParam> around;
    for (unsigned int i = 0; i < 8; ++i)
        around.Expand(turned.GetCorner(i));
    ExpectNear<TypeParam>(bound.GetMin(), around.GetMin(), 16 * EPSILON<TypeParam>);
    ExpectNear<TypeParam>(bound.GetMax(), around.GetMax(), 16 * EPSILON<TypeParam>);
    EXPECT_FALSE(tOrientedBox<TypeParam>().GetBound().IsValid());
    ExpectSameBits(tOrientedBox<TypeParam>().GetBound().GetMin().x, INF<TypeParam>);
}

TYPED_TEST(OrientedBoxTest, EqualityIsTolerantNumberByNumber)
{
    tOrientedBox<TypeParam> const box(tVolumeAABB<TypeParam>({-1, 2, 3}, {3, 10, 5}));
    tOrientedBox<TypeParam> near = box;
    near.SetCentre({Steps(TypeParam{1}, 1), 6, 4});
    EXPECT_TRUE(near == box);
    EXPECT_FALSE(near != box);
    near.SetCentre({2, 6, 4});
    EXPECT_TRUE(near != box);
    near = box;
    near.SetHalfExtents({2, 4, 2});
    EXPECT_FALSE(near == box);
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        near = box;
        near.SetAxes(axis == 0 ? -box.GetAxis(0) : box.GetAxis(0), axis == 1 ? -box.GetAxis(1) : box.GetAxis(1),
                     axis == 2 ? -box.GetAxis(2) : box.GetAxis(2));
        EXPECT_FALSE(near == box); // the same points, but not the same numbers
    }
}

// Matrices.

TYPED_TEST(OrientedBoxTest, TheIdentityChangesNothing)
{
    tOrientedBox<TypeParam> box(tVolumeAABB<TypeParam>({-1, 2, 3}, {3, 10, 5}));
    ExpectBox<TypeParam>(box * tMatrix4<TypeParam>(), {1, 6, 4}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {2, 4, 1});
    tOrientedBox<TypeParam>& self = box *= tMatrix4<TypeParam>();
    EXPECT_EQ(&self, &box);
}

TYPED_TEST(OrientedBoxTest, AScalingAlongTheAxesScalesTheExtents)
{
    tVolumeAABB<TypeParam> const box({-1, 2, 3}, {3, 10, 5});
    ExpectNumbers<TypeParam>({box, tMatrix4<TypeParam>::Scale({2, -3, TypeParam(0.5)})}, {2, -18, 2}, {1, 0, 0},
                             {0, -1, 0}, {0, 0, 1}, {4, 12, TypeParam(0.5)});
    // of any magnitude
    TypeParam const huge = std::sqrt(LARGEST<TypeParam>) * 8;
    TypeParam const tiny = std::sqrt(SMALLEST_NORMAL<TypeParam>) / 8;
    ExpectNumbers<TypeParam>({box, tMatrix4<TypeParam>::Scale({huge, tiny, 1})}, {huge, 6 * tiny, 4}, {1, 0, 0},
                             {0, 1, 0}, {0, 0, 1}, {2 * huge, 4 * tiny, 1});
}

TYPED_TEST(OrientedBoxTest, AQuarterTurnIsExact)
{
    TypeParam const turn[9] = {0, -1, 0, 1, 0, 0, 0, 0, 1}; // x to y, y to -x
    ExpectNumbers<TypeParam>({tVolumeAABB<TypeParam>({0, 0, 0}, {2, 4, 6}), Affine<TypeParam>(turn, {10, 20, 30})},
                             {8, 21, 33}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {1, 2, 3});
}

TYPED_TEST(OrientedBoxTest, TheFourthRowCountsForNothing)
{
    tVolumeAABB<TypeParam> const box({-1, -1, -1}, {1, 1, 1});
    tMatrix4<TypeParam> const matrix(2, 0, 0, 3, 0, 2, 0, 4, 0, 0, 2, 5, 7, 8, 9, 10);
    ExpectBox<TypeParam>({box, matrix}, {3, 4, 5}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {2, 2, 2});
}

TYPED_TEST(OrientedBoxTest, ARigidMotionKeepsTheExtentsAndMovesTheCorners)
{
    Random random(4002);
    for (int round = 0; round < 2000; ++round)
    {
        tVector3<TypeParam> const half = random.Vector<tVector3<TypeParam>>(0, 4);
        tVector3<TypeParam> const centre = random.Vector<tVector3<TypeParam>>(-4, 4);
        tMatrix4<TypeParam> const matrix =
            tMatrix4<TypeParam>::Translate(random.Vector<tVector3<TypeParam>>(-4, 4)) *
            tMatrix4<TypeParam>::RotateAxis({0, 0, 0}, random.Vector<tVector3<TypeParam>>(-1, 1), TypeParam{3});
        tOrientedBox<TypeParam> const before(tVolumeAABB<TypeParam>(centre - half, centre + half));
        tOrientedBox<TypeParam> const after = before * matrix;
        ExpectPerpendicularUnits(after);
        ExpectNear(after.GetHalfExtents(), before.GetHalfExtents(), TypeParam{64} * EPSILON<TypeParam>);
        for (unsigned int i = 0; i < 8; ++i)
        {
            tVector3<double> const corner = Moved(matrix, before.GetCorner(i));
            ExpectNear(after.GetCorner(i),
                       tVector3<TypeParam>(static_cast<TypeParam>(corner.x), static_cast<TypeParam>(corner.y),
                                           static_cast<TypeParam>(corner.z)),
                       TypeParam{128} * EPSILON<TypeParam>);
        }
    }
}

TYPED_TEST(OrientedBoxTest, ABoxUnderAnyMatrixLiesInTheResult)
{
    Random random(4003);
    for (int round = 0; round < 4000; ++round)
    {
        TypeParam numbers[9];
        for (TypeParam& number : numbers)
            number =
                random.Below(4) == 0 ? static_cast<TypeParam>(random.Whole(-1, 1)) : random.Number<TypeParam>(-2, 2);
        tMatrix4<TypeParam> const matrix = Affine(numbers, random.Vector<tVector3<TypeParam>>(-2, 2));
        tOrientedBox<TypeParam> const before(
            tVolumeAABB<TypeParam>({-1, -2, 0}, random.Vector<tVector3<TypeParam>>(0, 2)));
        tOrientedBox<TypeParam> const after = before * matrix;
        ExpectPerpendicularUnits(after);
        for (unsigned int i = 0; i < 8; ++i)
            EXPECT_LE(Excess(after, Moved(matrix, before.GetCorner(i))), 64 * static_cast<double>(EPSILON<TypeParam>));
    }
}

TYPED_TEST(OrientedBoxTest, AxesThatAMatrixMakesZeroOrParallelAreReplaced)
{
    tOrientedBox<TypeParam> const cube(tVolumeAABB<TypeParam>({-1, -1, -1}, {1, 1, 1}));
    // each a list of the columns
    TypeParam const columns[][9] = {
        {0, 0, 0, 0, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 2, 0, 0, 0, 0},
        {0, 0, 0, 0, 0, 0, 3, 0, 0}, {0, 0, 0, 0, 2, 0, 0, 0, 3}, {1, 0, 0, 0, 0, 0, 0, 0, 3},
        {1, 0, 0, 0, 2, 0, 0, 0, 0}, {1, 1, 1, 2, 2, 2, 3, 3, 3}, {1, 1, 1, 2, 2, 2, 0, 0, 1},
        {0, 0, 0, 1, 2, 3, 2, 4, 6}, {0, 0, 0, 1, 2, 3, 1, 0, 0}, {1, 2, 3, -1, -2, -3, 0, 0, 0},
        {0, 0, 1, 0, 0, -1, 1, 0, 0}};
    for (auto const& c : columns)
    {
        TypeParam const rows[9] = {c[0], c[3], c[6], c[1], c[4], c[7], c[2], c[5], c[8]};
        tMatrix4<TypeParam> const matrix = Affine<TypeParam>(rows, {0, 0, 0});
        tOrientedBox<TypeParam> const flat = cube * matrix;
        EXPECT_TRUE(flat.IsValid());
        EXPECT_NEAR(flat.GetVolume(), TypeParam{0}, 256 * EPSILON<TypeParam>);
        ExpectPerpendicularUnits(flat);
        for (unsigned int i = 0; i < 8; ++i)
            EXPECT_LE(Excess(flat, Moved(matrix, cube.GetCorner(i))), 32 * static_cast<double>(EPSILON<TypeParam>));
    }
}

TYPED_TEST(OrientedBoxTest, InfinitiesAndNaNInAMatrixAreNotHidden)
{
    tOrientedBox<TypeParam> const cube(tVolumeAABB<TypeParam>({-1, -1, -1}, {1, 1, 1}));
    for (TypeParam const bad : {INF<TypeParam>, -INF<TypeParam>, QUIET_NAN<TypeParam>})
        for (std::size_t i = 0; i < 9; ++i)
        {
            TypeParam numbers[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
            numbers[i] = bad;
            tVector3<TypeParam> const halves = (cube * Affine<TypeParam>(numbers, {0, 0, 0})).GetHalfExtents();
            EXPECT_FALSE(std::isfinite(halves.x) && std::isfinite(halves.y) && std::isfinite(halves.z));
        }
}

// Streams.

TYPED_TEST(OrientedBoxTest, FifteenRawNumbersAreWrittenAndReadBack)
{
    tOrientedBox<TypeParam> const box(tVector3<TypeParam>(1, 2, 3), {4, 5, 6}, {7, 8, 9}, {10, 11, 12},
                                      {13, 14, QUIET_NAN<TypeParam>});
    std::stringstream stream;
    EXPECT_EQ(&box.Serialise(stream), &stream);
    std::string const bytes = stream.str();
    EXPECT_EQ(bytes, std::string(reinterpret_cast<char const*>(&box), sizeof box));
    EXPECT_EQ(bytes.size(), 15 * sizeof(TypeParam));
    tOrientedBox<TypeParam> copy;
    EXPECT_EQ(&copy.Deserialise(stream), &stream);
    ExpectBox<TypeParam>(copy, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}, {13, 14, QUIET_NAN<TypeParam>});
}

TYPED_TEST(OrientedBoxTest, AStreamThatEndsEarlyLeavesTheRest)
{
    std::stringstream stream;
    tVector3<TypeParam>(7, 8, 9).Serialise(stream);
    tOrientedBox<TypeParam> box(tVolumeAABB<TypeParam>({0, 0, 0}, {2, 2, 2}));
    box.Deserialise(stream);
    EXPECT_TRUE(stream.fail());
    ExpectBox<TypeParam>(box, {7, 8, 9}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1});
}

} // namespace
