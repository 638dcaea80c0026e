#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "bv/maths/Bounds.h"
#include "properties/Draw.h"
#include "support/Precisions.h"

// Nothing here needs a tolerance: comparisons are exact, and a sum, difference or product of larger operands, none of
// them negative, is not smaller after rounding.

namespace
{

using namespace bv::maths;
using namespace bv::test;

/// The same six numbers; `==` of boxes is tolerant.
template <typename T>
[[nodiscard]] bool AreSame(tVolumeAABB<T> const& a, tVolumeAABB<T> const& b)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (a.GetMin()[axis] != b.GetMin()[axis] || a.GetMax()[axis] != b.GetMax()[axis])
            return false;
    return true;
}

template <typename T>
[[nodiscard]] rc::Gen<std::vector<tVector3<T>>> Points()
{
    return rc::gen::container<std::vector<tVector3<T>>>(Vector(T{8}));
}

template <typename T>
class BoundsProperties : public testing::Test
{
};
TYPED_TEST_SUITE(BoundsProperties, Precisions);

TYPED_TEST(BoundsProperties, ABoxThatGrowsKeepsWhatItHolds)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const points = *Points<T>();
            tVolumeAABB<T> box;
            for (auto const& point : points)
            {
                tVolumeAABB<T> const before = box;
                bool const hasChanged = box.ExpandAndSignal(point);
                RC_ASSERT(hasChanged == !AreSame(box, before));
                RC_ASSERT(hasChanged == !before.Contains(point, false));
                RC_ASSERT(Contains(box, before) && box.Contains(point, false));
            }
            for (auto const& point : points)
                RC_ASSERT(box.Contains(point, false));
        });
}

TYPED_TEST(BoundsProperties, TheOrderInWhichABoxGrowsMakesNoDifference)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto points = *Points<T>();
            tVolumeAABB<T> forwards;
            for (auto const& point : points)
                forwards.Expand(point);
            std::reverse(points.begin(), points.end());
            tVolumeAABB<T> backwards;
            for (auto const& point : points)
                backwards.Expand(point);
            RC_ASSERT(AreSame(forwards, backwards));
        });
}

TYPED_TEST(BoundsProperties, TheUnionIsTheSmallestBoxAroundBoth)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Box(T{8});
            auto const b = *Box(T{8});
            auto const other = *Box(T{8});
            auto const both = Union(a, b);
            RC_ASSERT(Contains(both, a) && Contains(both, b));
            RC_ASSERT(AreSame(both, Union(b, a)) && AreSame(both, Union(both, a)));
            auto const larger = Union(Union(a, other), b); // some box around both
            RC_ASSERT(Contains(larger, both));
        });
}

TYPED_TEST(BoundsProperties, TheIntersectionHoldsWhatBothHold)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Box(T{8});
            auto const b = *Box(T{8});
            auto const point = *Vector(T{8});
            auto const common = Intersection(a, b);
            RC_ASSERT(AreSame(common, Intersection(b, a)));
            RC_ASSERT(Contains(a, common) && Contains(b, common));
            bool const isInBoth = a.Contains(point, false) && b.Contains(point, false);
            RC_ASSERT(common.Contains(point, false) == isInBoth);
            auto const nearest = GetClosestPoint(b, GetClosestPoint(a, point)); // more often in both
            RC_ASSERT(common.Contains(nearest, false) == a.Contains(nearest, false));
        });
}

TYPED_TEST(BoundsProperties, BoxesOverlapWhereTheirIntersectionHasAnInside)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Box(T{8});
            auto const b = *Box(T{8});
            auto const common = Intersection(a, b);
            auto const extents = common.GetDiagonal();
            RC_ASSERT(Overlaps(a, b) == Overlaps(b, a));
            if (extents.x > 0 && extents.y > 0 && extents.z > 0)
                RC_ASSERT(Overlaps(a, b));
            if (Overlaps(a, b))
                RC_ASSERT(common.IsValid());
        });
}

TYPED_TEST(BoundsProperties, ABoxThatIsOffsetFartherHoldsTheOther)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const box = *Box(T{8});
            T const distance = std::fabs(*Number(T{8}));
            T const farther = distance + std::fabs(*Number(T{8}));
            auto near = box;
            near.Offset(distance);
            auto far = box;
            far.Offset(farther);
            RC_ASSERT(Contains(near, box) && Contains(far, near));
        });
}

TYPED_TEST(BoundsProperties, NothingIsFartherFromALargerBox)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const box = *Box(T{8});
            auto const larger = Union(box, *Box(T{8}));
            auto const point = *Vector(T{16});
            RC_ASSERT(larger.DistanceSquared(point) <= box.DistanceSquared(point));
            RC_ASSERT(larger.Distance(point) <= box.Distance(point));
            RC_ASSERT((box.DistanceSquared(point) == 0) == box.Contains(point, false));
            RC_ASSERT(box.DistanceSquared(GetClosestPoint(box, point)) == 0);
        });
}

TYPED_TEST(BoundsProperties, TheHalvesOfABoxMakeItUp)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const box = *Box(T{8});
            auto const axis = static_cast<unsigned char>(*Whole(3));
            tVolumeAABB<T> lower, upper;
            box.Split(axis, lower, upper);
            RC_ASSERT(AreSame(Union(lower, upper), box));
            RC_ASSERT(lower.GetMax()[axis] == upper.GetMin()[axis]);
            RC_ASSERT(Contains(box, lower) && Contains(box, upper) && !Overlaps(lower, upper));
        });
}

TYPED_TEST(BoundsProperties, TheBoundOfASphereHoldsItsPoints)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Vector(T{8});
            auto const b = *Vector(T{8});
            auto const c = *Vector(T{8});
            std::vector<tVector3<T>> const points = {a, b, c};
            for (auto const& point : points)
                RC_ASSERT(GetBoundingSphere(std::span<tVector3<T> const>(points)).Contains(point) &&
                          GetSmallestSphere(std::span<tVector3<T> const>(points)).Contains(point));
        });
}

} // namespace
