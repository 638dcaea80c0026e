#pragma once

/// @file
/// Vectors and points as they lie in memory, x y z x y z, and as vectors of the processor, x x x x.

#include "Maths/Kernels/Lanes/Lanes.h"

namespace bv::maths
{

namespace
{

/// The components of as many vectors as there are lanes.
template <typename V, std::size_t SIZE>
struct Vectors
{
    V components[SIZE];
};

/// Where the lanes of a component of three come from, when the points lie in three vectors, first, second and third: an
/// index into the first two, and then one into those lanes and the third.
template <std::size_t COUNT, std::size_t COMPONENT>
struct Spreading
{
    static constexpr int FromFirstTwo(std::size_t lane) noexcept
    {
        std::size_t const at = 3 * lane + COMPONENT;
        return at < 2 * COUNT ? static_cast<int>(at) : 0;
    }
    static constexpr int FromThird(std::size_t lane) noexcept
    {
        std::size_t const at = 3 * lane + COMPONENT;
        return static_cast<int>(at < 2 * COUNT ? lane : at - COUNT);
    }
};

/// The reverse: where the lanes of the first, second or third vector, 0 to 2, of points come from, when there is a
/// vector of each component.
template <std::size_t COUNT, std::size_t VECTOR>
struct Gathering
{
    static constexpr int FromXAndY(std::size_t lane) noexcept
    {
        std::size_t const at = VECTOR * COUNT + lane;
        return at % 3 == 2 ? 0 : static_cast<int>(at % 3 * COUNT + at / 3);
    }
    static constexpr int FromZ(std::size_t lane) noexcept
    {
        std::size_t const at = VECTOR * COUNT + lane;
        return static_cast<int>(at % 3 == 2 ? COUNT + at / 3 : lane);
    }
};

template <std::size_t COMPONENT, typename V, std::size_t... I>
[[gnu::always_inline]] inline V Spread(V first, V second, V third, std::index_sequence<I...>) noexcept
{
    using From = Spreading<sizeof...(I), COMPONENT>;
    V const firstTwo = __builtin_shufflevector(first, second, From::FromFirstTwo(I)...);
    return __builtin_shufflevector(firstTwo, third, From::FromThird(I)...);
}

template <std::size_t VECTOR, typename V, std::size_t... I>
[[gnu::always_inline]] inline V Gather(V x, V y, V z, std::index_sequence<I...>) noexcept
{
    using From = Gathering<sizeof...(I), VECTOR>;
    V const xAndY = __builtin_shufflevector(x, y, From::FromXAndY(I)...);
    return __builtin_shufflevector(xAndY, z, From::FromZ(I)...);
}

/// Points in a row, in vectors whose lanes can be permuted at will, as those of 64 bytes can.
template <typename V>
[[gnu::always_inline]] inline Vectors<V, 3> LoadPermuted(void const* points) noexcept
{
    constexpr auto LANES = std::make_index_sequence<sizeof(V) / sizeof(Element<V>)>();
    auto const* const bytes = static_cast<std::byte const*>(points);
    V first = Load<V>(bytes);
    V second = Load<V>(bytes + sizeof(V));
    V third = Load<V>(bytes + 2 * sizeof(V));
    // GCC would read each of them three times, and a vector of 64 bytes seldom lies within a line of the cache.
    asm("" : "+v"(first), "+v"(second), "+v"(third));
    return {{Spread<0>(first, second, third, LANES), Spread<1>(first, second, third, LANES),
             Spread<2>(first, second, third, LANES)}};
}

/// The reverse of LoadPermuted().
template <typename V>
[[gnu::always_inline]] inline void StorePermuted(Vectors<V, 3> const& vectors, void* points) noexcept
{
    constexpr auto LANES = std::make_index_sequence<sizeof(V) / sizeof(Element<V>)>();
    auto* const bytes = static_cast<std::byte*>(points);
    auto const& [x, y, z] = vectors.components;
    Store(Gather<0>(x, y, z, LANES), bytes);
    Store(Gather<1>(x, y, z, LANES), bytes + sizeof(V));
    Store(Gather<2>(x, y, z, LANES), bytes + 2 * sizeof(V));
}

/// Reads vectors of SIZE components. Each 16 bytes of lanes take as many vectors in a row; `stride` bytes further stand
/// those of the next 16.
template <typename T, std::size_t BYTES, std::size_t SIZE>
[[gnu::always_inline]] inline Vectors<Lanes<T, BYTES>, SIZE> LoadVectors(void const* vectors,
                                                                         std::size_t stride = SIZE * 16) noexcept
{
    using V = Lanes<T, BYTES>;
    auto const* const bytes = static_cast<std::byte const*>(vectors);
    V const a = LoadParts<T, BYTES>(bytes, stride);
    if constexpr (SIZE == 1)
        return {{a}};
    else
    {
        V const b = LoadParts<T, BYTES>(bytes + 16, stride);
        if constexpr (SIZE == 2)
        {
            static_assert(sizeof(T) == sizeof(float));
            return {{Pick<0, 2, 0, 2>(a, b), Pick<1, 3, 1, 3>(a, b)}};
        }
        else
        {
            V const c = LoadParts<T, BYTES>(bytes + 32, stride);
            if constexpr (sizeof(T) == sizeof(float))
            {
                V const xy23 = Pick<2, 3, 1, 2>(b, c);
                V const yz01 = Pick<1, 2, 0, 1>(a, b);
                return {{Pick<0, 3, 0, 2>(a, xy23), Pick<0, 2, 1, 3>(yz01, xy23), Pick<1, 3, 0, 3>(yz01, c)}};
            }
            else
                return {{Pick<0, 1>(a, b), Pick<1, 0>(a, c), Pick<0, 1>(b, c)}};
        }
    }
}

/// Writes vectors of three components, one behind the other.
template <typename V>
[[gnu::always_inline]] inline void StoreVectors(Vectors<V, 3> const& vectors, void* memory) noexcept
{
    if constexpr (sizeof(V) == 64)
        return StorePermuted(vectors, memory);
    constexpr std::size_t STRIDE = 3 * 16;
    auto* const bytes = static_cast<std::byte*>(memory);
    auto const& [x, y, z] = vectors.components;
    if constexpr (sizeof(Element<V>) == sizeof(float))
    {
        V const xy02 = Pick<0, 2, 0, 2>(x, y);
        V const yz13 = Pick<1, 3, 1, 3>(y, z);
        V const z02x13 = Pick<0, 2, 1, 3>(z, x);
        StoreParts(Pick<0, 2, 0, 2>(xy02, z02x13), bytes, STRIDE);
        StoreParts(Pick<0, 2, 1, 3>(yz13, xy02), bytes + 16, STRIDE);
        StoreParts(Pick<1, 3, 1, 3>(z02x13, yz13), bytes + 32, STRIDE);
    }
    else
    {
        StoreParts(Pick<0, 0>(x, y), bytes, STRIDE);
        StoreParts(Pick<0, 1>(z, x), bytes + 16, STRIDE);
        StoreParts(Pick<1, 1>(y, z), bytes + 32, STRIDE);
    }
}

} // namespace

} // namespace bv::maths
