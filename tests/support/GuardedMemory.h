#pragma once

/// @file
/// Memory behind which there is none: a program that reads or writes past its end is stopped there.

#if defined __linux__

#include <cstddef>
#include <span>

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

namespace bv::test
{

/// The pages that hold so many bytes, and one behind them that nothing may touch.
class GuardedMemory
{
    std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::size_t size;
    std::byte* begin;

public:
    explicit GuardedMemory(std::size_t bytes)
        : size{(bytes + page - 1) / page * page},
          begin{static_cast<std::byte*>(
              mmap(nullptr, size + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))}
    {
        EXPECT_NE(static_cast<void*>(begin), MAP_FAILED);
        EXPECT_EQ(mprotect(begin + size, page, PROT_NONE), 0);
    }
    GuardedMemory(GuardedMemory const&) = delete;
    GuardedMemory& operator=(GuardedMemory const&) = delete;
    ~GuardedMemory() { munmap(begin, size + page); }

    /// As many objects as wanted, of which the last ends where the memory ends. They are all zeros at first.
    template <typename Object>
    [[nodiscard]] std::span<Object> Last(std::size_t count) const
    {
        return {reinterpret_cast<Object*>(begin + size) - count, count};
    }
};

} // namespace bv::test

#endif
