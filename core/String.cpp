#include "bv/String.h"

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>

#include <utf8.h>

#include "Conversion.h"

namespace bv
{

struct String::StringImpl
{
    std::string text;                   ///< UTF-8, always valid, without a NUL inside
    std::unique_ptr<std::wstring> wide; ///< what ToWCharArray() gave last, or null
};

namespace
{

/// Replaces the target by the converted text. When memory runs out, the target stays as it was.
/// @throws utf8::exception when the text is malformed; what the target then holds means nothing.
template <typename Out, typename In>
void Assign(std::basic_string<Out>& target, In const* text, In const* end)
{
    constexpr std::size_t SHORT = 1024; // converted on the stack, which takes less time than to count first
    if (static_cast<std::size_t>(end - text) <= SHORT)
    {
        Out buffer[sizeof(Out) == 1 ? 4 * SHORT : SHORT]; // a wide element becomes up to four bytes
        target.assign(buffer, conversion::Convert(text, end, buffer));
    }
    else
    {
        target.assign(conversion::GetConvertedLength(text, end), Out{});
        conversion::Convert(text, end, target.data());
    }
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
    text = text == nullptr ? "" : text;
    std::size_t const length = std::strlen(text);
    if (conversion::IsValid(text, text + length))
        impl->text.assign(text, length); // which may be a part of itself
    else
        impl->text.clear();
    return *this;
}

String& String::operator=(wchar_t const* text)
{
    text = text == nullptr ? L"" : text;
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

std::strong_ordering String::operator<=>(String const& other) const noexcept
{
    return impl->text.compare(other.impl->text) <=> 0;
}

String String::operator+(String const& other)
{
    return static_cast<String const&>(*this) + other;
}

String String::operator+(String const& other) const
{
    String joined;
    joined.impl->text.reserve(impl->text.size() + other.impl->text.size());
    joined.impl->text.append(impl->text).append(other.impl->text);
    // The joined text comes in like any other: up to its first NUL, and valid or not at all.
    joined = joined.ToCharArray();
    return joined;
}

String& String::operator+=(String const& other)
{
    impl->text += other.impl->text;
    return *this;
}

std::string String::ToStdString() const
{
    return impl->text;
}

std::wstring String::ToStdWString() const
{
    std::wstring wide;
    try
    {
        Assign(wide, impl->text.data(), impl->text.data() + impl->text.size());
    }
    catch (utf8::invalid_utf8 const&)
    {
        wide.clear(); // damaged from outside
    }
    return wide;
}

} // namespace bv
