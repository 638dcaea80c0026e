#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <bv/Hash.h>
#include <bv/String.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

void AppendCodePoint(std::string& text, std::uint32_t code)
{
    auto const put = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80)
        return put(code);
    if (code < 0x800)
        put(0xC0 | code >> 6);
    else
    {
        if (code < 0x10000)
            put(0xE0 | code >> 12);
        else
        {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

/// A code point of one, two, three or four bytes; the ends of each range come often, surrogates never.
std::uint32_t CodePoint(Workload& work)
{
    constexpr std::uint32_t EDGES[] = {1, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF};
    switch (work.Below(6))
    {
    case 0:
        return EDGES[work.Below(10)];
    case 1:
        return 0x80 + work.Below(0x780);
    case 2:
        return 0x800 + work.Below(0xD000);
    case 3:
        return 0x10000 + work.Below(0x100000);
    default:
        return 1 + work.Below(0x7F);
    }
}

std::vector<std::uint32_t> CodePoints(Workload& work, std::size_t length, bool isAscii)
{
    std::vector<std::uint32_t> codes;
    for (std::size_t i = 0; i < length; ++i)
        codes.push_back(isAscii ? 1 + work.Below(0x7F) : CodePoint(work));
    return codes;
}

void AddText(Digest& digest, bv::String const& text)
{
    digest.Add(text);
    wchar_t const* const wide = text.ToWCharArray();
    std::size_t length = 0;
    for (; wide[length] != 0; ++length)
        digest.Add(static_cast<std::uint32_t>(wide[length]));
    digest.Add(length, text.IsEmpty());
}

/// Lengths around those at which blocks of 16, 32 and 64 bytes begin and end, and long ones.
constexpr std::size_t LENGTHS[] = {0,  1,  2,  3,  7,  8,  9,  15, 16,  17,  23,  24,  31,  32,  33,
                                   40, 47, 48, 49, 63, 64, 65, 95, 127, 128, 129, 255, 256, 300, 5000};

void NarrowText(Digest& digest, Workload& work)
{
    digest.Add(bv::String(static_cast<char const*>(nullptr)));
    for (std::size_t const length : LENGTHS)
        for (int i = 0; i < (length > 1000 ? 12 : 60); ++i)
        {
            // Ascii, mixed, or Ascii with one other character; whole, damaged, or cut short.
            std::vector<std::uint32_t> codes = CodePoints(work, length, i % 3 != 0);
            if (i % 3 == 1 && length > 0)
                codes[work.Below(static_cast<unsigned int>(length))] = CodePoint(work);
            std::string text(work.Below(17), 'x'); // any alignment
            std::size_t const start = text.size();
            for (std::uint32_t const code : codes)
                AppendCodePoint(text, code);
            if (text.size() > start && work.OneIn(3))
            {
                auto const place = start + work.Below(static_cast<unsigned int>(text.size() - start));
                if (work.OneIn(3))
                    text.resize(place);
                else
                    text[place] = static_cast<char>(1 + work.Below(255));
            }
            bv::String const string(text.c_str() + start);
            AddText(digest, string);
            bv::String assigned("before");
            assigned = text.c_str() + start;
            AddText(digest, assigned);
            assigned = assigned.ToCharArray() + (assigned.IsEmpty() ? 0 : 1);
            AddText(digest, assigned);
        }
    for (unsigned int first = 1; first < 256; ++first) // every pair of bytes, and what may follow
        for (unsigned int second = 1; second < 256; ++second)
        {
            char const text[] = {static_cast<char>(first), static_cast<char>(second), '\x80', '\xBF', 0};
            char const shorter[] = {'a', static_cast<char>(first), static_cast<char>(second), '\x80', 0};
            char const shortest[] = {static_cast<char>(first), static_cast<char>(second), 0};
            digest.Add(bv::String(text), bv::String(shorter), bv::String(shortest));
        }
}

/// Unit is what an element may hold: a `wchar_t`, or the 16 bits that are all that Windows has.
template <typename Unit>
void WideText(Digest& digest, Workload& work)
{
    digest.Add(bv::String(static_cast<wchar_t const*>(nullptr)));
    for (std::size_t const length : LENGTHS)
        for (int i = 0; i < (length > 1000 ? 12 : 60); ++i)
        {
            std::vector<std::uint32_t> codes = CodePoints(work, length, i % 3 != 0);
            if (i % 3 == 1 && length > 0)
                codes[work.Below(static_cast<unsigned int>(length))] = CodePoint(work);
            std::wstring text;
            for (std::uint32_t const code : codes)
                if (code > 0xFFFF && work.OneIn(2))
                {
                    text.push_back(static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)));
                    text.push_back(static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
                }
                else
                    text.push_back(static_cast<Unit>(code));
            if (!text.empty() && work.OneIn(3))
            {
                constexpr std::uint32_t WRONG[] = {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, 0x7FFFFFFF, 0x80000041};
                text[work.Below(static_cast<unsigned int>(text.size()))] = static_cast<Unit>(WRONG[work.Below(7)]);
            }
            bv::String const string(text.c_str());
            AddText(digest, string);
            bv::String assigned(L"before");
            assigned = text.c_str();
            AddText(digest, assigned);
            assigned = assigned.ToWCharArray();
            AddText(digest, assigned);
        }
}

void TextOperations(Digests& digests, Workload& work)
{
    auto const make = [&](unsigned int bound)
    {
        std::string text;
        bool const isAscii = work.OneIn(2);
        for (std::uint32_t const code : CodePoints(work, work.Below(bound), isAscii))
            AppendCodePoint(text, work.OneIn(2) ? 'a' + code % 2 : code);
        return bv::String(text.c_str());
    };
    for (int i = 0; i < 3000; ++i)
    {
        bv::String const a = make(i % 10 == 0 ? 300 : 12);
        bv::String const b = make(i % 10 == 0 ? 300 : 3);
        digests["comparison"].Add(a == b, a != b, (a < b), (a > b), a.IsEmpty());
        digests["search"].Add(a.Contains(b), b.Contains(a), a.Contains(a));
        AddText(digests["joined"], a + b);
        bv::String c(a);
        AddText(digests["joined"], c += b);
        AddText(digests["joined"], c += c);
        digests["search"].Add(c.Contains(a), c.Contains(b));
        c = b;
        AddText(digests["copies"], c);
        c.Clear();
        AddText(digests["copies"], c);
        digests["hashes"].Add(bv::FNVHash32(a), bv::FNVHash32(c));
        std::strong_ordering const order = a <=> b;
        digests["order"].Add(order < 0, order == 0, a == b.ToCharArray(), b.ToCharArray() == a);
        c = a;
        AddText(digests["joined-variables"], c + b);
        AddText(digests["joined-variables"], bv::String() + c);
    }
}

} // namespace

void RunTexts()
{
    Run("text-narrow", NarrowText);
    Run("text-wide-16", WideText<char16_t>);
    if constexpr (sizeof(wchar_t) > sizeof(char16_t))
        Run("text-wide", WideText<wchar_t>);
    Run("text-operations", TextOperations);
}

} // namespace digest
