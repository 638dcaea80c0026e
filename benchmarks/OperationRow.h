#pragma once

/// @file
/// A row of one operation, and what its libraries must agree on.

#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Agreement.h"
#include "Bench.h"

namespace bench
{

/// A row that writes `out[i] = function(in[i]...)`. `Library` has a `NAME` and `append`, which gives the numbers of a
/// result; they come from the pass that is timed, so that the function is inlined into one place.
template <typename T, typename Library, typename Function, typename First, typename... Rest>
void AddOperation(std::string const& operation, Function function, std::vector<First> first, std::vector<Rest>... rest)
{
    using Out = std::decay_t<decltype(function(first[0], rest[0]...))>;
    std::string const name = Name<T>(operation, Library::NAME);
    std::size_t const count = first.size();
    auto const out = std::make_shared<std::vector<Out>>(count);
    auto run = [=, in = std::make_tuple(std::move(first), std::move(rest)...)]
    {
        Out* const results = out->data();
        benchmark::DoNotOptimize(results);
        std::apply(
            [&](auto const&... arrays)
            {
                for (std::size_t i = 0; i < count; ++i)
                    results[i] = function(arrays[i]...);
            },
            in);
    };
    AddRun(name, count, run);
    AddNumbers(name,
               [=]() mutable
               {
                   Pass(run);
                   std::vector<double> numbers;
                   for (Out const& result : *out)
                       Library::append(numbers, result);
                   return numbers;
               });
}

} // namespace bench
