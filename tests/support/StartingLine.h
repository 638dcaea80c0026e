#pragma once

/// @file
/// Threads that begin together.

#include <atomic>
#include <cstddef>
#include <thread>

namespace bv::test
{

/// Where so many threads wait for the last of them. `std::latch` does the same, but the one of GCC's library loses a
/// wake-up now and then on Windows, and the program then waits for ever.
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
