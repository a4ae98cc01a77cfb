// SPDX-License-Identifier: Apache-2.0
#include "headless.h"

#include "interruption.h"
#include "machine.h"
#include "report.h"
#include "terminal.h"

#include <imageutils/imageutils.h>

#include <QtCore/QHash>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <thread>
#include <vector>

namespace {

JobResult refused(const Source& source)
{
    JobResult result;
    result.path = source.path;
    result.failure = source.refusal;
    return result;
}

int jobsFor(const Options& options)
{
    return options.jobs > 0 ? options.jobs : std::max(1, int(std::thread::hardware_concurrency()));
}

/// For half of the photographs in work: the library's loops use several processors by themselves.
int buffersFor(const Options& options) { return (jobsFor(options) + 1) / 2; }

/// A machine that does not tell how much it has gets no limit.
qint64 memoryFor(const Options& options)
{
    if (options.maxMemory > 0)
        return options.maxMemory;
    const qint64 available = availableMemory();
    return available > 0 ? available / 2 : std::numeric_limits<qint64>::max() / 2;
}

/// Takes photographs down the road, several at once, and reports them in their order.
class Run
{
public:
    Run(const Options& options, const QList<Source>& sources);

    /// Returns the program's exit status.
    int finish();

private:
    struct Photograph
    {
        Source source;
        qsizetype predecessor; ///< wants the same output name and comes first; -1: none
        bool isTaken = false;
        bool isDone = false;
        std::optional<JobResult> result{}; ///< until it was reported
    };

    void work(const std::stop_token& stop);
    Photograph* next(const std::stop_token& stop);
    Photograph* ready();
    void showStep(const Photograph& photograph, Step step);
    void setResult(Photograph& photograph, JobResult result);
    void reportInOrder();
    void report(Photograph& photograph);

    const Options& m_options;
    Report m_report;
    Resources m_resources;
    std::mutex m_mutex; ///< of everything below
    std::condition_variable_any m_changed;
    std::vector<Photograph> m_photographs;
    std::size_t m_firstUntaken = 0;
    std::size_t m_firstUnreported = 0;
    qsizetype m_done = 0;
    int m_working = 0;
};

Run::Run(const Options& options, const QList<Source>& sources)
    : m_options(options), m_report(options, sources), m_resources{MemoryBudget(memoryFor(options)),
                                                                  BufferPool(buffersFor(options))}
{
    QHash<QString, qsizetype> lastOfName;
    for (const Source& source : sources) {
        // Lowered for file systems that take names in different letter cases for the same.
        const QString name = NImageUtils::getBaseName(source.path).toLower();
        m_photographs.push_back({source, lastOfName.value(name, -1)});
        lastOfName.insert(name, qsizetype(m_photographs.size()) - 1);
    }
}

int Run::finish()
{
    using namespace std::chrono_literals;
    Interruption::install();
    std::vector<std::jthread> workers; // they are told to stop and joined as they go away
    m_working = std::min(jobsFor(m_options), int(m_photographs.size()));
    for (int i = 0; i < m_working; ++i)
        workers.emplace_back([this](const std::stop_token& stop) { work(stop); });
    std::unique_lock lock(m_mutex);
    // A signal may do nothing but set a number, so it is looked at.
    while (!m_changed.wait_for(lock, 100ms, [this] { return m_working == 0; }))
        if (Interruption::isWanted())
            for (std::jthread& worker : workers)
                worker.request_stop();
    lock.unlock();
    workers.clear();
    for (Photograph& photograph : m_photographs) // of an interrupted run, with gaps between them
        if (photograph.result)
            report(photograph);
    const int status = m_report.finish();
    if (Interruption::isWanted())
        Interruption::obey();
    return status;
}

void Run::work(const std::stop_token& stop)
{
    while (Photograph* const photograph = next(stop)) {
        const Source& source = photograph->source;
        const auto onStep = [&](Step step) { showStep(*photograph, step); };
        setResult(*photograph, source.refusal.isEmpty()
                                   ? runJob(source.path, m_options, m_resources, onStep, stop)
                                   : refused(source));
    }
    const std::lock_guard lock(m_mutex);
    --m_working;
    m_changed.notify_all();
}

/// Waits for a photograph that may be begun; null when there will be none.
Run::Photograph* Run::next(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    Photograph* photograph = nullptr;
    m_changed.wait(lock, stop, [&] {
        photograph = ready();
        return photograph || m_firstUntaken == m_photographs.size();
    });
    if (!photograph || stop.stop_requested())
        return nullptr;
    photograph->isTaken = true;
    while (m_firstUntaken < m_photographs.size() && m_photographs[m_firstUntaken].isTaken)
        ++m_firstUntaken;
    return photograph;
}

/// The first photograph that nobody has begun and that need not wait for another. Of those that
/// want the same name the first gets it, however long it takes.
Run::Photograph* Run::ready()
{
    const auto isReady = [this](const Photograph& photograph) {
        return !photograph.isTaken && (photograph.predecessor < 0 ||
                                       m_photographs[std::size_t(photograph.predecessor)].isDone);
    };
    const auto first = std::find_if(m_photographs.begin() + std::ptrdiff_t(m_firstUntaken),
                                    m_photographs.end(), isReady);
    return first == m_photographs.end() ? nullptr : &*first;
}

void Run::showStep(const Photograph& photograph, Step step)
{
    if (m_photographs.size() < 2)
        return;
    const std::lock_guard lock(m_mutex);
    Terminal::showProgress(QStringLiteral("%1 of %2 done, %3 %4")
                               .arg(m_done)
                               .arg(m_photographs.size())
                               .arg(QLatin1String(stepNames[std::size_t(step)]),
                                    NImageUtils::getFilename(photograph.source.path)));
}

void Run::setResult(Photograph& photograph, JobResult result)
{
    const std::lock_guard lock(m_mutex);
    photograph.result = std::move(result);
    photograph.isDone = true;
    ++m_done;
    reportInOrder();
    m_changed.notify_all();
}

/// Reports what is done, up to the first photograph that is in work or still to come.
void Run::reportInOrder()
{
    while (m_firstUnreported < m_photographs.size() && m_photographs[m_firstUnreported].result)
        report(m_photographs[m_firstUnreported++]);
}

void Run::report(Photograph& photograph)
{
    m_report.add(*photograph.result);
    photograph.result.reset();
}

} // namespace

int runHeadless(const Options& options, const QList<Source>& sources)
{
    return Run(options, sources).finish();
}
