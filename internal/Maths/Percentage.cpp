#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Percentage.h"

#include "bv/maths/DivideByZeroException.h"

namespace bv::maths
{

[[gnu::cold]] void Percentage::ThrowDivisionByZero(detail::Place const& place)
{
    throw DivideByZeroException(L"Integer division by zero", "internal\\Maths\\Percentage", place.line, place.member);
}

} // namespace bv::maths
