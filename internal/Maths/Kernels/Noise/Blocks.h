#pragma once

/// @file
/// The loops over points of noise. A block of points goes through each stage together, so that a stage's results are
/// in memory before the next one reads them as vectors.

#include "Maths/Kernels/Lanes/Vectors.h"
#include "Maths/Kernels/Noise/Arithmetic.h"
#include "Maths/Kernels/Noise/Tables.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace
{

constexpr std::size_t BLOCK = 128; ///< points that go through the stages together

/// The gradients at the corners of the cells, point by point: one look-up after another in tables in memory.
///
/// Corners are counted along the last axis first, and gradients come in pairs along it; see NoiseTables.
template <std::size_t AXES, std::size_t BYTES>
class TableHashes
{
public:
    using Cell = std::int32_t;

private:
    alignas(64) std::uint32_t words[BLOCK]; ///< a byte for each pair of a point's corners, the first one lowest

public:
    void Look(Cell const (&cells)[AXES][BLOCK], std::size_t count) noexcept
    {
#pragma GCC unroll 4
        for (std::size_t i = 0; i < count; ++i)
            LookOne(cells, i);
    }

    /// The gradients at a corner, in the highest bits of the lanes, with something else below.
    [[gnu::always_inline]] auto Gradients(std::size_t corner, std::size_t first) const noexcept
    {
        return Load<Lanes<std::int32_t, BYTES>>(&words[first])
               << static_cast<int>(24 - corner / 2 * 8 + corner % 2 * 4);
    }

private:
    [[gnu::always_inline]] void LookOne(Cell const (&cells)[AXES][BLOCK], std::size_t i) noexcept
    {
        NoiseTables const& tables = NOISE_TABLES;
        auto const x = static_cast<std::size_t>(cells[0][i]);
        if constexpr (AXES == 1)
            words[i] = tables.lineGradients.entries[x];
        else
        {
            auto const y = static_cast<std::size_t>(cells[1][i]);
            unsigned int const ends = tables.permutationPairs[x];
            if constexpr (AXES == 2)
                words[i] = Both(&tables.planeGradients.entries[y], Low(ends), High(ends));
            else
            {
                std::uint16_t const* const row = &tables.permutationPairs[y];
                std::uint8_t const* const layer = &tables.spaceGradients.entries[static_cast<std::size_t>(cells[2][i])];
                unsigned int const left = row[Low(ends)];
                unsigned int const right = row[High(ends)];
                words[i] = Both(layer, Low(left), High(left)) | Both(layer, Low(right), High(right)) << 16U;
            }
        }
    }

    [[gnu::always_inline]] static std::uint32_t Both(std::uint8_t const* table, unsigned int low,
                                                     unsigned int high) noexcept
    {
        std::uint32_t const upper = table[high];
        return table[low] | upper << 8U;
    }
    [[gnu::always_inline]] static unsigned int Low(unsigned int pair) noexcept
    {
        return pair & 255U;
    }
    [[gnu::always_inline]] static unsigned int High(unsigned int pair) noexcept
    {
        return pair >> 8U;
    }
};

template <typename Point>
constexpr std::size_t DIMENSIONS = sizeof(Point) / sizeof(float);

/// @tparam Hashing how the gradients at the corners are found, such as TableHashes.
template <typename Point, std::size_t BYTES, template <std::size_t, std::size_t> typename Hashing>
class NoiseBlock
{
    using V = Lanes<float, BYTES>;
    using M = Mask<V>;
    static constexpr std::size_t COUNT = BYTES / sizeof(float);
    static constexpr std::size_t AXES = DIMENSIONS<Point>;
    using Hashes = Hashing<AXES, BYTES>;

    alignas(64) float coordinates[AXES][BLOCK] = {};
    alignas(64) float fractions[AXES][BLOCK];
    alignas(64) float fades[AXES][BLOCK];
    alignas(64) float nearFaces[BLOCK];
    alignas(64) typename Hashes::Cell cells[AXES][BLOCK];
    Hashes hashes;

    /// Splits the points into their coordinates.
    [[gnu::always_inline]] void Read(Point const* points, std::size_t count) noexcept
    {
        constexpr std::size_t PART = BYTES < 32 ? BYTES : 32; // wider ones would have to be put together
        for (std::size_t i = 0; i < count; i += PART / sizeof(float))
        {
            auto const parts = LoadVectors<float, PART, AXES>(points + i);
            for (std::size_t axis = 0; axis < AXES; ++axis)
                Store(parts.components[axis], &coordinates[axis][i]);
        }
    }

    /// Cells and fractions of all coordinates. Whole turns of four vectors do no harm behind the points.
    [[gnu::always_inline]] void LocateAll(std::size_t count) noexcept
    {
        for (std::size_t axis = 0; axis < AXES; ++axis)
            for (std::size_t i = 0; i < count; i += 4 * COUNT)
            {
                M wholes[4];
#pragma GCC unroll 4
                for (std::size_t part = 0; part < 4; ++part)
                {
                    auto const [cell, fraction] = Locate(Load<V>(&coordinates[axis][i + part * COUNT]));
                    Store(fraction, &fractions[axis][i + part * COUNT]);
                    Store(Fade(fraction), &fades[axis][i + part * COUNT]);
                    wholes[part] = cell;
                }
                if constexpr (sizeof(typename Hashes::Cell) == 1)
                    StoreNarrow(wholes, &cells[axis][i]);
                else
                    __builtin_memcpy(&cells[axis][i], wholes, sizeof wholes);
            }
    }

    /// Between the two corners along x that begin with this one.
    template <typename... Vs>
    [[gnu::always_inline]] V AlongX(std::size_t corner, std::size_t i, Vs... others) const noexcept
    {
        V const x = Load<V>(&fractions[0][i]);
        return Lerp(Load<V>(&fades[0][i]), Dot(hashes.Gradients(corner, i), x, others...),
                    Dot(hashes.Gradients(corner + (std::size_t{1} << (AXES - 1)), i), x - 1.0F, others...));
    }

    /// Between the two edges along x at this corner and beside it along y.
    template <typename... Vs>
    [[gnu::always_inline]] V AcrossY(std::size_t corner, std::size_t i, Vs... others) const noexcept
    {
        V const y = Load<V>(&fractions[1][i]);
        return Lerp(Load<V>(&fades[1][i]), AlongX(corner, i, y, others...),
                    AlongX(corner + (std::size_t{1} << (AXES - 2)), i, y - 1.0F, others...));
    }

    /// Adds an octave to the sums, of which the first one makes the beginning: 0 + x is x, but for -0, which no octave
    /// is.
    [[gnu::always_inline]] void AddOctave(bool isFirst, float amplitude, float* sums, std::size_t count) noexcept
    {
        LocateAll(count);
        hashes.Look(cells, count);
        // Few enough operations in a loop for the processor to have several turns of it under way.
        if constexpr (AXES == 3)
            for (std::size_t i = 0; i < count; i += COUNT)
                Store(AcrossY(0, i, Load<V>(&fractions[2][i])), &nearFaces[i]);
        for (std::size_t i = 0; i < count; i += COUNT)
        {
            V noise;
            if constexpr (AXES == 1)
                noise = AlongX(0, i);
            else if constexpr (AXES == 2)
                noise = AcrossY(0, i);
            else
                noise = Lerp(Load<V>(&fades[2][i]), Load<V>(&nearFaces[i]),
                             AcrossY(1, i, Load<V>(&fractions[2][i]) - 1.0F));
            V const octave = ToUnitInterval(noise) * amplitude;
            Store(isFirst ? octave : Load<V>(&sums[i]) + octave, &sums[i]);
        }
    }

    [[gnu::always_inline]] void Double(std::size_t count) noexcept
    {
        for (auto& axis : coordinates)
            for (std::size_t i = 0; i < count; i += COUNT)
                Store(Load<V>(&axis[i]) * 2.0F, &axis[i]);
    }

    /// The points are all read before a result is written.
    /// @param count a multiple of COUNT, at most BLOCK.
    void Run(Point const* points, unsigned int octaves, float* results, std::size_t count) noexcept
    {
        Read(points, count);
        float amplitude = NOISE_TABLES.amplitudes[octaves];
        for (unsigned int octave = 0; octave < octaves; ++octave)
        {
            if (octave != 0)
                Double(count);
            AddOctave(octave == 0, amplitude, results, count);
            amplitude = amplitude * 0.5F;
        }
    }

public:
    static std::size_t Turbulence(Point const* points, unsigned int octaves, float* results, std::size_t count)
    {
        if (octaves == 0)
            return 0;
        NoiseBlock block;
        std::size_t done = 0;
        while (done + COUNT <= count)
        {
            std::size_t const left = (count - done) / COUNT * COUNT;
            std::size_t const part = left < BLOCK ? left : BLOCK;
            block.Run(points + done, octaves < MAX_OCTAVES ? octaves : MAX_OCTAVES, results + done, part);
            done += part;
        }
        return done;
    }
};

} // namespace

} // namespace bv::maths
