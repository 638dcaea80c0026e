#pragma once

/// @file
/// Distances, angles and directions: mirrored, refracted, turned to a side, taken apart along another one, and made
/// into axes at right angles.
///
/// Sums run from x to z, and all but GetAngle() has the same bits everywhere. No operation checks that a vector which
/// ought to be of unit length is. Arguments may be one and the same object.

#include <limits>
#include <optional>

#include "bv/Export.h"
#include "bv/detail/Platform.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Number.h"
#include "bv/maths/detail/TupleOrVector.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

#if !BV_GNU
#include <cmath>
#endif

namespace bv::maths
{

namespace detail
{

/// The square of the sine of an angle that is lost in the roundings of its vectors: of 16 epsilons.
template <typename T>
inline constexpr T LEAST_SINE_SQUARED = T{256} * std::numeric_limits<T>::epsilon() * std::numeric_limits<T>::epsilon();

/// Whether the square of a length is a normal number, and so as exact as the length.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool IsNormalSquare(T square) noexcept
{
    return square >= std::numeric_limits<T>::min() && square <= std::numeric_limits<T>::max();
}

/// The C library's `atan2`.
[[nodiscard, gnu::always_inline]] inline float ArcTangent(float y, float x) noexcept
{
#if BV_GNU
    return __builtin_atan2f(y, x);
#else
    return std::atan2(y, x);
#endif
}

/// @copydoc ArcTangent(float, float)
[[nodiscard, gnu::always_inline]] inline double ArcTangent(double y, double x) noexcept
{
#if BV_GNU
    return __builtin_atan2(y, x);
#else
    return std::atan2(y, x);
#endif
}

} // namespace detail

/// Distance between two points: the length of b - a, whose square may overflow or underflow where the distance would
/// not.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] inline detail::Component<V> Distance(V const& a, V const& b) noexcept
{
    return (b - a).Length();
}

/// Squared distance between two points: the sum of the squares of b - a.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] constexpr detail::Component<V> DistanceSquared(V const& a, V const& b) noexcept
{
    return (b - a).LengthSquared();
}

/// The angle between two directions in radians, from 0 to pi, as exact near both of these as anywhere else.
///
/// 2 * atan2(|u - v|, |u + v|) of the two normalised vectors u and v: 0 for two equal vectors and pi for two opposite
/// ones, to the bit. Its bits may differ between C libraries. W. Kahan, "How Futile are Mindless Assessments
/// of Roundoff in Floating-Point Computation?", 2006.
///
/// @param a,b of any length whose square neither overflows nor underflows; zero, infinities and NaN give NaN.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] inline detail::Component<V> GetAngle(V const& a, V const& b) noexcept
{
    V const unitA = a.Normalised();
    V const unitB = b.Normalised();
    return detail::Component<V>{2} * detail::ArcTangent((unitA - unitB).Length(), (unitA + unitB).Length());
}

/// The direction of what comes from a mirror: vector - normal * (2 * (vector . normal)).
///
/// @param vector the direction of what falls onto the mirror, of any length, which the result keeps.
/// @param normal a unit vector; either side of the mirror gives the same.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] constexpr V Reflect(V const& vector, V const& normal) noexcept
{
    using T = detail::Component<V>;
    return vector - normal * (T{2} * vector.Dot(normal));
}

/// The direction of light after it has entered another medium, by Snell's law; nothing where all of it is reflected.
///
/// With the cosine c = vector . normal and the square k = 1 - (ratio * ratio) * (1 - c * c), all is reflected where
/// k < 0, and otherwise the direction is vector * ratio - normal * (ratio * c + r) with the root r of k, or with -r
/// where c is positive: a normal may point to either side of the surface. NaN gives a direction of NaN.
///
/// @param vector a unit vector, the direction of light that falls onto the surface.
/// @param normal a unit vector.
/// @param ratio the index of refraction where the light comes from, divided by that where it goes to.
template <typename V, typename = detail::Where<RealVector<V>>>
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

/// The vector, or its opposite, that points to the same side as another: the opposite where vector . side is negative,
/// and otherwise, also where it is zero or NaN, the vector itself.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] constexpr V FaceForward(V const& vector, V const& side) noexcept
{
    using T = detail::Component<V>;
    return vector * (vector.Dot(side) < T{0} ? T{-1} : T{1});
}

/// The part of a vector along another: onto * ((vector . onto) / (onto . onto)).
///
/// @param vector any vector.
/// @param onto of any length whose square neither overflows nor underflows; zero gives NaN.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] constexpr V Project(V const& vector, V const& onto) noexcept
{
    return onto * (vector.Dot(onto) / onto.LengthSquared());
}

/// The part of a vector at right angles to another: vector - Project(vector, from).
///
/// @param vector any vector.
/// @param from of any length whose square neither overflows nor underflows; zero gives NaN.
template <typename V, typename = detail::Where<RealVector<V>>>
[[nodiscard]] constexpr V Reject(V const& vector, V const& from) noexcept
{
    return vector - Project(vector, from);
}

/// Turns two vectors into axes of length 1 at right angles: the first keeps its direction, and the second its side of
/// the first. The axes are orthogonal within a few roundings, however small the angle between the vectors was.
///
/// The part of the second vector along the first is taken off twice (the process of Gram and Schmidt): L. Giraud,
/// J. Langou, M. Rozloznik, "The Loss of Orthogonality in the Gram-Schmidt Orthogonalization Process", 2005.
///
/// @return false, with both vectors as they were, where they do not span a plane: where the part of the second at right
///         angles to the first is at most 16 epsilons of its length, or a square of a length overflows, is below the
///         normal numbers or is NaN.
template <typename V, typename = detail::Where<RealVector<V>>>
inline bool Orthonormalise(V& first, V& second) noexcept
{
    using T = detail::Component<V>;
    T const firstSquare = first.LengthSquared();
    V const axis = first * (T{1} / detail::SquareRoot(firstSquare));
    V const once = second - axis * axis.Dot(second);
    T const onceSquare = once.LengthSquared();
    bool const spansPlane = detail::IsNormalSquare(firstSquare) && detail::IsNormalSquare(onceSquare) &&
                            onceSquare > detail::LEAST_SINE_SQUARED<T> * second.LengthSquared();
    if (spansPlane)
    {
        first = axis;
        second = (once - axis * axis.Dot(once)).Normalised();
    }
    return spansPlane;
}

/// Turns three vectors into axes of length 1 at right angles to each other: the first two as above, and the third,
/// their product or its opposite, to the side where it was. So the axes are right-handed where the vectors were.
///
/// @return false, with all three vectors as they were, where they do not span the space: where the first two span no
///         plane, the third is at most 16 epsilons of its length away from it, or the square of that distance or of its
///         length overflows, underflows to 0 or is NaN.
template <typename T>
inline bool Orthonormalise(tVector3<T>& first, tVector3<T>& second, tVector3<T>& third) noexcept
{
    tVector3<T> axis = first;
    tVector3<T> next = second;
    if (!Orthonormalise(axis, next))
        return false;
    tVector3<T> const last = axis.Cross(next);
    T const height = last.Dot(third);
    if (!(height * height > detail::LEAST_SINE_SQUARED<T> * third.LengthSquared()))
        return false;
    first = axis;
    second = next;
    third = height < T{0} ? -last : last;
    return true;
}

/// Two axes that span, together with a surface normal, an orthonormal frame: for shading frames and sampling.
///
/// The triple (first, second, normal) is right-handed, first x second = normal, where that of EvaluateLocalAxes() is
/// left-handed. No branch is taken, and the axes change steadily with the normal but for a jump where its z changes
/// sign; zeros of z belong to the side of their sign. Source: T. Duff and others, "Building an Orthonormal Basis,
/// Revisited", Journal of Computer Graphics Techniques, 2017.
///
/// With s = 1 or -1, the sign of z, a = -1 / (s + z) and b = (x * y) * a, the first axis is
/// (1 + ((s * x) * x) * a, s * b, -s * x) and the second (b, s + (y * y) * a, -y).
///
/// The arguments may be one and the same object; when both axes are, it ends as the second.
///
/// @param normal a unit vector; neither checked nor normalised. Infinities give NaN in places, and so does NaN.
/// @param[out] first the first axis.
/// @param[out] second the second axis.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
constexpr void EvaluateOrthonormalBasis(tVector3<T> const& normal, tVector3<T>& first, tVector3<T>& second) noexcept
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
extern template BV_TEMPLATE bool Orthonormalise(tVector3<float>&, tVector3<float>&) noexcept;
extern template BV_TEMPLATE bool Orthonormalise(tVector2<float>&, tVector2<float>&) noexcept;
extern template BV_TEMPLATE bool Orthonormalise(tVector3<float>&, tVector3<float>&, tVector3<float>&) noexcept;
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
extern template BV_TEMPLATE bool Orthonormalise(tVector3<double>&, tVector3<double>&) noexcept;
extern template BV_TEMPLATE bool Orthonormalise(tVector2<double>&, tVector2<double>&) noexcept;
extern template BV_TEMPLATE bool Orthonormalise(tVector3<double>&, tVector3<double>&, tVector3<double>&) noexcept;
extern template BV_TEMPLATE void EvaluateOrthonormalBasis(tVector3<double> const&, tVector3<double>&,
                                                          tVector3<double>&) noexcept;

} // namespace bv::maths
