#include "bv/maths/tPlane.h"

#include "Maths/RawStream.h"
#include "Maths/Text.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/detail/Place.h"

namespace bv::maths
{

namespace
{

// Where failures say that they were raised; see Place.
constexpr detail::Place SET_NORMAL{"SetNormal", 137};
constexpr detail::Place GET_INTERSECTION{"GetIntersection", 157};

template <typename Error, typename T>
[[noreturn, gnu::cold]] void Raise(wchar_t const* message, detail::Place const& place)
{
    throw Error(message, "internal\\Maths\\Plane", place.line, FunctionName<T>("tPlane", place.member).c_str());
}

} // namespace

template <typename T>
tPlane<T>::operator std::string() const
{
    return Join(normal.x, normal.y, normal.z, offset);
}

template <typename T>
void tPlane<T>::SetNormal(tVector3<T> const& newNormal)
{
    if (!IsEqual(newNormal.LengthSquared(), UNIT))
        Raise<InvalidArgumentException, T>(L"Normal vector must be normalised", SET_NORMAL);
    normal = newNormal;
}

template <typename T>
std::ostream& tPlane<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(normal.Serialise(stream), offset);
}

template <typename T>
std::istream& tPlane<T>::Deserialise(std::istream& stream)
{
    return normal.Deserialise(stream);
}

template <typename T>
void tPlane<T>::ThrowParallel()
{
    Raise<DivideByZeroException, T>(L"Direction is parallel to the plane", GET_INTERSECTION);
}

template <typename T>
std::ostream& operator<<(std::ostream& stream, tPlane<T> const& plane)
{
    return stream << std::string(plane);
}

template class BV_TEMPLATE_INSTANCE tPlane<float>;
template class BV_TEMPLATE_INSTANCE tPlane<double>;
template BV_TEMPLATE_INSTANCE tPlane<float>::tPlane(tPlane<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tPlane<float>& tPlane<float>::operator=(tPlane<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tPlane<double>::tPlane(tPlane<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tPlane<double>& tPlane<double>::operator=(tPlane<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tPlane<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tPlane<double> const&);

} // namespace bv::maths
