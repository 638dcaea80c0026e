// The packets of the ray tracer for processors but x86, and for plain C++: four and eight rays at a time in whatever
// holds the lanes there.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "PacketWalk.h"
#include "Packets.h"
#include "bv/maths/simd/AVXRay.h"
#include "bv/maths/simd/SSERay.h"

namespace raytracer
{

namespace
{

template <typename Packet>
struct Lanes
{
    using Rays = Packet;
    static unsigned GetMask(typename Rays::Vector const& vector)
    {
        auto const numbers = std::bit_cast<std::array<std::uint32_t, Rays::WIDTH>>(vector);
        unsigned mask = 0;
        for (std::size_t i = 0; i < numbers.size(); ++i)
            mask |= numbers[i] >> 31 << i;
        return mask;
    }
};

} // namespace

void WalkSse(Walk const& walk)
{
    WalkWith<WidePacket<Lanes<bv::maths::simd::SSERay>>>(walk);
}

void WalkAvx(Walk const& walk)
{
    WalkWith<WidePacket<Lanes<bv::maths::simd::AVXRay>>>(walk);
}

Packets ChoosePackets(PacketKind kind)
{
    switch (kind)
    {
    case PacketKind::Scalar:
        return {"scalar", 1, WalkScalar};
    case PacketKind::Sse:
        return {"sse", 4, WalkSse};
    case PacketKind::Auto:
    case PacketKind::Avx:
        break;
    }
    return {"avx", 8, WalkAvx};
}

} // namespace raytracer
