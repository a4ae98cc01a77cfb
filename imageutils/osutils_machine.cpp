// SPDX-License-Identifier: Apache-2.0
//
// What OSUtils tells of the machine, most of it as the engine says it.
#include <imageutils/osutils.h>

#include <aiengine/deviceselector.h>
#include <aiengine/systeminfo.h>

#include <QtCore/QDebug>
#include <QtCore/QOperatingSystemVersion>

#include <algorithm>
#include <limits>

namespace {

aiutils::SystemInfo& machine() { return aiutils::SystemInfo::GetInstance(true); }

/// How long the three steps of the work take on one block of pixels.
struct BlockTimes
{
    double before;
    double step;
    double after;
};

BlockTimes blockTimes(int deviceId)
{
    // Written so that a device whose memory is not a number is none of the fast ones.
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

QString OSUtils::machineId() { return QString::fromStdString(machine().getMachineId()); }

QString OSUtils::cpuName() { return QString::fromStdString(machine().cpuName()); }

QStringList OSUtils::gpuList()
{
    QStringList names;
    for (const aiutils::DeviceInfo& device : machine().getGPUList(false))
        names.append(QString::fromStdString(device.name));
    return names;
}

QStringList OSUtils::getAIProcessors()
{
    return QStringList{QStringLiteral("Auto"), QStringLiteral("CPU")} + gpuList();
}

float OSUtils::maxGpuVram()
{
    float largest = 0;
    for (const aiutils::DeviceInfo& device : machine().getGPUList(false))
        largest = std::max(largest, device.vram); // in this order, NaN leaves what there is
    return largest;
}

double OSUtils::getCpuMemory() { return machine().cpuMemory(false).first; }

bool OSUtils::isAppleProcessor() const
{
    const aiutils::SystemInfo info(machine());
    return !info.isIntel() && !info.isAmd() && info.isApple();
}

void OSUtils::logSystemInfo() { machine().logSystemInfo(); }

int OSUtils::estimateRescueETASeconds(QSize inputSize, int deviceId)
{
    const BlockTimes times = blockTimes(deviceId);
    const double seconds =
        double(blockCount(inputSize)) * (times.step * 16.0 + times.before + times.after) * 1.2;
    const int estimate = int(std::min(seconds, double(std::numeric_limits<int>::max())));
    qInfo() << "Estimated ETA for the machine" << estimate;
    return estimate;
}
