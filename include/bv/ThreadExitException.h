#pragma once

/// @file
/// The end of a thread.

#include "bv/Exception.h"

namespace bv
{

/// A thread is to end.
class BV_API ThreadExitException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    ThreadExitException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit ThreadExitException(String const& message);
    /// A copy, which forgets its throw function.
    ThreadExitException(ThreadExitException const& other);
    /// The texts and the line of any exception, as ThreadExitException, without a throw function.
    ThreadExitException(Exception const& other);
    /// Frees the texts.
    ~ThreadExitException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as ThreadExitException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    ThreadExitException& operator=(ThreadExitException other) noexcept;
    /// @}
};

} // namespace bv
