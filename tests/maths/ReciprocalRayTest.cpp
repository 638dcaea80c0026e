#include "bv/maths/tReciprocalRay.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class ReciprocalRayTest : public testing::Test
{
};
TYPED_TEST_SUITE(ReciprocalRayTest, Precisions);

template <typename T>
bool Meets(tRay<T> const& ray, tVolumeAABB<T> const& box, T tNear = 0, T tFar = 100)
{
    return tReciprocalRay<T>(ray).Clip(box, tNear, tFar);
}

TYPED_TEST(ReciprocalRayTest, NarrowsTheIntervalToALittleMoreThanTheBox)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({2, 2, 2}, {4, 4, 4});
    T tNear = 0;
    T tFar = 100;
    // Enters at t = 2, through all faces at once, and leaves at 4.
    EXPECT_TRUE(tReciprocalRay<T>(tRay<T>({0, 0, 0}, {1, 1, 1})).Clip(box, tNear, tFar));
    ExpectSameBits(tNear, T{2} * (T{1} - T{4} * EPSILON<T>));
    ExpectSameBits(tFar, T{4} * (T{1} + T{4} * EPSILON<T>));
    tNear = 3;
    tFar = T(3.5);
    EXPECT_TRUE(tReciprocalRay<T>(tRay<T>({0, 0, 0}, {1, 1, 1})).Clip(box, tNear, tFar));
    ExpectSameBits(tNear, T{3});
    ExpectSameBits(tFar, T(3.5));
    tNear = 5;
    tFar = 9;
    EXPECT_FALSE(tReciprocalRay<T>(tRay<T>({0, 0, 0}, {1, 1, 1})).Clip(box, tNear, tFar));
    EXPECT_LT(tFar, T{5});
}

TYPED_TEST(ReciprocalRayTest, MeetsWhatItTouchesAndNothingBehindItsOrigin)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({1, 1, 1}, {2, 2, 2});
    EXPECT_TRUE(Meets<T>({{0, 0, 0}, {1, 1, 1}}, box)); // along the diagonal, through two corners
    EXPECT_TRUE(Meets<T>({{0, 2, 0}, {1, 0, 1}}, box)); // along a face
    EXPECT_TRUE(Meets<T>({{0, 1, 1}, {1, 0, 0}}, box)); // along an edge
    EXPECT_TRUE(Meets<T>({{0, 2, 2}, {1, 0, 0}}, box));
    EXPECT_TRUE(Meets<T>({{0, 2, 1}, {1, T(-0.0), T(-0.0)}}, box)); // zeros of either sign
    EXPECT_TRUE(Meets<T>({{3, 1, 2}, {-1, T(-0.0), T(0.0)}}, box));
    EXPECT_TRUE(Meets<T>({{0, 3, T(1.5)}, {1, -1, 0}}, box)); // at an edge, x = 1 and y = 2
    EXPECT_TRUE(Meets<T>({{2, 2, 2}, {1, 1, 1}}, box));       // from a corner, outwards
    EXPECT_FALSE(Meets<T>({{3, 3, 3}, {1, 1, 1}}, box));
    EXPECT_TRUE(Meets<T>({{3, 3, 3}, {-1, -1, -1}}, box));
    EXPECT_FALSE(Meets<T>({{0, JustAbove(T{2}), T(1.5)}, {1, 0, 0}}, box)); // no tolerance for what runs beside it
    EXPECT_FALSE(Meets<T>({{0, JustBelow(T{1}), T(1.5)}, {1, 0, 0}}, box));
    EXPECT_FALSE(Meets<T>({{0, 0, 0}, {1, 1, 0}}, box));
}

TYPED_TEST(ReciprocalRayTest, ADirectionOfZerosMeetsTheBoxesAroundItsOrigin)
{
    using T = TypeParam;
    EXPECT_TRUE(Meets<T>({{1, 2, 3}, {0, 0, 0}}, {{0, 2, 2}, {2, 3, 4}}));
    EXPECT_FALSE(Meets<T>({{1, 2, 3}, {0, 0, 0}}, {{0, 3, 2}, {2, 4, 4}}));
    T tNear = 0;
    T tFar = 1;
    EXPECT_TRUE(tReciprocalRay<T>().Clip({{-1, -1, -1}, {1, 1, 1}}, tNear, tFar));
    EXPECT_FALSE(tReciprocalRay<T>().Clip({{1, 1, 1}, {2, 2, 2}}, tNear, tFar));
}

TYPED_TEST(ReciprocalRayTest, EmptyAndUnboundedBoxesAndNan)
{
    using T = TypeParam;
    tRay<T> const ray({0, 0, 0}, {1, 2, 3});
    EXPECT_TRUE(Meets(ray, tVolumeAABB<T>())); // which of two faces comes first is not looked at
    EXPECT_TRUE(Meets<T>(ray, {{-INF<T>, -INF<T>, -INF<T>}, {INF<T>, INF<T>, INF<T>}}));
    EXPECT_TRUE(Meets<T>(ray, {{QUIET_NAN<T>, -1, -1}, {1, 1, 1}})); // narrows nothing
    EXPECT_FALSE(Meets<T>(ray, {{-1, -1, -1}, {1, 1, 1}}, QUIET_NAN<T>, 9));
    EXPECT_FALSE(Meets<T>(ray, {{-1, -1, -1}, {1, 1, 1}}, 0, QUIET_NAN<T>));
    EXPECT_FALSE(Meets<T>(ray, {{-1, -1, -1}, {1, 1, 1}}, 5, 2));
    EXPECT_TRUE(Meets<T>(ray, {{5, 10, 15}, {5, 10, 15}})); // a point on the ray
    tReciprocalRay<T> const prepared(tRay<T>({1, 2, 3}, {T(-0.0), TINY<T>, -4}));
    ExpectSameBits(prepared.GetOrigin(), tVector3<T>(1, 2, 3));
    ExpectSameBits(prepared.GetReciprocal(), tVector3<T>(INF<T>, INF<T>, T(-0.25)));
}

TYPED_TEST(ReciprocalRayTest, NeverMissesAPointOfTheBox)
{
    using T = TypeParam;
    Random random(11);
    for (int i = 0; i < 300000; ++i)
    {
        // A point on an edge or corner of a thin box, as a ray of whole steps meets it: exactly, in whole numbers below
        // 2^20 whose differences, but not whose quotients, are exact.
        tVector3<T> const direction(T(random.Whole(-999, 999)), T(random.Whole(-999, 999)), T(random.Whole(-999, 999)));
        T const steps = T(random.Whole(1, 500));
        tVector3<T> const origin(T(random.Whole(-999, 999)), T(random.Whole(-999, 999)), T(random.Whole(-999, 999)));
        tVector3<T> const point = origin + direction * steps;
        tVector3<T> lower = point;
        tVector3<T> upper = point;
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            std::uint32_t const side = random.Below(3);
            if (side == 0)
                lower[axis] -= T{3};
            if (side == 1)
                upper[axis] += T{3};
        }
        T tNear = 0;
        T tFar = steps; // the point is the last that counts
        ASSERT_TRUE(tReciprocalRay<T>(tRay<T>(origin, direction)).Clip({lower, upper}, tNear, tFar)) << i;
        EXPECT_LE(tNear, steps);
        EXPECT_EQ(tFar, steps);
        tNear = steps;
        tFar = 1000;
        ASSERT_TRUE(tReciprocalRay<T>(tRay<T>(origin, direction)).Clip({lower, upper}, tNear, tFar)) << i;
        EXPECT_GE(tFar, steps);
    }
}

TYPED_TEST(ReciprocalRayTest, MissesWhatIsFarFromTheRay)
{
    using T = TypeParam;
    Random random(12);
    int counts[2] = {};
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<T> const origin = random.Vector<tVector3<T>>(-3, 3);
        tRay<T> const ray(origin, random.Vector<tVector3<T>>(-2, 2) - origin);
        tVector3<T> const lower = random.Vector<tVector3<T>>(-2, 1);
        tVolumeAABB<T> const box(lower, lower + random.Vector<tVector3<T>>(0, 2));
        // The slabs in higher precision, and no box that is nearly touched.
        double lo = 0, hi = 100;
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            double const d = static_cast<double>(ray.direction[axis]), o = static_cast<double>(ray.origin[axis]);
            double const t1 = (static_cast<double>(box.GetMin()[axis]) - o) / d;
            double const t2 = (static_cast<double>(box.GetMax()[axis]) - o) / d;
            lo = std::max(lo, std::min(t1, t2));
            hi = std::min(hi, std::max(t1, t2));
        }
        if (std::abs(hi - lo) < 1e-3 || std::abs(hi) < 1e-3)
            continue;
        ASSERT_EQ(Meets(ray, box), lo <= hi) << i;
        ++counts[lo <= hi ? 1 : 0];
    }
    EXPECT_GT(counts[0], 2000);
    EXPECT_GT(counts[1], 2000);
}

} // namespace
