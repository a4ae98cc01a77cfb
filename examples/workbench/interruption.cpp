// SPDX-License-Identifier: Apache-2.0
#include "interruption.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t s_signal = 0;

extern "C" void note(int signal)
{
    s_signal = signal;
    std::signal(signal, SIG_DFL);
}

/// One that is ignored stays so, as for a program in the background.
void catchSignal(int signal)
{
    if (std::signal(signal, note) == SIG_IGN)
        std::signal(signal, SIG_IGN);
}

} // namespace

void Interruption::install()
{
    catchSignal(SIGINT);
    catchSignal(SIGTERM);
#ifdef SIGHUP
    catchSignal(SIGHUP);
#endif
}

bool Interruption::isWanted() { return s_signal != 0; }

void Interruption::obey() { std::raise(s_signal); }
