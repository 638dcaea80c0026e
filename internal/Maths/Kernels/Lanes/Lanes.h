#pragma once

/// @file
/// What the loops need of registers beyond the vocabulary of bv/maths/detail/Lanes.h: those of 64 bytes, halves, and
/// shuffles by a rule.
///
/// The loops are compiled once for each kind of processor, from the same text. Everything here is forced inline, so
/// that no object file offers the others code that their processor may not have.

#include <cstddef>
#include <cstdint>
#include <utility>

#include "bv/detail/Platform.h"
#include "bv/maths/detail/Lanes.h"

#if BV_SSE2
#include <immintrin.h>
#endif

namespace bv::maths
{

namespace
{

using namespace detail;

/// Bytes of the widest register of the processor that this is compiled for.
#if BV_AVX512
constexpr std::size_t NATIVE = 64;
#elif BV_AVX2
constexpr std::size_t NATIVE = 32;
#else
constexpr std::size_t NATIVE = 16;
#endif

/// What a comparison of registers gives: integers with all bits set or none.
template <typename V>
using Mask = Register<Integer<Element<V>>, sizeof(V)>;

template <typename Rule, typename V, std::size_t... I>
[[nodiscard, gnu::always_inline]] inline auto ShuffleBy(V const& a, V const& b, std::index_sequence<I...>) noexcept
{
#if BV_GNU
    return __builtin_shufflevector(a, b, Rule{}(I)...);
#else
    constexpr std::size_t LANES = COUNT<V>;
    return Register<Element<V>, sizeof...(I) * sizeof(Element<V>)>{(Rule{}(I) < LANES ? a : b)[Rule{}(I) % LANES]...};
#endif
}

/// A register of lanes of two others, which are counted through.
/// @tparam LANES how many the result has.
/// @param rule a lambda without captures, from a lane of the result to the one that its number comes from.
template <std::size_t LANES, typename V, typename Rule>
[[nodiscard, gnu::always_inline]] inline auto ShuffleBy(V const& a, V const& b, Rule /*rule*/) noexcept
{
    return ShuffleBy<Rule>(a, b, std::make_index_sequence<LANES>());
}

template <typename V>
using HalfRegister = Register<Element<V>, sizeof(V) / 2>;

/// The two halves of a register.
template <typename V>
[[nodiscard, gnu::always_inline]] inline tHalves<HalfRegister<V>> Split(V const& lanes) noexcept
{
    constexpr std::size_t LANES = COUNT<V> / 2;
    return {ShuffleBy<LANES>(lanes, lanes, [](std::size_t lane) { return lane; }),
            ShuffleBy<LANES>(lanes, lanes, [](std::size_t lane) { return LANES + lane; })};
}

/// A register of two halves.
template <typename V>
[[nodiscard, gnu::always_inline]] inline auto Join(V const& low, V const& high) noexcept
{
    return ShuffleBy<2 * COUNT<V>>(low, high, [](std::size_t lane) { return lane; });
}

/// The numbers as those of another type, as the language converts one of them.
template <typename To, typename V>
[[nodiscard, gnu::always_inline]] inline To Convert(V const& lanes) noexcept
{
#if BV_GNU
    return __builtin_convertvector(lanes, To);
#else
    To converted{};
    for (std::size_t lane = 0; lane < COUNT<V>; ++lane)
        converted[lane] = static_cast<Element<To>>(lanes[lane]);
    return converted;
#endif
}

using detail::Any;
using detail::Bits;
using detail::Select;

/// `a` where a mask is set, `b` elsewhere: masks of 64 bytes have registers of their own.
template <typename M, typename V>
requires(sizeof(V) > WIDEST) [[nodiscard, gnu::always_inline]] inline V
    Select(M const& mask, V const& a, V const& b) noexcept
{
#if BV_GNU
    return mask ? a : b;
#else
    return detail::Select(mask, a, b);
#endif
}

/// Whether a lane of a mask is set.
template <typename M>
requires(sizeof(M) > WIDEST) [[nodiscard, gnu::always_inline]] inline bool Any(M const& mask) noexcept
{
#if BV_AVX512
    return _mm512_test_epi32_mask(BitsAs<__m512i>(mask), BitsAs<__m512i>(mask)) != 0;
#else
    auto const [low, high] = Split(mask);
    return Any(Either(low, high));
#endif
}

/// One bit for each lane of a mask, the first lane lowest.
template <typename M>
requires(sizeof(M) > WIDEST) [[nodiscard, gnu::always_inline]] inline int Bits(M const& mask) noexcept
{
#if BV_AVX512
    if constexpr (sizeof(Element<M>) == 4)
        return _mm512_test_epi32_mask(BitsAs<__m512i>(mask), BitsAs<__m512i>(mask));
    else
        return _mm512_test_epi64_mask(BitsAs<__m512i>(mask), BitsAs<__m512i>(mask));
#else
    return Bits(Split(mask));
#endif
}

/// Square roots. A processor takes as long for 64 bytes as for their halves one after the other.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V SquareRoots(V const& lanes) noexcept
{
    if constexpr (sizeof(V) <= WIDEST)
        return SquareRoot(lanes);
    else
    {
        auto const [low, high] = SquareRoot(Split(lanes));
        return Join(low, high);
    }
}

} // namespace

} // namespace bv::maths
