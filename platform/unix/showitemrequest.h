// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <functional>
#include <string>

class QDBusMessage;

namespace Platform {

/// One item on its way from service to service. Deletes itself once it has answered.
class ShowItemRequest : public QObject
{
    Q_OBJECT

public:
    ShowItemRequest(std::string absolutePath, std::function<void(bool shown)> done);

    /// Gives all questions together `limit`, from now on.
    void start(std::chrono::milliseconds limit);

private Q_SLOTS:
    // 0: done, 1: the user has said no, 2: the portal has failed.
    void takePortalResponse(uint response) { finish(response != 2); }

private:
    void askFileManager();
    void askPortal();
    template<typename Success, typename Failure>
    void call(const QDBusMessage& question, Success success, Failure failure);
    void finish(bool shown);

    std::string m_path;
    std::function<void(bool)> m_done;
    QDBusConnection m_bus;
    std::chrono::milliseconds m_limit = {};
    bool m_portalHasTaken = false;
};

} // namespace Platform
