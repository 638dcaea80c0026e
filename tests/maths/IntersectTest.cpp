#include "bv/maths/Intersect.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "maths/values/IntersectValues.h"
#include "support/Flags.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class IntersectTest : public testing::Test
{
};
TYPED_TEST_SUITE(IntersectTest, Precisions);

template <typename T>
tVector3<T> VectorOf(double const (&numbers)[3])
{
    return {static_cast<T>(numbers[0]), static_cast<T>(numbers[1]), static_cast<T>(numbers[2])};
}

template <typename T>
tVector3<T> VectorOf(Pattern<T> const (&patterns)[3])
{
    return {FromBits<T>(patterns[0]), FromBits<T>(patterns[1]), FromBits<T>(patterns[2])};
}

template <typename T>
struct Triangle
{
    tVector3<T> a, b, c;
};

/// A hit that a miss leaves as it is.
template <typename T>
constexpr tTriangleHit<T> UNTOUCHED{7, 8, 9};

template <typename T>
void ExpectUntouched(tTriangleHit<T> const& hit)
{
    ExpectSameBits(hit.t, T{7});
    ExpectSameBits(hit.u, T{8});
    ExpectSameBits(hit.v, T{9});
}

/// Whether either test has a hit. They must agree.
template <typename T>
bool BothMeet(tRay<T> const& ray, Triangle<T> const& triangle, T tNear, T tFar)
{
    tTriangleHit<T> fast = UNTOUCHED<T>;
    tTriangleHit<T> watertight = UNTOUCHED<T>;
    auto const& [a, b, c] = triangle;
    bool const isHit = IntersectTriangle(ray, a, b, c, tNear, tFar, fast);
    EXPECT_EQ(IntersectTriangle(tWatertightRay<T>(ray), a, b, c, tNear, tFar, watertight), isHit);
    if (!isHit)
    {
        ExpectUntouched(fast);
        ExpectUntouched(watertight);
    }
    return isHit;
}

TYPED_TEST(IntersectTest, TrianglesOfWholeNumbersAreMetWhereRationalArithmeticSays)
{
    using T = TypeParam;
    for (WholeMeeting const& meeting : WHOLE_MEETINGS)
    {
        SCOPED_TRACE(&meeting - WHOLE_MEETINGS);
        tRay<T> const ray(VectorOf<T>(meeting.origin), VectorOf<T>(meeting.direction));
        Triangle<T> const triangle{VectorOf<T>(meeting.corners[0]), VectorOf<T>(meeting.corners[1]),
                                   VectorOf<T>(meeting.corners[2])};
        ASSERT_EQ(BothMeet(ray, triangle, -INF<T>, INF<T>), meeting.isHit);
        if (!meeting.isHit)
            continue;
        tVector3<T> expected;
        if constexpr (std::is_same_v<T, float>)
            expected = VectorOf<T>(meeting.asFloat);
        else
            expected = VectorOf<T>(meeting.asDouble);
        auto const& [a, b, c] = triangle;
        tTriangleHit<T> hit;
        ASSERT_TRUE(IntersectTriangle(ray, a, b, c, -INF<T>, INF<T>, hit));
        ExpectSameBits(tVector3<T>(hit.t, hit.u, hit.v), expected);
        ASSERT_TRUE(IntersectTriangle(tWatertightRay<T>(ray), a, b, c, -INF<T>, INF<T>, hit));
        ExpectSameBits(hit.u, expected.y);
        ExpectSameBits(hit.v, expected.z);
        // Three products of more digits than a `float` has, of numbers up to 16.
        T const bound = sizeof(T) == sizeof(float) ? T(16 * 4) * EPSILON<T> : T{0};
        EXPECT_NEAR(hit.t, expected.x, bound);
    }
}

TYPED_TEST(IntersectTest, EdgesAndCornersThatARaySeesAreDecidedExactly)
{
    using T = TypeParam;
    auto const& meetings = [&]() -> auto const&
    {
        if constexpr (std::is_same_v<T, float>)
            return NEAR_MEETINGS_FLOAT;
        else
            return NEAR_MEETINGS_DOUBLE;
    }
    ();
    int hits = 0;
    for (auto const& meeting : meetings)
    {
        SCOPED_TRACE(&meeting - meetings);
        tRay<T> const ray(VectorOf<T>(meeting.origin), VectorOf<T>(meeting.direction));
        tVector3<T> const a = VectorOf<T>(meeting.corners[0]);
        tVector3<T> const b = VectorOf<T>(meeting.corners[1]);
        tVector3<T> const c = VectorOf<T>(meeting.corners[2]);
        tWatertightRay<T> const prepared(ray);
        tTriangleHit<T> hit;
        EXPECT_EQ(IntersectTriangle(prepared, a, b, c, -INF<T>, INF<T>, hit), meeting.isHit);
        // Neither the order of the corners nor their rotation makes a difference.
        EXPECT_EQ(IntersectTriangle(prepared, c, b, a, -INF<T>, INF<T>, hit), meeting.isHit);
        EXPECT_EQ(IntersectTriangle(prepared, b, c, a, -INF<T>, INF<T>, hit), meeting.isHit);
        hits += meeting.isHit ? 1 : 0;
    }
    EXPECT_GT(hits, 100);
    EXPECT_LT(hits, 290);
}

TYPED_TEST(IntersectTest, BothSidesOfATriangleCount)
{
    using T = TypeParam;
    Triangle<T> const triangle{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    Triangle<T> const turned{triangle.a, triangle.c, triangle.b};
    for (T const side : {T{1}, T{-1}})
    {
        tRay<T> const ray({T(0.25), T(0.5), side * 2}, {0, 0, -side});
        EXPECT_TRUE(BothMeet(ray, triangle, T{0}, T{10}));
        EXPECT_TRUE(BothMeet(ray, turned, T{0}, T{10}));
        tTriangleHit<T> hit{};
        EXPECT_TRUE(IntersectTriangle(ray, triangle.a, triangle.b, triangle.c, 0, 10, hit));
        EXPECT_EQ(hit.t, T{2});
        EXPECT_EQ(hit.u, T(0.25)); // of (1, 0, 0)
        EXPECT_EQ(hit.v, T(0.5));
        EXPECT_TRUE(IntersectTriangle(ray, turned.a, turned.b, turned.c, 0, 10, hit));
        EXPECT_EQ(hit.u, T(0.5));
        EXPECT_EQ(hit.v, T(0.25));
    }
}

TYPED_TEST(IntersectTest, TheEndsOfTheIntervalBelongToIt)
{
    using T = TypeParam;
    Triangle<T> const triangle{{-1, -1, 0}, {3, -1, 0}, {-1, 3, 0}};
    tRay<T> const ray({0, 0, 4}, {0, 0, -2}); // at t = 2
    EXPECT_TRUE(BothMeet(ray, triangle, T{2}, T{2}));
    EXPECT_TRUE(BothMeet(ray, triangle, T{0}, T{2}));
    EXPECT_TRUE(BothMeet(ray, triangle, T{2}, INF<T>));
    EXPECT_FALSE(BothMeet(ray, triangle, JustAbove(T{2}), INF<T>));
    EXPECT_FALSE(BothMeet(ray, triangle, -INF<T>, JustBelow(T{2})));
    EXPECT_FALSE(BothMeet(ray, triangle, T{3}, T{1}));
    EXPECT_FALSE(BothMeet(ray, triangle, QUIET_NAN<T>, T{3}));
    EXPECT_FALSE(BothMeet(ray, triangle, T{0}, QUIET_NAN<T>));
    tRay<T> const away(ray.origin, -ray.direction); // at t = -2
    EXPECT_TRUE(BothMeet(away, triangle, T{-2}, T{0}));
    EXPECT_FALSE(BothMeet(away, triangle, T{0}, T{10}));
}

TYPED_TEST(IntersectTest, ResultsAreNeverNegativeZeros)
{
    using T = TypeParam;
    // The origin lies on the corner b, and the ray comes from either side: t, 1 - u and v are zeros.
    for (T const z : {T{1}, T{-1}})
    {
        tRay<T> const ray({1, 0, 0}, {0, 0, z});
        for (Triangle<T> const& triangle :
             {Triangle<T>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, Triangle<T>{{0, 1, 0}, {1, 0, 0}, {0, 0, 0}}})
        {
            auto const& [a, b, c] = triangle;
            tTriangleHit<T> hit;
            ASSERT_TRUE(IntersectTriangle(ray, a, b, c, -1, 1, hit));
            ExpectSameBits(tVector3<T>(hit.t, hit.u, hit.v), tVector3<T>(0, 1, 0));
            ASSERT_TRUE(IntersectTriangle(tWatertightRay<T>(ray), a, b, c, -1, 1, hit));
            ExpectSameBits(tVector3<T>(hit.t, hit.u, hit.v), tVector3<T>(0, 1, 0));
        }
    }
}

TYPED_TEST(IntersectTest, ParallelRaysAndTrianglesWithoutAreaAreMisses)
{
    using T = TypeParam;
    Triangle<T> const triangle{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_FALSE(BothMeet(tRay<T>({T(0.25), T(0.25), 1}, {1, 0, 0}), triangle, -INF<T>, INF<T>));
    EXPECT_FALSE(BothMeet(tRay<T>({-1, T(0.25), 0}, {1, 0, 0}), triangle, -INF<T>, INF<T>)); // in its plane
    EXPECT_FALSE(BothMeet(tRay<T>({T(0.25), T(0.25), 1}, {0, 0, 0}), triangle, -INF<T>, INF<T>));
    tRay<T> const ray({T(0.5), 0, 1}, {0, 0, -1});
    EXPECT_FALSE(BothMeet(ray, Triangle<T>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, -INF<T>, INF<T>)); // a line
    EXPECT_FALSE(
        BothMeet(ray, Triangle<T>{{T(0.5), 0, 0}, {T(0.5), 0, 0}, {T(0.5), 0, 0}}, -INF<T>, INF<T>)); // a point
}

TYPED_TEST(IntersectTest, NanAndInfinitiesAnywhereAreMisses)
{
    using T = TypeParam;
    Triangle<T> const triangle{{-1, -1, 0}, {3, -1, 0}, {-1, 3, 0}};
    for (T const special : {QUIET_NAN<T>, INF<T>, -INF<T>})
        for (std::size_t i = 0; i < 15; ++i)
        {
            SCOPED_TRACE(i);
            tVector3<T> numbers[] = {{0, 0, 4}, {T(0.25), T(-0.125), -2}, triangle.a, triangle.b, triangle.c};
            numbers[i / 3][i % 3] = special;
            EXPECT_FALSE(BothMeet(tRay<T>(numbers[0], numbers[1]), Triangle<T>{numbers[2], numbers[3], numbers[4]},
                                  -INF<T>, INF<T>));
        }
}

TYPED_TEST(IntersectTest, WhatOverflowsIsAMiss)
{
    using T = TypeParam;
    T const huge = LARGEST<T> / 4;
    EXPECT_FALSE(BothMeet(tRay<T>({0, 0, 1}, {0, 0, -1}),
                          Triangle<T>{{-huge, -huge, 0}, {huge, -huge, 0}, {0, huge, 0}}, T{0}, INF<T>));
}

// An infinite parameter is none, even where the interval has no end.
TYPED_TEST(IntersectTest, AParameterThatOverflowsIsAMiss)
{
    using T = TypeParam;
    T const far = std::is_same_v<T, float> ? T(1e13) : T(1e103); // the product of three is beyond all numbers
    tRay<T> const ray({0, 0, 0}, {0, 0, 1});
    EXPECT_FALSE(BothMeet(ray, Triangle<T>{{-far, -far, far}, {far, -far, far}, {0, far, far}}, T{0}, INF<T>));
    EXPECT_FALSE(BothMeet(ray, Triangle<T>{{-far, -far, -far}, {far, -far, -far}, {0, far, -far}}, -INF<T>, T{0}));

    T const nearlyParallel = std::numeric_limits<T>::min() / 16;
    T t = 7;
    EXPECT_FALSE(IntersectPlane(tRay<T>({0, 0, 0}, {1, nearlyParallel, 0}), tPlane<T>({0, 1, 0}, -5), T{0}, INF<T>, t));
    EXPECT_FALSE(
        IntersectDisc(tRay<T>({0, 0, 0}, {0, nearlyParallel, 0}), {0, 5, 0}, {0, 1, 0}, T{1}, T{0}, INF<T>, t));
    EXPECT_EQ(t, 7);
}

TYPED_TEST(IntersectTest, TheLargestParameterOfAllIsAHit)
{
    using T = TypeParam;
    T const step = T(0x1p-60);
    T const far = LARGEST<T> * step;
    T const side = T(0x1p-4);
    tRay<T> const ray({0, 0, 0}, {0, 0, step});
    Triangle<T> const triangle{{-side, -side, far}, {side, -side, far}, {0, side, far}};
    tTriangleHit<T> hit{};
    ASSERT_TRUE(IntersectTriangle(ray, triangle.a, triangle.b, triangle.c, T{0}, INF<T>, hit));
    ExpectSameBits(hit.t, LARGEST<T>);
    ASSERT_TRUE(IntersectTriangle(tWatertightRay<T>(ray), triangle.a, triangle.b, triangle.c, T{0}, INF<T>, hit));
    ExpectSameBits(hit.t, LARGEST<T>);

    T t = 0;
    ASSERT_TRUE(IntersectPlane(ray, tPlane<T>({0, 0, 1}, -far), T{0}, INF<T>, t));
    ExpectSameBits(t, LARGEST<T>);
}

TYPED_TEST(IntersectTest, ResultsMayBeNumbersOfTheArguments)
{
    using T = TypeParam;
    tRay<T> ray({1, 2, 7}, {5, 1, -2});
    ASSERT_TRUE(IntersectPlane(ray, tPlane<T>({0, 0, 1}, T{-3}), 0, 9, ray.origin.z));
    ExpectSameBits(ray.origin.z, T{2});
    ray.origin = {1, 1, 5};
    ASSERT_TRUE(IntersectDisc(ray, ray.origin - ray.direction, {0, 0, 1}, 5, -9, 9, ray.direction.x));
    ExpectSameBits(ray.direction.x, T{-1});
    tVector3<T> corner(1, 1, 1);
    ASSERT_TRUE(GetBarycentric(tVector3<T>(2, 2, 1), corner, {5, 1, 1}, {1, 3, 1}, corner.x, corner.y));
    ExpectSameBits(corner, tVector3<T>(T(0.25), T(0.5), 1));
}

TYPED_TEST(IntersectTest, HitsLieOnTheRayAndOnTheTriangle)
{
    using T = TypeParam;
    Random random(5);
    int hits = 0;
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<T> const origin = random.Vector<tVector3<T>>(-3, 3);
        tRay<T> const ray(origin, random.Vector<tVector3<T>>(-1, 1) - origin);
        tVector3<T> const a = random.Vector<tVector3<T>>(-2, 2);
        tVector3<T> const b = random.Vector<tVector3<T>>(-2, 2);
        tVector3<T> const c = random.Vector<tVector3<T>>(-2, 2);
        tTriangleHit<T> fast;
        tTriangleHit<T> watertight;
        bool const isHit = IntersectTriangle(ray, a, b, c, 0, 100, fast);
        ASSERT_EQ(IntersectTriangle(tWatertightRay<T>(ray), a, b, c, 0, 100, watertight), isHit) << i;
        if (!isHit)
            continue;
        ++hits;
        // A ray nearly along the triangle takes digits with it: as many as its sine has in front.
        tVector3<T> const normal = (b - a).Cross(c - a);
        T const sine = std::abs(normal.Normalised().Dot(ray.direction.Normalised()));
        T const bound = T(200) * EPSILON<T> * (T{1} + fast.t) / (sine * std::min(T{1}, normal.Length()));
        for (tTriangleHit<T> const& hit : {fast, watertight})
        {
            tVector3<T> const onRay = ray.origin + ray.direction * hit.t;
            tVector3<T> const onTriangle = a + (b - a) * hit.u + (c - a) * hit.v;
            EXPECT_LE((onRay - onTriangle).Length(), bound) << i;
        }
    }
    EXPECT_GT(hits, 500);
}

// Compilers turn such loops into vectors, in which a ray that misses is computed beside one that hits.
TYPED_TEST(IntersectTest, LoopsOverPlanesAndDiscsDivideNothingByZero)
{
    using T = TypeParam;
    constexpr std::size_t COUNT = 64;
    std::vector<tVector3<T>> normals; // x = 2 at odd places; at even ones z = 2, which the ray runs along
    for (std::size_t i = 0; i < COUNT; ++i)
        normals.push_back(i % 2 != 0 ? tVector3<T>(1, 0, 0) : tVector3<T>(0, 0, 1));
    std::vector<tPlane<T>> planes;
    for (tVector3<T> const& normal : normals)
        planes.emplace_back(normal, T{-2});
    tRay<T> const ray({0, 0, 0}, {1, 0, 0});
    std::vector<T> ofPlanes(COUNT);
    std::vector<T> ofDiscs(COUNT);
    int const raised = Raised(
        [&]
        {
            for (std::size_t i = 0; i < COUNT; ++i)
            {
                T t{};
                ofPlanes[i] = IntersectPlane(ray, planes[i], 0, 9, t) ? t : T{-1};
            }
            for (std::size_t i = 0; i < COUNT; ++i)
            {
                T t{};
                ofDiscs[i] = IntersectDisc(ray, {2, 0, 0}, normals[i], 1, 0, 9, t) ? t : T{-1};
            }
            return ofDiscs.front();
        });
    EXPECT_EQ(raised, 0) << NameOfFlags(raised);
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        EXPECT_EQ(ofPlanes[i], i % 2 != 0 ? T{2} : T{-1});
        EXPECT_EQ(ofDiscs[i], i % 2 != 0 ? T{2} : T{-1});
    }
}

TYPED_TEST(IntersectTest, PlanesAreMetAtTheQuotientOfTheirDistances)
{
    using T = TypeParam;
    tPlane<T> const plane({0, 0, 2}, T{-6}); // z = 3
    T t = 77;
    EXPECT_TRUE(IntersectPlane(tRay<T>({1, 2, 7}, {5, 1, -2}), plane, 0, 2, t));
    ExpectSameBits(t, T{2});
    EXPECT_TRUE(IntersectPlane(tRay<T>({1, 2, -1}, {0, 0, 4}), plane, 1, 1, t)); // from behind
    ExpectSameBits(t, T{1});
    EXPECT_TRUE(IntersectPlane(tRay<T>({1, 2, 3}, {0, 0, 4}), plane, 0, 1, t)); // from the plane itself
    ExpectSameBits(t, T{0});
    EXPECT_TRUE(IntersectPlane(tRay<T>({1, 2, 3}, {0, 0, -4}), plane, 0, 1, t));
    ExpectSameBits(t, T{0});
    t = 77;
    EXPECT_FALSE(IntersectPlane(tRay<T>({1, 2, 7}, {5, 1, -2}), plane, 0, JustBelow(T{2}), t));
    EXPECT_FALSE(IntersectPlane(tRay<T>({1, 2, 7}, {5, 1, -2}), plane, JustAbove(T{2}), 9, t));
    EXPECT_FALSE(IntersectPlane(tRay<T>({1, 2, 7}, {5, 1, 0}), plane, -INF<T>, INF<T>, t)); // along it
    EXPECT_FALSE(IntersectPlane(tRay<T>({1, 2, 3}, {5, 1, 0}), plane, -INF<T>, INF<T>, t)); // in it
    EXPECT_FALSE(IntersectPlane(tRay<T>({1, 2, QUIET_NAN<T>}, {0, 0, 1}), plane, -INF<T>, INF<T>, t));
    EXPECT_FALSE(IntersectPlane(tRay<T>({1, 2, 3}, {0, 0, QUIET_NAN<T>}), plane, -INF<T>, INF<T>, t));
    ExpectSameBits(t, T{77});

    Random random(6);
    for (int i = 0; i < 1000; ++i)
    {
        tPlane<T> const any(random.Vector<tVector3<T>>(-1, 1), random.Number(T{-2}, T{2}));
        tRay<T> const ray(random.Vector<tVector3<T>>(-3, 3), random.Vector<tVector3<T>>(-1, 1));
        ASSERT_TRUE(IntersectPlane(ray, any, -INF<T>, INF<T>, t));
        EXPECT_NEAR(any.GetDistance(ray.origin + ray.direction * t), T{0}, T(20) * EPSILON<T> * (T{1} + std::abs(t)));
    }
}

TYPED_TEST(IntersectTest, DiscsHaveTheirRim)
{
    using T = TypeParam;
    tVector3<T> const centre(1, 1, 3);
    tVector3<T> const normal(0, 0, -7); // of any length
    auto const meets = [&](tVector3<T> const& origin, tVector3<T> const& direction, T radius, T& t)
    { return IntersectDisc(tRay<T>(origin, direction), centre, normal, radius, 0, 10, t); };
    T t = 77;
    EXPECT_TRUE(meets({1, 1, 5}, {0, 0, -1}, 5, t));
    ExpectSameBits(t, T{2});
    EXPECT_TRUE(meets({4, 5, 1}, {0, 0, 2}, 5, t)); // 3, 4, 5: on the rim
    ExpectSameBits(t, T{1});
    EXPECT_TRUE(meets({1, 1, 3}, {0, 0, 2}, 0, t)); // one point
    ExpectSameBits(t, T{0});
    t = 77;
    EXPECT_FALSE(meets({4, 5, 1}, {0, 0, 2}, JustBelow(T{5}), t));
    EXPECT_FALSE(meets({1, 1, 5}, {0, 0, -1}, -5, t));
    EXPECT_FALSE(meets({1, 1, 5}, {0, 0, 1}, 5, t));  // behind
    EXPECT_FALSE(meets({1, 1, 5}, {1, 0, 0}, 5, t));  // along it
    EXPECT_FALSE(meets({-9, 1, 3}, {1, 0, 0}, 5, t)); // in it
    EXPECT_FALSE(meets({1, 1, 5}, {0, 0, -1}, QUIET_NAN<T>, t));
    EXPECT_FALSE(meets({QUIET_NAN<T>, 1, 5}, {0, 0, -1}, 5, t));
    EXPECT_FALSE(IntersectDisc(tRay<T>({1, 1, 5}, {0, 0, -1}), centre, tVector3<T>(), 5, 0, 10, t));
    ExpectSameBits(t, T{77});
}

TYPED_TEST(IntersectTest, ATurnedBoxIsClippedAlongItsAxes)
{
    using T = TypeParam;
    // Turned by the angle of 3, 4, 5 around z, and so are the rays: what is along x in the box is along (0.6, 0.8, 0).
    tVector3<T> const x(T(0.6), T(0.8), 0), y(T(-0.8), T(0.6), 0), z(0, 0, 1);
    tOrientedBox<T> const box({1, 2, 3}, x, y, z, {2, 1, T(0.5)});
    auto const clip = [&](tVector3<T> const& seenOrigin, tVector3<T> const& seenDirection, T& tNear, T& tFar)
    {
        auto const turn = [&](tVector3<T> const& v) { return x * v.x + y * v.y + z * v.z; };
        return ClipOrientedBox(tRay<T>(turn(seenOrigin) + tVector3<T>(1, 2, 3), turn(seenDirection)), box, tNear, tFar);
    };
    T const bound = T(50) * EPSILON<T>; // the tolerance of the faces, and some roundings
    T tNear = 0, tFar = 100;
    EXPECT_TRUE(clip({-5, T(0.5), T(0.25)}, {1, 0, 0}, tNear, tFar));
    EXPECT_NEAR(tNear, T{3}, bound);
    EXPECT_NEAR(tFar, T{7}, bound);
    tNear = 0, tFar = 100;
    EXPECT_FALSE(clip({-5, T(1.1), 0}, {1, 0, 0}, tNear, tFar));
    tNear = 0, tFar = 100;
    EXPECT_TRUE(clip({0, 4, 0}, {0, -2, 0}, tNear, tFar));
    EXPECT_NEAR(tNear, T(1.5), bound);
    EXPECT_NEAR(tFar, T(2.5), bound);
    tNear = 0, tFar = 100;
    EXPECT_FALSE(clip({0, 4, 0}, {0, 2, 0}, tNear, tFar)); // behind
    tNear = 5, tFar = 9;
    EXPECT_FALSE(ClipOrientedBox(tRay<T>({0, 0, 0}, {1, 0, 0}), tOrientedBox<T>(), tNear, tFar));
    ExpectSameBits(tNear, T{5});
    ExpectSameBits(tFar, T{9});

    // Along the axes of the world, it is the other box.
    Random random(13);
    int hits = 0;
    for (int i = 0; i < 5000; ++i)
    {
        tVector3<T> const corner(T(random.Whole(1, 8)), T(random.Whole(1, 8)), T(random.Whole(1, 8)));
        tVolumeAABB<T> const straight(-corner, corner);
        tRay<T> const ray(random.Vector<tVector3<T>>(-20, 20), random.Vector<tVector3<T>>(-1, 1));
        T lo = 0, hi = 100, turnedLo = 0, turnedHi = 100;
        bool const isHit = ray.Clip(straight, lo, hi);
        ASSERT_EQ(ClipOrientedBox(ray, tOrientedBox<T>(straight), turnedLo, turnedHi), isHit);
        ExpectSameBits(turnedLo, lo);
        ExpectSameBits(turnedHi, hi);
        hits += isHit ? 1 : 0;
    }
    EXPECT_GT(hits, 200);
}

TYPED_TEST(IntersectTest, AMovedRayKeepsItsParameter)
{
    using T = TypeParam;
    Random random(7);
    T elements[16];
    for (int i = 0; i < 1000; ++i)
    {
        for (T& element : elements)
            element = random.Number(T{-2}, T{2});
        tMatrix4<T> const matrix(elements); // also a fourth row, which counts for nothing
        tRay<T> const ray(random.Vector<tVector3<T>>(-3, 3), random.Vector<tVector3<T>>(-1, 1));
        tRay<T> const moved = TransformRay(ray, matrix);
        T const t = random.Number(T{0}, T{5});
        tVector3<T> const point = ray.origin + ray.direction * t;
        auto const row = [&](std::size_t r)
        { return elements[r] * point.x + elements[r + 1] * point.y + elements[r + 2] * point.z + elements[r + 3]; };
        tVector3<T> const expected(row(0), row(4), row(8));
        EXPECT_LE((moved.origin + moved.direction * t - expected).Length(), T(100) * EPSILON<T>);
    }
    tRay<T> const ray({1, 2, 3}, {4, 5, 6});
    tRay<T> const scaled = TransformRay(ray, tMatrix4<T>::Translate(1, 0, -1) * tMatrix4<T>::Scale(T{2}));
    ExpectSameBits(scaled.origin, tVector3<T>(3, 4, 5));
    ExpectSameBits(scaled.direction, tVector3<T>(8, 10, 12)); // not normalised
    tMatrix4<T> stale;                                        // in state IDENTITY
    const_cast<T*>(stale.Get())[3] = 5;
    ExpectSameBits(TransformRay(ray, stale).origin, ray.origin);
}

TYPED_TEST(IntersectTest, DifferentialsMoveLikeTheDirection)
{
    using T = TypeParam;
    using DepthRay = tDepthRay<T, bv::IRayPayloadInternal>;
    tMatrix4<T> const matrix(1, 2, 0, 5, 0, 1, 3, 6, 2, 0, 1, 7, 9, 9, 9, 9);
    DepthRay ray({1, 2, 3}, {1, 0, 0});
    ray.tMin = 4;
    ray.tMax = 5;
    ray.dOriginDu = {0, 1, 0};
    ray.dOriginDv = {0, 0, 1};
    ray.dDirectionDu = {1, 1, 0};
    ray.dDirectionDv = {0, 1, 1};
    DepthRay const moved = TransformRay(ray, matrix);
    ExpectSameBits(moved.origin, tVector3<T>(10, 17, 12));
    ExpectSameBits(moved.direction, tVector3<T>(1, 0, 2));
    ExpectSameBits(moved.dOriginDu, tVector3<T>(2, 1, 0));
    ExpectSameBits(moved.dOriginDv, tVector3<T>(0, 3, 1));
    ExpectSameBits(moved.dDirectionDu, tVector3<T>(3, 1, 2));
    ExpectSameBits(moved.dDirectionDv, tVector3<T>(2, 4, 1));
    EXPECT_EQ(moved.tMin, T{4});
    EXPECT_EQ(moved.tMax, T{5});
    EXPECT_EQ(moved.payload, nullptr);
    DepthRay const same = TransformRay(ray, tMatrix4<T>());
    ExpectSameBits(same.dDirectionDv, ray.dDirectionDv);
}

TYPED_TEST(IntersectTest, BarycentricCoordinatesAreThoseOfTheProjection)
{
    using T = TypeParam;
    tVector3<T> const a(1, 1, 1), b(5, 1, 1), c(1, 3, 1);
    T u = 77, v = 77;
    auto const expect = [&](tVector3<T> const& point, T expectedU, T expectedV)
    {
        ASSERT_TRUE(GetBarycentric(point, a, b, c, u, v));
        ExpectSameBits(u, expectedU);
        ExpectSameBits(v, expectedV);
    };
    expect(a, 0, 0);
    expect(b, 1, 0);
    expect(c, 0, 1);
    expect({3, 2, 1}, T(0.5), T(0.5));
    expect({2, 2, 9}, T(0.25), T(0.5)); // above the plane
    expect({-3, 1, 1}, -1, 0);          // outside
    u = v = 77;
    EXPECT_FALSE(GetBarycentric(a, a, a, c, u, v));
    EXPECT_FALSE(GetBarycentric(a, a, b, {9, 1, 1}, u, v));
    EXPECT_FALSE(GetBarycentric(a, {QUIET_NAN<T>, 0, 0}, b, c, u, v));
    EXPECT_FALSE(GetBarycentric(a, {INF<T>, 0, 0}, b, c, u, v));
    ExpectSameBits(u, T{77});
    ExpectSameBits(v, T{77});
    EXPECT_TRUE(GetBarycentric({QUIET_NAN<T>, 0, 0}, a, b, c, u, v)); // the triangle alone decides
    EXPECT_TRUE(IsNaN(u));
}

TYPED_TEST(IntersectTest, HitDifferentialsAreThoseOfNeighbouringRays)
{
    using T = TypeParam;
    using DepthRay = tDepthRay<T, bv::IRayPayloadInternal>;
    using Exact = tVector3<double>;
    Random random(8);
    int count = 0;
    for (int i = 0; i < 2000; ++i)
    {
        DepthRay ray(random.Vector<tVector3<T>>(-3, 3), random.Vector<tVector3<T>>(-1, 1));
        ray.dOriginDu = random.Vector<tVector3<T>>(-1, 1);
        ray.dOriginDv = random.Vector<tVector3<T>>(-1, 1);
        ray.dDirectionDu = random.Vector<tVector3<T>>(-1, 1);
        ray.dDirectionDv = random.Vector<tVector3<T>>(-1, 1);
        tVector3<T> const a = random.Vector<tVector3<T>>(-2, 2);
        tVector3<T> const b = random.Vector<tVector3<T>>(-2, 2);
        tVector3<T> const c = random.Vector<tVector3<T>>(-2, 2);
        Exact const e1 = Exact(b) - Exact(a), e2 = Exact(c) - Exact(a);
        Exact const normal = e1.Cross(e2);
        if (normal.Length() < 1 || std::abs(normal.Normalised().Dot(Exact(ray.direction))) < 0.2)
            continue;
        ++count;
        // The ray that lies h further in the image meets the plane at P(h); central differences of P and of its
        // coordinates, whose error is of the order of h squared.
        auto const meet = [&](Exact const& dOrigin, Exact const& dDirection, double h)
        {
            Exact const o = Exact(ray.origin) + dOrigin * h, d = Exact(ray.direction) + dDirection * h;
            return o + d * (normal.Dot(Exact(a) - o) / normal.Dot(d));
        };
        T const t = static_cast<T>(normal.Dot(Exact(a) - Exact(ray.origin)) / normal.Dot(Exact(ray.direction)));
        tDifferential3<T> position;
        tDifferential2<T> weights;
        ASSERT_TRUE(GetHitDifferentials(ray, a, b, c, t, position, weights));
        constexpr double H = 1e-5;
        for (std::size_t k = 0; k < 2; ++k)
        {
            Exact const dO(k == 0 ? ray.dOriginDu : ray.dOriginDv), dD(k == 0 ? ray.dDirectionDu : ray.dDirectionDv);
            Exact const expected = (meet(dO, dD, H) - meet(dO, dD, -H)) / (2 * H);
            double const bound = (std::is_same_v<T, float> ? 1e-4 : 1e-6) * (1 + expected.Length());
            double const steep = 1 + std::abs(static_cast<double>(t));
            EXPECT_LE((Exact(position[k]) - expected).Length(), bound * steep * steep * 10) << i;
            double const du = normal.Dot(expected.Cross(e2)) / normal.LengthSquared();
            double const dv = normal.Dot(e1.Cross(expected)) / normal.LengthSquared();
            EXPECT_NEAR(static_cast<double>(weights[k].x), du, bound * steep * steep * 40) << i;
            EXPECT_NEAR(static_cast<double>(weights[k].y), dv, bound * steep * steep * 40) << i;
        }
    }
    EXPECT_GT(count, 500);
}

TYPED_TEST(IntersectTest, HitDifferentialsOfADirectViewAreTheSteps)
{
    using T = TypeParam;
    tDepthRay<T, bv::IRayPayloadInternal> ray({0, 0, 2}, {0, 0, -1});
    ray.dDirectionDu = {1, 0, 0};
    ray.dDirectionDv = {0, 1, 0};
    tDifferential3<T> position;
    tDifferential2<T> weights;
    ASSERT_TRUE(GetHitDifferentials(ray, {-1, -1, 0}, {3, -1, 0}, {-1, 3, 0}, 2, position, weights));
    EXPECT_EQ(position[0], tVector3<T>(2, 0, 0)); // t times the step
    EXPECT_EQ(position[1], tVector3<T>(0, 2, 0));
    EXPECT_EQ(weights[0], tVector2<T>(T(0.5), 0)); // of an edge of length 4
    EXPECT_EQ(weights[1], tVector2<T>(0, T(0.5)));
    position = {{5, 5, 5}, {6, 6, 6}};
    EXPECT_FALSE(GetHitDifferentials(ray, {0, 0, 0}, {0, 0, 1}, {0, 1, 0}, 2, position, weights)); // along the ray
    EXPECT_FALSE(GetHitDifferentials(ray, {0, 0, 0}, {0, 0, 0}, {0, 1, 0}, 2, position, weights));
    EXPECT_FALSE(GetHitDifferentials(ray, {QUIET_NAN<T>, 0, 0}, {1, 0, 0}, {0, 1, 0}, 2, position, weights));
    EXPECT_EQ(position[0], tVector3<T>(5, 5, 5));
}

/// Whether a box and a triangle overlap, the slow way: the triangle cut by the six faces, with something left.
template <typename T>
bool IsSomethingLeft(tVolumeAABB<T> const& box, Triangle<T> const& triangle)
{
    using Exact = tVector3<double>;
    std::vector<Exact> polygon{Exact(triangle.a), Exact(triangle.b), Exact(triangle.c)};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (double const side : {-1.0, 1.0})
        {
            double const face = static_cast<double>(side < 0 ? box.GetMin()[axis] : box.GetMax()[axis]);
            std::vector<Exact> kept;
            for (std::size_t i = 0; i < polygon.size(); ++i)
            {
                Exact const& p = polygon[i];
                Exact const& q = polygon[(i + 1) % polygon.size()];
                double const atP = (face - p[axis]) * side;
                double const atQ = (face - q[axis]) * side;
                if (atP >= 0)
                    kept.push_back(p);
                if ((atP > 0 && atQ < 0) || (atP < 0 && atQ > 0))
                    kept.push_back(p + (q - p) * (atP / (atP - atQ)));
            }
            polygon = kept;
        }
    return !polygon.empty();
}

TYPED_TEST(IntersectTest, ATriangleOverlapsABoxThatKeepsAPartOfIt)
{
    using T = TypeParam;
    Random random(9);
    int counts[2] = {};
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<T> const lower = random.Vector<tVector3<T>>(-2, 0);
        tVolumeAABB<T> const box(lower, lower + random.Vector<tVector3<T>>(0, 2));
        Triangle<T> const triangle{random.Vector<tVector3<T>>(-3, 3), random.Vector<tVector3<T>>(-3, 3),
                                   random.Vector<tVector3<T>>(-3, 3)};
        bool const overlaps = OverlapsTriangle(box, triangle.a, triangle.b, triangle.c);
        ASSERT_EQ(overlaps, IsSomethingLeft(box, triangle)) << i;
        EXPECT_EQ(OverlapsTriangle(box, triangle.c, triangle.a, triangle.b), overlaps);
        ++counts[overlaps ? 1 : 0];
    }
    EXPECT_GT(counts[0], 3000);
    EXPECT_GT(counts[1], 3000);
}

TYPED_TEST(IntersectTest, WhatTouchesABoxOverlapsIt)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({0, 0, 0}, {2, 2, 2});
    EXPECT_TRUE(OverlapsTriangle(box, {2, 1, 1}, {3, 1, 1}, {3, 2, 1}));  // a corner on a face
    EXPECT_TRUE(OverlapsTriangle(box, {2, 2, 2}, {3, 2, 2}, {2, 3, 2}));  // a corner on a corner
    EXPECT_TRUE(OverlapsTriangle(box, {1, 3, 1}, {3, 1, 1}, {3, 3, 1}));  // an edge on an edge
    EXPECT_TRUE(OverlapsTriangle(box, {4, 1, 1}, {1, 4, 1}, {1, 1, 4}));  // its plane on a corner: x + y + z = 6
    EXPECT_FALSE(OverlapsTriangle(box, {5, 1, 1}, {1, 5, 1}, {1, 1, 5})); // x + y + z = 7
    EXPECT_FALSE(OverlapsTriangle(box, {1, 4, 1}, {4, 1, 1}, {4, 4, 1})); // an edge beside an edge
    EXPECT_TRUE(OverlapsTriangle(box, {1, 1, -9}, {1, 1, 9}, {1, 1, 9})); // an edge for a triangle
    EXPECT_TRUE(OverlapsTriangle(box, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}));  // a point
    EXPECT_FALSE(OverlapsTriangle(box, {3, 1, 1}, {3, 1, 1}, {3, 1, 1}));
    EXPECT_TRUE(OverlapsTriangle(box, {-9, -9, 1}, {9, -9, 1}, {0, 9, 1})); // around the box
    EXPECT_FALSE(OverlapsTriangle(tVolumeAABB<T>(), {0, 0, 0}, {1, 0, 0}, {0, 1, 0}));
    EXPECT_FALSE(OverlapsTriangle(tVolumeAABB<T>({0, 0, 0}, {INF<T>, 1, 1}), {0, 0, 0}, {1, 0, 0}, {0, 1, 0}));
    EXPECT_FALSE(OverlapsTriangle(tVolumeAABB<T>({0, 0, QUIET_NAN<T>}, {1, 1, 1}), {0, 0, 0}, {1, 0, 0}, {0, 1, 0}));
    EXPECT_FALSE(OverlapsTriangle(box, {QUIET_NAN<T>, 0, 0}, {1, 0, 0}, {0, 1, 0}));
}

// Rounding leaves such a triangle with a normal that points anywhere.
TYPED_TEST(IntersectTest, ATriangleThatIsNearlyItsLongestEdgeOverlapsTheBoxThatTheEdgeCrosses)
{
    using T = TypeParam;
    Random random(21);
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<T> const lower = random.Vector<tVector3<T>>(-1, 0);
        tVector3<T> const extents = random.Vector<tVector3<T>>(T{0.5}, 2);
        tVector3<T> const inside = lower + extents * T{0.5};
        tVector3<T> const way = random.Vector<tVector3<T>>(-2, 2);
        tVector3<T> const a = inside - way;
        tVector3<T> const b = inside + way * T{0.75};
        ASSERT_TRUE(OverlapsTriangle(tVolumeAABB<T>(lower, lower + extents), a, b, (a + b) * T{0.5})) << i;
    }
}

} // namespace
