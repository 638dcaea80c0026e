#pragma once

/// @file
/// The loops over the triangles that one ray may meet.

#include <limits>

#include "Maths/Kernels/Lanes/Arrays.h"
#include "bv/maths/detail/Triangles.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Triangles
{
    using V = Register<T, BYTES>;
    using M = Mask<V>;
    using Lanes = tTriple<V>;
    static constexpr std::size_t LANES = COUNT<V>;
    static constexpr T INFINITE = std::numeric_limits<T>::infinity();

    /// One number for all triangles.
    [[gnu::always_inline]] static Lanes Spread(T const* vector) noexcept
    {
        return {Broadcast<V>(vector[0]), Broadcast<V>(vector[1]), Broadcast<V>(vector[2])};
    }

    /// A corner of each triangle, with its components in some order.
    template <std::size_t FIRST>
    [[gnu::always_inline]] static Lanes LoadCorner(Streams<T> const& streams, std::size_t i,
                                                   unsigned int const (&axes)[3]) noexcept
    {
        return {Load<V>(streams.in[FIRST + axes[0]] + i), Load<V>(streams.in[FIRST + axes[1]] + i),
                Load<V>(streams.in[FIRST + axes[2]] + i)};
    }

    [[gnu::always_inline]] static M Write(tMeeting<V> const& meeting, Streams<T> const& streams, std::size_t i) noexcept
    {
        Store(Select(meeting.hits, meeting.t, Broadcast<V>(INFINITE)), streams.out[0] + i);
        Store(Select(meeting.hits, meeting.u, V{}), streams.out[1] + i);
        Store(Select(meeting.hits, meeting.v, V{}), streams.out[2] + i);
        return meeting.hits;
    }

    static std::size_t Intersect(T const* ray, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        constexpr unsigned int AXES[] = {0, 1, 2};
        Lanes const origin = Spread(ray);
        Lanes const direction = Spread(ray + 3);
        V const tNear = Broadcast<V>(ray[6]);
        V const tFar = Broadcast<V>(ray[7]);
        return FillBits<LANES>(streams, count,
                               [&](std::size_t i)
                               {
                                   return Write(MeetFast(origin, direction, LoadCorner<0>(streams, i, AXES),
                                                         LoadCorner<3>(streams, i, AXES),
                                                         LoadCorner<6>(streams, i, AXES), tNear, tFar),
                                                streams, i);
                               });
    }

    static std::size_t IntersectWatertight(T const* ray, unsigned int axes, Streams<T> const& streams,
                                           std::size_t count)
    {
        unsigned int const order[] = {axes & 3U, axes >> 2 & 3U, axes >> 4};
        Lanes const start = Spread(ray);
        Lanes const shear = Spread(ray + 3);
        V const tNear = Broadcast<V>(ray[6]);
        V const tFar = Broadcast<V>(ray[7]);
        return FillBits<LANES>(streams, count,
                               [&](std::size_t i)
                               {
                                   tSeenTriangle<V> const seen{
                                       SeenAlong(shear, LoadCorner<0>(streams, i, order) - start),
                                       SeenAlong(shear, LoadCorner<3>(streams, i, order) - start),
                                       SeenAlong(shear, LoadCorner<6>(streams, i, order) - start)};
                                   M isOpen;
                                   tMeeting<V> meeting = MeetOffEdges(seen, tNear, tFar, isOpen);
                                   if (Any(isOpen)) [[unlikely]]
                                       MeetOnEdges(seen, tNear, tFar, isOpen, meeting);
                                   return Write(meeting, streams, i);
                               });
    }
};

} // namespace

} // namespace bv::maths
