#pragma once

/// @file
/// Variables of the environment, which each system sets in its own way.

#include <cstdlib>

namespace bv::test
{

/// Gives a variable a value. An empty one removes it on Windows.
inline void SetVariable(char const* name, char const* value)
{
#if defined _WIN32
    _putenv_s(name, value);
#else
    setenv(name, value, 1);
#endif
}

/// Removes a variable.
inline void UnsetVariable(char const* name)
{
#if defined _WIN32
    _putenv_s(name, "");
#else
    unsetenv(name);
#endif
}

} // namespace bv::test
