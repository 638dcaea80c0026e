#pragma once

/// @file
/// Maps from the unit square to discs, triangles, spheres, hemispheres and cones, each with the density of what it
/// gives and with its inverse; and, from bv/maths/Sequences.h, points that fill the square.
///
/// Each map takes points that are spread evenly over the square, [0, 1) in both coordinates, and spreads them as its
/// name says; it keeps areas, so that the evenness of well-spread points stays. A density is that of the map's results
/// per area or solid angle: what a Monte Carlo estimate divides by. It is greater than 0 for each result of its map,
/// but where it says otherwise. An inverse answers with the point of the square; it is accurate to a few units in the
/// last place of 1, and each of its coordinates is at least 0 and below 1.
///
/// Directions are unit vectors, and their frame has z as its pole. The forms with a normal or an axis, a unit vector
/// too, turn z to it and x and y to the two tangents of T. Duff, J. Burgess, P. Christensen, C. Hery, A. Kensler, M.
/// Liani, R. Villemin, "Building an Orthonormal Basis, Revisited", 2017. That neither is of unit length is not checked.
///
/// Sines, cosines and angles are those of polynomials here, within three units in the last place: no function of the C
/// library is called, and the results are the same bits everywhere. Coordinates outside of the square, which are not
/// checked, give points of no meaning; one that is NaN makes the first component of a result NaN, if not all of them.
///
/// Nothing is thrown, allocated or kept.

#include <limits>
#include <numbers>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Direction.h"
#include "bv/maths/Sequences.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Number.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace detail
{

/// What rounding may put a length or a cosine beside its place.
template <typename T>
inline constexpr T SLACK = T{4} * std::numeric_limits<T>::epsilon();

/// A point in polar coordinates. The radius may be negative.
template <typename T>
struct tPolar
{
    T radius;
    T cosine;
    T sine;
};

/// A polynomial, the coefficient of the highest power last.
template <typename T, typename... More>
[[nodiscard, gnu::always_inline]] constexpr T Polynomial(T x, T coefficient, More... higher) noexcept
{
    if constexpr (sizeof...(higher) == 0)
        return coefficient;
    else
        return coefficient + x * Polynomial(x, higher...);
}

/// Sine of t times pi / 4, for t from -1 to 1. The polynomial is off by at most 2^-25 or 2^-54 of the sine.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T SineOfEighths(T t) noexcept
{
    T const square = t * t;
    if constexpr (sizeof(T) == sizeof(float))
        return t * Polynomial(square, 0.785398185F, -0.0807458311F, 0.00249101641F, -3.66091517e-5F);
    else
        return t * Polynomial(square, 0.78539816339744828, -0.080745512188278495, 0.0024903945701648454,
                              -3.6576204056014866e-5, 3.133614233105439e-7, -1.7569724060412333e-9,
                              6.8179781978191793e-12);
}

/// Cosine of t times pi / 4, for t from -1 to 1. The polynomial is off by at most 2^-31 or 2^-61.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T CosineOfEighths(T t) noexcept
{
    T const square = t * t;
    if constexpr (sizeof(T) == sizeof(float))
        return Polynomial(square, 1.0F, -0.308425128F, 0.0158542842F, -0.000325868692F, 3.49408742e-6F);
    else
        return Polynomial(square, 1.0, -0.30842513753404244, 0.015854344243815106, -0.00032599188692470266,
                          3.5908604399702292e-6, -2.4611354928636702e-8, 1.1499839102826683e-10,
                          -3.8387445727662854e-13);
}

/// Angle whose tangent is smaller / larger, two numbers that are not negative, in units of pi / 4: from 0 to 1, and 0
/// where both are 0. The polynomial, for tangents of up to pi / 8, is off by at most 2^-24 or 2^-53 of the angle.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T EighthsOfTangent(T smaller, T larger) noexcept
{
    constexpr T TANGENT_OF_HALF = T(0.41421356237309505);
    bool const isUpperHalf = smaller > TANGENT_OF_HALF * larger; // then counted from the upper end
    T const numerator = isUpperHalf ? smaller - larger : smaller;
    T const denominator = isUpperHalf ? smaller + larger : larger;
    T const tangent = numerator / (denominator == T{0} ? T{1} : denominator);
    T const square = tangent * tangent;
    T eighths{};
    if constexpr (sizeof(T) == sizeof(float))
        eighths = tangent * Polynomial(square, 1.27323949F, -0.424398184F, 0.253943533F, -0.170212671F, 0.0608365089F,
                                       0.0949243233F);
    else
        eighths = tangent * Polynomial(square, 1.2732395447351628, -0.42441318157849711, 0.25464790897225914,
                                       -0.18189136579909551, 0.14147116477180471, -0.11575184221074979,
                                       0.097987971671135515, -0.085375813331992623, 0.078213419536021497,
                                       -0.080430632225464135, 0.088295123891710514, -0.064918304960389556);
    return isUpperHalf ? T{1} + eighths : eighths;
}

/// The point of the unit circle at a number of full turns, from 0 to 1, from the x axis towards the y axis.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr tVector2<T> PointAtTurns(T turns) noexcept
{
    // Added to a number, it leaves the nearest integer in the lowest bits. Nothing is converted, so NaN may come.
    constexpr T TO_INTEGER = T{3} / (T{2} * std::numeric_limits<T>::epsilon());
    T const quarters = T{4} * turns;
    T const rounded = quarters + TO_INTEGER;
    auto const quarter = BitsAs<Integer<T>>(rounded);
    T const rest = quarters - (rounded - TO_INTEGER);
    T const sine = SineOfEighths(rest + rest);
    T const cosine = CosineOfEighths(rest + rest);
    bool const isOdd = (quarter & 1) != 0;
    T const x = isOdd ? sine : cosine;
    T const y = isOdd ? cosine : sine;
    return {((quarter + 1) & 2) != 0 ? -x : x, (quarter & 2) != 0 ? -y : y};
}

/// Full turns from the x axis to a point, in [0, 1); 0 for the origin.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T TurnsOfPoint(T x, T y) noexcept
{
    T const magnitudeX = Magnitude(x);
    T const magnitudeY = Magnitude(y);
    bool const isSteep = magnitudeY > magnitudeX;
    T eighths = EighthsOfTangent(isSteep ? magnitudeX : magnitudeY, isSteep ? magnitudeY : magnitudeX);
    eighths = isSteep ? T{2} - eighths : eighths;
    eighths = x < T{0} ? T{4} - eighths : eighths;
    eighths = y < T{0} ? T{8} - eighths : eighths;
    T const turns = eighths * T{0.125};
    return turns >= T{1} ? BELOW_ONE<T> : turns;
}

/// A coordinate of the square, moved into it; NaN stays NaN.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr T IntoUnit(T x) noexcept
{
    x = NotNegative(x);
    return x >= T{1} ? BELOW_ONE<T> : x;
}

/// The concentric map.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr tPolar<T> MapConcentrically(tVector2<T> const& square) noexcept
{
    T const x = (square.x + square.x) - T{1};
    T const y = (square.y + square.y) - T{1};
    bool const isFlat = Magnitude(x) > Magnitude(y);
    T const larger = isFlat ? x : y;
    T const smaller = isFlat ? y : x;
    T const t = smaller / (larger == T{0} ? T{1} : larger);
    T const sine = SineOfEighths(t);
    T const cosine = CosineOfEighths(t);
    return {larger, isFlat ? cosine : sine, isFlat ? sine : cosine};
}

/// The point of the square that the concentric map takes to the distance of `length` in the direction of (x, y), or to
/// the circle where that is farther out.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr tVector2<T> PolarToSquare(T x, T y, T length) noexcept
{
    T const magnitudeX = Magnitude(x);
    T const magnitudeY = Magnitude(y);
    bool const isFlat = magnitudeX > magnitudeY;
    T const eighths = EighthsOfTangent(isFlat ? magnitudeY : magnitudeX, isFlat ? magnitudeX : magnitudeY);
    T const larger = length > T{1} ? T{1} : length;
    T const smaller = larger * eighths;
    T const squareX = WithSignOf(isFlat ? larger : smaller, x);
    T const squareY = WithSignOf(isFlat ? smaller : larger, y);
    return {IntoUnit(squareX * T{0.5} + T{0.5}), IntoUnit(squareY * T{0.5} + T{0.5})};
}

/// The point of the square for a direction of the cap around z that has this height, 1 for the hemisphere.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tVector2<T> CapToSquare(tVector3<T> const& direction, T height) noexcept
{
    // The square of the distance in the disc is (1 - z) / height. Above the horizon, where 1 - z cancels, its equal
    // (x^2 + y^2) / (1 + z) takes its place, which would cancel below.
    bool const isBelow = direction.z < T{0};
    T const across = direction.x * direction.x + direction.y * direction.y;
    T const below = (T{1} - direction.z) + T{0} * across; // for its NaN
    T const square = (isBelow ? below : across) / (height * (isBelow ? T{1} : T{1} + direction.z));
    return PolarToSquare(direction.x, direction.y, SquareRoot(square));
}

/// The direction around a normal that has these coordinates along its tangents and itself.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr tVector3<T> TurnToNormal(tVector3<T> const& direction,
                                                                     tVector3<T> const& normal) noexcept
{
    tVector3<T> first, second;
    EvaluateOrthonormalBasis(normal, first, second);
    return first * direction.x + second * direction.y + normal * direction.z;
}

/// The coordinates of a direction along the tangents of a normal and itself.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr tVector3<T> TurnFromNormal(tVector3<T> const& direction,
                                                                       tVector3<T> const& normal) noexcept
{
    tVector3<T> first, second;
    EvaluateOrthonormalBasis(normal, first, second);
    return {direction.Dot(first), direction.Dot(second), direction.Dot(normal)};
}

} // namespace detail

/// @name Disc
/// @{

/// Point of the unit disc, spread evenly by area: the concentric map, which makes circles of squares around the middle.
///
/// (0.5, 0.5) gives the middle, and the edges of the square give the circle. P. Shirley, K. Chiu, "A Low Distortion Map
/// Between Disk and Square", 1997.
///
/// @param square in [0, 1).
/// @return a point whose length may exceed 1 by rounding.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector2<T> SquareToDisc(tVector2<T> const& square) noexcept
{
    detail::tPolar<T> const polar = detail::MapConcentrically(square);
    return {polar.radius * polar.cosine, polar.radius * polar.sine};
}

/// Point of the square that SquareToDisc() maps to a point of the unit disc.
///
/// @param point any; outside of the disc, it counts as the point of the circle in its direction. NaN gives NaN, and two
///              infinite coordinates make x NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> DiscToSquare(tVector2<T> const& point) noexcept
{
    return detail::PolarToSquare(point.x, point.y, detail::SquareRoot(point.LengthSquared()));
}

/// Density of SquareToDisc() per area: 1 / pi inside and on the circle, 0 outside and for NaN. A squared length above 1
/// by four units in the last place or less counts as that of the circle.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetDiscDensity(tVector2<T> const& point) noexcept
{
    return point.LengthSquared() <= T{1} + detail::SLACK<T> ? std::numbers::inv_pi_v<T> : T{0};
}

/// @}

/// @name Triangle
/// @{

/// Barycentric coordinates of a point of a triangle, spread evenly by area.
///
/// The map halves the square along its diagonal and folds each half onto one of the triangle: E. Heitz, "A
/// Low-Distortion Map Between Triangle and Square", 2019. Of the known maps it needs no square root, rounds each
/// coordinate once at most, has a simple inverse, and stretches the least; the one with the root (G. Turk, "Generating
/// Random Points in Triangles", 1990) crowds a whole edge of the square into one corner.
///
/// @param square in [0, 1).
/// @return the weights of the first, second and third corner: none is negative, and their sum is 1 to rounding.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector3<T> SquareToTriangle(tVector2<T> const& square) noexcept
{
    T const half = T{0.5} * (square.y > square.x ? square.x : square.y); // what is left of the smaller one, too
    T const larger = square.y > square.x ? square.y : square.x;
    return {square.x - half, square.y - half, T{1} - larger};
}

/// Point of a triangle, spread evenly by area: its corners weighted by SquareToTriangle(), and summed in their order.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector3<T> SquareToTriangle(tVector2<T> const& square, tVector3<T> const& first,
                                                     tVector3<T> const& second, tVector3<T> const& third) noexcept
{
    tVector3<T> const weights = SquareToTriangle(square);
    return first * weights.x + second * weights.y + third * weights.z;
}

/// Point of the square that SquareToTriangle() maps to these barycentric coordinates; the third one is not looked at.
///
/// @param weights those of the first and second corner: none negative, and at most 1 together. Others give a point
///                of the edge of the square.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector2<T> TriangleToSquare(tVector3<T> const& weights) noexcept
{
    T const smaller = weights.y > weights.x ? weights.x : weights.y;
    return {detail::IntoUnit(weights.x + smaller), detail::IntoUnit(weights.y + smaller)};
}

/// Density of SquareToTriangle() per area of a triangle: 1 / area, the same for all its points; +infinity for one
/// without area. The area is half the length of (second - first) x (third - first).
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline T GetTriangleDensity(tVector3<T> const& first, tVector3<T> const& second,
                                          tVector3<T> const& third) noexcept
{
    return T{2} / (second - first).Cross(third - first).Length();
}

/// @}

/// @name Sphere
/// @{

/// Direction, spread evenly over the unit sphere: z is 1 - 2x, and y the share of a full turn from the x axis towards
/// the y axis. That z alone is even is Archimedes' theorem on the sphere and the cylinder.
///
/// @param square in [0, 1); x = 0 gives the pole (0, 0, 1), and y = 0 the half circle through the x axis.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToSphere(tVector2<T> const& square) noexcept
{
    // x(1 - x) instead of 1 - z^2, which cancels near the poles.
    T const radius = T{2} * detail::SquareRoot(square.x * (T{1} - square.x));
    tVector2<T> const point = detail::PointAtTurns(square.y);
    return {radius * point.x, radius * point.y, T{1} - (square.x + square.x)};
}

/// Point of the square that SquareToSphere() maps to a direction.
///
/// @param direction a unit vector. At the poles, y is 0. NaN gives NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr tVector2<T> SphereToSquare(tVector3<T> const& direction) noexcept
{
    return {detail::IntoUnit(T{0.5} - T{0.5} * direction.z), detail::TurnsOfPoint(direction.x, direction.y)};
}

/// Density of SquareToSphere() per solid angle: 1 / (4 pi) everywhere.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetSphereDensity() noexcept
{
    return std::numbers::inv_pi_v<T> * T{0.25};
}

/// @}

/// @name Hemisphere
/// @{

/// Direction, spread evenly over the hemisphere z >= 0: the concentric map, lifted so that it keeps areas (J. H.
/// Lambert, "Anmerkungen und Zusaetze zur Entwerfung der Land- und Himmelscharten", 1772).
///
/// @param square in [0, 1): the middle gives (0, 0, 1), and the edges give the horizon, z = 0.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToHemisphere(tVector2<T> const& square) noexcept
{
    detail::tPolar<T> const polar = detail::MapConcentrically(square);
    T const z = (T{1} - polar.radius) * (T{1} + polar.radius);
    T const radius = polar.radius * detail::SquareRoot(T{1} + z);
    return {radius * polar.cosine, radius * polar.sine, z};
}

/// The same around a normal, a unit vector.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToHemisphere(tVector2<T> const& square, tVector3<T> const& normal) noexcept
{
    return detail::TurnToNormal(SquareToHemisphere(square), normal);
}

/// Point of the square that SquareToHemisphere() maps to a direction.
///
/// @param direction a unit vector; below the horizon it gives a point of the edge of the square, and so does
///                  (0, 0, -1): (0.5, 0) or, by the sign of y, the one opposite. NaN gives NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> HemisphereToSquare(tVector3<T> const& direction) noexcept
{
    return detail::CapToSquare(direction, T{1});
}

/// The same around a normal, a unit vector.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> HemisphereToSquare(tVector3<T> const& direction, tVector3<T> const& normal) noexcept
{
    return HemisphereToSquare(detail::TurnFromNormal(direction, normal));
}

/// Density of SquareToHemisphere() per solid angle: 1 / (2 pi) where z >= 0, and 0 below the horizon and for NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetHemisphereDensity(tVector3<T> const& direction) noexcept
{
    return direction.z >= T{0} ? std::numbers::inv_pi_v<T> * T{0.5} : T{0};
}

/// The same around a normal. A scalar product with it that is below 0 by four units in the last place of 1 or less
/// counts as that of the horizon.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetHemisphereDensity(tVector3<T> const& direction, tVector3<T> const& normal) noexcept
{
    return direction.Dot(normal) >= -detail::SLACK<T> ? std::numbers::inv_pi_v<T> * T{0.5} : T{0};
}

/// Direction above the horizon, spread by its cosine to the z axis: a point of the disc, lifted to the hemisphere (T.
/// J. V. Malley, "A Shading Method for Computer Generated Images", 1988).
///
/// @param square in [0, 1): the middle gives (0, 0, 1). x = 0 or y = 0 gives the horizon, z = 0, whose density is 0:
///               leave such a sample out, since it counts for nothing.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToCosineHemisphere(tVector2<T> const& square) noexcept
{
    detail::tPolar<T> const polar = detail::MapConcentrically(square);
    T const z = detail::SquareRoot((T{1} - polar.radius) * (T{1} + polar.radius));
    return {polar.radius * polar.cosine, polar.radius * polar.sine, z};
}

/// The same around a normal, a unit vector. Rounding may put directions of the horizon below it, where the density is
/// 0.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToCosineHemisphere(tVector2<T> const& square, tVector3<T> const& normal) noexcept
{
    return detail::TurnToNormal(SquareToCosineHemisphere(square), normal);
}

/// Point of the square that SquareToCosineHemisphere() maps to a direction: DiscToSquare() of x and y.
///
/// @param direction a unit vector; below the horizon it counts as its mirror image. NaN in x or y gives NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> CosineHemisphereToSquare(tVector3<T> const& direction) noexcept
{
    return DiscToSquare(tVector2<T>(direction.x, direction.y));
}

/// The same around a normal, a unit vector.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> CosineHemisphereToSquare(tVector3<T> const& direction,
                                                          tVector3<T> const& normal) noexcept
{
    return CosineHemisphereToSquare(detail::TurnFromNormal(direction, normal));
}

/// Density of SquareToCosineHemisphere() per solid angle: z / pi above the horizon, and 0 on it, below it and for NaN.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetCosineHemisphereDensity(tVector3<T> const& direction) noexcept
{
    return direction.z > T{0} ? direction.z * std::numbers::inv_pi_v<T> : T{0};
}

/// The same around a normal: with the scalar product in place of z.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetCosineHemisphereDensity(tVector3<T> const& direction, tVector3<T> const& normal) noexcept
{
    T const cosine = direction.Dot(normal);
    return cosine > T{0} ? cosine * std::numbers::inv_pi_v<T> : T{0};
}

/// @}

/// @name Cone
/// @{

/// Direction, spread evenly over those whose angle to the z axis has this cosine or a larger one: the map of
/// SquareToHemisphere(), for caps of any size.
///
/// @param square in [0, 1): the middle gives (0, 0, 1), and the edges give the rim, z = cosine.
/// @param cosine in [-1, 1): that of half the opening angle; 0 is the hemisphere, -1 the sphere. Not checked. The cap
///               of a narrow cone is as large as 1 - cosine says, which is coarse in `float` for less than a degree.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToCone(tVector2<T> const& square, std::type_identity_t<T> cosine) noexcept
{
    detail::tPolar<T> const polar = detail::MapConcentrically(square);
    T const height = T{1} - cosine;
    T const rest = height * ((T{1} - polar.radius) * (T{1} + polar.radius)); // above the rim
    T const radius = polar.radius * detail::SquareRoot(height * ((T{1} + cosine) + rest));
    return {radius * polar.cosine, radius * polar.sine, cosine + rest};
}

/// The same around an axis, a unit vector.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector3<T> SquareToCone(tVector2<T> const& square, tVector3<T> const& axis,
                                              std::type_identity_t<T> cosine) noexcept
{
    return detail::TurnToNormal(SquareToCone(square, cosine), axis);
}

/// Point of the square that SquareToCone() maps to a direction.
///
/// @param direction a unit vector; outside of the cone it gives a point of the edge of the square, and so does
///                  (0, 0, -1): (0.5, 0) or, by the sign of y, the one opposite. NaN gives NaN.
/// @param cosine in [-1, 1), not checked. With -1, all of the edge is mapped to (0, 0, -1).
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> ConeToSquare(tVector3<T> const& direction, std::type_identity_t<T> cosine) noexcept
{
    return detail::CapToSquare(direction, T{1} - cosine);
}

/// The same around an axis, a unit vector.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] inline tVector2<T> ConeToSquare(tVector3<T> const& direction, tVector3<T> const& axis,
                                              std::type_identity_t<T> cosine) noexcept
{
    return ConeToSquare(detail::TurnFromNormal(direction, axis), cosine);
}

/// Density of SquareToCone() per solid angle: 1 / (2 pi (1 - cosine)) where z >= cosine, and 0 elsewhere and for NaN.
///
/// @param direction of length 1, from the apex.
/// @param cosine in [-1, 1), not checked.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetConeDensity(tVector3<T> const& direction, std::type_identity_t<T> cosine) noexcept
{
    return direction.z >= cosine ? (std::numbers::inv_pi_v<T> * T{0.5}) / (T{1} - cosine) : T{0};
}

/// The same around an axis. A scalar product with it that is below the cosine by four units in the last place of 1 or
/// less counts as that of the rim.
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
[[nodiscard]] constexpr T GetConeDensity(tVector3<T> const& direction, tVector3<T> const& axis,
                                         std::type_identity_t<T> cosine) noexcept
{
    return direction.Dot(axis) >= cosine - detail::SLACK<T> ? (std::numbers::inv_pi_v<T> * T{0.5}) / (T{1} - cosine)
                                                            : T{0};
}

/// @}

extern template BV_TEMPLATE tVector2<float> SquareToDisc(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> SquareToDisc(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> DiscToSquare(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> DiscToSquare(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE float GetDiscDensity(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE double GetDiscDensity(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToTriangle(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToTriangle(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToTriangle(tVector2<float> const&, tVector3<float> const&,
                                                             tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToTriangle(tVector2<double> const&, tVector3<double> const&,
                                                              tVector3<double> const&,
                                                              tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> TriangleToSquare(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> TriangleToSquare(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE float GetTriangleDensity(tVector3<float> const&, tVector3<float> const&,
                                                     tVector3<float> const&) noexcept;
extern template BV_TEMPLATE double GetTriangleDensity(tVector3<double> const&, tVector3<double> const&,
                                                      tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToSphere(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToSphere(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> SphereToSquare(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> SphereToSquare(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE float GetSphereDensity<float>() noexcept;
extern template BV_TEMPLATE double GetSphereDensity<double>() noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToHemisphere(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToHemisphere(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToHemisphere(tVector2<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToHemisphere(tVector2<double> const&,
                                                                tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> HemisphereToSquare(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> HemisphereToSquare(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> HemisphereToSquare(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> HemisphereToSquare(tVector3<double> const&,
                                                                tVector3<double> const&) noexcept;
extern template BV_TEMPLATE float GetHemisphereDensity(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE double GetHemisphereDensity(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE float GetHemisphereDensity(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE double GetHemisphereDensity(tVector3<double> const&, tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToCosineHemisphere(tVector2<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToCosineHemisphere(tVector2<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToCosineHemisphere(tVector2<float> const&,
                                                                     tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToCosineHemisphere(tVector2<double> const&,
                                                                      tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> CosineHemisphereToSquare(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> CosineHemisphereToSquare(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector2<float> CosineHemisphereToSquare(tVector3<float> const&,
                                                                     tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tVector2<double> CosineHemisphereToSquare(tVector3<double> const&,
                                                                      tVector3<double> const&) noexcept;
extern template BV_TEMPLATE float GetCosineHemisphereDensity(tVector3<float> const&) noexcept;
extern template BV_TEMPLATE double GetCosineHemisphereDensity(tVector3<double> const&) noexcept;
extern template BV_TEMPLATE float GetCosineHemisphereDensity(tVector3<float> const&, tVector3<float> const&) noexcept;
extern template BV_TEMPLATE double GetCosineHemisphereDensity(tVector3<double> const&,
                                                              tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToCone(tVector2<float> const&, float) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToCone(tVector2<double> const&, double) noexcept;
extern template BV_TEMPLATE tVector3<float> SquareToCone(tVector2<float> const&, tVector3<float> const&,
                                                         float) noexcept;
extern template BV_TEMPLATE tVector3<double> SquareToCone(tVector2<double> const&, tVector3<double> const&,
                                                          double) noexcept;
extern template BV_TEMPLATE tVector2<float> ConeToSquare(tVector3<float> const&, float) noexcept;
extern template BV_TEMPLATE tVector2<double> ConeToSquare(tVector3<double> const&, double) noexcept;
extern template BV_TEMPLATE tVector2<float> ConeToSquare(tVector3<float> const&, tVector3<float> const&,
                                                         float) noexcept;
extern template BV_TEMPLATE tVector2<double> ConeToSquare(tVector3<double> const&, tVector3<double> const&,
                                                          double) noexcept;
extern template BV_TEMPLATE float GetConeDensity(tVector3<float> const&, float) noexcept;
extern template BV_TEMPLATE double GetConeDensity(tVector3<double> const&, double) noexcept;
extern template BV_TEMPLATE float GetConeDensity(tVector3<float> const&, tVector3<float> const&, float) noexcept;
extern template BV_TEMPLATE double GetConeDensity(tVector3<double> const&, tVector3<double> const&, double) noexcept;

} // namespace bv::maths
