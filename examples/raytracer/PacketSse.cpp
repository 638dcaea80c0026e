#include "PacketWalk.h"
#include "bv/maths/simd/SSERay.h"

namespace raytracer
{

namespace
{

struct SseLanes
{
    using Rays = bv::maths::simd::SSERay;
    static unsigned GetMask(__m128 vector) { return static_cast<unsigned>(_mm_movemask_ps(vector)); }
};

} // namespace

void WalkSse(Walk const& walk)
{
    WalkWith<WidePacket<SseLanes>>(walk);
}

} // namespace raytracer
