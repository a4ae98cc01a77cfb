// SPDX-License-Identifier: Apache-2.0
#include <platform/ownfile.h>

#include <windows.h>

// The owner is not examined: the temporary folder belongs to the user, and a file that an
// administrator creates belongs to the group of administrators.
Platform::Entry Platform::entryAt(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return GetLastError() == ERROR_FILE_NOT_FOUND ? Entry::Missing : Entry::Other;
    constexpr DWORD noRegularFile =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
    return attributes & noRegularFile ? Entry::Other : Entry::OwnFile;
}
