#pragma once

/// @file
/// A break into the debugger.

#include "bv/Export.h"
#include "bv/detail/Platform.h"

#if defined _MSC_VER
#include <intrin.h>
#elif !BV_GNU || (!defined __x86_64__ && !defined __i386__)
#include <csignal>
#endif

namespace bv
{

/// Breaks into the debugger at the point of call: a no-operation, then a software breakpoint.
///
/// Tests nothing, prints nothing, throws nothing: the caller tests its condition and calls this. When the debugger, or
/// the program's own handler of the trap, has it go on, the call returns. With neither of them, the system ends the
/// program, as it does at any breakpoint. A platform without a breakpoint does nothing.
[[gnu::always_inline]] BV_INLINE void Assert() noexcept
{
#if defined _MSC_VER
    __nop();
    __debugbreak();
#elif BV_GNU && (defined __x86_64__ || defined __i386__)
    __asm__ volatile("nop\n\tint3");
#elif defined SIGTRAP
    // The breakpoint instructions of other processors do not step over themselves when a handler returns.
    static_cast<void>(std::raise(SIGTRAP));
#endif
}

} // namespace bv
