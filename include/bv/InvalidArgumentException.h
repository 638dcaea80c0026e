#pragma once

/// @file
/// Wrong arguments.

#include "bv/Exception.h"

namespace bv
{

/// A function was given an argument that it cannot work with.
class BV_API InvalidArgumentException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    InvalidArgumentException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit InvalidArgumentException(String const& message);
    /// A copy, which forgets its throw function.
    InvalidArgumentException(InvalidArgumentException const& other);
    /// The texts and the line of any exception, as InvalidArgumentException, without a throw function.
    InvalidArgumentException(Exception const& other);
    /// Frees the texts.
    ~InvalidArgumentException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as InvalidArgumentException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    InvalidArgumentException& operator=(InvalidArgumentException other) noexcept;
    /// @}
};

} // namespace bv
