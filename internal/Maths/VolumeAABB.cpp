#include "bv/maths/tVolumeAABB.h"

#include <string>

#include "Maths/Text.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVolumeSphere.h"

namespace bv::maths
{

template <typename T>
void tVolumeAABB<T>::ThrowWrongAxis(detail::Place const& place)
{
    throw InvalidArgumentException((std::string("Wrong axis argument to tVolumeAABB<T>::") + place.member).c_str(),
                                   "internal\\Maths\\VolumeAABB", place.line,
                                   FunctionName<T>("tVolumeAABB", place.member).c_str());
}

template <typename T>
std::ostream& tVolumeAABB<T>::Serialise(std::ostream& stream) const
{
    min.Serialise(stream);
    return max.Serialise(stream);
}

template <typename T>
std::istream& tVolumeAABB<T>::Deserialise(std::istream& stream)
{
    min.Deserialise(stream);
    return max.Deserialise(stream);
}

template class BV_TEMPLATE_INSTANCE tVolumeAABB<float>;
template class BV_TEMPLATE_INSTANCE tVolumeAABB<double>;
template BV_TEMPLATE_INSTANCE tVolumeAABB<float>::tVolumeAABB(tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<float>& tVolumeAABB<float>::operator=(tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<double>::tVolumeAABB(tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<double>& tVolumeAABB<double>::operator=(tVolumeAABB<float> const&) noexcept;

} // namespace bv::maths
