// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace Platform {

/// What has a name: nothing, a regular file of this user's own, or anything else (a link, whatever
/// it leads to, a folder, a pipe, another user's file, or something that cannot be asked for).
enum class Entry { Missing, OwnFile, Other };

/// What has the name `path`. Links are not followed.
Entry entryAt(const std::filesystem::path& path);

} // namespace Platform
