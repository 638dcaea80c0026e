#pragma once

/// @file
/// The texts that both sides of the string rows work on.

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace bench
{

/// A kind of text: its name in the rows, and what it is made of.
struct TextKind
{
    char const* name;
    std::vector<std::u32string> words; ///< drawn at random, one after the other
};

inline TextKind const TEXT_KINDS[] = {
    {"ASCII", {U"the ", U"ray ", U"hits a ", U"box, ", U"and misses ", U"its sphere; "}},
    // Four languages and symbols, as in a list of file names.
    {"mixed",
     {U"scene ", U"Gr\u00FC\u00DFe ", U"\u043F\u0440\u0438\u0432\u0435\u0442 ", U"\u4E16\u754C\u306E\u7D75 ",
      U"box.obj ", U"\U0001F600 ", U"\u20AC100, ", U"texture_01.png "}},
    // An accent every few letters.
    {"accents", {U"\u00E9t\u00E9 ", U"gar\u00E7on ", U"na\u00EFf ", U"d\u00E9j\u00E0 ", U"o\u00F9 ", U"le "}},
    {"CJK", {U"\u4E16\u754C", U"\u5149\u7DDA", U"\u7403", U"\u7BB1\u306E\u4E2D"}},
    {"emoji", {U"\U0001F600", U"\U0001F680", U"\U0001F4A1", U"\U00010348"}},
};

inline constexpr std::size_t TEXT_SIZES[] = {16, 256, 65536};

/// A text of a kind with so many bytes of UTF-8; what a last character leaves free is filled with full stops.
inline std::string MakeText(TextKind const& kind, std::size_t size)
{
    auto const encode = [](char32_t point)
    {
        auto const byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
        if (point < 0x80)
            return std::string{byte(point)};
        if (point < 0x800)
            return std::string{byte(0xC0 | point >> 6), byte(0x80 | (point & 0x3F))};
        if (point < 0x10000)
            return std::string{byte(0xE0 | point >> 12), byte(0x80 | (point >> 6 & 0x3F)), byte(0x80 | (point & 0x3F))};
        return std::string{byte(0xF0 | point >> 18), byte(0x80 | (point >> 12 & 0x3F)),
                           byte(0x80 | (point >> 6 & 0x3F)), byte(0x80 | (point & 0x3F))};
    };
    std::mt19937 generator(1);
    std::string text;
    for (;;)
    {
        for (char32_t const point : kind.words[generator() % kind.words.size()])
        {
            std::string const bytes = encode(point);
            if (text.size() + bytes.size() > size)
                return text.append(size - text.size(), '.');
            text += bytes;
        }
    }
}

/// The name of a row's first three parts: "string/construct ASCII 16/char".
inline std::string TextRow(char const* operation, char const* kind, std::size_t size, char const* elements)
{
    return std::string("string/") + operation + ' ' + kind + ' ' + std::to_string(size) + '/' + elements + '/';
}

} // namespace bench
