#include "bv/maths/Direction.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/LocalAxes.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "values/DirectionValues.h"

namespace
{

using bv::maths::Distance;
using bv::maths::DistanceSquared;
using bv::maths::EvaluateOrthonormalBasis;
using bv::maths::FaceForward;
using bv::maths::GetAngle;
using bv::maths::Orthonormalise;
using bv::maths::Project;
using bv::maths::Reflect;
using bv::maths::Refract;
using bv::maths::Reject;
using bv::maths::tVector2;
using bv::maths::tVector3;
using bv::test::EPSILON;
using bv::test::ExpectSameBits;
using bv::test::FromBits;
using bv::test::INF;
using bv::test::IsNaN;
using bv::test::LARGEST;
using bv::test::Pattern;
using bv::test::PI;
using bv::test::QUIET_NAN;
using bv::test::Random;
using bv::test::SPECIAL_VALUES;
using bv::test::TINY;

template <typename T>
class DirectionTest : public testing::Test
{
};

TYPED_TEST_SUITE(DirectionTest, bv::test::Precisions);

template <typename T>
tVector3<T> FromBitsOf(Pattern<T> const (&bits)[3])
{
    return {FromBits<T>(bits[0]), FromBits<T>(bits[1]), FromBits<T>(bits[2])};
}

template <typename V>
using Element = std::remove_cvref_t<decltype(V::x)>;

/// Random vectors of some length, and unit vectors.
template <typename V>
V RandomVector(Random& random)
{
    return random.Vector<V>(-4, 4);
}
template <typename V>
V RandomUnit(Random& random)
{
    V vector = RandomVector<V>(random);
    while (!(vector.LengthSquared() > Element<V>(0.01)))
        vector = RandomVector<V>(random);
    return vector.Normalised();
}

/// Both kinds of vectors, many times.
template <typename T, typename Function>
void ForManyVectors(Function function)
{
    Random random(1);
    for (int i = 0; i < 5000; ++i)
    {
        function(tVector2<T>(), random);
        function(tVector3<T>(), random);
    }
}

template <typename V>
void ExpectNear(V const& actual, V const& expected, Element<V> tolerance)
{
    V const difference = actual - expected;
    EXPECT_LE(std::abs(difference.x), tolerance);
    EXPECT_LE(std::abs(difference.y), tolerance);
    if constexpr (requires { difference.z; })
    {
        EXPECT_LE(std::abs(difference.z), tolerance);
    }
}

TYPED_TEST(DirectionTest, DistanceIsTheLengthOfTheDifference)
{
    using T = TypeParam;
    EXPECT_EQ(Distance(tVector3<T>(1, 2, 3), tVector3<T>(3, 5, 9)), T{7}); // 2, 3, 6
    EXPECT_EQ(DistanceSquared(tVector3<T>(1, 2, 3), tVector3<T>(3, 5, 9)), T{49});
    EXPECT_EQ(Distance(tVector2<T>(1, 2), tVector2<T>(-2, 6)), T{5}); // 3, 4
    EXPECT_EQ(DistanceSquared(tVector2<T>(1, 2), {-2, 6}), T{25});
    static_assert(DistanceSquared(tVector2<T>(1, 2), {-2, 6}) == T{25});
    ForManyVectors<T>(
        [](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const a = RandomVector<V>(random);
            V const b = RandomVector<V>(random);
            T sum = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
            if constexpr (requires { a.z; })
                sum = sum + (b.z - a.z) * (b.z - a.z);
            ExpectSameBits(DistanceSquared(a, b), sum);
            ExpectSameBits(DistanceSquared(b, a), sum);
            ExpectSameBits(Distance(a, b), std::sqrt(sum));
        });
}

TYPED_TEST(DirectionTest, DistancesOverflowAndUnderflowWithTheirSquares)
{
    using T = TypeParam;
    EXPECT_EQ(Distance(tVector2<T>(LARGEST<T> / 4, 0), tVector2<T>(0, 0)), INF<T>);
    EXPECT_EQ(Distance(tVector2<T>(TINY<T>, 0), tVector2<T>(0, 0)), T{0});
    EXPECT_EQ(Distance(tVector2<T>(INF<T>, 0), tVector2<T>(0, 1)), INF<T>);
    EXPECT_TRUE(IsNaN(Distance(tVector2<T>(INF<T>, 0), tVector2<T>(INF<T>, 1))));
    EXPECT_TRUE(IsNaN(DistanceSquared(tVector3<T>(QUIET_NAN<T>, 0, 0), tVector3<T>())));
}

TYPED_TEST(DirectionTest, AngleIsWithinAFewRoundingsOfTheExactOne)
{
    using T = TypeParam;
    auto const check = [](auto const& values)
    {
        for (auto const& value : values)
        {
            tVector3<T> const a = FromBitsOf<T>(value.a);
            tVector3<T> const b = FromBitsOf<T>(value.b);
            double const exact = FromBits<double>(value.angle);
            // A length is at most 2 epsilons off its exact value, which makes up to 4 between the two unit vectors, and
            // each component of these half an epsilon more. The arc tangent is off by a part of the angle.
            double const bound = static_cast<double>(EPSILON<T>) * (6 + 2 * exact);
            EXPECT_NEAR(static_cast<double>(GetAngle(a, b)), exact, bound) << a << " and " << b;
            EXPECT_NEAR(static_cast<double>(GetAngle(b, a)), exact, bound) << b << " and " << a;
            if (a.z == T{0} && b.z == T{0})
            {
                EXPECT_NEAR(static_cast<double>(GetAngle(tVector2<T>(a.x, a.y), tVector2<T>(b.x, b.y))), exact, bound);
            }
        }
    };
    if constexpr (std::is_same_v<T, float>)
        check(bv::test::ANGLE_FLOAT);
    else
        check(bv::test::ANGLE_DOUBLE);
}

TYPED_TEST(DirectionTest, AngleIsExactBetweenTheSameAndOppositeVectors)
{
    using T = TypeParam;
    ForManyVectors<T>(
        [](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const a = RandomVector<V>(random);
            EXPECT_EQ(GetAngle(a, a), T{0});
            EXPECT_EQ(GetAngle(a, a * T{4}), T{0});
            EXPECT_EQ(GetAngle(a, -a), PI<T>);
        });
    EXPECT_NEAR(GetAngle(tVector2<T>(3, 0), tVector2<T>(0, 5)), PI<T> / 2, EPSILON<T> * 2);
}

TYPED_TEST(DirectionTest, AngleOfVectorsWithoutDirectionIsNaN)
{
    using T = TypeParam;
    tVector3<T> const a(1, 2, 3);
    for (T const length : {T(0), T(-0.0), INF<T>, QUIET_NAN<T>})
    {
        EXPECT_TRUE(IsNaN(GetAngle(a, tVector3<T>(length, 0, 0)))) << length;
        EXPECT_TRUE(IsNaN(GetAngle(tVector3<T>(length, 0, 0), a))) << length;
        EXPECT_TRUE(IsNaN(GetAngle(tVector2<T>(length, 0), tVector2<T>(1, 2)))) << length;
    }
}

TYPED_TEST(DirectionTest, ReflectTurnsThePartAlongTheNormalRound)
{
    using T = TypeParam;
    ExpectSameBits(Reflect(tVector3<T>(1, -2, 3), tVector3<T>(0, 1, 0)), tVector3<T>(1, 2, 3));
    ExpectSameBits(Reflect(tVector3<T>(1, -2, 3), {0, -1, 0}), tVector3<T>(1, 2, 3));
    ExpectSameBits(Reflect(tVector2<T>(1, -2), tVector2<T>(1, 0)), tVector2<T>(-1, -2));
    static_assert(Reflect(tVector2<T>(1, -2), tVector2<T>(1, 0)).x == T{-1});
    ForManyVectors<T>(
        [](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const vector = RandomVector<V>(random);
            V const normal = RandomUnit<V>(random);
            V const reflected = Reflect(vector, normal);
            T const twice = T{2} * vector.Dot(normal);
            ExpectSameBits(reflected, vector - normal * twice);
            ExpectSameBits(Reflect(vector, -normal), reflected);
            EXPECT_NEAR(reflected.Length(), vector.Length(), EPSILON<T> * 64);
            ExpectNear(Reflect(reflected, normal), vector, EPSILON<T> * 128);
        });
}

TYPED_TEST(DirectionTest, RefractFollowsSnellsLaw)
{
    using T = TypeParam;
    int total = 0;
    ForManyVectors<T>(
        [&](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const vector = RandomUnit<V>(random);
            V const normal = RandomUnit<V>(random);
            T const ratio = random.Number<T>(T(0.4), T(2.5));
            // The sine is the length of the part along the surface.
            V const along = vector - normal * vector.Dot(normal);
            T const sine = along.Length() * ratio;
            if (std::abs(sine - T{1}) < T(1e-3))
                return; // too near to the limit to tell
            std::optional<V> const refracted = Refract(vector, normal, ratio);
            ASSERT_EQ(refracted.has_value(), sine < T{1});
            if (!refracted)
            {
                ++total;
                return;
            }
            T const tolerance = EPSILON<T> * 1000; // the root of numbers near 1e-3
            EXPECT_NEAR(refracted->Length(), T{1}, tolerance);
            ExpectNear(*refracted - normal * refracted->Dot(normal), along * ratio, tolerance);
            EXPECT_GT(refracted->Dot(normal) * vector.Dot(normal), T{0}); // through the surface
            ExpectSameBits(*Refract(vector, -normal, ratio), *refracted);
        });
    EXPECT_GT(total, 1000);
}

TYPED_TEST(DirectionTest, RefractOfWhatFallsStraightOrIntoTheSameMediumGoesStraightOn)
{
    using T = TypeParam;
    ExpectSameBits(*Refract(tVector3<T>(0, 0, -1), tVector3<T>(0, 0, 1), 1.5), tVector3<T>(0, 0, -1));
    ExpectSameBits(*Refract(tVector3<T>(0, 0, -1), tVector3<T>(0, 0, -1), 0.25), tVector3<T>(0, 0, -1));
    // 3-4-5: the cosine is 0.8, the square 1 - (1 - 0.64), and its root the cosine again, to rounding.
    tVector2<T> const slanted(T(0.6), T(-0.8));
    ExpectNear(*Refract(slanted, tVector2<T>(0, 1), 1), slanted, EPSILON<T> * 4);
}

TYPED_TEST(DirectionTest, RefractHasItsLimitWhereTheSquareIsZero)
{
    using T = TypeParam;
    // Along the surface: the square is 1 - ratio * ratio, without a rounding for these.
    tVector2<T> const grazing(1, 0);
    tVector2<T> const normal(0, 1);
    ExpectSameBits(*Refract(grazing, normal, 1), tVector2<T>(1, 0));
    EXPECT_FALSE(Refract(grazing, normal, T{1} + EPSILON<T>));
    EXPECT_FALSE(Refract(grazing, normal, 2));
    std::optional<tVector2<T>> const into =
        Refract(grazing, normal, 0.5); // to the side that the normal points away from
    ASSERT_TRUE(into);
    ExpectSameBits(into->x, T{0.5});
    ExpectSameBits(into->y, -std::sqrt(T{0.75}));
    EXPECT_TRUE(IsNaN(Refract(grazing, normal, QUIET_NAN<T>)->x));
    EXPECT_TRUE(IsNaN(Refract(tVector2<T>(QUIET_NAN<T>, 0), normal, 1)->x));
}

TYPED_TEST(DirectionTest, FaceForwardTurnsRoundWhatPointsToTheOtherSide)
{
    using T = TypeParam;
    tVector3<T> const vector(1, T(-0.0), 3);
    ExpectSameBits(FaceForward(vector, tVector3<T>(1, 5, 0)), vector);
    ExpectSameBits(FaceForward(vector, {-1, 5, 0}), tVector3<T>(-1, 0, -3));
    ExpectSameBits(FaceForward(vector, tVector3<T>(0, 5, 0)), vector); // at right angles
    ExpectSameBits(FaceForward(vector, tVector3<T>()), vector);
    ExpectSameBits(FaceForward(vector, tVector3<T>(QUIET_NAN<T>, -1, -1)), vector);
    ExpectSameBits(FaceForward(tVector2<T>(0, 2), tVector2<T>(-INF<T>, -1)), tVector2<T>(0, 2)); // 0 * infinity is NaN
    ExpectSameBits(FaceForward(tVector2<T>(1, INF<T>), tVector2<T>(1, -1)), tVector2<T>(-1, -INF<T>));
    static_assert(FaceForward(tVector2<T>(1, 2), tVector2<T>(0, -1)).y == T{-2});
    ForManyVectors<T>(
        [](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const a = RandomVector<V>(random);
            V const side = RandomVector<V>(random);
            ExpectSameBits(FaceForward(a, side), a.Dot(side) < T{0} ? -a : a);
            EXPECT_GE(FaceForward(a, side).Dot(side), T{0});
        });
}

TYPED_TEST(DirectionTest, ProjectAndRejectTakeAVectorApart)
{
    using T = TypeParam;
    ExpectSameBits(Project(tVector3<T>(2, 3, 4), tVector3<T>(0, 0, 2)), tVector3<T>(0, 0, 4));
    ExpectSameBits(Reject(tVector3<T>(2, 3, 4), tVector3<T>(0, 0, 2)), tVector3<T>(2, 3, 0));
    ExpectSameBits(Project(tVector2<T>(2, 4), {3, 1}), tVector2<T>(3, 1)); // 10 / 10
    ExpectSameBits(Reject(tVector2<T>(2, 4), {3, 1}), tVector2<T>(-1, 3));
    static_assert(Project(tVector2<T>(2, 4), {3, 1}).x == T{3} && Reject(tVector2<T>(2, 4), {3, 1}).x == T{-1});
    EXPECT_TRUE(IsNaN(Project(tVector2<T>(2, 4), tVector2<T>()).x));
    EXPECT_TRUE(IsNaN(Reject(tVector2<T>(2, 4), tVector2<T>()).y));
    ForManyVectors<T>(
        [](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const vector = RandomVector<V>(random);
            V const onto = RandomUnit<V>(random) * T{3};
            V const part = Project(vector, onto);
            ExpectSameBits(part, onto * (vector.Dot(onto) / onto.Dot(onto)));
            ExpectSameBits(Reject(vector, onto), vector - part);
            EXPECT_NEAR(Reject(vector, onto).Dot(onto), T{0}, EPSILON<T> * 256);
            ExpectNear(part + Reject(vector, onto), vector, EPSILON<T> * 16);
        });
}

/// That vectors have length 1 and are at right angles, within some epsilons.
template <typename V>
void ExpectOrthonormal(std::span<V const> axes, Element<V> tolerance)
{
    for (V const& a : axes)
        for (V const& b : axes)
            EXPECT_NEAR(a.Dot(b), (&a == &b ? Element<V>{1} : Element<V>{0}), tolerance) << a << " and " << b;
}

TYPED_TEST(DirectionTest, OrthonormaliseMakesAxesThatKeepTheirSides)
{
    using T = TypeParam;
    ForManyVectors<T>(
        [](auto shape, Random& random)
        {
            using V = decltype(shape);
            V const vectors[] = {RandomVector<V>(random), RandomVector<V>(random), RandomVector<V>(random)};
            V axes[] = {vectors[0], vectors[1]};
            ASSERT_TRUE(Orthonormalise(axes[0], axes[1]));
            ExpectOrthonormal<V>(axes, EPSILON<T> * 4);
            ExpectSameBits(axes[0], vectors[0].Normalised());
            EXPECT_GT(axes[1].Dot(vectors[1]), T{0});
            if constexpr (requires { shape.z; })
            {
                EXPECT_NEAR(axes[0].Cross(axes[1]).Dot(vectors[1]), T{0}, EPSILON<T> * 512); // in the plane of the two
                V three[] = {vectors[0], vectors[1], vectors[2]};
                ASSERT_TRUE(Orthonormalise(three[0], three[1], three[2]));
                ExpectOrthonormal<V>(three, EPSILON<T> * 8);
                ExpectSameBits(three[0], axes[0]);
                ExpectSameBits(three[1], axes[1]);
                EXPECT_GT(three[2].Dot(vectors[2]), T{0});
            }
        });
}

TYPED_TEST(DirectionTest, OrthonormaliseIsAsExactForVectorsThatNearlyAgree)
{
    using T = TypeParam;
    Random random(2);
    for (int i = 0; i < 2000; ++i)
    {
        tVector3<T> const first = RandomVector<tVector3<T>>(random);
        T const sine = EPSILON<T> * std::ldexp(T{1}, random.Whole(8, 16));
        tVector3<T> axes[] = {first, first + RandomUnit<tVector3<T>>(random) * sine, RandomVector<tVector3<T>>(random)};
        if (!Orthonormalise(axes[0], axes[1], axes[2]))
            continue; // the difference of the two may lie along them
        ExpectOrthonormal<tVector3<T>>(axes, EPSILON<T> * 8);
    }
    // The second one is 64 epsilons off the first one's direction, by definition.
    tVector3<T> first(1, 1, 1);
    tVector3<T> second(T{1} + EPSILON<T> * 64, 1, 1);
    ASSERT_TRUE(Orthonormalise(first, second));
    ExpectNear(second, tVector3<T>(2, -1, -1) * (1 / std::sqrt(T{6})), T(0.05));
}

TYPED_TEST(DirectionTest, OrthonormaliseTakesTheLargestSquareOfAll)
{
    using T = TypeParam;
    using V = tVector3<T>;
    // 2^104 + (2^64 - 2^40)^2 is 2^128 - 2^104 when it is rounded, and 2^970 + 2^970 + (2^512 - 2^459)^2 is 2^1024 -
    // 2^971.
    V const longest = std::is_same_v<T, float> ? V(0, T(0x1p52), T(0x1p64 - 0x1p40))
                                               : V(T(0x1p485), T(0x1p485), T(0x1p512 - 0x1p459));
    ASSERT_EQ(longest.LengthSquared(), LARGEST<T>);
    V first = longest;
    V second(std::is_same_v<T, float> ? T(1) : T(-1), 1, 0);
    ASSERT_TRUE(Orthonormalise(first, second));
    ExpectOrthonormal<V>(std::array{first, second}, EPSILON<T> * 4);
}

TYPED_TEST(DirectionTest, OrthonormaliseLeavesAloneWhatSpansTooLittle)
{
    using T = TypeParam;
    using V = tVector3<T>;
    V const x(1, 0, 0);
    V const y(0, 2, 0);
    V const z(0, 0, 3);
    V const slanted(1, 1, 1);
    T const belowSquares = sizeof(T) == sizeof(float) ? T(1e-25) : T(1e-170); // its square underflows
    std::vector<std::array<V, 3>> const cases = {
        {V(), y, z},
        {x, V(), z},
        {x, y, V()},
        {x, x * T{5}, z},
        {x, x, z},
        {x, -x, z},
        {slanted, slanted * T{3}, z},
        {x, y, x + y},
        {slanted, V(1, 2, 3), V(2, 3, 4)},
        {V(QUIET_NAN<T>, 0, 0), y, z},
        {x, V(0, QUIET_NAN<T>, 0), z},
        {x, y, V(0, 0, QUIET_NAN<T>)},
        {V(INF<T>, 0, 0), y, z},
        {x, V(0, INF<T>, 0), z},
        {x, y, V(0, 0, INF<T>)},
        {V(LARGEST<T>, 0, 0), y, z},
        {x, V(0, LARGEST<T>, 0), z},
        {x, y, V(0, 0, LARGEST<T>)},
        {V(TINY<T>, 0, 0), y, z},
        {x, V(0, TINY<T>, 0), z},
        {x, y, V(0, 0, TINY<T>)},
        {x, y, V(0, 0, belowSquares)},
    };
    for (std::array<V, 3> const& given : cases)
    {
        std::array<V, 3> vectors = given;
        EXPECT_FALSE(Orthonormalise(vectors[0], vectors[1], vectors[2])) << given[0] << "; " << given[1];
        for (std::size_t i = 0; i < 3; ++i)
            ExpectSameBits(vectors[i], given[i]);
    }
    tVector2<T> same(1, 2);
    EXPECT_FALSE(Orthonormalise(same, same)); // one and the same object
    ExpectSameBits(same, tVector2<T>(1, 2));
    V a = x;
    V b = y;
    EXPECT_FALSE(Orthonormalise(a, b, a));
    ExpectSameBits(a, x);
    ExpectSameBits(b, y);
}

TYPED_TEST(DirectionTest, BasisHasTheBitsOfThePublishedFormula)
{
    using T = TypeParam;
    auto const check = [](auto const& values)
    {
        for (auto const& value : values)
        {
            tVector3<T> first;
            tVector3<T> second;
            EvaluateOrthonormalBasis(FromBitsOf<T>(value.normal), first, second);
            ExpectSameBits(first, FromBitsOf<T>(value.first));
            ExpectSameBits(second, FromBitsOf<T>(value.second));
        }
    };
    if constexpr (std::is_same_v<T, float>)
        check(bv::test::BASIS_FLOAT);
    else
        check(bv::test::BASIS_DOUBLE);
}

/// That the two axes and the normal are a right-handed orthonormal frame.
template <typename T>
void ExpectFrame(tVector3<T> const& normal)
{
    tVector3<T> axes[] = {{}, {}, normal};
    EvaluateOrthonormalBasis(normal, axes[0], axes[1]);
    ExpectOrthonormal<tVector3<T>>(axes, EPSILON<T> * 4);
    ExpectNear(axes[0].Cross(axes[1]), normal, EPSILON<T> * 4);
}

TYPED_TEST(DirectionTest, BasisIsARightHandedOrthonormalFrame)
{
    using T = TypeParam;
    Random random(3);
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<T> normal = RandomUnit<tVector3<T>>(random);
        if (i % 2 == 0) // near the poles, and on the equator
            normal = (i % 4 == 0 ? tVector3<T>(normal.x * T(1e-4), normal.y * T(1e-4), normal.z)
                                 : tVector3<T>(normal.x, normal.y, normal.z * T(1e-30)))
                         .Normalised();
        ExpectFrame(normal);
    }
    for (T const zero : {T(0), T(-0.0)})
    {
        ExpectFrame(tVector3<T>(zero, zero, -1)); // where other methods divide by zero
        ExpectFrame(tVector3<T>(zero, zero, 1));
        ExpectFrame(tVector3<T>(1, zero, zero));
        ExpectFrame(tVector3<T>(zero, -1, zero));
    }
}

TYPED_TEST(DirectionTest, BasisAtThePolesAndOnEitherSideOfZero)
{
    using T = TypeParam;
    tVector3<T> first;
    tVector3<T> second;
    EvaluateOrthonormalBasis(tVector3<T>(0, 0, 1), first, second);
    EXPECT_TRUE(first == tVector3<T>(1, 0, 0) && second == tVector3<T>(0, 1, 0));
    EvaluateOrthonormalBasis(tVector3<T>(0, 0, -1), first, second);
    EXPECT_TRUE(first == tVector3<T>(1, 0, 0) && second == tVector3<T>(0, -1, 0));
    EvaluateOrthonormalBasis(tVector3<T>(1, 0, T(0.0)), first, second);
    EXPECT_TRUE(first == tVector3<T>(0, 0, -1) && second == tVector3<T>(0, 1, 0));
    EvaluateOrthonormalBasis(tVector3<T>(1, 0, T(-0.0)), first, second);
    EXPECT_TRUE(first == tVector3<T>(0, 0, 1) && second == tVector3<T>(0, -1, 0));
    EvaluateOrthonormalBasis(tVector3<T>(0, 0, QUIET_NAN<T>), first, second);
    EXPECT_TRUE(IsNaN(first.x) && IsNaN(second.y));
}

TYPED_TEST(DirectionTest, BasisMayOverwriteItsNormal)
{
    using T = TypeParam;
    tVector3<T> const normal(T(0.48), T(-0.6), T(0.64));
    tVector3<T> first;
    tVector3<T> second;
    EvaluateOrthonormalBasis(normal, first, second);
    tVector3<T> both = normal;
    tVector3<T> other;
    EvaluateOrthonormalBasis(both, both, other);
    ExpectSameBits(both, first);
    ExpectSameBits(other, second);
    both = normal;
    EvaluateOrthonormalBasis(both, other, both);
    ExpectSameBits(both, second);
    ExpectSameBits(other, first);
    both = normal;
    EvaluateOrthonormalBasis(both, both, both);
    ExpectSameBits(both, second);
}

TEST(BasisTest, BasisHasTheOtherHandednessThanLocalAxes)
{
    tVector3<float> const normal = tVector3<float>(1, -2, 3).Normalised();
    tVector3<float> first;
    tVector3<float> second;
    EvaluateOrthonormalBasis(normal, first, second);
    EXPECT_GT(first.Cross(second).Dot(normal), 0.99F);
    bv::maths::EvaluateLocalAxes(normal, first, second);
    EXPECT_LT(first.Cross(second).Dot(normal), -0.99F);
}

/// What the compiler computes by itself.
template <typename T>
constexpr tVector3<T> FirstAxis(tVector3<T> const& normal)
{
    tVector3<T> first;
    tVector3<T> second;
    EvaluateOrthonormalBasis(normal, first, second);
    return first;
}

static_assert(FirstAxis(tVector3<float>(0, 0, -1)).x == 1 && FirstAxis(tVector3<double>(0, 0, -1)).x == 1);
static_assert(noexcept(Distance(tVector2<float>(), tVector2<float>())));
static_assert(noexcept(GetAngle(tVector2<float>(), tVector2<float>())));
static_assert(noexcept(Refract(tVector2<float>(), tVector2<float>(), 1)));

} // namespace
