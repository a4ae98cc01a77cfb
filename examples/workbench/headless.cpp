// SPDX-License-Identifier: Apache-2.0
#include "headless.h"

#include "atomicfile.h"
#include "interruption.h"
#include "machine.h"
#include "memorybudget.h"
#include "naming.h"
#include "report.h"
#include "terminal.h"
#include "worker.h"

#include <imageutils/imageutils.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QTimer>

#include <algorithm>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

/// Hands photographs to workers and reports what became of them, in their order.
class Batch : public QObject
{
public:
    Batch(const Options& options, const QList<Source>& sources);

    /// Returns the program's exit status.
    int run();

private:
    struct Photograph
    {
        Source source;
        qsizetype predecessor; ///< wants the same output name and comes first; -1: none
        bool isTaken = false;
        bool isDone = false;
        std::optional<JobResult> result{}; ///< until it was reported
    };
    struct Slot
    {
        std::unique_ptr<Worker> worker = std::make_unique<Worker>();
        Photograph* photograph = nullptr; ///< in work
    };

    void connectSlot(Slot& slot);
    void fill();
    void start(Slot& slot, Photograph& photograph);
    Photograph* ready();
    void giveUp(Slot& slot, const QString& reason);
    QString plannedName(const QString& wanted);
    void showStep(const Photograph& photograph, Step step);
    void setResult(Photograph& photograph, JobResult result);
    void reportInOrder();
    void report(Photograph& photograph);
    void quitIfWanted();
    bool isDone() const { return m_done == qsizetype(m_photographs.size()); }

    const Options& m_options;
    Report m_report;
    MemoryBudget m_memory;
    const qint64 m_memoryShare;
    std::vector<Slot> m_slots;
    std::vector<Photograph> m_photographs;
    std::size_t m_firstUntaken = 0;
    std::size_t m_firstUnreported = 0;
    qsizetype m_done = 0;
    QSet<QString> m_planned; ///< the names of a dry run
};

Batch::Batch(const Options& options, const QList<Source>& sources)
    : m_options(options), m_report(options, sources), m_memory(memoryFor(options)),
      m_memoryShare(memoryFor(options) / jobsFor(options))
{
    QHash<QString, qsizetype> lastOfName;
    for (const Source& source : sources) {
        // Lowered for file systems that take names in different letter cases for the same.
        const QString name = Naming::pathOf(source, options.settings, {}).toLower();
        m_photographs.push_back({source, lastOfName.value(name, -1)});
        lastOfName.insert(name, qsizetype(m_photographs.size()) - 1);
    }
    m_slots.resize(std::size_t(std::min(jobsFor(options), int(m_photographs.size()))));
    for (Slot& slot : m_slots)
        connectSlot(slot);
}

void Batch::connectSlot(Slot& slot)
{
    Worker* const worker = slot.worker.get();
    connect(worker, &Worker::stepped, this,
            [this, &slot](Step step) { showStep(*slot.photograph, step); });
    connect(worker, &Worker::memoryWanted, this, [this, worker](qint64 bytes) {
        m_memory.take(worker, bytes, [worker] { worker->grantMemory(); });
    });
    connect(worker, &Worker::finished, this, [this, &slot](const JobResult& result) {
        m_memory.giveBack(slot.worker.get());
        setResult(*std::exchange(slot.photograph, nullptr), result);
        fill();
    });
    connect(worker, &Worker::unavailable, this,
            [this, &slot](const QString& reason) { giveUp(slot, reason); });
}

int Batch::run()
{
    using namespace std::chrono_literals;
    Interruption::install();
    QTimer poll; // a signal handler may do nothing but set a number
    connect(&poll, &QTimer::timeout, this, &Batch::quitIfWanted);
    poll.start(20ms);
    QTimer::singleShot(0, this, [this] { fill(); });
    QCoreApplication::exec();

    QList<Worker*> workers;
    for (const Slot& slot : m_slots)
        workers.append(slot.worker.get());
    Worker::end(workers);
    for (Photograph& photograph : m_photographs) // of an interrupted run, with gaps between them
        if (photograph.result)
            report(photograph);
    return m_report.finish();
}

/// Gives every free worker a photograph.
void Batch::fill()
{
    for (Slot& slot : m_slots)
        if (!slot.photograph)
            if (Photograph* const photograph = ready())
                start(slot, *photograph);
    quitIfWanted();
}

void Batch::start(Slot& slot, Photograph& photograph)
{
    photograph.isTaken = true;
    while (m_firstUntaken < m_photographs.size() && m_photographs[m_firstUntaken].isTaken)
        ++m_firstUntaken;
    slot.photograph = &photograph;
    const Source& source = photograph.source;
    slot.worker->start(requestFor(source, m_options, m_memoryShare));
}

/// The first photograph that no worker has begun and that need not wait for another. Of those that
/// want the same name the first gets it, however long it takes. Names that were refused are done.
Batch::Photograph* Batch::ready()
{
    for (std::size_t i = m_firstUntaken; i < m_photographs.size(); ++i) {
        Photograph& photograph = m_photographs[i];
        const bool isWaiting = photograph.predecessor >= 0 &&
                               !m_photographs[std::size_t(photograph.predecessor)].isDone;
        if (photograph.isTaken || isWaiting)
            continue;
        if (photograph.source.refusal.isEmpty())
            return &photograph;
        photograph.isTaken = true;
        JobResult result;
        result.path = photograph.source.path;
        result.failure = photograph.source.refusal;
        result.code = FailureCode::Refused;
        setResult(photograph, result);
    }
    return nullptr;
}

/// A process that cannot be started: the others go on with its photograph, or, where there are
/// none, the photograph fails.
void Batch::giveUp(Slot& slot, const QString& reason)
{
    Photograph& photograph = *std::exchange(slot.photograph, nullptr);
    const bool isLast = std::none_of(m_slots.begin(), m_slots.end(),
                                     [](const Slot& other) { return other.photograph != nullptr; });
    if (!isLast) {
        photograph.isTaken = false;
        m_firstUntaken = std::min(m_firstUntaken, std::size_t(&photograph - m_photographs.data()));
        return; // until another photograph is done
    }
    JobResult result;
    result.path = photograph.source.path;
    result.failure = QStringLiteral("no process can be started for it: %1").arg(reason);
    result.code = FailureCode::Process;
    setResult(photograph, result);
    QTimer::singleShot(0, this, [this] { fill(); });
}

void Batch::showStep(const Photograph& photograph, Step step)
{
    if (m_photographs.size() < 2 || m_options.quiet)
        return;
    Terminal::showProgress(QStringLiteral("%1 of %2 done, %3 %4")
                               .arg(QString::number(m_done), QString::number(m_photographs.size()),
                                    QLatin1String(stepNames[std::size_t(step)]),
                                    NImageUtils::getFilename(photograph.source.path)));
}

void Batch::setResult(Photograph& photograph, JobResult result)
{
    if (result.isPlanned && !m_options.settings.mayOverwrite) {
        result.output = plannedName(result.output);
        result.bitmap = plannedName(result.bitmap);
    }
    photograph.result = std::move(result);
    photograph.isDone = true;
    ++m_done;
    reportInOrder();
}

/// The name that an output gets behind those that a dry run has only named so far.
QString Batch::plannedName(const QString& wanted)
{
    QString path = wanted;
    for (int number = 2; m_planned.contains(path) || (path != wanted && isNameTaken(path));
         ++number)
        path = numberedName(wanted, number);
    if (!path.isEmpty())
        m_planned.insert(path);
    return path;
}

/// Reports what is done, up to the first photograph that is in work or still to come.
void Batch::reportInOrder()
{
    while (m_firstUnreported < m_photographs.size() && m_photographs[m_firstUnreported].result)
        report(m_photographs[m_firstUnreported++]);
}

void Batch::report(Photograph& photograph)
{
    m_report.add(*photograph.result);
    photograph.result.reset();
}

void Batch::quitIfWanted()
{
    if (isDone() || Interruption::isWanted() || Terminal::isReaderGone())
        QCoreApplication::quit();
}

} // namespace

int runHeadless(const Options& options, const QList<Source>& sources)
{
    return Batch(options, sources).run();
}

/// A machine that does not tell how much it has gets no limit.
qint64 memoryFor(const Options& options)
{
    if (options.maxMemory > 0)
        return options.maxMemory;
    const qint64 available = availableMemory();
    return available > 0 ? available / 2 : std::numeric_limits<qint64>::max() / 2;
}

int jobsFor(const Options& options)
{
    return options.jobs > 0 ? options.jobs : std::max(1, int(std::thread::hardware_concurrency()));
}
