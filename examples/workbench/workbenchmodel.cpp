// SPDX-License-Identifier: Apache-2.0
#include "workbenchmodel.h"

#include "report.h"
#include "terminal.h"

#include <QtCore/QFileInfo>

#include <cmath>

namespace {

enum Role {
    PathRole = Qt::UserRole,
    StateRole,
    DetailRole,
    StoredRole,
    UprightRole,
    PixelsRole,
    GreyRole,
    NoiseRole,
    OutputRole,
    OutputSizeRole,
    CameraRole,
    TimesRole
};

/// "decode 312 ms, resample 1204 ms, …"
QString timesText(const JobResult& result)
{
    QStringList times;
    for (std::size_t step = 0; step < stepNames.size(); ++step)
        if (const double milliseconds = result.milliseconds[step]; milliseconds >= 0.5)
            times.append(QStringLiteral("%1 %2 ms")
                             .arg(QString::fromLatin1(stepNames[step]))
                             .arg(std::round(milliseconds)));
    return times.join(QLatin1String(", "));
}

} // namespace

WorkbenchModel::WorkbenchModel(const Options& options, const QList<Source>& sources)
    : m_options(options)
{
    append(sources);
}

void WorkbenchModel::start()
{
    m_worker = std::jthread([this](const std::stop_token& stop) { work(stop); });
}

void WorkbenchModel::append(const QList<Source>& sources)
{
    const std::lock_guard lock(m_mutex);
    for (const Source& source : sources) {
        m_tasks.push_back({count(), source});
        m_entries.append({source, State::Waiting, Step::Header, {}});
    }
}

void WorkbenchModel::add(const QStringList& paths)
{
    const QList<Source> sources = findSources(paths, {}, m_options.outputFolder);
    if (sources.isEmpty())
        return;
    beginInsertRows({}, count(), count() + int(sources.size()) - 1);
    append(sources);
    endInsertRows();
    m_hasTask.notify_one();
    Q_EMIT progressed();
}

/// On the worker: waits for a photograph; nothing when the work is to end.
std::optional<WorkbenchModel::Task> WorkbenchModel::nextTask(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    m_hasTask.wait(lock, stop, [this] { return !m_tasks.empty(); });
    if (stop.stop_requested())
        return {};
    const Task task = m_tasks.front();
    m_tasks.pop_front();
    return task;
}

/// On the worker: leaves every change of the entries to the thread of the window.
void WorkbenchModel::work(const std::stop_token& stop)
{
    Resources resources{MemoryBudget(0), BufferPool(1)}; // one photograph has whatever it needs
    while (const std::optional<Task> task = nextTask(stop)) {
        const auto& [row, source] = *task;
        const auto onStep = [this, row = row](Step step) {
            QMetaObject::invokeMethod(
                this, [this, row, step] { showStep(row, step); }, Qt::QueuedConnection);
        };
        JobResult result;
        if (source.refusal.isEmpty())
            result = runJob(source.path, m_options, resources, onStep, stop);
        else
            result.failure = source.refusal;
        QMetaObject::invokeMethod(
            this, [this, row = row, result] { showResult(row, result); }, Qt::QueuedConnection);
    }
}

void WorkbenchModel::showStep(int row, Step step)
{
    m_entries[row].state = State::Working;
    m_entries[row].step = step;
    changed(row);
}

void WorkbenchModel::showResult(int row, const JobResult& result)
{
    Entry& entry = m_entries[row];
    entry.result = result;
    m_latest = row;
    ++m_finished;
    if (!result.failure.isEmpty()) {
        ++m_failed;
        Terminal::printError(entry.source.path + QLatin1String(": ") + result.failure);
        entry.state = State::Failed;
    } else {
        entry.state = result.isKept ? State::Kept : State::Exported;
    }
    changed(row);
}

void WorkbenchModel::changed(int row)
{
    Q_EMIT dataChanged(index(row), index(row));
    Q_EMIT progressed();
}

QString WorkbenchModel::outputFolder() const
{
    return QFileInfo(m_options.outputFolder).absoluteFilePath();
}

int WorkbenchModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant WorkbenchModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const Entry& entry = m_entries.at(index.row());
    const JobResult& result = entry.result;
    switch (role) {
    case PathRole:
        return entry.source.path;
    case StateRole:
        return int(entry.state);
    case DetailRole:
        return entry.state == State::Working
                   ? QString::fromLatin1(stepNames[std::size_t(entry.step)])
                   : result.failure;
    case StoredRole:
        return sizeText(result.storedSize);
    case UprightRole:
        return sizeText(result.size);
    case PixelsRole:
        return QSizeF(result.size); // the only size that QML has
    case GreyRole:
        return answerText(result.isGrey);
    case NoiseRole:
        return answerText(result.isLumaNoise);
    case OutputRole:
        return result.output;
    case OutputSizeRole:
        return sizeText(result.outputSize);
    case CameraRole:
        return cameraText(result);
    case TimesRole:
        return timesText(result);
    default:
        return {};
    }
}

QHash<int, QByteArray> WorkbenchModel::roleNames() const
{
    return {{PathRole, "path"},       {StateRole, "stage"},
            {DetailRole, "detail"},   {StoredRole, "stored"},
            {UprightRole, "upright"}, {PixelsRole, "pixels"},
            {GreyRole, "grey"},       {NoiseRole, "noise"},
            {OutputRole, "output"},   {OutputSizeRole, "outputSize"},
            {CameraRole, "camera"},   {TimesRole, "times"}};
}
