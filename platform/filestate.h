// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace Platform {

/// What a name leads to, links followed.
struct FileState
{
    enum class Kind {
        Unknown, ///< nobody was asked: the other field means nothing
        Missing, ///< nothing that this process can ask for
        Regular, ///< a regular file
        Other,   ///< a folder, a pipe, a device …
    };
    Kind kind = Kind::Unknown;
    /// When content or metadata changed last, in milliseconds since 1970 UTC, rounded as
    /// `QFileInfo` does; 0 where nothing is there.
    std::int64_t changedMs = 0;
};

/// The state of what `path` (UTF-8) names, by one question to the system: Qt answers as well, but
/// in three times the time.
FileState fileState(const char* path);

} // namespace Platform
