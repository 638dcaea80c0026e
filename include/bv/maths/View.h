#pragma once

/// @file
/// Cameras: where they stand, how they project, the way between pixels and the scene, and matrices that are taken
/// apart.

#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

#include "bv/Export.h"
#include "bv/maths/DepthRange.h"
#include "bv/maths/Forward.h"
#include "bv/maths/VectorTransforms.h"
#include "bv/maths/detail/MatrixAccess.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tMatrixParts.h"
#include "bv/maths/tPixelRays.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// @name Cameras
/// A camera looks down its -z axis; x points to the right of the picture and y to its top.
/// @{

/// The matrix from the world to a camera, the view matrix: the inverse of PlaceCamera(), computed as such. Its rows are
/// the right, the upper and the backward direction; each element of its fourth column is 0 - the scalar product of the
/// row with the eye.
///
/// State: GENERAL, since inverses and products in state ORTHONORMAL drop a translation; ORTHONORMAL for an eye at the
/// origin, where there is none.
///
/// The line of sight is target - eye. Its directions are unit vectors, perpendicular to each other, for vectors of any
/// finite length; within some 14 degrees of the line, the product of the line and up is freed of what rounding leaves
/// of it along the line. Where up lies within some 8 epsilon of the line of sight, or is zero, the right direction is
/// the part of the x axis that is perpendicular to the line; of the z axis, where the x component of the line is larger
/// than both others. An eye at the target gives NaN in the first three rows, and so do NaN and infinities in an
/// argument, but for the fourth column of PlaceCamera().
///
/// @param eye where the camera stands.
/// @param target a point in the middle of the picture.
/// @param up a direction that points to the top of the picture, of any length.
/// @tparam T `float` or `double`; both instances are in the library, as of all templates here.
template <typename T>
[[nodiscard]] tMatrix4<T> LookAt(tVector3<T> const& eye, tVector3<T> const& target, tVector3<T> const& up) noexcept;

/// The matrix from a camera to the world: the right, the upper and the backward direction and the eye are its columns.
/// Arguments, edges and states are those of LookAt().
template <typename T>
[[nodiscard]] tMatrix4<T> PlaceCamera(tVector3<T> const& eye, tVector3<T> const& target,
                                      tVector3<T> const& up) noexcept;

/// @}

/// @name Projections
/// They look down -z, as tMatrix4::PerspectiveProjection() does, and map what they show to -1 to 1 in x and y. All are
/// in state GENERAL. NaN and infinities are not rejected: they give NaN or infinities.
/// @{

/// Central projection of a symmetric view: the picture spans the vertical field of view. The values of
/// PerspectiveFromTangent() for `std::tan(fieldOfView / 2)`, whose bits may differ between C libraries.
///
/// @param fieldOfView angle from the bottom to the top of the picture in radians.
/// @param aspect width of the picture by its height.
/// @param nearPlane,farPlane,range as PerspectiveFromTangent() has them.
/// @throws InvalidArgumentException when the angle is not above 0 and below pi, the aspect is 0, or near and far are
///         IsEqual(); NaN passes.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T>
PerspectiveFromFieldOfView(T fieldOfView, std::type_identity_t<T> aspect, std::type_identity_t<T> nearPlane,
                           std::type_identity_t<T> farPlane, DepthRange range = DepthRange::MINUS_ONE_TO_ONE);

/// The same without a trigonometric function, so that the bits are the same everywhere: m11 = 1 / (tangent * aspect)
/// and m22 = 1 / tangent. With n and f for the planes and d = f - n, m33 and m34 are
/// - for MINUS_ONE_TO_ONE -(f + n) / d and ((-2 * f) * n) / d, as in tMatrix4::PerspectiveProjection(),
/// - for ZERO_TO_ONE -f / d and n * m33,
/// - for ONE_TO_ZERO n / d and f * m33.
///
/// A far plane at +infinity is no limit to the view. They then are the limits of these: -1 and -2 * n, -1 and -n, 0 and
/// n. The reversed one is that of E. Lengyel, "Projection Matrix Tricks", 2007, and N. Reed, "Depth Precision
/// Visualized", 2015.
///
/// @param tangent half the height of the picture by its distance from the eye: the tangent of half the vertical field
///        of view. A negative one turns the picture by half a turn.
/// @param aspect width of the picture by its height; a negative one mirrors the picture.
/// @param nearPlane,farPlane distances along -z; neither their signs nor their order are checked.
/// @param range what the planes are mapped to.
/// @throws InvalidArgumentException when the tangent or the aspect is 0, or near and far are IsEqual().
template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T>
PerspectiveFromTangent(T tangent, std::type_identity_t<T> aspect, std::type_identity_t<T> nearPlane,
                       std::type_identity_t<T> farPlane, DepthRange range = DepthRange::MINUS_ONE_TO_ONE);

/// tMatrix4::PerspectiveProjection() for any range of depth and, at +infinity, without a far plane: m33 and m34 are
/// those of PerspectiveFromTangent(), all others those of the member.
///
/// @throws InvalidArgumentException when the two ends of one extent are IsEqual().
template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T>
PerspectiveProjection(T left, std::type_identity_t<T> right, std::type_identity_t<T> bottom,
                      std::type_identity_t<T> top, std::type_identity_t<T> nearPlane, std::type_identity_t<T> farPlane,
                      DepthRange range = DepthRange::MINUS_ONE_TO_ONE);

/// tMatrix4::OrthogonalProjection() for any range of depth. With p = 1 / (far - near), m33 and m34 are -p and -near * p
/// for ZERO_TO_ONE, p and far * p for ONE_TO_ZERO; all others are those of the member. There is no parallel projection
/// without a far plane: one at +infinity gives NaN, or the depth 0 everywhere for ZERO_TO_ONE.
///
/// It has the field's name rather than the member's: its matrix is not an orthogonal one.
///
/// @throws InvalidArgumentException when the two ends of one extent are IsEqual().
template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T>
OrthographicProjection(T left, std::type_identity_t<T> right, std::type_identity_t<T> bottom,
                       std::type_identity_t<T> top, std::type_identity_t<T> nearPlane, std::type_identity_t<T> farPlane,
                       DepthRange range = DepthRange::MINUS_ONE_TO_ONE);

/// @}

/// @name Pixels
/// Pixels are counted as tPixelRays counts them: the middle of the first one is at (0.5, 0.5).
/// @{

/// The ray through a point of the picture: `tPixelRays(size, projection, cameraToWorld)(pixel)`, which is the form for
/// more than one.
template <typename T>
[[nodiscard]] tRay<T> GetPixelRay(tVector2<T> const& pixel, tVector2<T> const& size, tMatrix4<T> const& projection,
                                  tMatrix4<T> const& cameraToWorld) noexcept;

/// Where a point of the world shows in the picture: x and y in pixels, and z its depth in the range that the projection
/// has.
///
/// The point is transformed as tVector3::Transformed() does it, and divided as there. With (a, b, c) for that, the
/// pixel is ((a + 1) * (width * 0.5), (1 - b) * (height * 0.5), c). Points outside the picture, or in front of the near
/// plane or behind the far one, have a place, too.
///
/// @param point a point of the world.
/// @param worldToClip the projection, times the view matrix.
/// @param size width and height of the picture in pixels.
/// @return nothing for a point whose w is not above 0: that is beside or behind the eye, or has NaN there.
///         Where w is so small that 1 / w overflows, the place is infinite or NaN.
template <typename T>
[[nodiscard, gnu::always_inline]] inline std::optional<tVector3<T>>
GetPixel(tVector3<T> const& point, tMatrix4<T> const& worldToClip, tVector2<T> const& size) noexcept;

/// The distance from the plane of the eye at which a projection gives a depth, measured along the line of sight: of a
/// central projection m34 / (depth + m33), of a parallel one (m34 - depth) / m33. So the depths of all ranges lead back
/// to the scene; the depth of the infinitely far gives an infinity, or NaN where m34 is 0.
///
/// @param depth as GetPixel() gives it.
/// @param projection a projection that looks down -z, whose elements are read whatever its state.
template <typename T>
[[nodiscard, gnu::always_inline]] inline T GetViewDistance(std::type_identity_t<T> depth,
                                                           tMatrix4<T> const& projection) noexcept;

/// @}

/// @name Inverses
/// @{

/// The inverse of a matrix, or nothing for one that is singular up to rounding. The scale of a matrix makes no
/// difference: neither of the whole, nor of single rows or columns.
///
/// By state:
/// - IDENTITY and ORTHONORMAL: as tMatrix4::Inverted(), whatever the elements hold;
/// - DIAGONAL: as that, too, but nothing when an element of the diagonal or its reciprocal is 0, infinite or NaN;
/// - otherwise nothing when an element is infinite or NaN, or unless |D| > 8 * epsilon * P, where D is the determinant,
///   a sum of 24 products, and P the sum of their magnitudes: the permanent of the magnitudes of the elements. The
///   inverse is in state GENERAL.
///
/// The rounding of a determinant is below 4.5 * epsilon * P, and that of its elements can change it by 2 * epsilon * P.
/// So a matrix that is the rounded form of a singular one never has an inverse, and one with |D| above
/// 13 * epsilon * P always has. A factor for a row or a column is one for D and P alike, which is not true of the
/// lengths of rows: a translation would make every small scale look singular. J. Demmel, "The Componentwise Distance to
/// the Nearest Singular Matrix", 1992; N. Higham, "Accuracy and Stability of Numerical Algorithms", 2002.
///
/// The bits are those of tMatrix4::Inverted(), as long as no product over- or underflows in that. Where the magnitudes
/// in a row add up to more than 2^15, or |D| is below 2^-70 (`double`: 2^120 and 2^-480) or close to its bound, rows
/// and then columns are scaled first, by powers of two, to a largest magnitude from 1 to 2. Nothing is returned when P
/// is then still below 2^-50 (`double`: 2^-400), or when an element of the inverse overflows.
template <typename T>
[[nodiscard, gnu::always_inline]] inline std::optional<tMatrix4<T>> TryInverted(tMatrix4<T> const& matrix) noexcept;

/// The matrix that turns normals where a matrix turns surfaces: the transpose of TryInverted(), with the bits that
/// ComputeNormalMatrices() has, or nothing where there is no inverse. The result is for directions,
/// tVector3::TransformedAsVector(); normals are not of length 1 afterwards.
template <typename T>
[[nodiscard, gnu::always_inline]] inline std::optional<tMatrix4<T>> GetNormalMatrix(tMatrix4<T> const& matrix) noexcept;

/// The normal of a surface that a matrix has turned: `normal.TransformedAsVector(*GetNormalMatrix(matrix))`, which is
/// not normalised, or nothing where there is no such matrix. For many normals, keep the matrix.
template <typename T>
[[nodiscard]] std::optional<tVector3<T>> TransformNormal(tMatrix4<T> const& matrix, tVector3<T> const& normal) noexcept;

/// @}

/// @name Parts of a matrix
/// @{

/// Takes an affine matrix apart: M = T R S, with a translation T, a rotation R and a symmetric S, which scales along
/// three perpendicular axes. This polar decomposition is unique where no scale is 0, has no preferred axes, and its R
/// is the rotation closest to M where M has no reflection. K. Shoemake, T. Duff, "Matrix Animation and Polar
/// Decomposition", 1992.
///
/// A reflection is carried by the sign of S: its three scales are then negative, rather than one of them, since none is
/// preferred. Where scales are 0 up to rounding, the rotation leaves the axes of these scales where they are, as far as
/// the others let it. The zero matrix has no rotation.
///
/// It is computed in double precision for both types, by rotations that make the columns of the matrix perpendicular:
/// M. Hestenes, "Inversion of Matrices by Biorthogonalization and Related Results", 1958. A matrix whose columns are
/// perpendicular to begin with is left as it is, and the shear is then exactly 0. Scales below 2^-500 of the largest
/// element count as 0.
///
/// @param matrix read by its state: IDENTITY has no parts but the defaults, and DIAGONAL is read on its diagonal.
/// @return nothing when the fourth row is not (0, 0, 0, 1) exactly (of DIAGONAL: m44 is not 1), or an element is
///         infinite or NaN.
template <typename T>
[[nodiscard]] std::optional<tMatrixParts<T>> Decompose(tMatrix4<T> const& matrix) noexcept;

/// Puts a matrix together from its parts: translation, rotation and symmetric part, which is applied first. Each
/// element of the upper left 3x3 is ((r_i1 * s_1j) + r_i2 * s_2j) + r_i3 * s_3j, with R from tQuaternion::GetMatrix().
/// The result is classified as a matrix of sixteen numbers is.
template <typename T>
[[nodiscard]] tMatrix4<T> Compose(tMatrixParts<T> const& parts) noexcept;

/// The same without shear: the matrix that scales along the axes, then rotates, then moves.
template <typename T>
[[nodiscard]] tMatrix4<T> Compose(tVector3<T> const& translation, tQuaternion<T> const& rotation,
                                  tVector3<T> const& scale) noexcept;

/// @}

namespace detail
{

// Where failures say that they were raised; see Place.
inline constexpr Place PERSPECTIVE_FROM_FIELD_OF_VIEW{"bv::maths::PerspectiveFromFieldOfView", 58};
inline constexpr Place PERSPECTIVE_FROM_TANGENT{"bv::maths::PerspectiveFromTangent", 76};
inline constexpr Place PERSPECTIVE_OF_EXTENTS{"bv::maths::PerspectiveProjection", 94};
inline constexpr Place ORTHOGRAPHIC_OF_EXTENTS{"bv::maths::OrthographicProjection", 112};

/// std::tan(fieldOfView / 2).
/// @throws InvalidArgumentException as PerspectiveFromFieldOfView() does for the angle.
template <typename T>
[[nodiscard]] T GetTangentOfHalf(T fieldOfView);

/// Throws when the tangent or the aspect is 0, or near and far are IsEqual().
template <typename T>
[[gnu::cold]] void CheckLens(T tangent, T aspect, T nearPlane, T farPlane, Place const& place);

/// Throws when the two ends of one extent are IsEqual().
template <typename T>
[[gnu::cold]] void CheckExtents(T left, T right, T bottom, T top, T nearPlane, T farPlane, Place const& place);

/// TryInverted() for whatever is not plainly regular.
template <typename T>
[[nodiscard]] std::optional<tMatrix4<T>> TryInvertedWithCare(tMatrix4<T> const& matrix) noexcept;

/// GetNormalMatrix() for the same.
template <typename T>
[[nodiscard]] std::optional<tMatrix4<T>> GetNormalMatrixWithCare(tMatrix4<T> const& matrix) noexcept;

/// The two elements of a projection that decide on depths.
template <typename T>
struct tDepthElements
{
    T m33, m34;
};

/// What m33 and m34 of a central projection are times the depth, and the depth. Beside a far plane at infinity,
/// anything finite: the quotients of infinities, which do not count, would raise a flag.
template <typename T>
struct tDepthFractions
{
    T m33;
    T m34; ///< 0 in the ranges in which it is a product with m33
    T depth;
};

template <typename T>
[[nodiscard, gnu::always_inline]] inline tDepthFractions<T> GetDepthFractions(T nearPlane, T farPlane,
                                                                              DepthRange range) noexcept
{
    bool const isInfinite = farPlane == std::numeric_limits<T>::infinity();
    T const depth = isInfinite ? T{1} : farPlane - nearPlane;
    T const end = isInfinite ? nearPlane : farPlane;
    if (range == DepthRange::ZERO_TO_ONE)
        return {-end, T{0}, depth};
    if (range == DepthRange::ONE_TO_ZERO)
        return {nearPlane, T{0}, depth};
    return {-(end + nearPlane), T{-2} * end * nearPlane, depth};
}

/// The elements of a central projection, from the quotients of the two dividends and the depth.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tDepthElements<T> GetCentralDepth(T m33, T m34, T nearPlane, T farPlane,
                                                                           DepthRange range) noexcept
{
    bool const isInfinite = farPlane == std::numeric_limits<T>::infinity();
    if (range == DepthRange::ONE_TO_ZERO) // without a far plane, m33 is near / 1
        return {isInfinite ? T{0} : m33, (isInfinite ? T{1} : farPlane) * m33};
    if (isInfinite)
        m33 = T{-1};
    if (range == DepthRange::ZERO_TO_ONE)
        return {m33, nearPlane * m33};
    return {m33, isInfinite ? T{-2} * nearPlane : m34};
}

/// Within these bounds, no product of a determinant or an inverse overflows, and what underflows is too small to count.
template <typename T>
inline constexpr T LARGEST_ROW_SUM = sizeof(T) == sizeof(float) ? T(0x1p15) : T(0x1p120);
template <typename T>
inline constexpr T SMALLEST_DETERMINANT = sizeof(T) == sizeof(float) ? T(0x1p-70) : T(0x1p-480);
/// How large a determinant is, by the sum of the magnitudes of its products, when it is no rounding error.
template <typename T>
inline constexpr T SINGULARITY = T{8} * std::numeric_limits<T>::epsilon();

inline namespace BV_REGISTERS
{

/// The sums of the magnitudes in each row.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> RowSums(T const* m) noexcept
{
    tRows<T> const columns = Transposed(LoadRows(m));
    return Magnitude(columns.row1) + Magnitude(columns.row2) + Magnitude(columns.row3) + Magnitude(columns.row4);
}

/// Whether a determinant is far from what rounding may have left of 0. The product of the rows' sums is not below the
/// permanent of the magnitudes, since it has all products of the latter and others.
template <typename T>
[[nodiscard, gnu::always_inline]] inline bool IsPlainlyRegular(T determinant, tFour<T> const& rowSums) noexcept
{
    T const product = Get<0>(rowSums) * Get<1>(rowSums) * (Get<2>(rowSums) * Get<3>(rowSums));
    T const magnitude = Magnitude(determinant);
    return magnitude >= SMALLEST_DETERMINANT<T> && magnitude > SINGULARITY<T> * product;
}

/// The inverse of a matrix, or its transpose, or nothing: what TryInverted() and GetNormalMatrix() share.
template <bool IS_TRANSPOSED, typename T>
[[nodiscard, gnu::always_inline]] inline std::optional<tMatrix4<T>>
TryInvertedOrNormal(tMatrix4<T> const& matrix) noexcept
{
    using Row = tFour<T>;
    T const* const m = matrix.Get();
    Row const sums = RowSums(m);
    if (MatrixAccess::IsGeneral(matrix) && All(sums <= Broadcast<Row>(LARGEST_ROW_SUM<T>)))
    {
        tAdjugate<T> const adjugate(m);
        if (IsPlainlyRegular<T>(adjugate.determinant, sums))
        {
            tRows<T> rows = adjugate.Inverse();
            auto state = tMatrix4<T>::GENERAL;
            if constexpr (IS_TRANSPOSED)
            {
                rows = Transposed(rows);
                state = MatrixAccess::Classify(rows);
            }
            std::optional<tMatrix4<T>> result(std::in_place);
            MatrixAccess::Set(*result, rows, state);
            return result;
        }
    }
    if constexpr (IS_TRANSPOSED)
        return GetNormalMatrixWithCare(matrix);
    else
        return TryInvertedWithCare(matrix);
}

/// A central projection of a symmetric view.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T> ProjectFromTangent(T tangent, T aspect, T nearPlane, T farPlane,
                                                                        DepthRange range, Place const& place)
{
    if (tangent == T{0} || aspect == T{0} || !IsPlainlyDifferent(nearPlane, farPlane - nearPlane, TOLERANCE<T>))
        [[unlikely]]
        CheckLens(tangent, aspect, nearPlane, farPlane, place);
    T const zero{0};
    T const one{1};
    auto const fractions = GetDepthFractions(nearPlane, farPlane, range);
    auto const quotients = Four(one, one, fractions.m33, fractions.m34) /
                           Four(tangent * aspect, tangent, fractions.depth, fractions.depth);
    auto const [m33, m34] = GetCentralDepth(Get<2>(quotients), Get<3>(quotients), nearPlane, farPlane, range);
    return MatrixAccess::Make<T>({Four(Get<0>(quotients), zero, zero, zero), Four(zero, Get<1>(quotients), zero, zero),
                                  Four(zero, zero, m33, m34), Four(zero, zero, -one, zero)},
                                 tMatrix4<T>::GENERAL);
}

} // namespace BV_REGISTERS

} // namespace detail

template <typename T>
inline tMatrix4<T> PerspectiveFromFieldOfView(T fieldOfView, std::type_identity_t<T> aspect,
                                              std::type_identity_t<T> nearPlane, std::type_identity_t<T> farPlane,
                                              DepthRange range)
{
    return detail::ProjectFromTangent(detail::GetTangentOfHalf(fieldOfView), aspect, nearPlane, farPlane, range,
                                      detail::PERSPECTIVE_FROM_FIELD_OF_VIEW);
}

template <typename T>
inline tMatrix4<T> PerspectiveFromTangent(T tangent, std::type_identity_t<T> aspect, std::type_identity_t<T> nearPlane,
                                          std::type_identity_t<T> farPlane, DepthRange range)
{
    return detail::ProjectFromTangent(tangent, aspect, nearPlane, farPlane, range, detail::PERSPECTIVE_FROM_TANGENT);
}

template <typename T>
inline tMatrix4<T> PerspectiveProjection(T left, std::type_identity_t<T> right, std::type_identity_t<T> bottom,
                                         std::type_identity_t<T> top, std::type_identity_t<T> nearPlane,
                                         std::type_identity_t<T> farPlane, DepthRange range)
{
    using Row = detail::tFour<T>;
    Row const lower = detail::Four(left, bottom, nearPlane, nearPlane);
    Row const upper = detail::Four(right, top, farPlane, farPlane);
    Row const extents = upper - lower;
    if (!detail::ArePlainlyDifferent<T>(lower, extents, TOLERANCE<T>)) [[unlikely]]
        detail::CheckExtents<T>(left, right, bottom, top, nearPlane, farPlane, detail::PERSPECTIVE_OF_EXTENTS);
    auto const fractions = detail::GetDepthFractions<T>(nearPlane, farPlane, range);
    auto const [m33, m34] = detail::GetCentralDepth<T>(fractions.m33 / fractions.depth, fractions.m34 / fractions.depth,
                                                       nearPlane, farPlane, range);
    return detail::MatrixAccess::Make<T>(detail::CentralRows<T>(T{2} * nearPlane, upper + lower, extents, m33, m34),
                                         tMatrix4<T>::GENERAL);
}

template <typename T>
inline tMatrix4<T> OrthographicProjection(T left, std::type_identity_t<T> right, std::type_identity_t<T> bottom,
                                          std::type_identity_t<T> top, std::type_identity_t<T> nearPlane,
                                          std::type_identity_t<T> farPlane, DepthRange range)
{
    using Row = detail::tFour<T>;
    Row const lower = detail::Four(left, bottom, nearPlane, nearPlane);
    Row const upper = detail::Four(right, top, farPlane, farPlane);
    Row const extents = upper - lower;
    if (!detail::ArePlainlyDifferent<T>(lower, extents, TOLERANCE<T>)) [[unlikely]]
        detail::CheckExtents<T>(left, right, bottom, top, nearPlane, farPlane, detail::ORTHOGRAPHIC_OF_EXTENTS);
    Row const reciprocals = detail::Broadcast<Row>(T{1}) / extents;
    detail::tRows<T> rows = detail::ParallelRows<T>(upper + lower, reciprocals);
    T const perDepth = detail::Get<2>(reciprocals);
    if (range == DepthRange::ZERO_TO_ONE)
        rows.row3 = detail::Four(T{0}, T{0}, -perDepth, -nearPlane * perDepth);
    else if (range == DepthRange::ONE_TO_ZERO)
        rows.row3 = detail::Four(T{0}, T{0}, perDepth, farPlane * perDepth);
    return detail::MatrixAccess::Make<T>(rows, tMatrix4<T>::GENERAL);
}

template <typename T>
inline std::optional<tVector3<T>> GetPixel(tVector3<T> const& point, tMatrix4<T> const& worldToClip,
                                           tVector2<T> const& size) noexcept
{
    using Matrix = tMatrix4<T>;
    using Row = detail::tFour<T>;
    T const one{1};
    T const* const m = worldToClip.Get();
    Row place = detail::Four(point.x, point.y, point.z, one);
    if (!worldToClip.IsDiagonal())
    {
        auto const [column1, column2, column3, column4] = detail::Transposed(detail::LoadRows(m));
        Row const clip = detail::Combine<T>(column1, column2, column3, point.x, point.y, point.z) + column4;
        T const w = detail::Get<3>(clip);
        if (!(w > T{0}))
            return std::nullopt;
        place = clip * detail::Broadcast<Row>(one / w);
    }
    else if (!worldToClip.IsIdentity())
    {
        if (!(m[Matrix::IDX_44] > T{0}))
            return std::nullopt;
        T const q = one / m[Matrix::IDX_44];
        place = place * detail::Four(q * m[Matrix::IDX_11], q * m[Matrix::IDX_22], q * m[Matrix::IDX_33], one);
    }
    // To z, a negative zero is added, which changes nothing.
    Row const fromCorner = place * detail::Four(one, -one, one, one) + detail::Four(one, one, -T{0}, -T{0});
    return detail::FirstThree<T>(fromCorner * detail::Four(size.x * T{0.5}, size.y * T{0.5}, one, one));
}

template <typename T>
inline T GetViewDistance(std::type_identity_t<T> depth, tMatrix4<T> const& projection) noexcept
{
    T const* const m = projection.Get();
    T const m33 = m[tMatrix4<T>::IDX_33];
    T const m34 = m[tMatrix4<T>::IDX_34];
    return m[tMatrix4<T>::IDX_43] == T{0} ? (m34 - depth) / m33 : m34 / (depth + m33);
}

template <typename T>
inline std::optional<tMatrix4<T>> TryInverted(tMatrix4<T> const& matrix) noexcept
{
    return detail::TryInvertedOrNormal<false>(matrix);
}

template <typename T>
inline std::optional<tMatrix4<T>> GetNormalMatrix(tMatrix4<T> const& matrix) noexcept
{
    return detail::TryInvertedOrNormal<true>(matrix);
}

extern template BV_TEMPLATE tMatrix4<float> LookAt(tVector3<float> const&, tVector3<float> const&,
                                                   tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<float> PlaceCamera(tVector3<float> const&, tVector3<float> const&,
                                                        tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<float> PerspectiveFromFieldOfView(float, float, float, float, DepthRange);
extern template BV_TEMPLATE tMatrix4<float> PerspectiveFromTangent(float, float, float, float, DepthRange);
extern template BV_TEMPLATE tMatrix4<float> PerspectiveProjection(float, float, float, float, float, float, DepthRange);
extern template BV_TEMPLATE tMatrix4<float> OrthographicProjection(float, float, float, float, float, float,
                                                                   DepthRange);
extern template BV_TEMPLATE float detail::GetTangentOfHalf(float);
extern template BV_TEMPLATE void detail::CheckLens(float, float, float, float, Place const&);
extern template BV_TEMPLATE void detail::CheckExtents(float, float, float, float, float, float, Place const&);
extern template BV_TEMPLATE tRay<float> GetPixelRay(tVector2<float> const&, tVector2<float> const&,
                                                    tMatrix4<float> const&, tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector3<float>> GetPixel(tVector3<float> const&, tMatrix4<float> const&,
                                                                    tVector2<float> const&) noexcept;
extern template BV_TEMPLATE float GetViewDistance(float, tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<float>> TryInverted(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<float>> detail::TryInvertedWithCare(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<float>>
detail::GetNormalMatrixWithCare(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<float>> GetNormalMatrix(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector3<float>> TransformNormal(tMatrix4<float> const&,
                                                                           tVector3<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double> LookAt(tVector3<double> const&, tVector3<double> const&,
                                                    tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double> PlaceCamera(tVector3<double> const&, tVector3<double> const&,
                                                         tVector3<double> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double> PerspectiveFromFieldOfView(double, double, double, double, DepthRange);
extern template BV_TEMPLATE tMatrix4<double> PerspectiveFromTangent(double, double, double, double, DepthRange);
extern template BV_TEMPLATE tMatrix4<double> PerspectiveProjection(double, double, double, double, double, double,
                                                                   DepthRange);
extern template BV_TEMPLATE tMatrix4<double> OrthographicProjection(double, double, double, double, double, double,
                                                                    DepthRange);
extern template BV_TEMPLATE double detail::GetTangentOfHalf(double);
extern template BV_TEMPLATE void detail::CheckLens(double, double, double, double, Place const&);
extern template BV_TEMPLATE void detail::CheckExtents(double, double, double, double, double, double, Place const&);
extern template BV_TEMPLATE tRay<double> GetPixelRay(tVector2<double> const&, tVector2<double> const&,
                                                     tMatrix4<double> const&, tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector3<double>> GetPixel(tVector3<double> const&, tMatrix4<double> const&,
                                                                     tVector2<double> const&) noexcept;
extern template BV_TEMPLATE double GetViewDistance(double, tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<double>> TryInverted(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<double>>
detail::TryInvertedWithCare(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<double>>
detail::GetNormalMatrixWithCare(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrix4<double>> GetNormalMatrix(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tVector3<double>> TransformNormal(tMatrix4<double> const&,
                                                                            tVector3<double> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrixParts<float>> Decompose(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<float> Compose(tMatrixParts<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<float> Compose(tVector3<float> const&, tQuaternion<float> const&,
                                                    tVector3<float> const&) noexcept;
extern template BV_TEMPLATE std::optional<tMatrixParts<double>> Decompose(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double> Compose(tMatrixParts<double> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double> Compose(tVector3<double> const&, tQuaternion<double> const&,
                                                     tVector3<double> const&) noexcept;

} // namespace bv::maths
