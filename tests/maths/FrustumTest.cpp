#include "bv/maths/tFrustum.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Maths/FrustumGuard.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/ArithmeticException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tRay.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Throws.h"
#include "support/Views.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
void ExpectPlane(tPlane<T> const& plane, std::type_identity_t<tVector3<T>> const& normal,
                 std::type_identity_t<T> offset)
{
    ExpectSameBits(plane.GetNormal(), normal);
    ExpectSameBits(plane.GetOffset(), offset);
}

template <typename T>
std::vector<tPlane<T>> PlanesOf(tFrustum<T> const& frustum)
{
    return {frustum.GetLeftPlane(), frustum.GetRightPlane(), frustum.GetBottomPlane(),
            frustum.GetTopPlane(),  frustum.GetNearPlane(),  frustum.GetFarPlane()};
}

/// Each of the eight corners against each of the six planes.
template <typename T>
typename tFrustum<T>::IntersectionResult ClassifyByCorners(tFrustum<T> const& frustum, tVolumeAABB<T> const& box)
{
    bool straddles = false;
    for (tPlane<T> const& plane : PlanesOf(frustum))
    {
        int behind = 0;
        for (int corner = 0; corner < 8; ++corner)
        {
            tVector3<T> const& n = plane.GetNormal();
            T const x = (corner & 1) != 0 ? box.GetMax().x : box.GetMin().x;
            T const y = (corner & 2) != 0 ? box.GetMax().y : box.GetMin().y;
            T const z = (corner & 4) != 0 ? box.GetMax().z : box.GetMin().z;
            behind += n.x * x + n.y * y + n.z * z + plane.GetOffset() < 0 ? 1 : 0;
        }
        if (behind == 8)
            return tFrustum<T>::OUTSIDE;
        straddles = straddles || behind > 0;
    }
    return straddles ? tFrustum<T>::INTERSECTING : tFrustum<T>::INSIDE;
}

template <typename T>
class FrustumTest : public testing::Test
{
protected:
    /// The cube from -1 to 1.
    tFrustum<T> const cube{tMatrix4<T>(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)};
    /// A camera at the origin that looks down -z, 90 degrees wide and high, from z = -1 to z = -3.
    tFrustum<T> const camera{tMatrix4<T>(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2, -3, 0, 0, -1, 0)};
    T const half = 1 / std::sqrt(T{2}); ///< normal component of its sides

    static void Expect(tPlane<T> const& plane, tVector3<T> const& normal, T offset)
    {
        ExpectPlane(plane, normal, offset);
    }
};

TYPED_TEST_SUITE(FrustumTest, Precisions);

TYPED_TEST(FrustumTest, PromisesItsTypesToTheCompiler)
{
    using T = TypeParam;
    using Frustum = tFrustum<T>;
    static_assert(sizeof(Frustum) == 6 * sizeof(tPlane<T>) && alignof(Frustum) == alignof(T));
    static_assert(!std::is_polymorphic_v<Frustum> && std::is_trivially_copyable_v<Frustum>);
    static_assert(std::is_nothrow_default_constructible_v<Frustum> && std::is_nothrow_copy_assignable_v<Frustum>);
    static_assert(std::is_nothrow_move_assignable_v<Frustum>);
    static_assert(std::is_constructible_v<Frustum, tMatrix4<T> const&>);
    static_assert(!std::is_nothrow_constructible_v<Frustum, tMatrix4<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().GetLeftPlane()), tPlane<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().GetRightPlane()), tPlane<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().GetBottomPlane()), tPlane<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().GetTopPlane()), tPlane<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().GetNearPlane()), tPlane<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().GetFarPlane()), tPlane<T> const&>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().ContainsAABB(tVolumeAABB<T>())),
                                 typename Frustum::IntersectionResult>);
    static_assert(
        std::is_same_v<decltype(std::declval<Frustum const&>().GetEdgeVector(Frustum::EDGE_TOP_LEFT)), tVector3<T>>);
    static_assert(std::is_same_v<decltype(std::declval<Frustum const&>().IntersectNear(tRay<T>())), tVector2<T>>);
    static_assert(noexcept(std::declval<Frustum const&>().ContainsAABB(tVolumeAABB<T>())));
    static_assert(noexcept(std::declval<Frustum const&>().GetEdgeVector(Frustum::EDGE_TOP_LEFT)));
    static_assert(!noexcept(std::declval<Frustum const&>().IntersectNear(tRay<T>())));
    SUCCEED();
}

TYPED_TEST(FrustumTest, EnumeratorsHaveTheirValuesIn32Bits)
{
    using Frustum = tFrustum<TypeParam>;
    static_assert(Frustum::OUTSIDE == 0 && Frustum::INTERSECTING == 1 && Frustum::INSIDE == 2);
    static_assert(Frustum::EDGE_TOP_LEFT == 0 && Frustum::EDGE_TOP_RIGHT == 1);
    static_assert(Frustum::EDGE_BOTTOM_LEFT == 2 && Frustum::EDGE_BOTTOM_RIGHT == 3);
    static_assert(std::is_same_v<std::underlying_type_t<typename Frustum::IntersectionResult>, std::uint32_t>);
    static_assert(std::is_same_v<std::underlying_type_t<typename Frustum::Edge>, std::uint32_t>);
    SUCCEED();
}

TYPED_TEST(FrustumTest, HoldsThePlanesLeftRightBottomTopNearFar)
{
    auto const fields = std::bit_cast<std::array<tPlane<TypeParam>, 6>>(this->camera);
    auto const planes = PlanesOf(this->camera);
    for (std::size_t i = 0; i < 6; ++i)
        this->Expect(fields[i], planes[i].GetNormal(), planes[i].GetOffset());
}

TYPED_TEST(FrustumTest, IsZeroByDefault)
{
    for (tPlane<TypeParam> const& plane : PlanesOf(tFrustum<TypeParam>()))
        this->Expect(plane, {0, 0, 0}, 0);
}

TYPED_TEST(FrustumTest, TheIdentityGivesTheCubeOfClipSpace)
{
    this->Expect(this->cube.GetLeftPlane(), {1, 0, 0}, 1);
    this->Expect(this->cube.GetRightPlane(), {-1, 0, 0}, 1);
    this->Expect(this->cube.GetBottomPlane(), {0, 1, 0}, 1);
    this->Expect(this->cube.GetTopPlane(), {0, -1, 0}, 1);
    this->Expect(this->cube.GetNearPlane(), {0, 0, 1}, 1);
    this->Expect(this->cube.GetFarPlane(), {0, 0, -1}, 1);
}

TYPED_TEST(FrustumTest, APerspectiveProjectionGivesSlantedSidesThatFaceInward)
{
    this->Expect(this->camera.GetLeftPlane(), {this->half, 0, -this->half}, 0);
    this->Expect(this->camera.GetRightPlane(), {-this->half, 0, -this->half}, 0);
    this->Expect(this->camera.GetBottomPlane(), {0, this->half, -this->half}, 0);
    this->Expect(this->camera.GetTopPlane(), {0, -this->half, -this->half}, 0);
    this->Expect(this->camera.GetNearPlane(), {0, 0, -1}, -1); // (0, 0, -3, -3) over 3
    this->Expect(this->camera.GetFarPlane(), {0, 0, 1}, 3);
    for (tPlane<TypeParam> const& plane : PlanesOf(this->camera))
        EXPECT_GT(plane.GetDistance({0, 0, -2}), TypeParam{0});
}

TYPED_TEST(FrustumTest, PlanesAreRow3PlusOrMinusAnotherRowScaledToUnitNormals)
{
    using T = TypeParam;
    Random random(20240612);
    for (int i = 0; i < 200; ++i)
    {
        std::array<T, 16> m{};
        for (T& element : m)
            element = random.Number<T>(-2000000, 2000000);
        tFrustum<T> const frustum{tMatrix4<T>(m.data())};
        auto const expected = [&m](std::size_t row, bool plus)
        {
            auto const combine = [&](std::size_t column)
            { return plus ? m[12 + column] + m[4 * row + column] : m[12 + column] - m[4 * row + column]; };
            return tPlane<T>({combine(0), combine(1), combine(2)}, combine(3));
        };
        std::array<tPlane<T>, 6> const planes = {expected(0, true),  expected(0, false), expected(1, true),
                                                 expected(1, false), expected(2, true),  expected(2, false)};
        auto const actual = PlanesOf(frustum);
        for (std::size_t plane = 0; plane < 6; ++plane)
            this->Expect(actual[plane], planes[plane].GetNormal(), planes[plane].GetOffset());
    }
}

TYPED_TEST(FrustumTest, ExtractionReadsTheElementsWhateverTheStateSays)
{
    using T = TypeParam;
    for (std::uint32_t const state : {0U, 1U, 2U, 3U, 77U})
    {
        auto const matrix = MakeMatrix<T>({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2, -3, 0, 0, -1, 0}, state);
        auto const actual = PlanesOf(tFrustum<T>(matrix));
        auto const expected = PlanesOf(this->camera);
        for (std::size_t i = 0; i < 6; ++i)
            this->Expect(actual[i], expected[i].GetNormal(), expected[i].GetOffset());
    }
}

TYPED_TEST(FrustumTest, APlaneWithoutADirectionIsInfiniteOrNaNAndNoError)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    tFrustum<T> const noLeft{tMatrix4<T>(1, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 1)};
    this->Expect(noLeft.GetLeftPlane(), {nan, nan, nan}, INF<T>); // (0, 0, 0, 2)
    this->Expect(noLeft.GetRightPlane(), {-1, 0, 0}, 0);          // (-2, 0, 0, 0)
    tFrustum<T> const nothing{tMatrix4<T>(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)};
    for (tPlane<T> const& plane : PlanesOf(nothing))
        this->Expect(plane, {nan, nan, nan}, nan);
    EXPECT_NO_THROW(tFrustum<T>(tMatrix4<T>(nan, nan, nan, nan, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)));
}

TYPED_TEST(FrustumTest, ADivisionByZeroWhileSettingPlanesMeansAnInvalidMatrix)
{
    auto const set = []
    { SetPlanes<TypeParam>([] { throw DivideByZeroException(L"Division", "a file", 7, "a function"); }); };
    std::string const type = bv::test::TYPE_NAME<TypeParam>;
    ExpectThrows<bv::InvalidArgumentException>(set, "Attempt to setup viewing frustum from invalid matrix",
                                               "bv::maths::tFrustum<" + type + ">::tFrustum",
                                               "internal\\Maths\\Frustum", 112);
}

TYPED_TEST(FrustumTest, EveryOtherErrorWhileSettingPlanesPassesThrough)
{
    using T = TypeParam;
    auto const matrix = [] { SetPlanes<T>([] { throw MatrixException(L"Matrix", "a file", 7, "a function"); }); };
    ExpectThrows<MatrixException>(matrix, "Matrix", "a function", "a file", 7);
    auto const arithmetic = [] { SetPlanes<T>([] { throw ArithmeticException(L"Any", "a file", 7, "a function"); }); };
    ExpectThrows<ArithmeticException>(arithmetic, "Any", "a function", "a file", 7);
    EXPECT_THROW(SetPlanes<T>([] { throw std::runtime_error("standard"); }), std::runtime_error);
    EXPECT_THROW(SetPlanes<T>([] { throw 7; }), int);
}

TYPED_TEST(FrustumTest, SettingPlanesWithoutAnErrorHappensOnce)
{
    int calls = 0;
    SetPlanes<TypeParam>([&calls] { ++calls; });
    EXPECT_EQ(calls, 1);
}

TYPED_TEST(FrustumTest, CopiesAndMovesTheSixPlanes)
{
    auto const expected = PlanesOf(this->camera);
    auto const expectCamera = [&](tFrustum<TypeParam> const& frustum)
    {
        auto const actual = PlanesOf(frustum);
        for (std::size_t i = 0; i < 6; ++i)
            this->Expect(actual[i], expected[i].GetNormal(), expected[i].GetOffset());
    };
    tFrustum<TypeParam> copy(this->camera);
    expectCamera(copy);
    tFrustum<TypeParam> assigned;
    EXPECT_EQ(&(assigned = copy), &assigned);
    expectCamera(assigned);
    tFrustum<TypeParam> moved;
    EXPECT_EQ(&(moved = std::move(copy)), &moved);
    expectCamera(moved);
}

TYPED_TEST(FrustumTest, ABoxInTheMiddleOfTheViewIsInside)
{
    EXPECT_EQ(this->camera.ContainsAABB({{-0.125, -0.125, -2}, {0.125, 0.125, -1.5}}), tFrustum<TypeParam>::INSIDE);
}

TYPED_TEST(FrustumTest, ABoxAcrossTheNearPlaneIntersects)
{
    EXPECT_EQ(this->camera.ContainsAABB({{-0.125, -0.125, -1.5}, {0.125, 0.125, -0.5}}),
              tFrustum<TypeParam>::INTERSECTING);
}

TYPED_TEST(FrustumTest, ABoxBehindTheCameraIsOutside)
{
    EXPECT_EQ(this->camera.ContainsAABB({{-1, -1, 1}, {1, 1, 2}}), tFrustum<TypeParam>::OUTSIDE);
}

TYPED_TEST(FrustumTest, EachPlaneRejectsAndStraddles)
{
    using Frustum = tFrustum<TypeParam>;
    using Vector = tVector3<TypeParam>;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        for (TypeParam const side : {TypeParam{-1}, TypeParam{1}})
        {
            Vector shift;
            shift[axis] = side;
            Vector const corner(0.5, 0.5, 0.5);
            EXPECT_EQ(this->cube.ContainsAABB({-corner + shift * TypeParam{2}, corner + shift * TypeParam{2}}),
                      Frustum::OUTSIDE);
            EXPECT_EQ(this->cube.ContainsAABB({-corner + shift, corner + shift}), Frustum::INTERSECTING);
            EXPECT_EQ(this->cube.ContainsAABB({-corner + shift * TypeParam{0.5}, corner + shift * TypeParam{0.5}}),
                      Frustum::INSIDE);
        }
    }
}

TYPED_TEST(FrustumTest, TouchingFromInsideIsInsideAndTouchingFromOutsideIntersects)
{
    using Frustum = tFrustum<TypeParam>;
    TypeParam const beyond = 1 + EPSILON<TypeParam>;
    EXPECT_EQ(this->cube.ContainsAABB({{-1, -1, -1}, {1, 1, 1}}), Frustum::INSIDE);
    EXPECT_EQ(this->cube.ContainsAABB({{-1, -1, -1}, {1, beyond, 1}}), Frustum::INTERSECTING);
    EXPECT_EQ(this->cube.ContainsAABB({{1, -1, -1}, {2, 1, 1}}), Frustum::INTERSECTING);
    EXPECT_EQ(this->cube.ContainsAABB({{beyond, -1, -1}, {2, 1, 1}}), Frustum::OUTSIDE);
    EXPECT_EQ(this->cube.ContainsAABB({{0, 0, 1}, {0, 0, 1}}), Frustum::INSIDE);
}

TYPED_TEST(FrustumTest, ABoxOutsideNearACornerMayIntersect)
{
    // Nothing of the view has x below -3, where its left side meets the far plane.
    tVolumeAABB<TypeParam> const box({-10, -0.125, -10}, {-3.25, 0.125, -2.875});
    EXPECT_EQ(this->camera.ContainsAABB(box), tFrustum<TypeParam>::INTERSECTING);
}

TYPED_TEST(FrustumTest, TheDefaultAcceptsEveryBox)
{
    using T = TypeParam;
    using Frustum = tFrustum<T>;
    T const nan = QUIET_NAN<T>;
    EXPECT_EQ(Frustum().ContainsAABB({{-1, -2, -3}, {4, 5, 6}}), Frustum::INSIDE);
    EXPECT_EQ(Frustum().ContainsAABB({{1e9, 1e9, 1e9}, {2e9, 2e9, 2e9}}), Frustum::INSIDE);
    EXPECT_EQ(Frustum().ContainsAABB(tVolumeAABB<T>()), Frustum::INSIDE);
    EXPECT_EQ(Frustum().ContainsAABB({{nan, nan, nan}, {nan, nan, nan}}), Frustum::INSIDE);
}

TYPED_TEST(FrustumTest, ANaNDistanceNeitherRejectsNorStraddles)
{
    using T = TypeParam;
    using Frustum = tFrustum<T>;
    T const nan = QUIET_NAN<T>;
    T const inf = INF<T>;
    EXPECT_EQ(this->cube.ContainsAABB({{nan, nan, nan}, {nan, nan, nan}}), Frustum::INSIDE);
    // Only x is NaN: every distance is, since a normal's zero times NaN is NaN.
    EXPECT_EQ(this->cube.ContainsAABB({{nan, 5, 5}, {nan, 6, 6}}), Frustum::INSIDE);
    // Infinite along x: zero times infinity spoils the distances to the other planes, and 1 * infinity rejects nothing.
    EXPECT_EQ(this->cube.ContainsAABB({{-inf, 5, 5}, {inf, 6, 6}}), Frustum::INTERSECTING);
    EXPECT_EQ(this->cube.ContainsAABB({{-inf, -inf, -inf}, {inf, inf, inf}}), Frustum::INSIDE);
    EXPECT_EQ(this->cube.ContainsAABB(tVolumeAABB<T>()), Frustum::INSIDE); // the empty box
    tFrustum<T> const nothing{tMatrix4<T>(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)};
    EXPECT_EQ(nothing.ContainsAABB({{5, 5, 5}, {6, 6, 6}}), Frustum::INSIDE);
}

TYPED_TEST(FrustumTest, ANegativeZeroInANormalPicksTheUpperBound)
{
    // The plane on the upper side of an axis has a normal of -1 along it and -0 across. With the upper bound of another
    // axis, +infinity, its distance is NaN and rejects nothing; with the lower one, it would be -5 + 1.
    using T = TypeParam;
    T const minusZero = -T{0};
    tFrustum<T> const frustum{tMatrix4<T>(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, minusZero, minusZero, minusZero, 1)};
    this->Expect(frustum.GetRightPlane(), {-1, minusZero, minusZero}, 1);
    this->Expect(frustum.GetTopPlane(), {minusZero, -1, minusZero}, 1);
    this->Expect(frustum.GetFarPlane(), {minusZero, minusZero, -1}, 1);
    for (std::size_t beyond = 0; beyond < 3; ++beyond)
        for (std::size_t across = 0; across < 3; ++across)
        {
            if (across == beyond)
                continue;
            tVolumeAABB<T> box({0, 0, 0}, {0, 0, 0});
            box.GetMin()[beyond] = 5;
            box.GetMax()[beyond] = 6;
            EXPECT_EQ(frustum.ContainsAABB(box), tFrustum<T>::OUTSIDE);
            box.GetMax()[across] = INF<T>;
            EXPECT_EQ(frustum.ContainsAABB(box), tFrustum<T>::INTERSECTING);
        }
}

TYPED_TEST(FrustumTest, ACornerOnAPlaneIsInsideWhenItsProductsAreSummedFromXToZ)
{
    using T = TypeParam;
    Random random(1);
    int otherwise = 0;
    for (int i = 0; i < 3000; ++i)
        for (bool const isFarthest : {true, false})
        {
            auto const [plane, box, otherOrdersReject] = DrawTouchingCorner<T>(random, isFarthest);
            // On the plane with its farthest corner, the box lies behind it with the others.
            ASSERT_EQ(FrustumOf(static_cast<std::size_t>(i % 6), plane).ContainsAABB(box),
                      isFarthest ? tFrustum<T>::INTERSECTING : tFrustum<T>::INSIDE)
                << "case " << i;
            otherwise += otherOrdersReject ? 1 : 0;
        }
    EXPECT_GT(otherwise, 1000);
}

TYPED_TEST(FrustumTest, AgreesWithTheEightCornersOfRandomBoxes)
{
    using T = TypeParam;
    Random random(20240613);
    auto const whole = [&random](int range) { return static_cast<T>(random.Whole(-range, range)); };
    std::array<int, 3> counts{};
    for (int i = 0; i < 300; ++i)
    {
        std::array<T, 16> m{};
        for (T& element : m)
            element = whole(3);
        tFrustum<T> const frustum{
            i % 3 == 0 ? tMatrix4<T>(m.data())
                       : tMatrix4<T>{whole(3), 0, 0, whole(1), 0, whole(3), 0, whole(1), 0, 0, -2, -3, 0, 0, -1, 0}};
        for (int j = 0; j < 100; ++j)
        {
            tVector3<T> const centre{whole(4), whole(4), whole(4)};
            T const size = std::abs(whole(2)) / 2;
            tVolumeAABB<T> const box(centre - tVector3<T>(size, size, size), centre + tVector3<T>(size, size, size));
            auto const expected = ClassifyByCorners(frustum, box);
            ASSERT_EQ(frustum.ContainsAABB(box), expected) << "frustum " << i << ", box " << j;
            ++counts[expected];
        }
    }
    for (int const count : counts)
        EXPECT_GT(count, 1000);
}

TYPED_TEST(FrustumTest, EdgesRunAwayFromTheEyeAlongTheCornersOfTheView)
{
    using T = TypeParam;
    using Frustum = tFrustum<T>;
    std::pair<typename Frustum::Edge, tVector3<T>> const edges[] = {{Frustum::EDGE_TOP_LEFT, {-1, 1, -1}},
                                                                    {Frustum::EDGE_TOP_RIGHT, {1, 1, -1}},
                                                                    {Frustum::EDGE_BOTTOM_LEFT, {-1, -1, -1}},
                                                                    {Frustum::EDGE_BOTTOM_RIGHT, {1, -1, -1}}};
    for (auto const& [edge, corner] : edges)
    {
        // Each component of the products of the normals is h * h; its length is within rounding of sqrt(3) * h * h.
        T const product = this->half * this->half;
        T const reciprocal = 1 / std::sqrt(product * product + product * product + product * product);
        tVector3<T> const actual = this->camera.GetEdgeVector(edge);
        ExpectSameBits(actual, corner * product * reciprocal);
        EXPECT_NEAR(actual.Length(), T{1}, 2 * EPSILON<T>);
    }
}

TYPED_TEST(FrustumTest, EdgesAreNormalisedProductsOfTheNormalsOfTheirPlanes)
{
    using T = TypeParam;
    using Frustum = tFrustum<T>;
    Frustum const skewed{tMatrix4<T>(3, 1, -2, 1, 2, 5, 1, -1, 1, -1, -2, -3, T(0.5), T(0.25), -1, 2)};
    tVector3<T> const left = skewed.GetLeftPlane().GetNormal();
    tVector3<T> const right = skewed.GetRightPlane().GetNormal();
    tVector3<T> const bottom = skewed.GetBottomPlane().GetNormal();
    tVector3<T> const top = skewed.GetTopPlane().GetNormal();
    auto const expected = [](tVector3<T> const& a, tVector3<T> const& b)
    {
        T const x = a.y * b.z - a.z * b.y;
        T const y = a.z * b.x - a.x * b.z;
        T const z = a.x * b.y - a.y * b.x;
        T const reciprocal = 1 / std::sqrt(x * x + y * y + z * z);
        return tVector3<T>(x * reciprocal, y * reciprocal, z * reciprocal);
    };
    ExpectSameBits(skewed.GetEdgeVector(Frustum::EDGE_TOP_LEFT), expected(left, top));
    ExpectSameBits(skewed.GetEdgeVector(Frustum::EDGE_TOP_RIGHT), expected(top, right));
    ExpectSameBits(skewed.GetEdgeVector(Frustum::EDGE_BOTTOM_LEFT), expected(bottom, left));
    ExpectSameBits(skewed.GetEdgeVector(Frustum::EDGE_BOTTOM_RIGHT), expected(right, bottom));
}

TYPED_TEST(FrustumTest, AValueThatIsNoEdgeHasTheZeroVector)
{
    using Edge = typename tFrustum<TypeParam>::Edge;
    for (std::uint32_t const value : {4U, 5U, 255U, 0x80000000U, 0xFFFFFFFFU})
        ExpectSameBits(this->camera.GetEdgeVector(static_cast<Edge>(value)), tVector3<TypeParam>());
}

TYPED_TEST(FrustumTest, AnEdgeBetweenParallelPlanesIsNaN)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    ExpectSameBits(tFrustum<T>().GetEdgeVector(tFrustum<T>::EDGE_TOP_LEFT), {nan, nan, nan});
    tFrustum<T> const flat{tMatrix4<T>(1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)}; // bottom is left
    ExpectSameBits(flat.GetEdgeVector(tFrustum<T>::EDGE_BOTTOM_LEFT), {nan, nan, nan});
}

TYPED_TEST(FrustumTest, IntersectNearIsHalfAndHalfInTheMiddle)
{
    ExpectSameBits(this->camera.IntersectNear({{0, 0, 0}, {0, 0, -1}}), {0.5, 0.5});
}

TYPED_TEST(FrustumTest, IntersectNearStartsAtTheTopLeftCorner)
{
    ExpectSameBits(this->camera.IntersectNear({{0, 0, 0}, {-1, 1, -1}}), {0, 0});
    ExpectSameBits(this->camera.IntersectNear({{0, 0, 0}, {1, 1, -1}}), {1, 0});
    ExpectSameBits(this->camera.IntersectNear({{0, 0, 0}, {-1, -1, -1}}), {0, 1});
    ExpectSameBits(this->camera.IntersectNear({{0, 0, 0}, {1, -1, -1}}), {1, 1});
}

TYPED_TEST(FrustumTest, IntersectNearCountsRightwardAndDownward)
{
    // The near plane of the cube is z = -1. A quarter from the left, an eighth from the top:
    ExpectSameBits(this->cube.IntersectNear({{-0.5, 0.75, 4}, {0, 0, 1}}), {0.25, 0.125});
    ExpectSameBits(this->cube.IntersectNear({{-0.5, 0.75, 4}, {0, 0, -9}}), {0.25, 0.125});
    ExpectSameBits(this->cube.IntersectNear({{-1.5, 0.75, -2}, {1, 0, 1}}), {0.25, 0.125});
}

TYPED_TEST(FrustumTest, IntersectNearFoldsPointsOutsideBackIn)
{
    // x = -3 is at 2 from the left and at 4 from the right side; y = 7 at 6 from the top and 8 from the bottom.
    TypeParam const u = TypeParam{2} / 6;
    TypeParam const v = TypeParam{6} / 14;
    ExpectSameBits(this->cube.IntersectNear({{-3, 7, 0}, {0, 0, 1}}), {u, v});
}

TYPED_TEST(FrustumTest, IntersectNearIsNaNBetweenCoincidingPlanes)
{
    using T = TypeParam;
    // Left and right are both the plane x = 0.
    tFrustum<T> const flat{tMatrix4<T>(1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0)};
    tVector2<T> const point = flat.IntersectNear({{0, 0, 0}, {0, 0, 1}});
    ExpectSameBits(point.x, QUIET_NAN<T>);
    ExpectSameBits(point.y, T{0.5}); // both at distance 1
}

TYPED_TEST(FrustumTest, IntersectNearAlongTheNearPlaneThrowsAsThePlaneDoes)
{
    auto const intersect = [this] { static_cast<void>(this->camera.IntersectNear({{0, 0, 0}, {1, 1, 0}})); };
    std::string const type = bv::test::TYPE_NAME<TypeParam>;
    ExpectThrows<DivideByZeroException>(intersect, "Direction is parallel to the plane",
                                        "bv::maths::tPlane<" + type + ">::GetIntersection", "internal\\Maths\\Plane",
                                        157);
    // Every ray runs along a near plane of zeros.
    tFrustum<TypeParam> const zeros;
    auto const intersectZeros = [&] { static_cast<void>(zeros.IntersectNear({{0, 0, 0}, {0, 0, -1}})); };
    ExpectThrows<DivideByZeroException>(intersectZeros, "Direction is parallel to the plane",
                                        "bv::maths::tPlane<" + type + ">::GetIntersection", "internal\\Maths\\Plane",
                                        157);
}

} // namespace
