// The only file of the digest that is compiled for AVX: nothing of it may be shared with the others, so it calls what
// is forced inline and nothing else.
#include <immintrin.h>

#include <bv/maths/simd/AVXRay.h>

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

} // namespace digest
