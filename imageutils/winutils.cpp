// SPDX-License-Identifier: Apache-2.0
#include <imageutils/winutils.h>

#include <QtCore/QDebug>

WinUtils::WinUtils() = default;

WinUtils::~WinUtils() = default;

QColorSpace WinUtils::getMonitorColorSpace()
{
    qWarning() << "getMonitorColorSpace is not available yet";
    return QColorSpace(QColorSpace::SRgb);
}
