// SPDX-License-Identifier: Apache-2.0
#include "terminal.h"

#include "console.h"

#include <algorithm>
#include <cstdio>
#include <mutex>

namespace {

constexpr qsizetype progressColumns = 79; // a longer line would wrap and could not be replaced

std::mutex s_mutex;
constinit bool s_progressShown = false;

QByteArray printable(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
        QChar(QChar::ReplacementCharacter));
    return text.toUtf8();
}

void writeError(const QByteArray& text)
{
    Console::writeErrors(text.constData(), std::size_t(text.size()));
}

void takeProgressAway()
{
    if (s_progressShown)
        writeError("\r\033[K");
    s_progressShown = false;
}

} // namespace

void Terminal::printLine(const QString& line)
{
    const std::lock_guard lock(s_mutex);
    takeProgressAway();
    std::fputs((printable(line) + '\n').constData(), stdout);
    std::fflush(stdout);
}

void Terminal::printError(const QString& line)
{
    const std::lock_guard lock(s_mutex);
    takeProgressAway();
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
    takeProgressAway();
}
