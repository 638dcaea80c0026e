#include "Packets.h"

#include "UserError.h"

namespace raytracer
{

Packets ChoosePackets(PacketKind kind)
{
    bool const hasAvx = __builtin_cpu_supports("avx") != 0;
    switch (kind)
    {
    case PacketKind::Scalar:
        return {"scalar", 1, WalkScalar};
    case PacketKind::Auto:
        if (!hasAvx)
            return {"sse", 4, WalkSse};
        break;
    case PacketKind::Sse:
        return {"sse", 4, WalkSse};
    case PacketKind::Avx:
        if (!hasAvx)
            throw UserError("--packet: this processor has no AVX, choose sse or scalar");
        break;
    }
    return {"avx", 8, WalkAvx};
}

} // namespace raytracer
