#pragma once

/// @file
/// Operations that are missing.

#include "bv/Exception.h"

namespace bv
{

/// The operation is declared, but there is no code for it.
class BV_API NotImplementedException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    NotImplementedException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a message and without a location.
    NotImplementedException();
    /// A copy, which forgets its throw function.
    NotImplementedException(NotImplementedException const& other);
    /// The texts and the line of any exception, as NotImplementedException, without a throw function.
    NotImplementedException(Exception const& other);
    /// Frees the texts.
    ~NotImplementedException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as NotImplementedException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    NotImplementedException& operator=(NotImplementedException other) noexcept;
    /// @}
};

} // namespace bv
