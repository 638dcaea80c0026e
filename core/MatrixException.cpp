#include "bv/maths/MatrixException.h"

namespace bv::maths
{

MatrixException::MatrixException(String const& message, String const& file, unsigned int line, String const& function)
    : MathsException(message, file, line, function, &Throw)
{
}

MatrixException::MatrixException(String const& message) : MathsException(message, &Throw) {}

MatrixException::MatrixException(MatrixException const& other) : MathsException(other) {}

MatrixException::MatrixException(Exception const& other) : MathsException(other) {}

MatrixException::~MatrixException() = default;

MatrixException& MatrixException::operator=(MatrixException other) noexcept
{
    Swap(other);
    return *this;
}

void MatrixException::Throw(Exception const& exception)
{
    throw MatrixException(exception);
}

} // namespace bv::maths
