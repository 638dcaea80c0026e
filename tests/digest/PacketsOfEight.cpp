// The only file of the digest that is compiled for AVX: nothing of it may be shared with the others, so it calls what
// is forced inline and nothing else.
#include <cstring>

#include <bv/maths/simd/AVXRay.h>
#include <bv/maths/simd/PacketTriangles.h>

#include "PacketsOfEight.h"

namespace digest
{

using bv::maths::simd::EightFloats;

void ClipEight(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix, bv::maths::VolumeAABBf const& box,
               EightRays& results)
{
    bv::maths::simd::AVXRay packet;
    packet.Initialise(rays);
    packet.Transform(matrix);
    EightFloats tNear;
    EightFloats tFar;
    std::memcpy(&tNear, results.tNear, sizeof tNear);
    std::memcpy(&tFar, results.tFar, sizeof tFar);
    EightFloats const mask = packet.Clip(box, tNear, tFar);
    std::memcpy(results.tNear, &tNear, sizeof tNear);
    std::memcpy(results.tFar, &tFar, sizeof tFar);
    std::memcpy(results.mask, &mask, sizeof mask);
    for (int axis = 0; axis < 3; ++axis)
    {
        std::memcpy(results.origin[axis], packet.GetOrigin() + axis, sizeof(EightFloats));
        std::memcpy(results.direction[axis], packet.GetDirection() + axis, sizeof(EightFloats));
        std::memcpy(results.inverse[axis], packet.GetInvDirection() + axis, sizeof(EightFloats));
    }
}

void MeetEight(bv::maths::DepthRayf const* rays, bv::maths::Vector3f const (&corners)[3], PacketMeetings& results)
{
    using bv::maths::simd::AVXRay;
    auto const& [a, b, c] = corners;
    AVXRay packet;
    packet.Initialise(rays);
    bv::maths::simd::tPacketHits<AVXRay> hits{};
    EightFloats const lo{};
    EightFloats const hi{100.0F, 100.0F, 100.0F, 100.0F, 100.0F, 100.0F, 100.0F, 100.0F};
    for (int test = 0; test < 2; ++test)
    {
        EightFloats const mask =
            test == 0 ? IntersectTriangle(packet, a, b, c, lo, hi, hits)
                      : IntersectTriangle(bv::maths::simd::tWatertightPacket<AVXRay>(packet), a, b, c, lo, hi, hits);
        std::memcpy(results.mask[test], &mask, sizeof mask);
        std::memcpy(results.hits[test][0], &hits.t, sizeof hits.t);
        std::memcpy(results.hits[test][1], &hits.u, sizeof hits.u);
        std::memcpy(results.hits[test][2], &hits.v, sizeof hits.v);
    }
}

} // namespace digest
