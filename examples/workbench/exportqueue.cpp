// SPDX-License-Identifier: Apache-2.0
#include "exportqueue.h"

#include <algorithm>
#include <utility>

ExportQueue::ExportQueue(int workers, qint64 memory) : m_memory(memory), m_share(memory / workers)
{
    m_slots.resize(std::size_t(workers));
    for (Slot& slot : m_slots)
        connectSlot(slot);
}

ExportQueue::~ExportQueue()
{
    QList<Worker*> workers;
    for (const Slot& slot : m_slots) {
        slot.worker->disconnect(this); // it may report what it has finished while it is ended
        workers.append(slot.worker.get());
    }
    Worker::end(workers);
}

void ExportQueue::connectSlot(Slot& slot)
{
    Worker* const worker = slot.worker.get();
    connect(worker, &Worker::stepped, this, [this, &slot](Step step) {
        if (slot.task)
            Q_EMIT stepped(slot.task->number, step);
    });
    connect(worker, &Worker::memoryWanted, this, [this, worker](qint64 bytes) {
        m_memory.take(worker, bytes, [worker] { worker->grantMemory(); });
    });
    connect(worker, &Worker::finished, this,
            [this, &slot](const JobResult& result) { complete(slot, result); });
    connect(worker, &Worker::unavailable, this,
            [this, &slot](const QString& reason) { giveUp(slot, reason); });
}

void ExportQueue::add(int number, const Request& request)
{
    if (remaining() == 0) {
        m_finished = 0;
        m_clock.start();
    }
    m_waiting.push_back({number, request});
    m_waiting.back().request.memoryShare = m_share;
    QMetaObject::invokeMethod(this, &ExportQueue::fill, Qt::QueuedConnection);
}

void ExportQueue::cancel(int number)
{
    std::erase_if(m_waiting, [number](const Task& task) { return task.number == number; });
    for (Slot& slot : m_slots)
        if (slot.task && slot.task->number == number) {
            slot.worker->disconnect(this); // its result is not wanted any more
            Worker::end({slot.worker.get()});
            m_memory.giveBack(slot.worker.get());
            slot.task.reset();
            slot.worker = std::make_unique<Worker>(Worker::Priority::Low);
            connectSlot(slot);
        }
    fill();
}

void ExportQueue::cancelAll()
{
    m_waiting.clear();
    for (const Slot& slot : m_slots)
        if (slot.task)
            cancel(slot.task->number);
    m_isPaused = false;
}

void ExportQueue::setPaused(bool isPaused)
{
    m_isPaused = isPaused;
    fill();
}

int ExportQueue::remaining() const
{
    const auto inWork = std::count_if(m_slots.begin(), m_slots.end(),
                                      [](const Slot& slot) { return slot.task.has_value(); });
    return int(m_waiting.size()) + int(inWork);
}

qint64 ExportQueue::remainingMilliseconds() const
{
    return m_finished > 0 ? m_clock.elapsed() * remaining() / m_finished : 0;
}

/// Gives every free worker a photograph.
void ExportQueue::fill()
{
    for (Slot& slot : m_slots) {
        if (slot.task || m_waiting.empty() || m_isPaused)
            continue;
        slot.task = std::move(m_waiting.front());
        m_waiting.pop_front();
        slot.worker->start(slot.task->request);
    }
}

void ExportQueue::complete(Slot& slot, const JobResult& result)
{
    m_memory.giveBack(slot.worker.get());
    const int number = std::exchange(slot.task, {})->number;
    ++m_finished;
    Q_EMIT finished(number, result);
    fill();
}

/// Without a process for it the photograph fails, as on the command line.
void ExportQueue::giveUp(Slot& slot, const QString& reason)
{
    JobResult result;
    result.path = slot.task->request.path;
    result.failure = QStringLiteral("no process can be started for it: %1").arg(reason);
    complete(slot, result);
}
