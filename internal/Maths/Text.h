#pragma once

/// @file
/// Text shared by the sources of the maths: components as text, and the names that exceptions carry.

#include <ios>
#include <locale>
#include <new>
#include <sstream>
#include <string>

namespace bv::maths
{

/// What is written to a stream with default settings, whose text no global locale can change.
/// @throws std::bad_alloc when memory runs out. libc++ only says that the stream is bad then.
template <typename Write>
[[nodiscard]] std::string TextOf(Write const& write)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios_base::badbit);
    try
    {
        write(stream);
    }
    catch (std::ios_base::failure const&)
    {
        throw std::bad_alloc();
    }
    return stream.str();
}

/// The values in order, joined by ", ".
template <typename T, typename... Ts>
[[nodiscard]] std::string Join(T const& first, Ts const&... others)
{
    return TextOf(
        [&](std::ostream& stream)
        {
            stream << first;
            ((stream << ", " << others), ...);
        });
}

/// The name of an element type as it stands between the angle brackets of a function name.
template <typename T>
inline constexpr char const* TYPE_NAME = nullptr;
template <>
inline constexpr char const* TYPE_NAME<float> = "float";
template <>
inline constexpr char const* TYPE_NAME<double> = "double";

/// The qualified name of a member of a class template's instance, such as "bv::maths::tMatrix4<float>::Invert".
template <typename T>
[[nodiscard]] std::string FunctionName(char const* classTemplate, char const* member)
{
    return std::string("bv::maths::") + classTemplate + "<" + TYPE_NAME<T> + ">::" + member;
}

} // namespace bv::maths
