#pragma once

/// @file
/// The loops over boxes and over the points that they grow by or hold.

#include <cstring>
#include <limits>

#include "Maths/Kernels/Lanes/Arrays.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Bounds
{
    using V = Register<T, BYTES>;
    using Lanes = VectorLanes<V>;
    static constexpr std::size_t LANES = COUNT<V>;
    static constexpr T INFINITE = std::numeric_limits<T>::infinity();

    struct Lower
    {
        [[nodiscard, gnu::always_inline]] static T Choose(T a, T b) noexcept { return a < b ? a : b; }
    };
    struct Higher
    {
        [[nodiscard, gnu::always_inline]] static T Choose(T a, T b) noexcept { return a > b ? a : b; }
    };

    /// Moves an end of an interval to those that lanes have come to. Zeros of both signs are equal, and the single form
    /// keeps the one that it meets first.
    /// @tparam Way to the lower end or to the higher one.
    /// @param ends of the lanes, of which every so many belong to this interval.
    /// @param numbers that the lanes come from, some apart.
    template <typename Way, std::size_t N>
    [[gnu::always_inline]] static void Fold(T const (&ends)[N], std::size_t first, std::size_t every, T& end,
                                            T const* numbers, std::size_t step) noexcept
    {
        T chosen = end;
        for (std::size_t i = first; i < N; i += every)
            chosen = Way::Choose(ends[i], chosen);
        end = chosen == 0 && end != 0 ? FirstZero(numbers, step) : chosen;
    }

    /// The first number that is 0; there is one.
    [[gnu::cold]] static T FirstZero(T const* numbers, std::size_t step) noexcept
    {
        while (*numbers != 0)
            numbers += step;
        return *numbers;
    }

    [[gnu::always_inline]] static void ExtendBy(T const* numbers, std::size_t count, T& from, T& to) noexcept
    {
        // Several of each, so that none waits for the one in front of it.
        constexpr std::size_t CHAINS = GRANULE / LANES < 4 ? GRANULE / LANES : 4;
        V low[CHAINS];
        V high[CHAINS];
        for (std::size_t chain = 0; chain < CHAINS; ++chain)
        {
            low[chain] = Broadcast<V>(INFINITE);
            high[chain] = Broadcast<V>(-INFINITE);
        }
        for (std::size_t i = 0; i < count; i += CHAINS * LANES)
#pragma GCC unroll 4
            for (std::size_t chain = 0; chain < CHAINS; ++chain)
            {
                V const number = Load<V>(numbers + i + chain * LANES);
                low[chain] = Min(number, low[chain]);
                high[chain] = Max(number, high[chain]);
            }
        for (std::size_t chain = 1; chain < CHAINS; ++chain)
        {
            low[0] = Min(low[chain], low[0]);
            high[0] = Max(high[chain], high[0]);
        }
        T ends[2][LANES];
        Store(low[0], ends[0]);
        Store(high[0], ends[1]);
        Fold<Lower>(ends[0], 0, 1, from, numbers, 1);
        Fold<Higher>(ends[1], 0, 1, to, numbers, 1);
    }

    static std::size_t Extend(T const*, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        ExtendBy(streams.in[0], count, streams.ends[0], streams.ends[1]);
        return count;
    }

    static std::size_t Grow(T const*, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        T* const from = streams.ends;
        T* const to = streams.ends + 3;
        if (streams.inStep == 1)
        {
            for (std::size_t axis = 0; axis < 3; ++axis)
                ExtendBy(streams.in[axis], count, from[axis], to[axis]);
            return count;
        }
        // Three registers hold the components in turn, as they lie in memory.
        V const infinity = Broadcast<V>(INFINITE);
        V low[3] = {infinity, infinity, infinity};
        V high[3] = {-infinity, -infinity, -infinity};
        for (std::size_t i = 0; i < count; i += LANES)
#pragma GCC unroll 3
            for (std::size_t part = 0; part < 3; ++part)
            {
                V const numbers = Load<V>(streams.in[0] + 3 * i + part * LANES);
                low[part] = Min(numbers, low[part]);
                high[part] = Max(numbers, high[part]);
            }
        T ends[2][3 * LANES];
        std::memcpy(ends[0], low, sizeof low);
        std::memcpy(ends[1], high, sizeof high);
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            Fold<Lower>(ends[0], axis, 3, from[axis], streams.in[axis], 3);
            Fold<Higher>(ends[1], axis, 3, to[axis], streams.in[axis], 3);
        }
        return count;
    }

    static std::size_t Contain(T const* box, unsigned int isExclusive, Streams<T> const& streams, std::size_t count)
    {
        T const* const lower = box;
        T const* const upper = box + 3;
        return FillBits<LANES>(streams, count,
                               [&](std::size_t i)
                               {
                                   auto const [x, y, z] = LoadVectors<V>(streams, i).axes;
                                   auto const isAbove = Both(Both(lower[0] <= x, lower[1] <= y), lower[2] <= z);
                                   if (isExclusive != 0)
                                       return Both(isAbove, Both(Both(x < upper[0], y < upper[1]), z < upper[2]));
                                   return Both(isAbove, Both(Both(x <= upper[0], y <= upper[1]), z <= upper[2]));
                               });
    }

    /// Summed from the translation on, x first.
    /// Arvo, "Transforming Axis-Aligned Bounding Boxes", Graphics Gems, 1990.
    static std::size_t MoveBoxes(T const* matrix, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        V m[12];
        for (int i = 0; i < 12; ++i)
            m[i] = Broadcast<V>(matrix[i]);
        for (std::size_t i = 0; i < count; i += LANES)
        {
            PairLanes<V> const box = LoadPairs<V>(streams, i);
            PairLanes<V> moved;
#pragma GCC unroll 3
            for (std::size_t row = 0; row < 3; ++row)
            {
                V& lower = moved.first.axes[row];
                V& upper = moved.second.axes[row];
                lower = upper = m[4 * row + 3];
#pragma GCC unroll 3
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    V const a = m[4 * row + axis] * box.first.axes[axis];
                    V const b = m[4 * row + axis] * box.second.axes[axis];
                    lower = lower + Min(a, b);
                    upper = upper + Max(b, a);
                }
            }
            StorePairs(moved, streams, i);
        }
        return count;
    }
};

} // namespace

} // namespace bv::maths
