// SPDX-License-Identifier: Apache-2.0
#include <platform/launcher.h>

#include <filesystem>

// Absolute, so that no name is taken for an option or a URL.
std::optional<Platform::Launcher> Platform::fileManagerLauncher(const std::string& path,
                                                                bool isDirectory)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error)
        return {};
    const std::filesystem::path folder = isDirectory ? absolute : absolute.parent_path();
    return Launcher{"xdg-open", {folder.string()}};
}
