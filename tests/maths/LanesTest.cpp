#include "bv/maths/detail/Lanes.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/SameBits.h"

namespace
{

namespace detail = bv::maths::detail;
using bv::test::ExpectSameBits;

/// Four numbers as each kind of processor and compiler holds them: in one register and in two.
template <typename Lanes>
class LanesTest : public testing::Test
{
};
using LanesTypes =
    testing::Types<detail::tFour<float>, detail::tFour<double>, detail::tHalves<detail::Register<double, 16>>>;
TYPED_TEST_SUITE(LanesTest, LanesTypes);

template <typename Lanes>
using Numbers = std::array<detail::Element<Lanes>, 4>;

template <typename Lanes>
Numbers<Lanes> NumbersOf(Lanes const& lanes)
{
    Numbers<Lanes> numbers;
    detail::Store(lanes, numbers.data());
    return numbers;
}

template <typename Lanes>
Lanes Make(detail::Element<Lanes> a, detail::Element<Lanes> b, detail::Element<Lanes> c, detail::Element<Lanes> d)
{
    Numbers<Lanes> const numbers{a, b, c, d};
    return detail::Load<Lanes>(numbers.data());
}

TYPED_TEST(LanesTest, NumbersKeepTheirPlaces)
{
    TypeParam const lanes = Make<TypeParam>(1, 2, 3, 4);
    EXPECT_EQ(detail::COUNT<TypeParam>, 4U);
    EXPECT_EQ(NumbersOf(lanes), (Numbers<TypeParam>{1, 2, 3, 4}));
    EXPECT_EQ(NumbersOf(detail::Broadcast<TypeParam>(9)), (Numbers<TypeParam>{9, 9, 9, 9}));
    EXPECT_EQ(detail::Get<0>(lanes), 1);
    EXPECT_EQ(detail::Get<1>(lanes), 2);
    EXPECT_EQ(detail::Get<2>(lanes), 3);
    EXPECT_EQ(detail::Get<3>(lanes), 4);
}

TYPED_TEST(LanesTest, EveryLaneIsComputedByItself)
{
    TypeParam const a = Make<TypeParam>(1, 2, 3, 4);
    TypeParam const b = Make<TypeParam>(50, 60, 75, 80);
    EXPECT_EQ(NumbersOf(a + b), (Numbers<TypeParam>{51, 62, 78, 84}));
    EXPECT_EQ(NumbersOf(b - a), (Numbers<TypeParam>{49, 58, 72, 76}));
    EXPECT_EQ(NumbersOf(a * b), (Numbers<TypeParam>{50, 120, 225, 320}));
    EXPECT_EQ(NumbersOf(b / a), (Numbers<TypeParam>{50, 30, 25, 20}));
    EXPECT_EQ(NumbersOf(detail::SquareRoot(Make<TypeParam>(4, 9, 2.25, 0))), (Numbers<TypeParam>{2, 3, 1.5, 0}));
}

TYPED_TEST(LanesTest, LanesOfOneAndOfTwoAreChosenByIndex)
{
    TypeParam const a = Make<TypeParam>(0, 1, 2, 3);
    TypeParam const b = Make<TypeParam>(4, 5, 6, 7);
    EXPECT_EQ(NumbersOf(detail::Choose<3, 2, 1, 0>(a)), (Numbers<TypeParam>{3, 2, 1, 0}));
    EXPECT_EQ(NumbersOf(detail::Choose<1, 0, 0, 0>(a)), (Numbers<TypeParam>{1, 0, 0, 0}));
    EXPECT_EQ(NumbersOf(detail::Choose<2, 2, 1, 1>(a)), (Numbers<TypeParam>{2, 2, 1, 1}));
    EXPECT_EQ(NumbersOf(detail::Choose<0, 2, 3, 1>(a)), (Numbers<TypeParam>{0, 2, 3, 1}));
    EXPECT_EQ(NumbersOf(detail::Choose<0, 4, 1, 5>(a, b)), (Numbers<TypeParam>{0, 4, 1, 5}));
    EXPECT_EQ(NumbersOf(detail::Choose<7, 1, 6, 0>(a, b)), (Numbers<TypeParam>{7, 1, 6, 0}));
    EXPECT_EQ(NumbersOf(detail::Choose<4, 1, 2, 3>(a, b)), (Numbers<TypeParam>{4, 1, 2, 3})); // all in their places
    EXPECT_EQ(NumbersOf(detail::Choose<0, 5, 2, 7>(a, b)), (Numbers<TypeParam>{0, 5, 2, 7}));
    EXPECT_EQ(NumbersOf(detail::Choose<4, 5, 6, 7>(a, b)), (Numbers<TypeParam>{4, 5, 6, 7}));
}

TYPED_TEST(LanesTest, OfANaNAndOfTwoZerosTheSecondOperandWins)
{
    using T = detail::Element<TypeParam>;
    T const nan = std::numeric_limits<T>::quiet_NaN();
    TypeParam const a = Make<TypeParam>(1, nan, 3, T{0});
    TypeParam const b = Make<TypeParam>(2, 5, nan, -T{0});
    Numbers<TypeParam> const smaller = NumbersOf(detail::Min(a, b));
    Numbers<TypeParam> const larger = NumbersOf(detail::Max(a, b));
    ExpectSameBits(smaller[0], T{1});
    ExpectSameBits(larger[0], T{2});
    for (Numbers<TypeParam> const& either : {smaller, larger})
    {
        ExpectSameBits(either[1], T{5});
        EXPECT_TRUE(std::isnan(either[2]));
        ExpectSameBits(either[3], -T{0});
    }
    Numbers<TypeParam> const reversed = NumbersOf(detail::Max(b, a));
    EXPECT_TRUE(std::isnan(reversed[1]));
    ExpectSameBits(reversed[2], T{3});
    ExpectSameBits(reversed[3], T{0});
}

TYPED_TEST(LanesTest, SignsAreTakenOffAndTurned)
{
    using T = detail::Element<TypeParam>;
    T const infinity = std::numeric_limits<T>::infinity();
    TypeParam const a = Make<TypeParam>(-1, 2, -T{0}, -infinity);
    Numbers<TypeParam> const sizes = NumbersOf(detail::Magnitude(a));
    Numbers<TypeParam> const opposites = NumbersOf(detail::Negated(a));
    T const expectedSizes[] = {1, 2, 0, infinity};
    T const expectedOpposites[] = {1, -2, 0, infinity};
    for (std::size_t lane = 0; lane < 4; ++lane)
    {
        ExpectSameBits(sizes[lane], expectedSizes[lane]);
        ExpectSameBits(opposites[lane], expectedOpposites[lane]);
    }
}

TYPED_TEST(LanesTest, MasksTellOfEachLane)
{
    using T = detail::Element<TypeParam>;
    T const nan = std::numeric_limits<T>::quiet_NaN();
    TypeParam const a = Make<TypeParam>(1, 2, 3, nan);
    TypeParam const b = Make<TypeParam>(2, 2, 2, 2);
    EXPECT_EQ(detail::Bits(a < b), 0b0001);
    EXPECT_EQ(detail::Bits(a <= b), 0b0011);
    EXPECT_EQ(detail::Bits(b < a), 0b0100);
    EXPECT_EQ(detail::Bits(a == b), 0b0010);
    EXPECT_EQ(detail::Bits(detail::Both(a <= b, b <= a)), 0b0010);
    EXPECT_EQ(detail::Bits(detail::Either(a < b, b < a)), 0b0101);
    EXPECT_TRUE(detail::Any(a < b));
    EXPECT_FALSE(detail::All(a <= b));
    EXPECT_FALSE(detail::Any(b < b));
    EXPECT_TRUE(detail::All(b <= b));
    EXPECT_EQ(NumbersOf(detail::Select(a < b, b, detail::Broadcast<TypeParam>(7))), (Numbers<TypeParam>{2, 7, 7, 7}));
}

TYPED_TEST(LanesTest, RowsBecomeColumns)
{
    TypeParam a = Make<TypeParam>(11, 12, 13, 14);
    TypeParam b = Make<TypeParam>(21, 22, 23, 24);
    TypeParam c = Make<TypeParam>(31, 32, 33, 34);
    TypeParam d = Make<TypeParam>(41, 42, 43, 44);
    detail::Transpose(a, b, c, d);
    EXPECT_EQ(NumbersOf(a), (Numbers<TypeParam>{11, 21, 31, 41}));
    EXPECT_EQ(NumbersOf(b), (Numbers<TypeParam>{12, 22, 32, 42}));
    EXPECT_EQ(NumbersOf(c), (Numbers<TypeParam>{13, 23, 33, 43}));
    EXPECT_EQ(NumbersOf(d), (Numbers<TypeParam>{14, 24, 34, 44}));

    detail::Transpose(a, b, c); // and back, three of them
    TypeParam const expected[] = {Make<TypeParam>(11, 12, 13, 0), Make<TypeParam>(21, 22, 23, 0),
                                  Make<TypeParam>(31, 32, 33, 0)};
    EXPECT_EQ(detail::Bits(a == expected[0]) & 7, 7);
    EXPECT_EQ(detail::Bits(b == expected[1]) & 7, 7);
    EXPECT_EQ(detail::Bits(c == expected[2]) & 7, 7);
}

TEST(RegisterTest, LanesOfTwoAreShuffledByIndex)
{
    using Four = detail::Register<int, 16>;
    Four const a{0, 1, 2, 3};
    Four const b{4, 5, 6, 7};
    Four const mixed = detail::Shuffle<7, 0, 3, 4>(a, b);
    EXPECT_EQ(NumbersOf(mixed), (std::array{7, 0, 3, 4}));
    EXPECT_EQ(NumbersOf((a & mixed) ^ b), (std::array{4, 5, 4, 7})); // 0 & 7, 1 & 0, 2 & 3 and 3 & 4 are 0, 0, 2 and 0
}

/// The algebra of rows.
template <typename T>
class RowsTest : public testing::Test
{
};
using RowsTypes = testing::Types<float, double>;
TYPED_TEST_SUITE(RowsTest, RowsTypes);

template <typename T>
struct alignas(16) Sixteen
{
    T m[16];
};

template <typename T>
Sixteen<T> SixteenOf(detail::tRows<T> const& rows)
{
    Sixteen<T> result;
    detail::StoreRows(rows, result.m);
    return result;
}

TYPED_TEST(RowsTest, RowsTimesRowsAreAProductOfMatrices)
{
    Sixteen<TypeParam> left;
    Sixteen<TypeParam> right;
    for (int i = 0; i < 16; ++i)
    {
        left.m[i] = static_cast<TypeParam>(i * i % 7 + 1);
        right.m[i] = static_cast<TypeParam>(i * 5 % 11 - 4);
    }
    Sixteen<TypeParam> const product =
        SixteenOf(detail::Product<TypeParam>(std::as_const(left).m, std::as_const(right).m));
    Sixteen<TypeParam> const rotation =
        SixteenOf(detail::RotationProduct<TypeParam>(std::as_const(left).m, std::as_const(right).m));
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
        {
            TypeParam sum{0};
            for (std::size_t k = 0; k < 4; ++k)
                sum += left.m[4 * row + k] * right.m[4 * k + column];
            EXPECT_EQ(product.m[4 * row + column], sum) << row << ", " << column;
            bool const isFourth = row == 3 || column == 3;
            TypeParam const unit = row == column ? TypeParam{1} : TypeParam{0};
            EXPECT_EQ(rotation.m[4 * row + column], isFourth ? unit : sum) << row << ", " << column;
        }
}

TYPED_TEST(RowsTest, ADivisorIsTooSmallBelowTheTolerance)
{
    constexpr TypeParam TOLERANCE{4};
    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    for (TypeParam const value : {TypeParam{4}, TypeParam{-4}, TypeParam{5}, TypeParam{-5}, nan})
    {
        EXPECT_FALSE(detail::IsTooSmall(value, TOLERANCE)) << value;
        EXPECT_FALSE(detail::IsOneTooSmall<TypeParam>(detail::Four<TypeParam>(9, value, value, 9), TOLERANCE)) << value;
    }
    for (TypeParam const value : {TypeParam{0}, TypeParam{3}, TypeParam{-3}})
    {
        EXPECT_TRUE(detail::IsTooSmall(value, TOLERANCE)) << value;
        EXPECT_TRUE(detail::IsOneTooSmall<TypeParam>(detail::Four<TypeParam>(value, 9, 9, nan), TOLERANCE)) << value;
        EXPECT_TRUE(detail::IsOneTooSmall<TypeParam>(detail::Four<TypeParam>(9, value, 9, 9), TOLERANCE)) << value;
        EXPECT_TRUE(detail::IsOneTooSmall<TypeParam>(detail::Four<TypeParam>(9, 9, value, 9), TOLERANCE)) << value;
        EXPECT_TRUE(detail::IsOneTooSmall<TypeParam>(detail::Four<TypeParam>(9, nan, 9, value), TOLERANCE)) << value;
    }
}

TYPED_TEST(RowsTest, PairsOfNumbersAreWithinTheToleranceBelowIt)
{
    auto const four = [](TypeParam a, TypeParam b, TypeParam c, TypeParam d) { return detail::Four(a, b, c, d); };
    auto const zeros = four(0, 0, 0, 0);
    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_TRUE(detail::AreWithin<TypeParam>(four(1, -1, 0, 1.5), zeros, 2));
    EXPECT_FALSE(detail::AreWithin<TypeParam>(four(2, 0, 0, 0), zeros, 2));
    EXPECT_FALSE(detail::AreWithin<TypeParam>(four(0, -2, 0, 0), zeros, 2));
    EXPECT_FALSE(detail::AreWithin<TypeParam>(four(0, 0, 5, 0), zeros, 2));
    EXPECT_FALSE(detail::AreWithin<TypeParam>(four(0, 0, 0, nan), zeros, 2));
}

TYPED_TEST(RowsTest, CornersOfABoxAreLoadedWithTheThirdComponentOrZeroBehindThem)
{
    bv::maths::tVolumeAABB<TypeParam> const box({1, 2, 3}, {4, 5, 6});
    using Lanes = detail::tThree<TypeParam>;
    auto const last = [](TypeParam third) { return sizeof(TypeParam) == sizeof(float) ? third : TypeParam{0}; };
    EXPECT_EQ(NumbersOf<Lanes>(detail::LoadFirst(box)), (Numbers<Lanes>{1, 2, 3, last(3)}));
    EXPECT_EQ(NumbersOf<Lanes>(detail::LoadLast(box)), (Numbers<Lanes>{4, 5, 6, last(6)}));
    EXPECT_EQ(NumbersOf<Lanes>(detail::LoadThree<TypeParam>(box.GetMax())), (Numbers<Lanes>{4, 5, 6, last(6)}));
}

} // namespace
