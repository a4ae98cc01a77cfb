// SPDX-License-Identifier: Apache-2.0
#include "workbenchmodel.h"

#include "croparea.h"
#include "facts.h"
#include "formats.h"
#include "headless.h"
#include "naming.h"
#include "terminal.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtCore/QUrl>

namespace {

QString recentKey() { return QStringLiteral("window/folders"); }

/// The Exif orientation of a picture with `orientation` that is turned a quarter clockwise.
int turnedRight(int orientation)
{
    constexpr std::array<int, 9> next{0, 6, 7, 8, 5, 2, 3, 4, 1};
    return next[std::size_t(orientation)];
}

/// The Exif orientation of a picture with `orientation` that is mirrored, left to right.
int mirrored(int orientation)
{
    constexpr std::array<int, 9> next{0, 2, 1, 4, 3, 6, 5, 8, 7};
    return next[std::size_t(orientation)];
}

bool isDone(WorkbenchModel::State state)
{
    return state == WorkbenchModel::State::Exported || state == WorkbenchModel::State::Kept;
}

bool isInQueue(WorkbenchModel::State state)
{
    return state == WorkbenchModel::State::Waiting || state == WorkbenchModel::State::Exporting;
}

} // namespace

WorkbenchModel::WorkbenchModel(const Options& options, const QList<Source>& sources, qint64 memory)
    : m_settings(options), m_store(memory / 3), m_queue(jobsFor(options), memory)
{
    append(sources);
    connect(&m_queue, &ExportQueue::stepped, this, &WorkbenchModel::showStep);
    connect(&m_queue, &ExportQueue::finished, this, &WorkbenchModel::showResult);
    connect(&m_store, &PreviewStore::known, this, &WorkbenchModel::showFacts);
    connect(&m_settings, &SettingsModel::changed, this, [this] { Q_EMIT viewChanged(-1); });
}

WorkbenchModel::~WorkbenchModel() { m_pool.waitForDone(); }

void WorkbenchModel::append(const QList<Source>& sources)
{
    const ExportSettings settings = m_settings.options().settings;
    m_entries.reserve(m_entries.size() + sources.size());
    for (const Source& source : sources) {
        Entry entry{m_nextNumber++, source};
        entry.source.number = entry.number + 1;
        entry.turn = settings.turn;
        entry.degrees = settings.rotate;
        entry.crop = settings.crop;
        if (!source.refusal.isEmpty()) {
            entry.state = State::Failed;
            entry.facts.failure = source.refusal;
            ++m_failed;
        }
        m_rows.insert(entry.number, int(m_entries.size()));
        m_numbers.insert(source.path, entry.number);
        m_entries.append(entry);
    }
}

void WorkbenchModel::add(const QStringList& paths, bool isRecursive)
{
    if (paths.isEmpty())
        return;
    for (const QString& path : paths)
        rememberFolder(path);
    ++m_listings;
    Q_EMIT progressed();
    const bool isDeep = isRecursive || m_settings.options().isRecursive;
    m_pool.start([this, paths, isDeep, folder = m_settings.folder()] {
        const QList<Source> sources = findSources(paths, {}, folder, isDeep);
        QMetaObject::invokeMethod(this, [this, sources] { list(sources, 0, m_nextNumber); });
    });
}

/// Appends those of `sources` that follow the first `done`, some at a time, so that the window
/// draws frames and takes keys in between.
void WorkbenchModel::list(const QList<Source>& sources, qsizetype done, int first)
{
    constexpr qsizetype atOnce = 500;
    const QList<Source> next = sources.mid(done, atOnce);
    if (!next.isEmpty()) {
        beginInsertRows({}, count(), count() + int(next.size()) - 1);
        append(next);
        endInsertRows();
        done += next.size();
    }
    if (done < sources.size()) {
        Q_EMIT progressed();
        QTimer::singleShot(0, this, [=, this] { list(sources, done, first); });
        return;
    }
    --m_listings;
    Q_EMIT progressed();
    Q_EMIT added(first, int(sources.size()));
}

void WorkbenchModel::addUrls(const QList<QUrl>& urls, bool isRecursive)
{
    QStringList paths;
    for (const QUrl& url : urls)
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    add(paths, isRecursive);
}

void WorkbenchModel::remove(int number)
{
    const int row = m_rows.value(number, -1);
    if (row < 0)
        return;
    cancel(number);
    beginRemoveRows({}, row, row);
    setState(m_entries[row], State::Listed); // it is not counted any more
    m_numbers.remove(m_entries.at(row).source.path, number);
    m_entries.removeAt(row);
    renumberRows();
    endRemoveRows();
    Q_EMIT progressed();
}

void WorkbenchModel::clear()
{
    cancelAll();
    beginResetModel();
    m_entries.clear();
    m_rows.clear();
    m_numbers.clear();
    m_exported = m_failed = 0;
    endResetModel();
    Q_EMIT progressed();
}

void WorkbenchModel::exportOne(int number)
{
    if (Entry* const entry = find(number))
        enqueue(*entry);
    Q_EMIT progressed();
}

void WorkbenchModel::exportAll()
{
    for (Entry& entry : m_entries)
        enqueue(entry);
    Q_EMIT progressed();
}

void WorkbenchModel::retryFailed()
{
    for (Entry& entry : m_entries)
        if (entry.state == State::Failed)
            enqueue(entry);
    Q_EMIT progressed();
}

void WorkbenchModel::enqueue(Entry& entry)
{
    if (isInQueue(entry.state) || !entry.source.refusal.isEmpty())
        return;
    if (remaining() == 0)
        m_failedOfRun = 0;
    setState(entry, State::Waiting);
    m_queue.add(entry.number, *requestFor(entry.number));
    changed(entry);
}

void WorkbenchModel::cancel(int number)
{
    Entry* const entry = find(number);
    if (!entry || !isInQueue(entry->state))
        return;
    m_queue.cancel(number);
    setState(*entry, State::Listed);
    changed(*entry);
    Q_EMIT progressed();
}

void WorkbenchModel::cancelAll()
{
    m_queue.cancelAll();
    for (Entry& entry : m_entries)
        if (isInQueue(entry.state)) {
            setState(entry, State::Listed);
            changed(entry);
        }
    Q_EMIT progressed();
}

void WorkbenchModel::turn(int number, int quarters)
{
    Entry* const entry = find(number);
    if (!entry)
        return;
    for (int i = 0; i < (quarters % 4 + 4) % 4; ++i) {
        const QRect& crop = entry->crop;
        const QRect turned(turnedSize(*entry).height() - crop.y() - crop.height(), crop.x(),
                           crop.height(), crop.width());
        setShape(*entry, turnedRight(entry->turn), entry->degrees,
                 crop.isNull() ? QRect() : turned);
    }
}

/// The mirrored picture is turned the other way, so that it shows the same as before.
void WorkbenchModel::mirror(int number)
{
    Entry* const entry = find(number);
    if (!entry)
        return;
    QRect crop = entry->crop;
    if (!crop.isNull())
        crop.moveLeft(turnedSize(*entry).width() - crop.x() - crop.width());
    setShape(*entry, mirrored(entry->turn), -entry->degrees, crop);
}

void WorkbenchModel::setDegrees(int number, double degrees)
{
    if (Entry* const entry = find(number)) {
        const QRect crop = CropArea::shrunk(turnedSize(*entry), entry->crop, degrees);
        setShape(*entry, entry->turn, degrees, entry->crop.isNull() ? QRect() : crop);
    }
}

void WorkbenchModel::setCrop(int number, const QRectF& crop)
{
    if (Entry* const entry = find(number))
        setShape(*entry, entry->turn, entry->degrees, crop.isEmpty() ? QRect() : crop.toRect());
}

void WorkbenchModel::setShape(Entry& entry, int turn, double degrees, const QRect& crop)
{
    if (entry.turn == turn && entry.degrees == degrees && entry.crop == crop)
        return;
    entry.turn = turn;
    entry.degrees = degrees;
    entry.crop = crop;
    changed(entry);
    Q_EMIT viewChanged(entry.number);
}

/// The size of the photograph as its crop counts it; empty while it is unknown.
QSize WorkbenchModel::turnedSize(const Entry& entry)
{
    const QSize size = entry.facts.size;
    return entry.turn > 4 ? size.transposed() : size; // as Exif orientations are numbered
}

void WorkbenchModel::prepare(const QList<int>& numbers)
{
    QList<Request> requests;
    for (const int number : numbers)
        if (const auto request = requestFor(number))
            requests.append(*request);
    m_store.prepare(requests);
}

int WorkbenchModel::secondsLeft() const
{
    return int((m_queue.remainingMilliseconds() + 999) / 1000);
}

void WorkbenchModel::setPaused(bool isPaused)
{
    m_queue.setPaused(isPaused);
    Q_EMIT progressed();
}

std::optional<Request> WorkbenchModel::requestFor(int number) const
{
    const int row = m_rows.value(number, -1);
    if (row < 0)
        return {};
    const Entry& entry = m_entries.at(row);
    Request request = ::requestFor(entry.source, m_settings.options(), 0);
    request.options.settings.turn = entry.turn;
    request.options.settings.rotate = entry.degrees;
    request.options.settings.crop = entry.crop;
    return request;
}

bool WorkbenchModel::losesPixels(int number) const
{
    const int row = m_rows.value(number, -1);
    if (row < 0)
        return false;
    const ExportSettings settings = m_settings.options().settings;
    const QString extension = Naming::extensionOf(m_entries.at(row).source.path, settings);
    return Formats::encodingOf(settings, extension).contains(QLatin1String("quality"));
}

void WorkbenchModel::showStep(int number, Step)
{
    Entry* const entry = find(number);
    if (!entry || entry->state == State::Exporting)
        return;
    setState(*entry, State::Exporting);
    changed(*entry);
}

void WorkbenchModel::showResult(int number, const JobResult& result)
{
    Entry* const entry = find(number);
    if (!entry)
        return;
    const JobResult known = std::exchange(entry->facts, result);
    if (result.metadata.isEmpty()) // an export that was kept reads less than a view
        entry->facts.metadata = known.metadata;
    if (!result.failure.isEmpty()) {
        Terminal::printError(entry->source.path + QLatin1String(": ") + result.failure);
        ++m_failedOfRun;
        setState(*entry, State::Failed);
    } else {
        entry->bytes = QFileInfo(entry->source.path).size();
        entry->outputBytes = QFileInfo(result.output).size();
        setState(*entry, result.isKept ? State::Kept : State::Exported);
    }
    changed(*entry);
    Q_EMIT progressed();
    if (remaining() == 0)
        Q_EMIT exportEnded(finished() - m_failedOfRun, m_failedOfRun);
}

/// What a view has found out about a photograph, which an export may know better already.
void WorkbenchModel::showFacts(const JobResult& facts)
{
    const QList<int> numbers = m_numbers.values(facts.path);
    for (const int number : numbers) {
        Entry* const entry = find(number);
        if (!entry || isInQueue(entry->state) || isDone(entry->state))
            continue;
        if (entry->bytes < 0)
            entry->bytes = QFileInfo(entry->source.path).size();
        const QSize outputSize = entry->facts.outputSize;
        if (!facts.failure.isEmpty() || facts.storedSize.isValid())
            entry->facts = facts;
        else if (!entry->facts.storedSize.isValid())
            entry->facts.size = facts.size; // a thumbnail knows no more
        if (facts.failure.isEmpty() && !facts.outputSize.isValid())
            entry->facts.outputSize = outputSize; // a view of the photograph before knows none
        setState(*entry, facts.failure.isEmpty() ? State::Listed : State::Failed);
        changed(*entry);
    }
    Q_EMIT progressed();
}

void WorkbenchModel::setState(Entry& entry, State state)
{
    m_exported += int(isDone(state)) - int(isDone(entry.state));
    m_failed += int(state == State::Failed) - int(entry.state == State::Failed);
    entry.state = state;
}

void WorkbenchModel::renumberRows()
{
    m_rows.clear();
    for (int row = 0; row < count(); ++row)
        m_rows.insert(m_entries.at(row).number, row);
}

WorkbenchModel::Entry* WorkbenchModel::find(int number)
{
    const int row = m_rows.value(number, -1);
    return row < 0 ? nullptr : &m_entries[row];
}

void WorkbenchModel::changed(const Entry& entry)
{
    const QModelIndex changed = index(m_rows.value(entry.number));
    Q_EMIT dataChanged(changed, changed);
}

QStringList WorkbenchModel::recentFolders() const
{
    return QSettings().value(recentKey()).toStringList();
}

void WorkbenchModel::rememberFolder(const QString& path)
{
    constexpr qsizetype most = 8;
    if (QDir::home().isRoot())
        return; // a user without a home has no settings
    const QFileInfo info(path);
    const QString folder = info.isDir() ? info.absoluteFilePath() : info.absolutePath();
    QStringList folders = recentFolders();
    folders.removeAll(folder);
    folders.prepend(folder);
    QSettings().setValue(recentKey(), folders.mid(0, most));
    Q_EMIT recentFoldersChanged();
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
    const JobResult& facts = entry.facts;
    switch (role) {
    case NumberRole:
        return entry.number;
    case PathRole:
        return entry.source.path;
    case NameRole:
        return NImageUtils::getFilename(entry.source.path);
    case StateRole:
        return int(entry.state);
    case FailureRole:
        return entry.state == State::Failed ? Facts::failureText(facts.failure) : QString();
    case OutputRole:
        return isDone(entry.state) ? facts.output : QString();
    case SizesRole:
        return Facts::sizesText(entry.bytes, entry.outputBytes);
    case FactNamesRole:
        return Facts::names(facts);
    case FactValuesRole:
        return Facts::values(facts);
    case PixelsRole:
        return QSizeF(facts.size); // the only size that QML has
    case TurnRole:
        return entry.turn;
    case DegreesRole:
        return entry.degrees;
    case CropRole:
        return QRectF(entry.crop);
    case DateRole:
        return facts.metadata.value(QLatin1String("DateTimeOriginal")).toString();
    case BytesRole:
        return entry.bytes;
    default:
        return {};
    }
}

QHash<int, QByteArray> WorkbenchModel::roleNames() const
{
    return {{NumberRole, "number"}, {PathRole, "path"},           {NameRole, "name"},
            {StateRole, "stage"},   {FailureRole, "failure"},     {OutputRole, "output"},
            {SizesRole, "sizes"},   {FactNamesRole, "factNames"}, {FactValuesRole, "factValues"},
            {PixelsRole, "pixels"}, {TurnRole, "turned"},         {DegreesRole, "degrees"},
            {CropRole, "crop"},     {DateRole, "date"},           {BytesRole, "bytes"}};
}
