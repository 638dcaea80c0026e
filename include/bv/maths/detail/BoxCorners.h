#pragma once

/// @file
/// Boxes and vectors in space as lanes: their components, the corners of a box that lie nearest to a plane and farthest
/// along its normal, and a box that a matrix moves.

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "bv/maths/detail/Lanes.h"

namespace bv::maths::detail
{

inline namespace BV_REGISTERS
{

/// The components of a vector. What counts for nothing is the third once more beside `float`, and 0 beside `double`, as
/// it comes for free: of all that is not a division, it raises no floating-point flag that the third does not. Those of
/// `double` fill two registers of 16 bytes under AVX, too: what is stored as three numbers and loaded as four has to
/// wait for the stores.
template <typename T>
using tThree = std::conditional_t<sizeof(T) == sizeof(float), Register<T, 16>, tHalves<Register<T, 16>>>;

/// Three numbers from some byte of an object on that holds numbers and nothing else.
template <typename T, std::size_t OFFSET = 0, typename Object>
[[nodiscard, gnu::always_inline]] inline tThree<T> LoadThree(Object const& object) noexcept
{
    T const z = LoadFrom<T, OFFSET + 2 * sizeof(T)>(object);
    if constexpr (IS_HALVED<tThree<T>>)
        return {LoadFrom<Register<T, 16>, OFFSET>(object), Register<T, 16>{z}};
    else
    {
        Register<std::int64_t, 16> const xy{LoadFrom<std::int64_t, OFFSET>(object)};
        return Choose<0, 1, 4, 4>(BitsAs<tThree<T>>(xy), tThree<T>{z});
    }
}

/// The components of a vector that may have been stored just before, and in the lane that counts for nothing one of
/// them. Those of `float` are put together one by one: a load over all three would wait for their stores.
template <template <typename> typename Vector, typename T>
[[nodiscard, gnu::always_inline]] inline tThree<T> LoadFresh(Vector<T> const& v) noexcept
{
    if constexpr (IS_HALVED<tThree<T>>)
        return LoadThree<T>(v);
    else
        return Four(v.x, v.y, v.z, v.x);
}

/// The first three of six numbers, and in a lane that counts for nothing a fourth by its index: the lower corner of a
/// box, the origin of a ray.
template <int FOURTH = 2, typename T, template <typename> typename Six>
[[nodiscard, gnu::always_inline]] inline tThree<T> LoadFirst(Six<T> const& six) noexcept
{
    static_assert(sizeof(six) == 6 * sizeof(T));
    if constexpr (IS_HALVED<tThree<T>>)
        return LoadThree<T>(six);
    else
        return Choose<0, 1, 2, FOURTH>(LoadFrom<tThree<T>>(six));
}

/// The last three of six numbers, and a fourth of these in the same way: the upper corner of a box, the direction of a
/// ray.
template <int FOURTH = 2, typename T, template <typename> typename Six>
[[nodiscard, gnu::always_inline]] inline tThree<T> LoadLast(Six<T> const& six) noexcept
{
    static_assert(sizeof(six) == 6 * sizeof(T));
    if constexpr (IS_HALVED<tThree<T>>)
        return LoadThree<T, 3 * sizeof(T)>(six);
    else
        return Choose<1, 2, 3, 1 + FOURTH>(LoadFrom<tThree<T>, 2 * sizeof(T)>(six));
}

/// Three numbers, and the first of them once more in the lane that counts for nothing.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V FirstAgain(V const& v) noexcept
{
    return Choose<0, 1, 2, 0>(v);
}

/// The components of a vector along three axes, which are given as columns; summed x, y, z of the vector.
template <typename V, typename Vector>
[[nodiscard, gnu::always_inline]] inline V TurnInto(V const& column1, V const& column2, V const& column3,
                                                    Vector const& v) noexcept
{
    return FirstAgain(column1 * Broadcast<V>(v.x) + column2 * Broadcast<V>(v.y) + column3 * Broadcast<V>(v.z));
}

/// Whether a mask is set for all three components.
template <typename M>
[[nodiscard, gnu::always_inline]] inline bool AllThree(M const& mask) noexcept
{
    if constexpr (IS_HALVED<M>)
        return All(Both(mask.low, Choose<0, 0>(mask.high)));
    else
        return All(mask);
}

/// The same of a mask that is used once. Clang compares a third number by itself to a truth value, which costs more to
/// turn into a lane again than to join; of what a loop keeps, it keeps the lanes.
template <typename M>
[[nodiscard, gnu::always_inline]] inline bool AllThreeOnce(M const& mask) noexcept
{
    if constexpr (IS_HALVED<M> && IS_CLANG && !HAS_AVX)
        return All(mask.low) & (mask.high[0] != 0);
    else
        return AllThree(mask);
}

/// Writes the lower corner of a box and the upper one as six numbers.
template <typename T, template <typename> typename Box>
[[gnu::always_inline]] inline void StoreCorners(tThree<T> const& lower, tThree<T> const& upper, Box<T>& box) noexcept
{
    static_assert(sizeof(box) == 6 * sizeof(T));
    if constexpr (IS_HALVED<tThree<T>>)
    {
        StoreInto<0>(lower.low, box);
        StoreInto<2 * sizeof(T)>(Get<2>(lower), box);
        StoreInto<3 * sizeof(T)>(upper.low, box);
        StoreInto<5 * sizeof(T)>(Get<2>(upper), box);
    }
    else
    {
        tThree<T> const turn = Choose<2, 2, 4, 4>(lower, upper);
        StoreInto<0>(Choose<0, 1, 4, 6>(lower, turn), box);
        StoreInto<4 * sizeof(T)>(Get<0>(BitsAs<Register<std::int64_t, 16>>(Choose<1, 2, 2, 2>(upper))), box);
    }
}

/// Bounds along as many axes as there are lanes.
template <typename V>
struct tBounds
{
    V lower, upper;

    /// Adds what the box extends along one axis, turned to where a column of the matrix points.
    [[gnu::always_inline]] void Add(V const& column, Element<V> from, Element<V> to) noexcept
    {
        V const a = column * Broadcast<V>(from);
        V const b = column * Broadcast<V>(to);
        lower = lower + Min(a, b);
        upper = upper + Max(b, a);
    }
};

/// The bounds of a box that is moved by the first three rows of a matrix, summed from the translation on, x first.
/// Arvo, "Transforming Axis-Aligned Bounding Boxes", Graphics Gems, 1990.
template <typename T, typename Vector>
[[nodiscard, gnu::always_inline]] inline tBounds<tThree<T>> MoveBox(Vector const& from, Vector const& to,
                                                                    T const* m) noexcept
{
    using Lanes = tThree<T>;
    if constexpr (IS_HALVED<Lanes>)
    {
        using Pair = Half<Lanes>;
        Pair const translation{m[3], m[7]};
        tBounds<Pair> xy{translation, translation};
        T lower = m[11]; // z, a number by itself: what a lane beside it computes could raise a flag
        T upper = lower;
        // A loop, so that compilers find it short enough to inline what calls it.
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            T const a = m[8 + axis] * from[axis];
            T const b = m[8 + axis] * to[axis];
            xy.Add(Pair{m[axis], m[4 + axis]}, from[axis], to[axis]);
            lower += MinOfOne(a, b);
            upper += MaxOfOne(b, a);
        }
        return {{xy.lower, Pair{lower}}, {xy.upper, Pair{upper}}};
    }
    else
    {
        Lanes x = LoadAligned<Lanes>(m);
        Lanes y = LoadAligned<Lanes>(m + 4);
        Lanes z = LoadAligned<Lanes>(m + 8);
        Lanes translation = z;
        Transpose(x, y, z, translation);
        tBounds<Lanes> bounds{translation, translation};
        bounds.Add(x, from.x, to.x);
        bounds.Add(y, from.y, to.y);
        bounds.Add(z, from.z, to.z);
        return bounds;
    }
}

/// Raises the lower end of an interval to each of three numbers above it, and lowers the upper end to each of three
/// below it, x first. The upper numbers are negated, so that one maximum does both.
template <typename T>
[[gnu::always_inline]] inline void Narrow(tThree<T> const& first, tThree<T> const& last, T& lower, T& upper) noexcept
{
    tThree<T> const negated = Negated(last);
    tThree<T> const xy = Choose<0, 4, 1, 5>(first, negated);
    tThree<T> const z = Choose<2, 6, 3, 7>(first, negated);
    tThree<T> const start = Choose<0, 4, 0, 4>(Broadcast<tThree<T>>(lower), Broadcast<tThree<T>>(-upper));
    tThree<T> const ends = Max(z, Max(Choose<2, 3, 2, 3>(xy), Max(xy, start)));
    lower = Get<0>(ends);
    upper = -Get<1>(ends);
}

/// One number of as many planes as a register holds.
template <typename T>
using tPlaneLanes = Register<T, 16>;

/// Planes, component by component.
template <typename T>
struct tPlanes
{
    tPlaneLanes<T> offset, x, y, z;

    /// Signed distances of as many points, summed y, x, z, offset.
    [[nodiscard, gnu::always_inline]] tPlaneLanes<T> Distance(tPlaneLanes<T> const& atX, tPlaneLanes<T> const& atY,
                                                              tPlaneLanes<T> const& atZ) const noexcept
    {
        return ((y * atY + x * atX) + z * atZ) + offset;
    }

    /// How far towards the planes something reaches that extends by a length along an axis, to either side.
    template <typename Vector>
    [[nodiscard, gnu::always_inline]] tPlaneLanes<T> Reach(Vector const& axis, T length) const noexcept
    {
        using Lanes = tPlaneLanes<T>;
        Lanes const along = x * Broadcast<Lanes>(axis.x) + y * Broadcast<Lanes>(axis.y) + z * Broadcast<Lanes>(axis.z);
        return Magnitude(along) * Broadcast<Lanes>(length);
    }
};

/// Planes, number by number: unlike loads of whole planes, these are kept by a loop that stores something else.
template <typename T, template <typename> typename... Plane>
[[nodiscard, gnu::always_inline]] inline tPlanes<T> LoadPlanes(Plane<T> const&... planes) noexcept
{
    using Lanes = tPlaneLanes<T>;
    return {Lanes{planes.GetOffset()...}, Lanes{planes.GetNormal().x...}, Lanes{planes.GetNormal().y...},
            Lanes{planes.GetNormal().z...}};
}

/// A box whose corners are chosen plane by plane, axis by axis.
template <typename T>
class tBoxCorners
{
    using Lanes = tPlaneLanes<T>;
    using Mask = Register<Integer<T>, 16>;

    Mask lower[3];      ///< the bits of the lower corner
    Mask upper[3];      ///< the bits of the upper corner
    Mask difference[3]; ///< the bits in which the two differ

public:
    /// The box of these corners.
    template <typename Vector>
    [[gnu::always_inline]] tBoxCorners(Vector const& from, Vector const& to) noexcept
        : lower{Spread(from.x), Spread(from.y), Spread(from.z)},
          upper{Spread(to.x), Spread(to.y), Spread(to.z)},
          difference{lower[0] ^ upper[0], lower[1] ^ upper[1], lower[2] ^ upper[2]}
    {
    }

    /// Adds to `rejected` a bit for each plane that has the corner farthest along its normal behind it, and to
    /// `straddled` one for each that has the nearest corner there.
    [[gnu::always_inline]] void Test(tPlanes<T> const& planes, int& rejected, int& straddled) const noexcept
    {
        Mask const flips[] = {IsUpward(planes.x) & difference[0], IsUpward(planes.y) & difference[1],
                              IsUpward(planes.z) & difference[2]};
        rejected |= Behind(planes, lower, flips);
        straddled |= Behind(planes, upper, flips);
    }

    /// The same for two planes that stand twice each: one pass sees both of their corners.
    [[gnu::always_inline]] void TestTwice(tPlanes<T> const& planes, int& rejected, int& straddled) const noexcept
    {
        Mask const nearest{0, 0, -1, -1};
        Mask const flips[] = {(IsUpward(planes.x) ^ nearest) & difference[0],
                              (IsUpward(planes.y) ^ nearest) & difference[1],
                              (IsUpward(planes.z) ^ nearest) & difference[2]};
        int const bits = Behind(planes, lower, flips);
        rejected |= bits & 3;
        straddled |= bits & 12;
    }

private:
    [[nodiscard, gnu::always_inline]] static Mask Spread(T x) noexcept { return BitsAs<Mask>(Broadcast<Lanes>(x)); }
    [[nodiscard, gnu::always_inline]] static Mask IsUpward(Lanes const& x) noexcept { return AsBits(Lanes{} <= x); }
    /// Bits of the planes that have a corner behind them: that of this box, or the opposite one where a flip says so.
    [[nodiscard, gnu::always_inline]] static int Behind(tPlanes<T> const& planes, Mask const (&corner)[3],
                                                        Mask const (&flips)[3]) noexcept
    {
        Lanes const distance = planes.Distance(BitsAs<Lanes>(corner[0] ^ flips[0]), BitsAs<Lanes>(corner[1] ^ flips[1]),
                                               BitsAs<Lanes>(corner[2] ^ flips[2]));
        return Bits(distance < Lanes{});
    }
};

} // namespace BV_REGISTERS

} // namespace bv::maths::detail
