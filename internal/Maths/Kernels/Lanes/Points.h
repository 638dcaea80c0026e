#pragma once

/// @file
/// Points as they lie in memory, x y z x y z, and as registers of coordinates, x x x x.
///
/// Shuffles work within parts of a register: the whole of 64 bytes, where an instruction takes lanes from anywhere, and
/// else each 16 bytes. A part holds points in a row.

#include <type_traits>

#include "Maths/Kernels/Lanes/Lanes.h"

namespace bv::maths
{

namespace
{

/// The coordinates of as many points as there are lanes, axis by axis.
template <typename V, std::size_t AXES>
struct Points
{
    V axes[AXES];
};

/// The lanes of a part.
template <typename V>
constexpr std::size_t PART = (sizeof(V) == 64 ? 64 : 16) / sizeof(Element<V>);

/// The numbers that an array of points or of boxes consists of.
template <typename T, typename Object>
[[nodiscard, gnu::always_inline]] inline auto* Numbers(Object* objects) noexcept
{
    using Number = std::conditional_t<std::is_const_v<Object>, T const, T>;
    static_assert(sizeof(Object) % sizeof(T) == 0);
    return reinterpret_cast<Number*>(objects);
}

/// The lane of two registers, counted through, where a lane of a part comes from that is the one at `from` in two such
/// parts.
template <typename V>
[[nodiscard]] constexpr std::size_t InParts(std::size_t lane, std::size_t from) noexcept
{
    return lane - lane % PART<V> + (from < PART<V> ? from : from - PART<V> + COUNT<V>);
}

/// The lanes of two parts, counted through, in another order, part by part.
template <std::size_t... FROM, typename V>
[[nodiscard, gnu::always_inline]] inline V Pick(V const& a, V const& b) noexcept
{
    static_assert(sizeof...(FROM) == PART<V>);
    return ShuffleBy<COUNT<V>>(a, b,
                               [](std::size_t lane)
                               {
                                   constexpr std::size_t SOURCES[] = {FROM...};
                                   return InParts<V>(lane, SOURCES[lane % PART<V>]);
                               });
}

/// Every second lane of two parts, from lane FIRST on.
template <std::size_t FIRST, typename V>
[[nodiscard, gnu::always_inline]] inline V EverySecond(V const& a, V const& b) noexcept
{
    return ShuffleBy<COUNT<V>>(a, b, [](std::size_t lane) { return InParts<V>(lane, 2 * (lane % PART<V>)+FIRST); });
}

/// The lanes of two parts in turn, from lane FIRST of each on.
template <std::size_t FIRST, typename V>
[[nodiscard, gnu::always_inline]] inline V InTurn(V const& a, V const& b) noexcept
{
    return ShuffleBy<COUNT<V>>(
        a, b,
        [](std::size_t lane) { return InParts<V>(lane, FIRST + lane % PART<V> / 2 + (lane % 2 == 0 ? 0 : PART<V>)); });
}

/// The lanes of three whole registers, counted through, in another order.
template <typename V, typename Rule>
[[nodiscard, gnu::always_inline]] inline V ShuffleThree(V const& a, V const& b, V const& c, Rule /*rule*/) noexcept
{
    constexpr std::size_t END = 2 * COUNT<V>; // of the first two
    V const ofFirstTwo =
        ShuffleBy<COUNT<V>>(a, b, [](std::size_t lane) { return Rule{}(lane) < END ? Rule{}(lane) : 0; });
    return ShuffleBy<COUNT<V>>(ofFirstTwo, c,
                               [](std::size_t lane) { return Rule{}(lane) < END ? lane : Rule{}(lane)-COUNT<V>; });
}

/// Reads a register part by part, from addresses that lie `stride` numbers apart.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V LoadParts(Element<V> const* numbers, std::size_t stride) noexcept
{
    if constexpr (PART<V> == COUNT<V>)
        return Load<V>(numbers);
    else
        return Join(Load<HalfRegister<V>>(numbers), Load<HalfRegister<V>>(numbers + stride));
}

/// The reverse of LoadParts().
template <typename V>
[[gnu::always_inline]] inline void StoreParts(V const& lanes, Element<V>* numbers, std::size_t stride) noexcept
{
    if constexpr (PART<V> == COUNT<V>)
        Store(lanes, numbers);
    else
    {
        auto const [low, high] = Split(lanes);
        Store(low, numbers);
        Store(high, numbers + stride);
    }
}

/// Reads points.
/// @param stride numbers from the points of one part to those of the next.
template <typename V, std::size_t AXES>
[[nodiscard, gnu::always_inline]] inline Points<V, AXES> LoadPoints(Element<V> const* numbers,
                                                                    std::size_t stride = AXES * PART<V>) noexcept
{
    V a = LoadParts<V>(numbers, stride);
    if constexpr (AXES == 1)
        return {{a}};
    else
    {
        V b = LoadParts<V>(numbers + PART<V>, stride);
        if constexpr (AXES == 2)
            return {{EverySecond<0>(a, b), EverySecond<1>(a, b)}};
        else
        {
            V c = LoadParts<V>(numbers + 2 * PART<V>, stride);
            if constexpr (PART<V> == 2)
                return {{Pick<0, 3>(a, b), Pick<1, 2>(a, c), Pick<0, 3>(b, c)}};
            else if constexpr (PART<V> == 4)
            {
                V const yz01 = Pick<1, 2, 4, 5>(a, b);
                V const xy23 = Pick<2, 3, 5, 6>(b, c);
                return {{Pick<0, 3, 4, 6>(a, xy23), Pick<0, 2, 5, 7>(yz01, xy23), Pick<1, 3, 4, 7>(yz01, c)}};
            }
            else
            {
#if BV_AVX512
                // GCC would read each of them three times, and 64 bytes seldom lie within a line of the cache.
                asm("" : "+v"(a), "+v"(b), "+v"(c));
#endif
                return {{ShuffleThree(a, b, c, [](std::size_t lane) { return 3 * lane; }),
                         ShuffleThree(a, b, c, [](std::size_t lane) { return 3 * lane + 1; }),
                         ShuffleThree(a, b, c, [](std::size_t lane) { return 3 * lane + 2; })}};
            }
        }
    }
}

/// Writes points.
/// @param stride numbers from the points of one part to those of the next.
template <typename V>
[[gnu::always_inline]] inline void StorePoints(Points<V, 3> const& points, Element<V>* numbers,
                                               std::size_t stride = 3 * PART<V>) noexcept
{
    auto const& [x, y, z] = points.axes;
    if constexpr (PART<V> == 2)
    {
        StoreParts(Pick<0, 2>(x, y), numbers, stride);
        StoreParts(Pick<0, 3>(z, x), numbers + 2, stride);
        StoreParts(Pick<1, 3>(y, z), numbers + 4, stride);
    }
    else if constexpr (PART<V> == 4)
    {
        V const xy02 = Pick<0, 2, 4, 6>(x, y);
        V const yz13 = Pick<1, 3, 5, 7>(y, z);
        V const z02x13 = Pick<0, 2, 5, 7>(z, x);
        StoreParts(Pick<0, 2, 4, 6>(xy02, z02x13), numbers, stride);
        StoreParts(Pick<0, 2, 5, 7>(yz13, xy02), numbers + 4, stride);
        StoreParts(Pick<1, 3, 5, 7>(z02x13, yz13), numbers + 8, stride);
    }
    else
    {
        constexpr std::size_t N = COUNT<V>;
        Store(ShuffleThree(x, y, z, [](std::size_t lane) { return lane % 3 * N + lane / 3; }), numbers);
        Store(ShuffleThree(x, y, z, [](std::size_t lane) { return (N + lane) % 3 * N + (N + lane) / 3; }), numbers + N);
        Store(ShuffleThree(x, y, z, [](std::size_t lane) { return (2 * N + lane) % 3 * N + (2 * N + lane) / 3; }),
              numbers + 2 * N);
    }
}

} // namespace

} // namespace bv::maths
