#pragma once

/// @file
/// The root of the exceptions of the maths.

#include "bv/Exception.h"

namespace bv::maths
{

/// Root of the exceptions of the maths.
class BV_API MathsException : public Exception
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    MathsException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit MathsException(String const& message);
    /// A copy, which forgets its throw function.
    MathsException(MathsException const& other);
    /// The texts and the line of any exception, as MathsException, without a throw function.
    MathsException(Exception const& other);
    /// Frees the texts.
    ~MathsException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as MathsException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    MathsException& operator=(MathsException other) noexcept;
    /// @}

protected:
    /// @name Construction of a subclass
    /// @{
    /// As the public constructor of four arguments, with the throw function of the subclass.
    MathsException(String const& message, String const& file, unsigned int line, String const& function,
                   ThrowFunction ownThrow);
    /// As the public constructor of one argument, with the throw function of the subclass.
    MathsException(String const& message, ThrowFunction ownThrow);
    /// @}
};

} // namespace bv::maths
