#pragma once

/// @file
/// How a topic is run: with a hash and numbers of its own, so that a change of one leaves the others alone.

#include <cstdio>
#include <string>
#include <type_traits>

#include "Digest.h"
#include "Workload.h"

namespace digest
{

/// Prints a line, `name.part.precision hash`, for each part of the topic; one that has no parts takes a single hash.
template <typename Topic>
void Run(std::string const& name, Topic topic, std::string const& precision = "")
{
    Digests digests;
    Workload work(2026);
    if constexpr (std::is_invocable_v<Topic, Digest&, Workload&>)
        topic(digests[""], work);
    else
        topic(digests, work);
    for (auto const& [part, digest] : digests)
        std::printf("%s%s%s%s %016llx\n", name.c_str(), part.empty() ? "" : ".", std::string(part).c_str(),
                    precision.c_str(), static_cast<unsigned long long>(digest.GetHash()));
}

/// The same for the two precisions.
template <typename Single, typename Double>
void RunBoth(std::string const& name, Single single, Double twice)
{
    Run(name, single, ".float");
    Run(name, twice, ".double");
}

} // namespace digest
