#pragma once

/// @file
/// The components of tuples, vectors and quaternions by index.

#include <cstddef>
#include <type_traits>

#include "bv/detail/Platform.h"
#include "bv/maths/detail/Number.h"

namespace bv::maths::detail
{

/// The components of a type in the plane. The tables stand outside of the classes so that they are the consumer's own:
/// a member of an exported class is looked up in the library at each access.
template <typename Vector, typename T>
inline constexpr T Vector::*PLANE_COMPONENTS[2] = {&Vector::x, &Vector::y};

/// The components of a type in space.
template <typename Vector, typename T>
inline constexpr T Vector::*SPACE_COMPONENTS[3] = {&Vector::x, &Vector::y, &Vector::z};

/// The components of a quaternion.
template <typename Quaternion, typename T>
inline constexpr T Quaternion::*QUATERNION_COMPONENTS[4] = {&Quaternion::x, &Quaternion::y, &Quaternion::z,
                                                            &Quaternion::w};

/// Points to the component at an index in one of the tables. Where a pointer to a member is its offset in bytes, the
/// program's run computes it, which is faster than a table: the components lie side by side from the start.
template <typename Vector, typename T, std::size_t COUNT>
[[nodiscard, gnu::always_inline]] constexpr auto ComponentAt(T Vector::*const (&components)[COUNT],
                                                             std::size_t index) noexcept
{
    if constexpr (BV_GNU != 0 && sizeof(T Vector::*) == sizeof(std::ptrdiff_t))
    {
        if (!std::is_constant_evaluated())
            return BitsAs<T Vector::*>(static_cast<std::ptrdiff_t>(index * sizeof(T)));
    }
    return components[index];
}

} // namespace bv::maths::detail
