#pragma once

/// @file
/// Where a failure says that it was raised.

namespace bv::maths::detail
{

/// A member function and a line. Both are part of the interface: an exception carries them, programs may look at them,
/// and so they stay as they are when the code around them moves.
struct Place
{
    char const* member;
    unsigned int line;
};

} // namespace bv::maths::detail
