#include "bv/FileIOException.h"

namespace bv
{

FileIOException::FileIOException(String const& message, String const& file, unsigned int line, String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

FileIOException::FileIOException(String const& message) : Exception(message, &Throw) {}

FileIOException::FileIOException(FileIOException const& other) : Exception(other) {}

FileIOException::FileIOException(Exception const& other) : Exception(other) {}

FileIOException::~FileIOException() = default;

FileIOException& FileIOException::operator=(FileIOException other) noexcept
{
    Swap(other);
    return *this;
}

void FileIOException::Throw(Exception const& exception)
{
    throw FileIOException(exception);
}

} // namespace bv
