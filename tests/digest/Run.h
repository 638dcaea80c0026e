#pragma once

/// @file
/// How a topic is run: with a hash and numbers of its own, so that a change of one leaves the others alone.

#include <cstdio>
#include <string>

#include "Digest.h"
#include "Workload.h"

namespace digest
{

/// Prints a line, `name hash`.
template <typename Topic>
void Run(std::string const& name, Topic topic)
{
    Digest digest;
    Workload work(2026);
    topic(digest, work);
    std::printf("%s %016llx\n", name.c_str(), static_cast<unsigned long long>(digest.GetHash()));
}

/// The same for the two precisions.
template <typename Single, typename Double>
void RunBoth(std::string const& name, Single single, Double twice)
{
    Run(name + ".float", single);
    Run(name + ".double", twice);
}

} // namespace digest
