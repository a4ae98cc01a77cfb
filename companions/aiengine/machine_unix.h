// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/machine.h>

namespace aiengine {

/// `processor()` from a file in the format of /proc/cpuinfo.
Processor processorIn(const char* cpuInfoFile);

/// `isAppleMachine()` from such a file and the one that holds the name of the machine's maker.
bool isAppleIn(const char* cpuInfoFile, const char* systemVendorFile);

} // namespace aiengine
