// SPDX-License-Identifier: Apache-2.0
#include "../console.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

bool Console::errorsGoToTerminal() { return _isatty(_fileno(stderr)) != 0; }

int Console::takeStandardOutput()
{
    const int descriptor = _dup(_fileno(stdout));
    _setmode(descriptor, _O_BINARY); // pixels follow lines
    _dup2(_fileno(stderr), _fileno(stdout));
    return descriptor;
}
