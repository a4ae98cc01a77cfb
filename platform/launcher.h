// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// A program, found through the search path, and its arguments, which never pass through a shell.
/// All texts are UTF-8.
struct Launcher
{
    std::string program;
    std::vector<std::string> arguments;
};

/// The program that shows the existing file or folder `path` (UTF-8, absolute, native separators)
/// in the file manager: the folder of a file, or `path` itself when `isDirectory`. Empty where no
/// such program is known. An absolute path cannot be mistaken for an option or a URL.
std::optional<Launcher> fileManagerLauncher(const std::string& path, bool isDirectory);

} // namespace Platform
