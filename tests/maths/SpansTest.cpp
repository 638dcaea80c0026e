#include "bv/maths/Spans.h"

#include <array>
#include <cstddef>
#include <numeric>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
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
class SpansTest : public testing::Test
{
};
TYPED_TEST_SUITE(SpansTest, bv::test::Precisions);

template <typename Number, std::size_t LENGTH>
std::vector<std::remove_const_t<Number>> Copy(std::span<Number, LENGTH> span)
{
    return {span.begin(), span.end()};
}

TYPED_TEST(SpansTest, ShowTheComponentsInOrder)
{
    using T = TypeParam;
    tVector2<T> const vector2{1, 2};
    tVector3<T> const vector3{1, 2, 3};
    tQuaternion<T> const quaternion{1, 2, 3, 4};
    EXPECT_EQ(Copy(AsSpan(vector2)), (std::vector<T>{1, 2}));
    EXPECT_EQ(Copy(AsSpan(vector3)), (std::vector<T>{1, 2, 3}));
    EXPECT_EQ(Copy(AsSpan(quaternion)), (std::vector<T>{1, 2, 3, 4}));
    tTuple2<int> const tuple2{1, -2};
    tTuple3<unsigned int> const tuple3{1, 2, 3};
    EXPECT_EQ(Copy(AsSpan(tuple2)), (std::vector<int>{1, -2}));
    EXPECT_EQ(Copy(AsSpan(tuple3)), (std::vector<unsigned int>{1, 2, 3}));
}

TYPED_TEST(SpansTest, WriteToTheVector)
{
    tVector3<TypeParam> vector{1, 2, 3};
    for (TypeParam& component : AsSpan(vector))
        component *= 10;
    EXPECT_EQ(vector.x, TypeParam{10});
    EXPECT_EQ(vector.y, TypeParam{20});
    EXPECT_EQ(vector.z, TypeParam{30});
}

TYPED_TEST(SpansTest, ShowTheElementsOfAMatrixRowByRow)
{
    std::array<TypeParam, 16> elements;
    std::iota(elements.begin(), elements.end(), TypeParam{1});
    tMatrix4<TypeParam> matrix(elements.data());
    EXPECT_EQ(Copy(AsSpan(matrix)), (std::vector<TypeParam>(elements.begin(), elements.end())));
    EXPECT_EQ(AsSpan(matrix).data(), matrix.Get());
}

TYPED_TEST(SpansTest, ShowTheNumbersOfAnArray)
{
    using T = TypeParam;
    std::vector<tVector3<T>> vertices{{1, 2, 3}, {4, 5, 6}};
    std::span<T> const numbers = AsSpan(vertices);
    EXPECT_EQ(Copy(numbers), (std::vector<T>{1, 2, 3, 4, 5, 6}));
    numbers[4] = 50;
    EXPECT_EQ(vertices[1].y, T{50});

    tVector2<T> const corners[]{{1, 2}, {3, 4}, {5, 6}};
    EXPECT_EQ(Copy(AsSpan(corners)), (std::vector<T>{1, 2, 3, 4, 5, 6}));
    std::vector<tVector3<T>> const none;
    EXPECT_TRUE(AsSpan(none).empty());
}

template <typename Value>
concept HasSpan = requires
{
    AsSpan(std::declval<Value>());
};

static_assert(std::is_same_v<decltype(AsSpan(std::declval<Vector3f&>())), std::span<float, 3>>);
static_assert(std::is_same_v<decltype(AsSpan(std::declval<Vector3f const&>())), std::span<float const, 3>>);
static_assert(std::is_same_v<decltype(AsSpan(std::declval<Tuple2i&>())), std::span<int, 2>>);
static_assert(std::is_same_v<decltype(AsSpan(std::declval<Quaterniond&>())), std::span<double, 4>>);
static_assert(std::is_same_v<decltype(AsSpan(std::declval<Matrix4d&>())), std::span<double const, 16>>);
static_assert(std::is_same_v<decltype(AsSpan(std::declval<std::vector<Vector3f>&>())), std::span<float>>);
static_assert(std::is_same_v<decltype(AsSpan(std::declval<std::vector<Vector3f> const&>())), std::span<float const>>);
// Temporaries would leave a span of nothing.
static_assert(!HasSpan<Vector3f> && !HasSpan<Vector3f const> && !HasSpan<Matrix4f> && !HasSpan<Matrix4f const>);
#if defined __cpp_lib_ranges // without these, a span is made of what is about to go away, too
static_assert(!HasSpan<std::vector<Vector3f>>);
#endif
static_assert(HasSpan<Vector3f&> && HasSpan<Matrix4f&> && HasSpan<Matrix4f const&> && !HasSpan<int&>);

} // namespace
