#include "bv/maths/Bounds.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using bv::maths::tAreaAABB;
using bv::maths::tAreaDisc;
using bv::maths::tMatrix4;
using bv::maths::tVector2;
using bv::maths::tVector3;
using bv::maths::tVolumeAABB;
using bv::maths::tVolumeSphere;
using namespace bv::test;

namespace
{

template <typename T>
class BoundsTest : public testing::Test
{
};
TYPED_TEST_SUITE(BoundsTest, Precisions);

/// A number from a small grid, so that boxes touch and coincide, or a special one.
template <typename T>
[[nodiscard]] T GridNumber(Random& random)
{
    return random.Below(12) == 0 ? SPECIAL_VALUES<T>[random.Below(10)] : static_cast<T>(random.Whole(-2, 2));
}

template <typename Vector>
[[nodiscard]] Vector GridPoint(Random& random)
{
    Vector point;
    for (std::size_t axis = 0; axis < sizeof(Vector) / sizeof(point.x); ++axis)
        point[axis] = GridNumber<decltype(point.x)>(random);
    return point;
}

/// Any two corners; mostly in order.
template <typename Box, typename Vector>
[[nodiscard]] Box GridBox(Random& random)
{
    Vector lower = GridPoint<Vector>(random);
    Vector upper = GridPoint<Vector>(random);
    if (random.Below(4) != 0)
        for (std::size_t axis = 0; axis < sizeof(Vector) / sizeof(lower.x); ++axis)
            if (lower[axis] > upper[axis])
                std::swap(lower[axis], upper[axis]);
    return random.Below(16) == 0 ? Box() : Box(lower, upper);
}

template <typename Box>
void ExpectSameBox(Box const& actual, Box const& expected)
{
    ExpectSameBits(actual.GetMin(), expected.GetMin());
    ExpectSameBits(actual.GetMax(), expected.GetMax());
}

/// The box and the point of either number of dimensions.
template <typename T, std::size_t DIMENSION>
struct Shapes
{
    using Box = tVolumeAABB<T>;
    using Vector = tVector3<T>;
};
template <typename T>
struct Shapes<T, 2>
{
    using Box = tAreaAABB<T>;
    using Vector = tVector2<T>;
};

template <typename T>
constexpr bool WorksInConstants()
{
    using Box = tVolumeAABB<T>;
    using Area = tAreaAABB<T>;
    constexpr Box A({0, 0, 0}, {2, 4, 6});
    constexpr Box B({1, 1, 1}, {5, 5, 5});
    static_assert(Union(A, B) == Box({0, 0, 0}, {5, 5, 6}) && Union(A, {-1, 0, 9}) == Box({-1, 0, 0}, {2, 4, 9}));
    static_assert(Intersection(A, B) == Box({1, 1, 1}, {2, 4, 5}) && Overlaps(A, B) && !Contains(A, B));
    static_assert(GetSurfaceArea(A) == 88); // 2 * (8 + 12 + 24)
    static_assert(GetCorner(A, 5) == tVector3<T>(2, 0, 6) && GetClosestPoint(A, {3, 1, -1}) == tVector3<T>(2, 1, 0));
    constexpr Area C({0, 0}, {2, 4});
    constexpr Area D({1, 1}, {5, 5});
    static_assert(Union(C, D) == Area({0, 0}, {5, 5}) && Union(C, {-1, 9}) == Area({-1, 0}, {2, 9}));
    static_assert(Intersection(C, D) == Area({1, 1}, {2, 4}) && Overlaps(C, D) && !Contains(C, D));
    static_assert(GetPerimeter(C) == 12 && GetCorner(C, 2) == tVector2<T>(0, 4));
    static_assert(GetClosestPoint(C, {3, 1}) == tVector2<T>(2, 1));
    static_assert(noexcept(Union(A, B))&& noexcept(Intersection(A, B))&& noexcept(Overlaps(A, B)));
    return true;
}
static_assert(WorksInConstants<float>() && WorksInConstants<double>());

// Boxes and boxes.

template <typename T, std::size_t DIMENSION>
void CompareWithExpand()
{
    using Box = typename Shapes<T, DIMENSION>::Box;
    using Vector = typename Shapes<T, DIMENSION>::Vector;
    Random random(4101);
    for (int round = 0; round < 20000; ++round)
    {
        Box const a = GridBox<Box, Vector>(random);
        Box const b = GridBox<Box, Vector>(random);
        Vector const point = GridPoint<Vector>(random);
        Box grown = a;
        grown.Expand(b);
        ExpectSameBox(Union(a, b), grown);
        grown = a;
        grown.Expand(point);
        ExpectSameBox(Union(a, point), grown);
    }
}

TYPED_TEST(BoundsTest, UnionIsExpandIntoACopy)
{
    CompareWithExpand<TypeParam, 3>();
    CompareWithExpand<TypeParam, 2>();
}

/// Intersection, overlap and containment axis by axis, as the words say.
template <typename T, std::size_t DIMENSION>
void CompareAxisByAxis()
{
    using Box = typename Shapes<T, DIMENSION>::Box;
    using Vector = typename Shapes<T, DIMENSION>::Vector;
    Random random(4102);
    int seen[2][2] = {};
    for (int round = 0; round < 20000; ++round)
    {
        Box const a = GridBox<Box, Vector>(random);
        Box const b = GridBox<Box, Vector>(random);
        Box common;
        bool isCommon = true;
        bool overlaps = true;
        bool contains = true;
        for (std::size_t axis = 0; axis < DIMENSION; ++axis)
        {
            T const lowerA = a.GetMin()[axis], upperA = a.GetMax()[axis];
            T const lowerB = b.GetMin()[axis], upperB = b.GetMax()[axis];
            common.GetMin()[axis] = lowerB > lowerA ? lowerB : lowerA;
            common.GetMax()[axis] = upperB < upperA ? upperB : upperA;
            isCommon = isCommon && common.GetMin()[axis] <= common.GetMax()[axis];
            overlaps = overlaps && lowerA < upperB && lowerB < upperA;
            contains = contains && lowerA <= lowerB && upperB <= upperA;
        }
        ExpectSameBox(Intersection(a, b), isCommon ? common : Box());
        EXPECT_EQ(Overlaps(a, b), overlaps);
        EXPECT_EQ(Overlaps(b, a), overlaps);
        EXPECT_EQ(Contains(a, b), contains);
        ++seen[overlaps ? 1 : 0][contains ? 1 : 0];
    }
    EXPECT_GT(std::min({seen[0][0], seen[0][1], seen[1][0], seen[1][1]}), 100);
}

TYPED_TEST(BoundsTest, IntersectionOverlapAndContainmentHoldAxisByAxis)
{
    CompareAxisByAxis<TypeParam, 3>();
    CompareAxisByAxis<TypeParam, 2>();
}

TYPED_TEST(BoundsTest, BoxesThatTouchShareAFlatBoxAndDoNotOverlap)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const a({0, 0, 0}, {1, 1, 1});
    Box const beside({1, 0, 0}, {2, 1, 1});
    EXPECT_FALSE(Overlaps(a, beside));
    ExpectSameBox(Intersection(a, beside), Box({1, 0, 0}, {1, 1, 1}));
    EXPECT_TRUE(Intersection(a, beside).IsValid());
    EXPECT_TRUE(Overlaps(a, Box({JustBelow(TypeParam{1}), 0, 0}, {2, 1, 1})));
    Box const apart({JustAbove(TypeParam{1}), 0, 0}, {2, 1, 1});
    EXPECT_FALSE(Overlaps(a, apart));
    ExpectSameBox(Intersection(a, apart), Box());
    Box const flat({TypeParam(0.5), 0, 0}, {TypeParam(0.5), 1, 1});
    EXPECT_TRUE(Overlaps(a, flat));
    EXPECT_FALSE(Overlaps(flat, flat));
    EXPECT_TRUE(Contains(flat, flat));
}

TYPED_TEST(BoundsTest, TheEmptyBoxAddsNothingSharesNothingAndLiesInAll)
{
    using Box = tVolumeAABB<TypeParam>;
    using Area = tAreaAABB<TypeParam>;
    Box const box({0, 0, 0}, {1, 1, 1});
    ExpectSameBox(Union(box, Box()), box);
    ExpectSameBox(Union(Box(), box), box);
    ExpectSameBox(Intersection(box, Box()), Box());
    ExpectSameBox(Intersection(Box(), box), Box());
    EXPECT_FALSE(Overlaps(box, Box()) || Overlaps(Box(), box) || Overlaps(Box(), Box()));
    EXPECT_TRUE(Contains(box, Box()) && Contains(Box(), Box()));
    EXPECT_FALSE(Contains(Box(), box));
    EXPECT_EQ(GetSurfaceArea(Box()), INF<TypeParam>);
    EXPECT_EQ(GetPerimeter(Area()), -INF<TypeParam>);
}

TYPED_TEST(BoundsTest, ANaNOfTheSecondBoxNarrowsNothingAndOneOfTheFirstGivesNothing)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const box({0, 0, 0}, {1, 1, 1});
    Box const holed({QUIET_NAN<TypeParam>, TypeParam(0.25), 0}, {TypeParam(0.5), 1, 1});
    ExpectSameBox(Intersection(box, holed), Box({0, TypeParam(0.25), 0}, {TypeParam(0.5), 1, 1}));
    ExpectSameBox(Intersection(holed, box), Box());
    EXPECT_FALSE(Overlaps(box, holed) || Contains(box, holed) || Contains(holed, box));
}

// Measures.

TYPED_TEST(BoundsTest, TheSurfaceIsTwiceTheFacesAcrossEachAxis)
{
    Random random(4103);
    for (int round = 0; round < 1000; ++round)
    {
        tVolumeAABB<TypeParam> const box(random.Vector<tVector3<TypeParam>>(-2, 2),
                                         random.Vector<tVector3<TypeParam>>(-2, 2));
        ExpectSameBits(GetSurfaceArea(box), TypeParam{2} * (box.GetArea(0) + box.GetArea(1) + box.GetArea(2)));
        tAreaAABB<TypeParam> const area({box.GetMin().x, box.GetMin().y}, {box.GetMax().x, box.GetMax().y});
        ExpectSameBits(GetPerimeter(area), TypeParam{2} * (area.GetLength(0) + area.GetLength(1)));
    }
}

TYPED_TEST(BoundsTest, CornersAreNumberedByABitForEachAxis)
{
    tVolumeAABB<TypeParam> const box({1, 2, 3}, {4, 5, 6});
    tVector3<TypeParam> const expected[8] = {{1, 2, 3}, {4, 2, 3}, {1, 5, 3}, {4, 5, 3},
                                             {1, 2, 6}, {4, 2, 6}, {1, 5, 6}, {4, 5, 6}};
    tVector3<TypeParam> corners[8];
    GetCorners(box, corners);
    for (unsigned int i = 0; i < 8; ++i)
    {
        ExpectSameBits(corners[i], expected[i]);
        ExpectSameBits(GetCorner(box, i), expected[i]);
        ExpectSameBits(GetCorner(box, i + 8), expected[i]);
    }
    tAreaAABB<TypeParam> const area({1, 2}, {4, 5});
    tVector2<TypeParam> const flat[4] = {{1, 2}, {4, 2}, {1, 5}, {4, 5}};
    tVector2<TypeParam> flatCorners[4];
    GetCorners(area, flatCorners);
    for (unsigned int i = 0; i < 4; ++i)
    {
        ExpectSameBits(flatCorners[i], flat[i]);
        ExpectSameBits(GetCorner(area, i + 4), flat[i]);
    }
}

TYPED_TEST(BoundsTest, TheClosestPointIsAtTheDistanceOfTheBox)
{
    Random random(4104);
    for (int round = 0; round < 5000; ++round)
    {
        auto box = GridBox<tVolumeAABB<TypeParam>, tVector3<TypeParam>>(random);
        tVector3<TypeParam> const point = random.Vector<tVector3<TypeParam>>(-4, 4);
        if (!box.IsValid() || !std::isfinite(box.GetDiagonal().LengthSquared()))
            continue;
        tVector3<TypeParam> const closest = GetClosestPoint(box, point);
        EXPECT_TRUE(box.Contains(closest, false));
        ExpectSameBits((point - closest).LengthSquared(), box.DistanceSquared(point));
        tAreaAABB<TypeParam> const area({box.GetMin().x, box.GetMin().y}, {box.GetMax().x, box.GetMax().y});
        tVector2<TypeParam> const inPlane = GetClosestPoint(area, {point.x, point.y});
        ExpectSameBits(inPlane, {closest.x, closest.y});
    }
    tVolumeAABB<TypeParam> const unit({0, 0, 0}, {1, 1, 1});
    ExpectSameBits(GetClosestPoint(unit, {QUIET_NAN<TypeParam>, TypeParam{-0.0}, INF<TypeParam>}),
                   {QUIET_NAN<TypeParam>, TypeParam{-0.0}, 1});
    ExpectSameBits(GetClosestPoint(tVolumeAABB<TypeParam>({2, 0, 0}, {1, 1, 1}), {0, 0, 5}), {1, 0, 1});
    ExpectSameBits(GetClosestPoint(tAreaAABB<TypeParam>(), {0, 0}), {-INF<TypeParam>, -INF<TypeParam>});
}

TYPED_TEST(BoundsTest, TheBoxAroundASphereReachesOneRadiusEachWay)
{
    using Box = tVolumeAABB<TypeParam>;
    using Area = tAreaAABB<TypeParam>;
    ExpectSameBox(GetBound(tVolumeSphere<TypeParam>({1, 2, 3}, TypeParam{4})), Box({-1, 0, 1}, {3, 4, 5}));
    ExpectSameBox(GetBound(tVolumeSphere<TypeParam>({1, 2, 3}, TypeParam{0})), Box({1, 2, 3}, {1, 2, 3}));
    ExpectSameBox(GetBound(tVolumeSphere<TypeParam>({1, 2, 3}, -TINY<TypeParam>)), Box());
    ExpectSameBox(GetBound(tVolumeSphere<TypeParam>({1, 2, 3}, QUIET_NAN<TypeParam>)), Box());
    ExpectSameBox(
        GetBound(tVolumeSphere<TypeParam>({1, 2, 3}, INF<TypeParam>)),
        Box({-INF<TypeParam>, -INF<TypeParam>, -INF<TypeParam>}, {INF<TypeParam>, INF<TypeParam>, INF<TypeParam>}));
    ExpectSameBox(GetBound(tAreaDisc<TypeParam>({1, 2}, TypeParam{4})), Area({-1, 0}, {3, 4}));
    ExpectSameBox(GetBound(tAreaDisc<TypeParam>({1, 2}, TypeParam{-1})), Area());
}

// Under projective matrices.

TYPED_TEST(BoundsTest, AProjectedBoxIsBoundedByItsProjectedCorners)
{
    Random random(4105);
    int bounded = 0;
    for (int round = 0; round < 5000; ++round)
    {
        TypeParam const nearPlane = random.Number<TypeParam>(TypeParam(0.25), 1);
        tMatrix4<TypeParam> const matrix =
            tMatrix4<TypeParam>::PerspectiveProjection(-1, TypeParam(1.25), TypeParam(-0.75), 1, nearPlane, 20) *
            tMatrix4<TypeParam>::RotateAxis({0, 0, 0}, random.Vector<tVector3<TypeParam>>(-1, 1), TypeParam{1});
        tVector3<TypeParam> const lower = random.Vector<tVector3<TypeParam>>(-4, 4);
        tVolumeAABB<TypeParam> const box(lower, lower + random.Vector<tVector3<TypeParam>>(0, 2));
        std::optional<tVolumeAABB<TypeParam>> const image = ProjectBox(box, matrix);
        bool isInFront = true;
        tVolumeAABB<TypeParam> expected;
        for (unsigned int i = 0; i < 8; ++i)
        {
            tVector3<TypeParam> const corner = GetCorner(box, i);
            TypeParam const w = corner.x * matrix[12] + corner.y * matrix[13] + corner.z * matrix[14] + matrix[15];
            isInFront = isInFront && w >= bv::maths::TOLERANCE<TypeParam>;
            if (isInFront)
                expected.Expand(corner.Transformed(matrix));
        }
        ASSERT_EQ(image.has_value(), isInFront);
        if (!isInFront)
            continue;
        ++bounded;
        ExpectSameBox(*image, expected);
        for (int inner = 0; inner < 8; ++inner) // points inside of it stay inside
        {
            tVector3<TypeParam> const point = lower + box.GetDiagonal() * random.Vector<tVector3<TypeParam>>(0, 1);
            EXPECT_LE(image->Distance(point.Transformed(matrix)), 256 * EPSILON<TypeParam> * image->GetMax().Length());
        }
    }
    EXPECT_GT(bounded, 1000);
}

TYPED_TEST(BoundsTest, AnAffineMatrixMovesABoxAsTheBoxDoesItself)
{
    using Box = tVolumeAABB<TypeParam>;
    Box const box({-1, 2, 3}, {2, 4, 8});
    tMatrix4<TypeParam> const matrix(1, 2, 0, 4, -2, 1, TypeParam(0.5), 0, 0, 3, -1, 1, 0, 0, 0, 1);
    std::optional<Box> const image = ProjectBox(box, matrix);
    ASSERT_TRUE(image.has_value());
    ExpectSameBox(*image, box * matrix); // sums of small integers are exact
    ExpectSameBox(*ProjectBox(box, tMatrix4<TypeParam>()), box);
}

TYPED_TEST(BoundsTest, ABoxThatReachesTheEyeHasNoImage)
{
    using Box = tVolumeAABB<TypeParam>;
    tMatrix4<TypeParam> const matrix = tMatrix4<TypeParam>::PerspectiveProjection(-1, 1, -1, 1, 1, 9);
    ExpectSameBox(*ProjectBox(Box({-1, -1, -2}, {2, 1, -1}), matrix),
                  Box({-1, -1, -1}, {2, 1, (matrix[10] * TypeParam{-2} + matrix[11]) * TypeParam(0.5)}));
    EXPECT_FALSE(ProjectBox(Box({-1, -1, -2}, {1, 1, 0}), matrix).has_value());
    EXPECT_FALSE(ProjectBox(Box({-1, -1, -2}, {1, 1, 1}), matrix).has_value());
    EXPECT_FALSE(ProjectBox(Box({-1, -1, 1}, {1, 1, 2}), matrix).has_value()); // all behind
    TypeParam const tolerance = bv::maths::TOLERANCE<TypeParam>;
    EXPECT_TRUE(ProjectBox(Box({-1, -1, -2}, {1, 1, -tolerance}), matrix).has_value());
    EXPECT_FALSE(ProjectBox(Box({-1, -1, -2}, {1, 1, -JustBelow(tolerance)}), matrix).has_value());
    ExpectSameBox(*ProjectBox(Box(), matrix), Box());
    EXPECT_FALSE(ProjectBox(Box({-1, -1, -2}, {1, 1, -1}),
                            tMatrix4<TypeParam>(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, QUIET_NAN<TypeParam>, 1))
                     .has_value());
}

} // namespace
