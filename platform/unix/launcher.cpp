// SPDX-License-Identifier: Apache-2.0
#include <platform/launcher.h>

#include <filesystem>

std::optional<Platform::Launcher> Platform::fileManagerLauncher(const std::string& path,
                                                                bool isDirectory)
{
    return Launcher{"xdg-open",
                    {isDirectory ? path : std::filesystem::path(path).parent_path().string()}};
}
