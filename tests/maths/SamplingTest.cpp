#include "bv/maths/Sampling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

static_assert(SquareToDisc(tVector2<double>(0.75, 0.5)).x == 0.5); // known to the compiler
static_assert(SquareToTriangle(tVector2<float>(0.5f, 0.25f)).x == 0.375f);
static_assert(GetSphereDensity<double>() > 0.0795 && GetSphereDensity<float>() < 0.0796f);
static_assert(noexcept(SquareToSphere(tVector2<float>())) && noexcept(ConeToSquare(tVector3<double>(), 0)));

template <typename T>
using Square = tVector2<T>;
template <typename T>
using Direction = tVector3<T>;

using Long = long double;
constexpr Long LONG_PI = std::numbers::pi_v<Long>;
constexpr Long ROOT_HALF = std::numbers::sqrt2_v<Long> / 2;

template <typename T>
class SamplingTest : public testing::Test
{
public:
    static constexpr T LAST = T{1} - EPSILON<T> / T{2}; ///< the largest coordinate of the square
};

TYPED_TEST_SUITE(SamplingTest, Precisions);

/// Any point of the square, and now and then one of its edges, diagonals or middle lines. Its coordinates are whole
/// multiples of the step below 1, so that 2x - 1 is exact.
template <typename T>
Square<T> AnySquare(Random& random)
{
    constexpr T LAST = SamplingTest<T>::LAST;
    auto const number = [&]
    {
        T const x = random.Below(16) == 0 ? static_cast<T>(random.Below(9)) / T{8} : random.Number<T>(0, 1);
        return std::min((x + T{1}) - T{1}, LAST);
    };
    T const x = number();
    return {x, random.Below(16) == 0 ? x : number()};
}

/// Any unit vector, and now and then one along an axis.
template <typename T>
Direction<T> AnyNormal(Random& random)
{
    Direction<T> normal;
    if (random.Below(8) == 0)
    {
        normal[random.Below(3)] = random.Below(2) == 0 ? T{1} : T{-1};
        return random.Below(2) == 0 ? normal : normal * T{1} + Direction<T>(-T{0}, -T{0}, -T{0});
    }
    do
        normal = random.Vector<Direction<T>>(-1, 1);
    while (normal.LengthSquared() < T(0.01) || normal.LengthSquared() > T{1});
    return normal.Normalised();
}

/// Each component within so many units in the last place of 1.
template <typename Vector>
void ExpectNear(Vector const& actual, Long x, Long y, Long z, Long units)
{
    Long const bound = units * static_cast<Long>(EPSILON<decltype(actual.x)>);
    EXPECT_LE(std::abs(static_cast<Long>(actual.x) - x), bound);
    EXPECT_LE(std::abs(static_cast<Long>(actual.y) - y), bound);
    if constexpr (requires { actual.z; })
    {
        EXPECT_LE(std::abs(static_cast<Long>(actual.z) - z), bound);
    }
}

template <typename T>
void ExpectNearSquare(Square<T> const& actual, Square<T> const& expected, Long units)
{
    ExpectNear(actual, static_cast<Long>(expected.x), static_cast<Long>(expected.y), 0, units);
    EXPECT_TRUE(actual.x >= T{0} && actual.x < T{1} && actual.y >= T{0} && actual.y < T{1});
}

template <typename Vector>
bool IsAllNaN(Vector const& vector)
{
    if constexpr (requires { vector.z; })
        return std::isnan(vector.x) && std::isnan(vector.y) && std::isnan(vector.z);
    else
        return std::isnan(vector.x) && std::isnan(vector.y);
}

/// The concentric map as its paper has it: by cases, and by way of the angle.
struct Polar
{
    Long radius, angle;
};

template <typename T>
Polar Concentric(Square<T> const& square)
{
    Long const a = 2 * static_cast<Long>(square.x) - 1;
    Long const b = 2 * static_cast<Long>(square.y) - 1;
    if (a == 0 && b == 0)
        return {0, 0};
    if (std::abs(a) > std::abs(b))
        return {a, LONG_PI / 4 * (b / a)};
    return {b, LONG_PI / 2 - LONG_PI / 4 * (a / b)};
}

TYPED_TEST(SamplingTest, TheMiddleOfTheSquareIsTheMiddleOfTheDiscAndItsEdgesTheCircle)
{
    using T = TypeParam;
    auto const map = [](T x, T y) { return SquareToDisc(Square<T>(x, y)); };
    ExpectSameBits(map(T{0.5}, T{0.5}), Square<T>(0, 0));
    ExpectSameBits(map(0, T{0.5}), Square<T>(T{-1}, 0));
    ExpectSameBits(map(T{0.5}, 0), Square<T>(0, T{-1}));
    ExpectSameBits(map(T{0.75}, T{0.5}), Square<T>(T{0.5}, T{0}));
    ExpectSameBits(map(T{0.5}, T{0.75}), Square<T>(T{0}, T{0.5}));
    // A diagonal goes to itself: radius 1/2 at 45 degrees.
    ExpectNear(map(T{0.75}, T{0.75}), 0.5L * ROOT_HALF, 0.5L * ROOT_HALF, 0, 1);
    ExpectNear(map(0, 0), -ROOT_HALF, -ROOT_HALF, 0, 1);
}

TYPED_TEST(SamplingTest, DiscPointsAreThoseOfTheConcentricMap)
{
    using T = TypeParam;
    Random random(1);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        Polar const polar = Concentric(square);
        ExpectNear(SquareToDisc(square), polar.radius * std::cos(polar.angle), polar.radius * std::sin(polar.angle), 0,
                   2);
    }
}

TYPED_TEST(SamplingTest, TrianglesAreFoldedAlongTheDiagonal)
{
    using T = TypeParam;
    auto const map = [](T x, T y) { return SquareToTriangle(Square<T>(x, y)); };
    ExpectSameBits(map(0, 0), Direction<T>(0, 0, 1));
    ExpectSameBits(map(T{0.5}, T{0.25}), Direction<T>(T{0.375}, T{0.125}, T{0.5}));
    ExpectSameBits(map(T{0.25}, T{0.5}), Direction<T>(T{0.125}, T{0.375}, T{0.5}));
    ExpectSameBits(map(T{0.5}, T{0.5}), Direction<T>(T{0.25}, T{0.25}, T{0.5})); // on the median
    ExpectSameBits(map(T{0.75}, 0), Direction<T>(T{0.75}, 0, T{0.25}));
    // The same with corners: 3/8 of (8, 0, 0), 1/8 of (0, 8, 0), half of (2, 2, 16).
    ExpectSameBits(SquareToTriangle(Square<T>(T{0.5}, T{0.25}), Direction<T>(8, 0, 0), Direction<T>(0, 8, 0),
                                    Direction<T>(2, 2, 16)),
                   Direction<T>(4, 2, 8));
}

TYPED_TEST(SamplingTest, BarycentricCoordinatesAreNeverNegativeAndSumToOne)
{
    using T = TypeParam;
    Random random(2);
    for (int i = 0; i < 20000; ++i)
    {
        Direction<T> const weights = SquareToTriangle(AnySquare<T>(random));
        EXPECT_TRUE(weights.x >= T{0} && weights.y >= T{0} && weights.z > T{0});
        EXPECT_NEAR(static_cast<double>(weights.x + weights.y + weights.z), 1, static_cast<double>(EPSILON<T>));
    }
}

TYPED_TEST(SamplingTest, TheSphereIsFilledFromPoleToPole)
{
    using T = TypeParam;
    auto const map = [](T x, T y) { return SquareToSphere(Square<T>(x, y)); };
    ExpectSameBits(map(0, T{0.375}).z, T{1});
    ExpectNear(map(0, T{0.375}), 0, 0, 1, 0);
    ExpectSameBits(map(T{0.5}, 0), Direction<T>(1, 0, 0));
    ExpectNear(map(T{0.5}, T{0.25}), 0, 1, 0, 0);
    ExpectNear(map(T{0.5}, T{0.5}), -1, 0, 0, 0);
    ExpectNear(map(T{0.5}, T{0.75}), 0, -1, 0, 0);
    // z = 1 - 2/4, and the radius is sqrt(3) / 2.
    ExpectNear(map(T{0.25}, T{0.125}), std::sqrt(3.0L) / 2 * std::sqrt(0.5L), std::sqrt(3.0L) / 2 * std::sqrt(0.5L),
               0.5L, 1);

    Random random(3);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        Long const z = 1 - 2 * static_cast<Long>(square.x);
        Long const radius = std::sqrt(std::max(0.0L, 1 - z * z));
        Long const angle = 2 * LONG_PI * static_cast<Long>(square.y);
        ExpectNear(map(square.x, square.y), radius * std::cos(angle), radius * std::sin(angle), z, 2);
    }
}

TYPED_TEST(SamplingTest, HemispheresAndConesAreTheDiscLifted)
{
    using T = TypeParam;
    Random random(4);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        auto const [radius, angle] = Concentric(square);
        auto const expect = [angle = angle](Direction<T> const& direction, Long z, bool isLeft)
        {
            Long const length = (isLeft ? -1 : 1) * std::sqrt(std::max(0.0L, (1 - z) * (1 + z)));
            ExpectNear(direction, length * std::cos(angle), length * std::sin(angle), z, 4);
        };
        bool const isLeft = radius < 0;
        Long const share = radius * radius; // of the area of the disc, or of the cap, that lies within the radius
        expect(SquareToHemisphere(square), 1 - share, isLeft);
        expect(SquareToCosineHemisphere(square), std::sqrt(1 - share), isLeft);
        for (T const cosine : {T{-1}, T{-0.75}, T{0}, T(0.3), T(0.999)})
            expect(SquareToCone(square, cosine), 1 - share * (1 - static_cast<Long>(cosine)), isLeft);
    }
}

TYPED_TEST(SamplingTest, TheEdgesOfTheSquareAreTheHorizonAndTheRim)
{
    using T = TypeParam;
    Square<T> const middle(T{0.5}, T{0.5});
    ExpectSameBits(SquareToHemisphere(middle), Direction<T>(0, 0, 1));
    ExpectSameBits(SquareToCosineHemisphere(middle), Direction<T>(0, 0, 1));
    ExpectSameBits(SquareToCone(middle, 0.25), Direction<T>(0, 0, 1));
    for (T const x : {T{0}, T{0.125}, T{0.5}, T{0.75}})
    {
        ExpectSameBits(SquareToHemisphere(Square<T>(x, 0)).z, T{0});
        ExpectSameBits(SquareToCosineHemisphere(Square<T>(0, x)).z, T{0});
        ExpectSameBits(SquareToCone(Square<T>(0, x), 0.25).z, T{0.25});
        ExpectSameBits(SquareToCone(Square<T>(x, 0), T(-0.9)).z, T(-0.9));
    }
}

TYPED_TEST(SamplingTest, ResultsAreOfUnitLength)
{
    using T = TypeParam;
    Random random(5);
    auto const expectUnit = [](Direction<T> const& direction, double units)
    { EXPECT_NEAR(static_cast<double>(direction.Length()), 1, units * static_cast<double>(EPSILON<T>)); };
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        Direction<T> const normal = AnyNormal<T>(random);
        expectUnit(SquareToSphere(square), 3);
        expectUnit(SquareToHemisphere(square), 3);
        expectUnit(SquareToCosineHemisphere(square), 3);
        expectUnit(SquareToCone(square, -0.5), 3);
        expectUnit(SquareToHemisphere(square, normal), 5);
        expectUnit(SquareToCosineHemisphere(square, normal), 5);
        expectUnit(SquareToCone(square, normal, 0.5), 5);
    }
}

TYPED_TEST(SamplingTest, ANormalTakesThePlaceOfTheZAxis)
{
    using T = TypeParam;
    Square<T> const square(T(0.3), T(0.9));
    auto const expectSame = [](Direction<T> const& a, Direction<T> const& b)
    { ExpectNear(a, static_cast<Long>(b.x), static_cast<Long>(b.y), static_cast<Long>(b.z), 0); };
    expectSame(SquareToHemisphere(square, Direction<T>(0, 0, 1)), SquareToHemisphere(square));
    expectSame(SquareToCosineHemisphere(square, Direction<T>(0, 0, 1)), SquareToCosineHemisphere(square));
    expectSame(SquareToCone(square, Direction<T>(0, 0, 1), 0.5), SquareToCone(square, 0.5));
    // Around -z the tangents are (1, 0, 0) and (0, -1, 0), so that the frame stays right-handed.
    Direction<T> const up = SquareToHemisphere(square);
    expectSame(SquareToHemisphere(square, Direction<T>(0, 0, -1)), Direction<T>(up.x, -up.y, -up.z));

    Random random(6);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const first = AnySquare<T>(random);
        Square<T> const second = AnySquare<T>(random);
        Direction<T> const normal = AnyNormal<T>(random);
        double const bound = 6 * static_cast<double>(EPSILON<T>);
        Direction<T> const plainFirst = SquareToHemisphere(first);
        Direction<T> const plainSecond = SquareToCosineHemisphere(second);
        Direction<T> const turnedFirst = SquareToHemisphere(first, normal);
        Direction<T> const turnedSecond = SquareToCosineHemisphere(second, normal);
        EXPECT_NEAR(turnedFirst.Dot(normal), plainFirst.z, bound);
        EXPECT_NEAR(turnedSecond.Dot(normal), plainSecond.z, bound);
        EXPECT_NEAR(turnedFirst.Dot(turnedSecond), plainFirst.Dot(plainSecond), bound);
        EXPECT_NEAR(turnedFirst.Cross(turnedSecond).Dot(normal), plainFirst.Cross(plainSecond).z, bound);
    }
}

TYPED_TEST(SamplingTest, InversesGiveThePointOfTheSquareBack)
{
    using T = TypeParam;
    Random random(7);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        SCOPED_TRACE(testing::Message() << square.x << ", " << square.y);
        Direction<T> const normal = AnyNormal<T>(random);
        ExpectNearSquare(DiscToSquare(SquareToDisc(square)), square, 2);
        ExpectNearSquare(TriangleToSquare(SquareToTriangle(square)), square, 1);
        ExpectNearSquare(HemisphereToSquare(SquareToHemisphere(square)), square, 2);
        ExpectNearSquare(CosineHemisphereToSquare(SquareToCosineHemisphere(square)), square, 2);
        ExpectNearSquare(HemisphereToSquare(SquareToHemisphere(square, normal), normal), square, 4);
        ExpectNearSquare(CosineHemisphereToSquare(SquareToCosineHemisphere(square, normal), normal), square, 4);
        for (T const cosine : {T{-0.75}, T{0}, T(0.3), T(0.999)})
            ExpectNearSquare(ConeToSquare(SquareToCone(square, cosine), cosine), square, 2);
        ExpectNearSquare(ConeToSquare(SquareToCone(square, normal, 0.5), normal, 0.5), square, 8);
        // At the pole every y is the same direction.
        Square<T> const ofPole(square.x, square.x == T{0} ? T{0} : square.y);
        ExpectNearSquare(SphereToSquare(SquareToSphere(square)), ofPole, 2);
    }
}

TYPED_TEST(SamplingTest, InversesKeepTheirDigitsFarFromTheAxis)
{
    using T = TypeParam;
    Square<T> const nearEdge(T(6.1095e-5), T(0.06365));
    ExpectNearSquare(ConeToSquare(SquareToCone(nearEdge, -1), -1), nearEdge, 2);

    Random random(31);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        SCOPED_TRACE(testing::Message() << square.x << ", " << square.y);
        Direction<T> const normal = AnyNormal<T>(random);
        auto const isOnEdge = [](Square<T> const& s)
        { return s.x <= 0 || s.y <= 0 || s.x >= TestFixture::LAST || s.y >= TestFixture::LAST; };
        // All of the edge is one direction, of which any of its points may come back.
        Square<T> const back = ConeToSquare(SquareToCone(square, -1), -1);
        if (isOnEdge(square))
            EXPECT_TRUE(isOnEdge(back));
        else
            ExpectNearSquare(back, square, 2);
        EXPECT_TRUE(isOnEdge(HemisphereToSquare(-normal, normal)));
        Square<T> const turned = ConeToSquare(SquareToCone(square, normal, -1), normal, -1);
        EXPECT_TRUE(turned.x >= T{0} && turned.x < T{1} && turned.y >= T{0} && turned.y < T{1});
    }
}

TYPED_TEST(SamplingTest, AnglesAreCountedFromTheXAxisAllAround)
{
    using T = TypeParam;
    auto const turns = [](T x, T y) { return SphereToSquare(Direction<T>(x, y, 0)).y; };
    EXPECT_EQ(turns(1, 0), T{0});
    EXPECT_EQ(turns(1, -T{0}), T{0});
    EXPECT_EQ(turns(1, 1), T{0.125});
    EXPECT_EQ(turns(0, 1), T{0.25});
    EXPECT_EQ(turns(-1, 1), T{0.375});
    EXPECT_EQ(turns(-1, 0), T{0.5});
    EXPECT_EQ(turns(-1, -1), T{0.625});
    EXPECT_EQ(turns(0, -1), T{0.75});
    EXPECT_EQ(turns(1, -1), T{0.875});
    EXPECT_EQ(turns(1, -TINY<T>), this->LAST); // 1 itself is no point of the square
    EXPECT_EQ(SphereToSquare(Direction<T>(0, 0, 1)).y, T{0});
    EXPECT_EQ(SphereToSquare(Direction<T>(0, 0, 1)).x, T{0});
    EXPECT_EQ(SphereToSquare(Direction<T>(0, 0, -1)).x, this->LAST);

    Random random(8);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const point = random.Vector<Square<T>>(-1, 1);
        Long angle = std::atan2(static_cast<Long>(point.y), static_cast<Long>(point.x)) / (2 * LONG_PI);
        angle = angle < 0 ? angle + 1 : angle;
        EXPECT_LE(std::abs(static_cast<Long>(turns(point.x, point.y)) - angle), static_cast<Long>(2 * EPSILON<T>));
    }
}

TYPED_TEST(SamplingTest, InversesOfWhatLiesOutsideAreOnTheEdgeOfTheSquare)
{
    using T = TypeParam;
    ExpectSameBits(DiscToSquare(Square<T>(5, 0)), Square<T>(this->LAST, T{0.5}));
    ExpectSameBits(DiscToSquare(Square<T>(0, -5)), Square<T>(T{0.5}, 0));
    ExpectSameBits(DiscToSquare(Square<T>(-7, 7)), Square<T>(0, this->LAST));
    ExpectSameBits(DiscToSquare(Square<T>(LARGEST<T>, T{1})), Square<T>(this->LAST, T{0.5}));
    ExpectSameBits(DiscToSquare(Square<T>(-INF<T>, T{1})), Square<T>(0, T{0.5}));
    ExpectSameBits(DiscToSquare(Square<T>(0, 0)), Square<T>(T{0.5}, T{0.5}));
    ExpectSameBits(DiscToSquare(Square<T>(TINY<T>, TINY<T>)), Square<T>(T{0.5}, T{0.5}));
    ExpectSameBits(TriangleToSquare(Direction<T>(2, 0, -1)), Square<T>(this->LAST, 0));
    ExpectSameBits(TriangleToSquare(Direction<T>(-1, -2, 4)), Square<T>(0, 0));
    Square<T> const below = HemisphereToSquare(Direction<T>(T(0.6), 0, T(-0.8)));
    ExpectSameBits(below, Square<T>(this->LAST, T{0.5}));
    ExpectSameBits(ConeToSquare(Direction<T>(0, T(0.8), T(0.6)), T(0.9)), Square<T>(T{0.5}, this->LAST));
    for (T const z : {T{-1}, std::nextafter(T{-1}, T{-2})}) // below -1 by rounding
    {
        ExpectSameBits(HemisphereToSquare(Direction<T>(0, 0, z)), Square<T>(T{0.5}, this->LAST));
        ExpectSameBits(HemisphereToSquare(Direction<T>(0, -T{0}, z)), Square<T>(T{0.5}, 0));
        ExpectSameBits(HemisphereToSquare(Direction<T>(TINY<T>, 0, z)), Square<T>(this->LAST, T{0.5}));
        ExpectSameBits(ConeToSquare(Direction<T>(0, 0, z), T{0.5}), Square<T>(T{0.5}, this->LAST));
        ExpectSameBits(ConeToSquare(Direction<T>(0, -T{0}, z), T{-1}), Square<T>(T{0.5}, 0));
    }
    // On the edge y = 1 where the angle from the y axis, the arc tangent of 1/2, is its share of 45 degrees.
    Long const share = std::atan(0.5L) / (LONG_PI / 4);
    Square<T> const nearPole = HemisphereToSquare(Direction<T>(T(1e-4), T(2e-4), T{-1}));
    ExpectNear(nearPole, share / 2 + 0.5L, 1, 0, 1);
    // Below the horizon, the cosine's inverse sees the mirror image.
    ExpectSameBits(CosineHemisphereToSquare(Direction<T>(T(0.6), 0, T(-0.8))),
                   CosineHemisphereToSquare(Direction<T>(T(0.6), 0, T(0.8))));
}

TYPED_TEST(SamplingTest, NaNGivesNaN)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    Direction<T> const normal(0, 0, 1);
    for (Square<T> const& square : {Square<T>(nan, T{0.25}), Square<T>(T{0.25}, nan), Square<T>(nan, nan)})
    {
        EXPECT_TRUE(IsAllNaN(SquareToDisc(square)));
        EXPECT_TRUE(std::isnan(SquareToTriangle(square).x));
        EXPECT_TRUE(std::isnan(SquareToSphere(square).x));
        EXPECT_TRUE(std::isnan(SquareToHemisphere(square).x));
        EXPECT_TRUE(std::isnan(SquareToCosineHemisphere(square).x));
        EXPECT_TRUE(std::isnan(SquareToCone(square, 0.5).x));
        EXPECT_TRUE(IsAllNaN(SquareToHemisphere(square, normal)));
        EXPECT_TRUE(IsAllNaN(SquareToCosineHemisphere(square, normal)));
        EXPECT_TRUE(IsAllNaN(SquareToCone(square, normal, 0.5)));
        EXPECT_TRUE(IsAllNaN(DiscToSquare(square)));
    }
    EXPECT_TRUE(std::isnan(DiscToSquare(Square<T>(INF<T>, -INF<T>)).x));
    EXPECT_TRUE(std::isnan(TriangleToSquare(Direction<T>(nan, 0, 0)).x));
    EXPECT_TRUE(std::isnan(SphereToSquare(Direction<T>(0, 0, nan)).x));
    EXPECT_TRUE(std::isnan(SphereToSquare(Direction<T>(nan, 0, 1)).y));
    EXPECT_TRUE(std::isnan(SphereToSquare(Direction<T>(1, nan, 0)).y));
    for (Direction<T> const& direction : {Direction<T>(T{0.5}, T{0.5}, nan), Direction<T>(nan, 0, T{0.5}),
                                          Direction<T>(0, nan, T{-0.5}), Direction<T>(nan, 0, T{-0.5})})
    {
        EXPECT_TRUE(IsAllNaN(HemisphereToSquare(direction)));
        EXPECT_TRUE(IsAllNaN(ConeToSquare(direction, T{-1})));
    }
}

TYPED_TEST(SamplingTest, DensitiesAreConstantsInsideAndZeroOutside)
{
    using T = TypeParam;
    T const pi = PI<T>;
    T const eps = EPSILON<T>;
    T const nan = QUIET_NAN<T>;
    auto const expect = [](T actual, T expected)
    { EXPECT_NEAR(actual, expected, static_cast<double>(expected * EPSILON<T>)); };
    Direction<T> const x(1, 0, 0), z(0, 0, 1);

    expect(GetDiscDensity(Square<T>(0, 0)), 1 / pi);
    expect(GetDiscDensity(Square<T>(0, -1)), 1 / pi);
    expect(GetDiscDensity(Square<T>(T{1} + eps, 0)), 1 / pi); // 2 units above 1 when it is squared
    EXPECT_EQ(GetDiscDensity(Square<T>(T{1} + 4 * eps, 0)), T{0});
    EXPECT_EQ(GetDiscDensity(Square<T>(T(0.8), T(0.8))), T{0});
    EXPECT_EQ(GetDiscDensity(Square<T>(nan, 0)), T{0});

    // A triangle of sides 3 and 4 at a right angle, and one without area.
    expect(GetTriangleDensity(Direction<T>(1, 1, 1), Direction<T>(4, 1, 1), Direction<T>(1, 1, 5)), T{1} / T{6});
    EXPECT_EQ(GetTriangleDensity(x, x * T{2}, x * T{3}), INF<T>);

    expect(GetSphereDensity<T>(), 1 / (4 * pi));

    expect(GetHemisphereDensity(z), 1 / (2 * pi));
    expect(GetHemisphereDensity(x), 1 / (2 * pi));
    EXPECT_EQ(GetHemisphereDensity(Direction<T>(1, 0, -TINY<T>)), T{0});
    EXPECT_EQ(GetHemisphereDensity(Direction<T>(1, 0, nan)), T{0});
    expect(GetHemisphereDensity(z, x), 1 / (2 * pi));
    expect(GetHemisphereDensity(Direction<T>(-4 * eps, 0, 1), x), 1 / (2 * pi));
    EXPECT_EQ(GetHemisphereDensity(Direction<T>(-5 * eps, 0, 1), x), T{0});
    EXPECT_EQ(GetHemisphereDensity(-x, x), T{0});
    EXPECT_EQ(GetHemisphereDensity(z * nan, x), T{0});

    expect(GetCosineHemisphereDensity(z), 1 / pi);
    expect(GetCosineHemisphereDensity(Direction<T>(T(0.8), 0, T(0.6))), T(0.6) / pi);
    EXPECT_EQ(GetCosineHemisphereDensity(x), T{0});
    EXPECT_EQ(GetCosineHemisphereDensity(-z), T{0});
    EXPECT_EQ(GetCosineHemisphereDensity(z * nan), T{0});
    expect(GetCosineHemisphereDensity(Direction<T>(T(0.8), 0, T(0.6)), x), T(0.8) / pi);
    EXPECT_EQ(GetCosineHemisphereDensity(-x, x), T{0});
    EXPECT_EQ(GetCosineHemisphereDensity(x * nan, x), T{0});

    // Caps of height 1/2, 1 and 2.
    expect(GetConeDensity(z, T{0.5}), 1 / pi);
    expect(GetConeDensity(Direction<T>(0, T(0.8), T(0.6)), T(0.6)), 1 / (2 * pi * (T{1} - T(0.6))));
    EXPECT_EQ(GetConeDensity(Direction<T>(0, T(0.8), T(0.6)), std::nextafter(T(0.6), T{1})), T{0});
    EXPECT_EQ(GetConeDensity(z * nan, 0), T{0});
    expect(GetConeDensity(x, 0), GetHemisphereDensity(x));
    expect(GetConeDensity(-z, -1), GetSphereDensity<T>());
    expect(GetConeDensity(x, x, T{0.5}), 1 / pi);
    expect(GetConeDensity(Direction<T>(T{0.5} - 4 * eps, 0, T(0.86)), x, 0.5), 1 / pi);
    EXPECT_EQ(GetConeDensity(Direction<T>(T{0.5} - 5 * eps, 0, T(0.86)), x, 0.5), T{0});
    EXPECT_EQ(GetConeDensity(z, x, T{0.5}), T{0});
}

TYPED_TEST(SamplingTest, EverySampleHasADensity)
{
    using T = TypeParam;
    Random random(9);
    for (int i = 0; i < 20000; ++i)
    {
        Square<T> const square = AnySquare<T>(random);
        SCOPED_TRACE(testing::Message() << square.x << ", " << square.y);
        Direction<T> const normal = AnyNormal<T>(random);
        T const cosine = random.Number<T>(-1, T(0.9999));
        EXPECT_GT(GetDiscDensity(SquareToDisc(square)), T{0});
        EXPECT_GT(GetHemisphereDensity(SquareToHemisphere(square)), T{0});
        EXPECT_GT(GetHemisphereDensity(SquareToHemisphere(square, normal), normal), T{0});
        EXPECT_GT(GetConeDensity(SquareToCone(square, cosine), cosine), T{0});
        EXPECT_GT(GetConeDensity(SquareToCone(square, normal, cosine), normal, cosine), T{0});
        EXPECT_EQ(GetCosineHemisphereDensity(SquareToCosineHemisphere(square)) > T{0},
                  square.x > T{0} && square.y > T{0});
    }
}

/// The integral of a density over all directions: the sum over cells of equal solid angle, so many by so many.
template <typename T, typename Density>
double OverSphere(int count, Density density)
{
    double sum = 0;
    for (int i = 0; i < count; ++i)
        for (int k = 0; k < count; ++k)
        {
            double const z = -1 + (2 * i + 1.0) / count;
            double const angle = 2 * std::numbers::pi * (k + 0.5) / count;
            double const radius = std::sqrt(1 - z * z);
            sum +=
                static_cast<double>(density(Direction<T>(static_cast<T>(radius * std::cos(angle)),
                                                         static_cast<T>(radius * std::sin(angle)), static_cast<T>(z))));
        }
    return sum * 4 * std::numbers::pi / count / count;
}

TYPED_TEST(SamplingTest, DensitiesIntegrateToOne)
{
    using T = TypeParam;
    using Vector = Direction<T>;
    constexpr int COUNT = 400;
    double sum = 0;
    for (int i = 0; i < COUNT; ++i)
        for (int k = 0; k < COUNT; ++k)
            sum += static_cast<double>(GetDiscDensity(
                Square<T>(static_cast<T>(-1 + (2 * i + 1.0) / COUNT), static_cast<T>(-1 + (2 * k + 1.0) / COUNT))));
    EXPECT_NEAR(sum * 4 / COUNT / COUNT, 1, 1e-3); // cells on the circle count whole or not at all

    // The limits are those between rings of cells, and what is integrated is linear in z: exact but for rounding.
    EXPECT_NEAR(OverSphere<T>(COUNT, [](Vector const&) { return GetSphereDensity<T>(); }), 1, 1e-5);
    EXPECT_NEAR(OverSphere<T>(COUNT, [](Vector const& d) { return GetHemisphereDensity(d); }), 1, 1e-5);
    EXPECT_NEAR(OverSphere<T>(COUNT, [](Vector const& d) { return GetCosineHemisphereDensity(d); }), 1, 1e-5);
    EXPECT_NEAR(OverSphere<T>(COUNT, [](Vector const& d) { return GetConeDensity(d, T{0.75}); }), 1, 1e-5);
    EXPECT_NEAR(OverSphere<T>(COUNT, [](Vector const& d) { return GetConeDensity(d, T{-0.5}); }), 1, 1e-5);

    // Around another axis the rim cuts the cells.
    Vector const axis = Vector(1, -2, T{0.5}).Normalised();
    EXPECT_NEAR(OverSphere<T>(COUNT, [=](Vector const& d) { return GetHemisphereDensity(d, axis); }), 1, 1e-3);
    EXPECT_NEAR(OverSphere<T>(COUNT, [=](Vector const& d) { return GetCosineHemisphereDensity(d, axis); }), 1, 1e-3);
    EXPECT_NEAR(OverSphere<T>(COUNT, [=](Vector const& d) { return GetConeDensity(d, axis, T(0.6)); }), 1, 2e-3);
}

/// Counts for a test whether samples have the distribution that their density says: in cells of equal probability.
class Cells
{
    static constexpr std::size_t RINGS = 16;
    static constexpr std::size_t SECTORS = 16;
    std::vector<unsigned int> counts = std::vector<unsigned int>(RINGS * SECTORS);
    unsigned int total = 0;

public:
    static constexpr int SAMPLES = 40000;

    /// By the share of the probability that lies within the sample's ring, and by its angle.
    void Add(double share, double y, double x)
    {
        double const turn = std::atan2(y, x) / (2 * std::numbers::pi) + 0.5;
        AddCell(std::min(static_cast<std::size_t>(share * RINGS), RINGS - 1) * SECTORS +
                std::min(static_cast<std::size_t>(turn * SECTORS), SECTORS - 1));
    }
    void AddCell(std::size_t cell)
    {
        ++counts.at(cell);
        ++total;
    }
    /// The sum of (count - expected)^2 / expected has a mean of f = 255, one less than there are cells, and a standard
    /// deviation of sqrt(2 f): here it lies within four of them.
    void ExpectEven() const
    {
        double const expected = static_cast<double>(total) / static_cast<double>(counts.size());
        double sum = 0;
        for (unsigned int const count : counts)
            sum += (count - expected) * (count - expected) / expected;
        double const freedom = static_cast<double>(counts.size()) - 1;
        EXPECT_NEAR(sum, freedom, 4 * std::sqrt(2 * freedom));
    }
};

/// Samples of a map in cells around an axis; `share` tells from a cosine how much of the probability lies above it.
template <typename T, typename Map, typename Share>
void ExpectDistribution(unsigned int seed, Map map, Share share)
{
    Random random(seed);
    Cells cells;
    for (int i = 0; i < Cells::SAMPLES; ++i)
    {
        Direction<T> const direction = map(random.Vector<Square<T>>(0, SamplingTest<T>::LAST));
        cells.Add(std::clamp(share(static_cast<double>(direction.z)), 0.0, 1.0), static_cast<double>(direction.y),
                  static_cast<double>(direction.x));
    }
    cells.ExpectEven();
}

TYPED_TEST(SamplingTest, SamplesHaveTheDistributionOfTheirDensity)
{
    using T = TypeParam;
    using S = Square<T>;
    ExpectDistribution<T>(
        20, [](S const& s) { return SquareToSphere(s); }, [](double z) { return (1 - z) / 2; });
    ExpectDistribution<T>(
        21, [](S const& s) { return SquareToHemisphere(s); }, [](double z) { return 1 - z; });
    ExpectDistribution<T>(
        22, [](S const& s) { return SquareToCosineHemisphere(s); }, [](double z) { return 1 - z * z; });
    ExpectDistribution<T>(
        23, [](S const& s) { return SquareToCone(s, -0.75); }, [](double z) { return (1 - z) / 1.75; });
    ExpectDistribution<T>(
        24, [](S const& s) { return SquareToCone(s, 0.875); }, [](double z) { return (1 - z) / 0.125; });

    // Around (0.6, 0, 0.8): turned back by hand, to coordinates along (0.8, 0, -0.6), (0, 1, 0) and the normal.
    auto const back = [](Direction<T> const& d)
    { return Direction<T>(T(0.8) * d.x - T(0.6) * d.z, d.y, T(0.6) * d.x + T(0.8) * d.z); };
    Direction<T> const normal(T(0.6), 0, T(0.8));
    ExpectDistribution<T>(
        25, [=](S const& s) { return back(SquareToHemisphere(s, normal)); }, [](double z) { return 1 - z; });
    ExpectDistribution<T>(
        26, [=](S const& s) { return back(SquareToCosineHemisphere(s, normal)); }, [](double z) { return 1 - z * z; });
    ExpectDistribution<T>(
        27, [=](S const& s) { return back(SquareToCone(s, normal, 0.5)); }, [](double z) { return (1 - z) / 0.5; });
}

TYPED_TEST(SamplingTest, DiscsAndTrianglesAreFilledEvenly)
{
    using T = TypeParam;
    Random random(28);
    Cells ofDisc;
    Cells ofTriangle;
    for (int i = 0; i < Cells::SAMPLES; ++i)
    {
        Square<T> const square = random.Vector<Square<T>>(0, SamplingTest<T>::LAST);
        Square<T> const point = SquareToDisc(square);
        ofDisc.Add(std::min(1.0, static_cast<double>(point.LengthSquared())), static_cast<double>(point.y),
                   static_cast<double>(point.x));
        // 16 times 16 triangles of equal size, half of them upside down: row i holds 2 i + 1, so i^2 lie before it.
        Direction<T> const weights = SquareToTriangle(square);
        auto const row = static_cast<std::size_t>(T{16} * (T{1} - weights.z));
        auto const a = static_cast<std::size_t>(T{16} * weights.x);
        auto const b = static_cast<std::size_t>(T{16} * weights.y);
        ofTriangle.AddCell(std::min<std::size_t>(row * row + 2 * a + (row - std::min(row, a + b)), 255));
    }
    ofDisc.ExpectEven();
    ofTriangle.ExpectEven();
}

TYPED_TEST(SamplingTest, ArgumentsThatAreScalarsConvert)
{
    using T = TypeParam;
    Square<T> const square(T{0.25}, T{0.5});
    EXPECT_TRUE((std::is_same_v<decltype(SquareToCone(square, 0.5)), Direction<T>>));
    EXPECT_TRUE((std::is_same_v<decltype(GetConeDensity(Direction<T>(0, 0, 1), 0)), T>));
    ExpectSameBits(SquareToCone(square, 0.5), SquareToCone(square, T{0.5}));
}

} // namespace
