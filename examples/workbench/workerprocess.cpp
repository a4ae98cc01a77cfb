// SPDX-License-Identifier: Apache-2.0
#include "workerprocess.h"

#include "addressspace.h"
#include "atomicfile.h"
#include "console.h"
#include "interruption.h"
#include "job.h"
#include "jobmessage.h"
#include "messages.h"
#include "preview.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <opencv2/core/utils/logger.hpp>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

namespace {

/// The pipe to the program. May be used from any thread.
class Outbox
{
public:
    explicit Outbox(int descriptor)
    {
        if (!m_file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered))
            std::_Exit(1); // no result could be sent
    }

    void send(const QByteArray& bytes)
    {
        const std::lock_guard lock(m_mutex);
        if (m_file.write(bytes) != bytes.size())
            std::_Exit(1); // the program has ended, so the result is not needed
    }

private:
    std::mutex m_mutex;
    QFile m_file;
};

/// The file that the process is writing, to be removed when the program dies in the meantime.
class UnfinishedFile
{
public:
    void set(const QString& path)
    {
        const std::lock_guard lock(m_mutex);
        m_path = path;
    }

    /// Ends the process, in which another thread may be at work.
    [[noreturn]] void removeAndExit()
    {
        m_mutex.lock(); // for ever: no other file is begun
        if (!m_path.isEmpty())
            QFile::remove(m_path);
        std::_Exit(0);
    }

private:
    std::mutex m_mutex;
    QString m_path;
};

/// The lines from the program, read by a thread of its own, which notices the program's death in
/// the middle of a photograph.
class Inbox
{
public:
    explicit Inbox(UnfinishedFile& unfinished) : m_unfinished(unfinished)
    {
        if (!m_file.open(stdin, QIODevice::ReadOnly))
            std::_Exit(1); // no task could be received
        try {
            std::thread([this] { readAll(); }).detach(); // it ends the process
            m_hasThread = true;
        } catch (const std::system_error&) {
            // Without a thread the program's death is noticed after the photograph.
        }
    }

    /// Waits for the next line; empty when there will be none.
    QByteArray next()
    {
        if (!m_hasThread)
            return m_file.readLine();
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_lines.empty(); });
        const QByteArray line = m_lines.front();
        m_lines.pop_front();
        return line;
    }

    /// What the lines that `next` has not given yet interrupt.
    Interrupt interrupt()
    {
        const std::lock_guard lock(m_mutex);
        Interrupt most = Interrupt::None;
        for (const QByteArray& line : m_lines)
            most = std::max(most, interruptOf(line));
        return most;
    }

private:
    void readAll()
    {
        for (;;) {
            const QByteArray line = m_file.readLine();
            if (line.isEmpty())
                m_unfinished.removeAndExit();
            const std::lock_guard lock(m_mutex);
            m_lines.push_back(line);
            m_changed.notify_one();
        }
    }

    UnfinishedFile& m_unfinished;
    QFile m_file;
    bool m_hasThread = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<QByteArray> m_lines;
};

/// One worker process, photograph after photograph.
class Process
{
public:
    int run();

private:
    void show(const Request& request);
    void exportPhotograph(const Request& request);
    void takeMemory(qint64 bytes, const Request& request);
    void send(const Message& message) { m_outbox.send(lineOf(message)); }

    UnfinishedFile m_unfinished;
    Outbox m_outbox{Console::takeStandardOutput()};
    Inbox m_inbox{m_unfinished};
    std::optional<Preview> m_preview; // of a process that works for a window
    PixelBuffer m_buffer;             // memory that was filled once is filled faster the next time
};

int Process::run()
{
    AtomicFile::setObserver([this](const QString& path) {
        send({Message::Kind::Temporary, {}, 0, path});
        m_unfinished.set(path);
    });
    for (;;) {
        const QByteArray line = m_inbox.next();
        if (line.isEmpty())
            return 0;
        if (interruptOf(line) != Interrupt::None)
            continue; // what it interrupts is over
        const Request request = requestOf(line);
        Messages::install(request.options.verbose, [this](const QString& text) {
            send({Message::Kind::Log, {}, 0, text});
        });
        if (request.view.kind != View::Kind::None)
            show(request);
        else
            exportPhotograph(request);
    }
}

void Process::show(const Request& request)
{
    AddressSpace::limit(request.memoryShare);
    if (!m_preview)
        m_preview.emplace(request.memoryShare / 2); // the other half is for the one in work
    const Message message = m_preview->of(request, [this] { return m_inbox.interrupt(); });
    send(message);
    m_outbox.send(m_preview->pixels());
}

void Process::exportPhotograph(const Request& request)
{
    AddressSpace::limit(request.memoryShare);
    const JobContext context{[this](Step step) {
                                 send({Message::Kind::Step, step});
                             },
                             [&](qint64 bytes) { takeMemory(bytes, request); }, m_buffer};
    Message message{Message::Kind::Result};
    message.result = runJob(request, context);
    m_unfinished.set({});
    send(message);
}

/// Waits until the program grants `bytes`. They are an estimate, so the limit is twice as much, but
/// never more than the user's.
void Process::takeMemory(qint64 bytes, const Request& request)
{
    send({Message::Kind::Memory, {}, bytes});
    m_inbox.next();
    const qint64 wanted = std::max(request.memoryShare, 2 * bytes);
    const qint64 most = request.options.maxMemory;
    AddressSpace::limit(most > 0 ? std::min(wanted, most) : wanted);
}

} // namespace

int runWorker(int argc, char** argv)
{
    Interruption::ignoreWriteSignals();
    Interruption::ignore(); // the program ends its workers
    const QCoreApplication application(argc, argv);
    cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT); // reported by its caller
    return Process().run();
}
