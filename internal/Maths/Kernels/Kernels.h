#pragma once

/// @file
/// The loops behind the batch forms, and the noise at a single point: one set for each kind of processor.
///
/// A loop works on as many elements as it can in whole registers and returns how many these are; the caller does the
/// rest one by one with the single forms. Input and output may be the same memory, element on element.
///
/// A new loop is a member here, a function of the same signature in a template over the width of the registers, such as
/// Geometry, and its name in Set.h; the batch form in Batch.cpp calls it.

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "bv/maths/Forward.h"
#include "bv/maths/tFrustum.h"

namespace bv::maths
{

/// The loops over points and boxes of one precision.
template <typename T>
struct GeometryKernels
{
    using IntersectionResult = typename tFrustum<T>::IntersectionResult;

    /// As points, with division by w, by sixteen elements; stops in front of the register that holds a w too close to
    /// 0.
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

/// Noise at points of one dimension.
template <typename Point>
struct NoiseKernels
{
    using Argument = std::conditional_t<std::is_same_v<Point, float>, float, Point const&>;

    /// With any number of octaves; leaves all points to the caller where that is 0.
    std::size_t (*turbulences)(Point const* points, unsigned int octaves, float* results, std::size_t count);
    /// At a single point.
    float (*noise)(Argument point) noexcept;
    /// At a single point, with any number of octaves.
    float (*turbulence)(Argument point, unsigned int octaves) noexcept;
};

/// The four words of an RNGenerator.
struct GeneratorState
{
    std::uint32_t z, w, jsr, jcong;
};

struct GeneratorKernels
{
    /// Draws as floats, after which the state is that behind them.
    std::size_t (*draw)(GeneratorState& state, float* results, std::size_t count);
};

struct Kernels : GeometryKernels<float>,
                 GeometryKernels<double>,
                 NoiseKernels<float>,
                 NoiseKernels<tVector2<float>>,
                 NoiseKernels<tVector3<float>>,
                 GeneratorKernels
{
};

/// For the processors that the library is compiled for.
[[nodiscard]] Kernels BaselineKernels() noexcept;
/// For processors with AVX2.
[[nodiscard]] Kernels Avx2Kernels() noexcept;
/// For processors with AVX-512 that permute bytes, too: F, BW, DQ, VL and VBMI.
[[nodiscard]] Kernels Avx512Kernels() noexcept;

/// The set for a kind of processor.
struct KernelSet
{
    char const* name;
    bool (*isSupported)() noexcept; ///< by the processor that this is, and by its operating system
    Kernels (*kernels)() noexcept;
};

/// All sets, the one for the newest processors first.
[[nodiscard]] std::span<KernelSet const> KernelSets() noexcept;

/// The first set that this processor supports, which is asked once.
[[nodiscard]] Kernels const& ChosenKernels() noexcept;

} // namespace bv::maths
