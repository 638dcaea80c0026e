#pragma once

/// @file
/// The state of a matrix as a number, which only the binary form shows, and only a stream can set as one likes.

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

#include "bv/maths/tMatrix4.h"

namespace bv::test
{

inline constexpr std::uint32_t IDENTITY = 0;
inline constexpr std::uint32_t DIAGONAL = 1;
inline constexpr std::uint32_t ORTHONORMAL = 2;
inline constexpr std::uint32_t GENERAL = 3;
inline constexpr std::uint32_t UNKNOWN = 7; ///< none of the enumeration's
inline constexpr std::uint32_t STATES[] = {IDENTITY, DIAGONAL, ORTHONORMAL, GENERAL, UNKNOWN};

template <typename T>
[[nodiscard]] std::uint32_t StateOf(maths::tMatrix4<T> const& matrix)
{
    std::ostringstream stream;
    matrix.Serialise(stream);
    std::uint32_t state = 0;
    std::memcpy(&state, stream.str().data() + maths::tMatrix4<T>::BYTESIZE, sizeof(state));
    return state;
}

/// The same elements in any state, fitting or not.
template <typename T>
[[nodiscard]] maths::tMatrix4<T> WithState(maths::tMatrix4<T> const& matrix, std::uint32_t state)
{
    std::ostringstream written;
    matrix.Serialise(written);
    std::string bytes = written.str();
    std::memcpy(bytes.data() + maths::tMatrix4<T>::BYTESIZE, &state, sizeof(state));
    std::istringstream stream(bytes);
    maths::tMatrix4<T> result;
    result.Deserialise(stream);
    return result;
}

} // namespace bv::test
