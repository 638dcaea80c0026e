#pragma once

/// @file
/// The maths types in the format strings of {fmt}, which must be installed where this is included. bv/maths/Format.h
/// does the same for `std::format`.
///
/// Tuples, vectors, quaternions, planes and matrices are written element by element, in the format of an element:
/// `fmt::format("{:.3f}", vector)` gives "1.000, 2.000, 3.000". What stands in between is what `<<` writes. Without a
/// format, each number has as many digits as it takes to read it back with the same bits (bv/maths/FromChars.h); `{:g}`
/// has the six that `<<` writes. Exceptions are written as text. Strings: bv/Fmt.h.

#include <string_view>

#include <fmt/format.h>

#include "bv/Fmt.h"
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
struct fmt::formatter<Value, Char>
    : bv::maths::detail::tElementFormat<Value, Char, fmt::formatter<bv::maths::detail::ElementOf<Value>, Char>>
{
};

// As those of bv/Fmt.h.
template <>
struct fmt::formatter<bv::maths::MathsException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::maths::ArithmeticException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::maths::DivideByZeroException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::maths::MatrixException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
