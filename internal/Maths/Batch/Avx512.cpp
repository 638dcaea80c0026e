// Vectors of 64 bytes, for the noise alone: its tables fit the byte permutations, while the loops over points and boxes
// wait for memory. This file is compiled for AVX-512, and called only where the processor has it.

#include "Maths/Batch/ByteHashes.h"

namespace bv::maths
{

NoiseKernels Avx512NoiseKernels() noexcept
{
    return AllNoise<64, ByteHashes>();
}

} // namespace bv::maths
