#pragma once

/// @file
/// The components of tuples and vectors by index.

namespace bv::maths::detail
{

/// The components of a type in the plane. The tables stand outside of the classes so that they are the consumer's own:
/// a member of an exported class is looked up in the library at each access.
template <typename Vector, typename T>
inline constexpr T Vector::*PLANE_COMPONENTS[2] = {&Vector::x, &Vector::y};

/// The components of a type in space.
template <typename Vector, typename T>
inline constexpr T Vector::*SPACE_COMPONENTS[3] = {&Vector::x, &Vector::y, &Vector::z};

} // namespace bv::maths::detail
