#include "bv/String.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <utf8.h>

#include "Ascii.h"
#include "ConvertedLength.h"

namespace bv
{

struct String::StringImpl
{
    std::string text;                   ///< UTF-8, always valid, without a NUL inside
    std::unique_ptr<std::wstring> wide; ///< what ToWCharArray() gave last, or null
};

namespace
{

/// Elements that are converted into a buffer on the stack before they join the result. A longer text is converted in
/// portions.
constexpr std::size_t PORTION = 1024;
/// The most wide elements that are looked at one by one rather than together first.
constexpr std::size_t FEW = 16;
/// The most elements that one element of a text becomes: a `wchar_t` up to four bytes, a byte one `wchar_t`.
template <typename Out>
constexpr std::size_t GROWTH = sizeof(Out) == 1 ? 4 : 1;

bool IsSurrogate(wchar_t element) noexcept
{
    return static_cast<std::uint32_t>(element) - 0xD800 < 0x800;
}

/// Whether a text is not to be cut between two elements. Of what is not valid, either answer will do: one of the parts
/// stays so.
bool AreJoined(char, char second) noexcept
{
    return (static_cast<unsigned char>(second) & 0xC0) == 0x80;
}

bool AreJoined(wchar_t first, wchar_t) noexcept
{
    return static_cast<std::uint32_t>(first) - 0xD800 < 0x400;
}

/// The length of the first `count` elements of a text, less those of a character that they would cut.
template <typename Char>
std::size_t KeepWhole(Char const* text, Char const* end, std::size_t count) noexcept
{
    if (count == static_cast<std::size_t>(end - text))
        return count;
    constexpr std::size_t MORE = sizeof(Char) == 1 ? 3 : 1; // the most elements of a character after its first
    std::size_t whole = count;
    while (whole + MORE > count && AreJoined(text[whole - 1], text[whole]))
        --whole;
    return whole;
}

/// Hands a text over in pieces, in order: to `ascii(piece, count)` what is ASCII, to `others(piece, count)` the rest,
/// until that returns false. Every piece holds whole characters. Where little text is left, ASCII may go with the rest.
///
/// @param step handles 16 elements if all are ASCII, and returns whether they are.
/// @return whether no call of `others` returned false.
template <typename Char, typename Step, typename Ascii, typename Others>
inline bool ForEachPiece(Char const* text, Char const* end, Step step, Ascii ascii, Others others)
{
    constexpr std::uint64_t ALL = ~std::uint64_t{0}; // a bit for each element of a block
    static_assert(ascii::BLOCK == 64);
    while (text != end)
    {
        while (static_cast<std::size_t>(end - text) >= ascii::STEP && step(text))
            text += ascii::STEP;
        auto const rest = static_cast<std::size_t>(end - text);
        std::size_t count = std::min(rest, ascii::BLOCK);
        std::uint64_t mask = sizeof(Char) > 1 && count < ascii::STEP ? ALL : ascii::FindOthers(text, count);
        if (mask != 0)
        {
            if (count < ascii::STEP)
                mask = ALL;
            if (mask == ALL)
                while (rest - count >= ascii::BLOCK && ascii::FindOthers(text + count, ascii::BLOCK) == ALL)
                    count += ascii::BLOCK;
            count = KeepWhole(text, end, count);
            if (mask != ALL && count < ascii::BLOCK)
                mask &= ALL >> (ascii::BLOCK - count);
        }
        std::size_t at = 0;
        for (;;)
        {
            std::size_t const first = mask == 0 ? count : static_cast<std::size_t>(std::countr_zero(mask));
            ascii(text + at, first - at);
            if (mask == 0)
                break;
            std::uint64_t const above = mask + (std::uint64_t{1} << first); // the carry clears the row of ones
            at = above == 0 ? count : static_cast<std::size_t>(std::countr_zero(above));
            mask &= above;
            if (!others(text + first, at - first))
                return false;
        }
        text += count;
    }
    return true;
}

[[gnu::flatten, gnu::noinline]] bool IsValid(char const* text, char const* end)
{
    return ForEachPiece(
        text, end, [](char const* piece) { return ascii::FindOthersInStep(piece) == 0; },
        [](char const*, std::size_t) {},
        [](char const* piece, std::size_t count) { return utf8::is_valid(piece, piece + count); });
}

/// Converts what is not ASCII.
/// @throws utf8::exception when it is not valid.
wchar_t* ConvertPiece(char const* text, std::size_t count, wchar_t* out)
{
    return utf8::utf8to16(text, text + count, out);
}

/// Converts elements of which none is above 0xFFFF, in a function of its own so that the loop has the registers to
/// itself.
[[gnu::flatten, gnu::noinline]] char* ConvertUnits(wchar_t const* text, wchar_t const* end, char* out)
{
    return utf8::utf16to8(text, end, out);
}

/// Converts what is not ASCII.
/// @throws utf8::exception for a surrogate without its partner and an element above 0x10FFFF.
char* ConvertPiece(wchar_t const* text, std::size_t count, char* out)
{
    wchar_t const* const end = text + count;
    if (count > FEW)
    {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < count; ++i)
            bits |= static_cast<std::make_unsigned_t<wchar_t>>(text[i]);
        if (bits <= 0xFFFF)
            return ConvertUnits(text, end, out);
    }
    while (text != end)
    {
        if (IsSurrogate(*text))
        {
            // Nothing else goes with them: of each element, utfcpp looks at 16 bits here.
            wchar_t const* const first = text;
            do
                ++text;
            while (text != end && IsSurrogate(*text));
            out = ConvertUnits(first, text, out);
        }
        else
        {
            // Through the unsigned type, so that a negative element counts as one that is too large.
            out = utf8::append(static_cast<std::make_unsigned_t<wchar_t>>(*text), out);
            ++text;
        }
    }
    return out;
}

/// Converts a text into a buffer that is long enough.
/// @return the end of what was converted.
template <typename In, typename Out>
[[gnu::flatten]] Out* Convert(In const* text, In const* end, Out* out)
{
    ForEachPiece(
        text, end,
        [&](In const* piece)
        {
            bool const isAscii = ascii::ConvertStep(piece, out) == 0;
            out += isAscii ? ascii::STEP : 0;
            return isAscii;
        },
        [&](In const* piece, std::size_t count)
        { out = ascii::Convert(piece, count, static_cast<std::size_t>(end - piece), out); },
        [&](In const* piece, std::size_t count)
        {
            out = ConvertPiece(piece, count, out);
            return true;
        });
    return out;
}

/// Replaces the target by the converted text. When memory runs out, the target stays as it was.
/// @throws utf8::exception when the text is not valid; the target then holds a part of it.
template <typename Out, typename In>
void Assign(std::basic_string<Out>& target, In const* text, In const* end)
{
    if (static_cast<std::size_t>(end - text) > PORTION)
        target.reserve(GetConvertedLength(text, end));
    bool isFirst = true;
    do
    {
        Out buffer[PORTION * GROWTH<Out> + ascii::STEP];
        std::size_t const count = KeepWhole(text, end, std::min(static_cast<std::size_t>(end - text), PORTION));
        auto const length = static_cast<std::size_t>(Convert(text, text + count, buffer) - buffer);
        if (isFirst)
            target.assign(buffer, length);
        else
            target.append(buffer, length);
        isFirst = false;
        text += count;
    } while (text != end);
}

} // namespace

String::String() : impl{new StringImpl} {}

String::String(String const& other) : impl{new StringImpl{other.impl->text, nullptr}} {}

// The constructors from text delegate, so that the destructor frees the StringImpl when the rest fails.
String::String(char const* text) : String()
{
    *this = text;
}

String::String(wchar_t const* text) : String()
{
    *this = text;
}

String::~String()
{
    delete impl;
}

char const* String::ToCharArray() const noexcept
{
    return impl->text.data();
}

wchar_t const* String::ToWCharArray() const
{
    impl->wide.reset();
    impl->wide = std::make_unique<std::wstring>(ToStdWString());
    return impl->wide->c_str();
}

bool String::Contains(String const& other) const noexcept
{
    return impl->text.find(other.impl->text) != std::string::npos;
}

bool String::IsEmpty() const noexcept
{
    return impl->text.empty();
}

void String::Clear() noexcept
{
    impl->text.clear();
    impl->wide.reset();
}

String& String::operator=(String const& other)
{
    // Only the text: what ToWCharArray() handed out stays valid.
    if (this != &other)
        impl->text = other.impl->text;
    return *this;
}

String& String::operator=(char const* text)
{
    if (text == nullptr)
        text = "";
    std::size_t const length = std::strlen(text);
    if (IsValid(text, text + length))
        impl->text.assign(text, length); // which may be a part of itself
    else
        impl->text.clear();
    return *this;
}

String& String::operator=(wchar_t const* text)
{
    if (text == nullptr)
        text = L"";
    try
    {
        Assign(impl->text, text, text + std::wcslen(text));
    }
    catch (utf8::exception const&)
    {
        impl->text.clear();
    }
    return *this;
}

bool String::operator==(String const& other) const noexcept
{
    return impl->text == other.impl->text;
}

bool String::operator!=(String const& other) const noexcept
{
    return !(*this == other);
}

bool String::operator<(String const& other) const noexcept
{
    return impl->text < other.impl->text;
}

bool String::operator>(String const& other) const noexcept
{
    return other < *this;
}

String String::operator+(String const& other)
{
    return std::as_const(*this) + other;
}

String String::operator+(String const& other) const
{
    String joined;
    joined.impl->text.reserve(impl->text.size() + other.impl->text.size());
    joined.impl->text = impl->text;
    joined += other;
    return joined;
}

String& String::operator+=(String const& other)
{
    impl->text += other.impl->text;
    // The joined text comes in like any other: up to its first NUL, and valid or not at all.
    impl->text.resize(std::strlen(impl->text.data()));
    if (!IsValid(impl->text.data(), impl->text.data() + impl->text.size()))
        impl->text.clear();
    return *this;
}

std::string String::ToStdString() const
{
    return impl->text;
}

std::wstring String::ToStdWString() const
{
    std::wstring wide;
    char const* const text = impl->text.c_str();
    char const* const end = text + impl->text.size();
    try
    {
        Assign(wide, text, end);
    }
    catch (utf8::exception const&)
    {
        // Damaged from outside. What is wrong with a text depends on what comes after it, so the whole of it is judged.
        wide.clear();
        char const* invalid = utf8::find_invalid(text, end);
        try
        {
            utf8::next(invalid, end);
        }
        catch (utf8::invalid_utf8 const&)
        {
            // It is empty.
        }
    }
    return wide;
}

} // namespace bv
