// Vectors of 16 bytes, which every x86-64 processor has. Elsewhere the compiler makes of them what the processor
// offers.

#include "Maths/Kernels/Generator.h"
#include "Maths/Kernels/Geometry.h"
#include "Maths/Kernels/Noise/Blocks.h"
#include "Maths/Kernels/Noise/Single.h"

namespace bv::maths
{

Kernels BaselineKernels() noexcept
{
    return {Geometry<float, 16>::All(), Geometry<double, 16>::All(), AllNoise<16, TableHashes>(),
            NoiseAtPoint<16>::All(), Generator<16>::Draw};
}

} // namespace bv::maths
