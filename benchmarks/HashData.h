#pragma once

/// @file
/// The keys that both sides of the hash rows work on.

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "Bench.h"

namespace bench
{

/// A key of N bytes, as a program would keep a point, a pair of indices or a name.
template <std::size_t N>
using Key = std::array<char, N>;

/// COUNT keys of printable bytes, none of them 0, so that the same bytes are a key and a text.
template <std::size_t N>
std::vector<Key<N>> Keys()
{
    std::vector<double> const numbers = Numbers(71, COUNT * N, 33, 127);
    return Build(numbers, N,
                 [](double const* group)
                 {
                     Key<N> key;
                     for (std::size_t i = 0; i < N; ++i)
                         key[i] = static_cast<char>(static_cast<int>(group[i]));
                     return key;
                 });
}

/// A point of a lattice.
struct Cell
{
    int x;
    int y;
};

inline std::vector<Cell> Cells()
{
    return Build(Numbers(72, COUNT * 2, 0, 100000), 2,
                 [](double const* group) {
                     return Cell{static_cast<int>(group[0]), static_cast<int>(group[1])};
                 });
}

/// Tuples of three components of 32 bits, by their numbers.
inline std::vector<double> TupleNumbers()
{
    return Numbers(73, COUNT * 3, 0, 1000000);
}

inline std::string HashRow(char const* operation, std::size_t size, char const* precision)
{
    return std::string("hash/") + operation + ' ' + std::to_string(size) + '/' + precision + '/';
}

} // namespace bench
