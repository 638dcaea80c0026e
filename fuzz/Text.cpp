// Texts of bytes: what is valid UTF-8 stays as it is and comes back from UTF-16, anything else is empty.

#include <string>
#include <string_view>

#include "Fuzz.h"
#include "bv/Hash.h"
#include "bv/String.h"

using namespace bv;
using namespace bv::fuzz;

namespace
{

/// Whether the bytes are well-formed by the table of the Unicode Standard (3-7), row by row.
bool IsWellFormed(std::string_view text)
{
    auto const at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    auto const isIn = [&](std::size_t i, unsigned low, unsigned high) { return at(i) >= low && at(i) <= high; };
    for (std::size_t i = 0; i < text.size();)
    {
        if (isIn(i, 0x00, 0x7F))
            i += 1;
        else if (isIn(i, 0xC2, 0xDF) && isIn(i + 1, 0x80, 0xBF))
            i += 2;
        else if (((at(i) == 0xE0 && isIn(i + 1, 0xA0, 0xBF)) || (isIn(i, 0xE1, 0xEC) && isIn(i + 1, 0x80, 0xBF)) ||
                  (at(i) == 0xED && isIn(i + 1, 0x80, 0x9F)) || (isIn(i, 0xEE, 0xEF) && isIn(i + 1, 0x80, 0xBF))) &&
                 isIn(i + 2, 0x80, 0xBF))
            i += 3;
        else if (((at(i) == 0xF0 && isIn(i + 1, 0x90, 0xBF)) || (isIn(i, 0xF1, 0xF3) && isIn(i + 1, 0x80, 0xBF)) ||
                  (at(i) == 0xF4 && isIn(i + 1, 0x80, 0x8F))) &&
                 isIn(i + 2, 0x80, 0xBF) && isIn(i + 3, 0x80, 0xBF))
            i += 4;
        else
            return false;
    }
    return true;
}

std::uint32_t HashOf(std::string_view text)
{
    std::uint32_t hash = 2166136261U; // Fowler, Noll, Vo, FNV-1a: mix in, then multiply
    for (char const byte : text)
    {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 16777619U;
    }
    return hash;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    std::size_t const split = input.Take<std::uint16_t>();
    std::string const all = input.Rest();
    std::string const first = all.substr(0, std::min(split, all.size())).c_str(); // up to its first NUL
    std::string const second = all.substr(std::min(split, all.size())).c_str();
    String const text(first.c_str());
    String const other(second.c_str());

    std::string const expected = IsWellFormed(first) ? first : "";
    std::string const otherExpected = IsWellFormed(second) ? second : "";
    Require(text.ToCharArray() == expected, "a text is what it was made of, or empty");
    Require(text.IsEmpty() == expected.empty(), "IsEmpty() says so");
    Require(String(text.ToWCharArray()) == text, "a text comes back from UTF-16");
    Require(FNVHash32(text) == HashOf(expected), "the hash is the published one");

    Require((text == other) == (expected == otherExpected), "== compares bytes");
    Require((text != other) == (expected != otherExpected), "!= compares bytes");
    Require((text < other) == (expected < otherExpected), "< compares bytes");
    Require((text > other) == (expected > otherExpected), "> compares bytes");
    Require(text.Contains(other) == (expected.find(otherExpected) != std::string::npos), "Contains() finds bytes");

    String joined = text + other;
    Require(joined.ToCharArray() == expected + otherExpected, "+ joins");
    Require(joined.Contains(text) && joined.Contains(other), "what is joined contains its parts");
    String grown(text);
    grown += other;
    Require(grown == joined, "+= does what + does");
    grown += grown;
    Require(grown == joined + joined, "a text can be added to itself");
    grown = text;
    Require(grown == text, "a text can be assigned");
    grown = second.c_str();
    Require(grown == other, "bytes can be assigned");
    grown = text.ToWCharArray();
    Require(grown == text, "units can be assigned");
    grown.Clear();
    Require(grown.IsEmpty() && String(grown) == String(), "a text can be cleared");
    return 0;
}
