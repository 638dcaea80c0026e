#include "Interrupts.h"

#include <array>

#include <unistd.h>

namespace raytracer
{

namespace
{

constexpr std::array SIGNALS{SIGHUP, SIGINT, SIGTERM};

int exitCode = 0;

/// Calls only what a signal may interrupt anything with. The picture being written has no name yet, so that it goes
/// with the program.
extern "C" void End(int)
{
    constexpr char MESSAGE[] = "raytracer: interrupted\n";
    static_cast<void>(!write(STDERR_FILENO, MESSAGE, sizeof(MESSAGE) - 1));
    _exit(exitCode);
}

} // namespace

void EndWhenInterrupted(int code)
{
    exitCode = code;
    for (int const number : SIGNALS)
    {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = End;
        sigaction(number, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

NoInterrupts::NoInterrupts() : before_{}
{
    sigset_t signals;
    sigemptyset(&signals);
    for (int const number : SIGNALS)
        sigaddset(&signals, number);
    pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

NoInterrupts::~NoInterrupts()
{
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

} // namespace raytracer
