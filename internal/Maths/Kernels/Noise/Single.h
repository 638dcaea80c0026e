#pragma once

/// @file
/// The noise at a single point. It is compiled for each kind of processor, like the loops of the batch forms.

#include <bit>

#include "Maths/Kernels/Noise/Arithmetic.h"
#include "Maths/Kernels/Noise/Tables.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace
{

// The coordinates of a point, and then the corners of its cell, are worked on side by side.
using Four = Lanes<float, 16>;
using FourIntegers = Mask<Four>;

/// The cell of one axis.
template <int AXIS>
[[gnu::always_inline]] inline std::size_t CellOf(FourIntegers cells) noexcept
{
#if defined __SSE4_1__
    return static_cast<std::size_t>(_mm_extract_epi8(Bits<__m128i>(cells), 4 * AXIS));
#else
    // Half a lane holds it, and is quicker to get at than the whole.
    constexpr std::size_t LOW_HALF = std::endian::native == std::endian::big ? 1 : 0;
    return Bits<Lanes<std::uint16_t, 16>>(cells)[2 * AXIS + LOW_HALF];
#endif
}

/// Four bytes, each in the highest bits of a lane, with something else below.
[[gnu::always_inline]] inline FourIntegers Spread(std::uint32_t a, std::uint32_t b, std::uint32_t c,
                                                  std::uint32_t d) noexcept
{
    std::uint32_t const bytes = a | b << 8U | c << 16U | d << 24U;
#if defined __SSE2__
    __m128i const word = _mm_cvtsi32_si128(static_cast<int>(bytes));
    __m128i const twice = _mm_unpacklo_epi8(word, word);
    return Bits<FourIntegers>(_mm_unpacklo_epi16(twice, twice));
#else
    return Bits<FourIntegers>(Lanes<std::uint32_t, 16>{bytes << 24U, bytes << 16U, bytes << 8U, bytes});
#endif
}

/// The lanes with these indices, two of each operand.
template <int A, int B, int C, int D>
[[gnu::always_inline]] inline Four Shuffle(Four ab, Four cd) noexcept
{
    return Pick<A, B, C, D>(ab, cd);
}

/// @tparam BYTES of the widest vectors of the processor, which tell the functions for one from those for another. A
/// point fills 16.
template <std::size_t BYTES>
class NoiseAtPoint
{
public:
    static float At(float coordinate) noexcept
    {
        auto const [cells, fractions] = Locate(Four{coordinate});
        float const* const slopes = &NOISE_TABLES.slopes[CellOf<0>(cells)];
        float const x = fractions[0];
        return ToUnitInterval(Lerp(Fade(x), slopes[0] * x, slopes[1] * (x - 1.0F)));
    }

    static float At(tVector2<float> const& point) noexcept
    {
        auto const [cells, fractions] = Locate(Four{point.x, point.y});
        std::uint8_t const* const column = &NOISE_TABLES.permutation.entries[CellOf<0>(cells)];
        std::uint8_t const* const row = &NOISE_TABLES.planeGradients.entries[CellOf<1>(cells)];
        std::uint32_t const left = row[column[0]];
        std::uint32_t const right = row[column[1]];
        FourIntegers const gradients = Spread(left, (left & 15U) << 4U, right, (right & 15U) << 4U);

        Four const fades = Fade(fractions);
        Four const others = fractions - 1.0F;
        Four const xs = Shuffle<0, 0, 0, 0>(fractions, others);
        Four const ys =
            Shuffle<0, 2, 0, 2>(Shuffle<1, 1, 1, 1>(fractions, others), Shuffle<1, 1, 1, 1>(fractions, others));
        Four const products = Dot(gradients, xs, ys); // bottom left, top left, bottom right, top right
        Four const sides = Lerp(Shuffle<0, 0, 0, 0>(fades, fades), products, Shuffle<2, 3, 2, 3>(products, products));
        return ToUnitInterval(Lerp(fades[1], sides[0], sides[1]));
    }

    static float At(tVector3<float> const& point) noexcept
    {
        auto const [cells, fractions] = Locate(Four{point.x, point.y, point.z});
        std::uint8_t const* const column = &NOISE_TABLES.permutation.entries[CellOf<0>(cells)];
        std::uint8_t const* const row = &NOISE_TABLES.permutation.entries[CellOf<1>(cells)];
        std::uint8_t const* const layer = &NOISE_TABLES.spaceGradients.entries[CellOf<2>(cells)];
        std::uint8_t const* const left = row + column[0];
        std::uint8_t const* const right = row + column[1];
        // The corners at the bottom left, bottom right, top left and top right.
        FourIntegers const gradients = Spread(layer[left[0]], layer[right[0]], layer[left[1]], layer[right[1]]);

        Four const fades = Fade(fractions);
        Four const others = fractions - 1.0F;
        Four const xs =
            Shuffle<0, 2, 0, 2>(Shuffle<0, 0, 0, 0>(fractions, others), Shuffle<0, 0, 0, 0>(fractions, others));
        Four const ys = Shuffle<1, 1, 1, 1>(fractions, others);
        Four const near = Dot(gradients, xs, ys, Shuffle<2, 2, 2, 2>(fractions, fractions));
        Four const far = Dot(gradients << 4, xs, ys, Shuffle<2, 2, 2, 2>(others, others));
        // From the corners to edges along x, to faces along y, to the point along z.
        Four const edges =
            Lerp(Shuffle<0, 0, 0, 0>(fades, fades), Shuffle<0, 2, 0, 2>(near, far), Shuffle<1, 3, 1, 3>(near, far));
        Four const faces = Lerp(Shuffle<1, 1, 1, 1>(fades, fades), Shuffle<0, 2, 0, 2>(edges, edges),
                                Shuffle<1, 3, 1, 3>(edges, edges));
        return ToUnitInterval(Lerp(fades[2], faces[0], faces[1]));
    }

    /// @tparam Point a number or a vector.
    /// @tparam Argument how it is passed.
    template <typename Point, typename Argument = Point const&>
    static float Noise(Argument point) noexcept
    {
        return At(point);
    }

    template <typename Point, typename Argument = Point const&>
    static float Turbulence(Argument point, unsigned int octaves) noexcept
    {
        return Sum<Point>(point, octaves);
    }

private:
    template <typename Point>
    [[gnu::always_inline]] static float Sum(Point point, unsigned int octaves) noexcept
    {
        unsigned int const count = octaves < MAX_OCTAVES ? octaves : MAX_OCTAVES;
        float amplitude = NOISE_TABLES.amplitudes[count];
        float sum = 0.0F;
        for (unsigned int octave = 0; octave < count; ++octave)
        {
            sum = sum + At(point) * amplitude;
            point = point * 2.0F;
            amplitude = amplitude * 0.5F;
        }
        return sum;
    }
};

} // namespace

} // namespace bv::maths
