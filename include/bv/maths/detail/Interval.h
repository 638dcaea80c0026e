#pragma once

/// @file
/// One axis of a box: growing an interval, and the way from a value to it. Every comparison is strict and ordered, so a
/// NaN changes nothing and lies nowhere outside. And the growth of all three axes.

#include <type_traits>

#include "bv/maths/detail/Compiler.h"
#include "bv/maths/detail/Lanes.h"

namespace bv::maths::detail
{

/// Lowers the lower end of an interval to a value below it.
/// @return whether the end moved.
template <typename T>
[[gnu::always_inline]] constexpr bool LowerTo(T& end, T value) noexcept
{
    bool const moves = end > value;
    if constexpr (KEEPS_BOXES_SCALAR<T>)
    {
        if (!std::is_constant_evaluated())
        {
            end = MinOfOne(value, end);
            return moves;
        }
    }
    end = moves ? value : end;
    return moves;
}

/// Raises the upper end of an interval to a value above it.
/// @return whether the end moved.
template <typename T>
[[gnu::always_inline]] constexpr bool RaiseTo(T& end, T value) noexcept
{
    bool const moves = value > end;
    if constexpr (KEEPS_BOXES_SCALAR<T>)
    {
        if (!std::is_constant_evaluated())
        {
            end = MaxOfOne(value, end);
            return moves;
        }
    }
    end = moves ? value : end;
    return moves;
}

/// Lowers each component of a box's lower corner to that of a point below it.
/// @return whether a component moved.
template <typename T, template <typename> typename Vector>
[[gnu::always_inline]] constexpr bool LowerTo(Vector<T>& corner, Vector<T> const& point) noexcept
{
    if constexpr (GROWS_BOXES_IN_PAIRS<T>)
    {
        if (!std::is_constant_evaluated())
        {
            using Pair = Register<T, 16>;
            Pair const end = LoadFrom<Pair>(corner);
            Pair const value = LoadFrom<Pair>(point);
            StoreInto(Min(value, end), corner);
            bool const pairMoves = Any(value < end);
            return LowerTo(corner.z, point.z) || pairMoves;
        }
    }
    bool moves = LowerTo(corner.x, point.x);
    moves |= LowerTo(corner.y, point.y);
    moves |= LowerTo(corner.z, point.z);
    return moves;
}

/// Raises each component of a box's upper corner to that of a point above it.
/// @return whether a component moved.
template <typename T, template <typename> typename Vector>
[[gnu::always_inline]] constexpr bool RaiseTo(Vector<T>& corner, Vector<T> const& point) noexcept
{
    if constexpr (GROWS_BOXES_IN_PAIRS<T>)
    {
        if (!std::is_constant_evaluated())
        {
            using Pair = Register<T, 16>;
            Pair const end = LoadFrom<Pair>(corner);
            Pair const value = LoadFrom<Pair>(point);
            StoreInto(Max(value, end), corner);
            bool const pairMoves = Any(end < value);
            return RaiseTo(corner.z, point.z) || pairMoves;
        }
    }
    bool moves = RaiseTo(corner.x, point.x);
    moves |= RaiseTo(corner.y, point.y);
    moves |= RaiseTo(corner.z, point.z);
    return moves;
}

/// Distance from a value to the interval [lower, upper], 0 when it is inside. The lower end is looked at first, and
/// decides alone for a value below it, even when the interval is inverted; the upper end decides for any other value.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T Gap(T lower, T upper, T value) noexcept
{
    T const below = lower - value;
    if (below > T{0})
        return below;
    T const above = value - upper;
    return above > T{0} ? above : T{0};
}

/// Adds the square of a gap to a sum of squares. A gap of 0 adds nothing and so rejects nothing, whatever the limit.
/// @return whether there was an addition that took the sum to the limit or beyond.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool AddingReaches(T& sum, T gap, T limit) noexcept
{
    if (!(gap > T{0}))
        return false;
    sum += gap * gap;
    return sum >= limit;
}

} // namespace bv::maths::detail
