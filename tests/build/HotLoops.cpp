// The inner loops of a renderer, one function for each group of operations. None may leave its loop for a call:
// no_calls.py looks at the object file.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "bv/maths/Bounds.h"
#include "bv/maths/Componentwise.h"
#include "bv/maths/Direction.h"
#include "bv/maths/Intersect.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/Sampling.h"
#include "bv/maths/View.h"
#include "bv/maths/Visibility.h"
#include "bv/maths/simd/PacketTriangles.h"
#include "bv/maths/simd/SSERay.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tDifferential2.h"
#include "bv/maths/tDifferential3.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tPreparedTransform.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tReciprocalRay.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

namespace loops
{

using namespace bv::maths;

template <typename T>
T Vectors(std::span<tVector3<T> const> a, std::span<tVector3<T> const> b)
{
    tVector3<T> sum;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += (a[i] + b[i] * T{2} - a[i] / T{3}).Cross(-b[i]) * a[i].Dot(b[i]) * a[i];
    return sum.LengthSquared();
}

template <typename T>
T Mixed(std::span<tVector3<T> const> a, std::span<tVector3<T> const> b, std::span<T const> shares)
{
    tVector3<T> sum;
    for (std::size_t i = 0; i < a.size(); ++i)
    {
        tVector3<T> const within = Clamp(Max(Min(a[i], b[i]), Abs(b[i])), 0, 1);
        tVector3<T> const mixed = Lerp(Floor(within), Ceil(within), shares[i]);
        sum += Clamp(Lerp(mixed, b[i], a[i]), a[i], b[i]) * GetMinComponent(a[i]) * GetMaxComponent(b[i]);
        sum[GetMaxAxis(a[i])] += Lerp(a[i].x, b[i].x, shares[i]) + a[i][GetMinAxis(b[i])];
    }
    return sum.LengthSquared();
}

template <typename T>
T Bounced(std::span<tVector3<T> const> directions, std::span<tVector3<T> const> normals, T ratio)
{
    tVector3<T> sum;
    for (std::size_t i = 0; i < directions.size(); ++i)
    {
        tVector3<T> const& direction = directions[i];
        tVector3<T> const normal = FaceForward(normals[i], direction);
        tVector3<T> first = Reject(direction, normal);
        tVector3<T> second = Project(direction, normal);
        if (Orthonormalise(first, second))
            sum += second;
        EvaluateOrthonormalBasis(normal, first, second);
        sum += Refract(direction, normal, ratio).value_or(Reflect(direction, normal)) + first +
               second * (Distance(direction, normal) + DistanceSquared(direction, normal));
    }
    return sum.LengthSquared();
}

template <typename T>
std::size_t Equal(std::span<T const> a, std::span<T const> b)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        count += IsEqual(a[i], b[i]) ? 1U : 0U;
    return count;
}

template <typename T>
T Boxes(std::span<tVolumeAABB<T>> boxes, std::span<tVector3<T> const> points, tVolumeSphere<T> const& sphere)
{
    T sum{};
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        boxes[i].Expand(points[i]);
        boxes[i].Expand(boxes[0]);
        if (boxes[i].Contains(points[i], true) && boxes[i].Overlaps(sphere))
            sum += boxes[i].Distance(points[i]) + boxes[i].DistanceSquared(points[i]) + boxes[i].GetCentre().x +
                   boxes[i].GetDiagonal().y;
    }
    return sum;
}

template <typename T>
T Bounds(std::span<tVolumeAABB<T>> boxes, std::span<tVector3<T> const> points)
{
    T sum{};
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        tVolumeAABB<T> const both = Union(Union(boxes[i], boxes[0]), points[i]);
        boxes[i] = Intersection(both, boxes[0]);
        if (Overlaps(both, boxes[0]) && !Contains(both, boxes[0]))
            sum += GetSurfaceArea(both) + GetClosestPoint(both, points[i]).x + GetCorner(both, 5).y;
    }
    return sum;
}

template <typename T>
T Areas(std::span<tAreaAABB<T>> boxes, std::span<tVector2<T> const> points)
{
    T sum{};
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        tAreaAABB<T> const both = Union(Union(boxes[i], boxes[0]), points[i]);
        boxes[i] = Intersection(both, boxes[0]);
        if (Overlaps(both, boxes[0]) && !Contains(both, boxes[0]))
            sum += GetPerimeter(both) + GetClosestPoint(both, points[i]).x + GetCorner(both, 2).y;
    }
    return sum;
}

template <typename T>
void Around(std::span<tVolumeSphere<T> const> spheres, std::span<tVolumeAABB<T>> boxes)
{
    for (std::size_t i = 0; i < spheres.size(); ++i)
        boxes[i] = GetBound(spheres[i]);
}

template <typename T>
std::size_t Turned(std::span<tOrientedBox<T> const> boxes, std::span<tVector3<T> const> points,
                   std::span<tVolumeAABB<T>> bounds)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        count += boxes[i].Contains(points[i]) ? 1U : 0U;
        bounds[i] = boxes[i].GetBound();
        bounds[i].Expand(boxes[i].GetCorner(7));
    }
    return count;
}

template <typename T>
std::size_t Seen(std::span<tVolumeSphere<T> const> spheres, std::span<tOrientedBox<T> const> boxes,
                 tFrustum<T> const& view)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < spheres.size(); ++i)
        count += Classify(view, spheres[i]) + Classify(view, boxes[i]) + Classify(view, spheres[i].GetCentre());
    return count;
}

template <typename T>
std::size_t Spheres(std::span<tVolumeSphere<T> const> spheres, std::span<tVector3<T> const> points,
                    tVolumeAABB<T> const& box)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < spheres.size(); ++i)
        count +=
            spheres[i].Contains(points[i]) && spheres[i].Overlaps(box) && spheres[i].Overlaps(spheres[0]) ? 1U : 0U;
    return count;
}

template <typename T>
T Radii(std::span<tVolumeSphere<T> const> spheres)
{
    T sum{};
    for (tVolumeSphere<T> const& sphere : spheres)
        sum += sphere.GetRadius();
    return sum;
}

template <typename T>
std::size_t EqualShapes(std::span<tVolumeSphere<T> const> spheres, std::span<tVolumeAABB<T> const> boxes,
                        std::span<tVector3<T> const> points)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < spheres.size(); ++i)
    {
        count += spheres[i] == spheres[0] ? 1U : 0U;
        count += boxes[i] == boxes[0] ? 1U : 0U;
        count += points[i] == points[0] ? 1U : 0U;
    }
    return count;
}

template <typename T>
void MoveBoxes(std::span<tVolumeAABB<T>> boxes, tMatrix4<T> const& matrix)
{
    for (tVolumeAABB<T>& box : boxes)
        box *= matrix;
}

template <typename T>
T Clip(std::span<tRay<T> const> rays, tVolumeAABB<T> const& box)
{
    T sum{};
    for (tRay<T> const& ray : rays)
    {
        T tNear{0};
        T tFar{1000};
        if (ray.Clip(box, tNear, tFar))
            sum += tNear;
    }
    return sum;
}

template <typename T>
T ClipSpheres(std::span<tRay<T> const> rays, tVolumeSphere<T> const& sphere)
{
    T sum{};
    for (tRay<T> const& ray : rays)
    {
        T tNear{};
        T tFar{};
        if (ray.Clip(sphere, tNear, tFar))
            sum += tNear + tFar;
    }
    return sum;
}

template <typename T>
T Differentials(std::span<tDepthRay<T, bv::IRayPayloadInternal> const> rays, tVolumeSphere<T> const& sphere)
{
    T sum{};
    for (tDepthRay<T, bv::IRayPayloadInternal> const& ray : rays)
    {
        T tNear{};
        T tFar{};
        tVector2<T> dNear;
        tVector2<T> dFar;
        if (ray.ClipDiff(sphere, tNear, tFar, dNear, dFar))
            sum += tNear + tFar + dNear.x + dNear.y + dFar.x + dFar.y;
    }
    return sum;
}

template <typename T>
T Footprints(std::span<tDifferential3<T>> differentials, tMatrix4<T> const& matrix, tVector3<T> const& position)
{
    T sum{};
    for (tDifferential3<T>& differential : differentials)
    {
        if (differential.IsNull() || differential.IsInfinite())
            continue;
        differential.TransformAsVector(matrix);
        differential.Transform(matrix, position, T{2});
        differential += -differential * T{3} - differential * position;
        differential /= position;
        sum += differential[tDifferential3<T>::DIFF_V].x;
    }
    return sum;
}

template <typename T>
std::size_t NullFootprints(std::span<tDifferential2<T> const> differentials)
{
    std::size_t count = 0;
    for (tDifferential2<T> const& differential : differentials)
        count += differential.IsNull() ? 1U : 0U;
    return count;
}

template <typename T>
std::size_t Visible(std::span<tVolumeAABB<T> const> boxes, tFrustum<T> const& view)
{
    std::size_t count = 0;
    for (tVolumeAABB<T> const& box : boxes)
        count += view.ContainsAABB(box) != tFrustum<T>::OUTSIDE ? 1U : 0U;
    return count;
}

template <typename T>
T Intersections(std::span<tRay<T> const> rays, tPlane<T> const& plane)
{
    T sum{};
    for (tRay<T> const& ray : rays)
        sum += plane.GetIntersection(ray.origin, ray.direction).x;
    return sum;
}

template <typename T>
T Distances(std::span<tVector3<T> const> points, tPlane<T> const& plane)
{
    T sum{};
    for (tVector3<T> const& point : points)
        sum += plane.GetDistance(point);
    return sum;
}

template <typename T>
void Transforms(std::span<tVector3<T>> points, tMatrix4<T> const& matrix)
{
    for (tVector3<T>& point : points)
        point.Transform(matrix);
}

template <typename T>
void Prepared(std::span<tVector3<T>> points, std::span<tVector3<T>> directions, tMatrix4<T> const& matrix)
{
    tPreparedTransform<T> const map(matrix);
    for (tVector3<T>& point : points)
        point = map(point);
    for (tVector3<T>& direction : directions)
        direction = map.Direction(direction);
}

template <typename T>
void Directions(std::span<tVector3<T>> directions, tMatrix4<T> const& matrix)
{
    for (tVector3<T>& direction : directions)
        direction.TransformAsVector(matrix);
}

template <typename T>
T Quaternions(std::span<tQuaternion<T>> turns, std::span<tVector3<T>> directions, tQuaternion<T> const& turn)
{
    T sum{};
    for (std::size_t i = 0; i < turns.size(); ++i)
    {
        directions[i] = turns[i].Rotate(directions[i]);
        sum +=
            turns[i].GetMatrix()[1] + turns[i].Inverted().Dot(turn) + (turn + turns[i] / T{2} - turn * T{3}).Length();
        turns[i] *= turn.Conjugated();
        turns[i].Normalise();
        if (turns[i] == turn || turns[i].IsSameRotation(turns[0]))
            turns[i] = Nlerp(turns[i], turn, sum);
    }
    return sum;
}

template <typename T>
T Components(std::span<tVector3<T>> points, std::span<tVolumeAABB<T> const> boxes, std::size_t axis)
{
    T sum{};
    for (std::size_t i = 0; i < points.size(); ++i)
    {
        points[i][axis] += boxes[i].GetMin()[axis];
        sum += points[i][axis];
    }
    return sum;
}

template <typename T>
T Elements(tMatrix4<T>& matrix)
{
    T sum{};
    for (std::size_t i = 0; i < tMatrix4<T>::SIZE; ++i)
    {
        matrix(i) = matrix[i] * T{2};
        sum += matrix[i];
    }
    return sum;
}

template <typename T>
void RaysOfPixels(std::span<tVector2<T> const> pixels, std::span<tRay<T>> rays, tPixelRays<T> const& camera)
{
    for (std::size_t i = 0; i < pixels.size(); ++i)
        rays[i] = camera(pixels[i]);
}

template <typename T>
T PixelsOfPoints(std::span<tVector3<T> const> points, tMatrix4<T> const& matrix, tMatrix4<T> const& projection,
                 tVector2<T> const& size)
{
    T sum{};
    for (tVector3<T> const& point : points)
        if (auto const pixel = GetPixel(point, matrix, size))
            sum += pixel->x + pixel->y + GetViewDistance(pixel->z, projection);
    return sum;
}

float Draws(RNGenerator& generator, std::size_t count)
{
    float sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += generator.GetFloat() + static_cast<float>(generator.GetInteger() & 1U);
    return sum;
}

template <typename T>
T Samples(std::span<tVector3<T> const> normals, std::uint32_t pixel)
{
    T sum{};
    for (std::uint32_t i = 0; i < normals.size(); ++i)
    {
        tVector3<T> const direction = SquareToCosineHemisphere(GetOwenSobolPoint<T>(i, pixel), normals[i]);
        sum += direction.x / GetCosineHemisphereDensity(direction, normals[i]);
        tVector3<T> const light = SquareToCone(GetR2Point<T>(i), normals[i], 0.75);
        sum += light.y / GetConeDensity(light, normals[i], 0.75);
        sum += SquareToDisc(GetSobolPoint<T>(i)).x + SquareToTriangle(GetHaltonPoint<T>(i)).y;
        sum += SquareToSphere(ShiftAround(GetR2Point<T>(i), tVector2<T>(T{0.5}, T{0.25}))).z;
    }
    return sum;
}

/// The signs of four lanes as bits, which x86 has an instruction for.
int GetSigns(simd::SSERay::Vector const& lanes)
{
#if defined __x86_64__
    return _mm_movemask_ps(lanes);
#else
    auto const bits = std::bit_cast<std::array<std::uint32_t, 4>>(lanes);
    return static_cast<int>(bits[0] >> 31 | bits[1] >> 31 << 1 | bits[2] >> 31 << 2 | bits[3] >> 31 << 3);
#endif
}

int Packets(simd::SSERay& packet, std::span<tVolumeAABB<float> const> boxes)
{
    int mask = 0;
    for (tVolumeAABB<float> const& box : boxes)
    {
        simd::SSERay::Vector tNear{};
        simd::SSERay::Vector tFar{1000, 1000, 1000, 1000};
        mask |= GetSigns(packet.Clip(box, tNear, tFar));
    }
    return mask;
}

void MovePackets(std::span<simd::SSERay> packets, tDepthRay<float, bv::IRayPayloadInternal> const* rays,
                 tMatrix4<float> const& matrix)
{
    for (simd::SSERay& packet : packets)
    {
        packet.Initialise(rays);
        packet.Transform(matrix);
    }
}

template <typename T>
T Meetings(std::span<tVector3<T> const> corners, tRay<T> const& ray)
{
    tWatertightRay<T> const prepared(ray);
    tTriangleHit<T> hit{0, 0, 0};
    T nearest = 1000;
    T sum{};
    for (std::size_t i = 2; i < corners.size(); ++i)
    {
        if (IntersectTriangle(prepared, corners[i - 2], corners[i - 1], corners[i], 0, nearest, hit))
            nearest = hit.t;
        if (IntersectTriangle(ray, corners[i - 2], corners[i - 1], corners[i], 0, 1000, hit))
            sum += hit.u + hit.v;
        T u{}, v{};
        if (GetBarycentric(ray.origin, corners[i - 2], corners[i - 1], corners[i], u, v))
            sum += u + v;
    }
    return sum + nearest;
}

template <typename T>
T MeetShapes(std::span<tPlane<T> const> planes, std::span<tOrientedBox<T> const> turned,
             std::span<tVolumeAABB<T> const> boxes, tMatrix4<T> const& matrix, tRay<T> ray)
{
    T sum{};
    for (std::size_t i = 0; i < planes.size(); ++i)
    {
        ray = TransformRay(ray, matrix);
        T t{}, tNear{}, tFar{100};
        if (IntersectPlane(ray, planes[i], 0, 100, t) ||
            IntersectDisc(ray, turned[i].GetCentre(), planes[i].GetNormal(), 2, 0, 100, t))
            sum += t;
        if (ClipOrientedBox(ray, turned[i], tNear, tFar) || tReciprocalRay<T>(ray).Clip(boxes[i], tNear, tFar))
            sum += tNear;
    }
    return sum;
}

int PacketMeetings(simd::SSERay const& packet, std::span<tVector3<float> const> corners)
{
    simd::tWatertightPacket<simd::SSERay> const prepared(packet);
    simd::tPacketHits<simd::SSERay> hits{};
    simd::SSERay::Vector const tNear{};
    int mask = 0;
    for (std::size_t i = 2; i < corners.size(); ++i)
        mask |= GetSigns(IntersectTriangle(packet, corners[i - 2], corners[i - 1], corners[i], tNear, hits.t, hits)) |
                GetSigns(IntersectTriangle(prepared, corners[i - 2], corners[i - 1], corners[i], tNear, hits.t, hits));
    return mask;
}

template float Meetings(std::span<tVector3<float> const>, tRay<float> const&);
template double Meetings(std::span<tVector3<double> const>, tRay<double> const&);
template float MeetShapes(std::span<tPlane<float> const>, std::span<tOrientedBox<float> const>,
                          std::span<tVolumeAABB<float> const>, tMatrix4<float> const&, tRay<float>);
template double MeetShapes(std::span<tPlane<double> const>, std::span<tOrientedBox<double> const>,
                           std::span<tVolumeAABB<double> const>, tMatrix4<double> const&, tRay<double>);
template float Vectors(std::span<tVector3<float> const>, std::span<tVector3<float> const>);
template double Vectors(std::span<tVector3<double> const>, std::span<tVector3<double> const>);
template float Mixed(std::span<tVector3<float> const>, std::span<tVector3<float> const>, std::span<float const>);
template double Mixed(std::span<tVector3<double> const>, std::span<tVector3<double> const>, std::span<double const>);
template float Bounced(std::span<tVector3<float> const>, std::span<tVector3<float> const>, float);
template double Bounced(std::span<tVector3<double> const>, std::span<tVector3<double> const>, double);
template std::size_t Equal(std::span<float const>, std::span<float const>);
template std::size_t Equal(std::span<double const>, std::span<double const>);
template float Boxes(std::span<tVolumeAABB<float>>, std::span<tVector3<float> const>, tVolumeSphere<float> const&);
template double Boxes(std::span<tVolumeAABB<double>>, std::span<tVector3<double> const>, tVolumeSphere<double> const&);
template float Bounds(std::span<tVolumeAABB<float>>, std::span<tVector3<float> const>);
template float Areas(std::span<tAreaAABB<float>>, std::span<tVector2<float> const>);
template void Around(std::span<tVolumeSphere<float> const>, std::span<tVolumeAABB<float>>);
template std::size_t Turned(std::span<tOrientedBox<float> const>, std::span<tVector3<float> const>,
                            std::span<tVolumeAABB<float>>);
template std::size_t Seen(std::span<tVolumeSphere<float> const>, std::span<tOrientedBox<float> const>,
                          tFrustum<float> const&);
template double Bounds(std::span<tVolumeAABB<double>>, std::span<tVector3<double> const>);
template double Areas(std::span<tAreaAABB<double>>, std::span<tVector2<double> const>);
template void Around(std::span<tVolumeSphere<double> const>, std::span<tVolumeAABB<double>>);
template std::size_t Turned(std::span<tOrientedBox<double> const>, std::span<tVector3<double> const>,
                            std::span<tVolumeAABB<double>>);
template std::size_t Seen(std::span<tVolumeSphere<double> const>, std::span<tOrientedBox<double> const>,
                          tFrustum<double> const&);
template std::size_t Spheres(std::span<tVolumeSphere<float> const>, std::span<tVector3<float> const>,
                             tVolumeAABB<float> const&);
template std::size_t Spheres(std::span<tVolumeSphere<double> const>, std::span<tVector3<double> const>,
                             tVolumeAABB<double> const&);
template float Radii(std::span<tVolumeSphere<float> const>);
template double Radii(std::span<tVolumeSphere<double> const>);
template std::size_t EqualShapes(std::span<tVolumeSphere<float> const>, std::span<tVolumeAABB<float> const>,
                                 std::span<tVector3<float> const>);
template std::size_t EqualShapes(std::span<tVolumeSphere<double> const>, std::span<tVolumeAABB<double> const>,
                                 std::span<tVector3<double> const>);
template void MoveBoxes(std::span<tVolumeAABB<float>>, tMatrix4<float> const&);
template void MoveBoxes(std::span<tVolumeAABB<double>>, tMatrix4<double> const&);
template float Footprints(std::span<tDifferential3<float>>, tMatrix4<float> const&, tVector3<float> const&);
template double Footprints(std::span<tDifferential3<double>>, tMatrix4<double> const&, tVector3<double> const&);
template std::size_t NullFootprints(std::span<tDifferential2<float> const>);
template std::size_t NullFootprints(std::span<tDifferential2<double> const>);
template float Clip(std::span<tRay<float> const>, tVolumeAABB<float> const&);
template double Clip(std::span<tRay<double> const>, tVolumeAABB<double> const&);
template float ClipSpheres(std::span<tRay<float> const>, tVolumeSphere<float> const&);
template double ClipSpheres(std::span<tRay<double> const>, tVolumeSphere<double> const&);
template float Differentials(std::span<tDepthRay<float, bv::IRayPayloadInternal> const>, tVolumeSphere<float> const&);
template double Differentials(std::span<tDepthRay<double, bv::IRayPayloadInternal> const>,
                              tVolumeSphere<double> const&);
template std::size_t Visible(std::span<tVolumeAABB<float> const>, tFrustum<float> const&);
template std::size_t Visible(std::span<tVolumeAABB<double> const>, tFrustum<double> const&);
template float Intersections(std::span<tRay<float> const>, tPlane<float> const&);
template double Intersections(std::span<tRay<double> const>, tPlane<double> const&);
template float Distances(std::span<tVector3<float> const>, tPlane<float> const&);
template double Distances(std::span<tVector3<double> const>, tPlane<double> const&);
template void Transforms(std::span<tVector3<float>>, tMatrix4<float> const&);
template void Transforms(std::span<tVector3<double>>, tMatrix4<double> const&);
template void Prepared(std::span<tVector3<float>>, std::span<tVector3<float>>, tMatrix4<float> const&);
template void Prepared(std::span<tVector3<double>>, std::span<tVector3<double>>, tMatrix4<double> const&);
template void Directions(std::span<tVector3<float>>, tMatrix4<float> const&);
template void Directions(std::span<tVector3<double>>, tMatrix4<double> const&);
template float Quaternions(std::span<tQuaternion<float>>, std::span<tVector3<float>>, tQuaternion<float> const&);
template double Quaternions(std::span<tQuaternion<double>>, std::span<tVector3<double>>, tQuaternion<double> const&);
template void RaysOfPixels(std::span<tVector2<float> const>, std::span<tRay<float>>, tPixelRays<float> const&);
template void RaysOfPixels(std::span<tVector2<double> const>, std::span<tRay<double>>, tPixelRays<double> const&);
template float PixelsOfPoints(std::span<tVector3<float> const>, tMatrix4<float> const&, tMatrix4<float> const&,
                              tVector2<float> const&);
template double PixelsOfPoints(std::span<tVector3<double> const>, tMatrix4<double> const&, tMatrix4<double> const&,
                               tVector2<double> const&);
template float Components(std::span<tVector3<float>>, std::span<tVolumeAABB<float> const>, std::size_t);
template double Components(std::span<tVector3<double>>, std::span<tVolumeAABB<double> const>, std::size_t);
template float Samples(std::span<tVector3<float> const>, std::uint32_t);
template double Samples(std::span<tVector3<double> const>, std::uint32_t);
template float Elements(tMatrix4<float>&);
template double Elements(tMatrix4<double>&);

} // namespace loops
