#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "bv/maths/Bounds.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tReciprocalRay.h"
#include "properties/Draw.h"
#include "support/Precisions.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
[[nodiscard]] rc::Gen<tRay<T>> Ray()
{
    return rc::gen::apply([](auto const& origin, auto const& direction) { return tRay<T>(origin, direction); },
                          Vector(T{8}), Vector(T{2}));
}

/// The part of a ray's interval that is left.
template <typename T>
struct Interval
{
    T near, far;
    bool isHit;
};

template <typename T, typename AnyRay>
[[nodiscard]] Interval<T> Clipped(AnyRay const& ray, tVolumeAABB<T> const& box, T near, T far)
{
    bool const isHit = ray.Clip(box, near, far);
    return {near, far, isHit};
}

/// What clipping promises of any box, and of one in another: products and sums of larger numbers are not smaller.
template <typename T, typename AnyRay>
void AssertShrinks(AnyRay const& ray)
{
    auto const box = *Box(T{8});
    auto const larger = Union(box, *Box(T{8}));
    T const near = std::fabs(*Number(T{4}));
    T const far = near + std::fabs(*Number(T{64}));
    auto const left = Clipped(ray, box, near, far);
    auto const leftOfLarger = Clipped(ray, larger, near, far);
    RC_ASSERT(left.near >= near && left.far <= far);
    if (left.isHit)
    {
        RC_ASSERT(left.near <= left.far);
        RC_ASSERT(leftOfLarger.isHit);
        RC_ASSERT(leftOfLarger.near <= left.near && leftOfLarger.far >= left.far);
    }
    // Of what is left, nothing more is taken.
    if (left.isHit)
    {
        auto const again = Clipped(ray, box, left.near, left.far);
        RC_ASSERT(again.isHit && again.near == left.near && again.far == left.far);
    }
}

template <typename T>
class ViewProperties : public testing::Test
{
};
TYPED_TEST_SUITE(ViewProperties, Precisions);

TYPED_TEST(ViewProperties, ClippingShrinksTheInterval)
{
    using T = TypeParam;
    ExpectAlways([] { AssertShrinks<T>(*Ray<T>()); });
}

TYPED_TEST(ViewProperties, ClippingByReciprocalsShrinksTheInterval)
{
    using T = TypeParam;
    ExpectAlways([] { AssertShrinks<T>(tReciprocalRay<T>(*Ray<T>())); });
}

TYPED_TEST(ViewProperties, ClippingByReciprocalsMissesNoPointOfTheRay)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            // Of numbers of single precision and these sizes, origin + t * direction is exact in long double.
            tRay<float> const ray = *Ray<float>();
            float const t = std::fabs(*Number(8.0F));
            tVolumeAABB<T> box;
            for (std::size_t axis = 0; axis < 3; ++axis)
            {
                Wide const place = Widened(ray.origin[axis]) + Widened(t) * Widened(ray.direction[axis]);
                auto const nearest = static_cast<T>(place);
                T const end = std::numeric_limits<T>::infinity();
                box.GetMin()[axis] = Widened(nearest) > place ? std::nextafter(nearest, -end) : nearest;
                box.GetMax()[axis] = Widened(nearest) < place ? std::nextafter(nearest, end) : nearest;
            }
            tReciprocalRay<T> const reciprocal(tRay<T>(
                {static_cast<T>(ray.origin.x), static_cast<T>(ray.origin.y), static_cast<T>(ray.origin.z)},
                {static_cast<T>(ray.direction.x), static_cast<T>(ray.direction.y), static_cast<T>(ray.direction.z)}));
            auto const left = Clipped(reciprocal, box, T{0}, T{16});
            RC_ASSERT(left.isHit && left.near <= static_cast<T>(t) && left.far >= static_cast<T>(t));
        });
}

/// The magnitudes of a matrix's element and that of the same column in the fourth row.
template <typename T>
[[nodiscard]] Wide Sum(tMatrix4<T> const& matrix, std::size_t row, std::size_t column)
{
    return std::fabs(Widened(matrix[4 * row + column])) + std::fabs(Widened(matrix[12 + column]));
}

/// A camera at any place, and a point that it sees, but for rounding.
template <typename T>
struct Sight
{
    tMatrix4<T> matrix;
    tVector3<T> point;
};

template <typename T>
[[nodiscard]] Sight<T> DrawSight()
{
    auto const place = *Vector(T{8});
    auto const turn = *Rotation<T>();
    T const depth = T{1} + std::fabs(*Number(T{32}));
    tVector3<T> const inView(depth * *Number(T{1}), depth * T(0.75) * *Number(T{1}), -depth);
    return {tMatrix4<T>::PerspectiveProjection(-1, 1, T(-0.75), T(0.75), 1, 33) * turn.GetMatrix() *
                tMatrix4<T>::Translate(place),
            turn.Conjugated().Rotate(inView) - place};
}

TYPED_TEST(ViewProperties, NoBoxWithAPointInTheViewIsOutside)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const [matrix, point] = DrawSight<T>();
            tFrustum<T> const frustum(matrix);
            auto const extents = *Vector(T{8});
            tVolumeAABB<T> box(point, point);
            box.Expand(point + extents);
            box.Expand(point - extents);

            // A plane is the fourth row of the matrix and one of the others, added or subtracted and brought to length
            // 1: three roundings a number, and the same factor for all four. The distance of a corner has four more.
            // So it has the sign of the exact one where that is more than 7u of the sum of its magnitudes; and no point
            // of the box is farther along a normal than the corner that is looked at.
            for (std::size_t row = 0; row < 3; ++row)
            {
                Wide across = Widened(matrix[4 * row + 3]);
                Wide depth = Widened(matrix[15]);
                Wide magnitudes = Sum(matrix, row, 3);
                for (std::size_t i = 0; i < 3; ++i)
                {
                    across += Widened(matrix[4 * row + i]) * Widened(point[i]);
                    depth += Widened(matrix[12 + i]) * Widened(point[i]);
                    magnitudes += Sum(matrix, row, i) *
                                  std::max(std::fabs(Widened(box.GetMin()[i])), std::fabs(Widened(box.GetMax()[i])));
                }
                RC_PRE(depth - std::fabs(across) > 8 * ROUNDING<T> * magnitudes);
            }
            RC_ASSERT(frustum.ContainsAABB(box) != tFrustum<T>::OUTSIDE);
            RC_ASSERT(frustum.ContainsAABB(tVolumeAABB<T>(point, point)) == tFrustum<T>::INSIDE);
        });
}

TYPED_TEST(ViewProperties, WhatIsInABoxIsWhereTheBoxIs)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            tFrustum<T> const frustum(DrawSight<T>().matrix);
            auto const inner = *Box(T{16});
            auto const outer = Union(inner, *Vector(T{16}));
            auto const ofInner = frustum.ContainsAABB(inner);
            auto const ofOuter = frustum.ContainsAABB(outer);
            if (ofOuter != tFrustum<T>::INTERSECTING)
                RC_ASSERT(ofInner == ofOuter);
            if (ofInner == tFrustum<T>::INTERSECTING)
                RC_ASSERT(ofOuter == tFrustum<T>::INTERSECTING);
        });
}

} // namespace
