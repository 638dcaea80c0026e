#pragma once

/// @file
/// Counts the instructions of every row, in the loop that is timed. What the library chooses by the processor is what
/// it would choose on the one that callgrind shows, which has AVX2 and no AVX-512.

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
/// @return false where callgrind does not run this program.
bool CountInstructions(std::string const& filter);

} // namespace bench
