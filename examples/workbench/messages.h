// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

#include <functional>

/// Decides where the lines of Qt's message logger go. The library's lines are among them.
namespace Messages {

/// From now on warnings go to the collector of their thread. Where a thread has none they go to
/// `print`, and so do lines of information if `verbose`.
void install(bool verbose, std::function<void(const QString&)> print);

/// Collects the warnings of its own thread during its lifetime, so that they can be printed
/// together with the file that they are about. A thread may have one collector.
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
