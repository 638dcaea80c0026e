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

constexpr unsigned int STRETCH = 128; ///< draws of a lane

/// A multiply-with-carry generator with 16-bit halves. Its steps are products with its multiplier modulo
/// multiplier * 2^16 - 1; see George Marsaglia, "Random numbers for C: The END?", 1999.
template <std::uint32_t MULTIPLIER>
struct MultiplyWithCarry
{
    static constexpr std::uint64_t MODULUS = std::uint64_t{MULTIPLIER} * 65536 - 1;

    /// The multiplier to the power of STRETCH.
    static constexpr std::uint64_t POWER = []()
    {
        std::uint64_t power = 1;
        for (unsigned int i = 0; i < STRETCH; ++i)
            power = power * MULTIPLIER % MODULUS;
        return power;
    }();

    /// The state after STRETCH steps. Two steps from any state are enough to get into the range up to the modulus,
    /// whose two ends are one remainder: a state of 0 stays there, and any other meets the upper end only.
    [[nodiscard]] static std::uint32_t Jump(std::uint32_t state) noexcept
    {
        std::uint64_t const remainder = state % MODULUS * POWER % MODULUS;
        return static_cast<std::uint32_t>(remainder == 0 && state != 0 ? MODULUS : remainder);
    }

    template <typename V>
    [[nodiscard, gnu::always_inline]] static V Step(V state) noexcept
    {
        return MULTIPLIER * (state & 0xFFFF) + (state >> 16);
    }
};

/// The 3-shift register: each step is linear in the bits of the state.
struct ShiftRegisterStep
{
    template <typename V>
    [[nodiscard, gnu::always_inline]] static constexpr V Step(V state) noexcept
    {
        state ^= state << 17;
        state ^= state >> 13;
        state ^= state << 5;
        return state;
    }

    /// What STRETCH steps make of each bit.
    struct Columns
    {
        std::uint32_t bits[32];
    };

    [[nodiscard]] static constexpr Columns MakeColumns() noexcept
    {
        Columns columns{};
        for (unsigned int bit = 0; bit < 32; ++bit)
        {
            columns.bits[bit] = std::uint32_t{1} << bit;
            for (unsigned int i = 0; i < STRETCH; ++i)
                columns.bits[bit] = Step(columns.bits[bit]);
        }
        return columns;
    }
};

struct ShiftRegister : ShiftRegisterStep
{
    /// By what STRETCH steps make of each bit.
    [[nodiscard]] static std::uint32_t Jump(std::uint32_t state) noexcept
    {
        constexpr Columns COLUMNS = MakeColumns();
        std::uint32_t jumped = 0;
        for (unsigned int bit = 0; bit < 32; ++bit)
            jumped ^= COLUMNS.bits[bit] & (0U - (state >> bit & 1U));
        return jumped;
    }
};

/// The linear congruential generator.
struct CongruentialStep
{
    template <typename V>
    [[nodiscard, gnu::always_inline]] static constexpr V Step(V state) noexcept
    {
        return 69069 * state + 1234567;
    }

    /// STRETCH steps.
    [[nodiscard]] static constexpr std::uint32_t After(std::uint32_t state) noexcept
    {
        for (unsigned int i = 0; i < STRETCH; ++i)
            state = Step(state);
        return state;
    }
};

struct Congruential : CongruentialStep
{
    /// STRETCH steps are one product and one sum.
    [[nodiscard]] static std::uint32_t Jump(std::uint32_t state) noexcept
    {
        constexpr std::uint32_t SUM = After(0);
        constexpr std::uint32_t FACTOR = After(1) - SUM;
        return FACTOR * state + SUM;
    }
};

template <std::size_t BYTES>
struct Generator
{
    using V = Lanes<std::uint32_t, BYTES>;
    using Floats = Lanes<float, BYTES>;
    static constexpr std::size_t COUNT = BYTES / sizeof(std::uint32_t);

    static std::size_t Draw(GeneratorState& state, float* results, std::size_t count) noexcept
    {
        std::size_t done = 0;
        for (; done + COUNT * STRETCH <= count; done += COUNT * STRETCH)
            DrawStretches(state, results + done);
        return done;
    }

private:
    static void DrawStretches(GeneratorState& state, float* results) noexcept
    {
        V z;
        V w;
        V jsr;
        V jcong;
        for (std::size_t lane = 0; lane < COUNT; ++lane)
        {
            z[lane] = state.z;
            w[lane] = state.w;
            jsr[lane] = state.jsr;
            jcong[lane] = state.jcong;
            state = {MultiplyWithCarry<36969>::Jump(state.z), MultiplyWithCarry<18000>::Jump(state.w),
                     ShiftRegister::Jump(state.jsr), Congruential::Jump(state.jcong)};
        }
        alignas(64) float draws[STRETCH][COUNT];
        for (auto& step : draws)
        {
            z = MultiplyWithCarry<36969>::Step(z);
            w = MultiplyWithCarry<18000>::Step(w);
            jcong = Congruential::Step(jcong);
            jsr = ShiftRegister::Step(jsr);
            V const draw = (((z << 16) + w) ^ jcong) + jsr;
            Store(Bits<Floats>((draw >> 9) | 0x3F800000U) - 1.0F, step);
        }
        for (std::size_t lane = 0; lane < COUNT; ++lane)
            for (std::size_t step = 0; step < STRETCH; ++step)
                results[lane * STRETCH + step] = draws[step][lane];
    }
};

} // namespace

} // namespace bv::maths
