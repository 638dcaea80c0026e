#include "bv/String.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <utf8.h>

// Text of every make, against utfcpp alone, one character at a time.

namespace
{

using bv::String;

/// Longer than what the library looks at together.
constexpr std::size_t LONGEST_RUN = 70;

/// A null-terminated copy with nothing after it, so that a sanitizer sees a read past its end, and with `shift`
/// elements before it.
template <typename Char>
class Exact
{
    std::unique_ptr<Char[]> elements;
    std::size_t shift;

public:
    explicit Exact(std::basic_string<Char> const& text, std::size_t before = 0)
        : elements(new Char[before + text.size() + 1]), shift(before)
    {
        std::char_traits<Char>::copy(elements.get() + shift, text.c_str(), text.size() + 1);
    }
    [[nodiscard]] Char const* Get() const { return elements.get() + shift; }
};

/// The text that a string makes of bytes, by utfcpp.
std::string Keep(std::string const& bytes)
{
    return utf8::is_valid(bytes.begin(), bytes.end()) ? bytes : std::string();
}

/// The text that a string makes of wide text, by utfcpp.
std::string ToBytes(std::wstring const& text)
{
    std::u16string units;
    std::string bytes;
    for (wchar_t const element : text)
    {
        std::uint32_t const value = static_cast<std::make_unsigned_t<wchar_t>>(element);
        if (value > 0x10FFFF)
            return {};
        if (value > 0xFFFF)
            units.append(
                {static_cast<char16_t>(0xD7C0 + (value >> 10)), static_cast<char16_t>(0xDC00 + (value & 0x3FF))});
        else
            units.push_back(static_cast<char16_t>(value));
    }
    try
    {
        utf8::utf16to8(units.begin(), units.end(), std::back_inserter(bytes));
    }
    catch (utf8::exception const&)
    {
        return {};
    }
    return bytes;
}

/// The wide text of a string of these bytes, by utfcpp.
std::wstring ToUnits(std::string const& bytes)
{
    std::wstring units;
    utf8::utf8to16(bytes.begin(), bytes.end(), std::back_inserter(units));
    return units;
}

/// Every way in and out, for bytes that may be malformed.
void ExpectAsUtfcpp(std::string const& bytes, std::size_t shift = 0)
{
    std::string const kept = Keep(bytes);
    Exact<char> const text(bytes, shift);
    String string = text.Get();
    ASSERT_EQ(string.ToCharArray(), kept) << testing::PrintToString(bytes);
    ASSERT_EQ(string.ToWCharArray(), ToUnits(kept)) << testing::PrintToString(bytes);
    string = "before";
    string = text.Get();
    ASSERT_EQ(string.ToCharArray(), kept) << testing::PrintToString(bytes);
    Exact<wchar_t> const wide(ToUnits(kept), shift);
    ASSERT_EQ(String(wide.Get()).ToCharArray(), kept) << testing::PrintToString(bytes);
}

/// Every way in, for wide text that may be malformed.
void ExpectAsUtfcpp(std::wstring const& units, std::size_t shift = 0)
{
    std::string const bytes = ToBytes(units);
    Exact<wchar_t> const text(units, shift);
    String string = text.Get();
    ASSERT_EQ(string.ToCharArray(), bytes) << testing::PrintToString(units);
    string = "before";
    string = text.Get();
    ASSERT_EQ(string.ToCharArray(), bytes) << testing::PrintToString(units);
}

/// Letters that differ from their neighbours.
template <typename Char>
std::basic_string<Char> Letters(std::size_t count)
{
    std::basic_string<Char> text;
    for (std::size_t i = 0; i < count; ++i)
        text.push_back(static_cast<Char>('!' + i % 90));
    return text;
}

char const* const CHARACTERS[] = {
    "\x7F",         "\xC2\x80",     "\xC3\xA9",         "\xDF\xBF",         "\xE0\xA0\x80",
    "\xE2\x82\xAC", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"};

char const* const MALFORMED[] = {"\x80",         "\xBF\xBF\xBF\xBF\xBF", "\xC0\x80",         "\xC3", "\xE2\x82",
                                 "\xED\xA0\x80", "\xF0\x9F\x98",         "\xF4\x90\x80\x80", "\xFF", "\xC3\xA9\xA9"};

TEST(StringConversionTest, ACharacterStandsBetweenRunsOfASCIIOfEveryLength)
{
    for (std::size_t before = 0; before <= LONGEST_RUN; ++before)
        for (std::size_t after = 0; after <= LONGEST_RUN; ++after)
            for (char const* character : CHARACTERS)
                ASSERT_NO_FATAL_FAILURE(
                    ExpectAsUtfcpp(Letters<char>(before) + character + Letters<char>(after), before % 16));
}

TEST(StringConversionTest, AMalformedSequenceIsFoundAtEveryPlace)
{
    for (std::size_t before = 0; before <= LONGEST_RUN; ++before)
        for (std::size_t after : {0U, 1U, 7U, 8U, 15U, 16U, 17U, 63U, 64U, 65U, 70U})
            for (char const* sequence : MALFORMED)
            {
                std::string const bytes = Letters<char>(before) + sequence + Letters<char>(after);
                ASSERT_TRUE(Keep(bytes).empty());
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(bytes));
                // The same among characters that are not ASCII, for longer than any cut.
                std::string others;
                for (std::size_t i = 0; i < before * 8; ++i)
                    others += CHARACTERS[1 + i % 9];
                ASSERT_TRUE(String((others + sequence + others).c_str()).IsEmpty());
            }
}

TEST(StringConversionTest, EveryCutOfATextIsJudgedByItself)
{
    std::string text;
    for (std::size_t i = 0; i < 120; ++i)
        text += Letters<char>(i % 19) + CHARACTERS[i % 10];
    for (std::size_t length = 0; length <= text.size(); ++length)
    {
        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text.substr(0, length)));
        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text.substr(length)));
    }
    std::wstring const units = ToUnits(text);
    for (std::size_t length = 0; length <= units.size(); ++length)
    {
        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(units.substr(0, length)));
        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(units.substr(length)));
    }
}

TEST(StringConversionTest, LongTextWithoutASCIIIsNotCutInsideACharacter)
{
    // At each shift, a character stands across another place where the text could be cut.
    for (char const* character : CHARACTERS)
        for (std::size_t shift = 0; shift < 4; ++shift)
        {
            std::string text = Letters<char>(shift);
            while (text.size() < 5000)
                text += character;
            ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text));
            for (std::size_t const length : {60U, 64U, 68U, 250U, 256U, 260U, 1020U, 1024U, 1030U, 2050U})
            {
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text.substr(0, length)));
                std::string damaged = text;
                damaged[length] = '\xFF';
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(damaged));
            }
        }
}

TEST(StringConversionTest, ARowWithoutASCIIHasAnyLength)
{
    for (char const* character : {"\xC3\xA9", "\xE4\xB8\x96", "\xF0\x9F\x98\x80"})
        for (std::size_t const before : {0U, 1U, 15U, 16U, 63U})
            for (std::size_t const after : {0U, 1U, 16U, 64U})
                for (std::size_t count = 1; count <= 200; ++count)
                {
                    std::string text = Letters<char>(before);
                    for (std::size_t i = 0; i < count; ++i)
                        text += character;
                    std::size_t const last = text.size() - 1;
                    text += Letters<char>(after);
                    ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text));
                    text[last] = 'x';
                    ASSERT_TRUE(Keep(text).empty());
                    ASSERT_TRUE(String(text.c_str()).IsEmpty()) << count;
                }
}

TEST(StringConversionTest, EveryElementIsTakenForWhatItIs)
{
    for (std::uint32_t value = 1; value <= 0xFFFF; ++value)
    {
        std::wstring text = Letters<wchar_t>(40);
        text[value % 40] = static_cast<wchar_t>(value);
        ASSERT_EQ(String(text.c_str()).ToCharArray(), ToBytes(text)) << value;
    }
}

TEST(StringConversionTest, ASurrogateIsJoinedAcrossEveryPlace)
{
    std::wstring const pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    for (wchar_t const filler : {L'a', static_cast<wchar_t>(0xE9), static_cast<wchar_t>(0x4E16)})
        for (std::size_t before = 0; before < 1100; before += before == LONGEST_RUN ? 940 : 1)
        {
            std::wstring const start(before, filler);
            for (std::size_t const after : {0U, 1U, 20U, 70U})
            {
                std::wstring const end(after, filler);
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(start + pair + end, before % 8));
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(start + pair + pair + end));
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(start + pair[0] + end));
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(start + pair[1] + end));
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(start + pair[1] + pair[0] + end));
                ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(start + pair[0] + pair + end));
            }
        }
}

TEST(StringConversionTest, AnElementTooLargeIsFoundAtEveryPlace)
{
    if constexpr (sizeof(wchar_t) > 2)
    {
        for (std::uint32_t const element :
             {0x10000U, 0x1D83DU, 0x1DE00U, 0x10FFFFU, 0x110000U, 0x7FFFFFFFU, 0x80000000U, 0x80000041U, 0xFFFFFFFFU})
            for (std::size_t before = 0; before <= LONGEST_RUN; ++before)
                for (std::size_t const after : {0U, 1U, 16U, 70U})
                    for (wchar_t const filler : {L'a', static_cast<wchar_t>(0x4E16)})
                    {
                        std::wstring text(before, filler);
                        text += static_cast<wchar_t>(element);
                        text.append(after, filler);
                        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text, before % 8));
                        text.insert(before, 1, static_cast<wchar_t>(0xD83D));
                        ASSERT_TRUE(ToBytes(text).empty());
                        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(text));
                    }
    }
    else
    {
        EXPECT_EQ(sizeof(wchar_t), 2U) << "no element is too large";
    }
}

TEST(StringConversionTest, TextEndsAtANULAtEveryPlace)
{
    for (std::size_t place = 0; place <= LONGEST_RUN; ++place)
    {
        std::string bytes = Letters<char>(LONGEST_RUN + 1) + "\xFF";
        bytes[place] = '\0';
        EXPECT_EQ(String(bytes.c_str()).ToCharArray(), Letters<char>(place));
        std::wstring units = Letters<wchar_t>(LONGEST_RUN + 1) + static_cast<wchar_t>(0xD83D);
        units[place] = L'\0';
        EXPECT_EQ(String(units.c_str()).ToCharArray(), Letters<char>(place));
    }
}

TEST(StringConversionTest, RandomMixturesOfRunsAreConvertedAsUtfcppDoes)
{
    std::uint32_t const seed = std::random_device()();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::size_t kept = 0;
    std::size_t emptied = 0;
    for (int i = 0; i < 4000; ++i)
    {
        std::string bytes;
        for (std::size_t runs = random() % (i % 40 == 0 ? 80 : 8); runs != 0; --runs)
        {
            bytes += Letters<char>(random() % (LONGEST_RUN + 1));
            for (std::size_t count = random() % (runs % 5 == 0 ? LONGEST_RUN : 4); count != 0; --count)
                bytes += CHARACTERS[random() % std::size(CHARACTERS)];
        }
        std::wstring units = ToUnits(bytes);
        if (i % 2 == 0 && !bytes.empty())
        {
            bytes[random() % bytes.size()] = static_cast<char>(1 + random() % 255);
            units[random() % units.size()] = static_cast<wchar_t>(1 + random() % 0x11000);
            units[random() % units.size()] = static_cast<wchar_t>(0xD7FF + random() % 0x801);
        }
        Keep(bytes).empty() ? ++emptied : ++kept;
        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(bytes, random() % 16));
        ASSERT_NO_FATAL_FAILURE(ExpectAsUtfcpp(units, random() % 16));
    }
    EXPECT_GT(kept, 1000U);
    EXPECT_GT(emptied, 500U);
}

TEST(StringConversionTest, APartOfTheStringItselfIsKeptFromEveryPlaceOn)
{
    std::string bytes;
    for (std::size_t i = 0; i < 30; ++i)
        bytes += Letters<char>(i % 7) + CHARACTERS[i % 10];
    for (std::size_t place = 0; place <= bytes.size(); ++place)
    {
        String text = bytes.c_str();
        text = text.ToCharArray() + place;
        EXPECT_EQ(text.ToCharArray(), Keep(bytes.substr(place)));
    }
    std::wstring const units = ToUnits(bytes);
    for (std::size_t place = 0; place <= units.size(); ++place)
    {
        String text = bytes.c_str();
        text = text.ToWCharArray() + place;
        EXPECT_EQ(text.ToCharArray(), ToBytes(units.substr(place)));
    }
}

TEST(StringConversionTest, TextsOfEveryLengthAreJoined)
{
    for (std::size_t left = 0; left <= LONGEST_RUN; ++left)
        for (std::size_t right = 0; right <= LONGEST_RUN; ++right)
        {
            std::string const first = Letters<char>(left) + "\xC3\xA9";
            std::string const second = "\xE2\x82\xAC" + Letters<char>(right);
            String const a = first.c_str();
            String const b = second.c_str();
            ASSERT_EQ((a + b).ToCharArray(), first + second);
            String sum = a;
            sum += b;
            ASSERT_EQ(sum.ToCharArray(), first + second);
            sum += sum;
            ASSERT_EQ(sum.ToCharArray(), first + second + first + second);
        }
}

TEST(StringConversionTest, ATextDamagedFromOutsideIsReportedAsUtfcppReportsIt)
{
    // Only a write through the const pointer can make the text invalid. What stands after the damage decides whether
    // the wide form is empty, or the exception is passed on.
    for (std::size_t place = 0; place < 2 * LONGEST_RUN; ++place)
        for (char const byte : {'\x80', '\xC3', '\xE2', '\xF0', '\xFF'})
        {
            std::string bytes = Letters<char>(2 * LONGEST_RUN);
            String const text = bytes.c_str();
            const_cast<char*>(text.ToCharArray())[place] = bytes[place] = byte;
            std::wstring units;
            bool passes = false;
            try
            {
                units = ToUnits(bytes);
            }
            catch (utf8::invalid_utf8 const&)
            {
            }
            catch (utf8::exception const&)
            {
                passes = true;
            }
            if (passes)
                EXPECT_THROW(static_cast<void>(text.ToWCharArray()), std::exception) << place;
            else
                EXPECT_EQ(text.ToWCharArray(), units) << place;
        }
}

TEST(StringConversionTest, ALongTextDamagedFromOutsideIsReportedAsUtfcppReportsIt)
{
    std::string text;
    for (std::size_t i = 0; text.size() < 4000; ++i)
        text += Letters<char>(i % 23) + CHARACTERS[i % 10] + CHARACTERS[i * 7 % 10];
    std::size_t emptied = 0;
    std::size_t passed = 0;
    for (std::size_t place = 0; place < text.size(); place += 7)
        for (char const byte : {'a', '\x80', '\xC3', '\xE2', '\xED', '\xF0', '\xF4', '\xFF'})
        {
            std::string bytes = text;
            bytes[place] = byte;
            bytes[bytes.size() - 1 - place / 2] = byte;
            String const string = text.c_str();
            bytes.copy(const_cast<char*>(string.ToCharArray()), bytes.size());
            std::wstring units;
            bool passes = false;
            try
            {
                units = ToUnits(bytes);
            }
            catch (utf8::invalid_utf8 const&)
            {
                ++emptied;
            }
            catch (utf8::exception const&)
            {
                passes = true;
                ++passed;
            }
            if (passes)
                EXPECT_THROW(static_cast<void>(string.ToWCharArray()), std::exception) << place;
            else
                EXPECT_EQ(string.ToWCharArray(), units) << place;
        }
    EXPECT_GT(emptied, 500U);
    EXPECT_GT(passed, 20U);
}

} // namespace
