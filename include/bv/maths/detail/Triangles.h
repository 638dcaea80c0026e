#pragma once

/// @file
/// A ray against a triangle, written once for single numbers, for the packets and for the loops of the batch forms: a
/// register holds a ray or a triangle in each lane, and a single one is the first lane. Every lane has the same bits,
/// however many there are.

#include <cstddef>
#include <cstdint>
#include <limits>

#include "bv/Export.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Number.h"

namespace bv::maths::detail
{

/// Decides and computes a hit that may lie on an edge or a corner of a triangle, where the sign of a rounded difference
/// of products does not tell the side. Seldom needed, and never inlined.
///
/// @param corners the coordinates of a, b and c, seen along the ray: x, y, and the parameter of the ray at that depth.
/// @param[out] hit t and the weights of b and c, written if there is one.
template <typename T>
[[nodiscard, gnu::cold, gnu::noinline]] bool MeetOnEdge(T const (&corners)[9], T tNear, T tFar, T (&hit)[3]) noexcept;

extern template BV_TEMPLATE bool MeetOnEdge(float const (&)[9], float, float, float (&)[3]) noexcept;
extern template BV_TEMPLATE bool MeetOnEdge(double const (&)[9], double, double, double (&)[3]) noexcept;

inline namespace BV_REGISTERS
{

/// What a comparison of registers gives.
template <typename V>
using MaskOf = Register<Integer<Element<V>>, sizeof(V)>;

/// A number in the first lane, and zeros.
template <typename T>
[[nodiscard, gnu::always_inline]] inline Register<T, 16> Alone(T number) noexcept
{
    return Register<T, 16>{number};
}

/// A point or a direction in each lane.
template <typename V>
struct tTriple
{
    V x, y, z;

    [[nodiscard, gnu::always_inline]] friend tTriple operator-(tTriple const& a, tTriple const& b) noexcept
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
};

template <typename V>
[[nodiscard, gnu::always_inline]] inline tTriple<V> CrossOf(tTriple<V> const& a, tTriple<V> const& b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <typename V>
[[nodiscard, gnu::always_inline]] inline V DotOf(tTriple<V> const& a, tTriple<V> const& b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// A vector in the first lane.
template <typename T, template <typename> typename Vector>
[[nodiscard, gnu::always_inline]] inline tTriple<Register<T, 16>> AsTriple(Vector<T> const& vector) noexcept
{
    return {Alone(vector.x), Alone(vector.y), Alone(vector.z)};
}

/// One vector in every lane.
template <typename V, typename Vector>
[[nodiscard, gnu::always_inline]] inline tTriple<V> Spread(Vector const& vector) noexcept
{
    return {Broadcast<V>(vector.x), Broadcast<V>(vector.y), Broadcast<V>(vector.z)};
}

/// Where rays meet triangles, and which do.
template <typename V>
struct tMeeting
{
    V t, u, v;      ///< meaningless where there is no hit
    MaskOf<V> hits; ///< set where there is one
};

/// The largest number in each lane.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Largest() noexcept
{
    constexpr Element<V> LARGEST = std::numeric_limits<Element<V>>::max(); // by the compiler, at any level
    return Broadcast<V>(LARGEST);
}

/// Where a parameter is finite and lies in an interval, whose ends belong to it.
template <typename V>
[[nodiscard, gnu::always_inline]] inline MaskOf<V> WhereCounts(V const& t, V const& tNear, V const& tFar) noexcept
{
    return BitsAs<MaskOf<V>>(Both(Both(tNear <= t, t <= tFar), Magnitude(t) <= Largest<V>()));
}

/// The same of one parameter.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr bool Counts(T t, T tNear, T tFar) noexcept
{
    constexpr T LARGEST = std::numeric_limits<T>::max();
    return (tNear <= t) & (t <= tFar) & (Magnitude(t) <= LARGEST);
}

/// The fast test: three scalar triple products over a fourth. Nothing is divided where there is no hit in the plane of
/// the triangle, so that no flag is raised for rays along it.
template <typename V>
[[nodiscard, gnu::always_inline]] inline tMeeting<V>
MeetFast(tTriple<V> const& origin, tTriple<V> const& direction, tTriple<V> const& a, tTriple<V> const& b,
         tTriple<V> const& c, V const& tNear, V const& tFar) noexcept
{
    using T = Element<V>;
    using I = MaskOf<V>;
    tTriple<V> const toB = b - a;
    tTriple<V> const toC = c - a;
    tTriple<V> const p = CrossOf(direction, toC);
    V const determinant = DotOf(toB, p);
    tTriple<V> const s = origin - a;
    tTriple<V> const q = CrossOf(s, toB);
    // All of it with the sign of the determinant, whichever side of the triangle the ray comes from.
    constexpr Element<I> SIGN = std::numeric_limits<Element<I>>::min();
    I const sign = BitsAs<I>(determinant) & Broadcast<I>(SIGN);
    V const size = BitsAs<V>(BitsAs<I>(determinant) ^ sign);
    V const u = BitsAs<V>(BitsAs<I>(DotOf(s, p)) ^ sign);
    V const v = BitsAs<V>(BitsAs<I>(DotOf(direction, q)) ^ sign);
    V const t = BitsAs<V>(BitsAs<I>(DotOf(toC, q)) ^ sign);

    V const zero{};
    I const crosses = BitsAs<I>(Both(zero < size, size <= Largest<V>()));
    I const inside = BitsAs<I>(Both(Both(zero <= u, zero <= v), u + v <= size));
    I const hits = Both(crosses, inside);
    V const divisor = Select(hits, size, Broadcast<V>(T{1}));
    V const at = t / divisor + zero; // never -0
    return {at, u / divisor + zero, v / divisor + zero, Both(hits, WhereCounts(at, tNear, tFar))};
}

/// The corners of a triangle seen along a ray, in a frame where the ray runs along z from (0, 0, 0): x and y are
/// sheared along the largest component of the direction, and z counts in units of the ray's parameter. Each depends on
/// its own corner alone, so that triangles with a corner in common see it at the same place, to the bit.
template <typename V>
struct tSeenTriangle
{
    tTriple<V> a, b, c;
};

/// A corner, whose components stand in the order of the ray's axes, relative to the ray's origin.
template <typename V>
[[nodiscard, gnu::always_inline]] inline tTriple<V> SeenAlong(tTriple<V> const& shear,
                                                              tTriple<V> const& corner) noexcept
{
    return {corner.x - shear.x * corner.z, corner.y - shear.y * corner.z, shear.z * corner.z};
}

/// The watertight test, but for the lanes where an edge or a corner may be hit.
///
/// Rounding keeps order: where the difference of two rounded products is not zero, its sign is that of the exact one.
/// So a sign is right or open, and both triangles at an edge come to the same one.
/// @param[out] isOpen where MeetOnEdge() has to decide.
template <typename V>
[[nodiscard, gnu::always_inline]] inline tMeeting<V> MeetOffEdges(tSeenTriangle<V> const& seen, V const& tNear,
                                                                  V const& tFar, MaskOf<V>& isOpen) noexcept
{
    using T = Element<V>;
    using I = MaskOf<V>;
    auto const& [a, b, c] = seen;
    V const ofA = c.x * b.y - c.y * b.x;
    V const ofB = a.x * c.y - a.y * c.x;
    V const ofC = b.x * a.y - b.y * a.x;
    V const smallest = Min(ofA, Min(ofB, ofC));
    V const largest = Max(ofA, Max(ofB, ofC));
    V const zero{};
    V const sum = ofA + ofB + ofC;
    isOpen = BitsAs<I>(Either(smallest == zero, largest == zero));
    // A NaN that a minimum has lost is still in the sum.
    I const inside = BitsAs<I>(Both(Either(zero < smallest, largest < zero), Magnitude(sum) <= Largest<V>()));
    V const divisor = Select(inside, sum, Broadcast<V>(T{1}));
    V const at = (ofA * a.z + ofB * b.z + ofC * c.z) / divisor + zero;
    return {at, ofB / divisor, ofC / divisor, Both(inside, WhereCounts(at, tNear, tFar))};
}

/// Has MeetOnEdge() decide the open lanes.
template <typename V>
[[gnu::always_inline]] inline void MeetOnEdges(tSeenTriangle<V> const& seen, V const& tNear, V const& tFar,
                                               MaskOf<V> const& isOpen, tMeeting<V>& meeting) noexcept
{
    using T = Element<V>;
    auto const& [a, b, c] = seen;
    for (std::size_t i = 0; i < COUNT<V>; ++i)
    {
        if (isOpen[i] == 0)
            continue;
        T const corners[9] = {a.x[i], a.y[i], a.z[i], b.x[i], b.y[i], b.z[i], c.x[i], c.y[i], c.z[i]};
        T hit[3] = {};
        meeting.hits[i] = MeetOnEdge(corners, T(tNear[i]), T(tFar[i]), hit) ? -1 : 0;
        meeting.t[i] = hit[0];
        meeting.u[i] = hit[1];
        meeting.v[i] = hit[2];
    }
}

} // namespace BV_REGISTERS

} // namespace bv::maths::detail
