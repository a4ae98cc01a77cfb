// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

namespace TestSupport {

/// One line of Qt's message logger.
struct LogLine
{
    QtMsgType level;
    QString text;
    bool operator==(const LogLine&) const = default;
};

/// Keeps the lines without a category that are written, on any thread, while it lives, and swallows
/// them. Lines with a category (Qt's own) go on to the handler before it.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The lines so far; they are forgotten.
    QList<LogLine> take();

    /// The lines so far as "warning: text", for comparison with an expected list; they are
    /// forgotten.
    QStringList takeTexts();
};

} // namespace TestSupport
