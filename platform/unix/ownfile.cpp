// SPDX-License-Identifier: Apache-2.0
#include <platform/ownfile.h>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

Platform::Entry Platform::entryAt(const std::filesystem::path& path)
{
    struct stat entry = {};
    if (lstat(path.c_str(), &entry) != 0)
        return errno == ENOENT ? Entry::Missing : Entry::Other;
    return S_ISREG(entry.st_mode) && entry.st_uid == geteuid() ? Entry::OwnFile : Entry::Other;
}
