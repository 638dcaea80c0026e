#include "bv/maths/convert/Arrays.h"

#include <array>
#include <cstddef>
#include <numeric>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using bv::test::ExpectSameBits;

template <typename T>
class ConvertArraysTest : public testing::Test
{
};
TYPED_TEST_SUITE(ConvertArraysTest, bv::test::Precisions);

TYPED_TEST(ConvertArraysTest, HoldTheNumbersInOrder)
{
    using T = TypeParam;
    EXPECT_EQ(ToArray(tVector2<T>{1, 2}), (std::array<T, 2>{1, 2}));
    EXPECT_EQ(ToArray(tVector3<T>{1, 2, 3}), (std::array<T, 3>{1, 2, 3}));
    EXPECT_EQ(ToArray(tTuple2<int>{1, -2}), (std::array<int, 2>{1, -2}));
    EXPECT_EQ(ToArray(tTuple3<unsigned int>{1, 2, 3}), (std::array<unsigned int, 3>{1, 2, 3}));
    EXPECT_EQ(ToArray(tQuaternion<T>{1, 2, 3, 4}), (std::array<T, 4>{1, 2, 3, 4}));
    EXPECT_EQ(ToArray(tPlane<T>({0, 1, 0}, 5)), (std::array<T, 4>{0, 1, 0, 5}));
}

TYPED_TEST(ConvertArraysTest, MakeValues)
{
    using T = TypeParam;
    T const plain[]{1, 2, 3};
    ExpectSameBits(FromArray<tVector3<T>>(plain), tVector3<T>{1, 2, 3});
    ExpectSameBits(FromArray<tVector2<T>>(std::array<T, 2>{-T{0}, bv::test::TINY<T>}),
                   tVector2<T>{-T{0}, bv::test::TINY<T>});
    EXPECT_EQ(FromArray<Tuple2i>(std::array<int, 2>{1, -2}), (Tuple2i{1, -2}));
    ExpectSameBits(FromArray<tQuaternion<T>>(std::array<T, 4>{1, 2, 3, 4}).w, T{4});
    tPlane<T> const plane = FromArray<tPlane<T>>(std::array<T, 4>{0, 2, 0, 6}); // scaled
    ExpectSameBits(plane.GetNormal(), tVector3<T>{0, 1, 0});
    ExpectSameBits(plane.GetOffset(), T{3});
}

TYPED_TEST(ConvertArraysTest, HoldMatricesRowByRowOrColumnByColumn)
{
    using T = TypeParam;
    std::array<T, 16> rows;
    std::iota(rows.begin(), rows.end(), T{1});
    tMatrix4<T> const matrix(rows.data());
    std::array<T, 16> const columns{1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16};
    EXPECT_EQ(ToArray(matrix), rows);
    EXPECT_EQ(ToColumns(matrix), columns);
    EXPECT_EQ(ToArray(FromArray<tMatrix4<T>>(rows)), rows);
    EXPECT_EQ(ToArray(FromColumns<tMatrix4<T>>(columns)), rows);
}

TYPED_TEST(ConvertArraysTest, MakeMatricesThatKnowTheirKind)
{
    using T = TypeParam;
    std::array<T, 16> const scaling{2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1};
    EXPECT_TRUE(FromArray<tMatrix4<T>>(scaling).IsDiagonal());
    EXPECT_TRUE(FromColumns<tMatrix4<T>>(scaling).IsDiagonal());
    EXPECT_FALSE(FromColumns<tMatrix4<T>>(scaling).IsIdentity());
}

static_assert(ToArray(Vector3d{1, 2, 3})[2] == 3);
static_assert(FromArray<Vector2f>(std::array<float, 2>{1, 2}).y == 2);

} // namespace
