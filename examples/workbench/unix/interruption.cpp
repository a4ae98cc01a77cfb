// SPDX-License-Identifier: Apache-2.0
#include "../interruption.h"

#include <csignal>

namespace {

constexpr int patience = 2; // further signals that are only noted
constexpr int ending[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t s_signal = 0;
volatile std::sig_atomic_t s_count = 0;

extern "C" void note(int signal)
{
    s_signal = signal;
    s_count = s_count + 1;
    if (s_count > patience)
        std::signal(signal, SIG_DFL);
}

} // namespace

void Interruption::ignoreWriteSignals()
{
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

void Interruption::install()
{
    for (const int signal : ending) {
        struct sigaction action
        {};
        // One that is ignored stays so, as for a program in the background.
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

void Interruption::ignore()
{
    for (const int signal : ending)
        std::signal(signal, SIG_IGN);
}

bool Interruption::isWanted() { return s_signal != 0; }

void Interruption::obey()
{
    std::signal(s_signal, SIG_DFL);
    std::raise(s_signal);
}
