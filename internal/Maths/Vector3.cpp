#include "bv/maths/tVector3.h"

#include "Maths/RawStream.h"
#include "Maths/Text.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

template <typename T>
void tVector3<T>::ThrowDivisionByZero(detail::Place const& place)
{
    throw DivideByZeroException(L"Attempt to divide vector by zero scalar value", "internal\\Maths\\Vector3",
                                place.line, FunctionName<T>("tVector3", place.member).c_str());
}

template <typename T>
std::ostream& tVector3<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(stream, x, y, z);
}

template <typename T>
std::istream& tVector3<T>::Deserialise(std::istream& stream)
{
    return ReadRaw(stream, x, y, z);
}

template <typename T>
std::ostream& operator<<(std::ostream& stream, tVector3<T> const& vector)
{
    return stream << Join(vector.x, vector.y, vector.z);
}

template class BV_TEMPLATE_INSTANCE tVector3<float>;
template class BV_TEMPLATE_INSTANCE tVector3<double>;
template BV_TEMPLATE_INSTANCE tVector3<float>::tVector3(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double>::tVector3(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> operator*(float, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> operator*(double, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::ostream& tVector3<int>::Serialise(std::ostream&) const;
template BV_TEMPLATE_INSTANCE std::istream& tVector3<int>::Deserialise(std::istream&);
template BV_TEMPLATE_INSTANCE std::ostream& tVector3<unsigned int>::Serialise(std::ostream&) const;
template BV_TEMPLATE_INSTANCE std::istream& tVector3<unsigned int>::Deserialise(std::istream&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector3<int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector3<unsigned int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector3<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector3<double> const&);

} // namespace bv::maths
