#pragma once

/// @file
/// The length of a text in its other form, counted before the text is converted: with SSE2 where the compiler has it,
/// in plain C++ elsewhere.

#include <cstddef>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bv
{

/// Elements that are counted together.
inline constexpr std::size_t COUNTED = 64;

/// How many elements more than one an element of a valid text becomes.
[[nodiscard]] constexpr int GetGrowth(char element) noexcept
{
    auto const byte = static_cast<unsigned char>(element);
    return static_cast<int>(byte >= 0xF0) - static_cast<int>((byte & 0xC0) == 0x80);
}

/// @copydoc GetGrowth(char)
[[nodiscard]] constexpr int GetGrowth(wchar_t element) noexcept
{
    auto const value = static_cast<std::int32_t>(element); // negative only where the text is not valid
    return static_cast<int>(value > 0x7F) + static_cast<int>(value > 0x7FF) + static_cast<int>(value > 0xFFFF) -
           static_cast<int>(value >> 11 == 0xD800 >> 11);
}

/// The sum of GetGrowth() over 64 elements.
template <typename Char>
[[nodiscard]] inline int GetBlockGrowthPlainly(Char const* text) noexcept
{
    int growth = 0;
    for (std::size_t i = 0; i < COUNTED; ++i)
        growth += GetGrowth(text[i]);
    return growth;
}

#ifdef __SSE2__

/// @copydoc GetBlockGrowthPlainly(Char const*)
[[nodiscard]] inline int GetBlockGrowth(char const* text) noexcept
{
    constexpr int STEP = 16;
    __m128i sums = _mm_set1_epi8(COUNTED / STEP); // so large that none becomes negative
    for (std::size_t at = 0; at < COUNTED; at += STEP)
    {
        __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text + at));
        __m128i const follows = _mm_cmplt_epi8(bytes, _mm_set1_epi8(-0x40));                        // 0x80 to 0xBF
        __m128i const leadsFour = _mm_cmpeq_epi8(_mm_max_epu8(bytes, _mm_set1_epi8(-0x10)), bytes); // 0xF0 and more
        sums = _mm_sub_epi8(_mm_add_epi8(sums, follows), leadsFour);
    }
    __m128i const halves = _mm_sad_epu8(sums, _mm_setzero_si128());
    return _mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4) - static_cast<int>(COUNTED);
}

/// @copydoc GetBlockGrowthPlainly(Char const*)
[[nodiscard]] inline int GetBlockGrowth(wchar_t const* text) noexcept
{
    if constexpr (sizeof(wchar_t) != 4)
        return GetBlockGrowthPlainly(text);
    auto const load = [text](std::size_t at) { return _mm_loadu_si128(reinterpret_cast<__m128i const*>(text + at)); };
    __m128i bits = load(0);
    for (std::size_t at = 4; at < COUNTED; at += 4)
        bits = _mm_or_si128(bits, load(at));
    auto const isAnyAbove = [bits](int limit)
    {
        __m128i const above = _mm_and_si128(bits, _mm_set1_epi32(~limit));
        return _mm_movemask_epi8(_mm_cmpeq_epi32(above, _mm_setzero_si128())) != 0xFFFF;
    };
    if (!isAnyAbove(0x7F))
        return 0;
    if (isAnyAbove(0xFFFF))
        return GetBlockGrowthPlainly(text);

    // Eight at a time, moved down by 0x8000 so that they fit signed elements of 16 bits.
    __m128i const shift = _mm_set1_epi32(0x8000);
    __m128i sums = _mm_setzero_si128();
    for (std::size_t at = 0; at < COUNTED; at += 8)
    {
        __m128i const units = _mm_packs_epi32(_mm_sub_epi32(load(at), shift), _mm_sub_epi32(load(at + 4), shift));
        __m128i const two = _mm_cmpgt_epi16(units, _mm_set1_epi16(0x7F - 0x8000));
        __m128i const three = _mm_cmpgt_epi16(units, _mm_set1_epi16(0x7FF - 0x8000));
        __m128i const surrogate =
            _mm_cmpeq_epi16(_mm_and_si128(units, _mm_set1_epi16(-0x800)), _mm_set1_epi16(0xD800 - 0x8000));
        sums = _mm_add_epi16(_mm_sub_epi16(sums, two), _mm_sub_epi16(surrogate, three));
    }
    __m128i const pairs = _mm_madd_epi16(sums, _mm_set1_epi16(1));
    __m128i const halves = _mm_add_epi32(pairs, _mm_srli_si128(pairs, 8));
    return _mm_cvtsi128_si32(_mm_add_epi32(halves, _mm_srli_si128(halves, 4)));
}

#else

/// @copydoc GetBlockGrowthPlainly(Char const*)
template <typename Char>
[[nodiscard]] inline int GetBlockGrowth(Char const* text) noexcept
{
    return GetBlockGrowthPlainly(text);
}

#endif

/// The number of elements that a valid text becomes; of any other text, some number that is at most four times its
/// length.
template <typename Char>
[[nodiscard]] inline std::size_t GetConvertedLength(Char const* text, Char const* end) noexcept
{
    std::ptrdiff_t length = end - text;
    for (; static_cast<std::size_t>(end - text) >= COUNTED; text += COUNTED)
        length += GetBlockGrowth(text);
    for (; text != end; ++text)
        length += GetGrowth(*text);
    return static_cast<std::size_t>(length);
}

} // namespace bv
