#pragma once

/// @file
/// The version of the library that a program was compiled against. CMake reads its own version from here.

namespace bv
{

inline constexpr unsigned int VERSION_MAJOR = 0; ///< moves when a promise of the interface is broken
inline constexpr unsigned int VERSION_MINOR = 1; ///< moves when the interface grows
inline constexpr unsigned int VERSION_PATCH = 0; ///< moves with every other release

} // namespace bv
