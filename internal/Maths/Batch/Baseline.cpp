// Vectors of 16 bytes, which every x86-64 processor has. Elsewhere the compiler makes of them what the processor
// offers.

#include "Maths/Batch/GeneratorKernels.h"
#include "Maths/Batch/GeometryKernels.h"
#include "Maths/Batch/NoiseKernels.h"
#include "Maths/Batch/SingleNoise.h"

namespace bv::maths
{

Kernels BaselineKernels() noexcept
{
    return {Geometry<float, 16>::All(), Geometry<double, 16>::All(), AllNoise<16, TableHashes>(),
            NoiseAtPoint<16>::All(), Generator<16>::Draw};
}

} // namespace bv::maths
