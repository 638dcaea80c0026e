#include "bv/maths/tCoordinateFrame.h"

#include "Maths/RawStream.h"
#include "Maths/Text.h"
#include "bv/InvalidArgumentException.h"

namespace bv::maths
{

template <typename T>
tMatrix4<T> tCoordinateFrame<T>::CreateRotationMatrix(unsigned char xDirection, unsigned char yDirection,
                                                      unsigned char zDirection) const noexcept
{
    tVector3<T> const axisX = GetAxisVector(x);
    tVector3<T> const axisY = GetAxisVector(y);
    tVector3<T> const axisZ = GetAxisVector(z);
    auto const column = [&](unsigned char direction)
    {
        tVector3<T> const target = GetAxisVector(direction);
        return tVector3<T>(axisX.Dot(target), axisY.Dot(target), axisZ.Dot(target)).Normalised();
    };
    return tMatrix4<T>(column(xDirection), column(yDirection), column(zDirection));
}

template <typename T>
tMatrix4<T> tCoordinateFrame<T>::CreateRotationMatrix(tCoordinateFrame const& target) const noexcept
{
    return CreateRotationMatrix(target.x, target.y, target.z);
}

template <typename T>
void tCoordinateFrame<T>::MapCubeMap(unsigned char xDirection, unsigned char yDirection, unsigned char zDirection,
                                     unsigned char* const faces) const noexcept
{
    CubeMapIndex(xDirection, faces[0], faces[1]);
    CubeMapIndex(yDirection, faces[2], faces[3]);
    CubeMapIndex(zDirection, faces[4], faces[5]);
}

template <typename T>
void tCoordinateFrame<T>::MapCubeMap(tCoordinateFrame const& frame, unsigned char* const faces) const noexcept
{
    MapCubeMap(frame.x, frame.y, frame.z, faces);
}

template <typename T>
std::ostream& tCoordinateFrame<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(stream, x, y, z);
}

template <typename T>
std::istream& tCoordinateFrame<T>::Deserialise(std::istream& stream)
{
    return ReadRaw(stream, x, y, z);
}

/// The face of this frame that a direction meets, and the one across; the faces keep their values for no direction.
template <typename T>
void tCoordinateFrame<T>::CubeMapIndex(unsigned char direction, unsigned char& face,
                                       unsigned char& oppositeFace) const noexcept
{
    tVector3<T> const target = GetAxisVector(direction);
    unsigned char const axes[] = {x, y, z};
    for (unsigned int axis = 0; axis < 3; ++axis)
    {
        T const along = GetAxisVector(axes[axis]).Dot(target);
        if (IsEqual(along, T{0}))
            continue;
        bool const isPositive = along > T{0};
        face = static_cast<unsigned char>(2 * axis + (isPositive ? 0 : 1));
        oppositeFace = static_cast<unsigned char>(2 * axis + (isPositive ? 1 : 0));
        return;
    }
}

template <typename T>
[[gnu::cold]] void tCoordinateFrame<T>::ThrowIncorrectFrame(detail::Place const& place)
{
    throw InvalidArgumentException(L"Incorrectly defined coordinate frame", "internal\\Maths\\CoordinateFrame",
                                   place.line, FunctionName<T>("tCoordinateFrame", place.member).c_str());
}

template class BV_TEMPLATE_INSTANCE tCoordinateFrame<float>;
template class BV_TEMPLATE_INSTANCE tCoordinateFrame<double>;

} // namespace bv::maths
