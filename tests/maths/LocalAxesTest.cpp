#include "bv/maths/LocalAxes.h"

#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/SameBits.h"

namespace
{

using bv::maths::EvaluateLocalAxes;
using bv::test::ExpectSameBits;
using bv::test::INF;
using bv::test::QUIET_NAN;
using Vector = bv::maths::tVector3<float>;
using VectorD = bv::maths::tVector3<double>;

static_assert(std::is_same_v<decltype(&EvaluateLocalAxes), void (*)(Vector const&, Vector&, Vector&) noexcept>);
static_assert(!std::is_invocable_v<decltype(&EvaluateLocalAxes), VectorD const&, VectorD&, VectorD&>); // float only

struct Axes
{
    Vector first{9, 9, 9};
    Vector second{9, 9, 9};
};

Axes AxesOf(Vector const& normal)
{
    Axes axes;
    EvaluateLocalAxes(normal, axes.first, axes.second);
    return axes;
}

void ExpectNan(Vector const& vector)
{
    EXPECT_TRUE(std::isnan(vector.x) && std::isnan(vector.y) && std::isnan(vector.z));
}

TEST(LocalAxesTest, OfZDropTheXComponent)
{
    // x and y tie at 0: second = (0, -1, 0). first = (0*0 - 1*-1, 1*0 - 0*0, 0*-1 - 0*0).
    Axes const axes = AxesOf({0, 0, 1});
    ExpectSameBits(axes.second, Vector(0.0F, -1.0F, 0.0F));
    ExpectSameBits(axes.first, Vector(1.0F, 0.0F, -0.0F));
}

TEST(LocalAxesTest, OfXDropTheYComponent)
{
    // y and z tie at 0: second = (-0, 0, 1). first = (0*1 - 0*0, 0*-0 - 1*1, 1*0 - 0*-0).
    Axes const axes = AxesOf({1, 0, 0});
    ExpectSameBits(axes.second, Vector(-0.0F, 0.0F, 1.0F));
    ExpectSameBits(axes.first, Vector(0.0F, -1.0F, 0.0F));
}

TEST(LocalAxesTest, OfYDropTheXComponent)
{
    // x and z tie at 0: second = (0, -0, 1). first = (1*1 - 0*-0, 0*0 - 0*1, 0*-0 - 1*0).
    Axes const axes = AxesOf({0, 1, 0});
    ExpectSameBits(axes.second, Vector(0.0F, -0.0F, 1.0F));
    ExpectSameBits(axes.first, Vector(1.0F, 0.0F, -0.0F));
}

TEST(LocalAxesTest, OfNegativeAxesTurnWithThem)
{
    ExpectSameBits(AxesOf({0, 0, -1}).second, Vector(0.0F, 1.0F, 0.0F));
    ExpectSameBits(AxesOf({0, 0, -1}).first, Vector(1.0F, -0.0F, 0.0F)); // 0*0 - -1*1, -1*0 - 0*0
    ExpectSameBits(AxesOf({-1, 0, 0}).second, Vector(-0.0F, 0.0F, -1.0F));
    ExpectSameBits(AxesOf({-1, 0, 0}).first.y, -1.0F); // 0*-0 - -1*-1
    ExpectSameBits(AxesOf({0, -1, 0}).second, Vector(0.0F, -0.0F, -1.0F));
    ExpectSameBits(AxesOf({0, -1, 0}).first.x, 1.0F); // -1*-1 - 0*-0
}

TEST(LocalAxesTest, DropTheSmallestComponentAndNormaliseByTheReciprocalOfTheLength)
{
    // Squared length 3*3 + 4*4 = 25 for the second axis, whose components are 3 and 4 times the reciprocal 1/5.
    float const three = 3.0F * 0.2F;
    float const four = 4.0F * 0.2F;
    ExpectSameBits(AxesOf({1, 3, 4}).second, Vector(0.0F, -four, three));
    ExpectSameBits(AxesOf({-1, 3, -4}).second, Vector(0.0F, four, three));
    ExpectSameBits(AxesOf({4, 3, 1}).second, Vector(-three, four, 0.0F));
    ExpectSameBits(AxesOf({-4, 3, 1}).second, Vector(-three, -four, 0.0F));
    ExpectSameBits(AxesOf({4, -1, 3}).second, Vector(-three, 0.0F, four));
    ExpectSameBits(AxesOf({4, 1, -3}).second, Vector(three, 0.0F, four));
}

TEST(LocalAxesTest, TheFirstAxisIsTheNormalisedProductOfTheNormalAndTheSecond)
{
    // second = (0, -4, 3) / 5, (1, 3, 4) cross second = (3*0.6 + 4*0.8, 4*0 - 0.6, -0.8 - 3*0).
    float const y = -4.0F * 0.2F;
    float const z = 3.0F * 0.2F;
    Vector const product(3.0F * z - 4.0F * y, 4.0F * 0.0F - 1.0F * z, 1.0F * y - 3.0F * 0.0F);
    float const length = std::sqrt(product.x * product.x + product.y * product.y + product.z * product.z);
    Vector const first = AxesOf({1, 3, 4}).first;
    ExpectSameBits(first,
                   Vector(product.x * (1.0F / length), product.y * (1.0F / length), product.z * (1.0F / length)));
    EXPECT_NEAR(first.x, 5.0 / std::sqrt(26.0), 1e-7); // (25, -3, -4) / 5 over its length
    EXPECT_NEAR(first.y, -0.6 / std::sqrt(26.0), 1e-7);
    EXPECT_NEAR(first.z, -0.8 / std::sqrt(26.0), 1e-7);
}

TEST(LocalAxesTest, TheReciprocalIsRoundedAndTheProductTakesTheNormalisedSecond)
{
    // Squared length 7*7 + 2*2 = 53; the product with (0, -7, 2) before its normalisation is (53, -2, -7).
    float const reciprocal = 1.0F / std::sqrt(53.0F);
    float const y = -7.0F * reciprocal;
    float const z = 2.0F * reciprocal;
    Vector const product(2.0F * z - 7.0F * y, -z, y);
    float const scale = 1.0F / std::sqrt(product.x * product.x + product.y * product.y + product.z * product.z);
    Axes const axes = AxesOf({1, 2, 7});
    ExpectSameBits(axes.second, Vector(0.0F, y, z));
    ExpectSameBits(axes.first, Vector(product.x * scale, product.y * scale, product.z * scale));
    EXPECT_NE(axes.second.y, -7.0F / std::sqrt(53.0F));
    EXPECT_NE(axes.first.x, 53.0F * (1.0F / std::sqrt(2862.0F))); // 53^2 + 2^2 + 7^2
}

TEST(LocalAxesTest, TiesGoToXBeforeYAndToYBeforeZ)
{
    float const tilted = 1.0F / std::sqrt(2.0F);
    EXPECT_EQ(AxesOf({1, 1, 1}).second.x, 0.0F);
    EXPECT_EQ(AxesOf({-1, 1, -1}).second.x, 0.0F);
    EXPECT_EQ(AxesOf({1, -1, 2}).second.x, 0.0F); // x and y
    EXPECT_EQ(AxesOf({-1, 2, 1}).second.x, 0.0F); // x and z
    EXPECT_EQ(AxesOf({2, 1, -1}).second.y, 0.0F); // y and z
    EXPECT_NE(AxesOf({2, 1, -1}).second.z, 0.0F);
    EXPECT_EQ(AxesOf({tilted, tilted, 0}).second.z, 0.0F); // no tie for the smallest
    EXPECT_EQ(AxesOf({0.0F, -0.0F, 1.0F}).second.x, 0.0F); // zeros of either sign tie
}

TEST(LocalAxesTest, OfAUnitNormalAreAnOrthonormalLeftHandedTriple)
{
    for (int i = 0; i < 40; ++i)
        for (int j = 0; j < 40; ++j)
        {
            double const polar = 0.0785 * i;
            double const around = 0.157 * j;
            VectorD const exact(std::sin(polar) * std::cos(around), std::sin(polar) * std::sin(around),
                                std::cos(polar));
            Vector const normal(exact);
            auto const [first, second] = AxesOf(normal);

            // Sums of three products of numbers up to 1: a few steps of 2^-24 each.
            constexpr float STEPS = 5e-7F;
            EXPECT_NEAR(first.LengthSquared(), 1.0F, STEPS);
            EXPECT_NEAR(second.LengthSquared(), 1.0F, STEPS);
            EXPECT_NEAR(first.Dot(second), 0.0F, STEPS);
            EXPECT_NEAR(first.Dot(normal), 0.0F, STEPS);
            EXPECT_NEAR(second.Dot(normal), 0.0F, STEPS);
            Vector const sum = first.Cross(second) + normal;
            Vector const difference = second.Cross(first) - normal;
            EXPECT_NEAR(sum.Length(), 0.0F, STEPS);
            EXPECT_NEAR(difference.Length(), 0.0F, STEPS);
        }
}

TEST(LocalAxesTest, NeedNoUnitNormalToBeUnitVectors)
{
    for (Vector const& normal : {Vector(100, -20, 3), Vector(1e-3F, 2e-3F, -5e-4F), Vector(1e10F, 1e10F, -1e9F)})
    {
        auto const [first, second] = AxesOf(normal);
        EXPECT_NEAR(first.Length(), 1.0F, 5e-7F);
        EXPECT_NEAR(second.Length(), 1.0F, 5e-7F);
    }
}

TEST(LocalAxesTest, OfAZeroNormalAreNan)
{
    auto const [first, second] = AxesOf({0, 0, 0});
    ExpectNan(first);
    ExpectNan(second); // 0 times 1 / 0
}

TEST(LocalAxesTest, OfANormalWithNanFollowTheComparisons)
{
    // Every comparison with NaN is false, so that "differs" is what decides: with x it is z that is dropped, and
    // second = (-y, NaN, 0) is normalised by NaN.
    ExpectNan(AxesOf({QUIET_NAN<float>, 2, 3}).second);
    ExpectNan(AxesOf({QUIET_NAN<float>, 2, 3}).first);
    // With y the smallest is x or z; 1 against 3 leaves x: (0, -3, NaN).
    ExpectNan(AxesOf({1, QUIET_NAN<float>, 3}).second);
    // With z it is x or y; 1 against 2 leaves x: (0, NaN, 2).
    ExpectNan(AxesOf({1, 2, QUIET_NAN<float>}).second);
    ExpectNan(AxesOf({1, 2, QUIET_NAN<float>}).first);
}

TEST(LocalAxesTest, OfANormalWithNanInAnyPlaceAreNan)
{
    // The component that is dropped is never the one that is NaN: no comparison finds it to be the smallest.
    constexpr float VALUES[] = {QUIET_NAN<float>, 0.0F, 1.0F, -2.0F, 3.0F, -std::numeric_limits<float>::infinity()};
    for (float const x : VALUES)
        for (float const y : VALUES)
            for (float const z : VALUES)
            {
                if (!std::isnan(x) && !std::isnan(y) && !std::isnan(z))
                    continue;
                SCOPED_TRACE(testing::Message() << x << ", " << y << ", " << z);
                ExpectNan(AxesOf({x, y, z}).first);
                ExpectNan(AxesOf({x, y, z}).second);
            }
}

TEST(LocalAxesTest, OfAnInfiniteNormalAreNanWhereInfinityIsRead)
{
    // x is dropped: (0, -inf, 0) times 1 / inf.
    auto const [first, second] = AxesOf({0, 0, INF<float>});
    EXPECT_EQ(second.x, 0.0F);
    EXPECT_TRUE(std::isnan(second.y));
    ExpectNan(first);
}

TEST(LocalAxesTest, TheNormalMayBeEitherAxis)
{
    for (Vector const& normal : {Vector(1, 3, 4), Vector(4, 3, 1), Vector(4, 1, 3)})
    {
        Axes const expected = AxesOf(normal);

        Axes normalIsFirst{normal, {}};
        EvaluateLocalAxes(normalIsFirst.first, normalIsFirst.first, normalIsFirst.second);
        ExpectSameBits(normalIsFirst.first, expected.first);
        ExpectSameBits(normalIsFirst.second, expected.second);

        Axes normalIsSecond{{}, normal};
        EvaluateLocalAxes(normalIsSecond.second, normalIsSecond.first, normalIsSecond.second);
        ExpectSameBits(normalIsSecond.first, expected.first);
        ExpectSameBits(normalIsSecond.second, expected.second);
    }
}

TEST(LocalAxesTest, OneObjectForBothAxesEndsAsTheFirst)
{
    Vector both;
    EvaluateLocalAxes({1, 3, 4}, both, both);
    ExpectSameBits(both, AxesOf({1, 3, 4}).first);

    Vector all(4, 3, 1);
    EvaluateLocalAxes(all, all, all);
    ExpectSameBits(all, AxesOf({4, 3, 1}).first);
}

TEST(LocalAxesTest, LeaveTheNormalAlone)
{
    Vector const normal(0.6F, 0.0F, 0.8F);
    Axes axes;
    EvaluateLocalAxes(normal, axes.first, axes.second);
    ExpectSameBits(normal, Vector(0.6F, 0.0F, 0.8F));
}

} // namespace
