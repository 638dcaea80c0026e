#include "ThrowingModule.h"

#include "bv/Exception.h"
#include "bv/FileIOException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/MatrixException.h"

namespace
{

template <typename T>
void Raise(bool throughLibrary)
{
    if (throughLibrary)
        T(L"message", "module", 7, "Raise").Rethrow();
    throw T(L"message", "module", 7, "Raise");
}

} // namespace

extern "C" __attribute__((visibility("default"))) void ThrowFromModule(int number, bool throughLibrary)
{
    switch (number)
    {
    case 0:
        Raise<bv::Exception>(throughLibrary);
        break;
    case 1:
        Raise<bv::FileIOException>(throughLibrary);
        break;
    case 2:
        Raise<bv::maths::DivideByZeroException>(throughLibrary);
        break;
    default:
        Raise<bv::maths::MatrixException>(throughLibrary);
        break;
    }
}
