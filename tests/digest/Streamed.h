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

/// What a stream gives back of a value.
template <typename T>
[[nodiscard]] T ReadBack(T const& value, T target)
{
    std::istringstream stream(Serialised(value));
    target.Deserialise(stream);
    return target;
}

template <typename T>
[[nodiscard]] std::string Text(T const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

} // namespace digest
