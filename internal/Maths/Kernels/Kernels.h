#pragma once

/// @file
/// The loops behind the batch forms, and the noise at a single point: one set for each kind of processor.
///
/// A loop works on as many elements as it can in whole vectors and returns how many these are; the caller does the rest
/// one by one with the single forms. Input and output may be the same memory, element on element.

#include <cstddef>
#include <cstdint>

#include "bv/maths/Forward.h"
#include "bv/maths/tFrustum.h"

namespace bv::maths
{

/// The loops over points and boxes of one precision.
template <typename T>
struct GeometryKernels
{
    using IntersectionResult = typename tFrustum<T>::IntersectionResult;

    /// As points, with division by w, by sixteen elements; stops in front of the vector that holds a w too close to 0.
    std::size_t (*project)(T const* matrix, tVector3<T> const* points, tVector3<T>* results, std::size_t count);
    /// As directions, by sixteen elements. Those of length 1 are normalised afterwards if that is asked for.
    std::size_t (*rotate)(T const* matrix, bool normalises, tVector3<T> const* directions, tVector3<T>* results,
                          std::size_t count);
    /// Moves the three components of each corner.
    std::size_t (*grow)(T* lower, T* upper, tVector3<T> const* points, std::size_t count);
    /// Boxes against six planes of four numbers each, normal and offset.
    std::size_t (*classify)(T const* planes, tVolumeAABB<T> const* boxes, IntersectionResult* results,
                            std::size_t count);
};

/// Octaves of noise, of which there are 1 to MAX_OCTAVES, for points of one dimension.
template <typename Point>
using NoiseKernel = std::size_t (*)(Point const* points, unsigned int octaves, float* results, std::size_t count);

/// The loops over points of noise, by dimension.
struct NoiseKernels
{
    NoiseKernel<float> line;
    NoiseKernel<tVector2<float>> plane;
    NoiseKernel<tVector3<float>> space;
};

/// Noise and turbulence at a single point.
struct SingleNoise
{
    float (*line)(float x) noexcept;
    float (*plane)(tVector2<float> const& point) noexcept;
    float (*space)(tVector3<float> const& point) noexcept;
    float (*lineTurbulence)(float x, unsigned int octaves) noexcept;
    float (*planeTurbulence)(tVector2<float> const& point, unsigned int octaves) noexcept;
    float (*spaceTurbulence)(tVector3<float> const& point, unsigned int octaves) noexcept;
};

/// The four words of an RNGenerator.
struct GeneratorState
{
    std::uint32_t z, w, jsr, jcong;
};

/// Draws as floats, after which the state is that behind them.
using GeneratorKernel = std::size_t (*)(GeneratorState& state, float* results, std::size_t count);

struct Kernels
{
    GeometryKernels<float> floats;
    GeometryKernels<double> doubles;
    NoiseKernels noise;
    SingleNoise single;
    GeneratorKernel generator;
};

/// Those for the processor that this is, which is asked once.
[[nodiscard]] Kernels const& ChosenKernels() noexcept;

/// For the processors that the library is compiled for.
[[nodiscard]] Kernels BaselineKernels() noexcept;
#if defined __x86_64__
/// For processors with AVX2.
[[nodiscard]] Kernels Avx2Kernels() noexcept;
/// For processors with the part of AVX-512 that HasAvx512() asks for.
[[nodiscard]] Kernels Avx512Kernels() noexcept;

[[nodiscard, gnu::always_inline]] inline bool HasAvx2() noexcept
{
    return __builtin_cpu_supports("avx2") != 0;
}

/// Whether the processor, and its operating system, has AVX2 and AVX-512 with the permutations of bytes: F, BW, DQ, VL
/// and VBMI.
[[nodiscard, gnu::always_inline]] inline bool HasAvx512() noexcept
{
    return HasAvx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512vbmi");
}
#endif

} // namespace bv::maths
