#include "Progress.h"

namespace raytracer
{

namespace
{

constexpr unsigned long STEPS = 1000;

} // namespace

Progress::Progress(bool visible)
{
    if (visible)
        bar_.emplace(STEPS, std::cerr, "");
}

void Progress::Add(bv::maths::Percentage const& share)
{
    std::scoped_lock const lock(mutex_);
    done_ += share;
    if (!bar_)
        return;
    auto const steps = static_cast<unsigned long>(static_cast<float>(done_) * static_cast<float>(STEPS));
    *bar_ += steps - bar_->count();
}

} // namespace raytracer
