// SPDX-License-Identifier: Apache-2.0
#include "messages.h"

#include "terminal.h"

#include <QtCore/QtGlobal>

#include <atomic>

namespace Messages {

static constinit std::atomic<bool> s_verbose = false;
static constinit thread_local Collector* s_collector = nullptr;

void handle(QtMsgType level, const QMessageLogContext&, const QString& text)
{
    const bool isInformation = level == QtDebugMsg || level == QtInfoMsg;
    if (isInformation) {
        if (s_verbose)
            Terminal::printError(text);
    } else if (s_collector && level != QtFatalMsg) {
        s_collector->m_warnings.append(text.simplified());
    } else {
        Terminal::printError(text);
    }
}

void install(bool verbose)
{
    s_verbose = verbose;
    qInstallMessageHandler(handle);
}

Collector::Collector() { s_collector = this; }

Collector::~Collector() { s_collector = nullptr; }

} // namespace Messages
