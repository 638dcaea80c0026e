// The one file that is compiled for AVX. Nothing in it may be reached on a processor without: it defines WalkAvx, and
// whatever else the compiler leaves in its object file stays private to it. A test looks at the object file.

#include "PacketWalk.h"
#include "bv/maths/simd/AVXRay.h"

namespace raytracer
{

namespace
{

class AvxPacket
{
public:
    void Load(DepthRayf const* rays, Hit const* hits)
    {
        rays_.Initialise(rays);
        LoadReach(hits);
    }
    void LoadReach(Hit const* hits)
    {
        reach_ = _mm256_setr_ps(hits[0].distance, hits[1].distance, hits[2].distance, hits[3].distance,
                                hits[4].distance, hits[5].distance, hits[6].distance, hits[7].distance);
    }
    [[nodiscard]] unsigned Clip(VolumeAABBf const& box) const
    {
        __m256 tNear = _mm256_setzero_ps();
        __m256 tFar = reach_;
        return static_cast<unsigned>(_mm256_movemask_ps(rays_.Clip(box, tNear, tFar)));
    }

private:
    bv::maths::simd::AVXRay rays_;
    __m256 reach_;
};

} // namespace

void WalkAvx(Walk const& walk)
{
    WalkWith<AvxPacket>(walk);
}

} // namespace raytracer
