#pragma once

/// @file
/// A set of loops for registers of a width, which the file that includes this is compiled for.

#include <type_traits>

#include "Maths/Kernels/Generator.h"
#include "Maths/Kernels/Geometry.h"
#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Noise/Blocks.h"
#include "Maths/Kernels/Noise/Single.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
[[gnu::always_inline]] inline GeometryKernels<T> GeometrySet() noexcept
{
    using Loops = Geometry<T, BYTES>;
    return {Loops::Project, Loops::Rotate, Loops::Grow, Loops::Classify};
}

template <typename Point, std::size_t BYTES>
[[gnu::always_inline]] inline NoiseKernels<Point> NoiseSet() noexcept
{
    using Argument = typename NoiseKernels<Point>::Argument;
    using Block =
        std::conditional_t<(BYTES > 16), NoiseBlock<Point, BYTES, ByteHashes>, NoiseBlock<Point, BYTES, TableHashes>>;
    using Single = NoiseAtPoint<BYTES>;
    return {Block::Turbulence, Single::template Noise<Point, Argument>, Single::template Turbulence<Point, Argument>};
}

template <std::size_t BYTES>
[[gnu::always_inline]] inline Kernels AllKernels() noexcept
{
    return {GeometrySet<float, BYTES>(),        GeometrySet<double, BYTES>(),       NoiseSet<float, BYTES>(),
            NoiseSet<tVector2<float>, BYTES>(), NoiseSet<tVector3<float>, BYTES>(), {Generator<BYTES>::Draw}};
}

} // namespace

} // namespace bv::maths
