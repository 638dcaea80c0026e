#include "bv/maths/tQuaternion.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "Maths/RawStream.h"
#include "Maths/Text.h"
#include "Maths/Turn.h"
#include "bv/Hash.h"

namespace bv::maths
{

namespace
{

using Pair = detail::Register<double, 16>;

/// Powers of two between which squared lengths neither overflow nor lose digits, and those that bring numbers from
/// beyond into the middle of the range.
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
    static constexpr double SMALL_SQUARE = 0x1p-500, LARGE_SQUARE = 0x1p500, UP = 0x1p700, DOWN = 0x1p-600;
};

template <typename T>
[[nodiscard]] bool IsUsual(T lengthSquared) noexcept
{
    return lengthSquared >= Range<T>::SMALL_SQUARE && lengthSquared <= Range<T>::LARGE_SQUARE;
}

/// A power of two by which components can be multiplied before they are squared.
template <typename T>
[[nodiscard]] T GetScale(T lengthSquared) noexcept
{
    if (lengthSquared < Range<T>::SMALL_SQUARE)
        return Range<T>::UP;
    return lengthSquared > Range<T>::LARGE_SQUARE ? Range<T>::DOWN : T{1};
}

/// The length of a vector or quaternion whose squared length may overflow or underflow.
template <typename V>
[[nodiscard, gnu::noinline]] auto GetFarLength(V const& v) noexcept
{
    auto const scale = GetScale(v.LengthSquared());
    return (v * scale).Length() / scale;
}

/// The length of any vector or quaternion.
template <typename V>
[[nodiscard, gnu::always_inline]] inline auto GetLength(V const& v) noexcept
{
    auto const lengthSquared = v.LengthSquared();
    return IsUsual(lengthSquared) ? detail::SquareRoot(lengthSquared) : GetFarLength(v);
}

/// The same direction at length 1, where the squared length may overflow or underflow; zero stays zero.
template <typename V>
[[nodiscard, gnu::noinline]] V FarAtLengthOne(V const& v) noexcept
{
    V const scaled = v * GetScale(v.LengthSquared());
    auto const lengthSquared = scaled.LengthSquared();
    return lengthSquared == 0 ? scaled : scaled * (1 / detail::SquareRoot(lengthSquared));
}

/// The same direction at length 1; zero stays zero.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V AtLengthOne(V const& v) noexcept
{
    auto const lengthSquared = v.LengthSquared();
    return IsUsual(lengthSquared) ? v * (1 / detail::SquareRoot(lengthSquared)) : FarAtLengthOne(v);
}

/// The same direction at another length; zero stays zero.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tVector3<T> AtLength(T length, tVector3<T> const& v) noexcept
{
    T const lengthSquared = v.LengthSquared();
    return IsUsual(lengthSquared) ? v * (length / detail::SquareRoot(lengthSquared)) : FarAtLengthOne(v) * length;
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

/// An axis of any length but zero, and half of the angle by which a quaternion turns about it.
template <typename T>
struct HalfTurn
{
    tVector3<T> axis;
    T angle;
};

template <typename T>
[[nodiscard]] tVector3<T> AxisOf(tQuaternion<T> const& q) noexcept
{
    tVector3<T> const axis = VectorOf(q);
    return IsZero(axis) ? tVector3<T>(T{1}, T{0}, T{0}) : axis;
}

template <typename T>
[[nodiscard]] HalfTurn<T> TurnOf(tQuaternion<T> const& q) noexcept
{
    return {AxisOf(q), std::atan2(GetLength(VectorOf(q)), q.w)};
}

/// The rotation about an axis whose squared length may overflow or underflow, or that is zero.
template <typename T>
[[nodiscard, gnu::noinline, gnu::cold]] tQuaternion<T> RotateFarAxis(tVector3<T> const& axis, T angle) noexcept
{
    if (IsZero(axis))
        return {};
    auto const [cosine, sine] = TurnBy(angle * T{0.5});
    return FromParts(FarAtLengthOne(axis) * sine, cosine);
}

/// The logarithm of a quaternion where a squared length may overflow or underflow, or the vector is zero.
template <typename T>
[[nodiscard, gnu::noinline, gnu::cold]] tQuaternion<T> LogOfFar(tQuaternion<T> const& q) noexcept
{
    auto const [axis, angle] = TurnOf(q);
    return FromParts(AtLength(angle, axis), std::log(GetLength(q)));
}

/// The numbers that GetShares() needs for each term, i / (2i + 1) and 1 / (i(2i + 1)).
struct Term
{
    double falling, rising;
};
constexpr auto TERMS = []
{
    std::array<Term, 19> terms{};
    for (std::size_t i = 1; i < terms.size(); ++i)
    {
        auto const n = static_cast<double>(i);
        terms[i] = {n / (2 * n + 1), 1 / (n * (2 * n + 1))};
    }
    return terms;
}();

/// The quotient of a term of the series in GetShares() and the term before it.
template <std::size_t I>
[[nodiscard, gnu::always_inline]] inline Pair GetRatio(Pair const& squared, Pair const& versine) noexcept
{
    return (detail::Broadcast<Pair>(TERMS[I].falling) - detail::Broadcast<Pair>(TERMS[I].rising) * squared) * versine;
}

/// 1 + r1 * (1 + r2 * (1 + ...)), the ratios FIRST and up to LAST.
template <std::size_t FIRST, std::size_t LAST>
[[nodiscard, gnu::always_inline]] inline Pair SumTerms(Pair const& squared, Pair const& versine) noexcept
{
    Pair const one = detail::Broadcast<Pair>(1.0);
    if constexpr (FIRST > LAST)
        return one;
    else
        return one + GetRatio<FIRST>(squared, versine) * SumTerms<FIRST + 1, LAST>(squared, versine);
}

/// The product of the ratios FIRST to LAST.
template <std::size_t FIRST, std::size_t LAST>
[[nodiscard, gnu::always_inline]] inline Pair MultiplyRatios(Pair const& squared, Pair const& versine) noexcept
{
    if constexpr (FIRST == LAST)
        return GetRatio<FIRST>(squared, versine);
    else
    {
        constexpr std::size_t MIDDLE = (FIRST + LAST) / 2;
        return MultiplyRatios<FIRST, MIDDLE>(squared, versine) * MultiplyRatios<MIDDLE + 1, LAST>(squared, versine);
    }
}

/// sin(t * angle) / sin(angle) for t from 0 to 1 and an angle up to pi/4, given 1 - cos(angle): two t at a time, with 0
/// and 1 to the bit. The power series about the angle 0, all of whose terms are positive, up to the last that is not
/// below half a digit at pi/4; in two halves, so that the processor can work on both. D. Eberly, "A Fast and Accurate
/// Algorithm for Computing SLERP", 2011.
template <typename T>
[[nodiscard]] Pair GetShares(Pair const& t, double versine) noexcept
{
    constexpr std::size_t COUNT = sizeof(T) == sizeof(float) ? 8 : 18;
    Pair const squared = t * t;
    Pair const y = detail::Broadcast<Pair>(versine);
    return t * (SumTerms<1, COUNT / 2 - 1>(squared, y) +
                MultiplyRatios<1, COUNT / 2>(squared, y) * SumTerms<COUNT / 2 + 1, COUNT>(squared, y));
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

[[nodiscard]] tVector3<double> const& Widened(tVector3<double> const& v) noexcept
{
    return v;
}

[[nodiscard]] tVector3<double> Widened(tVector3<float> const& v) noexcept
{
    return tVector3<double>(v);
}

template <typename T>
[[nodiscard]] tQuaternion<T> Narrowed(tQuaternion<double> const& q) noexcept
{
    if constexpr (sizeof(T) == sizeof(double))
        return q;
    else
        return tQuaternion<T>(q);
}

/// The rotation between two directions of length 1, or zero, that may be opposite.
[[nodiscard]] inline tQuaternion<double> FarBetween(tVector3<double> const& a, tVector3<double> const& b) noexcept
{
    double const cosine = a.Dot(b);
    if (!(cosine < 0))
        return FromParts(a.Cross(b - a), 1 + cosine).Normalised();
    // Near the opposite, the sum is exact where the product of the two is nothing but rounding.
    tVector3<double> const sum = a + b;
    double const sumSquared = sum.LengthSquared();
    double const scale = GetScale(sumSquared);
    tVector3<double> const scaled = sum * scale;
    tVector3<double> const axis = a.Cross(scaled);
    // The sum is at 45 degrees or more from either, unless it is rounding itself.
    if (axis.LengthSquared() * 4 > scaled.LengthSquared())
        return AtLengthOne(FromParts(axis, sumSquared * 0.5 * scale));
    return FromParts(PerpendicularTo(a), 0.0);
}

/// The weights of the two ends at a place that is not between them.
[[nodiscard, gnu::noinline]] Pair GetOuterWeights(double position, double chord) noexcept
{
    double const angle = 2 * std::asin(chord * 0.5);
    double const sine = std::sin(angle);
    if (sine == 0)
        return Pair{1 - position, position};
    return Pair{std::sin((1 - position) * angle) / sine, std::sin(position * angle) / sine};
}

} // namespace

// Of the four forms, the one whose own component is at least 1/2. All are computed, since which it is cannot be
// foreseen.
template <typename T>
tQuaternion<T>::tQuaternion(tMatrix4<T> const& matrix) noexcept : tQuaternion()
{
    using M = tMatrix4<T>;
    using Lanes = detail::tFour<T>;
    if (matrix.IsIdentity())
        return;
    T const* const m = matrix.Get();
    T const m11 = m[M::IDX_11], m22 = m[M::IDX_22], m33 = m[M::IDX_33];
    T const xy = m[M::IDX_12] + m[M::IDX_21], xz = m[M::IDX_13] + m[M::IDX_31], yz = m[M::IDX_23] + m[M::IDX_32];
    T const xw = m[M::IDX_32] - m[M::IDX_23], yw = m[M::IDX_13] - m[M::IDX_31], zw = m[M::IDX_21] - m[M::IDX_12];
    Lanes const third = detail::Broadcast<Lanes>(m33);
    Lanes const byX = detail::Four(T{1} + m11 - m22 - m33, xy, xz, xw);
    Lanes const byY = detail::Four(xy, T{1} - m11 + m22 - m33, yz, yw);
    Lanes const byZ = detail::Four(xz, yz, T{1} - m11 - m22 + m33, zw);
    Lanes const byW = detail::Four(xw, yw, zw, T{1} + m11 + m22 + m33);
    Lanes const first = detail::Broadcast<Lanes>(m11);
    Lanes const q = detail::Select(third < Lanes{}, detail::Select(detail::Broadcast<Lanes>(m22) < first, byX, byY),
                                   detail::Select(first < detail::Broadcast<Lanes>(-m22), byZ, byW));
    detail::StoreInto(detail::UnitOf<T>(q), *this);
}

template <typename T>
tQuaternion<T> tQuaternion<T>::RotateAxis(tVector3<T> const& direction, T angle) noexcept
{
    tVector3<T> const axis = ReadApart(direction);
    T const lengthSquared = axis.LengthSquared();
    if (!IsUsual(lengthSquared)) [[unlikely]]
        return RotateFarAxis(axis, angle);
    auto const [cosine, sine] = TurnBy(angle * T{0.5});
    return FromParts(axis * (sine / detail::SquareRoot(lengthSquared)), cosine);
}

template <typename T>
tQuaternion<T> detail::RotateFarBetween(tVector3<T> const& from, tVector3<T> const& to) noexcept
{
    return Narrowed<T>(FarBetween(AtLengthOne(Widened(from)), AtLengthOne(Widened(to))));
}

template <typename T>
T tQuaternion<T>::GetAngle() const noexcept
{
    return T{2} * TurnOf(*this).angle;
}

template <typename T>
tVector3<T> tQuaternion<T>::GetAxis() const noexcept
{
    return AtLengthOne(AxisOf(*this));
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
    // Halfway, at (a + end) / |a + end|, the way is cut in two, each of up to pi/4. The half on which t is has a share
    // of that and one of its own end.
    using Lanes = detail::tFour<T>;
    Lanes const start = detail::LoadFour<T>(a);
    Lanes const other = detail::LoadFour<T>(b);
    T const sign = detail::SumOfFour<T>(start * other) < T{0} ? T{-1} : T{1};
    Lanes const end = other * detail::Broadcast<Lanes>(sign);
    Lanes const sum = start + end;
    Lanes const difference = start - end;
    auto const chordSquared = static_cast<double>(detail::SumOfFour<T>(difference * difference));
    double const middle = detail::SquareRoot(static_cast<double>(detail::SumOfFour<T>(sum * sum)));
    double const versine = chordSquared / (4 + 2 * middle);
    auto const position = static_cast<double>(t);
    Pair weights;
    if (position >= 0 && position <= 1)
    {
        bool const isNearStart = position < 0.5;
        double const way = isNearStart ? position : 1 - position;
        Pair const shares = GetShares<T>(Pair{1 - 2 * way, 2 * way}, versine);
        double const far = shares[1] / middle;
        double const near = shares[0] + far;
        weights = isNearStart ? Pair{near, far} : Pair{far, near};
    }
    else
        weights = GetOuterWeights(position, detail::SquareRoot(chordSquared));
    return detail::MakeFrom<tQuaternion<T>, T>(start * detail::Broadcast<Lanes>(static_cast<T>(weights[0])) +
                                               end * detail::Broadcast<Lanes>(static_cast<T>(weights[1])));
}

template <typename T>
tQuaternion<T> Exp(tQuaternion<T> const& quaternion) noexcept
{
    tVector3<T> const vector = VectorOf(quaternion);
    T const angle = GetLength(vector);
    auto const [cosine, sine] = TurnBy(angle);
    T const share = angle == T{0} ? T{1} : sine / angle;
    tQuaternion<T> const rotation = FromParts(vector * share, cosine);
    return quaternion.w == T{0} ? rotation : rotation * std::exp(quaternion.w);
}

template <typename T>
tQuaternion<T> Log(tQuaternion<T> const& quaternion) noexcept
{
    tVector3<T> const vector = VectorOf(quaternion);
    T const square = vector.LengthSquared();
    T const wholeSquare = quaternion.LengthSquared();
    if (!IsUsual(square) || !IsUsual(wholeSquare)) [[unlikely]]
        return LogOfFar(quaternion);
    T const length = detail::SquareRoot(square);
    T const share = std::atan2(length, quaternion.w) / length;
    return FromParts(vector * share, std::log(detail::SquareRoot(wholeSquare)));
}

template <typename T>
tQuaternion<T> Pow(tQuaternion<T> const& quaternion, std::type_identity_t<T> exponent) noexcept
{
    auto const [axis, angle] = TurnOf(quaternion);
    auto const [cosine, sine] = TurnBy(angle * exponent);
    return FromParts(AtLength(sine, axis), cosine) * std::pow(GetLength(quaternion), exponent);
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
template BV_TEMPLATE_INSTANCE tQuaternion<float> detail::RotateFarBetween(tVector3<float> const&,
                                                                          tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> operator*(double, tQuaternion<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tQuaternion<double> detail::RotateFarBetween(tVector3<double> const&,
                                                                           tVector3<double> const&) noexcept;
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
