#include "bv/String.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include <gtest/gtest.h>

// The allocation functions of the whole program are replaced: they count.

namespace
{

std::size_t calls = 0;  ///< allocations so far
std::size_t blocks = 0; ///< allocations that were not freed yet

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
    std::size_t const moves = Count(
        [&]
        {
            for (int i = 0; i < 1000; ++i)
                text += piece;
        });
    EXPECT_LE(moves, 20U); // 10000 bytes, with room that at least grows by half each time
}

} // namespace
