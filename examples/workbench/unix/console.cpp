// SPDX-License-Identifier: Apache-2.0
#include "../console.h"

#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

std::vector<std::string> Console::arguments(int argc, char** argv) { return {argv, argv + argc}; }

bool Console::errorsGoToTerminal()
{
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && terminal && std::strcmp(terminal, "dumb") != 0;
}

int Console::takeStandardOutput()
{
    const int descriptor = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    return descriptor;
}
