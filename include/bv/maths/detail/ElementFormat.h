#pragma once

/// @file
/// What the formatters of the standard library and of {fmt} share.

#include <cstddef>

#include "bv/maths/detail/Elements.h"

namespace bv::maths::detail
{

/// Formats a value element by element, with one format for all of them, and what its text has in between.
template <typename Value, typename Char, typename ElementFormatter>
class tElementFormat
{
    ElementFormatter element;

public:
    /// Takes the format, which is that of an element.
    template <typename Context>
    constexpr auto parse(Context& context)
    {
        return element.parse(context);
    }

    /// Writes the value.
    template <typename Context>
    auto format(Value const& value, Context& context) const
    {
        using Elements = tElements<Value>;
        auto place = context.out();
        for (std::size_t index = 0; index < Elements::COUNT; ++index)
        {
            context.advance_to(place);
            place = element.format(Elements::Get(value, index), context);
            for (char const letter : Elements::GetTextBehind(index))
                *place++ = static_cast<Char>(letter);
        }
        return place;
    }
};

} // namespace bv::maths::detail
