#include "bv/String.h"

#include <iterator>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include <utf8.h>

namespace bv
{

struct String::StringImpl
{
    std::string text;                   ///< UTF-8, always valid, without a NUL inside
    std::unique_ptr<std::wstring> wide; ///< what ToWCharArray() gave last, or null
};

namespace
{

/// The text as UTF-16. An element above 0xFFFF, which only a wide `wchar_t` can hold, becomes a pair of units.
/// @throws utf8::invalid_code_point for an element above 0x10FFFF.
std::u16string ToUnits(wchar_t const* text)
{
    std::u16string units;
    for (; *text != 0; ++text)
    {
        // Through the unsigned type, so that a negative element counts as one that is too large.
        char32_t const element = static_cast<std::make_unsigned_t<wchar_t>>(*text);
        if (element > 0x10FFFF)
            throw utf8::invalid_code_point(element);
        if (element > 0xFFFF)
        {
            units.push_back(static_cast<char16_t>(0xD800 + ((element - 0x10000) >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + (element & 0x3FF)));
        }
        else
        {
            units.push_back(static_cast<char16_t>(element));
        }
    }
    return units;
}

} // namespace

String::String() : impl{new StringImpl} {}

String::String(String const& other) : impl{new StringImpl{other.impl->text, nullptr}} {}

// The constructors from text delegate, so that the destructor frees the StringImpl when the rest fails.
String::String(char const* text) : String()
{
    if (text == nullptr)
        return;
    std::string_view const bytes(text);
    if (utf8::is_valid(bytes.begin(), bytes.end()))
        impl->text = bytes;
}

String::String(wchar_t const* text) : String()
{
    if (text == nullptr)
        return;
    try
    {
        std::u16string const units = ToUnits(text);
        std::string bytes;
        utf8::utf16to8(units.begin(), units.end(), std::back_inserter(bytes));
        impl->text = bytes;
    }
    catch (utf8::exception const&)
    {
        // The text is not UTF-16, and the string stays empty.
    }
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
    return *this = String(text);
}

String& String::operator=(wchar_t const* text)
{
    return *this = String(text);
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
    return String((ToStdString() + other.impl->text).c_str());
}

String& String::operator+=(String const& other)
{
    return *this = *this + other;
}

std::string String::ToStdString() const
{
    return impl->text;
}

std::wstring String::ToStdWString() const
{
    std::u16string units;
    try
    {
        utf8::utf8to16(impl->text.begin(), impl->text.end(), std::back_inserter(units));
    }
    catch (utf8::invalid_utf8 const&)
    {
        return {};
    }
    return {units.begin(), units.end()};
}

} // namespace bv
