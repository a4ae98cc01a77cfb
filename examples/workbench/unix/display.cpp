// SPDX-License-Identifier: Apache-2.0
#include "display.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <system_error>
#include <thread>

namespace {

bool isXServerReachable()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    return xcb_connection_has_error(connection.get()) == 0;
}

bool isSocketReachable(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= qsizetype(sizeof address.sun_path))
        return false;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    const bool isConnected =
        connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(descriptor);
    return isConnected;
}

bool isCompositorReachable()
{
    const QDir folder(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    return isSocketReachable(
        QFile::encodeName(folder.filePath(qEnvironmentVariable("WAYLAND_DISPLAY"))));
}

bool isAnyReachable()
{
    return (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && isCompositorReachable()) ||
           (!qEnvironmentVariableIsEmpty("DISPLAY") && isXServerReachable());
}

} // namespace

/// A host that answers nothing would be waited for, for minutes, so a thread asks, which is left
/// alone when it takes too long.
bool Desktop::isReachable()
{
    using namespace std::chrono_literals;
    const QByteArray plugin = qgetenv("QT_QPA_PLATFORM");
    const bool isDesktop =
        plugin.isEmpty() || plugin.startsWith("xcb") || plugin.startsWith("wayland");
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    if (!isDesktop) // one that needs neither
        return true;
    std::packaged_task<bool()> task(isAnyReachable);
    std::future<bool> answer = task.get_future();
    try {
        std::thread(std::move(task)).detach();
    } catch (const std::system_error&) {
        return false; // Qt needs threads of its own for a window
    }
    return answer.wait_for(3s) == std::future_status::ready && answer.get();
}
