#pragma once

/// @file
/// Export macros. The library is built with hidden visibility: what is not marked stays inside.
///
/// - `BV_API` marks a function or a plain class.
/// - `BV_INLINE` marks an inline function that is no template, at its declaration and at its definition.
/// - `BV_TEMPLATE` stands on the `extern template` line of an instance, in its header.
/// - `BV_TEMPLATE_INSTANCE` stands on the definition of that instance, in its source file.
///
/// GCC and Clang take the attribute of an instance from the first of the last two; the Windows compiler wants it on the
/// definition while the library is built. For Windows, GCC and Clang get none: they never export the inline members of
/// an instance, and warn where one is to be imported. The build names the instances to the linker instead, and a
/// program reaches them by way of the import library. A static library defines `BV_STATIC`, and nothing is exported.
///
/// What `BV_INLINE` marks behaves as a template does under `extern template`: its body may take the place of a call,
/// and whatever is left, a call or an address, leads to the one instance in the library. No other object file holds a
/// copy. So a copy compiled for a newer processor never gets into code for an older one, and no address points into a
/// module that may be unloaded. The instances are where a source file of the library defines `BV_INSTANCES` before its
/// first include: this file then holds those of all headers that it includes. A constructor is inlined by force
/// besides, since of its two symbols Clang leaves out the one that programs call.

#if defined BV_STATIC
#define BV_API
#define BV_TEMPLATE
#define BV_TEMPLATE_INSTANCE
#elif defined _WIN32 && defined __GNUC__
#if defined BV_BUILDING
#define BV_API __declspec(dllexport)
#else
#define BV_API __declspec(dllimport)
#endif
#define BV_TEMPLATE
#define BV_TEMPLATE_INSTANCE
#elif defined _WIN32 && defined BV_BUILDING && !defined __clang__
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

#if defined _WIN32 && !defined __GNUC__ && defined BV_INSTANCES
#define BV_INLINE BV_API inline
#elif !defined __GNUC__
#define BV_INLINE inline
#elif defined BV_INSTANCES
#define BV_INLINE BV_TEMPLATE __attribute__((used)) inline
#elif defined __clang__
// Clang warns of what it did before version 10 where `extern` is missing, which members cannot have.
#define BV_INLINE                                                                                                      \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wgnu-inline-cpp-without-extern\"")           \
        BV_TEMPLATE __attribute__((gnu_inline)) inline _Pragma("clang diagnostic pop")
#else
#define BV_INLINE BV_TEMPLATE __attribute__((gnu_inline)) inline
#endif
