#include "bv/maths/DivideByZeroException.h"

namespace bv::maths
{

DivideByZeroException::DivideByZeroException(String const& message, String const& file, unsigned int line,
                                             String const& function)
    : ArithmeticException(message, file, line, function, &Throw)
{
}

DivideByZeroException::DivideByZeroException(String const& message) : ArithmeticException(message, &Throw) {}

DivideByZeroException::DivideByZeroException(DivideByZeroException const& other) : ArithmeticException(other) {}

DivideByZeroException::DivideByZeroException(Exception const& other) : ArithmeticException(other) {}

DivideByZeroException::~DivideByZeroException() = default;

DivideByZeroException& DivideByZeroException::operator=(DivideByZeroException other) noexcept
{
    Swap(other);
    return *this;
}

void DivideByZeroException::Throw(Exception const& exception)
{
    throw DivideByZeroException(exception);
}

} // namespace bv::maths
