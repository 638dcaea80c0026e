#include "bv/Exception.h"

#include <new>
#include <ostream>
#include <string>
#include <utility>

#include "EmptyText.h"

namespace bv
{

struct Exception::ExceptionImpl
{
    String message = {};
    String file = {};
    unsigned int line = 0;
    String function = {};
    String where = "<unknown location>";
};

String const& EmptyText()
{
    static String const text;
    return text;
}

namespace
{

// Made while the library is loaded: when it is first asked for, there may be no memory left to make it.
[[maybe_unused]] String const& EMPTY_TEXT = EmptyText();

// The decimal line of std::to_string has no grouping, whatever the global locale says.
String WhereText(String const& file, unsigned int line, String const& function)
{
    return file + " (" + std::to_string(line).c_str() + ") : " + function;
}

} // namespace

Exception::Exception(String const& message, String const& file, unsigned int line, String const& function)
    : Exception(message, file, line, function, &Throw)
{
}

Exception::Exception(String const& message) : Exception(message, &Throw) {}

Exception::Exception(Exception const& other)
    : std::exception(),
      impl{other.impl != nullptr ? new (std::nothrow) ExceptionImpl(*other.impl) : new (std::nothrow) ExceptionImpl},
      throwFunction{nullptr}
{
}

Exception::Exception(String const& message, String const& file, unsigned int line, String const& function,
                     ThrowFunction ownThrow)
    : impl{new (std::nothrow) ExceptionImpl{message, file, line, function, WhereText(file, line, function)}},
      throwFunction{ownThrow}
{
}

// The shared text, since a new one could find no memory where the exception itself needs none.
Exception::Exception(String const& message, ThrowFunction ownThrow)
    : Exception(message, EmptyText(), 0, EmptyText(), ownThrow)
{
}

Exception::~Exception()
{
    delete impl;
}

String const& Exception::Message() const noexcept
{
    return impl != nullptr ? impl->message : EmptyText();
}

String const& Exception::Filename() const noexcept
{
    return impl != nullptr ? impl->file : EmptyText();
}

unsigned int Exception::LineNumber() const noexcept
{
    return impl != nullptr ? impl->line : 0;
}

String const& Exception::FunctionName() const noexcept
{
    return impl != nullptr ? impl->function : EmptyText();
}

String const& Exception::Where() const noexcept
{
    return impl != nullptr ? impl->where : EmptyText();
}

char const* Exception::what() const noexcept
{
    return "Brevane exception";
}

void Exception::Swap(Exception& other) noexcept
{
    std::swap(impl, other.impl);
    std::swap(throwFunction, other.throwFunction);
}

void Exception::Throw(Exception const& exception)
{
    throw Exception(exception);
}

void Exception::Rethrow() const
{
    if (throwFunction != nullptr)
        throwFunction(*this);
    throw Exception(*this);
}

Exception& Exception::operator=(Exception const& other)
{
    Exception copy(other);
    Swap(copy);
    return *this;
}

std::string detail::GetText(Exception const& exception)
{
    std::string text = "'";
    text += exception.Message().ToCharArray();
    text += "' - ";
    text += exception.Where().ToCharArray();
    text += ".";
    return text;
}

std::ostream& operator<<(std::ostream& stream, Exception const& exception)
{
    std::string text;
    try
    {
        text = detail::GetText(exception);
    }
    catch (std::bad_alloc const&)
    {
        // What went wrong may be just that there is no memory.
        stream.width(0);
        return stream << "'" << exception.Message().ToCharArray() << "' - " << exception.Where().ToCharArray() << ".";
    }
    return stream << text;
}

} // namespace bv
