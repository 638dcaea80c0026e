#include "bv/maths/tDepthRay.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
using DepthRay = tDepthRay<T, bv::IRayPayloadInternal>;

/// The two parameters of a sphere and their derivatives.
template <typename T>
struct Hits
{
    T tNear{7};
    T tFar{8};
    tVector2<T> dNear{9, 10};
    tVector2<T> dFar{11, 12};
};

template <typename T>
bool ClipDiff(DepthRay<T> const& ray, tVolumeSphere<T> const& sphere, Hits<T>& hits)
{
    return ray.ClipDiff(sphere, hits.tNear, hits.tFar, hits.dNear, hits.dFar);
}

template <typename T>
class DepthRayTest : public testing::Test
{
protected:
    tVolumeSphere<T> const unitSphere{{0, 0, 0}, 1};

    static void ExpectHits(Hits<T> const& actual, T tNear, T tFar, tVector2<T> const& dNear, tVector2<T> const& dFar)
    {
        ExpectSameBits(actual.tNear, tNear);
        ExpectSameBits(actual.tFar, tFar);
        ExpectSameBits(actual.dNear, dNear);
        ExpectSameBits(actual.dFar, dFar);
    }
};

TYPED_TEST_SUITE(DepthRayTest, Precisions);

TYPED_TEST(DepthRayTest, LaysOutItsFieldsInOrderWithoutGaps)
{
    using T = TypeParam;
    static_assert(sizeof(DepthRay<T>) == 20 * sizeof(T) + std::max(sizeof(void*), alignof(T)));
    static_assert(!std::is_polymorphic_v<DepthRay<T>> && std::is_trivially_copyable_v<DepthRay<T>>);
    static_assert(std::is_base_of_v<tRay<T>, DepthRay<T>> && std::is_convertible_v<DepthRay<T>*, tRay<T>*>);
    DepthRay<T> ray({1, 2, 3}, {4, 5, 6});
    ray.tMin = 7;
    ray.tMax = 8;
    ray.dOriginDu = {9, 10, 11};
    ray.dOriginDv = {12, 13, 14};
    ray.dDirectionDu = {15, 16, 17};
    ray.dDirectionDv = {18, 19, 20};
    ray.payload = reinterpret_cast<bv::IRayPayloadInternal*>(&ray);
    std::array<T, 20> numbers{};
    std::memcpy(numbers.data(), &ray, sizeof(numbers));
    for (std::size_t i = 0; i < 20; ++i)
        EXPECT_EQ(numbers[i], static_cast<T>(i + 1));
    void* payload = nullptr;
    std::memcpy(&payload, reinterpret_cast<char const*>(&ray) + sizeof(numbers), sizeof(payload));
    EXPECT_EQ(payload, &ray);
}

TYPED_TEST(DepthRayTest, PromisesItsTypesToTheCompiler)
{
    using T = TypeParam;
    using Ray = DepthRay<T>;
    static_assert(std::is_nothrow_default_constructible_v<Ray> && std::is_nothrow_copy_assignable_v<Ray>);
    static_assert(std::is_nothrow_constructible_v<Ray, tVector3<T> const&, tVector3<T> const&>);
    static_assert(std::is_same_v<decltype(Ray::tMin), T> && std::is_same_v<decltype(Ray::tMax), T>);
    static_assert(std::is_same_v<decltype(Ray::dOriginDu), tVector3<T>>);
    static_assert(std::is_same_v<decltype(Ray::dOriginDv), tVector3<T>>);
    static_assert(std::is_same_v<decltype(Ray::dDirectionDu), tVector3<T>>);
    static_assert(std::is_same_v<decltype(Ray::dDirectionDv), tVector3<T>>);
    static_assert(std::is_same_v<decltype(Ray::payload), bv::IRayPayloadInternal*>);
    Hits<T> hits;
    static_assert(std::is_same_v<decltype(std::declval<Ray const&>().ClipDiff(this->unitSphere, hits.tNear, hits.tFar,
                                                                              hits.dNear, hits.dFar)),
                                 bool>);
    static_assert(
        noexcept(std::declval<Ray const&>().ClipDiff(this->unitSphere, hits.tNear, hits.tFar, hits.dNear, hits.dFar)));
    EXPECT_EQ(hits.tNear, T{7});
}

TYPED_TEST(DepthRayTest, IsZeroByDefault)
{
    alignas(DepthRay<TypeParam>) unsigned char memory[sizeof(DepthRay<TypeParam>)];
    std::memset(memory, 0xFF, sizeof(memory));
    DepthRay<TypeParam> const& ray = *new (memory) DepthRay<TypeParam>;
    for (tVector3<TypeParam> const& vector :
         {ray.origin, ray.direction, ray.dOriginDu, ray.dOriginDv, ray.dDirectionDu, ray.dDirectionDv})
        ExpectSameBits(vector, tVector3<TypeParam>());
    ExpectSameBits(ray.tMin, TypeParam{0});
    ExpectSameBits(ray.tMax, TypeParam{0});
    EXPECT_EQ(ray.payload, nullptr);
}

TYPED_TEST(DepthRayTest, FromOriginAndDirectionEverythingElseIsZero)
{
    DepthRay<TypeParam> const ray({1, 2, 3}, {4, 5, 6});
    ExpectSameBits(ray.origin, {1, 2, 3});
    ExpectSameBits(ray.direction, {4, 5, 6});
    for (tVector3<TypeParam> const& vector : {ray.dOriginDu, ray.dOriginDv, ray.dDirectionDu, ray.dDirectionDv})
        ExpectSameBits(vector, tVector3<TypeParam>());
    ExpectSameBits(ray.tMin, TypeParam{0});
    ExpectSameBits(ray.tMax, TypeParam{0});
    EXPECT_EQ(ray.payload, nullptr);
}

TYPED_TEST(DepthRayTest, HasTheOperationsOfARay)
{
    using T = TypeParam;
    DepthRay<T> ray({0, 0, -5}, {0, 0, 1});
    ray.tMax = 100;
    EXPECT_TRUE(ray.Clip(this->unitSphere, ray.tMin, ray.tMax));
    EXPECT_EQ(ray.tMin, T{4});
    EXPECT_EQ(ray.tMax, T{6});
    EXPECT_TRUE(ray.Clip(tVolumeAABB<T>({-1, -1, 0}, {1, 1, 1}), ray.tMin, ray.tMax));
    EXPECT_NEAR(ray.tMin, T{5}, static_cast<T>(1e-5));
}

TYPED_TEST(DepthRayTest, TheTwoScalarsAreReadByNothing)
{
    using T = TypeParam;
    DepthRay<T> ray({0, 0, -5}, {0, 0, 1});
    ray.tMin = ray.tMax = QUIET_NAN<T>;
    Hits<T> hits;
    EXPECT_TRUE(ClipDiff(ray, this->unitSphere, hits));
    EXPECT_EQ(hits.tNear, T{4});
    T tNear = 0;
    T tFar = 100;
    EXPECT_TRUE(ray.Clip(tVolumeAABB<T>({-1, -1, -1}, {1, 1, 1}), tNear, tFar));
}

TYPED_TEST(DepthRayTest, WithoutDifferentialsTheDerivativesAreZero)
{
    Hits<TypeParam> hits;
    EXPECT_TRUE(ClipDiff(DepthRay<TypeParam>({0, 0, -5}, {0, 0, 1}), this->unitSphere, hits));
    EXPECT_EQ(hits.tNear, TypeParam{4});
    EXPECT_EQ(hits.tFar, TypeParam{6});
    // db = 0 + 0, ds = (-10 * 0 - 2 * 0) * 0.5 = -0; -0 - -0 is 0, and -0 + -0 is -0.
    TypeParam const zero{0};
    this->ExpectHits(hits, 4, 6, {zero, zero}, {-zero, -zero});
}

TYPED_TEST(DepthRayTest, DerivativesFollowTheOriginAndTheDirection)
{
    using T = TypeParam;
    // L = (3, 0, -8), b = -8, and with the squared radius 25 disc = 64 + 25 - 73 = 16, s = 4.
    DepthRay<T> ray({3, 0, -8}, {0, 0, 1});
    tVolumeSphere<T> const sphere({0, 0, 0}, 25);
    ray.dOriginDu = {1, 0, 0};
    ray.dOriginDv = {0, 2, 0.5};
    ray.dDirectionDu = {0, 1, 0};
    ray.dDirectionDv = {1, 0, 0.25};
    Hits<T> hits;
    EXPECT_TRUE(ClipDiff(ray, sphere, hits));
    // db/du = L.Du + D.Pu = 0 + 0; ds/du = (-16 * 0 - 2 * 3) / 8 = -0.75.
    // db/dv = (3 - 2) + 0.5 = 1.5; ds/dv = (-16 * 1.5 - 2 * -4) / 8 = -2.
    this->ExpectHits(hits, 4, 12, {0.75, 0.5}, {-0.75, -3.5});
}

TYPED_TEST(DepthRayTest, DerivativesAgreeWithDifferencesOfTheParameters)
{
    constexpr double STEP = 1e-6;
    tDepthRay<double, bv::IRayPayloadInternal> ray({-1, -1.5, -4}, {0.36, 0.48, 0.8});
    ray.dOriginDu = {0.3, -0.2, 0.1};
    ray.dOriginDv = {-0.1, 0.25, 0.2};
    ray.dDirectionDu = {0.05, 0.1, -0.02};
    ray.dDirectionDv = {-0.07, 0.03, 0.04};
    tVolumeSphere<double> const sphere({0.5, 0.25, 1}, 4);
    auto const moved = [&](double u, double v)
    {
        tRay<double> const there(ray.origin + ray.dOriginDu * u + ray.dOriginDv * v,
                                 ray.direction + ray.dDirectionDu * u + ray.dDirectionDv * v);
        tVector2<double> t;
        EXPECT_TRUE(there.Clip(sphere, t.x, t.y));
        return t;
    };
    tVector2<double> const du = (moved(STEP, 0) - moved(-STEP, 0)) / (2 * STEP);
    tVector2<double> const dv = (moved(0, STEP) - moved(0, -STEP)) / (2 * STEP);
    auto const narrow = [](tVector3<double> const& vector)
    {
        return tVector3<TypeParam>(static_cast<TypeParam>(vector.x), static_cast<TypeParam>(vector.y),
                                   static_cast<TypeParam>(vector.z));
    };
    DepthRay<TypeParam> rounded(narrow(ray.origin), narrow(ray.direction));
    rounded.dOriginDu = narrow(ray.dOriginDu);
    rounded.dOriginDv = narrow(ray.dOriginDv);
    rounded.dDirectionDu = narrow(ray.dDirectionDu);
    rounded.dDirectionDv = narrow(ray.dDirectionDv);
    Hits<TypeParam> hits;
    EXPECT_TRUE(ClipDiff(rounded, tVolumeSphere<TypeParam>({TypeParam(0.5), TypeParam(0.25), 1}, 4), hits));
    // Central differences with this step are good for about nine digits, single precision for about six.
    double const tolerance = std::is_same_v<TypeParam, float> ? 2e-5 : 1e-8;
    EXPECT_NEAR(static_cast<double>(hits.dNear.x), du.x, tolerance);
    EXPECT_NEAR(static_cast<double>(hits.dNear.y), dv.x, tolerance);
    EXPECT_NEAR(static_cast<double>(hits.dFar.x), du.y, tolerance);
    EXPECT_NEAR(static_cast<double>(hits.dFar.y), dv.y, tolerance);
}

TYPED_TEST(DepthRayTest, AGrazingRayHasInfiniteDerivatives)
{
    using T = TypeParam;
    DepthRay<T> ray({1, 0, -5}, {0, 0, 1});
    ray.dOriginDu = {1, 0, 0};
    ray.dOriginDv = {-1, 0, 0};
    Hits<T> hits;
    EXPECT_TRUE(ClipDiff(ray, this->unitSphere, hits));
    // ds/du = -2 * (1 / 0), ds/dv = 2 * (1 / 0)
    this->ExpectHits(hits, 5, 5, {INF<T>, -INF<T>}, {-INF<T>, INF<T>});
}

TYPED_TEST(DepthRayTest, AGrazingRayWithoutDifferentialsHasNoDerivatives)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    Hits<TypeParam> hits;
    EXPECT_TRUE(ClipDiff(DepthRay<TypeParam>({1, 0, -5}, {0, 0, 1}), this->unitSphere, hits));
    this->ExpectHits(hits, 5, 5, {nan, nan}, {nan, nan});
}

TYPED_TEST(DepthRayTest, AMissedSphereWritesNothing)
{
    using T = TypeParam;
    for (tVector3<T> const& origin : {tVector3<T>(2, 0, -5), {QUIET_NAN<T>, 0, 0}, {0, 0, INF<T>}})
    {
        DepthRay<T> ray(origin, {0, 0, 1});
        ray.dOriginDu = {1, 0, 0};
        Hits<T> hits;
        EXPECT_FALSE(ClipDiff(ray, this->unitSphere, hits));
        this->ExpectHits(hits, 7, 8, {9, 10}, {11, 12});
    }
}

TYPED_TEST(DepthRayTest, ParametersAreThoseOfClipAndDerivativesFollowTheirFormulas)
{
    using T = TypeParam;
    Random random(20240618);
    auto const next = [&random] { return random.Number<T>(-1, 1); };
    auto const vector = [&next]
    {
        return tVector3<T>{next(), next(), next()}; // in braces, and so in this order
    };
    auto const dot = [](tVector3<T> const& a, tVector3<T> const& b) { return (a.x * b.x + a.y * b.y) + a.z * b.z; };
    int hitCount = 0;
    for (int i = 0; i < 2000; ++i)
    {
        DepthRay<T> ray{vector(), vector()};
        ray.dOriginDu = vector();
        ray.dOriginDv = vector();
        ray.dDirectionDu = vector();
        ray.dDirectionDv = vector();
        tVolumeSphere<T> const sphere{vector(), next() + 1};
        T tNear = 7;
        T tFar = 8;
        bool const hit = ray.Clip(sphere, tNear, tFar);
        Hits<T> hits;
        ASSERT_EQ(ClipDiff(ray, sphere, hits), hit);
        ExpectSameBits(hits.tNear, tNear);
        ExpectSameBits(hits.tFar, tFar);
        if (!hit)
            continue;
        ++hitCount;
        tVector3<T> const l = ray.origin - sphere.GetCentre();
        T const b = dot(ray.direction, l);
        T const s = std::sqrt((b * b + sphere.GetRadiusSquared()) - dot(l, l));
        T const reciprocal = 1 / (s + s);
        T const dbDu = dot(l, ray.dDirectionDu) + dot(ray.direction, ray.dOriginDu);
        T const dbDv = dot(l, ray.dDirectionDv) + dot(ray.direction, ray.dOriginDv);
        T const dsDu = ((2 * b) * dbDu - 2 * dot(l, ray.dOriginDu)) * reciprocal;
        T const dsDv = ((2 * b) * dbDv - 2 * dot(l, ray.dOriginDv)) * reciprocal;
        ExpectSameBits(hits.dNear, {-dbDu - dsDu, -dbDv - dsDv});
        ExpectSameBits(hits.dFar, {-dbDu + dsDu, -dbDv + dsDv});
    }
    EXPECT_GT(hitCount, 300);
}

TYPED_TEST(DepthRayTest, ClippingReadsTheRayBeforeItWrites)
{
    using T = TypeParam;
    DepthRay<T> ray({3, 0, -8}, {0, 0, 1});
    ray.dOriginDu = {1, 0, 0};
    tVector2<T> dNear;
    tVector2<T> dFar;
    EXPECT_TRUE(ray.ClipDiff(tVolumeSphere<T>({0, 0, 0}, 25), ray.origin.x, ray.dOriginDu.x, dNear, dFar));
    EXPECT_EQ(ray.origin.x, T{4});
    EXPECT_EQ(ray.dOriginDu.x, T{12});
    EXPECT_EQ(dNear.x, T{0.75});
    EXPECT_EQ(dFar.x, T{-0.75});
}

TYPED_TEST(DepthRayTest, ThePayloadIsCarriedAndNeverUsed)
{
    using T = TypeParam;
    DepthRay<T> ray({0, 0, -5}, {0, 0, 1});
    auto* const nowhere = reinterpret_cast<bv::IRayPayloadInternal*>(std::uintptr_t{1});
    ray.payload = nowhere;
    Hits<T> hits;
    EXPECT_TRUE(ClipDiff(ray, this->unitSphere, hits));
    EXPECT_EQ(ray.payload, nowhere);
    DepthRay<T> const copy = ray;
    EXPECT_EQ(copy.payload, nowhere);
}

struct OwnPayload
{
    int value;
};

TYPED_TEST(DepthRayTest, AnyPayloadMayBeCarried)
{
    OwnPayload payload{5};
    tDepthRay<TypeParam, OwnPayload> ray({0, 0, -5}, {0, 0, 1});
    ray.payload = &payload;
    TypeParam tNear = 0;
    TypeParam tFar = 0;
    tVector2<TypeParam> dNear;
    tVector2<TypeParam> dFar;
    EXPECT_TRUE(ray.ClipDiff(this->unitSphere, tNear, tFar, dNear, dFar));
    EXPECT_EQ(ray.payload->value, 5);
}

} // namespace
