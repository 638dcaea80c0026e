#pragma once

#include <csignal>

namespace raytracer
{

/// From here on the signals that end a program make it say so and end with this code, except those that whoever started
/// it had set to be ignored; and a file that grows too large is an error like any other that can be told.
void EndWhenInterrupted(int code);

/// While it lives, the calling thread is not interrupted, nor are threads that it starts then. What comes meanwhile
/// waits.
class NoInterrupts
{
public:
    NoInterrupts();
    NoInterrupts(NoInterrupts const&) = delete;
    NoInterrupts& operator=(NoInterrupts const&) = delete;
    ~NoInterrupts();

private:
    sigset_t before_;
};

} // namespace raytracer
