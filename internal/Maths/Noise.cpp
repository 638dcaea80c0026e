#include "bv/maths/Noise.h"

#include "Maths/Kernels/Kernels.h"

namespace bv::maths
{

namespace
{

/// The functions for the processor that this is.
template <typename Point>
[[gnu::always_inline]] inline NoiseKernels<Point> const& Chosen() noexcept
{
    static NoiseKernels<Point> const kernels = static_cast<NoiseKernels<Point> const&>(ChosenKernels());
    return kernels;
}

} // namespace

float Noise1(float x) noexcept
{
    return Chosen<float>().noise(x);
}

float Noise2(tVector2<float> const& point) noexcept
{
    return Chosen<tVector2<float>>().noise(point);
}

float Noise3(tVector3<float> const& point) noexcept
{
    return Chosen<tVector3<float>>().noise(point);
}

float Turbulence1(float x, unsigned int octaves) noexcept
{
    return Chosen<float>().turbulence(x, octaves);
}

float Turbulence2(tVector2<float> const& point, unsigned int octaves) noexcept
{
    return Chosen<tVector2<float>>().turbulence(point, octaves);
}

float Turbulence3(tVector3<float> const& point, unsigned int octaves) noexcept
{
    return Chosen<tVector3<float>>().turbulence(point, octaves);
}

} // namespace bv::maths
