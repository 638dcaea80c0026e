#include "bv/maths/Noise.h"

#include "Maths/Kernels/Kernels.h"

namespace bv::maths
{

namespace
{

/// The functions for the processor that this is.
[[gnu::always_inline]] inline SingleNoise const& Chosen() noexcept
{
    static SingleNoise const single = ChosenKernels().single;
    return single;
}

} // namespace

float Noise1(float x) noexcept
{
    return Chosen().line(x);
}

float Noise2(tVector2<float> const& point) noexcept
{
    return Chosen().plane(point);
}

float Noise3(tVector3<float> const& point) noexcept
{
    return Chosen().space(point);
}

float Turbulence1(float x, unsigned int octaves) noexcept
{
    return Chosen().lineTurbulence(x, octaves);
}

float Turbulence2(tVector2<float> const& point, unsigned int octaves) noexcept
{
    return Chosen().planeTurbulence(point, octaves);
}

float Turbulence3(tVector3<float> const& point, unsigned int octaves) noexcept
{
    return Chosen().spaceTurbulence(point, octaves);
}

} // namespace bv::maths
