#include <algorithm>
#include <bv/maths/simd/SSERay.h>
#include <bv/maths/tDepthRay.h>
#include <cstdint>
#include <cstring>
#include <span>

#include "PacketsOfEight.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// Calls `use(rays, matrix, box, tNear, tFar)` with eight of each.
template <typename Use>
void ForPackets(Workload& work, Use use)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 4000; ++i)
        {
            DepthRayf rays[8];
            float tNear[8];
            float tFar[8];
            for (int k = 0; k < 8; ++k)
            {
                rays[k].origin = work.Vector3<float>(rarity);
                rays[k].direction = work.Direction<float>(rarity);
                tNear[k] = work.OneIn(2) ? 0.0F : work.Number<float>(rarity);
                tFar[k] = work.OneIn(2) ? 100.0F : work.Number<float>(rarity);
            }
            Matrix4f const matrix = work.OneIn(2) ? Matrix4f() : work.AnyMatrix<float>(rarity);
            VolumeAABBf const box = work.Volume<float>(rarity);
            use(rays, matrix, box, tNear, tFar);
        }
}

void SsePackets(Digests& digests, Workload& work)
{
    auto const addLanes = [](Digest& digest, simd::FourFloats const& lanes)
    {
        float values[4];
        std::memcpy(values, &lanes, sizeof lanes);
        digest.Add(values[0], values[1], values[2], values[3]);
    };
    ForPackets(work,
               [&](DepthRayf const* rays, Matrix4f const& matrix, VolumeAABBf const& box, float const* tNear,
                   float const* tFar)
               {
                   for (int half = 0; half < 8; half += 4)
                   {
                       simd::SSERay packet;
                       packet.Initialise(rays + half);
                       packet.Transform(matrix);
                       simd::FourFloats lo;
                       simd::FourFloats hi;
                       std::memcpy(&lo, tNear + half, sizeof lo);
                       std::memcpy(&hi, tFar + half, sizeof hi);
                       simd::FourFloats const hit = packet.Clip(box, lo, hi);
                       std::uint32_t mask[4];
                       std::memcpy(mask, &hit, sizeof hit);
                       Digest& clip = digests["clip"];
                       clip.Add(mask[0], mask[1], mask[2], mask[3]);
                       addLanes(clip, lo);
                       addLanes(clip, hi);
                       Digest& transform = digests["transform"];
                       for (int axis = 0; axis < 3; ++axis)
                       {
                           addLanes(transform, packet.GetOrigin()[axis]);
                           addLanes(transform, packet.GetDirection()[axis]);
                           addLanes(transform, packet.GetInvDirection()[axis]);
                       }
                   }
                   tRay<float> plain[8];
                   std::copy(rays, rays + 8, plain);
                   simd::SSERay filled[2];
                   digests["filling"].Try(
                       [&]
                       {
                           simd::FillPackets(std::span(plain, 7), filled);
                           return 7;
                       });
                   for (simd::SSERay const& packet : filled)
                       for (int axis = 0; axis < 3; ++axis)
                       {
                           addLanes(digests["filling"], packet.GetOrigin()[axis]);
                           addLanes(digests["filling"], packet.GetInvDirection()[axis]);
                       }
               });
}

/// How packets are filled with more or fewer rays than they take.
void Misfits(Digest& digest, Workload&)
{
    tRay<float> const rays[9];
    simd::SSERay packets[3];
    for (std::size_t length = 0; length <= 9; ++length)
        for (std::size_t count = 0; count <= 3; ++count)
            digest.Try(
                [&]
                {
                    simd::FillPackets(std::span(rays, length), std::span(packets, count));
                    return length;
                });
}

void AvxPackets(Digests& digests, Workload& work)
{
    ForPackets(work,
               [&](DepthRayf const* rays, Matrix4f const& matrix, VolumeAABBf const& box, float const* tNear,
                   float const* tFar)
               {
                   EightRays results{};
                   for (int k = 0; k < 8; ++k)
                   {
                       results.tNear[k] = tNear[k];
                       results.tFar[k] = tFar[k];
                   }
                   ClipEight(rays, matrix, box, results);
                   for (int k = 0; k < 8; ++k)
                   {
                       digests["clip"].Add(results.mask[k], results.tNear[k], results.tFar[k]);
                       for (int axis = 0; axis < 3; ++axis)
                           digests["transform"].Add(results.origin[axis][k], results.direction[axis][k],
                                                    results.inverse[axis][k]);
                   }
               });
}

} // namespace

void RunRayPackets()
{
    Run("packets-sse", SsePackets, ".float");
    Run("packets-filled", Misfits, ".float");
    if (HasEightLanes())
        Run("packets-avx", AvxPackets, ".float");
}

} // namespace digest
