#pragma once

/// @file
/// One ray against arrays of boxes, spheres and triangles, and arrays of rays against a sphere. See bv/maths/Batch.h
/// for what all batch forms have in common.

#include <span>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/batch/Bounds.h"

namespace bv::maths
{

/// Clips an interval of a ray against boxes, each as tRay::Clip() does, from the same interval on.
///
/// @param ray the ray.
/// @param tNear,tFar the interval, as tRay::Clip() takes it.
/// @param boxes any number.
/// @param[out] entries the lower end of what is left of the interval, and infinity for a box that the ray misses.
/// @param[out] hits the bits of the boxes that it meets.
/// @return how many it meets.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t ClipBoxes(tRay<T> const& ray, std::type_identity_t<T> tNear, std::type_identity_t<T> tFar,
                      tBoxesIn<T> boxes, tSpanOut<T> entries, BitSpan hits);

/// Clips the lines of rays against a sphere, each as tRay::Clip() does. The directions must be of unit length.
///
/// @param rays any number.
/// @param sphere the sphere.
/// @param[out] entries where the lines enter the sphere, and infinity for a miss.
/// @param[out] exits where they leave it, and -infinity for a miss.
/// @param[out] hits the bits of the rays whose lines meet it.
/// @return how many do.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t ClipRays(tRaysIn<T> rays, tVolumeSphere<T> const& sphere, tSpanOut<T> entries, tSpanOut<T> exits,
                     BitSpan hits);

/// Clips the line of a ray against spheres, each as tRay::Clip() does. The direction must be of unit length.
///
/// @param ray the ray.
/// @param spheres any number.
/// @param[out] entries where the line enters the spheres, and infinity for a miss.
/// @param[out] exits where it leaves them, and -infinity for a miss.
/// @param[out] hits the bits of the spheres that it meets.
/// @return how many it meets.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t ClipSpheres(tRay<T> const& ray, tSpheresIn<T> spheres, tSpanOut<T> entries, tSpanOut<T> exits,
                        BitSpan hits);

/// Intersects a ray with triangles, each as IntersectTriangle() does, the fast way.
///
/// Corners component by component, in arrays of numbers, are the fast layout; other ones are copied.
/// @param ray the ray.
/// @param a,b,c the corners, those of one triangle at the same index.
/// @param tNear,tFar the parameters that count.
/// @param[out] t the parameters of the hits, and infinity for a triangle that the ray misses.
/// @param[out] u,v the weights of b and c, and 0 for a miss.
/// @param[out] hits the bits of the triangles that it meets.
/// @return how many it meets.
/// @throws bv::InvalidArgumentException for different lengths.
template <typename T>
std::size_t IntersectTriangles(tRay<T> const& ray, tVectorsIn<T> a, tVectorsIn<T> b, tVectorsIn<T> c,
                               std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, tSpanOut<T> t,
                               tSpanOut<T> u, tSpanOut<T> v, BitSpan hits);

/// The same with the watertight test, for a ray that is made ready.
template <typename T>
std::size_t IntersectTriangles(tWatertightRay<T> const& ray, tVectorsIn<T> a, tVectorsIn<T> b, tVectorsIn<T> c,
                               std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, tSpanOut<T> t,
                               tSpanOut<T> u, tSpanOut<T> v, BitSpan hits);

extern template BV_TEMPLATE std::size_t ClipBoxes(tRay<float> const&, float, float, tBoxesIn<float>, tSpanOut<float>,
                                                  BitSpan);
extern template BV_TEMPLATE std::size_t ClipBoxes(tRay<double> const&, double, double, tBoxesIn<double>,
                                                  tSpanOut<double>, BitSpan);
extern template BV_TEMPLATE std::size_t ClipRays(tRaysIn<float>, tVolumeSphere<float> const&, tSpanOut<float>,
                                                 tSpanOut<float>, BitSpan);
extern template BV_TEMPLATE std::size_t ClipRays(tRaysIn<double>, tVolumeSphere<double> const&, tSpanOut<double>,
                                                 tSpanOut<double>, BitSpan);
extern template BV_TEMPLATE std::size_t ClipSpheres(tRay<float> const&, tSpheresIn<float>, tSpanOut<float>,
                                                    tSpanOut<float>, BitSpan);
extern template BV_TEMPLATE std::size_t ClipSpheres(tRay<double> const&, tSpheresIn<double>, tSpanOut<double>,
                                                    tSpanOut<double>, BitSpan);
extern template BV_TEMPLATE std::size_t IntersectTriangles(tRay<float> const&, tVectorsIn<float>, tVectorsIn<float>,
                                                           tVectorsIn<float>, float, float, tSpanOut<float>,
                                                           tSpanOut<float>, tSpanOut<float>, BitSpan);
extern template BV_TEMPLATE std::size_t IntersectTriangles(tRay<double> const&, tVectorsIn<double>, tVectorsIn<double>,
                                                           tVectorsIn<double>, double, double, tSpanOut<double>,
                                                           tSpanOut<double>, tSpanOut<double>, BitSpan);
extern template BV_TEMPLATE std::size_t IntersectTriangles(tWatertightRay<float> const&, tVectorsIn<float>,
                                                           tVectorsIn<float>, tVectorsIn<float>, float, float,
                                                           tSpanOut<float>, tSpanOut<float>, tSpanOut<float>, BitSpan);
extern template BV_TEMPLATE std::size_t IntersectTriangles(tWatertightRay<double> const&, tVectorsIn<double>,
                                                           tVectorsIn<double>, tVectorsIn<double>, double, double,
                                                           tSpanOut<double>, tSpanOut<double>, tSpanOut<double>,
                                                           BitSpan);

} // namespace bv::maths
