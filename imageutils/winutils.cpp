// SPDX-License-Identifier: Apache-2.0
#include <imageutils/winutils.h>

#include <imageutils/exceptions_p.h>
#include <imageutils/guiapplication_p.h>
#include <platform/monitorprofile.h>

#include <QtCore/QDebug>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

using Platform::MonitorProfile;
using Platform::MonitorProfileStep;

namespace {

/// The screen of the active window; the primary screen if no window of this program is active.
const QScreen* activeScreen()
{
    if (!onGuiThread())
        return nullptr;
    const QWindow* window = QGuiApplication::focusWindow();
    return window ? window->screen() : QGuiApplication::primaryScreen();
}

MonitorProfile activeMonitorProfile()
{
    // Enough for a colour service that the bus has to start. The caller is blocked meanwhile.
    constexpr std::chrono::milliseconds limit(1000);
    const QScreen* screen = activeScreen();
    return screen ? Platform::monitorProfile(screen->name().toStdString(), limit)
                  : MonitorProfile();
}

QColorSpace parse(const std::vector<unsigned char>& profile)
{
    const QByteArray bytes(reinterpret_cast<const char*>(profile.data()),
                           qsizetype(profile.size()));
    QColorSpace space = QColorSpace::fromIccProfile(bytes);
    if (!space.isValid())
        qWarning() << "Color Profile invalid" << bytes.toBase64().length();
    return space;
}

QColorSpace readMonitorColorSpace()
{
    const MonitorProfile profile = activeMonitorProfile();
    switch (profile.step) {
    case MonitorProfileStep::Read:
        return parse(profile.bytes);
    case MonitorProfileStep::NoContext:
        qWarning() << "Active Window does not contain a device context";
        break;
    case MonitorProfileStep::NoProfile:
        qWarning() << "GetICMProfile failed";
        break;
    case MonitorProfileStep::CannotOpen:
        qWarning() << "Color Profile could not be opened";
        break;
    case MonitorProfileStep::NoHeader:
        qWarning() << "Color Profile Header not found";
        break;
    }
    return QColorSpace(QColorSpace::SRgb);
}

} // namespace

WinUtils::WinUtils() = default;

WinUtils::~WinUtils() = default;

QColorSpace WinUtils::getMonitorColorSpace()
{
    const QColorSpace space = neutralOnException("getMonitorColorSpace", readMonitorColorSpace,
                                                 QColorSpace(QColorSpace::SRgb));
    qInfo().noquote() << "Reading display/monitor colorspace as: " << space;
    return space;
}
