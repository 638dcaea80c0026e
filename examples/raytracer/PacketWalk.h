#pragma once

#include "Packets.h"

namespace raytracer
{

/// Walks the hierarchy depth first, with a stack of boxes that are still to be looked at.
///
/// `Packet` is of one source file only, so that what is compiled for AVX is reached from nowhere else. It has:
/// - `Load(rays, hits)`: takes the rays and how far each has to look;
/// - `LoadReach(hits)`: takes that distance again, after a leaf may have shortened it;
/// - `Clip(box)`: which of its rays meet a box before their distance, as a mask.
template <typename Packet>
void WalkWith(Walk const& walk)
{
    Packet packet;
    packet.Load(walk.rays, walk.hits);
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
            if (node.count > 0)
            {
                (walk.bvh->*walk.leaf)(node, walk.rays, marked, walk.hits);
                packet.LoadReach(walk.hits);
                continue;
            }
            stack[size++] = node.first + 1;
            stack[size++] = node.first;
        }
    }
}

} // namespace raytracer
