#pragma once

/// @file
/// Tuples and vectors component by component: smaller and larger, magnitudes, clamping, mixing, rounding to whole
/// numbers, and the smallest and largest component. Integer tuples take part where the operation means something for
/// them.
///
/// Every result is made of comparisons, sums, differences and products in a fixed order, and so has the same bits
/// everywhere. Arguments may be one and the same object.

#include <type_traits>

#include "bv/Export.h"
#include "bv/detail/Platform.h"
#include "bv/maths/detail/Compiler.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Number.h"
#include "bv/maths/detail/TupleOrVector.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

#if !BV_GNU
#include <cmath>
#endif

namespace bv::maths
{

namespace detail
{

/// The first number, unless the second is smaller.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T SmallerOf(T a, T b) noexcept
{
    return b < a ? b : a;
}

/// The first number, unless the second is larger.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T LargerOf(T a, T b) noexcept
{
    return a < b ? b : a;
}

/// The magnitude of an integer; that of the smallest `int`, which has none, is itself.
[[nodiscard, gnu::always_inline]] constexpr int Magnitude(int x) noexcept
{
    auto const bits = static_cast<unsigned int>(x);
    return static_cast<int>(x < 0 ? 0U - bits : bits);
}

/// The parameter of an interpolation, counted from the end that is nearer: t for t below 0.5, else t - 1. GCC would
/// make a branch of the choice, which nothing predicts.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T WayFromNearerEnd(T t) noexcept
{
    if (std::is_constant_evaluated())
        return t < T{0.5} ? t : t - T{1};
    using L = Register<T, 16>;
    using I = Register<Integer<T>, 16>;
    L const lanes{t};
    I const isEarly = AsBits(BitsAs<I>(lanes < L{T{0.5}}));
    L const offset = BitsAs<L>(BitsAs<I>(L{T{1}}) & ~isEarly);
    return Get<0>(lanes - offset);
}

/// From this power of two on, every number is a whole one.
template <typename T>
inline constexpr T ALL_WHOLE = sizeof(T) == sizeof(float) ? T(0x1p23) : T(0x1p52);

/// The largest whole number not above a number. Adding ALL_WHOLE rounds the magnitude to a whole number next to it;
/// what has gone too far takes one step back. No conversion to an integer is needed, for which there may be no such
/// integer.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T FloorOf(T x) noexcept
{
    T const magnitude = Magnitude(x);
    T const whole = WithSignOf((magnitude + ALL_WHOLE<T>)-ALL_WHOLE<T>, x);
    T const below = whole - (x < whole ? T{1} : T{0});
    return magnitude < ALL_WHOLE<T> ? below : x;
}

/// The smallest whole number not below a number: FloorOf() from the other side.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T CeilOf(T x) noexcept
{
    return -FloorOf(-x);
}

/// FloorOf() of one number by the processor's own instruction.
[[nodiscard, gnu::always_inline]] inline float FloorByProcessor(float x) noexcept
{
#if BV_GNU
    return __builtin_floorf(x);
#else
    return std::floor(x);
#endif
}

/// @copydoc FloorByProcessor(float)
[[nodiscard, gnu::always_inline]] inline double FloorByProcessor(double x) noexcept
{
#if BV_GNU
    return __builtin_floor(x);
#else
    return std::floor(x);
#endif
}

/// CeilOf() of one number by the processor's own instruction.
[[nodiscard, gnu::always_inline]] inline float CeilByProcessor(float x) noexcept
{
#if BV_GNU
    return __builtin_ceilf(x);
#else
    return std::ceil(x);
#endif
}

/// @copydoc CeilByProcessor(float)
[[nodiscard, gnu::always_inline]] inline double CeilByProcessor(double x) noexcept
{
#if BV_GNU
    return __builtin_ceil(x);
#else
    return std::ceil(x);
#endif
}

/// FloorOf(), side by side.
template <typename L>
[[nodiscard, gnu::always_inline]] inline L FloorOfLanes(L const& x) noexcept
{
    if constexpr (IS_HALVED<L>)
        return {FloorOfLanes(x.low), FloorOfLanes(x.high)};
    else
    {
        using I = Register<Integer<Element<L>>, sizeof(L)>;
        L const allWhole = Broadcast<L>(ALL_WHOLE<Element<L>>);
        L const magnitude = Magnitude(x);
        I const sign = BitsAs<I>(x) ^ BitsAs<I>(magnitude);
        L const whole = BitsAs<L>(BitsAs<I>((magnitude + allWhole) - allWhole) | sign);
        I const step = BitsAs<I>(Broadcast<L>(1)) & BitsAs<I>(x < whole);
        return Select(magnitude < allWhole, whole - BitsAs<L>(step), x);
    }
}

/// The components in a register or two.
template <typename V>
[[nodiscard, gnu::always_inline]] inline tFour<Component<V>> SideBySide(V const& value) noexcept
{
    using T = Component<V>;
    if constexpr (HAS_Z<V>)
        return Four(value.x, value.y, value.z, T{});
    else
        return Four(value.x, value.y, T{}, T{});
}

/// The tuple or vector of the first lanes.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V FromLanes(tFour<Component<V>> const& lanes) noexcept
{
    if constexpr (HAS_Z<V>)
        return V(Get<0>(lanes), Get<1>(lanes), Get<2>(lanes));
    else
        return V(Get<0>(lanes), Get<1>(lanes));
}

} // namespace detail

/// The smaller component of two, each for itself: the first operand's, unless the second's is smaller. So the first
/// operand's where one of the two is NaN or both are zeros, and a minimum over many that starts at +infinity and is the
/// first operand takes no notice of NaN.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr V Min(V const& a, V const& b) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return V(detail::SmallerOf(a.x, b.x), detail::SmallerOf(a.y, b.y), detail::SmallerOf(a.z, b.z));
    else
        return V(detail::SmallerOf(a.x, b.x), detail::SmallerOf(a.y, b.y));
}

/// The larger component of two, each for itself: the first operand's, unless the second's is larger. So the first
/// operand's where one of the two is NaN or both are zeros, and a maximum over many that starts at -infinity and is the
/// first operand takes no notice of NaN.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr V Max(V const& a, V const& b) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return V(detail::LargerOf(a.x, b.x), detail::LargerOf(a.y, b.y), detail::LargerOf(a.z, b.z));
    else
        return V(detail::LargerOf(a.x, b.x), detail::LargerOf(a.y, b.y));
}

/// The components without their signs, those of zeros and infinities included. The smallest `int`, whose opposite is no
/// `int`, stays as it is.
template <typename V, typename = detail::Where<SignedTupleOrVector<V>>>
[[nodiscard]] constexpr V Abs(V const& value) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return V(detail::Magnitude(value.x), detail::Magnitude(value.y), detail::Magnitude(value.z));
    else
        return V(detail::Magnitude(value.x), detail::Magnitude(value.y));
}

/// Each component within its own bounds: Min(Max(value, low), high). A NaN component stays NaN, a bound that is NaN
/// bounds nothing, and where the lower bound is above the upper one, the result is the upper one.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr V Clamp(V const& value, V const& low, V const& high) noexcept
{
    return Min(Max(value, low), high);
}

/// Each component within the same bounds, in the same way.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr V Clamp(V const& value, detail::Component<V> low, detail::Component<V> high) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return Min(Max(value, V(low, low, low)), V(high, high, high));
    else
        return Min(Max(value, V(low, low)), V(high, high));
}

/// Linear interpolation between two numbers: a for t = 0, b for t = 1, and beyond them for other t.
///
/// Exact at both ends and between equal numbers, though a zero may have either sign; monotone in t, so that no t from 0
/// to 1 leads out of the interval. Evaluated from the nearer end: a + (b - a) * t for t below 0.5, else
/// b + (b - a) * (t - 1). Where b - a overflows or an operand is not finite, the result is infinite or NaN, at the
/// ends, too.
template <typename T, typename = detail::Where<std::is_floating_point_v<T>>>
[[nodiscard]] constexpr T Lerp(T a, std::type_identity_t<T> b, std::type_identity_t<T> t) noexcept
{
    // Monotone: within a half, rounding keeps the order of products and sums, and t - 1 is exact. Where the halves
    // meet, let a <= b, and d be b - a rounded, at most e above it. The last t of the first half is (1 - 2^-p) / 2 with
    // p digits. The product with d is then, rounded, at most d / 2 less a step below d / 2, and that step is at least
    // e: half a step of d, or a quarter where d is a power of two. So a + (d / 2 - e) <= a + d / 2 - (d - (b - a)) = b
    // - d / 2, which is the second half's first sum, and rounding keeps that order, too. Below the normal numbers, d is
    // exact, and of an odd d the last t takes the smaller half.
    bool const isEarly = t < T{0.5};
    return (isEarly ? a : b) + (b - a) * detail::WayFromNearerEnd(t);
}

/// Linear interpolation, component by component, with one parameter for all. See Lerp(T, T, T).
template <typename V, typename = detail::Where<RealTupleOrVector<V>>>
[[nodiscard]] constexpr V Lerp(V const& a, V const& b, detail::Component<V> t) noexcept
{
    using T = detail::Component<V>;
    bool const isEarly = t < T{0.5};
    T const way = detail::WayFromNearerEnd(t);
    V const& end = isEarly ? a : b;
    if constexpr (detail::HAS_Z<V>)
        return V(end.x + (b.x - a.x) * way, end.y + (b.y - a.y) * way, end.z + (b.z - a.z) * way);
    else
        return V(end.x + (b.x - a.x) * way, end.y + (b.y - a.y) * way);
}

/// Linear interpolation, component by component, with a parameter for each. See Lerp(T, T, T).
template <typename V, typename = detail::Where<RealTupleOrVector<V>>>
[[nodiscard]] constexpr V Lerp(V const& a, V const& b, V const& t) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return V(Lerp(a.x, b.x, t.x), Lerp(a.y, b.y, t.y), Lerp(a.z, b.z, t.z));
    else
        return V(Lerp(a.x, b.x, t.x), Lerp(a.y, b.y, t.y));
}

/// The largest whole numbers that are not above the components. Zeros keep their sign; infinities and NaN stay.
template <typename V, typename = detail::Where<RealTupleOrVector<V>>>
[[nodiscard]] constexpr V Floor(V const& value) noexcept
{
    if (!std::is_constant_evaluated())
    {
        if constexpr (detail::ROUNDS_BY_SUMS)
            return detail::FromLanes<V>(detail::FloorOfLanes(detail::SideBySide(value)));
        else if constexpr (detail::HAS_Z<V>)
            return V(detail::FloorByProcessor(value.x), detail::FloorByProcessor(value.y),
                     detail::FloorByProcessor(value.z));
        else
            return V(detail::FloorByProcessor(value.x), detail::FloorByProcessor(value.y));
    }
    if constexpr (detail::HAS_Z<V>)
        return V(detail::FloorOf(value.x), detail::FloorOf(value.y), detail::FloorOf(value.z));
    else
        return V(detail::FloorOf(value.x), detail::FloorOf(value.y));
}

/// The smallest whole numbers that are not below the components. Zeros keep their sign, and what is above -1 and below
/// 0 gives -0; infinities and NaN stay.
template <typename V, typename = detail::Where<RealTupleOrVector<V>>>
[[nodiscard]] constexpr V Ceil(V const& value) noexcept
{
    if (!std::is_constant_evaluated())
    {
        if constexpr (detail::ROUNDS_BY_SUMS)
            return detail::FromLanes<V>(
                detail::Negated(detail::FloorOfLanes(detail::Negated(detail::SideBySide(value)))));
        else if constexpr (detail::HAS_Z<V>)
            return V(detail::CeilByProcessor(value.x), detail::CeilByProcessor(value.y),
                     detail::CeilByProcessor(value.z));
        else
            return V(detail::CeilByProcessor(value.x), detail::CeilByProcessor(value.y));
    }
    if constexpr (detail::HAS_Z<V>)
        return V(detail::CeilOf(value.x), detail::CeilOf(value.y), detail::CeilOf(value.z));
    else
        return V(detail::CeilOf(value.x), detail::CeilOf(value.y));
}

/// The smallest component: the first one, unless a later one is smaller than all before it. So the first of several
/// equal ones, be they zeros of either sign; a NaN stays the result where it is x, and counts for nothing elsewhere.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr detail::Component<V> GetMinComponent(V const& value) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return detail::SmallerOf(detail::SmallerOf(value.x, value.y), value.z);
    else
        return detail::SmallerOf(value.x, value.y);
}

/// The largest component: the first one, unless a later one is larger than all before it. So the first of several equal
/// ones, be they zeros of either sign; a NaN stays the result where it is x, and counts for nothing elsewhere.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr detail::Component<V> GetMaxComponent(V const& value) noexcept
{
    if constexpr (detail::HAS_Z<V>)
        return detail::LargerOf(detail::LargerOf(value.x, value.y), value.z);
    else
        return detail::LargerOf(value.x, value.y);
}

/// Index of the component that GetMinComponent() gives: 0 = x, 1 = y, 2 = z.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr unsigned char GetMinAxis(V const& value) noexcept
{
    unsigned char const axis = value.y < value.x ? 1 : 0;
    if constexpr (detail::HAS_Z<V>)
        return value.z < detail::SmallerOf(value.x, value.y) ? static_cast<unsigned char>(2) : axis;
    else
        return axis;
}

/// Index of the component that GetMaxComponent() gives, 0 = x, 1 = y, 2 = z: for the longest axis of a box, that of its
/// diagonal.
template <typename V, typename = detail::Where<TupleOrVector<V>>>
[[nodiscard]] constexpr unsigned char GetMaxAxis(V const& value) noexcept
{
    unsigned char const axis = value.x < value.y ? 1 : 0;
    if constexpr (detail::HAS_Z<V>)
        return detail::LargerOf(value.x, value.y) < value.z ? static_cast<unsigned char>(2) : axis;
    else
        return axis;
}

extern template BV_TEMPLATE tVector3<float> Min(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Max(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Abs(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Clamp(tVector3<float> const&, tVector3<float> const&,
                                                  tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Clamp(tVector3<float> const&, float, float) noexcept;
extern template BV_TEMPLATE tVector3<float> Lerp(tVector3<float> const&, tVector3<float> const&, float) noexcept;
extern template BV_TEMPLATE tVector3<float> Lerp(tVector3<float> const&, tVector3<float> const&,
                                                 tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Floor(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Ceil(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE float GetMinComponent(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE float GetMaxComponent(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Min(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Max(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Abs(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Clamp(tVector2<float> const&, tVector2<float> const&,
                                                  tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Clamp(tVector2<float> const&, float, float) noexcept;
extern template BV_TEMPLATE tVector2<float> Lerp(tVector2<float> const&, tVector2<float> const&, float) noexcept;
extern template BV_TEMPLATE tVector2<float> Lerp(tVector2<float> const&, tVector2<float> const&,
                                                 tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Floor(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Ceil(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE float GetMinComponent(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE float GetMaxComponent(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Min(tTuple3<float> const&, tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Max(tTuple3<float> const&, tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Abs(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Clamp(tTuple3<float> const&, tTuple3<float> const&,
                                                 tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Clamp(tTuple3<float> const&, float, float) noexcept;
extern template BV_TEMPLATE tTuple3<float> Lerp(tTuple3<float> const&, tTuple3<float> const&, float) noexcept;
extern template BV_TEMPLATE tTuple3<float> Lerp(tTuple3<float> const&, tTuple3<float> const&,
                                                tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Floor(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple3<float> Ceil(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE float GetMinComponent(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE float GetMaxComponent(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple3<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Min(tTuple2<float> const&, tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Max(tTuple2<float> const&, tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Abs(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Clamp(tTuple2<float> const&, tTuple2<float> const&,
                                                 tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Clamp(tTuple2<float> const&, float, float) noexcept;
extern template BV_TEMPLATE tTuple2<float> Lerp(tTuple2<float> const&, tTuple2<float> const&, float) noexcept;
extern template BV_TEMPLATE tTuple2<float> Lerp(tTuple2<float> const&, tTuple2<float> const&,
                                                tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Floor(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tTuple2<float> Ceil(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE float GetMinComponent(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE float GetMaxComponent(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple2<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Min(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Max(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Abs(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Clamp(tVector3<double> const&, tVector3<double> const&,
                                                   tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Clamp(tVector3<double> const&, double, double) noexcept;
extern template BV_TEMPLATE tVector3<double> Lerp(tVector3<double> const&, tVector3<double> const&, double) noexcept;
extern template BV_TEMPLATE tVector3<double> Lerp(tVector3<double> const&, tVector3<double> const&,
                                                  tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Floor(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Ceil(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE double GetMinComponent(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE double GetMaxComponent(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Min(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Max(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Abs(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Clamp(tVector2<double> const&, tVector2<double> const&,
                                                   tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Clamp(tVector2<double> const&, double, double) noexcept;
extern template BV_TEMPLATE tVector2<double> Lerp(tVector2<double> const&, tVector2<double> const&, double) noexcept;
extern template BV_TEMPLATE tVector2<double> Lerp(tVector2<double> const&, tVector2<double> const&,
                                                  tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Floor(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Ceil(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE double GetMinComponent(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE double GetMaxComponent(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Min(tTuple3<double> const&, tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Max(tTuple3<double> const&, tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Abs(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Clamp(tTuple3<double> const&, tTuple3<double> const&,
                                                  tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Clamp(tTuple3<double> const&, double, double) noexcept;
extern template BV_TEMPLATE tTuple3<double> Lerp(tTuple3<double> const&, tTuple3<double> const&, double) noexcept;
extern template BV_TEMPLATE tTuple3<double> Lerp(tTuple3<double> const&, tTuple3<double> const&,
                                                 tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Floor(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<double> Ceil(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE double GetMinComponent(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE double GetMaxComponent(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple3<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Min(tTuple2<double> const&, tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Max(tTuple2<double> const&, tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Abs(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Clamp(tTuple2<double> const&, tTuple2<double> const&,
                                                  tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Clamp(tTuple2<double> const&, double, double) noexcept;
extern template BV_TEMPLATE tTuple2<double> Lerp(tTuple2<double> const&, tTuple2<double> const&, double) noexcept;
extern template BV_TEMPLATE tTuple2<double> Lerp(tTuple2<double> const&, tTuple2<double> const&,
                                                 tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Floor(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple2<double> Ceil(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE double GetMinComponent(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE double GetMaxComponent(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple2<double> const&) noexcept;
extern template BV_TEMPLATE tTuple3<int> Min(tTuple3<int> const&, tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<int> Max(tTuple3<int> const&, tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<int> Abs(tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<int> Clamp(tTuple3<int> const&, tTuple3<int> const&, tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<int> Clamp(tTuple3<int> const&, int, int) noexcept;
extern template BV_TEMPLATE int GetMinComponent(tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE int GetMaxComponent(tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple3<int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<int> Min(tTuple2<int> const&, tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<int> Max(tTuple2<int> const&, tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<int> Abs(tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<int> Clamp(tTuple2<int> const&, tTuple2<int> const&, tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<int> Clamp(tTuple2<int> const&, int, int) noexcept;
extern template BV_TEMPLATE int GetMinComponent(tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE int GetMaxComponent(tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple2<int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<unsigned int> Min(tTuple3<unsigned int> const&,
                                                      tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<unsigned int> Max(tTuple3<unsigned int> const&,
                                                      tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<unsigned int> Clamp(tTuple3<unsigned int> const&, tTuple3<unsigned int> const&,
                                                        tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple3<unsigned int> Clamp(tTuple3<unsigned int> const&, unsigned int,
                                                        unsigned int) noexcept;
extern template BV_TEMPLATE unsigned int GetMinComponent(tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE unsigned int GetMaxComponent(tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple3<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<unsigned int> Min(tTuple2<unsigned int> const&,
                                                      tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<unsigned int> Max(tTuple2<unsigned int> const&,
                                                      tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<unsigned int> Clamp(tTuple2<unsigned int> const&, tTuple2<unsigned int> const&,
                                                        tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE tTuple2<unsigned int> Clamp(tTuple2<unsigned int> const&, unsigned int,
                                                        unsigned int) noexcept;
extern template BV_TEMPLATE unsigned int GetMinComponent(tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE unsigned int GetMaxComponent(tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMinAxis(tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE unsigned char GetMaxAxis(tTuple2<unsigned int> const&) noexcept;
extern template BV_TEMPLATE float Lerp(float, float, float) noexcept;
extern template BV_TEMPLATE double Lerp(double, double, double) noexcept;

} // namespace bv::maths
