#include "bv/maths/Intersect.h"

#include <limits>
#include <type_traits>

#include "bv/maths/Componentwise.h"
#include "bv/maths/tReciprocalRay.h"

namespace bv::maths
{

namespace
{

/// A product and what its rounding left over, which are the exact one together. T. Dekker, "A Floating-Point Technique
/// for Extending the Available Precision", 1971.
struct ExactProduct
{
    double rounded, rest;

    ExactProduct(double a, double b) noexcept : rounded{a * b}
    {
        Halves const x(a);
        Halves const y(b);
        rest = ((x.high * y.high - rounded) + x.high * y.low + x.low * y.high) + x.low * y.low;
    }

private:
    /// A number in two parts of 26 binary digits. G. Veltkamp, 1968.
    struct Halves
    {
        double high, low;

        explicit Halves(double x) noexcept
        {
            double const spread = 134217729.0 * x; // 2^27 + 1
            high = spread - (spread - x);
            low = x - high;
        }
    };
};

/// The difference a * b - c * d with the sign of the exact one, 0 included.
[[nodiscard]] double ExactDifference(double a, double b, double c, double d) noexcept
{
    double const difference = a * b - c * d;
    if (difference != 0)
        return difference;
    return ExactProduct(a, b).rest - ExactProduct(c, d).rest;
}

/// The same for factors that are numbers of `float`, whose products are exact.
[[nodiscard]] double ExactDifference(float a, float b, float c, float d) noexcept
{
    return static_cast<double>(a) * static_cast<double>(b) - static_cast<double>(c) * static_cast<double>(d);
}

} // namespace

template <typename T>
bool detail::MeetOnEdge(T const (&corners)[9], T tNear, T tFar, T (&hit)[3]) noexcept
{
    auto const& [ax, ay, az, bx, by, bz, cx, cy, cz] = corners;
    double const ofA = ExactDifference(cx, by, cy, bx);
    double const ofB = ExactDifference(ax, cy, ay, cx);
    double const ofC = ExactDifference(bx, ay, by, ax);
    bool const isPositive = ofA >= 0 && ofB >= 0 && ofC >= 0;
    bool const isNegative = ofA <= 0 && ofB <= 0 && ofC <= 0;
    double const sum = ofA + ofB + ofC;
    double const size = Magnitude(sum);
    if (!(isPositive || isNegative) || !(size > 0 && size <= std::numeric_limits<double>::max()))
        return false;
    double const t =
        (ofA * static_cast<double>(az) + ofB * static_cast<double>(bz) + ofC * static_cast<double>(cz)) / sum;
    T const at = static_cast<T>(t) + T{0}; // never -0
    if (!Counts(at, tNear, tFar))
        return false;
    hit[0] = at;
    hit[1] = static_cast<T>(ofB / sum) + T{0};
    hit[2] = static_cast<T>(ofC / sum) + T{0};
    return true;
}

template <typename T>
bool GetHitDifferentials(tDepthRay<T, IRayPayloadInternal> const& ray, tVector3<T> const& a, tVector3<T> const& b,
                         tVector3<T> const& c, std::type_identity_t<T> t, tDifferential3<T>& position,
                         tDifferential2<T>& barycentric) noexcept
{
    tVector3<T> const toB = b - a;
    tVector3<T> const toC = c - a;
    tVector3<T> const normal = toB.Cross(toC);
    T const squared = normal.LengthSquared();
    T const along = normal.Dot(ray.direction);
    if (!detail::HasArea(squared) || !(detail::Magnitude(along) > T{0}))
        return false;
    auto const differentiate = [&](tVector3<T> const& dOrigin, tVector3<T> const& dDirection)
    {
        tVector3<T> const moved = dOrigin + dDirection * t;
        T const dt = -normal.Dot(moved) / along;
        return moved + ray.direction * dt;
    };
    auto const weigh = [&](tVector3<T> const& way) -> tVector2<T> {
        return {normal.Dot(way.Cross(toC)) / squared, normal.Dot(toB.Cross(way)) / squared};
    };
    tVector3<T> const du = differentiate(ray.dOriginDu, ray.dDirectionDu);
    tVector3<T> const dv = differentiate(ray.dOriginDv, ray.dDirectionDv);
    tDifferential2<T> const weights(weigh(du), weigh(dv));
    position = {du, dv};
    barycentric = weights;
    return true;
}

template class BV_TEMPLATE_INSTANCE tReciprocalRay<float>;
template class BV_TEMPLATE_INSTANCE tReciprocalRay<double>;
template class BV_TEMPLATE_INSTANCE tWatertightRay<float>;
template class BV_TEMPLATE_INSTANCE tWatertightRay<double>;

template BV_TEMPLATE_INSTANCE bool detail::MeetOnEdge(float const (&)[9], float, float, float (&)[3]) noexcept;
template BV_TEMPLATE_INSTANCE bool detail::MeetOnEdge(double const (&)[9], double, double, double (&)[3]) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectTriangle(tRay<float> const&, tVector3<float> const&, tVector3<float> const&,
                                                     tVector3<float> const&, float, float,
                                                     tTriangleHit<float>&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectTriangle(tRay<double> const&, tVector3<double> const&,
                                                     tVector3<double> const&, tVector3<double> const&, double, double,
                                                     tTriangleHit<double>&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectTriangle(tWatertightRay<float> const&, tVector3<float> const&,
                                                     tVector3<float> const&, tVector3<float> const&, float, float,
                                                     tTriangleHit<float>&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectTriangle(tWatertightRay<double> const&, tVector3<double> const&,
                                                     tVector3<double> const&, tVector3<double> const&, double, double,
                                                     tTriangleHit<double>&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectPlane(tRay<float> const&, tPlane<float> const&, float, float,
                                                  float&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectPlane(tRay<double> const&, tPlane<double> const&, double, double,
                                                  double&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectDisc(tRay<float> const&, tVector3<float> const&, tVector3<float> const&,
                                                 float, float, float, float&) noexcept;
template BV_TEMPLATE_INSTANCE bool IntersectDisc(tRay<double> const&, tVector3<double> const&, tVector3<double> const&,
                                                 double, double, double, double&) noexcept;
template BV_TEMPLATE_INSTANCE bool ClipOrientedBox(tRay<float> const&, tOrientedBox<float> const&, float&,
                                                   float&) noexcept;
template BV_TEMPLATE_INSTANCE bool ClipOrientedBox(tRay<double> const&, tOrientedBox<double> const&, double&,
                                                   double&) noexcept;
template BV_TEMPLATE_INSTANCE tRay<float> TransformRay(tRay<float> const&, tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tRay<double> TransformRay(tRay<double> const&, tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tDepthRay<float, IRayPayloadInternal>
TransformRay(tDepthRay<float, IRayPayloadInternal> const&, tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tDepthRay<double, IRayPayloadInternal>
TransformRay(tDepthRay<double, IRayPayloadInternal> const&, tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool OverlapsTriangle(tVolumeAABB<float> const&, tVector3<float> const&,
                                                    tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool OverlapsTriangle(tVolumeAABB<double> const&, tVector3<double> const&,
                                                    tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool GetBarycentric(tVector3<float> const&, tVector3<float> const&,
                                                  tVector3<float> const&, tVector3<float> const&, float&,
                                                  float&) noexcept;
template BV_TEMPLATE_INSTANCE bool GetBarycentric(tVector3<double> const&, tVector3<double> const&,
                                                  tVector3<double> const&, tVector3<double> const&, double&,
                                                  double&) noexcept;
template BV_TEMPLATE_INSTANCE bool GetHitDifferentials(tDepthRay<float, IRayPayloadInternal> const&,
                                                       tVector3<float> const&, tVector3<float> const&,
                                                       tVector3<float> const&, float, tDifferential3<float>&,
                                                       tDifferential2<float>&) noexcept;
template BV_TEMPLATE_INSTANCE bool GetHitDifferentials(tDepthRay<double, IRayPayloadInternal> const&,
                                                       tVector3<double> const&, tVector3<double> const&,
                                                       tVector3<double> const&, double, tDifferential3<double>&,
                                                       tDifferential2<double>&) noexcept;

} // namespace bv::maths
