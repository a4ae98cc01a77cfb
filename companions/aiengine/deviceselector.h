// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/aiengine_export.h>

/// The processing devices of the machine.
///
/// @since 1.0
namespace aiengine {

/// The processing devices. The identifier of a graphics device is its index in
/// `aiutils::SystemInfo::getGPUList()`. CMake target `imageutils::aiengine`.
///
/// @ingroup machine
/// @par Thread safety
/// There is no lock: one thread at a time may use the object.
/// @par Ownership
/// The object belongs to the library and lives until the program ends.
/// @par Units
/// GiB.
/// @par Failure
/// -1 for an unknown device. Nothing is thrown.
/// @since 1.0
class AIENGINE_EXPORT DeviceSelector
{
public:
    /// The only object of the process. The first call with `createWhenNeeded` queries the devices;
    /// before that call the object knows none.
    static DeviceSelector& GetInstance(bool createWhenNeeded);

    /// The video memory, in GiB, of the device `deviceId`; -1 when there is no such device.
    double deviceMemory(int deviceId);

private:
    DeviceSelector();
};

} // namespace aiengine
