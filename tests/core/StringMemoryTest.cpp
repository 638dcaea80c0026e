#include "bv/String.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include <gtest/gtest.h>

// The allocation functions of the whole program are replaced: they count.

namespace
{

std::size_t calls = 0;   ///< allocations so far
std::size_t blocks = 0;  ///< allocations that were not freed yet
std::size_t largest = 0; ///< bytes of the largest allocation since Count() began

// Inlined into a delete expression, this would look to a compiler as if memory from `new` were given to free().
[[gnu::noinline]] void Free(void* block) noexcept
{
    if (block != nullptr)
        --blocks;
    std::free(block);
}

} // namespace

void* operator new(std::size_t size)
{
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    ++calls;
    ++blocks;
    if (size > largest)
        largest = size;
    return block;
}

void operator delete(void* block) noexcept
{
    Free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    Free(block);
}

namespace
{

using bv::String;

/// Allocations of an action.
template <typename Action>
std::size_t Count(Action&& action)
{
    std::size_t const before = calls;
    largest = 0;
    action();
    return calls - before;
}

/// What a text of so many elements costs beside the object that holds it.
template <typename Char>
std::size_t GetCost(std::size_t length)
{
    return length > std::basic_string<Char>().capacity() ? 1 : 0;
}

/// Counts for one text, given in both forms: each within the string's own allocations and no more.
void ExpectLeast(std::string const& bytes, std::wstring const& units)
{
    SCOPED_TRACE(bytes.size());
    std::size_t const cost = GetCost<char>(bytes.size());
    alignas(String) std::byte place[sizeof(String)];
    String* text = nullptr;
    auto const expect = [&](char const* what, std::size_t expected, auto const& make)
    {
        std::size_t const before = blocks;
        EXPECT_EQ(Count([&] { text = make(); }), expected) << what;
        EXPECT_EQ(blocks - before, expected) << what;
        text->~String();
        EXPECT_EQ(blocks, before) << what;
    };
    String const source = bytes.c_str();
    expect("from narrow", 1 + cost, [&] { return new (place) String(bytes.c_str()); });
    expect("from wide", 1 + cost, [&] { return new (place) String(units.c_str()); });
    expect("copy", 1 + cost, [&] { return new (place) String(source); });
    expect("joined", 1 + GetCost<char>(2 * bytes.size()), [&] { return new (place) String(source + source); });

    String target;
    EXPECT_EQ(Count([&] { target = bytes.c_str(); }), cost);
    EXPECT_EQ(Count([&] { target = bytes.c_str(); }), 0U) << "there is room already";
    EXPECT_EQ(Count([&] { target = units.c_str(); }), 0U) << "there is room already";
    EXPECT_EQ(Count([&] { target = source; }), 0U) << "there is room already";
    EXPECT_EQ(Count([&] { target = target.ToCharArray(); }), 0U);
    EXPECT_STREQ(target.ToCharArray(), bytes.c_str());
    String fromWide;
    EXPECT_EQ(Count([&] { fromWide = units.c_str(); }), cost);
    String fromCopy;
    EXPECT_EQ(Count([&] { fromCopy = source; }), cost);
    String appended;
    EXPECT_EQ(Count([&] { appended += source; }), cost);
    EXPECT_LE(Count([&] { appended += appended; }), GetCost<char>(2 * bytes.size()));
    appended.Clear();
    EXPECT_EQ(Count([&] { appended += source; }), 0U) << "there is room already";
    EXPECT_EQ(Count([&] { appended += source; }), 0U) << "there is room already";

    std::size_t const wideCost = 1 + GetCost<wchar_t>(units.size());
    EXPECT_EQ(Count([&] { static_cast<void>(source.ToWCharArray()); }), wideCost);
    std::size_t const before = blocks;
    EXPECT_EQ(Count([&] { static_cast<void>(source.ToWCharArray()); }), wideCost);
    EXPECT_EQ(blocks, before);
    EXPECT_STREQ(source.ToWCharArray(), units.c_str());
}

TEST(StringMemoryTest, NothingIsAllocatedButTheStringAndItsText)
{
    struct
    {
        char const* bytes;
        wchar_t const* units;
    } const characters[] = {{"a", L"a"},
                            {"\xC3\xA9", L"\u00E9"},
                            {"\xE4\xB8\x96", L"\u4E16"},
                            {"ab\xC3\xA9 \xE2\x82\xAC...", L"ab\u00E9 \u20AC..."}};
    for (auto const& [character, wideCharacter] : characters)
        for (std::size_t const count :
             {0U, 1U, 3U, 4U, 5U, 7U, 15U, 16U, 17U, 100U, 341U, 342U, 1023U, 1024U, 1025U, 5000U, 20000U})
        {
            std::string bytes;
            std::wstring units;
            for (std::size_t i = 0; i < count; ++i)
            {
                bytes += character;
                units += wideCharacter;
            }
            ExpectLeast(bytes, units);
        }
}

TEST(StringMemoryTest, SurrogatePairsAreCountedAsWhatTheyBecome)
{
    for (std::size_t const count : {1U, 3U, 4U, 200U, 511U, 512U, 513U, 3000U})
    {
        std::string bytes;
        std::wstring units;
        for (std::size_t i = 0; i < count; ++i)
        {
            bytes += "\xF0\x9F\x98\x80";
            units += {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
        }
        ExpectLeast(bytes, units);
    }
}

/// Expects that the action makes so many allocations, the largest of which holds `size` bytes and hardly more.
template <typename Action>
void ExpectExact(std::size_t allocations, std::size_t size, Action&& action)
{
    constexpr std::size_t ROUNDING = 31; // bytes that a standard library may add
    std::size_t const made = Count(action);
    std::size_t const bytes = largest; // before a message is built
    EXPECT_EQ(made, allocations);
    EXPECT_GE(bytes, size);
    EXPECT_LE(bytes, size + ROUNDING);
}

/// Expects that the memory for a long text is asked for once, in both directions, and that none of it is wasted.
void ExpectNoWaste(std::string const& bytes, std::wstring const& units)
{
    String text;
    ExpectExact(1, bytes.size() + 1, [&] { text = units.c_str(); });
    EXPECT_EQ(text.ToCharArray(), bytes);
    ExpectExact(2, (units.size() + 1) * sizeof(wchar_t), [&] { static_cast<void>(text.ToWCharArray()); });
    EXPECT_EQ(text.ToWCharArray(), units);
}

TEST(StringMemoryTest, ALongTextHasMemoryForItselfAndNoMore)
{
    auto const pair = [](int first, int second) {
        return std::wstring{static_cast<wchar_t>(first), static_cast<wchar_t>(second)};
    };
    // The first and the last of each length, and what stands next to the surrogates.
    struct
    {
        char const* bytes;
        std::wstring units;
    } const characters[] = {{"a", L"a"},
                            {"\x7F", L"\x7F"},
                            {"\xC2\x80", L"\x80"},
                            {"\xDF\xBF", L"\x7FF"},
                            {"\xE0\xA0\x80", L"\x800"},
                            {"\xE7\xBF\xBF", L"\x7FFF"},
                            {"\xE8\x80\x80", L"\x8000"},
                            {"\xED\x9F\xBF", L"\xD7FF"},
                            {"\xEE\x80\x80", L"\xE000"},
                            {"\xEF\xBF\xBF", L"\xFFFF"},
                            {"\xF0\x90\x80\x80", pair(0xD800, 0xDC00)},
                            {"\xF4\x8F\xBF\xBF", pair(0xDBFF, 0xDFFF)}};
    for (auto const& first : characters)
        for (auto const& second : characters)
            for (std::size_t const shift : {0U, 1U, 7U, 15U, 31U, 50U, 63U})
            {
                std::string bytes(shift, '.');
                std::wstring units(shift, L'.');
                for (std::size_t i = 0; i < 1500; ++i)
                {
                    auto const& character = i / 3 % 2 == 0 ? first : second;
                    bytes += character.bytes;
                    units += character.units;
                }
                SCOPED_TRACE(testing::Message() << testing::PrintToString(bytes.substr(0, 80)) << ' ' << shift);
                ExpectNoWaste(bytes, units);
            }
}

TEST(StringMemoryTest, ACodePointInOneElementIsCountedAsWhatItBecomes)
{
    if constexpr (sizeof(wchar_t) > 2)
    {
        for (std::size_t before = 0; before <= 70; ++before)
        {
            std::string bytes;
            std::wstring units;
            for (std::size_t i = 0; i < 20; ++i)
            {
                bytes += std::string(before, 'a') + "\xF0\x90\x80\x80\xE4\xB8\x96" + std::string(70, 'b');
                units +=
                    std::wstring(before, L'a') + static_cast<wchar_t>(0x10000) + L"\x4E16" + std::wstring(70, L'b');
            }
            String text;
            ExpectExact(1, bytes.size() + 1, [&] { text = units.c_str(); });
            EXPECT_EQ(text.ToCharArray(), bytes);
        }
    }
    else
    {
        EXPECT_EQ(sizeof(wchar_t), 2U) << "no element holds one";
    }
}

TEST(StringMemoryTest, AMalformedTextCostsNoMoreThanAValidOne)
{
    std::string const bytes = std::string(5000, 'a') + "\xFF";
    std::wstring const units = std::wstring(5000, L'a') + static_cast<wchar_t>(0xD83D);
    EXPECT_EQ(Count([&] { String const text = bytes.c_str(); }), 1U);
    EXPECT_LE(Count([&] { String const text = units.c_str(); }), 2U);
    EXPECT_EQ(Count([&] { String const text = units.c_str() + 4900; }), 1U);
}

TEST(StringMemoryTest, ARepeatedlyExtendedTextIsNotMovedEachTime)
{
    String text;
    String const piece = "0123456789";
    std::size_t bytes = 0;
    std::size_t const moves = Count(
        [&]
        {
            for (int i = 0; i < 100000; ++i)
                text += piece;
            bytes = largest;
        });
    // A million bytes, with room that at least grows by half each time: 1.5 to the power of 35 is 1.5 million.
    EXPECT_LE(moves, 35U);
    EXPECT_GT(bytes, 1000000U);
    EXPECT_LE(bytes, 2 * 1000000U);
    EXPECT_EQ(Count([&] { text.Clear(); }), 0U);
}

TEST(StringMemoryTest, AppendingWhereThereIsRoomLeavesTheTextWhereItIs)
{
    String text = "0123456789, and on for longer than a short-string buffer";
    text += text; // more room than is needed
    text = "x";
    char const* const place = text.ToCharArray();
    for (int i = 0; i < 20; ++i)
        text += "yz";
    EXPECT_EQ(text.ToCharArray(), place);
    EXPECT_STREQ(text.ToCharArray(), "xyzyzyzyzyzyzyzyzyzyzyzyzyzyzyzyzyzyzyzyz");
}

} // namespace
