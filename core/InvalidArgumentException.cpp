#include "bv/InvalidArgumentException.h"

namespace bv
{

InvalidArgumentException::InvalidArgumentException(String const& message, String const& file, unsigned int line,
                                                   String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

InvalidArgumentException::InvalidArgumentException(String const& message) : Exception(message, &Throw) {}

InvalidArgumentException::InvalidArgumentException(InvalidArgumentException const& other) : Exception(other) {}

InvalidArgumentException::InvalidArgumentException(Exception const& other) : Exception(other) {}

InvalidArgumentException::~InvalidArgumentException() = default;

InvalidArgumentException& InvalidArgumentException::operator=(InvalidArgumentException other) noexcept
{
    Swap(other);
    return *this;
}

void InvalidArgumentException::Throw(Exception const& exception)
{
    throw InvalidArgumentException(exception);
}

} // namespace bv
