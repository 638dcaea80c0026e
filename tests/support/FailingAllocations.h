#pragma once

/// @file
/// Replaces the global `operator new` by one that counts and fails on demand, so one source file of a test program may
/// include it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <ostream>
#include <streambuf>
#include <string_view>

#include <gtest/gtest.h>

namespace bv::test
{

inline std::size_t calls = 0;               ///< allocations so far
inline std::size_t blocks = 0;              ///< allocations that were not freed yet
inline std::size_t untilFailure = SIZE_MAX; ///< allocations that still succeed
inline bool failsOnce = false;              ///< whether only one allocation fails
inline bool nothrowFails = false;           ///< whether the non-throwing form fails

inline void* Allocate(std::size_t size) noexcept
{
    if (untilFailure == 0)
    {
        if (failsOnce)
            untilFailure = SIZE_MAX;
        return nullptr;
    }
    if (untilFailure != SIZE_MAX)
        --untilFailure;
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block != nullptr)
    {
        ++calls;
        ++blocks;
    }
    return block;
}

// Inlined into a delete expression, this would look to a compiler as if memory from `new` were given to free().
[[gnu::noinline]] inline void Free(void* block) noexcept
{
    if (block != nullptr)
        --blocks;
    std::free(block);
}

} // namespace bv::test

void* operator new(std::size_t size)
{
    if (void* const block = bv::test::Allocate(size))
        return block;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return bv::test::nothrowFails ? nullptr : bv::test::Allocate(size);
}

void operator delete(void* block) noexcept
{
    bv::test::Free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    bv::test::Free(block);
}

void operator delete(void* block, std::nothrow_t const&) noexcept
{
    bv::test::Free(block);
}

namespace bv::test
{

/// What an action did to the memory.
struct Use
{
    std::size_t calls;     ///< allocations that it made
    std::ptrdiff_t blocks; ///< blocks that it left behind, or freed if negative
};

template <typename Action>
Use Measure(Action&& action)
{
    std::size_t const callsBefore = calls;
    std::size_t const blocksBefore = blocks;
    action();
    return {calls - callsBefore, static_cast<std::ptrdiff_t>(blocks - blocksBefore)};
}

/// While it lives, the non-throwing allocation fails.
class NoMemoryForExceptions
{
    bool const before = nothrowFails;

public:
    NoMemoryForExceptions() { nothrowFails = true; }
    NoMemoryForExceptions(NoMemoryForExceptions const&) = delete;
    NoMemoryForExceptions& operator=(NoMemoryForExceptions const&) = delete;
    ~NoMemoryForExceptions() { nothrowFails = before; }
};

/// While it lives, only so many allocations succeed.
class LittleMemory
{
public:
    explicit LittleMemory(std::size_t count) { untilFailure = count; }
    LittleMemory(LittleMemory const&) = delete;
    LittleMemory& operator=(LittleMemory const&) = delete;
    ~LittleMemory() { untilFailure = SIZE_MAX; }
};

/// While it lives, one allocation fails: the one after so many.
class OneFailure
{
public:
    explicit OneFailure(std::size_t count)
    {
        untilFailure = count;
        failsOnce = true;
    }
    OneFailure(OneFailure const&) = delete;
    OneFailure& operator=(OneFailure const&) = delete;
    ~OneFailure()
    {
        untilFailure = SIZE_MAX;
        failsOnce = false;
    }
};

/// Lets each allocation of the action fail in its turn, and expects the standard failure, nothing left behind, and
/// `unchanged` afterwards. Expects also that there were at least `least` allocations.
template <typename Action, typename Check>
void ExpectEachFailurePasses(std::size_t least, Action&& action, Check&& unchanged)
{
    for (std::size_t count = 0;; ++count)
    {
        ASSERT_LT(count, 1000U);
        bool failed = false;
        Use const use = Measure(
            [&]
            {
                LittleMemory const memory(count);
                try
                {
                    action();
                }
                catch (std::bad_alloc const&)
                {
                    failed = true;
                }
            });
        if (!failed)
        {
            EXPECT_GE(count, least);
            return;
        }
        EXPECT_EQ(use.blocks, 0) << "after " << count << " allocations";
        unchanged();
    }
}

template <typename Action>
void ExpectEachFailurePasses(std::size_t least, Action&& action)
{
    ExpectEachFailurePasses(least, action, [] {});
}

/// A stream that allocates nothing.
class FixedStream : private std::streambuf, public std::ostream
{
    std::array<char, 256> buffer = {};

public:
    FixedStream() : std::ostream(this) { setp(buffer.data(), buffer.data() + buffer.size()); }
    [[nodiscard]] std::string_view Text() const
    {
        return {buffer.data(), static_cast<std::size_t>(pptr() - buffer.data())};
    }
};

} // namespace bv::test
