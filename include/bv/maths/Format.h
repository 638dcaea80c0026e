#pragma once

/// @file
/// `std::format` for the maths types, where the standard library has it (`__cpp_lib_format`); elsewhere this header is
/// empty, and bv/maths/Fmt.h does the same for {fmt}.
///
/// Tuples, vectors, quaternions, planes and matrices are written element by element, in the format of an element:
/// `std::format("{:.3f}", vector)` gives "1.000, 2.000, 3.000". What stands in between is what `<<` writes. Without a
/// format, each number has as many digits as it takes to read it back with the same bits (bv/maths/FromChars.h); `{:g}`
/// has the six that `<<` writes. Exceptions are written as text. Strings: bv/Format.h.

#include <version>

#if defined __cpp_lib_format

#include <format>
#include <string_view>

#include "bv/Format.h"
#include "bv/maths/detail/ElementFormat.h"
#include "bv/maths/detail/Elements.h"

namespace bv::maths
{
class MathsException;
class ArithmeticException;
class DivideByZeroException;
class MatrixException;
} // namespace bv::maths

/// Formats a value element by element.
template <bv::maths::detail::WithText Value, typename Char>
struct std::formatter<Value, Char>
    : bv::maths::detail::tElementFormat<Value, Char, std::formatter<bv::maths::detail::ElementOf<Value>, Char>>
{
};

// As those of bv/Format.h.
template <>
struct std::formatter<bv::maths::MathsException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::maths::ArithmeticException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::maths::DivideByZeroException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::maths::MatrixException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};

#endif
