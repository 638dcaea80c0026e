#include "bv/maths/tQuaternion.h"

#include <cmath>

#include "Maths/RawStream.h"
#include "Maths/Text.h"
#include "Maths/Turn.h"
#include "bv/Hash.h"

namespace bv::maths
{

namespace
{

/// Powers of two beyond which squared lengths overflow or lose digits, and those that bring numbers from there into the
/// middle of the range.
template <typename T>
struct Range;
template <>
struct Range<float>
{
    static constexpr float SMALL_SQUARE = 0x1p-80F, LARGE_SQUARE = 0x1p100F, UP = 0x1p100F, DOWN = 0x1p-100F;
};
template <>
struct Range<double>
{
    static constexpr double SMALL_SQUARE = 0x1p-600, LARGE_SQUARE = 0x1p900, UP = 0x1p800, DOWN = 0x1p-800;
};

/// A power of two, mostly 1, by which components can be multiplied before they are squared.
template <typename T>
[[nodiscard]] T GetScale(T lengthSquared) noexcept
{
    if (lengthSquared < Range<T>::SMALL_SQUARE)
        return Range<T>::UP;
    return lengthSquared > Range<T>::LARGE_SQUARE ? Range<T>::DOWN : T{1};
}

/// The length of a vector or quaternion, which neither overflows nor underflows on the way.
template <typename V>
[[nodiscard]] auto GetLength(V const& v) noexcept
{
    auto const scale = GetScale(v.LengthSquared());
    return (v * scale).Length() / scale;
}

/// The same direction at length 1, also where the squared length overflows or underflows; zero stays zero.
template <typename V>
[[nodiscard]] V AtLengthOne(V const& v) noexcept
{
    V const scaled = v * GetScale(v.LengthSquared());
    auto const lengthSquared = scaled.LengthSquared();
    return lengthSquared == 0 ? scaled : scaled.Normalised();
}

template <typename T>
[[nodiscard]] tVector3<T> VectorOf(tQuaternion<T> const& q) noexcept
{
    return {q.x, q.y, q.z};
}

template <typename T>
[[nodiscard]] tQuaternion<T> FromParts(tVector3<T> const& vector, T w) noexcept
{
    return {vector.x, vector.y, vector.z, w};
}

template <typename T>
[[nodiscard]] bool IsZero(tVector3<T> const& v) noexcept
{
    return v.x == T{0} && v.y == T{0} && v.z == T{0};
}

/// The end of an interpolation on the side of its start.
template <typename T>
[[nodiscard]] tQuaternion<T> OnTheSideOf(tQuaternion<T> const& a, tQuaternion<T> const& b) noexcept
{
    return a.Dot(b) < T{0} ? -b : b;
}

/// The product of a vector and the coordinate axis that it has least of, at length 1.
template <typename T>
[[nodiscard]] tVector3<T> PerpendicularTo(tVector3<T> const& a) noexcept
{
    T const x = detail::Magnitude(a.x);
    T const y = detail::Magnitude(a.y);
    T const z = detail::Magnitude(a.z);
    if (x <= y && x <= z)
        return tVector3<T>(T{0}, a.z, -a.y).Normalised();
    if (y <= z)
        return tVector3<T>(-a.z, T{0}, a.x).Normalised();
    return tVector3<T>(a.y, -a.x, T{0}).Normalised();
}

} // namespace

// Each branch divides by a component of at least 1/2.
template <typename T>
tQuaternion<T>::tQuaternion(tMatrix4<T> const& matrix) noexcept : tQuaternion()
{
    using M = tMatrix4<T>;
    if (matrix.IsIdentity())
        return;
    T const* const m = matrix.Get();
    T const m11 = m[M::IDX_11], m22 = m[M::IDX_22], m33 = m[M::IDX_33];
    T const xy = m[M::IDX_12] + m[M::IDX_21], xz = m[M::IDX_13] + m[M::IDX_31], yz = m[M::IDX_23] + m[M::IDX_32];
    T const xw = m[M::IDX_32] - m[M::IDX_23], yw = m[M::IDX_13] - m[M::IDX_31], zw = m[M::IDX_21] - m[M::IDX_12];
    if (m33 < T{0})
        *this = m11 > m22 ? tQuaternion(T{1} + m11 - m22 - m33, xy, xz, xw)
                          : tQuaternion(xy, T{1} - m11 + m22 - m33, yz, yw);
    else
        *this = m11 < -m22 ? tQuaternion(xz, yz, T{1} - m11 - m22 + m33, zw)
                           : tQuaternion(xw, yw, zw, T{1} + m11 + m22 + m33);
    Normalise();
}

template <typename T>
tQuaternion<T> tQuaternion<T>::RotateAxis(tVector3<T> const& direction, T angle) noexcept
{
    tVector3<T> const axis = ReadApart(direction);
    if (IsZero(axis))
        return {};
    auto const [cosine, sine] = TurnBy(angle * T{0.5});
    return FromParts(AtLengthOne(axis) * sine, cosine);
}

template <typename T>
tQuaternion<T> tQuaternion<T>::RotateBetween(tVector3<T> const& from, tVector3<T> const& to) noexcept
{
    tVector3<T> const a = AtLengthOne(from);
    tVector3<T> const b = AtLengthOne(to);
    T const cosine = a.Dot(b);
    if (!(cosine < T{0}))
        return FromParts(a.Cross(b - a), T{1} + cosine).Normalised();
    // Near the opposite, the sum is exact where their product is nothing but rounding.
    tVector3<T> const sum = a + b;
    T const sumSquared = sum.LengthSquared();
    tVector3<T> const axis = a.Cross(sum);
    // The sum is at 45 degrees or more from either, but where it is rounding itself.
    if (!(axis.LengthSquared() * T{4} > sumSquared))
        return FromParts(PerpendicularTo(a), T{0});
    return AtLengthOne(FromParts(axis, sumSquared * T{0.5}));
}

template <typename T>
T tQuaternion<T>::GetAngle() const noexcept
{
    return T{2} * std::atan2(GetLength(VectorOf(*this)), w);
}

template <typename T>
tVector3<T> tQuaternion<T>::GetAxis() const noexcept
{
    tVector3<T> const axis = VectorOf(*this);
    return IsZero(axis) ? tVector3<T>(T{1}, T{0}, T{0}) : AtLengthOne(axis);
}

template <typename T>
unsigned int tQuaternion<T>::GetHash32() const noexcept
{
    return GetJenkinsHash(
        &x, sizeof(T), GetJenkinsHash(&y, sizeof(T), GetJenkinsHash(&z, sizeof(T), GetJenkinsHash(&w, sizeof(T), 0))));
}

template <typename T>
unsigned char tQuaternion<T>::GetHash8() const noexcept
{
    return GetPearsonHash(
        &x, sizeof(T), GetPearsonHash(&y, sizeof(T), GetPearsonHash(&z, sizeof(T), GetPearsonHash(&w, sizeof(T), 0))));
}

template <typename T>
std::ostream& tQuaternion<T>::Serialise(std::ostream& stream) const
{
    return WriteRaw(stream, x, y, z, w);
}

template <typename T>
std::istream& tQuaternion<T>::Deserialise(std::istream& stream)
{
    return ReadRaw(stream, x, y, z, w);
}

template <typename T>
tQuaternion<T> Slerp(tQuaternion<T> const& a, tQuaternion<T> const& b, std::type_identity_t<T> t) noexcept
{
    tQuaternion<T> const end = OnTheSideOf(a, b);
    T const angle = T{2} * std::asin((end - a).Length() * T{0.5});
    T const sine = std::sin(angle);
    if (sine == T{0})
        return a * (T{1} - t) + end * t;
    return a * (std::sin((T{1} - t) * angle) / sine) + end * (std::sin(t * angle) / sine);
}

template <typename T>
tQuaternion<T> Nlerp(tQuaternion<T> const& a, tQuaternion<T> const& b, std::type_identity_t<T> t) noexcept
{
    return (a * (T{1} - t) + OnTheSideOf(a, b) * t).Normalised();
}

template <typename T>
tQuaternion<T> Exp(tQuaternion<T> const& quaternion) noexcept
{
    tVector3<T> const vector = VectorOf(quaternion);
    T const angle = GetLength(vector);
    auto const [cosine, sine] = TurnBy(angle);
    T const share = angle == T{0} ? T{1} : sine / angle;
    return FromParts(vector * share, cosine) * std::exp(quaternion.w);
}

template <typename T>
tQuaternion<T> Log(tQuaternion<T> const& quaternion) noexcept
{
    T const angle = std::atan2(GetLength(VectorOf(quaternion)), quaternion.w);
    return FromParts(quaternion.GetAxis() * angle, std::log(GetLength(quaternion)));
}

template <typename T>
tQuaternion<T> Pow(tQuaternion<T> const& quaternion, std::type_identity_t<T> exponent) noexcept
{
    T const angle = std::atan2(GetLength(VectorOf(quaternion)), quaternion.w);
    auto const [cosine, sine] = TurnBy(angle * exponent);
    return FromParts(quaternion.GetAxis() * sine, cosine) * std::pow(GetLength(quaternion), exponent);
}

template <typename T>
std::ostream& operator<<(std::ostream& stream, tQuaternion<T> const& quaternion)
{
    return stream << Join(quaternion.x, quaternion.y, quaternion.z, quaternion.w);
}

template class BV_TEMPLATE_INSTANCE tQuaternion<float>;
template class BV_TEMPLATE_INSTANCE tQuaternion<double>;
template BV_TEMPLATE_INSTANCE tQuaternion<float>::tQuaternion(tQuaternion<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double>::tQuaternion(tQuaternion<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<float> operator*(float, tQuaternion<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> operator*(double, tQuaternion<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<float> Slerp(tQuaternion<float> const&, tQuaternion<float> const&,
                                                       float) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> Slerp(tQuaternion<double> const&, tQuaternion<double> const&,
                                                        double) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<float> Nlerp(tQuaternion<float> const&, tQuaternion<float> const&,
                                                       float) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> Nlerp(tQuaternion<double> const&, tQuaternion<double> const&,
                                                        double) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<float> Exp(tQuaternion<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> Exp(tQuaternion<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<float> Log(tQuaternion<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> Log(tQuaternion<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<float> Pow(tQuaternion<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> Pow(tQuaternion<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tQuaternion<float> const&);
template BV_TEMPLATE_INSTANCE std::ostream& operator<<(std::ostream&, tQuaternion<double> const&);

} // namespace bv::maths
