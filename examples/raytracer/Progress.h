#pragma once

#include <iostream>
#include <mutex>
#include <optional>

#include <boost/timer/progress_display.hpp>

#include "bv/maths/Percentage.h"

namespace raytracer
{

/// How much is done, as an exact fraction, and a bar on the terminal that shows it, if there is a terminal.
class Progress
{
public:
    explicit Progress(bool visible);

    /// Adds a share; may be called by several threads at once.
    void Add(bv::maths::Percentage const& share);

private:
    std::mutex mutex_;
    bv::maths::Percentage done_;
    std::optional<boost::timer::progress_display> bar_;
};

} // namespace raytracer
