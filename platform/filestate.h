// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace Platform {

/// What a name leads to, links followed.
struct FileState
{
    enum class Kind {
        Unknown, ///< this system was not asked: the other field means nothing
        Missing, ///< nothing that this process can see
        Regular, ///< a regular file
        Other,   ///< a folder, a pipe, a device …
    };
    Kind kind = Kind::Unknown;
    /// When content or metadata changed last, in milliseconds since 1970 UTC, rounded as
    /// `QFileInfo` does; 0 for a missing file.
    std::int64_t changedMs = 0;
};

/// The state of what `path` (UTF-8) names, by one system call: Qt gives the same in three times the
/// time.
FileState fileState(const char* path);

/// A regular file that was opened for reading, or the reason why it was not.
struct OpenedFile
{
    int descriptor = -1; ///< of the C library; the caller closes it
    std::string error;   ///< the system's words; empty also where this system cannot be asked
};

/// Opens `path` (UTF-8) without waiting for anybody, and refuses what is no regular file: a pipe
/// may have taken the name since its state was read, and opening one waits for a writer.
OpenedFile openRegularFile(const char* path);

/// A name by which a library opens the file of `descriptor` once more, even if another file, or a
/// pipe, has taken the name of that file since. Empty on a system without such names.
std::string nameOfDescriptor(int descriptor);

} // namespace Platform
