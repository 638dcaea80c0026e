#pragma once

/// @file
/// Values as a stream receives them.

#include <sstream>
#include <string>

namespace digest
{

template <typename T>
[[nodiscard]] std::string Serialised(T const& value)
{
    std::ostringstream stream;
    value.Serialise(stream);
    return stream.str();
}

template <typename T>
[[nodiscard]] std::string Text(T const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

} // namespace digest
