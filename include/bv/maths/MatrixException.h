#pragma once

/// @file
/// Failures of matrices.

#include "bv/maths/MathsException.h"

namespace bv::maths
{

/// An operation on a matrix has no result, such as the inverse of a singular one.
class BV_API MatrixException : public MathsException
{
public:
    /// @name Construction
    /// @{
    /// An exception raised here.
    MatrixException(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location.
    explicit MatrixException(String const& message);
    /// A copy, which forgets its throw function.
    MatrixException(MatrixException const& other);
    /// The texts and the line of any exception, as MatrixException, without a throw function.
    MatrixException(Exception const& other);
    /// Frees the texts.
    ~MatrixException() override;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as MatrixException.
    [[noreturn]] static void Throw(Exception const& exception);
    /// @}

    /// @name Operators
    /// @{
    /// Takes over what the argument holds.
    MatrixException& operator=(MatrixException other) noexcept;
    /// @}
};

} // namespace bv::maths
