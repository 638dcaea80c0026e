#pragma once

/// @file
/// A ray made ready for triangles that it may not slip between.

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// A ray with what IntersectTriangle() and IntersectTriangles() need of it to be watertight, computed once: the axis
/// along which it runs mostly, and the shear that makes the ray run along it. S. Woop, C. Benthin, I. Wald, "Watertight
/// Ray/Triangle Intersection", 2013.
///
/// Of the components of the direction, the first one of the largest magnitude counts. A direction of zeros, or with an
/// infinite component or NaN, meets nothing.
///
/// The object has no pointer in it: it can be copied as bytes.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tWatertightRay
{
    tVector3<T> start;     ///< the origin, its components in the order of the axes
    tVector3<T> shear;     ///< the first two components over the third, and the reciprocal of the third
    std::uint32_t axes[3]; ///< the two axes across the ray, and the one along it

public:
    /// @name Construction
    /// @{
    /// The ray of zeros, which meets nothing.
    tWatertightRay() noexcept : tWatertightRay(tRay<T>()) {}
    /// What a ray is now; it is not needed any more.
    inline explicit tWatertightRay(tRay<T> const& ray) noexcept;
    /// @}

    /// @name Access
    /// @{
    /// The axis along which the ray runs mostly, 0 = x, 1 = y, 2 = z, or at index 0 and 1 the two that follow it.
    ///
    /// @param index from 0 to 2; not checked.
    [[nodiscard]] constexpr std::uint32_t GetAxis(std::size_t index) const noexcept { return axes[index]; }
    /// The ray's origin, its components in the order of GetAxis().
    [[nodiscard]] constexpr tVector3<T> const& GetStart() const noexcept { return start; }
    /// The first two components of the direction over the third, in the order of GetAxis(), and the reciprocal of the
    /// third.
    [[nodiscard]] constexpr tVector3<T> const& GetShear() const noexcept { return shear; }
    /// @}
};

template <typename T>
inline tWatertightRay<T>::tWatertightRay(tRay<T> const& ray) noexcept
{
    tVector3<T> const& d = ray.direction;
    T const x = detail::Magnitude(d.x), y = detail::Magnitude(d.y), z = detail::Magnitude(d.z);
    std::uint32_t const along = y > x ? (z > y ? 2U : 1U) : (z > x ? 2U : 0U);
    std::uint32_t const first = along == 2U ? 0U : along + 1U;
    std::uint32_t const second = first == 2U ? 0U : first + 1U;
    axes[0] = first;
    axes[1] = second;
    axes[2] = along;
    start = {ray.origin[first], ray.origin[second], ray.origin[along]};
    T const length = d[along];
    T const refused = length - length; // NaN of an infinity, else 0
    shear = {d[first] / length + refused, d[second] / length + refused, T{1} / length + refused};
}

extern template class BV_TEMPLATE tWatertightRay<float>;
extern template class BV_TEMPLATE tWatertightRay<double>;

static_assert(sizeof(tWatertightRay<float>) == 36 && sizeof(tWatertightRay<double>) == 64);
static_assert(std::is_trivially_copyable_v<tWatertightRay<float>>);
static_assert(std::is_trivially_copyable_v<tWatertightRay<double>>);

} // namespace bv::maths
