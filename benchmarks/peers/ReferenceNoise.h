#pragma once

/// @file
/// Improved noise as its author published it, in `float` and C++: what one would write without a library.

#include <array>
#include <cmath>
#include <cstddef>

namespace bench::peers
{

/// Any permutation takes the same time; this one is shuffled by a linear congruential generator.
inline constexpr std::array<int, 512> SHUFFLED = []()
{
    std::array<int, 512> table{};
    for (int i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = i;
    unsigned int state = 1;
    for (std::size_t i = 255; i > 0; --i)
    {
        state = state * 1664525U + 1013904223U;
        std::size_t const other = (state >> 16) % (i + 1);
        int const kept = table[i];
        table[i] = table[other];
        table[other] = kept;
    }
    for (std::size_t i = 0; i < 256; ++i)
        table[i + 256] = table[i];
    return table;
}();

inline float Fade(float t)
{
    return t * t * t * (t * (t * 6.0F - 15.0F) + 10.0F);
}

inline float Lerp(float t, float a, float b)
{
    return a + t * (b - a);
}

inline int PermuteAt(int index)
{
    return SHUFFLED[static_cast<std::size_t>(index)];
}

inline float Gradient(int hash, float x, float y, float z)
{
    int const h = hash & 15;
    float const u = h < 8 ? x : y;
    float const v = h < 4 ? y : h == 12 || h == 14 ? x : z;
    return ((h & 1) == 0 ? u : -u) + ((h & 2) == 0 ? v : -v);
}

inline float ReferenceNoise(float x)
{
    float const floor = std::floor(x);
    int const cell = static_cast<int>(floor) & 255;
    x -= floor;
    return Lerp(Fade(x), Gradient(PermuteAt(PermuteAt(PermuteAt(cell))), x, 0, 0),
                Gradient(PermuteAt(PermuteAt(PermuteAt(cell + 1))), x - 1, 0, 0));
}

inline float ReferenceNoise(float x, float y)
{
    float const floorX = std::floor(x);
    float const floorY = std::floor(y);
    int const cellX = static_cast<int>(floorX) & 255;
    int const cellY = static_cast<int>(floorY) & 255;
    x -= floorX;
    y -= floorY;
    float const u = Fade(x);
    int const a = PermuteAt(cellX) + cellY;
    int const b = PermuteAt(cellX + 1) + cellY;
    return Lerp(Fade(y),
                Lerp(u, Gradient(PermuteAt(PermuteAt(a)), x, y, 0), Gradient(PermuteAt(PermuteAt(b)), x - 1, y, 0)),
                Lerp(u, Gradient(PermuteAt(PermuteAt(a + 1)), x, y - 1, 0),
                     Gradient(PermuteAt(PermuteAt(b + 1)), x - 1, y - 1, 0)));
}

inline float ReferenceNoise(float x, float y, float z)
{
    float const floorX = std::floor(x);
    float const floorY = std::floor(y);
    float const floorZ = std::floor(z);
    int const cellX = static_cast<int>(floorX) & 255;
    int const cellY = static_cast<int>(floorY) & 255;
    int const cellZ = static_cast<int>(floorZ) & 255;
    x -= floorX;
    y -= floorY;
    z -= floorZ;
    float const u = Fade(x);
    float const v = Fade(y);
    int const a = PermuteAt(cellX) + cellY;
    int const aa = PermuteAt(a) + cellZ;
    int const ab = PermuteAt(a + 1) + cellZ;
    int const b = PermuteAt(cellX + 1) + cellY;
    int const ba = PermuteAt(b) + cellZ;
    int const bb = PermuteAt(b + 1) + cellZ;
    return Lerp(
        Fade(z),
        Lerp(v, Lerp(u, Gradient(PermuteAt(aa), x, y, z), Gradient(PermuteAt(ba), x - 1, y, z)),
             Lerp(u, Gradient(PermuteAt(ab), x, y - 1, z), Gradient(PermuteAt(bb), x - 1, y - 1, z))),
        Lerp(v, Lerp(u, Gradient(PermuteAt(aa + 1), x, y, z - 1), Gradient(PermuteAt(ba + 1), x - 1, y, z - 1)),
             Lerp(u, Gradient(PermuteAt(ab + 1), x, y - 1, z - 1), Gradient(PermuteAt(bb + 1), x - 1, y - 1, z - 1))));
}

/// A sum over octaves with the weights 1, 1/2, 1/4 and so on, which is what the peers offer.
inline float ReferenceTurbulence(float x, float y, float z, int octaves)
{
    float sum = 0;
    float amplitude = 1;
    for (int octave = 0; octave < octaves; ++octave)
    {
        sum += ReferenceNoise(x, y, z) * amplitude;
        x *= 2;
        y *= 2;
        z *= 2;
        amplitude *= 0.5F;
    }
    return sum;
}

} // namespace bench::peers
