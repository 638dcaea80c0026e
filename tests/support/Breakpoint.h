#pragma once

/// @file
/// How the system ends a program at a breakpoint, for EXPECT_EXIT().

#include <csignal>

#include <gtest/gtest.h>

namespace bv::test
{

/// Whether the system ended the program at a breakpoint, for want of a debugger.
#if defined _WIN32
inline testing::ExitedWithCode const ENDED_AT_BREAKPOINT{static_cast<int>(0x80000003)}; // STATUS_BREAKPOINT
#elif GTEST_HAS_DEATH_TEST
inline testing::KilledBySignal const ENDED_AT_BREAKPOINT{SIGTRAP};
#endif

} // namespace bv::test
