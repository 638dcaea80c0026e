#pragma once

/// @file
/// ASCII in text, found and converted sixteen elements at a time: with SSE2 where the compiler has it, in plain C++
/// elsewhere. Whatever is not ASCII is left to the caller.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bv::ascii
{

/// Elements that are looked at together, one bit of a mask for each.
inline constexpr std::size_t BLOCK = 64;
/// Elements that are converted together.
inline constexpr std::size_t STEP = 16;

/// Whether an element of text is ASCII. A wide element that is negative is not.
template <typename Char>
[[nodiscard]] constexpr bool IsAscii(Char element) noexcept
{
    return static_cast<std::make_unsigned_t<Char>>(element) < 0x80;
}

#ifdef __SSE2__
/// Sixteen wide elements in bytes, and which of them are not ASCII: bit i for element i.
struct Packed
{
    __m128i bytes;
    std::uint32_t others;
};

[[nodiscard]] inline Packed Pack(wchar_t const* text) noexcept
{
    auto const load = [text](std::size_t at) { return _mm_loadu_si128(reinterpret_cast<__m128i const*>(text + at)); };
    __m128i halves[2];
    if constexpr (sizeof(wchar_t) == 2)
    {
        halves[0] = load(0);
        halves[1] = load(8);
    }
    else
    {
        halves[0] = _mm_packs_epi32(load(0), load(4));
        halves[1] = _mm_packs_epi32(load(8), load(12));
    }
    // What is above 0x7F is so in the first, if need be as 0xFF; what is negative is so in the second.
    __m128i const bytes = _mm_packus_epi16(halves[0], halves[1]);
    __m128i const negative = _mm_packs_epi16(halves[0], halves[1]);
    return {bytes, static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_or_si128(bytes, negative)))};
}
#endif

/// Which of the 16 elements at `text` are not ASCII: bit i for element i.
template <typename Char>
[[nodiscard]] inline std::uint32_t FindOthersInStep(Char const* text) noexcept
{
#ifdef __SSE2__
    if constexpr (sizeof(Char) == 1)
        return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_loadu_si128(reinterpret_cast<__m128i const*>(text))));
    else
        return Pack(text).others;
#else
    if constexpr (sizeof(Char) == 1)
    {
        std::uint64_t words[2];
        std::memcpy(words, text, sizeof words);
        if (((words[0] | words[1]) & 0x8080808080808080) == 0)
            return 0;
    }
    std::uint32_t others = 0;
    for (std::size_t i = 0; i < STEP; ++i)
        others |= static_cast<std::uint32_t>(!IsAscii(text[i])) << i;
    return others;
#endif
}

/// Which of the first `count` elements at `text`, fewer than 16, are not ASCII.
template <typename Char>
[[nodiscard]] inline std::uint64_t FindOthersInLess(Char const* text, std::size_t count) noexcept
{
#ifdef __SSE2__
    if (sizeof(Char) == 1 && count >= STEP / 2)
    {
        // Two halves, which overlap.
        auto const find = [](Char const* half)
        {
            __m128i const bytes = _mm_loadl_epi64(reinterpret_cast<__m128i const*>(half));
            return static_cast<std::uint64_t>(_mm_movemask_epi8(bytes));
        };
        std::size_t const at = count - STEP / 2;
        return find(text) | find(text + at) << at;
    }
#endif
    std::uint64_t others = 0;
    for (std::size_t i = 0; i < count; ++i)
        others |= std::uint64_t{!IsAscii(text[i])} << i;
    return others;
}

/// Which of the first `count` elements at `text`, at most 64, are not ASCII: bit i for element i. Nothing after them is
/// read.
template <typename Char>
[[nodiscard]] inline std::uint64_t FindOthers(Char const* text, std::size_t count) noexcept
{
    std::uint64_t others = 0;
    std::size_t at = 0;
    for (; at + STEP <= count; at += STEP)
        others |= std::uint64_t{FindOthersInStep(text + at)} << at;
    if (at == count)
        return others;
    if (count >= STEP)
    {
        // The last step overlaps the one before.
        at = count - STEP;
        return others | std::uint64_t{FindOthersInStep(text + at)} << at;
    }
    return FindOthersInLess(text, count);
}

/// Converts 16 elements. Of those that are ASCII the result is right, of the others it means nothing.
/// @return which elements are not ASCII: bit i for element i.
inline std::uint32_t ConvertStep(char const* text, wchar_t* out) noexcept
{
#ifdef __SSE2__
    __m128i const zero = _mm_setzero_si128();
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text));
    __m128i const halves[2] = {_mm_unpacklo_epi8(bytes, zero), _mm_unpackhi_epi8(bytes, zero)};
    auto const store = [out](std::size_t at, __m128i elements)
    { _mm_storeu_si128(reinterpret_cast<__m128i*>(out + at), elements); };
    if constexpr (sizeof(wchar_t) == 2)
    {
        store(0, halves[0]);
        store(8, halves[1]);
    }
    else
    {
        store(0, _mm_unpacklo_epi16(halves[0], zero));
        store(4, _mm_unpackhi_epi16(halves[0], zero));
        store(8, _mm_unpacklo_epi16(halves[1], zero));
        store(12, _mm_unpackhi_epi16(halves[1], zero));
    }
    return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
#else
    for (std::size_t i = 0; i < STEP; ++i)
        out[i] = static_cast<wchar_t>(static_cast<unsigned char>(text[i]));
    return FindOthersInStep(text);
#endif
}

/// @copydoc ConvertStep(char const*, wchar_t*)
inline std::uint32_t ConvertStep(wchar_t const* text, char* out) noexcept
{
#ifdef __SSE2__
    Packed const packed = Pack(text);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), packed.bytes);
    return packed.others;
#else
    for (std::size_t i = 0; i < STEP; ++i)
        out[i] = static_cast<char>(text[i]);
    return FindOthersInStep(text);
#endif
}

/// Converts fewer than 16 elements of ASCII, in a function of its own: unrolled in each caller, it is more code than it
/// is worth.
template <typename In, typename Out>
[[gnu::noinline]] void ConvertRest(In const* text, std::size_t count, Out* out) noexcept
{
    for (std::size_t i = 0; i < count % STEP; ++i)
        out[i] = static_cast<Out>(text[i]);
}

/// Converts ASCII of which `count` elements are known. Reads up to `readable` elements and writes up to `count` rounded
/// up to a multiple of 16.
/// @return the end of what was converted.
template <typename In, typename Out>
inline Out* Convert(In const* text, std::size_t count, std::size_t readable, Out* out) noexcept
{
    std::size_t at = 0;
    for (; at < count && at + STEP <= readable; at += STEP)
        ConvertStep(text + at, out + at);
    if (at < count)
        ConvertRest(text + at, count - at, out + at);
    return out + count;
}

} // namespace bv::ascii
