#include "bv/maths/tFrustum.h"

#include "Maths/FrustumGuard.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tRay.h"

namespace bv::maths
{

template <typename T>
tFrustum<T>::tFrustum(tMatrix4<T> const& matrix)
{
    T const* const m = matrix.Get();
    tVector3<T> const x(m);
    tVector3<T> const y(m + 4);
    tVector3<T> const z(m + 8);
    tVector3<T> const w(m + 12);
    SetPlanes<T>(
        [&]
        {
            leftPlane.Set(w + x, m[15] + m[3]);
            rightPlane.Set(w - x, m[15] - m[3]);
            nearPlane.Set(w + z, m[15] + m[11]);
            farPlane.Set(w - z, m[15] - m[11]);
            bottomPlane.Set(w + y, m[15] + m[7]);
            topPlane.Set(w - y, m[15] - m[7]);
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
