#include "bv/maths/Batch.h"

#include <algorithm>
#include <cstdint>

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Noise/Tables.h"
#include "bv/Assert.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/Noise.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

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

[[nodiscard]] Kernels ChooseKernels() noexcept
{
#if defined __x86_64__
    __builtin_cpu_init();
    return HasAvx512() ? Avx512Kernels() : HasAvx2() ? Avx2Kernels() : BaselineKernels();
#else
    return BaselineKernels();
#endif
}

template <typename T>
[[nodiscard]] GeometryKernels<T> const& KernelsOf() noexcept
{
    if constexpr (sizeof(T) == sizeof(float))
        return ChosenKernels().floats;
    else
        return ChosenKernels().doubles;
}

[[noreturn, gnu::cold]] void ThrowDifferentLengths(unsigned int line, char const* function)
{
    throw InvalidArgumentException(L"Spans of different lengths", "internal\\Maths\\Batch", line,
                                   (std::string("bv::maths::") + function).c_str());
}

#if defined NDEBUG
constexpr bool CHECKS_OVERLAP = false;
#else
constexpr bool CHECKS_OVERLAP = true;
#endif

/// Whether two spans have memory in common in another way than element on element.
template <typename In, typename Out>
[[nodiscard]] bool OverlapPartly(std::span<In const> in, std::span<Out> out) noexcept
{
    auto const inBegin = reinterpret_cast<std::uintptr_t>(in.data());
    auto const outBegin = reinterpret_cast<std::uintptr_t>(out.data());
    if (std::is_same_v<In, Out> && inBegin == outBegin)
        return false;
    return inBegin < outBegin + out.size_bytes() && outBegin < inBegin + in.size_bytes();
}

/// Checks the spans of a function, which is the caller.
template <typename In, typename Out>
void Check(std::span<In const> in, std::span<Out> out, char const* function, unsigned int line = __builtin_LINE())
{
    if (in.size() != out.size())
        ThrowDifferentLengths(line, function);
    if constexpr (CHECKS_OVERLAP)
        if (OverlapPartly(in, out))
            Assert();
}

/// The elements that a loop over whole vectors has left over, one by one.
template <typename In, typename Out, typename Function>
void Finish(std::size_t done, std::span<In const> in, std::span<Out> out, Function function)
{
    for (; done < in.size(); ++done)
        out[done] = function(in[done]);
}

template <typename Point>
void Turbulence(NoiseKernel<Point> kernel, std::span<Point const> points, unsigned int octaves,
                std::span<float> results, float (*single)(Point const&, unsigned int)) noexcept
{
    if (octaves == 0)
        std::fill(results.begin(), results.end(), 0.0F);
    else
        Finish(kernel(points.data(), std::min(octaves, MAX_OCTAVES), results.data(), points.size()), points, results,
               [&](Point const& point) { return single(point, octaves); });
}

} // namespace

Kernels const& ChosenKernels() noexcept
{
    static Kernels const kernels = ChooseKernels();
    return kernels;
}

template <typename T>
void TransformPoints(tMatrix4<T> const& matrix, std::type_identity_t<std::span<tVector3<T> const>> points,
                     std::type_identity_t<std::span<tVector3<T>>> results)
{
    Check(points, results, "TransformPoints");
    std::size_t done = 0;
    if (!matrix.IsDiagonal())
        done = KernelsOf<T>().project(matrix.Get(), points.data(), results.data(), points.size());
    Finish(done, points, results, [&](tVector3<T> const& point) { return point.Transformed(matrix); });
}

template <typename T>
void TransformDirections(tMatrix4<T> const& matrix, std::type_identity_t<std::span<tVector3<T> const>> directions,
                         std::type_identity_t<std::span<tVector3<T>>> results)
{
    Check(directions, results, "TransformDirections");
    std::size_t done = 0;
    if (!matrix.IsDiagonal())
        done = KernelsOf<T>().rotate(matrix.Get(), matrix.IsOrthonormal(), directions.data(), results.data(),
                                     directions.size());
    Finish(done, directions, results,
           [&](tVector3<T> const& direction) { return direction.TransformedAsVector(matrix); });
}

template <typename T>
void Expand(tVolumeAABB<T>& box, std::type_identity_t<std::span<tVector3<T> const>> points) noexcept
{
    tVector3<T> const& min = box.GetMin();
    tVector3<T> const& max = box.GetMax();
    T lower[] = {min.x, min.y, min.z};
    T upper[] = {max.x, max.y, max.z};
    std::size_t const done = KernelsOf<T>().grow(lower, upper, points.data(), points.size());
    box = tVolumeAABB<T>(tVector3<T>(lower), tVector3<T>(upper));
    for (tVector3<T> const& point : points.subspan(done))
        box.Expand(point);
}

template <typename T>
void ClassifyAABBs(tFrustum<T> const& frustum, std::type_identity_t<std::span<tVolumeAABB<T> const>> boxes,
                   std::span<typename tFrustum<T>::IntersectionResult> results)
{
    Check(boxes, results, "ClassifyAABBs");
    T planes[24];
    T* next = planes;
    for (tPlane<T> const& plane : {frustum.GetLeftPlane(), frustum.GetRightPlane(), frustum.GetTopPlane(),
                                   frustum.GetBottomPlane(), frustum.GetFarPlane(), frustum.GetNearPlane()})
        for (T const value : {plane.GetNormal().x, plane.GetNormal().y, plane.GetNormal().z, plane.GetOffset()})
            *next++ = value;
    Finish(KernelsOf<T>().classify(planes, boxes.data(), results.data(), boxes.size()), boxes, results,
           [&](tVolumeAABB<T> const& box) { return frustum.ContainsAABB(box); });
}

void Turbulence1(std::span<float const> coordinates, unsigned int octaves, std::span<float> results)
{
    Check(coordinates, results, "Turbulence1");
    Turbulence<float>(ChosenKernels().noise.line, coordinates, octaves, results,
                      [](float const& x, unsigned int n) { return Turbulence1(x, n); });
}

void Turbulence2(std::span<tVector2<float> const> points, unsigned int octaves, std::span<float> results)
{
    Check(points, results, "Turbulence2");
    Turbulence(ChosenKernels().noise.plane, points, octaves, results, &Turbulence2);
}

void Turbulence3(std::span<tVector3<float> const> points, unsigned int octaves, std::span<float> results)
{
    Check(points, results, "Turbulence3");
    Turbulence(ChosenKernels().noise.space, points, octaves, results, &Turbulence3);
}

// One octave has the weight 1, and 0 + x * 1 is x.

void Noise1(std::span<float const> coordinates, std::span<float> results)
{
    Check(coordinates, results, "Noise1");
    Turbulence1(coordinates, 1, results);
}

void Noise2(std::span<tVector2<float> const> points, std::span<float> results)
{
    Check(points, results, "Noise2");
    Turbulence2(points, 1, results);
}

void Noise3(std::span<tVector3<float> const> points, std::span<float> results)
{
    Check(points, results, "Noise3");
    Turbulence3(points, 1, results);
}

void GetFloats(RNGenerator& generator, std::span<float> results) noexcept
{
    RNGenerator local = generator; // in registers: the buffer could lie over the generator itself for all we know
    GeneratorState state = detail::RNGeneratorAccess::Read(local);
    std::size_t const done = ChosenKernels().generator(state, results.data(), results.size());
    detail::RNGeneratorAccess::Write(local, state);
    for (float& result : results.subspan(done))
        result = local.GetFloat();
    generator = local;
}

template BV_TEMPLATE_INSTANCE void TransformPoints(tMatrix4<float> const&, std::span<tVector3<float> const>,
                                                   std::span<tVector3<float>>);
template BV_TEMPLATE_INSTANCE void TransformPoints(tMatrix4<double> const&, std::span<tVector3<double> const>,
                                                   std::span<tVector3<double>>);
template BV_TEMPLATE_INSTANCE void TransformDirections(tMatrix4<float> const&, std::span<tVector3<float> const>,
                                                       std::span<tVector3<float>>);
template BV_TEMPLATE_INSTANCE void TransformDirections(tMatrix4<double> const&, std::span<tVector3<double> const>,
                                                       std::span<tVector3<double>>);
template BV_TEMPLATE_INSTANCE void Expand(tVolumeAABB<float>&, std::span<tVector3<float> const>) noexcept;
template BV_TEMPLATE_INSTANCE void Expand(tVolumeAABB<double>&, std::span<tVector3<double> const>) noexcept;
template BV_TEMPLATE_INSTANCE void ClassifyAABBs(tFrustum<float> const&, std::span<tVolumeAABB<float> const>,
                                                 std::span<tFrustum<float>::IntersectionResult>);
template BV_TEMPLATE_INSTANCE void ClassifyAABBs(tFrustum<double> const&, std::span<tVolumeAABB<double> const>,
                                                 std::span<tFrustum<double>::IntersectionResult>);

} // namespace bv::maths
