#pragma once

/// @file
/// What a row computes, as plain numbers: the libraries of a row must agree on them, or their times say nothing.

#include <functional>
#include <string>
#include <vector>

namespace bench
{

/// Adds the numbers that one pass over a row's work gives; `name` is the row's.
void AddNumbers(std::string const& name, std::function<std::vector<double>()> numbers);

/// Compares the numbers of each row's libraries with this library's, within a tolerance for their precision, and says
/// on the error stream which differ.
/// @return whether all agree.
bool DoNumbersAgree();

} // namespace bench
