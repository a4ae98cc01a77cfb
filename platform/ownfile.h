// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace Platform {

/// What exists under a name: nothing, a regular file that belongs to this user, or anything else (a
/// link, whatever its target, a folder, a pipe, another user's file, an entry that the system does
/// not describe).
enum class Entry { Missing, OwnFile, Other };

/// What exists at `path`. Links are not followed. On a system that does not tell the owner, every
/// regular file counts as the user's.
Entry entryAt(const std::filesystem::path& path);

} // namespace Platform
