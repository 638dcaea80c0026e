#include "bv/maths/Batch.h"

#include <cstdint>

#include "Maths/Kernels/Kernels.h"
#include "bv/Assert.h"
#include "bv/InvalidArgumentException.h"
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
void Turbulence(std::span<Point const> points, unsigned int octaves, std::span<float> results) noexcept
{
    NoiseKernels<Point> const& kernels = ChosenKernels();
    Finish(kernels.turbulences(points.data(), octaves, results.data(), points.size()), points, results,
           [&](Point const& point) { return kernels.turbulence(point, octaves); });
}

} // namespace

template <typename T>
void TransformPoints(tMatrix4<T> const& matrix, std::type_identity_t<std::span<tVector3<T> const>> points,
                     std::type_identity_t<std::span<tVector3<T>>> results)
{
    Check(points, results, "TransformPoints");
    GeometryKernels<T> const& kernels = ChosenKernels();
    std::size_t done = 0;
    if (!matrix.IsDiagonal())
        done = kernels.project(matrix.Get(), points.data(), results.data(), points.size());
    Finish(done, points, results, [&](tVector3<T> const& point) { return point.Transformed(matrix); });
}

template <typename T>
void TransformDirections(tMatrix4<T> const& matrix, std::type_identity_t<std::span<tVector3<T> const>> directions,
                         std::type_identity_t<std::span<tVector3<T>>> results)
{
    Check(directions, results, "TransformDirections");
    GeometryKernels<T> const& kernels = ChosenKernels();
    std::size_t done = 0;
    if (!matrix.IsDiagonal())
        done =
            kernels.rotate(matrix.Get(), matrix.IsOrthonormal(), directions.data(), results.data(), directions.size());
    Finish(done, directions, results,
           [&](tVector3<T> const& direction) { return direction.TransformedAsVector(matrix); });
}

template <typename T>
void Expand(tVolumeAABB<T>& box, std::type_identity_t<std::span<tVector3<T> const>> points) noexcept
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    tVector3<T> const& min = box.GetMin();
    tVector3<T> const& max = box.GetMax();
    T lower[] = {min.x, min.y, min.z};
    T upper[] = {max.x, max.y, max.z};
    std::size_t const done = kernels.grow(lower, upper, points.data(), points.size());
    box = tVolumeAABB<T>(tVector3<T>(lower), tVector3<T>(upper));
    for (tVector3<T> const& point : points.subspan(done))
        box.Expand(point);
}

template <typename T>
void ClassifyAABBs(tFrustum<T> const& frustum, std::type_identity_t<std::span<tVolumeAABB<T> const>> boxes,
                   std::span<typename tFrustum<T>::IntersectionResult> results)
{
    Check(boxes, results, "ClassifyAABBs");
    GeometryKernels<T> const& kernels = ChosenKernels();
    T planes[24];
    T* next = planes;
    for (tPlane<T> const& plane : {frustum.GetLeftPlane(), frustum.GetRightPlane(), frustum.GetTopPlane(),
                                   frustum.GetBottomPlane(), frustum.GetFarPlane(), frustum.GetNearPlane()})
        for (T const value : {plane.GetNormal().x, plane.GetNormal().y, plane.GetNormal().z, plane.GetOffset()})
            *next++ = value;
    Finish(kernels.classify(planes, boxes.data(), results.data(), boxes.size()), boxes, results,
           [&](tVolumeAABB<T> const& box) { return frustum.ContainsAABB(box); });
}

// One octave has the weight 1, and 0 + x * 1 is x.

void Noise1(std::span<float const> coordinates, std::span<float> results)
{
    Check(coordinates, results, "Noise1");
    Turbulence(coordinates, 1, results);
}

void Noise2(std::span<tVector2<float> const> points, std::span<float> results)
{
    Check(points, results, "Noise2");
    Turbulence(points, 1, results);
}

void Noise3(std::span<tVector3<float> const> points, std::span<float> results)
{
    Check(points, results, "Noise3");
    Turbulence(points, 1, results);
}

void Turbulence1(std::span<float const> coordinates, unsigned int octaves, std::span<float> results)
{
    Check(coordinates, results, "Turbulence1");
    Turbulence(coordinates, octaves, results);
}

void Turbulence2(std::span<tVector2<float> const> points, unsigned int octaves, std::span<float> results)
{
    Check(points, results, "Turbulence2");
    Turbulence(points, octaves, results);
}

void Turbulence3(std::span<tVector3<float> const> points, unsigned int octaves, std::span<float> results)
{
    Check(points, results, "Turbulence3");
    Turbulence(points, octaves, results);
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
