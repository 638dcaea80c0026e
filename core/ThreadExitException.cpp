#include "bv/ThreadExitException.h"

namespace bv
{

ThreadExitException::ThreadExitException(String const& message, String const& file, unsigned int line,
                                         String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

ThreadExitException::ThreadExitException(String const& message) : Exception(message, &Throw) {}

ThreadExitException::ThreadExitException(ThreadExitException const& other) : Exception(other) {}

ThreadExitException::ThreadExitException(Exception const& other) : Exception(other) {}

ThreadExitException::~ThreadExitException() = default;

ThreadExitException& ThreadExitException::operator=(ThreadExitException other) noexcept
{
    Swap(other);
    return *this;
}

void ThreadExitException::Throw(Exception const& exception)
{
    throw ThreadExitException(exception);
}

} // namespace bv
