#include "bv/Assert.h"

#include <csignal>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Breakpoint.h"

#if defined _WIN32
#include <windows.h>
#elif defined __linux__ && defined __x86_64__
#include <ucontext.h>
#endif

namespace
{

static_assert(std::is_same_v<decltype(&bv::Assert), void (*)() noexcept>, "takes nothing, returns nothing");

int volatile traps = 0;

#if defined _WIN32

/// Plays the debugger that goes on after each breakpoint.
class Debugger
{
    void* handler;

    static LONG CALLBACK GoOn(EXCEPTION_POINTERS* exception)
    {
        if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_BREAKPOINT)
            return EXCEPTION_CONTINUE_SEARCH;
        traps = traps + 1;
        ++exception->ContextRecord->Rip;
        return EXCEPTION_CONTINUE_EXECUTION;
    }

public:
    Debugger() : handler{AddVectoredExceptionHandler(1, &GoOn)} { traps = 0; }
    Debugger(Debugger const&) = delete;
    Debugger& operator=(Debugger const&) = delete;
    ~Debugger() { RemoveVectoredExceptionHandler(handler); }
};

#else

[[maybe_unused]] unsigned char volatile opcodes[2] = {};

extern "C" void CountTrap(int, siginfo_t*, [[maybe_unused]] void* context)
{
    traps = traps + 1;
#if defined __linux__ && defined __x86_64__
    auto const address = static_cast<ucontext_t const*>(context)->uc_mcontext.gregs[REG_RIP];
    auto const* next = reinterpret_cast<unsigned char const*>(address);
    opcodes[0] = next[-2];
    opcodes[1] = next[-1];
#endif
}

/// Plays the debugger that goes on after each breakpoint.
class Debugger
{
    struct sigaction previous = {};

public:
    Debugger()
    {
        traps = 0;
        struct sigaction action = {};
        action.sa_sigaction = &CountTrap;
        action.sa_flags = SA_SIGINFO;
        sigaction(SIGTRAP, &action, &previous);
    }
    Debugger(Debugger const&) = delete;
    Debugger& operator=(Debugger const&) = delete;
    ~Debugger() { sigaction(SIGTRAP, &previous, nullptr); }
};

#endif

TEST(AssertTest, EachCallTrapsOnceAndReturns)
{
    Debugger const debugger;
    bv::Assert();
    EXPECT_EQ(traps, 1);
    bv::Assert();
    EXPECT_EQ(traps, 2);
}

TEST(AssertTest, TheCallTrapsThroughAPointerToo)
{
    Debugger const debugger;
    void (*const pointer)() = &bv::Assert;
    pointer();
    EXPECT_EQ(traps, 1);
}

TEST(AssertTest, NothingIsPrinted)
{
    Debugger const debugger;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    bv::Assert();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(traps, 1);
}

#if BV_GNU && defined __linux__ && defined __x86_64__
TEST(AssertTest, TheTrapIsASoftwareBreakpointAfterANoOperation)
{
    Debugger const debugger;
    bv::Assert();
    EXPECT_EQ(opcodes[0], 0x90); // nop
    EXPECT_EQ(opcodes[1], 0xCC); // int3
}
#endif

#if GTEST_HAS_DEATH_TEST
TEST(AssertDeathTest, WithoutADebuggerTheSystemEndsTheProgram)
{
    EXPECT_EXIT(bv::Assert(), bv::test::ENDED_AT_BREAKPOINT, "");
}
#endif

} // namespace
