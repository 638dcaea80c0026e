#include "bv/maths/Scalar.h"

#include <bit>
#include <cmath>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"
#include "values/ScalarValues.h"

#if !defined _WIN32
#include <csignal>
#include <unistd.h>
#endif

namespace
{

using bv::maths::CubicSmoothStep;
using bv::maths::Log2;
using bv::maths::QuinticSmoothStep;
using bv::maths::SawTooth;
using bv::maths::SmoothStep;
using namespace bv::test;

static_assert(std::is_same_v<decltype(&CubicSmoothStep<float>), float (*)(float, float, float) noexcept>);
static_assert(std::is_same_v<decltype(&QuinticSmoothStep<double>), double (*)(double, double, double) noexcept>);
static_assert(std::is_same_v<decltype(&SmoothStep<float>), float (*)(float, float, float) noexcept>);
static_assert(std::is_same_v<decltype(&SawTooth<double>), double (*)(double, double) noexcept>);
static_assert(std::is_same_v<decltype(&Log2), float (*)(float, float) noexcept>);
static_assert(CubicSmoothStep(0.0, 1.0, 0.5) == 0.5 && QuinticSmoothStep(0.0f, 1.0f, 0.5f) == 0.5f &&
              SmoothStep(0.0, 1.0, 0.5) == 0.5); // known to the compiler

template <typename T>
class ScalarTest : public testing::Test
{
public:
    using Step = T (*)(T, T, T);
    static constexpr Step STEPS[] = {&CubicSmoothStep<T>, &QuinticSmoothStep<T>, &SmoothStep<T>};

    static auto const& SmoothStepValues()
    {
        if constexpr (std::is_same_v<T, float>)
            return bv::test::SMOOTH_STEP_FLOAT;
        else
            return bv::test::SMOOTH_STEP_DOUBLE;
    }
    static auto const& SawToothValues()
    {
        if constexpr (std::is_same_v<T, float>)
            return bv::test::SAW_TOOTH_FLOAT;
        else
            return bv::test::SAW_TOOTH_DOUBLE;
    }
};

TYPED_TEST_SUITE(ScalarTest, Precisions);

TYPED_TEST(ScalarTest, SmoothStepsAreZeroUpToTheLowerEdgeAndOneFromTheUpperEdgeOn)
{
    using T = TypeParam;
    for (auto const step : TestFixture::STEPS)
    {
        ExpectSameBits(step(1, 3, 1), T{0});
        ExpectSameBits(step(1, 3, T{0.5}), T{0});
        ExpectSameBits(step(1, 3, -INF<T>), T{0});
        ExpectSameBits(step(1, 3, 3), T{1});
        ExpectSameBits(step(1, 3, T{3.5}), T{1});
        ExpectSameBits(step(1, 3, INF<T>), T{1});
        ExpectSameBits(step(0, 1, -T{0}), T{0});
    }
}

TYPED_TEST(ScalarTest, SmoothStepsAreOneHalfInTheMiddle)
{
    using T = TypeParam;
    for (auto const step : TestFixture::STEPS)
    {
        EXPECT_EQ(step(0, 1, T{0.5}), T{0.5});
        EXPECT_EQ(step(-3, 5, 1), T{0.5});
    }
}

TYPED_TEST(ScalarTest, SmoothStepsFollowTheirPolynomials)
{
    using T = TypeParam;
    // t = 1/4: (3 - 1/2) / 16 and (6/16 - 15/4 + 10) / 64 and 2/16, all exact.
    EXPECT_EQ(CubicSmoothStep<T>(0, 4, 1), T{0.15625});
    EXPECT_EQ(QuinticSmoothStep<T>(0, 4, 1), T{0.103515625});
    EXPECT_EQ(SmoothStep<T>(0, 4, 1), T{0.125});
    // t = 3/4: (3 - 3/2) * 9/16 and (54/16 - 45/4 + 10) * 27/64 and 1 - 2/16.
    EXPECT_EQ(CubicSmoothStep<T>(0, 4, 3), T{0.84375});
    EXPECT_EQ(QuinticSmoothStep<T>(0, 4, 3), T{0.896484375});
    EXPECT_EQ(SmoothStep<T>(0, 4, 3), T{0.875});
}

TYPED_TEST(ScalarTest, SmoothStepChangesItsParabolaInTheMiddle)
{
    using T = TypeParam;
    T const half = T{0.5};
    T const below = std::nextafter(half, T{0});
    T const above = std::nextafter(half, T{1});
    T const rest = T{1} - above;
    ExpectSameBits(SmoothStep<T>(0, 1, below), below * (below + below));
    ExpectSameBits(SmoothStep<T>(0, 1, half), half * (half + half));
    ExpectSameBits(SmoothStep<T>(0, 1, above), T{1} - (rest + rest) * rest);
}

TYPED_TEST(ScalarTest, SmoothStepsWithEdgesInReverseGiveZeroOrOne)
{
    using T = TypeParam;
    for (auto const step : TestFixture::STEPS)
    {
        // The lower edge is asked first.
        ExpectSameBits(step(3, 1, 0), T{0});
        ExpectSameBits(step(3, 1, 1), T{0});
        ExpectSameBits(step(3, 1, 2), T{0});
        ExpectSameBits(step(3, 1, 3), T{0});
        ExpectSameBits(step(3, 1, 4), T{1});
        // Edges that meet: no division by their distance.
        ExpectSameBits(step(2, 2, 2), T{0});
        ExpectSameBits(step(2, 2, std::nextafter(T{2}, T{3})), T{1});
        ExpectSameBits(step(INF<T>, INF<T>, INF<T>), T{0});
        ExpectSameBits(step(-INF<T>, -INF<T>, 0), T{1});
    }
}

TYPED_TEST(ScalarTest, SmoothStepsLetNaNThrough)
{
    using T = TypeParam;
    for (auto const step : TestFixture::STEPS)
    {
        EXPECT_TRUE(std::isnan(step(0, 1, QUIET_NAN<T>)));
        EXPECT_TRUE(std::isnan(step(1, 0, QUIET_NAN<T>)));
        // An edge that is NaN decides nothing; the other one still does.
        ExpectSameBits(step(QUIET_NAN<T>, 1, 2), T{1});
        EXPECT_TRUE(std::isnan(step(QUIET_NAN<T>, 1, T{0.5})));
        ExpectSameBits(step(0, QUIET_NAN<T>, -1), T{0});
        EXPECT_TRUE(std::isnan(step(0, QUIET_NAN<T>, T{0.5})));
    }
}

TYPED_TEST(ScalarTest, SmoothStepsBetweenInfiniteEdgesFollowTheArithmetic)
{
    using T = TypeParam;
    for (auto const step : TestFixture::STEPS)
    {
        ExpectSameBits(step(0, INF<T>, INF<T>), T{1}); // the upper edge itself
        ExpectSameBits(step(-INF<T>, 0, -INF<T>), T{0});
        ExpectSameBits(step(0, INF<T>, 1), T{0});             // t = 1 / inf
        EXPECT_TRUE(std::isnan(step(-INF<T>, INF<T>, T{0}))); // t = inf / inf
    }
}

TYPED_TEST(ScalarTest, SmoothStepsRoundAsTheirFormulasAreWritten)
{
    using T = TypeParam;
    for (auto const& value : TestFixture::SmoothStepValues())
    {
        T const low = std::bit_cast<T>(value.low);
        T const high = std::bit_cast<T>(value.high);
        T const x = std::bit_cast<T>(value.x);
        ExpectSameBits(CubicSmoothStep(low, high, x), std::bit_cast<T>(value.cubic));
        ExpectSameBits(QuinticSmoothStep(low, high, x), std::bit_cast<T>(value.quintic));
        ExpectSameBits(SmoothStep(low, high, x), std::bit_cast<T>(value.parabolas));
    }
}

TYPED_TEST(ScalarTest, SawToothIsTheRemainderForPositiveArguments)
{
    using T = TypeParam;
    ExpectSameBits(SawTooth<T>(4, 3), T{1});
    ExpectSameBits(SawTooth<T>(2, 3), T{2});
    ExpectSameBits(SawTooth<T>(3, 3), T{0});
    ExpectSameBits(SawTooth<T>(6, 3), T{0});
    ExpectSameBits(SawTooth<T>(T{0.25}, 3), T{0.25});
    ExpectSameBits(SawTooth<T>(0, 3), T{0});
    ExpectSameBits(SawTooth<T>(-T{0}, 3), -T{0}); // -0 >= 0, and the remainder keeps the sign
}

TYPED_TEST(ScalarTest, SawToothAddsThePeriodToNegativeRemainders)
{
    using T = TypeParam;
    ExpectSameBits(SawTooth<T>(-1, 3), T{2});
    ExpectSameBits(SawTooth<T>(-4, 3), T{2});
    ExpectSameBits(SawTooth<T>(T{-0.25}, 3), T{2.75});
}

TYPED_TEST(ScalarTest, SawToothOfANegativeMultipleIsThePeriod)
{
    using T = TypeParam;
    ExpectSameBits(SawTooth<T>(-3, 3), T{3});
    ExpectSameBits(SawTooth<T>(-6, 3), T{3});
    ExpectSameBits(SawTooth<T>(-T{0.5}, T{0.5}), T{0.5});
    ExpectSameBits(SawTooth<T>(-TINY<T>, 3), T{3}); // the sum rounds up to it
}

TYPED_TEST(ScalarTest, SawToothLetsSpecialValuesThroughTheArithmetic)
{
    using T = TypeParam;
    EXPECT_TRUE(std::isnan(SawTooth(QUIET_NAN<T>, T{3})));
    EXPECT_TRUE(std::isnan(SawTooth(T{1}, QUIET_NAN<T>)));
    EXPECT_TRUE(std::isnan(SawTooth(INF<T>, T{3})));
    EXPECT_TRUE(std::isnan(SawTooth(-INF<T>, T{3})));
    EXPECT_TRUE(std::isnan(SawTooth(T{1}, T{0})));
    ExpectSameBits(SawTooth(T{1}, INF<T>), T{1});
    ExpectSameBits(SawTooth(T{-1}, INF<T>), INF<T>);
    // A negative period is not looked at: the remainder ignores its sign, the sum does not.
    ExpectSameBits(SawTooth<T>(4, -3), T{1});
    ExpectSameBits(SawTooth<T>(-4, -3), T{-4});
}

TYPED_TEST(ScalarTest, SawToothAgreesWithExactArithmetic)
{
    using T = TypeParam;
    for (auto const& value : TestFixture::SawToothValues())
        ExpectSameBits(SawTooth(std::bit_cast<T>(value.x), std::bit_cast<T>(value.period)),
                       std::bit_cast<T>(value.result));
}

TEST(Log2Test, OfPowersOfTwoIsExact)
{
    ExpectSameBits(Log2(8.0f, 1.0f), 3.0f);
    ExpectSameBits(Log2(1.0f, 1.0f), 0.0f);
    ExpectSameBits(Log2(2.0f, 1.0f), 1.0f);
    ExpectSameBits(Log2(0.5f, 1.0f), -1.0f);
    for (int power = -149; power <= 127; ++power)
    {
        ExpectSameBits(Log2(std::ldexp(1.0f, power), 2.0f), static_cast<float>(power));
        ExpectSameBits(Log2(std::ldexp(1.0f, power), 0x1p-20f), static_cast<float>(power));
    }
}

TEST(Log2Test, OfNothingPositiveIsMinusInfinity)
{
    for (float const x : {0.0f, -0.0f, -1.0f, -TINY<float>, -INF<float>, QUIET_NAN<float>})
        for (float const precision : {1.0f, 0.25f, 4.0f})
            ExpectSameBits(Log2(x, precision), -INF<float>);
}

TEST(Log2Test, OfInfinityIsInfinity)
{
    ExpectSameBits(Log2(INF<float>, 1.0f), INF<float>);
    ExpectSameBits(Log2(INF<float>, 0.001f), INF<float>);
}

TEST(Log2Test, AboveOneThePrecisionLeavesTheIntegerPart)
{
    ExpectSameBits(Log2(7.9f, 1.5f), 2.0f);
    ExpectSameBits(Log2(7.9f, std::nextafter(1.0f, 2.0f)), 2.0f);
    ExpectSameBits(Log2(0.9f, 2.0f), -1.0f);
    ExpectSameBits(Log2(7.9f, INF<float>), 2.0f);
}

TEST(Log2Test, TheLastDigitIsTheFirstBelowThePrecision)
{
    // log2(3) = 1.10010101..., a digit a squaring: 1.5^2 = 2.25 -> 1.125, 1.2656, 1.6018, 2.5658 -> 1.2829, 1.6458.
    ExpectSameBits(Log2(3.0f, 1.0f), 1.5f);         // the digit worth 0.5
    ExpectSameBits(Log2(3.0f, 0.75f), 1.5f);        // 0.5 is the first below
    ExpectSameBits(Log2(3.0f, 0.5f), 1.5f);         // 0.5 and 0.25, which is not set
    ExpectSameBits(Log2(3.0f, 0.25f), 1.5f);        // 0.5, 0.25 and 0.125
    ExpectSameBits(Log2(3.0f, 0.125f), 1.5625f);    // and 0.0625, which is set
    ExpectSameBits(Log2(3.0f, 0.1f), 1.5625f);      // 0.0625 is the first below
    ExpectSameBits(Log2(3.0f, 0.0625f), 1.5625f);   // and 0.03125
    ExpectSameBits(Log2(1.75f, 0.25f), 0.75f);      // log2(1.75) = 0.110011..., down to 0.125
    ExpectSameBits(Log2(0.375f, 0.125f), -1.4375f); // log2(3) - 3
}

TEST(Log2Test, APrecisionOfNaNGivesOneDigit)
{
    ExpectSameBits(Log2(3.0f, QUIET_NAN<float>), 1.5f); // 1 < NaN is false, and so is 0.5 >= NaN
}

#if GTEST_HAS_DEATH_TEST && !defined _WIN32 // which has no alarm()
TEST(Log2DeathTest, WithAPrecisionOfZeroOrLessNeverEnds)
{
    for (float const precision : {0.0f, -1.0f})
        EXPECT_EXIT(alarm(1); static_cast<void>(Log2(3.0f, precision)), testing::KilledBySignal(SIGALRM), "");
}
#endif

TEST(Log2Test, AgreesWithExactArithmetic)
{
    for (auto const& [x, precision, result] : bv::test::LOG2)
        ExpectSameBits(Log2(std::bit_cast<float>(x), std::bit_cast<float>(precision)), std::bit_cast<float>(result));
}

TEST(Log2Test, LiesWithinItsLastDigitOfTheLogarithm)
{
    for (float x = 0x1p-140f; x < 0x1p120f; x *= 1.37f)
        for (float const precision : {1.0f, 0.25f, 0x1p-8f})
        {
            double const error = std::log2(static_cast<double>(x)) - static_cast<double>(Log2(x, precision));
            // The digits left out make the result too small, by less than the last of them; eleven squarings add
            // rounding errors far below 2^-10.
            EXPECT_GE(error, -0x1p-10) << x;
            EXPECT_LT(error, static_cast<double>(precision) / 2 + 0x1p-10) << x;
        }
}

} // namespace
