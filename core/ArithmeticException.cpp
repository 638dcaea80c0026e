#include "bv/maths/ArithmeticException.h"

namespace bv::maths
{

ArithmeticException::ArithmeticException(String const& message, String const& file, unsigned int line,
                                         String const& function)
    : MathsException(message, file, line, function, &Throw)
{
}

ArithmeticException::ArithmeticException(String const& message) : MathsException(message, &Throw) {}

ArithmeticException::ArithmeticException(ArithmeticException const& other) : MathsException(other) {}

ArithmeticException::ArithmeticException(Exception const& other) : MathsException(other) {}

ArithmeticException::~ArithmeticException() = default;

ArithmeticException& ArithmeticException::operator=(ArithmeticException other) noexcept
{
    Swap(other);
    return *this;
}

void ArithmeticException::Throw(Exception const& exception)
{
    throw ArithmeticException(exception);
}

ArithmeticException::ArithmeticException(String const& message, String const& file, unsigned int line,
                                         String const& function, ThrowFunction ownThrow)
    : MathsException(message, file, line, function, ownThrow)
{
}

ArithmeticException::ArithmeticException(String const& message, ThrowFunction ownThrow)
    : MathsException(message, ownThrow)
{
}

} // namespace bv::maths
