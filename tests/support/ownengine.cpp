// SPDX-License-Identifier: Apache-2.0
//
// An engine of the program's own, which replaces the library's because it is linked before it. Its
// answers come from the environment: ENGINE_DEVICES (name:memory …), ENGINE_MEMORY of device 3,
// ENGINE_FLAGS (apple, intel, amd, throws).
#include <aiengine/deviceselector.h>
#include <aiengine/systeminfo.h>

#include <QtCore/QDebug>

#include <stdexcept>

static bool hasFlag(const char* name) { return qgetenv("ENGINE_FLAGS").contains(name); }

namespace aiutils {
SystemInfo::SystemInfo() = default;
SystemInfo::SystemInfo(const SystemInfo&) = default;
SystemInfo::~SystemInfo() = default;
SystemInfo& SystemInfo::GetInstance(bool)
{
    static SystemInfo instance;
    if (hasFlag("throws"))
        throw std::runtime_error("no words for a user");
    return instance;
}
const std::vector<DeviceInfo>& SystemInfo::getGPUList(bool)
{
    m_gpus.clear();
    for (const QByteArray& device : qgetenv("ENGINE_DEVICES").split(' ')) {
        const QByteArrayList parts = device.split(':');
        if (parts.size() == 2)
            m_gpus.push_back({parts[0].toStdString(), {}, parts[1].toFloat()});
    }
    return m_gpus;
}
std::string SystemInfo::cpuName() { return "Prozeßor"; }
std::pair<double, double> SystemInfo::cpuMemory(bool) { return {31.25, 7.5}; }
std::string SystemInfo::getMachineId() { return "machine ü"; }
bool SystemInfo::isApple() const { return hasFlag("apple"); }
bool SystemInfo::isIntel() const { return hasFlag("intel"); }
bool SystemInfo::isAmd() const { return hasFlag("amd"); }
void SystemInfo::logSystemInfo() { qInfo() << "the engine's summary"; }
} // namespace aiutils

aiengine::DeviceSelector::DeviceSelector() = default;
aiengine::DeviceSelector& aiengine::DeviceSelector::GetInstance(bool)
{
    static DeviceSelector instance;
    return instance;
}
double aiengine::DeviceSelector::deviceMemory(int deviceId)
{
    return deviceId == 3 ? qgetenv("ENGINE_MEMORY").toDouble() : 99;
}
