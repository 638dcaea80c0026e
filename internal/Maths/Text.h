#pragma once

/// @file
/// Text shared by the sources of the maths: components as text, and the names that exceptions carry.

#include <locale>
#include <sstream>
#include <string>

namespace bv::maths
{

/// A stream with default settings whose text no global locale can change, and which throws when memory runs out instead
/// of leaving some of the text out.
[[nodiscard]] inline std::ostringstream FreshStream()
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios_base::badbit);
    return stream;
}

/// The values in order, joined by ", ".
template <typename T, typename... Ts>
[[nodiscard]] std::string Join(T const& first, Ts const&... others)
{
    std::ostringstream stream = FreshStream();
    stream << first;
    ((stream << ", " << others), ...);
    return stream.str();
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
