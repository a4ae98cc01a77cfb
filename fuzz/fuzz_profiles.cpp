// SPDX-License-Identifier: Apache-2.0
//
// Any bytes as the colour profile of the monitor: the answer is the colour space of exactly these
// bytes, or an invalid one, and the same each time.
#include <imageutils/osutils.h>
#include <platform/monitorprofile.h>

#include <QtGui/QColorSpace>
#include <QtGui/QGuiApplication>

#include <cstdlib>

namespace {

std::vector<unsigned char> profile;

} // namespace

/// Stands before the function of the platform, which asks the X server.
Platform::MonitorProfile Platform::monitorProfile(const std::string&, std::chrono::milliseconds)
{
    return {MonitorProfileStep::Read, profile};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int count = 1;
    static char name[] = "fuzz", *arguments[] = {name, nullptr};
    static const bool isOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(count, arguments);
    if (!isOffscreen)
        std::abort();
    profile.assign(data, data + size);
    OSUtils utils;
    const QColorSpace space = utils.getMonitorColorSpace();
    if (space != utils.getMonitorColorSpace() && space.isValid())
        std::abort();
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    if (space.isValid() && space.iccProfile() != bytes)
        std::abort();
    return 0;
}
