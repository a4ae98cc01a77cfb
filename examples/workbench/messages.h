// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

#include <functional>

/// Where the lines of Qt's message logger go, the library's among them.
namespace Messages {

/// From now on warnings go to the collector of their thread. Where a thread has none they go to
/// `print`, and so do lines of information if `verbose`.
void install(bool verbose, std::function<void(const QString&)> print);

/// Keeps the warnings of its own thread while it lives, so that they can be said together with the
/// file that they are about. One per thread.
class Collector
{
public:
    Collector();
    ~Collector();
    Collector(const Collector&) = delete;
    Collector& operator=(const Collector&) = delete;

    const QStringList& warnings() const { return m_warnings; }

private:
    friend void handle(QtMsgType, const QMessageLogContext&, const QString&);
    QStringList m_warnings;
};

} // namespace Messages
