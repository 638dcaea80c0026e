#pragma once

/// @file
/// The loop of tolerant comparisons.

#include "Maths/Kernels/Lanes/Arrays.h"
#include "bv/maths/IsEqual.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Comparison
{
    using V = Register<T, BYTES>;
    using I = Register<Integer<T>, BYTES>;

    /// Whether numbers are at most 50 representable values apart, on bit patterns as IsEqual() counts them.
    [[gnu::always_inline]] static I AreWithinSteps(V const& a, V const& b) noexcept
    {
        using Bits = Register<std::make_unsigned_t<Integer<T>>, BYTES>;
        constexpr auto SIGN = static_cast<Element<Bits>>(Element<Bits>{1} << (8 * sizeof(T) - 1));
        constexpr Element<Bits> STEPS = 50;
        Bits const bitsA = BitsAs<Bits>(a);
        Bits const bitsB = BitsAs<Bits>(b);
        Bits const opposite = BitsAs<Bits>(BitsAs<I>(bitsA ^ bitsB) < 0);
        Bits const difference = bitsA - (bitsB ^ opposite) + (opposite >> 1);
        return BitsAs<I>(difference + (STEPS + SIGN)) <= static_cast<Integer<T>>(2 * STEPS + SIGN);
    }

    static std::size_t Compare(T const*, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        return FillBits<COUNT<V>>(streams, count,
                                  [&](std::size_t i)
                                  {
                                      V const x = Load<V>(streams.in[0] + i);
                                      V const y = Load<V>(streams.in[1] + i);
                                      I const isWithinSteps = AreWithinSteps(x, y);
                                      // Two equal infinities are not subtracted, which would raise FE_INVALID.
                                      V const difference = Select(isWithinSteps, V{}, x) - y;
                                      return Either(isWithinSteps, I(Magnitude(difference) < TOLERANCE<T>));
                                  });
    }
};

} // namespace

} // namespace bv::maths
