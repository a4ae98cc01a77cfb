// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

namespace Platform {

/// Opens the file `path` (UTF-8) for writing as `QFile` does, creates or empties it, and returns
/// its descriptor, but never waits for another program, neither now nor when the descriptor is
/// written to: a pipe that no program reads cannot be opened. -1 when the file cannot be opened; no
/// value on a system without such a call.
std::optional<int> openForWriting(const char* path);

enum class Stored { Yes, No, Unknown };

/// Whether all that was written to `descriptor` has reached the storage, for which the call waits.
/// Network and FUSE file systems report some errors (a quota, a lost server) only here. `Unknown`
/// on a system, or for a file, without such a call.
Stored isStored(int descriptor);

} // namespace Platform
