// Vectors of 32 bytes. This file is compiled for AVX2, and called only where the processor has it.

#include "Maths/Kernels/Generator.h"
#include "Maths/Kernels/Geometry.h"
#include "Maths/Kernels/Noise/ByteHashes.h"
#include "Maths/Kernels/Noise/Single.h"

namespace bv::maths
{

Kernels Avx2Kernels() noexcept
{
    return {Geometry<float, 32>::All(), Geometry<double, 32>::All(), AllNoise<32, ByteHashes>(),
            NoiseAtPoint<32>::All(), Generator<32>::Draw};
}

} // namespace bv::maths
