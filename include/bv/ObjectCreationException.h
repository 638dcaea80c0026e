#pragma once

/// @file
/// Failures of creation.

#include "bv/Exception.h"

namespace bv
{

/// An object could not be created.
class BV_API ObjectCreationException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    ObjectCreationException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit ObjectCreationException(String const& message);
    /// A copy, which forgets its throw function.
    ObjectCreationException(ObjectCreationException const& other);
    /// The texts and the line of any exception, as ObjectCreationException, without a throw function.
    ObjectCreationException(Exception const& other);
    /// Frees the texts.
    ~ObjectCreationException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as ObjectCreationException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    ObjectCreationException& operator=(ObjectCreationException other) noexcept;
    /// @}
};

} // namespace bv
