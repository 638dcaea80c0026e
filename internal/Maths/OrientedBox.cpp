#include "bv/maths/tOrientedBox.h"

#include <cstddef>
#include <limits>

#include "bv/maths/Componentwise.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

namespace
{

/// Twice the rounding of the three steps that leave a remainder of a vector, as a share of the vector.
template <typename T>
constexpr T NOTHING = T{8} * std::numeric_limits<T>::epsilon();

/// A vector whose largest component is 1 or -1, so that squares neither overflow nor underflow; zero stays zero. A
/// vector with a component that is not finite becomes one with a NaN.
template <typename T>
[[nodiscard]] tVector3<T> Levelled(tVector3<T> const& v) noexcept
{
    T const largest = GetMaxComponent(Abs(v));
    return largest == T{0} ? v : v / largest;
}

/// Scales a direction to unit length.
/// @return false for zero, whose direction is left as it is.
template <typename T>
[[nodiscard]] bool Unify(tVector3<T>& direction) noexcept
{
    tVector3<T> const levelled = Levelled(direction);
    if (GetMaxComponent(Abs(levelled)) == T{0})
        return false;
    direction = levelled.Normalised();
    return true;
}

/// A unit vector perpendicular to a vector other than zero, in the plane of its two larger components.
template <typename T>
[[nodiscard]] tVector3<T> Perpendicular(tVector3<T> const& v) noexcept
{
    T const x = detail::Magnitude(v.x);
    T const y = detail::Magnitude(v.y);
    T const z = detail::Magnitude(v.z);
    tVector3<T> result(T{0}, -v.z, v.y);
    if (!(x <= y && x <= z))
        result = y <= z ? tVector3<T>(-v.z, T{0}, v.x) : tVector3<T>(-v.y, v.x, T{0});
    return Levelled(result).Normalised();
}

/// What a vector has beside a unit vector, or zero where that is no more than rounding. Twice, since the first
/// remainder of a vector nearly parallel to the axis has a part along it.
template <typename T>
[[nodiscard]] tVector3<T> Beside(tVector3<T> const& v, tVector3<T> const& axis) noexcept
{
    tVector3<T> const levelled = Levelled(v);
    tVector3<T> const once = levelled - axis * levelled.Dot(axis);
    if (GetMaxComponent(Abs(once)) <= NOTHING<T>)
        return {};
    return once - axis * once.Dot(axis);
}

/// Perpendicular unit vectors along three directions, as far as they go.
template <typename T>
void MakeAxes(tVector3<T> const (&directions)[3], tVector3<T>& x, tVector3<T>& y, tVector3<T>& z) noexcept
{
    x = directions[0];
    if (!Unify(x))
    {
        x = Levelled(directions[1]).Cross(Levelled(directions[2]));
        if (!(GetMaxComponent(Abs(x)) <= NOTHING<T>))
            x = x.Normalised();
        else
        {
            tVector3<T> const& other = GetMaxComponent(Abs(directions[1])) == T{0} ? directions[2] : directions[1];
            x = GetMaxComponent(Abs(other)) == T{0} ? tVector3<T>(1, 0, 0) : Perpendicular(other);
        }
    }
    y = Beside(directions[1], x);
    if (!Unify(y))
    {
        y = Beside(directions[2], x).Cross(x);
        if (!Unify(y))
            y = Perpendicular(x);
    }
    z = x.Cross(y);
    if (T{0} > z.Dot(directions[2]))
        z = -z;
}

/// The part of a matrix that moves directions, applied to one.
template <typename T>
[[nodiscard]] tVector3<T> Direct(T const* m, tVector3<T> const& v) noexcept
{
    return {m[0] * v.x + m[1] * v.y + m[2] * v.z, m[4] * v.x + m[5] * v.y + m[6] * v.z,
            m[8] * v.x + m[9] * v.y + m[10] * v.z};
}

} // namespace

template <typename T>
tOrientedBox<T> tOrientedBox<T>::operator*(tMatrix4<T> const& matrix) const noexcept
{
    if (!IsValid())
        return {};
    T const* const m = matrix.Get();
    tVector3<T> const moved[3] = {Direct(m, axes[0]), Direct(m, axes[1]), Direct(m, axes[2])};
    tVector3<T> x, y, z;
    MakeAxes(moved, x, y, z);
    auto const reach = [&](tVector3<T> const& axis)
    {
        return detail::Magnitude(axis.Dot(moved[0])) * halfExtents.x +
               detail::Magnitude(axis.Dot(moved[1])) * halfExtents.y +
               detail::Magnitude(axis.Dot(moved[2])) * halfExtents.z;
    };
    return {Direct(m, centre) + tVector3<T>(m[3], m[7], m[11]), x, y, z, {reach(x), reach(y), reach(z)}};
}

template <typename T>
std::ostream& tOrientedBox<T>::Serialise(std::ostream& stream) const
{
    centre.Serialise(stream);
    for (tVector3<T> const& axis : axes)
        axis.Serialise(stream);
    return halfExtents.Serialise(stream);
}

template <typename T>
std::istream& tOrientedBox<T>::Deserialise(std::istream& stream)
{
    centre.Deserialise(stream);
    for (tVector3<T>& axis : axes)
        axis.Deserialise(stream);
    return halfExtents.Deserialise(stream);
}

template class BV_TEMPLATE_INSTANCE tOrientedBox<float>;
template class BV_TEMPLATE_INSTANCE tOrientedBox<double>;
template BV_TEMPLATE_INSTANCE tOrientedBox<float>::tOrientedBox(tOrientedBox<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tOrientedBox<float>& tOrientedBox<float>::operator=(tOrientedBox<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tOrientedBox<double>::tOrientedBox(tOrientedBox<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tOrientedBox<double>&
tOrientedBox<double>::operator=(tOrientedBox<float> const&) noexcept;

} // namespace bv::maths
