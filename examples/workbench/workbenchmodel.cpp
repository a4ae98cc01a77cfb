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

WorkbenchModel::WorkbenchModel(const Options& options, const QList<Source>& sources,
                               qint64 memoryShare)
    : m_options(options), m_memoryShare(memoryShare)
{
    append(sources);
    connect(&m_worker, &Worker::stepped, this, &WorkbenchModel::showStep);
    connect(&m_worker, &Worker::memoryWanted, &m_worker, &Worker::grantMemory); // nobody shares it
    connect(&m_worker, &Worker::finished, this, &WorkbenchModel::showResult);
    connect(&m_worker, &Worker::unavailable, this, [this](const QString& reason) {
        JobResult result;
        result.failure = QStringLiteral("no process can be started for it: %1").arg(reason);
        showResult(result);
    });
}

void WorkbenchModel::start()
{
    m_isStarted = true;
    startNext();
}

void WorkbenchModel::append(const QList<Source>& sources)
{
    for (const Source& source : sources)
        m_entries.append({source, State::Waiting, Step::Header, {}});
}

void WorkbenchModel::add(const QStringList& paths)
{
    const QList<Source> sources = findSources(paths, {}, m_options.settings.outputFolder);
    if (sources.isEmpty())
        return;
    beginInsertRows({}, count(), count() + int(sources.size()) - 1);
    append(sources);
    endInsertRows();
    Q_EMIT progressed();
    startNext();
}

/// Starts the next photograph unless one is in work.
void WorkbenchModel::startNext()
{
    if (!m_isStarted || m_worker.isBusy() || m_current >= count())
        return;
    const Source& source = m_entries.at(m_current).source;
    if (source.refusal.isEmpty()) {
        m_worker.start(requestFor(source, m_options, m_memoryShare));
        return;
    }
    JobResult result;
    result.failure = source.refusal;
    showResult(result);
}

void WorkbenchModel::showStep(Step step)
{
    m_entries[m_current].state = State::Working;
    m_entries[m_current].step = step;
    changed(m_current);
}

void WorkbenchModel::showResult(const JobResult& result)
{
    Entry& entry = m_entries[m_current];
    entry.result = result;
    m_latest = m_current;
    ++m_finished;
    if (!result.failure.isEmpty()) {
        ++m_failed;
        Terminal::printError(entry.source.path + QLatin1String(": ") + result.failure);
        entry.state = State::Failed;
    } else {
        entry.state = result.isKept ? State::Kept : State::Exported;
    }
    changed(m_current);
    ++m_current;
    QMetaObject::invokeMethod(this, &WorkbenchModel::startNext, Qt::QueuedConnection);
}

void WorkbenchModel::changed(int row)
{
    Q_EMIT dataChanged(index(row), index(row));
    Q_EMIT progressed();
}

QString WorkbenchModel::outputFolder() const
{
    return QFileInfo(m_options.settings.outputFolder).absoluteFilePath();
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
