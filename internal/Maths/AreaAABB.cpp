#include "bv/maths/tAreaAABB.h"

#include <string>

#include "Maths/Text.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/tAreaDisc.h"

namespace bv::maths
{

template <typename T>
void tAreaAABB<T>::ThrowWrongAxis(detail::Place const& place)
{
    throw InvalidArgumentException((std::string("Wrong axis argument to tAreaAABB<T>::") + place.member).c_str(),
                                   "internal\\Maths\\AreaAABB", place.line,
                                   FunctionName<T>("tAreaAABB", place.member).c_str());
}

template <typename T>
std::ostream& tAreaAABB<T>::Serialise(std::ostream& stream) const
{
    min.Serialise(stream);
    return max.Serialise(stream);
}

template <typename T>
std::istream& tAreaAABB<T>::Deserialise(std::istream& stream)
{
    min.Deserialise(stream);
    return max.Deserialise(stream);
}

template class BV_TEMPLATE_INSTANCE tAreaAABB<float>;
template class BV_TEMPLATE_INSTANCE tAreaAABB<double>;
template BV_TEMPLATE_INSTANCE tAreaAABB<float>::tAreaAABB(tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<float>& tAreaAABB<float>::operator=(tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<double>::tAreaAABB(tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<double>& tAreaAABB<double>::operator=(tAreaAABB<float> const&) noexcept;

} // namespace bv::maths
