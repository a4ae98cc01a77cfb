// SPDX-License-Identifier: Apache-2.0
#include "../console.h"

#include <cstdio>
#include <mutex>

#include <io.h>

namespace {

std::mutex s_mutex;
constinit int s_silencers = 0;
constinit int s_errorOutput = -1; // a duplicate of the real one while it is silenced

/// To be asked under the lock.
int realErrorOutput() { return s_errorOutput >= 0 ? s_errorOutput : _fileno(stderr); }

} // namespace

bool Console::errorsGoToTerminal()
{
    const std::lock_guard lock(s_mutex);
    return _isatty(realErrorOutput()) != 0;
}

void Console::writeErrors(const char* bytes, std::size_t size)
{
    const std::lock_guard lock(s_mutex);
    while (size > 0) {
        const int written = _write(realErrorOutput(), bytes, unsigned(size));
        if (written <= 0)
            return; // nobody is there to be told
        bytes += written;
        size -= std::size_t(written);
    }
}

Console::SilencedErrors::SilencedErrors()
{
    const std::lock_guard lock(s_mutex);
    if (s_silencers++ > 0 || _fileno(stderr) < 0) // a program without a console has none
        return;
    std::fflush(stderr);
    s_errorOutput = _dup(_fileno(stderr));
    std::FILE* const nowhere = std::fopen("NUL", "w");
    if (!nowhere)
        return;
    _dup2(_fileno(nowhere), _fileno(stderr));
    std::fclose(nowhere);
}

Console::SilencedErrors::~SilencedErrors()
{
    const std::lock_guard lock(s_mutex);
    if (--s_silencers > 0 || s_errorOutput < 0)
        return;
    std::fflush(stderr);
    _dup2(s_errorOutput, _fileno(stderr));
    _close(s_errorOutput);
    s_errorOutput = -1;
}
