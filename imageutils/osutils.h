// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtGui/QColorSpace>
#include <QtGui/QScreen> // complete, so that the meta-object knows the argument type of screenChanged
#include <QtQml/qqmlregistration.h>

/// The desktop around the application: its main window and screens, the clipboard and temporary
/// files, the machine, the file manager, cursor and keys, the monitor's colours. A QML element of
/// the module `NImageUtils` 1.0.
///
/// The main window is the first of `QGuiApplication::topLevelWindows()` at the moment of the call;
/// no pointer to it is kept. What touches windows, screens, the clipboard or the cursor belongs to
/// the GUI thread.
class IMAGEUTILS_EXPORT OSUtils : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString machineId READ machineId CONSTANT)
    Q_PROPERTY(QString username READ username CONSTANT)
    Q_PROPERTY(double devicePixelRatio READ devicePixelRatio NOTIFY devicePixelRatioChanged)
    Q_PROPERTY(int maxWidth READ maxWidth NOTIFY maxWidthChanged)
    Q_PROPERTY(int maxHeight READ maxHeight NOTIFY maxHeightChanged)

public:
    explicit OSUtils(QObject* parent = nullptr);
    ~OSUtils() override;

    /// The pixel ratio of the screen that the main window is on; 1.0 until one is known.
    double devicePixelRatio() const;
    /// The available width of that screen in device-independent pixels; 0 until known.
    int maxWidth() const;
    /// The available height of that screen in device-independent pixels; 0 until known.
    int maxHeight() const;
    /// The user's name from the environment; empty when it is not set.
    QString username() const;

    // The order of signals, slots and invokable operations fixes their indices in the meta-object:
    // append, never insert.

Q_SIGNALS:
    void devicePixelRatioChanged();
    void maxWidthChanged();
    void maxHeightChanged();
    /// `path`, in native form, was to be shown and does not exist.
    void fileMissing(QString path);
    /// `path`, in native form, could not be shown in any way.
    void showFileError(QString path);

public Q_SLOTS:
    void screenChanged(QScreen* screen);

public:
    Q_INVOKABLE QString operatingSystemVersion() const;
    /// The colour space of the monitor that the active window is on, or of the primary one, from
    /// its ICC profile; an info line names it. sRGB with a warning where the system has no profile,
    /// does not tell or cannot read it; an invalid colour space with a warning where Qt cannot use
    /// it. May wait a second for the desktop's colour service. GUI thread only: elsewhere sRGB.
    Q_INVOKABLE static QColorSpace getMonitorColorSpace();
    Q_INVOKABLE bool fileExists(const QUrl& path);
    Q_INVOKABLE bool fileExists(const QString& path);
    /// `path.toString()`, taken as a path; a `file:` URL is therefore none.
    Q_INVOKABLE void showFileInGraphicalShell(const QUrl& path);
    /// Shows the existing file or folder `path` selected in the system's file manager; each call
    /// writes a warning line. A path that does not exist gives `fileMissing`. When the file manager
    /// does not answer, a program opens the folder (or `path` itself, a folder), then the desktop
    /// opens `path`; when that fails too, `showFileError` follows.
    ///
    /// The desktop's services are asked asynchronously, for at most 5 seconds, so `showFileError`
    /// may come after the call has returned, from the event loop; an object deleted meanwhile sends
    /// nothing and opens nothing more. One thing can still hold the caller up: the first connection
    /// to a session bus that accepts it and then says nothing. A program that fears such a bus
    /// calls `QDBusConnection::sessionBus()` once in a thread of its own before.
    Q_INVOKABLE void showFileInGraphicalShell(const QString& path);
    Q_INVOKABLE void openFolder(const QUrl& path);
    Q_INVOKABLE QStringList getAIProcessors();
    Q_INVOKABLE static QString generateUuid();
    Q_INVOKABLE static QString getTempDir();
    Q_INVOKABLE QRect geometry();
    Q_INVOKABLE void setGeometry(QRect geometry);
    Q_INVOKABLE QString machineId();
    Q_INVOKABLE QStringList gpuList();
    Q_INVOKABLE QString cpuName();
    // quint64 and not uint64_t: only its meta-type is a number in QML.
    /// The bytes available to the user on the volume that holds `path`; the largest number where
    /// there is no such volume. A volume that hangs blocks the call.
    Q_INVOKABLE static quint64 freeSpace(const QString& path);
    /// The label of the volume that holds `path`; empty where it has none or there is no such
    /// volume.
    Q_INVOKABLE static QString storageName(const QString& path);
    Q_INVOKABLE void logSystemInfo();
    Q_INVOKABLE float maxGpuVram();
    Q_INVOKABLE static void clearTempFiles();
    Q_INVOKABLE static void clearClipboardTempFiles();
    Q_INVOKABLE static void clearThumbnailTempFiles();
    Q_INVOKABLE QStringList clipboard();
    Q_INVOKABLE bool isAppleProcessor() const;
    Q_INVOKABLE Qt::KeyboardModifiers keyboardModifiers() const;
    Q_INVOKABLE void setCursor(const QString& resourceUrl);
    Q_INVOKABLE void changeCursor(const QString& resourceUrl);
    Q_INVOKABLE void clearCursor();
    Q_INVOKABLE QPoint mousePosition();
    Q_INVOKABLE void alert();
    Q_INVOKABLE bool darkMode();
    Q_INVOKABLE double getCpuMemory();
    Q_INVOKABLE int estimateRescueETASeconds(QSize inputSize, int deviceId);
    Q_INVOKABLE void writeTextToFile(const QString& fileName, const QString& text);

private:
    double m_devicePixelRatio = 1.0;
    int m_maxWidth = 0;
    int m_maxHeight = 0;
};
