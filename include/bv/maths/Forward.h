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

using Tuple2i = tTuple2<int>;
using Tuple2u = tTuple2<unsigned int>;
using Tuple2f = tTuple2<float>;
using Tuple2d = tTuple2<double>;
using Tuple3i = tTuple3<int>;
using Tuple3u = tTuple3<unsigned int>;
using Tuple3f = tTuple3<float>;
using Tuple3d = tTuple3<double>;
using Vector2f = tVector2<float>;
using Vector2d = tVector2<double>;
using Vector3f = tVector3<float>;
using Vector3d = tVector3<double>;
using Matrix4f = tMatrix4<float>;
using Matrix4d = tMatrix4<double>;
using MatrixPartsf = tMatrixParts<float>;
using MatrixPartsd = tMatrixParts<double>;
using PixelRaysf = tPixelRays<float>;
using PixelRaysd = tPixelRays<double>;
using PreparedTransformf = tPreparedTransform<float>;
using PreparedTransformd = tPreparedTransform<double>;
using Quaternionf = tQuaternion<float>;
using Quaterniond = tQuaternion<double>;
using AreaAABBf = tAreaAABB<float>;
using AreaAABBd = tAreaAABB<double>;
using AreaDiscf = tAreaDisc<float>;
using AreaDiscd = tAreaDisc<double>;
using VolumeAABBf = tVolumeAABB<float>;
using VolumeAABBd = tVolumeAABB<double>;
using VolumeSpheref = tVolumeSphere<float>;
using VolumeSphered = tVolumeSphere<double>;
using OrientedBoxf = tOrientedBox<float>;
using OrientedBoxd = tOrientedBox<double>;
using Planef = tPlane<float>;
using Planed = tPlane<double>;
using Frustumf = tFrustum<float>;
using Frustumd = tFrustum<double>;
using Rayf = tRay<float>;
using Rayd = tRay<double>;
using ReciprocalRayf = tReciprocalRay<float>;
using ReciprocalRayd = tReciprocalRay<double>;
using WatertightRayf = tWatertightRay<float>;
using WatertightRayd = tWatertightRay<double>;
using TriangleHitf = tTriangleHit<float>;
using TriangleHitd = tTriangleHit<double>;
using DepthRayf = tDepthRay<float, IRayPayloadInternal>;
using DepthRayd = tDepthRay<double, IRayPayloadInternal>;
using CoordinateFramef = tCoordinateFrame<float>;
using CoordinateFramed = tCoordinateFrame<double>;
using Differential2f = tDifferential2<float>;
using Differential2d = tDifferential2<double>;
using Differential3f = tDifferential3<float>;
using Differential3d = tDifferential3<double>;

} // namespace bv::maths

namespace bv::maths::simd
{
class SSERay;
class AVXRay;
} // namespace bv::maths::simd
