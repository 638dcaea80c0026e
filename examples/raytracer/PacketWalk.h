#pragma once

#include "Packets.h"
#include "bv/maths/simd/PacketTriangles.h"

namespace raytracer
{

/// As many rays as a register of the processor holds numbers, ready for boxes and triangles.
///
/// `Lanes` is of one source file only, so that what is compiled for AVX is reached from nowhere else. It has:
/// - `Rays`: SSERay or AVXRay;
/// - `GetMask(vector)`: the signs of its numbers, as bits.
template <typename Lanes>
class WidePacket
{
    using Rays = typename Lanes::Rays;
    using Vector = typename Rays::Vector;

public:
    explicit WidePacket(DepthRayf const* rays)
    {
        rays_.Initialise(rays);
        ready_ = bv::maths::simd::tWatertightPacket<Rays>(rays_);
    }
    void LoadReach(Hit const* hits)
    {
        for (std::size_t lane = 0; lane < Rays::WIDTH; ++lane)
            reach_[lane] = hits[lane].distance;
    }
    [[nodiscard]] unsigned Clip(VolumeAABBf const& box) const
    {
        Vector tNear{};
        Vector tFar = reach_;
        return Lanes::GetMask(rays_.Clip(box, tNear, tFar));
    }
    [[nodiscard]] unsigned Intersect(Corners const& triangle, Meeting& meeting) const
    {
        bv::maths::simd::tPacketHits<Rays> found{};
        unsigned const met =
            Lanes::GetMask(IntersectTriangle(ready_, triangle.a, triangle.b, triangle.c, Vector{}, reach_, found));
        __builtin_memcpy(meeting.t, &found.t, sizeof(Vector));
        __builtin_memcpy(meeting.u, &found.u, sizeof(Vector));
        __builtin_memcpy(meeting.v, &found.v, sizeof(Vector));
        return met;
    }

private:
    Rays rays_;
    bv::maths::simd::tWatertightPacket<Rays> ready_;
    Vector reach_;
};

/// Walks the hierarchy depth first, with a stack of boxes that are still to be looked at.
///
/// `Packet` is of one source file only, too. It has:
/// - `Packet(rays)`: takes the rays;
/// - `LoadReach(hits)`: takes how far each has to look;
/// - `Clip(box)`: which of its rays meet a box before that, as a mask;
/// - `Intersect(triangle, meeting)`: which of them meet a triangle before that, and where.
template <typename Packet>
void WalkWith(Walk const& walk)
{
    Packet packet(walk.rays);
    packet.LoadReach(walk.hits);
    for (std::size_t entry = 0; entry < walk.entryCount; ++entry)
    {
        std::uint32_t stack[Bvh::MAX_DEPTH];
        std::size_t size = 0;
        stack[size++] = walk.entries[entry];
        while (size > 0)
        {
            Node const& node = walk.nodes[stack[--size]];
            unsigned const marked = packet.Clip(node.box);
            if (marked == 0)
                continue;
            for (std::uint32_t index = node.first; index < node.first + node.count; ++index)
            {
                Meeting meeting;
                meeting.triangle = index;
                meeting.marked = marked & packet.Intersect(walk.triangles[index], meeting);
                if (meeting.marked == 0)
                    continue;
                walk.keep(meeting, walk.hits);
                packet.LoadReach(walk.hits);
            }
            if (node.count > 0)
                continue;
            stack[size++] = node.first + 1;
            stack[size++] = node.first;
        }
    }
}

} // namespace raytracer
