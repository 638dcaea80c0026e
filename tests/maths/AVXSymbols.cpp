// Every operation of the packets in code that is compiled for AVX, and nothing else: avx_symbols.py looks at what this
// file defines.

#include "bv/maths/simd/AVXRay.h"
#include "bv/maths/simd/SSERay.h"

namespace symbols
{

template <typename Packet>
typename Packet::Vector UseEverything(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix,
                                      bv::maths::VolumeAABBf const& box, typename Packet::Vector (&t)[2])
{
    Packet packet;
    packet.Initialise(rays);
    Packet copy = packet;
    packet = copy.Transform(matrix);
    return packet.Clip(box, t[0], t[1]) + packet.GetOrigin()[0] + packet.GetDirection()[1] +
           packet.GetInvDirection()[2];
}

void UseBoth(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix, bv::maths::VolumeAABBf const& box,
             __m256 (&eight)[2], __m128 (&four)[2])
{
    eight[0] = UseEverything<bv::maths::simd::AVXRay>(rays, matrix, box, eight);
    four[0] = UseEverything<bv::maths::simd::SSERay>(rays, matrix, box, four);
}

} // namespace symbols
