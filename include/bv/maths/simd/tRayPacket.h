#pragma once

/// @file
/// What the ray packets of every width have in common.

#include <cstddef>
#include <span>
#include <utility>

#include "bv/IRayPayloadInternal.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/batch/Views.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths::detail
{

/// Aligns a packet as its vectors are long, where they are not so by themselves. (LLDB is confused by an alignment that
/// is said once more.)
template <typename Vector, bool IS_ALIGNED = alignof(Vector) == sizeof(Vector)>
struct tPacketAlignment
{
};
template <typename Vector>
struct alignas(sizeof(Vector)) tPacketAlignment<Vector, false>
{
};

} // namespace bv::maths::detail

namespace bv::maths::simd
{

/// Packet of single-precision rays, one coordinate of all of them to a vector: lane i of every vector belongs to ray i.
/// Not used by itself: SSERay and AVXRay are its two widths.
///
/// Nothing is initialised until Initialise(). Every member is forced into its caller, so that no copy of it that was
/// compiled for a wider processor can be linked into code for a narrower one.
///
/// @tparam Packet the class that derives from this one.
/// @tparam Lanes the type of the vectors, as `Lanes::Vector`.
template <typename Packet, typename Lanes>
class tRayPacket : detail::tPacketAlignment<typename Lanes::Vector>
{
public:
    using Vector = typename Lanes::Vector; ///< one number for each ray

private:
    Vector origin[3];
    Vector direction[3];
    Vector invDirection[3];

public:
    static constexpr std::size_t WIDTH = sizeof(Vector) / sizeof(float); ///< number of rays

    /// @name Access
    /// @{
    /// The rays' origins: three vectors, x, y, z.
    [[nodiscard, gnu::always_inline]] Vector const* GetOrigin() const noexcept { return origin; }
    /// The rays' directions: three vectors, x, y, z.
    [[nodiscard, gnu::always_inline]] Vector const* GetDirection() const noexcept { return direction; }
    /// The reciprocals of the directions: three vectors, x, y, z. They are true quotients: a zero gives an infinity of
    /// its sign.
    [[nodiscard, gnu::always_inline]] Vector const* GetInvDirection() const noexcept { return invDirection; }
    /// @}

    /// @name Queries
    /// @{
    /// Narrows [tNear, tFar], lane by lane, to the part of each ray inside a box, axis by axis, x first.
    ///
    /// The caller sets both ends first, say to 0 and the farthest distance of interest. The slabs of the x and z axes
    /// are widened by `TOLERANCE<float>` on both sides, that of the y axis is not. A ray that runs along a slab keeps
    /// its interval inside of it and loses all of it outside. Exactly on a face of the slab (for x and z, of the
    /// widened one), that face's parameter is NaN: on the lower face the upper face decides for both ends, and on the
    /// upper face both ends become NaN until a later axis replaces them. A NaN in the caller's interval is replaced by
    /// the end of the slab. A box behind the rays is a hit unless tNear rules it out. There is no early out: every axis
    /// narrows every lane. Kay, Kajiya, "Ray Tracing Complex Scenes", 1986.
    /// @param box what to clip against; valid, since of two faces either may be met first.
    /// @param[in,out] tNear lower ends of the intervals.
    /// @param[in,out] tFar upper ends of the intervals.
    /// @return in each lane all bits set where tNear <= tFar, and all clear elsewhere and where one of them is NaN.
    [[nodiscard, gnu::always_inline]] inline Vector Clip(tVolumeAABB<float> const& box, Vector& tNear,
                                                         Vector& tFar) const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Loads origins and directions.
    ///
    /// @param rays the first of WIDTH rays in a row, all of which are read; whoever has fewer repeats one.
    [[gnu::always_inline]] inline void Initialise(tDepthRay<float, IRayPayloadInternal> const* rays) noexcept;
    /// Loads origins and directions of plain rays, wherever they lie.
    ///
    /// @param rays at least one more than the index.
    /// @param index of the first ray. The last of all rays takes the lanes that none is left for.
    [[gnu::always_inline]] inline void Initialise(tRayView<float const> const& rays, std::size_t index) noexcept;
    /// Transforms the rays: origins as points, directions as directions. The fourth row of the matrix is ignored, so
    /// that nothing is divided, and the directions are not normalised. A matrix in state IDENTITY changes nothing,
    /// whatever its elements hold.
    ///
    /// Each row is summed left to right, up to its fourth element times 1 for origins and times 0 for directions: an
    /// infinite translation makes a direction NaN, and a direction's component that would be -0 becomes 0, whose
    /// reciprocal is +infinity, unless the translation is negative.
    /// @return this packet.
    [[gnu::always_inline]] inline Packet& Transform(tMatrix4<float> const& matrix) noexcept;
    /// @}

private:
    using DepthRay = tDepthRay<float, IRayPayloadInternal>;

    [[nodiscard, gnu::always_inline]] static Vector Broadcast(float x) noexcept
    {
        return detail::Broadcast<detail::Register<float, sizeof(Vector)>>(x);
    }

    /// One component of one vector of each ray.
    template <std::size_t... LANE>
    [[nodiscard, gnu::always_inline]] static Vector Gather(DepthRay const* rays, tVector3<float> tRay<float>::*vector,
                                                           float tVector3<float>::*component,
                                                           std::index_sequence<LANE...>) noexcept
    {
        return Vector{(rays[LANE].*vector.*component)...};
    }

    /// Consecutive numbers from an index on; the last one takes the lanes that none is left for.
    template <std::size_t... LANE>
    [[nodiscard, gnu::always_inline]] static Vector LoadFrom(tNumberView<float const> const& numbers, std::size_t index,
                                                             std::index_sequence<LANE...>) noexcept
    {
        std::size_t const last = numbers.size() - 1;
        if (numbers.GetStride() == sizeof(float) && index + WIDTH <= numbers.size())
            return detail::BitsAs<Vector>(detail::Load<detail::Register<float, sizeof(Vector)>>(&numbers[index]));
        return Vector{numbers[index + LANE < last ? index + LANE : last]...};
    }

    /// Scalar product of a row of a matrix with (x, y, z, w) in each lane.
    [[nodiscard, gnu::always_inline]] static Vector Row(float const* row, Vector const (&xyz)[3], float w) noexcept
    {
        return Broadcast(row[0]) * xyz[0] + Broadcast(row[1]) * xyz[1] + Broadcast(row[2]) * xyz[2] +
               Broadcast(row[3]) * Broadcast(w);
    }

    /// Replaces three vectors by their products with the first three rows of a matrix.
    [[gnu::always_inline]] static void TransformGroup(float const* m, Vector (&xyz)[3], float w) noexcept
    {
        Vector const x = Row(m, xyz, w);
        Vector const y = Row(m + 4, xyz, w);
        Vector const z = Row(m + 8, xyz, w);
        xyz[0] = x;
        xyz[1] = y;
        xyz[2] = z;
    }

    /// Narrows the intervals by one slab. Where an operand of min or max is NaN, the second one is the result.
    [[gnu::always_inline]] static void ClipSlab(Vector toLower, Vector toUpper, Vector inverse, Vector& tNear,
                                                Vector& tFar) noexcept
    {
        Vector const t1 = toLower * inverse;
        Vector const t2 = toUpper * inverse;
        tNear = detail::Max(tNear, detail::Min(t1, t2));
        tFar = detail::Min(tFar, detail::Max(t1, t2));
    }

    [[gnu::always_inline]] void InvertDirection() noexcept
    {
        Vector const one = Broadcast(1.0f);
        invDirection[0] = one / direction[0];
        invDirection[1] = one / direction[1];
        invDirection[2] = one / direction[2];
    }
};

template <typename Packet, typename Lanes>
inline typename Lanes::Vector tRayPacket<Packet, Lanes>::Clip(tVolumeAABB<float> const& box, Vector& tNear,
                                                              Vector& tFar) const noexcept
{
    tVector3<float> const& lower = box.GetMin();
    tVector3<float> const& upper = box.GetMax();
    Vector const margin = Broadcast(TOLERANCE<float>);
    ClipSlab(Broadcast(lower.x) - (origin[0] + margin), Broadcast(upper.x) - (origin[0] - margin), invDirection[0],
             tNear, tFar);
    ClipSlab(Broadcast(lower.y) - origin[1], Broadcast(upper.y) - origin[1], invDirection[1], tNear, tFar);
    ClipSlab(Broadcast(lower.z) - (origin[2] + margin), Broadcast(upper.z) - (origin[2] - margin), invDirection[2],
             tNear, tFar);
    return detail::BitsAs<Vector>(tNear <= tFar);
}

template <typename Packet, typename Lanes>
inline void tRayPacket<Packet, Lanes>::Initialise(tDepthRay<float, IRayPayloadInternal> const* rays) noexcept
{
    constexpr std::make_index_sequence<WIDTH> LANES;
    origin[0] = Gather(rays, &DepthRay::origin, &tVector3<float>::x, LANES);
    origin[1] = Gather(rays, &DepthRay::origin, &tVector3<float>::y, LANES);
    origin[2] = Gather(rays, &DepthRay::origin, &tVector3<float>::z, LANES);
    direction[0] = Gather(rays, &DepthRay::direction, &tVector3<float>::x, LANES);
    direction[1] = Gather(rays, &DepthRay::direction, &tVector3<float>::y, LANES);
    direction[2] = Gather(rays, &DepthRay::direction, &tVector3<float>::z, LANES);
    InvertDirection();
}

template <typename Packet, typename Lanes>
inline void tRayPacket<Packet, Lanes>::Initialise(tRayView<float const> const& rays, std::size_t index) noexcept
{
    constexpr std::make_index_sequence<WIDTH> LANES;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        origin[axis] = LoadFrom(rays.GetOrigins().GetAxis(axis), index, LANES);
        direction[axis] = LoadFrom(rays.GetDirections().GetAxis(axis), index, LANES);
    }
    InvertDirection();
}

template <typename Packet, typename Lanes>
inline Packet& tRayPacket<Packet, Lanes>::Transform(tMatrix4<float> const& matrix) noexcept
{
    if (!matrix.IsIdentity())
    {
        TransformGroup(matrix.Get(), origin, 1.0f);
        TransformGroup(matrix.Get(), direction, 0.0f);
        InvertDirection();
    }
    return static_cast<Packet&>(*this);
}

/// Fills packets with rays, in their order, as many to a packet as it is wide. The last ray takes the lanes that none
/// is left for.
///
/// @param rays any number, wherever they lie.
/// @param[out] packets an array, a vector or a span of them, as many as hold all rays.
/// @throws bv::InvalidArgumentException for any other number.
template <typename Packets>
[[gnu::always_inline]] inline void FillPackets(tRayView<float const> const& rays, Packets&& packets)
{
    std::span const filled(packets);
    constexpr std::size_t WIDTH = decltype(filled)::value_type::WIDTH;
    if (filled.size() != (rays.size() + WIDTH - 1) / WIDTH)
        detail::ThrowDifferentLengths("FillPackets");
    for (std::size_t i = 0; i < filled.size(); ++i)
        filled[i].Initialise(rays, i * WIDTH);
}

} // namespace bv::maths::simd
