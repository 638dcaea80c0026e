#include "bv/maths/tMatrix4.h"

#include <cmath>
#include <istream>
#include <ostream>
#include <utility>

#include "Maths/Text.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/MatrixException.h"

namespace bv::maths
{

namespace
{

constexpr char const* FILE_NAME = "internal\\Maths\\Matrix4";

template <typename T>
[[noreturn, gnu::cold]] void ThrowSingular(char const* member, unsigned int line)
{
    throw MatrixException(L"Attempt to invert singular matrix", FILE_NAME, line,
                          FunctionName<T>("tMatrix4", member).c_str());
}

template <typename T>
[[noreturn, gnu::cold]] void ThrowInvalidView(char const* member, unsigned int line)
{
    throw InvalidArgumentException(L"Invalid view parameters", FILE_NAME, line,
                                   FunctionName<T>("tMatrix4", member).c_str());
}

/// The extents of a view volume.
template <typename T>
struct View
{
    T width, height, depth;

    View(T left, T right, T bottom, T top, T nearPlane, T farPlane, char const* member, unsigned int line)
        : width{right - left}, height{top - bottom}, depth{farPlane - nearPlane}
    {
        if (IsEqual(left, right) || IsEqual(bottom, top) || IsEqual(nearPlane, farPlane))
            ThrowInvalidView<T>(member, line);
    }
};

template <typename T>
[[nodiscard]] bool IsTooSmall(T divisor) noexcept
{
    return TOLERANCE<T> > std::abs(divisor); // this way round, so that NaN passes
}

/// Whether the scalar product is closer to zero than the tolerance.
template <typename T>
[[nodiscard]] bool AreOrthogonal(tVector3<T> const& a, tVector3<T> const& b) noexcept
{
    return std::abs(a.Dot(b)) < TOLERANCE<T>;
}

/// One column of a matrix for all four determinants that lack a row: lane j holds the first, second and third of the
/// elements that remain without row j.
template <typename T>
struct Column
{
    detail::tQuad<T> first, second, third;

    explicit Column(detail::tQuad<T> const& rows) noexcept
        : first{rows.template Shuffled<1, 0, 0, 0>()},
          second{rows.template Shuffled<2, 2, 1, 1>()},
          third{rows.template Shuffled<3, 3, 3, 2>()}
    {
    }
};

/// The four 3x3 determinants of three columns, each without another row, expanded along their first rows.
template <typename T>
[[nodiscard]] detail::tQuad<T> Minors(Column<T> const& a, Column<T> const& b, Column<T> const& c) noexcept
{
    return a.first * (b.second * c.third - c.second * b.third) - b.first * (a.second * c.third - c.second * a.third) +
           c.first * (a.second * b.third - b.second * a.third);
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
tMatrix4<T>::tMatrix4(T m11, T m12, T m13, T m14, T m21, T m22, T m23, T m24, T m31, T m32, T m33, T m34, T m41, T m42,
                      T m43, T m44) noexcept
    : tMatrix4(GENERAL)
{
    StoreRow(ROW_1, Quad(m11, m12, m13, m14));
    StoreRow(ROW_2, Quad(m21, m22, m23, m24));
    StoreRow(ROW_3, Quad(m31, m32, m33, m34));
    StoreRow(ROW_4, Quad(m41, m42, m43, m44));
    SetState();
}

template <typename T>
tMatrix4<T>::tMatrix4(T const* values) noexcept : tMatrix4(values, GENERAL)
{
    SetState();
}

template <typename T>
tMatrix4<T>::tMatrix4(T const* values, State known) noexcept : tMatrix4(known)
{
    ReadElements(values);
}

template <typename T>
tMatrix4<T>::tMatrix4(tVector3<T> const& xAxis, tVector3<T> const& yAxis, tVector3<T> const& zAxis) noexcept
    : tMatrix4(GENERAL)
{
    StoreRow(ROW_1, Quad(xAxis.x, yAxis.x, zAxis.x, T{0}));
    StoreRow(ROW_2, Quad(xAxis.y, yAxis.y, zAxis.y, T{0}));
    StoreRow(ROW_3, Quad(xAxis.z, yAxis.z, zAxis.z, T{0}));
    StoreRow(ROW_4, Quad(T{0}, T{0}, T{0}, T{1}));

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
    auto const isZero = [](T value) { return IsEqual(value, T{0}); };
    auto const isOne = [](T value) { return IsEqual(value, T{1}); };
    auto const isDiagonal = [&]
    {
        for (std::size_t i = 0; i < SIZE; ++i)
            if (i % (ROWSIZE + 1) != 0 && !isZero(elements[i]))
                return false;
        return true;
    };
    auto const columnDot = [&](std::size_t a, std::size_t b)
    {
        T const* const m = elements;
        return m[a] * m[b] + m[a + 4] * m[b + 4] + m[a + 8] * m[b + 8] + m[a + 12] * m[b + 12];
    };
    auto const isRotation = [&]
    {
        return isOne(Determinant()) && //
               isOne(columnDot(0, 0)) && isOne(columnDot(1, 1)) && isOne(columnDot(2, 2)) && isOne(columnDot(3, 3)) &&
               isZero(columnDot(0, 1)) && isZero(columnDot(0, 2)) && isZero(columnDot(0, 3)) &&
               isZero(columnDot(1, 2)) && isZero(columnDot(1, 3)) && isZero(columnDot(2, 3));
    };

    state = GENERAL; // the determinant goes by it
    if (isDiagonal())
        state = isOne(elements[IDX_11]) && isOne(elements[IDX_22]) && isOne(elements[IDX_33]) && isOne(elements[IDX_44])
                    ? IDENTITY
                    : DIAGONAL;
    else if (isRotation())
        state = ORTHONORMAL;
    return state;
}

// The product where at least one operand is DIAGONAL and none is IDENTITY.
template <typename T>
tMatrix4<T> tMatrix4<T>::MultipliedDiagonal(tMatrix4 const& other) const noexcept
{
    if (state == other.state)
    {
        tMatrix4 result;
        for (std::size_t i = 0; i < SIZE; i += ROWSIZE + 1)
            result.elements[i] = elements[i] * other.elements[i];
        result.state = DIAGONAL;
        return result;
    }

    tMatrix4 result(GENERAL);
    bool isRotation = false;
    if (state == DIAGONAL)
    {
        for (std::size_t row = 0; row < ROWSIZE; ++row)
            result.StoreRow(row, Quad::Broadcast(GetRow(row)[row]) * other.LoadRow(row));
        isRotation = other.state == ORTHONORMAL && IsEqual(Determinant(), T{1});
    }
    else
    {
        T const* const d = other.elements;
        Quad const diagonal(d[IDX_11], d[IDX_22], d[IDX_33], d[IDX_44]);
        for (std::size_t row = 0; row < ROWSIZE; ++row)
            result.StoreRow(row, LoadRow(row) * diagonal);
        isRotation = state == ORTHONORMAL && IsEqual(other.Determinant(), T{1});
    }
    if (isRotation)
    {
        result.ResetFourthRowAndColumn();
        result.state = ORTHONORMAL;
    }
    else
        result.SetState();
    return result;
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
        if (other.state == ORTHONORMAL && IsEqual(Determinant(), T{1})) // of the diagonal that is already scaled
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
        if (state == ORTHONORMAL && IsEqual(other.Determinant(), T{1}))
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
void tMatrix4<T>::TransposeElements(std::size_t rows) noexcept
{
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = row + 1; column < rows; ++column)
            std::swap(elements[4 * row + column], elements[4 * column + row]);
}

template <typename T>
tMatrix4<T>& tMatrix4<T>::Transpose() noexcept
{
    RepairMemory();
    if (!IsDiagonal())
        TransposeElements(state == ORTHONORMAL ? 3 : 4);
    return *this;
}

template <typename T>
tMatrix4<T> tMatrix4<T>::Transposed() const noexcept
{
    tMatrix4 result(*this);
    result.Transpose();
    if (state == ORTHONORMAL)
        result.ResetFourthRowAndColumn();
    else if (!IsDiagonal())
        result.SetState();
    return result;
}

template <typename T>
void tMatrix4<T>::InvertDiagonal(char const* member, unsigned int line)
{
    for (std::size_t i = 0; i < SIZE; i += ROWSIZE + 1)
        if (IsTooSmall(elements[i]))
            ThrowSingular<T>(member, line);
    for (std::size_t i = 0; i < SIZE; i += ROWSIZE + 1)
        elements[i] = T{1} / elements[i];
}

// The adjugate times the reciprocal of the determinant, a row at a time: row i holds the determinants without column i.
template <typename T>
void tMatrix4<T>::InvertGeneral(char const* member, unsigned int line)
{
    T const determinant = Determinant();
    if (IsTooSmall(determinant))
        ThrowSingular<T>(member, line);

    T const q = T{1} / determinant;
    Quad const evenSigns(q, -q, q, -q);
    Quad const oddSigns(-q, q, -q, q);
    T const* const m = elements;
    Column<T> const column1(Quad(m[IDX_11], m[IDX_21], m[IDX_31], m[IDX_41]));
    Column<T> const column2(Quad(m[IDX_12], m[IDX_22], m[IDX_32], m[IDX_42]));
    Column<T> const column3(Quad(m[IDX_13], m[IDX_23], m[IDX_33], m[IDX_43]));
    Column<T> const column4(Quad(m[IDX_14], m[IDX_24], m[IDX_34], m[IDX_44]));
    StoreRow(ROW_1, Minors(column2, column3, column4) * evenSigns);
    StoreRow(ROW_2, Minors(column1, column3, column4) * oddSigns);
    StoreRow(ROW_3, Minors(column1, column2, column4) * evenSigns);
    StoreRow(ROW_4, Minors(column1, column2, column3) * oddSigns);
}

template <typename T>
tMatrix4<T>& tMatrix4<T>::Invert()
{
    RepairMemory();
    if (state == DIAGONAL)
        InvertDiagonal("Invert", 773);
    else if (state == ORTHONORMAL)
        TransposeElements(3);
    else if (state != IDENTITY)
        InvertGeneral("Invert", 801);
    return *this;
}

template <typename T>
tMatrix4<T> tMatrix4<T>::Inverted() const
{
    if (state == IDENTITY || state == ORTHONORMAL)
        return Transposed();

    tMatrix4 result(*this);
    if (state == DIAGONAL)
        result.InvertDiagonal("Inverted", 883);
    else
    {
        result.InvertGeneral("Inverted", 920);
        result.state = GENERAL;
    }
    return result;
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateX(T const& angle) noexcept
{
    T const c = std::cos(angle);
    T const s = std::sin(angle);
    T const values[] = {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1};
    return tMatrix4(values, ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateY(T const& angle) noexcept
{
    if (IsEqual(angle, T{0}))
        return tMatrix4();
    T const c = std::cos(angle);
    T const s = std::sin(angle);
    T const values[] = {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1};
    return tMatrix4(values, ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateZ(T const& angle) noexcept
{
    if (IsEqual(angle, T{0}))
        return tMatrix4();
    T const c = std::cos(angle);
    T const s = std::sin(angle);
    T const values[] = {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    return tMatrix4(values, ORTHONORMAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::RotateAxis(tVector3<T> const& point, tVector3<T> const& direction, T const& angle) noexcept
{
    if (IsEqual(angle, T{0}) || direction == tVector3<T>())
        return tMatrix4();

    auto const [x, y, z] = direction.Normalised();
    T const c = std::cos(angle);
    T const s = std::sin(angle);
    T const t = T{1} - c;
    tVector3<T> const row1(t * x * x + c, t * x * y - s * z, t * x * z + s * y);
    tVector3<T> const row2(t * x * y + s * z, t * y * y + c, t * y * z - s * x);
    tVector3<T> const row3(t * x * z - s * y, t * y * z + s * x, t * z * z + c);
    tVector3<T> const offset = point - tVector3<T>(row1.Dot(point), row2.Dot(point), row3.Dot(point));
    T const values[] = {row1.x, row1.y, row1.z, offset.x, row2.x, row2.y, row2.z, offset.y,
                        row3.x, row3.y, row3.z, offset.z, 0,      0,      0,      1};
    return tMatrix4(values, ORTHONORMAL);
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
    T const values[] = {factors.x, 0, 0, 0, 0, factors.y, 0, 0, 0, 0, factors.z, 0, 0, 0, 0, 1};
    return tMatrix4(values, DIAGONAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::Translate(tVector3<T> const& offset) noexcept
{
    if (offset == tVector3<T>())
        return tMatrix4();
    return Translate(offset.x, offset.y, offset.z);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::Translate(T x, T y, T z) noexcept
{
    T const values[] = {1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z, 0, 0, 0, 1};
    return tMatrix4(values, GENERAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::OrthogonalProjection(T const& left, T const& right, T const& bottom, T const& top,
                                              T const& nearPlane, T const& farPlane)
{
    View<T> const view(left, right, bottom, top, nearPlane, farPlane, "OrthogonalProjection", 1212);
    T const perWidth = T{1} / view.width;
    T const perHeight = T{1} / view.height;
    T const perDepth = T{1} / view.depth;
    // clang-format off
    T const values[] = {
        T{2} * perWidth, 0,                0,                -(left + right) * perWidth,
        0,               T{2} * perHeight, 0,                -(bottom + top) * perHeight,
        0,               0,                T{-2} * perDepth, -(nearPlane + farPlane) * perDepth,
        0,               0,                0,                1};
    // clang-format on
    return tMatrix4(values, GENERAL);
}

template <typename T>
tMatrix4<T> tMatrix4<T>::PerspectiveProjection(T const& left, T const& right, T const& bottom, T const& top,
                                               T const& nearPlane, T const& farPlane)
{
    View<T> const view(left, right, bottom, top, nearPlane, farPlane, "PerspectiveProjection", 1251);
    // clang-format off
    T const values[] = {
        T{2} * nearPlane / view.width, 0,                              (right + left) / view.width,          0,
        0,                             T{2} * nearPlane / view.height, (top + bottom) / view.height,         0,
        0,                             0,                              -(farPlane + nearPlane) / view.depth, T{-2} * farPlane * nearPlane / view.depth,
        0,                             0,                              -1,                                   0};
    // clang-format on
    return tMatrix4(values, GENERAL);
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
    std::ostringstream stream = FreshStream();
    for (std::size_t row = 0; row < ROWSIZE; ++row)
    {
        T const* const m = GetRow(row);
        stream << m[0] << '\t' << m[1] << '\t' << m[2] << '\t' << m[3] << '\n';
    }
    return stream.str();
}

template <typename T>
std::ostream& operator<<(std::ostream& stream, tMatrix4<T> const& matrix)
{
    return stream << static_cast<std::string>(matrix);
}

template class BV_TEMPLATE_INSTANCE tMatrix4<float>;
template class BV_TEMPLATE_INSTANCE tMatrix4<double>;
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tMatrix4<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tMatrix4<double> const&);

} // namespace bv::maths
