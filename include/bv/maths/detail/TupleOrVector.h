#pragma once

/// @file
/// What the templates that take both tuples and vectors say about them.

#include <cstddef>
#include <type_traits>

#include "bv/maths/Forward.h"
#include "bv/maths/detail/Where.h"

namespace bv::maths
{

namespace detail
{

/// The type and the number of the components of a tuple or vector; nothing for any other type.
template <typename V>
struct ComponentsOf
{
};
template <typename T>
struct ComponentsOf<tTuple2<T>>
{
    using Type = T;
    static constexpr std::size_t COUNT = 2;
    static constexpr bool IS_VECTOR = false;
};
template <typename T>
struct ComponentsOf<tTuple3<T>>
{
    using Type = T;
    static constexpr std::size_t COUNT = 3;
    static constexpr bool IS_VECTOR = false;
};
template <typename T>
struct ComponentsOf<tVector2<T>>
{
    using Type = T;
    static constexpr std::size_t COUNT = 2;
    static constexpr bool IS_VECTOR = true;
};
template <typename T>
struct ComponentsOf<tVector3<T>>
{
    using Type = T;
    static constexpr std::size_t COUNT = 3;
    static constexpr bool IS_VECTOR = true;
};

/// The type of the components.
template <typename V>
using Component = typename ComponentsOf<V>::Type;

/// Whether there is a third component.
template <typename V>
inline constexpr bool HAS_Z = ComponentsOf<V>::COUNT == 3;

} // namespace detail

/// A tuple or vector in the plane or in space, of any element type.
template <typename V>
concept TupleOrVector = requires
{
    typename detail::ComponentsOf<V>::Type;
};

/// A tuple or vector of `int`, `float` or `double`.
template <typename V>
concept SignedTupleOrVector = TupleOrVector<V> && std::is_signed_v<detail::Component<V>>;

/// A tuple or vector of `float` or `double`.
template <typename V>
concept RealTupleOrVector = TupleOrVector<V> && std::is_floating_point_v<detail::Component<V>>;

/// A vector of `float` or `double`.
template <typename V>
concept RealVector = RealTupleOrVector<V> && detail::ComponentsOf<V>::IS_VECTOR;

} // namespace bv::maths
