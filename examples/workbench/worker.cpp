// SPDX-License-Identifier: Apache-2.0
#include "worker.h"

#include "terminal.h"
#include "workerprocess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstring>
#include <utility>

namespace {

constexpr int killSignal = 9; // of the system when memory runs out

/// What was running in the process, as the subject of a sentence.
QString culprit(Step step, const Request& request)
{
    const QString source = QFileInfo(request.path).suffix().toUpper();
    const bool isPreserved = request.options.settings.format == QLatin1String("preserve");
    const QString target = isPreserved ? source : request.options.settings.format.toUpper();
    switch (step) {
    case Step::Header:
    case Step::Decode:
        return QStringLiteral("the %1 decoder").arg(source);
    case Step::Write:
        return QStringLiteral("the %1 encoder").arg(target);
    case Step::Bitmap:
        return QStringLiteral("the BMP encoder");
    default:
        return QStringLiteral("the step \"%1\"").arg(QLatin1String(stepNames[std::size_t(step)]));
    }
}

QString& program()
{
    static QString path = QCoreApplication::applicationFilePath();
    return path;
}

/// A null image when the system has not enough memory.
QImage imageOf(QSize size, const QByteArray& pixels)
{
    QImage image(size, QImage::Format_RGBA8888); // whose rows are not padded
    if (!image.isNull() && image.sizeInBytes() == pixels.size())
        std::memcpy(image.bits(), pixels.constData(), std::size_t(pixels.size()));
    return image;
}

/// All workers of the program; they belong to one thread.
QList<Worker*>& living()
{
    static QList<Worker*> workers;
    return workers;
}

/// Processes that the system did not end in time. The list is never destroyed, as ~QProcess would
/// wait for them.
QList<QProcess*>& abandoned()
{
    static auto* const processes = new QList<QProcess*>;
    return *processes;
}

} // namespace

Worker::Worker(Priority priority, QObject* parent) : QObject(parent)
{
    living().append(this);
    m_process->setProgram(QFileInfo(program()).absolutePath() +
                          QLatin1String("/" WORKBENCH_WORKER));
    if (priority == Priority::Low)
        m_process->setArguments({QLatin1String(lowPriorityArgument)});
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &Worker::readOutput);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &Worker::readErrors);
    connect(m_process.get(), &QProcess::errorOccurred, this, &Worker::showFailure);
    connect(m_process.get(), &QProcess::finished, this, &Worker::showEnd);
}

void Worker::setProgram(const QString& path) { program() = path; }

Worker::~Worker()
{
    living().removeOne(this);
    end({this});
}

void Worker::start(const Request& request)
{
    m_request = request;
    m_isBusy = true;
    m_step = Step::Header;
    m_said.clear();
    if (m_process->state() == QProcess::NotRunning)
        m_process->start();
    m_process->write(lineOf(request)); // kept until the process has started
}

void Worker::grantMemory() { m_process->write("\n"); }

void Worker::interrupt(Interrupt interrupt) { m_process->write(lineOf(interrupt)); }

void Worker::endAll() { end(living()); }

void Worker::end(const QList<Worker*>& workers)
{
    for (Worker* const worker : workers) {
        worker->m_process->disconnect(worker);
        worker->m_isBusy = false;
        worker->m_process->kill();
    }
    const QDeadlineTimer deadline(200);
    for (Worker* const worker : workers) {
        const bool hasEnded = worker->m_process->state() == QProcess::NotRunning ||
                              worker->m_process->waitForFinished(int(deadline.remainingTime()));
        worker->readOutput(); // it may name a file that was begun meanwhile
        worker->removeTemporaries();
        if (!hasEnded)
            abandoned().append(worker->m_process.release());
        worker->m_process = std::make_unique<QProcess>();
    }
}

void Worker::readOutput()
{
    m_process->setReadChannel(QProcess::StandardOutput);
    while (readPreview() && m_process->canReadLine())
        if (const auto message = messageOf(m_process->readLine()))
            receive(*message);
}

/// Takes the pixels that follow the line of a preview. Returns whether none are still to come.
bool Worker::readPreview()
{
    if (!m_preview)
        return true;
    if (m_process->bytesAvailable() < m_preview->bytes)
        return false;
    const Message preview = *std::exchange(m_preview, {});
    m_temporaries.clear();
    const QImage image = imageOf(preview.size, m_process->read(preview.bytes));
    m_isBusy = false;
    Q_EMIT viewed(
        {image, preview.part, preview.whole, preview.result, preview.isDraft, preview.isGivenUp});
    return true;
}

/// Foreign code may write without end; only the last line can be of use.
void Worker::readErrors()
{
    constexpr qsizetype longest = 4096;
    m_said = (m_said + m_process->readAllStandardError()).right(longest);
}

void Worker::receive(const Message& message)
{
    switch (message.kind) {
    case Message::Kind::Step:
        m_step = message.step;
        Q_EMIT stepped(m_step);
        break;
    case Message::Kind::Memory:
        Q_EMIT memoryWanted(message.bytes);
        break;
    case Message::Kind::Temporary:
        m_temporaries.append(message.text);
        break;
    case Message::Kind::Log:
        Terminal::printError(message.text);
        break;
    case Message::Kind::Result:
        m_temporaries.clear();
        complete(message.result);
        break;
    case Message::Kind::Preview:
        m_preview = message;
        break;
    }
}

void Worker::showFailure(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart || !m_isBusy)
        return; // others are followed by the end of the process
    m_isBusy = false;
    Q_EMIT unavailable(m_process->errorString());
}

void Worker::showEnd(int code, QProcess::ExitStatus status)
{
    readErrors();
    readOutput();
    m_preview.reset();
    removeTemporaries();
    if (!m_isBusy)
        return;
    JobResult result;
    result.path = m_request.path;
    result.failure = reasonOfEnd(code, status);
    result.code = FailureCode::Process;
    result.failedStep = m_step;
    complete(result);
}

void Worker::complete(const JobResult& result)
{
    m_isBusy = false;
    if (m_request.view.kind != View::Kind::None)
        Q_EMIT viewed({{}, {}, {}, result});
    else
        Q_EMIT finished(result);
}

void Worker::removeTemporaries()
{
    for (const QString& path : std::exchange(m_temporaries, {}))
        QFile::remove(path);
}

QString Worker::reasonOfEnd(int code, QProcess::ExitStatus status) const
{
    const QString what = culprit(m_step, m_request);
    const QString said = QString::fromUtf8(m_said.trimmed().split('\n').last()).simplified();
    if (status == QProcess::CrashExit && code == killSignal)
        return QStringLiteral("%1 was killed, perhaps for want of memory").arg(what);
    const QString how = status == QProcess::CrashExit
                            ? QStringLiteral("crashed with signal %1").arg(code)
                            : QStringLiteral("ended its process with exit status %1").arg(code);
    const QString sentence = what + QLatin1Char(' ') + how;
    return said.isEmpty() ? sentence : sentence + QLatin1String(": ") + said;
}
