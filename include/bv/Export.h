#pragma once

/// @file
/// Export macros. The library is built with hidden visibility: what is not marked stays inside.
///
/// - `BV_API` marks a function or a plain class.
/// - `BV_TEMPLATE` stands on the `extern template` line of an instance, in its header.
/// - `BV_TEMPLATE_INSTANCE` stands on the definition of that instance, in its source file.
///
/// GCC and Clang take the attribute from the first of the two lines, on every system; the Windows compiler wants it on
/// the definition while the library is built. A static library defines `BV_STATIC`, and all three vanish.

#if defined BV_STATIC
#define BV_API
#define BV_TEMPLATE
#define BV_TEMPLATE_INSTANCE
#elif defined _WIN32 && defined BV_BUILDING && defined _MSC_VER && !defined __clang__
#define BV_API __declspec(dllexport)
#define BV_TEMPLATE
#define BV_TEMPLATE_INSTANCE __declspec(dllexport)
#elif defined _WIN32 && defined BV_BUILDING
#define BV_API __declspec(dllexport)
#define BV_TEMPLATE __declspec(dllexport)
#define BV_TEMPLATE_INSTANCE
#elif defined _WIN32
#define BV_API __declspec(dllimport)
#define BV_TEMPLATE __declspec(dllimport)
#define BV_TEMPLATE_INSTANCE
#else
#define BV_API __attribute__((visibility("default")))
#define BV_TEMPLATE __attribute__((visibility("default")))
#define BV_TEMPLATE_INSTANCE
#endif
