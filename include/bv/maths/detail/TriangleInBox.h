#pragma once

/// @file
/// What separates a triangle from a box along the products of its edges with the axes.

#include "bv/maths/detail/BoxCorners.h"
#include "bv/maths/detail/Lanes.h"

namespace bv::maths::detail
{

inline namespace BV_REGISTERS
{

/// Three components, once moved on by one place and once by two: what a vector product multiplies.
template <typename V>
struct tTurned
{
    V once, twice;

    [[gnu::always_inline]] explicit tTurned(V const& v) noexcept
        : once{Choose<1, 2, 0, 0>(v)}, twice{Choose<2, 0, 1, 1>(v)}
    {
    }

    [[nodiscard, gnu::always_inline]] V Cross(tTurned const& other) const noexcept
    {
        return once * other.twice - twice * other.once;
    }
};

/// The sum of the first three lanes, the first of them first.
template <typename V>
[[nodiscard, gnu::always_inline]] inline Element<V> SumOfThree(V const& v) noexcept
{
    return Get<0>(v) + Get<1>(v) + Get<2>(v);
}

/// Whether two corners of a triangle enclose a distance that a box reaches, along the product of an edge with each of
/// the axes. Not where one is NaN.
template <typename V>
[[nodiscard, gnu::always_inline]] inline bool ComeNear(tTurned<V> const& edge, tTurned<V> const& a, tTurned<V> const& b,
                                                       tTurned<V> const& half) noexcept
{
    V const p = edge.Cross(a);
    V const q = edge.Cross(b);
    V const reach = Magnitude(edge.once) * half.twice + Magnitude(edge.twice) * half.once;
    return AllThree(Both(Min(p, q) <= reach, Negated(reach) <= Max(q, p)));
}

} // namespace BV_REGISTERS

} // namespace bv::maths::detail
