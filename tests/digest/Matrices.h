#pragma once

/// @file
/// Matrices with any state, also those that no operation gives, and their whole content.

#include <cstdint>
#include <sstream>
#include <string>

#include <bv/maths/tMatrix4.h>

#include "Digest.h"
#include "Streamed.h"

namespace digest
{

/// A matrix with a state that only a stream can give it.
template <typename T>
tMatrix4<T> WithState(tMatrix4<T> const& matrix, std::uint32_t state)
{
    std::string bytes = Serialised(matrix);
    bytes.replace(tMatrix4<T>::BYTESIZE, sizeof state, reinterpret_cast<char const*>(&state), sizeof state);
    std::istringstream stream(bytes);
    tMatrix4<T> result;
    result.Deserialise(stream);
    return result;
}

template <typename T>
std::uint32_t StateOf(tMatrix4<T> const& matrix)
{
    std::uint32_t state;
    Serialised(matrix).copy(reinterpret_cast<char*>(&state), sizeof state, tMatrix4<T>::BYTESIZE);
    return state;
}

template <typename T>
void AddWhole(Digest& digest, tMatrix4<T> const& matrix)
{
    digest.Add(matrix, StateOf(matrix));
}

} // namespace digest
