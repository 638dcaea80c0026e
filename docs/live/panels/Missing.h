#pragma once

/// @file
/// What version 14 of LLVM's standard library, and emscripten's, lack and the ray tracer uses. Its sources are compiled
/// with this in front.

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <ranges>
#include <string>
#include <system_error>

#if !defined __cpp_lib_ranges

namespace std::ranges
{

template <typename Range, typename Test>
bool any_of(Range const& range, Test test)
{
    return std::any_of(std::begin(range), std::end(range), test);
}

template <typename Range, typename Value>
void replace(Range& range, Value const& from, Value const& to)
{
    std::replace(std::begin(range), std::end(range), from, to);
}

template <typename Range, typename Test, typename Value>
void replace_if(Range& range, Test test, Value const& to)
{
    std::replace_if(std::begin(range), std::end(range), test, to);
}

struct Less
{
};

template <typename Range, typename Projection>
void sort(Range& range, Less, Projection projection)
{
    std::sort(std::begin(range), std::end(range),
              [&](auto const& a, auto const& b) { return projection(a) < projection(b); });
}

} // namespace std::ranges

#endif

#if !defined __cpp_lib_to_chars

namespace std
{

/// For the numbers of a Wavefront OBJ file, which have a digit, a sign or a point in front.
inline from_chars_result from_chars(char const* first, char const* last, float& value)
{
    string const text(first, last);
    char* end = nullptr;
    float const number = strtof(text.c_str(), &end);
    if (end == text.c_str())
        return {first, errc::invalid_argument};
    value = number;
    return {first + (end - text.c_str()), errc{}};
}

} // namespace std

#endif
