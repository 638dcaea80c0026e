#pragma once

/// @file
/// Threads that begin together.

#include <atomic>
#include <cstddef>
#include <thread>

namespace bv::test
{

/// Where so many threads wait for the last of them, without sleep. In the `std::latch` of GCC's library for Windows,
/// they have once waited for ever.
class StartingLine
{
    std::atomic<std::size_t> missing;

public:
    explicit StartingLine(std::size_t threads) : missing{threads} {}

    void ArriveAndWait()
    {
        --missing;
        while (missing > 0)
            std::this_thread::yield();
    }
};

} // namespace bv::test
