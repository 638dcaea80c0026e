#pragma once

/// @file
/// The numbers that the rows of scalar functions work on, for the library and its peers alike.

#include <cmath>

#include "Bench.h"

namespace bench
{

/// How the two numbers of a pair lie to each other.
enum class Pairs
{
    EQUAL,     ///< the same
    NEAR,      ///< a few representable values apart
    DIFFERENT, ///< unrelated
    MIXED      ///< any of the three, in no order
};

inline constexpr std::pair<Pairs, char const*> PAIRS[] = {
    {Pairs::EQUAL, "equal"}, {Pairs::NEAR, "near"}, {Pairs::DIFFERENT, "different"}, {Pairs::MIXED, "mixed"}};

/// The first and the second numbers of the pairs.
template <typename T>
std::pair<std::vector<T>, std::vector<T>> MakePairs(Pairs kind)
{
    std::vector<double> const first = Numbers(21, COUNT, -100, 100);
    std::vector<double> const second = Numbers(22, COUNT, -100, 100);
    std::vector<double> const choice = Numbers(23, COUNT, 0, 3);
    std::pair<std::vector<T>, std::vector<T>> pairs;
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        Pairs const here = kind == Pairs::MIXED ? static_cast<Pairs>(static_cast<int>(choice[i])) : kind;
        T const a = static_cast<T>(first[i]);
        T b = here == Pairs::DIFFERENT ? static_cast<T>(second[i]) : a;
        if (here == Pairs::NEAR)
            for (int step = 0; step < 5; ++step)
                b = std::nextafter(b, T{1000});
        pairs.first.push_back(a);
        pairs.second.push_back(b);
    }
    return pairs;
}

/// Integers of every magnitude up to 31 bits, none of them 0.
inline std::vector<unsigned int> Integers()
{
    std::vector<double> const bits = Numbers(24, COUNT, 0, 31);
    return Build(bits, 1, [](double const* number) { return static_cast<unsigned int>(std::exp2(*number)); });
}

/// Lower edge, upper edge, value: the value lies before, between and behind the edges, in no order.
template <typename T>
struct StepArguments
{
    std::vector<T> low, high, value;

    StepArguments()
    {
        std::vector<double> const lows = Numbers(25, COUNT, 0, 1);
        std::vector<double> const widths = Numbers(26, COUNT, 0.5, 1);
        std::vector<double> const values = Numbers(27, COUNT, -0.5, 2.5);
        for (std::size_t i = 0; i < COUNT; ++i)
        {
            low.push_back(static_cast<T>(lows[i]));
            high.push_back(static_cast<T>(lows[i] + widths[i]));
            value.push_back(static_cast<T>(values[i]));
        }
    }
};

} // namespace bench
