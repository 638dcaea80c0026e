#pragma once

#include <string>
#include <string_view>

namespace raytracer
{

/// A word of a file or of the command line for a message: in quotes, in printable ASCII, and the middle of a long one
/// left out.
std::string Quote(std::string_view word);

/// Prints what went wrong on standard error, as one line whatever it holds.
void Complain(std::string const& message);

} // namespace raytracer
