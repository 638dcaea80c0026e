#include "bv/maths/tAreaDisc.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/maths/tAreaAABB.h"
#include "support/Allocations.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"

using bv::maths::tAreaAABB;
using bv::maths::tAreaDisc;
using bv::maths::tVector2;
using namespace bv::test;

namespace
{

/// The three numbers of a disc, to the bit.
template <typename T>
void ExpectDisc(tAreaDisc<T> const& disc, std::type_identity_t<T> squaredRadius, std::type_identity_t<T> x,
                std::type_identity_t<T> y)
{
    ExpectSameBits(disc.GetRadiusSquared(), squaredRadius);
    ExpectSameBits(disc.GetCentre(), tVector2<T>(x, y));
}

template <typename T>
class AreaDiscTest : public testing::Test
{
};
TYPED_TEST_SUITE(AreaDiscTest, Precisions);

// What holds when the program is compiled.

template <typename T>
constexpr bool KeepsItsShape()
{
    using Disc = tAreaDisc<T>;
    using Vector = tVector2<T>;
    static_assert(std::is_polymorphic_v<Disc> && std::has_virtual_destructor_v<Disc> && !std::is_final_v<Disc>);
    static_assert(std::is_nothrow_destructible_v<Disc> && !std::is_abstract_v<Disc>);
    static_assert(std::is_nothrow_constructible_v<Disc, Vector> && std::is_nothrow_constructible_v<Disc, Vector, T> &&
                  std::is_nothrow_constructible_v<Disc, Vector, Vector>);
    static_assert(std::is_nothrow_copy_constructible_v<Disc> && std::is_nothrow_move_constructible_v<Disc>);
    static_assert(std::is_nothrow_copy_assignable_v<Disc> && std::is_nothrow_move_assignable_v<Disc>);
    static_assert(std::is_nothrow_constructible_v<Disc, tAreaDisc<Other<T>>> &&
                  std::is_nothrow_assignable_v<Disc&, tAreaDisc<Other<T>>>);
    static_assert(std::is_convertible_v<tAreaDisc<Other<T>>, Disc> && std::is_convertible_v<Vector, Disc>);
    static_assert(!std::is_default_constructible_v<Disc> && !std::is_convertible_v<T, Disc> &&
                  !std::is_convertible_v<tVector2<Other<T>>, Disc> && !std::is_convertible_v<tAreaAABB<T>, Disc>);
    return true;
}
static_assert(KeepsItsShape<float>() && KeepsItsShape<double>());

template <typename T>
constexpr bool KeepsItsSignatures(tAreaDisc<T>& disc, tAreaDisc<T> const& constant, tVector2<T> const& point,
                                  tAreaAABB<T> const& box, std::ostream& out, std::istream& in)
{
    static_assert(std::is_same_v<decltype(disc.GetCentre()), tVector2<T> const&>);
    static_assert(std::is_same_v<decltype(disc.SetCentre(point)), void> &&
                  std::is_same_v<decltype(disc.SetRadius(T{})), void>);
    static_assert(std::is_same_v<decltype(constant.GetRadiusSquared()), T> &&
                  std::is_same_v<decltype(constant.GetRadius()), T> && std::is_same_v<decltype(constant.GetArea()), T>);
    static_assert(std::is_same_v<decltype(constant.Contains(point)), bool> &&
                  std::is_same_v<decltype(constant.Overlaps(constant)), bool> &&
                  std::is_same_v<decltype(constant.Overlaps(box)), bool>);
    static_assert(std::is_same_v<decltype(constant == constant), bool> &&
                  std::is_same_v<decltype(constant != constant), bool>);
    static_assert(std::is_same_v<decltype(constant.Serialise(out)), std::ostream&> &&
                  std::is_same_v<decltype(disc.Deserialise(in)), std::istream&>);
    static_assert(std::is_same_v<decltype(disc = constant), tAreaDisc<T>&> &&
                  std::is_same_v<decltype(disc = tAreaDisc<Other<T>>({0, 0})), tAreaDisc<T>&>);
    static_assert(noexcept(constant.GetCentre()));
    static_assert(noexcept(disc.SetCentre(point)));
    static_assert(noexcept(disc.SetRadius(T{})));
    static_assert(noexcept(constant.GetRadiusSquared()));
    static_assert(noexcept(constant.GetRadius()));
    static_assert(noexcept(constant.GetArea()));
    static_assert(noexcept(constant.Contains(point)));
    static_assert(noexcept(constant.Overlaps(constant)));
    static_assert(noexcept(constant.Overlaps(box)));
    static_assert(noexcept(constant == constant));
    static_assert(noexcept(constant != constant));
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

template <typename T>
constexpr bool WorksInConstants()
{
    tAreaDisc<T> disc({1, 2}, 4);
    bool const good = disc.Contains({2, 3}) && !disc.Contains({3, 2}) && disc.GetRadiusSquared() == 4;
    disc.SetRadius(4);
    disc.SetCentre({0, 0});
    return good && disc.GetRadiusSquared() == 16 && disc == tAreaDisc<T>({-4, 0}, {4, 0}) &&
           disc != tAreaDisc<T>({0, 0}) && tAreaDisc<T>(tAreaDisc<Other<T>>(disc)) == disc &&
           disc.Overlaps(tAreaAABB<T>({3, 0}, {9, 9})) && disc.GetArea() > 50;
}
static_assert(WorksInConstants<float>() && WorksInConstants<double>());

// Layout and the virtual destructor.

TYPED_TEST(AreaDiscTest, TheDispatchTableComesFirstThenTheSquaredRadiusThenTheCentre)
{
    tAreaDisc<TypeParam> const disc({3, 5}, TypeParam{7});
    auto const* const bytes = reinterpret_cast<unsigned char const*>(&disc);
    auto const* const centre = reinterpret_cast<unsigned char const*>(&disc.GetCentre());
    EXPECT_EQ(centre - bytes,
              static_cast<std::ptrdiff_t>(std::max(sizeof(void*), sizeof(TypeParam)) + sizeof(TypeParam)));
    TypeParam numbers[3];
    std::memcpy(numbers, centre - sizeof(TypeParam), sizeof(numbers));
    EXPECT_EQ(numbers[0], TypeParam{7});
    EXPECT_EQ(numbers[1], TypeParam{3});
    EXPECT_EQ(numbers[2], TypeParam{5});
    tAreaDisc<TypeParam> const other({0, 0});
    EXPECT_EQ(std::memcmp(bytes, static_cast<void const*>(&other), sizeof(void*)), 0); // one table for the class
}

template <typename T>
class tCountedDisc : public tAreaDisc<T>
{
    int& destroyed;

public:
    explicit tCountedDisc(int& counter) : tAreaDisc<T>({1, 2}, T{3}), destroyed{counter} {}
    ~tCountedDisc() override { ++destroyed; }
};

TYPED_TEST(AreaDiscTest, ADerivedShapeIsDeletedThroughAPointerToTheDisc)
{
    int destroyed = 0;
    std::unique_ptr<tAreaDisc<TypeParam>> disc = std::make_unique<tCountedDisc<TypeParam>>(destroyed);
    ExpectDisc(*disc, 3, 1, 2);
    EXPECT_EQ(destroyed, 0);
    disc.reset();
    EXPECT_EQ(destroyed, 1);
}

TYPED_TEST(AreaDiscTest, AssigningLeavesTheTypeOfADerivedShape)
{
    int destroyed = 0;
    {
        tCountedDisc<TypeParam> derived(destroyed);
        tAreaDisc<TypeParam>& disc = derived;
        disc = tAreaDisc<TypeParam>({4, 5}, TypeParam{6});
        ExpectDisc(derived, 6, 4, 5);
        EXPECT_TRUE(dynamic_cast<tCountedDisc<TypeParam>*>(&disc) != nullptr);
    }
    EXPECT_EQ(destroyed, 1);
}

// Construction and assignment.

TYPED_TEST(AreaDiscTest, ADiscFromAPointHasRadiusZero)
{
    using Vector = tVector2<TypeParam>;
    ExpectDisc(tAreaDisc<TypeParam>(Vector(1, 2)), 0, 1, 2);
    tAreaDisc<TypeParam> const implicit = Vector(TypeParam{-0.0}, QUIET_NAN<TypeParam>);
    ExpectDisc(implicit, 0, TypeParam{-0.0}, QUIET_NAN<TypeParam>);
}

TYPED_TEST(AreaDiscTest, ADiscFromACentreAndAValueKeepsTheValueUnsquared)
{
    tAreaDisc<TypeParam> const disc({1, 2}, TypeParam{4});
    ExpectDisc(disc, 4, 1, 2);
    EXPECT_EQ(disc.GetRadius(), TypeParam{2});
    ExpectDisc(tAreaDisc<TypeParam>({1, 2}, TypeParam{-4}), -4, 1, 2);
    ExpectDisc(tAreaDisc<TypeParam>({1, 2}, TypeParam{-0.0}), TypeParam{-0.0}, 1, 2);
    ExpectDisc(tAreaDisc<TypeParam>({1, 2}, QUIET_NAN<TypeParam>), QUIET_NAN<TypeParam>, 1, 2);
    ExpectDisc(tAreaDisc<TypeParam>({1, 2}, 4), 4, 1, 2); // an integer is a value, too
}

TYPED_TEST(AreaDiscTest, ADiscThroughTwoPointsHasTheirDistanceAsDiameter)
{
    using Vector = tVector2<TypeParam>;
    ExpectDisc(tAreaDisc<TypeParam>(Vector(1, 2), Vector(7, 10)), 25, 4, 6); // (36 + 64) / 4
    ExpectDisc(tAreaDisc<TypeParam>(Vector(7, 10), Vector(1, 2)), 25, 4, 6);
    ExpectDisc(tAreaDisc<TypeParam>(Vector(-1, 0), Vector(2, 0)), TypeParam(2.25), TypeParam(0.5), 0);
    ExpectDisc(tAreaDisc<TypeParam>({-3, 1}, {-3, 5}), 4, -3, 3);
}

TYPED_TEST(AreaDiscTest, ADiscThroughOnePointTwiceIsThatPoint)
{
    using Vector = tVector2<TypeParam>;
    ExpectDisc(tAreaDisc<TypeParam>(Vector(3, -5), Vector(3, -5)), 0, 3, -5);
}

TYPED_TEST(AreaDiscTest, TheDiscThroughTwoPointsIsComputedAsWrittenToTheBit)
{
    Random random(20241);
    auto const number = [&random] { return random.Number<TypeParam>(-100, 100); };
    for (int round = 0; round < 1000; ++round)
    {
        TypeParam const px = number();
        TypeParam const py = number();
        TypeParam const qx = number();
        TypeParam const qy = number();
        TypeParam const squareX = (px - qx) * (px - qx);
        TypeParam const squareY = (py - qy) * (py - qy);
        TypeParam const sum = squareX + squareY;
        ExpectDisc(tAreaDisc<TypeParam>({px, py}, {qx, qy}), sum * TypeParam(0.25), (px + qx) * TypeParam(0.5),
                   (py + qy) * TypeParam(0.5));
    }
    // The sums overflow before they are scaled.
    TypeParam const huge = LARGEST<TypeParam>;
    ExpectDisc(tAreaDisc<TypeParam>({huge, 0}, {huge, 0}), 0, INF<TypeParam>, 0);
}

TYPED_TEST(AreaDiscTest, CopiesAndMovesTakeTheThreeNumbers)
{
    using Disc = tAreaDisc<TypeParam>;
    Disc original({1, TypeParam{-0.0}}, INF<TypeParam>);
    Disc const copied(original);
    Disc const moved(std::move(original));
    Disc copyAssigned({9, 9});
    Disc moveAssigned({9, 9});
    EXPECT_EQ(&(copyAssigned = copied), &copyAssigned);
    EXPECT_EQ(&(moveAssigned = Disc(copied)), &moveAssigned);
    for (Disc const& disc : {copied, moved, copyAssigned, moveAssigned})
        ExpectDisc(disc, INF<TypeParam>, 1, TypeParam{-0.0});
    Disc& self = copyAssigned;
    copyAssigned = self;
    ExpectDisc(copyAssigned, INF<TypeParam>, 1, TypeParam{-0.0});
}

TEST(AreaDiscConversionTest, NarrowingRoundsEachNumberToNearest)
{
    // 1 + 2^-24 is a tie that goes to the even 1; 1 + 3 * 2^-24 one that goes to 1 + 2^-22; 2^-150 to 0.
    tAreaDisc<double> const wide({1 + 0x1p-24, -0x1p-150}, 1 + 3 * 0x1p-24);
    tAreaDisc<float> const constructed(wide);
    ExpectDisc(constructed, 1 + 0x1p-22F, 1.0F, -0.0F);
    tAreaDisc<float> assigned({9, 9});
    EXPECT_EQ(&(assigned = wide), &assigned);
    ExpectDisc(assigned, 1 + 0x1p-22F, 1.0F, -0.0F);
}

TEST(AreaDiscConversionTest, NarrowingBeyondTheRangeGivesInfinities)
{
    tAreaDisc<double> const wide({-1e300, 1e39}, 1e300);
    ExpectDisc(tAreaDisc<float>(wide), INF<float>, -INF<float>, INF<float>);
    tAreaDisc<float> assigned({9, 9});
    assigned = wide;
    ExpectDisc(assigned, INF<float>, -INF<float>, INF<float>);
}

TEST(AreaDiscConversionTest, WideningKeepsEachNumber)
{
    tAreaDisc<float> const narrow({0.1F, -0.0F}, 0x1p-149F);
    tAreaDisc<double> const constructed = narrow;
    ExpectDisc(constructed, 0x1p-149, 0x1.99999ap-4, -0.0);
    tAreaDisc<double> assigned({9, 9});
    EXPECT_EQ(&(assigned = narrow), &assigned);
    ExpectDisc(assigned, 0x1p-149, 0x1.99999ap-4, -0.0);
}

// Access.

TYPED_TEST(AreaDiscTest, TheCentreIsReadByReferenceAndSetWhole)
{
    tAreaDisc<TypeParam> disc({1, 2}, TypeParam{9});
    tVector2<TypeParam> const& centre = disc.GetCentre();
    disc.SetCentre({5, QUIET_NAN<TypeParam>});
    ExpectDisc(disc, 9, 5, QUIET_NAN<TypeParam>);
    EXPECT_EQ(centre.x, TypeParam{5});
    disc.SetCentre(disc.GetCentre());
    ExpectDisc(disc, 9, 5, QUIET_NAN<TypeParam>);
}

TYPED_TEST(AreaDiscTest, SettingTheRadiusSquaresIt)
{
    tAreaDisc<TypeParam> disc({1, 2});
    disc.SetRadius(4);
    ExpectDisc(disc, 16, 1, 2);
    EXPECT_EQ(disc.GetRadius(), TypeParam{4});
    disc.SetRadius(-3);
    ExpectDisc(disc, 9, 1, 2);
    EXPECT_EQ(disc.GetRadius(), TypeParam{3});
    disc.SetRadius(LARGEST<TypeParam>);
    ExpectDisc(disc, INF<TypeParam>, 1, 2);
    disc.SetRadius(SMALLEST_NORMAL<TypeParam>);
    ExpectDisc(disc, 0, 1, 2);
}

TYPED_TEST(AreaDiscTest, TheRadiusIsTheRootOfTheSquaredRadius)
{
    ExpectSameBits(tAreaDisc<TypeParam>({0, 0}, TypeParam{2}).GetRadius(), std::sqrt(TypeParam{2}));
    ExpectSameBits(tAreaDisc<TypeParam>({0, 0}, TypeParam{0}).GetRadius(), TypeParam{0});
    EXPECT_EQ(tAreaDisc<TypeParam>({0, 0}, INF<TypeParam>).GetRadius(), INF<TypeParam>);
    EXPECT_TRUE(std::isnan(tAreaDisc<TypeParam>({0, 0}, TypeParam{-1}).GetRadius()));
}

// Area.

TEST(AreaDiscAreaTest, TheUnitDiscHasSinglePrecisionPiInBothInstances)
{
    EXPECT_EQ(std::bit_cast<std::uint32_t>(tAreaDisc<float>({0, 0}, 1.0F).GetArea()), 0x40490FDBU);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(tAreaDisc<double>({0, 0}, 1.0).GetArea()), 0x400921FB60000000U);
    EXPECT_EQ(tAreaDisc<double>({0, 0}, 1.0).GetArea(), 3.1415927410125732);
}

TEST(AreaDiscAreaTest, BothInstancesGiveTheSameAreaWhereItFitsSinglePrecision)
{
    for (int exponent = -20; exponent <= 20; ++exponent)
    {
        float const squaredRadius = std::ldexp(1.0F, exponent);
        double const area = tAreaDisc<double>({0, 0}, static_cast<double>(squaredRadius)).GetArea();
        EXPECT_EQ(static_cast<double>(tAreaDisc<float>({0, 0}, squaredRadius).GetArea()), area);
        EXPECT_EQ(area, std::ldexp(3.1415927410125732, exponent));
    }
}

TYPED_TEST(AreaDiscTest, TheAreaIsTheSquaredRadiusTimesPi)
{
    TypeParam const pi = TypeParam(3.1415927410125732);
    EXPECT_EQ(tAreaDisc<TypeParam>({5, 6}, TypeParam{10}).GetArea(), TypeParam{10} * pi);
    EXPECT_EQ(tAreaDisc<TypeParam>({5, 6}, TypeParam{0}).GetArea(), TypeParam{0});
    EXPECT_EQ(tAreaDisc<TypeParam>({5, 6}, TypeParam{-1}).GetArea(), -pi);
    EXPECT_EQ(tAreaDisc<TypeParam>({5, 6}, INF<TypeParam>).GetArea(), INF<TypeParam>);
}

// Containment.

TYPED_TEST(AreaDiscTest, APointIsContainedWhenItIsNearerThanTheRadius)
{
    tAreaDisc<TypeParam> const disc({2, -1}, TypeParam{25});
    for (int x = -5; x <= 9; ++x)
        for (int y = -8; y <= 6; ++y)
            EXPECT_EQ(disc.Contains({TypeParam(x), TypeParam(y)}), (x - 2) * (x - 2) + (y + 1) * (y + 1) < 25)
                << x << ", " << y;
}

TYPED_TEST(AreaDiscTest, APointOnTheCircleIsOutside)
{
    tAreaDisc<TypeParam> const disc({2, -1}, TypeParam{25});
    for (auto const& point : {tVector2<TypeParam>(7, -1), tVector2<TypeParam>(-3, -1), tVector2<TypeParam>(2, 4),
                              tVector2<TypeParam>(2, -6), tVector2<TypeParam>(5, 3), tVector2<TypeParam>(-2, -4)})
    {
        EXPECT_FALSE(disc.Contains(point)) << point;
        EXPECT_TRUE(tAreaDisc<TypeParam>({2, -1}, std::nextafter(TypeParam{25}, TypeParam{26})).Contains(point))
            << point;
    }
}

TYPED_TEST(AreaDiscTest, ADiscOfNoOrNegativeSquaredRadiusContainsNothing)
{
    for (TypeParam const squaredRadius : {TypeParam{0}, TypeParam{-1}, -INF<TypeParam>, QUIET_NAN<TypeParam>})
    {
        tAreaDisc<TypeParam> const disc({1, 2}, squaredRadius);
        EXPECT_FALSE(disc.Contains({1, 2})) << squaredRadius;
        EXPECT_FALSE(disc.Contains({1, 3})) << squaredRadius;
    }
}

TYPED_TEST(AreaDiscTest, APointWithANaNIsNowhereInside)
{
    for (TypeParam const squaredRadius : {TypeParam{1}, INF<TypeParam>})
    {
        tAreaDisc<TypeParam> const disc({0, 0}, squaredRadius);
        EXPECT_FALSE(disc.Contains({QUIET_NAN<TypeParam>, 0}));
        EXPECT_FALSE(disc.Contains({0, QUIET_NAN<TypeParam>}));
    }
    EXPECT_TRUE(tAreaDisc<TypeParam>({0, 0}, INF<TypeParam>).Contains({5, 5}));
    EXPECT_FALSE(tAreaDisc<TypeParam>({0, 0}, INF<TypeParam>).Contains({INF<TypeParam>, 0}));
}

// Overlap of two discs.

TYPED_TEST(AreaDiscTest, DiscsOverlapWhenTheirCentresAreNearerThanTheSumOfTheirRadii)
{
    for (int x = -8; x <= 8; ++x)
        for (int y = -8; y <= 8; ++y)
            for (int r = 0; r <= 4; ++r)
                for (int s = 0; s <= 4; ++s)
                {
                    tAreaDisc<TypeParam> const a({1, 2}, TypeParam(r * r));
                    tAreaDisc<TypeParam> const b({TypeParam(1 + x), TypeParam(2 + y)}, TypeParam(s * s));
                    EXPECT_EQ(a.Overlaps(b), x * x + y * y < (r + s) * (r + s)) << x << ", " << y << ", " << r << s;
                }
}

TYPED_TEST(AreaDiscTest, UnitDiscsTwoApartTouchAndALittleNearerOverlap)
{
    tAreaDisc<TypeParam> const disc({0, 0}, TypeParam{1});
    EXPECT_FALSE(disc.Overlaps(tAreaDisc<TypeParam>({2, 0}, TypeParam{1})));
    EXPECT_FALSE(disc.Overlaps(tAreaDisc<TypeParam>({0, -2}, TypeParam{1})));
    EXPECT_TRUE(disc.Overlaps(tAreaDisc<TypeParam>({TypeParam(1.999), 0}, TypeParam{1})));
    EXPECT_TRUE(disc.Overlaps(tAreaDisc<TypeParam>({0, TypeParam(-1.999)}, TypeParam{1})));
}

TYPED_TEST(AreaDiscTest, ADiscInsideAnotherOverlapsIt)
{
    tAreaDisc<TypeParam> const large({0, 0}, TypeParam{100});
    tAreaDisc<TypeParam> const small({1, 1}, TypeParam{1});
    EXPECT_TRUE(large.Overlaps(small));
    EXPECT_TRUE(small.Overlaps(large));
    EXPECT_TRUE(large.Overlaps(large));
    EXPECT_TRUE(large.Overlaps(tAreaDisc<TypeParam>({9, 0})));   // a point inside
    EXPECT_FALSE(large.Overlaps(tAreaDisc<TypeParam>({10, 0}))); // a point on the circle
}

TYPED_TEST(AreaDiscTest, ADiscOfNoOrNegativeSquaredRadiusOverlapsNoOther)
{
    for (TypeParam const squaredRadius : {TypeParam{0}, TypeParam{-1}, TypeParam{-4}, QUIET_NAN<TypeParam>})
    {
        tAreaDisc<TypeParam> const disc({1, 2}, squaredRadius);
        EXPECT_FALSE(disc.Overlaps(disc)) << squaredRadius;
        EXPECT_FALSE(disc.Overlaps(tAreaDisc<TypeParam>({1, 2}, TypeParam{-4}))) << squaredRadius;
        EXPECT_FALSE(tAreaDisc<TypeParam>({1, 2}, TypeParam{-4}).Overlaps(disc)) << squaredRadius;
    }
    EXPECT_FALSE(tAreaDisc<TypeParam>({1, 2}, TypeParam{-1}).Overlaps(tAreaDisc<TypeParam>({1, 2}, TypeParam{9})));
    EXPECT_FALSE(tAreaDisc<TypeParam>({1, 2}, TypeParam{9}).Overlaps(tAreaDisc<TypeParam>({1, 2}, TypeParam{-1})));
}

TYPED_TEST(AreaDiscTest, DiscsWithANaNCentreDoNotOverlap)
{
    tAreaDisc<TypeParam> const disc({0, 0}, TypeParam{1});
    EXPECT_FALSE(disc.Overlaps(tAreaDisc<TypeParam>({QUIET_NAN<TypeParam>, 0}, TypeParam{1})));
    EXPECT_FALSE(disc.Overlaps(tAreaDisc<TypeParam>({0, QUIET_NAN<TypeParam>}, INF<TypeParam>)));
}

TYPED_TEST(AreaDiscTest, TheProductOfTheSquaredRadiiOverflowsAndUnderflowsAsItIs)
{
    // Radii 2^40 or 2^300 and distance 2^50 or 2^400: apart, but the product of the squares is infinite.
    bool const single = sizeof(TypeParam) == sizeof(float);
    TypeParam const square = std::ldexp(TypeParam{1}, single ? 80 : 600);
    tAreaDisc<TypeParam> const large({0, 0}, square);
    EXPECT_TRUE(large.Overlaps(tAreaDisc<TypeParam>({std::ldexp(TypeParam{1}, single ? 50 : 400), 0}, square)));
    // Radii 2^-40 or 2^-300 and a distance of 1.75 times that: they overlap, but the product of the squares is 0.
    TypeParam const least = std::ldexp(TypeParam{1}, single ? -80 : -600);
    tAreaDisc<TypeParam> const small({0, 0}, least);
    EXPECT_FALSE(small.Overlaps(tAreaDisc<TypeParam>({std::ldexp(TypeParam(1.75), single ? -40 : -300), 0}, least)));
}

TEST(AreaDiscOverlapTest, NegativeSquaredRadiiWhoseProductOverflowsOrUnderflowsGiveWhatTheFormulaGives)
{
    tAreaDisc<float> const large({0, 0}, -1e30F); // twice the root of an infinite product, less 2e30
    EXPECT_TRUE(large.Overlaps(large));
    EXPECT_TRUE(large.Overlaps(tAreaDisc<float>({1e18F, 0}, -1e30F)));
    tAreaDisc<float> const small({0, 0}, -1e-30F); // the root of -0 is no NaN, and 1e-20 - 1e-30 is above 0
    EXPECT_TRUE(small.Overlaps(tAreaDisc<float>({0, 0}, 1e-20F)));
    EXPECT_FALSE(small.Overlaps(small));
}

TEST(AreaDiscOverlapTest, TheSumOfTheSquaredRadiiIsFormedBeforeTheRootIsAdded)
{
    // Discs that touch exactly, in numbers that are not exact. In single precision: radii 1923 and 179/16, twice their
    // product is 43027.125, and 3697929 + 125.16015625 rounds to 3698054.25; the sum of the two, 3741081.375, rounds to
    // the even 3741081.5, above the squared distance 1934.1875^2, which rounds to 3741081.25. With the root added to
    // either square first, the result would be 3741081.25, too, and the discs would be apart.
    tAreaDisc<float> const single({0, 0}, 3697929.0F);
    EXPECT_TRUE(single.Overlaps(tAreaDisc<float>({1934.1875F, 0}, 125.16015625F)));
    EXPECT_TRUE(single.Overlaps(tAreaDisc<float>({0, -1934.1875F}, 125.16015625F)));
    // The same in double precision: radii 39671637 and 63436043/8.
    tAreaDisc<double> const wide({0, 0}, 39671637.0 * 39671637.0);
    EXPECT_TRUE(wide.Overlaps(tAreaDisc<double>({39671637.0 + 7929505.375, 0}, 7929505.375 * 7929505.375)));
}

// Overlap with a box.

TYPED_TEST(AreaDiscTest, ADiscAndABoxGiveTheSameAnswerFromBothSides)
{
    using Disc = tAreaDisc<TypeParam>;
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    for (int x = -6; x <= 10; ++x)
        for (int y = -6; y <= 8; ++y)
            for (int squaredRadius = -2; squaredRadius <= 26; ++squaredRadius)
            {
                int const dx = x - std::clamp(x, 0, 4);
                int const dy = y - std::clamp(y, 0, 2);
                int const squaredDistance = dx * dx + dy * dy;
                bool const expected = squaredDistance == 0 || squaredDistance < squaredRadius;
                Disc const disc({TypeParam(x), TypeParam(y)}, TypeParam(squaredRadius));
                EXPECT_EQ(disc.Overlaps(box), expected) << x << ", " << y << ", " << squaredRadius;
                EXPECT_EQ(box.Overlaps(disc), expected) << x << ", " << y << ", " << squaredRadius;
            }
}

TYPED_TEST(AreaDiscTest, ADiscThatOnlyTouchesABoxDoesNotOverlapIt)
{
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    EXPECT_FALSE(tAreaDisc<TypeParam>({-3, 1}, TypeParam{9}).Overlaps(box));
    EXPECT_TRUE(tAreaDisc<TypeParam>({-3, 1}, std::nextafter(TypeParam{9}, TypeParam{10})).Overlaps(box));
    EXPECT_FALSE(tAreaDisc<TypeParam>({7, 6}, TypeParam{25}).Overlaps(box));
}

TYPED_TEST(AreaDiscTest, ADiscOfNegativeSquaredRadiusOverlapsTheBoxAroundItsCentreOnly)
{
    tAreaAABB<TypeParam> const box({0, 0}, {4, 2});
    EXPECT_TRUE(tAreaDisc<TypeParam>({1, 1}, TypeParam{-1}).Overlaps(box));
    EXPECT_FALSE(tAreaDisc<TypeParam>({5, 1}, TypeParam{-1}).Overlaps(box));
    EXPECT_FALSE(tAreaDisc<TypeParam>({1, 1}, TypeParam{1}).Overlaps(tAreaAABB<TypeParam>()));
}

// Equality.

TYPED_TEST(AreaDiscTest, EqualityToleratesSmallDifferencesInEveryNumber)
{
    using Disc = tAreaDisc<TypeParam>;
    Disc const disc({1, 2}, TypeParam{3});
    EXPECT_TRUE(disc == disc);
    EXPECT_FALSE(disc != disc);
    TypeParam const epsilon = EPSILON<TypeParam>;
    TypeParam const small = 8 * epsilon;   // below the tolerance of ten epsilons
    TypeParam const large = 256 * epsilon; // above it, and at least 64 values away
    for (Disc const& near :
         {Disc({1, 2}, 3 + small), Disc({1 + small, 2}, TypeParam{3}), Disc({1, 2 + small}, TypeParam{3})})
    {
        EXPECT_TRUE(disc == near);
        EXPECT_FALSE(disc != near);
    }
    for (Disc const& far :
         {Disc({1, 2}, 3 + large), Disc({1 + large, 2}, TypeParam{3}), Disc({1, 2 + large}, TypeParam{3})})
    {
        EXPECT_FALSE(disc == far);
        EXPECT_TRUE(disc != far);
    }
}

TYPED_TEST(AreaDiscTest, InequalityIsTheNegationOfEqualityEvenWithANaN)
{
    tAreaDisc<TypeParam> const disc({1, 2}, QUIET_NAN<TypeParam>);
    EXPECT_TRUE(disc == disc); // one bit pattern
    EXPECT_FALSE(disc != disc);
    EXPECT_FALSE(disc == tAreaDisc<TypeParam>({1, 2}, TypeParam{1}));
    EXPECT_TRUE(disc != tAreaDisc<TypeParam>({1, 2}, TypeParam{1}));
}

// Streams.

std::string const SINGLE_BYTES("\x00\x00\x10\x41" // 9
                               "\x00\x00\x80\x3F" // 1
                               "\x01\x00\x00\x80" // the least subnormal number, negative
                               ,
                               12);
std::string const DOUBLE_BYTES("\x00\x00\x00\x00\x00\x00\x22\x40"
                               "\x00\x00\x00\x00\x00\x00\xF0\x3F"
                               "\x01\x00\x00\x00\x00\x00\x00\x80",
                               24);

template <typename T>
std::string ExampleBytes()
{
    return Native(sizeof(T) == sizeof(float) ? SINGLE_BYTES : DOUBLE_BYTES, sizeof(T));
}

template <typename T>
tAreaDisc<T> ExampleDisc()
{
    tAreaDisc<T> disc({1, -TINY<T>});
    disc.SetRadius(3); // the stream holds 9
    return disc;
}

TYPED_TEST(AreaDiscTest, TheStreamHoldsTheRawSquaredRadiusAndCentre)
{
    std::ostringstream stream;
    stream << std::setw(50) << std::setfill('*') << std::hex << std::setprecision(2); // none of it matters
    EXPECT_EQ(&ExampleDisc<TypeParam>().Serialise(stream), &stream);
    EXPECT_EQ(stream.str(), ExampleBytes<TypeParam>());
    EXPECT_EQ(stream.str().size(), 3 * sizeof(TypeParam));
    EXPECT_EQ(stream.width(), 50);
}

TYPED_TEST(AreaDiscTest, ReadingTakesTheSameNumbersInTheSameOrder)
{
    std::istringstream stream(ExampleBytes<TypeParam>() + "rest");
    tAreaDisc<TypeParam> disc({7, 7});
    EXPECT_EQ(&disc.Deserialise(stream), &stream);
    ExpectDisc(disc, 9, 1, -TINY<TypeParam>);
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "rest");
}

TYPED_TEST(AreaDiscTest, WritingAndReadingKeepsTheSquaredRadiusToTheBit)
{
    Random random(20242);
    for (int round = 0; round < 1000; ++round)
    {
        std::stringstream stream;
        // Any bits, NaN included. A stream computes nothing, so that even the bits of a NaN are the same.
        auto const bits = round == 0 ? Bits(QUIET_NAN<TypeParam>) + 1 : Bits(random.Any<TypeParam>());
        tAreaDisc<TypeParam>({1, 2}, std::bit_cast<TypeParam>(bits)).Serialise(stream);
        tAreaDisc<TypeParam> disc({7, 7});
        disc.Deserialise(stream);
        EXPECT_EQ(Bits(disc.GetRadiusSquared()), bits);
        ExpectSameBits(disc.GetCentre(), {1, 2});
    }
}

TYPED_TEST(AreaDiscTest, ReadingChecksNothing)
{
    std::stringstream stream;
    tAreaDisc<TypeParam>({QUIET_NAN<TypeParam>, INF<TypeParam>}, TypeParam{-4}).Serialise(stream);
    tAreaDisc<TypeParam> disc({7, 7});
    disc.Deserialise(stream);
    ExpectDisc(disc, -4, QUIET_NAN<TypeParam>, INF<TypeParam>);
}

TYPED_TEST(AreaDiscTest, AStreamThatEndsEarlyLeavesTheRemainingNumbers)
{
    std::istringstream stream(ExampleBytes<TypeParam>().substr(0, 2 * sizeof(TypeParam)));
    tAreaDisc<TypeParam> disc({7, 8});
    EXPECT_EQ(&disc.Deserialise(stream), &stream);
    ExpectDisc(disc, 9, 1, 8);
    EXPECT_TRUE(stream.fail());
}

// Cost.

TYPED_TEST(AreaDiscTest, NoOperationAllocates)
{
    tAreaDisc<TypeParam> const other({1, 1}, TypeParam{4});
    TypeParam sum = 0;
    std::size_t const count = bv::test::CountAllocations(
        [&]
        {
            tAreaDisc<TypeParam> disc({0, 0}, {2, 2});
            disc.SetRadius(2);
            disc.SetCentre({1, 1});
            sum += disc.GetArea() + disc.GetRadius();
            bool const all = disc.Contains({1, 1}) && disc.Overlaps(other) && disc == other &&
                             disc.Overlaps(tAreaAABB<TypeParam>({0, 0}, {1, 1}));
            sum += all ? TypeParam{1} : TypeParam{0};
        });
    EXPECT_EQ(count, 0U);
    EXPECT_GT(sum, TypeParam{15}); // 4 pi + 2 + 1
}

} // namespace
