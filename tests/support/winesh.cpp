// SPDX-License-Identifier: Apache-2.0
//
// sh.exe of the tests under wine: runs the system's shell with the same arguments. Wine starts
// programs of the system, but does not tell when they end and gives them no pipe for their output.
// So the shell writes its output, its process and its exit status into files of the prefix.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

#include <fcntl.h>
#include <io.h>

namespace {

void replace(std::wstring& text, const wchar_t* from, const std::wstring& to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::wstring::npos; at += to.size())
        text.replace(at, std::wcslen(from), to);
}

std::wstring prefix()
{
    const wchar_t* const folder = _wgetenv(L"WINEPREFIX");
    return folder ? folder : L"";
}

/// `text` with the system's names of files.
std::wstring forSystem(std::wstring text)
{
    replace(text, L"Z:/", L"/");
    replace(text, L"C:/", prefix() + L"/drive_c/");
    replace(text, L"//server/", prefix() + L"/dosdevices/unc/server/");
    return text;
}

/// `argument` in double quotes, as wine takes it apart again.
std::wstring quoted(const std::wstring& argument)
{
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

/// What the file holds, which is removed; empty when there is none.
std::string taken(const std::wstring& file)
{
    std::string bytes;
    if (std::FILE* const opened = _wfopen(file.c_str(), L"rb")) {
        for (int byte; (byte = std::fgetc(opened)) != EOF;)
            bytes += char(byte);
        std::fclose(opened);
        DeleteFileW(file.c_str());
    }
    return bytes;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    const std::wstring file = prefix() + L"/shell-" + std::to_wstring(GetCurrentProcessId());
    for (const wchar_t* const name : {L"TMPDIR", L"ANSWER"})
        if (const wchar_t* const value = _wgetenv(name))
            SetEnvironmentVariableW(name, forSystem(value).c_str());
    // LAST is a process of wine's, and its shell another one of the system.
    std::wstring line =
        L"/bin/sh -c \"f=$1; shift; echo $$ >$f.process; LAST=$(cat ${f%-*}-$LAST.process 2>&-); "
        L"export LAST; sh \\\"$@\\\" >$f.output; echo $? >$f.new; mv $f.new $f.status\" sh " +
        quoted(file);
    for (int i = 1; i < argc; ++i)
        line += quoted(forSystem(argv[i]));
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &start, &process))
        return 127;
    std::string status;
    while ((status = taken(L"Z:" + file + L".status")).empty())
        Sleep(2);
    const std::string output = taken(L"Z:" + file + L".output");
    _setmode(_fileno(stdout), _O_BINARY);
    std::fwrite(output.data(), 1, output.size(), stdout);
    return std::atoi(status.c_str());
}
