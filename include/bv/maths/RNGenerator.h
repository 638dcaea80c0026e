#pragma once

/// @file
/// A small, fast, seedable generator of pseudo-random numbers.

#include <cstdint>
#include <type_traits>
#include <utility>

#include "bv/Export.h"
#include "bv/detail/Platform.h"
#include "bv/maths/detail/Number.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

namespace detail
{
struct RNGeneratorAccess;
} // namespace detail

/// Pseudo-random numbers for sampling: jitter, stochastic sampling, procedural variation. Not for secrets.
///
/// The generator is KISS in its 1999 form: two 16-bit multiply-with-carry generators, a 3-shift register and a linear
/// congruential generator, combined (George Marsaglia, "Random numbers for C: The END?", sci.stat.math, 1999). All of
/// it is unsigned 32-bit arithmetic that wraps around, so a seed gives the same sequence on every platform.
///
/// Only the low 15 bits of a seed tell, see SetSeed(): there are 32768 different sequences.
///
/// A copy continues with the same sequence as its source. A generator is not safe for concurrent use: give each thread
/// its own.
class RNGenerator
{
    std::uint32_t z;     ///< first multiply-with-carry state
    std::uint32_t w;     ///< second multiply-with-carry state
    std::uint32_t jsr;   ///< shift-register state
    std::uint32_t jcong; ///< congruential state
    // What the public vector and pair operations call, so that another implementation can be selected per object.
    tVector2<float> (RNGenerator::*generate2D)() noexcept;
    tVector3<float> (RNGenerator::*generate3D)() noexcept;
    std::pair<float, unsigned int> (RNGenerator::*generatePair)() noexcept;

public:
    /// @name Construction
    /// @{
    /// The generator of this seed, see SetSeed().
    [[gnu::always_inline]] BV_INLINE constexpr RNGenerator(unsigned int seed = 0) noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Starts the sequence of this seed from its beginning.
    ///
    /// The four state words are successive values of a multiplicative chain, whose products keep their low 32 bits only
    /// before the remainder by 2^31 - 1 is taken: close to, but not, the sequence of S. K. Park, K. W. Miller, "Random
    /// number generators: good ones are hard to find", 1988. The first multiplier is a multiple of 2^17, so seeds that
    /// agree in their low 15 bits give the same sequence, and no two other seeds do.
    ///
    /// Seed 0 stands for 426954, whose sequence is that of seed 970. Any other multiple of 32768 sets all four words to
    /// 0: the multiply-with-carry generators and the shift register then stay at 0 and the congruential generator runs
    /// alone, whose low bits are poor. Keep away from these seeds.
    /// @return this generator.
    BV_INLINE constexpr RNGenerator& SetSeed(unsigned int seed) noexcept;
    /// @}

    /// @name Draws
    /// @{
    /// The next draw, any 32-bit value.
    BV_INLINE constexpr unsigned int GetInteger() noexcept { return Kiss99(); }
    /// The next draw as a number in [0, 1): a multiple of 2^-23, at most 1 - 2^-23.
    BV_INLINE constexpr float GetFloat() noexcept { return ToFloat(Kiss99()); }
    /// The next two draws, x first, each as GetFloat() gives it.
    BV_INLINE constexpr tVector2<float> GetVector2D() noexcept;
    /// The next three draws, x first and z last, each as GetFloat() gives it.
    BV_INLINE constexpr tVector3<float> GetVector3D() noexcept;
    /// The next two draws: the first as GetFloat() gives it, the second whole.
    BV_INLINE constexpr std::pair<float, unsigned int> GetFloatAndInteger() noexcept;
    /// @}

private:
    friend struct detail::RNGeneratorAccess;

    [[gnu::always_inline]] constexpr unsigned int Cong() noexcept;
    [[gnu::always_inline]] constexpr unsigned int Shr3() noexcept;
    [[gnu::always_inline]] constexpr unsigned int Mwc() noexcept;
    [[gnu::always_inline]] constexpr unsigned int Kiss99() noexcept;
    BV_INLINE constexpr tVector2<float> GetFloat2D() noexcept;
    BV_INLINE constexpr tVector3<float> GetFloat3D() noexcept;
    BV_INLINE constexpr std::pair<float, unsigned int> GetFloatIntegerPair() noexcept;

    [[gnu::always_inline]] static constexpr void WriteAlone(std::uint32_t const& word) noexcept;
    [[nodiscard, gnu::always_inline]] static constexpr float ToFloat(std::uint32_t draw) noexcept;
};

BV_INLINE constexpr RNGenerator::RNGenerator(unsigned int seed) noexcept
    : z{},
      w{},
      jsr{},
      jcong{},
      generate2D{&RNGenerator::GetFloat2D},
      generate3D{&RNGenerator::GetFloat3D},
      generatePair{&RNGenerator::GetFloatIntegerPair}
{
    SetSeed(seed);
}

BV_INLINE constexpr RNGenerator& RNGenerator::SetSeed(unsigned int seed) noexcept
{
    constexpr std::uint32_t SEED_FOR_ZERO = 426954;
    constexpr std::uint32_t SPREAD = 2032009216;
    constexpr std::uint32_t MULTIPLIER = 48271;
    constexpr std::uint32_t MODULUS = 0x7FFFFFFF;

    z = (seed == 0 ? SEED_FOR_ZERO : seed) * SPREAD % MODULUS;
    w = z * MULTIPLIER % MODULUS;
    jsr = w * MULTIPLIER % MODULUS;
    jcong = jsr * MULTIPLIER % MODULUS;
    return *this;
}

// The usual implementation is known here, so that a compiler can put it in place of the call.

BV_INLINE constexpr tVector2<float> RNGenerator::GetVector2D() noexcept
{
    return generate2D == &RNGenerator::GetFloat2D ? GetFloat2D() : (this->*generate2D)();
}

BV_INLINE constexpr tVector3<float> RNGenerator::GetVector3D() noexcept
{
    return generate3D == &RNGenerator::GetFloat3D ? GetFloat3D() : (this->*generate3D)();
}

BV_INLINE constexpr std::pair<float, unsigned int> RNGenerator::GetFloatAndInteger() noexcept
{
    return generatePair == &RNGenerator::GetFloatIntegerPair ? GetFloatIntegerPair() : (this->*generatePair)();
}

/// One step of the linear congruential generator.
constexpr unsigned int RNGenerator::Cong() noexcept
{
    jcong = 69069 * jcong + 1234567;
    return jcong;
}

/// One step of the 3-shift register.
constexpr unsigned int RNGenerator::Shr3() noexcept
{
    jsr ^= jsr << 17;
    jsr ^= jsr >> 13;
    jsr ^= jsr << 5;
    WriteAlone(jsr);
    return jsr;
}

/// One step of the two multiply-with-carry generators, joined: the low half of each state is its value, the high half
/// its carry.
constexpr unsigned int RNGenerator::Mwc() noexcept
{
    w = 18000 * (w & 0xFFFF) + (w >> 16);
    WriteAlone(w);
    z = 36969 * (z & 0xFFFF) + (z >> 16);
    return (z << 16) + w;
}

/// One step of each generator, and their combination.
constexpr unsigned int RNGenerator::Kiss99() noexcept
{
    return (Mwc() ^ Cong()) + Shr3();
}

BV_INLINE constexpr tVector2<float> RNGenerator::GetFloat2D() noexcept
{
    return {GetFloat(), GetFloat()}; // braces keep the draws in order
}

BV_INLINE constexpr tVector3<float> RNGenerator::GetFloat3D() noexcept
{
    return {GetFloat(), GetFloat(), GetFloat()};
}

BV_INLINE constexpr std::pair<float, unsigned int> RNGenerator::GetFloatIntegerPair() noexcept
{
    return {GetFloat(), GetInteger()};
}

/// Has a state word written before the next one is. GCC gathers the four words into one vector otherwise, to write them
/// at once, and every draw waits for the way there and back: three times as long as for the arithmetic.
constexpr void RNGenerator::WriteAlone([[maybe_unused]] std::uint32_t const& word) noexcept
{
#if BV_GNU && !defined __clang__
    if (!std::is_constant_evaluated())
        __asm__ volatile("" : : "m"(word));
#endif
}

/// The top 23 bits as the mantissa of a number in [1, 2), less 1: neither a division nor a rounding, and never 1.
constexpr float RNGenerator::ToFloat(std::uint32_t draw) noexcept
{
    constexpr std::uint32_t ONE = 0x3F800000;
    return detail::BitsAs<float>((draw >> 9) | ONE) - 1.0F;
}

static_assert(sizeof(unsigned int) == sizeof(std::uint32_t));
static_assert(std::is_standard_layout_v<RNGenerator> && std::is_trivially_copyable_v<RNGenerator>);
static_assert(std::is_trivially_destructible_v<RNGenerator>);
static_assert(sizeof(RNGenerator) == 4 * sizeof(std::uint32_t) + 3 * sizeof(void(RNGenerator::*)()));

} // namespace bv::maths
