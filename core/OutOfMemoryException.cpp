#include "bv/OutOfMemoryException.h"

namespace bv
{

OutOfMemoryException::OutOfMemoryException(String const& message, String const& file, unsigned int line,
                                           String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

OutOfMemoryException::OutOfMemoryException(String const& message) : Exception(message, &Throw) {}

OutOfMemoryException::OutOfMemoryException(OutOfMemoryException const& other) : Exception(other) {}

OutOfMemoryException::OutOfMemoryException(Exception const& other) : Exception(other) {}

OutOfMemoryException::~OutOfMemoryException() = default;

OutOfMemoryException& OutOfMemoryException::operator=(OutOfMemoryException other) noexcept
{
    Swap(other);
    return *this;
}

void OutOfMemoryException::Throw(Exception const& exception)
{
    throw OutOfMemoryException(exception);
}

} // namespace bv
