// SPDX-License-Identifier: Apache-2.0
#include <platform/ownfile.h>

// The standard library does not tell the owner of a file, so every regular file counts as the
// user's own.
Platform::Entry Platform::entryAt(const std::filesystem::path& path)
{
    std::error_code error;
    switch (std::filesystem::symlink_status(path, error).type()) {
    case std::filesystem::file_type::not_found:
        return Entry::Missing;
    case std::filesystem::file_type::regular:
        return Entry::OwnFile;
    default:
        return Entry::Other;
    }
}
