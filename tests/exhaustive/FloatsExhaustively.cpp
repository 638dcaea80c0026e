#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "bv/maths/Componentwise.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/Noise.h"
#include "bv/maths/Reciprocal.h"
#include "bv/maths/Sampling.h"
#include "bv/maths/Scalar.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tDifferential2.h"
#include "bv/maths/tDifferential3.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tReciprocalRay.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"
#include "exhaustive/EveryInput.h"
#include "maths/values/NoiseValues.h"
#include "support/Numbers.h"

// What takes one `float`, for every `float` there is, against a second formulation. These are all such operations of
// the headers:
//
// - Noise1(), _mm_rcp_nr() and _mm_rsqrt_nr();
// - Abs(), Floor() and Ceil(), which treat each component by itself;
// - products and quotients of tuples, vectors, quaternions and differentials with a number;
// - Expand() and Offset() of boxes, SetRadius() of discs and spheres;
// - Scale(), RotateX(), RotateY() and RotateZ() of matrices;
// - what a tReciprocalRay makes of a component.
//
// Beside them, some that take one `float` when the rest is fixed: the smooth steps between 0 and 1, IsEqual() to 0 and
// to 1, and the circle that SquareToSphere() makes of one side of the middle.
//
// The second formulation computes in `double` and rounds each result, where it can: a sum, difference, product,
// quotient or root of two single-precision numbers rounds to the same number either way, since 53 >= 2 * 24 + 2 bits.

namespace
{

using namespace bv::maths;
using bv::test::Bits;
using bv::test::ExpectAllRight;
using bv::test::Findings;
using bv::test::FromBits;
using bv::test::INF;
using bv::test::IsNaN;
using bv::test::TryEach;

constexpr std::uint64_t ALL = std::uint64_t{1} << 32;

/// The nearest number of single precision. GCC knows the rule above, too: what it does not see computed, it cannot take
/// for the single-precision operation that is under test.
[[nodiscard]] float Rounded(double number)
{
    asm("" : "+m"(number));
    return static_cast<float>(number);
}

[[nodiscard]] float Sum(float a, float b)
{
    return Rounded(static_cast<double>(a) + static_cast<double>(b));
}
[[nodiscard]] float Difference(float a, float b)
{
    return Rounded(static_cast<double>(a) - static_cast<double>(b));
}
[[nodiscard]] float Product(float a, float b)
{
    return Rounded(static_cast<double>(a) * static_cast<double>(b));
}
[[nodiscard]] float Quotient(float a, float b)
{
    return Rounded(static_cast<double>(a) / static_cast<double>(b));
}
[[nodiscard]] float Root(float a)
{
    return Rounded(std::sqrt(static_cast<double>(a)));
}

[[nodiscard]] std::string Name(float number)
{
    std::ostringstream text;
    text << std::hexfloat << number << " (0x" << std::hex << Bits(number) << ')';
    return text.str();
}

/// The numbers that a value consists of are these, to the bit, where NaN is NaN.
template <std::size_t COUNT, typename Value>
[[nodiscard]] bool Holds(Value const& value, std::array<float, COUNT> const& expected)
{
    static_assert(sizeof(Value) == sizeof expected);
    if (std::memcmp(&value, expected.data(), sizeof expected) == 0) [[likely]]
        return true;
    std::array<float, COUNT> actual;
    std::memcpy(actual.data(), &value, sizeof actual);
    bool isRight = true;
    for (std::size_t i = 0; i < COUNT; ++i)
        isRight = isRight && (Bits(actual[i]) == Bits(expected[i]) || (IsNaN(actual[i]) && IsNaN(expected[i])));
    return isRight;
}

/// Runs `isRight(number)` for all numbers.
template <typename IsRight>
void ExpectOfEachFloat(IsRight const& isRight)
{
    auto const tryNumber = [&](std::uint64_t pattern, Findings& findings)
    {
        auto const number = FromBits<float>(static_cast<std::uint32_t>(pattern));
        findings.Note(isRight(number), [&] { return Name(number); });
    };
    ExpectAllRight(TryEach(ALL, tryNumber), ALL);
}

// Reciprocals, four lanes at a time.

using Lanes = std::array<float, 4>;

[[nodiscard]] Lanes Unpacked(simd::FourFloats const& packed)
{
    Lanes lanes;
    std::memcpy(lanes.data(), &packed, sizeof packed);
    return lanes;
}

/// What the processor knows of a reciprocal, or the quotient.
[[nodiscard]] Lanes Estimate(simd::FourFloats const& packed)
{
#if BV_SSE2
    return Unpacked(_mm_rcp_ps(packed));
#else
    return Unpacked(1.0F / packed);
#endif
}

/// The same of the reciprocal of a root.
[[nodiscard]] Lanes RootEstimate(simd::FourFloats const& packed)
{
#if BV_SSE2
    return Unpacked(_mm_rsqrt_ps(packed));
#else
    Lanes lanes = Unpacked(packed);
    for (float& lane : lanes)
        lane = Quotient(1, Root(lane));
    return lanes;
#endif
}

/// Whether the processor is of a make whose estimates were all looked at: their errors are not only below 1.5 * 2^-12,
/// which is promised.
[[nodiscard]] bool HasKnownEstimates()
{
#if BV_SSE2
    return __builtin_cpu_is("intel") != 0;
#else
    return false;
#endif
}

/// Runs `isRight(number, result, estimate)` for all numbers.
template <typename Operation, typename Estimates, typename IsRight>
void ExpectOfEachLane(Operation const& operation, Estimates const& estimates, IsRight const& isRight)
{
    auto const tryLanes = [&](std::uint64_t group, Findings& findings)
    {
        auto const first = static_cast<std::uint32_t>(4 * group);
        Lanes const lanes = {FromBits<float>(first), FromBits<float>(first + 1), FromBits<float>(first + 2),
                             FromBits<float>(first + 3)};
        simd::FourFloats const packed{lanes[0], lanes[1], lanes[2], lanes[3]};
        Lanes const results = Unpacked(operation(packed));
        Lanes const guesses = estimates(packed);
        for (std::size_t lane = 0; lane < 4; ++lane)
            findings.Note(isRight(lanes[lane], results[lane], guesses[lane]), [&] { return Name(lanes[lane]); });
    };
    ExpectAllRight(TryEach(ALL / 4, tryLanes), ALL);
}

[[nodiscard]] bool IsSame(float actual, float expected)
{
    return Holds<1>(actual, {expected});
}

TEST(FloatsExhaustively, TheReciprocalIsOneStepFromTheEstimateAndWithinItsBound)
{
    // The documented bound; where estimates are known, the error is 2.0021e-7 for one mantissa, and below 2e-7 for all
    // others.
    double const bound = HasKnownEstimates() ? 2.003e-7 : 6 * 0x1p-24;
    ExpectOfEachLane([](simd::FourFloats const& packed) { return _mm_rcp_nr(packed); }, Estimate,
                     [=](float a, float result, float estimate)
                     {
                         float const rest = Difference(2, Product(a, estimate));
                         bool const isStep = IsSame(result, Product(estimate, rest));
                         if (!(std::fabs(a) >= 0x1p-126F && std::fabs(a) <= 0x1p125F))
                             return isStep;
                         // Exact: the product of two single-precision numbers fits double precision.
                         double const one = static_cast<double>(a) * static_cast<double>(result);
                         return isStep && std::fabs(one - 1) < bound;
                     });
}

TEST(FloatsExhaustively, TheReciprocalRootIsOneStepFromTheEstimateAndWithinItsBound)
{
    ExpectOfEachLane([](simd::FourFloats const& packed) { return _mm_rsqrt_nr(packed); }, RootEstimate,
                     [](float a, float result, float estimate)
                     {
                         float const rest = Difference(3, Product(Product(a, estimate), estimate));
                         bool const isStep = IsSame(result, Product(Product(rest, estimate), 0.5F));
                         if (!(a >= 0x1p-126F && a < INF<float>))
                             return isStep;
                         double const one = std::sqrt(static_cast<double>(a)) * static_cast<double>(result);
                         return isStep && std::fabs(one - 1) < 8 * 0x1p-24;
                     });
}

/// Noise along a line, from the slopes at the whole numbers, '+' for 1 and '-' for -1.
[[nodiscard]] float NoiseOfSlopes(float x)
{
    if (!(std::fabs(x) < INF<float>))
        return std::numeric_limits<float>::quiet_NaN();
    float const cell = std::floor(x);
    float const t = x - cell;
    // From 2^23 on, all numbers are whole, and the cell makes no difference.
    auto const index = std::fabs(x) < 0x1p23F ? static_cast<std::uint32_t>(static_cast<std::int32_t>(cell)) : 0U;
    auto const along = [](std::uint32_t at, float way)
    {
        char const slope = bv::test::NOISE_SLOPES[at % 256];
        return slope == '+' ? way : slope == '-' ? -way : 0.0F;
    };
    float const near = along(index, t);
    float const far = along(index + 1, t - 1);
    float const fade = ((t * 6) * t - t * 15 + 10) * (t * t * t);
    return ((far - near) * fade + near + 1) * 0.5F;
}

TEST(FloatsExhaustively, NoiseAlongALineIsMadeOfItsSlopes)
{
    ExpectOfEachFloat([](float x) { return IsSame(Noise1(x), NoiseOfSlopes(x)); });
}

TEST(FloatsExhaustively, MagnitudesAndWholeNumbersAreThoseOfDoublePrecision)
{
    ExpectOfEachFloat(
        [](float x)
        {
            tVector3<float> const both(x, -x, x);
            tVector2<float> const two(-x, x);
            float const magnitude = Rounded(std::fabs(static_cast<double>(x)));
            float const floor = Rounded(std::floor(static_cast<double>(x)));
            float const ceil = Rounded(std::ceil(static_cast<double>(x)));
            return Holds<3>(Abs(both), {magnitude, magnitude, magnitude}) &&
                   Holds<3>(Floor(both), {floor, -ceil, floor}) && Holds<3>(Ceil(both), {ceil, -floor, ceil}) &&
                   Holds<2>(Abs(two), {magnitude, magnitude}) && Holds<2>(Floor(two), {-ceil, floor}) &&
                   Holds<2>(Ceil(two), {-floor, ceil});
        });
}

// Of the products with these, some are exact and most are rounded.
constexpr float THREE = 3;
constexpr float TENTH = 0.1F;

TEST(FloatsExhaustively, ProductsWithANumberAreThoseOfTheComponents)
{
    constexpr tVector3<float> VECTOR(THREE, -THREE, TENTH);
    constexpr tVector2<float> FLAT(TENTH, THREE);
    constexpr tTuple3<float> TUPLE(-THREE, TENTH, THREE);
    constexpr tTuple2<float> PAIR(TENTH, -THREE);
    constexpr tQuaternion<float> QUATERNION(THREE, TENTH, -THREE, TENTH);
    constexpr tDifferential3<float> IN_SPACE(VECTOR, -VECTOR);
    constexpr tDifferential2<float> IN_PLANE(FLAT, -FLAT);
    ExpectOfEachFloat(
        [&](float x)
        {
            float const a = Product(THREE, x);
            float const b = Product(TENTH, x);
            return Holds<3>(VECTOR * x, {a, -a, b}) && Holds<3>(x * VECTOR, {a, -a, b}) && Holds<2>(FLAT * x, {b, a}) &&
                   Holds<3>(TUPLE * x, {-a, b, a}) && Holds<2>(PAIR * x, {b, -a}) &&
                   Holds<4>(QUATERNION * x, {a, b, -a, b}) && Holds<6>(IN_SPACE * x, {a, -a, b, -a, a, -b}) &&
                   Holds<4>(IN_PLANE * x, {b, a, -b, -a});
        });
}

TEST(FloatsExhaustively, QuotientsByANumberAreThoseOfTheComponents)
{
    constexpr tVector3<float> VECTOR(THREE, -THREE, TENTH);
    constexpr tVector2<float> FLAT(TENTH, THREE);
    constexpr tTuple3<float> TUPLE(-THREE, TENTH, THREE);
    constexpr tTuple2<float> PAIR(TENTH, -THREE);
    constexpr tQuaternion<float> QUATERNION(THREE, TENTH, -THREE, TENTH);
    ExpectOfEachFloat(
        [&](float x)
        {
            float const a = Quotient(THREE, x);
            float const b = Quotient(TENTH, x);
            return Holds<3>(VECTOR / x, {a, -a, b}) && Holds<2>(FLAT / x, {b, a}) && Holds<3>(TUPLE / x, {-a, b, a}) &&
                   Holds<2>(PAIR / x, {b, -a}) && Holds<4>(QUATERNION / x, {a, b, -a, b});
        });
}

TEST(FloatsExhaustively, DifferentialsAreMultipliedByAReciprocal)
{
    constexpr tVector3<float> VECTOR(THREE, -THREE, TENTH);
    constexpr tVector2<float> FLAT(TENTH, THREE);
    ExpectOfEachFloat(
        [&](float x)
        {
            float const reciprocal = Quotient(1, x);
            float const a = Product(THREE, reciprocal);
            float const b = Product(TENTH, reciprocal);
            tDifferential3<float> inSpace(VECTOR, -VECTOR);
            tDifferential2<float> inPlane(FLAT, -FLAT);
            inSpace /= x;
            inPlane /= x;
            return Holds<6>(inSpace, {a, -a, b, -a, a, -b}) && Holds<4>(inPlane, {b, a, -b, -a});
        });
}

TEST(FloatsExhaustively, ReciprocalRaysKeepNoNegativeInfinity)
{
    ExpectOfEachFloat(
        [](float x)
        {
            tReciprocalRay<float> const ray(tRay<float>({1, 2, 3}, {x, -x, x}));
            auto const expected = [](float component)
            {
                float const reciprocal = Quotient(1, component);
                return component == 0 || reciprocal == -INF<float> ? INF<float> : reciprocal;
            };
            return Holds<3>(ray.GetReciprocal(), {expected(x), expected(-x), expected(x)});
        });
}

TEST(FloatsExhaustively, ARadiusIsKeptByItsSquare)
{
    ExpectOfEachFloat(
        [](float x)
        {
            tVolumeSphere<float> sphere(tVector3<float>(1, 2, 3), 4);
            tAreaDisc<float> disc(tVector2<float>(1, 2), 4);
            sphere.SetRadius(x);
            disc.SetRadius(x);
            float const square = Product(x, x);
            float const root = Root(square);
            return IsSame(sphere.GetRadiusSquared(), square) && IsSame(disc.GetRadiusSquared(), square) &&
                   IsSame(sphere.GetRadius(), root) && IsSame(disc.GetRadius(), root);
        });
}

constexpr std::array<float, 3> LOWER = {1, -2, TENTH};
constexpr std::array<float, 3> UPPER = {4, THREE, 0.7F};

/// Whether the box in space and its first two axes in the plane are changed to these ends.
template <typename Change, typename Ends>
[[nodiscard]] bool AreChanged(Change const& change, Ends const& ends)
{
    tVolumeAABB<float> box({LOWER[0], LOWER[1], LOWER[2]}, {UPPER[0], UPPER[1], UPPER[2]});
    tAreaAABB<float> area({LOWER[0], LOWER[1]}, {UPPER[0], UPPER[1]});
    change(box);
    change(area);
    std::array<float, 3> lower{};
    std::array<float, 3> upper{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        ends(LOWER[axis], UPPER[axis], lower[axis], upper[axis]);
    return Holds<6>(box, {lower[0], lower[1], lower[2], upper[0], upper[1], upper[2]}) &&
           Holds<4>(area, {lower[0], lower[1], upper[0], upper[1]});
}

TEST(FloatsExhaustively, BoxesGrowByAFactorOfTheirHalfExtents)
{
    ExpectOfEachFloat(
        [](float factor)
        {
            return AreChanged([=](auto& box) { box.Expand(factor); },
                              [=](float low, float high, float& lower, float& upper)
                              {
                                  float const centre = Product(Sum(high, low), 0.5F);
                                  lower = Sum(low, Product(Difference(low, centre), factor));
                                  upper = Sum(high, Product(Difference(high, centre), factor));
                              });
        });
}

TEST(FloatsExhaustively, BoxesGrowByADistance)
{
    ExpectOfEachFloat(
        [](float distance)
        {
            return AreChanged([=](auto& box) { box.Offset(distance); },
                              [=](float low, float high, float& lower, float& upper)
                              {
                                  lower = Difference(low, distance);
                                  upper = Sum(high, distance);
                              });
        });
}

/// Tolerant equality as it is defined, with integers that do not wrap: beside 0 and 1, nothing is half the range away.
[[nodiscard]] bool IsNear(float a, float b)
{
    auto const place = [](float number)
    {
        auto const magnitude = static_cast<std::int64_t>(Bits(number) & 0x7FFFFFFFU);
        return Bits(number) >> 31 == 0 ? magnitude : -magnitude;
    };
    std::int64_t const steps = place(a) - place(b);
    float const distance = Difference(a, b);
    constexpr float EPSILON = 1.1920928955078125e-06F;
    return (steps >= -50 && steps <= 50) || Product(distance, distance) < Product(EPSILON, EPSILON);
}

TEST(FloatsExhaustively, EqualityToZeroAndOneIsThatOfStepsOrDistance)
{
    ExpectOfEachFloat(
        [](float x)
        {
            bool const isZero = IsNear(x, 0);
            bool const isOne = IsNear(x, 1);
            return IsEqual(x, 0.0F) == isZero && IsEqual(0.0F, x) == isZero && IsEqual(x, 1.0F) == isOne &&
                   IsEqual(1.0F, x) == isOne;
        });
}

using Elements = std::array<float, 16>;
constexpr Elements IDENTITY = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

[[nodiscard]] bool HasElements(tMatrix4<float> const& matrix, Elements const& expected)
{
    Elements elements;
    std::memcpy(elements.data(), matrix.Get(), sizeof elements);
    return Holds<16>(elements, expected);
}

TEST(FloatsExhaustively, AScaleHasItsFactorThreeTimes)
{
    ExpectOfEachFloat(
        [](float x)
        {
            tMatrix4<float> const matrix = tMatrix4<float>::Scale(x);
            if (IsNear(x, 1))
                return matrix.IsIdentity() && HasElements(matrix, IDENTITY);
            return matrix.IsDiagonal() && !matrix.IsIdentity() &&
                   HasElements(matrix, {x, 0, 0, 0, 0, x, 0, 0, 0, 0, x, 0, 0, 0, 0, 1});
        });
}

TEST(FloatsExhaustively, RotationsAboutAnAxisHaveTheirSineAndCosineInPlace)
{
    using Matrix = tMatrix4<float>;
    ExpectOfEachFloat(
        [](float angle)
        {
            float const s = std::sin(angle);
            float const c = std::cos(angle);
            Matrix const x = Matrix::RotateX(angle);
            Matrix const y = Matrix::RotateY(angle);
            Matrix const z = Matrix::RotateZ(angle);
            bool const isX = x.IsOrthonormal() && !x.IsIdentity() &&
                             HasElements(x, {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1});
            if (IsNear(angle, 0))
                return isX && y.IsIdentity() && z.IsIdentity() && HasElements(y, IDENTITY) && HasElements(z, IDENTITY);
            return isX && y.IsOrthonormal() && !y.IsIdentity() && z.IsOrthonormal() && !z.IsIdentity() &&
                   HasElements(y, {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1}) &&
                   HasElements(z, {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
        });
}

TEST(FloatsExhaustively, SmoothStepsAreTheirPolynomialsInTheStatedOrder)
{
    ExpectOfEachFloat(
        [](float t)
        {
            float cubic = t;
            float quintic = t;
            float parabolas = t;
            if (t <= 0 || t >= 1)
                cubic = quintic = parabolas = t <= 0 ? 0.0F : 1.0F;
            else if (!IsNaN(t))
            {
                float const square = Product(t, t);
                cubic = Product(Difference(3, Product(2, t)), square);
                float const inner = Sum(Difference(Product(Product(t, 6), t), Product(t, 15)), 10);
                quintic = Product(inner, Product(square, t));
                float const rest = Difference(1, t);
                parabolas = t <= 0.5F ? Product(t, Sum(t, t)) : Difference(1, Product(Sum(rest, rest), rest));
            }
            return IsSame(CubicSmoothStep(0.0F, 1.0F, t), cubic) && IsSame(QuinticSmoothStep(0.0F, 1.0F, t), quintic) &&
                   IsSame(SmoothStep(0.0F, 1.0F, t), parabolas);
        });
}

/// Whether a number is a real number but for three units in its last place.
[[nodiscard]] bool IsWithinThreeUnits(float actual, double expected)
{
    std::uint64_t const exponent = (Bits(static_cast<float>(expected)) >> 23) & 0xFF;
    auto const unit = FromBits<double>(((exponent == 0 ? 1 : exponent) - 150 + 1023) << 52);
    return std::fabs(static_cast<double>(actual) - expected) <= 3 * unit;
}

TEST(FloatsExhaustively, TheEquatorOfTheSphereIsACircleOfEvenSpeed)
{
    constexpr double QUARTER = 1.57079632679489661923;
    constexpr std::uint64_t BELOW_ONE = 0x3F800000; // the pattern of 1: all below are from 0 to below 1
    auto const tryTurns = [](std::uint64_t pattern, Findings& findings)
    {
        auto const turns = FromBits<float>(static_cast<std::uint32_t>(pattern));
        double const quarters = 4 * static_cast<double>(turns);
        double const whole = std::floor(quarters + 0.5);
        double const s = std::sin((quarters - whole) * QUARTER);
        double const c = std::cos((quarters - whole) * QUARTER);
        std::array<double, 4> const circle = {c, -s, -c, s};
        auto const quarter = static_cast<std::size_t>(whole);
        tVector3<float> const point = SquareToSphere(tVector2<float>(0.5F, turns));
        bool const isRight = IsWithinThreeUnits(point.x, circle[quarter % 4]) &&
                             IsWithinThreeUnits(point.y, circle[(quarter + 3) % 4]) && point.z == 0;
        findings.Note(isRight, [&] { return Name(turns); });
    };
    ExpectAllRight(TryEach(BELOW_ONE, tryTurns), BELOW_ONE);
}

} // namespace
