#include "bv/maths/tRay.h"

#include "bv/maths/tDepthRay.h"
#include "bv/maths/tFrustum.h"

namespace bv::maths
{

namespace
{

/// Projection of a vector on a screen axis, in lengths of that axis. It goes through unit vectors, and so divides where
/// a.c / a.a would do: the squares are then formed from numbers near 1.
template <typename T>
T ProjectOnAxis(tVector3<T> const& axis, T axisLength, tVector3<T> const& vector, T length) noexcept
{
    return (axis / axisLength).Dot(vector / length) * (length / axisLength);
}

} // namespace

template <typename T>
tVector2<T> tRay<T>::IntersectScreen(tFrustum<T> const& frustum) const noexcept
{
    tVector3<T> const& normal = frustum.GetNearPlane().GetNormal();
    auto const onScreen = [&normal](tVector3<T> const& vector) { return vector / normal.Dot(vector); };
    tVector3<T> const topLeft = onScreen(frustum.GetEdgeVector(tFrustum<T>::EDGE_TOP_LEFT));
    tVector3<T> const bottomLeft = onScreen(frustum.GetEdgeVector(tFrustum<T>::EDGE_BOTTOM_LEFT));
    tVector3<T> const bottomRight = onScreen(frustum.GetEdgeVector(tFrustum<T>::EDGE_BOTTOM_RIGHT));
    tVector3<T> const horizontal = bottomRight - bottomLeft;
    tVector3<T> const vertical = topLeft - bottomLeft;
    tVector3<T> const position = onScreen(direction) - bottomLeft;
    if (position.x == T{0} && position.y == T{0} && position.z == T{0})
        return {}; // the corner itself, which has no unit vector
    T const length = position.Length();
    return {ProjectOnAxis(horizontal, horizontal.Length(), position, length),
            ProjectOnAxis(vertical, vertical.Length(), position, length)};
}

template class BV_TEMPLATE_INSTANCE tRay<float>;
template class BV_TEMPLATE_INSTANCE tRay<double>;
template class BV_TEMPLATE_INSTANCE tDepthRay<float, IRayPayloadInternal>;
template class BV_TEMPLATE_INSTANCE tDepthRay<double, IRayPayloadInternal>;

} // namespace bv::maths
