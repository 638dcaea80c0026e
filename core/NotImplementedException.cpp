#include "bv/NotImplementedException.h"

#include "EmptyText.h"

namespace bv
{

NotImplementedException::NotImplementedException(String const& message, String const& file, unsigned int line,
                                                 String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

NotImplementedException::NotImplementedException() : Exception(EmptyText(), &Throw) {}

NotImplementedException::NotImplementedException(NotImplementedException const& other) : Exception(other) {}

NotImplementedException::NotImplementedException(Exception const& other) : Exception(other) {}

NotImplementedException::~NotImplementedException() = default;

NotImplementedException& NotImplementedException::operator=(NotImplementedException other) noexcept
{
    Swap(other);
    return *this;
}

void NotImplementedException::Throw(Exception const& exception)
{
    throw NotImplementedException(exception);
}

} // namespace bv
