// SPDX-License-Identifier: Apache-2.0
#include <aiengine/graphics.h>

std::vector<aiutils::DeviceInfo> aiengine::devicesOfDrivers() { return {}; }
