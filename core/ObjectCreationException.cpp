#include "bv/ObjectCreationException.h"

namespace bv
{

ObjectCreationException::ObjectCreationException(String const& message, String const& file, unsigned int line,
                                                 String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

ObjectCreationException::ObjectCreationException(String const& message) : Exception(message, &Throw) {}

ObjectCreationException::ObjectCreationException(ObjectCreationException const& other) : Exception(other) {}

ObjectCreationException::ObjectCreationException(Exception const& other) : Exception(other) {}

ObjectCreationException::~ObjectCreationException() = default;

ObjectCreationException& ObjectCreationException::operator=(ObjectCreationException other) noexcept
{
    Swap(other);
    return *this;
}

void ObjectCreationException::Throw(Exception const& exception)
{
    throw ObjectCreationException(exception);
}

} // namespace bv
