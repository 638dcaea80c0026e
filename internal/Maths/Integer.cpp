#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Integer.h"

#include "bv/InvalidArgumentException.h"

namespace bv::maths::detail
{

[[gnu::cold]] void ThrowLogarithmOfZero()
{
    throw InvalidArgumentException(L"Argument to IntLog2 must be positive", "internal\\Maths\\Integer", 26,
                                   "bv::maths::IntLog2");
}

} // namespace bv::maths::detail
