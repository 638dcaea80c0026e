#pragma once

/// @file
/// The rays of a camera.

#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// The rays of a camera through the pixels of its picture.
///
/// Pixels are counted from the top left corner of the picture, x to the right and y down, and are one unit wide: the
/// middle of the first one is at (0.5, 0.5), the bottom right corner is the size of the picture.
///
/// Rays of a central projection start at the eye. Those of a parallel one start in the plane of the eye, z = 0 of the
/// camera, and not at the near plane. So the rays do not depend on the range of depth. Their directions have length 1.
///
/// What a step by one pixel changes is computed once; a ray costs six products and sums for its point of the picture.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tPixelRays
{
    tVector3<T> origin; ///< start at the top left corner
    tVector3<T> corner; ///< direction there, as long as the projection has it
    tVector3<T> right;  ///< what one pixel to the right changes
    tVector3<T> down;   ///< what one pixel down changes
    bool isParallel;    ///< whether it changes the start rather than the direction

public:
    /// @name Construction
    /// @{
    /// The rays of a projection, whose elements are read whatever its state. It may be any that is built here or by
    /// tMatrix4, and any other whose first two rows are (m11, 0, m13, m14) and (0, m22, m23, m24), and whose fourth is
    /// (0, 0, 0, 1), a parallel projection, or (0, 0, -1, 0) or (0, 0, 1, 0), a central one along -z or z.
    ///
    /// @param size width and height of the picture in pixels, which are not checked.
    /// @param projection from the camera to the picture.
    /// @param cameraToWorld where the camera stands, such as PlaceCamera(): an affine matrix, which is applied by its
    ///        state, as vectors are transformed.
    tPixelRays(tVector2<T> const& size, tMatrix4<T> const& projection, tMatrix4<T> const& cameraToWorld) noexcept;
    /// @}

    /// @name Queries
    /// @{
    /// The ray through a point of the picture. Points outside the picture have rays, too.
    ///
    /// With c, r and d for what belongs to the top left corner and to the steps, (c + r * x) + d * y is the start of a
    /// parallel ray or the direction of a central one, which is then normalised.
    [[nodiscard, gnu::always_inline]] inline tRay<T> operator()(tVector2<T> const& pixel) const noexcept;
    /// What one pixel to the right adds to the start of a parallel ray, or to the direction of a central one before
    /// that is normalised.
    [[nodiscard]] tVector3<T> const& GetStepRight() const noexcept { return right; }
    /// What one pixel down adds.
    [[nodiscard]] tVector3<T> const& GetStepDown() const noexcept { return down; }
    /// The direction of the ray through a point of the picture before it is normalised. For a central projection of the
    /// kind that is built here, it reaches from the eye to the plane one unit in front of it.
    [[nodiscard, gnu::always_inline]] inline tVector3<T> GetDirection(tVector2<T> const& pixel) const noexcept;
    /// @}

private:
    [[nodiscard, gnu::always_inline]] tVector3<T> Step(tVector3<T> const& start,
                                                       tVector2<T> const& pixel) const noexcept
    {
        return start + right * pixel.x + down * pixel.y;
    }
};

template <typename T>
inline tVector3<T> tPixelRays<T>::GetDirection(tVector2<T> const& pixel) const noexcept
{
    return isParallel ? corner : Step(corner, pixel);
}

template <typename T>
inline tRay<T> tPixelRays<T>::operator()(tVector2<T> const& pixel) const noexcept
{
    if (isParallel)
        return {Step(origin, pixel), corner};
    return {origin, Step(corner, pixel).Normalised()};
}

extern template class BV_TEMPLATE tPixelRays<float>;
extern template class BV_TEMPLATE tPixelRays<double>;

static_assert(std::is_trivially_copyable_v<tPixelRays<float>> && std::is_trivially_copyable_v<tPixelRays<double>>);

} // namespace bv::maths
