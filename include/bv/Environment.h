#pragma once

/// @file
/// Access to the environment of the process.

#include "bv/Export.h"
#include "bv/String.h"

namespace bv
{

/// The value of an environment variable, in a copy of its own.
///
/// Takes no lock: against changes of the environment in other threads it is as safe as the query of the C runtime.
///
/// @param name the name of the variable.
/// @return the empty string when there is no such variable, when its value is empty or not valid UTF-8, when the name
///         is null and when the query fails; the caller cannot tell these apart.
[[nodiscard]] BV_API String const BvGetEnv(char const* name);

} // namespace bv
