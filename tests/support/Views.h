#pragma once

/// @file
/// A view of any six planes, also of such that no matrix has.

#include <array>
#include <bit>
#include <cstddef>

#include "bv/maths/tFrustum.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/Random.h"

namespace bv::test
{

/// A plane as it lies in memory: the offset, then the normal.
template <typename T>
struct PlaneNumbers
{
    T offset;
    T x, y, z;
};

/// The planes in the order in which a box is tested against them. One of zeros has every box inside.
template <typename T>
struct ViewNumbers
{
    PlaneNumbers<T> left, right, top, bottom, far, near;
};

template <typename T>
[[nodiscard]] constexpr maths::tFrustum<T> FrustumOf(ViewNumbers<T> const& view)
{
    std::array<PlaneNumbers<T>, 6> const inMemory{view.left, view.right, view.bottom, view.top, view.near, view.far};
    return std::bit_cast<maths::tFrustum<T>>(inMemory);
}

/// A view with one plane that counts, the k-th.
template <typename T>
[[nodiscard]] constexpr maths::tFrustum<T> FrustumOf(std::size_t k, PlaneNumbers<T> const& plane)
{
    ViewNumbers<T> view{};
    PlaneNumbers<T>* const planes[] = {&view.left, &view.right, &view.top, &view.bottom, &view.far, &view.near};
    *planes[k] = plane;
    return FrustumOf(view);
}

/// A box in space and a plane that one of its corners lies on, to the bit, when products and offset are summed from x
/// to z and then on; in another order, it may lie behind.
template <typename T>
struct TouchingCorner
{
    PlaneNumbers<T> plane;
    maths::tVolumeAABB<T> box;
    bool otherOrdersReject; ///< whether it lies behind in some other order
};

/// @param isFarthest whether the corner is the one that lies farthest along the normal, so that the plane rejects the
/// box
///        if it lies behind, or the one at the other end, so that the box straddles then.
template <typename T>
[[nodiscard]] TouchingCorner<T> DrawTouchingCorner(Random& random, bool isFarthest)
{
    auto const n = random.Vector<maths::tVector3<T>>(-1, 1);
    auto const p = random.Vector<maths::tVector3<T>>(-10, 10);
    T const x = n.x * p.x;
    T const y = n.y * p.y;
    T const z = n.z * p.z;
    T const offset = -((x + y) + z);
    maths::tVector3<T> other;
    for (std::size_t axis = 0; axis < 3; ++axis)
        other[axis] = p[axis] + ((n[axis] >= T{0}) == isFarthest ? T{-1} : T{1});
    maths::tVolumeAABB<T> box;
    box.Expand(p);
    box.Expand(other);
    bool const rejects = (x + (y + z)) + offset < T{0} || ((x + z) + y) + offset < T{0} ||
                         (x + y) + (z + offset) < T{0} || ((offset + x) + y) + z < T{0};
    return {{offset, n.x, n.y, n.z}, box, rejects};
}

} // namespace bv::test
