#pragma once

/// @file
/// The numbers that a value is made of, by index, for what treats all types alike: text, bits, arrays.

#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>

#include "bv/maths/Forward.h"

namespace bv::maths::detail
{

/// Element type, number and order of the elements of a type, and what its text has behind each of them.
template <typename Value>
struct tElements;

/// Elements that have an index of their own. The text joins them by ", ".
template <typename Value, typename T, std::size_t NUMBER>
struct tIndexedElements
{
    using Element = T;
    static constexpr std::size_t COUNT = NUMBER;

    [[nodiscard, gnu::always_inline]] static constexpr T Get(Value const& value, std::size_t index) noexcept
    {
        return value[index];
    }
    [[nodiscard, gnu::always_inline]] static constexpr std::string_view GetTextBehind(std::size_t index) noexcept
    {
        return index + 1 < COUNT ? ", " : "";
    }
};

template <typename T>
struct tElements<tTuple2<T>> : tIndexedElements<tTuple2<T>, T, 2>
{
};
template <typename T>
struct tElements<tTuple3<T>> : tIndexedElements<tTuple3<T>, T, 3>
{
};
template <typename T>
struct tElements<tVector2<T>> : tIndexedElements<tVector2<T>, T, 2>
{
};
template <typename T>
struct tElements<tVector3<T>> : tIndexedElements<tVector3<T>, T, 3>
{
};
template <typename T>
struct tElements<tQuaternion<T>> : tIndexedElements<tQuaternion<T>, T, 4>
{
};

/// Row by row. The text has tabs within a line, and a newline behind each.
template <typename T>
struct tElements<tMatrix4<T>> : tIndexedElements<tMatrix4<T>, T, 16>
{
    [[nodiscard, gnu::always_inline]] static constexpr std::string_view GetTextBehind(std::size_t index) noexcept
    {
        return index % 4 == 3 ? "\n" : "\t";
    }
};

/// The normal, then the offset.
template <typename T>
struct tElements<tPlane<T>> : tIndexedElements<tPlane<T>, T, 4>
{
    [[nodiscard, gnu::always_inline]] static constexpr T Get(tPlane<T> const& plane, std::size_t index) noexcept
    {
        return index < 3 ? plane.GetNormal()[index] : plane.GetOffset();
    }
};

/// The lower corner, then the upper one. These and the shapes below have no text.
template <typename Box, typename T, std::size_t AXES>
struct tElementsOfBox
{
    using Element = T;
    static constexpr std::size_t COUNT = 2 * AXES;

    [[nodiscard, gnu::always_inline]] static constexpr T Get(Box const& box, std::size_t index) noexcept
    {
        return index < AXES ? box.GetMin()[index] : box.GetMax()[index - AXES];
    }
};
template <typename T>
struct tElements<tAreaAABB<T>> : tElementsOfBox<tAreaAABB<T>, T, 2>
{
};
template <typename T>
struct tElements<tVolumeAABB<T>> : tElementsOfBox<tVolumeAABB<T>, T, 3>
{
};

/// The centre, then the square of the radius.
template <typename Ball, typename T, std::size_t AXES>
struct tElementsOfBall
{
    using Element = T;
    static constexpr std::size_t COUNT = AXES + 1;

    [[nodiscard, gnu::always_inline]] static constexpr T Get(Ball const& ball, std::size_t index) noexcept
    {
        return index < AXES ? ball.GetCentre()[index] : ball.GetRadiusSquared();
    }
};
template <typename T>
struct tElements<tAreaDisc<T>> : tElementsOfBall<tAreaDisc<T>, T, 2>
{
};
template <typename T>
struct tElements<tVolumeSphere<T>> : tElementsOfBall<tVolumeSphere<T>, T, 3>
{
};

/// The origin, then the direction.
template <typename T>
struct tElements<tRay<T>>
{
    using Element = T;
    static constexpr std::size_t COUNT = 6;

    [[nodiscard, gnu::always_inline]] static constexpr T Get(tRay<T> const& ray, std::size_t index) noexcept
    {
        return index < 3 ? ray.origin[index] : ray.direction[index - 3];
    }
};

template <typename Value>
using ElementOf = typename tElements<Value>::Element;

template <typename Value>
concept WithElements = requires
{
    tElements<Value>::COUNT;
};

/// What is written element by element, and made from a pointer to as many numbers.
template <typename Value>
concept WithText = WithElements<Value> && requires
{
    tElements<Value>::GetTextBehind(0);
};

/// What is nothing but its elements, side by side in memory.
template <typename Value>
concept WithPlainElements =
    WithText<Value> && std::is_trivially_copyable_v<Value> && !std::same_as<Value, tPlane<ElementOf<Value>>>;

} // namespace bv::maths::detail
