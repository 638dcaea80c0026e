#pragma once

/// @file
/// Counts the instructions of every row, in the very code that is timed.

#include <cstddef>
#include <functional>
#include <string>

namespace bench
{

/// Adds a row that CountInstructions() goes through; each call of `run` works on `items` items.
void AddCount(std::string const& name, std::size_t items, std::function<void()> run);

/// Runs every row whose name matches the filter twice, and has callgrind count the second run. Callgrind must have been
/// started with `--collect-atstart=no`; each row is a dump of its own, triggered by "ITEMS NAME". Rows with an
/// instruction that callgrind does not know are left out.
/// @return how many rows were counted; 0 where callgrind does not run this program.
std::size_t CountInstructions(std::string const& filter);

} // namespace bench
