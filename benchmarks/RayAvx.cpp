// The packets of eight: a file of its own, compiled for AVX.

#include "bv/maths/simd/AVXRay.h"

#include "PacketMeetings.h"
#include "RayPackets.h"

namespace bench::avx
{

namespace
{

using bv::maths::simd::AVXRay;

[[gnu::always_inline]] inline int Clip(AVXRay const& packet, bv::maths::VolumeAABBf const& box)
{
    __m256 tNear = _mm256_setzero_ps();
    __m256 tFar = _mm256_set1_ps(1000.0F);
    return _mm256_movemask_ps(packet.Clip(box, tNear, tFar));
}

} // namespace

void MakePackets(float const* rays, std::size_t count, float* packets)
{
    auto* const made = reinterpret_cast<AVXRay*>(packets);
    for (std::size_t i = 0; i < count; ++i)
    {
        bv::maths::DepthRayf group[EIGHT];
        for (bv::maths::DepthRayf& ray : group)
        {
            ray.origin = {rays[0], rays[1], rays[2]};
            ray.direction = {rays[3], rays[4], rays[5]};
            rays += 6;
        }
        made[i].Initialise(group);
    }
}

void ClipPackets(float const* packets, std::size_t count, float const* box, int* masks)
{
    auto const* const all = reinterpret_cast<AVXRay const*>(packets);
    bv::maths::VolumeAABBf const one({box[0], box[1], box[2]}, {box[3], box[4], box[5]});
    for (std::size_t i = 0; i < count; ++i)
        masks[i] = Clip(all[i], one);
}

void ClipBoxes(float const* packet, float const* boxes, std::size_t count, int* masks)
{
    auto const& one = *reinterpret_cast<AVXRay const*>(packet);
    auto const* const all = reinterpret_cast<bv::maths::VolumeAABBf const*>(boxes);
    for (std::size_t i = 0; i < count; ++i)
        masks[i] = Clip(one, all[i]);
}

void MeetTriangles(float const* rays, float const* triangles, std::size_t count, float* results)
{
    MeetAll<AVXRay>(LoadPacket<AVXRay>(rays), triangles, count, results);
}

void MeetMesh(float const* rays, float const* triangles, std::size_t count, float* results)
{
    bv::maths::simd::tWatertightPacket<AVXRay> const ready(LoadPacket<AVXRay>(rays));
    MeetAll<AVXRay>(ready, triangles, count, results);
}

} // namespace bench::avx
