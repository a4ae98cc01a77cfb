// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "memorybudget.h"
#include "worker.h"

#include <QtCore/QElapsedTimer>

#include <deque>
#include <memory>
#include <vector>

/// Exports photographs in several worker processes, as many as the command line takes. Each
/// photograph has a number, which the signals carry.
class ExportQueue : public QObject
{
    Q_OBJECT

public:
    /// `workers` processes, whose pixels may take `memory` bytes together.
    ExportQueue(int workers, qint64 memory);
    ~ExportQueue() override;

    /// Appends a photograph. The memory share of `request` is set here.
    void add(int number, const Request& request);

    /// Takes a photograph out. One that is in work leaves no unfinished file.
    void cancel(int number);
    void cancelAll();

    /// While paused, photographs in work are finished and none is begun.
    void setPaused(bool isPaused);
    bool isPaused() const { return m_isPaused; }

    /// Photographs that are waiting or in work.
    int remaining() const;

    /// Photographs that were finished since the queue was empty.
    int finishedCount() const { return m_finished; }

    /// How long the rest will take at the speed so far; 0 while that is unknown.
    qint64 remainingMilliseconds() const;

Q_SIGNALS:
    void stepped(int number, Step step);
    void finished(int number, const JobResult& result);

private:
    struct Task
    {
        int number;
        Request request;
    };
    struct Slot
    {
        std::unique_ptr<Worker> worker = std::make_unique<Worker>(Worker::Priority::Low);
        std::optional<Task> task{}; ///< in work
    };

    void connectSlot(Slot& slot);
    void fill();
    void complete(Slot& slot, const JobResult& result);
    void giveUp(Slot& slot, const QString& reason);

    MemoryBudget m_memory;
    const qint64 m_share;
    std::deque<Task> m_waiting;
    std::vector<Slot> m_slots;
    QElapsedTimer m_clock; ///< since the queue was empty
    int m_finished = 0;
    bool m_isPaused = false;
};
