#pragma once

/// @file
/// Constraints on the templates that the library holds instances of.

namespace bv::maths::detail
{

template <bool CONDITION>
struct Condition
{
};
template <>
struct Condition<true>
{
    using Type = void;
};

/// The default of a template's last parameter, which has no name, where other templates would name a concept. GCC from
/// version 14 on and Clang from 18 on write constraints into the symbol of a function, and those before do not: a
/// program of the ones could not be linked with a library of the others. They agree on what a default gives.
template <bool CONDITION>
using Where = typename Condition<CONDITION>::Type;

} // namespace bv::maths::detail
