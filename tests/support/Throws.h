#pragma once

/// @file
/// A thrown error checked whole: class, message, function, file and line.

#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "bv/Exception.h"

namespace bv::test
{

/// Runs the action and expects that it throws exactly `Expected` (no subclass), with these texts.
template <typename Expected, typename Action>
void ExpectThrows(Action&& action, std::string const& message, std::string const& function, std::string const& file,
                  unsigned int line)
{
    try
    {
        action();
        ADD_FAILURE() << "nothing was thrown; expected \"" << message << "\"";
    }
    catch (Exception const& caught)
    {
        EXPECT_TRUE(typeid(caught) == typeid(Expected)) << "thrown: " << typeid(caught).name();
        EXPECT_EQ(caught.Message().ToCharArray(), message);
        EXPECT_EQ(caught.FunctionName().ToCharArray(), function);
        EXPECT_EQ(caught.Filename().ToCharArray(), file);
        EXPECT_EQ(caught.LineNumber(), line);
        EXPECT_EQ(caught.Where().ToCharArray(), file + " (" + std::to_string(line) + ") : " + function);
        EXPECT_STREQ(caught.what(), "Brevane exception");
    }
}

/// The name of the element type as it stands in a function name.
template <typename T>
inline char const* const TYPE_NAME = nullptr;
template <>
inline char const* const TYPE_NAME<float> = "float";
template <>
inline char const* const TYPE_NAME<double> = "double";

} // namespace bv::test
