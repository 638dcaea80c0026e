#include "bv/maths/Noise.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "bv/maths/Scalar.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace
{

/// The reference permutation of 0 to 255.
constexpr std::int32_t REFERENCE_PERMUTATION[] = {
    // clang-format off
    151, 160, 137, 91, 90, 15, 131, 13, 201, 95, 96, 53, 194, 233, 7, 225,
    140, 36, 103, 30, 69, 142, 8, 99, 37, 240, 21, 10, 23, 190, 6, 148,
    247, 120, 234, 75, 0, 26, 197, 62, 94, 252, 219, 203, 117, 35, 11, 32,
    57, 177, 33, 88, 237, 149, 56, 87, 174, 20, 125, 136, 171, 168, 68, 175,
    74, 165, 71, 134, 139, 48, 27, 166, 77, 146, 158, 231, 83, 111, 229, 122,
    60, 211, 133, 230, 220, 105, 92, 41, 55, 46, 245, 40, 244, 102, 143, 54,
    65, 25, 63, 161, 1, 216, 80, 73, 209, 76, 132, 187, 208, 89, 18, 169,
    200, 196, 135, 130, 116, 188, 159, 86, 164, 100, 109, 198, 173, 186, 3, 64,
    52, 217, 226, 250, 124, 123, 5, 202, 38, 147, 118, 126, 255, 82, 85, 212,
    207, 206, 59, 227, 47, 16, 58, 17, 182, 189, 28, 42, 223, 183, 170, 213,
    119, 248, 152, 2, 44, 154, 163, 70, 221, 153, 101, 155, 167, 43, 172, 9,
    129, 22, 39, 253, 19, 98, 108, 110, 79, 113, 224, 232, 178, 185, 112, 104,
    218, 246, 97, 228, 251, 34, 242, 193, 238, 210, 144, 12, 191, 179, 162, 241,
    81, 51, 145, 235, 249, 14, 239, 107, 49, 192, 214, 31, 181, 199, 106, 157,
    184, 84, 204, 176, 115, 121, 50, 45, 127, 4, 150, 254, 138, 236, 205, 93,
    222, 114, 67, 29, 24, 72, 243, 141, 128, 195, 78, 66, 215, 61, 156, 180,
    // clang-format on
};

/// The permutation twice in a row, so that sums of two entries, and the entry behind, need no wrapping.
constexpr std::array<std::int32_t, 512> PERMUTATION = []()
{
    std::array<std::int32_t, 512> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = REFERENCE_PERMUTATION[i % 256];
    return table;
}();

struct alignas(16) Direction
{
    float x;
    float y;
    float z;
};

/// The gradients by the low four bits of a hash: the middles of the twelve edges of a cube, four of them twice.
///
/// A product with one of these has the bits of the reference's selection, plus or minus one coordinate, plus or minus
/// another, without its branches: the third term is a zero. Only the sign of a zero sum can differ, which the final
/// shift by 1 absorbs; and where a coordinate is NaN, its own weight makes the result NaN, too.
constexpr Direction DIRECTIONS[16] = {
    {1, 1, 0}, {-1, 1, 0}, {1, -1, 0}, {-1, -1, 0}, //
    {1, 0, 1}, {-1, 0, 1}, {1, 0, -1}, {-1, 0, -1}, //
    {0, 1, 1}, {0, -1, 1}, {0, 1, -1}, {0, -1, -1}, //
    {1, 1, 0}, {0, -1, 1}, {-1, 1, 0}, {0, -1, -1},
};

constexpr unsigned int MAX_OCTAVES = 10;

/// The weight of the first of n octaves, each half as heavy as the one before, for which the weights add up to 1:
/// 2^(n-1) / (2^n - 1).
constexpr std::array<float, MAX_OCTAVES + 1> AMPLITUDES = []()
{
    std::array<float, MAX_OCTAVES + 1> table{1.0F};
    for (std::size_t n = 1; n < table.size(); ++n)
    {
        double const power = static_cast<double>(1U << n);
        table[n] = static_cast<float>(0.5 * power / (power - 1.0));
    }
    return table;
}();

/// Where a coordinate lies on the lattice.
struct Position
{
    std::int32_t cell; ///< from 0 to 255
    float fraction;    ///< from the lower end of the cell, in [0, 1]
};

/// The floor without a library call. The conversion is reached only where it is defined; every coordinate beyond is a
/// whole number, infinite or NaN, and the difference is 0 or NaN. A fraction of -0, from -0, is as good as 0.
inline Position Locate(float coordinate) noexcept
{
    constexpr float LIMIT = 2147483648.0F;
    if (!(coordinate >= -LIMIT && coordinate < LIMIT))
        return {0, coordinate - coordinate};
    std::int32_t floor = static_cast<std::int32_t>(coordinate);
    floor -= static_cast<float>(floor) > coordinate ? 1 : 0;
    return {floor & 255, coordinate - static_cast<float>(floor)};
}

inline std::int32_t Permute(std::int32_t index) noexcept
{
    return PERMUTATION[static_cast<std::size_t>(index)];
}

/// The gradient at a lattice point whose last but one hash is given.
inline Direction const& GradientAt(std::int32_t hash) noexcept
{
    return DIRECTIONS[Permute(hash) & 15];
}

inline float Dot(Direction const& gradient, float x) noexcept
{
    return gradient.x * x;
}

inline float Dot(Direction const& gradient, float x, float y) noexcept
{
    return gradient.x * x + gradient.y * y;
}

inline float Dot(Direction const& gradient, float x, float y, float z) noexcept
{
    return gradient.x * x + gradient.y * y + gradient.z * z;
}

inline float Fade(float fraction) noexcept
{
    return QuinticSmoothStep(0.0F, 1.0F, fraction);
}

inline float Lerp(float t, float a, float b) noexcept
{
    return (b - a) * t + a;
}

/// From [-1, 1] to [0, 1].
inline float ToUnitInterval(float noise) noexcept
{
    return (noise + 1.0F) * 0.5F;
}

inline float Noise(float coordinate) noexcept
{
    auto const [cell, x] = Locate(coordinate);
    float const low = Dot(GradientAt(Permute(Permute(cell))), x);
    float const high = Dot(GradientAt(Permute(Permute(cell + 1))), x - 1.0F);
    return ToUnitInterval(Lerp(Fade(x), low, high));
}

inline float Noise(tVector2<float> const& point) noexcept
{
    auto const [cellX, x] = Locate(point.x);
    auto const [cellY, y] = Locate(point.y);
    float const fadeX = Fade(x);

    std::int32_t const a = Permute(cellX) + cellY;
    std::int32_t const b = Permute(cellX + 1) + cellY;
    float const low = Lerp(fadeX, Dot(GradientAt(Permute(a)), x, y), Dot(GradientAt(Permute(b)), x - 1.0F, y));
    float const high =
        Lerp(fadeX, Dot(GradientAt(Permute(a + 1)), x, y - 1.0F), Dot(GradientAt(Permute(b + 1)), x - 1.0F, y - 1.0F));
    return ToUnitInterval(Lerp(Fade(y), low, high));
}

inline float Noise(tVector3<float> const& point) noexcept
{
    auto const [cellX, x] = Locate(point.x);
    auto const [cellY, y] = Locate(point.y);
    auto const [cellZ, z] = Locate(point.z);
    float const fadeX = Fade(x);
    float const fadeY = Fade(y);

    std::int32_t const a = Permute(cellX) + cellY;
    std::int32_t const aa = Permute(a) + cellZ;
    std::int32_t const ab = Permute(a + 1) + cellZ;
    std::int32_t const b = Permute(cellX + 1) + cellY;
    std::int32_t const ba = Permute(b) + cellZ;
    std::int32_t const bb = Permute(b + 1) + cellZ;

    float const g000 = Dot(GradientAt(aa), x, y, z);
    float const g100 = Dot(GradientAt(ba), x - 1.0F, y, z);
    float const g010 = Dot(GradientAt(ab), x, y - 1.0F, z);
    float const g110 = Dot(GradientAt(bb), x - 1.0F, y - 1.0F, z);
    float const g001 = Dot(GradientAt(aa + 1), x, y, z - 1.0F);
    float const g101 = Dot(GradientAt(ba + 1), x - 1.0F, y, z - 1.0F);
    float const g011 = Dot(GradientAt(ab + 1), x, y - 1.0F, z - 1.0F);
    float const g111 = Dot(GradientAt(bb + 1), x - 1.0F, y - 1.0F, z - 1.0F);

    float const low = Lerp(fadeY, Lerp(fadeX, g000, g100), Lerp(fadeX, g010, g110));
    float const high = Lerp(fadeY, Lerp(fadeX, g001, g101), Lerp(fadeX, g011, g111));
    return ToUnitInterval(Lerp(Fade(z), low, high));
}

template <typename Point>
float Turbulence(Point point, unsigned int octaves) noexcept
{
    unsigned int const count = std::min(octaves, MAX_OCTAVES);
    float amplitude = AMPLITUDES[count];
    float sum = 0.0F;
    for (unsigned int octave = 0; octave < count; ++octave)
    {
        sum = sum + Noise(point) * amplitude;
        point = point * 2.0F;
        amplitude = amplitude * 0.5F;
    }
    return sum;
}

} // namespace

float Noise1(float x) noexcept
{
    return Noise(x);
}

float Noise2(tVector2<float> const& point) noexcept
{
    return Noise(point);
}

float Noise3(tVector3<float> const& point) noexcept
{
    return Noise(point);
}

float Turbulence1(float x, unsigned int octaves) noexcept
{
    return Turbulence(x, octaves);
}

float Turbulence2(tVector2<float> const& point, unsigned int octaves) noexcept
{
    return Turbulence(point, octaves);
}

float Turbulence3(tVector3<float> const& point, unsigned int octaves) noexcept
{
    return Turbulence(point, octaves);
}

} // namespace bv::maths
