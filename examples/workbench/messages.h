// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// Where the lines of Qt's message logger go, the library's among them.
namespace Messages {

/// From now on lines of information are shown only if `verbose`, and warnings go to the collector
/// of their thread, or to the error output where there is none.
void install(bool verbose);

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
