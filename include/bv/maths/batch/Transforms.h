#pragma once

/// @file
/// Arrays of points, directions, boxes and matrices that are moved. See bv/maths/Batch.h for what all batch forms have
/// in common.

#include <span>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/batch/Views.h"

namespace bv::maths
{

/// @name Arguments
/// Views whose precision is that of the first argument of a batch form.
/// @{
/// Vectors to be read.
template <typename T>
using tVectorsIn = std::type_identity_t<tVectorView<T const>> const&;
/// Room for vectors.
template <typename T>
using tVectorsOut = std::type_identity_t<tVectorView<T>> const&;
/// Boxes to be read.
template <typename T>
using tBoxesIn = std::type_identity_t<tBoxView<T const>> const&;
/// Room for boxes.
template <typename T>
using tBoxesOut = std::type_identity_t<tBoxView<T>> const&;
/// Spheres to be read.
template <typename T>
using tSpheresIn = std::type_identity_t<tSphereView<T const>> const&;
/// Rays to be read.
template <typename T>
using tRaysIn = std::type_identity_t<tRayView<T const>> const&;
/// Room for numbers, wherever they lie.
template <typename T>
using tNumbersOut = std::type_identity_t<tNumberView<T>> const&;
/// Room for numbers in an array.
template <typename T>
using tSpanOut = std::type_identity_t<std::span<T>>;
/// @}

/// Transforms points, each as tVector3::Transformed() does: with a division by w.
///
/// @throws DivideByZeroException as that does, at the first point whose w is too close to 0. Those in front of it are
///         transformed by then, and no other result is written.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void TransformPoints(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results);

/// The same without stopping. A point whose w is too close to 0 is left undivided, and its bit is set: the result is
/// that of TransformPointsToClip(). Such points are ordinary input: they lie in the plane of the eye.
///
/// @param matrix the matrix.
/// @param points any number.
/// @param[out] results as many.
/// @param[out] undivided the bits; of a matrix in state DIAGONAL with such an m44, those of all points.
/// @return how many bits are set.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t TryTransformPoints(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results,
                               BitSpan undivided);

/// Transforms points by an affine matrix: each as tVector3::Transformed() does by a matrix of the same state and
/// elements, but for (0, 0, 0, 1) in the fourth row. Nothing is divided. Unless the state is IDENTITY or DIAGONAL, a
/// point with an infinite component or NaN becomes NaN in all of them.
///
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void TransformPointsAffinely(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results);

/// Transforms points to clip coordinates: the four sums that tVector3::Transformed() divides, undivided. By state, they
/// are (x, y, z, 1) for IDENTITY, (x * m11, y * m22, z * m33, m44) for DIAGONAL, and otherwise
/// m_i1 * x + m_i2 * y + m_i3 * z + m_i4 for row i.
///
/// @param matrix the matrix.
/// @param points any number.
/// @param[out] results x, y and z. With `w`, they may be the columns of an array of four numbers a point.
/// @param[out] w the fourth coordinates.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void TransformPointsToClip(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results, tNumbersOut<T> w);

/// Transforms directions, each as tVector3::TransformedAsVector() does: by the upper left 3x3 alone, and to length 1
/// where the state of the matrix is ORTHONORMAL and the direction has that length.
///
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void TransformDirections(tMatrix4<T> const& matrix, tVectorsIn<T> directions, tVectorsOut<T> results);

/// Scales vectors to length 1, each as tVector3::Normalised() does.
///
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void NormaliseVectors(tVectorView<float const> const& vectors, tVectorView<float> const& results);
/// @copydoc NormaliseVectors(tVectorView<float const> const&, tVectorView<float> const&)
BV_API void NormaliseVectors(tVectorView<double const> const& vectors, tVectorView<double> const& results);

/// Transforms boxes, each as tVolumeAABB::operator*() does: by the first three rows, whatever the state.
///
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
void TransformBoxes(tMatrix4<T> const& matrix, tBoxesIn<T> boxes, tBoxesOut<T> results);

/// Inverts matrices, each as tMatrix4::Inverted() does.
///
/// @throws MatrixException as that does, at the first matrix that is singular. Those in front of it are inverted by
///         then, and no other result is written.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void InvertMatrices(std::span<tMatrix4<float> const> matrices, std::span<tMatrix4<float>> results);
/// @copydoc InvertMatrices(std::span<tMatrix4<float> const>, std::span<tMatrix4<float>>)
BV_API void InvertMatrices(std::span<tMatrix4<double> const> matrices, std::span<tMatrix4<double>> results);

/// The matrices that turn normals where these matrices turn surfaces: each as `matrix.Inverted().Transposed()`.
///
/// @throws MatrixException as InvertMatrices() does.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void ComputeNormalMatrices(std::span<tMatrix4<float> const> matrices, std::span<tMatrix4<float>> results);
/// @copydoc ComputeNormalMatrices(std::span<tMatrix4<float> const>, std::span<tMatrix4<float>>)
BV_API void ComputeNormalMatrices(std::span<tMatrix4<double> const> matrices, std::span<tMatrix4<double>> results);

/// Products of one matrix with others on its right, each as tMatrix4::operator*() does: `left * right`.
///
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void MultiplyMatrices(tMatrix4<float> const& left, std::span<tMatrix4<float> const> rights,
                             std::span<tMatrix4<float>> results);
/// @copydoc MultiplyMatrices(tMatrix4<float> const&, std::span<tMatrix4<float> const>, std::span<tMatrix4<float>>)
BV_API void MultiplyMatrices(tMatrix4<double> const& left, std::span<tMatrix4<double> const> rights,
                             std::span<tMatrix4<double>> results);

/// Products of matrices pair by pair: `left * right`.
///
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void MultiplyMatrices(std::span<tMatrix4<float> const> lefts, std::span<tMatrix4<float> const> rights,
                             std::span<tMatrix4<float>> results);
/// @copydoc MultiplyMatrices(std::span<tMatrix4<float> const>, std::span<tMatrix4<float> const>,
/// std::span<tMatrix4<float>>)
BV_API void MultiplyMatrices(std::span<tMatrix4<double> const> lefts, std::span<tMatrix4<double> const> rights,
                             std::span<tMatrix4<double>> results);

extern template BV_TEMPLATE void TransformPoints(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>);
extern template BV_TEMPLATE void TransformPoints(tMatrix4<double> const&, tVectorsIn<double>, tVectorsOut<double>);
extern template BV_TEMPLATE std::size_t TryTransformPoints(tMatrix4<float> const&, tVectorsIn<float>,
                                                           tVectorsOut<float>, BitSpan);
extern template BV_TEMPLATE std::size_t TryTransformPoints(tMatrix4<double> const&, tVectorsIn<double>,
                                                           tVectorsOut<double>, BitSpan);
extern template BV_TEMPLATE void TransformPointsAffinely(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>);
extern template BV_TEMPLATE void TransformPointsAffinely(tMatrix4<double> const&, tVectorsIn<double>,
                                                         tVectorsOut<double>);
extern template BV_TEMPLATE void TransformPointsToClip(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>,
                                                       tNumbersOut<float>);
extern template BV_TEMPLATE void TransformPointsToClip(tMatrix4<double> const&, tVectorsIn<double>, tVectorsOut<double>,
                                                       tNumbersOut<double>);
extern template BV_TEMPLATE void TransformDirections(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>);
extern template BV_TEMPLATE void TransformDirections(tMatrix4<double> const&, tVectorsIn<double>, tVectorsOut<double>);
extern template BV_TEMPLATE void TransformBoxes(tMatrix4<float> const&, tBoxesIn<float>, tBoxesOut<float>);
extern template BV_TEMPLATE void TransformBoxes(tMatrix4<double> const&, tBoxesIn<double>, tBoxesOut<double>);

} // namespace bv::maths
