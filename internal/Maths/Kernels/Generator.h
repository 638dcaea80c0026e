#pragma once

/// @file
/// The loop over the draws of a generator. Each lane draws a stretch of the sequence of its own; a jump over the
/// stretch in front of it takes a state to its beginning.

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Lanes/Lanes.h"

namespace bv::maths
{

namespace
{

template <std::size_t BYTES>
class Generator
{
    using V = Register<std::uint32_t, BYTES>;
    using Floats = Register<float, BYTES>;
    static constexpr std::size_t LANES = COUNT<V>;
    static constexpr std::size_t STRETCH = LANES < 16 ? 128 : 64; ///< draws of a lane: the jumps pay

    // The steps of the words, of one generator or of one in each lane, and their jumps.

    /// A multiply-with-carry generator with 16-bit halves.
    template <std::uint32_t MULTIPLIER, typename Word>
    [[gnu::always_inline]] static Word StepCarry(Word word) noexcept
    {
        return MULTIPLIER * (word & 0xFFFF) + (word >> 16);
    }

    /// Steps are products with the multiplier modulo multiplier * 2^16 - 1; see George Marsaglia, "Random numbers for
    /// C: The END?", 1999. Two steps from any word are enough to get into the range up to the modulus, whose two ends
    /// are one remainder: a word of 0 stays there, and any other meets the upper end only.
    template <std::uint32_t MULTIPLIER>
    [[gnu::always_inline]] static std::uint32_t JumpCarry(std::uint32_t word) noexcept
    {
        constexpr std::uint64_t MODULUS = std::uint64_t{MULTIPLIER} * 65536 - 1;
        constexpr std::uint64_t POWER = []
        {
            std::uint64_t power = 1;
            for (std::size_t i = 0; i < STRETCH; ++i)
                power = power * MULTIPLIER % MODULUS;
            return power;
        }();
        std::uint64_t const remainder = word % MODULUS * POWER % MODULUS;
        return static_cast<std::uint32_t>(remainder == 0 && word != 0 ? MODULUS : remainder);
    }

    /// The 3-shift register.
    template <typename Word>
    [[gnu::always_inline]] static constexpr Word StepShift(Word word) noexcept
    {
        word ^= word << 17;
        word ^= word >> 13;
        word ^= word << 5;
        return word;
    }

    /// Steps are linear in the bits of the word.
    [[gnu::always_inline]] static std::uint32_t JumpShift(std::uint32_t word) noexcept
    {
        struct Columns
        {
            std::uint32_t bits[32]; ///< what the steps make of each bit
        };
        constexpr Columns COLUMNS = []
        {
            Columns columns{};
            for (unsigned int bit = 0; bit < 32; ++bit)
            {
                columns.bits[bit] = std::uint32_t{1} << bit;
                for (std::size_t i = 0; i < STRETCH; ++i)
                    columns.bits[bit] = StepShift(columns.bits[bit]);
            }
            return columns;
        }();
        std::uint32_t jumped = 0;
        for (unsigned int bit = 0; bit < 32; ++bit)
            jumped ^= COLUMNS.bits[bit] & (0U - (word >> bit & 1U));
        return jumped;
    }

    /// The linear congruential generator.
    template <typename Word>
    [[gnu::always_inline]] static constexpr Word StepCongruent(Word word) noexcept
    {
        return 69069 * word + 1234567;
    }

    /// Steps are one product and one sum.
    [[gnu::always_inline]] static std::uint32_t JumpCongruent(std::uint32_t word) noexcept
    {
        constexpr auto AFTER = [](std::uint32_t start)
        {
            for (std::size_t i = 0; i < STRETCH; ++i)
                start = StepCongruent(start);
            return start;
        };
        constexpr std::uint32_t SUM = AFTER(0);
        constexpr std::uint32_t FACTOR = AFTER(1) - SUM;
        return FACTOR * word + SUM;
    }

    static void DrawStretches(GeneratorState& state, float* results) noexcept
    {
        V z;
        V w;
        V jsr;
        V jcong;
        for (std::size_t lane = 0; lane < LANES; ++lane)
        {
            z[lane] = state.z;
            w[lane] = state.w;
            jsr[lane] = state.jsr;
            jcong[lane] = state.jcong;
            state = {JumpCarry<36969>(state.z), JumpCarry<18000>(state.w), JumpShift(state.jsr),
                     JumpCongruent(state.jcong)};
        }
        alignas(64) float draws[STRETCH][LANES];
        for (auto& step : draws)
        {
            z = StepCarry<36969>(z);
            w = StepCarry<18000>(w);
            jcong = StepCongruent(jcong);
            jsr = StepShift(jsr);
            V const draw = (((z << 16) + w) ^ jcong) + jsr;
            Store(BitsAs<Floats>((draw >> 9) | 0x3F800000U) - 1.0F, step);
        }
        for (std::size_t lane = 0; lane < LANES; ++lane)
#pragma GCC unroll 16
            for (std::size_t step = 0; step < STRETCH; ++step)
                results[lane * STRETCH + step] = draws[step][lane];
    }

public:
    static std::size_t Draw(GeneratorState& state, float* results, std::size_t count) noexcept
    {
        std::size_t done = 0;
        for (; done + LANES * STRETCH <= count; done += LANES * STRETCH)
            DrawStretches(state, results + done);
        return done;
    }
};

} // namespace

} // namespace bv::maths
