#pragma once

/// @file
/// A thrown error checked whole: class, message, function, file and line.

#include <functional>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "bv/Exception.h"

namespace bv::test
{

/// Runs the action and expects that it throws exactly this class (no subclass), with these texts.
inline void ExpectThrows(std::type_info const& expected, std::function<void()> const& action,
                         std::string const& message, std::string const& function, std::string const& file,
                         unsigned int line)
{
    try
    {
        action();
        ADD_FAILURE() << "nothing was thrown; expected \"" << message << "\"";
    }
    catch (Exception const& caught)
    {
        EXPECT_TRUE(typeid(caught) == expected) << "thrown: " << typeid(caught).name();
        EXPECT_EQ(caught.Message().ToCharArray(), message);
        EXPECT_EQ(caught.FunctionName().ToCharArray(), function);
        EXPECT_EQ(caught.Filename().ToCharArray(), file);
        EXPECT_EQ(caught.LineNumber(), line);
        EXPECT_EQ(caught.Where().ToCharArray(), file + " (" + std::to_string(line) + ") : " + function);
        EXPECT_STREQ(caught.what(), "Brevane exception");
    }
}

/// The same for the class `Expected`.
template <typename Expected>
void ExpectThrows(std::function<void()> const& action, std::string const& message, std::string const& function,
                  std::string const& file, unsigned int line)
{
    ExpectThrows(typeid(Expected), action, message, function, file, line);
}

/// The name of the element type as it stands in a function name.
template <typename T>
inline char const* const TYPE_NAME = nullptr;
template <>
inline char const* const TYPE_NAME<float> = "float";
template <>
inline char const* const TYPE_NAME<double> = "double";

} // namespace bv::test
