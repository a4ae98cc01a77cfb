// SPDX-License-Identifier: Apache-2.0
#include <platform/ownfile.h>

// Nobody says whose a file is, so a name is free or it is none of ours.
Platform::Entry Platform::entryAt(const std::filesystem::path& path)
{
    std::error_code error;
    const auto type = std::filesystem::symlink_status(path, error).type();
    return type == std::filesystem::file_type::not_found ? Entry::Missing : Entry::Other;
}
