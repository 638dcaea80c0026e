#include "bv/maths/tAreaAABB.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/tAreaDisc.h"
#include "support/Allocations.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"
#include "support/Throws.h"

using bv::maths::tAreaAABB;
using bv::maths::tAreaDisc;
using bv::maths::tVector2;
using namespace bv::test;

namespace
{

/// The four numbers of a box, to the bit.
template <typename T>
void ExpectBox(tAreaAABB<T> const& box, std::type_identity_t<T> minX, std::type_identity_t<T> minY,
               std::type_identity_t<T> maxX, std::type_identity_t<T> maxY)
{
    ExpectSameBits(box.GetMin(), tVector2<T>(minX, minY));
    ExpectSameBits(box.GetMax(), tVector2<T>(maxX, maxY));
}

template <typename T>
void ExpectSameBox(tAreaAABB<T> const& actual, tAreaAABB<T> const& expected)
{
    ExpectSameBits(actual.GetMin(), expected.GetMin());
    ExpectSameBits(actual.GetMax(), expected.GetMax());
}

template <typename T>
class AreaAABBTest : public testing::Test
{
};
TYPED_TEST_SUITE(AreaAABBTest, Precisions);

// What holds when the program is compiled.

template <typename T>
constexpr bool KeepsItsShape()
{
    using Box = tAreaAABB<T>;
    using Vector = tVector2<T>;
    static_assert(sizeof(Box) == 4 * sizeof(T) && alignof(Box) == alignof(T));
    static_assert(std::is_standard_layout_v<Box> && std::is_trivially_copyable_v<Box> && !std::is_polymorphic_v<Box>);
    static_assert(std::is_nothrow_default_constructible_v<Box> && std::is_nothrow_constructible_v<Box, Vector, Vector>);
    static_assert(std::is_nothrow_copy_constructible_v<Box> && std::is_nothrow_move_constructible_v<Box>);
    static_assert(std::is_nothrow_copy_assignable_v<Box> && std::is_nothrow_move_assignable_v<Box>);
    static_assert(std::is_nothrow_constructible_v<Box, tAreaAABB<Other<T>>> &&
                  std::is_nothrow_assignable_v<Box&, tAreaAABB<Other<T>>>);
    static_assert(std::is_convertible_v<tAreaAABB<Other<T>>, Box> && std::is_convertible_v<Vector, Box>);
    static_assert(!std::is_convertible_v<T, Box> && !std::is_convertible_v<tVector2<Other<T>>, Box> &&
                  !std::is_convertible_v<tAreaDisc<T>, Box> && !std::is_convertible_v<Box, tAreaDisc<T>>);
    static_assert(!std::is_constructible_v<Box, T> && !std::is_constructible_v<Box, T, T>);
    static_assert(std::is_same_v<decltype(Box::AXIS_X), unsigned char const> &&
                  std::is_same_v<decltype(Box::AXIS_Y), unsigned char const>);
    static_assert(Box::AXIS_X == 0 && Box::AXIS_Y == 1);
    return true;
}
static_assert(KeepsItsShape<float>() && KeepsItsShape<double>());

template <typename T>
constexpr bool KeepsItsSignatures(tAreaAABB<T>& box, tAreaAABB<T> const& constant, tVector2<T> const& point,
                                  tAreaDisc<T> const& disc, std::ostream& out, std::istream& in)
{
    using Box = tAreaAABB<T>;
    using Vector = tVector2<T>;
    static_assert(std::is_same_v<decltype(box.GetMin()), Vector&> &&
                  std::is_same_v<decltype(constant.GetMin()), Vector const&>);
    static_assert(std::is_same_v<decltype(box.GetMax()), Vector&> &&
                  std::is_same_v<decltype(constant.GetMax()), Vector const&>);
    static_assert(std::is_same_v<decltype(box.SetMin(point)), void> && std::is_same_v<decltype(box.Reset()), void>);
    static_assert(std::is_same_v<decltype(constant.IsValid()), bool>);
    static_assert(std::is_same_v<decltype(constant.Contains(point, true)), bool>);
    static_assert(std::is_same_v<decltype(constant.DistanceSquared(point)), T>);
    static_assert(std::is_same_v<decltype(constant.Distance(point)), T>);
    static_assert(std::is_same_v<decltype(constant.GetArea()), T>);
    static_assert(std::is_same_v<decltype(constant.GetCentre()), Vector>);
    static_assert(std::is_same_v<decltype(constant.GetDiagonal()), Vector>);
    static_assert(std::is_same_v<decltype(constant.GetLength(0)), T>);
    static_assert(std::is_same_v<decltype(constant.Overlaps(disc)), bool>);
    static_assert(std::is_same_v<decltype(constant.Split(0, box, box)), void>);
    static_assert(std::is_same_v<decltype(constant == constant), bool> &&
                  std::is_same_v<decltype(constant != constant), bool>);
    static_assert(std::is_same_v<decltype(box.Expand(constant)), void> &&
                  std::is_same_v<decltype(box.Expand(point)), void> && std::is_same_v<decltype(box.Expand(T{})), void>);
    static_assert(std::is_same_v<decltype(box.ExpandAndSignal(constant)), bool> &&
                  std::is_same_v<decltype(box.ExpandAndSignal(point)), bool>);
    static_assert(std::is_same_v<decltype(box.Offset(T{})), void>);
    static_assert(std::is_same_v<decltype(constant.Serialise(out)), std::ostream&> &&
                  std::is_same_v<decltype(box.Deserialise(in)), std::istream&>);
    static_assert(std::is_same_v<decltype(box = tAreaAABB<Other<T>>()), Box&>);
    static_assert(noexcept(constant.IsValid()));
    static_assert(noexcept(constant.Contains(point, true)));
    static_assert(noexcept(constant.DistanceSquared(point)));
    static_assert(noexcept(constant.Distance(point)));
    static_assert(noexcept(constant.GetArea()));
    static_assert(noexcept(constant.GetCentre()));
    static_assert(noexcept(constant.GetDiagonal()));
    static_assert(noexcept(constant.Overlaps(disc)));
    static_assert(noexcept(constant.Split(0, box, box)));
    static_assert(noexcept(constant == constant));
    static_assert(noexcept(constant != constant));
    static_assert(noexcept(box.GetMin()));
    static_assert(noexcept(box.SetMin(point)));
    static_assert(noexcept(box.Reset()));
    static_assert(noexcept(box.Expand(constant)));
    static_assert(noexcept(box.Expand(point)));
    static_assert(noexcept(box.Expand(T{})));
    static_assert(noexcept(box.ExpandAndSignal(constant)));
    static_assert(noexcept(box.ExpandAndSignal(point)));
    static_assert(noexcept(box.Offset(T{})));
    static_assert(!noexcept(constant.GetLength(0)));
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

template <typename T>
constexpr bool WorksInConstants()
{
    using Box = tAreaAABB<T>;
    Box box;
    bool good = !box.IsValid() && box.ExpandAndSignal(tVector2<T>(1, 2));
    box.Expand(Box({0, 0}, {4, 2}));
    Box lower;
    Box upper;
    box.Split(Box::AXIS_X, lower, upper);
    good = good && lower == Box({0, 0}, {2, 2}) && upper != lower && upper.Contains({2, 0}, true);
    box.Offset(1);
    box.Expand(T{1}); // (-1, -1) to (5, 3), doubled about (2, 1)
    return good && box == Box({-4, -3}, {8, 5}) && box.DistanceSquared({11, 9}) == 25 && box.GetArea() == 96 &&
           box.GetLength(1) == 8 && box.GetCentre() == tVector2<T>(2, 1) && box.GetDiagonal() == tVector2<T>(12, 8) &&
           box.Overlaps(tAreaDisc<T>({9, 0}, 2)) && Box(tAreaAABB<Other<T>>(box)) == box;
}
static_assert(WorksInConstants<float>() && WorksInConstants<double>());

// Layout.

TYPED_TEST(AreaAABBTest, TheFourNumbersLieInTheOrderMinXMinYMaxXMaxY)
{
    tAreaAABB<TypeParam> const box({1, 2}, {3, 4});
    std::array<TypeParam, 4> numbers{};
    static_assert(sizeof(numbers) == sizeof(box));
    std::memcpy(numbers.data(), &box, sizeof(box));
    EXPECT_EQ(numbers, (std::array<TypeParam, 4>{1, 2, 3, 4}));
    EXPECT_EQ(static_cast<void const*>(&box.GetMin()), static_cast<void const*>(&box));
    EXPECT_EQ(&box.GetMax(), &box.GetMin() + 1);
}

TYPED_TEST(AreaAABBTest, AnArrayOfBoxesIsDenseAndCopiedAsABlock)
{
    using Box = tAreaAABB<TypeParam>;
    std::array<Box, 3> const boxes{Box({1, 2}, {3, 4}), Box(), Box({9, 8}, {7, 6})};
    std::array<Box, 3> copies{};
    static_assert(sizeof(boxes) == 12 * sizeof(TypeParam));
    std::memcpy(static_cast<void*>(copies.data()), boxes.data(), sizeof(boxes));
    ExpectBox(copies[0], 1, 2, 3, 4);
    ExpectBox(copies[1], INF<TypeParam>, INF<TypeParam>, -INF<TypeParam>, -INF<TypeParam>);
    ExpectBox(copies[2], 9, 8, 7, 6);
}

// Construction and assignment.

TYPED_TEST(AreaAABBTest, TheDefaultBoxIsEmpty)
{
    ExpectBox(tAreaAABB<TypeParam>(), INF<TypeParam>, INF<TypeParam>, -INF<TypeParam>, -INF<TypeParam>);
}

TYPED_TEST(AreaAABBTest, CornersAreTakenAsTheyAreWithoutReorderingOrChecking)
{
    ExpectBox(tAreaAABB<TypeParam>({1, 2}, {3, 4}), 1, 2, 3, 4);
    ExpectBox(tAreaAABB<TypeParam>({3, 4}, {1, 2}), 3, 4, 1, 2);
    ExpectBox(tAreaAABB<TypeParam>({QUIET_NAN<TypeParam>, TypeParam{-0.0}}, {-INF<TypeParam>, 0}), QUIET_NAN<TypeParam>,
              TypeParam{-0.0}, -INF<TypeParam>, 0);
}

TYPED_TEST(AreaAABBTest, ABoxFromOnePointReachesFromTheOriginToIt)
{
    using Vector = tVector2<TypeParam>;
    ExpectBox(tAreaAABB<TypeParam>(Vector(3, 4)), 0, 0, 3, 4);
    ExpectBox(tAreaAABB<TypeParam>(Vector(-3, 4)), 0, 0, -3, 4);
    tAreaAABB<TypeParam> const implicit = Vector(5, 6);
    ExpectBox(implicit, 0, 0, 5, 6);
}

TYPED_TEST(AreaAABBTest, CopiesAndMovesTakeTheFourNumbers)
{
    using Box = tAreaAABB<TypeParam>;
    Box original({1, TypeParam{-0.0}}, {3, INF<TypeParam>});
    Box const copied(original);
    Box const moved(std::move(original));
    Box copyAssigned;
    Box moveAssigned;
    EXPECT_EQ(&(copyAssigned = copied), &copyAssigned);
    EXPECT_EQ(&(moveAssigned = Box(copied)), &moveAssigned);
    for (Box const& box : {copied, moved, copyAssigned, moveAssigned})
        ExpectBox(box, 1, TypeParam{-0.0}, 3, INF<TypeParam>);
    Box& self = copyAssigned;
    copyAssigned = self;
    ExpectBox(copyAssigned, 1, TypeParam{-0.0}, 3, INF<TypeParam>);
}

TEST(AreaAABBConversionTest, NarrowingRoundsEachNumberToNearest)
{
    // 1 + 2^-24 is a tie that goes to the even 1; 1 + 3 * 2^-24 one that goes to 1 + 2^-22; 2^-150 to 0.
    tAreaAABB<double> const wide({1 + 0x1p-24, 1 + 3 * 0x1p-24}, {-0x1p-150, 0.1});
    tAreaAABB<float> const constructed(wide);
    ExpectBox(constructed, 1.0F, 1 + 0x1p-22F, -0.0F, 0.1F);
    tAreaAABB<float> assigned;
    EXPECT_EQ(&(assigned = wide), &assigned);
    ExpectBox(assigned, 1.0F, 1 + 0x1p-22F, -0.0F, 0.1F);
}

TEST(AreaAABBConversionTest, NarrowingBeyondTheRangeGivesInfinities)
{
    tAreaAABB<double> const wide({-1e300, 1e39}, {1e300, -1e39});
    ExpectBox(tAreaAABB<float>(wide), -INF<float>, INF<float>, INF<float>, -INF<float>);
    tAreaAABB<float> assigned;
    assigned = wide;
    ExpectBox(assigned, -INF<float>, INF<float>, INF<float>, -INF<float>);
}

TEST(AreaAABBConversionTest, WideningKeepsEachNumber)
{
    tAreaAABB<float> const narrow({0.1F, -0.0F}, {0x1p-149F, INF<float>});
    tAreaAABB<double> const constructed = narrow;
    ExpectBox(constructed, 0x1.99999ap-4, -0.0, 0x1p-149, INF<double>);
    tAreaAABB<double> assigned;
    EXPECT_EQ(&(assigned = narrow), &assigned);
    ExpectBox(assigned, 0x1.99999ap-4, -0.0, 0x1p-149, INF<double>);
}

TEST(AreaAABBConversionTest, TheEmptyBoxStaysEmpty)
{
    ExpectBox(tAreaAABB<float>(tAreaAABB<double>()), INF<float>, INF<float>, -INF<float>, -INF<float>);
    ExpectBox(tAreaAABB<double>(tAreaAABB<float>()), INF<double>, INF<double>, -INF<double>, -INF<double>);
}

// Access.

TYPED_TEST(AreaAABBTest, CornersAreReadAndWrittenThroughReferences)
{
    tAreaAABB<TypeParam> box({1, 2}, {3, 4});
    box.GetMin().x = 10;
    box.GetMin()[1] = 20;
    box.GetMax() = {30, 40};
    tAreaAABB<TypeParam> const& constant = box;
    EXPECT_EQ(&constant.GetMin(), &box.GetMin());
    EXPECT_EQ(&constant.GetMax(), &box.GetMax());
    ExpectBox(constant, 10, 20, 30, 40);
}

TYPED_TEST(AreaAABBTest, SettersOverwriteOneCornerWithoutChecking)
{
    tAreaAABB<TypeParam> box({1, 2}, {3, 4});
    box.SetMin({10, QUIET_NAN<TypeParam>});
    ExpectBox(box, 10, QUIET_NAN<TypeParam>, 3, 4);
    box.SetMax({-5, -6});
    ExpectBox(box, 10, QUIET_NAN<TypeParam>, -5, -6);
}

TYPED_TEST(AreaAABBTest, ACornerCanBeSetToTheOtherCornerOfTheSameBox)
{
    tAreaAABB<TypeParam> box({1, 2}, {3, 4});
    box.SetMin(box.GetMax());
    ExpectBox(box, 3, 4, 3, 4);
    box.SetMax(box.GetMax());
    ExpectBox(box, 3, 4, 3, 4);
}

TYPED_TEST(AreaAABBTest, ResetMakesABoxEmpty)
{
    tAreaAABB<TypeParam> box({1, 2}, {3, 4});
    box.Reset();
    ExpectBox(box, INF<TypeParam>, INF<TypeParam>, -INF<TypeParam>, -INF<TypeParam>);
    EXPECT_FALSE(box.IsValid());
}

// Validity and containment.

TYPED_TEST(AreaAABBTest, ABoxIsValidWhenNoMaxIsBelowItsMin)
{
    using Box = tAreaAABB<TypeParam>;
    EXPECT_TRUE(Box({1, 2}, {3, 4}).IsValid());
    EXPECT_TRUE(Box({1, 2}, {1, 2}).IsValid());
    EXPECT_TRUE(Box({1, 2}, {1, 9}).IsValid());
    EXPECT_TRUE(Box({0, 0}, {TypeParam{-0.0}, TypeParam{-0.0}}).IsValid());
    EXPECT_TRUE(Box({-INF<TypeParam>, -INF<TypeParam>}, {INF<TypeParam>, INF<TypeParam>}).IsValid());
    EXPECT_FALSE(Box({3, 2}, {1, 4}).IsValid());
    EXPECT_FALSE(Box({1, 4}, {3, 2}).IsValid());
    EXPECT_FALSE(Box().IsValid());
}

TYPED_TEST(AreaAABBTest, ABoxWithANaNIsInvalid)
{
    for (std::size_t number = 0; number < 4; ++number)
    {
        tAreaAABB<TypeParam> box({1, 2}, {3, 4});
        (number < 2 ? box.GetMin() : box.GetMax())[number % 2] = QUIET_NAN<TypeParam>;
        EXPECT_FALSE(box.IsValid()) << number;
    }
}

TYPED_TEST(AreaAABBTest, LowerEdgesAreAlwaysInsideAndUpperEdgesUnlessExcluded)
{
    using Vector = tVector2<TypeParam>;
    tAreaAABB<TypeParam> const box({1, 2}, {3, 5});
    struct Case
    {
        Vector point;
        bool closed;
        bool halfOpen;
    };
    for (auto const& [point, closed, halfOpen] : {
             Case{{2, 3}, true, true},                     // inside
             Case{{1, 3}, true, true},                     // on the lower edge of x
             Case{{2, 2}, true, true},                     // on the lower edge of y
             Case{{1, 2}, true, true},                     // on the lower corner
             Case{{3, 3}, true, false},                    // on the upper edge of x
             Case{{2, 5}, true, false},                    // on the upper edge of y
             Case{{3, 5}, true, false},                    // on the upper corner
             Case{{1, 5}, true, false},                    // on a mixed corner
             Case{{3, 2}, true, false},                    // on the other one
             Case{{TypeParam(0.5), 3}, false, false},      // below x
             Case{{TypeParam(3.5), 3}, false, false},      // above x
             Case{{2, TypeParam(1.5)}, false, false},      // below y
             Case{{2, TypeParam(5.5)}, false, false},      // above y
             Case{{-INF<TypeParam>, 3}, false, false},     // infinitely far
             Case{{2, INF<TypeParam>}, false, false},      // the same, upward
             Case{{QUIET_NAN<TypeParam>, 3}, false, false} // nowhere
         })
    {
        EXPECT_EQ(box.Contains(point, false), closed) << point;
        EXPECT_EQ(box.Contains(point, true), halfOpen) << point;
    }
}

TYPED_TEST(AreaAABBTest, TheNeighboursOfAnEdgeAreToldApart)
{
    tAreaAABB<TypeParam> const box({1, 1}, {2, 2});
    TypeParam const belowOne = std::nextafter(TypeParam{1}, TypeParam{0});
    TypeParam const belowTwo = std::nextafter(TypeParam{2}, TypeParam{0});
    TypeParam const aboveTwo = std::nextafter(TypeParam{2}, TypeParam{3});
    EXPECT_FALSE(box.Contains({belowOne, 1}, false));
    EXPECT_FALSE(box.Contains({1, belowOne}, false));
    EXPECT_TRUE(box.Contains({belowTwo, belowTwo}, true));
    EXPECT_FALSE(box.Contains({aboveTwo, 1}, false));
    EXPECT_FALSE(box.Contains({1, aboveTwo}, false));
}

TYPED_TEST(AreaAABBTest, APointWithANaNIsNowhereInside)
{
    tAreaAABB<TypeParam> const box({-INF<TypeParam>, -INF<TypeParam>}, {INF<TypeParam>, INF<TypeParam>});
    for (bool const exclusive : {false, true})
    {
        EXPECT_FALSE(box.Contains({QUIET_NAN<TypeParam>, 0}, exclusive));
        EXPECT_FALSE(box.Contains({0, QUIET_NAN<TypeParam>}, exclusive));
        EXPECT_TRUE(box.Contains({0, 0}, exclusive));
    }
}

TYPED_TEST(AreaAABBTest, ABoxWithANaNContainsNothing)
{
    for (std::size_t number = 0; number < 4; ++number)
    {
        tAreaAABB<TypeParam> box({-1, -1}, {1, 1});
        (number < 2 ? box.GetMin() : box.GetMax())[number % 2] = QUIET_NAN<TypeParam>;
        EXPECT_FALSE(box.Contains({0, 0}, false)) << number;
        EXPECT_FALSE(box.Contains({0, 0}, true)) << number;
    }
}

TYPED_TEST(AreaAABBTest, TheEmptyBoxContainsNoPointInEitherMode)
{
    TypeParam const values[] = {-INF<TypeParam>, -1, 0, 1, INF<TypeParam>, QUIET_NAN<TypeParam>};
    tAreaAABB<TypeParam> reset({1, 2}, {3, 4});
    reset.Reset();
    for (tAreaAABB<TypeParam> const& box : {tAreaAABB<TypeParam>(), reset})
        for (TypeParam const x : values)
            for (TypeParam const y : values)
            {
                EXPECT_FALSE(box.Contains({x, y}, false)) << x << ", " << y;
                EXPECT_FALSE(box.Contains({x, y}, true)) << x << ", " << y;
            }
}

TYPED_TEST(AreaAABBTest, OfTilesExactlyOneClaimsAPointOnASharedEdge)
{
    using Box = tAreaAABB<TypeParam>;
    for (int x = 0; x < 12; ++x)
        for (int y = 0; y < 12; ++y)
        {
            int claims = 0;
            for (int column = 0; column < 3; ++column)
                for (int row = 0; row < 3; ++row)
                    claims += Box({TypeParam(4 * column), TypeParam(4 * row)},
                                  {TypeParam(4 * column + 4), TypeParam(4 * row + 4)})
                                      .Contains({TypeParam(x), TypeParam(y)}, true)
                                  ? 1
                                  : 0;
            EXPECT_EQ(claims, 1) << x << ", " << y;
        }
}

// Distance.

TYPED_TEST(AreaAABBTest, TheDistanceIsMeasuredToTheNearestPointOfTheBox)
{
    tAreaAABB<TypeParam> const box({-1, -2}, {3, 2});
    for (int x = -6; x <= 8; ++x)
        for (int y = -7; y <= 7; ++y)
        {
            int const dx = x - std::clamp(x, -1, 3);
            int const dy = y - std::clamp(y, -2, 2);
            TypeParam const expected = TypeParam(dx * dx + dy * dy);
            ExpectSameBits(box.DistanceSquared({TypeParam(x), TypeParam(y)}), expected);
            ExpectSameBits(box.Distance({TypeParam(x), TypeParam(y)}), std::sqrt(expected));
        }
    EXPECT_EQ(box.DistanceSquared({6, 6}), TypeParam{25}); // 3 to the right, 4 above
    EXPECT_EQ(box.Distance({6, 6}), TypeParam{5});
}

TYPED_TEST(AreaAABBTest, TheDistanceIsZeroInsideAndOnTheEdges)
{
    tAreaAABB<TypeParam> const box({1, 2}, {3, 4});
    ExpectSameBits(box.DistanceSquared({2, 3}), TypeParam{0});
    ExpectSameBits(box.DistanceSquared({1, 2}), TypeParam{0});
    ExpectSameBits(box.DistanceSquared({3, 4}), TypeParam{0});
    ExpectSameBits(box.Distance({3, 2}), TypeParam{0});
}

TYPED_TEST(AreaAABBTest, BelowMinTheMaxSideIsNotLookedAt)
{
    tAreaAABB<TypeParam> const box({2, 0}, {-5, 0});
    EXPECT_EQ(box.DistanceSquared({0, 0}), TypeParam{4});  // 2 below min; the 5 above max are not looked at
    EXPECT_EQ(box.DistanceSquared({3, 0}), TypeParam{64}); // not below min; 8 above max
    EXPECT_EQ(box.DistanceSquared({2, 0}), TypeParam{49}); // on min is not below it; 7 above max
}

TYPED_TEST(AreaAABBTest, ANaNAxisAddsNothingToTheDistance)
{
    tAreaAABB<TypeParam> const box({0, 0}, {1, 1});
    EXPECT_EQ(box.DistanceSquared({QUIET_NAN<TypeParam>, 3}), TypeParam{4});
    EXPECT_EQ(box.DistanceSquared({-3, QUIET_NAN<TypeParam>}), TypeParam{9});
    ExpectSameBits(box.Distance({QUIET_NAN<TypeParam>, QUIET_NAN<TypeParam>}), TypeParam{0});
    // A NaN lower corner leaves the upper one at work, and the other way round.
    EXPECT_EQ(tAreaAABB<TypeParam>({QUIET_NAN<TypeParam>, 0}, {1, 1}).DistanceSquared({3, 0}), TypeParam{4});
    EXPECT_EQ(tAreaAABB<TypeParam>({0, 0}, {QUIET_NAN<TypeParam>, 1}).DistanceSquared({-3, 0}), TypeParam{9});
}

TYPED_TEST(AreaAABBTest, TheEmptyBoxIsInfinitelyFarAway)
{
    EXPECT_EQ(tAreaAABB<TypeParam>().DistanceSquared({0, 0}), INF<TypeParam>);
    EXPECT_EQ(tAreaAABB<TypeParam>().Distance({INF<TypeParam>, -INF<TypeParam>}), INF<TypeParam>);
}

TYPED_TEST(AreaAABBTest, TheDistanceIsTheRootOfTheVerySumEvenWhereThatOverflowsOrUnderflows)
{
    tAreaAABB<TypeParam> const box({0, 0}, {0, 0});
    TypeParam const huge = LARGEST<TypeParam>;
    TypeParam const tiny = SMALLEST_NORMAL<TypeParam>;
    EXPECT_EQ(box.DistanceSquared({huge, 0}), INF<TypeParam>);
    EXPECT_EQ(box.Distance({huge, 0}), INF<TypeParam>);
    ExpectSameBits(box.DistanceSquared({tiny, tiny}), TypeParam{0});
    ExpectSameBits(box.Distance({tiny, tiny}), TypeParam{0});
}

// Measures.

TYPED_TEST(AreaAABBTest, TheAreaIsTheProductOfTheExtentsWithoutATestOfValidity)
{
    using Box = tAreaAABB<TypeParam>;
    EXPECT_EQ(Box({1, 2}, {4, 9}).GetArea(), TypeParam{21});  // 7 * 3
    EXPECT_EQ(Box({4, 2}, {1, 9}).GetArea(), TypeParam{-21}); // inverted in x
    EXPECT_EQ(Box({4, 9}, {1, 2}).GetArea(), TypeParam{21});  // inverted in both
    EXPECT_EQ(Box({4, 9}, {4, 9}).GetArea(), TypeParam{0});
    EXPECT_EQ(Box().GetArea(), INF<TypeParam>);
}

TYPED_TEST(AreaAABBTest, TheCentreIsHalfTheSumOfTheCorners)
{
    using Box = tAreaAABB<TypeParam>;
    ExpectSameBits(Box({1, 2}, {4, -9}).GetCentre(), {TypeParam(2.5), TypeParam(-3.5)});
    TypeParam const huge = LARGEST<TypeParam>;
    ExpectSameBits(Box({huge, 0}, {huge, 0}).GetCentre(), {INF<TypeParam>, 0}); // the sum overflows before it is halved
    TypeParam const least = TINY<TypeParam>;
    ExpectSameBits(Box({least, least}, {0, least}).GetCentre(), {0, least}); // half the least number goes to the even 0
}

TYPED_TEST(AreaAABBTest, TheCentreOfTheEmptyBoxIsNaN)
{
    tVector2<TypeParam> const centre = tAreaAABB<TypeParam>().GetCentre();
    EXPECT_TRUE(std::isnan(centre.x));
    EXPECT_TRUE(std::isnan(centre.y));
}

TYPED_TEST(AreaAABBTest, TheDiagonalLeadsFromMinToMax)
{
    ExpectSameBits(tAreaAABB<TypeParam>({1, 2}, {4, -9}).GetDiagonal(), {3, -11});
    ExpectSameBits(tAreaAABB<TypeParam>().GetDiagonal(), {-INF<TypeParam>, -INF<TypeParam>});
}

TYPED_TEST(AreaAABBTest, TheLengthAlongAnAxisIsItsExtent)
{
    using Box = tAreaAABB<TypeParam>;
    Box const box({1, 2}, {4, 9});
    EXPECT_EQ(box.GetLength(Box::AXIS_X), TypeParam{3});
    EXPECT_EQ(box.GetLength(Box::AXIS_Y), TypeParam{7});
    EXPECT_EQ(Box({4, 9}, {1, 2}).GetLength(1), TypeParam{-7});
    EXPECT_EQ(Box().GetLength(0), -INF<TypeParam>);
}

TYPED_TEST(AreaAABBTest, TheLengthAlongAnyOtherAxisIsAnError)
{
    tAreaAABB<TypeParam> const box({1, 2}, {4, 9});
    std::string const function = std::string("bv::maths::tAreaAABB<") + bv::test::TYPE_NAME<TypeParam> + ">::GetLength";
    for (unsigned int axis = 2; axis < 256; ++axis)
        bv::test::ExpectThrows<bv::InvalidArgumentException>(
            [&] { static_cast<void>(box.GetLength(static_cast<unsigned char>(axis))); },
            "Wrong axis argument to tAreaAABB<T>::GetLength", function, "internal\\Maths\\AreaAABB", 205);
    ExpectBox(box, 1, 2, 4, 9);
}

TYPED_TEST(AreaAABBTest, TheErrorOfAWrongAxisIsCaughtByEachOfItsBases)
{
    tAreaAABB<TypeParam> const box({1, 2}, {4, 9});
    EXPECT_THROW(static_cast<void>(box.GetLength(2)), bv::InvalidArgumentException);
    EXPECT_THROW(static_cast<void>(box.GetLength(2)), bv::Exception);
    EXPECT_THROW(static_cast<void>(box.GetLength(2)), std::exception);
}

// Overlap with a disc.

TYPED_TEST(AreaAABBTest, ADiscOverlapsWhenTheBoxIsNearerThanItsRadius)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    for (int x = -6; x <= 10; ++x)
        for (int y = -6; y <= 8; ++y)
            for (int squaredRadius = 1; squaredRadius <= 26; ++squaredRadius)
            {
                int const dx = x - std::clamp(x, 0, 4);
                int const dy = y - std::clamp(y, 0, 2);
                EXPECT_EQ(box.Overlaps(Disc({TypeParam(x), TypeParam(y)}, TypeParam(squaredRadius))),
                          dx * dx + dy * dy < squaredRadius)
                    << x << ", " << y << ", " << squaredRadius;
            }
}

TYPED_TEST(AreaAABBTest, ADiscThatOnlyTouchesDoesNotOverlap)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    TypeParam const above4 = std::nextafter(TypeParam{4}, TypeParam{5});
    TypeParam const above25 = std::nextafter(TypeParam{25}, TypeParam{26});
    for (auto const& [centre, touching, more] : {std::tuple(tVector2<TypeParam>(-2, 1), TypeParam{4}, above4),
                                                 std::tuple(tVector2<TypeParam>(6, 1), TypeParam{4}, above4),
                                                 std::tuple(tVector2<TypeParam>(2, -2), TypeParam{4}, above4),
                                                 std::tuple(tVector2<TypeParam>(2, 4), TypeParam{4}, above4),
                                                 std::tuple(tVector2<TypeParam>(7, 6), TypeParam{25}, above25)})
    {
        EXPECT_FALSE(box.Overlaps(Disc(centre, touching))) << centre;
        EXPECT_TRUE(box.Overlaps(Disc(centre, more))) << centre;
    }
}

TYPED_TEST(AreaAABBTest, ADiscWhoseCentreIsInsideAlwaysOverlaps)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    for (TypeParam const squaredRadius :
         {TypeParam{1}, TypeParam{0}, TypeParam{-1}, -INF<TypeParam>, QUIET_NAN<TypeParam>})
    {
        EXPECT_TRUE(box.Overlaps(Disc({2, 1}, squaredRadius))) << squaredRadius;
        EXPECT_TRUE(box.Overlaps(Disc({0, 0}, squaredRadius))) << squaredRadius; // on the edge counts as inside
        EXPECT_TRUE(box.Overlaps(Disc({4, 2}, squaredRadius))) << squaredRadius;
    }
}

TYPED_TEST(AreaAABBTest, ADiscOfNoOrNegativeSquaredRadiusOutsideDoesNotOverlap)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    for (TypeParam const squaredRadius : {TypeParam{0}, TypeParam{-1}})
    {
        EXPECT_FALSE(box.Overlaps(Disc({5, 1}, squaredRadius)));
        EXPECT_FALSE(box.Overlaps(Disc({2, 3}, squaredRadius)));
        EXPECT_FALSE(box.Overlaps(Disc({-1, -1}, squaredRadius)));
    }
}

TYPED_TEST(AreaAABBTest, TheDiscIsComparedAfterEveryAdditionEvenOfAZero)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    TypeParam const tiny = TINY<TypeParam>; // its square is 0
    EXPECT_FALSE(box.Overlaps(Disc({-tiny, 1}, TypeParam{0})));
    EXPECT_FALSE(box.Overlaps(Disc({2, -tiny}, TypeParam{0})));
    EXPECT_TRUE(box.Overlaps(Disc({-tiny, 1}, tiny)));
    // The x axis decides alone, before an infinite y axis is looked at, and the other way round.
    EXPECT_FALSE(box.Overlaps(Disc({6, INF<TypeParam>}, TypeParam{4})));
    EXPECT_FALSE(box.Overlaps(Disc({5, -INF<TypeParam>}, TypeParam{4})));
}

TYPED_TEST(AreaAABBTest, ANaNInADiscRejectsNothing)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    EXPECT_TRUE(box.Overlaps(Disc({9, 9}, QUIET_NAN<TypeParam>)));
    EXPECT_TRUE(box.Overlaps(Disc({QUIET_NAN<TypeParam>, 1}, TypeParam{1})));
    EXPECT_FALSE(box.Overlaps(Disc({QUIET_NAN<TypeParam>, 9}, TypeParam{1})));
    EXPECT_FALSE(box.Overlaps(Disc({9, QUIET_NAN<TypeParam>}, TypeParam{1})));
}

TYPED_TEST(AreaAABBTest, BelowMinTheMaxSideIsNotLookedAtForADisc)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({2, 0}, {-5, 0});
    EXPECT_TRUE(box.Overlaps(Disc({0, 0}, TypeParam{5}))); // 2 below min: 4 < 5; the 5 above max are not looked at
    EXPECT_FALSE(box.Overlaps(Disc({0, 0}, TypeParam{4})));
}

TYPED_TEST(AreaAABBTest, TheEmptyBoxOverlapsNoDisc)
{
    using Disc = tAreaDisc<TypeParam>;
    EXPECT_FALSE(tAreaAABB<TypeParam>().Overlaps(Disc({0, 0}, TypeParam{1})));
    EXPECT_FALSE(tAreaAABB<TypeParam>().Overlaps(Disc({0, 0}, INF<TypeParam>)));
}

// Split.

TYPED_TEST(AreaAABBTest, SplitHalvesABoxAcrossItsAxis)
{
    using Box = tAreaAABB<TypeParam>;
    Box const box({1, 2}, {4, 8});
    Box lower;
    Box upper;
    box.Split(Box::AXIS_X, lower, upper);
    ExpectBox(lower, 1, 2, TypeParam(2.5), 8);
    ExpectBox(upper, TypeParam(2.5), 2, 4, 8);
    box.Split(Box::AXIS_Y, lower, upper);
    ExpectBox(lower, 1, 2, 4, 5);
    ExpectBox(upper, 1, 5, 4, 8);
    ExpectBox(box, 1, 2, 4, 8);
}

TYPED_TEST(AreaAABBTest, SplitHalvesTheSumOfTheEnds)
{
    using Box = tAreaAABB<TypeParam>;
    TypeParam const huge = LARGEST<TypeParam>;
    Box lower;
    Box upper;
    Box({huge, 0}, {huge, 1}).Split(0, lower, upper); // the sum overflows before it is halved
    ExpectBox(lower, huge, 0, INF<TypeParam>, 1);
    ExpectBox(upper, INF<TypeParam>, 0, huge, 1);
}

TYPED_TEST(AreaAABBTest, SplitDoesNotAskWhetherTheBoxIsValid)
{
    using Box = tAreaAABB<TypeParam>;
    Box lower;
    Box upper;
    Box({4, 8}, {1, 2}).Split(1, lower, upper);
    ExpectBox(lower, 4, 8, 1, 5);
    ExpectBox(upper, 4, 5, 1, 2);
    Box().Split(0, lower, upper);
    ExpectBox(lower, INF<TypeParam>, INF<TypeParam>, QUIET_NAN<TypeParam>, -INF<TypeParam>);
    ExpectBox(upper, QUIET_NAN<TypeParam>, INF<TypeParam>, -INF<TypeParam>, -INF<TypeParam>);
}

TYPED_TEST(AreaAABBTest, SplitMayWriteOverTheBoxItself)
{
    using Box = tAreaAABB<TypeParam>;
    Box other;
    Box asLower({1, 2}, {5, 8});
    asLower.Split(0, asLower, other);
    ExpectBox(asLower, 1, 2, 3, 8);
    ExpectBox(other, 3, 2, 5, 8);
    Box asUpper({1, 2}, {5, 8});
    asUpper.Split(1, other, asUpper);
    ExpectBox(other, 1, 2, 5, 5);
    ExpectBox(asUpper, 1, 5, 5, 8);
}

TYPED_TEST(AreaAABBTest, SplitIntoOneOutputLeavesTheSharedLine)
{
    using Box = tAreaAABB<TypeParam>;
    Box both;
    Box({1, 2}, {5, 8}).Split(0, both, both);
    ExpectBox(both, 3, 2, 3, 8);
    Box itself({1, 2}, {5, 8});
    itself.Split(1, itself, itself);
    ExpectBox(itself, 1, 5, 5, 5);
}

TYPED_TEST(AreaAABBTest, SplitAcrossAnyOtherAxisLeavesItsOutputsAlone)
{
    using Box = tAreaAABB<TypeParam>;
    Box box({1, 2}, {5, 8});
    Box lower({10, 11}, {12, 13});
    Box upper({14, 15}, {16, 17});
    for (unsigned int axis = 2; axis < 256; ++axis)
        box.Split(static_cast<unsigned char>(axis), lower, upper);
    box.Split(2, box, box);
    ExpectBox(box, 1, 2, 5, 8);
    ExpectBox(lower, 10, 11, 12, 13);
    ExpectBox(upper, 14, 15, 16, 17);
}

// Equality.

TYPED_TEST(AreaAABBTest, EqualityToleratesSmallDifferencesInEveryNumber)
{
    using Box = tAreaAABB<TypeParam>;
    Box const box({1, 2}, {3, 4});
    EXPECT_TRUE(box == box);
    EXPECT_FALSE(box != box);
    TypeParam const epsilon = EPSILON<TypeParam>;
    for (std::size_t number = 0; number < 4; ++number)
    {
        Box near = box;
        Box far = box;
        TypeParam& nearNumber = (number < 2 ? near.GetMin() : near.GetMax())[number % 2];
        TypeParam& farNumber = (number < 2 ? far.GetMin() : far.GetMax())[number % 2];
        nearNumber += 8 * epsilon;  // below the tolerance of ten epsilons
        farNumber += 256 * epsilon; // above it, and at least 64 values away
        EXPECT_TRUE(box == near) << number;
        EXPECT_FALSE(box != near) << number;
        EXPECT_FALSE(box == far) << number;
        EXPECT_TRUE(box != far) << number;
    }
}

TYPED_TEST(AreaAABBTest, EmptyBoxesAreEqual)
{
    using Box = tAreaAABB<TypeParam>;
    EXPECT_TRUE(Box() == Box());
    EXPECT_FALSE(Box() != Box());
    EXPECT_FALSE(Box() == Box({0, 0}, {0, 0}));
    EXPECT_TRUE(Box() != Box({0, 0}, {0, 0}));
}

TYPED_TEST(AreaAABBTest, InequalityIsTheNegationOfEqualityEvenWithANaN)
{
    using Box = tAreaAABB<TypeParam>;
    Box const box({1, QUIET_NAN<TypeParam>}, {3, 4});
    EXPECT_TRUE(box == box); // one bit pattern
    EXPECT_FALSE(box != box);
    EXPECT_FALSE(box == Box({1, 2}, {3, 4}));
    EXPECT_TRUE(box != Box({1, 2}, {3, 4}));
}

// Growing.

TYPED_TEST(AreaAABBTest, GrowingTheEmptyBoxGivesExactlyThePointOrBox)
{
    using Box = tAreaAABB<TypeParam>;
    using Vector = tVector2<TypeParam>;
    Box box;
    box.Expand(Vector(TypeParam{-0.0}, 7));
    ExpectBox(box, TypeParam{-0.0}, 7, TypeParam{-0.0}, 7);
    EXPECT_TRUE(box.IsValid());
    box.Reset();
    box.Expand(Box({1, 2}, {3, 4}));
    ExpectBox(box, 1, 2, 3, 4);
    Box signalling;
    EXPECT_TRUE(signalling.ExpandAndSignal(Vector(5, 6)));
    ExpectBox(signalling, 5, 6, 5, 6);
}

TYPED_TEST(AreaAABBTest, GrowingByTheEmptyBoxChangesNothing)
{
    using Box = tAreaAABB<TypeParam>;
    Box box({1, 2}, {3, 4});
    box.Expand(Box());
    EXPECT_FALSE(box.ExpandAndSignal(Box()));
    ExpectBox(box, 1, 2, 3, 4);
    Box empty;
    EXPECT_FALSE(empty.ExpandAndSignal(Box()));
    ExpectSameBox(empty, Box());
}

TYPED_TEST(AreaAABBTest, EachEdgeGrowsAloneAndSignals)
{
    using Box = tAreaAABB<TypeParam>;
    using Vector = tVector2<TypeParam>;
    struct Case
    {
        Vector point;
        std::array<TypeParam, 4> expected;
    };
    for (auto const& [point, expected] :
         {Case{{0, 3}, {0, 2, 3, 4}}, Case{{5, 3}, {1, 2, 5, 4}}, Case{{2, 0}, {1, 0, 3, 4}},
          Case{{2, 7}, {1, 2, 3, 7}}, Case{{-1, 9}, {-1, 2, 3, 9}}, Case{{8, 1}, {1, 1, 8, 4}}})
    {
        Box byPoint({1, 2}, {3, 4});
        Box byBox = byPoint;
        Box byPointAndSignal = byPoint;
        Box byBoxAndSignal = byPoint;
        byPoint.Expand(point);
        byBox.Expand(Box(point, point));
        EXPECT_TRUE(byPointAndSignal.ExpandAndSignal(point));
        EXPECT_TRUE(byBoxAndSignal.ExpandAndSignal(Box(point, point)));
        for (Box const& box : {byPoint, byBox, byPointAndSignal, byBoxAndSignal})
            ExpectBox(box, expected[0], expected[1], expected[2], expected[3]);
    }
}

TYPED_TEST(AreaAABBTest, ABoxOnAllSidesMovesAllFourNumbers)
{
    using Box = tAreaAABB<TypeParam>;
    Box box({1, 2}, {3, 4});
    EXPECT_TRUE(box.ExpandAndSignal(Box({0, -1}, {5, 6})));
    ExpectBox(box, 0, -1, 5, 6);
}

TYPED_TEST(AreaAABBTest, AnInsideOrEqualBoxOrPointSignalsNoChange)
{
    using Box = tAreaAABB<TypeParam>;
    using Vector = tVector2<TypeParam>;
    Box box({1, 2}, {3, 4});
    EXPECT_FALSE(box.ExpandAndSignal(Box({TypeParam(1.5), TypeParam(2.5)}, {2, 3})));
    EXPECT_FALSE(box.ExpandAndSignal(Box({1, 2}, {3, 4})));
    EXPECT_FALSE(box.ExpandAndSignal(box));
    EXPECT_FALSE(box.ExpandAndSignal(Vector(2, 3)));
    EXPECT_FALSE(box.ExpandAndSignal(Vector(1, 4)));
    EXPECT_FALSE(box.ExpandAndSignal(Vector(3, 2)));
    ExpectBox(box, 1, 2, 3, 4);
}

TYPED_TEST(AreaAABBTest, AZeroOfTheOtherSignIsNoChange)
{
    using Box = tAreaAABB<TypeParam>;
    using Vector = tVector2<TypeParam>;
    Box box({0, TypeParam{-0.0}}, {TypeParam{-0.0}, 0});
    EXPECT_FALSE(box.ExpandAndSignal(Vector(TypeParam{-0.0}, TypeParam{-0.0})));
    EXPECT_FALSE(box.ExpandAndSignal(Vector(0, 0)));
    EXPECT_FALSE(box.ExpandAndSignal(Box({TypeParam{-0.0}, 0}, {0, TypeParam{-0.0}})));
    ExpectBox(box, 0, TypeParam{-0.0}, TypeParam{-0.0}, 0);
}

TYPED_TEST(AreaAABBTest, ANaNMovesNothingAndIsNotMoved)
{
    using Box = tAreaAABB<TypeParam>;
    using Vector = tVector2<TypeParam>;
    TypeParam const nan = QUIET_NAN<TypeParam>;
    Box box({1, 2}, {3, 4});
    EXPECT_TRUE(box.ExpandAndSignal(Vector(nan, 9)));
    ExpectBox(box, 1, 2, 3, 9);
    EXPECT_TRUE(box.ExpandAndSignal(Box({0, nan}, {nan, 1})));
    ExpectBox(box, 0, 2, 3, 9);
    EXPECT_FALSE(box.ExpandAndSignal(Box({nan, nan}, {nan, nan})));
    box.Expand(Vector(nan, nan));
    ExpectBox(box, 0, 2, 3, 9);
    Box broken({nan, 0}, {1, nan});
    EXPECT_TRUE(broken.ExpandAndSignal(Vector(5, 5)));
    ExpectBox(broken, nan, 0, 5, nan);
}

TYPED_TEST(AreaAABBTest, OnePointMayMoveBothEdgesOfAnInvertedAxis)
{
    using Box = tAreaAABB<TypeParam>;
    Box box({9, 0}, {-9, 0});
    box.Expand(tVector2<TypeParam>(1, 0));
    ExpectBox(box, 1, 0, 1, 0);
}

TYPED_TEST(AreaAABBTest, ABoxGrowsByItselfAndByItsOwnCorners)
{
    using Box = tAreaAABB<TypeParam>;
    Box box({9, 2}, {-9, 4});
    box.Expand(box); // an inverted axis stays as it is: min is compared with min, max with max
    ExpectBox(box, 9, 2, -9, 4);
    box.Expand(box.GetMax());
    ExpectBox(box, -9, 2, -9, 4);
    Box other({9, 2}, {-9, 4});
    EXPECT_TRUE(other.ExpandAndSignal(other.GetMin()));
    ExpectBox(other, 9, 2, 9, 4);
}

// Scaling and offset.

TYPED_TEST(AreaAABBTest, AFactorScalesABoxAboutItsCentre)
{
    using Box = tAreaAABB<TypeParam>;
    auto const expanded = [](TypeParam factor)
    {
        Box box({1, 2}, {5, 10}); // the centre is (3, 6), the half-extents are 2 and 4
        box.Expand(factor);
        return box;
    };
    ExpectBox(expanded(1), -1, -2, 7, 14);
    ExpectBox(expanded(TypeParam(-0.5)), 2, 4, 4, 8);
    ExpectBox(expanded(0), 1, 2, 5, 10);
    ExpectBox(expanded(-1), 3, 6, 3, 6);
    ExpectBox(expanded(-2), 5, 10, 1, 2);
    ExpectBox(expanded(TypeParam(0.25)), TypeParam(0.5), 1, TypeParam(5.5), 11);
}

TYPED_TEST(AreaAABBTest, AFactorIsAppliedAsWrittenToTheBit)
{
    Random random(20240);
    auto const number = [&random] { return random.Number<TypeParam>(-100, 100); };
    for (int round = 0; round < 1000; ++round)
    {
        TypeParam const min[2] = {number(), number()};
        TypeParam const max[2] = {number(), number()};
        TypeParam const factor = number();
        TypeParam expectedMin[2];
        TypeParam expectedMax[2];
        for (int axis = 0; axis < 2; ++axis)
        {
            TypeParam const centre = (max[axis] + min[axis]) * TypeParam(0.5);
            TypeParam const above = (max[axis] - centre) * factor;
            TypeParam const below = (min[axis] - centre) * factor;
            expectedMax[axis] = max[axis] + above;
            expectedMin[axis] = min[axis] + below;
        }
        tAreaAABB<TypeParam> box({min[0], min[1]}, {max[0], max[1]});
        box.Expand(factor);
        ExpectBox(box, expectedMin[0], expectedMin[1], expectedMax[0], expectedMax[1]);
    }
}

TYPED_TEST(AreaAABBTest, AFactorTurnsTheEmptyBoxIntoNaN)
{
    tAreaAABB<TypeParam> box;
    box.Expand(TypeParam{0});
    TypeParam const nan = QUIET_NAN<TypeParam>;
    ExpectBox(box, nan, nan, nan, nan);
    tAreaAABB<TypeParam> halfPlane({0, 1}, {INF<TypeParam>, 2});
    halfPlane.Expand(TypeParam{1});
    ExpectBox(halfPlane, -INF<TypeParam>, TypeParam(0.5), nan, TypeParam(2.5)); // the centre of x is infinite
}

TYPED_TEST(AreaAABBTest, AnOffsetMovesEveryEdgeOutward)
{
    tAreaAABB<TypeParam> box({1, 2}, {5, 10});
    box.Offset(3);
    ExpectBox(box, -2, -1, 8, 13);
    box.Offset(-4);
    ExpectBox(box, 2, 3, 4, 9);
    box.Offset(0);
    ExpectBox(box, 2, 3, 4, 9);
}

TYPED_TEST(AreaAABBTest, ANegativeOffsetBeyondHalfAnExtentInvertsTheBox)
{
    tAreaAABB<TypeParam> box({1, 2}, {5, 10});
    box.Offset(-2);
    EXPECT_TRUE(box.IsValid());
    box.Offset(-1);
    ExpectBox(box, 4, 5, 2, 7);
    EXPECT_FALSE(box.IsValid());
    tAreaAABB<TypeParam> empty;
    empty.Offset(1);
    ExpectSameBox(empty, tAreaAABB<TypeParam>());
}

// Streams.

std::string const SINGLE_BYTES("\x00\x00\x80\x3F" // 1
                               "\x00\x00\x00\xC0" // -2
                               "\x00\x00\x80\x7F" // infinity
                               "\x01\x00\x00\x80" // the least subnormal number, negative
                               ,
                               16);
std::string const DOUBLE_BYTES("\x00\x00\x00\x00\x00\x00\xF0\x3F"
                               "\x00\x00\x00\x00\x00\x00\x00\xC0"
                               "\x00\x00\x00\x00\x00\x00\xF0\x7F"
                               "\x01\x00\x00\x00\x00\x00\x00\x80",
                               32);

template <typename T>
std::string ExampleBytes()
{
    return Native(sizeof(T) == sizeof(float) ? SINGLE_BYTES : DOUBLE_BYTES, sizeof(T));
}

template <typename T>
tAreaAABB<T> ExampleBox()
{
    return {{1, -2}, {INF<T>, -TINY<T>}};
}

TYPED_TEST(AreaAABBTest, TheStreamHoldsTheRawNumbersMinThenMax)
{
    std::ostringstream stream;
    EXPECT_EQ(&ExampleBox<TypeParam>().Serialise(stream), &stream);
    EXPECT_EQ(stream.str(), ExampleBytes<TypeParam>());
    EXPECT_EQ(stream.str().size(), 4 * sizeof(TypeParam));
}

TYPED_TEST(AreaAABBTest, TheSettingsOfTheStreamDoNotMatter)
{
    std::ostringstream stream;
    stream << std::setw(50) << std::setfill('*') << std::hex << std::showpos << std::setprecision(2);
    ExampleBox<TypeParam>().Serialise(stream);
    EXPECT_EQ(stream.str(), ExampleBytes<TypeParam>());
    EXPECT_EQ(stream.width(), 50);
}

TYPED_TEST(AreaAABBTest, ReadingTakesTheSameNumbersInTheSameOrder)
{
    std::istringstream stream(ExampleBytes<TypeParam>() + "rest");
    tAreaAABB<TypeParam> box;
    EXPECT_EQ(&box.Deserialise(stream), &stream);
    ExpectSameBox(box, ExampleBox<TypeParam>());
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "rest");
}

TYPED_TEST(AreaAABBTest, ReadingSkipsNoWhitespaceAndChecksNoBox)
{
    // Spaces alone are a number, too: 0x20202020 and 0x2020202020202020. The box is inverted, and taken as it is.
    std::istringstream spaces(std::string(4 * sizeof(TypeParam), ' '));
    tAreaAABB<TypeParam> box;
    box.Deserialise(spaces);
    TypeParam expected;
    std::memset(&expected, ' ', sizeof(expected));
    ExpectBox(box, expected, expected, expected, expected);
    std::stringstream inverted;
    tAreaAABB<TypeParam>({4, QUIET_NAN<TypeParam>}, {1, 2}).Serialise(inverted);
    box.Deserialise(inverted);
    ExpectBox(box, 4, QUIET_NAN<TypeParam>, 1, 2);
}

TYPED_TEST(AreaAABBTest, BoxesInAStreamFollowEachOtherWithoutASeparator)
{
    using Box = tAreaAABB<TypeParam>;
    std::stringstream stream;
    Box({1, 2}, {3, 4}).Serialise(stream);
    Box().Serialise(stream);
    Box({5, 6}, {7, 8}).Serialise(stream);
    EXPECT_EQ(stream.str().size(), 12 * sizeof(TypeParam));
    Box first;
    Box second({0, 0}, {0, 0});
    Box third;
    first.Deserialise(stream);
    second.Deserialise(stream);
    third.Deserialise(stream);
    ExpectBox(first, 1, 2, 3, 4);
    ExpectSameBox(second, Box());
    ExpectBox(third, 5, 6, 7, 8);
    EXPECT_TRUE(stream.good());
}

TYPED_TEST(AreaAABBTest, AStreamThatEndsEarlyLeavesTheRemainingNumbers)
{
    std::istringstream stream(ExampleBytes<TypeParam>().substr(0, 3 * sizeof(TypeParam)));
    tAreaAABB<TypeParam> box({10, 20}, {30, 40});
    EXPECT_EQ(&box.Deserialise(stream), &stream);
    ExpectBox(box, 1, -2, INF<TypeParam>, 40);
    EXPECT_TRUE(stream.fail());
}

TYPED_TEST(AreaAABBTest, AFailedStreamIsHandedBackWithoutAnError)
{
    std::stringstream stream;
    stream.setstate(std::ios::failbit);
    tAreaAABB<TypeParam> box({10, 20}, {30, 40});
    EXPECT_EQ(&box.Serialise(stream), &stream);
    EXPECT_EQ(&box.Deserialise(stream), &stream);
    EXPECT_EQ(stream.str(), "");
    ExpectBox(box, 10, 20, 30, 40);
}

// Cost.

TYPED_TEST(AreaAABBTest, NoOperationAllocates)
{
    using Box = tAreaAABB<TypeParam>;
    using Vector = tVector2<TypeParam>;
    Box box({1, 2}, {3, 4});
    Box lower;
    Box upper;
    TypeParam sum = 0;
    std::size_t const count = bv::test::CountAllocations(
        [&]
        {
            box.Expand(Vector(0, 9));
            box.Expand(Box({-1, -1}, {1, 1}));
            box.Expand(TypeParam{1});
            box.Offset(1);
            box.Split(0, lower, upper);
            sum += box.Distance({50, 50}) + box.GetArea() + box.GetCentre().x + box.GetDiagonal().y + box.GetLength(0);
            sum += box.Contains({0, 0}, true) && box.Overlaps({{0, 0}, TypeParam{1}}) && lower != upper ? TypeParam{1}
                                                                                                        : TypeParam{0};
        });
    EXPECT_EQ(count, 0U);
    EXPECT_GT(sum, TypeParam{0});
}

} // namespace
