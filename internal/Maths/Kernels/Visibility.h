#pragma once

/// @file
/// The loops over boxes and spheres in a view. Distances are summed as tPlane::GetDistance() does: y, x, z, offset. One
/// that is NaN is not the smaller one, just as it is not below 0.

#include <limits>

#include "Maths/Kernels/Lanes/Arrays.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Visibility
{
    using V = Register<T, BYTES>;
    using M = Mask<V>;
    using Result = typename tFrustum<T>::IntersectionResult;
    static constexpr std::size_t LANES = COUNT<V>;
    static constexpr std::size_t PLANES = 6;
    static constexpr T INFINITE = std::numeric_limits<T>::infinity();

    /// Of boxes and a plane: the components of the corners that lie farthest along its normal, and of those that lie
    /// nearest.
    struct Corners
    {
        V const* farthest[3];
        V const* nearest[3];

        [[gnu::always_inline]] Corners(T const* normal, PairLanes<V> const& boxes) noexcept
        {
            for (std::size_t axis = 0; axis < 3; ++axis)
            {
                bool const isUpper = normal[axis] >= T{0};
                farthest[axis] = &(isUpper ? boxes.second : boxes.first).axes[axis];
                nearest[axis] = &(isUpper ? boxes.first : boxes.second).axes[axis];
            }
        }
    };

    [[gnu::always_inline]] static V Distance(T const* plane, V const& x, V const& y, V const& z) noexcept
    {
        return ((plane[1] * y + plane[0] * x) + plane[2] * z) + plane[3];
    }
    [[gnu::always_inline]] static V Distance(T const* plane, V const* const (&corner)[3]) noexcept
    {
        return Distance(plane, *corner[0], *corner[1], *corner[2]);
    }

    /// Boxes that are loaded a register after the other, and their corners for each of the planes.
    struct Boxes
    {
        PairLanes<V> box;
        Corners corners[PLANES];

        [[gnu::always_inline]] explicit Boxes(T const* planes) noexcept
            : box{}, corners{{planes, box},      {planes + 4, box},  {planes + 8, box},
                             {planes + 12, box}, {planes + 16, box}, {planes + 20, box}}
        {
        }
    };

    /// Outside where a plane has all of it behind it, intersecting where one has a part, else inside.
    [[gnu::always_inline]] static void StoreCodes(M const& isOutside, M const& straddles, std::uint32_t* codes) noexcept
    {
        using Narrow = Register<std::int32_t, LANES * sizeof(std::int32_t)>;
        V const kept = Select(straddles, Broadcast<V>(Result::INTERSECTING), Broadcast<V>(Result::INSIDE));
        V const code = Select(isOutside, Broadcast<V>(Result::OUTSIDE), kept);
        Store(Convert<Narrow>(code), reinterpret_cast<std::int32_t*>(codes));
    }

    /// Where a plane has the corner that lies farthest along its normal behind it.
    [[gnu::always_inline]] static M AreOutside(T const* planes, unsigned int which, Boxes const& at) noexcept
    {
        V farthest{};
        for (std::size_t plane = 0; plane < PLANES; ++plane)
            if ((which >> plane & 1U) != 0)
                farthest = Min(Distance(planes + 4 * plane, at.corners[plane].farthest), farthest);
        return farthest < T{0};
    }

    /// Where a plane has the corner that lies nearest behind it, the planes' bits.
    [[gnu::always_inline]] static M StraddledBy(T const* planes, unsigned int which, Boxes const& at) noexcept
    {
        M bits{};
        for (std::size_t plane = 0; plane < PLANES; ++plane)
            if ((which >> plane & 1U) != 0)
            {
                M const isBehind = Distance(planes + 4 * plane, at.corners[plane].nearest) < T{0};
                bits |= isBehind & (Integer<T>{1} << plane);
            }
        return bits;
    }

    /// Gives whichever the streams take: bits, codes or bytes.
    static std::size_t Classify(T const* planes, unsigned int which, Streams<T> const& streams, std::size_t count)
    {
        Boxes at(planes);
        for (std::size_t i = 0; i < count; i += LANES)
        {
            at.box = LoadPairs<V>(streams, i);
            M const isOutside = AreOutside(planes, which, at);
            if (streams.bits != nullptr)
            {
                streams.bits[i / 64] |= BitsAt(M(~isOutside), i);
                continue;
            }
            M const straddled = StraddledBy(planes, which, at);
            if (streams.codes != nullptr)
                StoreCodes(isOutside, straddled != 0, streams.codes + i);
            else
            {
                M const bytes = (straddled & ~isOutside) | (isOutside & (Integer<T>{1} << PLANES));
                for (std::size_t lane = 0; lane < LANES; ++lane)
                    streams.bytes[i + lane] = static_cast<std::uint8_t>(bytes[lane]);
            }
        }
        return count;
    }

    /// By the distance of a centre from the nearest plane. Gives bits or codes.
    static std::size_t ClassifySpheres(T const* planes, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        for (std::size_t i = 0; i < count; i += LANES)
        {
            auto const [centres, radiiSquared] = LoadSpheres<V>(streams, i);
            auto const [x, y, z] = centres.axes;
            V const radius = SquareRoots(radiiSquared);
            V distance = Broadcast<V>(INFINITE);
            for (std::size_t plane = 0; plane < PLANES; ++plane)
                distance = Min(Distance(planes + 4 * plane, x, y, z), distance);
            M const isOutside = distance < -radius;
            if (streams.bits != nullptr)
                streams.bits[i / 64] |= BitsAt(M(~isOutside), i);
            else
                StoreCodes(isOutside, distance < radius, streams.codes + i);
        }
        return count;
    }
};

} // namespace

} // namespace bv::maths
