#pragma once

/// @file
/// Random numbers that are the same on every machine.

#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "support/Numbers.h"

namespace bv::test
{

/// A number from low to high, of any that the type has there.
template <typename T>
[[nodiscard]] T RandomNumber(std::mt19937& generator, T low, T high)
{
    T share = static_cast<T>(generator()) * T(0x1p-32);
    if constexpr (sizeof(T) > sizeof(std::uint32_t))
        share += static_cast<T>(generator()) * T(0x1p-64);
    return low + (high - low) * share;
}

/// A source of random numbers. A failure while it lives names its seed and the line that made it.
class Random
{
    std::mt19937 generator;
    testing::ScopedTrace trace;

public:
    explicit Random(unsigned int seed, char const* file = __builtin_FILE(), int line = __builtin_LINE())
        : generator{seed}, trace(file, line, "seed " + std::to_string(seed))
    {
    }

    /// Any 32 bits.
    [[nodiscard]] std::uint32_t operator()() { return static_cast<std::uint32_t>(generator()); }
    /// An integer from 0 to below the bound.
    [[nodiscard]] std::uint32_t Below(std::uint32_t bound) { return (*this)() % bound; }
    /// A whole number from low to high.
    [[nodiscard]] int Whole(int low, int high)
    {
        return low + static_cast<int>(Below(static_cast<unsigned int>(high - low) + 1));
    }
    template <typename T>
    [[nodiscard]] T Number(T low, T high)
    {
        return RandomNumber(generator, low, high);
    }
    /// A number of any pattern.
    template <typename T>
    [[nodiscard]] T Any()
    {
        std::uint64_t const upper = (*this)();
        return FromBits<T>(static_cast<Pattern<T>>(upper << 32 | (*this)()));
    }
    /// A vector whose components go from low to high.
    template <typename V>
    [[nodiscard]] V Vector(decltype(V::x) low, decltype(V::x) high)
    {
        V vector;
        vector.x = Number(low, high);
        vector.y = Number(low, high);
        if constexpr (requires { vector.z; })
            vector.z = Number(low, high);
        return vector;
    }
};

} // namespace bv::test
