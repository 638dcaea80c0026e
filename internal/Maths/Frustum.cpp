#include "bv/maths/tFrustum.h"

#include "Maths/FrustumGuard.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tRay.h"

namespace bv::maths
{

namespace
{

/// Sets four planes at a time, each to a normal (x, y, z) and an offset w, which are divided by the normal's length
/// just as tPlane::Set() does it.
template <typename T>
[[gnu::always_inline]] inline void SetFour(detail::tFour<T> x, detail::tFour<T> y, detail::tFour<T> z,
                                           detail::tFour<T> w, tPlane<T>& a, tPlane<T>& b, tPlane<T>& c,
                                           tPlane<T>& d) noexcept
{
    using Lanes = detail::tFour<T>;
    detail::Transpose(x, y, z, w); // from a plane in each to a component of all
    Lanes const length = detail::SquareRoot(x * x + y * y + z * z);
    Lanes const reciprocal = detail::Broadcast<Lanes>(T{1}) / length;
    x = x * reciprocal;
    y = y * reciprocal;
    z = z * reciprocal;
    w = w / length;
    detail::Transpose(w, x, y, z); // and back, the offset first
    detail::StoreInto(w, a);
    detail::StoreInto(x, b);
    detail::StoreInto(y, c);
    detail::StoreInto(z, d);
}

} // namespace

template <typename T>
tFrustum<T>::tFrustum(tMatrix4<T> const& matrix)
{
    SetPlanes<T>(
        [&]
        {
            auto const [x, y, z, w] = detail::LoadRows(matrix.Get());
            SetFour<T>(w + x, w - x, w + z, w - z, leftPlane, rightPlane, nearPlane, farPlane);
            tPlane<T> unused[2];
            SetFour<T>(w + y, w - y, w + y, w - y, bottomPlane, topPlane, unused[0], unused[1]);
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
