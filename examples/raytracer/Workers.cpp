#include "Workers.h"

#include <string>
#include <system_error>
#include <utility>

#include "Interrupts.h"
#include "UserError.h"

namespace raytracer
{

Workers::Workers(unsigned count)
{
    NoInterrupts const guard; // these go to the first thread
    threads_.reserve(count - 1);
    try
    {
        while (threads_.size() + 1 < count)
            threads_.emplace_back([this](std::stop_token const& stop) { Serve(stop); });
    }
    catch (std::system_error const& error)
    {
        throw UserError("--threads: the system gives only " + std::to_string(threads_.size() + 1) + " of " +
                        std::to_string(count) + ": " + error.code().message());
    }
}

void Workers::Run(std::function<void()> const& work)
{
    {
        std::scoped_lock const lock(mutex_);
        work_ = &work;
        busy_ = threads_.size();
        failure_ = nullptr;
        ++round_;
    }
    changed_.notify_all();
    Do(work);
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return busy_ == 0; });
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
}

void Workers::Serve(std::stop_token const& stop)
{
    for (unsigned done = 0;; ++done)
    {
        std::unique_lock lock(mutex_);
        if (!changed_.wait(lock, stop, [&] { return round_ != done; }))
            return;
        lock.unlock();
        Do(*work_);
        lock.lock();
        if (--busy_ == 0)
            changed_.notify_all();
    }
}

void Workers::Do(std::function<void()> const& work)
{
    try
    {
        work();
    }
    catch (...)
    {
        std::scoped_lock const lock(mutex_);
        if (!failure_)
            failure_ = std::current_exception();
    }
}

} // namespace raytracer
