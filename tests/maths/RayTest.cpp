#include "bv/maths/tRay.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

/// The private building block of box clipping. Naming a private member is allowed to an explicit instantiation, and to
/// nothing else.
template <typename T>
using Side = bool (tRay<T>::*)(tVolumeAABB<T> const&, T&, T&, unsigned char) const noexcept;

Side<float> GetSide(float);
Side<double> GetSide(double);

template <typename T, Side<T> MEMBER>
struct Expose
{
    friend Side<T> GetSide(T) { return MEMBER; }
};
template struct Expose<float, &tRay<float>::ClipSide>;
template struct Expose<double, &tRay<double>::ClipSide>;

template <typename T>
struct Interval
{
    T tNear;
    T tFar;
};

template <typename T>
bool ClipSide(tRay<T> const& ray, tVolumeAABB<T> const& box, Interval<T>& t, int axis)
{
    return (ray.*GetSide(T{}))(box, t.tNear, t.tFar, static_cast<unsigned char>(axis));
}

template <typename T>
bool Clip(tRay<T> const& ray, tVolumeAABB<T> const& box, Interval<T>& t)
{
    return ray.Clip(box, t.tNear, t.tFar);
}

/// Slab clipping in its steps, on bare numbers.
template <typename T>
bool ClipSideInSteps(T lower, T upper, T origin, T direction, Interval<T>& t)
{
    T const e = std::is_same_v<T, float> ? static_cast<T>(std::bit_cast<float>(0x35A00000U))
                                         : static_cast<T>(std::bit_cast<double>(0x3CE4000000000000ULL));
    bool const crosses = direction > e || direction < -e;
    if (!crosses)
    {
        if (origin >= lower)
        {
            if (origin <= upper)
                return true;
        }
        return false;
    }
    T const r = 1 / direction;
    T const toLower = lower - origin;
    T const toUpper = upper - origin;
    T t1 = (toLower - e) * r;
    T t2 = (toUpper + e) * r;
    bool const oneIsAhead = t1 >= 0 || t2 >= 0;
    if (!oneIsAhead)
        return false;
    if (t1 > t2)
        std::swap(t1, t2);
    if (t1 > t.tNear)
        t.tNear = t1;
    if (t.tFar > t2)
        t.tFar = t2;
    return t.tNear <= t.tFar && t.tFar >= 0;
}

/// Clipping against a whole box in its steps, axis by axis.
template <typename T>
bool ClipInSteps(tRay<T> const& ray, tVolumeAABB<T> const& box, Interval<T>& t)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (!ClipSideInSteps(box.GetMin()[axis], box.GetMax()[axis], ray.origin[axis], ray.direction[axis], t))
            return false;
    return true;
}

template <typename T>
class RayTest : public testing::Test
{
protected:
    static constexpr T E = static_cast<T>(std::is_same_v<T, float> ? 1.1920928955078125e-06 : 2.220446049250313e-15);

    static tRay<T> Ray(tVector3<T> const& origin, tVector3<T> const& direction) { return {origin, direction}; }
    static tVolumeAABB<T> Box(tVector3<T> const& lower, tVector3<T> const& upper) { return {lower, upper}; }

    static void ExpectInterval(Interval<T> const& actual, T tNear, T tFar)
    {
        ExpectSameBits(actual.tNear, tNear);
        ExpectSameBits(actual.tFar, tFar);
    }
};

TYPED_TEST_SUITE(RayTest, Precisions);

TYPED_TEST(RayTest, IsSixNumbersWithTheOriginFirst)
{
    using T = TypeParam;
    static_assert(sizeof(tRay<T>) == 6 * sizeof(T) && alignof(tRay<T>) == alignof(T));
    static_assert(!std::is_polymorphic_v<tRay<T>> && std::is_trivially_copyable_v<tRay<T>>);
    static_assert(std::is_nothrow_default_constructible_v<tRay<T>>);
    static_assert(std::is_nothrow_constructible_v<tRay<T>, tVector3<T> const&, tVector3<T> const&>);
    tRay<T> const ray({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ((std::bit_cast<std::array<T, 6>>(ray)), (std::array<T, 6>{1, 2, 3, 4, 5, 6}));
    ExpectSameBits(ray.origin, {1, 2, 3});
    ExpectSameBits(ray.direction, {4, 5, 6});
}

TYPED_TEST(RayTest, PromisesItsTypesToTheCompiler)
{
    using T = TypeParam;
    T t = 0;
    tRay<T> const ray;
    tVolumeAABB<T> const box;
    tVolumeSphere<T> const sphere({0, 0, 0}, 1);
    static_assert(std::is_same_v<decltype(ray.Clip(box, t, t)), bool>);
    static_assert(noexcept(ray.Clip(box, t, t)));
    static_assert(std::is_same_v<decltype(ray.Clip(sphere, t, t)), bool>);
    static_assert(noexcept(ray.Clip(sphere, t, t)));
    static_assert(std::is_same_v<decltype(ray.IntersectScreen(tFrustum<T>())), tVector2<T>>);
    static_assert(noexcept(ray.IntersectScreen(tFrustum<T>())));
    EXPECT_EQ(t, T{0});
}

TYPED_TEST(RayTest, IsZeroByDefault)
{
    alignas(tRay<TypeParam>) unsigned char memory[sizeof(tRay<TypeParam>)];
    std::memset(memory, 0xFF, sizeof(memory));
    tRay<TypeParam> const& ray = *new (memory) tRay<TypeParam>;
    ExpectSameBits(ray.origin, tVector3<TypeParam>());
    ExpectSameBits(ray.direction, tVector3<TypeParam>());
}

// Spheres

TYPED_TEST(RayTest, ClipsAgainstASphereInFront)
{
    TypeParam tNear = -7;
    TypeParam tFar = -7;
    EXPECT_TRUE(this->Ray({0, 0, -5}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{4});
    EXPECT_EQ(tFar, TypeParam{6});
}

TYPED_TEST(RayTest, ASphereAroundTheOriginHasANegativeNearParameter)
{
    TypeParam tNear = -7;
    TypeParam tFar = -7;
    EXPECT_TRUE(this->Ray({0, 0, 0}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{-1});
    EXPECT_EQ(tFar, TypeParam{1});
}

TYPED_TEST(RayTest, ASphereBehindHasTwoNegativeParameters)
{
    TypeParam tNear = 7;
    TypeParam tFar = 7;
    EXPECT_TRUE(this->Ray({0, 0, 5}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 4), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{-7});
    EXPECT_EQ(tFar, TypeParam{-3});
}

TYPED_TEST(RayTest, AMissedSphereWritesNothing)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    std::pair<tRay<T>, tVolumeSphere<T>> const misses[] = {
        {{{2, 0, -5}, {0, 0, 1}}, {{0, 0, 0}, 1}},       // beside it
        {{{0, 0, -5}, {0, 0, 1}}, {{0, 0, 0}, T(-0.5)}}, // a negative squared radius
        {{{nan, 0, -5}, {0, 0, 1}}, {{0, 0, 0}, 1}},     // NaN anywhere
        {{{0, 0, -5}, {0, nan, 1}}, {{0, 0, 0}, 1}},
        {{{0, 0, -5}, {0, 0, 1}}, {{0, nan, 0}, 1}},
        {{{0, 0, -5}, {0, 0, 1}}, {{0, 0, 0}, nan}},
        {{{0, 0, INF<T>}, {0, 0, 1}}, {{0, 0, 0}, 1}}, // infinity - infinity
    };
    for (auto const& [ray, sphere] : misses)
    {
        T tNear = 3;
        T tFar = nan;
        EXPECT_FALSE(ray.Clip(sphere, tNear, tFar));
        ExpectSameBits(tNear, T{3});
        ExpectSameBits(tFar, nan);
    }
}

TYPED_TEST(RayTest, ATouchedSphereGivesOneParameterTwice)
{
    TypeParam tNear = 7;
    TypeParam tFar = 7;
    EXPECT_TRUE(this->Ray({1, 0, -5}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{5});
    EXPECT_EQ(tFar, TypeParam{5});
    TypeParam const steps = EPSILON<TypeParam> / 2;
    EXPECT_FALSE(this->Ray({1, 0, 0}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1 - steps), tNear, tFar));
}

TYPED_TEST(RayTest, ASphereThatTheOriginTouchesSidewaysGivesPositiveZeros)
{
    TypeParam const zero{0};
    TypeParam tNear = 7;
    TypeParam tFar = 7;
    // b = -0 and s = 0: -b - s = 0 - 0, s - b = 0 - -0.
    EXPECT_TRUE(this->Ray({1, 0, 0}, {-zero, -zero, -1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1), tNear, tFar));
    ExpectSameBits(tNear, zero);
    ExpectSameBits(tFar, zero);
}

TYPED_TEST(RayTest, ASphereWithoutARadiusIsHitThroughItsCentre)
{
    TypeParam tNear = 7;
    TypeParam tFar = 7;
    EXPECT_TRUE(this->Ray({0, 0, -5}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 0), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{5});
    EXPECT_EQ(tFar, TypeParam{5});
}

TYPED_TEST(RayTest, ARayWithoutADirectionHitsASphereAroundItsOriginOnly)
{
    TypeParam tNear = 7;
    TypeParam tFar = 8;
    auto const ray = this->Ray({3, 0, 0}, {0, 0, 0});
    EXPECT_FALSE(ray.Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 4), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{7});
    EXPECT_EQ(tFar, TypeParam{8});
    EXPECT_TRUE(ray.Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 25), tNear, tFar)); // b = 0, s = 4
    EXPECT_EQ(tNear, TypeParam{-4});
    EXPECT_EQ(tFar, TypeParam{4});
}

TYPED_TEST(RayTest, ADirectionThatIsNoUnitVectorIsTakenAsItIs)
{
    TypeParam tNear = 0;
    TypeParam tFar = 0;
    EXPECT_TRUE(this->Ray({0, 0, -5}, {0, 0, 2}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 6), tNear, tFar));
    EXPECT_EQ(tNear, TypeParam{1}); // b = -10; 100 + 6 - 25 = 81
    EXPECT_EQ(tFar, TypeParam{19});
}

TYPED_TEST(RayTest, TheSquaredRadiusIsAddedBeforeTheSquaredDistanceIsTakenAway)
{
    TypeParam const distance = std::is_same_v<TypeParam, float> ? TypeParam{65536} : TypeParam{1073741824};
    TypeParam tNear = 0;
    TypeParam tFar = 0;
    // Powers of two; a squared radius of 1 vanishes next to the square of the distance.
    EXPECT_TRUE(this->Ray({0, 0, -distance}, {0, 0, 1}).Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1), tNear, tFar));
    EXPECT_EQ(tNear, distance);
    EXPECT_EQ(tFar, distance);
}

TYPED_TEST(RayTest, SphereClippingSumsFromXToZ)
{
    using T = TypeParam;
    Random random(20240614);
    auto const next = [&random] { return random.Number<T>(-1, 1); };
    int hits = 0;
    for (int i = 0; i < 2000; ++i)
    {
        tVector3<T> const origin{next(), next(), next()};
        tVector3<T> const direction{next(), next(), next()};
        tVector3<T> const centre{next(), next(), next()};
        T const squaredRadius = next() + 1;
        T const x = origin.x - centre.x;
        T const y = origin.y - centre.y;
        T const z = origin.z - centre.z;
        T const b = (direction.x * x + direction.y * y) + direction.z * z;
        T const squaredDistance = (x * x + y * y) + z * z;
        T const grown = b * b + squaredRadius;
        T const discriminant = grown - squaredDistance;
        T tNear = 3;
        T tFar = 4;
        bool const hit = this->Ray(origin, direction).Clip(tVolumeSphere<T>(centre, squaredRadius), tNear, tFar);
        ASSERT_EQ(hit, discriminant >= 0);
        hits += hit ? 1 : 0;
        ExpectSameBits(tNear, hit ? -b - std::sqrt(discriminant) : T{3});
        ExpectSameBits(tFar, hit ? std::sqrt(discriminant) - b : T{4});
    }
    EXPECT_GT(hits, 300);
    EXPECT_LT(hits, 1900);
}

TYPED_TEST(RayTest, SphereClippingReadsTheRayBeforeItWrites)
{
    tRay<TypeParam> ray({0, 0, -5}, {0, 0, 1});
    EXPECT_TRUE(ray.Clip(tVolumeSphere<TypeParam>({0, 0, 0}, 1), ray.origin.z, ray.direction.z));
    EXPECT_EQ(ray.origin.z, TypeParam{4});
    EXPECT_EQ(ray.direction.z, TypeParam{6});
}

// One side of a box

TYPED_TEST(RayTest, ASlabIsWidenedByTheToleranceOnBothSides)
{
    using T = TypeParam;
    T const e = this->E;
    Interval<T> t{0, 100};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({1, 9, 9}, {2, 9, 9}), t, 0));
    this->ExpectInterval(t, 1 - e, 2 + e);
    t = {0, 100};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 3}, {0, 0, -1}), this->Box({9, 9, 1}, {9, 9, 2}), t, 2));
    this->ExpectInterval(t, -((2 - T{3}) + e), -((1 - T{3}) - e)); // 1 - e to 2 + e, as the differences round
}

TYPED_TEST(RayTest, AnAxisLooksAtItsOwnComponents)
{
    using T = TypeParam;
    tRay<T> const ray({1, 2, 3}, {1, 2, 4});
    tVolumeAABB<T> const box({5, 12, 43}, {9, 22, 83});
    T const e = this->E;
    T const scale[] = {1, T(0.5), T(0.25)};
    T const lower[] = {4, 10, 40};
    T const upper[] = {8, 20, 80};
    for (int axis = 0; axis < 3; ++axis)
    {
        Interval<T> t{0, 100};
        EXPECT_TRUE(ClipSide(ray, box, t, axis));
        this->ExpectInterval(t, (lower[axis] - e) * scale[axis], (upper[axis] + e) * scale[axis]);
    }
}

TYPED_TEST(RayTest, ASlabBehindIsAMissAndNarrowsNothing)
{
    using T = TypeParam;
    Interval<T> t{-100, 100};
    EXPECT_FALSE(ClipSide(this->Ray({5, 0, 0}, {1, 0, 0}), this->Box({1, 0, 0}, {2, 0, 0}), t, 0));
    this->ExpectInterval(t, -100, 100);
    EXPECT_FALSE(ClipSide(this->Ray({5, 0, 0}, {-1, 0, 0}), this->Box({6, 0, 0}, {7, 0, 0}), t, 0));
    this->ExpectInterval(t, -100, 100);
}

TYPED_TEST(RayTest, ASlabWhoseLastParameterIsZeroIsNotBehind)
{
    using T = TypeParam;
    // upper - origin + e is exactly 0.
    Interval<T> t{-100, 100};
    EXPECT_TRUE(ClipSide(this->Ray({this->E, 0, 0}, {1, 0, 0}), this->Box({-1, 0, 0}, {0, 0, 0}), t, 0));
    ExpectSameBits(t.tFar, T{0});
    // With -1 it is -0, which is not negative either; the other one is positive.
    t = {-100, 100};
    EXPECT_TRUE(ClipSide(this->Ray({this->E, 0, 0}, {-1, 0, 0}), this->Box({-1, 0, 0}, {0, 0, 0}), t, 0));
    ExpectSameBits(t.tNear, -T{0});
}

TYPED_TEST(RayTest, AnIntervalThatEndsBeforeTheOriginIsAMiss)
{
    Interval<TypeParam> t{-5, -1};
    EXPECT_FALSE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({-10, 0, 0}, {10, 0, 0}), t, 0));
    this->ExpectInterval(t, -5, -1);
    t = {-5, -TypeParam{0}};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({-10, 0, 0}, {10, 0, 0}), t, 0));
    this->ExpectInterval(t, -5, -TypeParam{0});
}

TYPED_TEST(RayTest, ASlabBeyondTheIntervalIsAMissAndNarrows)
{
    using T = TypeParam;
    Interval<T> t{0, 1};
    EXPECT_FALSE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({5, 0, 0}, {6, 0, 0}), t, 0));
    this->ExpectInterval(t, 5 - this->E, 1);
    t = {8, 9};
    EXPECT_FALSE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({5, 0, 0}, {6, 0, 0}), t, 0));
    this->ExpectInterval(t, 8, 6 + this->E);
}

TYPED_TEST(RayTest, AnIntervalOfOnePointIsAHit)
{
    using T = TypeParam;
    T const entry = 5 - this->E;
    Interval<T> t{0, entry};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({5, 0, 0}, {6, 0, 0}), t, 0));
    this->ExpectInterval(t, entry, entry);
}

TYPED_TEST(RayTest, ARayAlongASlabIsInsideUpToTheFaces)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({-1, -1, -1}, {1, 1, 1});
    T const outside = 1 + EPSILON<T>;
    for (T const direction : {T{0}, -T{0}, this->E, -this->E, TINY<T>})
    {
        for (T const origin : {T{-1}, T{0}, T{1}})
        {
            Interval<T> t{-3, QUIET_NAN<T>};
            EXPECT_TRUE(ClipSide(this->Ray({9, origin, 9}, {1, direction, 1}), box, t, 1));
            this->ExpectInterval(t, -3, QUIET_NAN<T>);
        }
        for (T const origin : {outside, -outside, INF<T>, QUIET_NAN<T>})
        {
            Interval<T> t{-3, 7};
            EXPECT_FALSE(ClipSide(this->Ray({0, origin, 0}, {1, direction, 1}), box, t, 1));
            this->ExpectInterval(t, -3, 7);
        }
    }
}

TYPED_TEST(RayTest, ADirectionJustAboveTheToleranceCrossesTheSlab)
{
    using T = TypeParam;
    T const direction = std::nextafter(this->E, T{1});
    tVolumeAABB<T> const box({-1, -1, -1}, {1, 1, 1});
    Interval<T> t{0, INF<T>};
    EXPECT_TRUE(ClipSide(this->Ray({2, 0, 0}, {-direction, 0, 0}), box, t, 0));
    this->ExpectInterval(t, (1 - T{2} + this->E) * (1 / -direction), (-1 - T{2} - this->E) * (1 / -direction));
}

TYPED_TEST(RayTest, ADirectionOfNaNCountsAsAlongTheSlab)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({-1, -1, -1}, {1, 1, 1});
    Interval<T> t{0, 1};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {QUIET_NAN<T>, 0, 0}), box, t, 0));
    EXPECT_FALSE(ClipSide(this->Ray({2, 0, 0}, {QUIET_NAN<T>, 0, 0}), box, t, 0));
    this->ExpectInterval(t, 0, 1);
}

TYPED_TEST(RayTest, AParameterOfNaNIsNeitherAheadNorNarrowing)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    Interval<T> t{0, 100};
    // Both NaN, and NaN with a negative one: a miss.
    EXPECT_FALSE(ClipSide(this->Ray({nan, 0, 0}, {1, 0, 0}), this->Box({1, 0, 0}, {2, 0, 0}), t, 0));
    EXPECT_FALSE(ClipSide(this->Ray({5, 0, 0}, {1, 0, 0}), this->Box({nan, 0, 0}, {2, 0, 0}), t, 0));
    EXPECT_FALSE(ClipSide(this->Ray({5, 0, 0}, {-1, 0, 0}), this->Box({7, 0, 0}, {nan, 0, 0}), t, 0));
    this->ExpectInterval(t, 0, 100);
    // NaN with one ahead: the one ahead narrows where it stands.
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({nan, 0, 0}, {2, 0, 0}), t, 0));
    this->ExpectInterval(t, 0, 2 + this->E);
    t = {0, 100};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({1, 0, 0}, {nan, 0, 0}), t, 0));
    this->ExpectInterval(t, 1 - this->E, 100);
}

TYPED_TEST(RayTest, AnIntervalOfNaNStaysAndIsAMiss)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    Interval<T> t{nan, 100};
    EXPECT_FALSE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({1, 0, 0}, {2, 0, 0}), t, 0));
    this->ExpectInterval(t, nan, 2 + this->E);
    t = {0, nan};
    EXPECT_FALSE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({1, 0, 0}, {2, 0, 0}), t, 0));
    this->ExpectInterval(t, 1 - this->E, nan);
}

TYPED_TEST(RayTest, EqualEndsAreKept)
{
    using T = TypeParam;
    // The entry is +0 and the exit +0, neither beyond the -0 that the interval holds.
    Interval<T> t{-T{0}, -T{0}};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {1, 0, 0}), this->Box({this->E, 0, 0}, {-this->E, 0, 0}), t, 0));
    this->ExpectInterval(t, -T{0}, -T{0});
}

TYPED_TEST(RayTest, ASlabMultipliesByTheReciprocal)
{
    using T = TypeParam;
    // 41 * (1/41) in single, 49 * (1/49) in double precision is a step below 1. The margin does not matter next to it.
    T const n = std::is_same_v<T, float> ? T{41} : T{49};
    T const lower = n + this->E; // rounds to n
    ASSERT_EQ(lower, n);
    Interval<T> t{0, 100};
    EXPECT_TRUE(ClipSide(this->Ray({0, 0, 0}, {n, 0, 0}), this->Box({n, 0, 0}, {2 * n, 0, 0}), t, 0));
    ExpectSameBits(t.tNear, 1 - EPSILON<T> / 2);
}

TYPED_TEST(RayTest, EverySpecialValueOfEveryOperandNarrowsAsInSteps)
{
    using T = TypeParam;
    T const values[] = {
        0,       -T{0},    1,          -1,          2,      this->E, -this->E,    std::nextafter(this->E, T{1}),
        TINY<T>, -TINY<T>, LARGEST<T>, -LARGEST<T>, INF<T>, -INF<T>, QUIET_NAN<T>};
    T const ends[] = {0, -T{0}, 1, -3, INF<T>, -INF<T>, QUIET_NAN<T>};
    int mismatches = 0;
    int hits = 0;
    auto const same = [](T a, T b) { return Bits(a) == Bits(b) || (a != a && b != b); };
    for (T const lower : values)
        for (T const upper : values)
            for (T const origin : values)
                for (T const direction : values)
                    for (T const tNear : ends)
                        for (T const tFar : ends)
                        {
                            Interval<T> expected{tNear, tFar};
                            bool const hit = ClipSideInSteps(lower, upper, origin, direction, expected);
                            hits += hit ? 1 : 0;
                            Interval<T> actual{tNear, tFar};
                            tRay<T> const ray({7, origin, 7}, {7, direction, 7});
                            bool const actualHit = ClipSide(ray, {{7, lower, 7}, {7, upper, 7}}, actual, 1);
                            if (hit != actualHit || !same(actual.tNear, expected.tNear) ||
                                !same(actual.tFar, expected.tFar))
                                ++mismatches;
                        }
    EXPECT_EQ(mismatches, 0);
    EXPECT_GT(hits, 100000);
}

TYPED_TEST(RayTest, RandomSlabsNarrowAsInSteps)
{
    using T = TypeParam;
    Random random(20240615);
    auto const next = [&random] { return random.Number<T>(-2, 2); };
    int hits = 0;
    for (int i = 0; i < 20000; ++i)
    {
        T const lower = next();
        T const upper = lower + std::abs(next());
        tRay<T> const ray{{next(), next(), next()}, {next(), next(), next()}};
        int const axis = i % 3;
        auto const a = static_cast<std::size_t>(axis);
        tVolumeAABB<T> box;
        box.GetMin()[a] = lower;
        box.GetMax()[a] = upper;
        Interval<T> expected{0, 10};
        Interval<T> actual = expected;
        bool const hit = ClipSideInSteps(lower, upper, ray.origin[a], ray.direction[a], expected);
        ASSERT_EQ(ClipSide(ray, box, actual, axis), hit);
        this->ExpectInterval(actual, expected.tNear, expected.tFar);
        hits += hit ? 1 : 0;
    }
    EXPECT_GT(hits, 2000);
    EXPECT_LT(hits, 18000);
}

// Whole boxes

TYPED_TEST(RayTest, ClipsAgainstABoxInFront)
{
    using T = TypeParam;
    Interval<T> t{0, 100};
    EXPECT_TRUE(Clip(this->Ray({0, 0, -5}, {0, 0, 1}), this->Box({-1, -1, -1}, {1, 1, 1}), t));
    EXPECT_NEAR(t.tNear, T{4}, 4 * this->E);
    EXPECT_NEAR(t.tFar, T{6}, 4 * this->E);
}

TYPED_TEST(RayTest, AnOriginInsideABoxKeepsTheCallersNearEnd)
{
    using T = TypeParam;
    Interval<T> t{0, 100};
    EXPECT_TRUE(Clip(this->Ray({0, 0, 0}, {1, 1, 1}), this->Box({-1, -1, -1}, {1, 1, 1}), t));
    this->ExpectInterval(t, 0, 1 + this->E);
}

TYPED_TEST(RayTest, ABoxBehindOrBesideIsAMiss)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({-1, -1, -1}, {1, 1, 1});
    Interval<T> t{0, 100};
    EXPECT_FALSE(Clip(this->Ray({0, 0, 5}, {0, 0, 1}), box, t));
    this->ExpectInterval(t, 0, 100);
    EXPECT_FALSE(Clip(this->Ray({0, 3, -5}, {0, 0, 1}), box, t));
    EXPECT_FALSE(Clip(this->Ray({-5, 0, 0}, {1, 1, 0}), box, t));
}

TYPED_TEST(RayTest, BoxClippingStopsAtTheFirstAxisThatMisses)
{
    using T = TypeParam;
    // x narrows to [2, 3], y misses with [5, 6], z would narrow to [2.5, 2.75].
    tRay<T> const ray({0, 0, 0}, {1, 1, 1});
    tVolumeAABB<T> const box({2, 5, 2.5}, {3, 6, 2.75});
    Interval<T> t{0, 100};
    EXPECT_FALSE(Clip(ray, box, t));
    this->ExpectInterval(t, 5 - this->E, 3 + this->E);
}

TYPED_TEST(RayTest, BoxClippingStartsFromTheCallersInterval)
{
    using T = TypeParam;
    tRay<T> const ray({0, 0, -5}, {0, 0, 1});
    tVolumeAABB<T> const box({-1, -1, -1}, {1, 1, 1});
    Interval<T> t{4.5, 5.5};
    EXPECT_TRUE(Clip(ray, box, t));
    this->ExpectInterval(t, 4.5, 5.5);
    t = {0, 3};
    EXPECT_FALSE(Clip(ray, box, t));
    t = {7, 8};
    EXPECT_FALSE(Clip(ray, box, t));
}

TYPED_TEST(RayTest, TheFacesOfTheEmptyBoxAreOrderedLikeThoseOfAnyOther)
{
    using T = TypeParam;
    // Its infinite parameters change places, so that a ray that crosses all three slabs keeps its interval.
    Interval<T> t{0, 100};
    EXPECT_TRUE(Clip(this->Ray({0, 0, 0}, {1, -1, 1}), tVolumeAABB<T>(), t));
    this->ExpectInterval(t, 0, 100);
    for (tVector3<T> const& along : {tVector3<T>(0, 0, 1), {0, 0, 0}, {-1, 0, 2}})
        EXPECT_FALSE(Clip(this->Ray({0, 0, 0}, along), tVolumeAABB<T>(), t));
    this->ExpectInterval(t, 0, 100);
}

TYPED_TEST(RayTest, BoxClippingNarrowsByXThenYThenZ)
{
    using T = TypeParam;
    Random random(20240616);
    auto const next = [&random] { return static_cast<T>(random.Whole(-16, 16)) / 8; };
    int hits = 0;
    for (int i = 0; i < 20000; ++i)
    {
        tRay<T> const ray{{next(), next(), next()}, {next(), next(), next()}};
        tVolumeAABB<T> const box{{next(), next(), next()}, {next(), next(), next()}};
        Interval<T> expected{0, 5};
        bool const hit = ClipInSteps(ray, box, expected);
        Interval<T> actual{0, 5};
        ASSERT_EQ(Clip(ray, box, actual), hit);
        this->ExpectInterval(actual, expected.tNear, expected.tFar);
        hits += hit ? 1 : 0;
    }
    EXPECT_GT(hits, 200);
}

template <typename T>
void ExpectClippedInSteps(tRay<T> const& ray, tVolumeAABB<T> const& box, Interval<T> const& start)
{
    Interval<T> expected = start;
    Interval<T> actual = start;
    bool const hit = ClipInSteps(ray, box, expected);
    if (Clip(ray, box, actual) == hit && HasSameBits(actual.tNear, expected.tNear) &&
        HasSameBits(actual.tFar, expected.tFar))
        return;
    ADD_FAILURE() << "from " << ray.origin << " along " << ray.direction << ", box " << box.GetMin() << " to "
                  << box.GetMax() << ", " << start.tNear << " to " << start.tFar << ": " << actual.tNear << " to "
                  << actual.tFar << " instead of " << hit << ", " << expected.tNear << " to " << expected.tFar;
}

TYPED_TEST(RayTest, EverySpecialValueOnOneAxisOfABoxNarrowsAsInSteps)
{
    using T = TypeParam;
    T const values[] = {
        0,       -T{0},    1,          -1,     3,       this->E,     -this->E, std::nextafter(this->E, T{1}),
        TINY<T>, -TINY<T>, LARGEST<T>, INF<T>, -INF<T>, QUIET_NAN<T>};
    Interval<T> const starts[] = {{0, 100},          {-T{0}, INF<T>},   {-INF<T>, -1},
                                  {QUIET_NAN<T>, 1}, {0, QUIET_NAN<T>}, {2, 2}};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (T const others : {T{1}, T{-0.5}, T{0}}) // the other axes are crossed either way, or run along
            for (T const lower : values)
                for (T const upper : values)
                    for (T const origin : values)
                        for (T const direction : values)
                        {
                            tRay<T> ray({1, 1, 1}, {others, others, others});
                            tVolumeAABB<T> box({-2, -2, -2}, {4, 4, 4});
                            ray.origin[axis] = origin;
                            ray.direction[axis] = direction;
                            box.GetMin()[axis] = lower;
                            box.GetMax()[axis] = upper;
                            for (Interval<T> const& start : starts)
                                ExpectClippedInSteps(ray, box, start);
                            ASSERT_FALSE(testing::Test::HasFailure());
                        }
}

TYPED_TEST(RayTest, SpecialValuesAnywhereInABoxNarrowAsInSteps)
{
    using T = TypeParam;
    Random random(20240622);
    auto const next = [&]() -> T
    {
        switch (random.Below(8))
        {
        case 0:
            return SPECIAL_VALUES<T>[random.Below(10)];
        case 1:
            return random.Below(2) == 0 ? this->E : std::nextafter(this->E, T{1});
        default:
            return static_cast<T>(random.Whole(-8, 8)) / 4; // so that faces, origins and ends of intervals meet
        }
    };
    for (int i = 0; i < 200000; ++i)
    {
        tRay<T> const ray{{next(), next(), next()}, {next(), next(), next()}};
        tVolumeAABB<T> const box{{next(), next(), next()}, {next(), next(), next()}};
        ExpectClippedInSteps(ray, box, {next(), next()});
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

TYPED_TEST(RayTest, BoxClippingMayWriteIntoTheRayAndTheBox)
{
    using T = TypeParam;
    tRay<T> ray({0, 0, -5}, {0, 0, 1});
    ray.direction.x = 100; // the far end; x and y are met at once from inside
    tVolumeAABB<T> box({-1, -1, -1}, {1, 1, 1});
    Interval<T> expected{-5, 1};
    bool const hit = Clip(ray, box, expected);
    EXPECT_EQ(ray.Clip(box, ray.origin.z, box.GetMax().z), hit);
    this->ExpectInterval({ray.origin.z, box.GetMax().z}, expected.tNear, expected.tFar);
}

// The screen

/// A view at the origin down -z, 90 degrees wide and high.
template <typename T>
tFrustum<T> const CAMERA{tMatrix4<T>(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2, -3, 0, 0, -1, 0)};

TYPED_TEST(RayTest, TheMiddleOfTheScreenIsHalfAndHalf)
{
    using T = TypeParam;
    T const tolerance = 4 * EPSILON<T>;
    tVector2<T> const position = this->Ray({0, 0, 0}, {0, 0, -1}).IntersectScreen(CAMERA<T>);
    EXPECT_NEAR(position.x, T(0.5), tolerance);
    EXPECT_NEAR(position.y, T(0.5), tolerance);
}

TYPED_TEST(RayTest, TheScreenRunsFromTheBottomLeftToTheTopRight)
{
    using T = TypeParam;
    T const tolerance = 8 * EPSILON<T>;
    std::pair<tVector3<T>, tVector2<T>> const directions[] = {
        {{1, -1, -1}, {1, 0}},      {{-1, 1, -1}, {0, 1}},
        {{1, 1, -1}, {1, 1}},       {{-0.5, 0.25, -1}, {0.25, 0.625}},
        {{3, 0, -1}, {2, 0.5}},     {{0, -3, -1}, {0.5, -1}},
        {{-3, 0, -1}, {-1, 0.5}},   {{2, 2, -4}, {0.75, 0.75}},
        {{-2, -2, 4}, {0.75, 0.75}}};
    for (auto const& [direction, expected] : directions)
    {
        tVector2<T> const position = this->Ray({0, 0, 0}, direction).IntersectScreen(CAMERA<T>);
        EXPECT_NEAR(position.x, expected.x, tolerance);
        EXPECT_NEAR(position.y, expected.y, tolerance);
    }
}

TYPED_TEST(RayTest, TheBottomLeftEdgeItselfIsExactlyZero)
{
    using T = TypeParam;
    tVector3<T> const edge = CAMERA<T>.GetEdgeVector(tFrustum<T>::EDGE_BOTTOM_LEFT);
    ExpectSameBits(this->Ray({0, 0, 0}, edge).IntersectScreen(CAMERA<T>), {0, 0});
    ExpectSameBits(this->Ray({0, 0, 0}, -edge).IntersectScreen(CAMERA<T>), {0, 0});
    ExpectSameBits(this->Ray({0, 0, 0}, edge * T{4}).IntersectScreen(CAMERA<T>), {0, 0});
    T const tolerance = 4 * EPSILON<T>;
    tVector2<T> const corner = this->Ray({0, 0, 0}, {-1, -1, -1}).IntersectScreen(CAMERA<T>);
    EXPECT_NEAR(corner.x, T{0}, tolerance);
    EXPECT_NEAR(corner.y, T{0}, tolerance);
}

TYPED_TEST(RayTest, TheScreenDoesNotDependOnTheOrigin)
{
    using T = TypeParam;
    tVector3<T> const direction(-0.5, 0.25, -1);
    T const nan = QUIET_NAN<T>;
    ExpectSameBits(this->Ray({1, 2, nan}, direction).IntersectScreen(CAMERA<T>),
                   this->Ray({0, 0, 0}, direction).IntersectScreen(CAMERA<T>));
}

TYPED_TEST(RayTest, TheScreenTurnsTheOtherWayUpThanTheNearPlane)
{
    using T = TypeParam;
    T const tolerance = 8 * EPSILON<T>;
    tRay<T> const ray({0, 0, 0}, {-0.5, 0.25, -1});
    tVector2<T> const onScreen = ray.IntersectScreen(CAMERA<T>);
    tVector2<T> const onNearPlane = CAMERA<T>.IntersectNear(ray);
    EXPECT_NEAR(onScreen.x, onNearPlane.x, tolerance);
    EXPECT_NEAR(onScreen.y, 1 - onNearPlane.y, tolerance);
}

TYPED_TEST(RayTest, TheScreenDividesOnTheWay)
{
    using T = TypeParam;
    Random random(20240617);
    auto const next = [&random] { return random.Number<T>(-1, 1); };
    tFrustum<T> const skewed{tMatrix4<T>(3, 1, -2, 1, 2, 5, 1, -1, 1, -1, -2, -3, T(0.5), T(0.25), -1, 2)};
    tVector3<T> const n = skewed.GetNearPlane().GetNormal();
    auto const dot = [](tVector3<T> const& a, tVector3<T> const& b) { return a.x * b.x + a.y * b.y + a.z * b.z; };
    auto const over = [](tVector3<T> const& a, T divisor)
    { return tVector3<T>(a.x / divisor, a.y / divisor, a.z / divisor); };
    auto const difference = [](tVector3<T> const& a, tVector3<T> const& b)
    { return tVector3<T>(a.x - b.x, a.y - b.y, a.z - b.z); };
    auto const length = [&dot](tVector3<T> const& a) { return std::sqrt(dot(a, a)); };
    tVector3<T> const e0 = skewed.GetEdgeVector(tFrustum<T>::EDGE_TOP_LEFT);
    tVector3<T> const e2 = skewed.GetEdgeVector(tFrustum<T>::EDGE_BOTTOM_LEFT);
    tVector3<T> const e3 = skewed.GetEdgeVector(tFrustum<T>::EDGE_BOTTOM_RIGHT);
    tVector3<T> const corner = over(e2, dot(n, e2));
    tVector3<T> const a = difference(over(e3, dot(n, e3)), corner);
    tVector3<T> const b = difference(over(e0, dot(n, e0)), corner);
    for (int i = 0; i < 500; ++i)
    {
        tVector3<T> const d{next(), next(), next()};
        tVector3<T> const c = difference(over(d, dot(n, d)), corner);
        T const u = dot(over(a, length(a)), over(c, length(c))) * (length(c) / length(a));
        T const v = dot(over(b, length(b)), over(c, length(c))) * (length(c) / length(b));
        ExpectSameBits(this->Ray({0, 0, 0}, d).IntersectScreen(skewed), {u, v});
        // What it amounts to:
        EXPECT_NEAR(u, dot(a, c) / dot(a, a), (std::abs(u) + length(c)) * 32 * EPSILON<T>);
        EXPECT_NEAR(v, dot(b, c) / dot(b, b), (std::abs(v) + length(c)) * 32 * EPSILON<T>);
    }
}

TYPED_TEST(RayTest, ADirectionAlongTheNearPlaneGivesNoNumbers)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    // (1, 1, 0) / 0 has two infinities, the third component is NaN.
    ExpectSameBits(this->Ray({0, 0, 0}, {1, 1, 0}).IntersectScreen(CAMERA<T>), {nan, nan});
    ExpectSameBits(this->Ray({0, 0, 0}, {0, 0, 0}).IntersectScreen(CAMERA<T>), {nan, nan});
    ExpectSameBits(this->Ray({0, 0, 0}, {0, 0, -1}).IntersectScreen(tFrustum<T>()), {nan, nan});
}

} // namespace
