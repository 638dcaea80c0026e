#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Percentage.h"

#include "bv/maths/DivideByZeroException.h"

namespace bv::maths
{

[[gnu::cold]] void Percentage::ThrowDivisionByZero(char const* function, unsigned int line)
{
    throw DivideByZeroException(L"Integer division by zero", "internal\\Maths\\Percentage", line, function);
}

} // namespace bv::maths
