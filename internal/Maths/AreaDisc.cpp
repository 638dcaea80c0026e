#include "bv/maths/tAreaDisc.h"

#include "Maths/RawStream.h"

namespace bv::maths
{

template <typename T>
std::ostream& tAreaDisc<T>::Serialise(std::ostream& stream) const
{
    WriteRaw(stream, radiusSquared);
    return centre.Serialise(stream);
}

template <typename T>
std::istream& tAreaDisc<T>::Deserialise(std::istream& stream)
{
    ReadRaw(stream, radiusSquared);
    return centre.Deserialise(stream);
}

template class BV_TEMPLATE_INSTANCE tAreaDisc<float>;
template class BV_TEMPLATE_INSTANCE tAreaDisc<double>;
template BV_TEMPLATE_INSTANCE tAreaDisc<float>::tAreaDisc(tAreaDisc<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<float>& tAreaDisc<float>::operator=(tAreaDisc<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<double>::tAreaDisc(tAreaDisc<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<double>& tAreaDisc<double>::operator=(tAreaDisc<float> const&) noexcept;

} // namespace bv::maths
