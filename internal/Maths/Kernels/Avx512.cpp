// Vectors of 64 bytes, where they pay: the tables of the noise fit the permutations of bytes, a transformation's
// elements stay in the 32 registers, and boxes are tested twice as many at a time. The other loops wait for memory or
// for what they draw. This file is compiled for AVX-512, and called only where the processor has it.

#include "Maths/Kernels/Set.h"

namespace bv::maths
{

namespace
{

template <typename T>
void UseWideGeometry(GeometryKernels<T>& kernels) noexcept
{
    kernels.project = Geometry<T, 64>::Project;
    kernels.rotate = Geometry<T, 64>::Rotate;
    kernels.classify = Geometry<T, 64>::Classify;
}

template <typename Point>
void UseWideNoise(NoiseKernels<Point>& kernels) noexcept
{
    kernels.turbulences = NoiseBlock<Point, 64, ByteHashes>::Turbulence;
}

} // namespace

Kernels Avx512Kernels() noexcept
{
    Kernels kernels = Avx2Kernels();
    UseWideGeometry<float>(kernels);
    UseWideGeometry<double>(kernels);
    UseWideNoise<float>(kernels);
    UseWideNoise<tVector2<float>>(kernels);
    UseWideNoise<tVector3<float>>(kernels);
    return kernels;
}

} // namespace bv::maths
