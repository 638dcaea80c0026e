#pragma once

/// @file
/// The loops over points of noise. A block of points goes through each stage together, so that a stage's results are
/// in memory before the next one reads them as registers.

#include "Maths/Kernels/Lanes/Points.h"
#include "Maths/Kernels/Noise/Arithmetic.h"
#include "Maths/Kernels/Noise/Hashes.h"
#include "Maths/Kernels/Noise/Tables.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace
{

/// @tparam Hashing how the gradients at the corners are found, such as TableHashes.
template <typename Point, std::size_t BYTES, template <std::size_t, std::size_t> typename Hashing>
class NoiseBlock
{
    using V = Register<float, BYTES>;
    using M = Mask<V>;
    static constexpr std::size_t LANES = COUNT<V>;
    // NOLINTNEXTLINE(bugprone-sizeof-expression): a point on a line is a number
    static constexpr std::size_t AXES = sizeof(Point) / sizeof(float);
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
        for (std::size_t i = 0; i < count; i += LANES)
        {
            auto const read = LoadPoints<V, AXES>(Numbers<float>(points + i));
#pragma GCC unroll 3
            for (std::size_t axis = 0; axis < AXES; ++axis)
                Store(read.axes[axis], &coordinates[axis][i]);
        }
    }

    /// Cells and fractions of all coordinates. Whole turns of four registers do no harm behind the points.
    [[gnu::always_inline]] void LocateAll(std::size_t count) noexcept
    {
        for (std::size_t axis = 0; axis < AXES; ++axis)
            for (std::size_t i = 0; i < count; i += 4 * LANES)
            {
                M wholes[4];
#pragma GCC unroll 4
                for (std::size_t part = 0; part < 4; ++part)
                {
                    std::size_t const at = i + part * LANES;
                    auto const [cell, fraction] = Locate(Load<V>(&coordinates[axis][at]));
                    Store(fraction, &fractions[axis][at]);
                    Store(Fade(fraction), &fades[axis][at]);
                    wholes[part] = cell;
                }
                StoreCells(wholes, &cells[axis][i]);
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
            for (std::size_t i = 0; i < count; i += LANES)
                Store(AcrossY(0, i, Load<V>(&fractions[2][i])), &nearFaces[i]);
        for (std::size_t i = 0; i < count; i += LANES)
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
            for (std::size_t i = 0; i < count; i += LANES)
                Store(Load<V>(&axis[i]) * 2.0F, &axis[i]);
    }

    /// The points are all read before a result is written.
    /// @param octaves at most MAX_OCTAVES.
    /// @param count a multiple of LANES, at most BLOCK.
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
        while (done + LANES <= count)
        {
            std::size_t const left = (count - done) / LANES * LANES;
            std::size_t const part = left < BLOCK ? left : BLOCK;
            block.Run(points + done, octaves < MAX_OCTAVES ? octaves : MAX_OCTAVES, results + done, part);
            done += part;
        }
        return done;
    }
};

} // namespace

} // namespace bv::maths
