// Texts of wide elements: code points and units of UTF-16 in any order, against a decoder of one code point at a time.

#include <string>

#include "Fuzz.h"
#include "bv/String.h"

using namespace bv;
using namespace bv::fuzz;

namespace
{

constexpr std::uint32_t LAST = 0x10FFFF;

bool IsHigh(std::uint32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(std::uint32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AddUtf8(std::string& text, std::uint32_t point)
{
    auto const add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (point < 0x80)
        return add(point);
    if (point < 0x800)
        add(0xC0 | point >> 6);
    else
    {
        if (point < 0x10000)
            add(0xE0 | point >> 12);
        else
        {
            add(0xF0 | point >> 18);
            add(0x80 | (point >> 12 & 0x3F));
        }
        add(0x80 | (point >> 6 & 0x3F));
    }
    add(0x80 | (point & 0x3F));
}

/// The text in UTF-8, or nothing when it is malformed.
std::string ToUtf8(std::wstring const& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        auto point = static_cast<std::uint32_t>(text[i]);
        if (IsHigh(point))
        {
            std::uint32_t const low = i + 1 < text.size() ? static_cast<std::uint32_t>(text[i + 1]) : 0U;
            if (!IsLow(low))
                return "";
            point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
            ++i;
        }
        else if (IsLow(point) || point > LAST)
            return "";
        AddUtf8(result, point);
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    bool const hasPoints = input.Below(2) == 1 && sizeof(wchar_t) == 4;
    std::wstring wide;
    while (!input.IsUsedUp())
        wide += hasPoints ? static_cast<wchar_t>(input.Take<std::uint32_t>())
                          : static_cast<wchar_t>(input.Take<std::uint16_t>());
    wide = wide.c_str(); // up to its first 0

    std::string const expected = ToUtf8(wide);
    String const text(wide.c_str());
    Require(text.ToCharArray() == expected, "units become the UTF-8 of their code points, or nothing");
    String assigned("before");
    assigned = wide.c_str();
    Require(assigned == text, "units are assigned as they are read");

    std::wstring const back = text.ToWCharArray();
    for (wchar_t const unit : back)
    {
        auto const number = static_cast<std::uint32_t>(unit); // by itself: on Windows, no wchar_t exceeds the limit
        Require(number <= 0xFFFF, "what is given is UTF-16");
    }
    Require(ToUtf8(back) == expected, "a text stays the same through UTF-16");
    if (!hasPoints && !expected.empty())
        Require(back == wide, "units come back as they were");
    return 0;
}
