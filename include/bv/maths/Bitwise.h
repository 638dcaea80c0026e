#pragma once

/// @file
/// Function objects that compare and hash values by their bits, for containers of the standard library.
///
/// `==` of the library is tolerant, and not transitive: keys of a container need something stricter. To these, 0.0 and
/// -0.0 differ, and a NaN equals one of the same bits. They take tuples, vectors, quaternions, planes, matrices, boxes,
/// discs, spheres and rays. A matrix counts by its elements; its state is not looked at.
///
///     std::unordered_map<Vector3f, unsigned int, BitHash, BitEqual> indexOfVertex;
///     std::map<Matrix4f, Mesh, BitLess> meshes;

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "bv/maths/detail/Elements.h"
#include "bv/maths/detail/Number.h"

namespace bv::maths
{

namespace detail
{

/// The bits of a number as an integer of its size.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr auto BitsOf(T number) noexcept
{
    return BitsAs<std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>>(number);
}

/// An integer that is in the order of integers where the number is in the total order of IEEE 754.
template <typename T>
[[nodiscard, gnu::always_inline]] constexpr auto PlaceInOrder(T number) noexcept
{
    if constexpr (std::integral<T>)
    {
        return number;
    }
    else
    {
        using Signed = std::make_signed_t<decltype(BitsOf(number))>;
        auto const bits = static_cast<Signed>(BitsOf(number));
        // Negative numbers grow with their magnitude: all bits but the sign are turned around.
        return bits < 0 ? static_cast<Signed>(bits ^ static_cast<Signed>(~(std::uint64_t{1} << (8 * sizeof(T) - 1))))
                        : bits;
    }
}

} // namespace detail

/// Whether two values have the same bits in every element.
struct BitEqual
{
    /// Whether the bits of all elements are the same.
    template <detail::WithElements Value>
    [[nodiscard, gnu::always_inline]] constexpr bool operator()(Value const& a, Value const& b) const noexcept
    {
        using Elements = detail::tElements<Value>;
        for (std::size_t index = 0; index < Elements::COUNT; ++index)
            if (detail::BitsOf(Elements::Get(a, index)) != detail::BitsOf(Elements::Get(b, index)))
                return false;
        return true;
    }
};

/// Whether the first value comes before the second one: element by element, integers as usual, and floating-point
/// numbers in the total order of IEEE 754, which is that of `<` with -0 before 0, NaNs of positive sign behind
/// +infinity and those of negative sign in front of -infinity.
struct BitLess
{
    /// Whether the first value comes before the second.
    template <detail::WithElements Value>
    [[nodiscard, gnu::always_inline]] constexpr bool operator()(Value const& a, Value const& b) const noexcept
    {
        using Elements = detail::tElements<Value>;
        for (std::size_t index = 0; index < Elements::COUNT; ++index)
        {
            auto const left = detail::PlaceInOrder(Elements::Get(a, index));
            auto const right = detail::PlaceInOrder(Elements::Get(b, index));
            if (left != right)
                return left < right;
        }
        return false;
    }
};

/// A hash of the bits of every element. Values that are equal to BitEqual have the same hash; it may be another one in
/// another version of the library.
struct BitHash
{
    /// The hash of a value.
    template <detail::WithElements Value>
    [[nodiscard, gnu::always_inline]] constexpr std::size_t operator()(Value const& value) const noexcept
    {
        // Many floating-point numbers differ in their upper bits alone. These are brought down, a multiplication
        // spreads all to the left, and what arrives there is brought down again, where tables look.
        using Elements = detail::tElements<Value>;
        std::uint64_t hash = Elements::COUNT;
        for (std::size_t index = 0; index < Elements::COUNT; ++index)
        {
            hash ^= detail::BitsOf(Elements::Get(value, index));
            hash = (hash ^ (hash >> 32)) * 0x9E3779B97F4A7C15U; // 2^64 divided by the golden ratio
            hash ^= hash >> 32;
        }
        return static_cast<std::size_t>(hash);
    }
};

} // namespace bv::maths
