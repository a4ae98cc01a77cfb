// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What only the operating system knows about the space of a file. Standard types only.
namespace FileSpace {

/// Gives disk space to the parts of the file at `path` that were never written. A writer that
/// ignores its errors leaves such holes on a full disk, and they would be read as zeros. Returns
/// the system's error when there is no space for them; 0 when there is, or when the file has no
/// holes.
int fillHoles(const char* path);

} // namespace FileSpace
