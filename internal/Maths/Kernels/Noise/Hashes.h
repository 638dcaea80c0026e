#pragma once

/// @file
/// The gradients at the corners of the cells of a block of points: look-ups in tables in memory, one after another,
/// and look-ups in tables that lie in registers, for processors that permute bytes.
///
/// Corners are counted along the last axis first, and gradients come in pairs along it; see NoiseTables.

#include "Maths/Kernels/Lanes/Lanes.h"
#include "Maths/Kernels/Noise/Tables.h"

namespace bv::maths
{

namespace
{

constexpr std::size_t BLOCK = 128; ///< points that go through the stages of the noise together

/// Look-ups in memory, point by point.
template <std::size_t AXES, std::size_t BYTES>
class TableHashes
{
    using V = Register<std::int32_t, BYTES>;

    alignas(64) std::int32_t words[BLOCK]; ///< a byte for each pair of a point's corners, the first one lowest

public:
    using Cell = std::int32_t;

    void Look(Cell const (&cells)[AXES][BLOCK], std::size_t count) noexcept
    {
#pragma GCC unroll 4
        for (std::size_t i = 0; i < count; ++i)
            words[i] = static_cast<std::int32_t>(LookOne(cells, i));
    }

    /// The gradients at a corner, in the highest bits of the lanes, with something else below.
    [[gnu::always_inline]] V Gradients(std::size_t corner, std::size_t first) const noexcept
    {
        return Load<V>(&words[first]) << static_cast<int>(24 - corner / 2 * 8 + corner % 2 * 4);
    }

private:
    [[gnu::always_inline]] static std::uint32_t LookOne(Cell const (&cells)[AXES][BLOCK], std::size_t i) noexcept
    {
        NoiseTables const& tables = NOISE_TABLES;
        if constexpr (AXES == 1)
            return tables.lineGradients.entries[cells[0][i]];
        else
        {
            unsigned int const ends = tables.permutationPairs[cells[0][i]];
            if constexpr (AXES == 2)
                return EntriesAt(&tables.planeGradients.entries[cells[1][i]], ends);
            else
            {
                std::uint16_t const* const row = &tables.permutationPairs[cells[1][i]];
                std::uint8_t const* const layer = &tables.spaceGradients.entries[cells[2][i]];
                return EntriesAt(layer, row[ends & 255U]) | EntriesAt(layer, row[ends >> 8U]) << 16U;
            }
        }
    }

    /// The entries at the two indices of a pair, the lower byte's first.
    [[gnu::always_inline]] static std::uint32_t EntriesAt(std::uint8_t const* table, unsigned int pair) noexcept
    {
        std::uint32_t const upper = table[pair >> 8U];
        return table[pair & 255U] | upper << 8U;
    }
};

/// Bytes as lanes of 32 bits. GCC converts what is that much narrower lane by lane.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Widen(std::uint8_t const* bytes) noexcept
{
    using Bytes = Register<std::uint8_t, COUNT<V>>;
#if BV_SSE2
    if constexpr (NATIVE == 64 && sizeof(V) == 64)
        return BitsAs<V>(_mm512_maskz_cvtepu8_epi32(0xFFFF, BitsAs<__m128i>(Load<Bytes>(bytes))));
    else if constexpr (NATIVE >= 32 && sizeof(V) == 32)
        return BitsAs<V>(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<__m128i const*>(bytes))));
#endif
    return Convert<V>(Load<Bytes>(bytes));
}

/// Writes four registers of cells.
template <typename V>
[[gnu::always_inline]] inline void StoreCells(V const (&lanes)[4], std::int32_t* cells) noexcept
{
#pragma GCC unroll 4
    for (std::size_t i = 0; i < 4; ++i)
        Store(lanes[i], cells + i * COUNT<V>);
}

/// Writes four registers of cells as bytes.
template <typename V>
[[gnu::always_inline]] inline void StoreCells(V const (&lanes)[4], std::uint8_t* cells) noexcept
{
#if BV_SSE2
    if constexpr (NATIVE >= 32 && sizeof(V) == 32)
    {
        // Packing works within halves; the words of the four registers then stand in the order 0 1 2 3 0 1 2 3.
        __m256i const first = _mm256_packs_epi32(BitsAs<__m256i>(lanes[0]), BitsAs<__m256i>(lanes[1]));
        __m256i const second = _mm256_packs_epi32(BitsAs<__m256i>(lanes[2]), BitsAs<__m256i>(lanes[3]));
        __m256i const packed = _mm256_packus_epi16(first, second);
        __m256i const order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
        Store(BitsAs<Register<std::uint8_t, 32>>(_mm256_permutevar8x32_epi32(packed, order)), cells);
        return;
    }
#endif
#pragma GCC unroll 4
    for (V const& four : lanes)
    {
        using Bytes = Register<std::uint8_t, COUNT<V>>;
#if BV_SSE2
        if constexpr (NATIVE == 64 && sizeof(V) == 64)
            Store(BitsAs<Bytes>(_mm512_maskz_cvtepi32_epi8(0xFFFF, BitsAs<__m512i>(four))), cells);
        else
#endif
            Store(Convert<Bytes>(four), cells);
        cells += COUNT<V>;
    }
}

/// Look-ups in registers, a register of bytes at a time. Sums of bytes wrap just as the tables do.
template <std::size_t AXES, std::size_t BYTES>
class ByteHashes
{
    using V = Register<std::uint8_t, BYTES>;
    using Words = Register<std::int32_t, BYTES>;
    static constexpr std::size_t PAIRS = std::size_t{1} << (AXES - 1);

    alignas(64) std::uint8_t pairs[PAIRS][BLOCK];

public:
    using Cell = std::uint8_t;

    void Look(Cell const (&cells)[AXES][BLOCK], std::size_t count) noexcept
    {
        for (std::size_t i = 0; i < count; i += BYTES)
        {
            V const x = Load<V>(&cells[0][i]);
            if constexpr (AXES == 1)
                Finish(NOISE_TABLES.lineGradients, {x}, i);
            else
            {
                V const y = Load<V>(&cells[1][i]);
                V ends[] = {x, x + 1};
                LookUp(NOISE_TABLES.permutation, ends);
                V const left = ends[0] + y;
                V const right = ends[1] + y;
                if constexpr (AXES == 2)
                    Finish(NOISE_TABLES.planeGradients, {left, right}, i);
                else
                {
                    V const z = Load<V>(&cells[2][i]);
                    V edges[] = {left, left + 1, right, right + 1};
                    LookUp(NOISE_TABLES.permutation, edges);
                    Finish(NOISE_TABLES.spaceGradients, {edges[0] + z, edges[1] + z, edges[2] + z, edges[3] + z}, i);
                }
            }
        }
    }

    /// The gradients at a corner, in the highest bits of the lanes, with something else below.
    [[gnu::always_inline]] Words Gradients(std::size_t corner, std::size_t first) const noexcept
    {
        return Widen<Words>(&pairs[corner / 2][first]) << static_cast<int>(24 + corner % 2 * 4);
    }

private:
    [[gnu::always_inline]] void Finish(NoiseTable const& table, V (&&indices)[PAIRS], std::size_t first) noexcept
    {
        LookUp(table, indices);
#pragma GCC unroll 4
        for (std::size_t pair = 0; pair < PAIRS; ++pair)
            Store(indices[pair], &pairs[pair][first]);
    }

    /// Replaces indices by entries.
    template <std::size_t SIZE>
    [[gnu::always_inline]] static void LookUp(NoiseTable const& table, V (&indices)[SIZE]) noexcept
    {
#if BV_SSE2
        if constexpr (NATIVE == 64 && BYTES == 64)
            return LookUp64(table, indices);
        else if constexpr (NATIVE >= 32 && BYTES == 32)
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

#if BV_SSE2
    template <std::size_t SIZE>
    [[gnu::always_inline]] static void LookUp64(NoiseTable const& table, V (&indices)[SIZE]) noexcept
    {
        auto const quarter = [&](std::size_t i) { return BitsAs<__m512i>(Load<V>(table.entries + i * 64)); };
#pragma GCC unroll 4
        for (V& lanes : indices)
        {
            __m512i const index = BitsAs<__m512i>(lanes);
            V const lower = BitsAs<V>(_mm512_permutex2var_epi8(quarter(0), index, quarter(1)));
            V const upper = BitsAs<V>(_mm512_permutex2var_epi8(quarter(2), index, quarter(3)));
            lanes = Select(lanes >= 128, upper, lower);
        }
    }

    /// A shuffle looks up 16 entries by the low four bits of an index, and gives 0 where its highest bit is set. In
    /// each half of the table an index counts down by 16 at a time until it is negative, and stays so; the exclusive or
    /// of the steps up to there is the entry.
    template <std::size_t SIZE>
    [[gnu::always_inline]] static void LookUp32(NoiseTable const& table, V (&indices)[SIZE]) noexcept
    {
        V entries[SIZE] = {};
        for (std::size_t half = 0; half < 256; half += 128)
        {
            __m256i left[SIZE];
#pragma GCC unroll 4
            for (std::size_t n = 0; n < SIZE; ++n)
                left[n] = BitsAs<__m256i>(static_cast<V>(indices[n] ^ static_cast<Cell>(half)));
            for (std::size_t i = half; i < half + 128; i += 16)
            {
                auto const part = BitsAs<__m128i>(Load<Register<std::uint8_t, 16>>(&table.steps[i]));
                __m256i const steps = _mm256_broadcastsi128_si256(part);
#pragma GCC unroll 4
                for (std::size_t n = 0; n < SIZE; ++n)
                {
                    entries[n] ^= BitsAs<V>(_mm256_shuffle_epi8(steps, left[n]));
                    left[n] = _mm256_subs_epi8(left[n], _mm256_set1_epi8(16));
                }
            }
        }
#pragma GCC unroll 4
        for (std::size_t n = 0; n < SIZE; ++n)
            indices[n] = entries[n];
    }
#endif
};

} // namespace

} // namespace bv::maths
