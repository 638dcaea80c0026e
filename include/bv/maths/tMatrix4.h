#pragma once

/// @file
/// A 4x4 transformation matrix that knows its own kind, and the transformation of vectors by it.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Compiler.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/detail/Precision.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace detail
{
struct MatrixAccess;
} // namespace detail

/// 4x4 transformation matrix that carries a classification of itself, its state, and takes shortcuts by it.
///
/// Elements lie row by row: the one in row r and column c, both counted from 1, has index 4 * (r - 1) + (c - 1).
/// Vectors are columns and stand on the right of the matrix, so a translation is the fourth column and the fourth row
/// is the projective one, (0, 0, 0, 1) for an affine matrix.
///
/// The state is what the operations go by; they never look at the elements to find out what the state already says.
/// Each operation documents the state that it leaves. Three things follow. Writing an element through a reference does
/// not touch the state, which then describes the old elements until an operation classifies anew. Deserialise() trusts
/// the state that it reads; a value other than the four acts as GENERAL. And the fourth row and column of a matrix in
/// state ORTHONORMAL may hold something else than (0, 0, 0, 1), as RotateAxis() puts a translation there. They are
/// reset by the product of two such matrices, by the product with a DIAGONAL one of determinant 1 (`operator*` only),
/// by Inverted() and by Transposed(). Everything else uses or keeps them as they are.
///
/// Elements are classified by IsEqual(), and the first that fits decides. Zeros off the diagonal are IDENTITY where the
/// diagonal is (1, 1, 1, 1), else DIAGONAL. A determinant of 1 and four columns of squared length 1, whose scalar
/// products are 0, are ORTHONORMAL. All else is GENERAL: a reflection that is not diagonal, and every translation.
///
/// The functions that build a rotation, scaling, translation or projection do not reject infinities and NaN as such: a
/// matrix that is built from one holds infinities or NaN.
///
/// The sixteen elements lie inside the object, aligned to 16 bytes whatever the alignment of the object is, behind a
/// pointer of its own. The object cannot be copied as bytes. Raw memory filled with zeros becomes a matrix when it is
/// assigned to (`*=` and the like included), read into, inverted or transposed: these set the pointer if it is null.
///
/// Product, transpose, determinant, inverse, comparison and the transforms of vectors are inlined by force: they are a
/// little larger than what compilers take over of their own accord, and the alternative is a call into the library.
///
/// @tparam T `float` or `double`; both instances are in the library.
template <typename T>
class tMatrix4
{
public:
    /// What a matrix is known to be.
    enum State : std::uint32_t
    {
        IDENTITY = 0,    ///< the identity
        DIAGONAL = 1,    ///< zero off the diagonal
        ORTHONORMAL = 2, ///< a rotation; some operations reset the fourth row and column to (0, 0, 0, 1)
        GENERAL = 3      ///< anything else
    };

private:
    State state;                   ///< what the operations go by
    T* elements;                   ///< the first element, inside the buffer, aligned to 16 bytes
    T buffer[16 + 16 / sizeof(T)]; ///< sixteen elements, and 16 bytes to shift them to an aligned address

public:
    /// @name Constants
    /// @{
    static constexpr unsigned long long IDX_11 = 0;             ///< index of row 1, column 1
    static constexpr unsigned long long IDX_12 = 1;             ///< index of row 1, column 2
    static constexpr unsigned long long IDX_13 = 2;             ///< index of row 1, column 3
    static constexpr unsigned long long IDX_14 = 3;             ///< index of row 1, column 4
    static constexpr unsigned long long IDX_21 = 4;             ///< index of row 2, column 1
    static constexpr unsigned long long IDX_22 = 5;             ///< index of row 2, column 2
    static constexpr unsigned long long IDX_23 = 6;             ///< index of row 2, column 3
    static constexpr unsigned long long IDX_24 = 7;             ///< index of row 2, column 4
    static constexpr unsigned long long IDX_31 = 8;             ///< index of row 3, column 1
    static constexpr unsigned long long IDX_32 = 9;             ///< index of row 3, column 2
    static constexpr unsigned long long IDX_33 = 10;            ///< index of row 3, column 3
    static constexpr unsigned long long IDX_34 = 11;            ///< index of row 3, column 4
    static constexpr unsigned long long IDX_41 = 12;            ///< index of row 4, column 1
    static constexpr unsigned long long IDX_42 = 13;            ///< index of row 4, column 2
    static constexpr unsigned long long IDX_43 = 14;            ///< index of row 4, column 3
    static constexpr unsigned long long IDX_44 = 15;            ///< index of row 4, column 4
    static constexpr unsigned char SIZE = 16;                   ///< number of elements
    static constexpr unsigned char ROWSIZE = 4;                 ///< elements in a row
    static constexpr unsigned char BYTESIZE = SIZE * sizeof(T); ///< bytes of the elements: 64 or 128
    /// @}

    /// @name Construction
    /// @{
    /// The identity, in state IDENTITY.
    tMatrix4() noexcept;
    /// The matrix of these elements, row by row, classified from them.
    [[gnu::always_inline]] tMatrix4(T m11, T m12, T m13, T m14, T m21, T m22, T m23, T m24, T m31, T m32, T m33, T m34,
                                    T m41, T m42, T m43, T m44) noexcept;
    /// Reads sixteen consecutive elements, row by row, and classifies them. The pointer must not be null; the alignment
    /// of its type is enough.
    tMatrix4(T const* values) noexcept;
    /// A null pointer has no elements.
    tMatrix4(std::nullptr_t) = delete;
    /// The matrix whose first three columns are these axes; the fourth row and column are (0, 0, 0, 1).
    ///
    /// The state comes from the axes, by a rule that differs from the classification of elements: axes that are x, y
    /// and z (IsEqual()) give IDENTITY, axes along x, y and z DIAGONAL. Else axes of squared length 1 (IsEqual())
    /// whose scalar products are closer to zero than `TOLERANCE` give ORTHONORMAL, and all others GENERAL. No
    /// determinant is looked at, so a left-handed frame is ORTHONORMAL here.
    tMatrix4(tVector3<T> const& xAxis, tVector3<T> const& yAxis, tVector3<T> const& zAxis) noexcept;
    /// The same elements and state, a stale state included.
    [[gnu::always_inline]] tMatrix4(tMatrix4 const& other) noexcept;
    /// Converts from the other precision, element by element, rounding to nearest, and classifies the result.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    tMatrix4(tMatrix4<U> const& other) noexcept;
    /// Reads sixteen consecutive elements of the other precision, row by row, and classifies the result.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    tMatrix4(U const* values) noexcept;

    /// Rotation about the x axis, in state ORTHONORMAL, for angle 0, too. As all rotations here, it goes through sin()
    /// and cos() of the C library.
    ///
    /// @param angle in radians; a positive one turns y to z.
    [[nodiscard]] static tMatrix4 RotateX(T const& angle) noexcept;
    /// Rotation about the y axis, in state ORTHONORMAL; the identity for an angle that IsEqual() to 0. Goes through
    /// sin() and cos() of the C library.
    ///
    /// @param angle in radians; a positive one turns z to x.
    [[nodiscard]] static tMatrix4 RotateY(T const& angle) noexcept;
    /// Rotation about the z axis, in state ORTHONORMAL; the identity for an angle that IsEqual() to 0. Goes through
    /// sin() and cos() of the C library.
    ///
    /// @param angle in radians; a positive one turns x to y.
    [[nodiscard]] static tMatrix4 RotateZ(T const& angle) noexcept;
    /// Rotation about any line, in state ORTHONORMAL; the identity for an angle, or a direction in every component,
    /// that IsEqual() to 0. The formula is that of Rodrigues, "Des lois geometriques qui regissent les deplacements
    /// d'un systeme solide", 1840. Goes through sin() and cos() of the C library.
    ///
    /// The state is ORTHONORMAL for an axis off the origin, too, although the fourth column is then a translation:
    /// Transform() of a vector applies it. It is dropped by a product with another ORTHONORMAL matrix, by `operator*`
    /// with a DIAGONAL one of determinant 1, by Inverted() and by Transposed(). Other products use it, those in place
    /// with such a diagonal on the right keep it, and so does Invert().
    ///
    /// @param point any point on the axis; it stays where it is.
    /// @param direction of the axis, of any length.
    /// @param angle in radians; positive turns counter-clockwise when the direction points at the viewer.
    [[nodiscard]] static tMatrix4 RotateAxis(tVector3<T> const& point, tVector3<T> const& direction,
                                             T const& angle) noexcept;
    /// Scaling by one factor, in state DIAGONAL; the identity for a factor that IsEqual() to 1.
    [[nodiscard]] static tMatrix4 Scale(T const& factor) noexcept;
    /// Scaling by a factor for each axis, in state DIAGONAL, for factors 1, too.
    [[nodiscard]] static tMatrix4 Scale(tVector3<T> const& factors) noexcept;
    /// Translation, in state GENERAL; the identity for an offset that IsEqual() to 0 in every component.
    [[nodiscard, gnu::always_inline]] static tMatrix4 Translate(tVector3<T> const& offset) noexcept;
    /// Translation, in state GENERAL, by 0, too.
    [[nodiscard, gnu::always_inline]] static tMatrix4 Translate(T x, T y, T z) noexcept;
    /// Parallel projection of a box onto the cube from -1 to 1, looking down -z, in state GENERAL.
    ///
    /// @param left,right,bottom,top the sides of the box.
    /// @param nearPlane,farPlane distances along -z, mapped to -1 and 1; neither their signs nor their order are
    ///        checked.
    /// @throws InvalidArgumentException when the two ends of one extent are IsEqual(); left and right are looked at
    ///         first, then bottom and top, then near and far.
    [[nodiscard]] static tMatrix4 OrthogonalProjection(T const& left, T const& right, T const& bottom, T const& top,
                                                       T const& nearPlane, T const& farPlane);
    /// Central projection of a view frustum onto the cube from -1 to 1, looking down -z, in state GENERAL. A
    /// transformed point has w = -z, so points on the plane z = 0 cannot be projected.
    ///
    /// @param left,right,bottom,top the sides of the frustum where it meets the near plane.
    /// @param nearPlane,farPlane distances along -z, mapped to -1 and 1; neither their signs nor their order are
    ///        checked.
    /// @throws InvalidArgumentException as OrthogonalProjection() does.
    [[nodiscard, gnu::always_inline]] static tMatrix4 PerspectiveProjection(T const& left, T const& right,
                                                                            T const& bottom, T const& top,
                                                                            T const& nearPlane, T const& farPlane);
    /// @}

    /// @name Access
    /// @{
    /// Element by index, row by row from 0 to 15. The index is not checked.
    [[nodiscard]] T const& operator[](std::size_t index) const noexcept { return elements[index]; }
    /// Element by row (first component) and column (second component), both from 0 to 3 and not checked.
    [[nodiscard]] T const& operator[](tTuple2<unsigned int> const& position) const noexcept
    {
        return elements[GetIndex(position)];
    }
    /// @copydoc operator[](std::size_t) const
    [[nodiscard]] T const& GetElement(std::size_t index) const noexcept { return elements[index]; }
    /// @copydoc operator[](tTuple2<unsigned int> const&) const
    [[nodiscard]] T const& GetElement(tTuple2<unsigned int> const& position) const noexcept
    {
        return elements[GetIndex(position)];
    }
    /// Element by index, to write to. The state is not updated: until the next operation that classifies, it describes
    /// the elements as they were.
    [[nodiscard]] T& operator()(std::size_t index) noexcept { return elements[index]; }
    /// Element by row and column, to write to. The state is not updated.
    [[nodiscard]] T& operator()(tTuple2<unsigned int> const& position) noexcept { return elements[GetIndex(position)]; }
    /// @copydoc operator()(std::size_t)
    [[nodiscard]] T& GetElement(std::size_t index) noexcept { return elements[index]; }
    /// @copydoc operator()(tTuple2<unsigned int> const&)
    [[nodiscard]] T& GetElement(tTuple2<unsigned int> const& position) noexcept { return elements[GetIndex(position)]; }
    /// The sixteen elements, row by row, aligned to 16 bytes.
    [[nodiscard]] T const* Get() const noexcept { return elements; }
    /// @}

    /// @name Queries
    /// @{
    /// Whether the state is IDENTITY. The elements are not looked at.
    [[nodiscard]] bool IsIdentity() const noexcept { return state == IDENTITY; }
    /// Whether the state is IDENTITY or DIAGONAL. The elements are not looked at.
    [[nodiscard]] bool IsDiagonal() const noexcept { return state < ORTHONORMAL; }
    /// Whether the state is IDENTITY or ORTHONORMAL. The elements are not looked at.
    [[nodiscard]] bool IsOrthonormal() const noexcept { return (state & ~std::uint32_t{2}) == 0; }
    /// Determinant by state: exactly 1 for IDENTITY and ORTHONORMAL, whatever the elements hold, the product of the
    /// diagonal for DIAGONAL, and the expansion along the first row otherwise.
    [[nodiscard, gnu::always_inline]] T Determinant() const noexcept;
    /// Transpose: a copy for IDENTITY and DIAGONAL. For ORTHONORMAL the upper left 3x3 is transposed and the fourth row
    /// and column are (0, 0, 0, 1), in the same state. Otherwise the whole is transposed and classified, while
    /// Transpose() keeps its state.
    [[nodiscard, gnu::always_inline]] tMatrix4 Transposed() const noexcept;
    /// Inverse: the values of Invert(), except that for ORTHONORMAL the fourth row and column are (0, 0, 0, 1). The
    /// state is kept; one that is none of the four becomes GENERAL.
    /// @throws MatrixException as Invert() does.
    [[nodiscard, gnu::always_inline]] tMatrix4 Inverted() const;
    /// @}

    /// @name Changes
    /// @{
    /// Transposes in place: nothing to do for IDENTITY and DIAGONAL, the upper left 3x3 alone for ORTHONORMAL, the
    /// whole otherwise. The state is kept.
    /// @return this matrix.
    [[gnu::always_inline]] tMatrix4& Transpose() noexcept;
    /// Inverts in place, by state, which is kept: nothing to do for IDENTITY, the reciprocals of the diagonal for
    /// DIAGONAL, the transpose of the upper left 3x3 alone for ORTHONORMAL, and otherwise the cofactors times the
    /// reciprocal of the determinant.
    /// @return this matrix.
    /// @throws MatrixException when an element of the diagonal, or otherwise the determinant, is closer to zero than
    ///         `TOLERANCE`; the matrix is then unchanged. Exactly the tolerance passes, and so does NaN.
    [[gnu::always_inline]] tMatrix4& Invert();
    /// @}

    /// @name Operators
    /// @{
    /// Copies elements and state, a stale state included.
    [[gnu::always_inline]] tMatrix4& operator=(tMatrix4 const& other) noexcept;
    /// Copies sixteen consecutive elements, row by row, and classifies them. They may lie in this matrix.
    tMatrix4& operator=(T const* values) noexcept;
    /// A null pointer has no elements.
    tMatrix4& operator=(std::nullptr_t) = delete;
    /// Converts from the other precision, element by element, rounding to nearest, and classifies the result.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    tMatrix4& operator=(tMatrix4<U> const& other) noexcept;
    /// Converts sixteen consecutive elements of the other precision, row by row, and classifies the result.
    template <typename U, typename = detail::Where<OtherPrecision<U, T>>>
    tMatrix4& operator=(U const* values) noexcept;

    /// Product: the right operand is applied to a column vector first. The first case that fits decides:
    /// - one operand is IDENTITY, the right one looked at first: a copy of the other, with its state;
    /// - both DIAGONAL: the product of the diagonals, DIAGONAL;
    /// - one DIAGONAL: scaled rows or columns. If the other is ORTHONORMAL and the determinant of the diagonal one
    ///   IsEqual() to 1, the fourth row and column are (0, 0, 0, 1) and the state is ORTHONORMAL, even if the diagonal
    ///   is no rotation. Otherwise the result is classified;
    /// - else sums of four products. If both are ORTHONORMAL, the fourth row and column are (0, 0, 0, 1) and the state
    ///   is ORTHONORMAL; otherwise it is GENERAL, without classification.
    [[nodiscard, gnu::always_inline]] tMatrix4 operator*(tMatrix4 const& other) const noexcept;
    /// Product with a matrix on the right, in place; `m *= m` is fine. It differs from `operator*` where one operand is
    /// DIAGONAL:
    /// - both DIAGONAL: each element of this diagonal is squared and the other matrix is not read;
    /// - this one DIAGONAL: the determinant that decides is taken when the 3x3 is already scaled. If it IsEqual() to 1
    ///   and the other is ORTHONORMAL, m44 becomes 1 and the rest of the fourth row and column is kept;
    /// - the other one DIAGONAL, this one ORTHONORMAL: with determinant 1 the fourth row and column are kept;
    /// - whatever `operator*` classifies is GENERAL.
    /// @return this matrix.
    [[gnu::always_inline]] tMatrix4& operator*=(tMatrix4 const& other) noexcept;
    /// Sum, element by element: DIAGONAL if both operands are IDENTITY or DIAGONAL, else GENERAL. Nothing is
    /// classified.
    [[nodiscard]] tMatrix4 operator+(tMatrix4 const& other) const noexcept;
    /// Difference, element by element, in the state that a sum has.
    [[nodiscard]] tMatrix4 operator-(tMatrix4 const& other) const noexcept;
    /// Sum in place, with the elements and state of `operator+`.
    /// @return this matrix.
    tMatrix4& operator+=(tMatrix4 const& other) noexcept;
    /// Difference in place, with the elements and state of `operator-`.
    /// @return this matrix.
    tMatrix4& operator-=(tMatrix4 const& other) noexcept;
    /// Equality of the sixteen elements, by IsEqual(). The states are not compared.
    [[nodiscard, gnu::always_inline]] bool operator==(tMatrix4 const& other) const noexcept;
    /// Whether an element differs, by IsEqual(). The states are not compared.
    [[nodiscard]] bool operator!=(tMatrix4 const& other) const noexcept { return !(*this == other); }
    /// @}

    /// @name Streams
    /// @{
    /// Writes the elements row by row and then the state as a 32-bit integer, all as raw native bytes.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote. The state is taken as it stands, without a check of its range or of the elements.
    /// A stream that ends early leaves whatever its `read` has read.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// Four lines of four numbers, separated by tabs, each line with a newline at its end: the text that a stream of
    /// default settings in the classic locale gives. The state does not appear.
    operator std::string() const;
    /// @}

private:
    friend class tVector3<T>;
    friend class tQuaternion<T>;
    friend struct detail::MatrixAccess;

    static constexpr unsigned long long ROW_1 = 0;
    static constexpr unsigned long long ROW_2 = 1;
    static constexpr unsigned long long ROW_3 = 2;
    static constexpr unsigned long long ROW_4 = 3;

    using Place = detail::Place;
    using Rows = detail::tRows<T>;
    using Result = detail::tClassified<T, State>;

    // Where failures say that they were raised; see Place.
    static constexpr Place INVERT_DIAGONAL{"Invert", 773};
    static constexpr Place INVERT_GENERAL{"Invert", 801};
    static constexpr Place INVERTED_DIAGONAL{"Inverted", 883};
    static constexpr Place INVERTED_GENERAL{"Inverted", 920};
    static constexpr Place ORTHOGONAL_PROJECTION{"OrthogonalProjection", 1212};
    static constexpr Place PERSPECTIVE_PROJECTION{"PerspectiveProjection", 1251};

    /// @name Elements and state
    /// @{
    /// Sixteen elements whose state is known.
    tMatrix4(T const* values, State known) noexcept;
    /// The same. A template, so that it is no part of the instances in the library: Clang calls the constructors that
    /// are by another name, and then inlines none of them.
    template <typename Known>
    requires std::is_same_v<Known, State>
    [[gnu::always_inline]] tMatrix4(Rows const& rows, Known known) noexcept
    {
        T* const aligned = AlignedBuffer();
        detail::StoreRows(rows, aligned);
        state = known;
        elements = aligned; // last: nothing that follows can then be taken for a change of it
    }
    /// Rows and what is known of them, in the same way.
    template <typename Known>
    requires std::is_same_v<Known, State>
    [[gnu::always_inline]] explicit tMatrix4(detail::tClassified<T, Known> const& result) noexcept
        : tMatrix4(result.rows, result.state)
    {
    }
    [[nodiscard, gnu::always_inline]] static tMatrix4 Make(Result const& result) noexcept
    {
        return tMatrix4(result.rows, result.state);
    }

    [[nodiscard]] static unsigned long long GetIndex(tTuple2<unsigned int> const& position) noexcept
    {
        return static_cast<unsigned long long>(ROWSIZE) * position.x + position.y;
    }
    [[nodiscard]] T const* GetRow(std::size_t row) const noexcept { return elements + ROWSIZE * row; }
    [[nodiscard, gnu::always_inline]] Rows Load() const noexcept { return detail::LoadRows<T>(elements); }
    [[nodiscard, gnu::always_inline]] T* AlignedBuffer() noexcept;
    void InitMemory() noexcept { elements = AlignedBuffer(); }
    void RepairMemory() noexcept;
    template <typename U>
    [[gnu::always_inline]] inline void ReadElements(U const* values) noexcept;
    /// @}

    /// @name Classification
    /// @{
    State SetState() noexcept;
    /// The classification that SetState() stores, without a matrix.
    [[nodiscard]] static State Classify(T const* values) noexcept;
    [[nodiscard, gnu::always_inline]] static State Classify(Rows const& rows) noexcept;
    [[nodiscard, gnu::always_inline]] static Result Classified(Rows const& rows) noexcept
    {
        return {rows, Classify(rows)};
    }
    /// Whether two states that are neither IDENTITY nor DIAGONAL are both ORTHONORMAL.
    [[nodiscard]] static bool AreRotations(State a, State b) noexcept { return (a | b) == ORTHONORMAL; }
    /// The product with its state, by the rules of `operator*`.
    [[nodiscard, gnu::always_inline]] static Result Multiply(tMatrix4 const& left, tMatrix4 const& right) noexcept;
    /// The part of `operator*=` in which one of the two is DIAGONAL.
    tMatrix4& MultiplyDiagonal(tMatrix4 const& other) noexcept;
    /// @}

    /// @name Failure
    /// @{
    [[nodiscard, gnu::always_inline]] Rows InverseOfDiagonal(Place const& place) const;
    [[nodiscard, gnu::always_inline]] Rows InverseOfGeneral(Place const& place) const;
    /// Throws when the two ends of an extent are IsEqual().
    static void CheckView(T left, T right, T bottom, T top, T nearPlane, T farPlane, Place const& place);
    [[noreturn, gnu::cold]] static void ThrowSingular(Place const& place);
    /// @}
};

// Where the arithmetic of an operation stands: that of rows, and so of products, transposes, determinants and inverses,
// in detail/Rows.h; that of vectors in VectorTransforms.h; classification, products in place with a diagonal
// matrix, builders and streams in the source file. Here an operation chooses by the states, and sets one.

// The pointer must be set before a matrix is used: every constructor sets it.
template <typename T>
inline T* tMatrix4<T>::AlignedBuffer() noexcept
{
    static_assert(offsetof(tMatrix4, state) == 0 && offsetof(tMatrix4, elements) == sizeof(void*) &&
                  offsetof(tMatrix4, buffer) == 2 * sizeof(void*));
    constexpr std::uintptr_t ALIGNMENT = 16;
    // In bytes: the matrix may lie at any address.
    auto const address = detail::AddressOf(buffer);
    return reinterpret_cast<T*>(reinterpret_cast<char*>(buffer) + (ALIGNMENT - address) % ALIGNMENT);
}

template <typename T>
inline void tMatrix4<T>::RepairMemory() noexcept
{
    if (elements == nullptr)
        InitMemory();
}

template <typename T>
template <typename U>
inline void tMatrix4<T>::ReadElements(U const* values) noexcept
{
    T converted[SIZE]; // the values may be elements of this matrix
    for (std::size_t i = 0; i < SIZE; ++i)
        converted[i] = static_cast<T>(values[i]);
    for (std::size_t i = 0; i < SIZE; ++i)
        elements[i] = converted[i];
}

template <typename T>
inline typename tMatrix4<T>::State tMatrix4<T>::Classify(Rows const& rows) noexcept
{
    if (detail::IsPlainlyGeneral(rows, TOLERANCE<T>))
        return GENERAL;
    alignas(16) T values[SIZE];
    detail::StoreRows(rows, values);
    return Classify(values);
}

template <typename T>
inline tMatrix4<T>::tMatrix4() noexcept : tMatrix4(detail::DiagonalRows(T{1}, T{1}, T{1}, T{1}), IDENTITY)
{
}

template <typename T>
inline tMatrix4<T>::tMatrix4(T m11, T m12, T m13, T m14, T m21, T m22, T m23, T m24, T m31, T m32, T m33, T m34, T m41,
                             T m42, T m43, T m44) noexcept
    : tMatrix4(Classified({detail::Four(m11, m12, m13, m14), detail::Four(m21, m22, m23, m24),
                           detail::Four(m31, m32, m33, m34), detail::Four(m41, m42, m43, m44)}))
{
}

template <typename T>
inline tMatrix4<T>::tMatrix4(tMatrix4 const& other) noexcept : tMatrix4(other.Load(), other.state)
{
}

template <typename T>
template <typename U, typename>
inline tMatrix4<T>::tMatrix4(tMatrix4<U> const& other) noexcept : tMatrix4(other.Get())
{
}

template <typename T>
template <typename U, typename>
inline tMatrix4<T>::tMatrix4(U const* values) noexcept
{
    InitMemory();
    ReadElements(values);
    SetState();
}

template <typename T>
inline tMatrix4<T>& tMatrix4<T>::operator=(tMatrix4 const& other) noexcept
{
    // The other matrix is read before this one is written to, so that the compiler can keep a temporary in registers.
    // Both may be one, whose pointer is still to be set.
    if (this == &other)
    {
        RepairMemory();
        return *this;
    }
    Rows const rows = other.Load();
    State const known = other.state;
    RepairMemory();
    detail::StoreRows(rows, elements);
    state = known;
    return *this;
}

template <typename T>
template <typename U, typename>
inline tMatrix4<T>& tMatrix4<T>::operator=(tMatrix4<U> const& other) noexcept
{
    *this = other.Get();
    return *this;
}

template <typename T>
template <typename U, typename>
inline tMatrix4<T>& tMatrix4<T>::operator=(U const* values) noexcept
{
    RepairMemory();
    ReadElements(values);
    SetState();
    return *this;
}

template <typename T>
inline T tMatrix4<T>::Determinant() const noexcept
{
    if (IsOrthonormal())
        return T{1};
    return state == DIAGONAL ? detail::DeterminantOfDiagonal<T>(elements) : detail::Determinant<T>(elements);
}

template <typename T>
inline typename tMatrix4<T>::Result tMatrix4<T>::Multiply(tMatrix4 const& left, tMatrix4 const& right) noexcept
{
    T const* const a = left.elements;
    T const* const b = right.elements;
    if (!left.IsDiagonal() && !right.IsDiagonal())
    {
        if (AreRotations(left.state, right.state))
            return {detail::RotationProduct(a, b), ORTHONORMAL};
        return {detail::Product(a, b), GENERAL};
    }
    if (right.state == IDENTITY)
        return {left.Load(), left.state};
    if (left.state == IDENTITY)
        return {right.Load(), right.state};
    if (left.state == right.state)
        return {detail::DiagonalRows(a[IDX_11] * b[IDX_11], a[IDX_22] * b[IDX_22], a[IDX_33] * b[IDX_33],
                                     a[IDX_44] * b[IDX_44]),
                DIAGONAL};

    bool const isLeft = left.state == DIAGONAL;
    Rows const rows = isLeft ? detail::ScaledRows(a, right.Load()) : detail::ScaledColumns(left.Load(), b);
    if ((isLeft ? right : left).state == ORTHONORMAL && IsEqual(detail::DeterminantOfDiagonal(isLeft ? a : b), T{1}))
        return {detail::WithoutFourth(rows), ORTHONORMAL};
    return Classified(rows);
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::operator*(tMatrix4 const& other) const noexcept
{
    return Make(Multiply(*this, other));
}

template <typename T>
inline tMatrix4<T>& tMatrix4<T>::operator*=(tMatrix4 const& other) noexcept
{
    RepairMemory();
    if (!IsDiagonal() && !other.IsDiagonal())
    {
        T* const to = elements;
        if (AreRotations(state, other.state))
            detail::StoreRows(detail::RotationProduct(static_cast<T const*>(to), static_cast<T const*>(other.elements)),
                              to);
        else
        {
            Rows const product = detail::Product(static_cast<T const*>(to), static_cast<T const*>(other.elements));
            state = GENERAL;
            detail::StoreRows(product, to);
        }
        return *this;
    }
    if (other.state == IDENTITY)
        return *this;
    if (state == IDENTITY)
        return *this = other;
    return MultiplyDiagonal(other);
}

template <typename T>
inline tMatrix4<T>& tMatrix4<T>::operator+=(tMatrix4 const& other) noexcept
{
    RepairMemory();
    return *this = *this + other;
}

template <typename T>
inline tMatrix4<T>& tMatrix4<T>::operator-=(tMatrix4 const& other) noexcept
{
    RepairMemory();
    return *this = *this - other;
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::operator+(tMatrix4 const& other) const noexcept
{
    return tMatrix4(detail::Sum(Load(), other.Load()), IsDiagonal() && other.IsDiagonal() ? DIAGONAL : GENERAL);
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::operator-(tMatrix4 const& other) const noexcept
{
    return tMatrix4(detail::Difference(Load(), other.Load()), IsDiagonal() && other.IsDiagonal() ? DIAGONAL : GENERAL);
}

template <typename T>
inline bool tMatrix4<T>::operator==(tMatrix4 const& other) const noexcept
{
    T const* const a = elements;
    T const* const b = other.elements;
    using Row = detail::tFour<T>;
    for (std::size_t row = 0; row < SIZE; row += ROWSIZE)
        if (!detail::AreWithin<T>(detail::LoadAligned<Row>(a + row), detail::LoadAligned<Row>(b + row), TOLERANCE<T>))
            for (std::size_t i = row; i < row + ROWSIZE; ++i)
                if (!IsEqual(a[i], b[i]))
                    return false;
    return true;
}

template <typename T>
inline tMatrix4<T>& tMatrix4<T>::Transpose() noexcept
{
    RepairMemory();
    if (state == ORTHONORMAL)
        detail::TransposeRotation(elements);
    else if (!IsDiagonal())
        detail::StoreRows(detail::Transposed(Load()), elements);
    return *this;
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::Transposed() const noexcept
{
    return Make(IsDiagonal()           ? Result{Load(), state}
                : state == ORTHONORMAL ? Result{detail::TransposedRotation(Load()), ORTHONORMAL}
                                       : Classified(detail::Transposed(Load())));
}

template <typename T>
inline typename tMatrix4<T>::Rows tMatrix4<T>::InverseOfDiagonal(Place const& place) const
{
    auto const diagonal = detail::DiagonalOf<T>(elements);
    if (detail::IsOneTooSmall<T>(diagonal, TOLERANCE<T>))
        ThrowSingular(place);
    return detail::InverseOfDiagonal(Load(), diagonal);
}

template <typename T>
inline typename tMatrix4<T>::Rows tMatrix4<T>::InverseOfGeneral(Place const& place) const
{
    detail::tAdjugate<T> const adjugate(elements);
    if (detail::IsTooSmall(adjugate.determinant, TOLERANCE<T>))
        ThrowSingular(place);
    return adjugate.Inverse();
}

template <typename T>
inline tMatrix4<T>& tMatrix4<T>::Invert()
{
    RepairMemory();
    T* const m = elements;
    if (state == DIAGONAL)
        detail::StoreRows(InverseOfDiagonal(INVERT_DIAGONAL), m);
    else if (state == ORTHONORMAL)
        detail::TransposeRotation(m);
    else if (state != IDENTITY)
        detail::StoreRows(InverseOfGeneral(INVERT_GENERAL), m);
    return *this;
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::Inverted() const
{
    return Make(state == ORTHONORMAL ? Result{detail::TransposedRotation(Load()), ORTHONORMAL}
                : state == DIAGONAL  ? Result{InverseOfDiagonal(INVERTED_DIAGONAL), DIAGONAL}
                : state == IDENTITY  ? Result{Load(), IDENTITY}
                                     : Result{InverseOfGeneral(INVERTED_GENERAL), GENERAL});
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::Translate(tVector3<T> const& offset) noexcept
{
    return offset == tVector3<T>() ? tMatrix4() : Translate(offset.x, offset.y, offset.z);
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::Translate(T x, T y, T z) noexcept
{
    return tMatrix4(detail::TranslationRows(x, y, z), GENERAL);
}

template <typename T>
inline tMatrix4<T> tMatrix4<T>::PerspectiveProjection(T const& left, T const& right, T const& bottom, T const& top,
                                                      T const& nearPlane, T const& farPlane)
{
    using Row = detail::tFour<T>;
    Row const lower = detail::Four(left, bottom, nearPlane, nearPlane);
    Row const upper = detail::Four(right, top, farPlane, farPlane);
    Row const extents = upper - lower;
    if (!detail::ArePlainlyDifferent<T>(lower, extents, TOLERANCE<T>))
        CheckView(left, right, bottom, top, nearPlane, farPlane, PERSPECTIVE_PROJECTION);
    Row const sums = upper + lower;
    T const depth = detail::Get<2>(extents);
    T const m33 = -detail::Get<2>(sums) / depth;
    T const m34 = T{-2} * farPlane * nearPlane / depth;
    return tMatrix4(detail::CentralRows<T>(T{2} * nearPlane, sums, extents, m33, m34), GENERAL);
}

/// Writes the text of the matrix, as its conversion to `std::string` gives it. The target's precision and flags do not
/// apply to the numbers; its width and fill apply once, to the whole text.
template <typename T>
std::ostream& operator<<(std::ostream& stream, tMatrix4<T> const& matrix);

extern template class BV_TEMPLATE tMatrix4<float>;
extern template class BV_TEMPLATE tMatrix4<double>;
extern template BV_TEMPLATE tMatrix4<float>::tMatrix4(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<float>::tMatrix4(double const*) noexcept;
extern template BV_TEMPLATE tMatrix4<float>& tMatrix4<float>::operator=(tMatrix4<double> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<float>& tMatrix4<float>::operator=(double const*) noexcept;
extern template BV_TEMPLATE tMatrix4<double>::tMatrix4(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double>::tMatrix4(float const*) noexcept;
extern template BV_TEMPLATE tMatrix4<double>& tMatrix4<double>::operator=(tMatrix4<float> const&) noexcept;
extern template BV_TEMPLATE tMatrix4<double>& tMatrix4<double>::operator=(float const*) noexcept;
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tMatrix4<float> const&);
extern template BV_TEMPLATE std::ostream& operator<<(std::ostream&, tMatrix4<double> const&);

// The state, a pointer, and sixteen elements with 16 bytes of slack.
static_assert(sizeof(tMatrix4<float>) == 2 * sizeof(void*) + 64 + 16);
static_assert(sizeof(tMatrix4<double>) == 2 * sizeof(void*) + 128 + 16);
// A copy of the bytes would point into the original.
static_assert(!std::is_trivially_copyable_v<tMatrix4<float>> && !std::is_trivially_copyable_v<tMatrix4<double>>);

} // namespace bv::maths

// The transformations of vectors by matrices: they belong to the vectors, which do not depend on matrices.
#include "bv/maths/VectorTransforms.h"
