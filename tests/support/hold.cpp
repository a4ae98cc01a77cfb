// SPDX-License-Identifier: Apache-2.0
//
// hold FILE READY: opens FILE for itself alone, as some programs for Windows do, then creates
// READY, and holds FILE until READY is removed.
#include <windows.h>

int wmain(int, wchar_t** argv)
{
    const HANDLE file = CreateFileW(argv[1], GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    CloseHandle(CreateFileW(argv[2], GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                            nullptr));
    while (GetFileAttributesW(argv[2]) != INVALID_FILE_ATTRIBUTES)
        Sleep(10);
    return 0;
}
