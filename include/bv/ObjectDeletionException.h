#pragma once

/// @file
/// Failures of deletion.

#include "bv/Exception.h"

namespace bv
{

/// An object could not be deleted.
class BV_API ObjectDeletionException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    ObjectDeletionException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit ObjectDeletionException(String const& message);
    /// A copy, which forgets its throw function.
    ObjectDeletionException(ObjectDeletionException const& other);
    /// The texts and the line of any exception, as ObjectDeletionException, without a throw function.
    ObjectDeletionException(Exception const& other);
    /// Frees the texts.
    ~ObjectDeletionException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as ObjectDeletionException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    ObjectDeletionException& operator=(ObjectDeletionException other) noexcept;
    /// @}
};

} // namespace bv
