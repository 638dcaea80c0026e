#include "bv/InvalidObjectException.h"

namespace bv
{

InvalidObjectException::InvalidObjectException(String const& message, String const& file, unsigned int line,
                                               String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

InvalidObjectException::InvalidObjectException(String const& message) : Exception(message, &Throw) {}

InvalidObjectException::InvalidObjectException(InvalidObjectException const& other) : Exception(other) {}

InvalidObjectException::InvalidObjectException(Exception const& other) : Exception(other) {}

InvalidObjectException::~InvalidObjectException() = default;

InvalidObjectException& InvalidObjectException::operator=(InvalidObjectException other) noexcept
{
    Swap(other);
    return *this;
}

void InvalidObjectException::Throw(Exception const& exception)
{
    throw InvalidObjectException(exception);
}

} // namespace bv
