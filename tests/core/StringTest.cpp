#include "bv/String.h"

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace
{

using bv::String;

// What the class promises to the compiler.
static_assert(sizeof(String) == 2 * sizeof(void*), "the virtual table and one pointer");
static_assert(std::is_polymorphic_v<String> && std::has_virtual_destructor_v<String>);
static_assert(std::is_default_constructible_v<String> && std::is_copy_constructible_v<String>);
static_assert(std::is_convertible_v<char const*, String> && std::is_convertible_v<wchar_t const*, String>);
static_assert(!std::is_constructible_v<String, int> && !std::is_constructible_v<String, std::string>);
static_assert(!std::is_convertible_v<String, char const*> && !std::is_convertible_v<String, bool>);
static_assert(std::is_same_v<decltype(std::declval<String&>() = String()), String&>);
static_assert(std::is_same_v<decltype(std::declval<String&>() = ""), String&>);
static_assert(std::is_same_v<decltype(std::declval<String&>() = L""), String&>);
static_assert(std::is_same_v<decltype(std::declval<String&>() += String()), String&>);
using Concatenation = String (String::*)(String const&);
using ConstConcatenation = String (String::*)(String const&) const;
static_assert(std::is_same_v<decltype(static_cast<Concatenation>(&String::operator+)), Concatenation>);
static_assert(std::is_same_v<decltype(static_cast<ConstConcatenation>(&String::operator+)), ConstConcatenation>);
using Comparison = bool (String::*)(String const&) const noexcept;
static_assert(std::is_same_v<decltype(&String::operator==), Comparison>);
static_assert(std::is_same_v<decltype(&String::operator!=), Comparison>);
static_assert(std::is_same_v<decltype(&String::operator<), Comparison>);
static_assert(std::is_same_v<decltype(&String::operator>), Comparison>);
using Ordering = std::strong_ordering (String::*)(String const&) const noexcept;
static_assert(std::is_same_v<decltype(&String::operator<=>), Ordering>);
#if defined __cpp_lib_three_way_comparison
static_assert(std::totally_ordered<String> && std::three_way_comparable<String, std::strong_ordering>);
#endif
static_assert(std::is_same_v<decltype(&String::Contains), Comparison>);
static_assert(std::is_same_v<decltype(&String::IsEmpty), bool (String::*)() const noexcept>);
static_assert(!std::is_nothrow_move_constructible_v<String>, "what would be moved is copied, and none is ever null");
static_assert(std::is_same_v<decltype(String().ToCharArray()), char const*>);
static_assert(std::is_same_v<decltype(String().ToWCharArray()), wchar_t const*>);
static_assert(std::is_same_v<decltype(std::declval<String&>().Clear()), void>);

template <typename T>
concept GivesStdString = requires(T text)
{
    text.ToStdString();
};
template <typename T>
concept GivesStdWString = requires(T text)
{
    text.ToStdWString();
};
static_assert(!GivesStdString<String> && !GivesStdWString<String>, "private");

constexpr bool HAS_WIDE_ELEMENTS = sizeof(wchar_t) > 2;

/// The bytes of a string, up to the terminating NUL.
std::string Bytes(String const& text)
{
    return text.ToCharArray();
}

/// The UTF-16 units of a string, up to the terminating 0.
std::wstring Units(String const& text)
{
    return text.ToWCharArray();
}

/// Elements as they stand, through the null-terminated pointer.
String FromElements(std::vector<std::uint32_t> const& elements)
{
    std::wstring text;
    for (std::uint32_t element : elements)
        text.push_back(static_cast<wchar_t>(element));
    return text.c_str();
}

/// UTF-8 by the definition: the bits of the code point, six to each continuation byte.
std::string EncodeUTF8(std::uint32_t point)
{
    auto const byte = [](std::uint32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (point < 0x80)
        return {byte(point)};
    if (point < 0x800)
        return {byte(0xC0 + point / 64), byte(0x80 + point % 64)};
    if (point < 0x10000)
        return {byte(0xE0 + point / 4096), byte(0x80 + point / 64 % 64), byte(0x80 + point % 64)};
    return {byte(0xF0 + point / 262144), byte(0x80 + point / 4096 % 64), byte(0x80 + point / 64 % 64),
            byte(0x80 + point % 64)};
}

/// UTF-16 by the definition: ten bits to each half of a pair.
std::wstring EncodeUTF16(std::uint32_t point)
{
    if (point < 0x10000)
        return {static_cast<wchar_t>(point)};
    return {static_cast<wchar_t>(0xD800 + (point - 0x10000) / 1024), static_cast<wchar_t>(0xDC00 + point % 1024)};
}

/// Whether the bytes are well-formed, by the table of well-formed byte sequences of the Unicode standard (table 3-7).
bool IsWellFormed(std::string_view bytes)
{
    struct Row
    {
        unsigned char range[4][2];
        std::size_t length;
    };
    static constexpr Row TABLE[] = {
        {{{0x00, 0x7F}}, 1},
        {{{0xC2, 0xDF}, {0x80, 0xBF}}, 2},
        {{{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}, 3},
        {{{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}, 3},
        {{{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}, 3},
        {{{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}, 3},
        {{{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}, 4},
        {{{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}, 4},
        {{{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}, 4},
    };
    while (!bytes.empty())
    {
        std::size_t length = 0;
        for (Row const& row : TABLE)
        {
            bool fits = row.length <= bytes.size();
            for (std::size_t i = 0; fits && i < row.length; ++i)
            {
                auto const byte = static_cast<unsigned char>(bytes[i]);
                fits = row.range[i][0] <= byte && byte <= row.range[i][1];
            }
            if (fits)
                length = row.length;
        }
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

/// A string keeps well-formed bytes unchanged, and is empty otherwise.
void ExpectKeptOrEmpty(std::string const& bytes)
{
    ASSERT_EQ(Bytes(bytes.c_str()), IsWellFormed(bytes) ? bytes : "") << testing::PrintToString(bytes);
}

char const* const MALFORMED[] = {
    "\x80",                     // a lone continuation byte
    "\xBF",                     // another
    "\xC0\x80",                 // an overlong NUL
    "\xC1\xBF",                 // an overlong U+007F
    "\xE0\x80\x80",             // an overlong NUL in three bytes
    "\xE0\x9F\xBF",             // an overlong U+07FF
    "\xF0\x80\x80\x80",         // an overlong NUL in four bytes
    "\xF0\x8F\xBF\xBF",         // an overlong U+FFFF
    "\xED\xA0\x80",             // the surrogate U+D800
    "\xED\xAF\xBF",             // the surrogate U+DBFF
    "\xED\xB0\x80",             // the surrogate U+DC00
    "\xED\xBF\xBF",             // the surrogate U+DFFF
    "\xED\xA0\xBD\xED\xB8\x80", // a pair of surrogates, each encoded by itself
    "\xF4\x90\x80\x80",         // U+110000
    "\xF5\x80\x80\x80",         // U+140000
    "\xF8\x88\x80\x80\x80",     // five bytes
    "\xFC\x84\x80\x80\x80\x80", // six bytes
    "\xFE",                     // never a lead byte
    "\xFF",                     // never a lead byte
    "\xC3",                     // cut short after one of two bytes
    "\xE2\x82",                 // after two of three
    "\xE2",                     // after one of three
    "\xF0\x9F\x98",             // after three of four
    "\xF0\x9F",                 // after two of four
    "\xF0",                     // after one of four
    "\xC3(",                    // a bad continuation byte
    "\xE2\x82(",                // in third place
    "\xE2(\xAC",                // in second place
    "\xF0\x9F\x98(",            // in fourth place
    "\xC3\xC3",                 // a lead byte where a continuation byte belongs
    "\xC3\xA9\xA9",             // one continuation byte too many
};

TEST(StringTest, ANewStringIsEmpty)
{
    String const text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_STREQ(text.ToCharArray(), "");
    EXPECT_STREQ(text.ToWCharArray(), L"");
}

TEST(StringTest, ANullPointerIsAnEmptyText)
{
    EXPECT_TRUE(String(static_cast<char const*>(nullptr)).IsEmpty());
    EXPECT_TRUE(String(static_cast<wchar_t const*>(nullptr)).IsEmpty());
    EXPECT_STREQ(String(static_cast<char const*>(nullptr)).ToCharArray(), "");
    EXPECT_STREQ(String(static_cast<wchar_t const*>(nullptr)).ToCharArray(), "");
}

TEST(StringTest, AnEmptyTextGivesAnEmptyString)
{
    EXPECT_TRUE(String("").IsEmpty());
    EXPECT_TRUE(String(L"").IsEmpty());
}

TEST(StringTest, ATextWithOneByteIsNotEmpty)
{
    EXPECT_FALSE(String(" ").IsEmpty());
    EXPECT_FALSE(String(L" ").IsEmpty());
}

TEST(StringTest, NarrowTextIsKeptUnchanged)
{
    EXPECT_EQ(Bytes("plain"), "plain");
    EXPECT_EQ(Bytes("Gr\xC3\xBC\xC3\x9F"
                    "e, \xE4\xB8\x96\xE7\x95\x8C \xF0\x9F\x98\x80"),
              "Gr\xC3\xBC\xC3\x9F"
              "e, \xE4\xB8\x96\xE7\x95\x8C \xF0\x9F\x98\x80");
    std::string const longText(100000, 'x');
    EXPECT_EQ(Bytes(longText.c_str()), longText);
}

TEST(StringTest, TextEndsAtItsFirstNUL)
{
    EXPECT_EQ(Bytes("ab\0cd"), "ab");
    EXPECT_EQ(Bytes(L"ab\0cd"), "ab");
    EXPECT_EQ(Bytes("ab\0\xFF"), "ab");
    EXPECT_EQ(Bytes(L"ab\0\xD800"), "ab");
    EXPECT_TRUE(String("\0cd").IsEmpty());
    EXPECT_TRUE(String(L"\0cd").IsEmpty());
    EXPECT_TRUE(String("ab\0cd") == String("ab"));
}

TEST(StringTest, AByteOrderMarkAndNoncharactersAreText)
{
    EXPECT_EQ(Bytes("\xEF\xBB\xBF"
                    "a"),
              "\xEF\xBB\xBF"
              "a");                                   // U+FEFF
    EXPECT_EQ(Bytes("\xEF\xBF\xBE"), "\xEF\xBF\xBE"); // U+FFFE
    EXPECT_EQ(Bytes("\xEF\xBF\xBF"), "\xEF\xBF\xBF"); // U+FFFF
    EXPECT_EQ(Bytes("\xEF\xB7\x90"), "\xEF\xB7\x90"); // U+FDD0
    EXPECT_EQ(Bytes(L"\uFEFF\uFFFE\uFFFF\uFDD0"), "\xEF\xBB\xBF\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xB7\x90");
}

TEST(StringTest, MalformedUTF8GivesAnEmptyString)
{
    for (char const* bytes : MALFORMED)
    {
        EXPECT_FALSE(IsWellFormed(bytes));
        EXPECT_TRUE(String(bytes).IsEmpty()) << testing::PrintToString(bytes);
    }
}

TEST(StringTest, AMalformedSequenceEmptiesTheWholeTextAndDoesNotCutIt)
{
    for (char const* bytes : MALFORMED)
    {
        EXPECT_TRUE(String(("before" + std::string(bytes)).c_str()).IsEmpty()) << testing::PrintToString(bytes);
        EXPECT_TRUE(String((std::string(bytes) + "after").c_str()).IsEmpty()) << testing::PrintToString(bytes);
        EXPECT_TRUE(String(("before" + std::string(bytes) + "after").c_str()).IsEmpty())
            << testing::PrintToString(bytes);
    }
}

TEST(StringTest, ShortByteRunsAreJudgedByTheTableOfTheUnicodeStandard)
{
    for (int a = 1; a < 256; ++a)
    {
        ExpectKeptOrEmpty({static_cast<char>(a)});
        for (int b = 1; b < 256; ++b)
            ExpectKeptOrEmpty({static_cast<char>(a), static_cast<char>(b)});
    }
}

TEST(StringTest, SequencesOfThreeAndFourBytesAreJudgedByTheTableOfTheUnicodeStandard)
{
    constexpr int EDGES[] = {0x01, 0x7F, 0x80, 0x81, 0x8F, 0x90, 0x9F, 0xA0, 0xBE, 0xBF, 0xC0, 0xE0, 0xFF};
    for (int a = 0xC0; a < 256; ++a)
        for (int b = 0x70; b < 0xD0; ++b)
            for (int c : EDGES)
            {
                ExpectKeptOrEmpty({static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)});
                for (int d : EDGES)
                    ExpectKeptOrEmpty(
                        {static_cast<char>(a), static_cast<char>(b), static_cast<char>(c), static_cast<char>(d)});
            }
}

TEST(StringTest, EveryCodePointSurvivesTheWayThroughBothForms)
{
    for (std::uint32_t point = 1; point <= 0x10FFFF; ++point)
    {
        if (point >= 0xD800 && point <= 0xDFFF)
            continue;
        std::string const bytes = EncodeUTF8(point);
        std::wstring const units = EncodeUTF16(point);
        String const narrow = bytes.c_str();
        String const wide = units.c_str();
        ASSERT_EQ(Bytes(narrow), bytes) << point;
        ASSERT_EQ(Bytes(wide), bytes) << point;
        ASSERT_EQ(Units(narrow), units) << point;
        ASSERT_EQ(Units(wide), units) << point;
    }
}

TEST(StringTest, EverySurrogateAloneGivesAnEmptyString)
{
    for (std::uint32_t point = 0xD800; point <= 0xDFFF; ++point)
    {
        ASSERT_TRUE(FromElements({point}).IsEmpty()) << point;
        ASSERT_TRUE(String(EncodeUTF8(point).c_str()).IsEmpty()) << point;
    }
}

TEST(StringTest, WideTextIsConvertedFromUTF16)
{
    EXPECT_EQ(Bytes(L"plain"), "plain");
    EXPECT_EQ(Bytes(L"\u00E9"), "\xC3\xA9");
    EXPECT_EQ(Bytes(L"\u20AC"), "\xE2\x82\xAC");
    EXPECT_EQ(Bytes(L"a\u00E9\u20ACz"), "a\xC3\xA9\xE2\x82\xACz");
    std::wstring const longText(100000, L'x');
    EXPECT_EQ(Bytes(longText.c_str()), std::string(100000, 'x'));
}

TEST(StringTest, ASurrogatePairBecomesFourBytes)
{
    EXPECT_EQ(Bytes(FromElements({0xD83D, 0xDE00})), "\xF0\x9F\x98\x80");
    EXPECT_EQ(Bytes(FromElements({'a', 0xD83D, 0xDE00, 'z'})), "a\xF0\x9F\x98\x80z");
    EXPECT_EQ(Bytes(FromElements({0xD800, 0xDC00})), "\xF0\x90\x80\x80"); // U+10000
    EXPECT_EQ(Bytes(FromElements({0xDBFF, 0xDFFF})), "\xF4\x8F\xBF\xBF"); // U+10FFFF
}

TEST(StringTest, ASurrogateWithoutItsPartnerGivesAnEmptyString)
{
    EXPECT_TRUE(FromElements({0xD83D}).IsEmpty());
    EXPECT_TRUE(FromElements({0xDE00}).IsEmpty());
    EXPECT_TRUE(FromElements({'a', 0xD83D}).IsEmpty());
    EXPECT_TRUE(FromElements({'a', 0xDE00}).IsEmpty());
    EXPECT_TRUE(FromElements({0xD83D, 'a'}).IsEmpty());
    EXPECT_TRUE(FromElements({0xDE00, 'a'}).IsEmpty());
    EXPECT_TRUE(FromElements({0xDE00, 0xD83D}).IsEmpty());
    EXPECT_TRUE(FromElements({0xD83D, 0xD83D, 0xDE00}).IsEmpty());
    EXPECT_TRUE(FromElements({0xD83D, 0xDE00, 0xDE00}).IsEmpty());
    EXPECT_TRUE(FromElements({0xD83D, 0xE000}).IsEmpty());
    EXPECT_TRUE(FromElements({0xD83D, 0xDBFF}).IsEmpty());
}

TEST(StringTest, AWideLiteralMayHoldACodePointAbove0xFFFF)
{
    EXPECT_EQ(Bytes(L"\U0001F600"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(Bytes(L"a\U00010000\U0010FFFFz"), "a\xF0\x90\x80\x80\xF4\x8F\xBF\xBFz");
}

TEST(StringTest, WideTextThatGoesOutHoldsUTF16Units)
{
    EXPECT_EQ(Units("a\xC3\xA9\xE2\x82\xAC"), L"a\u00E9\u20AC");
    std::wstring const pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(Units("\xF0\x9F\x98\x80"), pair);
    EXPECT_EQ(Units(L"\U0001F600"), pair);
    EXPECT_EQ(Units(FromElements({0xD83D, 0xDE00})), pair);
    EXPECT_EQ(Units("a\xF0\x9F\x98\x80z"), L"a" + pair + L"z");
}

TEST(StringTest, SingleElementsOf32BitsAreNotCutTo16)
{
    if constexpr (HAS_WIDE_ELEMENTS)
    {
        EXPECT_EQ(Bytes(FromElements({0x10041})), "\xF0\x90\x81\x81");
        EXPECT_EQ(Bytes(FromElements({'a', 0x10000, 'b'})), "a\xF0\x90\x80\x80"
                                                            "b");
        // Cut to 16 bits, these would be a pair.
        EXPECT_EQ(Bytes(FromElements({0x1D83D, 0x1DE00})), "\xF0\x9D\xA0\xBD\xF0\x9D\xB8\x80");
        EXPECT_EQ(Bytes(FromElements({0x10FFFF})), "\xF4\x8F\xBF\xBF");
    }
    else
    {
        EXPECT_EQ(Bytes(FromElements({0x0041})), "A");
    }
}

TEST(StringTest, AnElementAbove0x10FFFFGivesAnEmptyString)
{
    // Elements of 16 bits hold the last four digits, which are malformed in these, too.
    for (std::uint32_t element : {0x11D800U, 0x7FFFDC00U, 0x8000DFFFU, 0xFFFFD83DU})
    {
        EXPECT_TRUE(FromElements({element}).IsEmpty()) << element;
        EXPECT_TRUE(FromElements({'a', element}).IsEmpty()) << element;
        EXPECT_TRUE(FromElements({element, 'a'}).IsEmpty()) << element;
    }
    if constexpr (HAS_WIDE_ELEMENTS)
    {
        for (std::uint32_t element : {0x110000U, 0x110041U, 0x7FFFFFFFU, 0x80000000U, 0x80000041U, 0xFFFFFFFFU})
        {
            EXPECT_TRUE(FromElements({element}).IsEmpty()) << element;
            EXPECT_TRUE(FromElements({'a', element, 'b'}).IsEmpty()) << element;
        }
    }
}

TEST(StringTest, ASurrogateBesideASingleElementAbove0xFFFFStaysAlone)
{
    if constexpr (HAS_WIDE_ELEMENTS)
    {
        EXPECT_TRUE(FromElements({0xD83D, 0x1F600}).IsEmpty());
        EXPECT_TRUE(FromElements({0xD83D, 0x1DE00}).IsEmpty());
        EXPECT_TRUE(FromElements({0x1F600, 0xDE00}).IsEmpty());
        EXPECT_TRUE(FromElements({0x1D83D, 0xDE00}).IsEmpty());
        EXPECT_TRUE(FromElements({0xDE00, 0x1F600}).IsEmpty());
        EXPECT_TRUE(FromElements({0x1F600, 0xD83D}).IsEmpty());
    }
    EXPECT_EQ(Bytes(L"\U0001F600\U0001F600"), "\xF0\x9F\x98\x80\xF0\x9F\x98\x80");
}

TEST(StringTest, ACopyIsIndependentOfItsSource)
{
    String source = "source text that is too long for a short-string buffer";
    String const copy = source;
    EXPECT_TRUE(copy == source);
    EXPECT_NE(copy.ToCharArray(), source.ToCharArray());
    source = "changed";
    EXPECT_EQ(Bytes(copy), "source text that is too long for a short-string buffer");
    source.Clear();
    EXPECT_EQ(Bytes(copy), "source text that is too long for a short-string buffer");
}

TEST(StringTest, ACopyHasAWideFormOfItsOwn)
{
    String const source = L"wide";
    wchar_t const* const units = source.ToWCharArray();
    String const copy = source;
    EXPECT_NE(copy.ToWCharArray(), units);
    EXPECT_STREQ(copy.ToWCharArray(), L"wide");
    EXPECT_STREQ(units, L"wide");
}

TEST(StringTest, AssignmentCopiesTheOtherText)
{
    String text = "old";
    String const other = "new";
    String& result = text = other;
    EXPECT_EQ(&result, &text);
    EXPECT_EQ(Bytes(text), "new");
    EXPECT_EQ(Bytes(other), "new");
    EXPECT_NE(text.ToCharArray(), other.ToCharArray());
    text = String();
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringTest, SelfAssignmentChangesNothing)
{
    String text = "the text itself, too long for a short-string buffer";
    char const* const bytes = text.ToCharArray();
    wchar_t const* const units = text.ToWCharArray();
    String const& itself = text;
    text = itself;
    EXPECT_EQ(text.ToCharArray(), bytes);
    EXPECT_STREQ(bytes, "the text itself, too long for a short-string buffer");
    EXPECT_STREQ(units, L"the text itself, too long for a short-string buffer");
}

TEST(StringTest, AssignmentOfANarrowTextFollowsTheConstructor)
{
    String text = "old";
    String& result = text = "new";
    EXPECT_EQ(&result, &text);
    EXPECT_EQ(Bytes(text), "new");
    text = "\xC3\xA9\0hidden";
    EXPECT_EQ(Bytes(text), "\xC3\xA9");
    text = "";
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringTest, AssignmentOfAWideTextFollowsTheConstructor)
{
    String text = "old";
    String& result = text = L"n\u00E9w";
    EXPECT_EQ(&result, &text);
    EXPECT_EQ(Bytes(text), "n\xC3\xA9w");
    text = L"\u20AC\0hidden";
    EXPECT_EQ(Bytes(text), "\xE2\x82\xAC");
    text = L"";
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringTest, AssignmentOfANullPointerEmptiesTheString)
{
    String text = "old";
    text = static_cast<char const*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
    text = "old";
    text = static_cast<wchar_t const*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringTest, AssignmentOfMalformedTextEmptiesTheString)
{
    for (char const* bytes : MALFORMED)
    {
        String text = "old";
        text = bytes;
        EXPECT_TRUE(text.IsEmpty()) << testing::PrintToString(bytes);
    }
    std::wstring const lone = {L'a', static_cast<wchar_t>(0xD83D), L'b'};
    String text = "old";
    text = lone.c_str();
    EXPECT_TRUE(text.IsEmpty());
}

TEST(StringTest, AssignmentOfAPartOfTheStringItselfKeepsThatPart)
{
    String text = "0123456789, and on for longer than a short-string buffer";
    text = text.ToCharArray();
    EXPECT_EQ(Bytes(text), "0123456789, and on for longer than a short-string buffer");
    text = text.ToCharArray() + 12;
    EXPECT_EQ(Bytes(text), "and on for longer than a short-string buffer");
    text = text.ToWCharArray();
    EXPECT_EQ(Bytes(text), "and on for longer than a short-string buffer");
    text = text.ToWCharArray() + 4;
    EXPECT_EQ(Bytes(text), "on for longer than a short-string buffer");
}

TEST(StringTest, EqualityComparesTheBytes)
{
    EXPECT_TRUE(String() == String(""));
    EXPECT_TRUE(String("abc") == String(L"abc"));
    EXPECT_TRUE(String("\xC3\xA9") == String(L"\u00E9"));
    EXPECT_FALSE(String("abc") == String("abd"));
    EXPECT_FALSE(String("abc") == String("ab"));
    EXPECT_FALSE(String("ab") == String("abc"));
    EXPECT_FALSE(String("abc") == String());
    EXPECT_TRUE(String("abc") == "abc");
    EXPECT_TRUE(String("abc") == L"abc");
}

TEST(StringTest, InequalityNegatesEquality)
{
    EXPECT_FALSE(String() != String(""));
    EXPECT_FALSE(String("abc") != String(L"abc"));
    EXPECT_TRUE(String("abc") != String("abd"));
    EXPECT_TRUE(String("abc") != String("ab"));
    EXPECT_TRUE(String("ab") != String("abc"));
}

TEST(StringTest, ComparisonNeitherNormalisesNorFoldsCase)
{
    String const composed = L"\u00E9";
    String const decomposed = L"e\u0301";
    EXPECT_FALSE(composed == decomposed);
    EXPECT_TRUE(decomposed < composed);
    EXPECT_FALSE(String("abc") == String("ABC"));
    EXPECT_TRUE(String("ABC") < String("abc"));
    EXPECT_TRUE(String("Z") < String("a"));
}

TEST(StringTest, OrderIsThatOfTheUnsignedBytes)
{
    EXPECT_TRUE(String("ab") < String("abc"));
    EXPECT_FALSE(String("abc") < String("ab"));
    EXPECT_TRUE(String("abc") < String("b"));
    EXPECT_FALSE(String("abc") < String("abc"));
    EXPECT_TRUE(String() < String("a"));
    EXPECT_FALSE(String() < String());
    EXPECT_FALSE(String("a") < String());
    EXPECT_TRUE(String("\x7F") < String("\xC2\x80"));
    EXPECT_TRUE(String("z") < String("\xC3\xA9"));
    EXPECT_FALSE(String("\xC3\xA9") < String("z"));
}

TEST(StringTest, GreaterIsLessTheOtherWayRound)
{
    EXPECT_TRUE(String("b") > String("abc"));
    EXPECT_TRUE(String("abc") > String("ab"));
    EXPECT_FALSE(String("ab") > String("abc"));
    EXPECT_FALSE(String("abc") > String("abc"));
    EXPECT_TRUE(String("\xC3\xA9") > String("z"));
    EXPECT_TRUE(String("a") > String());
    EXPECT_FALSE(String() > String());
}

/// Expects one order of two texts from every operator.
template <typename Left, typename Right>
void ExpectOrder(Left const& left, Right const& right, std::strong_ordering order)
{
    EXPECT_EQ(left == right, order == 0);
    EXPECT_EQ(left != right, order != 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left <= right, order <= 0);
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left >= right, order >= 0);
    EXPECT_TRUE((left <=> right) == order);
}

/// The same from every operator and every form of the two texts, with at least one string among them.
void ExpectOrderInEveryForm(wchar_t const* left, wchar_t const* right, std::strong_ordering order)
{
    String const a = left;
    String const b = right;
    SCOPED_TRACE(testing::Message() << '"' << a.ToCharArray() << "\" and \"" << b.ToCharArray() << '"');
    ExpectOrder(a, b, order);
    ExpectOrder(a, b.ToCharArray(), order);
    ExpectOrder(a.ToCharArray(), b, order);
    ExpectOrder(a, right, order);
    ExpectOrder(left, b, order);
}

TEST(StringTest, EveryComparisonTakesAPointerOnEitherSide)
{
    ExpectOrderInEveryForm(L"abc", L"abc", std::strong_ordering::equal);
    ExpectOrderInEveryForm(L"", L"", std::strong_ordering::equal);
    ExpectOrderInEveryForm(L"\u00E9", L"\u00E9", std::strong_ordering::equal);
    ExpectOrderInEveryForm(L"ab", L"abc", std::strong_ordering::less);
    ExpectOrderInEveryForm(L"abc", L"abd", std::strong_ordering::less);
    ExpectOrderInEveryForm(L"", L"a", std::strong_ordering::less);
    ExpectOrderInEveryForm(L"z", L"\u00E9", std::strong_ordering::less);
    ExpectOrderInEveryForm(L"b", L"abc", std::strong_ordering::greater);
    ExpectOrderInEveryForm(L"\U00010000", L"\uE000", std::strong_ordering::greater);
}

TEST(StringTest, APointerInAComparisonFollowsTheConstructor)
{
    String const empty;
    EXPECT_TRUE("\xFF" == empty); // the malformed literal is an empty string
    EXPECT_TRUE(empty == "\xFF");
    EXPECT_TRUE(static_cast<char const*>(nullptr) == empty);
    EXPECT_TRUE(static_cast<wchar_t const*>(nullptr) == empty);
    EXPECT_TRUE("\xFF" < String("a"));
    EXPECT_TRUE("abc\0hidden" == String("abc"));
    char bytes[] = "abc";
    EXPECT_TRUE(bytes == String("abc"));
}

TEST(StringTest, OrderIsThatOfTheCodePoints)
{
    // In the order of UTF-16 units, a pair would come before U+E000.
    std::uint32_t const points[] = {0x1, 0x41, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF};
    for (std::uint32_t a : points)
    {
        for (std::uint32_t b : points)
        {
            String const first = EncodeUTF8(a).c_str();
            String const second = EncodeUTF8(b).c_str();
            EXPECT_EQ(first < second, a < b) << a << ", " << b;
            EXPECT_EQ(first > second, a > b) << a << ", " << b;
            EXPECT_EQ(first == second, a == b) << a << ", " << b;
        }
    }
}

TEST(StringTest, ConcatenationJoinsTheBytes)
{
    String left = "left, ";
    String const right = "right";
    EXPECT_EQ(Bytes(left + right), "left, right");
    EXPECT_EQ(Bytes(right + left), "rightleft, ");
    EXPECT_EQ(Bytes(left + String()), "left, ");
    EXPECT_EQ(Bytes(String() + left), "left, ");
    EXPECT_TRUE((String() + String()).IsEmpty());
    EXPECT_EQ(Bytes(left + left), "left, left, ");
    EXPECT_EQ(Bytes(left), "left, ");
    EXPECT_EQ(Bytes(right), "right");
}

TEST(StringTest, ConcatenationTakesAPointerOnTheLeft)
{
    String text = "b";
    String const constant = "c";
    EXPECT_EQ(Bytes("a" + text), "ab");
    EXPECT_EQ(Bytes("a" + constant), "ac");
    EXPECT_EQ(Bytes(L"\u20AC" + text), "\xE2\x82\xAC"
                                       "b");
    EXPECT_EQ(Bytes("1" + text + "2" + L"3" + constant), "1b23c");
    EXPECT_EQ(Bytes("\xFF" + text), "b"); // the malformed literal is an empty string
    EXPECT_EQ(Bytes(static_cast<char const*>(nullptr) + text), "b");
    EXPECT_EQ(Bytes(static_cast<wchar_t const*>(nullptr) + text), "b");
    static_assert(std::is_same_v<decltype("a" + text), String>);
}

TEST(StringTest, ConcatenationTakesLiteralsAndChains)
{
    String const text = "a";
    EXPECT_EQ(Bytes(text + "b" + L"\u20AC" + String("d")), "ab\xE2\x82\xAC"
                                                           "d");
    EXPECT_EQ(Bytes(text + "\xFF" + "c"), "ac"); // the malformed literal is an empty string
}

TEST(StringTest, AppendingChangesTheStringInPlace)
{
    String text = "a";
    String& result = text += "b";
    EXPECT_EQ(&result, &text);
    (text += L"c") += String("d");
    EXPECT_EQ(Bytes(text), "abcd");
    text += String();
    EXPECT_EQ(Bytes(text), "abcd");
    String empty;
    empty += text;
    EXPECT_EQ(Bytes(empty), "abcd");
}

TEST(StringTest, AppendingAStringToItselfDoublesIt)
{
    String text = "twice ";
    text += text;
    EXPECT_EQ(Bytes(text), "twice twice ");
    text += text;
    EXPECT_EQ(Bytes(text), "twice twice twice twice ");
}

TEST(StringTest, ClearEmptiesTheText)
{
    String text = "text";
    EXPECT_STREQ(text.ToWCharArray(), L"text");
    text.Clear();
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_STREQ(text.ToCharArray(), "");
    EXPECT_STREQ(text.ToWCharArray(), L"");
    EXPECT_TRUE(text == String());
    text.Clear();
    EXPECT_TRUE(text.IsEmpty());
    text += "again";
    EXPECT_EQ(Bytes(text), "again");
}

TEST(StringTest, ContainsFindsARunOfBytes)
{
    String const text = "abcabd";
    EXPECT_TRUE(text.Contains("abc"));
    EXPECT_TRUE(text.Contains("abd"));
    EXPECT_TRUE(text.Contains("ca"));
    EXPECT_TRUE(text.Contains(text));
    EXPECT_FALSE(text.Contains("acb"));
    EXPECT_FALSE(text.Contains("abcabde"));
    EXPECT_FALSE(text.Contains("ABC"));
    EXPECT_TRUE(String("na\xC3\xAFve").Contains(L"\u00EF"));
    EXPECT_FALSE(String("na\xC3\xAFve").Contains("i"));
}

TEST(StringTest, AnEmptyTextIsAlwaysContained)
{
    EXPECT_TRUE(String("text").Contains(String()));
    EXPECT_TRUE(String().Contains(String()));
    EXPECT_TRUE(String("text").Contains("\xFF")); // the malformed literal is an empty string
    EXPECT_FALSE(String().Contains(String("a")));
}

TEST(StringTest, TheWideFormOutlivesAnAssignmentUntilItIsAskedForAgain)
{
    String text = "old";
    wchar_t const* const units = text.ToWCharArray();
    text = String("new");
    EXPECT_STREQ(units, L"old");
    text = "newer, and too long for a short-string buffer";
    EXPECT_STREQ(units, L"old");
    text = L"newest";
    EXPECT_STREQ(units, L"old");
    text += " of all";
    EXPECT_STREQ(units, L"old");
    EXPECT_EQ(Bytes(text), "newest of all");
    EXPECT_STREQ(text.ToWCharArray(), L"newest of all");
}

TEST(StringTest, TheWideFormOfTheSourceOfAnAssignmentIsNotCopied)
{
    String text = "target";
    String const source = "source";
    wchar_t const* const targetUnits = text.ToWCharArray();
    wchar_t const* const sourceUnits = source.ToWCharArray();
    text = source;
    EXPECT_STREQ(targetUnits, L"target");
    EXPECT_STREQ(sourceUnits, L"source");
    EXPECT_NE(text.ToWCharArray(), sourceUnits);
}

TEST(StringTest, TextThatWasDamagedFromOutsideIsNotConverted)
{
    // Only a write through the const pointer can make the text invalid.
    String const text = "abc";
    const_cast<char*>(text.ToCharArray())[1] = '\xFF';
    EXPECT_STREQ(text.ToWCharArray(), L"");
    // A sequence that the end of the text cuts short is reported by another exception, which is passed on.
    const_cast<char*>(text.ToCharArray())[1] = 'b';
    const_cast<char*>(text.ToCharArray())[2] = '\xC3';
    EXPECT_THROW(static_cast<void>(text.ToWCharArray()), std::exception);
    const_cast<char*>(text.ToCharArray())[2] = 'c';
    EXPECT_STREQ(text.ToWCharArray(), L"abc");
}

TEST(StringTest, ConcatenationValidatesTheJoinedBytesAndCopiesDoNot)
{
    String text = "abc";
    const_cast<char*>(text.ToCharArray())[2] = '\xC3';
    EXPECT_EQ(Bytes(String(text)), "ab\xC3");
    String assigned;
    assigned = text;
    EXPECT_EQ(Bytes(assigned), "ab\xC3");
    EXPECT_TRUE((text + "d").IsEmpty());
    EXPECT_TRUE((std::as_const(text) + "d").IsEmpty());
    EXPECT_TRUE((String("d") + text).IsEmpty());
    EXPECT_EQ(Bytes(text), "ab\xC3");
    // Two malformed halves make up a well-formed whole.
    String const end = "\xC2\xA9";
    const_cast<char*>(end.ToCharArray())[0] = '\xA9';
    const_cast<char*>(end.ToCharArray())[1] = '!';
    EXPECT_EQ(Bytes(text + end), "ab\xC3\xA9!");
}

TEST(StringTest, ConcatenationEndsAtANULThatWasWrittenFromOutside)
{
    String text = "abc";
    const_cast<char*>(text.ToCharArray())[1] = '\0';
    EXPECT_TRUE(text + "d" == String("a"));
}

TEST(StringTest, AppendingDoesNotLookAtWhatIsAlreadyThere)
{
    // Only a write through the const pointer can make the text invalid, and shows whether it is looked at.
    String text = "abc";
    const_cast<char*>(text.ToCharArray())[2] = '\xC3';
    text += "d";
    EXPECT_EQ(Bytes(text), "ab\xC3"
                           "d");
    const_cast<char*>(text.ToCharArray())[1] = '\0';
    text += "e";
    EXPECT_STREQ(text.ToCharArray() + 2, "\xC3"
                                         "de");
}

TEST(StringTest, EqualityComparesTheLengthBeyondANULThatWasWrittenFromOutside)
{
    String const text = "abc";
    const_cast<char*>(text.ToCharArray())[1] = '\0';
    EXPECT_FALSE(text == String("a"));
    EXPECT_FALSE(String("a") == text);
    EXPECT_TRUE(text == String(text));
}

TEST(StringTest, AStringIsDestroyedThroughItsBase)
{
    // Counts through the base pointer that the virtual destructor reaches the derived class.
    struct Derived : String
    {
        bool& destroyed;
        explicit Derived(bool& flag) : String("derived"), destroyed(flag) {}
        ~Derived() override { destroyed = true; }
    };
    bool destroyed = false;
    String const* const text = new Derived(destroyed);
    delete text;
    EXPECT_TRUE(destroyed);
}

} // namespace
