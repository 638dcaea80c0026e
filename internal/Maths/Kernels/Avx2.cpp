// Registers of 32 bytes. This file is compiled for AVX2, and called only where the processor has it.

#include "Maths/Kernels/Set.h"

namespace bv::maths
{

Kernels Avx2Kernels() noexcept
{
    return AllKernels<32>();
}

} // namespace bv::maths
