#pragma once

/// @file
/// std::bit_cast() for standard libraries that lack it. The tests are compiled with this in front where there is need.

#include <bit>

#if !defined __cpp_lib_bit_cast

namespace std
{

template <typename To, typename From>
[[nodiscard]] constexpr To bit_cast(From const& from) noexcept
{
    return __builtin_bit_cast(To, from);
}

} // namespace std

#endif
