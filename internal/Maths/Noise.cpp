#include "bv/maths/Noise.h"

#include <atomic>

#include "Maths/Batch/Kernels.h"

namespace bv::maths
{

namespace
{

constinit std::atomic<SingleNoise const*> chosen{nullptr};

/// Several threads may choose at the same time; they choose the same.
[[gnu::cold, gnu::noinline]] SingleNoise const* Choose() noexcept
{
    SingleNoise const* const single = &ChosenKernels().single;
    chosen.store(single, std::memory_order_release);
    return single;
}

/// The functions for the processor that this is, without the look at it that they were chosen by.
[[gnu::always_inline]] inline SingleNoise const& Chosen() noexcept
{
    SingleNoise const* const single = chosen.load(std::memory_order_acquire);
    return *(single != nullptr ? single : Choose());
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
