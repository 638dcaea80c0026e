#pragma once

/// @file
/// What the compiler offers beyond the language: the one place that asks for it.
///
/// Each macro is 1 or 0. With `BV_PLAIN_CXX`, which other compilers than GCC and Clang need not define, all of them are
/// 0, and the library is made of standard C++20 alone, the attributes that such a compiler ignores and the marks of
/// exported names apart. Its results have the same bits.

#if !defined BV_PLAIN_CXX && (defined __GNUC__ || defined __clang__)
#define BV_GNU 1 // vectors, builtin functions, inline assembly
#else
#define BV_GNU 0
#endif

// One function for the square roots of numbers and of vectors, by which newer Clangs replace those of x86.
#define BV_ELEMENTWISE_SQRT 0
#if BV_GNU && defined __has_builtin
#if __has_builtin(__builtin_elementwise_sqrt)
#undef BV_ELEMENTWISE_SQRT
#define BV_ELEMENTWISE_SQRT 1
#endif
#endif

// Instructions of x86. They differ between the files of a program.
#if BV_GNU && defined __SSE2__
#define BV_SSE2 1
#else
#define BV_SSE2 0
#endif
#if BV_GNU && defined __SSE4_1__
#define BV_SSE41 1
#else
#define BV_SSE41 0
#endif
#if BV_GNU && defined __AVX__
#define BV_AVX 1
#else
#define BV_AVX 0
#endif
#if BV_GNU && defined __AVX2__
#define BV_AVX2 1
#else
#define BV_AVX2 0
#endif
#if BV_GNU && defined __AVX512VBMI__
#define BV_AVX512 1
#else
#define BV_AVX512 0
#endif
