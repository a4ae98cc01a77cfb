// SPDX-License-Identifier: Apache-2.0
#include "messages.h"

#include <QtCore/QtGlobal>

#include <mutex>
#include <utility>

namespace Messages {

static std::mutex s_mutex; ///< of the next two, which lines of any thread use
static constinit bool s_verbose = false;
static std::function<void(const QString&)> s_print;
static constinit thread_local Collector* s_collector = nullptr;

void handle(QtMsgType level, const QMessageLogContext&, const QString& text)
{
    const bool isInformation = level == QtDebugMsg || level == QtInfoMsg;
    if (!isInformation && s_collector && level != QtFatalMsg) {
        s_collector->m_warnings.append(text.simplified());
        return;
    }
    const std::lock_guard lock(s_mutex);
    if (!isInformation || s_verbose)
        s_print(text);
}

void install(bool verbose, std::function<void(const QString&)> print)
{
    {
        const std::lock_guard lock(s_mutex);
        s_verbose = verbose;
        s_print = std::move(print);
    }
    qInstallMessageHandler(handle);
}

Collector::Collector() { s_collector = this; }

Collector::~Collector() { s_collector = nullptr; }

} // namespace Messages
