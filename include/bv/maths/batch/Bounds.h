#pragma once

/// @file
/// Boxes that grow by arrays of points, points in a box, and boxes and spheres in a view. See bv/maths/Batch.h for what
/// all batch forms have in common.

#include <cstdint>
#include <span>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/batch/Transforms.h"
#include "bv/maths/tFrustum.h"

namespace bv::maths
{

/// Grows a box to hold points, too, in their order, as tVolumeAABB::Expand() does. A NaN moves nothing; of zeros of
/// both signs, the first counts. The points may not lie in the box itself.
template <typename T>
void ExpandBox(tVolumeAABB<T>& box, tVectorsIn<T> points) noexcept;

/// Finds the points in a box, as tVolumeAABB::Contains() does.
///
/// @param box the box.
/// @param exclusiveMax whether points on the upper faces are outside.
/// @param points any number.
/// @param[out] inside the bits of the points in the box.
/// @return how many there are.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t FindPointsInside(tVolumeAABB<T> const& box, bool exclusiveMax, tVectorsIn<T> points, BitSpan inside);

/// Says of each box where it lies, as tFrustum::ContainsAABB() does.
///
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void ClassifyBoxes(tFrustum<T> const& frustum, tBoxesIn<T> boxes,
                   std::span<typename tFrustum<T>::IntersectionResult> results);

/// The planes of a view, a bit each, in the order in which tFrustum has them.
enum PlaneBits : std::uint8_t
{
    PLANE_LEFT = 1,     ///< the left plane
    PLANE_RIGHT = 2,    ///< the right plane
    PLANE_BOTTOM = 4,   ///< the bottom plane
    PLANE_TOP = 8,      ///< the top plane
    PLANE_NEAR = 16,    ///< the near plane
    PLANE_FAR = 32,     ///< the far plane
    PLANES_ALL = 63,    ///< all six
    PLANES_OUTSIDE = 64 ///< no plane: the box is outside
};

/// Says of each box which planes it straddles, for a hierarchy of boxes: those in a box that is inside of a plane are
/// inside of it, too, and need not be tested again.
///
/// @param frustum the view.
/// @param planes the bits of the planes to test: PLANES_ALL for the root, and for the children of a box what this
///        function said of it. With PLANES_OUTSIDE among them, all boxes are outside.
/// @param boxes any number.
/// @param[out] results for each box, the bits of the tested planes that have a part of it behind them, 0 for one that
///        is wholly inside; or PLANES_OUTSIDE alone for one that lies wholly behind a tested plane.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void ClassifyBoxesByPlane(tFrustum<T> const& frustum, unsigned int planes, tBoxesIn<T> boxes,
                          std::span<std::uint8_t> results);

/// Finds the boxes that tFrustum::ContainsAABB() does not call OUTSIDE.
///
/// @param frustum the view.
/// @param boxes any number.
/// @param[out] visible their bits.
/// @return how many there are.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t FindVisibleBoxes(tFrustum<T> const& frustum, tBoxesIn<T> boxes, BitSpan visible);

/// Lists the boxes that tFrustum::ContainsAABB() does not call OUTSIDE.
///
/// @param frustum the view.
/// @param boxes any number.
/// @param[out] indices theirs, ascending, of 32 bits; as long as the boxes are many. What is behind the last one is not
///        written.
/// @return how many there are.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t ListVisibleBoxes(tFrustum<T> const& frustum, tBoxesIn<T> boxes, std::span<std::uint32_t> indices);

/// Says of each sphere where it lies: OUTSIDE where a plane has its centre farther behind it than the radius,
/// INTERSECTING where one has its centre nearer than the radius, or behind it, else INSIDE. A sphere that touches a
/// plane from inside is inside of it, and one that touches it from behind intersects. A NaN distance counts for
/// nothing, and a sphere whose squared radius is negative or NaN is INSIDE.
///
/// Conservative: a sphere near an edge of the view may be INTERSECTING although it lies outside.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void ClassifySpheres(tFrustum<T> const& frustum, tSpheresIn<T> spheres,
                     std::span<typename tFrustum<T>::IntersectionResult> results);

/// Finds the spheres that ClassifySpheres() does not call OUTSIDE.
///
/// @param frustum the view.
/// @param spheres any number.
/// @param[out] visible their bits.
/// @return how many there are.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t FindVisibleSpheres(tFrustum<T> const& frustum, tSpheresIn<T> spheres, BitSpan visible);

/// Lists the spheres that ClassifySpheres() does not call OUTSIDE, as ListVisibleBoxes() lists boxes.
///
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t ListVisibleSpheres(tFrustum<T> const& frustum, tSpheresIn<T> spheres, std::span<std::uint32_t> indices);

extern template BV_TEMPLATE void ExpandBox(tVolumeAABB<float>&, tVectorsIn<float>) noexcept;
extern template BV_TEMPLATE void ExpandBox(tVolumeAABB<double>&, tVectorsIn<double>) noexcept;
extern template BV_TEMPLATE std::size_t FindPointsInside(tVolumeAABB<float> const&, bool, tVectorsIn<float>, BitSpan);
extern template BV_TEMPLATE std::size_t FindPointsInside(tVolumeAABB<double> const&, bool, tVectorsIn<double>, BitSpan);
extern template BV_TEMPLATE void ClassifyBoxes(tFrustum<float> const&, tBoxesIn<float>,
                                               std::span<tFrustum<float>::IntersectionResult>);
extern template BV_TEMPLATE void ClassifyBoxes(tFrustum<double> const&, tBoxesIn<double>,
                                               std::span<tFrustum<double>::IntersectionResult>);
extern template BV_TEMPLATE void ClassifyBoxesByPlane(tFrustum<float> const&, unsigned int, tBoxesIn<float>,
                                                      std::span<std::uint8_t>);
extern template BV_TEMPLATE void ClassifyBoxesByPlane(tFrustum<double> const&, unsigned int, tBoxesIn<double>,
                                                      std::span<std::uint8_t>);
extern template BV_TEMPLATE std::size_t FindVisibleBoxes(tFrustum<float> const&, tBoxesIn<float>, BitSpan);
extern template BV_TEMPLATE std::size_t FindVisibleBoxes(tFrustum<double> const&, tBoxesIn<double>, BitSpan);
extern template BV_TEMPLATE std::size_t ListVisibleBoxes(tFrustum<float> const&, tBoxesIn<float>,
                                                         std::span<std::uint32_t>);
extern template BV_TEMPLATE std::size_t ListVisibleBoxes(tFrustum<double> const&, tBoxesIn<double>,
                                                         std::span<std::uint32_t>);
extern template BV_TEMPLATE void ClassifySpheres(tFrustum<float> const&, tSpheresIn<float>,
                                                 std::span<tFrustum<float>::IntersectionResult>);
extern template BV_TEMPLATE void ClassifySpheres(tFrustum<double> const&, tSpheresIn<double>,
                                                 std::span<tFrustum<double>::IntersectionResult>);
extern template BV_TEMPLATE std::size_t FindVisibleSpheres(tFrustum<float> const&, tSpheresIn<float>, BitSpan);
extern template BV_TEMPLATE std::size_t FindVisibleSpheres(tFrustum<double> const&, tSpheresIn<double>, BitSpan);
extern template BV_TEMPLATE std::size_t ListVisibleSpheres(tFrustum<float> const&, tSpheresIn<float>,
                                                           std::span<std::uint32_t>);
extern template BV_TEMPLATE std::size_t ListVisibleSpheres(tFrustum<double> const&, tSpheresIn<double>,
                                                           std::span<std::uint32_t>);

} // namespace bv::maths
