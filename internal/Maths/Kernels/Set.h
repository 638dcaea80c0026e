#pragma once

/// @file
/// A set of loops for registers of a width, which the file that includes this is compiled for.

#include <type_traits>

#include "Maths/Kernels/Bounds.h"
#include "Maths/Kernels/Compare.h"
#include "Maths/Kernels/Generator.h"
#include "Maths/Kernels/Inverse.h"
#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Noise/Blocks.h"
#include "Maths/Kernels/Noise/Single.h"
#include "Maths/Kernels/Rays.h"
#include "Maths/Kernels/Transforms.h"
#include "Maths/Kernels/Triangles.h"
#include "Maths/Kernels/Visibility.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
[[gnu::always_inline]] inline GeometryKernels<T> GeometrySet() noexcept
{
    using Moving = Transforms<T, BYTES>;
    using Boxes = Bounds<T, BYTES>;
    using Views = Visibility<T, BYTES>;
    using Clips = Rays<T, BYTES>;
    using Meetings = Triangles<T, BYTES>;
    return {.project = Moving::Project,
            .move = Moving::Move,
            .toClip = Moving::ToClip,
            .rotate = Moving::Rotate,
            .normalise = Moving::Normalise,
            .contain = Boxes::Contain,
            .moveBoxes = Boxes::MoveBoxes,
            .classify = Views::Classify,
            .classifySpheres = Views::ClassifySpheres,
            .clipBoxes = Clips::ClipBoxes,
            .clipRays = Clips::ClipRays,
            .clipSpheres = Clips::ClipSpheres,
            .intersect = Meetings::Intersect,
            .intersectWatertight = Meetings::IntersectWatertight,
            .compare = Comparison<T, BYTES>::Compare,
            .grow = Boxes::Grow,
            .extend = Boxes::Extend,
            .invert = Inverse<T, BYTES>::Invert};
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
