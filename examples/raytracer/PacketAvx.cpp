// The one file that is compiled for AVX. Nothing in it may be reached on a processor without: it defines WalkAvx, and
// whatever else the compiler leaves in its object file stays private to it. A test looks at the object file.

#include "PacketWalk.h"
#include "bv/maths/simd/AVXRay.h"

namespace raytracer
{

namespace
{

struct AvxLanes
{
    using Rays = bv::maths::simd::AVXRay;
    static unsigned GetMask(__m256 vector) { return static_cast<unsigned>(_mm256_movemask_ps(vector)); }
};

} // namespace

void WalkAvx(Walk const& walk)
{
    WalkWith<WidePacket<AvxLanes>>(walk);
}

} // namespace raytracer
