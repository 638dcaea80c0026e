#pragma once

/// @file
/// The algebra of quaternions in registers: four numbers x, y, z, w, or a vector and a zero.

#include <limits>

#include "bv/maths/detail/Lanes.h"
#include "bv/maths/detail/Number.h"
#include "bv/maths/detail/Rows.h"

namespace bv::maths::detail
{

inline namespace BV_REGISTERS
{

/// Reads an object of four numbers.
template <typename T, typename Object>
[[nodiscard, gnu::always_inline]] inline tFour<T> LoadFour(Object const& object) noexcept
{
    using Lanes = tFour<T>;
    static_assert(sizeof(Object) == 4 * sizeof(T));
    if constexpr (IS_HALVED<Lanes>)
        return {LoadFrom<Half<Lanes>>(object), LoadFrom<Half<Lanes>, sizeof(Half<Lanes>)>(object)};
    else
        return LoadFrom<Lanes>(object);
}

/// The numbers, and the opposite of the fourth.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> WithOppositeFourth(tFour<T> const& a) noexcept
{
    using Lanes = tFour<T>;
    using I = Integer<T>;
    constexpr I SIGN = std::numeric_limits<I>::min();
    if constexpr (IS_HALVED<Lanes>)
    {
        using Signs = Register<I, sizeof(Half<Lanes>)>;
        return {a.low, BitsAs<Half<Lanes>>(BitsAs<Signs>(a.high) ^ Signs{0, SIGN})};
    }
    else
    {
        using Signs = Register<I, sizeof(Lanes)>;
        return BitsAs<Lanes>(BitsAs<Signs>(a) ^ Signs{0, 0, 0, SIGN});
    }
}

/// Writes four numbers into an object of them.
template <typename Object, typename T>
[[nodiscard, gnu::always_inline]] inline Object MakeFrom(tFour<T> const& lanes) noexcept
{
    Object object;
    StoreInto(lanes, object);
    return object;
}

/// The sum of four numbers, (first + third) + (second + fourth).
template <typename T>
[[nodiscard, gnu::always_inline]] inline T SumOfFour(tFour<T> const& a) noexcept
{
    if constexpr (IS_HALVED<tFour<T>>)
    {
        auto const pairs = a.low + a.high;
        return pairs[0] + pairs[1];
    }
    else
    {
        tFour<T> const pairs = a + Choose<2, 3, 0, 1>(a);
        return pairs[0] + pairs[1];
    }
}

/// A quaternion that is scaled to length 1.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> UnitOf(tFour<T> const& q) noexcept
{
    return q * Broadcast<tFour<T>>(T{1} / SquareRoot(SumOfFour<T>(q * q)));
}

/// The product of two quaternions: (w * b + (second + third)) - fourth in each lane, where the sum in the middle has
/// the opposite sign in the last.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> HamiltonProduct(tFour<T> const& a, tFour<T> const& b) noexcept
{
    tFour<T> const first = Choose<3, 3, 3, 3>(a) * b;
    tFour<T> const second = Choose<0, 1, 2, 0>(a) * Choose<3, 3, 3, 0>(b);
    tFour<T> const third = Choose<1, 2, 0, 1>(a) * Choose<2, 0, 1, 1>(b);
    tFour<T> const fourth = Choose<2, 0, 1, 2>(a) * Choose<1, 2, 0, 2>(b);
    return first + WithOppositeFourth<T>(second + third) - fourth;
}

/// The vector product of two vectors, turned by a place: z, x, y, and 0 where the fourth lanes are finite.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> TurnedCross(tFour<T> const& a, tFour<T> const& turnedA,
                                                              tFour<T> const& b) noexcept
{
    return a * Choose<1, 2, 0, 3>(b) - turnedA * b;
}

/// A vector rotated by a unit quaternion.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> RotatedBy(tFour<T> const& q, tFour<T> const& v) noexcept
{
    tFour<T> const turned = Choose<1, 2, 0, 3>(q);
    tFour<T> const cross = Choose<1, 2, 0, 3>(TurnedCross<T>(q, turned, v));
    tFour<T> const twice = cross + cross;
    return v + twice * Choose<3, 3, 3, 3>(q) + Choose<1, 2, 0, 3>(TurnedCross<T>(q, turned, twice));
}

/// The rows of the matrix of a quaternion that is not zero, from 2 / length squared.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> RotationRows(tFour<T> const& q, T scale) noexcept
{
    using Row = tFour<T>;
    if constexpr (sizeof(T) == sizeof(double))
    {
        // One by one: two registers, or the halves of one, take longer to turn than to compute.
        T const x = Get<0>(q), y = Get<1>(q), z = Get<2>(q), w = Get<3>(q);
        T const xs = x * scale, ys = y * scale, zs = z * scale;
        T const xx = x * xs, yy = y * ys, zz = z * zs;
        T const xy = x * ys, yz = y * zs, zx = z * xs;
        T const wx = w * xs, wy = w * ys, wz = w * zs;
        T const zero{0};
        T const one{1};
        return {Four(one - (yy + zz), xy - wz, zx + wy, zero), Four(xy + wz, one - (zz + xx), yz - wx, zero),
                Four(zx - wy, yz + wx, one - (xx + yy), zero), Four(zero, zero, zero, one)};
    }
    Row const v = Choose<0, 1, 2, 7>(q, Row{});
    Row const scaled = v * Broadcast<Row>(scale);
    Row const squares = v * scaled;                                       // xx, yy, zz
    Row const products = v * Choose<1, 2, 0, 3>(scaled);                  // xy, yz, zx
    Row const turns = Choose<3, 3, 3, 3>(q) * Choose<2, 0, 1, 3>(scaled); // wz, wx, wy
    Row const sums = products + turns;                                    // m21, m32, m13
    Row const differences = products - turns;                             // m12, m23, m31
    Row const diagonal = Four(T{1}, T{1}, T{1}, T{0}) - (Choose<1, 2, 0, 3>(squares) + Choose<2, 0, 1, 3>(squares));
    Row const upper = Choose<0, 4, 1, 5>(diagonal, differences); // m11, m12, m22, m23
    Row const lower = Choose<2, 2, 5, 5>(differences, sums);     // m31, m31, m32, m32
    Row const middle = Choose<0, 4, 1, 5>(sums, diagonal);       // m21, m11, m32, m22
    return {Choose<0, 1, 6, 7>(upper, sums), Choose<0, 3, 5, 7>(middle, differences),
            Choose<0, 2, 6, 7>(lower, diagonal), Four(T{0}, T{0}, T{0}, T{1})};
}

} // namespace BV_REGISTERS

} // namespace bv::maths::detail
