#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>

#include <gtest/gtest.h>

#include "bv/String.h"
#include "exhaustive/EveryInput.h"
#include "support/Streams.h"

// All short texts, through the interface of the string, against tables and formulas that stand here.

namespace
{

using bv::String;
using bv::test::ExpectAllRight;
using bv::test::Findings;
using bv::test::Hex;
using bv::test::IsExhaustive;
using bv::test::TryEach;

struct Range
{
    unsigned char first, last;
};

/// A row of table 3-7 of the Unicode Standard, "Well-Formed UTF-8 Byte Sequences".
struct Row
{
    std::size_t length;
    std::array<Range, 4> bytes;
};

constexpr Row WELL_FORMED[] = {
    {1, {{{0x00, 0x7F}}}},
    {2, {{{0xC2, 0xDF}, {0x80, 0xBF}}}},
    {3, {{{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}}},
    {3, {{{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}}},
    {3, {{{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}}},
    {3, {{{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}}},
    {4, {{{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}}},
    {4, {{{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}}},
    {4, {{{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}}},
};

/// The row for each first byte; null where there is none.
constexpr auto ROW_OF = []
{
    std::array<Row const*, 256> rows{};
    for (Row const& row : WELL_FORMED)
        for (unsigned int byte = row.bytes[0].first; byte <= row.bytes[0].last; ++byte)
            rows[byte] = &row;
    return rows;
}();

[[nodiscard]] bool IsWellFormed(unsigned char const* text, unsigned char const* end)
{
    while (text != end)
    {
        Row const* const row = ROW_OF[*text];
        if (row == nullptr || row->length > static_cast<std::size_t>(end - text))
            return false;
        for (std::size_t i = 1; i < row->length; ++i)
            if (text[i] < row->bytes[i].first || text[i] > row->bytes[i].last)
                return false;
        text += row->length;
    }
    return true;
}

/// All texts of so many bytes of which the first is at least this one, with so many letters in front and behind.
/// Counted are those without NUL that the string keeps.
[[nodiscard]] Findings TryBytes(std::size_t length, unsigned int lowestFirst, std::size_t letters)
{
    auto const tryText = [=, string = String()](std::uint64_t number, Findings& findings) mutable
    {
        std::array<unsigned char, 32> bytes{};
        std::size_t const end = letters + length;
        std::memset(bytes.data(), 'a', end + letters);
        for (std::size_t i = end; i-- > letters; number >>= 8)
            bytes[i] = static_cast<unsigned char>(number);
        bytes[letters] = static_cast<unsigned char>(bytes[letters] + lowestFirst);

        auto const* const text = reinterpret_cast<char const*>(bytes.data());
        std::size_t const untilNul = std::strlen(text);
        bool const isWellFormed = IsWellFormed(bytes.data(), bytes.data() + untilNul);
        string = text;
        findings.Note(std::strcmp(string.ToCharArray(), isWellFormed ? text : "") == 0,
                      [&] { return Hex(std::string(text, end + letters)); });
        findings.Count(untilNul == end + letters && !string.IsEmpty());
    };
    return TryEach(std::uint64_t{256 - lowestFirst} << (8 * (length - 1)), tryText);
}

void ExpectAllRight(Findings const& findings, std::uint64_t size, std::uint64_t kept)
{
    ExpectAllRight(findings, size);
    if (IsExhaustive())
    {
        EXPECT_EQ(findings.Counted(), kept);
    }
}

// How many characters have so many bytes, NUL apart: all below a bound but those below the one before it, and the
// surrogates.
constexpr std::uint64_t OF_ONE = 0x7F;
constexpr std::uint64_t OF_TWO = 0x800 - 0x80;
constexpr std::uint64_t OF_THREE = 0x10000 - 0x800 - 0x800;
constexpr std::uint64_t OF_FOUR = 0x110000 - 0x10000;
// How many texts: by the length of the first character, and what may follow it.
constexpr std::uint64_t TEXTS_OF_TWO = OF_ONE * OF_ONE + OF_TWO;
constexpr std::uint64_t TEXTS_OF_THREE = OF_ONE * TEXTS_OF_TWO + OF_TWO * OF_ONE + OF_THREE;
constexpr std::uint64_t TEXTS_OF_FOUR_FROM_C0_ON = OF_TWO * TEXTS_OF_TWO + OF_THREE * OF_ONE + OF_FOUR;

constexpr std::uint64_t UP_TO_THREE_BYTES = 0x100 + 0x10000 + 0x1000000;
constexpr std::uint64_t FOUR_BYTES_FROM_C0_ON = std::uint64_t{0x40} << 24;
static_assert(UP_TO_THREE_BYTES + FOUR_BYTES_FROM_C0_ON == 1'090'584'832);

TEST(TextExhaustively, BytesAreKeptWhereTheyAreWellFormedUpToThree)
{
    Findings findings = TryBytes(1, 0, 0);
    findings += TryBytes(2, 0, 0);
    findings += TryBytes(3, 0, 0);
    ExpectAllRight(findings, UP_TO_THREE_BYTES, OF_ONE + TEXTS_OF_TWO + TEXTS_OF_THREE);
}

TEST(TextExhaustively, BytesAreKeptWhereTheyAreWellFormedUpToThreeAmongASCII)
{
    // ASCII is skipped in steps of eight bytes; with seven in front, a step begins within the three.
    for (std::size_t const letters : {7U, 8U})
        ExpectAllRight(TryBytes(3, 0, letters), 0x1000000, TEXTS_OF_THREE);
}

TEST(TextExhaustively, FourBytesAreKeptWhereTheyAreWellFormed)
{
    ExpectAllRight(TryBytes(4, 0xC0, 0), FOUR_BYTES_FROM_C0_ON, TEXTS_OF_FOUR_FROM_C0_ON);
}

/// A code point in both encodings, by their definitions (tables 3-5 and 3-6 of the Unicode Standard).
struct Encoded
{
    std::array<char, 5> bytes{};
    std::array<wchar_t, 3> units{};

    explicit Encoded(std::uint32_t point)
    {
        auto const continuation = [&](int shift) { return static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
        if (point < 0x80)
            bytes = {static_cast<char>(point)};
        else if (point < 0x800)
            bytes = {static_cast<char>(0xC0 | (point >> 6)), continuation(0)};
        else if (point < 0x10000)
            bytes = {static_cast<char>(0xE0 | (point >> 12)), continuation(6), continuation(0)};
        else
            bytes = {static_cast<char>(0xF0 | (point >> 18)), continuation(12), continuation(6), continuation(0)};
        if (point < 0x10000)
            units = {static_cast<wchar_t>(point)};
        else
            units = {static_cast<wchar_t>(0xD800 | ((point - 0x10000) >> 10)),
                     static_cast<wchar_t>(0xDC00 | ((point - 0x10000) & 0x3FF))};
    }
};

[[nodiscard]] bool IsSurrogate(std::uint32_t value)
{
    return value >= 0xD800 && value <= 0xDFFF;
}

/// What a string makes of a code point that comes as wide text, and whether it goes out as it came.
[[nodiscard]] bool Keeps(String& string, wchar_t const* text, Encoded const& point)
{
    string = text;
    return std::strcmp(string.ToCharArray(), point.bytes.data()) == 0 &&
           std::wcscmp(string.ToWCharArray(), point.units.data()) == 0;
}

TEST(TextExhaustively, CodePointsComeBackFromEitherEncoding)
{
    auto const tryPoint = [string = String()](std::uint64_t number, Findings& findings) mutable
    {
        auto const point = static_cast<std::uint32_t>(number + 1);
        Encoded const encoded(point);
        bool isRight = false;
        string = encoded.bytes.data();
        if (IsSurrogate(point))
            isRight = string.IsEmpty();
        else
        {
            isRight = std::strcmp(string.ToCharArray(), encoded.bytes.data()) == 0 &&
                      std::wcscmp(string.ToWCharArray(), encoded.units.data()) == 0;
            isRight = Keeps(string, encoded.units.data(), encoded) && isRight;
        }
        findings.Note(isRight, [&] { return "U+" + std::to_string(point); });
        findings.Count(isRight && !IsSurrogate(point));
    };
    ExpectAllRight(TryEach(0x10FFFF, tryPoint), 0x10FFFF, 1'112'063);
}

TEST(TextExhaustively, AUnitByItselfIsKeptUnlessItIsASurrogate)
{
    auto const tryUnit = [string = String()](std::uint64_t number, Findings& findings) mutable
    {
        auto const unit = static_cast<std::uint32_t>(number + 1);
        wchar_t const text[] = {static_cast<wchar_t>(unit), 0};
        string = "before";
        string = text;
        bool const isRight =
            IsSurrogate(unit) ? string.IsEmpty() : std::strcmp(string.ToCharArray(), Encoded(unit).bytes.data()) == 0;
        findings.Note(isRight, [&] { return std::to_string(unit); });
        findings.Count(!string.IsEmpty());
    };
    ExpectAllRight(TryEach(0xFFFF, tryUnit), 0xFFFF, 0xFFFF - 0x800);
}

TEST(TextExhaustively, TwoSurrogatesAreKeptWhereTheyAreAPair)
{
    auto const tryTwo = [string = String()](std::uint64_t number, Findings& findings) mutable
    {
        std::uint32_t const first = 0xD800 + static_cast<std::uint32_t>(number >> 11);
        std::uint32_t const second = 0xD800 + static_cast<std::uint32_t>(number & 0x7FF);
        bool const isPair = first < 0xDC00 && second >= 0xDC00;
        wchar_t const text[] = {static_cast<wchar_t>(first), static_cast<wchar_t>(second), 0};
        bool isRight = false;
        if (isPair)
        {
            Encoded const point(0x10000 + ((first & 0x3FF) << 10) + (second & 0x3FF));
            isRight = Keeps(string, text, point);
        }
        else
        {
            string = "before";
            string = text;
            isRight = string.IsEmpty();
        }
        findings.Note(isRight, [&] { return std::to_string(first) + ' ' + std::to_string(second); });
        findings.Count(isPair);
    };
    ExpectAllRight(TryEach(0x800 * 0x800, tryTwo), 0x800 * 0x800, 0x400 * 0x400);
}

TEST(TextExhaustively, ASurrogateBesideAnotherUnitIsRefused)
{
    auto const tryUnit = [string = String()](std::uint64_t number, Findings& findings) mutable
    {
        auto const unit = static_cast<std::uint32_t>(number + 1);
        auto const other = static_cast<wchar_t>(unit);
        bool isRight = true;
        for (wchar_t const surrogate : {wchar_t{0xD800}, wchar_t{0xDBFF}, wchar_t{0xDC00}, wchar_t{0xDFFF}})
        {
            wchar_t const texts[][3] = {{surrogate, other, 0}, {other, surrogate, 0}};
            for (wchar_t const* const text : texts)
            {
                string = "before";
                string = text;
                isRight = isRight && (string.IsEmpty() || IsSurrogate(unit));
            }
        }
        findings.Note(isRight, [&] { return std::to_string(unit); });
    };
    ExpectAllRight(TryEach(0xFFFF, tryUnit), 0xFFFF);
}

#if WCHAR_MAX > 0xFFFF // elements of 16 bits are units, which the tests above try

TEST(TextExhaustively, AWideElementIsACodePointByItself)
{
    constexpr std::uint64_t SIZE = 0x20000 + 0x100000; // beyond the last code point, too
    auto const tryElement = [string = String()](std::uint64_t number, Findings& findings) mutable
    {
        auto const element = static_cast<std::uint32_t>(number + 0x10000);
        wchar_t const text[] = {static_cast<wchar_t>(element), 0};
        bool isRight = false;
        if (element <= 0x10FFFF)
            isRight = Keeps(string, text, Encoded(element));
        else
        {
            string = "before";
            string = text;
            isRight = string.IsEmpty();
        }
        findings.Note(isRight, [&] { return std::to_string(element); });
    };
    ExpectAllRight(TryEach(SIZE, tryElement), SIZE);
}

#endif

} // namespace
