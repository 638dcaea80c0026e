#pragma once

/// @file
/// Failures of arithmetic.

#include "bv/maths/MathsException.h"

namespace bv::maths
{

/// A calculation has no result.
class BV_API ArithmeticException : public MathsException
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    ArithmeticException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit ArithmeticException(String const& message);
    /// A copy, which forgets its throw function.
    ArithmeticException(ArithmeticException const& other);
    /// The texts and the line of any exception, as ArithmeticException, without a throw function.
    ArithmeticException(Exception const& other);
    /// Frees the texts.
    ~ArithmeticException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as ArithmeticException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    ArithmeticException& operator=(ArithmeticException other) noexcept;
    /// @}

protected:
    /// @name Construction of a subclass
    /// @{
    /// As the public constructor of four arguments, with the throw function of the subclass.
    ArithmeticException(String const& message, String const& file, unsigned int line, String const& function,
                        ThrowFunction ownThrow);
    /// As the public constructor of one argument, with the throw function of the subclass.
    ArithmeticException(String const& message, ThrowFunction ownThrow);
    /// @}
};

} // namespace bv::maths
