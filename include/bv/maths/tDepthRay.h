#pragma once

/// @file
/// The ray that a renderer traces.

#include <cstddef>
#include <type_traits>

#include "bv/Export.h"
#include "bv/IRayPayloadInternal.h"
#include "bv/maths/Forward.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeSphere.h"

namespace bv::maths
{

/// Ray that knows how it changes across the image, with a handle for the data of whoever traces it. Igehy, "Tracing Ray
/// Differentials", 1999.
///
/// @tparam T `float` or `double`.
/// @tparam Payload what the handle points to. The library holds the instances for `bv::IRayPayloadInternal`.
template <typename T, typename Payload>
class tDepthRay : public tRay<T>
{
public:
    T tMin;                   ///< kept for the caller, say for the lower end of the ray; read by nothing
    T tMax;                   ///< kept for the caller, say for the upper end of the ray; read by nothing
    tVector3<T> dOriginDu;    ///< derivative of the origin along the first image direction
    tVector3<T> dOriginDv;    ///< derivative of the origin along the second image direction
    tVector3<T> dDirectionDu; ///< derivative of the direction along the first image direction
    tVector3<T> dDirectionDv; ///< derivative of the direction along the second image direction
    Payload* payload;         ///< the caller's data; never dereferenced and not owned

    /// @name Construction
    /// @{
    /// Zero in every component, and no payload.
    constexpr tDepthRay() noexcept : tMin{}, tMax{}, payload{} {}
    /// The ray from a point along a direction; everything else is zero.
    constexpr tDepthRay(tVector3<T> const& start, tVector3<T> const& along) noexcept
        : tRay<T>(start, along), tMin{}, tMax{}, payload{}
    {
    }
    /// @}

    /// @name Queries
    /// @{
    /// Clips the ray's line against a sphere, as Clip() does, and differentiates both parameters across the image. The
    /// sphere counts as constant.
    ///
    /// @param sphere what to clip against.
    /// @param[out] tNear parameter where the line enters the sphere.
    /// @param[out] tFar parameter where the line leaves the sphere.
    /// @param[out] dNear derivatives of tNear along the first and second image direction. Infinite for a ray that
    ///             grazes the sphere, where the parameters have no derivative; NaN if its differentials are zero, too.
    /// @param[out] dFar the same for tFar.
    /// @return whether the line meets the sphere. If it does not, nothing is written.
    [[nodiscard, gnu::always_inline]] inline bool ClipDiff(tVolumeSphere<T> const& sphere, T& tNear, T& tFar,
                                                           tVector2<T>& dNear, tVector2<T>& dFar) const noexcept;
    /// @}
};

template <typename T, typename Payload>
inline bool tDepthRay<T, Payload>::ClipDiff(tVolumeSphere<T> const& sphere, T& tNear, T& tFar, tVector2<T>& dNear,
                                            tVector2<T>& dFar) const noexcept
{
    tVector3<T> fromCentre;
    T b{}, s{}; // GCC does not see that nothing is read where nothing is set
    if (!this->FindChord(sphere, fromCentre, b, s))
        return false;

    T const dbDu = fromCentre.Dot(dDirectionDu) + this->direction.Dot(dOriginDu);
    T const dbDv = fromCentre.Dot(dDirectionDv) + this->direction.Dot(dOriginDv);
    T const reciprocal = T{1} / (s + s);
    T const dsDu = (T{2} * b * dbDu - T{2} * fromCentre.Dot(dOriginDu)) * reciprocal;
    T const dsDv = (T{2} * b * dbDv - T{2} * fromCentre.Dot(dOriginDv)) * reciprocal;
    tNear = -b - s;
    tFar = s - b;
    dNear = {-dbDu - dsDu, -dbDv - dsDv};
    dFar = {-dbDu + dsDu, -dbDv + dsDv};
    return true;
}

extern template class BV_TEMPLATE tDepthRay<float, IRayPayloadInternal>;
extern template class BV_TEMPLATE tDepthRay<double, IRayPayloadInternal>;

namespace detail
{

/// Whether the fields of a ray lie in their order, dense, from the first byte on.
template <typename T>
constexpr bool HasDepthRayLayout() noexcept
{
    using Ray = tDepthRay<T, IRayPayloadInternal>;
    constexpr std::size_t DENSE = 20 * sizeof(T) + sizeof(void*); // and up to a multiple of the alignment
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof" // fields stand in two classes, which GCC and Clang lay out in turn
    return offsetof(Ray, origin) == 0 && offsetof(Ray, direction) == 3 * sizeof(T) &&
           offsetof(Ray, tMin) == 6 * sizeof(T) && offsetof(Ray, tMax) == 7 * sizeof(T) &&
           offsetof(Ray, dOriginDu) == 8 * sizeof(T) && offsetof(Ray, dOriginDv) == 11 * sizeof(T) &&
           offsetof(Ray, dDirectionDu) == 14 * sizeof(T) && offsetof(Ray, dDirectionDv) == 17 * sizeof(T) &&
           offsetof(Ray, payload) == 20 * sizeof(T) &&
           sizeof(Ray) == (DENSE + alignof(Ray) - 1) / alignof(Ray) * alignof(Ray);
#pragma GCC diagnostic pop
}

} // namespace detail

static_assert(detail::HasDepthRayLayout<float>() && detail::HasDepthRayLayout<double>());
static_assert(std::is_trivially_copyable_v<DepthRayf> && std::is_trivially_copyable_v<DepthRayd>);

} // namespace bv::maths
