// SPDX-License-Identifier: Apache-2.0
//
// The program of the process in which the graphics drivers are asked, because a driver may crash or
// hang. Prints the devices as one line of JSON.
#include <aiengine/graphics.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdio>
#include <cstdlib>

int main()
{
    QJsonArray devices;
    for (const aiutils::DeviceInfo& device : aiengine::devicesOfDrivers())
        devices.append(QJsonObject{{QStringLiteral("name"), QString::fromStdString(device.name)},
                                   {QStringLiteral("kind"), QString::fromStdString(device.kind)},
                                   {QStringLiteral("vram"), double(device.vram)},
                                   {QStringLiteral("vendorId"), qint64(device.vendorId)},
                                   {QStringLiteral("deviceId"), qint64(device.deviceId)}});
    std::printf("\n%s\n", QJsonDocument(devices).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS); // without what the drivers do at the end of a program
}
