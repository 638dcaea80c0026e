#pragma once

/// @file
/// `std::format` for strings and exceptions, where the standard library has it (`__cpp_lib_format`); elsewhere this
/// header is empty, and bv/Fmt.h does the same for {fmt}.
///
/// A string is its UTF-8 text, and an exception the text that `<<` writes, both in the format of text: `{:>20}`. A
/// class that a program derives from one of the exceptions needs a formatter of its own, which may derive from that of
/// `bv::Exception`.

#include <version>

#if defined __cpp_lib_format

#include <format>
#include <string_view>

#include "bv/detail/TextFormat.h"

namespace bv
{
class FileIOException;
class InvalidArgumentException;
class InvalidObjectException;
class NotImplementedException;
class ObjectCreationException;
class ObjectDeletionException;
class OutOfMemoryException;
class ThreadExitException;
} // namespace bv

/// Formats the text of a string.
template <>
struct std::formatter<bv::String> : bv::detail::tStringFormat<std::formatter<std::string_view>>
{
};

/// Formats the text of an exception; the others, too.
template <>
struct std::formatter<bv::Exception> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::FileIOException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::InvalidArgumentException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::InvalidObjectException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::NotImplementedException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::ObjectCreationException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::ObjectDeletionException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::OutOfMemoryException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};
template <>
struct std::formatter<bv::ThreadExitException> : bv::detail::tExceptionFormat<std::formatter<std::string_view>>
{
};

#endif
