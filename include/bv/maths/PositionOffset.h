#pragma once

/// @file
/// Hit points moved off their surface, for the rays that start there.

#include <cstdint>

#include "bv/Export.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Number.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace detail
{

/// The exponent e of a value f * 2^e with |f| in [0.5, 1), as `frexp` splits it, if e is above 0. Values below 1 in
/// magnitude give some number that is not above 0, and so do infinities and NaNs.
[[nodiscard, gnu::always_inline]] constexpr int GetPositiveExponent(double value) noexcept
{
    constexpr int BIAS = 1022;
    constexpr int NOT_FINITE = 0x7FF;
    int const biased = static_cast<int>((detail::BitsAs<std::uint64_t>(value) >> 52) & 0x7FF);
    return biased == NOT_FINITE ? 0 : biased - BIAS;
}

} // namespace detail

/// A position moved along a normal by a step that suits its scale, so that a ray that starts there does not hit the
/// surface again.
///
/// The step follows the position's coordinate c along the dominant axis of the normal. It is 1e-5 where |c| is below 1
/// and 2^e * 1e-5 above, where 2^e is the lowest power of two above |c|: a fixed number of representable steps of that
/// coordinate. Ties between the normal's components go to y before z and to z before x, another order than that of
/// EvaluateLocalAxes().
///
/// Two edges: the constant is the single-precision 1e-5 in both instances, 9.999999747378752e-06 in the `double` one;
/// and e counts modulo 32, so that from |c| = 2^31 on the step is small again. A non-finite c counts as small.
///
/// @tparam T `float` or `double`; both instances are in the library.
/// @param position the point on the surface.
/// @param normal the direction to move in, of any length; the step is a multiple of it.
template <typename T>
[[nodiscard]] inline tVector3<T> GetPositionOffset(tVector3<T> const& position, tVector3<T> const& normal) noexcept
{
    T const magnitudeY = detail::Magnitude(normal.y);
    T const magnitudeZ = detail::Magnitude(normal.z);
    T largest = detail::Magnitude(normal.x);
    largest = magnitudeY > largest ? magnitudeY : largest;
    largest = magnitudeZ > largest ? magnitudeZ : largest;
    T const coordinate = largest == magnitudeY ? position.y : largest == magnitudeZ ? position.z : position.x;

    constexpr T UNIT = static_cast<T>(1e-5F);
    int const exponent = detail::GetPositiveExponent(static_cast<double>(coordinate));
    T const step = exponent > 0 ? static_cast<T>(std::uint32_t{1} << (exponent & 31)) * UNIT : UNIT;
    return position + normal * step;
}

extern template BV_TEMPLATE tVector3<float> GetPositionOffset(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> GetPositionOffset(tVector3<double> const&,
                                                               tVector3<double> const&) noexcept;

} // namespace bv::maths
