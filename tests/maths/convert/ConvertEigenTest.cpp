#include "bv/maths/convert/Eigen.h"

#include <cmath>
#include <cstddef>

#include <gtest/gtest.h>

#include "maths/convert/Values.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
class ConvertEigenTest : public testing::Test
{
};
TYPED_TEST_SUITE(ConvertEigenTest, Precisions);

TYPED_TEST(ConvertEigenTest, VectorsKeepTheirBits)
{
    using T = TypeParam;
    for (tVector3<T> const& vector : SpecialPoints<T>())
    {
        Eigen::Matrix<T, 3, 1> const theirs = ToEigen(vector);
        ExpectSameBits(theirs.x(), vector.x);
        ExpectSameBits(theirs.y(), vector.y);
        ExpectSameBits(theirs.z(), vector.z);
        ExpectSameBits(FromEigen(theirs), vector);
        tVector2<T> const plane{vector.x, vector.y};
        ExpectSameBits(ToEigen(plane).y(), plane.y);
        ExpectSameBits(FromEigen(ToEigen(plane)), plane);
    }
}

TYPED_TEST(ConvertEigenTest, ExpressionsAreEvaluated)
{
    using T = TypeParam;
    Eigen::Matrix<T, 3, 1> const a(1, 2, 3);
    ExpectSameBits(FromEigen(a + a), tVector3<T>{2, 4, 6});
    Eigen::Matrix<T, 4, 4> const matrix = ToEigen(Numbered<T>());
    ExpectSameElements(FromEigen(matrix.transpose()), Numbered<T>().Transposed());
}

TYPED_TEST(ConvertEigenTest, TuplesOfIntegersComeBackAsTuples)
{
    EXPECT_EQ(ToEigen(Tuple2i{1, -2}), Eigen::Vector2i(1, -2));
    EXPECT_EQ(FromEigen(Eigen::Vector3i(1, -2, 3)), (Tuple3i{1, -2, 3}));
    EXPECT_EQ(FromEigen(ToEigen(Tuple2u{1, 2})), (Tuple2u{1, 2}));
    EXPECT_EQ(ToEigen(tTuple3<TypeParam>{1, 2, 3}), (Eigen::Matrix<TypeParam, 3, 1>(1, 2, 3)));
}

TYPED_TEST(ConvertEigenTest, QuaternionsKeepTheirComponentsAndTurnTheSameWay)
{
    using T = TypeParam;
    Eigen::Quaternion<T> const theirs = ToEigen(tQuaternion<T>{1, 2, 3, 4});
    EXPECT_EQ(theirs.x(), T{1});
    EXPECT_EQ(theirs.y(), T{2});
    EXPECT_EQ(theirs.z(), T{3});
    EXPECT_EQ(theirs.w(), T{4});
    tQuaternion<T> const back = FromEigen(theirs);
    ExpectSameBits(back.x, T{1});
    ExpectSameBits(back.y, T{2});
    ExpectSameBits(back.z, T{3});
    ExpectSameBits(back.w, T{4});

    // A quarter of a turn about z takes x to y.
    Eigen::Quaternion<T> const turn = ToEigen(tQuaternion<T>::RotateAxis({0, 0, 1}, PI<T> / 2));
    Eigen::Matrix<T, 3, 1> const turned = turn * Eigen::Matrix<T, 3, 1>(1, 0, 0);
    EXPECT_NEAR(turned.x(), 0, 1e-6);
    EXPECT_NEAR(turned.y(), 1, 1e-6);
}

TYPED_TEST(ConvertEigenTest, MatricesKeepTheirElementsAndComeBackClassified)
{
    using T = TypeParam;
    Eigen::Matrix<T, 4, 4> const theirs = ToEigen(Numbered<T>());
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            ExpectSameBits(theirs(row, column), T(4 * row + column + 1));
    ExpectSameElements(FromEigen(theirs), Numbered<T>());
    Eigen::Matrix<T, 4, 4, Eigen::RowMajor> const byRows = theirs; // another order in memory, the same matrix
    ExpectSameElements(FromEigen(byRows), Numbered<T>());
    EXPECT_TRUE(FromEigen(Eigen::Matrix<T, 4, 4>::Identity()).IsIdentity());
}

TYPED_TEST(ConvertEigenTest, TransformationsMovePointsToTheSamePlaces)
{
    using T = TypeParam;
    Eigen::Transform<T, 3, Eigen::Affine> const theirs(Eigen::Translation<T, 3>(10, 20, 30));
    ExpectSameBits((tVector3<T>{1, 2, 3}).Transformed(FromEigen(theirs)), tVector3<T>{11, 22, 33});
    Eigen::Matrix<T, 4, 1> const moved =
        ToEigen(tMatrix4<T>::Translate(10, 20, 30)) * Eigen::Matrix<T, 4, 1>(1, 2, 3, 1);
    EXPECT_EQ(moved, (Eigen::Matrix<T, 4, 1>(11, 22, 33, 1)));
}

TYPED_TEST(ConvertEigenTest, PlanesHaveTheSameDistances)
{
    using T = TypeParam;
    tPlane<T> const plane({0, 1, 0}, -5); // y = 5
    Eigen::Hyperplane<T, 3> const theirs = ToEigen(plane);
    EXPECT_EQ(theirs.signedDistance(Eigen::Matrix<T, 3, 1>(7, 8, 9)), T{3});
    ExpectSameBits(FromEigen(theirs).GetNormal(), plane.GetNormal());
    ExpectSameBits(FromEigen(theirs).GetOffset(), plane.GetOffset());
}

TYPED_TEST(ConvertEigenTest, RaysAreLines)
{
    using T = TypeParam;
    tRay<T> const ray{{1, 2, 3}, {0, 0, 2}};
    Eigen::ParametrizedLine<T, 3> const theirs = ToEigen(ray);
    EXPECT_EQ(theirs.pointAt(2), (Eigen::Matrix<T, 3, 1>(1, 2, 7))); // 3 + 2 * 2
    ExpectSameBits(FromEigen(theirs).origin, ray.origin);
    ExpectSameBits(FromEigen(theirs).direction, ray.direction);
}

TYPED_TEST(ConvertEigenTest, BoxesKeepTheirCornersAndEmptyOnesStayEmpty)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({1, 2, 3}, {4, 5, 6});
    Eigen::AlignedBox<T, 3> const theirs = ToEigen(box);
    EXPECT_EQ(theirs.volume(), T{27});
    ExpectSameBits(FromEigen(theirs).GetMin(), box.GetMin());
    ExpectSameBits(FromEigen(theirs).GetMax(), box.GetMax());
    EXPECT_TRUE(ToEigen(tVolumeAABB<T>()).isEmpty());
    EXPECT_TRUE(std::isfinite(ToEigen(tVolumeAABB<T>()).min().x()));
    ExpectSameBits(FromEigen(Eigen::AlignedBox<T, 3>()).GetMin(), tVector3<T>{INF<T>, INF<T>, INF<T>});
    ExpectSameBits(FromEigen(Eigen::AlignedBox<T, 3>()).GetMax(), tVector3<T>{-INF<T>, -INF<T>, -INF<T>});

    tAreaAABB<T> const area({1, 2}, {4, 6});
    EXPECT_EQ(ToEigen(area).volume(), T{12});
    ExpectSameBits(FromEigen(ToEigen(area)).GetMin(), area.GetMin());
    ExpectSameBits(FromEigen(ToEigen(area)).GetMax(), area.GetMax());
    EXPECT_TRUE(ToEigen(tAreaAABB<T>()).isEmpty());
    ExpectSameBits(FromEigen(Eigen::AlignedBox<T, 2>()).GetMin(), tVector2<T>{INF<T>, INF<T>});
}

TYPED_TEST(ConvertEigenTest, BoxesWithOneCornerOfTheEmptyOneKeepBoth)
{
    using T = TypeParam;
    constexpr T MOST = std::numeric_limits<T>::max();
    using Box = Eigen::AlignedBox<T, 3>;
    using Corner = Eigen::Matrix<T, 3, 1>;
    Corner const largest(MOST, MOST, MOST);
    tVolumeAABB<T> const below = FromEigen(Box(largest, Corner(4, 5, 6)));
    ExpectSameBits(below.GetMin(), tVector3<T>(MOST, MOST, MOST));
    ExpectSameBits(below.GetMax(), tVector3<T>(4, 5, 6));
    tVolumeAABB<T> const above = FromEigen(Box(Corner(1, 2, 3), -largest));
    ExpectSameBits(above.GetMin(), tVector3<T>(1, 2, 3));
    ExpectSameBits(above.GetMax(), tVector3<T>(-MOST, -MOST, -MOST));

    using Area = Eigen::AlignedBox<T, 2>;
    using AreaCorner = Eigen::Matrix<T, 2, 1>;
    AreaCorner const largestOfArea(MOST, MOST);
    tAreaAABB<T> const belowInArea = FromEigen(Area(largestOfArea, AreaCorner(4, 5)));
    ExpectSameBits(belowInArea.GetMin(), tVector2<T>(MOST, MOST));
    ExpectSameBits(belowInArea.GetMax(), tVector2<T>(4, 5));
    tAreaAABB<T> const aboveInArea = FromEigen(Area(AreaCorner(1, 2), -largestOfArea));
    ExpectSameBits(aboveInArea.GetMin(), tVector2<T>(1, 2));
    ExpectSameBits(aboveInArea.GetMax(), tVector2<T>(-MOST, -MOST));
}

} // namespace
