#pragma once

/// @file
/// Vectors of the processor as values with operators, for the batch forms.
///
/// The batch forms are compiled once for each kind of processor, from the same text. Everything here is forced inline
/// or of internal linkage, so that no object file offers the others code that their processor may not have.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

#if defined __SSE2__
#include <immintrin.h>
#endif

namespace bv::maths
{

namespace
{

/// Signed integer as wide as a floating-point type.
template <typename T>
using Integer = std::conditional_t<sizeof(T) == sizeof(std::int32_t), std::int32_t, std::int64_t>;

template <typename T, std::size_t BYTES>
struct LanesOf
{
    typedef T Type __attribute__((vector_size(BYTES)));
};

/// BYTES bytes of numbers side by side: arithmetic and comparisons work lane by lane, with the bits of the scalar
/// operation. A comparison gives all bits or none of an integer lane.
template <typename T, std::size_t BYTES>
using Lanes = typename LanesOf<T, BYTES>::Type;

/// The element type of a vector.
template <typename V>
using Element = std::remove_cvref_t<decltype(std::declval<V>()[0])>;

/// The integer lanes that lie under floating-point ones.
template <typename V>
using Mask = Lanes<Integer<Element<V>>, sizeof(V)>;

/// Reads a vector from bytes of any alignment.
template <typename V>
[[gnu::always_inline]] inline V Load(void const* bytes) noexcept
{
    V lanes;
    __builtin_memcpy(&lanes, bytes, sizeof(V));
    return lanes;
}

/// Writes a vector to bytes of any alignment.
template <typename V>
[[gnu::always_inline]] inline void Store(V lanes, void* bytes) noexcept
{
    __builtin_memcpy(bytes, &lanes, sizeof(V));
}

template <typename V, std::size_t... I>
[[gnu::always_inline]] inline V Broadcast(Element<V> value, std::index_sequence<I...>) noexcept
{
    return V{(static_cast<void>(I), value)...};
}

/// One number in every lane.
template <typename V>
[[gnu::always_inline]] inline V Broadcast(Element<V> value) noexcept
{
    return Broadcast<V>(value, std::make_index_sequence<sizeof(V) / sizeof(Element<V>)>());
}

/// The bits of a vector as another type.
template <typename To, typename From>
[[gnu::always_inline]] inline To Bits(From lanes) noexcept
{
    static_assert(sizeof(To) == sizeof(From));
    return reinterpret_cast<To>(lanes);
}

template <typename V, std::size_t... I>
[[gnu::always_inline]] inline auto Concatenate(V low, V high, std::index_sequence<I...>) noexcept
{
    return __builtin_shufflevector(low, high, I...);
}

/// BYTES bytes gathered 16 at a time from addresses that lie `stride` bytes apart.
template <typename T, std::size_t BYTES>
[[gnu::always_inline]] inline Lanes<T, BYTES> LoadParts(std::byte const* bytes, std::size_t stride) noexcept
{
    if constexpr (BYTES == 16)
        return Load<Lanes<T, 16>>(bytes);
    else
        return Concatenate(LoadParts<T, BYTES / 2>(bytes, stride),
                           LoadParts<T, BYTES / 2>(bytes + BYTES / 32 * stride, stride),
                           std::make_index_sequence<BYTES / sizeof(T)>());
}

template <typename V, std::size_t FIRST, std::size_t... I>
[[gnu::always_inline]] inline auto Half(V lanes, std::index_sequence<I...>) noexcept
{
    return __builtin_shufflevector(lanes, lanes, (FIRST + I)...);
}

/// The reverse of LoadParts().
template <typename V>
[[gnu::always_inline]] inline void StoreParts(V lanes, std::byte* bytes, std::size_t stride) noexcept
{
    constexpr std::size_t COUNT = sizeof(V) / sizeof(Element<V>) / 2;
    if constexpr (sizeof(V) == 16)
        Store(lanes, bytes);
    else
    {
        StoreParts(Half<V, 0>(lanes, std::make_index_sequence<COUNT>()), bytes, stride);
        StoreParts(Half<V, COUNT>(lanes, std::make_index_sequence<COUNT>()), bytes + sizeof(V) / 32 * stride, stride);
    }
}

/// Where lane `lane` of PickEach() comes from, in a concatenation of its two vectors.
template <typename V, int... FROM>
[[nodiscard]] constexpr int SourceOf(std::size_t lane) noexcept
{
    constexpr int SOURCES[] = {FROM...};
    constexpr int WIDTH = sizeof...(FROM);
    constexpr int COUNT = sizeof(V) / sizeof(Element<V>);
    int const inPart = static_cast<int>(lane) % WIDTH;
    int const part = static_cast<int>(lane) - inPart;
    return part + SOURCES[inPart] + (inPart < WIDTH / 2 ? 0 : COUNT);
}

template <int... FROM, typename V, std::size_t... I>
[[gnu::always_inline]] inline V PickEach(V a, V b, std::index_sequence<I...>) noexcept
{
    return __builtin_shufflevector(a, b, SourceOf<V, FROM...>(I)...);
}

/// In each 16 bytes: the first half of the lanes comes from those of `a`, the second from those of `b`, by index.
template <int... FROM, typename V>
[[gnu::always_inline]] inline V Pick(V a, V b) noexcept
{
    static_assert(sizeof...(FROM) * sizeof(Element<V>) == 16);
    return PickEach<FROM...>(a, b, std::make_index_sequence<sizeof(V) / sizeof(Element<V>)>());
}

/// Reads narrow unsigned integers as lanes of 32 bits.
template <typename I, typename Narrow>
[[gnu::always_inline]] inline I Widen(Narrow const* values) noexcept
{
#if defined __AVX512F__
    if constexpr (sizeof(I) == 64 && sizeof(Narrow) == 1)
        return Bits<I>(_mm512_maskz_cvtepu8_epi32(__mmask16{0xFFFF}, Load<__m128i>(values)));
#endif
#if defined __AVX2__
    if constexpr (sizeof(I) == 32 && sizeof(Narrow) == 1)
        return Bits<I>(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<__m128i const*>(values))));
#endif
    return __builtin_convertvector(Load<Lanes<Narrow, sizeof(I) / sizeof(std::int32_t) * sizeof(Narrow)>>(values), I);
}

/// Writes four vectors of integers from 0 to 255 as bytes.
template <typename I>
[[gnu::always_inline]] inline void StoreNarrow(I const (&lanes)[4], std::uint8_t* bytes) noexcept
{
    constexpr std::size_t COUNT = sizeof(I) / sizeof(std::int32_t);
#if defined __AVX512F__
    if constexpr (sizeof(I) == 64)
    {
#pragma GCC unroll 4
        for (std::size_t i = 0; i < 4; ++i)
            Store(_mm512_maskz_cvtepi32_epi8(__mmask16{0xFFFF}, Bits<__m512i>(lanes[i])), bytes + i * COUNT);
        return;
    }
#endif
#if defined __AVX2__
    if constexpr (sizeof(I) == 32)
    {
        auto const pack = [&](std::size_t i)
        { return _mm256_packs_epi32(Bits<__m256i>(lanes[i]), Bits<__m256i>(lanes[i + 1])); };
        // Packing works within halves; the words of the four vectors now stand in the order 0 1 2 3 0 1 2 3.
        __m256i const order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
        Store(_mm256_permutevar8x32_epi32(_mm256_packus_epi16(pack(0), pack(2)), order), bytes);
        return;
    }
#endif
    for (std::size_t i = 0; i < 4; ++i)
        Store(__builtin_convertvector(lanes[i], Lanes<std::uint8_t, COUNT>), bytes + i * COUNT);
}

/// The smaller of each pair, `b` where one is NaN or both are zeros.
template <typename V>
[[gnu::always_inline]] inline V Min(V a, V b) noexcept
{
#if defined __AVX512F__
    if constexpr (std::is_same_v<V, Lanes<float, 64>>)
        return _mm512_maskz_min_ps(__mmask16{0xFFFF}, a, b);
    if constexpr (std::is_same_v<V, Lanes<double, 64>>)
        return _mm512_maskz_min_pd(__mmask8{0xFF}, a, b);
#endif
#if defined __AVX__
    if constexpr (std::is_same_v<V, Lanes<float, 32>>)
        return _mm256_min_ps(a, b);
    if constexpr (std::is_same_v<V, Lanes<double, 32>>)
        return _mm256_min_pd(a, b);
#endif
#if defined __SSE2__
    if constexpr (std::is_same_v<V, Lanes<float, 16>>)
        return _mm_min_ps(a, b);
    if constexpr (std::is_same_v<V, Lanes<double, 16>>)
        return _mm_min_pd(a, b);
#endif
    return a < b ? a : b;
}

/// The larger of each pair, `b` where one is NaN or both are zeros.
template <typename V>
[[gnu::always_inline]] inline V Max(V a, V b) noexcept
{
#if defined __AVX512F__
    if constexpr (std::is_same_v<V, Lanes<float, 64>>)
        return _mm512_maskz_max_ps(__mmask16{0xFFFF}, a, b);
    if constexpr (std::is_same_v<V, Lanes<double, 64>>)
        return _mm512_maskz_max_pd(__mmask8{0xFF}, a, b);
#endif
#if defined __AVX__
    if constexpr (std::is_same_v<V, Lanes<float, 32>>)
        return _mm256_max_ps(a, b);
    if constexpr (std::is_same_v<V, Lanes<double, 32>>)
        return _mm256_max_pd(a, b);
#endif
#if defined __SSE2__
    if constexpr (std::is_same_v<V, Lanes<float, 16>>)
        return _mm_max_ps(a, b);
    if constexpr (std::is_same_v<V, Lanes<double, 16>>)
        return _mm_max_pd(a, b);
#endif
    return a > b ? a : b;
}

/// Whether a comparison held in any lane.
template <typename M>
[[gnu::always_inline]] inline bool Any(M mask) noexcept
{
#if defined __AVX512F__
    if constexpr (sizeof(M) == 64)
        return _mm512_test_epi32_mask(Bits<__m512i>(mask), Bits<__m512i>(mask)) != 0;
#endif
#if defined __AVX__
    if constexpr (sizeof(M) == 32)
        return _mm256_testz_si256(Bits<__m256i>(mask), Bits<__m256i>(mask)) == 0;
#endif
#if defined __SSE2__
    if constexpr (sizeof(M) == 16)
        return _mm_movemask_epi8(Bits<__m128i>(mask)) != 0;
#endif
    bool any = false;
    for (std::size_t lane = 0; lane < sizeof(M) / sizeof(mask[0]); ++lane)
        any |= mask[lane] != 0;
    return any;
}

/// Square roots, rounded to nearest as std::sqrt() is.
template <typename V>
[[gnu::always_inline]] inline V SquareRoot(V lanes) noexcept
{
#if defined __AVX512F__
    if constexpr (std::is_same_v<V, Lanes<float, 64>>)
        return _mm512_maskz_sqrt_ps(__mmask16{0xFFFF}, lanes);
    if constexpr (std::is_same_v<V, Lanes<double, 64>>)
        return _mm512_maskz_sqrt_pd(__mmask8{0xFF}, lanes);
#endif
#if defined __AVX__
    if constexpr (std::is_same_v<V, Lanes<float, 32>>)
        return _mm256_sqrt_ps(lanes);
    if constexpr (std::is_same_v<V, Lanes<double, 32>>)
        return _mm256_sqrt_pd(lanes);
#endif
#if defined __SSE2__
    if constexpr (std::is_same_v<V, Lanes<float, 16>>)
        return _mm_sqrt_ps(lanes);
    if constexpr (std::is_same_v<V, Lanes<double, 16>>)
        return _mm_sqrt_pd(lanes);
#endif
    for (std::size_t lane = 0; lane < sizeof(V) / sizeof(Element<V>); ++lane)
        lanes[lane] = std::sqrt(lanes[lane]);
    return lanes;
}

/// `chosen` where a comparison held, `other` elsewhere.
template <typename V>
[[gnu::always_inline]] inline V Select(Mask<V> mask, V chosen, V other) noexcept
{
    Mask<V> const bits = Bits<Mask<V>>(other);
    return Bits<V>(((Bits<Mask<V>>(chosen) ^ bits) & mask) ^ bits);
}

/// `chosen` where the highest bit of the selector is set, `other` elsewhere.
template <typename V>
[[gnu::always_inline]] inline V SelectBySign(Mask<V> selector, V chosen, V other) noexcept
{
#if defined __AVX512DQ__
    if constexpr (std::is_same_v<V, Lanes<float, 64>>)
        return _mm512_mask_blend_ps(_mm512_movepi32_mask(Bits<__m512i>(selector)), other, chosen);
    if constexpr (std::is_same_v<V, Lanes<double, 64>>)
        return _mm512_mask_blend_pd(_mm512_movepi64_mask(Bits<__m512i>(selector)), other, chosen);
#endif
#if defined __AVX__
    if constexpr (std::is_same_v<V, Lanes<float, 32>>)
        return _mm256_blendv_ps(other, chosen, Bits<__m256>(selector));
    if constexpr (std::is_same_v<V, Lanes<float, 16>>)
        return _mm_blendv_ps(other, chosen, Bits<__m128>(selector));
#endif
    return Select(selector >> (8 * sizeof(Element<V>) - 1), chosen, other);
}

/// Numbers to integers towards zero. What fits no integer gives the lowest one.
template <typename V>
[[gnu::always_inline]] inline Mask<V> Truncate(V lanes) noexcept
{
#if defined __AVX512F__
    if constexpr (std::is_same_v<V, Lanes<float, 64>>)
        return Bits<Mask<V>>(_mm512_maskz_cvttps_epi32(__mmask16{0xFFFF}, lanes));
#endif
#if defined __AVX__
    if constexpr (std::is_same_v<V, Lanes<float, 32>>)
        return Bits<Mask<V>>(_mm256_cvttps_epi32(lanes));
#endif
#if defined __SSE2__
    if constexpr (std::is_same_v<V, Lanes<float, 16>>)
        return Bits<Mask<V>>(_mm_cvttps_epi32(lanes));
#endif
    constexpr float LIMIT = 2147483648.0F;
    Mask<V> const fits = (lanes >= -LIMIT) & (lanes < LIMIT);
    Mask<V> const whole = __builtin_convertvector(Bits<V>(Bits<Mask<V>>(lanes) & fits), Mask<V>);
    return (whole & fits) | (~fits & std::numeric_limits<std::int32_t>::min());
}

} // namespace

} // namespace bv::maths
