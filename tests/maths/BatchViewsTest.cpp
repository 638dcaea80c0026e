// What a view shows of arrays, of members of records and of components, and of some of their elements.

#include "bv/maths/batch/Views.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

#include "support/Precisions.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class BatchViewsTest : public testing::Test
{
};
TYPED_TEST_SUITE(BatchViewsTest, Precisions);

/// Vectors whose components are all different: (10, 11, 12), (20, 21, 22) and so on.
template <typename T>
std::array<tVector3<T>, 5> MakeVectors()
{
    std::array<tVector3<T>, 5> vectors;
    T first{10};
    for (tVector3<T>& vector : vectors)
    {
        vector = {first, first + 1, first + 2};
        first += 10;
    }
    return vectors;
}

TYPED_TEST(BatchViewsTest, AViewOfNothingIsEmpty)
{
    using T = TypeParam;
    EXPECT_EQ(tNumberView<T>().size(), 0U);
    EXPECT_EQ(tVectorView<T>().size(), 0U);
    EXPECT_EQ(tBoxView<T>().size(), 0U);
    EXPECT_EQ(tRayView<T const>().size(), 0U);
    EXPECT_EQ(tSphereView<T const>().size(), 0U);
    std::vector<tVector3<T>> const none;
    EXPECT_EQ(tVectorView<T const>(none).size(), 0U);
    EXPECT_EQ(tVectorView<T const>(none).GetPart(0, 0).size(), 0U);
}

TYPED_TEST(BatchViewsTest, NumbersStandWhereTheirStrideSays)
{
    using T = TypeParam;
    T numbers[] = {1, 2, 3, 4, 5, 6};
    tNumberView<T> const odd(numbers, 3, 2 * sizeof(T));
    EXPECT_EQ(odd.size(), 3U);
    EXPECT_EQ(odd.data(), numbers);
    EXPECT_EQ(odd.GetStride(), static_cast<std::ptrdiff_t>(2 * sizeof(T)));
    EXPECT_EQ(odd[2], T{5});
    odd[1] = T{30};
    EXPECT_EQ(numbers[2], T{30});
    tNumberView<T const> const part = odd.GetPart(1, 2);
    EXPECT_EQ(part.size(), 2U);
    EXPECT_EQ(part[0], T{30});
    EXPECT_EQ(part[1], T{5});
    tNumberView<T const> const backwards(numbers + 5, 6, -static_cast<std::ptrdiff_t>(sizeof(T)));
    EXPECT_EQ(backwards[0], T{6});
    EXPECT_EQ(backwards[5], T{1});
}

TYPED_TEST(BatchViewsTest, VectorsAreReadWrittenAndTakenInParts)
{
    using T = TypeParam;
    auto vectors = MakeVectors<T>();
    tVectorView<T> const view(vectors);
    ASSERT_EQ(view.size(), 5U);
    ExpectSameBits(view[4], tVector3<T>(50, 51, 52));
    view.Set(1, {7, 8, 9});
    ExpectSameBits(vectors[1], tVector3<T>(7, 8, 9));
    EXPECT_EQ(view.GetAxis(1)[2], T{31});
    tVectorView<T> const part = view.GetPart(1, 3);
    ASSERT_EQ(part.size(), 3U);
    ExpectSameBits(part[0], tVector3<T>(7, 8, 9));
    ExpectSameBits(part[2], tVector3<T>(40, 41, 42));
    tVectorView<T const> const swapped(view.GetAxis(2), view.GetAxis(0), view.GetAxis(1));
    ExpectSameBits(swapped[0], tVector3<T>(12, 10, 11));
}

TYPED_TEST(BatchViewsTest, BoxesAreReadAndTakenInParts)
{
    using T = TypeParam;
    auto const vectors = MakeVectors<T>();
    std::vector<tVolumeAABB<T>> boxes;
    for (tVector3<T> const& vector : vectors)
        boxes.emplace_back(vector, vector * T{2});
    tBoxView<T const> const view(boxes);
    ASSERT_EQ(view.size(), 5U);
    ExpectSameBits(view.GetMin()[1], tVector3<T>(20, 21, 22));
    ExpectSameBits(view.GetMax()[1], tVector3<T>(40, 42, 44));
    tBoxView<T const> const part = view.GetPart(3, 2);
    ASSERT_EQ(part.size(), 2U);
    ExpectSameBits(part[1].GetMin(), tVector3<T>(50, 51, 52));
    ExpectSameBits(part[1].GetMax(), tVector3<T>(100, 102, 104));
}

TYPED_TEST(BatchViewsTest, RaysAreOriginsAndDirections)
{
    using T = TypeParam;
    auto const vectors = MakeVectors<T>();
    std::vector<tRay<T>> rays;
    for (tVector3<T> const& vector : vectors)
        rays.emplace_back(vector, vector * T{3});
    for (tRayView<T const> const& view :
         {tRayView<T const>(rays), tRayView<T const>(rays.data(), rays.size(), sizeof(tRay<T>))})
    {
        ASSERT_EQ(view.size(), 5U);
        ExpectSameBits(view.GetOrigins()[2], tVector3<T>(30, 31, 32));
        ExpectSameBits(view.GetDirections()[2], tVector3<T>(90, 93, 96));
        ExpectSameBits(view[4].origin, tVector3<T>(50, 51, 52));
        ExpectSameBits(view[4].direction, tVector3<T>(150, 153, 156));
    }
}

TYPED_TEST(BatchViewsTest, SpheresKnowWhetherTheyAreObjects)
{
    using T = TypeParam;
    auto const vectors = MakeVectors<T>();
    std::vector<tVolumeSphere<T>> spheres;
    std::vector<T> squares;
    for (tVector3<T> const& vector : vectors)
    {
        spheres.emplace_back(vector, vector.x * vector.x);
        squares.push_back(vector.x * vector.x);
    }
    tSphereView<T const> const objects(spheres);
    tSphereView<T const> const numbers{tVectorView<T const>(vectors), tNumberView<T const>(squares)};
    EXPECT_TRUE(objects.IsOfObjects());
    EXPECT_FALSE(numbers.IsOfObjects());
    for (tSphereView<T const> const& view : {objects, numbers})
    {
        ASSERT_EQ(view.size(), 5U);
        ExpectSameBits(view.GetCentres()[3], tVector3<T>(40, 41, 42));
        EXPECT_EQ(view.GetRadiiSquared()[3], T{1600});
        tSphereView<T const> const part = view.GetPart(2, 3);
        ASSERT_EQ(part.size(), 3U);
        EXPECT_EQ(part.IsOfObjects(), view.IsOfObjects());
        ExpectSameBits(part.GetCentres()[2], tVector3<T>(50, 51, 52));
        EXPECT_EQ(part.GetRadiiSquared()[0], T{900});
    }
}

} // namespace
