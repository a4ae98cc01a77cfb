// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/systeminfo.h>

namespace aiengine {

/// The graphics devices of this machine in the order in which its drivers give them; empty when
/// there are none, or nobody who could tell.
std::vector<aiutils::DeviceInfo> graphicsDevices();

} // namespace aiengine
