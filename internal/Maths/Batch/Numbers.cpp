#include "bv/maths/batch/Numbers.h"

#include <limits>

#include "Maths/Batch/Job.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/tVector2.h"

namespace bv::maths
{

namespace detail
{

/// The way to the words of a generator.
struct RNGeneratorAccess
{
    [[nodiscard]] static GeneratorState Read(RNGenerator const& generator) noexcept
    {
        return {generator.z, generator.w, generator.jsr, generator.jcong};
    }
    static void Write(RNGenerator& generator, GeneratorState const& state) noexcept
    {
        generator.z = state.z;
        generator.w = state.w;
        generator.jsr = state.jsr;
        generator.jcong = state.jcong;
    }
};

} // namespace detail

namespace
{

using namespace batch;

template <typename In, typename Out>
void Check(std::span<In const> in, std::span<Out> out, char const* function)
{
    if (in.size() != out.size())
        detail::ThrowDifferentLengths(function);
    CheckOverlap(Extent::Of(in), Extent::Of(out));
}

template <typename Point>
void Turbulence(std::span<Point const> points, unsigned int octaves, std::span<float> results) noexcept
{
    NoiseKernels<Point> const& kernels = ChosenKernels();
    std::size_t done = kernels.turbulences(points.data(), octaves, results.data(), points.size());
    for (; done < points.size(); ++done)
        results[done] = kernels.turbulence(points[done], octaves);
}

template <typename T>
std::size_t Compare(std::span<T const> a, std::span<T const> b, BitSpan equal)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("CompareNumbers", a.size());
    return job.Read(tNumberView<T const>(a)).Read(tNumberView<T const>(b)).WriteBits(equal).Count(kernels.compare);
}

template <typename T>
tExtremes<T> Find(tNumberView<T const> const& numbers) noexcept
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    constexpr T INFINITE = std::numeric_limits<T>::infinity();
    T ends[] = {INFINITE, -INFINITE};
    Job<T>("FindExtremes", numbers.size()).Read(numbers).Extend(ends).Run(kernels.extend);
    return {ends[0], ends[1]};
}

/// Vectors are their components, which are drawn in their order.
template <typename Vector, std::size_t AXES>
std::span<float> Components(std::span<Vector> vectors) noexcept
{
    static_assert(sizeof(Vector) == AXES * sizeof(float));
    return {reinterpret_cast<float*>(vectors.data()), AXES * vectors.size()};
}

} // namespace

std::size_t CompareNumbers(std::span<float const> a, std::span<float const> b, BitSpan equal)
{
    return Compare(a, b, equal);
}
std::size_t CompareNumbers(std::span<double const> a, std::span<double const> b, BitSpan equal)
{
    return Compare(a, b, equal);
}

tExtremes<float> FindExtremes(tNumberView<float const> const& numbers) noexcept
{
    return Find(numbers);
}
tExtremes<double> FindExtremes(tNumberView<double const> const& numbers) noexcept
{
    return Find(numbers);
}

void GetFloats(RNGenerator& generator, std::span<float> results) noexcept
{
    RNGenerator local = generator; // in registers: the buffer could lie over the generator itself for all we know
    GeneratorState state = detail::RNGeneratorAccess::Read(local);
    std::size_t const done = ChosenKernels().draw(state, results.data(), results.size());
    detail::RNGeneratorAccess::Write(local, state);
    for (float& result : results.subspan(done))
        result = local.GetFloat();
    generator = local;
}

void GetVectors2D(RNGenerator& generator, std::span<tVector2<float>> results) noexcept
{
    GetFloats(generator, Components<tVector2<float>, 2>(results));
}

void GetVectors3D(RNGenerator& generator, std::span<tVector3<float>> results) noexcept
{
    GetFloats(generator, Components<tVector3<float>, 3>(results));
}

// One octave has the weight 1, and 0 + x * 1 is x.

void EvaluateNoise1(std::span<float const> coordinates, std::span<float> results)
{
    Check(coordinates, results, "EvaluateNoise1");
    Turbulence(coordinates, 1, results);
}

void EvaluateNoise2(std::span<tVector2<float> const> points, std::span<float> results)
{
    Check(points, results, "EvaluateNoise2");
    Turbulence(points, 1, results);
}

void EvaluateNoise3(std::span<tVector3<float> const> points, std::span<float> results)
{
    Check(points, results, "EvaluateNoise3");
    Turbulence(points, 1, results);
}

void EvaluateTurbulence1(std::span<float const> coordinates, unsigned int octaves, std::span<float> results)
{
    Check(coordinates, results, "EvaluateTurbulence1");
    Turbulence(coordinates, octaves, results);
}

void EvaluateTurbulence2(std::span<tVector2<float> const> points, unsigned int octaves, std::span<float> results)
{
    Check(points, results, "EvaluateTurbulence2");
    Turbulence(points, octaves, results);
}

void EvaluateTurbulence3(std::span<tVector3<float> const> points, unsigned int octaves, std::span<float> results)
{
    Check(points, results, "EvaluateTurbulence3");
    Turbulence(points, octaves, results);
}

} // namespace bv::maths
