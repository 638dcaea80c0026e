#include <type_traits>

#include <bv/Exception.h>
#include <bv/FileIOException.h>
#include <bv/InvalidArgumentException.h>
#include <bv/InvalidObjectException.h>
#include <bv/NotImplementedException.h>
#include <bv/ObjectCreationException.h>
#include <bv/ObjectDeletionException.h>
#include <bv/OutOfMemoryException.h>
#include <bv/ThreadExitException.h>
#include <bv/maths/ArithmeticException.h>
#include <bv/maths/DivideByZeroException.h>
#include <bv/maths/MathsException.h>
#include <bv/maths/MatrixException.h>

#include "Run.h"
#include "Streamed.h"
#include "Topics.h"

namespace digest
{

namespace
{

void Exceptions(Digest& digest, Workload&)
{
    auto const add = [&](auto const& exception)
    {
        digest.Try([&]() -> int { throw exception; });
        digest.Try(
            [&]
            {
                exception.Rethrow();
                return 0;
            });
        digest.Add(Text(exception));
        bv::Exception copy(exception);
        digest.Try(
            [&]
            {
                copy.Rethrow();
                return 0;
            });
        bv::Exception other("other");
        copy.Swap(other);
        digest.Add(Text(copy), Text(other));
    };
    add(bv::Exception("message", "folder\\file", 12, "space::Function"));
    add(bv::Exception(L"caf\u00E9"));
    add(bv::FileIOException("", "", 4294967295U, ""));
    add(bv::NotImplementedException());
    add(DivideByZeroException("zero", "file", 0, "function"));
}

/// Each class by itself: what its constructors leave out, what it is built from, and what is thrown and caught again.
template <typename... Classes>
void EachClass(Digest& digest, Workload&)
{
    auto const add = [&]<typename Class>(Class const& exception)
    {
        digest.Try([&]() -> int { throw exception; });
        digest.Try(
            [&]
            {
                exception.Rethrow();
                return 0;
            });
        digest.Try(
            [&]
            {
                Class::Throw(exception);
                return 0;
            });
        Class assigned{bv::Exception("assigned")};
        assigned = exception;
        digest.Add(Text(assigned), Text(Class(exception)));
    };
    auto const addClass = [&]<typename Class>(std::type_identity<Class>)
    {
        add(Class(bv::Exception("other", "file", 3, "Function")));
        add(Class("message", "folder\\file", 12, "space::Function"));
        if constexpr (std::is_constructible_v<Class, char const*>)
            add(Class("message"));
        else
            add(Class());
    };
    (addClass(std::type_identity<Classes>()), ...);
}

} // namespace

void RunExceptions()
{
    Run("exceptions", Exceptions);
    Run("exception-classes",
        EachClass<bv::Exception, bv::FileIOException, bv::InvalidArgumentException, bv::InvalidObjectException,
                  bv::NotImplementedException, bv::ObjectCreationException, bv::ObjectDeletionException,
                  bv::OutOfMemoryException, bv::ThreadExitException, MathsException, ArithmeticException,
                  DivideByZeroException, MatrixException>);
}

} // namespace digest
