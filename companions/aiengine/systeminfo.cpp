// SPDX-License-Identifier: Apache-2.0
#include <aiengine/systeminfo.h>

#include <aiengine/graphics.h>
#include <aiengine/machine.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QDebug>
#include <QtCore/QSysInfo>

#include <utility>

aiutils::SystemInfo::SystemInfo() = default;

aiutils::SystemInfo::SystemInfo(const SystemInfo& other) = default;

aiutils::SystemInfo& aiutils::SystemInfo::operator=(const SystemInfo& other) = default;

aiutils::SystemInfo::~SystemInfo() = default;

aiutils::SystemInfo& aiutils::SystemInfo::GetInstance(bool createWhenNeeded)
{
    static SystemInfo instance;
    if (createWhenNeeded && !instance.m_created)
        instance.ask();
    return instance;
}

void aiutils::SystemInfo::ask()
{
    const aiengine::Processor processor = aiengine::processor();
    m_cpuName =
        processor.name.empty() ? QSysInfo::currentCpuArchitecture().toStdString() : processor.name;
    m_isIntel = processor.maker == "GenuineIntel";
    m_isAmd = processor.maker == "AuthenticAMD";
    m_isApple = aiengine::isAppleMachine();
    m_memory = aiengine::memoryGiB();
    m_created = true;
}

std::string aiutils::SystemInfo::cpuName() { return m_cpuName; }

const std::vector<aiutils::DeviceInfo>& aiutils::SystemInfo::getGPUList(bool askAgain)
{
    if (m_created && (askAgain || !m_gpusAsked)) {
        aiengine::GraphicsDevices answer = aiengine::graphicsDevices();
        m_gpus = std::move(answer.devices);
        m_gpusAsked = true;
        if (!answer.failure.empty())
            qWarning().noquote() << "getGPUList: no answer from the graphics drivers:"
                                 << QString::fromStdString(answer.failure);
    }
    return m_gpus;
}

std::pair<double, double> aiutils::SystemInfo::cpuMemory(bool askAgain)
{
    if (m_created && askAgain)
        m_memory = aiengine::memoryGiB();
    return m_memory;
}

std::string aiutils::SystemInfo::getMachineId()
{
    // Whoever knew the identifier itself could find this machine in other programs' data.
    const QByteArray identifier = QSysInfo::machineUniqueId();
    if (identifier.isEmpty())
        return {};
    const QByteArray named = "imageutils:" + identifier;
    return QCryptographicHash::hash(named, QCryptographicHash::Sha256).toHex().toStdString();
}

bool aiutils::SystemInfo::isApple() const { return m_isApple; }

bool aiutils::SystemInfo::isIntel() const { return m_isIntel; }

bool aiutils::SystemInfo::isAmd() const { return m_isAmd; }

void aiutils::SystemInfo::logSystemInfo()
{
    qInfo().noquote() << "System:" << QSysInfo::prettyProductName() << QSysInfo::kernelVersion();
    qInfo().noquote() << "Processor:" << QString::fromStdString(m_cpuName);
    qInfo() << "Memory in GiB, all and available:" << m_memory.first << m_memory.second;
    if (getGPUList(false).empty())
        qInfo() << "Graphics devices: none";
    for (const DeviceInfo& device : m_gpus) {
        qInfo().noquote() << "Graphics device:" << QString::fromStdString(device.name)
                          << "kind:" << QString::fromStdString(device.kind)
                          << "memory in GiB:" << device.vram;
    }
}
