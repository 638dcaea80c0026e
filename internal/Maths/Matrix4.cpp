#include "bv/maths/tMatrix4.h"

#include <cmath>
#include <istream>
#include <ostream>

#include "Maths/Text.h"
#include "Maths/Turn.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/MatrixException.h"

namespace bv::maths
{

namespace
{

using detail::Four;

constexpr char const* FILE_NAME = "internal\\Maths\\Matrix4";

/// Whether the scalar product is closer to zero than the tolerance.
template <typename T>
[[nodiscard]] bool AreOrthogonal(tVector3<T> const& a, tVector3<T> const& b) noexcept
{
    return std::abs(a.Dot(b)) < TOLERANCE<T>;
}

[[nodiscard]] char const* BytesOf(void const* object) noexcept
{
    return static_cast<char const*>(object);
}

[[nodiscard]] char* BytesOf(void* object) noexcept
{
    return static_cast<char*>(object);
}

} // namespace

template <typename T>
void tMatrix4<T>::ThrowSingular(Place const& place)
{
    throw MatrixException(L"Attempt to invert singular matrix", FILE_NAME, place.line,
                          FunctionName<T>("tMatrix4", place.member).c_str());
}

template <typename T>
void tMatrix4<T>::CheckView(T left, T right, T bottom, T top, T nearPlane, T farPlane, Place const& place)
{
    if (IsEqual(left, right) || IsEqual(bottom, top) || IsEqual(nearPlane, farPlane))
        throw InvalidArgumentException(L"Invalid view parameters", FILE_NAME, place.line,
                                       FunctionName<T>("tMatrix4", place.member).c_str());
}

template <typename T>
tMatrix4<T>::tMatrix4(T const* values, State known) noexcept : state{known}
{
    InitMemory();
    ReadElements(values);
}

template <typename T>
tMatrix4<T>::tMatrix4(T const* values) noexcept : tMatrix4(values, GENERAL)
{
    SetState();
}

template <typename T>
tMatrix4<T>::tMatrix4(tVector3<T> const& xAxis, tVector3<T> const& yAxis, tVector3<T> const& zAxis) noexcept
    : tMatrix4(Rows{Four<T>(xAxis.x, yAxis.x, zAxis.x, T{0}), Four<T>(xAxis.y, yAxis.y, zAxis.y, T{0}),
                    Four<T>(xAxis.z, yAxis.z, zAxis.z, T{0}), Four<T>(T{0}, T{0}, T{0}, T{1})},
               GENERAL)
{
    auto const isZero = [](T component) { return IsEqual(component, T{0}); };
    auto const isOne = [](T component) { return IsEqual(component, T{1}); };
    bool const isDiagonal =
        isZero(xAxis.y) && isZero(xAxis.z) && isZero(yAxis.x) && isZero(yAxis.z) && isZero(zAxis.x) && isZero(zAxis.y);
    if (isDiagonal)
        state = isOne(xAxis.x) && isOne(yAxis.y) && isOne(zAxis.z) ? IDENTITY : DIAGONAL;
    else if (isOne(xAxis.LengthSquared()) && isOne(yAxis.LengthSquared()) && isOne(zAxis.LengthSquared()) &&
             AreOrthogonal(xAxis, yAxis) && AreOrthogonal(xAxis, zAxis) && AreOrthogonal(yAxis, zAxis))
        state = ORTHONORMAL;
}

template <typename T>
tMatrix4<T>& tMatrix4<T>::operator=(T const* values) noexcept
{
    RepairMemory();
    ReadElements(values);
    SetState();
    return *this;
}

template <typename T>
typename tMatrix4<T>::State tMatrix4<T>::SetState() noexcept
{
    return state = Classify(Load());
}

template <typename T>
typename tMatrix4<T>::State tMatrix4<T>::Classify(T const* values) noexcept
{
    auto const isZero = [](T value) { return IsEqual(value, T{0}); };
    auto const isOne = [](T value) { return IsEqual(value, T{1}); };
    auto const isDiagonal = [&]
    {
        for (std::size_t i = 0; i < SIZE; ++i)
            if (i % (ROWSIZE + 1) != 0 && !isZero(values[i]))
                return false;
        return true;
    };
    auto const columnDot = [&](std::size_t a, std::size_t b)
    {
        return values[a] * values[b] + values[a + 4] * values[b + 4] + values[a + 8] * values[b + 8] +
               values[a + 12] * values[b + 12];
    };
    // No test changes anything, so the cheapest come first.
    auto const isRotation = [&]
    {
        return isOne(columnDot(0, 0)) && isOne(columnDot(1, 1)) && isOne(columnDot(2, 2)) && isOne(columnDot(3, 3)) &&
               isZero(columnDot(0, 1)) && isZero(columnDot(0, 2)) && isZero(columnDot(0, 3)) &&
               isZero(columnDot(1, 2)) && isZero(columnDot(1, 3)) && isZero(columnDot(2, 3)) &&
               isOne(detail::Determinant(values));
    };

    if (isDiagonal())
        return isOne(values[IDX_11]) && isOne(values[IDX_22]) && isOne(values[IDX_33]) && isOne(values[IDX_44])
                   ? IDENTITY
                   : DIAGONAL;
    return isRotation() ? ORTHONORMAL : GENERAL;
}

// The same in place, with rules of its own: see the header.
template <typename T>
tMatrix4<T>& tMatrix4<T>::MultiplyDiagonal(tMatrix4 const& other) noexcept
{
    T* const a = elements;
    T const* const b = other.elements;
    if (state == other.state)
    {
        for (std::size_t i = 0; i < SIZE; i += ROWSIZE + 1)
            a[i] = a[i] * a[i];
    }
    else if (state == DIAGONAL)
    {
        T const diagonal[] = {a[IDX_11], a[IDX_22], a[IDX_33], a[IDX_44]};
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 3; ++column)
                a[4 * row + column] = diagonal[row] * b[4 * row + column];
        // the determinant of the diagonal that is already scaled
        if (other.state == ORTHONORMAL && IsEqual(detail::DeterminantOfDiagonal<T>(a), T{1}))
        {
            a[IDX_44] = T{1};
            state = ORTHONORMAL;
            return *this;
        }
        for (std::size_t row = 0; row < 3; ++row)
            a[4 * row + 3] = diagonal[row] * b[4 * row + 3];
        for (std::size_t column = 0; column < 4; ++column)
            a[12 + column] = b[12 + column] * diagonal[3];
        state = GENERAL;
    }
    else
    {
        T const diagonal[] = {b[IDX_11], b[IDX_22], b[IDX_33], b[IDX_44]};
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 3; ++column)
                a[4 * row + column] = a[4 * row + column] * diagonal[column];
        if (state == ORTHONORMAL && IsEqual(detail::DeterminantOfDiagonal<T>(b), T{1}))
            return *this;
        for (std::size_t column = 0; column < 3; ++column)
            a[12 + column] = a[12 + column] * diagonal[column];
        for (std::size_t row = 0; row < 4; ++row)
            a[4 * row + 3] = a[4 * row + 3] * diagonal[3];
        state = GENERAL;
    }
    return *this;
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateX(T const& angle) noexcept
{
    auto const [c, s] = TurnBy(angle);
    return tMatrix4(Rows{Four<T>(T{1}, T{0}, T{0}, T{0}), Four<T>(T{0}, c, -s, T{0}), Four<T>(T{0}, s, c, T{0}),
                         Four<T>(T{0}, T{0}, T{0}, T{1})},
                    ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateY(T const& angle) noexcept
{
    if (IsEqual(angle, T{0}))
        return tMatrix4();
    auto const [c, s] = TurnBy(angle);
    return tMatrix4(Rows{Four<T>(c, T{0}, s, T{0}), Four<T>(T{0}, T{1}, T{0}, T{0}), Four<T>(-s, T{0}, c, T{0}),
                         Four<T>(T{0}, T{0}, T{0}, T{1})},
                    ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateZ(T const& angle) noexcept
{
    if (IsEqual(angle, T{0}))
        return tMatrix4();
    auto const [c, s] = TurnBy(angle);
    return tMatrix4(Rows{Four<T>(c, -s, T{0}, T{0}), Four<T>(s, c, T{0}, T{0}), Four<T>(T{0}, T{0}, T{1}, T{0}),
                         Four<T>(T{0}, T{0}, T{0}, T{1})},
                    ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateAxis(tVector3<T> const& point, tVector3<T> const& direction, T const& angle) noexcept
{
    tVector3<T> const axis = ReadApart(direction);
    if (IsEqual(angle, T{0}) || axis == tVector3<T>())
        return tMatrix4();

    auto const [x, y, z] = axis.Normalised();
    auto const [c, s] = TurnBy(angle);
    T const t = T{1} - c;
    tVector3<T> const row1(t * x * x + c, t * x * y - s * z, t * x * z + s * y);
    tVector3<T> const row2(t * x * y + s * z, t * y * y + c, t * y * z - s * x);
    tVector3<T> const row3(t * x * z - s * y, t * y * z + s * x, t * z * z + c);
    tVector3<T> const offset = point - tVector3<T>(row1.Dot(point), row2.Dot(point), row3.Dot(point));
    return tMatrix4(Rows{Four<T>(row1.x, row1.y, row1.z, offset.x), Four<T>(row2.x, row2.y, row2.z, offset.y),
                         Four<T>(row3.x, row3.y, row3.z, offset.z), Four<T>(T{0}, T{0}, T{0}, T{1})},
                    ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::Scale(T const& factor) noexcept
{
    if (IsEqual(factor, T{1}))
        return tMatrix4();
    return Scale(tVector3<T>(factor, factor, factor));
}

template <typename T>
tMatrix4<T> tMatrix4<T>::Scale(tVector3<T> const& factors) noexcept
{
    return tMatrix4(detail::DiagonalRows(factors.x, factors.y, factors.z, T{1}), DIAGONAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::OrthogonalProjection(T const& left, T const& right, T const& bottom, T const& top,
                                              T const& nearPlane, T const& farPlane)
{
    CheckView(left, right, bottom, top, nearPlane, farPlane, ORTHOGONAL_PROJECTION);
    using Row = detail::tFour<T>;
    Row const lower = Four(left, bottom, nearPlane, nearPlane);
    Row const upper = Four(right, top, farPlane, farPlane);
    return tMatrix4(detail::ParallelRows<T>(upper + lower, detail::Broadcast<Row>(T{1}) / (upper - lower)), GENERAL);
}

template <typename T>
std::ostream& tMatrix4<T>::Serialise(std::ostream& stream) const
{
    stream.write(BytesOf(elements), BYTESIZE);
    return stream.write(BytesOf(&state), sizeof(state));
}

template <typename T>
std::istream& tMatrix4<T>::Deserialise(std::istream& stream)
{
    RepairMemory();
    stream.read(BytesOf(elements), BYTESIZE);
    return stream.read(BytesOf(&state), sizeof(state));
}

template <typename T>
tMatrix4<T>::operator std::string() const
{
    return TextOf(
        [this](std::ostream& stream)
        {
            for (std::size_t row = 0; row < ROWSIZE; ++row)
            {
                T const* const m = GetRow(row);
                stream << m[0] << '\t' << m[1] << '\t' << m[2] << '\t' << m[3] << '\n';
            }
        });
}

template <typename T>
std::ostream& operator<<(std::ostream& stream, tMatrix4<T> const& matrix)
{
    return stream << static_cast<std::string>(matrix);
}

template class BV_TEMPLATE_INSTANCE tMatrix4<float>;
template class BV_TEMPLATE_INSTANCE tMatrix4<double>;
template BV_TEMPLATE_INSTANCE tMatrix4<float>::tMatrix4(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float>::tMatrix4(double const*) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float>& tMatrix4<float>::operator=(tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<float>& tMatrix4<float>::operator=(double const*) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double>::tMatrix4(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double>::tMatrix4(float const*) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double>& tMatrix4<double>::operator=(tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tMatrix4<double>& tMatrix4<double>::operator=(float const*) noexcept;
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tMatrix4<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tMatrix4<double> const&);

} // namespace bv::maths
