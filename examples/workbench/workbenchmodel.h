// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "job.h"
#include "sources.h"

#include <QtCore/QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

/// The photographs of a run, for the window: each with its state and, as it becomes known, what the
/// library found out about it. A thread of its own takes them down the road one after the other.
class WorkbenchModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int count READ count NOTIFY progressed)
    Q_PROPERTY(int latest READ latest NOTIFY progressed)
    Q_PROPERTY(int finished READ finished NOTIFY progressed)
    Q_PROPERTY(int failed READ failed NOTIFY progressed)
    Q_PROPERTY(QString outputFolder READ outputFolder CONSTANT)

public:
    enum class State { Waiting, Working, Exported, Kept, Failed };
    Q_ENUM(State)

    WorkbenchModel(const Options& options, const QList<Source>& sources);

    /// Begins the work, which ends with this object.
    void start();

    /// Appends the photographs that `paths` name, to be taken down the road as the others.
    Q_INVOKABLE void add(const QStringList& paths);

    int count() const { return int(m_entries.size()); }
    int latest() const { return m_latest; }     ///< row of the photograph that was done last
    int finished() const { return m_finished; } ///< photographs that are done, failed ones too
    int failed() const { return m_failed; }
    QString outputFolder() const; ///< an absolute path

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void progressed();

private:
    struct Entry
    {
        Source source;
        State state = State::Waiting;
        Step step = Step::Header;
        JobResult result;
    };
    struct Task
    {
        int row;
        Source source;
    };

    void append(const QList<Source>& sources);
    std::optional<Task> nextTask(const std::stop_token& stop);
    void work(const std::stop_token& stop);
    void showStep(int row, Step step);
    void showResult(int row, const JobResult& result);
    void changed(int row);

    const Options m_options;
    QList<Entry> m_entries;
    int m_latest = 0;
    int m_finished = 0;
    int m_failed = 0;
    std::mutex m_mutex; ///< of the tasks, which alone are shared with the worker
    std::condition_variable_any m_hasTask;
    std::deque<Task> m_tasks;
    std::jthread m_worker; // last: it is joined before anything that it uses goes away
};
