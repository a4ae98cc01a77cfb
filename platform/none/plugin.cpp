// SPDX-License-Identifier: Apache-2.0
#include <platform/plugin.h>

Platform::PluginFunction Platform::openPlugin(const char* plugin, const char* /*function*/)
{
    return {nullptr, std::string(plugin) + ": plug-ins cannot be opened on this system"};
}

std::string Platform::installedFile(const char* /*name*/) { return {}; }
