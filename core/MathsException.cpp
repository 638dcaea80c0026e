#include "bv/maths/MathsException.h"

namespace bv::maths
{

MathsException::MathsException(String const& message, String const& file, unsigned int line, String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

MathsException::MathsException(String const& message) : Exception(message, &Throw) {}

MathsException::MathsException(MathsException const& other) : Exception(other) {}

MathsException::MathsException(Exception const& other) : Exception(other) {}

MathsException::~MathsException() = default;

MathsException& MathsException::operator=(MathsException other) noexcept
{
    Swap(other);
    return *this;
}

void MathsException::Throw(Exception const& exception)
{
    throw MathsException(exception);
}

MathsException::MathsException(String const& message, String const& file, unsigned int line, String const& function,
                               ThrowFunction ownThrow)
    : Exception(message, file, line, function, ownThrow)
{
}

MathsException::MathsException(String const& message, ThrowFunction ownThrow) : Exception(message, ownThrow) {}

} // namespace bv::maths
