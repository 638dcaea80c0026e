#pragma once

/// @file
/// Validation and conversion of text: ASCII is skipped or copied here, everything else goes to utfcpp.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include <utf8.h>

namespace bv::conversion
{

/// Elements that are looked at together.
inline constexpr std::ptrdiff_t STEP = 8;

/// Whether a whole step of ASCII comes next. A negative wide element is not ASCII.
template <typename Char>
[[nodiscard]] inline bool IsAtAscii(Char const* text, Char const* end) noexcept
{
    constexpr std::uint64_t LARGEST = std::numeric_limits<std::make_unsigned_t<Char>>::max();
    constexpr std::uint64_t NOT_ASCII = ~std::uint64_t{0} / LARGEST * (LARGEST - 0x7F); // in every element of a word
    if (end - text < STEP)
        return false;
    std::uint64_t words[sizeof(Char)];
    std::memcpy(words, text, sizeof words);
    std::uint64_t bits = 0;
    for (std::uint64_t const word : words)
        bits |= word;
    return (bits & NOT_ASCII) == 0;
}

/// The end of the steps of ASCII that come next.
template <typename Char>
[[nodiscard]] inline Char const* SkipAscii(Char const* text, Char const* end) noexcept
{
    while (IsAtAscii(text, end))
        text += STEP;
    return text;
}

/// The end of what goes to utfcpp: behind the first element of the next step of ASCII. No character stands across it,
/// and utfcpp sees what follows a truncated sequence, on which the exception depends.
template <typename Char>
[[nodiscard]] inline Char const* SkipOthers(Char const* text, Char const* end) noexcept
{
    while (text != end && !IsAtAscii(text, end))
        text += std::min(STEP, end - text);
    return text == end ? end : text + 1;
}

/// Whether a text is well-formed UTF-8.
[[nodiscard]] inline bool IsValid(char const* text, char const* end)
{
    while (text != end)
    {
        char const* const others = SkipAscii(text, end);
        text = SkipOthers(others, end);
        if (!utf8::is_valid(others, text))
            return false;
    }
    return true;
}

/// Converts by utfcpp alone.
inline wchar_t* ConvertOthers(char const* text, char const* end, wchar_t* out)
{
    return utf8::utf8to16(text, end, out);
}

/// Converts by utfcpp alone. Elements that are too large for a unit of UTF-16 are code points.
inline char* ConvertOthers(wchar_t const* text, wchar_t const* end, char* out)
{
    auto const isUnit = [](wchar_t element) { return static_cast<std::uint32_t>(element) >> 16 == 0; };
    while (text != end)
    {
        wchar_t const* const points = std::find_if_not(text, end, isUnit);
        out = utf8::utf16to8(text, points, out);
        text = std::find_if(points, end, isUnit);
        out = utf8::utf32to8(points, text, out);
    }
    return out;
}

/// Converts a text into a buffer that is long enough, and returns the end of what it wrote.
/// @throws utf8::exception when the text is malformed.
template <typename In, typename Out>
Out* Convert(In const* text, In const* end, Out* out)
{
    while (text != end)
    {
        In const* const others = SkipAscii(text, end);
        out = std::copy(text, others, out);
        text = SkipOthers(others, end);
        out = ConvertOthers(others, text, out);
    }
    return out;
}

/// How many elements more than one an element of a well-formed text becomes.
template <typename Char>
[[nodiscard]] constexpr int GetGrowth(Char element) noexcept
{
    if constexpr (sizeof(Char) == 1)
        return int{(element & 0xF0) == 0xF0} - int{(element & 0xC0) == 0x80};
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): not for bytes
    auto const value = static_cast<std::int32_t>(element); // negative in malformed text only
    return int{value > 0x7F} + int{value > 0x7FF} + int{value > 0xFFFF} - int{value >> 11 == 0xD800 >> 11};
}

/// The length of a well-formed text when it is converted. Of a malformed text, Convert() writes no more than this.
template <typename Char>
[[nodiscard]] std::size_t GetConvertedLength(Char const* text, Char const* end) noexcept
{
    std::ptrdiff_t length = end - text;
    while ((text = SkipAscii(text, end)) != end)
    {
        int growth = 0; // of a few steps at a time, which compilers vectorise
        for (Char const* const next = text + std::min(8 * STEP, end - text); text != next; ++text)
            growth += GetGrowth(*text);
        length += growth;
    }
    return static_cast<std::size_t>(length);
}

} // namespace bv::conversion
