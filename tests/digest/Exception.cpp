#include <bv/Exception.h>
#include <bv/FileIOException.h>
#include <bv/NotImplementedException.h>
#include <bv/maths/DivideByZeroException.h>

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

} // namespace

void RunExceptions()
{
    Run("exceptions", Exceptions);
}

} // namespace digest
