// Registers of 64 bytes. This file is compiled for AVX-512, and called only where the processor has it.

#include "Maths/Kernels/Set.h"

namespace bv::maths
{

Kernels Avx512Kernels() noexcept
{
    return AllKernels<64>();
}

} // namespace bv::maths
