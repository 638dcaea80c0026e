// The only file of the digest that is compiled for AVX: nothing of it may be shared with the others, so it calls what
// is forced inline and nothing else.
#include <immintrin.h>

#include <bv/maths/simd/AVXRay.h>
#include <bv/maths/simd/PacketTriangles.h>

#include "PacketsOfEight.h"

namespace digest
{

void ClipEight(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix, bv::maths::VolumeAABBf const& box,
               EightRays& results)
{
    bv::maths::simd::AVXRay packet;
    packet.Initialise(rays);
    packet.Transform(matrix);
    __m256 tNear = _mm256_loadu_ps(results.tNear);
    __m256 tFar = _mm256_loadu_ps(results.tFar);
    __m256 const mask = packet.Clip(box, tNear, tFar);
    _mm256_storeu_ps(results.tNear, tNear);
    _mm256_storeu_ps(results.tFar, tFar);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(results.mask), _mm256_castps_si256(mask));
    for (int axis = 0; axis < 3; ++axis)
    {
        _mm256_storeu_ps(results.origin[axis], packet.GetOrigin()[axis]);
        _mm256_storeu_ps(results.direction[axis], packet.GetDirection()[axis]);
        _mm256_storeu_ps(results.inverse[axis], packet.GetInvDirection()[axis]);
    }
}

void MeetEight(bv::maths::DepthRayf const* rays, bv::maths::Vector3f const (&corners)[3], PacketMeetings& results)
{
    using bv::maths::simd::AVXRay;
    auto const& [a, b, c] = corners;
    AVXRay packet;
    packet.Initialise(rays);
    bv::maths::simd::tPacketHits<AVXRay> hits{};
    __m256 const lo = _mm256_setzero_ps();
    __m256 const hi = _mm256_set1_ps(100.0F);
    for (int test = 0; test < 2; ++test)
    {
        __m256 const mask =
            test == 0 ? IntersectTriangle(packet, a, b, c, lo, hi, hits)
                      : IntersectTriangle(bv::maths::simd::tWatertightPacket<AVXRay>(packet), a, b, c, lo, hi, hits);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(results.mask[test]), _mm256_castps_si256(mask));
        _mm256_storeu_ps(results.hits[test][0], hits.t);
        _mm256_storeu_ps(results.hits[test][1], hits.u);
        _mm256_storeu_ps(results.hits[test][2], hits.v);
    }
}

} // namespace digest
