#pragma once

/// @file
/// The loops over rays, and over the shapes that one ray may meet.

#include <limits>

#include "Maths/Kernels/Lanes/Arrays.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Rays
{
    using V = Register<T, BYTES>;
    using M = Mask<V>;
    using Lanes = VectorLanes<V>;
    static constexpr std::size_t LANES = COUNT<V>;
    static constexpr T INFINITE = std::numeric_limits<T>::infinity();

    /// Slab by slab, x first, as tRay::Clip() narrows the interval. It only shrinks, so that its last state tells of
    /// all axes; only a parameter that is NaN hides a slab that lies behind.
    static std::size_t ClipBoxes(T const* ray, unsigned int crossed, Streams<T> const& streams, std::size_t count)
    {
        return FillBits<LANES>(streams, count,
                               [&](std::size_t i)
                               {
                                   PairLanes<V> const box = LoadPairs<V>(streams, i);
                                   V lower = Broadcast<V>(ray[6]);
                                   V upper = Broadcast<V>(ray[7]);
                                   M hits = ~M{};
#pragma GCC unroll 3
                                   for (std::size_t axis = 0; axis < 3; ++axis)
                                   {
                                       V const& from = box.first.axes[axis];
                                       V const& to = box.second.axes[axis];
                                       V const start = Broadcast<V>(ray[axis]);
                                       if ((crossed >> axis & 1U) != 0)
                                       {
                                           V const t1 = (from - start - TOLERANCE<T>)*ray[3 + axis];
                                           V const t2 = (to - start + TOLERANCE<T>)*ray[3 + axis];
                                           hits = Both(hits, M(Either(t1 >= T{0}, t2 >= T{0})));
                                           lower = Max(Min(t2, t1), lower);
                                           upper = Min(Max(t1, t2), upper);
                                       }
                                       else
                                           hits = Both(hits, M(Both(from <= start, start <= to)));
                                   }
                                   if (crossed != 0)
                                       hits = Both(hits, M(Both(lower <= upper, upper >= T{0})));
                                   Store(Select(hits, lower, Broadcast<V>(INFINITE)), streams.out[0] + i);
                                   return hits;
                               });
    }

    /// The chords that spheres cut out of the lines of rays.
    struct Chords
    {
        V middle, half;
        M exist;

        [[gnu::always_inline]] Chords(Lanes const& origin, Lanes const& direction, Lanes const& centre,
                                      V const& radiusSquared) noexcept
        {
            V const x = origin.axes[0] - centre.axes[0];
            V const y = origin.axes[1] - centre.axes[1];
            V const z = origin.axes[2] - centre.axes[2];
            middle = direction.axes[0] * x + direction.axes[1] * y + direction.axes[2] * z;
            V const discriminant = (middle * middle + radiusSquared) - (x * x + y * y + z * z);
            exist = discriminant >= T{0};
            half = SquareRoots(Select(exist, discriminant, V{}));
        }

        [[gnu::always_inline]] M StoreEnds(Streams<T> const& streams, std::size_t i) const noexcept
        {
            Store(Select(exist, -middle - half, Broadcast<V>(INFINITE)), streams.out[0] + i);
            Store(Select(exist, half - middle, Broadcast<V>(-INFINITE)), streams.out[1] + i);
            return exist;
        }
    };

    [[gnu::always_inline]] static Lanes Spread(T const* vector) noexcept
    {
        return {Broadcast<V>(vector[0]), Broadcast<V>(vector[1]), Broadcast<V>(vector[2])};
    }

    static std::size_t ClipRays(T const* sphere, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        Lanes const middle = Spread(sphere);
        return FillBits<LANES>(
            streams, count,
            [&](std::size_t i)
            {
                PairLanes<V> const ray = LoadPairs<V>(streams, i);
                return Chords(ray.first, ray.second, middle, Broadcast<V>(sphere[3])).StoreEnds(streams, i);
            });
    }

    static std::size_t ClipSpheres(T const* ray, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        Lanes const start = Spread(ray);
        Lanes const along = Spread(ray + 3);
        return FillBits<LANES>(
            streams, count,
            [&](std::size_t i)
            {
                SphereLanes<V> const sphere = LoadSpheres<V>(streams, i);
                return Chords(start, along, sphere.centres, sphere.radiiSquared).StoreEnds(streams, i);
            });
    }
};

} // namespace

} // namespace bv::maths
