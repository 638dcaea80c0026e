#include "bv/maths/Noise.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "support/Numbers.h"
#include "support/SameBits.h"
#include "values/NoiseValues.h"

namespace
{

using bv::maths::Noise1;
using bv::maths::Noise2;
using bv::maths::Noise3;
using bv::maths::Turbulence1;
using bv::maths::Turbulence2;
using bv::maths::Turbulence3;
using namespace bv::test;
using Vector2 = bv::maths::tVector2<float>;
using Vector3 = bv::maths::tVector3<float>;

constexpr unsigned int MOST_OCTAVES = std::numeric_limits<unsigned int>::max();

static_assert(std::is_same_v<decltype(&Noise1), float (*)(float) noexcept>);
static_assert(std::is_same_v<decltype(&Noise2), float (*)(Vector2 const&) noexcept>);
static_assert(std::is_same_v<decltype(&Noise3), float (*)(Vector3 const&) noexcept>);
static_assert(std::is_same_v<decltype(&Turbulence1), float (*)(float, unsigned int) noexcept>);
static_assert(std::is_same_v<decltype(&Turbulence2), float (*)(Vector2 const&, unsigned int) noexcept>);
static_assert(std::is_same_v<decltype(&Turbulence3), float (*)(Vector3 const&, unsigned int) noexcept>);

/// The middle of the interval of length 1 that begins at a cell, where both weights are 0.5.
float MiddleOf(int cell)
{
    return static_cast<float>(cell) + 0.5F;
}

/// The values at the points of values/NoiseValues.h, worked out by the script beside it.
TEST(NoiseTest, Noise1HasTheBitsOfTheIndependentModel)
{
    for (auto const& [x, result] : bv::test::NOISE_1)
    {
        SCOPED_TRACE(FromBits<float>(x));
        ExpectSameBits(Noise1(FromBits<float>(x)), FromBits<float>(result));
    }
}

TEST(NoiseTest, Noise2HasTheBitsOfTheIndependentModel)
{
    for (auto const& [x, y, result] : bv::test::NOISE_2)
    {
        SCOPED_TRACE(testing::Message() << FromBits<float>(x) << ", " << FromBits<float>(y));
        ExpectSameBits(Noise2({FromBits<float>(x), FromBits<float>(y)}), FromBits<float>(result));
    }
}

TEST(NoiseTest, Noise3HasTheBitsOfTheIndependentModel)
{
    for (auto const& [x, y, z, result] : bv::test::NOISE_3)
    {
        SCOPED_TRACE(testing::Message() << FromBits<float>(x) << ", " << FromBits<float>(y) << ", "
                                        << FromBits<float>(z));
        ExpectSameBits(Noise3({FromBits<float>(x), FromBits<float>(y), FromBits<float>(z)}), FromBits<float>(result));
    }
}

TEST(NoiseTest, Turbulence1HasTheBitsOfTheIndependentModel)
{
    for (auto const& [x, octaves, result] : bv::test::TURBULENCE_1)
    {
        SCOPED_TRACE(testing::Message() << FromBits<float>(x) << " in octaves " << octaves);
        ExpectSameBits(Turbulence1(FromBits<float>(x), octaves), FromBits<float>(result));
    }
}

TEST(NoiseTest, Turbulence2HasTheBitsOfTheIndependentModel)
{
    for (auto const& [x, y, octaves, result] : bv::test::TURBULENCE_2)
    {
        SCOPED_TRACE(testing::Message() << FromBits<float>(x) << ", " << FromBits<float>(y) << " in octaves "
                                        << octaves);
        ExpectSameBits(Turbulence2({FromBits<float>(x), FromBits<float>(y)}, octaves), FromBits<float>(result));
    }
}

TEST(NoiseTest, Turbulence3HasTheBitsOfTheIndependentModel)
{
    for (auto const& [x, y, z, octaves, result] : bv::test::TURBULENCE_3)
    {
        SCOPED_TRACE(testing::Message() << FromBits<float>(x) << ", " << FromBits<float>(y) << ", "
                                        << FromBits<float>(z) << " in octaves " << octaves);
        ExpectSameBits(Turbulence3({FromBits<float>(x), FromBits<float>(y), FromBits<float>(z)}, octaves),
                       FromBits<float>(result));
    }
}

TEST(NoiseTest, IsExactlyOneHalfAtLatticePoints)
{
    for (float const x : {0.0F, -0.0F, 3.0F, -1.0F, 255.0F, 256.0F, -257.0F, 1048576.0F})
    {
        EXPECT_EQ(Noise1(x), 0.5F) << x;
        EXPECT_EQ(Noise2({x, 7.0F}), 0.5F) << x;
        EXPECT_EQ(Noise2({-2.0F, x}), 0.5F) << x;
        EXPECT_EQ(Noise3({x, 5.0F, -9.0F}), 0.5F) << x;
        EXPECT_EQ(Noise3({5.0F, x, -9.0F}), 0.5F) << x;
        EXPECT_EQ(Noise3({5.0F, -9.0F, x}), 0.5F) << x;
    }
    EXPECT_EQ(Noise3({0.0F, 0.0F, 0.0F}), 0.5F);
}

TEST(NoiseTest, InTheMiddleBetweenTwoLatticePointsIsTheMeanOfTheirSlopes)
{
    // P[P[P[i]]] & 15 is 4, 6, 3, 14, 8 for i = 0 to 4 and 4, 1, 8 for 7 to 9. On the line, 4, 6 and 12 slope up, 1, 3
    // and 14 slope down, and 8 is level. With the slopes a and b on both sides, n = (a * 0.5 + b * -0.5) * 0.5.
    EXPECT_EQ(Noise1(MiddleOf(0)), 0.5F);   // up, up
    EXPECT_EQ(Noise1(MiddleOf(1)), 0.75F);  // up, down: n = 0.5
    EXPECT_EQ(Noise1(MiddleOf(2)), 0.5F);   // down, down
    EXPECT_EQ(Noise1(MiddleOf(3)), 0.375F); // down, level: n = -0.25
    EXPECT_EQ(Noise1(MiddleOf(4)), 0.375F); // level, up: n = -0.25
    EXPECT_EQ(Noise1(MiddleOf(7)), 0.75F);  // up, down
    EXPECT_EQ(Noise1(MiddleOf(8)), 0.375F); // down, level
}

TEST(NoiseTest, RepeatsEvery256AlongEachAxis)
{
    for (int cell = -256; cell < 0; ++cell)
    {
        float const x = static_cast<float>(cell) + 0.3125F; // exact here and 256 further on
        ExpectSameBits(Noise1(x), Noise1(x + 256.0F));
        ExpectSameBits(Noise2({x, 0.75F}), Noise2({x + 256.0F, 0.75F}));
        ExpectSameBits(Noise2({0.75F, x}), Noise2({0.75F, x + 1024.0F}));
        ExpectSameBits(Noise3({x, 0.75F, 9.25F}), Noise3({x + 256.0F, 0.75F, 9.25F}));
        ExpectSameBits(Noise3({0.75F, x, 9.25F}), Noise3({0.75F, x + 512.0F, 9.25F}));
        ExpectSameBits(Noise3({0.75F, 9.25F, x}), Noise3({0.75F, 9.25F, x - 256.0F}));
    }
}

TEST(NoiseTest, CellsBelowZeroWrapToTheOtherEndOfThePeriod)
{
    EXPECT_EQ(Noise1(-0.5F), Noise1(255.5F));
    EXPECT_EQ(Noise2({-0.25F, -0.75F}), Noise2({255.75F, 255.25F}));
    EXPECT_EQ(Noise3({-1.25F, -0.75F, -2.5F}), Noise3({254.75F, 255.25F, 253.5F}));
}

TEST(NoiseTest, TheLineAndThePlaneAreCutsThroughSpace)
{
    for (int i = -2000; i < 2000; ++i)
    {
        float const x = static_cast<float>(i) * 0.37F;
        float const y = static_cast<float>(i % 97) * -1.13F;
        ExpectSameBits(Noise1(x), Noise3({x, 0.0F, 0.0F}));
        ExpectSameBits(Noise1(x), Noise2({x, 0.0F}));
        ExpectSameBits(Noise2({x, y}), Noise3({x, y, 0.0F}));
    }
}

TEST(NoiseTest, TheLineStaysBetweenOneQuarterAndThreeQuarters)
{
    float least = 1.0F;
    float most = 0.0F;
    for (int i = 0; i < 256 * 128; ++i)
    {
        float const noise = Noise1(static_cast<float>(i) / 128.0F);
        least = noise < least ? noise : least;
        most = noise > most ? noise : most;
    }
    EXPECT_EQ(least, 0.25F);
    EXPECT_EQ(most, 0.75F);
}

TEST(NoiseTest, ThePlaneStaysBetweenZeroAndOne)
{
    for (int i = 0; i < 256 * 8; ++i)
        for (int j = 0; j < 256; ++j)
        {
            float const noise = Noise2({static_cast<float>(i) / 8.0F, static_cast<float>(j) * 1.125F});
            ASSERT_GE(noise, 0.0F);
            ASSERT_LE(noise, 1.0F);
        }
}

TEST(NoiseTest, SpaceIsNotClampedAndLeavesTheUnitIntervalByALittle)
{
    EXPECT_GT(Noise3({12.375F, 187.5F, 5.5F}), 1.01F);
    EXPECT_LT(Noise3({12.375F, 187.5F, 5.5F}), 1.02F);
    EXPECT_LT(Noise3({162.5F, 241.5F, 81.375F}), -0.01F);
    EXPECT_GT(Noise3({162.5F, 241.5F, 81.375F}), -0.02F);
    EXPECT_GT(Turbulence3({12.375F, 187.5F, 5.5F}, 1), 1.01F);
}

TEST(NoiseTest, HasNoJumpsBetweenCells)
{
    // Neither a gradient nor a weight changes the noise by more than some 2 for a unit of length.
    constexpr float STEP = 1.0F / 1024.0F;
    for (int i = -64 * 1024; i < 64 * 1024; i += 64)
    {
        float const before = static_cast<float>(i) * STEP - STEP / 2.0F;
        float const after = static_cast<float>(i) * STEP + STEP / 2.0F;
        EXPECT_NEAR(Noise1(before), Noise1(after), 4.0F * STEP);
        EXPECT_NEAR(Noise2({before, 0.4F}), Noise2({after, 0.4F}), 4.0F * STEP);
        EXPECT_NEAR(Noise3({0.3F, 0.4F, before}), Noise3({0.3F, 0.4F, after}), 4.0F * STEP);
        EXPECT_NEAR(Noise3({before, before, before}), Noise3({after, after, after}), 12.0F * STEP);
    }
}

TEST(NoiseTest, CoordinatesBeyond32BitsUseTheCellAtZero)
{
    for (float const huge :
         {2147483648.0F, -2147483904.0F, 4294967296.0F, 1e20F, -1e20F, LARGEST<float>, -LARGEST<float>})
    {
        EXPECT_EQ(Noise1(huge), 0.5F) << huge;
        ExpectSameBits(Noise2({huge, 0.625F}), Noise2({0.0F, 0.625F}));
        ExpectSameBits(Noise2({0.625F, huge}), Noise2({0.625F, 0.0F}));
        ExpectSameBits(Noise3({huge, 0.625F, 0.25F}), Noise3({0.0F, 0.625F, 0.25F}));
        ExpectSameBits(Noise3({0.625F, huge, 0.25F}), Noise3({0.625F, 0.0F, 0.25F}));
        ExpectSameBits(Noise3({0.625F, 0.25F, huge}), Noise3({0.625F, 0.25F, 0.0F}));
    }
}

TEST(NoiseTest, CoordinatesWithin32BitsKeepTheirCell)
{
    EXPECT_NE(Noise2({128.0F, 0.625F}), Noise2({0.0F, 0.625F}));
    ExpectSameBits(Noise2({2147483520.0F, 0.625F}), Noise2({128.0F, 0.625F}));  // 2^31 - 128
    ExpectSameBits(Noise2({-2147483520.0F, 0.625F}), Noise2({128.0F, 0.625F})); // 128 - 2^31
    ExpectSameBits(Noise2({-2147483648.0F, 0.625F}), Noise2({0.0F, 0.625F}));   // -2^31, a multiple of 256
    ExpectSameBits(Noise2({-8388607.5F, 0.625F}), Noise2({0.5F, 0.625F}));      // -2^23 + 0.5
}

TEST(NoiseTest, CoordinatesThatAreNotFiniteGiveNan)
{
    for (float const bad : {INF<float>, -INF<float>, QUIET_NAN<float>})
    {
        EXPECT_TRUE(std::isnan(Noise1(bad)));
        EXPECT_TRUE(std::isnan(Noise2({bad, 0.5F})));
        EXPECT_TRUE(std::isnan(Noise2({0.5F, bad})));
        EXPECT_TRUE(std::isnan(Noise3({bad, 0.5F, 1.5F})));
        EXPECT_TRUE(std::isnan(Noise3({0.5F, bad, 1.5F})));
        EXPECT_TRUE(std::isnan(Noise3({0.5F, 1.5F, bad})));
        EXPECT_TRUE(std::isnan(Turbulence1(bad, 3)));
        EXPECT_TRUE(std::isnan(Turbulence2({bad, 0.5F}, 3)));
        EXPECT_TRUE(std::isnan(Turbulence3({0.5F, 1.5F, bad}, 3)));
    }
}

TEST(NoiseTest, AFractionThatRoundsToOneStaysInTheCellBelow)
{
    // -1e-10 lies in cell 255, where its fraction rounds to 1: the weight is 1 and the gradient at 256, that of 0, is
    // taken at distance 0.
    EXPECT_EQ(Noise1(-1e-10F), 0.5F);
    EXPECT_EQ(Noise2({-1e-10F, 3.0F}), 0.5F);
    EXPECT_EQ(Noise3({-TINY<float>, -1e-10F, 4.0F}), 0.5F);
}

TEST(TurbulenceTest, OfNoOctaveIsZero)
{
    for (float const x : {0.0F, 0.3F, -7.7F, INF<float>, QUIET_NAN<float>})
    {
        ExpectSameBits(Turbulence1(x, 0), 0.0F);
        ExpectSameBits(Turbulence2({x, 0.4F}, 0), 0.0F);
        ExpectSameBits(Turbulence3({x, 0.4F, 0.6F}, 0), 0.0F);
    }
}

TEST(TurbulenceTest, OfOneOctaveIsTheNoise)
{
    for (int i = -300; i < 300; ++i)
    {
        float const x = static_cast<float>(i) * 0.217F;
        ExpectSameBits(Turbulence1(x, 1), Noise1(x));
        ExpectSameBits(Turbulence2({x, 0.4F}, 1), Noise2({x, 0.4F}));
        ExpectSameBits(Turbulence3({0.6F, 0.4F, x}, 1), Noise3({0.6F, 0.4F, x}));
    }
}

TEST(TurbulenceTest, CountsMoreThanTenOctavesAsTen)
{
    for (unsigned int const octaves : {11U, 12U, 100U, MOST_OCTAVES})
    {
        ExpectSameBits(Turbulence1(0.37F, octaves), Turbulence1(0.37F, 10));
        ExpectSameBits(Turbulence2({0.37F, 0.4F}, octaves), Turbulence2({0.37F, 0.4F}, 10));
        ExpectSameBits(Turbulence3({0.37F, 0.4F, 5.1F}, octaves), Turbulence3({0.37F, 0.4F, 5.1F}, 10));
    }
    EXPECT_NE(Turbulence1(0.37F, 9), Turbulence1(0.37F, 10));
}

TEST(TurbulenceTest, OfALatticePointIsOneHalfOfTheWeights)
{
    ExpectSameBits(Turbulence1(3.0F, 1), 0.5F);
    ExpectSameBits(Turbulence1(3.0F, 2), 0.5F * 0.6666667F + 0.5F * (0.6666667F * 0.5F));
    ExpectSameBits(Turbulence2({3.0F, -4.0F}, 2), 0.5F * 0.6666667F + 0.5F * (0.6666667F * 0.5F));
    ExpectSameBits(Turbulence3({3.0F, -4.0F, 9.0F}, 2), 0.5F * 0.6666667F + 0.5F * (0.6666667F * 0.5F));
    for (unsigned int octaves = 1; octaves <= 10; ++octaves)
        EXPECT_NEAR(Turbulence1(7.0F, octaves), 0.5F, 2e-7F) << octaves; // the weights add up to 1
}

TEST(TurbulenceTest, DoublesTheCoordinatesAndHalvesTheWeightFromOctaveToOctave)
{
    // 4/7, 2/7 and 1/7, the first rounded and the others halves of it.
    constexpr float WEIGHT = 4.0F / 7.0F;
    EXPECT_EQ(Turbulence1(0.3F, 3),
              Noise1(0.3F) * WEIGHT + Noise1(0.6F) * (WEIGHT * 0.5F) + Noise1(1.2F) * (WEIGHT * 0.25F));
    EXPECT_EQ(Turbulence2({0.3F, -0.7F}, 3), Noise2({0.3F, -0.7F}) * WEIGHT + Noise2({0.6F, -1.4F}) * (WEIGHT * 0.5F) +
                                                 Noise2({1.2F, -2.8F}) * (WEIGHT * 0.25F));
    EXPECT_EQ(Turbulence3({0.3F, -0.7F, 5.1F}, 3), Noise3({0.3F, -0.7F, 5.1F}) * WEIGHT +
                                                       Noise3({0.6F, -1.4F, 10.2F}) * (WEIGHT * 0.5F) +
                                                       Noise3({1.2F, -2.8F, 20.4F}) * (WEIGHT * 0.25F));
}

TEST(TurbulenceTest, OfACoordinateThatDoublesToInfinityIsNan)
{
    EXPECT_EQ(Turbulence1(LARGEST<float>, 1), 0.5F);
    EXPECT_TRUE(std::isnan(Turbulence1(LARGEST<float>, 2)));
    EXPECT_TRUE(std::isnan(Turbulence2({0.0F, -LARGEST<float>}, 2)));
    EXPECT_TRUE(std::isnan(Turbulence3({0.0F, 0.0F, LARGEST<float>}, MOST_OCTAVES)));
}

TEST(TurbulenceTest, LeavesThePointThatItIsGivenAlone)
{
    Vector2 const plane{0.3F, 0.4F};
    Vector3 const space{0.3F, 0.4F, 0.5F};
    float const first = Turbulence2(plane, 10) + Turbulence3(space, 10);
    ExpectSameBits(plane, Vector2{0.3F, 0.4F});
    ExpectSameBits(space, Vector3{0.3F, 0.4F, 0.5F});
    EXPECT_EQ(Turbulence2(plane, 10) + Turbulence3(space, 10), first);
}

} // namespace
