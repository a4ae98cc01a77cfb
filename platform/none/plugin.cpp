// SPDX-License-Identifier: Apache-2.0
#include <platform/plugin.h>

Platform::PluginFunction Platform::openPlugin(const char* part, const char* /*function*/)
{
    return {nullptr, std::string(part) + ": parts cannot be opened on this system"};
}
