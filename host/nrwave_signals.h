#pragma once

#include <csignal>

namespace nrwave
{

/// Starts a thread that no signal is given to: they go to the thread that works, which knows what is unfinished.
template <class start_t>
auto without_signals(const start_t& start)
{
    struct held_t
    {
        held_t()
        {
            sigset_t all;
            sigfillset(&all);
            pthread_sigmask(SIG_SETMASK, &all, &before);
        }
        ~held_t() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
        held_t(const held_t&) = delete;
        held_t& operator=(const held_t&) = delete;
        sigset_t before;
    };
    const held_t held;
    return start();
}

} // namespace nrwave
