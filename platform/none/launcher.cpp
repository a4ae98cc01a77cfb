// SPDX-License-Identifier: Apache-2.0
#include <platform/launcher.h>

std::optional<Platform::Launcher> Platform::fileManagerLauncher(const std::string&, bool)
{
    return {};
}
