#include "bv/maths/View.h"

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "support/Flags.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Throws.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

constexpr DepthRange RANGES[] = {DepthRange::MINUS_ONE_TO_ONE, DepthRange::ZERO_TO_ONE, DepthRange::ONE_TO_ZERO};
constexpr double AT_NEAR[] = {-1, 0, 1};
constexpr double AT_FAR[] = {1, 1, 0};

template <typename T>
class ViewTest : public testing::Test
{
};
TYPED_TEST_SUITE(ViewTest, Precisions);

template <typename T>
[[nodiscard]] tVector3<T> RowOf(tMatrix4<T> const& matrix, std::size_t row)
{
    return tVector3<T>(matrix.Get() + 4 * row);
}

template <typename T>
void ExpectNear(tVector3<T> const& actual, tVector3<T> const& expected, T tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

template <typename T>
void ExpectRowsAreNaN(tMatrix4<T> const& matrix)
{
    for (std::size_t i = 0; i < 12; ++i)
    {
        if (i % 4 != 3)
        {
            EXPECT_TRUE(IsNaN(matrix[i])) << "element " << i;
        }
    }
    for (std::size_t i = 12; i < 16; ++i)
        ExpectSameBits(matrix[i], i == 15 ? T{1} : T{0});
}

// Cameras

TYPED_TEST(ViewTest, ACameraThatLooksDownItsOwnAxisIsTheIdentity)
{
    using T = TypeParam;
    ExpectValues(LookAt<T>({0, 0, 0}, {0, 0, -3}, {0, 2, 0}), IDENTITY_ELEMENTS<T>, ORTHONORMAL);
    ExpectValues(PlaceCamera<T>({0, 0, 0}, {0, 0, -3}, {0, 2, 0}), IDENTITY_ELEMENTS<T>, ORTHONORMAL);
}

TYPED_TEST(ViewTest, ACameraHasItsRightUpperAndBackwardDirectionsAsRowsOrColumns)
{
    using T = TypeParam;
    // Along x: right is x cross y = z, and the eye is 3 units along that, 2 up and 1 forward.
    ExpectValues<T>(LookAt<T>({1, 2, 3}, {5, 2, 3}, {0, 1, 0}), {0, 0, 1, -3, 0, 1, 0, -2, -1, 0, 0, 1, 0, 0, 0, 1},
                    GENERAL);
    ExpectValues<T>(PlaceCamera<T>({1, 2, 3}, {5, 2, 3}, {0, 1, 0}), {0, 0, -1, 1, 0, 1, 0, 2, 1, 0, 0, 3, 0, 0, 0, 1},
                    GENERAL);
    // Along (3, 0, -4) with an upper direction that leans forward: right is (-4 * -1, 0, 3) / 5, up is y again.
    tMatrix4<T> const leaning = LookAt<T>({0, 0, 0}, {3, 0, -4}, {3, 5, -4});
    T const close = 4 * EPSILON<T>;
    ExpectNear(RowOf(leaning, 0), tVector3<T>(T(0.8), 0, T(0.6)), close);
    ExpectNear(RowOf(leaning, 1), tVector3<T>(0, 1, 0), close);
    ExpectNear(RowOf(leaning, 2), tVector3<T>(T(-0.6), 0, T(0.8)), close);
}

TYPED_TEST(ViewTest, CamerasAreRigidAndBothMatricesAreMadeOfTheSameNumbers)
{
    using T = TypeParam;
    Random random(11);
    T const close = 16 * EPSILON<T>;
    for (int run = 0; run < 2000; ++run)
    {
        auto const eye = random.Vector<tVector3<T>>(-5, 5);
        auto const target = random.Vector<tVector3<T>>(-5, 5);
        auto const up = random.Vector<tVector3<T>>(-1, 1);
        tMatrix4<T> const view = LookAt(eye, target, up);
        tMatrix4<T> const place = PlaceCamera(eye, target, up);
        tVector3<T> const right = RowOf(view, 0);
        tVector3<T> const top = RowOf(view, 1);
        tVector3<T> const back = RowOf(view, 2);
        for (auto const& axis : {right, top, back})
            EXPECT_NEAR(axis.LengthSquared(), T{1}, close);
        ExpectNear(right.Cross(top), back, close);
        ExpectNear(back, (eye - target).Normalised(), close);
        // Up shows upwards in the middle of the picture. Near the line of sight, few digits of it count.
        T const across = top.Dot(up);
        EXPECT_GT(across, T{0});
        EXPECT_NEAR(right.Dot(up) / across, T{0}, close / across);

        for (std::size_t i = 0; i < 3; ++i)
        {
            ExpectSameBits(view[4 * i + 3], T{0} - RowOf(view, i).Dot(eye));
            ExpectSameBits(place[4 * i + 3], eye[i]);
            for (std::size_t j = 0; j < 3; ++j)
                ExpectSameBits(place[4 * i + j], view[4 * j + i]);
        }
        EXPECT_EQ(StateOf(view), GENERAL);
        EXPECT_EQ(StateOf(place), GENERAL);
        T const distance = (target - eye).Length();
        ExpectNear(target.Transformed(view), {0, 0, -distance}, 100 * EPSILON<T>);
        ExpectNear(tVector3<T>(0, 0, -distance).Transformed(place), target, 100 * EPSILON<T>);
    }
}

TYPED_TEST(ViewTest, CamerasAreRigidHoweverNearUpIsToTheLineOfSight)
{
    using T = TypeParam;
    Random random(19);
    T const close = 8 * EPSILON<T>;
    for (T angle = 1; angle > EPSILON<T>; angle *= T(0.75))
        for (int run = 0; run < 100; ++run)
        {
            auto const way = random.Vector<tVector3<T>>(-1, 1);
            tVector3<T> const aside = way.Cross(random.Vector<tVector3<T>>(-1, 1)).Normalised();
            tVector3<T> const up = way + aside * (way.Length() * angle);
            tMatrix4<T> const view = LookAt<T>({}, way, up * (run % 2 == 0 ? T{1} : T{-4}));
            EXPECT_EQ(StateOf(view), ORTHONORMAL);
            for (std::size_t i = 0; i < 3; ++i)
                for (std::size_t j = i; j < 3; ++j)
                    EXPECT_NEAR(RowOf(view, i).Dot(RowOf(view, j)), i == j ? T{1} : T{0}, close) << angle;
        }
}

TYPED_TEST(ViewTest, TheInverseOfACameraWhoseUpIsNearTheLineOfSightIsItsPlace)
{
    using T = TypeParam;
    tVector3<T> const way(T(-0.779134154), T(0.9085778), T(-0.745825768));
    tVector3<T> const up(T(-0.552478194), T(0.644264162), T(-0.528859019));
    tVector3<T> const eye(1, 2, 3);
    tMatrix4<T> const view = LookAt<T>({}, way, up);
    for (tMatrix4<T> const& product :
         {view * view.Inverted(), LookAt(eye, eye + way, up) * PlaceCamera(eye, eye + way, up)})
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_NEAR(product[i], i % 5 == 0 ? T{1} : T{0}, 16 * EPSILON<T>) << "element " << i;
}

TYPED_TEST(ViewTest, TheRightDirectionIsThatOfTheProductInTheOrderWritten)
{
    using T = TypeParam;
    tVector3<T> const eye(1, -2, 7), target(4, 3, -1), up(1, 5, 2);
    tVector3<T> const way(3, 5, -8); // squared length 98
    T const q = 1 / std::sqrt(Runtime(T{98}));
    tVector3<T> const f(way.x * q, way.y * q, way.z * q);
    tVector3<T> const c(f.y * 2 - f.z * 5, f.z * 1 - f.x * 2, f.x * 5 - f.y * 1);
    T const r = 1 / std::sqrt((c.x * c.x + c.y * c.y) + c.z * c.z);
    tVector3<T> const right(c.x * r, c.y * r, c.z * r);
    tMatrix4<T> const view = LookAt(eye, target, up);
    ExpectSameBits(RowOf(view, 0), right);
    ExpectSameBits(RowOf(view, 1), tVector3<T>(right.y * f.z - right.z * f.y, right.z * f.x - right.x * f.z,
                                               right.x * f.y - right.y * f.x));
    ExpectSameBits(RowOf(view, 2), tVector3<T>(-f.x, -f.y, -f.z));
}

TYPED_TEST(ViewTest, TheLengthsOfTheLineOfSightAndOfUpMakeNoDifference)
{
    using T = TypeParam;
    T const close = 16 * EPSILON<T>;
    tVector3<T> const way(2, -1, 4), up(1, 3, -2);
    tMatrix4<T> const expected = LookAt<T>({}, way, up);
    constexpr int LAST = sizeof(T) == sizeof(float) ? 120 : 1000;
    for (int exponent = -LAST; exponent <= LAST; exponent += LAST / 8)
    {
        T const factor = std::ldexp(T{1}, exponent);
        for (tMatrix4<T> const& view : {LookAt<T>({}, way * factor, up), LookAt<T>({}, way, up * factor)})
            for (std::size_t row = 0; row < 3; ++row)
                ExpectNear(RowOf(view, row), RowOf(expected, row), close);
    }
    tMatrix4<T> const tiny = LookAt<T>({}, {0, 0, -TINY<T>}, {0, TINY<T>, 0});
    ExpectValues(tiny, IDENTITY_ELEMENTS<T>, ORTHONORMAL);
}

TYPED_TEST(ViewTest, WithoutAnUpDirectionTheRightOneIsTheXAxisOrTheZAxis)
{
    using T = TypeParam;
    auto const right = [](tVector3<T> const& way, tVector3<T> const& up) { return RowOf(LookAt<T>({}, way, up), 0); };
    for (T const scale : {T{1}, T{-3}, T{0}}) // along, against, and no direction at all
    {
        ExpectSameBits(right({0, -5, 0}, tVector3<T>(0, 1, 0) * scale).x, T{1});
        ExpectSameBits(right({0, 5, 0}, tVector3<T>(0, 1, 0) * scale).x, T{1});
        ExpectSameBits(right({0, 0, 2}, tVector3<T>(0, 0, 1) * scale).x, T{1});
        ExpectSameBits(right({2, 0, 0}, tVector3<T>(1, 0, 0) * scale).z, T{1});
        ExpectSameBits(right({-2, 0, 0}, tVector3<T>(1, 0, 0) * scale).z, T{1});
    }
    // Looking down, the top of the picture is -z: right cross forward = x cross -y.
    ExpectNear(RowOf(LookAt<T>({0, 9, 0}, {0, 1, 0}, {0, 1, 0}), 1), {0, 0, -1}, T{0});

    Random random(12);
    T const close = 8 * EPSILON<T>;
    for (int run = 0; run < 1000; ++run)
    {
        auto const way = random.Vector<tVector3<T>>(-4, 4);
        tMatrix4<T> const view = LookAt<T>({}, way, way * random.Number(T{-2}, T{2}));
        bool const isNearX = std::abs(way.x) > std::abs(way.y) && std::abs(way.x) > std::abs(way.z);
        tVector3<T> const axis = isNearX ? tVector3<T>(0, 0, 1) : tVector3<T>(1, 0, 0);
        EXPECT_GT(RowOf(view, 0).Dot(axis), T(0.5)); // 45 degrees away at least
        EXPECT_NEAR(RowOf(view, 1).Dot(axis), T{0}, close);
        EXPECT_NEAR(RowOf(view, 0).Dot(RowOf(view, 2)), T{0}, close);
        EXPECT_NEAR(RowOf(view, 0).LengthSquared(), T{1}, close);
    }
    // A thousand epsilon off the line, up is a direction.
    ExpectNear(right({0, 0, -1}, {1000 * EPSILON<T>, 0, -1}), {0, -1, 0}, T{0});
}

TYPED_TEST(ViewTest, ACameraWithoutALineOfSightHoldsNaN)
{
    using T = TypeParam;
    tVector3<T> const up(0, 1, 0);
    ExpectRowsAreNaN(LookAt<T>({1, 2, 3}, {1, 2, 3}, up));
    ExpectRowsAreNaN(LookAt<T>({}, {}, up));
    for (T const broken : {QUIET_NAN<T>, INF<T>, -INF<T>})
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            tVector3<T> bad(1, 2, 4);
            bad[axis] = broken;
            ExpectRowsAreNaN(LookAt<T>(bad, {0, 3, 0}, up));
            ExpectRowsAreNaN(LookAt<T>({0, 3, 0}, bad, up));
            tMatrix4<T> const place = PlaceCamera<T>(bad, {0, 3, 0}, up);
            ExpectRowsAreNaN(place);
            for (std::size_t i = 0; i < 3; ++i)
                ExpectSameBits(place[4 * i + 3], bad[i]);
            // Up has no part in the backward direction.
            tMatrix4<T> const tilted = LookAt<T>({}, {0, 0, -1}, bad);
            EXPECT_TRUE(IsNaN(tilted[0]) && IsNaN(tilted[5]));
            ExpectNear(RowOf(tilted, 2), {0, 0, 1}, T{0});
        }
}

TYPED_TEST(ViewTest, OnlyACameraAtTheOriginIsARotation)
{
    using T = TypeParam;
    tVector3<T> const target(1, 2, 3), up(0, 1, 0);
    for (T const zero : {T{0}, T{-0.0}})
    {
        tMatrix4<T> const view = LookAt<T>({zero, zero, zero}, target, up);
        EXPECT_EQ(StateOf(view), ORTHONORMAL);
        EXPECT_EQ(StateOf(PlaceCamera<T>({zero, zero, zero}, target, up)), ORTHONORMAL);
        for (std::size_t const i : {3U, 7U, 11U})
            ExpectSameBits(view[i], T{0});
    }
    for (tVector3<T> const& eye : {tVector3<T>(TINY<T>, 0, 0), {0, -TINY<T>, 0}, {0, 0, TINY<T>}})
    {
        EXPECT_EQ(StateOf(LookAt(eye, target, up)), GENERAL);
        EXPECT_EQ(StateOf(PlaceCamera(eye, target, up)), GENERAL);
    }
}

// Projections

template <typename T>
[[nodiscard]] T DepthAt(tMatrix4<T> const& projection, T distance)
{
    return tVector3<T>(0, 0, -distance).Transformed(projection).z;
}

TYPED_TEST(ViewTest, EachRangeOfDepthEndsAtItsPlanes)
{
    using T = TypeParam;
    T const close = 8 * EPSILON<T>;
    for (std::size_t i = 0; i < 3; ++i)
        for (tMatrix4<T> const& projection : {PerspectiveFromTangent<T>(T(0.5), T(1.5), T(0.75), 20, RANGES[i]),
                                              PerspectiveFromFieldOfView<T>(1, T(1.5), T(0.75), 20, RANGES[i]),
                                              PerspectiveProjection<T>(-1, 2, -3, 1, T(0.75), 20, RANGES[i]),
                                              OrthographicProjection<T>(-1, 2, -3, 1, T(0.75), 20, RANGES[i])})
        {
            EXPECT_EQ(StateOf(projection), GENERAL);
            EXPECT_NEAR(DepthAt(projection, T(0.75)), AT_NEAR[i], close);
            EXPECT_NEAR(DepthAt(projection, T{20}), AT_FAR[i], close);
        }
}

TYPED_TEST(ViewTest, WithoutAFarPlaneDepthTendsToItsEnd)
{
    using T = TypeParam;
    for (std::size_t i = 0; i < 3; ++i)
        for (auto const &project : {+[](T farPlane, DepthRange range)
                                    { return PerspectiveFromTangent<T>(T(0.5), T(1.5), T(0.75), farPlane, range); },
                                    +[](T farPlane, DepthRange range)
                                    { return PerspectiveProjection<T>(-1, 2, -3, 1, T(0.75), farPlane, range); }})
        {
            tMatrix4<T> const projection = project(INF<T>, RANGES[i]);
            EXPECT_EQ(StateOf(projection), GENERAL);
            EXPECT_EQ(DepthAt(projection, T(0.75)), static_cast<T>(AT_NEAR[i]));
            EXPECT_EQ(DepthAt(projection, T(0x1p100)), static_cast<T>(AT_FAR[i]) + (i == 2 ? T(0.75 * 0x1p-100) : 0));
            // The limit of ever farther planes: of 2^60 * 0.75, m33 and m34 are rounded to the same.
            tMatrix4<T> const farther = project(T(0.75 * 0x1p60), RANGES[i]);
            for (std::size_t element = 0; element < 16; ++element)
                EXPECT_NEAR(farther[element], projection[element], T(0x1p-59));
        }
}

TYPED_TEST(ViewTest, AProjectionFromATangentHoldsTheseElements)
{
    using T = TypeParam;
    // 1 / (0.5 * 4) and 1 / 0.5; n = 2, f = 10 and d = 8.
    auto const elements = [](T m33, T m34) -> Elements<T>
    { return {T(0.5), 0, 0, 0, 0, 2, 0, 0, 0, 0, m33, m34, 0, 0, -1, 0}; };
    auto const make = [](T farPlane, DepthRange range)
    { return PerspectiveFromTangent<T>(T(0.5), 4, 2, farPlane, range); };
    ExpectMatrix(make(10, RANGES[0]), elements(T(-1.5), -5), GENERAL); // -12 / 8, -40 / 8
    ExpectMatrix(make(10, RANGES[1]), elements(T(-1.25), T(-2.5)), GENERAL);
    ExpectMatrix(make(10, RANGES[2]), elements(T(0.25), T(2.5)), GENERAL);
    ExpectMatrix(make(INF<T>, RANGES[0]), elements(-1, -4), GENERAL);
    ExpectMatrix(make(INF<T>, RANGES[1]), elements(-1, -2), GENERAL);
    ExpectMatrix(make(INF<T>, RANGES[2]), elements(0, 2), GENERAL);
    ExpectMatrix(PerspectiveFromTangent<T>(T(0.5), 4, 2, 10), elements(T(-1.5), -5), GENERAL);
    ExpectMatrix(make(10, static_cast<DepthRange>(77)), elements(T(-1.5), -5), GENERAL);
}

TYPED_TEST(ViewTest, DepthsAreRoundedInTheOrderWritten)
{
    using T = TypeParam;
    Random random(13);
    for (int run = 0; run < 500; ++run)
    {
        T const n = random.Number(T(0.01), T{3});
        T const f = random.Number(T{4}, T{1000});
        T const t = random.Number(T(0.1), T{2});
        T const a = random.Number(T(0.1), T{2});
        T const d = f - n;
        T const m33[] = {-(f + n) / d, -f / d, n / d};
        T const m34[] = {((-2 * f) * n) / d, n * m33[1], f * m33[2]};
        for (std::size_t i = 0; i < 3; ++i)
        {
            ExpectMatrix<T>(PerspectiveFromTangent(t, a, n, f, RANGES[i]),
                            {1 / (t * a), 0, 0, 0, 0, 1 / t, 0, 0, 0, 0, m33[i], m34[i], 0, 0, -1, 0}, GENERAL);
            tMatrix4<T> expected = tMatrix4<T>::PerspectiveProjection(-t, a, -a, t, n, f);
            expected(10) = m33[i];
            expected(11) = m34[i];
            ExpectSameMatrix(PerspectiveProjection(-t, a, -a, t, n, f, RANGES[i]), expected);
        }
        T const p = 1 / d;
        tMatrix4<T> parallel = tMatrix4<T>::OrthogonalProjection(-t, a, -a, t, n, f);
        ExpectSameMatrix(OrthographicProjection(-t, a, -a, t, n, f), parallel);
        parallel(10) = -p;
        parallel(11) = -n * p;
        ExpectSameMatrix(OrthographicProjection(-t, a, -a, t, n, f, RANGES[1]), parallel);
        parallel(10) = p;
        parallel(11) = f * p;
        ExpectSameMatrix(OrthographicProjection(-t, a, -a, t, n, f, RANGES[2]), parallel);
    }
}

TYPED_TEST(ViewTest, TheOrdinaryRangeIsThatOfTheMembersOfTheMatrix)
{
    using T = TypeParam;
    ExpectSameMatrix(PerspectiveProjection<T>(-1, 2, -3, 1, 3, 9),
                     tMatrix4<T>::PerspectiveProjection(-1, 2, -3, 1, 3, 9));
    ExpectSameMatrix(OrthographicProjection<T>(-1, 2, -3, 1, 3, 9),
                     tMatrix4<T>::OrthogonalProjection(-1, 2, -3, 1, 3, 9));
    // Half a height of 0.75 on the near plane at 1.5, and 4 / 3 of that for half the width: within a few roundings.
    tMatrix4<T> const expected = tMatrix4<T>::PerspectiveProjection(-1, 1, T(-0.75), T(0.75), T(1.5), 9);
    EXPECT_TRUE(PerspectiveFromTangent<T>(T(0.5), T(4) / 3, T(1.5), 9) == expected);
    EXPECT_TRUE(PerspectiveFromFieldOfView<T>(2 * std::atan(T(0.5)), T(4) / 3, T(1.5), 9) == expected);
}

TYPED_TEST(ViewTest, AFieldOfViewSpansThePictureFromBottomToTop)
{
    using T = TypeParam;
    for (T const angle : {T(0.001), T(0.5), T(1), T(2), T(3)})
    {
        tMatrix4<T> const projection = PerspectiveFromFieldOfView<T>(angle, 2, 1, 10);
        // Tangents by an error of half a unit of the angle: 1 / cos^2 = 200 for the largest.
        T const top = std::sin(angle / 2) / std::cos(angle / 2);
        EXPECT_NEAR(projection[5] * top, T{1}, 8 * EPSILON<T>);
        EXPECT_NEAR(projection[0] * top, T(0.5), 8 * EPSILON<T>);
        ExpectSameMatrix(projection, PerspectiveFromTangent<T>(std::tan(Runtime(angle) / 2), 2, 1, 10));
    }
}

TYPED_TEST(ViewTest, ViewsWithoutAnExtentAreRefused)
{
    using T = TypeParam;
    auto const expectThrow = [](auto const& build, std::string const& function, unsigned int line)
    {
        ExpectThrows<bv::InvalidArgumentException>(build, "Invalid view parameters", "bv::maths::" + function,
                                                   "internal\\Maths\\View", line);
    };
    T const nearlyTwo = 2 + 50 * EPSILON<T>;
    for (DepthRange const range : RANGES)
    {
        for (T const angle : {T{0}, T{-1}, PI<T>, T{4}, INF<T>, -INF<T>})
            expectThrow([&] { return PerspectiveFromFieldOfView<T>(angle, 1, 1, 2, range); },
                        "PerspectiveFromFieldOfView", 58);
        expectThrow([&] { return PerspectiveFromFieldOfView<T>(1, 0, 1, 2, range); }, "PerspectiveFromFieldOfView", 58);
        expectThrow([&] { return PerspectiveFromFieldOfView<T>(1, 1, 2, nearlyTwo, range); },
                    "PerspectiveFromFieldOfView", 58);
        for (T const zero : {T{0}, T{-0.0}})
        {
            expectThrow([&] { return PerspectiveFromTangent<T>(zero, 1, 1, 2, range); }, "PerspectiveFromTangent", 76);
            expectThrow([&] { return PerspectiveFromTangent<T>(1, zero, 1, 2, range); }, "PerspectiveFromTangent", 76);
        }
        expectThrow([&] { return PerspectiveFromTangent<T>(1, 1, nearlyTwo, 2, range); }, "PerspectiveFromTangent", 76);
        expectThrow([&] { return PerspectiveProjection<T>(2, nearlyTwo, 1, 2, 1, 2, range); }, "PerspectiveProjection",
                    94);
        expectThrow([&] { return PerspectiveProjection<T>(1, 2, 2, nearlyTwo, 1, 2, range); }, "PerspectiveProjection",
                    94);
        expectThrow([&] { return PerspectiveProjection<T>(1, 2, 1, 2, 2, nearlyTwo, range); }, "PerspectiveProjection",
                    94);
        expectThrow([&] { return OrthographicProjection<T>(2, nearlyTwo, 1, 2, 1, 2, range); },
                    "OrthographicProjection", 112);
        expectThrow([&] { return OrthographicProjection<T>(1, 2, 2, nearlyTwo, 1, 2, range); },
                    "OrthographicProjection", 112);
        expectThrow([&] { return OrthographicProjection<T>(1, 2, 1, 2, 2, nearlyTwo, range); },
                    "OrthographicProjection", 112);
    }
    EXPECT_NO_THROW(static_cast<void>(PerspectiveFromTangent<T>(TINY<T>, 1, 1, 2)));
}

TYPED_TEST(ViewTest, NaNInAProjectionGivesNaN)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    EXPECT_TRUE(IsNaN(PerspectiveFromFieldOfView<T>(nan, 1, 1, 2)[5]));
    EXPECT_TRUE(IsNaN(PerspectiveFromTangent<T>(1, nan, 1, 2)[0]));
    for (DepthRange const range : RANGES)
    {
        EXPECT_TRUE(IsNaN(PerspectiveFromTangent<T>(1, 1, nan, 2, range)[10]));
        EXPECT_TRUE(IsNaN(PerspectiveFromTangent<T>(1, 1, 1, nan, range)[10]));
    }
    // Without a far plane, 1 / (far - near) is 0.
    EXPECT_TRUE(IsNaN(OrthographicProjection<T>(1, 2, 1, 2, 1, INF<T>, RANGES[0])[11]));
    EXPECT_EQ(OrthographicProjection<T>(1, 2, 1, 2, 1, INF<T>, RANGES[1])[11], T{0});
    EXPECT_TRUE(IsNaN(OrthographicProjection<T>(1, 2, 1, 2, 1, INF<T>, RANGES[2])[11]));
}

TYPED_TEST(ViewTest, AFarPlaneAtInfinityRaisesNoFlag)
{
    using T = TypeParam;
    T farPlane = INF<T>;
    Hide(farPlane);
    for (DepthRange const range : RANGES)
    {
        EXPECT_EQ(Raised([&] { return PerspectiveFromTangent<T>(1, 1, 1, farPlane, range)[11]; }), 0);
        EXPECT_EQ(Raised([&] { return PerspectiveProjection<T>(1, 2, 1, 2, 1, farPlane, range)[11]; }), 0);
    }
}

// Pixels

template <typename T>
[[nodiscard]] std::vector<tMatrix4<T>> ManyProjections()
{
    std::vector<tMatrix4<T>> projections;
    for (DepthRange const range : RANGES)
    {
        projections.push_back(PerspectiveFromTangent<T>(T(0.5), T(1.5), T(0.5), 50, range));
        projections.push_back(PerspectiveFromTangent<T>(T(0.5), T(1.5), T(0.5), INF<T>, range));
        projections.push_back(PerspectiveProjection<T>(T(-0.5), T(0.25), T(-0.125), T(0.5), T(0.5), 50, range));
        projections.push_back(PerspectiveProjection<T>(T(-0.5), T(0.25), T(-0.125), T(0.5), T(0.5), INF<T>, range));
        projections.push_back(OrthographicProjection<T>(-3, 5, -2, 4, T(0.5), 50, range));
    }
    return projections;
}

TYPED_TEST(ViewTest, PixelsAreCountedFromTheTopLeftCornerToTheBottomRightOne)
{
    using T = TypeParam;
    tVector2<T> const size(640, 480);
    // 0.75 of the height of 2 is 1.5, half of it; the width is 4 / 3 of that.
    tMatrix4<T> const projection = PerspectiveFromTangent<T>(T(0.75), T(4) / T(3), 1, 100);
    auto const expectRay = [&](T x, T y, tVector3<T> const& direction)
    {
        tRay<T> const ray = GetPixelRay<T>({x, y}, size, projection, tMatrix4<T>());
        ExpectNear(ray.origin, {0, 0, 0}, T{0});
        ExpectNear(ray.direction, direction.Normalised(), 4 * EPSILON<T>);
        auto const pixel = GetPixel(direction, projection, size);
        ASSERT_TRUE(pixel);
        EXPECT_NEAR(pixel->x, x, 640 * EPSILON<T>);
        EXPECT_NEAR(pixel->y, y, 480 * EPSILON<T>);
    };
    expectRay(0, 0, {-1, T(0.75), -1});
    expectRay(640, 0, {1, T(0.75), -1});
    expectRay(0, 480, {-1, T(-0.75), -1});
    expectRay(640, 480, {1, T(-0.75), -1});
    expectRay(320, 240, {0, 0, -1});
    expectRay(T(0.5), T(0.5), {T(-639) / 640, T(0.75 * 479) / 480, -1}); // the middle of the first pixel
    expectRay(1280, 240, {3, 0, -1});                                    // beside the picture
}

TYPED_TEST(ViewTest, ParallelRaysStartInThePlaneOfTheEye)
{
    using T = TypeParam;
    tVector2<T> const size(8, 4);
    for (DepthRange const range : RANGES)
    {
        tPixelRays<T> const rays(size, OrthographicProjection<T>(-4, 4, -2, 2, 1, 9, range), tMatrix4<T>());
        ExpectNear(rays({0, 0}).origin, {-4, 2, 0}, T{0});
        ExpectNear(rays({8, 4}).origin, {4, -2, 0}, T{0});
        ExpectNear(rays({3, 1}).origin, {-1, 1, 0}, T{0});
        ExpectNear(rays({3, 1}).direction, {0, 0, -1}, T{0});
        ExpectNear(rays.GetDirection({3, 1}), {0, 0, -1}, T{0});
        ExpectNear(rays.GetStepRight(), {1, 0, 0}, T{0});
        ExpectNear(rays.GetStepDown(), {0, -1, 0}, T{0});
    }
}

TYPED_TEST(ViewTest, WhatAPixelsRayMeetsShowsInThatPixel)
{
    using T = TypeParam;
    Random random(14);
    tVector2<T> const size(160, 90);
    for (tMatrix4<T> const& projection : ManyProjections<T>())
        for (int run = 0; run < 200; ++run)
        {
            auto const eye = random.Vector<tVector3<T>>(-2, 2);
            auto const target = random.Vector<tVector3<T>>(3, 9);
            tMatrix4<T> const place = PlaceCamera<T>(eye, target, {0, 1, 0});
            tMatrix4<T> const view = LookAt<T>(eye, target, {0, 1, 0});
            tPixelRays<T> const rays(size, projection, place);
            tVector2<T> const at(random.Number(T{0}, size.x), random.Number(T{0}, size.y));
            tRay<T> const ray = rays(at);
            EXPECT_NEAR(ray.direction.LengthSquared(), T{1}, 8 * EPSILON<T>);
            T const distance = random.Number(T{1}, T{20});
            tVector3<T> const point = ray.origin + ray.direction * distance;
            auto const pixel = GetPixel(point, projection * view, size);
            ASSERT_TRUE(pixel);
            // Some ten roundings of numbers up to 30, by 1 for the distance, and 160 pixels for a width of 1.
            T const close = 3000 * EPSILON<T>;
            EXPECT_NEAR(pixel->x, at.x, 4 * close);
            EXPECT_NEAR(pixel->y, at.y, 4 * close);
            T const along = -point.Transformed(view).z;
            // Depths crowd at the far plane: at 20 of 50, with the near plane at 0.5, a step of depth is 20^2 / 0.5.
            EXPECT_NEAR(GetViewDistance<T>(pixel->z, projection), along, 10 * close);
        }
}

TYPED_TEST(ViewTest, TheRaysOfACameraAreThoseOfSinglePixels)
{
    using T = TypeParam;
    Random random(15);
    tVector2<T> const size(160, 90);
    tMatrix4<T> const place = PlaceCamera<T>({1, 2, 3}, {-3, 1, 1}, {0, 1, 0});
    for (tMatrix4<T> const& projection : ManyProjections<T>())
    {
        tPixelRays<T> const rays(size, projection, place);
        for (int run = 0; run < 50; ++run)
        {
            tVector2<T> const at(random.Number(T{-10}, T{200}), random.Number(T{-10}, T{200}));
            tRay<T> const expected = GetPixelRay(at, size, projection, place);
            ExpectSameBits(rays(at).origin, expected.origin);
            ExpectSameBits(rays(at).direction, expected.direction);
            if (projection[14] == T{0})
            {
                tVector3<T> const start =
                    (rays({0, 0}).origin + rays.GetStepRight() * at.x) + rays.GetStepDown() * at.y;
                ExpectSameBits(expected.origin, start);
            }
            else
            {
                tVector3<T> const way =
                    (rays.GetDirection({0, 0}) + rays.GetStepRight() * at.x) + rays.GetStepDown() * at.y;
                ExpectSameBits(rays.GetDirection(at), way);
                ExpectSameBits(expected.direction, way.Normalised());
            }
        }
    }
}

TYPED_TEST(ViewTest, AProjectionAlongZHasItsRaysAlongZ)
{
    using T = TypeParam;
    // As of a left-handed camera: w is z, and the picture is not mirrored.
    tMatrix4<T> const projection(1, 0, T(0.5), 0, 0, 2, 0, 0, 0, 0, 1, -1, 0, 0, 1, 0);
    tRay<T> const ray = GetPixelRay<T>({10, 10}, {10, 10}, projection, tMatrix4<T>());
    ExpectNear(ray.direction, tVector3<T>(T(0.5), T(-0.5), 1).Normalised(), 4 * EPSILON<T>); // x + 0.5 z = z, 2 y = -z
    auto const pixel = GetPixel<T>({T(0.5), T(-0.5), 1}, projection, {10, 10});
    ASSERT_TRUE(pixel);
    ExpectNear(*pixel, {10, 10, 0}, T{0});
}

TYPED_TEST(ViewTest, ACameraIsPlacedByTheStateOfItsMatrix)
{
    using T = TypeParam;
    Elements<T> const ramp = Ramp<T>(2, 1); // rows of 2 3 4 5, 6 7 8 9, 10 11 12 13
    tMatrix4<T> const central = PerspectiveFromTangent<T>(1, 1, 1, 9);
    tMatrix4<T> const parallel = OrthographicProjection<T>(-1, 1, -1, 1, 1, 9);
    auto const expect = [&](std::uint32_t state, tVector3<T> const& eye, tVector3<T> const& direction,
                            tVector3<T> const& start, tVector3<T> const& back)
    {
        tMatrix4<T> const place = MakeMatrix(ramp, state);
        tPixelRays<T> const rays({2, 2}, central, place); // (2, 0) is at (1, 1, -1)
        ExpectSameBits(rays({2, 0}).origin, eye);
        ExpectSameBits(rays.GetDirection({2, 0}), direction);
        tRay<T> const ray = GetPixelRay<T>({2, 0}, {2, 2}, parallel, place);
        ExpectSameBits(ray.origin, start);
        ExpectNear(ray.direction, (-back).Normalised(), 2 * EPSILON<T>);
    };
    expect(IDENTITY, {0, 0, 0}, {1, 1, -1}, {1, 1, 0}, {0, 0, 1});
    expect(DIAGONAL, {0, 0, 0}, {2, 7, -12}, {2, 7, 0}, {0, 0, 12});
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
        expect(state, {5, 9, 13}, {1, 5, 9}, {10, 22, 34}, {4, 8, 12});
}

TYPED_TEST(ViewTest, APointShowsByTheStateOfTheMatrix)
{
    using T = TypeParam;
    Elements<T> const ramp = Ramp<T>(2, 1); // 2 7 12 17 on the diagonal, 14 15 16 17 in the fourth row
    tVector3<T> const point(1, 2, 3);
    tVector2<T> const size(2, 4);
    auto const expect = [&](std::uint32_t state, tVector3<T> const& place)
    {
        auto const pixel = GetPixel(point, MakeMatrix(ramp, state), size);
        ASSERT_TRUE(pixel);
        ExpectSameBits(*pixel, tVector3<T>(place.x + 1, (1 - place.y) * 2, place.z));
    };
    expect(IDENTITY, point);
    T const q = 1 / Runtime(T{17});
    expect(DIAGONAL, {1 * (q * 2), 2 * (q * 7), (q * 12) * 3});
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL, UNKNOWN})
        expect(state, point.Transformed(MakeMatrix(ramp, state)));
}

TYPED_TEST(ViewTest, APointThatIsNotInFrontOfTheEyeShowsNowhere)
{
    using T = TypeParam;
    tVector2<T> const size(10, 10);
    for (tMatrix4<T> const& projection : ManyProjections<T>())
    {
        bool const isParallel = projection[14] == T{0};
        for (T const z : {T{0}, T{-0.0}, T{5}})
            EXPECT_EQ(GetPixel<T>({1, 2, z}, projection, size).has_value(), isParallel);
        EXPECT_FALSE(GetPixel<T>({1, 2, QUIET_NAN<T>}, projection, size));
        EXPECT_TRUE(GetPixel<T>({1, 2, -TINY<T>}, projection, size));
        EXPECT_TRUE(GetPixel<T>({1, 2, T(-0.25)}, projection, size)); // in front of the near plane
    }
    for (T const w : {T{0}, T{-1}, QUIET_NAN<T>})
        EXPECT_FALSE(GetPixel<T>({1, 2, 3}, MakeMatrix(Diagonal<T>(1, 1, 1, w), DIAGONAL), size));
    EXPECT_TRUE(GetPixel<T>({1, 2, 3}, MakeMatrix(Diagonal<T>(1, 1, 1, -1), IDENTITY), size));
}

TYPED_TEST(ViewTest, APointTooNearToTheEyeToBeDividedShowsAtInfinity)
{
    using T = TypeParam;
    auto const beside = GetPixel<T>({1, 0, 3}, MakeMatrix(Diagonal<T>(1, 1, 1, TINY<T>), DIAGONAL), {10, 10});
    ASSERT_TRUE(beside);
    EXPECT_EQ(beside->x, INF<T>);
    EXPECT_TRUE(IsNaN(beside->y));
    EXPECT_EQ(beside->z, INF<T>);
}

TYPED_TEST(ViewTest, TheEndOfDepthLiesAtInfinity)
{
    using T = TypeParam;
    for (std::size_t i = 0; i < 3; ++i)
    {
        tMatrix4<T> const projection = PerspectiveFromTangent<T>(1, 1, 2, INF<T>, RANGES[i]);
        EXPECT_EQ(std::abs(GetViewDistance<T>(static_cast<T>(AT_FAR[i]), projection)), INF<T>);
        EXPECT_EQ(GetViewDistance<T>(static_cast<T>(AT_NEAR[i]), projection), T{2});
    }
    tMatrix4<T> const flat(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, -1, 0);
    EXPECT_TRUE(IsNaN(GetViewDistance<T>(1, flat)));
}

} // namespace
