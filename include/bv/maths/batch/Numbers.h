#pragma once

/// @file
/// Arrays of numbers: compared, searched for their extremes, drawn at random, and noise. See bv/maths/Batch.h for what
/// all batch forms have in common.

#include <cstddef>
#include <span>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/batch/Views.h"

namespace bv::maths
{

/// Compares numbers pair by pair, as IsEqual() does.
///
/// @param a,b the pairs, at the same index.
/// @param[out] equal the bits of the pairs that are equal.
/// @return how many there are.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API std::size_t CompareNumbers(std::span<float const> a, std::span<float const> b, BitSpan equal);
/// @copydoc CompareNumbers(std::span<float const>, std::span<float const>, BitSpan)
BV_API std::size_t CompareNumbers(std::span<double const> a, std::span<double const> b, BitSpan equal);

/// The ends of an interval.
template <typename T>
struct tExtremes
{
    T min; ///< the smallest number
    T max; ///< the largest number
};

/// The smallest and the largest number. Like a box, the interval is empty in the beginning, from infinity to -infinity,
/// and grows by one number after the other: a NaN moves nothing, and of zeros of both signs, the first counts.
[[nodiscard]] BV_API tExtremes<float> FindExtremes(tNumberView<float const> const& numbers) noexcept;
/// @copydoc FindExtremes(tNumberView<float const> const&)
[[nodiscard]] BV_API tExtremes<double> FindExtremes(tNumberView<double const> const& numbers) noexcept;

/// @name Random numbers
/// The next draws of a generator, in their order. The generator goes on behind them.
/// @{
/// Each as RNGenerator::GetFloat() gives it.
BV_API void GetFloats(RNGenerator& generator, std::span<float> results) noexcept;
/// Each as RNGenerator::GetVector2D() gives it.
BV_API void GetVectors2D(RNGenerator& generator, std::span<tVector2<float>> results) noexcept;
/// Each as RNGenerator::GetVector3D() gives it.
BV_API void GetVectors3D(RNGenerator& generator, std::span<tVector3<float>> results) noexcept;
/// @}

/// @name Noise
/// @{
/// Noise1() at each coordinate.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void EvaluateNoise1(std::span<float const> coordinates, std::span<float> results);
/// Noise2() at each point.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void EvaluateNoise2(std::span<tVector2<float> const> points, std::span<float> results);
/// Noise3() at each point.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void EvaluateNoise3(std::span<tVector3<float> const> points, std::span<float> results);
/// Turbulence1() at each coordinate, with the same number of octaves.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void EvaluateTurbulence1(std::span<float const> coordinates, unsigned int octaves, std::span<float> results);
/// Turbulence2() at each point, with the same number of octaves.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void EvaluateTurbulence2(std::span<tVector2<float> const> points, unsigned int octaves,
                                std::span<float> results);
/// Turbulence3() at each point, with the same number of octaves.
/// @throws bv::InvalidArgumentException for different lengths.
BV_API void EvaluateTurbulence3(std::span<tVector3<float> const> points, unsigned int octaves,
                                std::span<float> results);
/// @}

} // namespace bv::maths
