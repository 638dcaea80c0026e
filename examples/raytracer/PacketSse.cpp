#include "PacketWalk.h"
#include "bv/maths/simd/SSERay.h"

namespace raytracer
{

namespace
{

class SsePacket
{
public:
    void Load(DepthRayf const* rays, Hit const* hits)
    {
        rays_.Initialise(rays);
        LoadReach(hits);
    }
    void LoadReach(Hit const* hits)
    {
        reach_ = _mm_setr_ps(hits[0].distance, hits[1].distance, hits[2].distance, hits[3].distance);
    }
    [[nodiscard]] unsigned Clip(VolumeAABBf const& box) const
    {
        __m128 tNear = _mm_setzero_ps();
        __m128 tFar = reach_;
        return static_cast<unsigned>(_mm_movemask_ps(rays_.Clip(box, tNear, tFar)));
    }

private:
    bv::maths::simd::SSERay rays_;
    __m128 reach_;
};

} // namespace

void WalkSse(Walk const& walk)
{
    WalkWith<SsePacket>(walk);
}

} // namespace raytracer
