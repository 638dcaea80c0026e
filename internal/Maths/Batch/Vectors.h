#pragma once

/// @file
/// Vectors and points as they lie in memory, x y z x y z, and as vectors of the processor, x x x x.

#include "Maths/Batch/Lanes.h"

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
