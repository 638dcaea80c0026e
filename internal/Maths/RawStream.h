#pragma once

/// @file
/// The binary form of plain values: their bytes as they stand in memory, one after the other.

#include <istream>
#include <ostream>
#include <type_traits>

namespace bv::maths
{

/// Writes each value with one unformatted `write`; the state of the stream is not looked at in between.
template <typename... Ts>
requires(std::is_arithmetic_v<Ts>&&...) std::ostream& WriteRaw(std::ostream& stream, Ts const&... values)
{
    (stream.write(reinterpret_cast<char const*>(&values), sizeof(values)), ...);
    return stream;
}

/// Reads each value with one unformatted `read`; the state of the stream is not looked at in between.
template <typename... Ts>
requires(std::is_arithmetic_v<Ts>&&...) std::istream& ReadRaw(std::istream& stream, Ts&... values)
{
    (stream.read(reinterpret_cast<char*>(&values), sizeof(values)), ...);
    return stream;
}

} // namespace bv::maths
