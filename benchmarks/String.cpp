#include "bv/String.h"

#include <memory>
#include <string>

#include "Bench.h"
#include "StringData.h"
#include "Topics.h"

namespace bench
{

using bv::String;

namespace
{

constexpr char const* LIBRARY = "BvBaseUtils";

void AddText(TextKind const& kind, std::size_t size)
{
    std::string const bytes = MakeText(kind, size);
    auto const text = std::make_shared<String>(bytes.c_str());
    std::wstring const units = text->ToWCharArray();
    AddRun(TextRow("from narrow", kind.name, size, "char") + LIBRARY, 1,
           [=]
           {
               String made = bytes.c_str();
               benchmark::DoNotOptimize(made);
           });
    AddRun(TextRow("from wide", kind.name, size, "wchar_t") + LIBRARY, 1,
           [=]
           {
               String made = units.c_str();
               benchmark::DoNotOptimize(made);
           });
    AddRun(TextRow("to wide", kind.name, size, "wchar_t") + LIBRARY, 1,
           [=]
           {
               wchar_t const* made = text->ToWCharArray();
               benchmark::DoNotOptimize(made);
           });
    AddRun(TextRow("to wide and back", kind.name, size, "wchar_t") + LIBRARY, 1,
           [=]
           {
               String made = text->ToWCharArray();
               benchmark::DoNotOptimize(made);
           });
}

/// What works on the bytes alone.
void AddBytes(TextKind const& kind, std::size_t size)
{
    std::string const bytes = MakeText(kind, size);
    auto const text = std::make_shared<String>(bytes.c_str());
    auto const same = std::make_shared<String>(*text);
    auto const target = std::make_shared<String>();
    String const last = "!";
    AddRun(TextRow("copy", kind.name, size, "char") + LIBRARY, 1,
           [=]
           {
               String copy = *text;
               benchmark::DoNotOptimize(copy);
           });
    AddRun(TextRow("assign", kind.name, size, "char") + LIBRARY, 1, [=] { *target = *text; });
    AddRun(TextRow("append", kind.name, size, "char") + LIBRARY, 1,
           [=]
           {
               target->Clear();
               *target += *text;
               *target += *same;
           });
    AddRun(TextRow("join", kind.name, size, "char") + LIBRARY, 1,
           [=]
           {
               String joined = *text + *same;
               benchmark::DoNotOptimize(joined);
           });
    AddRun(TextRow("==", kind.name, size, "char") + LIBRARY, 1,
           [=]
           {
               bool equal = *text == *same;
               benchmark::DoNotOptimize(equal);
           });
    AddRun(TextRow("contains", kind.name, size, "char") + LIBRARY, 1,
           [=]
           {
               bool contained = text->Contains(last);
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

} // namespace bench
