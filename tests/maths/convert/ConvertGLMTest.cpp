#include "bv/maths/convert/GLM.h"

#include <cstddef>

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

#include "maths/convert/Values.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
class ConvertGLMTest : public testing::Test
{
};
TYPED_TEST_SUITE(ConvertGLMTest, Precisions);

TYPED_TEST(ConvertGLMTest, VectorsKeepTheirBits)
{
    using T = TypeParam;
    for (tVector3<T> const& vector : SpecialPoints<T>())
    {
        glm::vec<3, T> const theirs = ToGLM(vector);
        ExpectSameBits(theirs.x, vector.x);
        ExpectSameBits(theirs.y, vector.y);
        ExpectSameBits(theirs.z, vector.z);
        ExpectSameBits(FromGLM(theirs), vector);
        tVector2<T> const plane{vector.x, vector.y};
        ExpectSameBits(ToGLM(plane).y, plane.y);
        ExpectSameBits(FromGLM(ToGLM(plane)), plane);
    }
    ExpectSameBits(FromGLM(glm::vec<3, T, glm::lowp>(1, 2, 3)), tVector3<T>{1, 2, 3});
}

TYPED_TEST(ConvertGLMTest, TuplesOfIntegersComeBackAsTuples)
{
    EXPECT_EQ(ToGLM(Tuple2i{1, -2}), glm::ivec2(1, -2));
    EXPECT_EQ(ToGLM(Tuple3u{1, 2, 3}), glm::uvec3(1, 2, 3));
    EXPECT_EQ(FromGLM(glm::ivec3(1, -2, 3)), (Tuple3i{1, -2, 3}));
    EXPECT_EQ(FromGLM(glm::uvec2(1, 2)), (Tuple2u{1, 2}));
    EXPECT_EQ(ToGLM(tTuple2<TypeParam>{1, 2}), (glm::vec<2, TypeParam>(1, 2)));
}

TYPED_TEST(ConvertGLMTest, QuaternionsKeepTheirComponents)
{
    using T = TypeParam;
    glm::qua<T> const theirs = ToGLM(tQuaternion<T>{1, 2, 3, 4});
    EXPECT_EQ(theirs.x, T{1});
    EXPECT_EQ(theirs.y, T{2});
    EXPECT_EQ(theirs.z, T{3});
    EXPECT_EQ(theirs.w, T{4});
    tQuaternion<T> const back = FromGLM(theirs);
    ExpectSameBits(back.x, T{1});
    ExpectSameBits(back.y, T{2});
    ExpectSameBits(back.z, T{3});
    ExpectSameBits(back.w, T{4});
}

TYPED_TEST(ConvertGLMTest, QuaternionsTurnTheSameWay)
{
    using T = TypeParam;
    // A quarter of a turn about z takes x to y.
    tQuaternion<T> const ours = tQuaternion<T>::RotateAxis({0, 0, 1}, PI<T> / 2);
    glm::vec<3, T> const turned = ToGLM(ours) * glm::vec<3, T>(1, 0, 0);
    EXPECT_NEAR(turned.x, 0, 1e-6);
    EXPECT_NEAR(turned.y, 1, 1e-6);
}

TYPED_TEST(ConvertGLMTest, MatricesKeepTheirElementsAndComeBackClassified)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = Numbered<T>();
    glm::mat<4, 4, T> const theirs = ToGLM(matrix);
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            ExpectSameBits(theirs[column][row], T(4 * row + column + 1));
    ExpectSameElements(FromGLM(theirs), matrix);
    EXPECT_TRUE(FromGLM(glm::mat<4, 4, T>(1)).IsIdentity());
    EXPECT_TRUE(FromGLM(glm::scale(glm::mat<4, 4, T>(1), glm::vec<3, T>(1, 2, 3))).IsDiagonal());
}

TYPED_TEST(ConvertGLMTest, MatricesMovePointsToTheSamePlaces)
{
    using T = TypeParam;
    glm::mat<4, 4, T> const theirs = glm::translate(glm::mat<4, 4, T>(1), glm::vec<3, T>(10, 20, 30));
    ExpectSameBits((tVector3<T>{1, 2, 3}).Transformed(FromGLM(theirs)), tVector3<T>{11, 22, 33});
    glm::vec<4, T> const moved = ToGLM(tMatrix4<T>::Translate(10, 20, 30)) * glm::vec<4, T>(1, 2, 3, 1);
    EXPECT_EQ(moved, (glm::vec<4, T>(11, 22, 33, 1)));
}

} // namespace
