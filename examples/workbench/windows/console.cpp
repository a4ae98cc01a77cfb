// SPDX-License-Identifier: Apache-2.0
#include "../console.h"

#include <cstdio>
#include <utility>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

std::vector<std::string> Console::arguments(int, char**)
{
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 0; wide && i < count; ++i) {
        const int bytes =
            WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, nullptr, 0, nullptr, nullptr);
        std::string utf8(std::size_t(bytes), '\0');
        WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, utf8.data(), bytes, nullptr, nullptr);
        utf8.pop_back(); // the terminator
        arguments.push_back(std::move(utf8));
    }
    LocalFree(wide);
    return arguments;
}

bool Console::errorsGoToTerminal() { return _isatty(_fileno(stderr)) != 0; }

int Console::takeStandardOutput()
{
    const int descriptor = _dup(_fileno(stdout));
    _setmode(descriptor, _O_BINARY); // pixels follow lines
    _dup2(_fileno(stderr), _fileno(stdout));
    return descriptor;
}
