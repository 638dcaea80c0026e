#include "bv/maths/tVolumeSphere.h"

#include <cmath>

#include "Maths/RawStream.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

template <typename T>
T tVolumeSphere<T>::GetVolume() const noexcept
{
    constexpr T FOUR_THIRDS_PI = static_cast<T>(4.1887903F);
    return std::pow(radiusSquared, T{1.5}) * FOUR_THIRDS_PI;
}

template <typename T>
std::ostream& tVolumeSphere<T>::Serialise(std::ostream& stream) const
{
    WriteRaw(stream, radiusSquared);
    return centre.Serialise(stream);
}

template <typename T>
std::istream& tVolumeSphere<T>::Deserialise(std::istream& stream)
{
    ReadRaw(stream, radiusSquared);
    return centre.Deserialise(stream);
}

template class BV_TEMPLATE_INSTANCE tVolumeSphere<float>;
template class BV_TEMPLATE_INSTANCE tVolumeSphere<double>;
template BV_TEMPLATE_INSTANCE tVolumeSphere<float>::tVolumeSphere(tVolumeSphere<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<float>&
tVolumeSphere<float>::operator=(tVolumeSphere<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<double>::tVolumeSphere(tVolumeSphere<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<double>&
tVolumeSphere<double>::operator=(tVolumeSphere<float> const&) noexcept;

} // namespace bv::maths
