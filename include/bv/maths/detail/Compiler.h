#pragma once

/// @file
/// What compilers and instruction sets differ in, named once.

#include <cstdint>

#include "bv/detail/Platform.h"

namespace bv::maths::detail
{

#if BV_GNU && defined __clang__
inline constexpr bool IS_CLANG = true;
#else
inline constexpr bool IS_CLANG = false;
#endif

// They differ between the files of a program: what goes by them is forced inline, or named after the instruction set.
constexpr bool HAS_SSE2 = BV_SSE2 != 0;
constexpr bool HAS_AVX = BV_AVX != 0;
constexpr bool HAS_AVX2 = BV_AVX2 != 0;
/// No instruction rounds to whole numbers, and the C library is a call away.
constexpr bool ROUNDS_BY_SUMS = HAS_SSE2 && BV_SSE41 == 0;

// What is compiled for AVX is made of wider registers and so has names of its own, in an inline namespace, as has what
// is made of it: a program may hold both (ODR).
#if BV_AVX
#define BV_REGISTERS avx
#else
#define BV_REGISTERS baseline
#endif

/// GCC takes a shuffle that leaves every lane in its place for any other one, which SSE2 has no instruction for: up to
/// seven instead of three. Clang recognises the choice in either form.
constexpr bool BLENDS_BY_MASK = HAS_SSE2 && !IS_CLANG && !HAS_AVX;

/// Without AVX, the shuffles of floating-point numbers write over their operand, which GCC copies first. Those of
/// integers have a result of their own. Clang chooses by itself.
constexpr bool SHUFFLES_AS_INTEGERS = HAS_SSE2 && !IS_CLANG && !HAS_AVX;

/// Clang weaves the growth of several boxes of `float` into vectors that it has to put together first, unless it is one
/// instruction an end.
template <typename T>
constexpr bool KEEPS_BOXES_SCALAR = (HAS_SSE2 && IS_CLANG) && sizeof(T) == sizeof(float);

/// Two components of `double` fill a register as they lie in memory; two of `float` take longer to put together than
/// they save.
template <typename T>
constexpr bool GROWS_BOXES_IN_PAIRS = HAS_SSE2 && sizeof(T) == sizeof(double);

/// One by one, Clang computes the distances of two boxes of `double` at a time.
template <typename T>
constexpr bool MEASURES_AXES_TOGETHER = HAS_SSE2 && !(IS_CLANG && sizeof(T) == sizeof(double));

/// A quaternion and a vector of `float` fill a register each; those of `double` fill two, which take longer to turn
/// than to compute. From AVX2 on, compilers make wider vectors of a loop over single numbers.
template <typename T>
constexpr bool ROTATES_IN_LANES = HAS_SSE2 && !HAS_AVX2 && sizeof(T) == sizeof(float);

/// Clang vectorises a loop of tests that have no branches, as long as none can divide by zero. GCC takes a branch for a
/// choice of divisors, and is faster where nothing is computed behind it.
constexpr bool VECTORISES_TESTS = IS_CLANG;

/// The address of an object. Clang would take the alignment of its type for granted, which an object in a packed record
/// does not have.
[[nodiscard, gnu::always_inline]] inline std::uintptr_t AddressOf(void const* object) noexcept
{
    auto address = reinterpret_cast<std::uintptr_t>(object);
#if BV_GNU && defined __clang__
    asm("" : "+r"(address));
#endif
    return address;
}

} // namespace bv::maths::detail
