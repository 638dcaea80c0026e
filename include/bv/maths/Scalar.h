#pragma once

/// @file
/// Easing curves, a periodic ramp and a logarithm to a chosen number of binary digits.

#include <limits>

#include "bv/Export.h"
#include "bv/maths/detail/Number.h"

namespace bv::maths
{

namespace detail
{

/// What the smooth steps share: 0 up to the lower edge, else 1 from the upper edge on, else the curve at the relative
/// position of x between the edges. A NaN x belongs to neither edge and reaches the curve.
template <typename T, typename Curve>
[[nodiscard, gnu::always_inline]] constexpr T StepBetween(T low, T high, T x, Curve curve) noexcept
{
    static_assert(std::numeric_limits<T>::is_iec559);
    if (low >= x)
        return T{0};
    if (x >= high)
        return T{1};
    return curve((x - low) / (high - low));
}

} // namespace detail

/// Smooth step with continuous first derivative: 3t^2 - 2t^3 of the position t of x between the edges.
///
/// 0 for x up to low, 1 for x from high on; where low >= high there is nothing between, and low decides first. NaN
/// gives NaN. Evaluated as (3 - 2t) * (t * t).
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T CubicSmoothStep(T low, T high, T x) noexcept
{
    return detail::StepBetween(low, high, x, [](T t) { return (T{3} - T{2} * t) * (t * t); });
}

/// Smooth step with continuous first and second derivatives: 6t^5 - 15t^4 + 10t^3 of the position t of x between the
/// edges.
///
/// 0 for x up to low, 1 for x from high on; where low >= high there is nothing between, and low decides first. NaN
/// gives NaN. Evaluated as ((t * 6) * t - t * 15 + 10) * (t * t * t). K. Perlin, "Improving Noise", 2002.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T QuinticSmoothStep(T low, T high, T x) noexcept
{
    return detail::StepBetween(low, high, x, [](T t) { return ((t * T{6}) * t - t * T{15} + T{10}) * (t * t * t); });
}

/// Smooth step of two parabolas that meet at the middle: 2t^2 up to t = 0.5, 1 - 2(1 - t)^2 above it.
///
/// 0 for x up to low, 1 for x from high on; where low >= high there is nothing between, and low decides first. NaN
/// gives NaN.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T SmoothStep(T low, T high, T x) noexcept
{
    return detail::StepBetween(low, high, x,
                               [](T t)
                               {
                                   if (t <= T{0.5})
                                       return t * (t + t);
                                   T const rest = T{1} - t;
                                   return T{1} - (rest + rest) * rest;
                               });
}

/// Periodic ramp: the remainder of x by the period, shifted by one period for a negative x.
///
/// Non-negative x give [0, period), negative x give (0, period]: a negative multiple of the period gives the period
/// itself, not 0.
///
/// @param x any finite value; NaN and infinities give NaN.
/// @param period a positive length, which is not checked.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline T SawTooth(T x, T period) noexcept
{
    T const remainder = detail::Remainder(x, period);
    return x >= T{0} ? remainder : remainder + period;
}

/// Base-2 logarithm, one binary digit at a time.
///
/// The digits run down to and including the first whose weight lies below the precision: 0.25 gives those worth 0.5,
/// 0.25 and 0.125. The squaring method: D. E. Knuth, "The Art of Computer Programming", volume 1, 1.2.2.
///
/// @param x the argument; +infinity gives +infinity, and 0, negative values and NaN give -infinity.
/// @param precision weight of the last digit wanted; above 1 the integer part alone is returned. It must be positive:
///                  with 0 or less the loop never ends.
[[nodiscard]] BV_API float Log2(float x, float precision) noexcept;

extern template BV_TEMPLATE float CubicSmoothStep(float, float, float);
extern template BV_TEMPLATE double CubicSmoothStep(double, double, double);
extern template BV_TEMPLATE float QuinticSmoothStep(float, float, float);
extern template BV_TEMPLATE double QuinticSmoothStep(double, double, double);
extern template BV_TEMPLATE float SmoothStep(float, float, float);
extern template BV_TEMPLATE double SmoothStep(double, double, double);
extern template BV_TEMPLATE float SawTooth(float, float);
extern template BV_TEMPLATE double SawTooth(double, double);

} // namespace bv::maths
