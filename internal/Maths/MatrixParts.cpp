#include "bv/maths/tMatrixParts.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "bv/maths/View.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/MatrixAccess.h"

namespace bv::maths
{

namespace
{

using detail::Four;
using Vector = tVector3<double>;

/// Three vectors: the columns of a matrix.
using Columns = std::array<Vector, 3>;

constexpr double EPSILON = std::numeric_limits<double>::epsilon();

/// Turns two columns in their plane, by a rotation (cosine, sine).
void Turn(Vector& p, Vector& q, double cosine, double sine) noexcept
{
    Vector const turned = p * cosine - q * sine;
    q = p * sine + q * cosine;
    p = turned;
}

/// The matrix A with A V in place of it, whose columns are perpendicular, and the rotation V that makes them so.
struct Perpendicular
{
    Columns a;
    Columns v = {Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1)};

    explicit Perpendicular(Columns const& matrix) noexcept : a{matrix}
    {
        constexpr int MANY = 16; // four or five do, but for columns that are nothing but rounding errors
        for (int sweep = 0; sweep < MANY; ++sweep)
        {
            bool const first = Separate(0, 1);
            bool const second = Separate(0, 2);
            if (!(Separate(1, 2) || second || first))
                return;
        }
    }

private:
    /// Makes two columns perpendicular.
    /// @return whether they were not.
    bool Separate(std::size_t p, std::size_t q) noexcept
    {
        constexpr double TOLERANCE_SQUARED = 16 * EPSILON * EPSILON;
        double const product = a[p].Dot(a[q]);
        double const first = a[p].LengthSquared();
        double const second = a[q].LengthSquared();
        if (product * product <= TOLERANCE_SQUARED * first * second || product == 0)
            return false;
        double const cotangent = (second - first) / (2 * product); // of twice the angle
        double const magnitude = 1 / (detail::Magnitude(cotangent) + detail::SquareRoot(1 + cotangent * cotangent));
        double const tangent = cotangent < 0 ? -magnitude : magnitude;
        double const cosine = 1 / detail::SquareRoot(1 + tangent * tangent);
        Turn(a[p], a[q], cosine, cosine * tangent);
        Turn(v[p], v[q], cosine, cosine * tangent);
        return true;
    }
};

/// The part of a vector that is perpendicular to a unit vector.
[[nodiscard]] Vector PartAcross(Vector const& vector, Vector const& unit) noexcept
{
    return vector - unit * vector.Dot(unit);
}

/// R and S in double precision, of a matrix whose elements are neither large nor all small.
struct Polar
{
    double rotation[3][3];
    double symmetric[3][3];

    explicit Polar(Columns const& matrix) noexcept
    {
        auto const [a, v] = Perpendicular(matrix);
        double const lengths[] = {a[0].Length(), a[1].Length(), a[2].Length()};
        std::size_t order[] = {0, 1, 2}; // from the longest on
        bool isOdd = false;
        for (auto const& [i, j] : {std::pair(0, 1), std::pair(1, 2), std::pair(0, 1)})
            if (lengths[order[i]] < lengths[order[j]])
            {
                std::swap(order[i], order[j]);
                isOdd = !isOdd;
            }
        auto const [i, j, k] = order;

        Columns u; // the columns at length 1
        u[i] = lengths[i] > 0 ? a[i] / lengths[i] : v[i];
        Vector const second = PartAcross(a[j], u[i]);
        double const secondLength = second.Length();
        if (secondLength > 0 && secondLength >= lengths[j] / 2)
            u[j] = second / secondLength;
        else // nothing but rounding errors, so that any direction will do
            u[j] = detail::Magnitude(v[j].Dot(u[i])) < 0.75 ? PartAcross(v[j], u[i]).Normalised()
                                                            : u[i].Cross(PartAcross(v[k], u[i]).Normalised());
        u[k] = isOdd ? u[j].Cross(u[i]) : u[i].Cross(u[j]); // so that u turns like v
        bool const isReflected = a[k].Dot(u[k]) < 0;
        if (isReflected)
            u[k] = -u[k];
        double const sign = isReflected ? -1 : 1;
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 3; ++column)
            {
                rotation[row][column] =
                    sign * (u[0][row] * v[0][column] + u[1][row] * v[1][column] + u[2][row] * v[2][column]);
                symmetric[row][column] =
                    sign * (v[0][row] * (lengths[0] * v[0][column]) + v[1][row] * (lengths[1] * v[1][column]) +
                            v[2][row] * (lengths[2] * v[2][column]));
            }
    }

    [[nodiscard]] tQuaternion<double> GetQuaternion() const noexcept
    {
        auto const row = [this](std::size_t i) { return Four(rotation[i][0], rotation[i][1], rotation[i][2], 0.0); };
        return tQuaternion<double>(detail::MatrixAccess::Make<double>(
            {row(0), row(1), row(2), Four(0.0, 0.0, 0.0, 1.0)}, tMatrix4<double>::ORTHONORMAL));
    }
};

/// A matrix by its state, row by row.
template <typename T>
struct Affine
{
    double m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    tVector3<T> offset;
    bool isValid = true;

    explicit Affine(tMatrix4<T> const& matrix) noexcept
    {
        if (matrix.IsIdentity())
            return;
        bool const isDiagonal = matrix.IsDiagonal();
        auto const get = [&](std::size_t row, std::size_t column)
        {
            T const element = isDiagonal && row != column ? T{0} : matrix[4 * row + column];
            isValid = isValid && std::isfinite(element);
            return element;
        };
        for (std::size_t row = 0; row < 3; ++row)
        {
            for (std::size_t column = 0; column < 3; ++column)
                m[row][column] = static_cast<double>(get(row, column));
            offset[row] = get(row, 3);
            isValid = isValid && get(3, row) == T{0};
        }
        isValid = isValid && get(3, 3) == T{1};
    }

    /// The columns, scaled by a power of two.
    /// @param[out] exponent of the power that was taken away.
    [[nodiscard]] Columns GetColumns(int& exponent) const noexcept
    {
        double largest = 0;
        for (auto const& row : m)
            for (double const element : row)
                largest = largest < detail::Magnitude(element) ? detail::Magnitude(element) : largest;
        exponent = largest > 0 ? std::ilogb(largest) : 0;
        Columns columns;
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 3; ++column)
                columns[column][row] = std::ldexp(m[row][column], -exponent);
        return columns;
    }
};

template <typename T>
[[nodiscard]] tQuaternion<T> ToPrecision(tQuaternion<double> const& quaternion) noexcept
{
    return {static_cast<T>(quaternion.x), static_cast<T>(quaternion.y), static_cast<T>(quaternion.z),
            static_cast<T>(quaternion.w)};
}

} // namespace

template <typename T>
std::optional<tMatrixParts<T>> Decompose(tMatrix4<T> const& matrix) noexcept
{
    Affine<T> const affine(matrix);
    if (!affine.isValid)
        return std::nullopt;
    int exponent = 0;
    Polar const polar(affine.GetColumns(exponent));
    auto const get = [&](std::size_t row, std::size_t column)
    { return static_cast<T>(std::ldexp(polar.symmetric[row][column], exponent)); };
    return tMatrixParts<T>{affine.offset,
                           ToPrecision<T>(polar.GetQuaternion()),
                           {get(0, 0), get(1, 1), get(2, 2)},
                           {get(0, 1), get(0, 2), get(1, 2)}};
}

namespace
{

/// The rotation by a quaternion as rows; by zero, the identity.
template <typename T>
[[nodiscard, gnu::always_inline]] inline detail::tRows<T> TurnsOf(tQuaternion<T> const& rotation) noexcept
{
    detail::tFour<T> const q = Four(rotation.x, rotation.y, rotation.z, rotation.w);
    if (rotation.x == T{0} && rotation.y == T{0} && rotation.z == T{0} && rotation.w == rotation.w) [[unlikely]]
        return detail::DiagonalRows(T{1}, T{1}, T{1}, T{1});
    return detail::RotationRows<T>(q, T{2} / detail::SumOfFour<T>(q * q));
}

/// The first three elements of a row times a symmetric matrix, and the last one as it is given.
template <typename T>
[[nodiscard, gnu::always_inline]] inline detail::tFour<T>
ComposeRow(detail::tFour<T> const& turn, detail::tFour<T> const& s1, detail::tFour<T> const& s2,
           detail::tFour<T> const& s3, T last) noexcept
{
    detail::tFour<T> const sums =
        detail::Combine<T>(s1, s2, s3, detail::Get<0>(turn), detail::Get<1>(turn), detail::Get<2>(turn));
    return detail::Choose<0, 1, 2, 7>(sums, detail::Broadcast<detail::tFour<T>>(last));
}

template <typename T>
[[nodiscard, gnu::always_inline]] inline tMatrix4<T>
ComposeFrom(tVector3<T> const& offset, tQuaternion<T> const& rotation, tVector3<T> const& scale,
            tVector3<T> const& shear) noexcept
{
    detail::tRows<T> const turns = TurnsOf(rotation);
    detail::tFour<T> const s1 = Four(scale.x, shear.x, shear.y, T{0});
    detail::tFour<T> const s2 = Four(shear.x, scale.y, shear.z, T{0});
    detail::tFour<T> const s3 = Four(shear.y, shear.z, scale.z, T{0});
    detail::tRows<T> const rows{ComposeRow<T>(turns.row1, s1, s2, s3, offset.x),
                                ComposeRow<T>(turns.row2, s1, s2, s3, offset.y),
                                ComposeRow<T>(turns.row3, s1, s2, s3, offset.z), Four(T{0}, T{0}, T{0}, T{1})};
    return detail::MatrixAccess::Make<T>(rows, detail::MatrixAccess::Classify(rows));
}

} // namespace

template <typename T>
tMatrix4<T> Compose(tMatrixParts<T> const& parts) noexcept
{
    return ComposeFrom(parts.translation, parts.rotation, parts.scale, parts.shear);
}

template <typename T>
tMatrix4<T> Compose(tVector3<T> const& translation, tQuaternion<T> const& rotation, tVector3<T> const& scale) noexcept
{
    return ComposeFrom(translation, rotation, scale, tVector3<T>(T{0}, T{0}, T{0}));
}

template struct BV_TEMPLATE_INSTANCE tMatrixParts<float>;
template struct BV_TEMPLATE_INSTANCE tMatrixParts<double>;
template BV_TEMPLATE_INSTANCE std::optional<tMatrixParts<float>> Decompose(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float> Compose(tMatrixParts<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float> Compose(tVector3<float> const&, tQuaternion<float> const&,
                                                      tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tMatrixParts<double>> Decompose(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double> Compose(tMatrixParts<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double> Compose(tVector3<double> const&, tQuaternion<double> const&,
                                                       tVector3<double> const&) noexcept;

} // namespace bv::maths
