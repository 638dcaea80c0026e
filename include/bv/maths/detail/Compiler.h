#pragma once

/// @file
/// What one compiler makes less of than another, named once.

namespace bv::maths::detail
{

#if defined __clang__
inline constexpr bool IS_CLANG = true;
#else
inline constexpr bool IS_CLANG = false;
#endif

#if defined __AVX__
inline constexpr bool HAS_AVX = true;
#else
inline constexpr bool HAS_AVX = false;
#endif

/// GCC takes a shuffle that leaves every lane in its place for any other one, which SSE2 has no instruction for: up to
/// seven instead of three. Clang recognises the choice in either form.
inline constexpr bool BLENDS_BY_MASK = !IS_CLANG && !HAS_AVX;

/// Without AVX, the shuffles of floating-point numbers write over their operand, which GCC copies first. Those of
/// integers have a result of their own. Clang chooses by itself.
inline constexpr bool SHUFFLES_AS_INTEGERS = !IS_CLANG && !HAS_AVX;

} // namespace bv::maths::detail
