#pragma once

/// @file
/// One number back from its text, with every standard library.

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

// libc++ reads floating-point numbers from its version 20 on; before, the library fast_float does, where it is
// installed.
#if !defined __cpp_lib_to_chars && __has_include(<fast_float/fast_float.h>)
#define BV_HAS_FAST_FLOAT 1
#include <fast_float/fast_float.h>
#endif

namespace bv::maths::detail
{

/// Whether the standard library reads numbers of this type.
template <typename Number>
concept ReadByStandardLibrary = requires(char const* text, Number& number)
{
    std::from_chars(text, text, number);
};

#ifdef BV_HAS_FAST_FLOAT
/// What `std::from_chars` does. fast_float takes the same texts, but until its version 5 a number that does not fit its
/// type is an infinity or zero without an error: the text then has digits in front, and one of them is not zero.
template <typename Number>
[[gnu::always_inline]] inline std::from_chars_result ReadByFastFloat(char const* first, char const* last,
                                                                     Number& number) noexcept
{
    Number read{};
    auto const [end, error] = fast_float::from_chars(first, last, read);
    if (error != std::errc{})
        return {end, error};
    std::string_view const text(first, static_cast<std::size_t>(end - first));
    std::string_view const digits = text.substr(0, text.find_first_of("eE"));
    bool const isZero = digits.find_first_not_of("-.0") == std::string_view::npos;
    bool const isNumber = digits.find_first_not_of("-.0123456789") == std::string_view::npos;
    if (isNumber && ((read == 0 && !isZero) || read - read != 0))
        return {end, std::errc::result_out_of_range};
    number = read;
    return {end, std::errc{}};
}
#endif

/// `std::from_chars` for this number, whoever does it.
template <typename Number>
[[gnu::always_inline]] inline std::from_chars_result ReadNumber(char const* first, char const* last,
                                                                Number& number) noexcept
{
#ifdef BV_HAS_FAST_FLOAT
    if constexpr (!ReadByStandardLibrary<Number>)
        return ReadByFastFloat(first, last, number);
    else
#endif
        return std::from_chars(first, last, number);
}

} // namespace bv::maths::detail
