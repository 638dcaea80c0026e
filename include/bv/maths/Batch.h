#pragma once

/// @file
/// Operations on arrays: element by element, they give the bits of the single forms, at the width of the processor's
/// vectors.
///
/// The processor is asked once, by the first call: the same library runs on every x86-64 processor and uses AVX2 or
/// AVX-512 on those that have it. Which of them it is makes no difference to a result, but for the sign and the payload
/// of NaN.
///
/// The same for all of these functions:
/// - A span of results is as long as that of the arguments; any other length is an InvalidArgumentException, and
///   nothing is written. Empty spans are fine.
/// - Results of the same type as the arguments may overwrite them: the same span may be both. Any other overlap of two
///   spans is an error that debug builds of the library stop at, through Assert(), and that other builds do not look
///   for.
/// - Addresses need the alignment of their element types and no more.
/// - Nothing is allocated or kept.
///
/// The functions that have the name of a single form are overloads of it.

#include <span>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/tFrustum.h"

namespace bv::maths
{

/// Transforms points, each as tVector3::Transformed() does: with a division by w.
///
/// @throws DivideByZeroException as that does, at the first point whose w is too close to 0. Those in front of it are
///         transformed by then, and no other result is written.
/// @throws bv::InvalidArgumentException for spans of different lengths.
template <typename T>
void TransformPoints(tMatrix4<T> const& matrix, std::type_identity_t<std::span<tVector3<T> const>> points,
                     std::type_identity_t<std::span<tVector3<T>>> results);

/// Transforms directions, each as tVector3::TransformedAsVector() does: by the upper left 3x3 alone, and to length 1
/// where the state of the matrix is ORTHONORMAL and the direction has that length.
///
/// @throws bv::InvalidArgumentException for spans of different lengths.
template <typename T>
void TransformDirections(tMatrix4<T> const& matrix, std::type_identity_t<std::span<tVector3<T> const>> directions,
                         std::type_identity_t<std::span<tVector3<T>>> results);

/// Grows a box to hold points, too, in their order, as tVolumeAABB::Expand() does. A NaN moves nothing; of zeros of
/// both signs, the first counts. The points may not lie in the box itself.
template <typename T>
void Expand(tVolumeAABB<T>& box, std::type_identity_t<std::span<tVector3<T> const>> points) noexcept;

/// Says of each box where it lies, as tFrustum::ContainsAABB() does.
///
/// @throws bv::InvalidArgumentException for spans of different lengths.
template <typename T>
void ClassifyAABBs(tFrustum<T> const& frustum, std::type_identity_t<std::span<tVolumeAABB<T> const>> boxes,
                   std::span<typename tFrustum<T>::IntersectionResult> results);

/// Noise1() at each coordinate.
/// @throws bv::InvalidArgumentException for spans of different lengths.
BV_API void Noise1(std::span<float const> coordinates, std::span<float> results);

/// Noise2() at each point.
/// @throws bv::InvalidArgumentException for spans of different lengths.
BV_API void Noise2(std::span<tVector2<float> const> points, std::span<float> results);

/// Noise3() at each point.
/// @throws bv::InvalidArgumentException for spans of different lengths.
BV_API void Noise3(std::span<tVector3<float> const> points, std::span<float> results);

/// Turbulence1() at each coordinate, with the same number of octaves.
/// @throws bv::InvalidArgumentException for spans of different lengths.
BV_API void Turbulence1(std::span<float const> coordinates, unsigned int octaves, std::span<float> results);

/// Turbulence2() at each point, with the same number of octaves.
/// @throws bv::InvalidArgumentException for spans of different lengths.
BV_API void Turbulence2(std::span<tVector2<float> const> points, unsigned int octaves, std::span<float> results);

/// Turbulence3() at each point, with the same number of octaves.
/// @throws bv::InvalidArgumentException for spans of different lengths.
BV_API void Turbulence3(std::span<tVector3<float> const> points, unsigned int octaves, std::span<float> results);

/// Fills a buffer with the next draws of a generator, in their order, each as RNGenerator::GetFloat() gives it. The
/// generator goes on behind them.
BV_API void GetFloats(RNGenerator& generator, std::span<float> results) noexcept;

extern template BV_TEMPLATE void TransformPoints(tMatrix4<float> const&, std::span<tVector3<float> const>,
                                                 std::span<tVector3<float>>);
extern template BV_TEMPLATE void TransformPoints(tMatrix4<double> const&, std::span<tVector3<double> const>,
                                                 std::span<tVector3<double>>);
extern template BV_TEMPLATE void TransformDirections(tMatrix4<float> const&, std::span<tVector3<float> const>,
                                                     std::span<tVector3<float>>);
extern template BV_TEMPLATE void TransformDirections(tMatrix4<double> const&, std::span<tVector3<double> const>,
                                                     std::span<tVector3<double>>);
extern template BV_TEMPLATE void Expand(tVolumeAABB<float>&, std::span<tVector3<float> const>) noexcept;
extern template BV_TEMPLATE void Expand(tVolumeAABB<double>&, std::span<tVector3<double> const>) noexcept;
extern template BV_TEMPLATE void ClassifyAABBs(tFrustum<float> const&, std::span<tVolumeAABB<float> const>,
                                               std::span<tFrustum<float>::IntersectionResult>);
extern template BV_TEMPLATE void ClassifyAABBs(tFrustum<double> const&, std::span<tVolumeAABB<double> const>,
                                               std::span<tFrustum<double>::IntersectionResult>);

} // namespace bv::maths
