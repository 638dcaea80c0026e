// The packets of the ray tracer for WebAssembly: single rays, and four at a time in its 128-bit vectors.

#include <wasm_simd128.h>

#include "PacketWalk.h"
#include "Packets.h"
#include "bv/maths/simd/SSERay.h"

namespace raytracer
{

namespace
{

struct FourLanes
{
    using Rays = bv::maths::simd::SSERay;
    static unsigned GetMask(Rays::Vector vector) { return wasm_i32x4_bitmask(__builtin_bit_cast(v128_t, vector)); }
};

void WalkFour(Walk const& walk)
{
    WalkWith<WidePacket<FourLanes>>(walk);
}

} // namespace

Packets ChoosePackets(PacketKind kind)
{
    return kind == PacketKind::Scalar ? Packets{"scalar", 1, WalkScalar} : Packets{"simd128", 4, WalkFour};
}

} // namespace raytracer
