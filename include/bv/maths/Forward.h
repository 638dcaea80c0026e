#pragma once

/// @file
/// Forward declarations of every maths type, for headers that only name one, and short names for the usual instances.

namespace bv
{
class IRayPayloadInternal;
} // namespace bv

namespace bv::maths
{

template <typename T>
class tTuple2;
template <typename T>
class tTuple3;
template <typename T>
class tVector2;
template <typename T>
class tVector3;
template <typename T>
class tMatrix4;
template <typename T>
struct tMatrixParts;
template <typename T>
class tPixelRays;
template <typename T>
class tPreparedTransform;
template <typename T>
class tQuaternion;
template <typename T>
class tAreaAABB;
template <typename T>
class tAreaDisc;
template <typename T>
class tVolumeAABB;
template <typename T>
class tVolumeSphere;
template <typename T>
class tOrientedBox;
template <typename T>
class tPlane;
template <typename T>
class tFrustum;
template <typename T>
class tRay;
template <typename T>
class tReciprocalRay;
template <typename T>
class tWatertightRay;
template <typename T>
struct tTriangleHit;
template <typename T, typename Payload>
class tDepthRay;
template <typename T>
class tCoordinateFrame;
template <typename T>
class tDifferential2;
template <typename T>
class tDifferential3;
class Percentage;
class RNGenerator;

using Tuple2i = tTuple2<int>;                             ///< two `int`s
using Tuple2u = tTuple2<unsigned int>;                    ///< two `unsigned int`s
using Tuple2f = tTuple2<float>;                           ///< two `float`s
using Tuple2d = tTuple2<double>;                          ///< two `double`s
using Tuple3i = tTuple3<int>;                             ///< three `int`s
using Tuple3u = tTuple3<unsigned int>;                    ///< three `unsigned int`s
using Tuple3f = tTuple3<float>;                           ///< three `float`s
using Tuple3d = tTuple3<double>;                          ///< three `double`s
using Vector2f = tVector2<float>;                         ///< a vector in the plane, of `float`s
using Vector2d = tVector2<double>;                        ///< a vector in the plane, of `double`s
using Vector3f = tVector3<float>;                         ///< a vector in space, of `float`s
using Vector3d = tVector3<double>;                        ///< a vector in space, of `double`s
using Matrix4f = tMatrix4<float>;                         ///< a 4x4 matrix of `float`s
using Matrix4d = tMatrix4<double>;                        ///< a 4x4 matrix of `double`s
using MatrixPartsf = tMatrixParts<float>;                 ///< the parts of an affine matrix, as `float`
using MatrixPartsd = tMatrixParts<double>;                ///< the parts of an affine matrix, as `double`
using PixelRaysf = tPixelRays<float>;                     ///< the rays of a camera, in `float`
using PixelRaysd = tPixelRays<double>;                    ///< the rays of a camera, in `double`
using PreparedTransformf = tPreparedTransform<float>;     ///< a matrix made ready for many points, in `float`
using PreparedTransformd = tPreparedTransform<double>;    ///< a matrix made ready for many points, in `double`
using Quaternionf = tQuaternion<float>;                   ///< a quaternion of `float`s
using Quaterniond = tQuaternion<double>;                  ///< a quaternion of `double`s
using AreaAABBf = tAreaAABB<float>;                       ///< a box in the plane, in `float`
using AreaAABBd = tAreaAABB<double>;                      ///< a box in the plane, in `double`
using AreaDiscf = tAreaDisc<float>;                       ///< a disc, in `float`
using AreaDiscd = tAreaDisc<double>;                      ///< a disc, in `double`
using VolumeAABBf = tVolumeAABB<float>;                   ///< a box in space, in `float`
using VolumeAABBd = tVolumeAABB<double>;                  ///< a box in space, in `double`
using VolumeSpheref = tVolumeSphere<float>;               ///< a sphere, in `float`
using VolumeSphered = tVolumeSphere<double>;              ///< a sphere, in `double`
using OrientedBoxf = tOrientedBox<float>;                 ///< a box that may be turned, in `float`
using OrientedBoxd = tOrientedBox<double>;                ///< a box that may be turned, in `double`
using Planef = tPlane<float>;                             ///< a plane, in `float`
using Planed = tPlane<double>;                            ///< a plane, in `double`
using Frustumf = tFrustum<float>;                         ///< a view, in `float`
using Frustumd = tFrustum<double>;                        ///< a view, in `double`
using Rayf = tRay<float>;                                 ///< a ray, in `float`
using Rayd = tRay<double>;                                ///< a ray, in `double`
using ReciprocalRayf = tReciprocalRay<float>;             ///< a ray made ready for many boxes, in `float`
using ReciprocalRayd = tReciprocalRay<double>;            ///< a ray made ready for many boxes, in `double`
using WatertightRayf = tWatertightRay<float>;             ///< a ray made ready for many triangles, in `float`
using WatertightRayd = tWatertightRay<double>;            ///< a ray made ready for many triangles, in `double`
using TriangleHitf = tTriangleHit<float>;                 ///< a hit on a triangle, in `float`
using TriangleHitd = tTriangleHit<double>;                ///< a hit on a triangle, in `double`
using DepthRayf = tDepthRay<float, IRayPayloadInternal>;  ///< a ray with differentials, in `float`
using DepthRayd = tDepthRay<double, IRayPayloadInternal>; ///< a ray with differentials, in `double`
using CoordinateFramef = tCoordinateFrame<float>;         ///< an axis convention, for `float`
using CoordinateFramed = tCoordinateFrame<double>;        ///< an axis convention, for `double`
using Differential2f = tDifferential2<float>;             ///< two derivatives in the plane, in `float`
using Differential2d = tDifferential2<double>;            ///< two derivatives in the plane, in `double`
using Differential3f = tDifferential3<float>;             ///< two derivatives in space, in `float`
using Differential3d = tDifferential3<double>;            ///< two derivatives in space, in `double`

} // namespace bv::maths

namespace bv::maths::simd
{
class SSERay;
class AVXRay;
} // namespace bv::maths::simd
