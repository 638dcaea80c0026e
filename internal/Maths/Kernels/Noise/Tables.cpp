#include "Maths/Kernels/Noise/Tables.h"

#include <cstddef>
#include <iterator>

namespace bv::maths
{

namespace
{

/// The reference permutation of 0 to 255.
constexpr std::uint8_t REFERENCE_PERMUTATION[] = {
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

[[nodiscard]] constexpr std::uint8_t PermutationAt(std::size_t index) noexcept
{
    return REFERENCE_PERMUTATION[index % 256];
}

/// Four bits, by the low four bits of a hash: the middles of the twelve edges of a cube, four of them twice.
[[nodiscard]] constexpr unsigned int GradientOf(std::uint8_t hash) noexcept
{
    // 12 to 15 are 0 (x + y), 9 (z - y), 1 (y - x) and 11 (-y - z) again.
    constexpr unsigned int EDGES[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0, 9, 1, 11};
    unsigned int const edge = EDGES[hash % 16];
    return (edge >= 8 ? 8U : 0U) | (edge >= 4 ? 4U : 0U) | (edge & 1U) << 1U | (edge & 2U) >> 1U;
}

[[nodiscard]] constexpr unsigned int SpaceGradientAt(std::size_t index) noexcept
{
    return GradientOf(PermutationAt(index));
}

[[nodiscard]] constexpr unsigned int PlaneGradientAt(std::size_t index) noexcept
{
    return SpaceGradientAt(PermutationAt(index));
}

[[nodiscard]] constexpr unsigned int LineGradientAt(std::size_t index) noexcept
{
    return PlaneGradientAt(PermutationAt(index));
}

template <typename Entry>
constexpr void Fill(NoiseTable& table, Entry at) noexcept
{
    for (std::size_t i = 0; i < std::size(table.entries); ++i)
        table.entries[i] = static_cast<std::uint8_t>(at(i));
    for (std::size_t i = 0; i < std::size(table.steps); ++i)
        table.steps[i] = static_cast<std::uint8_t>(i % 128 < 16 ? at(i) : at(i) ^ at(i - 16));
}

template <typename Gradient>
constexpr void FillGradients(NoiseTable& table, Gradient at) noexcept
{
    Fill(table, [at](std::size_t i) { return at(i) << 4U | at(i + 1); });
}

[[nodiscard]] constexpr NoiseTables MakeTables() noexcept
{
    NoiseTables tables{};
    Fill(tables.permutation, PermutationAt);
    FillGradients(tables.spaceGradients, SpaceGradientAt);
    FillGradients(tables.planeGradients, PlaneGradientAt);
    FillGradients(tables.lineGradients, LineGradientAt);
    for (std::size_t i = 0; i < std::size(tables.permutationPairs); ++i)
        tables.permutationPairs[i] = static_cast<std::uint16_t>(PermutationAt(i) | PermutationAt(i + 1) << 8);
    for (std::size_t i = 0; i < std::size(tables.slopes); ++i)
    {
        unsigned int const gradient = LineGradientAt(i);
        tables.slopes[i] = (gradient & 8U) != 0 ? 0.0F : (gradient & 2U) != 0 ? -1.0F : 1.0F;
    }
    tables.amplitudes[0] = 1.0F;
    for (std::size_t n = 1; n < std::size(tables.amplitudes); ++n)
    {
        double const power = static_cast<double>(1U << n);
        tables.amplitudes[n] = static_cast<float>(0.5 * power / (power - 1.0));
    }
    return tables;
}

} // namespace

constinit NoiseTables const NOISE_TABLES = MakeTables();

} // namespace bv::maths
