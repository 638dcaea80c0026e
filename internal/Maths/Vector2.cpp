#include "bv/maths/tVector2.h"

#include "Maths/RawStream.h"
#include "Maths/Text.h"

namespace bv::maths
{

template <typename T>
std::ostream& tVector2<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(stream, x, y);
}

template <typename T>
std::istream& tVector2<T>::Deserialise(std::istream& stream)
{
    return ReadRaw(stream, x, y);
}

template <typename T>
std::ostream& operator<<(std::ostream& stream, tVector2<T> const& vector)
{
    return stream << Join(vector.x, vector.y);
}

template class BV_TEMPLATE_INSTANCE tVector2<float>;
template class BV_TEMPLATE_INSTANCE tVector2<double>;
template BV_TEMPLATE_INSTANCE tVector2<float>::tVector2(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double>::tVector2(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> operator*(float, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> operator*(double, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::ostream& tVector2<int>::Serialise(std::ostream&) const;
template BV_TEMPLATE_INSTANCE std::istream& tVector2<int>::Deserialise(std::istream&);
template BV_TEMPLATE_INSTANCE std::ostream& tVector2<unsigned int>::Serialise(std::ostream&) const;
template BV_TEMPLATE_INSTANCE std::istream& tVector2<unsigned int>::Deserialise(std::istream&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector2<int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector2<unsigned int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector2<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tVector2<double> const&);

} // namespace bv::maths
