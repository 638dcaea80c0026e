#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"

#include "Maths/RawStream.h"
#include "Maths/Text.h"
#include "bv/Hash.h"

namespace bv::maths
{

template <typename T>
unsigned int tTuple2<T>::GetHash32() const noexcept
{
    return GetJenkinsHash(&x, sizeof(T), GetJenkinsHash(&y, sizeof(T), 0));
}

template <typename T>
unsigned char tTuple2<T>::GetHash8() const noexcept
{
    return GetPearsonHash(&x, sizeof(T), GetPearsonHash(&y, sizeof(T), 0));
}

template <typename T>
std::ostream& tTuple2<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(stream, x, y);
}

template <typename T>
std::istream& tTuple2<T>::Deserialise(std::istream& stream)
{
    return ReadRaw(stream, x, y);
}

template <typename T>
unsigned int tTuple3<T>::GetHash32() const noexcept
{
    return GetJenkinsHash(&x, sizeof(T), GetJenkinsHash(&y, sizeof(T), GetJenkinsHash(&z, sizeof(T), 0)));
}

template <typename T>
unsigned char tTuple3<T>::GetHash8() const noexcept
{
    return GetPearsonHash(&x, sizeof(T), GetPearsonHash(&y, sizeof(T), GetPearsonHash(&z, sizeof(T), 0)));
}

template <typename T>
std::ostream& tTuple3<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(stream, x, y, z);
}

template <typename T>
std::istream& tTuple3<T>::Deserialise(std::istream& stream)
{
    return ReadRaw(stream, x, y, z);
}

template class BV_TEMPLATE_INSTANCE tTuple2<int>;
template class BV_TEMPLATE_INSTANCE tTuple2<unsigned int>;
template class BV_TEMPLATE_INSTANCE tTuple2<float>;
template class BV_TEMPLATE_INSTANCE tTuple2<double>;
template BV_TEMPLATE_INSTANCE tTuple2<int> tTuple2<int>::operator-<>() const noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> tTuple2<float>::operator-<>() const noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> tTuple2<double>::operator-<>() const noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float>::tTuple2(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double>::tTuple2(tTuple2<float> const&) noexcept;
template class BV_TEMPLATE_INSTANCE tTuple3<int>;
template class BV_TEMPLATE_INSTANCE tTuple3<unsigned int>;
template class BV_TEMPLATE_INSTANCE tTuple3<float>;
template class BV_TEMPLATE_INSTANCE tTuple3<double>;
template BV_TEMPLATE_INSTANCE tTuple3<int> tTuple3<int>::operator-<>() const noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> tTuple3<float>::operator-<>() const noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> tTuple3<double>::operator-<>() const noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float>::tTuple3(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double>::tTuple3(tTuple3<float> const&) noexcept;

} // namespace bv::maths

template <typename T>
std::ostream& operator<<(std::ostream& stream, bv::maths::tTuple2<T> const& tuple)
{
    return stream << bv::maths::Join(tuple.x, tuple.y);
}

template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<unsigned int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple2<double> const&);

template <typename T>
std::ostream& operator<<(std::ostream& stream, bv::maths::tTuple3<T> const& tuple)
{
    return stream << bv::maths::Join(tuple.x, tuple.y, tuple.z);
}

template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple3<int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple3<unsigned int> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple3<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, bv::maths::tTuple3<double> const&);
