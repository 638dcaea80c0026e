#include "bv/maths/convert/Imath.h"

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
class ConvertImathTest : public testing::Test
{
};
TYPED_TEST_SUITE(ConvertImathTest, Precisions);

TYPED_TEST(ConvertImathTest, VectorsKeepTheirBits)
{
    using T = TypeParam;
    for (tVector3<T> const& vector : SpecialPoints<T>())
    {
        Imath::Vec3<T> const theirs = ToImath(vector);
        ExpectSameBits(theirs.x, vector.x);
        ExpectSameBits(theirs.y, vector.y);
        ExpectSameBits(theirs.z, vector.z);
        ExpectSameBits(FromImath(theirs), vector);
        tVector2<T> const plane{vector.x, vector.y};
        ExpectSameBits(ToImath(plane).y, plane.y);
        ExpectSameBits(FromImath(ToImath(plane)), plane);
    }
}

TYPED_TEST(ConvertImathTest, TuplesOfIntegersComeBackAsTuples)
{
    EXPECT_EQ(ToImath(Tuple2i{1, -2}), Imath::V2i(1, -2));
    EXPECT_EQ(FromImath(Imath::V3i(1, -2, 3)), (Tuple3i{1, -2, 3}));
    EXPECT_EQ(FromImath(Imath::V2i(1, -2)), (Tuple2i{1, -2}));
    EXPECT_EQ(ToImath(tTuple3<TypeParam>{1, 2, 3}), (Imath::Vec3<TypeParam>(1, 2, 3)));
}

TYPED_TEST(ConvertImathTest, QuaternionsKeepTheirComponentsAndTurnTheSameWay)
{
    using T = TypeParam;
    Imath::Quat<T> const theirs = ToImath(tQuaternion<T>{1, 2, 3, 4});
    EXPECT_EQ(theirs.v, (Imath::Vec3<T>(1, 2, 3)));
    EXPECT_EQ(theirs.r, T{4});
    tQuaternion<T> const back = FromImath(theirs);
    ExpectSameBits(back.x, T{1});
    ExpectSameBits(back.y, T{2});
    ExpectSameBits(back.z, T{3});
    ExpectSameBits(back.w, T{4});

    // A quarter of a turn about z takes x to y, and so does the matrix of Imath's quaternion.
    Imath::Quat<T> const turn = ToImath(tQuaternion<T>::RotateAxis({0, 0, 1}, PI<T> / 2));
    Imath::Vec3<T> const turned = turn.rotateVector(Imath::Vec3<T>(1, 0, 0));
    EXPECT_NEAR(turned.x, 0, 1e-6);
    EXPECT_NEAR(turned.y, 1, 1e-6);
    tVector3<T> const byMatrix = (tVector3<T>{1, 0, 0}).Transformed(FromImath(turn.toMatrix44()));
    EXPECT_NEAR(byMatrix.x, 0, 1e-6);
    EXPECT_NEAR(byMatrix.y, 1, 1e-6);
}

TYPED_TEST(ConvertImathTest, MatricesAreTransposedAndComeBackClassified)
{
    using T = TypeParam;
    Imath::Matrix44<T> const theirs = ToImath(Numbered<T>());
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            ExpectSameBits(theirs[column][row], T(4 * row + column + 1));
    ExpectSameElements(FromImath(theirs), Numbered<T>());
    EXPECT_TRUE(FromImath(Imath::Matrix44<T>()).IsIdentity());
}

TYPED_TEST(ConvertImathTest, MatricesMovePointsToTheSamePlaces)
{
    using T = TypeParam;
    Imath::Matrix44<T> theirs;
    theirs.setTranslation(Imath::Vec3<T>(10, 20, 30));
    ExpectSameBits((tVector3<T>{1, 2, 3}).Transformed(FromImath(theirs)), tVector3<T>{11, 22, 33});
    Imath::Vec3<T> const moved = Imath::Vec3<T>(1, 2, 3) * ToImath(tMatrix4<T>::Translate(10, 20, 30));
    EXPECT_EQ(moved, (Imath::Vec3<T>(11, 22, 33)));
}

TYPED_TEST(ConvertImathTest, PlanesHaveTheSameDistances)
{
    using T = TypeParam;
    tPlane<T> const plane({0, 1, 0}, -5); // y = 5
    Imath::Plane3<T> const theirs = ToImath(plane);
    EXPECT_EQ(theirs.distanceTo(Imath::Vec3<T>(7, 8, 9)), T{3});
    EXPECT_EQ(theirs.distance, T{5});
    ExpectSameBits(FromImath(theirs).GetNormal(), plane.GetNormal());
    ExpectSameBits(FromImath(theirs).GetOffset(), plane.GetOffset());
}

TYPED_TEST(ConvertImathTest, BoxesKeepTheirCornersAndEmptyOnesStayEmpty)
{
    using T = TypeParam;
    tVolumeAABB<T> const box({1, 2, 3}, {4, 5, 6});
    Imath::Box<Imath::Vec3<T>> const theirs = ToImath(box);
    EXPECT_EQ(theirs.size(), (Imath::Vec3<T>(3, 3, 3)));
    ExpectSameBits(FromImath(theirs).GetMin(), box.GetMin());
    ExpectSameBits(FromImath(theirs).GetMax(), box.GetMax());
    EXPECT_TRUE(ToImath(tVolumeAABB<T>()).isEmpty());
    EXPECT_TRUE(std::isfinite(ToImath(tVolumeAABB<T>()).min.x));
    ExpectSameBits(FromImath(Imath::Box<Imath::Vec3<T>>()).GetMin(), tVector3<T>{INF<T>, INF<T>, INF<T>});
    ExpectSameBits(FromImath(Imath::Box<Imath::Vec3<T>>()).GetMax(), tVector3<T>{-INF<T>, -INF<T>, -INF<T>});

    tAreaAABB<T> const area({1, 2}, {4, 6});
    EXPECT_EQ(ToImath(area).size(), (Imath::Vec2<T>(3, 4)));
    ExpectSameBits(FromImath(ToImath(area)).GetMin(), area.GetMin());
    ExpectSameBits(FromImath(ToImath(area)).GetMax(), area.GetMax());
    EXPECT_TRUE(ToImath(tAreaAABB<T>()).isEmpty());
    ExpectSameBits(FromImath(Imath::Box<Imath::Vec2<T>>()).GetMin(), tVector2<T>{INF<T>, INF<T>});
}

} // namespace
