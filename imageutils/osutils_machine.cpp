// SPDX-License-Identifier: Apache-2.0
//
// What OSUtils reports about the machine. Most answers come from the engine, which an application
// may replace by one that throws.
#include <imageutils/osutils.h>

#include <imageutils/exceptions_p.h>

#include <aiengine/deviceselector.h>
#include <aiengine/systeminfo.h>

#include <QtCore/QDebug>
#include <QtCore/QOperatingSystemVersion>

#include <algorithm>
#include <limits>

namespace {

aiutils::SystemInfo& machine() { return aiutils::SystemInfo::GetInstance(true); }

/// The seconds that the three steps of processing take for one block of pixels.
struct BlockTimes
{
    double before = 0;
    double step = 0;
    double after = 0;
};

BlockTimes blockTimes(int deviceId)
{
    // A device whose memory is NaN is not a fast one.
    if (aiengine::DeviceSelector::GetInstance(true).deviceMemory(deviceId) > 5.6)
        return {0.05, 0.14, 0.1};
    if (machine().isApple())
        return {0.11, 0.3, 0.4};
    return {2.2, 3.7, 4.8};
}

qint64 blockCount(QSize size)
{
    const qint64 width = std::max(size.width(), 0);
    const qint64 height = std::max(size.height(), 0);
    return (width / 2 + 1) * (height / 2 + 1) / 1024;
}

} // namespace

QString OSUtils::username() const
{
    const QString user = qEnvironmentVariable("USER");
    return user.isEmpty() ? qEnvironmentVariable("USERNAME") : user;
}

QString OSUtils::operatingSystemVersion() const
{
    const QOperatingSystemVersion version = QOperatingSystemVersion::current();
    return QStringLiteral("%1.%2").arg(version.majorVersion()).arg(version.minorVersion());
}

QString OSUtils::machineId()
{
    return neutralOnException("machineId",
                              [] { return QString::fromStdString(machine().getMachineId()); });
}

QString OSUtils::cpuName()
{
    return neutralOnException("cpuName",
                              [] { return QString::fromStdString(machine().cpuName()); });
}

QStringList OSUtils::gpuList()
{
    return neutralOnException("gpuList", [] {
        QStringList names;
        for (const aiutils::DeviceInfo& device : machine().getGPUList(false))
            names.append(QString::fromStdString(device.name));
        return names;
    });
}

QStringList OSUtils::getAIProcessors()
{
    return QStringList{QStringLiteral("Auto"), QStringLiteral("CPU")} + gpuList();
}

float OSUtils::maxGpuVram()
{
    return neutralOnException("maxGpuVram", [] {
        float largest = 0;
        for (const aiutils::DeviceInfo& device : machine().getGPUList(false))
            largest = std::max(largest, device.vram); // in this order, NaN changes nothing
        return largest;
    });
}

double OSUtils::getCpuMemory()
{
    return neutralOnException("getCpuMemory", [] { return machine().cpuMemory(false).first; });
}

bool OSUtils::isAppleProcessor() const
{
    return neutralOnException("isAppleProcessor", [] {
        const aiutils::SystemInfo info(machine());
        return !info.isIntel() && !info.isAmd() && info.isApple();
    });
}

void OSUtils::logSystemInfo()
{
    neutralOnException("logSystemInfo", [] { machine().logSystemInfo(); });
}

int OSUtils::estimateRescueETASeconds(QSize inputSize, int deviceId)
{
    const BlockTimes times =
        neutralOnException("estimateRescueETASeconds", [deviceId] { return blockTimes(deviceId); });
    const double seconds =
        double(blockCount(inputSize)) * (times.step * 16.0 + times.before + times.after) * 1.2;
    const int estimate = int(std::min(seconds, double(std::numeric_limits<int>::max())));
    qInfo() << "Estimated ETA for the machine" << estimate;
    return estimate;
}
