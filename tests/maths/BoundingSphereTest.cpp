#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/Bounds.h"
#include "support/Allocations.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using bv::maths::tAreaAABB;
using bv::maths::tAreaDisc;
using bv::maths::tVector2;
using bv::maths::tVector3;
using bv::maths::tVolumeAABB;
using bv::maths::tVolumeSphere;
using namespace bv::test;

namespace
{

template <typename T>
class BoundingSphereTest : public testing::Test
{
};
TYPED_TEST_SUITE(BoundingSphereTest, Precisions);

/// What the squared radii are larger by than their formulas say.
template <typename T>
constexpr T SLACK = T{1} + T{8} * EPSILON<T>;

template <typename T>
void ExpectSphere(tVolumeSphere<T> const& sphere, tVector3<T> const& centre, std::type_identity_t<T> radiusSquared)
{
    ExpectSameBits(sphere.GetCentre(), centre);
    ExpectSameBits(sphere.GetRadiusSquared(), radiusSquared);
}
template <typename T>
void ExpectSphere(tAreaDisc<T> const& disc, tVector2<T> const& centre, std::type_identity_t<T> radiusSquared)
{
    ExpectSameBits(disc.GetCentre(), centre);
    ExpectSameBits(disc.GetRadiusSquared(), radiusSquared);
}

template <typename T>
[[nodiscard]] tVolumeSphere<T> FastAround(std::span<tVector3<T> const> points)
{
    return GetBoundingSphere(points);
}
template <typename T>
[[nodiscard]] tAreaDisc<T> FastAround(std::span<tVector2<T> const> points)
{
    return bv::maths::GetBoundingDisc(points);
}
template <typename T>
[[nodiscard]] tVolumeSphere<T> SmallestAround(std::span<tVector3<T> const> points)
{
    return bv::maths::GetSmallestSphere(points);
}
template <typename T>
[[nodiscard]] tAreaDisc<T> SmallestAround(std::span<tVector2<T> const> points)
{
    return bv::maths::GetSmallestDisc(points);
}

/// A point in the plane or in space, in more digits than either precision has.
struct Precise
{
    long double x, y, z;

    Precise operator+(Precise const& p) const { return {x + p.x, y + p.y, z + p.z}; }
    Precise operator-(Precise const& p) const { return {x - p.x, y - p.y, z - p.z}; }
    Precise operator*(long double s) const { return {x * s, y * s, z * s}; }
    [[nodiscard]] long double Dot(Precise const& p) const { return x * p.x + y * p.y + z * p.z; }
};

template <typename Vector>
[[nodiscard]] Precise ToPrecise(Vector const& v)
{
    if constexpr (requires { v.z; })
        return {static_cast<long double>(v.x), static_cast<long double>(v.y), static_cast<long double>(v.z)};
    else
        return {static_cast<long double>(v.x), static_cast<long double>(v.y), 0};
}

/// Solves a system of up to three equations by elimination with pivots.
/// @return false where it has no one solution.
[[nodiscard]] bool Solve(long double (&m)[3][4], std::size_t size)
{
    for (std::size_t column = 0; column < size; ++column)
    {
        std::size_t pivot = column;
        for (std::size_t row = column; row < size; ++row)
            if (std::abs(m[row][column]) > std::abs(m[pivot][column]))
                pivot = row;
        if (std::abs(m[pivot][column]) < 1e-12L)
            return false;
        std::swap(m[pivot], m[column]);
        for (std::size_t row = 0; row < size; ++row)
        {
            long double const factor = m[row][column] / m[column][column];
            for (std::size_t i = 0; row != column && i < 4; ++i)
                m[row][i] -= factor * m[column][i];
        }
    }
    for (std::size_t row = 0; row < size; ++row)
        m[row][3] /= m[row][row];
    return true;
}

/// The smallest radius of a sphere around points: of the smallest spheres through each choice of one to four of them,
/// in the affine hull of the choice, the smallest that reaches all.
template <typename Vector>
[[nodiscard]] long double SmallestRadius(std::vector<Vector> const& points)
{
    long double best = INF<long double>;
    std::size_t const count = points.size();
    for (std::size_t subset = 1; subset < std::size_t{1} << count; ++subset)
    {
        std::vector<Precise> chosen;
        for (std::size_t i = 0; i < count; ++i)
            if ((subset >> i & 1U) != 0)
                chosen.push_back(ToPrecise(points[i]));
        if (chosen.size() > 4)
            continue;
        // The centre is the first point plus a combination of the ways to the others.
        long double system[3][4] = {};
        std::size_t const size = chosen.size() - 1;
        for (std::size_t row = 0; row < size; ++row)
        {
            Precise const way = chosen[row + 1] - chosen[0];
            for (std::size_t column = 0; column < size; ++column)
                system[row][column] = 2 * way.Dot(chosen[column + 1] - chosen[0]);
            system[row][3] = way.Dot(way);
        }
        if (!Solve(system, size))
            continue;
        Precise centre = chosen[0];
        for (std::size_t i = 0; i < size; ++i)
            centre = centre + (chosen[i + 1] - chosen[0]) * system[i][3];
        long double reach = 0;
        for (Vector const& point : points)
        {
            Precise const way = ToPrecise(point) - centre;
            reach = std::max(reach, way.Dot(way));
        }
        best = std::min(best, reach);
    }
    return std::sqrt(best);
}

/// Whether the sphere holds a point, in more digits.
template <typename Round, typename Vector>
[[nodiscard]] bool Holds(Round const& round, Vector const& point)
{
    Precise const way = ToPrecise(point) - ToPrecise(round.GetCentre());
    return way.Dot(way) <= static_cast<long double>(round.GetRadiusSquared());
}

/// Whether a sphere holds another one, in more digits.
template <typename Round>
[[nodiscard]] bool HoldsAll(Round const& outer, Round const& inner)
{
    Precise const way = ToPrecise(inner.GetCentre()) - ToPrecise(outer.GetCentre());
    long double const outerRadius = std::sqrt(static_cast<long double>(outer.GetRadiusSquared()));
    long double const innerRadius = std::sqrt(static_cast<long double>(inner.GetRadiusSquared()));
    return std::sqrt(way.Dot(way)) + innerRadius <= outerRadius;
}

/// Points of one of several kinds: any, on a grid, on a sphere, on a line, close together far from the origin.
template <typename Vector>
[[nodiscard]] std::vector<Vector> MakePoints(Random& random, std::size_t count)
{
    using T = decltype(Vector::x);
    std::uint32_t const kind = random.Below(5);
    Vector const a = random.Vector<Vector>(-1, 1);
    Vector const b = random.Vector<Vector>(-1, 1);
    std::vector<Vector> points;
    for (std::size_t i = 0; i < count; ++i)
    {
        Vector point = random.Vector<Vector>(-1, 1);
        if (kind == 1)
            for (std::size_t axis = 0; axis < sizeof(Vector) / sizeof(T); ++axis)
                point[axis] = static_cast<T>(random.Whole(-1, 1));
        if (kind == 2)
            point.Normalise();
        if (kind == 3)
            point = a + b * random.Number<T>(-1, 1);
        if (kind == 4)
            point = a * T{64} + point * T(0.125);
        points.push_back(point);
    }
    return points;
}

// Around boxes.

TYPED_TEST(BoundingSphereTest, ASphereAroundABoxGoesThroughItsCorners)
{
    using T = TypeParam;
    ExpectSphere(bv::maths::GetBoundingSphere(tVolumeAABB<T>({-1, 2, 3}, {3, 10, 11})), {1, 6, 7}, 36 * SLACK<T>);
    ExpectSphere(bv::maths::GetBoundingDisc(tAreaAABB<T>({-2, 2}, {4, 10})), {1, 6}, 25 * SLACK<T>);
    ExpectSphere(bv::maths::GetBoundingSphere(tVolumeAABB<T>({1, 2, 3}, {1, 2, 3})), {1, 2, 3}, 0);
    ExpectSphere(bv::maths::GetBoundingSphere(tVolumeAABB<T>()), {0, 0, 0}, -1);
    ExpectSphere(bv::maths::GetBoundingSphere(tVolumeAABB<T>({1, 0, 0}, {0, 1, 1})), {0, 0, 0}, -1);
    ExpectSphere(bv::maths::GetBoundingSphere(tVolumeAABB<T>({QUIET_NAN<T>, 0, 0}, {1, 1, 1})), {0, 0, 0}, -1);
    ExpectSphere(bv::maths::GetBoundingDisc(tAreaAABB<T>()), {0, 0}, -1);
}

TYPED_TEST(BoundingSphereTest, ASphereAroundABoxHoldsItWhateverRounds)
{
    Random random(4201);
    for (int round = 0; round < 5000; ++round)
    {
        tVector3<TypeParam> const lower = random.Vector<tVector3<TypeParam>>(-9, 9);
        tVector3<TypeParam> const extents =
            random.Vector<tVector3<TypeParam>>(0, random.Below(2) == 0 ? TypeParam{4} : 64 * EPSILON<TypeParam>);
        tVolumeAABB<TypeParam> const box(lower, lower + extents);
        tVolumeSphere<TypeParam> const sphere = bv::maths::GetBoundingSphere(box);
        tAreaAABB<TypeParam> const area({box.GetMin().x, box.GetMin().y}, {box.GetMax().x, box.GetMax().y});
        tAreaDisc<TypeParam> const disc = bv::maths::GetBoundingDisc(area);
        for (unsigned int i = 0; i < 8; ++i)
        {
            EXPECT_TRUE(Holds(sphere, GetCorner(box, i)));
            EXPECT_TRUE(Holds(disc, GetCorner(area, i)));
        }
    }
}

// Growth.

TYPED_TEST(BoundingSphereTest, ASphereGrowsToAPointFromItsFarSide)
{
    using T = TypeParam;
    tVolumeSphere<T> const unit({0, 0, 0}, T{1});
    ExpectSphere(Union(unit, {3, 0, 0}), {1, 0, 0}, 4 * SLACK<T>); // from -1 to 3
    ExpectSphere(Union(unit, {0, 1, 0}), {0, 0, 0}, 1);            // on the surface
    ExpectSphere(Union(unit, {0, T(0.5), 0}), {0, 0, 0}, 1);
    ExpectSphere(Union(tAreaDisc<T>({0, 0}, T{1}), {0, -3}), {0, -1}, 4 * SLACK<T>);
    ExpectSphere(Union(tVolumeSphere<T>({1, 2, 3}), {1, 2, 7}), {1, 2, 5}, 4 * SLACK<T>);
}

TYPED_TEST(BoundingSphereTest, AnEmptySphereGrowsToThePointAlone)
{
    using T = TypeParam;
    for (T const empty : {T{-1}, -INF<T>, -TINY<T>, QUIET_NAN<T>})
    {
        ExpectSphere(Union(tVolumeSphere<T>({9, 9, 9}, empty), {1, 2, 3}), {1, 2, 3}, 0);
        ExpectSphere(Union(tAreaDisc<T>({9, 9}, empty), {1, 2}), {1, 2}, 0);
        tVolumeSphere<T> const other({1, 2, 3}, T{4});
        ExpectSphere(Union(tVolumeSphere<T>({9, 9, 9}, empty), other), {1, 2, 3}, 4);
        ExpectSphere(Union(other, tVolumeSphere<T>({9, 9, 9}, empty)), {1, 2, 3}, 4);
    }
    ExpectSphere(Union(tVolumeSphere<T>({9, 9, 9}, T{-1}), {1, QUIET_NAN<T>, 3}), {9, 9, 9}, -1);
}

TYPED_TEST(BoundingSphereTest, ANaNMovesNothingAndAnInfinityMakesTheRadiusInfinite)
{
    using T = TypeParam;
    tVolumeSphere<T> const unit({1, 2, 3}, T{1});
    ExpectSphere(Union(unit, {0, QUIET_NAN<T>, 0}), {1, 2, 3}, 1);
    ExpectSphere(Union(unit, {0, -INF<T>, 0}), {1, 2, 3}, INF<T>);
    ExpectSphere(Union(unit, {LARGEST<T>, 0, 0}), {1, 2, 3}, INF<T>); // its square overflows
    ExpectSphere(Union(unit, tVolumeSphere<T>({0, QUIET_NAN<T>, 0}, T{9})), {1, 2, 3}, 1);
    ExpectSphere(Union(unit, tVolumeSphere<T>({0, INF<T>, 0}, T{9})), {1, 2, 3}, INF<T>);
    ExpectSphere(Union(unit, tVolumeSphere<T>({0, 0, 0}, INF<T>)), {0, 0, 0}, INF<T>);
}

TYPED_TEST(BoundingSphereTest, TheSphereAroundTwoReachesFromEndToEnd)
{
    using T = TypeParam;
    tVolumeSphere<T> const unit({0, 0, 0}, T{1});
    ExpectSphere(Union(unit, tVolumeSphere<T>({6, 0, 0}, T{9})), {4, 0, 0}, 25 * SLACK<T>); // from -1 to 9
    ExpectSphere(Union(unit, tVolumeSphere<T>({1, 0, 0}, T{4})), {1, 0, 0}, 4);             // touches from inside
    ExpectSphere(Union(tVolumeSphere<T>({1, 0, 0}, T{4}), unit), {1, 0, 0}, 4);
    ExpectSphere(Union(unit, unit), {0, 0, 0}, 1);
    ExpectSphere(Union(tAreaDisc<T>({0, 0}, T{1}), tAreaDisc<T>({0, 6}, T{9})), {0, 4}, 25 * SLACK<T>);
}

template <typename Vector>
void ExpectGrowthToHold()
{
    using T = decltype(Vector::x);
    using Round = std::conditional_t<sizeof(Vector) == 2 * sizeof(T), tAreaDisc<T>, tVolumeSphere<T>>;
    Random random(4202);
    for (int i = 0; i < 20000; ++i)
    {
        T const range = random.Below(2) == 0 ? T{2} : T{100};
        Round const a(random.Vector<Vector>(-range, range), random.Number<T>(0, 2));
        Round const b(random.Vector<Vector>(-range, range), random.Number<T>(0, 2));
        Vector const point = random.Vector<Vector>(-range, range);
        Round const toPoint = Union(a, point);
        if (!a.Contains(point) && a.GetRadiusSquared() != toPoint.GetRadiusSquared())
        {
            EXPECT_TRUE(Holds(toPoint, point) && HoldsAll(toPoint, a) && toPoint.Contains(point));
            long double const least = (std::sqrt(static_cast<long double>((point - a.GetCentre()).LengthSquared())) +
                                       std::sqrt(static_cast<long double>(a.GetRadiusSquared()))) /
                                      2;
            EXPECT_NEAR(static_cast<double>(toPoint.GetRadius()), static_cast<double>(least),
                        2 * static_cast<double>(range) * static_cast<double>(EPSILON<T>) * 8);
        }
        Round const both = Union(a, b);
        // One of the two as it is, where the other does not reach beyond it but for rounding.
        Round const larger = a.GetRadiusSquared() >= b.GetRadiusSquared() ? a : b;
        Round const allowed(larger.GetCentre(), larger.GetRadiusSquared() * (1 + 16 * EPSILON<T>));
        if (both.GetRadiusSquared() == larger.GetRadiusSquared())
            EXPECT_TRUE(HoldsAll(allowed, a) && HoldsAll(allowed, b));
        else
            EXPECT_TRUE(HoldsAll(both, a) && HoldsAll(both, b));
    }
}

TYPED_TEST(BoundingSphereTest, AGrownSphereHoldsBothWhateverRounds)
{
    ExpectGrowthToHold<tVector3<TypeParam>>();
    ExpectGrowthToHold<tVector2<TypeParam>>();
}

// Around points.

template <typename Vector>
void ExpectTheSmallest()
{
    using T = decltype(Vector::x);
    Random random(4203);
    for (int round = 0; round < 300; ++round)
    {
        std::vector<Vector> const points = MakePoints<Vector>(random, 1 + random.Below(8));
        std::span<Vector const> const span(points);
        auto const smallest = SmallestAround(span);
        auto const fast = FastAround(span);
        for (Vector const& point : points)
        {
            EXPECT_TRUE(Holds(smallest, point));
            EXPECT_TRUE(Holds(fast, point));
        }
        long double const least = SmallestRadius(points);
        // The centre rounds by half a step of its components, and the radius by the slack.
        double const tolerance = 8 * static_cast<double>(EPSILON<T>) *
                                 (static_cast<double>(least) + static_cast<double>(smallest.GetCentre().Length()));
        EXPECT_NEAR(static_cast<double>(smallest.GetRadius()), static_cast<double>(least), tolerance);
        EXPECT_GE(static_cast<double>(fast.GetRadius()) + tolerance, static_cast<double>(least));
    }
}

TYPED_TEST(BoundingSphereTest, TheSmallestSphereIsTheSmallestOfAll)
{
    ExpectTheSmallest<tVector3<TypeParam>>();
    ExpectTheSmallest<tVector2<TypeParam>>();
}

template <typename Vector>
void ExpectManyToBeHeld()
{
    using T = decltype(Vector::x);
    Random random(4204);
    for (int round = 0; round < 200; ++round)
    {
        std::vector<Vector> const points = MakePoints<Vector>(random, 1 + random.Below(1000));
        std::span<Vector const> const span(points);
        auto const smallest = SmallestAround(span);
        auto const fast = FastAround(span);
        for (Vector const& point : points)
            ASSERT_TRUE(Holds(smallest, point) && Holds(fast, point));
        EXPECT_LE(smallest.GetRadius(), fast.GetRadius() * (1 + 8 * EPSILON<T>));
        EXPECT_LE(fast.GetRadius(), smallest.GetRadius() * T(1.25) + 64 * EPSILON<T>);
    }
}

TYPED_TEST(BoundingSphereTest, ManyPointsAreHeldBySpheresOfNearlyTheSmallestRadius)
{
    ExpectManyToBeHeld<tVector3<TypeParam>>();
    ExpectManyToBeHeld<tVector2<TypeParam>>();
}

TYPED_TEST(BoundingSphereTest, PointsOfAKnownSphereGiveIt)
{
    using T = TypeParam;
    std::vector<tVector3<T>> cube;
    for (unsigned int i = 0; i < 8; ++i)
        for (int copies = 0; copies < 3; ++copies)
            cube.push_back(GetCorner(tVolumeAABB<T>({-1, -1, -1}, {1, 1, 1}), i));
    ExpectSphere(bv::maths::GetSmallestSphere(cube), {0, 0, 0}, 3 * SLACK<T>);
    ExpectSphere(bv::maths::GetBoundingSphere(cube), {0, 0, 0}, 3 * SLACK<T>);
    // an equilateral triangle of integers: the centre of (3,0,0), (0,3,0), (0,0,3) is (1,1,1), its radius^2 6
    std::vector<tVector3<T>> const triangle = {{3, 0, 0}, {0, 3, 0}, {0, 0, 3}};
    ExpectSphere(bv::maths::GetSmallestSphere(triangle), {1, 1, 1}, 6 * SLACK<T>);
    // an obtuse one: the longest side is the diameter
    std::vector<tVector2<T>> const obtuse = {{0, 0}, {4, 1}, {8, 0}};
    ExpectSphere(bv::maths::GetSmallestDisc(obtuse), {4, 0}, 16 * SLACK<T>);
}

TYPED_TEST(BoundingSphereTest, FewPointsAndEqualOnesAreNothingSpecial)
{
    using T = TypeParam;
    std::vector<tVector3<T>> points;
    ExpectSphere(bv::maths::GetSmallestSphere(points), {0, 0, 0}, -1);
    ExpectSphere(bv::maths::GetBoundingSphere(points), {0, 0, 0}, -1);
    ExpectSphere(bv::maths::GetSmallestDisc(std::vector<tVector2<T>>()), {0, 0}, -1);
    ExpectSphere(bv::maths::GetBoundingDisc(std::vector<tVector2<T>>()), {0, 0}, -1);
    points.assign(5, {1, 2, 3});
    ExpectSphere(bv::maths::GetSmallestSphere(points), {1, 2, 3}, 0);
    ExpectSphere(bv::maths::GetBoundingSphere(points), {1, 2, 3}, 0);
    points.assign(5, {3, 2, 3});
    points[2] = {1, 2, 3};
    ExpectSphere(bv::maths::GetSmallestSphere(points), {2, 2, 3}, SLACK<T>);
    ExpectSphere(bv::maths::GetBoundingSphere(points), {2, 2, 3}, SLACK<T>);
}

TYPED_TEST(BoundingSphereTest, PointsWithANaNCountForNothing)
{
    using T = TypeParam;
    std::vector<tVector3<T>> const points = {
        {QUIET_NAN<T>, 0, 0}, {-1, 0, 0}, {0, 9, QUIET_NAN<T>}, {3, 0, 0}, {QUIET_NAN<T>, INF<T>, 0}};
    ExpectSphere(bv::maths::GetSmallestSphere(points), {1, 0, 0}, 4 * SLACK<T>);
    ExpectSphere(bv::maths::GetBoundingSphere(points), {1, 0, 0}, 4 * SLACK<T>);
    // Nor does one that would be the farthest along an axis.
    std::vector<tVector3<T>> const few = {{0, 0, 0}, {1, 0, 0}, {0, 5, 0}, {1, 2, 3}};
    tVolumeSphere<T> const expected = bv::maths::GetBoundingSphere(few);
    for (tVector3<T> const& ignored : {tVector3<T>(QUIET_NAN<T>, 100, 0), tVector3<T>(0, -100, QUIET_NAN<T>),
                                       tVector3<T>(100, QUIET_NAN<T>, INF<T>)})
        for (std::size_t place = 0; place <= few.size(); ++place)
        {
            std::vector<tVector3<T>> more = few;
            more.insert(more.begin() + static_cast<std::ptrdiff_t>(place), ignored);
            tVolumeSphere<T> const sphere = bv::maths::GetBoundingSphere(more);
            ExpectSameBits(sphere.GetCentre(), expected.GetCentre());
            ExpectSameBits(sphere.GetRadiusSquared(), expected.GetRadiusSquared());
        }
    std::vector<tVector2<T>> const none = {{QUIET_NAN<T>, 0}, {0, QUIET_NAN<T>}};
    ExpectSphere(bv::maths::GetSmallestDisc(none), {0, 0}, -1);
    ExpectSphere(bv::maths::GetBoundingDisc(none), {0, 0}, -1);
}

TYPED_TEST(BoundingSphereTest, InfinitePointsAndOverflowMakeTheRadiusInfinite)
{
    using T = TypeParam;
    std::vector<std::vector<tVector3<T>>> const sets = {{{1, 2, 3}, {INF<T>, 0, 0}, {4, 5, 6}},
                                                        {{0, -INF<T>, 0}},
                                                        {{LARGEST<T>, 0, 0}, {-LARGEST<T>, 0, 0}},
                                                        {{0, 0, 0}, {0, LARGEST<T> / 2, 0}}};
    for (std::vector<tVector3<T>> const& points : sets)
        for (tVolumeSphere<T> const& sphere :
             {bv::maths::GetSmallestSphere(points), bv::maths::GetBoundingSphere(points)})
        {
            EXPECT_EQ(sphere.GetRadiusSquared(), INF<T>);
            EXPECT_TRUE(std::isfinite(sphere.GetCentre().x + sphere.GetCentre().y + sphere.GetCentre().z));
        }
}

TYPED_TEST(BoundingSphereTest, NothingIsAllocated)
{
    Random random(4205);
    std::vector<tVector3<TypeParam>> points;
    for (int i = 0; i < 1000; ++i)
        points.push_back(random.Vector<tVector3<TypeParam>>(-1, 1));
    TypeParam sum{};
    EXPECT_EQ(CountAllocations(
                  [&] {
                      sum = bv::maths::GetSmallestSphere(points).GetRadius() +
                            bv::maths::GetBoundingSphere(points).GetRadius();
                  }),
              0U);
    EXPECT_GT(sum, TypeParam{2});
}

} // namespace
