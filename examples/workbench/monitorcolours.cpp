// SPDX-License-Identifier: Apache-2.0
#include "monitorcolours.h"

#include "messages.h"

#include <imageutils/osutils.h>

#include <QtGui/QColorSpace>

namespace {

std::optional<MonitorColours>& known()
{
    static std::optional<MonitorColours> colours;
    return colours;
}

} // namespace

MonitorColours MonitorColours::current()
{
    if (!known()) {
        const Messages::Collector collector; // a monitor without a profile is no fault
        MonitorColours colours;
        const QColorSpace monitor = OSUtils::getMonitorColorSpace();
        const QColorSpace sRgb(QColorSpace::SRgb);
        if (monitor.isValid() && monitor != sRgb)
            colours.m_transform = sRgb.transformationToColorSpace(monitor);
        known() = colours;
    }
    return *known();
}

void MonitorColours::update() { known().reset(); }

QImage MonitorColours::converted(const QImage& image) const
{
    if (!m_transform || image.isNull())
        return image;
    QImage result = image;
    result.applyColorTransform(*m_transform);
    return result;
}
