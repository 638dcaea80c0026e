#pragma once

/// @file
/// What the builders of rotations share.

#include <cmath>
#include <type_traits>

#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// The cosine and the sine of an angle.
template <typename T>
struct Turn
{
    T cosine, sine;
};

/// The values of std::cos() and std::sin(). GCC makes one call of the two; Clang has to be told.
template <typename T>
[[nodiscard]] inline Turn<T> TurnBy(T angle) noexcept
{
#if defined __GLIBC__ && defined _GNU_SOURCE
    // Apart: Clang reads neighbours in one load, which waits until the two stores are through.
    alignas(16) T cosine;
    alignas(16) T sine;
    if constexpr (std::is_same_v<T, float>)
        ::sincosf(angle, &sine, &cosine);
    else
        ::sincos(angle, &sine, &cosine);
    return {cosine, sine};
#else
    return {std::cos(angle), std::sin(angle)};
#endif
}

/// A copy that is read number by number. Callers often store the components just before the call, one by one, and Clang
/// likes to read two at once, which waits until both are through.
template <typename T>
[[nodiscard]] inline tVector3<T> ReadApart(tVector3<T> const& vector) noexcept
{
    tVector3<T> const volatile& components = vector;
    return {components.x, components.y, components.z};
}

} // namespace bv::maths
