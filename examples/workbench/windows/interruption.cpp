// SPDX-License-Identifier: Apache-2.0
#include "../interruption.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t s_signal = 0;

extern "C" void note(int signal) { s_signal = signal; } // a second one ends the program

} // namespace

void Interruption::ignoreWriteSignals() {}

void Interruption::install()
{
    std::signal(SIGINT, note);
    std::signal(SIGTERM, note);
}

void Interruption::ignore()
{
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
}

bool Interruption::isWanted() { return s_signal != 0; }

void Interruption::obey()
{
    std::signal(s_signal, SIG_DFL);
    std::raise(s_signal);
}
