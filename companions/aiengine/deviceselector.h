// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/aiengine_export.h>

namespace aiengine {

/// The processing devices. The identifier of a graphics device is its place in
/// `aiutils::SystemInfo::getGPUList()`.
class AIENGINE_EXPORT DeviceSelector
{
public:
    /// The one object of the process. Its devices are there once it was called with
    /// `createWhenNeeded`; before that there are none.
    static DeviceSelector& GetInstance(bool createWhenNeeded);

    /// The video memory, in GiB, of the device `deviceId`; -1 when there is no such device.
    double deviceMemory(int deviceId);

private:
    DeviceSelector();
};

} // namespace aiengine
