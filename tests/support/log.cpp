// SPDX-License-Identifier: Apache-2.0
#include <support/log.h>

#include <QtCore/QHash>
#include <QtCore/QStringList>

#include <cstring>
#include <mutex>
#include <utility>

namespace {

// std::mutex, which the thread sanitizer knows even where Qt is not instrumented.
std::mutex s_mutex;
QList<TestSupport::LogLine> s_lines;
QtMessageHandler s_previous = nullptr;

void capture(QtMsgType level, const QMessageLogContext& context, const QString& text)
{
    if (context.category && std::strcmp(context.category, "default") != 0) {
        s_previous(level, context, text);
        return;
    }
    const std::lock_guard lock(s_mutex);
    s_lines.append({level, text});
}

} // namespace

TestSupport::LogCapture::LogCapture() { s_previous = qInstallMessageHandler(capture); }

TestSupport::LogCapture::~LogCapture()
{
    qInstallMessageHandler(s_previous);
    take();
}

QList<TestSupport::LogLine> TestSupport::LogCapture::take()
{
    const std::lock_guard lock(s_mutex);
    return std::exchange(s_lines, {});
}

QStringList TestSupport::LogCapture::takeTexts()
{
    const QHash<QtMsgType, QString> levels = {
        {QtInfoMsg, "info: "}, {QtWarningMsg, "warning: "}, {QtCriticalMsg, "critical: "}};
    QStringList texts;
    for (const LogLine& line : take())
        texts += levels.value(line.level, "other: ") + line.text;
    return texts;
}
