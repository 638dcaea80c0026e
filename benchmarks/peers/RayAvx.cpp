// The test of eight rays by hand, with the operands of each minimum and maximum the way round that the library has
// them: a file of its own, compiled for AVX.

#include <immintrin.h>

#include "RayPackets.h"
#include "peers/PacketKernels.h"

namespace bench::peers::avx
{

namespace
{

[[gnu::always_inline]] inline int Clip(__m256 const* origin, __m256 const* inverse, float const* box)
{
    __m256 const margin = _mm256_set1_ps(0x1.4p-20F);
    __m256 const xBelow = _mm256_add_ps(origin[0], margin);
    __m256 const xAbove = _mm256_sub_ps(origin[0], margin);
    __m256 const zBelow = _mm256_add_ps(origin[2], margin);
    __m256 const zAbove = _mm256_sub_ps(origin[2], margin);

    __m256 const x1 = _mm256_mul_ps(_mm256_sub_ps(_mm256_broadcast_ss(box), xBelow), inverse[0]);
    __m256 const x2 = _mm256_mul_ps(_mm256_sub_ps(_mm256_broadcast_ss(box + 3), xAbove), inverse[0]);
    __m256 const y1 = _mm256_mul_ps(_mm256_sub_ps(_mm256_broadcast_ss(box + 1), origin[1]), inverse[1]);
    __m256 const y2 = _mm256_mul_ps(_mm256_sub_ps(_mm256_broadcast_ss(box + 4), origin[1]), inverse[1]);
    __m256 const z1 = _mm256_mul_ps(_mm256_sub_ps(_mm256_broadcast_ss(box + 2), zBelow), inverse[2]);
    __m256 const z2 = _mm256_mul_ps(_mm256_sub_ps(_mm256_broadcast_ss(box + 5), zAbove), inverse[2]);

    __m256 tNear = _mm256_max_ps(_mm256_setzero_ps(), _mm256_min_ps(x1, x2));
    __m256 tFar = _mm256_min_ps(_mm256_set1_ps(1000.0F), _mm256_max_ps(x1, x2));
    tNear = _mm256_max_ps(tNear, _mm256_min_ps(y1, y2));
    tFar = _mm256_min_ps(tFar, _mm256_max_ps(y1, y2));
    tNear = _mm256_max_ps(tNear, _mm256_min_ps(z1, z2));
    tFar = _mm256_min_ps(tFar, _mm256_max_ps(z1, z2));
    return _mm256_movemask_ps(_mm256_cmp_ps(tNear, tFar, _CMP_LE_OS));
}

} // namespace

void MakePackets(float const* rays, std::size_t count, float* packets)
{
    for (std::size_t i = 0; i < count * EIGHT; ++i)
    {
        float* const packet = packets + i / EIGHT * EIGHT_NUMBERS + i % EIGHT;
        for (std::size_t j = 0; j < 6; ++j)
            packet[j * EIGHT] = rays[6 * i + j];
        for (std::size_t j = 3; j < 6; ++j)
            packet[(j + 3) * EIGHT] = 1.0F / rays[6 * i + j];
    }
}

void ClipPackets(float const* packets, std::size_t count, float const* box, int* masks)
{
    for (std::size_t i = 0; i < count; ++i)
    {
        auto const* const packet = reinterpret_cast<__m256 const*>(packets + i * EIGHT_NUMBERS);
        masks[i] = Clip(packet, packet + 6, box);
    }
}

void ClipBoxes(float const* packet, float const* boxes, std::size_t count, int* masks)
{
    auto const* const vectors = reinterpret_cast<__m256 const*>(packet);
    for (std::size_t i = 0; i < count; ++i)
        masks[i] = Clip(vectors, vectors + 6, boxes + 6 * i);
}

void MeetTriangles(float const* rays, float const* triangles, std::size_t count, float* results)
{
    MeetTrianglesByHand<__m256>(rays, triangles, count, results);
}

void MeetMesh(float const* rays, float const* triangles, std::size_t count, float* results)
{
    MeetMeshByHand<__m256>(rays, triangles, count, results);
}

} // namespace bench::peers::avx
