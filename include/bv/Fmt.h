#pragma once

/// @file
/// Strings and exceptions in the format strings of {fmt}, which must be installed where this is included. bv/Format.h
/// does the same for `std::format`.
///
/// A string is its UTF-8 text, and an exception the text that `<<` writes, both in the format of text: `{:>20}`. A
/// class that a program derives from one of the exceptions needs a formatter of its own, which may derive from that of
/// `bv::Exception`.

#include <string_view>

#include <fmt/format.h>

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
struct fmt::formatter<bv::String> : bv::detail::tStringFormat<fmt::formatter<std::string_view>>
{
};

/// Formats the text of an exception; the others, too.
template <>
struct fmt::formatter<bv::Exception> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::FileIOException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::InvalidArgumentException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::InvalidObjectException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::NotImplementedException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::ObjectCreationException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::ObjectDeletionException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::OutOfMemoryException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
template <>
struct fmt::formatter<bv::ThreadExitException> : bv::detail::tExceptionFormat<fmt::formatter<std::string_view>>
{
};
