// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

/// How only the operating system can open a file. Standard types only.
namespace RegularFile {

struct Opened
{
    int descriptor;   ///< belongs to the caller; -1 where the system has none
    std::string name; ///< by which others open the same file while the descriptor is open
};

/// Opens the regular file at `path` for reading, without waiting for another program. Nothing where
/// it is none or cannot be opened.
std::optional<Opened> open(const std::string& path);

} // namespace RegularFile
