#include "bv/maths/View.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/Componentwise.h"

namespace bv::maths
{

namespace
{

using detail::Four;
using detail::Magnitude;
using detail::MatrixAccess;
using detail::Place;

[[noreturn, gnu::cold]] void ThrowInvalidView(Place const& place)
{
    throw InvalidArgumentException(L"Invalid view parameters", "internal\\Maths\\View", place.line, place.member);
}

// Cameras

/// Where the squared length of a vector, and what is computed with it, neither overflows nor loses digits.
template <typename T>
[[nodiscard]] bool IsOfUsualSize(T lengthSquared) noexcept
{
    constexpr T LIMIT = sizeof(T) == sizeof(float) ? T(0x1p60) : T(0x1p500);
    return lengthSquared >= T{1} / LIMIT && lengthSquared <= LIMIT;
}

// What is rare takes its vectors by value, and its result is taken component by component, so that the usual ones never
// lie in memory.

/// A vector in the same direction, of a length whose square is of usual size, from one that is not; zero stays zero.
template <typename T>
[[nodiscard, gnu::noinline, gnu::cold]] tVector3<T> OfUsualSize(tVector3<T> v) noexcept
{
    T const largest = GetMaxComponent(Abs(v));
    bool const isZeroOrNaN = largest == T{0} || v.LengthSquared() != v.LengthSquared();
    return isZeroOrNaN ? v : v / largest;
}

/// The vector of length 1 in the same direction.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tVector3<T> DirectionOf(tVector3<T> const& v) noexcept
{
    T const lengthSquared = v.LengthSquared();
    T const scale = T{1} / detail::SquareRoot(lengthSquared);
    T x = v.x * scale, y = v.y * scale, z = v.z * scale;
    if (!IsOfUsualSize(lengthSquared)) [[unlikely]]
    {
        tVector3<T> const rare = OfUsualSize(v).Normalised();
        x = rare.x;
        y = rare.y;
        z = rare.z;
    }
    return {x, y, z};
}

/// Where the squared sine between up and the line of sight is below that of 14 degrees, by the squared length of up.
template <typename T>
[[nodiscard]] bool IsNearLine(T sideSquared, T upSquared) noexcept
{
    constexpr T NEAR_SQUARED = T{0.0625};
    return sideSquared <= NEAR_SQUARED * upSquared; // NaN is not near to anything
}

template <typename T>
struct CameraAxes
{
    tVector3<T> right, up, back;

    [[gnu::always_inline]] CameraAxes(tVector3<T> const& eye, tVector3<T> const& target,
                                      tVector3<T> const& upwards) noexcept
    {
        tVector3<T> const forward = DirectionOf(target - eye);
        tVector3<T> const side = forward.Cross(upwards);
        T const sideSquared = side.LengthSquared();
        T const upSquared = upwards.LengthSquared();
        T const scale = T{1} / detail::SquareRoot(sideSquared);
        T x = side.x * scale, y = side.y * scale, z = side.z * scale;
        if (!IsOfUsualSize(upSquared) || IsNearLine(sideSquared, upSquared)) [[unlikely]]
        {
            tVector3<T> const rare = GetRareRight(forward, upwards);
            x = rare.x;
            y = rare.y;
            z = rare.z;
        }
        right = {x, y, z};
        up = right.Cross(forward);
        back = -forward;
    }

private:
    /// The right direction for an upper one of any length, or near the line of sight. Their vector product then is
    /// mostly rounding errors, also along the line: what it has of that is taken away.
    [[nodiscard, gnu::noinline, gnu::cold]] static tVector3<T> GetRareRight(tVector3<T> forward,
                                                                            tVector3<T> upwards) noexcept
    {
        constexpr T PARALLEL = T{8} * std::numeric_limits<T>::epsilon();
        tVector3<T> const usual = IsOfUsualSize(upwards.LengthSquared()) ? upwards : OfUsualSize(upwards);
        T const upSquared = usual.LengthSquared();
        tVector3<T> const side = forward.Cross(usual);
        T const sideSquared = side.LengthSquared();
        if (sideSquared <= PARALLEL * PARALLEL * upSquared)
        {
            tVector3<T> const other = GetRightWithoutUp(forward);
            return other * (T{1} / detail::SquareRoot(other.LengthSquared()));
        }
        tVector3<T> const rough = side * (T{1} / detail::SquareRoot(sideSquared));
        return IsNearLine(sideSquared, upSquared) ? (rough - forward * forward.Dot(rough)).Normalised() : rough;
    }

    /// The part of the x or z axis that is perpendicular to a unit vector.
    [[nodiscard]] static tVector3<T> GetRightWithoutUp(tVector3<T> const& forward) noexcept
    {
        T const alongX = Magnitude(forward.x);
        bool const isNearX = alongX > Magnitude(forward.y) && alongX > Magnitude(forward.z);
        tVector3<T> const axis = isNearX ? tVector3<T>(T{0}, T{0}, T{1}) : tVector3<T>(T{1}, T{0}, T{0});
        return axis - forward * (isNearX ? forward.z : forward.x);
    }
};

template <typename T>
[[nodiscard]] typename tMatrix4<T>::State GetCameraState(tVector3<T> const& eye) noexcept
{
    bool const isAtOrigin = eye.x == T{0} && eye.y == T{0} && eye.z == T{0};
    return isAtOrigin ? tMatrix4<T>::ORTHONORMAL : tMatrix4<T>::GENERAL;
}

// Inverses

[[nodiscard]] constexpr std::size_t IndexOf(std::size_t row, std::size_t column) noexcept
{
    return 4 * row + column;
}

/// The permanent of the magnitudes: of pairs of columns, the first two rows have one and the last two the other.
template <typename T>
[[nodiscard]] T GetPermanentOfMagnitudes(T const (&m)[16]) noexcept
{
    auto const pair = [&m](std::size_t row, std::size_t j, std::size_t k)
    {
        return Magnitude(m[IndexOf(row, j)] * m[IndexOf(row + 1, k)]) +
               Magnitude(m[IndexOf(row, k)] * m[IndexOf(row + 1, j)]);
    };
    return pair(0, 0, 1) * pair(2, 2, 3) + pair(0, 0, 2) * pair(2, 1, 3) + pair(0, 0, 3) * pair(2, 1, 2) +
           pair(0, 1, 2) * pair(2, 0, 3) + pair(0, 1, 3) * pair(2, 0, 2) + pair(0, 2, 3) * pair(2, 0, 1);
}

/// A matrix whose rows and then columns are scaled by powers of two, so that the largest element of each is from 1 to
/// 2; rows are larger where a column was scaled up.
template <typename T>
struct Equilibrated
{
    alignas(16) T elements[16];
    int rows[4];
    int columns[4];

    /// @return false for a matrix with a line of zeros, an infinity or NaN.
    [[nodiscard]] bool Scale(T const* m) noexcept
    {
        for (std::size_t i = 0; i < 16; ++i)
            if (!std::isfinite(elements[i] = m[i]))
                return false;
        for (std::size_t row = 0; row < 4; ++row)
            if (!ScaleLine(row * 4, 1, rows[row]))
                return false;
        for (std::size_t column = 0; column < 4; ++column)
            if (!ScaleLine(column, 4, columns[column]))
                return false;
        return true;
    }

private:
    [[nodiscard]] bool ScaleLine(std::size_t first, std::size_t step, int& exponent) noexcept
    {
        T largest{0};
        for (std::size_t i = 0; i < 4; ++i)
            largest = std::max(largest, Magnitude(elements[first + i * step]));
        if (largest == T{0})
            return false;
        exponent = std::ilogb(largest);
        for (std::size_t i = 0; i < 4; ++i)
            elements[first + i * step] = std::ldexp(elements[first + i * step], -exponent);
        return true;
    }
};

template <typename T>
[[nodiscard]] std::optional<tMatrix4<T>> TryInvertedDiagonal(tMatrix4<T> const& matrix) noexcept
{
    T const* const m = matrix.Get();
    for (std::size_t i = 0; i < 16; i += 5)
        if (m[i] == T{0} || !std::isfinite(m[i]) || !std::isfinite(T{1} / m[i]))
            return std::nullopt;
    return MatrixAccess::Make(detail::InverseOfDiagonal(detail::LoadRows(m), detail::DiagonalOf(m)),
                              tMatrix4<T>::DIAGONAL);
}

template <typename T>
[[nodiscard]] std::optional<tMatrix4<T>> TryInvertedGeneral(tMatrix4<T> const& matrix) noexcept
{
    constexpr T SMALLEST_PERMANENT = sizeof(T) == sizeof(float) ? T(0x1p-50) : T(0x1p-400);
    Equilibrated<T> scaled;
    if (!scaled.Scale(matrix.Get()))
        return std::nullopt;
    T const permanent = GetPermanentOfMagnitudes(scaled.elements);
    detail::tAdjugate<T> const adjugate(scaled.elements);
    if (permanent < SMALLEST_PERMANENT || !(Magnitude(adjugate.determinant) > detail::SINGULARITY<T> * permanent))
        return std::nullopt;
    alignas(16) T inverse[16];
    detail::StoreRows(adjugate.Inverse(), inverse);
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
        {
            T& element = inverse[IndexOf(row, column)];
            element = std::ldexp(element, -scaled.columns[row] - scaled.rows[column]);
            if (!std::isfinite(element))
                return std::nullopt;
        }
    return MatrixAccess::Make(detail::LoadRows<T>(inverse), tMatrix4<T>::GENERAL);
}

} // namespace

template <typename T>
tMatrix4<T> LookAt(tVector3<T> const& eye, tVector3<T> const& target, tVector3<T> const& up) noexcept
{
    CameraAxes<T> const axes(eye, target, up);
    auto const row = [&eye](tVector3<T> const& axis) { return Four(axis.x, axis.y, axis.z, T{0} - axis.Dot(eye)); };
    return MatrixAccess::Make<T>({row(axes.right), row(axes.up), row(axes.back), Four(T{0}, T{0}, T{0}, T{1})},
                                 GetCameraState(eye));
}

template <typename T>
tMatrix4<T> PlaceCamera(tVector3<T> const& eye, tVector3<T> const& target, tVector3<T> const& up) noexcept
{
    auto const [right, top, back] = CameraAxes<T>(eye, target, up);
    return MatrixAccess::Make<T>({Four(right.x, top.x, back.x, eye.x), Four(right.y, top.y, back.y, eye.y),
                                  Four(right.z, top.z, back.z, eye.z), Four(T{0}, T{0}, T{0}, T{1})},
                                 GetCameraState(eye));
}

template <typename T>
T detail::GetTangentOfHalf(T fieldOfView)
{
    if (fieldOfView <= T{0} || fieldOfView >= std::numbers::pi_v<T>)
        ThrowInvalidView(PERSPECTIVE_FROM_FIELD_OF_VIEW);
    return std::tan(fieldOfView * T{0.5});
}

template <typename T>
void detail::CheckLens(T tangent, T aspect, T nearPlane, T farPlane, Place const& place)
{
    if (tangent == T{0} || aspect == T{0} || IsEqual(nearPlane, farPlane))
        ThrowInvalidView(place);
}

template <typename T>
void detail::CheckExtents(T left, T right, T bottom, T top, T nearPlane, T farPlane, Place const& place)
{
    if (IsEqual(left, right) || IsEqual(bottom, top) || IsEqual(nearPlane, farPlane))
        ThrowInvalidView(place);
}

template <typename T>
tRay<T> GetPixelRay(tVector2<T> const& pixel, tVector2<T> const& size, tMatrix4<T> const& projection,
                    tMatrix4<T> const& cameraToWorld) noexcept
{
    return tPixelRays<T>(size, projection, cameraToWorld)(pixel);
}

template <typename T>
std::optional<tMatrix4<T>> detail::TryInvertedWithCare(tMatrix4<T> const& matrix) noexcept
{
    if (matrix.IsOrthonormal()) // or the identity
        return matrix.Inverted();
    return matrix.IsDiagonal() ? TryInvertedDiagonal(matrix) : TryInvertedGeneral(matrix);
}

template <typename T>
std::optional<tMatrix4<T>> detail::GetNormalMatrixWithCare(tMatrix4<T> const& matrix) noexcept
{
    std::optional<tMatrix4<T>> result = TryInvertedWithCare(matrix);
    if (result)
        *result = result->Transposed();
    return result;
}

template <typename T>
std::optional<tVector3<T>> TransformNormal(tMatrix4<T> const& matrix, tVector3<T> const& normal) noexcept
{
    std::optional<tMatrix4<T>> const normalMatrix = GetNormalMatrix(matrix);
    if (!normalMatrix)
        return std::nullopt;
    return normal.TransformedAsVector(*normalMatrix);
}

template BV_TEMPLATE_INSTANCE tMatrix4<float> LookAt(tVector3<float> const&, tVector3<float> const&,
                                                     tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float> PlaceCamera(tVector3<float> const&, tVector3<float> const&,
                                                          tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float> PerspectiveFromFieldOfView(float, float, float, float, DepthRange);
template BV_TEMPLATE_INSTANCE tMatrix4<float> PerspectiveFromTangent(float, float, float, float, DepthRange);
template BV_TEMPLATE_INSTANCE tMatrix4<float> PerspectiveProjection(float, float, float, float, float, float,
                                                                    DepthRange);
template BV_TEMPLATE_INSTANCE tMatrix4<float> OrthographicProjection(float, float, float, float, float, float,
                                                                     DepthRange);
template BV_TEMPLATE_INSTANCE float detail::GetTangentOfHalf(float);
template BV_TEMPLATE_INSTANCE void detail::CheckLens(float, float, float, float, Place const&);
template BV_TEMPLATE_INSTANCE void detail::CheckExtents(float, float, float, float, float, float, Place const&);
template BV_TEMPLATE_INSTANCE tRay<float> GetPixelRay(tVector2<float> const&, tVector2<float> const&,
                                                      tMatrix4<float> const&, tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector3<float>> GetPixel(tVector3<float> const&, tMatrix4<float> const&,
                                                                      tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetViewDistance(float, tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<float>> TryInverted(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<float>>
detail::TryInvertedWithCare(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<float>>
detail::GetNormalMatrixWithCare(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<float>> GetNormalMatrix(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector3<float>> TransformNormal(tMatrix4<float> const&,
                                                                             tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double> LookAt(tVector3<double> const&, tVector3<double> const&,
                                                      tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double> PlaceCamera(tVector3<double> const&, tVector3<double> const&,
                                                           tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double> PerspectiveFromFieldOfView(double, double, double, double, DepthRange);
template BV_TEMPLATE_INSTANCE tMatrix4<double> PerspectiveFromTangent(double, double, double, double, DepthRange);
template BV_TEMPLATE_INSTANCE tMatrix4<double> PerspectiveProjection(double, double, double, double, double, double,
                                                                     DepthRange);
template BV_TEMPLATE_INSTANCE tMatrix4<double> OrthographicProjection(double, double, double, double, double, double,
                                                                      DepthRange);
template BV_TEMPLATE_INSTANCE double detail::GetTangentOfHalf(double);
template BV_TEMPLATE_INSTANCE void detail::CheckLens(double, double, double, double, Place const&);
template BV_TEMPLATE_INSTANCE void detail::CheckExtents(double, double, double, double, double, double, Place const&);
template BV_TEMPLATE_INSTANCE tRay<double> GetPixelRay(tVector2<double> const&, tVector2<double> const&,
                                                       tMatrix4<double> const&, tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector3<double>> GetPixel(tVector3<double> const&, tMatrix4<double> const&,
                                                                       tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetViewDistance(double, tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<double>> TryInverted(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<double>>
detail::TryInvertedWithCare(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<double>>
detail::GetNormalMatrixWithCare(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrix4<double>> GetNormalMatrix(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector3<double>> TransformNormal(tMatrix4<double> const&,
                                                                              tVector3<double> const&) noexcept;

} // namespace bv::maths
