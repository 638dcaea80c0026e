#include "bv/maths/tVolumeAABB.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVolumeSphere.h"
#include "support/Allocations.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"
#include "support/Throws.h"

using bv::maths::tMatrix4;
using bv::maths::tVector3;
using bv::maths::tVolumeAABB;
using bv::maths::tVolumeSphere;
using namespace bv::test;

namespace
{

/// The six numbers of a box, to the bit.
template <typename T>
void ExpectBox(tVolumeAABB<T> const& box, tVector3<T> const& min, tVector3<T> const& max)
{
    ExpectSameBits(box.GetMin(), min);
    ExpectSameBits(box.GetMax(), max);
}

template <typename T>
void ExpectSameBox(tVolumeAABB<T> const& actual, tVolumeAABB<T> const& expected)
{
    ExpectBox(actual, expected.GetMin(), expected.GetMax());
}

template <typename T>
void ExpectEmpty(tVolumeAABB<T> const& box)
{
    ExpectBox(box, {INF<T>, INF<T>, INF<T>}, {-INF<T>, -INF<T>, -INF<T>});
}

/// One of the six numbers, in the order of memory.
template <typename T>
T& Number(tVolumeAABB<T>& box, std::size_t index)
{
    return (index < 3 ? box.GetMin() : box.GetMax())[index % 3];
}

template <typename T>
class VolumeAABBTest : public testing::Test
{
};
TYPED_TEST_SUITE(VolumeAABBTest, Precisions);

// What holds when the program is compiled.

template <typename T>
constexpr bool KeepsItsShape()
{
    using Box = tVolumeAABB<T>;
    using Vector = tVector3<T>;
    static_assert(sizeof(Box) == 6 * sizeof(T) && alignof(Box) == alignof(T));
    static_assert(std::is_standard_layout_v<Box> && std::is_trivially_copyable_v<Box> && !std::is_polymorphic_v<Box>);
    static_assert(std::is_nothrow_default_constructible_v<Box> && std::is_nothrow_constructible_v<Box, Vector, Vector>);
    static_assert(std::is_nothrow_copy_constructible_v<Box> && std::is_nothrow_move_constructible_v<Box>);
    static_assert(std::is_nothrow_copy_assignable_v<Box> && std::is_nothrow_move_assignable_v<Box>);
    static_assert(std::is_nothrow_constructible_v<Box, tVolumeAABB<Other<T>>> &&
                  std::is_nothrow_assignable_v<Box&, tVolumeAABB<Other<T>>>);
    static_assert(std::is_convertible_v<tVolumeAABB<Other<T>>, Box> && std::is_convertible_v<Vector, Box>);
    static_assert(!std::is_convertible_v<T, Box> && !std::is_convertible_v<tVector3<Other<T>>, Box> &&
                  !std::is_convertible_v<tVolumeSphere<T>, Box> && !std::is_convertible_v<Box, tVolumeSphere<T>> &&
                  !std::is_convertible_v<tMatrix4<T>, Box>);
    static_assert(!std::is_constructible_v<Box, T> && !std::is_constructible_v<Box, T, T>);
    static_assert(std::is_same_v<decltype(Box::AXIS_X), unsigned char const> &&
                  std::is_same_v<decltype(Box::AXIS_Y), unsigned char const> &&
                  std::is_same_v<decltype(Box::AXIS_Z), unsigned char const>);
    static_assert(Box::AXIS_X == 0 && Box::AXIS_Y == 1 && Box::AXIS_Z == 2);
    return true;
}
static_assert(KeepsItsShape<float>() && KeepsItsShape<double>());

template <typename T>
constexpr bool KeepsItsSignatures(tVolumeAABB<T>& box, tVolumeAABB<T> const& constant, tVector3<T> const& point,
                                  tVolumeSphere<T> const& sphere, tMatrix4<T> const& matrix, std::ostream& out,
                                  std::istream& in)
{
    using Box = tVolumeAABB<T>;
    using Vector = tVector3<T>;
    static_assert(std::is_same_v<decltype(box.GetMin()), Vector&> &&
                  std::is_same_v<decltype(constant.GetMin()), Vector const&>);
    static_assert(std::is_same_v<decltype(box.GetMax()), Vector&> &&
                  std::is_same_v<decltype(constant.GetMax()), Vector const&>);
    static_assert(std::is_same_v<decltype(box.SetMin(point)), void> && std::is_same_v<decltype(box.Reset()), void>);
    static_assert(std::is_same_v<decltype(constant.IsValid()), bool>);
    static_assert(std::is_same_v<decltype(constant.Contains(point, true)), bool>);
    static_assert(std::is_same_v<decltype(constant.DistanceSquared(point)), T>);
    static_assert(std::is_same_v<decltype(constant.Distance(point)), T>);
    static_assert(std::is_same_v<decltype(constant.GetVolume()), T>);
    static_assert(std::is_same_v<decltype(constant.GetArea(0)), T>);
    static_assert(std::is_same_v<decltype(constant.GetLength(0)), T>);
    static_assert(std::is_same_v<decltype(constant.GetCentre()), Vector>);
    static_assert(std::is_same_v<decltype(constant.GetDiagonal()), Vector>);
    static_assert(std::is_same_v<decltype(constant.Overlaps(sphere)), bool>);
    static_assert(std::is_same_v<decltype(constant.Split(0, box, box)), void>);
    static_assert(std::is_same_v<decltype(constant == constant), bool> &&
                  std::is_same_v<decltype(constant != constant), bool>);
    static_assert(std::is_same_v<decltype(constant * matrix), Box> && std::is_same_v<decltype(box *= matrix), Box&>);
    static_assert(std::is_same_v<decltype(box.Expand(constant)), void> &&
                  std::is_same_v<decltype(box.Expand(point)), void> && std::is_same_v<decltype(box.Expand(T{})), void>);
    static_assert(std::is_same_v<decltype(box.ExpandAndSignal(constant)), bool> &&
                  std::is_same_v<decltype(box.ExpandAndSignal(point)), bool>);
    static_assert(std::is_same_v<decltype(box.Offset(T{})), void>);
    static_assert(std::is_same_v<decltype(constant.Serialise(out)), std::ostream&> &&
                  std::is_same_v<decltype(box.Deserialise(in)), std::istream&>);
    static_assert(std::is_same_v<decltype(box = tVolumeAABB<Other<T>>()), Box&>);
    static_assert(noexcept(constant.IsValid()));
    static_assert(noexcept(constant.Contains(point, true)));
    static_assert(noexcept(constant.DistanceSquared(point)));
    static_assert(noexcept(constant.Distance(point)));
    static_assert(noexcept(constant.GetVolume()));
    static_assert(noexcept(constant.GetCentre()));
    static_assert(noexcept(constant.GetDiagonal()));
    static_assert(noexcept(constant.Overlaps(sphere)));
    static_assert(noexcept(constant.Split(0, box, box)));
    static_assert(noexcept(constant == constant));
    static_assert(noexcept(constant != constant));
    static_assert(noexcept(constant * matrix));
    static_assert(noexcept(box *= matrix));
    static_assert(noexcept(box.GetMin()));
    static_assert(noexcept(box.SetMin(point)));
    static_assert(noexcept(box.Reset()));
    static_assert(noexcept(box.Expand(constant)));
    static_assert(noexcept(box.Expand(point)));
    static_assert(noexcept(box.Expand(T{})));
    static_assert(noexcept(box.ExpandAndSignal(constant)));
    static_assert(noexcept(box.ExpandAndSignal(point)));
    static_assert(noexcept(box.Offset(T{})));
    static_assert(!noexcept(constant.GetLength(0)) && !noexcept(constant.GetArea(0)));
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

template <typename T>
constexpr bool WorksInConstants()
{
    using Box = tVolumeAABB<T>;
    Box box;
    bool good = !box.IsValid() && box.ExpandAndSignal(tVector3<T>(1, 2, 1));
    box.Expand(Box({0, 0, 0}, {4, 2, 6}));
    Box lower;
    Box upper;
    box.Split(Box::AXIS_Z, lower, upper);
    good = good && lower == Box({0, 0, 0}, {4, 2, 3}) && upper != lower && upper.Contains({2, 0, 3}, true);
    box.Offset(1);
    box.Expand(T{1}); // (-1, -1, -1) to (5, 3, 7), doubled about (2, 1, 3)
    return good && box == Box({-4, -3, -5}, {8, 5, 11}) && box.DistanceSquared({10, 6, 13}) == 9 &&
           box.GetVolume() == 12 * 8 * 16 && box.GetArea(1) == 12 * 16 && box.GetLength(2) == 16 &&
           box.GetCentre() == tVector3<T>(2, 1, 3) && box.GetDiagonal() == tVector3<T>(12, 8, 16) &&
           box.Overlaps(tVolumeSphere<T>({9, 0, 0}, 2)) && Box(tVolumeAABB<Other<T>>(box)) == box;
}
static_assert(WorksInConstants<float>() && WorksInConstants<double>());

// Layout.

TYPED_TEST(VolumeAABBTest, TheSixNumbersLieInTheOrderMinXToMinZThenMaxXToMaxZ)
{
    tVolumeAABB<TypeParam> const box({1, 2, 3}, {4, 5, 6});
    std::array<TypeParam, 6> numbers{};
    static_assert(sizeof(numbers) == sizeof(box));
    std::memcpy(numbers.data(), &box, sizeof(box));
    EXPECT_EQ(numbers, (std::array<TypeParam, 6>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(static_cast<void const*>(&box.GetMin()), static_cast<void const*>(&box));
    EXPECT_EQ(&box.GetMax(), &box.GetMin() + 1);
}

// Construction and assignment.

TYPED_TEST(VolumeAABBTest, TheDefaultBoxIsEmpty)
{
    ExpectEmpty(tVolumeAABB<TypeParam>());
}

TYPED_TEST(VolumeAABBTest, CornersAreTakenAsTheyAreWithoutReorderingOrChecking)
{
    ExpectBox<TypeParam>({{1, 2, 3}, {4, 5, 6}}, {1, 2, 3}, {4, 5, 6});
    ExpectBox<TypeParam>({{4, 5, 6}, {1, 2, 3}}, {4, 5, 6}, {1, 2, 3});
    ExpectBox<TypeParam>({{QUIET_NAN<TypeParam>, TypeParam{-0.0}, 0}, {1, -INF<TypeParam>, 0}},
                         {QUIET_NAN<TypeParam>, TypeParam{-0.0}, 0}, {1, -INF<TypeParam>, 0});
}

TYPED_TEST(VolumeAABBTest, ABoxFromOnePointReachesFromTheOriginToIt)
{
    using Vector = tVector3<TypeParam>;
    ExpectBox(tVolumeAABB<TypeParam>(Vector(3, 4, 5)), {0, 0, 0}, {3, 4, 5});
    tVolumeAABB<TypeParam> const implicit = Vector(-3, 4, -5);
    ExpectBox(implicit, {0, 0, 0}, {-3, 4, -5});
}

TYPED_TEST(VolumeAABBTest, CopiesAndMovesTakeTheSixNumbers)
{
    using Box = tVolumeAABB<TypeParam>;
    Box original({1, TypeParam{-0.0}, 2}, {3, INF<TypeParam>, 4});
    Box const copied(original);
    Box const moved(std::move(original));
    Box copyAssigned;
    Box moveAssigned;
    EXPECT_EQ(&(copyAssigned = copied), &copyAssigned);
    EXPECT_EQ(&(moveAssigned = Box(copied)), &moveAssigned);
    Box& self = copyAssigned;
    copyAssigned = self;
    for (Box const& box : {copied, moved, copyAssigned, moveAssigned})
        ExpectBox(box, {1, TypeParam{-0.0}, 2}, {3, INF<TypeParam>, 4});
}

TEST(VolumeAABBConversionTest, NarrowingRoundsEachNumberToNearest)
{
    // 1 + 2^-24 is a tie that goes to the even 1; 1 + 3 * 2^-24 one that goes to 1 + 2^-22; 2^-150 to 0.
    tVolumeAABB<double> const wide({1 + 0x1p-24, 1 + 3 * 0x1p-24, 7}, {-0x1p-150, 0.1, INF<double>});
    tVolumeAABB<float> const constructed(wide);
    ExpectBox(constructed, {1.0F, 1 + 0x1p-22F, 7.0F}, {-0.0F, 0.1F, INF<float>});
    tVolumeAABB<float> assigned;
    EXPECT_EQ(&(assigned = wide), &assigned);
    ExpectBox(assigned, {1.0F, 1 + 0x1p-22F, 7.0F}, {-0.0F, 0.1F, INF<float>});
}

TEST(VolumeAABBConversionTest, NarrowingBeyondTheRangeGivesInfinities)
{
    tVolumeAABB<double> const wide({-1e300, 1e39, -1e39}, {1e300, -1e39, 1e39});
    float const inf = INF<float>;
    ExpectBox(tVolumeAABB<float>(wide), {-inf, inf, -inf}, {inf, -inf, inf});
    tVolumeAABB<float> assigned;
    assigned = wide;
    ExpectBox(assigned, {-inf, inf, -inf}, {inf, -inf, inf});
}

TEST(VolumeAABBConversionTest, WideningKeepsEachNumber)
{
    tVolumeAABB<float> const narrow({0.1F, -0.0F, 7.0F}, {0x1p-149F, INF<float>, 8.0F});
    tVolumeAABB<double> const constructed = narrow;
    ExpectBox(constructed, {0x1.99999ap-4, -0.0, 7.0}, {0x1p-149, INF<double>, 8.0});
    tVolumeAABB<double> assigned;
    EXPECT_EQ(&(assigned = narrow), &assigned);
    ExpectBox(assigned, {0x1.99999ap-4, -0.0, 7.0}, {0x1p-149, INF<double>, 8.0});
}

TEST(VolumeAABBConversionTest, TheEmptyBoxStaysEmpty)
{
    ExpectEmpty(tVolumeAABB<float>(tVolumeAABB<double>()));
    ExpectEmpty(tVolumeAABB<double>(tVolumeAABB<float>()));
}

// Access.

TYPED_TEST(VolumeAABBTest, CornersAreReadAndWrittenThroughReferences)
{
    tVolumeAABB<TypeParam> box({1, 2, 3}, {4, 5, 6});
    box.GetMin().x = 10;
    box.GetMin()[2] = 30;
    box.GetMax() = {40, 50, 60};
    tVolumeAABB<TypeParam> const& constant = box;
    EXPECT_EQ(&constant.GetMin(), &box.GetMin());
    EXPECT_EQ(&constant.GetMax(), &box.GetMax());
    ExpectBox(constant, {10, 2, 30}, {40, 50, 60});
}

TYPED_TEST(VolumeAABBTest, SettersOverwriteOneCornerWithoutChecking)
{
    tVolumeAABB<TypeParam> box({1, 2, 3}, {4, 5, 6});
    box.SetMin({10, QUIET_NAN<TypeParam>, 30});
    ExpectBox(box, {10, QUIET_NAN<TypeParam>, 30}, {4, 5, 6});
    box.SetMax({-5, -6, -7});
    ExpectBox(box, {10, QUIET_NAN<TypeParam>, 30}, {-5, -6, -7});
    box.SetMin(box.GetMax());
    ExpectBox(box, {-5, -6, -7}, {-5, -6, -7});
}

TYPED_TEST(VolumeAABBTest, ResetMakesABoxEmpty)
{
    tVolumeAABB<TypeParam> box({1, 2, 3}, {4, 5, 6});
    box.Reset();
    ExpectEmpty(box);
    EXPECT_FALSE(box.IsValid());
}

// Validity and containment.

TYPED_TEST(VolumeAABBTest, ABoxIsValidWhenNoMaxIsBelowItsMin)
{
    using Box = tVolumeAABB<TypeParam>;
    EXPECT_TRUE(Box({1, 2, 3}, {4, 5, 6}).IsValid());
    EXPECT_TRUE(Box({1, 2, 3}, {1, 2, 3}).IsValid());
    EXPECT_TRUE(Box({0, 0, 0}, {TypeParam{-0.0}, TypeParam{-0.0}, TypeParam{-0.0}}).IsValid());
    EXPECT_TRUE(Box({-INF<TypeParam>, 0, 0}, {INF<TypeParam>, 0, 0}).IsValid());
    EXPECT_FALSE(Box({4, 2, 3}, {1, 5, 6}).IsValid());
    EXPECT_FALSE(Box({1, 5, 3}, {4, 2, 6}).IsValid());
    EXPECT_FALSE(Box({1, 2, 6}, {4, 5, 3}).IsValid());
    EXPECT_FALSE(Box().IsValid());
}

TYPED_TEST(VolumeAABBTest, ABoxWithANaNIsInvalidAndContainsNothing)
{
    for (std::size_t number = 0; number < 6; ++number)
    {
        tVolumeAABB<TypeParam> box({-1, -1, -1}, {1, 1, 1});
        EXPECT_TRUE(box.Contains({0, 0, 0}, true));
        Number(box, number) = QUIET_NAN<TypeParam>;
        EXPECT_FALSE(box.IsValid()) << number;
        EXPECT_FALSE(box.Contains({0, 0, 0}, false)) << number;
        EXPECT_FALSE(box.Contains({0, 0, 0}, true)) << number;
    }
}

TYPED_TEST(VolumeAABBTest, LowerFacesAreAlwaysInsideAndUpperFacesUnlessExcluded)
{
    // From below the box to above it on every axis: outside, lower face, inside, upper face, outside.
    tVolumeAABB<TypeParam> const box({1, 11, 21}, {3, 13, 23});
    for (int x = 0; x <= 4; ++x)
        for (int y = 0; y <= 4; ++y)
            for (int z = 0; z <= 4; ++z)
            {
                tVector3<TypeParam> const point(TypeParam(x), TypeParam(10 + y), TypeParam(20 + z));
                int const least = std::min({x, y, z});
                int const most = std::max({x, y, z});
                EXPECT_EQ(box.Contains(point, false), least >= 1 && most <= 3) << point;
                EXPECT_EQ(box.Contains(point, true), least >= 1 && most <= 2) << point;
            }
}

TYPED_TEST(VolumeAABBTest, APointWithANaNIsNowhereInside)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    TypeParam const inf = INF<TypeParam>;
    tVolumeAABB<TypeParam> const box({-inf, -inf, -inf}, {inf, inf, inf});
    for (bool const exclusive : {false, true})
    {
        EXPECT_FALSE(box.Contains({nan, 0, 0}, exclusive));
        EXPECT_FALSE(box.Contains({0, nan, 0}, exclusive));
        EXPECT_FALSE(box.Contains({0, 0, nan}, exclusive));
        EXPECT_TRUE(box.Contains({0, 0, 0}, exclusive));
        EXPECT_EQ(box.Contains({0, 0, inf}, exclusive), !exclusive);
    }
}

TYPED_TEST(VolumeAABBTest, TheEmptyBoxContainsNoPointInEitherMode)
{
    TypeParam const values[] = {-INF<TypeParam>, 0, INF<TypeParam>, QUIET_NAN<TypeParam>};
    for (TypeParam const x : values)
        for (TypeParam const y : values)
            for (TypeParam const z : values)
            {
                EXPECT_FALSE(tVolumeAABB<TypeParam>().Contains({x, y, z}, false));
                EXPECT_FALSE(tVolumeAABB<TypeParam>().Contains({x, y, z}, true));
            }
}

TYPED_TEST(VolumeAABBTest, OfTheHalvesOfABoxExactlyOneClaimsAPointOnTheSharedFace)
{
    for (unsigned char axis = 0; axis < 3; ++axis)
    {
        tVolumeAABB<TypeParam> lower;
        tVolumeAABB<TypeParam> upper;
        tVolumeAABB<TypeParam>({0, 0, 0}, {2, 2, 2}).Split(axis, lower, upper);
        EXPECT_FALSE(lower.Contains({1, 1, 1}, true));
        EXPECT_TRUE(upper.Contains({1, 1, 1}, true));
        EXPECT_TRUE(lower.Contains({1, 1, 1}, false));
    }
}

/// Numbers among which every relation of two ends and a value occurs: below, equal, above, infinitely far, unordered.
template <typename T>
constexpr T PLACES[] = {-INF<T>, T{-2}, T{-1}, -TINY<T>, T{-0.0}, T{0}, T{1}, T{3}, INF<T>, QUIET_NAN<T>};

/// Calls `check(box, point, axis)` for every combination of a lower end, an upper end and a value along each axis;
/// along the two other axes the point is inside.
template <typename T, typename Check>
void ForAllPlaces(Check check)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        for (T const lower : PLACES<T>)
        {
            for (T const upper : PLACES<T>)
            {
                for (T const value : PLACES<T>)
                {
                    tVolumeAABB<T> box({-1, -1, -1}, {1, 1, 1});
                    tVector3<T> point(0, 0, 0);
                    box.GetMin()[axis] = lower;
                    box.GetMax()[axis] = upper;
                    point[axis] = value;
                    check(box, point, axis);
                }
            }
        }
    }
}

// Distance.

TYPED_TEST(VolumeAABBTest, TheDistanceIsMeasuredToTheNearestPointOfTheBox)
{
    tVolumeAABB<TypeParam> const box({-1, -2, 0}, {2, 1, 3});
    for (int x = -5; x <= 6; ++x)
        for (int y = -6; y <= 5; ++y)
            for (int z = -4; z <= 7; ++z)
            {
                int const dx = x - std::clamp(x, -1, 2);
                int const dy = y - std::clamp(y, -2, 1);
                int const dz = z - std::clamp(z, 0, 3);
                TypeParam const expected = TypeParam(dx * dx + dy * dy + dz * dz);
                tVector3<TypeParam> const point{TypeParam(x), TypeParam(y), TypeParam(z)};
                ExpectSameBits(box.DistanceSquared(point), expected);
                ExpectSameBits(box.Distance(point), std::sqrt(expected));
            }
    EXPECT_EQ(box.DistanceSquared({4, 4, 9}), TypeParam{49}); // 2, 3 and 6 outside
    EXPECT_EQ(box.Distance({4, 4, 9}), TypeParam{7});
}

TYPED_TEST(VolumeAABBTest, TheDistanceIsSummedFromXToZ)
{
    TypeParam const lost = LOST<TypeParam>;
    for (TypeParam const side : {TypeParam{1}, TypeParam{-1}})
    {
        tVolumeAABB<TypeParam> const box({0, 0, 0}, {0, 0, 0});
        ExpectSameBits(box.DistanceSquared({side, side * lost, side * lost}), TypeParam{1});
        ExpectSameBits(box.DistanceSquared({side * lost, side, side * lost}), TypeParam{1});
        ExpectSameBits(box.DistanceSquared({side * lost, side * lost, side}), NEXT_AFTER_ONE<TypeParam>);
    }
}

TYPED_TEST(VolumeAABBTest, BelowMinTheMaxSideIsNotLookedAt)
{
    tVolumeAABB<TypeParam> const box({2, 0, 0}, {-5, 0, 0});
    EXPECT_EQ(box.DistanceSquared({0, 0, 0}), TypeParam{4});  // 2 below min; the 5 above max are not looked at
    EXPECT_EQ(box.DistanceSquared({3, 0, 0}), TypeParam{64}); // not below min; 8 above max
    EXPECT_EQ(box.DistanceSquared({2, 0, 0}), TypeParam{49}); // on min is not below it; 7 above max
}

TYPED_TEST(VolumeAABBTest, ANaNAxisAddsNothingToTheDistance)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(box.DistanceSquared({nan, 3, 3}), TypeParam{8});
    EXPECT_EQ(box.DistanceSquared({3, nan, 0}), TypeParam{4});
    EXPECT_EQ(box.DistanceSquared({0, -2, nan}), TypeParam{4});
    // A NaN lower corner leaves the upper one at work, and the other way round.
    EXPECT_EQ(tVolumeAABB<TypeParam>({nan, 0, 0}, {1, 1, 1}).DistanceSquared({3, 0, 0}), TypeParam{4});
    EXPECT_EQ(tVolumeAABB<TypeParam>({0, 0, 0}, {1, 1, nan}).DistanceSquared({0, 0, -3}), TypeParam{9});
}

TYPED_TEST(VolumeAABBTest, TheEmptyBoxIsInfinitelyFarAway)
{
    EXPECT_EQ(tVolumeAABB<TypeParam>().DistanceSquared({0, 0, 0}), INF<TypeParam>);
    EXPECT_EQ(tVolumeAABB<TypeParam>().Distance({0, 0, 0}), INF<TypeParam>);
}

TYPED_TEST(VolumeAABBTest, TheDistanceIsTheRootOfTheVerySumEvenWhereThatOverflowsOrUnderflows)
{
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {0, 0, 0});
    TypeParam const huge = LARGEST<TypeParam>;
    TypeParam const tiny = SMALLEST_NORMAL<TypeParam>;
    EXPECT_EQ(box.DistanceSquared({huge, 0, 0}), INF<TypeParam>);
    EXPECT_EQ(box.Distance({huge, 0, 0}), INF<TypeParam>);
    EXPECT_EQ(box.Distance({0, 0, -huge}), INF<TypeParam>);
    ExpectSameBits(box.DistanceSquared({tiny, tiny, tiny}), TypeParam{0});
    ExpectSameBits(box.Distance({tiny, tiny, tiny}), TypeParam{0});
}

// Measures.

TYPED_TEST(VolumeAABBTest, TheAreaOfAFaceIsTheProductOfTheOtherTwoExtents)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const box({0, 0, 0}, {1, 2, 3});
    EXPECT_EQ(box.GetArea(Box::AXIS_X), TypeParam{6}); // 2 * 3
    EXPECT_EQ(box.GetArea(Box::AXIS_Y), TypeParam{3}); // 1 * 3
    EXPECT_EQ(box.GetArea(Box::AXIS_Z), TypeParam{2}); // 1 * 2
    Box const moved({10, 20, 30}, {15, 27, 41});
    EXPECT_EQ(moved.GetArea(0), TypeParam{77});
    EXPECT_EQ(moved.GetArea(1), TypeParam{55});
    EXPECT_EQ(moved.GetArea(2), TypeParam{35});
    Box const inverted({1, 0, 0}, {0, 2, 3});
    EXPECT_EQ(inverted.GetArea(0), TypeParam{6});
    EXPECT_EQ(inverted.GetArea(1), TypeParam{-3});
    EXPECT_EQ(Box().GetArea(0), INF<TypeParam>); // the product of two negative infinities
}

TYPED_TEST(VolumeAABBTest, TheVolumeIsTheProductOfTheExtentsFromXToZ)
{
    using Box = tVolumeAABB<TypeParam>;
    EXPECT_EQ(Box({10, 20, 30}, {15, 27, 41}).GetVolume(), TypeParam{385});
    EXPECT_EQ(Box({15, 20, 30}, {10, 27, 41}).GetVolume(), TypeParam{-385});
    EXPECT_EQ(Box().GetVolume(), -INF<TypeParam>);
    // The product of x and y comes first: it overflows, or underflows, although the volume would not. In any other
    // order, the first box has the volume huge and the last one 1 / huge.
    TypeParam const huge = std::ldexp(TypeParam{1}, sizeof(TypeParam) == sizeof(float) ? 100 : 900);
    EXPECT_EQ(Box({0, 0, 0}, {huge, huge, 1 / huge}).GetVolume(), INF<TypeParam>);
    EXPECT_EQ(Box({0, 0, 0}, {huge, 1 / huge, huge}).GetVolume(), huge);
    EXPECT_EQ(Box({0, 0, 0}, {1 / huge, 1 / huge, huge}).GetVolume(), TypeParam{0});
}

TYPED_TEST(VolumeAABBTest, TheCentreIsHalfTheSumOfTheCorners)
{
    using Box = tVolumeAABB<TypeParam>;
    ExpectSameBits(Box({1, 2, 3}, {4, -9, 5}).GetCentre(), {TypeParam(2.5), TypeParam(-3.5), 4});
    TypeParam const huge = LARGEST<TypeParam>;
    ExpectSameBits(Box({0, 0, huge}, {0, 0, huge}).GetCentre(), {0, 0, INF<TypeParam>}); // the sum overflows
    tVector3<TypeParam> const empty = Box().GetCentre();
    EXPECT_TRUE(std::isnan(empty.x) && std::isnan(empty.y) && std::isnan(empty.z));
}

TYPED_TEST(VolumeAABBTest, TheDiagonalLeadsFromMinToMax)
{
    ExpectSameBits(tVolumeAABB<TypeParam>({1, 2, 3}, {4, -9, 8}).GetDiagonal(), {3, -11, 5});
    TypeParam const inf = INF<TypeParam>;
    ExpectSameBits(tVolumeAABB<TypeParam>().GetDiagonal(), {-inf, -inf, -inf});
}

TYPED_TEST(VolumeAABBTest, TheLengthAlongAnAxisIsItsExtent)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const box({10, 20, 30}, {15, 27, 41});
    EXPECT_EQ(box.GetLength(Box::AXIS_X), TypeParam{5});
    EXPECT_EQ(box.GetLength(Box::AXIS_Y), TypeParam{7});
    EXPECT_EQ(box.GetLength(Box::AXIS_Z), TypeParam{11});
    EXPECT_EQ(Box().GetLength(2), -INF<TypeParam>);
}

TYPED_TEST(VolumeAABBTest, TheAreaAndTheLengthForAnyOtherAxisAreErrors)
{
    tVolumeAABB<TypeParam> const box({1, 2, 3}, {4, 5, 6});
    std::string const type = std::string("bv::maths::tVolumeAABB<") + bv::test::TYPE_NAME<TypeParam> + ">::";
    for (unsigned int index = 3; index < 256; ++index)
    {
        auto const axis = static_cast<unsigned char>(index);
        bv::test::ExpectThrows<bv::InvalidArgumentException>([&] { static_cast<void>(box.GetArea(axis)); },
                                                             "Wrong axis argument to tVolumeAABB<T>::GetArea",
                                                             type + "GetArea", "internal\\Maths\\VolumeAABB", 288);
        bv::test::ExpectThrows<bv::InvalidArgumentException>([&] { static_cast<void>(box.GetLength(axis)); },
                                                             "Wrong axis argument to tVolumeAABB<T>::GetLength",
                                                             type + "GetLength", "internal\\Maths\\VolumeAABB", 205);
    }
    ExpectBox(box, {1, 2, 3}, {4, 5, 6});
    EXPECT_THROW(static_cast<void>(box.GetArea(3)), bv::InvalidArgumentException);
    EXPECT_THROW(static_cast<void>(box.GetArea(3)), bv::Exception);
    EXPECT_THROW(static_cast<void>(box.GetArea(3)), std::exception);
}

TYPED_TEST(VolumeAABBTest, TheDistanceFollowsFromTheFaceThatIsLookedAtOnEachAxis)
{
    using T = TypeParam;
    ForAllPlaces<T>(
        [](tVolumeAABB<T> const& box, tVector3<T> const& point, std::size_t axis)
        {
            T const below = box.GetMin()[axis] - point[axis];
            T const above = point[axis] - box.GetMax()[axis];
            T expected = 0;
            if (below > 0)
                expected = below * below;
            else if (above > 0)
                expected = above * above;
            ExpectSameBits(box.DistanceSquared(point), expected);
            ExpectSameBits(box.Distance(point), std::sqrt(expected));
        });
}

TYPED_TEST(VolumeAABBTest, APointIsInsideWhereNoAxisPutsItOutside)
{
    using T = TypeParam;
    ForAllPlaces<T>(
        [](tVolumeAABB<T> const& box, tVector3<T> const& point, std::size_t axis)
        {
            T const lower = box.GetMin()[axis];
            T const upper = box.GetMax()[axis];
            T const value = point[axis];
            EXPECT_EQ(box.Contains(point, false), lower <= value && value <= upper);
            EXPECT_EQ(box.Contains(point, true), lower <= value && value < upper);
        });
}

TYPED_TEST(VolumeAABBTest, GrowthFollowsFromTheComparisonsOnEachAxis)
{
    using T = TypeParam;
    ForAllPlaces<T>(
        [](tVolumeAABB<T> const& box, tVector3<T> const& point, std::size_t axis)
        {
            tVolumeAABB<T> expected = box;
            T& lower = expected.GetMin()[axis];
            T& upper = expected.GetMax()[axis];
            bool const lowers = lower > point[axis];
            bool const raises = point[axis] > upper;
            if (lowers)
                lower = point[axis];
            if (raises)
                upper = point[axis];
            for (bool const byPoint : {true, false})
            {
                tVolumeAABB<T> grown = box;
                tVolumeAABB<T> signalled = box;
                tVolumeAABB<T> const other(point, point);
                byPoint ? grown.Expand(point) : grown.Expand(other);
                EXPECT_EQ(byPoint ? signalled.ExpandAndSignal(point) : signalled.ExpandAndSignal(other),
                          lowers || raises);
                ExpectSameBox(grown, expected);
                ExpectSameBox(signalled, expected);
            }
        });
}

// Overlap with a sphere.

TYPED_TEST(VolumeAABBTest, ASphereOverlapsWhenTheBoxIsNearerThanItsRadius)
{
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 1, 3});
    for (int x = -4; x <= 6; ++x)
        for (int y = -4; y <= 5; ++y)
            for (int z = -4; z <= 7; ++z)
                for (int const squaredRadius : {1, 2, 3, 4, 5, 6, 9, 12, 14, 16, 17, 27})
                {
                    int const dx = x - std::clamp(x, 0, 2);
                    int const dy = y - std::clamp(y, 0, 1);
                    int const dz = z - std::clamp(z, 0, 3);
                    tVolumeSphere<TypeParam> const sphere({TypeParam(x), TypeParam(y), TypeParam(z)},
                                                          TypeParam(squaredRadius));
                    EXPECT_EQ(box.Overlaps(sphere), dx * dx + dy * dy + dz * dz < squaredRadius)
                        << sphere.GetCentre() << ": " << squaredRadius;
                }
}

TYPED_TEST(VolumeAABBTest, ASphereThatOnlyTouchesDoesNotOverlap)
{
    using Sphere = tVolumeSphere<TypeParam>;
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 2, 2});
    TypeParam const above4 = std::nextafter(TypeParam{4}, TypeParam{5});
    TypeParam const above49 = std::nextafter(TypeParam{49}, TypeParam{50});
    using Case = std::tuple<tVector3<TypeParam>, TypeParam, TypeParam>;
    for (auto const& [centre, touching, more] :
         {Case({-2, 1, 1}, 4, above4), Case({4, 1, 1}, 4, above4), Case({1, -2, 1}, 4, above4),
          Case({1, 4, 1}, 4, above4), Case({1, 1, -2}, 4, above4), Case({1, 1, 4}, 4, above4),
          Case({4, 5, 8}, 49, above49), Case({-2, -3, -6}, 49, above49)})
    {
        EXPECT_FALSE(box.Overlaps(Sphere(centre, touching))) << centre;
        EXPECT_TRUE(box.Overlaps(Sphere(centre, more))) << centre;
    }
}

TYPED_TEST(VolumeAABBTest, ASphereWhoseCentreIsInsideAlwaysOverlaps)
{
    using Sphere = tVolumeSphere<TypeParam>;
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 2, 2});
    for (TypeParam const squaredRadius :
         {TypeParam{1}, TypeParam{0}, TypeParam{-1}, -INF<TypeParam>, QUIET_NAN<TypeParam>})
    {
        EXPECT_TRUE(box.Overlaps(Sphere({1, 1, 1}, squaredRadius))) << squaredRadius;
        EXPECT_TRUE(box.Overlaps(Sphere({0, 2, 0}, squaredRadius))) << squaredRadius; // on the surface counts as inside
    }
    for (TypeParam const squaredRadius : {TypeParam{0}, TypeParam{-1}})
    {
        EXPECT_FALSE(box.Overlaps(Sphere({3, 1, 1}, squaredRadius)));
        EXPECT_FALSE(box.Overlaps(Sphere({1, -1, 1}, squaredRadius)));
        EXPECT_FALSE(box.Overlaps(Sphere({1, 1, 3}, squaredRadius)));
    }
}

TYPED_TEST(VolumeAABBTest, TheSphereIsComparedAfterEveryAdditionFromXToZ)
{
    using Sphere = tVolumeSphere<TypeParam>;
    TypeParam const tiny = TINY<TypeParam>; // its square is 0, and still compared
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 2, 2});
    EXPECT_FALSE(box.Overlaps(Sphere({-tiny, 1, 1}, TypeParam{0})));
    EXPECT_FALSE(box.Overlaps(Sphere({1, -tiny, 1}, TypeParam{0})));
    EXPECT_FALSE(box.Overlaps(Sphere({1, 1, -tiny}, TypeParam{0})));
    EXPECT_TRUE(box.Overlaps(Sphere({1, 1, -tiny}, tiny)));
    // The sums run from x to z: what is added to a 1 on the x axis is lost, what gathers before it is not.
    TypeParam const lost = LOST<TypeParam>;
    EXPECT_TRUE(box.Overlaps(Sphere({-1, -lost, -lost}, NEXT_AFTER_ONE<TypeParam>)));
    EXPECT_TRUE(box.Overlaps(Sphere({-lost, -1, -lost}, NEXT_AFTER_ONE<TypeParam>)));
    EXPECT_FALSE(box.Overlaps(Sphere({-lost, -lost, -1}, NEXT_AFTER_ONE<TypeParam>)));
}

TYPED_TEST(VolumeAABBTest, ANaNInASphereRejectsNothing)
{
    using Sphere = tVolumeSphere<TypeParam>;
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 2, 2});
    EXPECT_TRUE(box.Overlaps(Sphere({9, 9, 9}, nan)));
    EXPECT_TRUE(box.Overlaps(Sphere({nan, nan, nan}, TypeParam{-1})));
    EXPECT_FALSE(box.Overlaps(Sphere({nan, nan, 9}, TypeParam{1})));
}

TYPED_TEST(VolumeAABBTest, BelowMinTheMaxSideIsNotLookedAtForASphere)
{
    using Sphere = tVolumeSphere<TypeParam>;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        tVolumeAABB<TypeParam> box({0, 0, 0}, {0, 0, 0});
        box.GetMin()[axis] = 2;
        box.GetMax()[axis] = -5;
        EXPECT_TRUE(box.Overlaps(Sphere({0, 0, 0}, TypeParam{5}))) << axis; // 2 below min; 5 above max
        EXPECT_FALSE(box.Overlaps(Sphere({0, 0, 0}, TypeParam{4}))) << axis;
    }
}

TYPED_TEST(VolumeAABBTest, ASphereIsRejectedByTheSquareOfAGapThatReachesTheSquaredRadius)
{
    using T = TypeParam;
    ForAllPlaces<T>(
        [](tVolumeAABB<T> const& box, tVector3<T> const& point, std::size_t axis)
        {
            T const below = box.GetMin()[axis] - point[axis];
            T const above = point[axis] - box.GetMax()[axis];
            T const gap = below > 0 ? below : above;
            for (T const squaredRadius :
                 {-INF<T>, T{-1}, T{-0.0}, T{0}, TINY<T>, T{1}, T{4}, T{5}, INF<T>, QUIET_NAN<T>})
            {
                bool const rejected = gap > 0 && gap * gap >= squaredRadius;
                EXPECT_EQ(box.Overlaps(tVolumeSphere<T>(point, squaredRadius)), !rejected)
                    << box.GetMin() << "; " << box.GetMax() << "; " << point << "; " << squaredRadius;
            }
        });
}

TYPED_TEST(VolumeAABBTest, TheEmptyBoxOverlapsNoSphere)
{
    EXPECT_FALSE(tVolumeAABB<TypeParam>().Overlaps(tVolumeSphere<TypeParam>({0, 0, 0}, TypeParam{1})));
    EXPECT_FALSE(tVolumeAABB<TypeParam>().Overlaps(tVolumeSphere<TypeParam>({0, 0, 0}, INF<TypeParam>)));
}

// Split.

TYPED_TEST(VolumeAABBTest, SplitHalvesABoxAcrossItsAxis)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const cube({0, 0, 0}, {2, 2, 2});
    Box lower;
    Box upper;
    cube.Split(1, lower, upper);
    ExpectBox(lower, {0, 0, 0}, {2, 1, 2});
    ExpectBox(upper, {0, 1, 0}, {2, 2, 2});
    Box const box({1, 2, 3}, {4, 8, 10});
    box.Split(Box::AXIS_X, lower, upper);
    ExpectBox(lower, {1, 2, 3}, {TypeParam(2.5), 8, 10});
    ExpectBox(upper, {TypeParam(2.5), 2, 3}, {4, 8, 10});
    box.Split(Box::AXIS_Z, lower, upper);
    ExpectBox(lower, {1, 2, 3}, {4, 8, TypeParam(6.5)});
    ExpectBox(upper, {1, 2, TypeParam(6.5)}, {4, 8, 10});
    ExpectBox(box, {1, 2, 3}, {4, 8, 10});
}

TYPED_TEST(VolumeAABBTest, SplitHalvesTheSumOfTheEndsOfAnyBox)
{
    using Box = tVolumeAABB<TypeParam>;
    TypeParam const huge = LARGEST<TypeParam>;
    TypeParam const inf = INF<TypeParam>;
    Box lower;
    Box upper;
    Box({huge, 0, 0}, {huge, 1, 1}).Split(0, lower, upper); // the sum overflows before it is halved
    ExpectBox(lower, {huge, 0, 0}, {inf, 1, 1});
    ExpectBox(upper, {inf, 0, 0}, {huge, 1, 1});
    Box({4, 8, 9}, {1, 2, 3}).Split(2, lower, upper);
    ExpectBox(lower, {4, 8, 9}, {1, 2, 6});
    ExpectBox(upper, {4, 8, 6}, {1, 2, 3});
    Box().Split(1, lower, upper);
    ExpectBox(lower, {inf, inf, inf}, {-inf, QUIET_NAN<TypeParam>, -inf});
    ExpectBox(upper, {inf, QUIET_NAN<TypeParam>, inf}, {-inf, -inf, -inf});
}

TYPED_TEST(VolumeAABBTest, SplitMayWriteOverTheBoxItself)
{
    using Box = tVolumeAABB<TypeParam>;
    Box other;
    Box asLower({1, 2, 3}, {5, 8, 9});
    asLower.Split(0, asLower, other);
    ExpectBox(asLower, {1, 2, 3}, {3, 8, 9});
    ExpectBox(other, {3, 2, 3}, {5, 8, 9});
    Box asUpper({1, 2, 3}, {5, 8, 9});
    asUpper.Split(2, other, asUpper);
    ExpectBox(other, {1, 2, 3}, {5, 8, 6});
    ExpectBox(asUpper, {1, 2, 6}, {5, 8, 9});
    Box both({1, 2, 3}, {5, 8, 9});
    both.Split(1, both, both); // the shared plane is left
    ExpectBox(both, {1, 5, 3}, {5, 5, 9});
}

TYPED_TEST(VolumeAABBTest, SplitAcrossAnyOtherAxisLeavesItsOutputsAlone)
{
    using Box = tVolumeAABB<TypeParam>;
    Box box({1, 2, 3}, {4, 5, 6});
    Box lower({10, 11, 12}, {13, 14, 15});
    Box upper({16, 17, 18}, {19, 20, 21});
    for (unsigned int axis = 3; axis < 256; ++axis)
        box.Split(static_cast<unsigned char>(axis), lower, upper);
    box.Split(3, box, box);
    ExpectBox(box, {1, 2, 3}, {4, 5, 6});
    ExpectBox(lower, {10, 11, 12}, {13, 14, 15});
    ExpectBox(upper, {16, 17, 18}, {19, 20, 21});
}

// Equality.

TYPED_TEST(VolumeAABBTest, EqualityToleratesSmallDifferencesInEveryNumber)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const box({1, 2, 3}, {4, 5, 6});
    EXPECT_TRUE(box == box);
    EXPECT_FALSE(box != box);
    TypeParam const epsilon = EPSILON<TypeParam>;
    for (std::size_t number = 0; number < 6; ++number)
    {
        Box near = box;
        Box far = box;
        Number(near, number) += 8 * epsilon;  // below the tolerance of ten epsilons
        Number(far, number) += 256 * epsilon; // above it, and at least 64 values away
        EXPECT_TRUE(box == near) << number;
        EXPECT_FALSE(box != near) << number;
        EXPECT_FALSE(box == far) << number;
        EXPECT_TRUE(box != far) << number;
    }
    EXPECT_TRUE(Box() == Box());
    EXPECT_TRUE(Box() != box);
}

TYPED_TEST(VolumeAABBTest, InequalityIsTheNegationOfEqualityEvenWithANaN)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const box({1, 2, QUIET_NAN<TypeParam>}, {4, 5, 6});
    EXPECT_TRUE(box == box); // one bit pattern
    EXPECT_FALSE(box != box);
    EXPECT_FALSE(box == Box({1, 2, 3}, {4, 5, 6}));
    EXPECT_TRUE(box != Box({1, 2, 3}, {4, 5, 6}));
}

// Growing.

TYPED_TEST(VolumeAABBTest, GrowingTheEmptyBoxGivesExactlyThePointOrBox)
{
    using Box = tVolumeAABB<TypeParam>;
    using Vector = tVector3<TypeParam>;
    Box box;
    EXPECT_TRUE(box.ExpandAndSignal(Vector(TypeParam{-0.0}, 7, 8)));
    ExpectBox(box, {TypeParam{-0.0}, 7, 8}, {TypeParam{-0.0}, 7, 8});
    EXPECT_TRUE(box.IsValid());
    box.Reset();
    box.Expand(Vector(1, 2, 3));
    ExpectBox(box, {1, 2, 3}, {1, 2, 3});
    box.Reset();
    box.Expand(Box({1, 2, 3}, {4, 5, 6}));
    ExpectBox(box, {1, 2, 3}, {4, 5, 6});
    EXPECT_FALSE(box.ExpandAndSignal(Box()));
    ExpectBox(box, {1, 2, 3}, {4, 5, 6});
}

TYPED_TEST(VolumeAABBTest, EachFaceGrowsAloneAndSignals)
{
    using Box = tVolumeAABB<TypeParam>;
    for (std::size_t number = 0; number < 6; ++number)
    {
        Box const original({1, 2, 3}, {4, 5, 6});
        tVector3<TypeParam> point(2, 3, 4); // inside, but for one component
        point[number % 3] = number < 3 ? TypeParam(-7) : TypeParam(9);
        Box expected = original;
        Number(expected, number) = point[number % 3];
        Box byPoint = original;
        Box byBox = original;
        Box byPointAndSignal = original;
        Box byBoxAndSignal = original;
        byPoint.Expand(point);
        byBox.Expand(Box(point, point));
        EXPECT_TRUE(byPointAndSignal.ExpandAndSignal(point)) << number;
        EXPECT_TRUE(byBoxAndSignal.ExpandAndSignal(Box(point, point))) << number;
        for (Box const& box : {byPoint, byBox, byPointAndSignal, byBoxAndSignal})
            ExpectSameBox(box, expected);
        EXPECT_FALSE(byPoint.ExpandAndSignal(point)) << number; // it is inside now
        EXPECT_FALSE(byBox.ExpandAndSignal(Box(point, point))) << number;
    }
}

TYPED_TEST(VolumeAABBTest, ABoxOnAllSidesMovesAllSixNumbers)
{
    using Box = tVolumeAABB<TypeParam>;
    Box box({1, 2, 3}, {4, 5, 6});
    EXPECT_TRUE(box.ExpandAndSignal(Box({0, -1, -2}, {7, 8, 9})));
    ExpectBox(box, {0, -1, -2}, {7, 8, 9});
    box.Expand(Box({-3, -3, -3}, {10, 10, 10}));
    ExpectBox(box, {-3, -3, -3}, {10, 10, 10});
}

TYPED_TEST(VolumeAABBTest, AnInsideOrEqualBoxOrPointSignalsNoChange)
{
    using Box = tVolumeAABB<TypeParam>;
    using Vector = tVector3<TypeParam>;
    Box box({1, 2, 3}, {4, 5, 6});
    EXPECT_FALSE(box.ExpandAndSignal(Box({2, 3, 4}, {3, 4, 5})));
    EXPECT_FALSE(box.ExpandAndSignal(Box({1, 2, 3}, {4, 5, 6})));
    EXPECT_FALSE(box.ExpandAndSignal(box));
    EXPECT_FALSE(box.ExpandAndSignal(Vector(2, 3, 4)));
    EXPECT_FALSE(box.ExpandAndSignal(Vector(1, 5, 3)));
    ExpectBox(box, {1, 2, 3}, {4, 5, 6});
    TypeParam const minus = TypeParam{-0.0};
    Box zero({0, minus, 0}, {minus, 0, minus});
    EXPECT_FALSE(zero.ExpandAndSignal(Vector(minus, minus, minus)));
    EXPECT_FALSE(zero.ExpandAndSignal(Vector(0, 0, 0)));
    ExpectBox(zero, {0, minus, 0}, {minus, 0, minus});
}

TYPED_TEST(VolumeAABBTest, ANaNMovesNothingAndIsNotMoved)
{
    using Box = tVolumeAABB<TypeParam>;
    using Vector = tVector3<TypeParam>;
    TypeParam const nan = QUIET_NAN<TypeParam>;
    Box box({1, 2, 3}, {4, 5, 6});
    EXPECT_FALSE(box.ExpandAndSignal(Vector(nan, nan, nan)));
    EXPECT_TRUE(box.ExpandAndSignal(Vector(nan, 9, nan)));
    ExpectBox(box, {1, 2, 3}, {4, 9, 6});
    box.Expand(Box({0, nan, nan}, {nan, nan, 8}));
    ExpectBox(box, {0, 2, 3}, {4, 9, 8});
    Box broken({nan, 0, 0}, {1, 1, nan});
    broken.Expand(Vector(5, 5, 5));
    ExpectBox(broken, {nan, 0, 0}, {5, 5, nan});
}

TYPED_TEST(VolumeAABBTest, OnePointMayMoveBothFacesOfAnInvertedAxis)
{
    tVolumeAABB<TypeParam> box({9, 0, 9}, {-9, 0, -9});
    box.Expand(tVector3<TypeParam>(1, 0, 2));
    ExpectBox(box, {1, 0, 2}, {1, 0, 2});
}

TYPED_TEST(VolumeAABBTest, ABoxGrowsByItselfAndByItsOwnCorners)
{
    using Box = tVolumeAABB<TypeParam>;
    Box box({9, 2, 3}, {-9, 4, 5});
    box.Expand(box);
    ExpectBox(box, {9, 2, 3}, {-9, 4, 5});
    box.Expand(box.GetMax());
    ExpectBox(box, {-9, 2, 3}, {-9, 4, 5});
    Box other({9, 2, 3}, {-9, 4, 5});
    EXPECT_TRUE(other.ExpandAndSignal(other.GetMin()));
    ExpectBox(other, {9, 2, 3}, {9, 4, 5});
}

// Scaling and offset.

TYPED_TEST(VolumeAABBTest, AFactorScalesABoxAboutItsCentre)
{
    using Box = tVolumeAABB<TypeParam>;
    auto const expanded = [](TypeParam factor)
    {
        Box box({1, 2, -8}, {5, 10, 8}); // the centre is (3, 6, 0), the half-extents are 2, 4 and 8
        box.Expand(factor);
        return box;
    };
    ExpectBox(expanded(1), {-1, -2, -16}, {7, 14, 16});
    ExpectBox(expanded(TypeParam(-0.5)), {2, 4, -4}, {4, 8, 4});
    ExpectBox(expanded(0), {1, 2, -8}, {5, 10, 8});
    ExpectBox(expanded(-2), {5, 10, 8}, {1, 2, -8});
}

TYPED_TEST(VolumeAABBTest, AFactorIsAppliedAsWrittenToTheBit)
{
    Random random(20243);
    auto const number = [&random] { return random.Number<TypeParam>(-100, 100); };
    for (int round = 0; round < 1000; ++round)
    {
        tVector3<TypeParam> min;
        tVector3<TypeParam> max;
        tVector3<TypeParam> expectedMin;
        tVector3<TypeParam> expectedMax;
        TypeParam const factor = number();
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            min[axis] = number();
            max[axis] = number();
            TypeParam const centre = (max[axis] + min[axis]) * TypeParam(0.5);
            TypeParam const above = (max[axis] - centre) * factor;
            TypeParam const below = (min[axis] - centre) * factor;
            expectedMax[axis] = max[axis] + above;
            expectedMin[axis] = min[axis] + below;
        }
        tVolumeAABB<TypeParam> box(min, max);
        box.Expand(factor);
        ExpectBox(box, expectedMin, expectedMax);
    }
}

TYPED_TEST(VolumeAABBTest, AFactorTurnsInfiniteEndsIntoNaN)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tVolumeAABB<TypeParam> box;
    box.Expand(TypeParam{0});
    ExpectBox(box, {nan, nan, nan}, {nan, nan, nan});
    tVolumeAABB<TypeParam> halfSpace({0, 1, 0}, {INF<TypeParam>, 2, 2});
    halfSpace.Expand(TypeParam{1});
    ExpectBox(halfSpace, {-INF<TypeParam>, TypeParam(0.5), -1}, {nan, TypeParam(2.5), 3});
}

TYPED_TEST(VolumeAABBTest, AnOffsetMovesEveryFaceOutward)
{
    tVolumeAABB<TypeParam> box({1, 2, 3}, {5, 10, 15});
    box.Offset(3);
    ExpectBox(box, {-2, -1, 0}, {8, 13, 18});
    box.Offset(-5);
    EXPECT_TRUE(box.IsValid());
    ExpectBox(box, {3, 4, 5}, {3, 8, 13});
    box.Offset(-1); // more than half the extent of x
    ExpectBox(box, {4, 5, 6}, {2, 7, 12});
    EXPECT_FALSE(box.IsValid());
    tVolumeAABB<TypeParam> empty;
    empty.Offset(1);
    ExpectEmpty(empty);
}

// Transformation by a matrix.

/// The affine matrix with these rows, set element by element, so that the state stays IDENTITY whatever they hold.
template <typename T>
tMatrix4<T> Matrix(std::type_identity_t<std::array<T, 12>> const& rows)
{
    tMatrix4<T> matrix;
    for (std::size_t index = 0; index < rows.size(); ++index)
        matrix(index) = rows[index];
    return matrix;
}

TYPED_TEST(VolumeAABBTest, AQuarterTurnAboutZAndATranslationMoveTheUnitBox)
{
    tVolumeAABB<TypeParam> const unit({0, 0, 0}, {1, 1, 1});
    ExpectBox(unit * Matrix<TypeParam>({0, -1, 0, 5, 1, 0, 0, 0, 0, 0, 1, 0}), {4, 0, 0}, {5, 1, 1});
    // The builders give a cosine of a quarter turn that is only nearly 0.
    TypeParam const quarter = TypeParam(1.57079632679489661923);
    tMatrix4<TypeParam> const built = tMatrix4<TypeParam>::Translate({5, 0, 0}) * tMatrix4<TypeParam>::RotateZ(quarter);
    EXPECT_TRUE(unit * built == tVolumeAABB<TypeParam>({4, 0, 0}, {5, 1, 1}));
}

TYPED_TEST(VolumeAABBTest, TheIdentityLeavesABoxAlone)
{
    tVolumeAABB<TypeParam> const box({-1, 2, 3}, {4, 5, 6});
    ExpectBox(box * tMatrix4<TypeParam>(), {-1, 2, 3}, {4, 5, 6});
}

TYPED_TEST(VolumeAABBTest, ANegativeScaleSwapsTheCornersOfItsAxis)
{
    tVolumeAABB<TypeParam> const box({1, 2, 3}, {4, 6, 8});
    tVolumeAABB<TypeParam> const scaled = box * tMatrix4<TypeParam>::Scale({-2, 1, TypeParam(-0.5)});
    ExpectBox(scaled, {-8, 2, -4}, {-2, 6, TypeParam(-1.5)});
    EXPECT_TRUE(scaled.IsValid());
}

TYPED_TEST(VolumeAABBTest, TheResultIsTheTightBoundOfTheEightTransformedCorners)
{
    Random random(20244); // whole numbers, so that every sum is exact
    for (int round = 0; round < 500; ++round)
    {
        auto const number = [&] { return random.Whole(-20, 20); };
        std::array<int, 12> rows{};
        for (int& element : rows)
            element = number();
        int min[3];
        int max[3];
        for (int axis = 0; axis < 3; ++axis)
        {
            int const a = number();
            int const b = number();
            min[axis] = std::min(a, b);
            max[axis] = std::max(a, b);
        }
        tVolumeAABB<TypeParam> expected;
        for (unsigned int corner = 0; corner < 8; ++corner)
        {
            TypeParam moved[3];
            for (unsigned int row = 0; row < 3; ++row)
            {
                int sum = rows[4 * row + 3];
                for (unsigned int axis = 0; axis < 3; ++axis)
                    sum += rows[4 * row + axis] * ((corner >> axis & 1U) != 0 ? max[axis] : min[axis]);
                moved[row] = TypeParam(sum);
            }
            expected.Expand(tVector3<TypeParam>(moved));
        }
        std::array<TypeParam, 12> elements{};
        std::transform(rows.begin(), rows.end(), elements.begin(), [](int value) { return TypeParam(value); });
        tVolumeAABB<TypeParam> const box({TypeParam(min[0]), TypeParam(min[1]), TypeParam(min[2])},
                                         {TypeParam(max[0]), TypeParam(max[1]), TypeParam(max[2])});
        tVolumeAABB<TypeParam> const actual = box * Matrix<TypeParam>(elements);
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            EXPECT_EQ(actual.GetMin()[axis], expected.GetMin()[axis]) << round << ", " << axis;
            EXPECT_EQ(actual.GetMax()[axis], expected.GetMax()[axis]) << round << ", " << axis;
        }
    }
}

TYPED_TEST(VolumeAABBTest, TheSumsBeginWithTheTranslationAndRunFromXToZ)
{
    TypeParam const lost = LOST<TypeParam> * LOST<TypeParam>;
    tVolumeAABB<TypeParam> const unit({0, 0, 0}, {1, 1, 1});
    TypeParam const next = NEXT_AFTER_ONE<TypeParam>;
    // Each row adds a 1 and three times a share that is lost beside it, but not once two of them have gathered.
    ExpectBox(unit * Matrix<TypeParam>({lost, lost, lost, 1, 1, lost, lost, lost, lost, 1, lost, lost}),
              {1, lost, lost}, {1, 1, next});
    ExpectBox(unit * Matrix<TypeParam>({lost, lost, 1, lost, 0, 0, 0, 0, 0, 0, 0, 0}), {lost, 0, 0}, {next, 0, 0});
}

TYPED_TEST(VolumeAABBTest, TheBoundsAreAccumulatedAsWrittenToTheBit)
{
    Random random(20245);
    auto const number = [&random] { return random.Number<TypeParam>(-10, 10); };
    for (int round = 0; round < 1000; ++round)
    {
        std::array<TypeParam, 12> rows{};
        for (TypeParam& element : rows)
            element = number();
        TypeParam min[3];
        TypeParam max[3];
        for (int axis = 0; axis < 3; ++axis)
        {
            min[axis] = number(); // inverted boxes, too
            max[axis] = number();
        }
        TypeParam newMin[3] = {rows[3], rows[7], rows[11]};
        TypeParam newMax[3] = {rows[3], rows[7], rows[11]};
        for (unsigned int i = 0; i < 3; ++i)
            for (unsigned int j = 0; j < 3; ++j)
            {
                TypeParam const a = rows[4 * i + j] * min[j];
                TypeParam const b = rows[4 * i + j] * max[j];
                newMin[i] += b > a ? a : b;
                newMax[i] += b > a ? b : a;
            }
        tVolumeAABB<TypeParam> const box(tVector3<TypeParam>{min}, tVector3<TypeParam>{max});
        ExpectBox(box * Matrix<TypeParam>(rows), tVector3<TypeParam>(newMin), tVector3<TypeParam>(newMax));
    }
}

TYPED_TEST(VolumeAABBTest, NeitherTheStateNorTheFourthRowIsRead)
{
    tVolumeAABB<TypeParam> const box({1, 2, 3}, {4, 6, 8});
    tMatrix4<TypeParam> matrix;
    matrix(tMatrix4<TypeParam>::IDX_14) = 10; // the state is still IDENTITY
    matrix(tMatrix4<TypeParam>::IDX_23) = 1;
    EXPECT_TRUE(matrix.IsIdentity());
    ExpectBox(box * matrix, {11, 5, 3}, {14, 14, 8});
    for (std::size_t index = 12; index < 16; ++index)
        matrix(index) = QUIET_NAN<TypeParam>;
    ExpectBox(box * matrix, {11, 5, 3}, {14, 14, 8});
    // The affine part of a projective matrix: (x, y, z / 2 + 1), whatever the w of its fourth row.
    TypeParam const half = TypeParam(0.5);
    TypeParam const elements[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, half, 1, 0, 0, -1, 0};
    ExpectBox(box * tMatrix4<TypeParam>(elements), {1, 2, TypeParam(2.5)}, {4, 6, 5});
}

TYPED_TEST(VolumeAABBTest, EqualProductsGoTheOtherWayRound)
{
    // From -0 to 0 along x: 0 is not above -0, so the lower bound takes the product with max, the upper that with min.
    TypeParam const minus = TypeParam{-0.0};
    tVolumeAABB<TypeParam> const box({minus, -1, -1}, {0, -1, -1});
    tVolumeAABB<TypeParam> const moved = box * Matrix<TypeParam>({1, 0, 0, minus, 0, 0, 0, 0, 0, 0, 0, 0});
    ExpectSameBits(moved.GetMin().x, TypeParam{0});
    ExpectSameBits(moved.GetMax().x, minus);
}

TYPED_TEST(VolumeAABBTest, ANaNOnOneSideChangesItsPlace)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    tMatrix4<TypeParam> const identity;
    // The product with a NaN is not above the other one, so what comes from max goes to the lower bounds, also where
    // the element is 0, and what comes from min to the upper bounds.
    ExpectBox(tVolumeAABB<TypeParam>({1, 2, 3}, {nan, 5, 6}) * identity, {nan, nan, nan}, {1, 5, 6});
    ExpectBox(tVolumeAABB<TypeParam>({1, nan, 3}, {4, 5, 6}) * identity, {1, 5, 3}, {nan, nan, nan});
    // A NaN in the first three rows of the matrix reaches both bounds of its row and no other.
    ExpectBox(tVolumeAABB<TypeParam>({1, 2, 3}, {4, 5, 6}) * Matrix<TypeParam>({1, 0, 0, 0, 0, 1, nan, 0, 0, 0, 1, 0}),
              {1, nan, 3}, {4, nan, 6});
}

TYPED_TEST(VolumeAABBTest, TheEmptyBoxIsNotForTransforming)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    TypeParam const inf = INF<TypeParam>;
    ExpectBox(tVolumeAABB<TypeParam>() * tMatrix4<TypeParam>(), {nan, nan, nan}, {nan, nan, nan});
    // Without a zero element, the inverted infinities come out in order.
    ExpectBox(tVolumeAABB<TypeParam>() * Matrix<TypeParam>({1, 1, 1, 0, 1, -1, 1, 5, 2, 2, 2, 0}), {-inf, -inf, -inf},
              {inf, inf, inf});
}

TYPED_TEST(VolumeAABBTest, TransformingInPlaceGivesTheSameAndReturnsTheBox)
{
    tVolumeAABB<TypeParam> box({1, 2, 3}, {4, 6, 8});
    tMatrix4<TypeParam> const cycle = Matrix<TypeParam>({0, 2, 0, 1, 0, 0, -1, 0, 1, 1, 0, 0}); // (2y + 1, -z, x + y)
    ExpectBox(box * cycle, {5, -8, 3}, {13, -3, 10});
    ExpectBox(box, {1, 2, 3}, {4, 6, 8});
    EXPECT_EQ(&(box *= cycle), &box);
    ExpectBox(box, {5, -8, 3}, {13, -3, 10});
}

// Streams.

std::string const SINGLE_BYTES("\x00\x00\x80\x3F" // 1
                               "\x00\x00\x00\xC0" // -2
                               "\x00\x00\x40\x40" // 3
                               "\x00\x00\x80\x7F" // infinity
                               "\x00\x00\x10\x41" // 9
                               "\x01\x00\x00\x80" // the least subnormal number, negative
                               ,
                               24);
std::string const DOUBLE_BYTES("\x00\x00\x00\x00\x00\x00\xF0\x3F"
                               "\x00\x00\x00\x00\x00\x00\x00\xC0"
                               "\x00\x00\x00\x00\x00\x00\x08\x40"
                               "\x00\x00\x00\x00\x00\x00\xF0\x7F"
                               "\x00\x00\x00\x00\x00\x00\x22\x40"
                               "\x01\x00\x00\x00\x00\x00\x00\x80",
                               48);

template <typename T>
std::string ExampleBytes()
{
    return Native(sizeof(T) == sizeof(float) ? SINGLE_BYTES : DOUBLE_BYTES, sizeof(T));
}

template <typename T>
tVolumeAABB<T> ExampleBox()
{
    return {{1, -2, 3}, {INF<T>, 9, -TINY<T>}};
}

TYPED_TEST(VolumeAABBTest, TheStreamHoldsTheRawNumbersMinThenMax)
{
    std::ostringstream stream;
    stream << std::setw(50) << std::setfill('*') << std::hex << std::setprecision(2); // none of it matters
    EXPECT_EQ(&ExampleBox<TypeParam>().Serialise(stream), &stream);
    EXPECT_EQ(stream.str(), ExampleBytes<TypeParam>());
    EXPECT_EQ(stream.str().size(), 6 * sizeof(TypeParam));
    EXPECT_EQ(stream.width(), 50);
}

TYPED_TEST(VolumeAABBTest, ReadingTakesTheSameNumbersInTheSameOrder)
{
    std::istringstream stream(ExampleBytes<TypeParam>() + "rest");
    tVolumeAABB<TypeParam> box;
    EXPECT_EQ(&box.Deserialise(stream), &stream);
    ExpectSameBox(box, ExampleBox<TypeParam>());
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "rest");
}

TYPED_TEST(VolumeAABBTest, ReadingChecksNothing)
{
    std::stringstream stream;
    tVolumeAABB<TypeParam>().Serialise(stream);
    tVolumeAABB<TypeParam>({4, QUIET_NAN<TypeParam>, 0}, {1, 2, 3}).Serialise(stream);
    tVolumeAABB<TypeParam> box({0, 0, 0}, {0, 0, 0});
    box.Deserialise(stream);
    ExpectEmpty(box);
    box.Deserialise(stream);
    ExpectBox(box, {4, QUIET_NAN<TypeParam>, 0}, {1, 2, 3});
}

TYPED_TEST(VolumeAABBTest, AStreamThatEndsEarlyLeavesTheRemainingNumbers)
{
    std::istringstream stream(ExampleBytes<TypeParam>().substr(0, 4 * sizeof(TypeParam)));
    tVolumeAABB<TypeParam> box({10, 20, 30}, {40, 50, 60});
    EXPECT_EQ(&box.Deserialise(stream), &stream);
    ExpectBox(box, {1, -2, 3}, {INF<TypeParam>, 50, 60});
    EXPECT_TRUE(stream.fail());
}

// Cost.

TYPED_TEST(VolumeAABBTest, NoOperationAllocates)
{
    using Box = tVolumeAABB<TypeParam>;
    tMatrix4<TypeParam> const matrix;
    Box box({1, 2, 3}, {3, 4, 5});
    Box lower;
    Box upper;
    TypeParam sum = 0;
    std::size_t const count = bv::test::CountAllocations(
        [&]
        {
            box.Expand(tVector3<TypeParam>(0, 9, 0));
            box.Expand(Box({-1, -1, -1}, {1, 1, 1}));
            box.Expand(TypeParam{1});
            box.Offset(1);
            box *= matrix;
            box.Split(0, lower, upper);
            sum += box.Distance({50, 50, 50}) + box.GetVolume() + box.GetArea(0) + box.GetCentre().x + box.GetLength(0);
            bool const all = box.Contains({0, 0, 0}, true) && lower != upper &&
                             box.Overlaps(tVolumeSphere<TypeParam>({0, 0, 0}, TypeParam{1}));
            sum += all ? TypeParam{1} : TypeParam{0};
        });
    EXPECT_EQ(count, 0U);
    EXPECT_GT(sum, TypeParam{0});
}

} // namespace
