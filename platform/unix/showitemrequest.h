// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <functional>
#include <string>

class QDBusMessage;

namespace Platform {

/// One call of `showItem()`: asks the file manager and, if that fails, the desktop portal. Deletes
/// itself after it has called `done`.
class ShowItemRequest : public QObject
{
    Q_OBJECT

public:
    ShowItemRequest(std::string path, std::function<bool()> isWanted,
                    std::function<void(bool shown)> done);

    /// The time for all questions together, `limit`, begins here.
    void start(std::chrono::milliseconds limit);

private Q_SLOTS:
    // 0: done, 1: the user has cancelled, 2: the portal has failed.
    void takePortalResponse(uint response) { finish(response != 2); }

private:
    void askFileManager();
    void askPortal();
    QString listenForPortalResponse();
    template<typename Success, typename Failure>
    void call(const QDBusMessage& question, Success success, Failure failure);
    void finish(bool shown);

    std::string m_path;
    std::function<bool()> m_isWanted;
    std::function<void(bool)> m_done; // null once it has been called
    QDBusConnection m_bus;
    std::chrono::milliseconds m_limit = {};
    QDeadlineTimer m_deadline;
    bool m_portalHasAccepted = false;
};

} // namespace Platform
