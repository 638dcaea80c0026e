#pragma once

/// @file
/// Lack of memory.

#include "bv/Exception.h"

namespace bv
{

/// There was not enough memory.
class BV_API OutOfMemoryException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    OutOfMemoryException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit OutOfMemoryException(String const& message);
    /// A copy, which forgets its throw function.
    OutOfMemoryException(OutOfMemoryException const& other);
    /// The texts and the line of any exception, as OutOfMemoryException, without a throw function.
    OutOfMemoryException(Exception const& other);
    /// Frees the texts.
    ~OutOfMemoryException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as OutOfMemoryException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    OutOfMemoryException& operator=(OutOfMemoryException other) noexcept;
    /// @}
};

} // namespace bv
