// SPDX-License-Identifier: Apache-2.0
#include "machine.h"

#include <aiengine/systeminfo.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSysInfo>

namespace {

aiutils::SystemInfo& machine() { return aiutils::SystemInfo::GetInstance(true); }

QString gibText(double gib)
{
    return gib > 0 ? QString::number(gib, 'f', 1) + QLatin1String(" GiB") : QStringLiteral("-");
}

QString deviceText(const aiutils::DeviceInfo& device)
{
    return QStringLiteral("%1 (%2, %3)")
        .arg(QString::fromStdString(device.name), QString::fromStdString(device.kind),
             gibText(device.vram));
}

QString line(const char* name, const QString& value)
{
    return QString::fromLatin1(name).leftJustified(12) +
           (value.isEmpty() ? QStringLiteral("-") : value);
}

} // namespace

QStringList machineText()
{
    const auto [total, available] = machine().cpuMemory(false);
    QStringList lines{line("system", QSysInfo::prettyProductName()),
                      line("processor", QString::fromStdString(machine().cpuName())),
                      line("memory", gibText(total)), line("available", gibText(available)),
                      line("identifier", QString::fromStdString(machine().getMachineId()))};
    const auto& devices = machine().getGPUList(false);
    if (devices.empty())
        lines.append(line("graphics", {}));
    for (const aiutils::DeviceInfo& device : devices)
        lines.append(line("graphics", deviceText(device)));
    return lines;
}

QString machineJson()
{
    QJsonArray devices;
    for (const aiutils::DeviceInfo& device : machine().getGPUList(false))
        devices.append(QJsonObject{{QStringLiteral("name"), QString::fromStdString(device.name)},
                                   {QStringLiteral("kind"), QString::fromStdString(device.kind)},
                                   {QStringLiteral("memoryGiB"), double(device.vram)}});
    const auto [total, available] = machine().cpuMemory(false);
    const QJsonObject facts{
        {QStringLiteral("system"), QSysInfo::prettyProductName()},
        {QStringLiteral("processor"), QString::fromStdString(machine().cpuName())},
        {QStringLiteral("memoryGiB"), total},
        {QStringLiteral("availableGiB"), available},
        {QStringLiteral("identifier"), QString::fromStdString(machine().getMachineId())},
        {QStringLiteral("graphics"), devices}};
    return QString::fromUtf8(QJsonDocument(facts).toJson(QJsonDocument::Compact));
}

qint64 availableMemory()
{
    constexpr double gib = 1024.0 * 1024.0 * 1024.0;
    return qint64(machine().cpuMemory(false).second * gib);
}
