// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/systeminfo.h>

namespace aiengine {

/// The graphics devices of this machine in the order of its drivers; empty when there are none or
/// no Vulkan loader is installed.
std::vector<aiutils::DeviceInfo> graphicsDevices();

} // namespace aiengine
