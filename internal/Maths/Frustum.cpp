#include "bv/maths/tFrustum.h"

#include <array>
#include <bit>

#if defined __SSE2__
#include <emmintrin.h>
#endif

#include "Maths/FrustumGuard.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tRay.h"

namespace bv::maths
{

namespace
{

#if defined __SSE2__

/// The planes of normal (x, y, z) and offset w, each divided by the normal's length just as tPlane::Set() does it, for
/// as many planes as a register has lanes.
template <typename Vector>
void Scale(Vector& x, Vector& y, Vector& z, Vector& w, Vector length) noexcept
{
    Vector const reciprocal = (Vector{} + 1) / length;
    x *= reciprocal;
    y *= reciprocal;
    z *= reciprocal;
    w /= length;
}

/// Four planes at a time: turned so that each component is one vector, scaled, and turned back.
void MakeFour(__m128 a, __m128 b, __m128 c, __m128 d, tPlane<float>* planes) noexcept
{
    _MM_TRANSPOSE4_PS(a, b, c, d); // x, y, z, offset
    Scale(a, b, c, d, _mm_sqrt_ps(a * a + b * b + c * c));
    _MM_TRANSPOSE4_PS(d, a, b, c); // offset, x, y, z of one plane each
    planes[0] = std::bit_cast<tPlane<float>>(d);
    planes[1] = std::bit_cast<tPlane<float>>(a);
    planes[2] = std::bit_cast<tPlane<float>>(b);
    planes[3] = std::bit_cast<tPlane<float>>(c);
}

/// The planes of the view of a matrix: left, right, near, far, bottom, top.
std::array<tPlane<float>, 6> MakePlanes(float const* m) noexcept
{
    __m128 const x = _mm_loadu_ps(m);
    __m128 const y = _mm_loadu_ps(m + 4);
    __m128 const z = _mm_loadu_ps(m + 8);
    __m128 const w = _mm_loadu_ps(m + 12);
    std::array<tPlane<float>, 8> planes;
    MakeFour(w + x, w - x, w + z, w - z, planes.data());
    MakeFour(w + y, w - y, w + y, w - y, planes.data() + 4);
    return {planes[0], planes[1], planes[2], planes[3], planes[4], planes[5]};
}

/// The two planes of one row, which is added to and subtracted from the fourth.
void MakeTwo(double const* row, double const* fourth, tPlane<double>* planes) noexcept
{
    __m128d const xy = _mm_loadu_pd(row);
    __m128d const zw = _mm_loadu_pd(row + 2);
    __m128d const fourthXY = _mm_loadu_pd(fourth);
    __m128d const fourthZW = _mm_loadu_pd(fourth + 2);
    __m128d const sumXY = fourthXY + xy;
    __m128d const sumZW = fourthZW + zw;
    __m128d const differenceXY = fourthXY - xy;
    __m128d const differenceZW = fourthZW - zw;
    __m128d x = _mm_unpacklo_pd(sumXY, differenceXY);
    __m128d y = _mm_unpackhi_pd(sumXY, differenceXY);
    __m128d z = _mm_unpacklo_pd(sumZW, differenceZW);
    __m128d w = _mm_unpackhi_pd(sumZW, differenceZW);
    Scale(x, y, z, w, _mm_sqrt_pd(x * x + y * y + z * z));
    struct
    {
        __m128d numbers[4]; // offset, x, y, z of each
    } const made{{_mm_unpacklo_pd(w, x), _mm_unpacklo_pd(y, z), _mm_unpackhi_pd(w, x), _mm_unpackhi_pd(y, z)}};
    auto const both = std::bit_cast<std::array<tPlane<double>, 2>>(made);
    planes[0] = both[0];
    planes[1] = both[1];
}

std::array<tPlane<double>, 6> MakePlanes(double const* m) noexcept
{
    std::array<tPlane<double>, 6> planes;
    MakeTwo(m, m + 12, planes.data());
    MakeTwo(m + 8, m + 12, planes.data() + 2);
    MakeTwo(m + 4, m + 12, planes.data() + 4);
    return planes;
}

#else

/// The planes of the view of a matrix: left, right, near, far, bottom, top.
template <typename T>
std::array<tPlane<T>, 6> MakePlanes(T const* m) noexcept
{
    tVector3<T> const w(m + 12);
    std::array<tPlane<T>, 6> planes;
    tPlane<T>* plane = planes.data();
    for (T const* const row : {m, m + 8, m + 4})
    {
        tVector3<T> const axis(row);
        (plane++)->Set(w + axis, m[15] + row[3]);
        (plane++)->Set(w - axis, m[15] - row[3]);
    }
    return planes;
}

#endif

} // namespace

template <typename T>
tFrustum<T>::tFrustum(tMatrix4<T> const& matrix)
{
    SetPlanes<T>(
        [&]
        {
            auto const planes = MakePlanes(matrix.Get());
            leftPlane = planes[0];
            rightPlane = planes[1];
            nearPlane = planes[2];
            farPlane = planes[3];
            bottomPlane = planes[4];
            topPlane = planes[5];
        });
}

template <typename T>
tVector3<T> tFrustum<T>::GetEdgeVector(Edge edge) const noexcept
{
    switch (edge)
    {
    case EDGE_TOP_LEFT:
        return leftPlane.GetNormal().Cross(topPlane.GetNormal()).Normalised();
    case EDGE_TOP_RIGHT:
        return topPlane.GetNormal().Cross(rightPlane.GetNormal()).Normalised();
    case EDGE_BOTTOM_LEFT:
        return bottomPlane.GetNormal().Cross(leftPlane.GetNormal()).Normalised();
    case EDGE_BOTTOM_RIGHT:
        return rightPlane.GetNormal().Cross(bottomPlane.GetNormal()).Normalised();
    }
    return {};
}

template <typename T>
tVector2<T> tFrustum<T>::IntersectNear(tRay<T> const& ray) const
{
    tVector3<T> const point = nearPlane.GetIntersection(ray.origin, ray.direction);
    T const left = leftPlane.GetAbsoluteDistance(point);
    T const right = rightPlane.GetAbsoluteDistance(point);
    T const top = topPlane.GetAbsoluteDistance(point);
    T const bottom = bottomPlane.GetAbsoluteDistance(point);
    return {left / (right + left), top / (bottom + top)};
}

template class BV_TEMPLATE_INSTANCE tFrustum<float>;
template class BV_TEMPLATE_INSTANCE tFrustum<double>;

} // namespace bv::maths
