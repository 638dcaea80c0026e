#include "bv/maths/Integer.h"

#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "support/Random.h"
#include "support/Throws.h"

namespace
{

using bv::maths::IntLog2;
using bv::maths::IntSqrt;
using bv::maths::RoundToNearestPO2;
using bv::maths::RoundUpToPO2;
using bv::test::Random;

static_assert(std::is_same_v<decltype(IntLog2(1u)), unsigned char>);
static_assert(std::is_same_v<decltype(IntSqrt(1u)), unsigned short>);
static_assert(std::is_same_v<decltype(RoundUpToPO2(1u)), unsigned int>);
static_assert(std::is_same_v<decltype(RoundToNearestPO2(1u)), unsigned int>);
static_assert(!noexcept(IntLog2(1u)));
static_assert(noexcept(IntSqrt(1u)) && noexcept(RoundUpToPO2(1u)) && noexcept(RoundToNearestPO2(1u)));
static_assert(IntLog2(1000) == 10 && IntSqrt(1000) == 31); // known to the compiler
static_assert(RoundUpToPO2(1000) == 1024 && RoundToNearestPO2(600) == 512);

/// Runs a check on every value up to 2^17, on all within 300 of a power of two and on random ones of every size.
template <typename Check>
void ForManyValues(Check check)
{
    for (std::uint32_t value = 0; value <= 1u << 17; ++value)
        check(value);
    for (int power = 0; power < 32; ++power)
        for (std::uint32_t offset = 0; offset <= 300; ++offset)
        {
            check((1u << power) + offset);
            check((1u << power) - offset); // for 2^0 also the last values of all
            check((3u << power >> 1) + offset);
            check((3u << power >> 1) - offset);
        }
    Random random(2718);
    for (int i = 0; i < 200000; ++i)
        check(random() >> (i % 32));
}

TEST(IntLog2Test, RoundsTheLogarithmUp)
{
    EXPECT_EQ(IntLog2(1), 0);
    EXPECT_EQ(IntLog2(2), 1);
    EXPECT_EQ(IntLog2(3), 2);
    EXPECT_EQ(IntLog2(4), 2);
    EXPECT_EQ(IntLog2(5), 3);
    EXPECT_EQ(IntLog2(8), 3);
    EXPECT_EQ(IntLog2(9), 4);
    EXPECT_EQ(IntLog2(0x7FFFFFFF), 31);
    EXPECT_EQ(IntLog2(0x80000000), 31);
    EXPECT_EQ(IntLog2(0x80000001), 32);
    EXPECT_EQ(IntLog2(0xFFFFFFFF), 32);
}

TEST(IntLog2Test, IsTheSmallestExponentWhosePowerIsNotLess)
{
    ForManyValues(
        [](std::uint32_t value)
        {
            if (value == 0)
                return;
            unsigned int k = 0;
            while (std::uint64_t{1} << k < value)
                ++k;
            ASSERT_EQ(IntLog2(value), k) << value;
        });
}

TEST(IntLog2Test, CountsTheShiftsAndOneMoreForALostBit)
{
    ForManyValues(
        [](std::uint32_t value)
        {
            if (value == 0)
                return;
            int shifts = 0;
            std::uint32_t lost = 0;
            for (std::uint32_t rest = value; rest > 1; rest >>= 1, ++shifts)
                lost |= rest & 1;
            ASSERT_EQ(IntLog2(value), shifts + static_cast<int>(lost)) << value;
        });
}

TEST(IntLog2Test, ThrowsForZero)
{
    bv::test::ExpectThrows<bv::InvalidArgumentException>([] { return IntLog2(0); },
                                                         "Argument to IntLog2 must be positive", "bv::maths::IntLog2",
                                                         "internal\\Maths\\Integer", 26);
}

TEST(IntSqrtTest, RoundsTheRootDown)
{
    EXPECT_EQ(IntSqrt(0), 0);
    EXPECT_EQ(IntSqrt(1), 1);
    EXPECT_EQ(IntSqrt(2), 1);
    EXPECT_EQ(IntSqrt(3), 1);
    EXPECT_EQ(IntSqrt(4), 2);
    EXPECT_EQ(IntSqrt(15), 3);
    EXPECT_EQ(IntSqrt(16), 4);
    EXPECT_EQ(IntSqrt(17), 4);
    EXPECT_EQ(IntSqrt(0x80000000), 46340);
    EXPECT_EQ(IntSqrt(0xFFFFFFFF), 65535);
}

TEST(IntSqrtTest, IsRightAtEverySquareAndNextToIt)
{
    for (std::uint32_t root = 1; root <= 65535; ++root)
    {
        ASSERT_EQ(IntSqrt(root * root - 1), root - 1);
        ASSERT_EQ(IntSqrt(root * root), root);
        ASSERT_EQ(IntSqrt(root * root + 1), root); // the next square is at least 3 away
    }
}

/// Whether the root is right at a square and at both ends of the values beside it.
constexpr bool IsRightAround(std::uint32_t root)
{
    std::uint32_t const square = root * root;
    return IntSqrt(square - 1) == root - 1 && IntSqrt(square) == root && IntSqrt(square + 2 * root) == root;
}

/// The same for roots of every size.
constexpr bool IsRightAroundManySquares()
{
    for (std::uint32_t bit = 1; bit <= 0x8000; bit *= 2) // 1, 2, 4, ... and 1, 3, 7, ...
        if (!IsRightAround(bit) || !IsRightAround(2 * bit - 1))
            return false;
    for (std::uint32_t root = 1; root <= 65535; root += 337)
        if (!IsRightAround(root))
            return false;
    return IntSqrt(0) == 0 && IntSqrt(0xFFFFFFFF) == 65535 && IntSqrt(0x80000000) == 46340;
}

// The compiler computes the root by another method than the processor.
static_assert(IsRightAroundManySquares());

TEST(IntSqrtTest, IsTheSameWhileCompilingAndWhileRunning)
{
    EXPECT_TRUE(IsRightAroundManySquares());
}

TEST(IntSqrtTest, IsTheLargestRootWhoseSquareIsNotGreater)
{
    ForManyValues(
        [](std::uint32_t value)
        {
            std::uint64_t const root = IntSqrt(value);
            ASSERT_LE(root * root, value);
            ASSERT_GT((root + 1) * (root + 1), value);
        });
}

TEST(RoundUpToPO2Test, RoundsUpAndKeepsPowers)
{
    EXPECT_EQ(RoundUpToPO2(0), 0u);
    EXPECT_EQ(RoundUpToPO2(1), 1u);
    EXPECT_EQ(RoundUpToPO2(2), 2u);
    EXPECT_EQ(RoundUpToPO2(3), 4u);
    EXPECT_EQ(RoundUpToPO2(4), 4u);
    EXPECT_EQ(RoundUpToPO2(5), 8u);
    EXPECT_EQ(RoundUpToPO2(0x40000001), 0x80000000u);
    EXPECT_EQ(RoundUpToPO2(0x7FFFFFFF), 0x80000000u);
    EXPECT_EQ(RoundUpToPO2(0x80000000), 0x80000000u);
}

TEST(RoundUpToPO2Test, WrapsToZeroAboveTheLastPower)
{
    EXPECT_EQ(RoundUpToPO2(0x80000001), 0u);
    EXPECT_EQ(RoundUpToPO2(0xC0000000), 0u);
    EXPECT_EQ(RoundUpToPO2(0xFFFFFFFF), 0u);
}

TEST(RoundUpToPO2Test, IsTheSmallestPowerThatIsNotLess)
{
    ForManyValues(
        [](std::uint32_t value)
        {
            std::uint64_t power = value == 0 ? 0 : 1;
            while (power < value)
                power *= 2;
            ASSERT_EQ(RoundUpToPO2(value), static_cast<std::uint32_t>(power)) << value; // 2^32 wraps to 0
        });
}

TEST(RoundToNearestPO2Test, RoundsToTheNearerPower)
{
    EXPECT_EQ(RoundToNearestPO2(0), 0u);
    EXPECT_EQ(RoundToNearestPO2(1), 1u);
    EXPECT_EQ(RoundToNearestPO2(2), 2u);
    EXPECT_EQ(RoundToNearestPO2(4), 4u);
    EXPECT_EQ(RoundToNearestPO2(5), 4u);
    EXPECT_EQ(RoundToNearestPO2(7), 8u);
    EXPECT_EQ(RoundToNearestPO2(11), 8u);
    EXPECT_EQ(RoundToNearestPO2(0x80000000), 0x80000000u);
    EXPECT_EQ(RoundToNearestPO2(0xBFFFFFFF), 0x80000000u);
}

TEST(RoundToNearestPO2Test, RoundsTheMiddleUp)
{
    EXPECT_EQ(RoundToNearestPO2(3), 4u);
    EXPECT_EQ(RoundToNearestPO2(6), 8u);
    EXPECT_EQ(RoundToNearestPO2(12), 16u);
    EXPECT_EQ(RoundToNearestPO2(0x60000000), 0x80000000u);
}

TEST(RoundToNearestPO2Test, WrapsToZeroFromTheMiddleAboveTheLastPower)
{
    EXPECT_EQ(RoundToNearestPO2(0xC0000000), 0u);
    EXPECT_EQ(RoundToNearestPO2(0xC0000001), 0u);
    EXPECT_EQ(RoundToNearestPO2(0xFFFFFFFF), 0u);
}

TEST(RoundToNearestPO2Test, IsThePowerAtTheSmallerDistance)
{
    ForManyValues(
        [](std::uint32_t value)
        {
            std::uint64_t above = value == 0 ? 0 : 1;
            while (above < value)
                above *= 2;
            std::uint64_t const below = above > value ? above / 2 : above;
            std::uint64_t const nearest = value - below < above - value ? below : above;
            ASSERT_EQ(RoundToNearestPO2(value), static_cast<std::uint32_t>(nearest)) << value; // 2^32 wraps to 0
        });
}

} // namespace
