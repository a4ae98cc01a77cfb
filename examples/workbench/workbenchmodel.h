// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sources.h"
#include "worker.h"

#include <QtCore/QAbstractListModel>
#include <QtQml/qqmlregistration.h>

/// The photographs of a run, for the window: each with its state and, as it becomes known, what the
/// library found out about it. A worker process exports one after the other.
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

    /// Workers may use `memoryShare` bytes.
    WorkbenchModel(const Options& options, const QList<Source>& sources, qint64 memoryShare);

    /// Begins the work, which ends with this object.
    void start();

    /// Appends the photographs that `paths` name, to be exported as the others.
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
    void append(const QList<Source>& sources);
    void startNext();
    void showStep(Step step);
    void showResult(const JobResult& result);
    void changed(int row);

    const Options m_options;
    QList<Entry> m_entries;
    int m_latest = 0;
    int m_finished = 0;
    int m_failed = 0;
    int m_current = 0; ///< row of the photograph that is in work, or comes next
    bool m_isStarted = false;
    const qint64 m_memoryShare;
    Worker m_worker;
};
