// SPDX-License-Identifier: Apache-2.0
#include "../console.h"

#include <algorithm>
#include <cerrno>
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

/// To be asked under the lock.
int realErrorOutput() { return s_errorOutput >= 0 ? s_errorOutput : STDERR_FILENO; }

} // namespace

bool Console::errorsGoToTerminal()
{
    const char* const terminal = std::getenv("TERM");
    const std::lock_guard lock(s_mutex);
    return isatty(realErrorOutput()) == 1 && terminal && std::strcmp(terminal, "dumb") != 0;
}

void Console::writeErrors(const char* bytes, std::size_t size)
{
    const std::lock_guard lock(s_mutex);
    while (size > 0) {
        const ssize_t written = write(realErrorOutput(), bytes, size);
        if (written < 0 && errno != EINTR)
            return; // nobody is there to be told
        bytes += std::max<ssize_t>(written, 0);
        size -= std::size_t(std::max<ssize_t>(written, 0));
    }
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
