#pragma once

/// @file
/// Packets of rays against a triangle. Each lane has the bits that IntersectTriangle() gives for its ray.

#include <cstddef>

#include "bv/maths/detail/Triangles.h"
#include "bv/maths/simd/tRayPacket.h"
#include "bv/maths/tVector3.h"

namespace bv::maths::simd
{

/// Where each ray of a packet meets a triangle: the members of tTriangleHit, one vector each.
///
/// @tparam Packet SSERay or AVXRay.
template <typename Packet>
struct tPacketHits
{
    using Vector = typename Packet::Vector; ///< one number for each ray

    Vector t; ///< parameters of the rays
    Vector u; ///< weights of b
    Vector v; ///< weights of c
};

/// A packet of rays made ready for triangles that none of them may slip between, each lane as a tWatertightRay is.
///
/// Every ray has its own axis to run along, so that all three components of a corner count in each lane, with 0, 1 or
/// the shear as a factor.
///
/// @tparam Packet SSERay or AVXRay.
template <typename Packet>
class tWatertightPacket
{
public:
    using Vector = typename Packet::Vector; ///< one number for each ray

private:
    using Lanes = detail::Register<float, sizeof(Vector)>;
    using Triple = detail::tTriple<Lanes>;

    Triple origin;  ///< start points
    Triple rows[3]; ///< the three rows of the matrix that makes the rays run along z

public:
    static constexpr std::size_t WIDTH = Packet::WIDTH; ///< number of rays

    /// Nothing is initialised.
    tWatertightPacket() noexcept = default;
    /// What the rays are now; they are not needed any more.
    [[gnu::always_inline]] inline explicit tWatertightPacket(Packet const& rays) noexcept;

    /// The corner of a triangle as each ray sees it.
    [[nodiscard, gnu::always_inline]] detail::tTriple<Lanes> See(tVector3<float> const& corner) const noexcept
    {
        Triple const way = detail::Spread<Lanes>(corner) - origin;
        return {detail::DotOf(rows[0], way), detail::DotOf(rows[1], way), detail::DotOf(rows[2], way)};
    }
};

namespace detail
{

/// Replaces numbers in the lanes of a mask.
template <typename Vector, typename Lanes>
[[gnu::always_inline]] inline void Replace(maths::detail::MaskOf<Lanes> const& mask, Lanes const& lanes,
                                           Vector& numbers) noexcept
{
    using maths::detail::BitsAs;
    numbers = BitsAs<Vector>(maths::detail::Select(mask, lanes, BitsAs<Lanes>(numbers)));
}

/// Writes the hits of the lanes that have one.
/// @return their mask.
template <typename Packet, typename Lanes>
[[gnu::always_inline]] inline typename Packet::Vector StoreHits(maths::detail::tMeeting<Lanes> const& meeting,
                                                                tPacketHits<Packet>& hits) noexcept
{
    Replace(meeting.hits, meeting.t, hits.t);
    Replace(meeting.hits, meeting.u, hits.u);
    Replace(meeting.hits, meeting.v, hits.v);
    return maths::detail::BitsAs<typename Packet::Vector>(meeting.hits);
}

} // namespace detail

/// Intersects each ray of a packet with a triangle, the fast way: as IntersectTriangle() does for a tRay.
///
/// @param rays an SSERay or an AVXRay.
/// @param a,b,c the corners, in either order of rotation.
/// @param tNear,tFar the parameters that count, for each ray.
/// @param[in,out] hits where it is, written in the lanes that have a hit.
/// @return in each lane all bits set for a hit, and all clear for a miss.
template <typename Packet, typename Lanes>
[[nodiscard, gnu::always_inline]] inline typename Lanes::Vector
IntersectTriangle(tRayPacket<Packet, Lanes> const& rays, tVector3<float> const& a, tVector3<float> const& b,
                  tVector3<float> const& c, typename Lanes::Vector tNear, typename Lanes::Vector tFar,
                  tPacketHits<Packet>& hits) noexcept
{
    using V = maths::detail::Register<float, sizeof(typename Lanes::Vector)>;
    auto const* const o = rays.GetOrigin();
    auto const* const d = rays.GetDirection();
    using maths::detail::BitsAs;
    return detail::StoreHits(maths::detail::MeetFast<V>({BitsAs<V>(o[0]), BitsAs<V>(o[1]), BitsAs<V>(o[2])},
                                                        {BitsAs<V>(d[0]), BitsAs<V>(d[1]), BitsAs<V>(d[2])},
                                                        maths::detail::Spread<V>(a), maths::detail::Spread<V>(b),
                                                        maths::detail::Spread<V>(c), BitsAs<V>(tNear), BitsAs<V>(tFar)),
                             hits);
}

/// Intersects each ray of a packet with a triangle so that none slips through a closed mesh: as IntersectTriangle()
/// does for a tWatertightRay.
///
/// @param rays made ready once for all triangles.
/// @param a,b,c the corners, in either order of rotation.
/// @param tNear,tFar the parameters that count, for each ray.
/// @param[in,out] hits where it is, written in the lanes that have a hit.
/// @return in each lane all bits set for a hit, and all clear for a miss.
template <typename Packet>
[[nodiscard, gnu::always_inline]] inline typename Packet::Vector
IntersectTriangle(tWatertightPacket<Packet> const& rays, tVector3<float> const& a, tVector3<float> const& b,
                  tVector3<float> const& c, typename Packet::Vector tNear, typename Packet::Vector tFar,
                  tPacketHits<Packet>& hits) noexcept
{
    using V = maths::detail::Register<float, sizeof(typename Packet::Vector)>;
    using maths::detail::BitsAs;
    maths::detail::tSeenTriangle<V> const seen{rays.See(a), rays.See(b), rays.See(c)};
    maths::detail::MaskOf<V> isOpen;
    maths::detail::tMeeting<V> meeting = maths::detail::MeetOffEdges(seen, BitsAs<V>(tNear), BitsAs<V>(tFar), isOpen);
    if (maths::detail::Any(isOpen)) [[unlikely]]
        maths::detail::MeetOnEdges(seen, BitsAs<V>(tNear), BitsAs<V>(tFar), isOpen, meeting);
    return detail::StoreHits(meeting, hits);
}

template <typename Packet>
inline tWatertightPacket<Packet>::tWatertightPacket(Packet const& rays) noexcept
{
    using maths::detail::BitsAs;
    using Mask = maths::detail::MaskOf<Lanes>;
    auto const* const o = rays.GetOrigin();
    auto const* const d = rays.GetDirection();
    origin = {BitsAs<Lanes>(o[0]), BitsAs<Lanes>(o[1]), BitsAs<Lanes>(o[2])};
    Lanes const x = BitsAs<Lanes>(d[0]), y = BitsAs<Lanes>(d[1]), z = BitsAs<Lanes>(d[2]);
    Lanes const sizeX = maths::detail::Magnitude(x), sizeY = maths::detail::Magnitude(y);
    Lanes const sizeZ = maths::detail::Magnitude(z);
    Mask const isYLarger = sizeX < sizeY;
    Mask const alongZ = maths::detail::Select(isYLarger, sizeY, sizeX) < sizeZ;
    Mask const alongY = isYLarger & ~alongZ;
    Mask const alongX = ~(alongY | alongZ);
    using maths::detail::Select;
    Lanes const length = Select(alongX, x, Select(alongY, y, z));
    Lanes const refused = length - length;
    Lanes const zero{};
    Lanes const one = maths::detail::Broadcast<Lanes>(1.0F);
    // The two axes behind the one along which a ray runs, and the shear of each.
    Lanes const shearFirst = maths::detail::Negated(Select(alongX, y, Select(alongY, z, x)) / length + refused);
    Lanes const shearSecond = maths::detail::Negated(Select(alongX, z, Select(alongY, x, y)) / length + refused);
    Lanes const scale = one / length + refused;
    rows[0] = {Select(alongX, shearFirst, Select(alongY, zero, one)),
               Select(alongX, one, Select(alongY, shearFirst, zero)),
               Select(alongX, zero, Select(alongY, one, shearFirst))};
    rows[1] = {Select(alongX, shearSecond, Select(alongY, one, zero)),
               Select(alongX, zero, Select(alongY, shearSecond, one)),
               Select(alongX, one, Select(alongY, zero, shearSecond))};
    rows[2] = {Select(alongX, scale, zero), Select(alongY, scale, zero), Select(alongZ, scale, zero)};
}

} // namespace bv::maths::simd
