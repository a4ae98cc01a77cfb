// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exportqueue.h"
#include "previewstore.h"
#include "settingsmodel.h"
#include "sources.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QThreadPool>
#include <QtQml/qqmlregistration.h>

/// The photographs in the window: each with its state and, as it becomes known, what the library
/// found out about it. Nothing is exported before the user wants it. A photograph has a number for
/// life, by which the functions name it; its row changes.
class WorkbenchModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int count READ count NOTIFY progressed)
    Q_PROPERTY(int exported READ exported NOTIFY progressed)
    Q_PROPERTY(int failed READ failed NOTIFY progressed)
    Q_PROPERTY(int remaining READ remaining NOTIFY progressed)
    Q_PROPERTY(int finished READ finished NOTIFY progressed)
    Q_PROPERTY(int secondsLeft READ secondsLeft NOTIFY progressed)
    Q_PROPERTY(bool isPaused READ isPaused WRITE setPaused NOTIFY progressed)
    Q_PROPERTY(bool isListing READ isListing NOTIFY progressed)
    Q_PROPERTY(QStringList recentFolders READ recentFolders NOTIFY recentFoldersChanged)
    Q_PROPERTY(SettingsModel* settings READ settings CONSTANT)

public:
    enum class State { Listed, Waiting, Exporting, Exported, Kept, Failed };
    Q_ENUM(State)

    enum Role {
        NumberRole = Qt::UserRole,
        PathRole,
        NameRole,
        StateRole,
        FailureRole,
        OutputRole,
        SizesRole,
        FactNamesRole,
        FactValuesRole,
        PixelsRole,
        TurnRole,
        DegreesRole,
        CropRole,
        DateRole,
        BytesRole
    };

    /// Exports may use `memory` bytes for pixels, and views as much again.
    WorkbenchModel(const Options& options, const QList<Source>& sources, qint64 memory);
    ~WorkbenchModel() override;

    /// Appends the photographs that `paths` name, also those of folders inside of folders if
    /// `isRecursive`. Folders are read on another thread.
    Q_INVOKABLE void add(const QStringList& paths, bool isRecursive = false);
    Q_INVOKABLE void addUrls(const QList<QUrl>& urls, bool isRecursive = false);
    Q_INVOKABLE void remove(int number);
    Q_INVOKABLE void clear();

    Q_INVOKABLE void exportOne(int number);
    Q_INVOKABLE void exportAll();
    Q_INVOKABLE void retryFailed();
    Q_INVOKABLE void cancel(int number);
    Q_INVOKABLE void cancelAll();

    /// Turns the photograph by quarters clockwise, or mirrors it, for view and export.
    Q_INVOKABLE void turn(int number, int quarters);
    Q_INVOKABLE void mirror(int number);

    /// Turns it by `degrees`. A crop that would reach beyond the picture then becomes smaller.
    Q_INVOKABLE void setDegrees(int number, double degrees);

    /// Crops it to `crop`, in pixels of the turned picture; an empty one keeps as much as possible.
    Q_INVOKABLE void setCrop(int number, const QRectF& crop);

    /// Decodes the photographs, which the user may look at next.
    Q_INVOKABLE void prepare(const QList<int>& numbers);

    int count() const { return int(m_entries.size()); }
    int exported() const { return m_exported; } ///< photographs that are done, kept ones too
    int failed() const { return m_failed; }
    int remaining() const { return m_queue.remaining(); }
    int finished() const { return m_queue.finishedCount(); } ///< of the export that is running
    int secondsLeft() const; ///< of the export that is running; 0 while unknown
    bool isPaused() const { return m_queue.isPaused(); }
    void setPaused(bool isPaused);
    bool isListing() const { return m_listings > 0; } ///< folders are being read
    QStringList recentFolders() const;
    SettingsModel* settings() { return &m_settings; }
    PreviewStore* store() { return &m_store; }

    /// The request for the photograph with the settings of now; nothing when it has been removed,
    /// or is none.
    std::optional<Request> requestFor(int number) const;

    /// Whether the format that the photograph is exported in stores other pixels than it is given.
    bool losesPixels(int number) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void progressed();
    void recentFoldersChanged();

    /// The photograph is to be shown anew.
    void viewChanged(int number);

    /// `count` photographs were added; `first` is the number of the first one.
    void added(int first, int count);

    /// The export that was running is over.
    void exportEnded(int exported, int failed);

private:
    struct Entry
    {
        int number;
        Source source;
        State state = State::Listed;
        JobResult facts{};
        int turn = 1; ///< as an Exif orientation
        double degrees = 0;
        QRect crop{};            ///< as in ExportSettings
        qint64 bytes = -1;       ///< of the file; -1 while unknown
        qint64 outputBytes = -1; ///< of the exported file
    };

    void append(const QList<Source>& sources);
    void list(const QList<Source>& sources, qsizetype done, int first);
    void enqueue(Entry& entry);
    static QSize turnedSize(const Entry& entry);
    void setShape(Entry& entry, int turn, double degrees, const QRect& crop);
    void showStep(int number, Step step);
    void showResult(int number, const JobResult& result);
    void showFacts(const JobResult& facts);
    void setState(Entry& entry, State state);
    void rememberFolder(const QString& path);
    void renumberRows();
    Entry* find(int number);
    void changed(const Entry& entry);

    SettingsModel m_settings;
    QList<Entry> m_entries;
    QHash<int, int> m_rows;             ///< of the numbers
    QMultiHash<QString, int> m_numbers; ///< of the paths
    int m_nextNumber = 0;
    int m_exported = 0;
    int m_failed = 0;
    int m_failedOfRun = 0;
    int m_listings = 0;
    QThreadPool m_pool;
    PreviewStore m_store;
    ExportQueue m_queue;
};
