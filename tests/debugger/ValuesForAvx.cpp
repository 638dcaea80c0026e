/// The values of Values.cpp for the packets of eight rays, in a program for processors that have AVX.

#include "bv/maths/simd/AVXRay.h"
#include "bv/maths/simd/PacketTriangles.h"

#include <array>

using namespace bv::maths;

namespace
{

[[gnu::noinline]] void Stop()
{
    __asm__ volatile("" : : : "memory");
}

void ShowPacketsOfEight()
{
    using Ray = tDepthRay<float, bv::IRayPayloadInternal>;
    std::array<Ray, 8> rays;
    for (std::size_t i = 0; i < rays.size(); ++i)
        rays[i] = Ray({static_cast<float>(i), 0, 0}, {1, 1, 2});
    simd::AVXRay packetOfEight;
    packetOfEight.Initialise(rays.data());
    simd::tWatertightPacket<simd::AVXRay> const watertightPacketOfEight(packetOfEight);
    Stop();
}

} // namespace

int main()
{
    ShowPacketsOfEight();
}
