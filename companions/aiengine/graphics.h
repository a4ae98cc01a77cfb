// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/systeminfo.h>

#include <string>
#include <vector>

namespace aiengine {

/// The graphics devices of this machine, or why the drivers do not tell.
struct GraphicsDevices
{
    std::vector<aiutils::DeviceInfo> devices; ///< in the order of the drivers
    std::string failure;                      ///< empty where the drivers have answered
};

/// Asks the drivers in a process of their own, which may crash or hang: after 5 s that counts as no
/// answer. Where the program of that process is not installed or cannot be started, the drivers are
/// asked in this process.
GraphicsDevices graphicsDevices();

/// The graphics devices, from the drivers in this process; empty when there are none or no Vulkan
/// loader is installed.
std::vector<aiutils::DeviceInfo> devicesOfDrivers();

} // namespace aiengine
