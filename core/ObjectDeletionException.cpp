#include "bv/ObjectDeletionException.h"

namespace bv
{

ObjectDeletionException::ObjectDeletionException(String const& message, String const& file, unsigned int line,
                                                 String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

ObjectDeletionException::ObjectDeletionException(String const& message) : Exception(message, &Throw) {}

ObjectDeletionException::ObjectDeletionException(ObjectDeletionException const& other) : Exception(other) {}

ObjectDeletionException::ObjectDeletionException(Exception const& other) : Exception(other) {}

ObjectDeletionException::~ObjectDeletionException() = default;

ObjectDeletionException& ObjectDeletionException::operator=(ObjectDeletionException other) noexcept
{
    Swap(other);
    return *this;
}

void ObjectDeletionException::Throw(Exception const& exception)
{
    throw ObjectDeletionException(exception);
}

} // namespace bv
