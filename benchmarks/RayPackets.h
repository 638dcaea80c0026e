#pragma once

/// @file
/// Loops over packets of rays whose bodies stand in files compiled for AVX. They take and give plain memory, so that
/// nothing else of these files is compiled for AVX.

#include <cstddef>
#include <memory>
#include <new>

#include "Bench.h"

namespace bench
{

/// Lanes of the widest packet.
inline constexpr std::size_t EIGHT = 8;
/// Numbers in a packet of eight: origin, direction and its reciprocal, three vectors each.
inline constexpr std::size_t EIGHT_NUMBERS = 9 * EIGHT;
/// Packets in an array of them.
inline constexpr std::size_t EIGHT_COUNT = COUNT / EIGHT;

namespace avx
{
/// Loads packets from rays of six numbers each.
void MakePackets(float const* rays, std::size_t count, float* packets);
/// One box against each packet: its hits as a mask of eight bits.
void ClipPackets(float const* packets, std::size_t count, float const* box, int* masks);
/// One packet against each box.
void ClipBoxes(float const* packet, float const* boxes, std::size_t count, int* masks);
/// Eight rays of six numbers each against triangles of nine: parameters, or -1.
void MeetTriangles(float const* rays, float const* triangles, std::size_t count, float* results);
/// The same so that no ray slips through a closed mesh.
void MeetMesh(float const* rays, float const* triangles, std::size_t count, float* results);
} // namespace avx

namespace peers::avx
{
void MakePackets(float const* rays, std::size_t count, float* packets);
void ClipPackets(float const* packets, std::size_t count, float const* box, int* masks);
void ClipBoxes(float const* packet, float const* boxes, std::size_t count, int* masks);
void MeetTriangles(float const* rays, float const* triangles, std::size_t count, float* results);
void MeetMesh(float const* rays, float const* triangles, std::size_t count, float* results);
} // namespace peers::avx

/// Adds the rows of the packets of eight.
inline void AddEightRays(char const* library, decltype(avx::MakePackets)* makePackets,
                         decltype(avx::ClipPackets)* clipPackets, decltype(avx::ClipBoxes)* clipBoxes,
                         std::vector<double> const& rays, std::vector<double> const& boxes)
{
    if (!__builtin_cpu_supports("avx"))
        return;
    constexpr std::align_val_t ALIGNMENT{32};
    std::shared_ptr<float> const packets(new (ALIGNMENT) float[EIGHT_COUNT * EIGHT_NUMBERS],
                                         [](float* memory) { operator delete[](memory, ALIGNMENT); });
    makePackets(std::vector<float>(rays.begin(), rays.end()).data(), EIGHT_COUNT, packets.get());
    std::vector<float> const corners(boxes.begin(), boxes.end());
    std::shared_ptr<int[]> const masks(new int[COUNT]());
    AddRun(Name<float>("ray/eight rays, one box", library), EIGHT_COUNT,
           [=] { clipPackets(packets.get(), EIGHT_COUNT, corners.data(), masks.get()); });
    AddRun(Name<float>("ray/eight rays, many boxes", library), COUNT,
           [=] { clipBoxes(packets.get(), corners.data(), COUNT, masks.get()); });
}

} // namespace bench
