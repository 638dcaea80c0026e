#pragma once

/// @file
/// Failures of files.

#include "bv/Exception.h"

namespace bv
{

/// Reading or writing a file failed.
class BV_API FileIOException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    FileIOException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit FileIOException(String const& message);
    /// A copy, which forgets its throw function.
    FileIOException(FileIOException const& other);
    /// The texts and the line of any exception, as FileIOException, without a throw function.
    FileIOException(Exception const& other);
    /// Frees the texts.
    ~FileIOException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as FileIOException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    FileIOException& operator=(FileIOException other) noexcept;
    /// @}
};

} // namespace bv
