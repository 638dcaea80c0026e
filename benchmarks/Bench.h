#pragma once

/// @file
/// What every benchmark shares: the numbers to work on, and loops over arrays whose every result is consumed.
///
/// A row is named `topic/operation/precision/library`; the time of a row is that of one item.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "Counting.h"

namespace bench
{

/// Items in an array of small things (vectors, boxes, rays), chosen so that three arrays fit the second-level cache.
inline constexpr std::size_t COUNT = 1024;
/// Items in an array of matrices.
inline constexpr std::size_t MATRIX_COUNT = 256;

/// The same numbers for every library: uniform in [low, high), each exactly a `float`.
inline std::vector<double> Numbers(std::uint32_t seed, std::size_t count, double low, double high)
{
    std::mt19937 generator(seed);
    std::vector<double> numbers(count);
    for (double& number : numbers)
        number = static_cast<double>(static_cast<float>(low + (high - low) * (generator() * 0x1p-32)));
    return numbers;
}

/// Makes an array of a library's own type from groups of `size` numbers: `make(double const* group)`.
template <typename Make>
auto Build(std::vector<double> const& numbers, std::size_t size, Make make)
{
    std::vector<decltype(make(numbers.data()))> items;
    items.reserve(numbers.size() / size);
    for (std::size_t i = 0; i + size <= numbers.size(); i += size)
        items.push_back(make(numbers.data() + i));
    return items;
}

/// One pass over a row's items. A function of its own, so that what is timed and what is counted is the same code.
template <typename Run>
[[gnu::noinline]] void Pass(Run& run)
{
    benchmark::ClobberMemory();
    run();
    benchmark::ClobberMemory();
}

/// A row that calls `run` again and again; each call works on `items` items.
template <typename Run>
void AddRun(std::string const& name, std::size_t items, Run run)
{
    AddCount(name, items, [=]() mutable { Pass(run); });
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state) mutable
                                 {
                                     for (auto _ : state)
                                         Pass(run);
                                     state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
                                 });
}

/// A row that writes `out[i] = function(in[i]...)`. The arrays lie in memory that the compiler must take for read and
/// written by others, so that nothing is hoisted and nothing dropped.
template <typename Function, typename First, typename... Rest>
void AddMap(std::string const& name, Function function, std::vector<First> first, std::vector<Rest>... rest)
{
    using Out = std::decay_t<decltype(function(first[0], rest[0]...))>;
    auto const in =
        std::make_shared<std::tuple<std::vector<First>, std::vector<Rest>...>>(std::move(first), std::move(rest)...);
    std::size_t const count = std::get<0>(*in).size();
    std::shared_ptr<Out[]> const out(new Out[count]());
    AddRun(name, count,
           [=]
           {
               Out* const results = out.get();
               benchmark::DoNotOptimize(results);
               std::apply(
                   [&](auto const&... arrays)
                   {
                       for (std::size_t i = 0; i < count; ++i)
                           results[i] = function(arrays[i]...);
                   },
                   *in);
           });
}

/// A row that writes `out[i] = function(object, in[i])`, where the loop has the object to itself, as a local variable:
/// nothing that is written can change it.
template <typename Object, typename Function, typename In>
void AddMapBy(std::string const& name, Object const& object, Function function, std::vector<In> in)
{
    using Out = std::decay_t<decltype(function(object, in[0]))>;
    auto const input = std::make_shared<std::vector<In>>(std::move(in));
    std::shared_ptr<Out[]> const out(new Out[input->size()]());
    AddRun(name, input->size(),
           [=]
           {
               Object const local = object;
               In const* const items = input->data();
               Out* const results = out.get();
               benchmark::DoNotOptimize(results);
               for (std::size_t i = 0; i < input->size(); ++i)
                   results[i] = function(local, items[i]);
           });
}

/// A row that folds an array into one value: `total = function(total, in[i]...)`.
template <typename Total, typename Function, typename First, typename... Rest>
void AddFold(std::string const& name, Total start, Function function, std::vector<First> first,
             std::vector<Rest>... rest)
{
    auto const in =
        std::make_shared<std::tuple<std::vector<First>, std::vector<Rest>...>>(std::move(first), std::move(rest)...);
    std::size_t const count = std::get<0>(*in).size();
    AddRun(name, count,
           [=]
           {
               Total total = start;
               std::apply(
                   [&](auto const&... arrays)
                   {
                       for (std::size_t i = 0; i < count; ++i)
                           total = function(total, arrays[i]...);
                   },
                   *in);
               Total const result = total; // the total itself may stay in registers
               benchmark::DoNotOptimize(result);
           });
}

template <typename T>
inline constexpr char const* PRECISION = sizeof(T) == sizeof(float) ? "float" : "double";

/// `topic/operation/precision/library`
template <typename T>
std::string Name(std::string const& operation, std::string const& library)
{
    return operation + '/' + PRECISION<T> + '/' + library;
}

} // namespace bench
