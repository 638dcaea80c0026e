#include "bv/maths/Visibility.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/View.h"
#include "bv/maths/batch/Bounds.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tRay.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using bv::maths::DepthRange;
using bv::maths::tAreaAABB;
using bv::maths::tFrustum;
using bv::maths::tMatrix4;
using bv::maths::tOrientedBox;
using bv::maths::tPlane;
using bv::maths::tVector3;
using bv::maths::tVolumeAABB;
using bv::maths::tVolumeSphere;
using namespace bv::test;

namespace
{

template <typename T>
class VisibilityTest : public testing::Test
{
};
TYPED_TEST_SUITE(VisibilityTest, Precisions);

template <typename T>
using Result = typename tFrustum<T>::IntersectionResult;

template <typename T>
[[nodiscard]] std::vector<tPlane<T>> PlanesOf(tFrustum<T> const& view)
{
    return {view.GetLeftPlane(), view.GetRightPlane(), view.GetBottomPlane(),
            view.GetTopPlane(),  view.GetNearPlane(),  view.GetFarPlane()};
}

template <typename T>
void ExpectSameView(tFrustum<T> const& actual, tFrustum<T> const& expected)
{
    std::vector<tPlane<T>> const planes = PlanesOf(actual);
    std::vector<tPlane<T>> const others = PlanesOf(expected);
    for (std::size_t i = 0; i < 6; ++i)
    {
        ExpectSameBits(planes[i].GetNormal(), others[i].GetNormal());
        ExpectSameBits(planes[i].GetOffset(), others[i].GetOffset());
    }
}

template <typename T>
void ExpectNear(tVector3<T> const& actual, tVector3<T> const& expected, T tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

/// The box from -1 to 1, 2 and 3 as a view: all distances are exact for small numbers.
template <typename T>
[[nodiscard]] tFrustum<T> MakeBoxView()
{
    return {{{1, 0, 0}, 1}, {{-1, 0, 0}, 1}, {{0, 1, 0}, 2}, {{0, -1, 0}, 2}, {{0, 0, -1}, 3}, {{0, 0, 1}, 3}};
}

/// A perspective view or a parallel one from some place in some direction.
template <typename T>
[[nodiscard]] tMatrix4<T> RandomView(Random& random)
{
    tMatrix4<T> const projection = random.Below(2) == 0
                                       ? tMatrix4<T>::PerspectiveProjection(-1, 1, T(-0.75), T(0.75), 1, 12)
                                       : tMatrix4<T>::OrthogonalProjection(-4, 4, -3, 3, 1, 12);
    return projection * tMatrix4<T>::RotateAxis({0, 0, 0}, random.Vector<tVector3<T>>(-1, 1), random.Number<T>(-3, 3)) *
           tMatrix4<T>::Translate(random.Vector<tVector3<T>>(-4, 4));
}

template <typename T>
[[nodiscard]] tOrientedBox<T> RandomBox(Random& random)
{
    tVector3<T> const half = random.Vector<tVector3<T>>(0, 3);
    tOrientedBox<T> box(tVolumeAABB<T>(-half, half),
                        tMatrix4<T>::RotateAxis({0, 0, 0}, random.Vector<tVector3<T>>(-1, 1), random.Number<T>(-3, 3)));
    box.SetCentre(random.Vector<tVector3<T>>(-8, 8));
    return box;
}

// Points.

TYPED_TEST(VisibilityTest, APointIsInsideUnlessAPlaneHasItBehind)
{
    using T = TypeParam;
    tFrustum<T> const view = MakeBoxView<T>();
    for (int x = -2; x <= 2; ++x)
        for (int y = -3; y <= 3; ++y)
            for (int z = -4; z <= 4; ++z)
            {
                bool const isInside = std::abs(x) <= 1 && std::abs(y) <= 2 && std::abs(z) <= 3;
                tVector3<T> const point(static_cast<T>(x), static_cast<T>(y), static_cast<T>(z));
                EXPECT_EQ(Classify(view, point), isInside ? tFrustum<T>::INSIDE : tFrustum<T>::OUTSIDE);
            }
    EXPECT_EQ(Classify(view, tVector3<T>(1 + EPSILON<T>, 0, 0)), tFrustum<T>::OUTSIDE);
    EXPECT_EQ(Classify(view, tVector3<T>(0, INF<T>, 0)), tFrustum<T>::OUTSIDE);
    EXPECT_EQ(Classify(view, tVector3<T>(QUIET_NAN<T>, 0, 0)), tFrustum<T>::INSIDE);
    EXPECT_EQ(Classify(tFrustum<T>(), tVector3<T>(1, 2, 3)), tFrustum<T>::INSIDE);
}

TYPED_TEST(VisibilityTest, APointIsABoxOfASinglePoint)
{
    using T = TypeParam;
    Random random(4301);
    int inside = 0;
    for (int round = 0; round < 200; ++round)
    {
        tFrustum<T> const view(RandomView<T>(random));
        for (int i = 0; i < 100; ++i)
        {
            tVector3<T> point = random.Vector<tVector3<T>>(-8, 8);
            if (random.Below(8) == 0)
                point[random.Below(3)] = SPECIAL_VALUES<T>[random.Below(10)];
            EXPECT_EQ(Classify(view, point), view.ContainsAABB({point, point}));
            inside += Classify(view, point) == tFrustum<T>::INSIDE ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 1000);
}

// Spheres.

TYPED_TEST(VisibilityTest, ASphereThatTouchesAPlaneFromInsideIsInside)
{
    using T = TypeParam;
    tFrustum<T> const view = MakeBoxView<T>();
    auto const at = [&](T x, T radiusSquared) { return Classify(view, tVolumeSphere<T>({x, 0, 0}, radiusSquared)); };
    EXPECT_EQ(at(0, 1), tFrustum<T>::INSIDE);
    EXPECT_EQ(at(0, T(1.0625)), tFrustum<T>::INTERSECTING);
    EXPECT_EQ(at(3, 4), tFrustum<T>::INTERSECTING); // touches from behind
    EXPECT_EQ(at(3, T(3.75)), tFrustum<T>::OUTSIDE);
    EXPECT_EQ(at(1, 0), tFrustum<T>::INSIDE);
    EXPECT_EQ(at(9, -1), tFrustum<T>::INSIDE);
    EXPECT_EQ(at(9, QUIET_NAN<T>), tFrustum<T>::INSIDE);
    EXPECT_EQ(at(9, INF<T>), tFrustum<T>::INTERSECTING);
    EXPECT_EQ(at(QUIET_NAN<T>, 1), tFrustum<T>::INSIDE);
}

TYPED_TEST(VisibilityTest, OneSphereIsClassifiedAsManyAre)
{
    using T = TypeParam;
    Random random(4302);
    int seen[3] = {};
    for (int round = 0; round < 100; ++round)
    {
        tFrustum<T> const view(RandomView<T>(random));
        std::vector<tVolumeSphere<T>> spheres;
        for (int i = 0; i < 100; ++i)
        {
            spheres.emplace_back(random.Vector<tVector3<T>>(-8, 8), random.Number<T>(0, 4));
            if (random.Below(8) == 0)
                spheres.back() = tVolumeSphere<T>(spheres.back().GetCentre(), SPECIAL_VALUES<T>[random.Below(10)]);
        }
        std::vector<Result<T>> results(spheres.size());
        ClassifySpheres(view, spheres, std::span<Result<T>>(results));
        for (std::size_t i = 0; i < spheres.size(); ++i)
        {
            EXPECT_EQ(Classify(view, spheres[i]), results[i]);
            ++seen[results[i]];
        }
    }
    EXPECT_GT(std::min({seen[0], seen[1], seen[2]}), 100);
}

// Turned boxes.

TYPED_TEST(VisibilityTest, ATurnedBoxIsSeenByItsReachAlongEachNormal)
{
    using T = TypeParam;
    tFrustum<T> const view = MakeBoxView<T>();
    tOrientedBox<T> box(tVolumeAABB<T>({-1, -2, -3}, {1, 2, 3}));
    EXPECT_EQ(Classify(view, box), tFrustum<T>::INSIDE); // the view itself
    box.SetCentre({0, 4 * EPSILON<T>, 0});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::INTERSECTING);
    box.SetCentre({2, 0, 0});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::INTERSECTING); // touches from behind
    box.SetCentre({2 + 2 * EPSILON<T>, 0, 0});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::OUTSIDE);
    // a quarter turn about z: it reaches 2 along x
    box.SetAxes({0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::INTERSECTING);
    box.SetCentre({3, 0, 0});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::INTERSECTING);
    box.SetCentre({T(3.25), 0, 0});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::OUTSIDE);
    EXPECT_EQ(Classify(view, tOrientedBox<T>()), tFrustum<T>::OUTSIDE);
    EXPECT_EQ(Classify(view, tOrientedBox<T>({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, -1})),
              tFrustum<T>::OUTSIDE);
    box.SetCentre({QUIET_NAN<T>, QUIET_NAN<T>, QUIET_NAN<T>});
    EXPECT_EQ(Classify(view, box), tFrustum<T>::INSIDE);
}

TYPED_TEST(VisibilityTest, ATurnedBoxIsWhereItsCornersAre)
{
    using T = TypeParam;
    Random random(4303);
    int seen[3] = {};
    T const tolerance = 256 * EPSILON<T>;
    for (int round = 0; round < 200; ++round)
    {
        tFrustum<T> const view(RandomView<T>(random));
        for (int i = 0; i < 50; ++i)
        {
            tOrientedBox<T> const box = RandomBox<T>(random);
            bool isOutside = false;
            bool straddles = false;
            bool isClear = true; // no corner decides by rounding
            for (tPlane<T> const& plane : PlanesOf(view))
            {
                T nearest = INF<T>;
                T farthest = -INF<T>;
                for (unsigned int corner = 0; corner < 8; ++corner)
                {
                    T const distance = plane.GetDistance(box.GetCorner(corner));
                    nearest = std::fmin(nearest, distance);
                    farthest = std::fmax(farthest, distance);
                }
                isClear = isClear && std::abs(nearest) > tolerance && std::abs(farthest) > tolerance;
                isOutside = isOutside || farthest < 0;
                straddles = straddles || nearest < 0;
            }
            auto const expected = isOutside   ? tFrustum<T>::OUTSIDE
                                  : straddles ? tFrustum<T>::INTERSECTING
                                              : tFrustum<T>::INSIDE;
            EXPECT_TRUE(!isClear || Classify(view, box) == expected);
            ++seen[expected];
        }
    }
    EXPECT_GT(std::min({seen[0], seen[1], seen[2]}), 100);
}

// Corners.

TYPED_TEST(VisibilityTest, CornersOfAViewAreNumberedFromTheLeftLowerNearOne)
{
    using T = TypeParam;
    tFrustum<T> const view(tMatrix4<T>::PerspectiveProjection(-1, 2, -1, 1, 2, 8));
    // at four times the distance, four times the size
    tVector3<T> const expected[8] = {{-1, -1, -2}, {2, -1, -2}, {-1, 1, -2}, {2, 1, -2},
                                     {-4, -4, -8}, {8, -4, -8}, {-4, 4, -8}, {8, 4, -8}};
    tVector3<T> corners[8];
    GetCorners(view, corners);
    for (unsigned int i = 0; i < 8; ++i)
    {
        ExpectNear<T>(corners[i], expected[i], 64 * EPSILON<T>);
        ExpectSameBits(GetCorner(view, i), corners[i]);
        ExpectSameBits(GetCorner(view, i + 8), corners[i]);
    }
}

TYPED_TEST(VisibilityTest, CornersLieOnTheirThreePlanes)
{
    using T = TypeParam;
    Random random(4304);
    for (int round = 0; round < 500; ++round)
    {
        tFrustum<T> const view(RandomView<T>(random));
        for (unsigned int i = 0; i < 8; ++i)
        {
            tVector3<T> const corner = GetCorner(view, i);
            T const tolerance = 512 * EPSILON<T>;
            EXPECT_LE(((i & 1U) != 0 ? view.GetRightPlane() : view.GetLeftPlane()).GetAbsoluteDistance(corner),
                      tolerance);
            EXPECT_LE(((i & 2U) != 0 ? view.GetTopPlane() : view.GetBottomPlane()).GetAbsoluteDistance(corner),
                      tolerance);
            EXPECT_LE(((i & 4U) != 0 ? view.GetFarPlane() : view.GetNearPlane()).GetAbsoluteDistance(corner),
                      tolerance);
        }
    }
}

TYPED_TEST(VisibilityTest, PlanesWithoutACommonPointGiveNoNumber)
{
    using T = TypeParam;
    tFrustum<T> const infinite({{1, 0, -1}, 0}, {{-1, 0, -1}, 0}, {{0, 1, -1}, 0}, {{0, -1, -1}, 0}, {{0, 0, -1}, -1},
                               tPlane<T>());
    EXPECT_TRUE(std::isfinite(GetCorner(infinite, 0).x));
    EXPECT_FALSE(std::isfinite(GetCorner(infinite, 4).x));
    tVector3<T> const none = GetCorner(tFrustum<T>(), 0);
    EXPECT_TRUE(IsNaN(none.x) && IsNaN(none.y) && IsNaN(none.z));
}

// Views.

TYPED_TEST(VisibilityTest, SixPlanesAreTakenAsTheyAre)
{
    using T = TypeParam;
    constexpr tPlane<T> EMPTY;
    static_assert(tFrustum<T>(EMPTY, EMPTY, EMPTY, EMPTY, EMPTY, EMPTY).GetFarPlane() == EMPTY);
    tPlane<T> planes[6];
    for (std::size_t i = 0; i < 6; ++i)
        planes[i].SetOffset(static_cast<T>(i));
    tFrustum<T> const view(planes[0], planes[1], planes[2], planes[3], planes[4], planes[5]);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(PlanesOf(view)[i].GetOffset(), static_cast<T>(i));
}

TYPED_TEST(VisibilityTest, TheParallelViewOfABoxSeesWhatTheBoxHolds)
{
    using T = TypeParam;
    Random random(4305);
    int inside = 0;
    for (int round = 0; round < 200; ++round)
    {
        tOrientedBox<T> const box = RandomBox<T>(random);
        tFrustum<T> const view = GetParallelView(box);
        for (int i = 0; i < 50; ++i)
        {
            tVector3<T> const point = box.GetCentre() + random.Vector<tVector3<T>>(-3, 3);
            tVector3<T> const way = point - box.GetCentre();
            bool isClear = true;
            for (std::size_t axis = 0; axis < 3; ++axis)
                isClear = isClear &&
                          std::abs(std::abs(way.Dot(box.GetAxis(axis))) - box.GetHalfExtents()[axis]) > 64 * EPSILON<T>;
            bool const isInside = Classify(view, point) == tFrustum<T>::INSIDE;
            EXPECT_TRUE(!isClear || isInside == box.Contains(point));
            inside += isInside ? 1 : 0;
        }
        // the view looks along -z: its near corners are those at the end of the z axis
        for (unsigned int i = 0; i < 8; ++i)
            ExpectNear<T>(GetCorner(view, i), box.GetCorner(i ^ 4U), 256 * EPSILON<T>);
    }
    EXPECT_GT(inside, 500);
    EXPECT_EQ(Classify(GetParallelView(tOrientedBox<T>()), tVector3<T>(0, 0, 0)), tFrustum<T>::OUTSIDE);
}

TYPED_TEST(VisibilityTest, TheParallelViewOfABoxIsThatOfTheParallelProjection)
{
    using T = TypeParam;
    tFrustum<T> const view = GetParallelView(tOrientedBox<T>(tVolumeAABB<T>({-1, -2, -8}, {1, 2, -1})));
    tFrustum<T> const projected(tMatrix4<T>::OrthogonalProjection(-1, 1, -2, 2, 1, 8));
    for (std::size_t i = 0; i < 6; ++i)
    {
        ExpectNear<T>(PlanesOf(view)[i].GetNormal(), PlanesOf(projected)[i].GetNormal(), 4 * EPSILON<T>);
        EXPECT_NEAR(PlanesOf(view)[i].GetOffset(), PlanesOf(projected)[i].GetOffset(), 16 * EPSILON<T>);
    }
}

TYPED_TEST(VisibilityTest, TheWholeScreenIsTheWholeView)
{
    using T = TypeParam;
    Random random(4306);
    for (int round = 0; round < 500; ++round)
    {
        tMatrix4<T> const matrix = RandomView<T>(random);
        ExpectSameView(GetScreenView(matrix, tAreaAABB<T>({-1, -1}, {1, 1})), tFrustum<T>(matrix));
    }
}

constexpr DepthRange RANGES[] = {DepthRange::MINUS_ONE_TO_ONE, DepthRange::ZERO_TO_ONE, DepthRange::ONE_TO_ZERO};

template <typename T>
[[nodiscard]] tAreaAABB<T> WholeScreen()
{
    return {{-1, -1}, {1, 1}};
}

TYPED_TEST(VisibilityTest, TheWholeScreenHasTheNearAndTheFarPlaneOfEveryRangeOfDepth)
{
    using T = TypeParam;
    for (DepthRange const range : RANGES)
    {
        // as wide and as high as it is far
        tFrustum<T> const central =
            GetScreenView(bv::maths::PerspectiveFromTangent<T>(1, 1, 1, 10, range), WholeScreen<T>(), range);
        tFrustum<T> const parallel =
            GetScreenView(bv::maths::OrthographicProjection<T>(-1, 1, -1, 1, 1, 10, range), WholeScreen<T>(), range);
        ExpectNear<T>(GetCorner(central, 3), {1, 1, -1}, 16 * EPSILON<T>);
        ExpectNear<T>(GetCorner(central, 7), {10, 10, -10}, 256 * EPSILON<T>);
        ExpectNear<T>(GetCorner(parallel, 3), {1, 1, -1}, 16 * EPSILON<T>);
        ExpectNear<T>(GetCorner(parallel, 7), {1, 1, -10}, 256 * EPSILON<T>);
        for (tFrustum<T> const& view : {central, parallel})
        {
            ExpectNear<T>(view.GetNearPlane().GetNormal(), {0, 0, -1}, 4 * EPSILON<T>);
            ExpectNear<T>(view.GetFarPlane().GetNormal(), {0, 0, 1}, 4 * EPSILON<T>);
            for (T const z : {T(-1.125), T(-9.875)})
                EXPECT_EQ(Classify(view, tVector3<T>(0, 0, z)), tFrustum<T>::INSIDE);
            for (T const z : {T(-20), T(-10.125), T(-0.875), T(-0.7), T(1), T(20)})
                EXPECT_EQ(Classify(view, tVector3<T>(0, 0, z)), tFrustum<T>::OUTSIDE);
        }
    }
}

TYPED_TEST(VisibilityTest, AViewWithoutAFarPlaneSeesWhatIsFar)
{
    using T = TypeParam;
    for (DepthRange const range : RANGES)
    {
        tFrustum<T> const view =
            GetScreenView(bv::maths::PerspectiveFromTangent<T>(1, 1, 2, INF<T>, range), WholeScreen<T>(), range);
        EXPECT_EQ(Classify(view, tVector3<T>(0, 0, -1e6)), tFrustum<T>::INSIDE);
        EXPECT_EQ(Classify(view, tVector3<T>(0, 0, T(-2.125))), tFrustum<T>::INSIDE);
        EXPECT_EQ(Classify(view, tVector3<T>(0, 0, T(-1.875))), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(Classify(view, tVector3<T>(1e6, 0, -1e5)), tFrustum<T>::OUTSIDE);
    }
}

TYPED_TEST(VisibilityTest, AnUnknownRangeOfDepthIsThatFromMinusOne)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 9);
    ExpectSameView(GetScreenView(matrix, WholeScreen<T>(), static_cast<DepthRange>(7)), tFrustum<T>(matrix));
}

TYPED_TEST(VisibilityTest, ARectangleOfTheScreenSeesWhatIsDrawnInIt)
{
    using T = TypeParam;
    Random random(4307);
    int inside = 0;
    for (int round = 0; round < 300; ++round)
    {
        tMatrix4<T> const matrix = RandomView<T>(random);
        tAreaAABB<T> rectangle;
        rectangle.Expand(random.Vector<bv::maths::tVector2<T>>(-1, 1));
        rectangle.Expand(random.Vector<bv::maths::tVector2<T>>(-1, 1));
        tFrustum<T> const whole(matrix);
        tFrustum<T> const part = GetScreenView(matrix, rectangle);
        for (int i = 0; i < 100; ++i)
        {
            tVector3<T> const point = random.Vector<tVector3<T>>(-8, 8);
            if (Classify(whole, point) == tFrustum<T>::OUTSIDE)
                continue;
            tVector3<T> const drawn = point.Transformed(matrix);
            bool isClear = true;
            for (std::size_t axis = 0; axis < 2; ++axis)
                isClear = isClear && std::abs(drawn[axis] - rectangle.GetMin()[axis]) > 256 * EPSILON<T> &&
                          std::abs(drawn[axis] - rectangle.GetMax()[axis]) > 256 * EPSILON<T>;
            bool const isInside = Classify(part, point) == tFrustum<T>::INSIDE;
            EXPECT_TRUE(!isClear || isInside == rectangle.Contains({drawn.x, drawn.y}, false));
            inside += isInside ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 200);
}

TYPED_TEST(VisibilityTest, ARectangleThatIsNotValidSeesNothing)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 9);
    for (tAreaAABB<T> const& rectangle :
         {tAreaAABB<T>(), tAreaAABB<T>({1, 0}, {0, 1}), tAreaAABB<T>({QUIET_NAN<T>, 0}, {1, 1})})
    {
        tFrustum<T> const view = GetScreenView(matrix, rectangle);
        EXPECT_EQ(Classify(view, tVector3<T>(0, 0, -2)), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(Classify(view, tVolumeSphere<T>({0, 0, -2}, T(0.25))), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(view.ContainsAABB({{-99, -99, -99}, {99, 99, 99}}), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(Classify(view, tVolumeSphere<T>({0, 0, -2}, 4)), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(Classify(view, tVolumeSphere<T>({0, 0, -2}, LARGEST<T>)), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(Classify(view, tOrientedBox<T>(tVolumeAABB<T>({-99, -99, -99}, {99, 99, 99}))), tFrustum<T>::OUTSIDE);
        EXPECT_EQ(PlanesOf(view)[3].GetOffset(), -INF<T>);
    }
}

TYPED_TEST(VisibilityTest, ARectangleWithoutWidthSeesWhatLiesInItsPlane)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 9);
    tFrustum<T> const view = GetScreenView(matrix, tAreaAABB<T>({0, -1}, {0, 1}));
    EXPECT_EQ(Classify(view, tVector3<T>(0, 1, -2)), tFrustum<T>::INSIDE);
    EXPECT_EQ(Classify(view, tVector3<T>(TINY<T>, 1, -2)), tFrustum<T>::OUTSIDE);
    EXPECT_EQ(view.ContainsAABB({{-1, 0, -3}, {1, 1, -2}}), tFrustum<T>::INTERSECTING);
}

} // namespace
