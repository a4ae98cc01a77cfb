// SPDX-License-Identifier: Apache-2.0
//
// sh.exe of the tests under wine: runs the system's shell with the same arguments. Wine starts
// programs of the system but does not tell when they end, so the shell writes its exit status into
// a file of the test's temporary folder.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

void replace(std::wstring& text, const wchar_t* from, const std::wstring& to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::wstring::npos; at += to.size())
        text.replace(at, 3, to);
}

/// `argument` in double quotes, as wine takes it apart again, with the system's names of files.
std::wstring quoted(std::wstring argument)
{
    const wchar_t* const prefix = _wgetenv(L"WINEPREFIX");
    replace(argument, L"Z:/", L"/");
    replace(argument, L"C:/", std::wstring(prefix ? prefix : L"") + L"/drive_c/");
    std::wstring result = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"') // those before it are doubled, and it gets one of its own
            result.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        result += character;
    }
    return result.append(backslashes, L'\\') + L"\" ";
}

int statusIn(const std::wstring& file)
{
    for (;; Sleep(2)) {
        std::FILE* const opened = _wfopen(file.c_str(), L"r");
        if (!opened)
            continue;
        int status = 255;
        std::fscanf(opened, "%d", &status);
        std::fclose(opened);
        DeleteFileW(file.c_str());
        return status;
    }
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder); // "Z:\tmp\…\"
    const std::wstring file = folder + (L"status-" + std::to_wstring(GetCurrentProcessId()));
    std::wstring unixFile = file.substr(2);
    for (wchar_t& character : unixFile)
        if (character == L'\\')
            character = L'/';
    std::wstring line =
        L"/bin/sh -c \"f=$1; shift; sh \\\"$@\\\"; echo $? >$f.new; mv $f.new $f\" sh " +
        quoted(unixFile);
    for (int i = 1; i < argc; ++i)
        line += quoted(argv[i]);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &start, &process))
        return 127;
    return statusIn(file);
}
