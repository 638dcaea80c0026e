#pragma once

/// @file
/// What the formatters of the standard library and of {fmt} share.

#include <string_view>

#include "bv/Exception.h"
#include "bv/String.h"

namespace bv::detail
{

/// Formats a string as the formatter of text does.
template <typename TextFormatter>
struct tStringFormat : TextFormatter
{
    template <typename Context>
    auto format(String const& string, Context& context) const
    {
        return TextFormatter::format(std::string_view(string.ToCharArray()), context);
    }
};

/// Formats an exception as the formatter of text does.
template <typename TextFormatter>
struct tExceptionFormat : TextFormatter
{
    template <typename Context>
    auto format(Exception const& exception, Context& context) const
    {
        return TextFormatter::format(std::string_view(GetText(exception)), context);
    }
};

} // namespace bv::detail
