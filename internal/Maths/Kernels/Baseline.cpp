// Registers of 16 bytes, which every x86-64 processor has. Elsewhere the compiler makes of them what the processor
// offers.

#include "Maths/Kernels/Set.h"

namespace bv::maths
{

Kernels BaselineKernels() noexcept
{
    return AllKernels<16>();
}

} // namespace bv::maths
