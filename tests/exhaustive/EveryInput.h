#pragma once

/// @file
/// Work on every input that there is, in as many threads as the processor has cores.

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace bv::test
{

/// Whether every input is tried, as `tools/test --exhaustive` has it. Otherwise a few are, evenly spread.
[[nodiscard]] inline bool IsExhaustive()
{
    return std::getenv("BV_EXHAUSTIVE") != nullptr;
}

/// What came of many inputs.
class Findings
{
    std::uint64_t tried = 0;
    std::uint64_t wrong = 0;
    std::uint64_t counted = 0;
    std::string firstWrong;

public:
    /// Notes an input, and describes it if it is the first one that came out wrong.
    template <typename Describe>
    void Note(bool isRight, Describe const& describe)
    {
        ++tried;
        if (isRight) [[likely]]
            return;
        if (wrong++ == 0)
            firstWrong = describe();
    }
    /// Counts what a test wants to know the number of.
    void Count(bool isOne) { counted += isOne ? 1 : 0; }
    Findings& operator+=(Findings const& later)
    {
        if (wrong == 0)
            firstWrong = later.firstWrong;
        tried += later.tried;
        wrong += later.wrong;
        counted += later.counted;
        return *this;
    }

    [[nodiscard]] std::uint64_t Tried() const { return tried; }
    [[nodiscard]] std::uint64_t Wrong() const { return wrong; }
    [[nodiscard]] std::uint64_t Counted() const { return counted; }
    [[nodiscard]] std::string const& FirstWrong() const { return firstWrong; }
};

/// What `check(number, findings)` finds for the numbers from 0 to below a size, or for a few of them. The check is
/// copied for each part of the numbers, and may so keep something from one number to the next.
template <typename Check>
[[nodiscard]] Findings TryEach(std::uint64_t size, Check const& check)
{
    constexpr std::uint64_t FEW = 4099; // a prime: the numbers end in any digits
    constexpr std::uint64_t PART = std::uint64_t{1} << 20;
    std::uint64_t const step = IsExhaustive() ? 1 : FEW;
    std::uint64_t const count = (size + step - 1) / step;
    auto const parts = static_cast<std::size_t>((count + PART - 1) / PART);
    std::vector<Findings> found(parts);
    std::atomic<std::size_t> next = 0;
    auto const tryParts = [&]
    {
        for (std::size_t part = next++; part < parts; part = next++)
        {
            Findings findings; // not in the vector, where threads would wait for each other's neighbours
            Check own = check;
            std::uint64_t const end = std::min((part + 1) * PART, count);
            for (std::uint64_t index = part * PART; index < end; ++index)
                own(index * step, findings);
            found[part] = findings;
        }
    };
    std::vector<std::thread> others;
    for (std::size_t threads = 1; threads < std::min<std::size_t>(parts, std::thread::hardware_concurrency());
         ++threads)
        others.emplace_back(tryParts);
    tryParts();
    for (std::thread& thread : others)
        thread.join();

    Findings all;
    for (Findings const& part : found)
        all += part;
    return all;
}

/// Nothing was wrong, and nothing was left out.
inline void ExpectAllRight(Findings const& findings, std::uint64_t size)
{
    EXPECT_EQ(findings.Wrong(), 0U) << "the first is " << findings.FirstWrong();
    EXPECT_GE(findings.Tried(), IsExhaustive() ? size : size / 5000);
    EXPECT_LE(findings.Tried(), size);
    testing::Test::RecordProperty("tried", std::to_string(findings.Tried()));
}

} // namespace bv::test
