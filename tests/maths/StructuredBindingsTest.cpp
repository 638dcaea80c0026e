// Tuples, vectors and quaternions taken apart by structured bindings.

#include <gtest/gtest.h>

#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "support/Precisions.h"

namespace
{

using namespace bv::maths;

template <typename T>
class StructuredBindingsTest : public testing::Test
{
};
TYPED_TEST_SUITE(StructuredBindingsTest, bv::test::Precisions);

TYPED_TEST(StructuredBindingsTest, NameTheComponentsInOrder)
{
    auto const [x2, y2] = tVector2<TypeParam>{1, 2};
    EXPECT_EQ(x2, TypeParam{1});
    EXPECT_EQ(y2, TypeParam{2});
    auto const [x3, y3, z3] = tVector3<TypeParam>{1, 2, 3};
    EXPECT_EQ(x3, TypeParam{1});
    EXPECT_EQ(y3, TypeParam{2});
    EXPECT_EQ(z3, TypeParam{3});
    auto const [x, y, z, w] = tQuaternion<TypeParam>{1, 2, 3, 4};
    EXPECT_EQ(x, TypeParam{1});
    EXPECT_EQ(y, TypeParam{2});
    EXPECT_EQ(z, TypeParam{3});
    EXPECT_EQ(w, TypeParam{4});
    auto const [width, height] = tTuple2<int>{-1, 2};
    EXPECT_EQ(width, -1);
    EXPECT_EQ(height, 2);
    auto const [i, j, k] = tTuple3<unsigned int>{1, 2, 3};
    EXPECT_EQ(i, 1U);
    EXPECT_EQ(j, 2U);
    EXPECT_EQ(k, 3U);
}

TYPED_TEST(StructuredBindingsTest, ReferToTheVector)
{
    tVector3<TypeParam> vector{1, 2, 3};
    auto& [x, y, z] = vector;
    x = 10;
    y += 20;
    z -= 30;
    EXPECT_EQ(vector.x, TypeParam{10});
    EXPECT_EQ(vector.y, TypeParam{22});
    EXPECT_EQ(vector.z, TypeParam{-27});
}

} // namespace
