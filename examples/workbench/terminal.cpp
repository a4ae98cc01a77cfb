// SPDX-License-Identifier: Apache-2.0
#include "terminal.h"

#include "console.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <mutex>

namespace {

constexpr qsizetype progressColumns = 79; // a longer line would wrap and could not be replaced

std::mutex s_mutex;
constinit bool s_progressShown = false;
constinit int s_lostLines = 0; ///< the system's error of the first line that did not arrive

QByteArray printable(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
        QChar(QChar::ReplacementCharacter));
    return text.toUtf8();
}

void writeError(const QByteArray& text)
{
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stderr);
}

void removeProgress()
{
    if (s_progressShown)
        writeError("\r\033[K");
    s_progressShown = false;
}

} // namespace

void Terminal::printLine(const QString& line)
{
    const std::lock_guard lock(s_mutex);
    removeProgress();
    const QByteArray text = printable(line) + '\n';
    const std::size_t size = std::size_t(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
        s_lostLines = s_lostLines == 0 ? errno : s_lostLines;
}

void Terminal::printError(const QString& line)
{
    const std::lock_guard lock(s_mutex);
    removeProgress();
    writeError(printable(line) + '\n');
}

void Terminal::showProgress(const QString& text)
{
    static const bool isTerminal = Console::errorsGoToTerminal();
    if (!isTerminal)
        return;
    const std::lock_guard lock(s_mutex);
    writeError("\r\033[K" + printable(text.left(progressColumns)));
    s_progressShown = true;
}

void Terminal::clearProgress()
{
    const std::lock_guard lock(s_mutex);
    removeProgress();
}

bool Terminal::isReaderGone()
{
    const std::lock_guard lock(s_mutex);
    return s_lostLines == EPIPE;
}

bool Terminal::reportLostLines()
{
    if (s_lostLines != 0 && !isReaderGone())
        printError(QStringLiteral("imageutils-workbench: standard output: %1")
                       .arg(qt_error_string(s_lostLines)));
    return s_lostLines == 0;
}
