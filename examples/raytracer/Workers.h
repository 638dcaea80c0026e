#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace raytracer
{

/// Threads that wait for work, so that the system is asked for them before anything is begun.
class Workers
{
public:
    /// @param count how many work at once; the thread that calls `Run` is one of them.
    /// @throws UserError when the system does not give so many.
    explicit Workers(unsigned count);

    /// Does the same work in every thread at once, and waits until all are done.
    /// @throws what the work threw first.
    void Run(std::function<void()> const& work);

private:
    void Serve(std::stop_token const& stop);
    void Do(std::function<void()> const& work);

    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::function<void()> const* work_ = nullptr;
    unsigned round_ = 0;
    std::size_t busy_ = 0;
    std::exception_ptr failure_;
    std::vector<std::jthread> threads_; // the last to be made and the first to be joined
};

} // namespace raytracer
