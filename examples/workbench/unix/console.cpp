// SPDX-License-Identifier: Apache-2.0
#include "../console.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include <fcntl.h>
#include <unistd.h>

namespace {

std::mutex s_mutex;
constinit int s_silencers = 0;
constinit int s_errorOutput = -1; // a duplicate of the real one while it is silenced

} // namespace

bool Console::errorsGoToTerminal()
{
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && terminal && std::strcmp(terminal, "dumb") != 0;
}

Console::SilencedErrors::SilencedErrors()
{
    const std::lock_guard lock(s_mutex);
    if (s_silencers++ > 0)
        return;
    std::fflush(stderr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    s_errorOutput = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    if (s_errorOutput >= 0)
        dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

Console::SilencedErrors::~SilencedErrors()
{
    const std::lock_guard lock(s_mutex);
    if (--s_silencers > 0 || s_errorOutput < 0)
        return;
    std::fflush(stderr);
    dup2(s_errorOutput, STDERR_FILENO);
    close(s_errorOutput);
    s_errorOutput = -1;
}
