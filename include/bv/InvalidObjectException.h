#pragma once

/// @file
/// Objects in a wrong state.

#include "bv/Exception.h"

namespace bv
{

/// An object is not in a state in which the operation makes sense.
class BV_API InvalidObjectException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    InvalidObjectException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit InvalidObjectException(String const& message);
    /// A copy, which forgets its throw function.
    InvalidObjectException(InvalidObjectException const& other);
    /// The texts and the line of any exception, as InvalidObjectException, without a throw function.
    InvalidObjectException(Exception const& other);
    /// Frees the texts.
    ~InvalidObjectException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as InvalidObjectException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    InvalidObjectException& operator=(InvalidObjectException other) noexcept;
    /// @}
};

} // namespace bv
