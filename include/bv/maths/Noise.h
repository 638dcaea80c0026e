#pragma once

/// @file
/// Gradient noise and its sums over octaves, for procedural textures and perturbations.
///
/// The noise is the improved gradient noise with its reference permutation and its twelve gradient directions (Ken
/// Perlin, "Improving Noise", 2002), moved from [-1, 1] to [0, 1]. It is smooth, repeats with period 256 along every
/// axis, and is exactly 0.5 at each point whose coordinates are all whole numbers.
///
/// Edges, the same for all of these functions:
/// - From 2^23 in magnitude on, every `float` is a whole number; from 2^31 on, all of them share the cell at 0.
/// - A coordinate that is infinite or NaN gives NaN, of which sign and payload are not promised. The turbulence doubles
///   its coordinates from octave to octave and gives NaN once one of them leaves the range of `float`.
/// - A coordinate just below 0 keeps its cell although its fraction rounds to 1.
///
/// Nothing is thrown, allocated or kept.

#include "bv/Export.h"
#include "bv/maths/Forward.h"

namespace bv::maths
{

/// Noise along a line: Noise3() at (x, 0, 0), with nothing spent on the two other axes.
/// @return a value in [0.25, 0.75].
[[nodiscard]] BV_API float Noise1(float x) noexcept;

/// Noise in the plane: Noise3() at (x, y, 0), with nothing spent on the third axis.
/// @return a value in [0, 1].
[[nodiscard]] BV_API float Noise2(tVector2<float> const& point) noexcept;

/// Noise in space.
///
/// The value is not clamped. Near the middle of the few cells whose gradients all point inwards, or all outwards, it
/// leaves [0, 1] by 1 to 2 %: it goes down to -0.0133 and up to 1.0182.
/// @return a value in [0, 1], but for these cells.
[[nodiscard]] BV_API float Noise3(tVector3<float> const& point) noexcept;

/// Turbulence along a line: the weighted mean of Noise1() at x, 2x, 4x and so on, where each octave weighs half as much
/// as the one before. No absolute value is taken.
/// @param x the coordinate.
/// @param octaves the number of terms: 0 gives 0, 1 gives Noise1() itself, and more than 10 count as 10.
/// @return a value in [0.25, 0.75], or 0 for no octave.
[[nodiscard]] BV_API float Turbulence1(float x, unsigned int octaves) noexcept;

/// Turbulence in the plane: as Turbulence1(), of Noise2().
/// @return a value in [0, 1].
[[nodiscard]] BV_API float Turbulence2(tVector2<float> const& point, unsigned int octaves) noexcept;

/// Turbulence in space: as Turbulence1(), of Noise3(); like that, it can leave [0, 1] slightly.
[[nodiscard]] BV_API float Turbulence3(tVector3<float> const& point, unsigned int octaves) noexcept;

} // namespace bv::maths
