#pragma once

/// @file
/// The empty text that the exceptions share.

#include "bv/String.h"

namespace bv
{

/// One empty text for the whole library, which is there without an allocation when memory has run out.
[[nodiscard]] String const& EmptyText();

} // namespace bv
