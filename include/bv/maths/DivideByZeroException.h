#pragma once

/// @file
/// Divisions by zero.

#include "bv/maths/ArithmeticException.h"

namespace bv::maths
{

/// A division by zero, or by a value too close to it.
class BV_API DivideByZeroException : public ArithmeticException
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    DivideByZeroException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit DivideByZeroException(String const& message);
    /// A copy, which forgets its throw function.
    DivideByZeroException(DivideByZeroException const& other);
    /// The texts and the line of any exception, as DivideByZeroException, without a throw function.
    DivideByZeroException(Exception const& other);
    /// Frees the texts.
    ~DivideByZeroException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as DivideByZeroException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    DivideByZeroException& operator=(DivideByZeroException other) noexcept;
    /// @}
};

} // namespace bv::maths
