// SPDX-License-Identifier: Apache-2.0
#include <aiengine/graphics.h>

#include <platform/plugin.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <memory>
#include <optional>

namespace {

using aiengine::GraphicsDevices;
using aiutils::DeviceInfo;

constexpr int limitMs = 5000;
constexpr int endingMs = 200; // of a process that was killed

DeviceInfo deviceOf(const QJsonObject& object)
{
    const auto number = [&object](const char* key) {
        return object[QLatin1String(key)].toDouble();
    };
    return {.name = object[QLatin1String("name")].toString().toStdString(),
            .kind = object[QLatin1String("kind")].toString().toStdString(),
            .vram = float(number("vram")),
            .vendorId = std::uint32_t(number("vendorId")),
            .deviceId = std::uint32_t(number("deviceId"))};
}

/// The devices in the last line of `output`; drivers may have written other lines before it.
std::optional<std::vector<DeviceInfo>> devicesIn(const QByteArray& output)
{
    const QJsonDocument document = QJsonDocument::fromJson(output.trimmed().split('\n').last());
    if (!document.isArray())
        return {};
    std::vector<DeviceInfo> devices;
    for (const auto& device : document.array())
        devices.push_back(deviceOf(device.toObject()));
    return devices;
}

/// Ends a process. One that waits in the kernel for a device does not end, and the destructor of
/// its object would wait for it.
void end(std::unique_ptr<QProcess> process)
{
    process->kill();
    if (!process->waitForFinished(endingMs))
        static_cast<void>(process.release());
}

} // namespace

GraphicsDevices aiengine::graphicsDevices()
{
    const std::string program = Platform::installedFile(GRAPHICS_PROGRAM);
    if (program.empty())
        return {devicesOfDrivers(), {}};
    auto process = std::make_unique<QProcess>();
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(QString::fromStdString(program), QStringList());
    const bool hasEnded = process->waitForFinished(limitMs);
    if (process->error() == QProcess::FailedToStart)
        return {devicesOfDrivers(), {}};
    if (!hasEnded) {
        end(std::move(process));
        return {{}, "none within 5 s"};
    }
    if (const auto devices = devicesIn(process->readAllStandardOutput()))
        return {*devices, {}};
    return {{}, "their process has crashed"};
}
