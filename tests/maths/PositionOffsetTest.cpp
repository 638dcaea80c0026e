#include "bv/maths/PositionOffset.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace
{

using bv::maths::GetPositionOffset;
using bv::maths::tVector3;
using namespace bv::test;

/// The single-precision 1e-5 in either precision.
template <typename T>
constexpr T UNIT = static_cast<T>(9.999999747378752e-06);

/// The step for a coordinate: how far a position moves along a normal of length 1. The normal points to y, whose
/// coordinate is the one looked at, but carries 1 in x as well, where the position is 0 and shows the whole step.
template <typename T>
T StepFor(T coordinate)
{
    return GetPositionOffset(tVector3<T>(0, coordinate, 0), tVector3<T>(1, 1, 0)).x;
}

template <typename T>
class PositionOffsetTest : public testing::Test
{
    static_assert(std::is_same_v<decltype(&GetPositionOffset<T>),
                                 tVector3<T> (*)(tVector3<T> const&, tVector3<T> const&) noexcept>);
};

TYPED_TEST_SUITE(PositionOffsetTest, Precisions);

TYPED_TEST(PositionOffsetTest, MovesASmallPositionByOneHundredThousandth)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    Vector const moved = GetPositionOffset(Vector(T{0.5}, 0, 0), Vector(1, 0, 0));
    ExpectSameBits(moved, Vector(T{0.5} + UNIT<T>, 0, 0));
    EXPECT_NEAR(static_cast<double>(moved.x), 0.50001, 3e-8);
}

TYPED_TEST(PositionOffsetTest, MovesAPositionAtThreeByFourTimesAsMuch)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    ExpectSameBits(GetPositionOffset(Vector(3, 0, 0), Vector(1, 0, 0)), Vector(3 + 4 * UNIT<T>, 0, 0));
    ExpectSameBits(GetPositionOffset(Vector(-3, 0, 0), Vector(1, 0, 0)), Vector(-3 + 4 * UNIT<T>, 0, 0));
    ExpectSameBits(GetPositionOffset(Vector(3, 0, 0), Vector(-1, 0, 0)), Vector(3 - 4 * UNIT<T>, 0, 0));
}

TYPED_TEST(PositionOffsetTest, TheConstantIsTheSinglePrecisionOne)
{
    using T = TypeParam;
    ExpectSameBits(StepFor(T{0}), static_cast<T>(1e-5F));
    ExpectSameBits(static_cast<double>(StepFor(T{0})), 9.999999747378752e-06);
    EXPECT_NE(static_cast<double>(StepFor(T{0})), 1e-5);
}

TYPED_TEST(PositionOffsetTest, TheStepDoublesAtEachPowerOfTwoFromOneOn)
{
    using T = TypeParam;
    ExpectSameBits(StepFor(T{0}), UNIT<T>);
    ExpectSameBits(StepFor(T{0.25}), UNIT<T>);         // exponent -1
    ExpectSameBits(StepFor(T{0.5}), UNIT<T>);          // 0
    ExpectSameBits(StepFor(T{0.9990234375}), UNIT<T>); // 0
    ExpectSameBits(StepFor(T{1}), 2 * UNIT<T>);        // 1
    ExpectSameBits(StepFor(T{-1}), 2 * UNIT<T>);       // 1
    ExpectSameBits(StepFor(T{1.9990234375}), 2 * UNIT<T>);
    ExpectSameBits(StepFor(T{2}), 4 * UNIT<T>); // 2
    ExpectSameBits(StepFor(T{3}), 4 * UNIT<T>);
    ExpectSameBits(StepFor(T{4}), 8 * UNIT<T>);        // 3
    ExpectSameBits(StepFor(T{-1000}), 1024 * UNIT<T>); // 10
    ExpectSameBits(StepFor(T{1024}), 2048 * UNIT<T>);  // 11
}

TYPED_TEST(PositionOffsetTest, TheExponentCountsModulo32)
{
    using T = TypeParam;
    ExpectSameBits(StepFor(T{1073741824}), T{2147483648} * UNIT<T>); // 2^30, exponent 31
    ExpectSameBits(StepFor(T{2147483520}), T{2147483648} * UNIT<T>); // just below 2^31
    ExpectSameBits(StepFor(T{2147483648}), UNIT<T>);                 // 2^31, exponent 32
    ExpectSameBits(StepFor(T{-2147483648}), UNIT<T>);
    ExpectSameBits(StepFor(T{4294967296}), 2 * UNIT<T>);    // 2^32, exponent 33
    ExpectSameBits(StepFor(std::ldexp(T{1}, 63)), UNIT<T>); // exponent 64
    ExpectSameBits(StepFor(LARGEST<T>), UNIT<T>);           // exponents 128 and 1024
}

TYPED_TEST(PositionOffsetTest, TheExponentIsThatOfFrexp)
{
    using T = TypeParam;
    for (int power = std::numeric_limits<T>::min_exponent - 30; power < std::numeric_limits<T>::max_exponent; ++power)
        for (T const mantissa : {T{1}, T{1.25}, T{-1.96875}})
        {
            T const coordinate = std::ldexp(mantissa, power);
            int exponent = 0;
            std::frexp(coordinate, &exponent);
            T const factor = exponent > 0 ? std::ldexp(T{1}, exponent % 32) : T{1};
            ExpectSameBits(StepFor(coordinate), factor * UNIT<T>);
        }
}

TYPED_TEST(PositionOffsetTest, SubnormalAndNonFiniteCoordinatesCountAsSmall)
{
    using T = TypeParam;
    for (T const coordinate : {TINY<T>, -TINY<T>, SMALLEST_NORMAL<T>, T{-0.0}, INF<T>, -INF<T>, QUIET_NAN<T>})
        ExpectSameBits(StepFor(coordinate), UNIT<T>);
}

TYPED_TEST(PositionOffsetTest, TheDominantAxisOfTheNormalPicksTheCoordinate)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    Vector const position(2, 20, 200); // steps 4, 32 and 256
    auto const stepAlong = [&](Vector const& normal) { return GetPositionOffset(position, normal) - position; };
    auto const expect = [&](Vector const& normal, T factor)
    { ExpectSameBits(GetPositionOffset(position, normal), position + normal * (factor * UNIT<T>)); };
    expect({1, 0, 0}, 4);
    expect({0, 1, 0}, 32);
    expect({0, 0, 1}, 256);
    expect({-3, 2, 1}, 4);
    expect({2, -3, 1}, 32);
    expect({1, 2, -3}, 256);
    expect({3, 2, -2}, 4);
    EXPECT_GT(stepAlong({0, 0, 1}).z, T{0});
}

TYPED_TEST(PositionOffsetTest, TiesGoToYThenZThenX)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    Vector const position(2, 20, 200); // steps 4, 32 and 256
    auto const expect = [&](Vector const& normal, T factor)
    { ExpectSameBits(GetPositionOffset(position, normal), position + normal * (factor * UNIT<T>)); };
    expect({1, 1, 0}, 32);
    expect({-1, 1, 0}, 32);
    expect({1, 1, 1}, 32);
    expect({0, 1, -1}, 32);
    expect({1, 0, 1}, 256);
    expect({1, 0, -1}, 256);
    expect({0, 0, 0}, 32);
}

TYPED_TEST(PositionOffsetTest, ANanInTheNormalDoesNotDominate)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    Vector const position(2, 20, 200); // steps 4, 32 and 256
    // In y or z it loses every comparison; in x it wins because the others lose against it, and x is the last resort.
    Vector const nanInX = GetPositionOffset(position, Vector(QUIET_NAN<T>, 1, 1));
    EXPECT_TRUE(std::isnan(nanInX.x));
    ExpectSameBits(nanInX.y, 20 + 4 * UNIT<T>);
    ExpectSameBits(nanInX.z, 200 + 4 * UNIT<T>);
    Vector const nanInY = GetPositionOffset(position, Vector(1, QUIET_NAN<T>, 1));
    ExpectSameBits(nanInY.x, 2 + 256 * UNIT<T>);
    EXPECT_TRUE(std::isnan(nanInY.y));
    Vector const nanInZ = GetPositionOffset(position, Vector(1, 1, QUIET_NAN<T>));
    ExpectSameBits(nanInZ.x, 2 + 32 * UNIT<T>);
    EXPECT_TRUE(std::isnan(nanInZ.z));
}

TYPED_TEST(PositionOffsetTest, EveryComponentMovesByTheStepTimesTheNormal)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    T const step = 16 * UNIT<T>; // y = 10 has exponent 4
    ExpectSameBits(GetPositionOffset(Vector(1, 10, 100), Vector(T{0.5}, T{-0.75}, T{0.25})),
                   Vector(1 + step * T{0.5}, 10 + step * T{-0.75}, 100 + step * T{0.25}));
}

TYPED_TEST(PositionOffsetTest, TheMovedPositionDiffersFromTheOldOne)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    for (T coordinate = T{0.0009765625}; coordinate < T{2147483648}; coordinate *= T{1.6875})
        EXPECT_GT(GetPositionOffset(Vector(0, 0, coordinate), Vector(0, 0, 1)).z, coordinate);
}

TYPED_TEST(PositionOffsetTest, PositionAndNormalMayBeOneObject)
{
    using T = TypeParam;
    using Vector = tVector3<T>;
    T const step = 8 * UNIT<T>; // exponent 3
    Vector both(0, 4, 0);
    both = GetPositionOffset(both, both);
    ExpectSameBits(both, Vector(0, 4 + step * 4, 0));
}

} // namespace
