#pragma once

/// @file
/// Between the library's values and those of JavaScript.

#include <optional>
#include <sstream>
#include <string>

#include <emscripten/val.h>

#include "bv/Exception.h"
#include "bv/String.h"
#include "bv/maths/tVector3.h"

namespace live
{

inline bv::maths::tVector3<float> ToVector(double x, double y, double z)
{
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

/// An array of three numbers.
inline emscripten::val ToValue(bv::maths::tVector3<float> const& vector)
{
    emscripten::val array = emscripten::val::array();
    array.set(0, static_cast<double>(vector.x));
    array.set(1, static_cast<double>(vector.y));
    array.set(2, static_cast<double>(vector.z));
    return array;
}

/// An array of three numbers, or null for nothing.
inline emscripten::val ToValue(std::optional<bv::maths::tVector3<float>> const& vector)
{
    return vector ? ToValue(*vector) : emscripten::val::null();
}

/// What a call throws, as text; empty if it throws nothing.
template <typename Call>
std::string GetFailure(Call call)
{
    try
    {
        call();
        return {};
    }
    catch (bv::Exception const& failure)
    {
        std::ostringstream text;
        text << failure;
        return text.str();
    }
}

} // namespace live
