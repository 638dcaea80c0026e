#pragma once

/// @file
/// An axis convention, and what lies between two of them.

#include <cstdint>
#include <iosfwd>

#include "bv/Export.h"
#include "bv/maths/detail/Place.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// Axis convention: the direction of the world that each of the x, y and z axes points to.
///
/// Directions come in opposite pairs whose codes differ in the lowest bit. A frame is valid when its axes belong to
/// three different pairs. Codes above 5 name no direction, but pass where their pairs differ.
///
/// @tparam T element type of its vectors and matrices, `float` or `double`; both instances are in the library.
template <typename T>
class tCoordinateFrame
{
    unsigned char x; ///< direction of the x axis
    unsigned char y; ///< direction of the y axis
    unsigned char z; ///< direction of the z axis

public:
    static constexpr unsigned char RIGHT = 0;     ///< (1, 0, 0) in the default frame
    static constexpr unsigned char LEFT = 1;      ///< (-1, -0, -0)
    static constexpr unsigned char FORWARDS = 2;  ///< (0, 1, 0)
    static constexpr unsigned char BACKWARDS = 3; ///< (-0, -1, -0)
    static constexpr unsigned char UP = 4;        ///< (0, 0, 1)
    static constexpr unsigned char DOWN = 5;      ///< (-0, -0, -1)

    /// The sense in which z follows from x and y.
    enum Handedness : std::uint32_t
    {
        LEFT_HANDED = 0,  ///< anything else
        RIGHT_HANDED = 1, ///< z is x cross y
    };

    /// @name Construction
    /// @{
    /// x to the right, y forwards, z up: a right-handed frame.
    constexpr tCoordinateFrame() noexcept : x{RIGHT}, y{FORWARDS}, z{UP} {}
    /// The frame whose axes point in these directions.
    /// @throws bv::InvalidArgumentException when two of them belong to the same pair.
    constexpr tCoordinateFrame(unsigned char xDirection, unsigned char yDirection, unsigned char zDirection);
    /// @}

    /// @name Access
    /// @{
    /// Direction of the x axis.
    [[nodiscard]] constexpr unsigned char GetX() const noexcept { return x; }
    /// Direction of the y axis.
    [[nodiscard]] constexpr unsigned char GetY() const noexcept { return y; }
    /// Direction of the z axis.
    [[nodiscard]] constexpr unsigned char GetZ() const noexcept { return z; }
    /// @}

    /// @name Queries
    /// @{
    /// A direction as a unit vector in the axes of this frame. The components of a vector along a negative axis are all
    /// negated, zeros included. A direction that the frame does not contain gives (-0, -0, -1).
    [[nodiscard]] constexpr tVector3<T> GetVector(unsigned char direction) const noexcept;
    /// Whether z is the right-handed vector product of x and y.
    [[nodiscard]] constexpr Handedness GetHandedness() const noexcept;
    /// The matrix whose columns are the axes of the given frame, expressed in the axes of this one: it takes components
    /// in the given frame to components in this frame. An axis that is no direction gives a column of NaN. Its state is
    /// that of a matrix of three axes: between frames of different handedness, too, it is ORTHONORMAL or DIAGONAL.
    [[nodiscard]] tMatrix4<T> CreateRotationMatrix(unsigned char xDirection, unsigned char yDirection,
                                                   unsigned char zDirection) const noexcept;
    /// @copydoc CreateRotationMatrix(unsigned char, unsigned char, unsigned char) const
    [[nodiscard]] tMatrix4<T> CreateRotationMatrix(tCoordinateFrame const& target) const noexcept;
    /// How the faces of a cube map relabel: for each face of the given frame, in the order +x, -x, +y, -y, +z, -z, the
    /// index in that order of the same face in this frame.
    ///
    /// @param xDirection direction of the given frame's x axis; no direction leaves its two entries alone.
    /// @param yDirection the same for y.
    /// @param zDirection the same for z.
    /// @param faces room for six entries.
    void MapCubeMap(unsigned char xDirection, unsigned char yDirection, unsigned char zDirection,
                    unsigned char* const faces) const noexcept;
    /// The same for the axes of a frame.
    void MapCubeMap(tCoordinateFrame const& frame, unsigned char* const faces) const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Points the axes in these directions.
    /// @return this frame.
    /// @throws bv::InvalidArgumentException when two of them belong to the same pair; the frame then holds the wrong
    ///         directions all the same.
    constexpr tCoordinateFrame& Set(unsigned char xDirection, unsigned char yDirection, unsigned char zDirection);
    /// @}

    /// @name Streams
    /// @{
    /// Writes the directions of x, y and z as three single bytes.
    /// @return the stream, whose state is not looked at.
    std::ostream& Serialise(std::ostream& stream) const;
    /// Reads what Serialise() wrote, without checking it.
    /// @return the stream, whose state is not looked at.
    std::istream& Deserialise(std::istream& stream);
    /// @}

private:
    [[nodiscard]] static constexpr tVector3<T> GetAxisVector(unsigned char direction) noexcept;
    [[nodiscard]] constexpr bool IsValid() const noexcept;
    void CubeMapIndex(unsigned char direction, unsigned char& face, unsigned char& oppositeFace) const noexcept;
    // Where failures say that they were raised; see Place.
    static constexpr detail::Place CONSTRUCTOR{"tCoordinateFrame", 46};
    static constexpr detail::Place SET{"Set", 68};

    [[noreturn, gnu::cold]] static void ThrowIncorrectFrame(detail::Place const& place);
};

template <typename T>
constexpr tCoordinateFrame<T>::tCoordinateFrame(unsigned char xDirection, unsigned char yDirection,
                                                unsigned char zDirection)
    : x{xDirection}, y{yDirection}, z{zDirection}
{
    if (!IsValid())
        ThrowIncorrectFrame(CONSTRUCTOR);
}

template <typename T>
constexpr tVector3<T> tCoordinateFrame<T>::GetVector(unsigned char direction) const noexcept
{
    tVector3<T> const axisX(1, 0, 0);
    tVector3<T> const axisY(0, 1, 0);
    tVector3<T> const axisZ(0, 0, 1);
    if (direction == x)
        return axisX;
    if (direction == y)
        return axisY;
    if (direction == z)
        return axisZ;
    int const opposite = direction ^ 1;
    if (opposite == x)
        return -axisX;
    if (opposite == y)
        return -axisY;
    return -axisZ;
}

template <typename T>
constexpr typename tCoordinateFrame<T>::Handedness tCoordinateFrame<T>::GetHandedness() const noexcept
{
    return GetAxisVector(x).Cross(GetAxisVector(y)) == GetAxisVector(z) ? RIGHT_HANDED : LEFT_HANDED;
}

template <typename T>
constexpr tCoordinateFrame<T>& tCoordinateFrame<T>::Set(unsigned char xDirection, unsigned char yDirection,
                                                        unsigned char zDirection)
{
    x = xDirection;
    y = yDirection;
    z = zDirection;
    if (!IsValid())
        ThrowIncorrectFrame(SET);
    return *this;
}

/// The direction in the axes of the default frame; a zero vector for a code that is no direction.
template <typename T>
constexpr tVector3<T> tCoordinateFrame<T>::GetAxisVector(unsigned char direction) noexcept
{
    switch (direction)
    {
    case RIGHT:
        return {1, 0, 0};
    case LEFT:
        return -GetAxisVector(RIGHT);
    case FORWARDS:
        return {0, 1, 0};
    case BACKWARDS:
        return -GetAxisVector(FORWARDS);
    case UP:
        return {0, 0, 1};
    case DOWN:
        return -GetAxisVector(UP);
    default:
        return {};
    }
}

template <typename T>
constexpr bool tCoordinateFrame<T>::IsValid() const noexcept
{
    int const pairX = x & 0xFE;
    int const pairY = y & 0xFE;
    int const pairZ = z & 0xFE;
    return pairX != pairY && pairX != pairZ && pairY != pairZ;
}

extern template class BV_TEMPLATE tCoordinateFrame<float>;
extern template class BV_TEMPLATE tCoordinateFrame<double>;

static_assert(sizeof(tCoordinateFrame<float>) == 3 && sizeof(tCoordinateFrame<double>) == 3);
static_assert(alignof(tCoordinateFrame<float>) == 1 && alignof(tCoordinateFrame<double>) == 1);

} // namespace bv::maths
