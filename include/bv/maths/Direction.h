#pragma once

/// @file
/// Distances, angles and directions: mirrored, refracted, turned to a side, taken apart along another one, and made
/// into axes at right angles.
///
/// Sums run from x to z, and all but GetAngle() has the same bits everywhere. No operation checks that a vector which
/// ought to be of unit length is. Arguments may be one and the same object.

#include <optional>

#include "bv/Export.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/TupleOrVector.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// Distance between two points: the length of b - a.
template <RealVector V>
[[nodiscard]] inline detail::Component<V> Distance(V const& a, V const& b) noexcept
{
    return (b - a).Length();
}

/// Squared distance between two points.
template <RealVector V>
[[nodiscard]] constexpr detail::Component<V> DistanceSquared(V const& a, V const& b) noexcept
{
    return (b - a).LengthSquared();
}

/// The angle between two directions in radians, from 0 to pi.
template <RealVector V>
[[nodiscard]] detail::Component<V> GetAngle(V const& a, V const& b) noexcept;

/// The direction of what is reflected by a mirror: vector - normal * (2 * (vector . normal)).
template <RealVector V>
[[nodiscard]] constexpr V Reflect(V const& vector, V const& normal) noexcept
{
    using T = detail::Component<V>;
    return vector - normal * (T{2} * vector.Dot(normal));
}

/// The direction of light after it has passed into another medium; none where it is reflected totally.
template <RealVector V>
[[nodiscard]] inline std::optional<V> Refract(V const& vector, V const& normal, detail::Component<V> ratio) noexcept
{
    using T = detail::Component<V>;
    T const cosine = vector.Dot(normal);
    T const square = T{1} - (ratio * ratio) * (T{1} - cosine * cosine);
    if (square < T{0})
        return std::nullopt;
    T const root = detail::SquareRoot(square);
    return vector * ratio - normal * (ratio * cosine + (cosine > T{0} ? -root : root));
}

/// The vector, or its opposite, that points to the same side as another: the opposite where their scalar product is
/// negative.
template <RealVector V>
[[nodiscard]] constexpr V FaceForward(V const& vector, V const& side) noexcept
{
    using T = detail::Component<V>;
    return vector * (vector.Dot(side) < T{0} ? T{-1} : T{1});
}

/// The part of a vector along another: onto * ((vector . onto) / (onto . onto)).
template <RealVector V>
[[nodiscard]] constexpr V Project(V const& vector, V const& onto) noexcept
{
    return onto * (vector.Dot(onto) / onto.LengthSquared());
}

/// The part of a vector at right angles to another: vector - Project(vector, from).
template <RealVector V>
[[nodiscard]] constexpr V Reject(V const& vector, V const& from) noexcept
{
    return vector - Project(vector, from);
}

/// Two axes that span, together with a surface normal, an orthonormal frame: right-handed, first x second = normal, and
/// computed without a branch. Unlike those of EvaluateLocalAxes(), they vary smoothly but for a step where z changes
/// its sign. Source: T. Duff and others, "Building an Orthonormal Basis, Revisited", 2017.
///
/// The arguments may be one and the same object.
template <typename T>
inline void EvaluateOrthonormalBasis(tVector3<T> const& normal, tVector3<T>& first, tVector3<T>& second) noexcept
{
    tVector3<T> const n = normal;
    T const sign = detail::WithSignOf(T{1}, n.z);
    T const a = T{-1} / (sign + n.z);
    T const b = n.x * n.y * a;
    first = {T{1} + sign * n.x * n.x * a, sign * b, -sign * n.x};
    second = {b, sign + n.y * n.y * a, -n.y};
}

extern template BV_TEMPLATE float Distance(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE float DistanceSquared(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE float GetAngle(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Reflect(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector3<float>> Refract(tVector3<float> const&, tVector3<float> const&,
                                                                   float) noexcept;
extern template BV_TEMPLATE tVector3<float> FaceForward(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Project(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> Reject(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE float Distance(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE float DistanceSquared(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE float GetAngle(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Reflect(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector2<float>> Refract(tVector2<float> const&, tVector2<float> const&,
                                                                   float) noexcept;
extern template BV_TEMPLATE tVector2<float> FaceForward(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Project(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> Reject(tVector2<float> const&, tVector2<float> const&) noexcept;
extern template BV_TEMPLATE void EvaluateOrthonormalBasis(tVector3<float> const&, tVector3<float>&,
                                                          tVector3<float>&) noexcept;
extern template BV_TEMPLATE double Distance(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE double DistanceSquared(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE double GetAngle(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Reflect(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector3<double>> Refract(tVector3<double> const&, tVector3<double> const&,
                                                                    double) noexcept;
extern template BV_TEMPLATE tVector3<double> FaceForward(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Project(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> Reject(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE double Distance(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE double DistanceSquared(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE double GetAngle(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Reflect(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector2<double>> Refract(tVector2<double> const&, tVector2<double> const&,
                                                                    double) noexcept;
extern template BV_TEMPLATE tVector2<double> FaceForward(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Project(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> Reject(tVector2<double> const&, tVector2<double> const&) noexcept;
extern template BV_TEMPLATE void EvaluateOrthonormalBasis(tVector3<double> const&, tVector3<double>&,
                                                          tVector3<double>&) noexcept;

} // namespace bv::maths
