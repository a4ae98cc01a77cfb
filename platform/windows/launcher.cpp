// SPDX-License-Identifier: Apache-2.0
#include <platform/launcher.h>

std::optional<Platform::Launcher> Platform::fileManagerLauncher(const std::string& path,
                                                                bool isDirectory)
{
    if (isDirectory)
        return Launcher{"explorer", {path}};
    return Launcher{"explorer", {"/select,", path}};
}
