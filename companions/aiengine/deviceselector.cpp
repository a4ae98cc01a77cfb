// SPDX-License-Identifier: Apache-2.0
#include <aiengine/deviceselector.h>

#include <aiengine/systeminfo.h>

aiengine::DeviceSelector::DeviceSelector() = default;

aiengine::DeviceSelector& aiengine::DeviceSelector::GetInstance(bool createWhenNeeded)
{
    aiutils::SystemInfo::GetInstance(createWhenNeeded); // the devices are those it knows
    static DeviceSelector instance;
    return instance;
}

double aiengine::DeviceSelector::deviceMemory(int deviceId)
{
    const auto& devices = aiutils::SystemInfo::GetInstance(false).getGPUList(false);
    if (deviceId < 0 || std::size_t(deviceId) >= devices.size())
        return -1;
    return devices[std::size_t(deviceId)].vram;
}
