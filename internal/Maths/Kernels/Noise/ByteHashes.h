#pragma once

/// @file
/// Look-ups in the tables of the noise for processors that permute bytes: the tables lie in registers, and many
/// look-ups are a few instructions.

#include "Maths/Kernels/Noise/Blocks.h"

namespace bv::maths
{

namespace
{

/// The gradients at the corners of the cells, a vector of bytes at a time. Sums of bytes wrap just as the tables do.
template <std::size_t AXES, std::size_t BYTES>
class ByteHashes
{
public:
    using Cell = std::uint8_t;

private:
    using V = Lanes<Cell, BYTES>;
    static constexpr std::size_t PAIRS = std::size_t{1} << (AXES - 1);

    alignas(64) Cell pairs[PAIRS][BLOCK];

public:
    void Look(Cell const (&cells)[AXES][BLOCK], std::size_t count) noexcept
    {
        for (std::size_t i = 0; i < count; i += BYTES)
        {
            V const x = Load<V>(&cells[0][i]);
            if constexpr (AXES == 1)
            {
                V gradients[] = {x};
                LookUp(NOISE_TABLES.lineGradients, gradients);
                StoreAll(gradients, i);
            }
            else
            {
                V const y = Load<V>(&cells[1][i]);
                V ends[] = {x, x + 1};
                LookUp(NOISE_TABLES.permutation, ends);
                V const left = ends[0] + y;
                V const right = ends[1] + y;
                if constexpr (AXES == 2)
                {
                    V gradients[] = {left, right};
                    LookUp(NOISE_TABLES.planeGradients, gradients);
                    StoreAll(gradients, i);
                }
                else
                {
                    V edges[] = {left, left + 1, right, right + 1};
                    LookUp(NOISE_TABLES.permutation, edges);
#pragma GCC unroll 4
                    for (V& edge : edges)
                        edge += Load<V>(&cells[2][i]);
                    LookUp(NOISE_TABLES.spaceGradients, edges);
                    StoreAll(edges, i);
                }
            }
        }
    }

    /// The gradients at a corner, in the highest bits of the lanes, with something else below.
    [[gnu::always_inline]] auto Gradients(std::size_t corner, std::size_t first) const noexcept
    {
        return Widen<Lanes<std::int32_t, BYTES>>(&pairs[corner / 2][first]) << static_cast<int>(24 + corner % 2 * 4);
    }

private:
    [[gnu::always_inline]] void StoreAll(V const (&gradients)[PAIRS], std::size_t first) noexcept
    {
#pragma GCC unroll 4
        for (std::size_t pair = 0; pair < PAIRS; ++pair)
            Store(gradients[pair], &pairs[pair][first]);
    }

    /// Replaces indices by entries.
    template <std::size_t SIZE>
    [[gnu::always_inline]] static void LookUp(NoiseTable const& table, V (&indices)[SIZE]) noexcept
    {
#if defined __AVX512VBMI__
        if constexpr (BYTES == 64)
            return LookUp64(table, indices);
#endif
#if defined __AVX2__
        if constexpr (BYTES == 32)
            return LookUp32(table, indices);
#endif
        for (V& lanes : indices)
        {
            Cell bytes[BYTES];
            Store(lanes, bytes);
            for (Cell& byte : bytes)
                byte = table.entries[byte];
            lanes = Load<V>(bytes);
        }
    }

#if defined __AVX512VBMI__
    template <std::size_t SIZE>
    [[gnu::always_inline]] static void LookUp64(NoiseTable const& table, V (&indices)[SIZE]) noexcept
    {
        auto const quarter = [&](std::size_t i) { return _mm512_loadu_si512(table.entries + i * 64); };
#pragma GCC unroll 4
        for (V& lanes : indices)
        {
            __m512i const index = Bits<__m512i>(lanes);
            __m512i const lower = _mm512_permutex2var_epi8(quarter(0), index, quarter(1));
            __m512i const upper = _mm512_permutex2var_epi8(quarter(2), index, quarter(3));
            lanes = Bits<V>(_mm512_mask_blend_epi8(_mm512_movepi8_mask(index), lower, upper));
        }
    }
#endif

#if defined __AVX2__
    /// A shuffle looks up 16 entries by the low four bits of an index, and gives 0 where its highest bit is set. In
    /// each half of the table an index counts down by 16 at a time until it is negative, and stays so; the exclusive or
    /// of the steps up to there is the entry.
    template <std::size_t SIZE>
    [[gnu::always_inline]] static void LookUp32(NoiseTable const& table, V (&indices)[SIZE]) noexcept
    {
        LookUp32(table, indices, std::make_index_sequence<SIZE>());
    }

    template <std::size_t SIZE, std::size_t... I>
    [[gnu::always_inline]] static void LookUp32(NoiseTable const& table, V (&indices)[SIZE],
                                                std::index_sequence<I...>) noexcept
    {
        auto const down = [](V index) { return Bits<V>(_mm256_subs_epi8(Bits<__m256i>(index), _mm256_set1_epi8(16))); };
        auto const shuffle = [](__m256i steps, V index)
        { return Bits<V>(_mm256_shuffle_epi8(steps, Bits<__m256i>(index))); };
        V entries[SIZE] = {};
        for (std::size_t half = 0; half < 256; half += 128)
        {
            V left[] = {static_cast<V>(indices[I] ^ static_cast<Cell>(half))...};
            for (std::size_t i = half; i < half + 128; i += 16)
            {
                __m256i const steps = _mm256_broadcastsi128_si256(Load<__m128i>(&table.steps[i]));
                ((entries[I] ^= shuffle(steps, left[I])), ...);
                ((left[I] = down(left[I])), ...);
            }
        }
        ((indices[I] = entries[I]), ...);
    }
#endif
};

} // namespace

} // namespace bv::maths
