#pragma once

/// @file
/// Vectors and pairs of them between memory and registers, whichever way they lie, and bits of masks.

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Lanes/Points.h"

namespace bv::maths
{

namespace
{

/// As many vectors as a register has lanes.
template <typename V>
using VectorLanes = Points<V, 3>;

/// @tparam FIRST the first of the components.
template <typename V, std::size_t FIRST = 0>
[[nodiscard, gnu::always_inline]] inline VectorLanes<V> LoadVectors(Streams<Element<V>> const& streams,
                                                                    std::size_t index) noexcept
{
    if (streams.inStep != 1)
        return LoadPoints<V, 3>(streams.in[FIRST] + 3 * index);
    return {{Load<V>(streams.in[FIRST] + index), Load<V>(streams.in[FIRST + 1] + index),
             Load<V>(streams.in[FIRST + 2] + index)}};
}

template <std::size_t FIRST = 0, typename V>
[[gnu::always_inline]] inline void StoreVectors(VectorLanes<V> const& vectors, Streams<Element<V>> const& streams,
                                                std::size_t index) noexcept
{
    if (streams.outStep != 1)
        return StorePoints(vectors, streams.out[FIRST] + 3 * index);
    Store(vectors.axes[0], streams.out[FIRST] + index);
    Store(vectors.axes[1], streams.out[FIRST + 1] + index);
    Store(vectors.axes[2], streams.out[FIRST + 2] + index);
}

/// As many pairs of vectors as a register has lanes.
template <typename V>
struct PairLanes
{
    VectorLanes<V> first, second;
};

/// Pairs lie in memory like vectors: first, second, first, second and so on. Half of the pairs of a part come from one
/// part of vectors, half from the next.
template <typename V>
[[nodiscard, gnu::always_inline]] inline PairLanes<V> LoadPairs(Streams<Element<V>> const& streams,
                                                                std::size_t index) noexcept
{
    if (streams.inStep == 1)
        return {LoadVectors<V>(streams, index), LoadVectors<V, 3>(streams, index)};
    constexpr std::size_t STRIDE = 6 * PART<V>;
    auto const* const numbers = streams.in[0] + 6 * index;
    VectorLanes<V> const lower = LoadPoints<V, 3>(numbers, STRIDE);
    VectorLanes<V> const upper = LoadPoints<V, 3>(numbers + STRIDE / 2, STRIDE);
    PairLanes<V> result;
#pragma GCC unroll 3
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        result.first.axes[axis] = EverySecond<0>(lower.axes[axis], upper.axes[axis]);
        result.second.axes[axis] = EverySecond<1>(lower.axes[axis], upper.axes[axis]);
    }
    return result;
}

/// As many spheres as a register has lanes.
template <typename V>
struct SphereLanes
{
    VectorLanes<V> centres;
    V radiiSquared;
};

/// With a step of 6, the centre is the second of two vectors, and the squared radius in front of it the end of the
/// first.
template <typename V>
[[nodiscard, gnu::always_inline]] inline SphereLanes<V> LoadSpheres(Streams<Element<V>> const& streams,
                                                                    std::size_t index) noexcept
{
    if (streams.inStep != 6)
        return {LoadVectors<V>(streams, index), Load<V>(streams.in[3] + index)};
    PairLanes<V> const pairs = LoadPairs<V>(streams, index);
    return {pairs.second, pairs.first.axes[2]};
}

template <typename V>
[[gnu::always_inline]] inline void StorePairs(PairLanes<V> const& pairs, Streams<Element<V>> const& streams,
                                              std::size_t index) noexcept
{
    if (streams.outStep == 1)
    {
        StoreVectors(pairs.first, streams, index);
        StoreVectors<3>(pairs.second, streams, index);
        return;
    }
    VectorLanes<V> lower;
    VectorLanes<V> upper;
#pragma GCC unroll 3
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        lower.axes[axis] = InTurn<0>(pairs.first.axes[axis], pairs.second.axes[axis]);
        upper.axes[axis] = InTurn<PART<V> / 2>(pairs.first.axes[axis], pairs.second.axes[axis]);
    }
    constexpr std::size_t STRIDE = 6 * PART<V>;
    auto* const numbers = streams.out[0] + 6 * index;
    StorePoints(lower, numbers, STRIDE);
    StorePoints(upper, numbers + STRIDE / 2, STRIDE);
}

/// The bits of a mask in a word of bits, for elements from an index on.
template <typename M>
[[nodiscard, gnu::always_inline]] inline std::uint64_t BitsAt(M const& mask, std::size_t index) noexcept
{
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(Bits(mask))) << index % 64;
}

/// One bit for each element, which a function gives a register at a time, from its index.
/// @return the number of elements.
template <std::size_t LANES, typename T, typename Function>
[[gnu::always_inline]] inline std::size_t FillBits(Streams<T> const& streams, std::size_t count,
                                                   Function&& function) noexcept
{
    for (std::size_t begin = 0; begin < count; begin += 64)
    {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < 64 && begin + i < count; i += LANES)
            word |= BitsAt(function(begin + i), i);
        streams.bits[begin / 64] = word;
    }
    return count;
}

} // namespace

} // namespace bv::maths
