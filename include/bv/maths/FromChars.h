#pragma once

/// @file
/// Values back from their text, in the way of `std::from_chars`.

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

#include "bv/maths/detail/Elements.h"
#include "bv/maths/detail/ReadNumber.h"

namespace bv::maths
{

/// Reads a tuple, vector, quaternion, plane or matrix from the text that `<<` writes: numbers joined by ", ", and those
/// of a matrix by tabs, with a newline behind each line, of which the last may be missing.
///
/// The text starts at `first` and may go on behind the value. Each number is what `std::from_chars` takes for its type:
/// no blanks and no plus in front, `inf` and `nan` for floating-point types, and no locale. Nothing is allocated. A
/// plane and a matrix are made from their numbers by the constructors that take a pointer: a plane is scaled, a matrix
/// is classified. `<<` writes six digits, which are not always enough to get the same number back; the formatters of
/// bv/maths/Format.h and bv/maths/Fmt.h write as many as it takes.
///
/// libc++ before its version 20, and so emscripten's, reads no floating-point numbers: fast_float reads them, where its
/// headers are found; else, tuples of integers are all that is read.
///
/// @param first,last the text, from the first character to one past the last.
/// @param value is changed where the whole text of one is there and every number fits its type.
/// @return in `ptr`, the first character behind the value, and in `ec`, no error. `std::errc::invalid_argument` where
///         the text is none of a value; `ptr` is then `first`. `std::errc::result_out_of_range` where a number is too
///         large or too small for its type; `ptr` is then behind the value.
template <detail::WithText Value>
[[gnu::always_inline]] inline std::from_chars_result FromChars(char const* first, char const* last,
                                                               Value& value) noexcept
{
    using Elements = detail::tElements<Value>;
    typename Elements::Element numbers[Elements::COUNT]{};
    bool fits = true;
    char const* place = first;
    for (std::size_t index = 0; index < Elements::COUNT; ++index)
    {
        std::from_chars_result const number = detail::ReadNumber(place, last, numbers[index]);
        if (number.ec == std::errc::invalid_argument)
            return {first, std::errc::invalid_argument};
        fits = fits && number.ec == std::errc{};
        place = number.ptr;

        std::string_view const wanted = Elements::GetTextBehind(index);
        if (std::string_view(place, static_cast<std::size_t>(last - place)).starts_with(wanted))
            place += wanted.size();
        else if (index + 1 < Elements::COUNT)
            return {first, std::errc::invalid_argument};
    }
    if (!fits)
        return {place, std::errc::result_out_of_range};
    value = Value(&numbers[0]);
    return {place, std::errc{}};
}

} // namespace bv::maths
