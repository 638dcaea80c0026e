#pragma once

/// @file
/// The loops behind the batch forms, and the noise at a single point: one set for each kind of processor.
///
/// Input and output may be the same memory, element on element. The loops of noise and of a generator work on as many
/// elements as they can in whole registers and return how many these are; the caller does the rest one by one with the
/// single forms.
///
/// A new loop is a member here, a function of the same signature in a template over the width of the registers, such as
/// Geometry, and its name in Set.h; the batch form calls it.

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "bv/maths/Forward.h"
#include "bv/maths/tFrustum.h"

namespace bv::maths
{

/// What a loop reads and writes, component by component: x, y, z of vectors; those of two vectors for boxes and rays;
/// those of the centre and the squared radius of spheres; those of three corners of triangles.
template <typename T>
struct Streams
{
    static constexpr std::size_t COMPONENTS = 9;

    T const* in[COMPONENTS];
    T* out[COMPONENTS];
    /// Numbers from one element to the next: 1 where each component is an array of its own; 3 or 6 where x, y, z lie
    /// one behind the other in an array of vectors or of pairs of them. What comes behind these has an array of its
    /// own.
    std::size_t inStep, outStep;
    std::uint32_t* codes; ///< one for each element, or null
    std::uint8_t* bytes;  ///< one for each element, or null
    std::uint64_t* bits;  ///< as in a BitSpan and 0, or null
    T* ends;              ///< of intervals that all elements extend: the lower ones, then the upper ones
};

/// Elements of which a loop over streams takes a multiple, as it is one of the lanes of every register.
inline constexpr std::size_t GRANULE = 16;

/// A loop over streams.
/// @param constants what all elements have in common, such as a matrix.
/// @param options bits that say how.
/// @return how many are done; all but where the loop says when it stops.
template <typename T>
using Loop = std::size_t (*)(T const* constants, unsigned int options, Streams<T> const& streams, std::size_t count);

/// The loops over points and shapes of one precision.
template <typename T>
struct GeometryKernels
{
    /// Points by a matrix, with division by w. Where that is too close to 0, sets a bit and does not divide, or without
    /// bits stops in front of the register.
    Loop<T> project;
    /// Points by the first three rows of a matrix.
    Loop<T> move;
    /// Points by a matrix, with w and without a division.
    Loop<T> toClip;
    /// Directions by a matrix. With an option, those of length 1 are normalised afterwards.
    Loop<T> rotate;
    /// Vectors to length 1.
    Loop<T> normalise;
    /// Bits of the points in a box of six numbers. With an option, those on its upper faces are outside.
    Loop<T> contain;
    /// Boxes by the first three rows of a matrix.
    Loop<T> moveBoxes;
    /// Boxes against those of six planes of four numbers each, normal and offset, whose bit is an option: bits of the
    /// boxes that none of them rejects, or codes; or bytes, with a bit for each plane that a box straddles, or the bit
    /// behind these alone where one rejects it.
    Loop<T> classify;
    /// Spheres against the planes: bits of those that none of them rejects, or codes.
    Loop<T> classifySpheres;
    /// Where a ray enters boxes, infinity for a miss, and bits of those that it meets. The ray is its origin, the
    /// reciprocals of its direction, and the interval; the options are bits of the axes that it crosses.
    Loop<T> clipBoxes;
    /// Where rays enter and leave a sphere of a centre and a squared radius, infinity and its opposite for a miss, and
    /// bits of those that meet it.
    Loop<T> clipRays;
    /// The same for a ray, an origin and a direction, and spheres.
    Loop<T> clipSpheres;
    /// Where a ray of an origin, a direction and an interval meets triangles: its parameter, infinity for a miss, and
    /// the weights of two corners, 0 for a miss; and bits of those that it meets.
    Loop<T> intersect;
    /// The same of a ray that is made ready: where it starts, its shear and the interval. The options are its three
    /// axes, two bits each.
    Loop<T> intersectWatertight;
    /// Bits of the pairs of numbers that are equal by IsEqual().
    Loop<T> compare;
    /// Extends the sides of a box by points.
    Loop<T> grow;
    /// Extends an interval by numbers.
    Loop<T> extend;
    /// The elements of the inverses of a granule of matrices, and their determinants.
    void (*invert)(tMatrix4<T> const* matrices, T (*results)[16], T* determinants);
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
