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

/// The coordinates of a point, and then the corners of its cell, are worked on side by side.
/// @tparam BYTES of the widest registers of the processor, which tell the functions for one from those for another. A
/// point fills 16.
template <std::size_t BYTES>
class NoiseAtPoint
{
    using V = Register<float, 16>;
    using M = Mask<V>;

    /// The cell of one axis.
    template <int AXIS>
    [[gnu::always_inline]] static std::size_t CellOf(M const& cells) noexcept
    {
#if BV_SSE41
        return static_cast<std::size_t>(_mm_extract_epi8(BitsAs<__m128i>(cells), 4 * AXIS));
#else
        // Half a lane holds it, and is quicker to get at than the whole.
        constexpr int LOW_HALF = std::endian::native == std::endian::big ? 1 : 0;
        return BitsAs<Register<std::uint16_t, 16>>(cells)[2 * AXIS + LOW_HALF];
#endif
    }

    /// Four bytes, each in the highest bits of a lane, with something else below.
    [[gnu::always_inline]] static M Spread(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) noexcept
    {
        std::uint32_t const bytes = a | b << 8U | c << 16U | d << 24U;
#if BV_SSE2
        __m128i const word = _mm_cvtsi32_si128(static_cast<int>(bytes));
        __m128i const twice = _mm_unpacklo_epi8(word, word);
        return BitsAs<M>(_mm_unpacklo_epi16(twice, twice));
#else
        return BitsAs<M>(Register<std::uint32_t, 16>{bytes << 24U, bytes << 16U, bytes << 8U, bytes});
#endif
    }

    [[gnu::always_inline]] static float OnLine(V const& coordinates) noexcept
    {
        auto const [cells, fractions] = Locate(coordinates);
        float const* const slopes = &NOISE_TABLES.slopes[CellOf<0>(cells)];
        float const x = fractions[0];
        return ToUnitInterval(Lerp(Fade(x), slopes[0] * x, slopes[1] * (x - 1.0F)));
    }

    [[gnu::always_inline]] static float InPlane(V const& coordinates) noexcept
    {
        auto const [cells, fractions] = Locate(coordinates);
        std::uint8_t const* const column = &NOISE_TABLES.permutation.entries[CellOf<0>(cells)];
        std::uint8_t const* const row = &NOISE_TABLES.planeGradients.entries[CellOf<1>(cells)];
        std::uint32_t const left = row[column[0]];
        std::uint32_t const right = row[column[1]];
        M const gradients = Spread(left, (left & 15U) << 4U, right, (right & 15U) << 4U);

        V const fades = Fade(fractions);
        V const others = fractions - 1.0F;
        V const xs = Choose<0, 0, 4, 4>(fractions, others);
        V const ys = Choose<1, 5, 1, 5>(fractions, others);
        V const products = Dot(gradients, xs, ys); // bottom left, top left, bottom right, top right
        V const sides = Lerp(Choose<0, 0, 0, 0>(fades), products, Choose<2, 3, 2, 3>(products));
        return ToUnitInterval(Lerp(fades[1], sides[0], sides[1]));
    }

    [[gnu::always_inline]] static float InSpace(V const& coordinates) noexcept
    {
        auto const [cells, fractions] = Locate(coordinates);
        std::uint8_t const* const column = &NOISE_TABLES.permutation.entries[CellOf<0>(cells)];
        std::uint8_t const* const row = &NOISE_TABLES.permutation.entries[CellOf<1>(cells)];
        std::uint8_t const* const layer = &NOISE_TABLES.spaceGradients.entries[CellOf<2>(cells)];
        std::uint8_t const* const left = row + column[0];
        std::uint8_t const* const right = row + column[1];
        // The corners at the bottom left, bottom right, top left and top right.
        M const gradients = Spread(layer[left[0]], layer[right[0]], layer[left[1]], layer[right[1]]);

        V const fades = Fade(fractions);
        V const others = fractions - 1.0F;
        V const xs = Choose<0, 4, 0, 4>(fractions, others);
        V const ys = Choose<1, 1, 5, 5>(fractions, others);
        V const near = Dot(gradients, xs, ys, Choose<2, 2, 2, 2>(fractions));
        V const far = Dot(gradients << 4, xs, ys, Choose<2, 2, 2, 2>(others));
        // From the corners to edges along x, to faces along y, to the point along z.
        V const edges = Lerp(Choose<0, 0, 0, 0>(fades), Choose<0, 2, 4, 6>(near, far), Choose<1, 3, 5, 7>(near, far));
        V const faces = Lerp(Choose<1, 1, 1, 1>(fades), Choose<0, 2, 0, 2>(edges), Choose<1, 3, 1, 3>(edges));
        return ToUnitInterval(Lerp(fades[2], faces[0], faces[1]));
    }

    [[gnu::always_inline]] static V Coordinates(float x) noexcept
    {
        return V{x};
    }
    [[gnu::always_inline]] static V Coordinates(tVector2<float> const& point) noexcept
    {
        return V{point.x, point.y};
    }
    [[gnu::always_inline]] static V Coordinates(tVector3<float> const& point) noexcept
    {
        return V{point.x, point.y, point.z};
    }

    template <typename Point>
    [[gnu::always_inline]] static float At(V const& coordinates) noexcept
    {
        if constexpr (sizeof(Point) == sizeof(float))
            return OnLine(coordinates);
        else if constexpr (sizeof(Point) == 2 * sizeof(float))
            return InPlane(coordinates);
        else
            return InSpace(coordinates);
    }

public:
    /// @tparam Point a number or a vector.
    /// @tparam Argument how it is passed.
    template <typename Point, typename Argument = Point const&>
    static float Noise(Argument point) noexcept
    {
        return At<Point>(Coordinates(point));
    }

    template <typename Point, typename Argument = Point const&>
    static float Turbulence(Argument point, unsigned int octaves) noexcept
    {
        V coordinates = Coordinates(point);
        unsigned int const count = octaves < MAX_OCTAVES ? octaves : MAX_OCTAVES;
        float amplitude = NOISE_TABLES.amplitudes[count];
        float sum = 0.0F;
        for (unsigned int octave = 0; octave < count; ++octave)
        {
            sum = sum + At<Point>(coordinates) * amplitude;
            coordinates = coordinates * 2.0F;
            amplitude = amplitude * 0.5F;
        }
        return sum;
    }
};

} // namespace

} // namespace bv::maths
