#pragma once

/// @file
/// Counts allocations. It replaces the global `operator new`, so one source file of a test program may include it. The
/// replacements stay out of line, so that the compiler does not pair the malloc of one with the delete of another.

#include <cstddef>
#include <cstdlib>
#include <new>

namespace bv::test
{

inline std::size_t allocations = 0;

/// How often the action allocates.
template <typename Action>
[[nodiscard]] std::size_t CountAllocations(Action&& action)
{
    std::size_t const before = allocations;
    action();
    return allocations - before;
}

} // namespace bv::test

[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++bv::test::allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    ++bv::test::allocations;
    return std::malloc(size != 0 ? size : 1);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
