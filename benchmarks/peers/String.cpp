#include <cstring>
#include <cwchar>
#include <iterator>
#include <memory>
#include <string>

#include <utf8.h>

#include "Bench.h"
#include "StringData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

std::string FromNarrow(char const* text)
{
    char const* const end = text + std::strlen(text);
    return utf8::is_valid(text, end) ? std::string(text, end) : std::string();
}

std::string FromWide(wchar_t const* text)
{
    std::string bytes;
    try
    {
        utf8::utf16to8(text, text + std::wcslen(text), std::back_inserter(bytes));
    }
    catch (utf8::exception const&)
    {
        bytes.clear();
    }
    return bytes;
}

std::string FromWideBuffered(wchar_t const* text)
{
    std::size_t const length = std::wcslen(text);
    std::string bytes(3 * length, '\0');
    try
    {
        bytes.resize(static_cast<std::size_t>(utf8::utf16to8(text, text + length, bytes.data()) - bytes.data()));
    }
    catch (utf8::exception const&)
    {
        bytes.clear();
    }
    return bytes;
}

std::wstring ToWide(std::string const& text)
{
    std::wstring units;
    utf8::utf8to16(text.begin(), text.end(), std::back_inserter(units));
    return units;
}

std::wstring ToWideBuffered(std::string const& text)
{
    std::wstring units(text.size(), L'\0');
    char const* const bytes = text.data();
    units.resize(static_cast<std::size_t>(utf8::utf8to16(bytes, bytes + text.size(), units.data()) - units.data()));
    return units;
}

void AddText(TextKind const& kind, std::size_t size)
{
    std::string const bytes = MakeText(kind, size);
    std::wstring const units = ToWide(bytes);
    AddRun(TextRow("from narrow", kind.name, size, "char") + "utfcpp", 1,
           [=]
           {
               std::string made = FromNarrow(bytes.c_str());
               benchmark::DoNotOptimize(made);
           });
    auto const add = [&](char const* library, auto fromWide, auto toWide)
    {
        AddRun(TextRow("from wide", kind.name, size, "wchar_t") + library, 1,
               [=]
               {
                   std::string made = fromWide(units.c_str());
                   benchmark::DoNotOptimize(made);
               });
        AddRun(TextRow("to wide", kind.name, size, "wchar_t") + library, 1,
               [=]
               {
                   std::wstring made = toWide(bytes);
                   benchmark::DoNotOptimize(made);
               });
        AddRun(TextRow("to wide and back", kind.name, size, "wchar_t") + library, 1,
               [=]
               {
                   std::string made = fromWide(toWide(bytes).c_str());
                   benchmark::DoNotOptimize(made);
               });
    };
    add(
        "utfcpp", [](wchar_t const* text) { return FromWide(text); },
        [](std::string const& text) { return ToWide(text); });
    add(
        "utfcpp into a buffer", [](wchar_t const* text) { return FromWideBuffered(text); },
        [](std::string const& text) { return ToWideBuffered(text); });
}

/// Appends, and keeps the text valid as a whole: what the library promises of a text that was joined.
void Append(std::string& target, std::string const& text)
{
    target += text;
    if (!utf8::is_valid(target.begin(), target.end()))
        target.clear();
}

/// What works on the bytes alone, with a string that hides nothing; a text that was joined is validated.
void AddBytes(TextKind const& kind, std::size_t size)
{
    auto const text = std::make_shared<std::string>(MakeText(kind, size));
    auto const same = std::make_shared<std::string>(*text);
    auto const target = std::make_shared<std::string>();
    std::string const last = "!";
    AddRun(TextRow("copy", kind.name, size, "char") + "std", 1,
           [=]
           {
               std::string copy = *text;
               benchmark::DoNotOptimize(copy);
           });
    AddRun(TextRow("assign", kind.name, size, "char") + "std", 1, [=] { *target = *text; });
    AddRun(TextRow("append", kind.name, size, "char") + "utfcpp", 1,
           [=]
           {
               target->clear();
               Append(*target, *text);
               Append(*target, *same);
           });
    AddRun(TextRow("join", kind.name, size, "char") + "utfcpp", 1,
           [=]
           {
               std::string joined = *text + *same;
               if (!utf8::is_valid(joined.begin(), joined.end()))
                   joined.clear();
               benchmark::DoNotOptimize(joined);
           });
    AddRun(TextRow("==", kind.name, size, "char") + "std", 1,
           [=]
           {
               bool equal = *text == *same;
               benchmark::DoNotOptimize(equal);
           });
    AddRun(TextRow("contains", kind.name, size, "char") + "std", 1,
           [=]
           {
               bool contained = text->find(last) != std::string::npos;
               benchmark::DoNotOptimize(contained);
           });
}

} // namespace

void AddString()
{
    for (std::size_t const size : TEXT_SIZES)
    {
        for (TextKind const& kind : TEXT_KINDS)
            AddText(kind, size);
        AddBytes(TEXT_KINDS[0], size);
    }
}

} // namespace bench::peers
