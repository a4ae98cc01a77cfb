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

class QDir;

/// The desktop around the application: its main window and screens, the clipboard and temporary
/// files, the machine, the file manager, cursor and keys, the monitor's colours. A QML element of
/// the module `NImageUtils` 1.0.
///
/// The main window is the first of `QGuiApplication::topLevelWindows()` at the moment of the call
/// (the oldest one); no pointer to it is kept. Sizes and positions are device-independent pixels.
///
/// What touches windows, screens, the clipboard or the cursor belongs to the GUI thread. Anywhere
/// else, and without a `QGuiApplication`, these things count as missing: the operation then gives
/// the result and the log line that it has for that, or does nothing and writes one warning.
///
/// The facts about the machine come from one engine for the whole program, which has no lock: one
/// thread at a time asks for them.
///
/// Log lines have no category; those about windows begin with "[Window]".
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
    /// Takes pixel ratio and sizes from the screen under the main window's position and follows
    /// that window from screen to screen. Without a window, or with a window off every screen,
    /// ratio and sizes are the primary screen's; sizes also where the window's screen says none.
    /// Without any screen the ratio is 1 and the sizes are 0. A main window that is made later is
    /// not followed.
    explicit OSUtils(QObject* parent = nullptr);
    ~OSUtils() override;

    /// The pixel ratio of the screen that the main window is on; 1.0 until one is known.
    double devicePixelRatio() const;
    /// The available width of that screen in device-independent pixels; 0 until known.
    int maxWidth() const;
    /// The available height of that screen in device-independent pixels; 0 until known.
    int maxHeight() const;
    /// The user's name: the environment variable "USER", where that is empty "USERNAME"; empty when
    /// neither is set.
    QString username() const;

    // The order of signals, slots and invokable operations fixes their indices in the meta-object:
    // append, never insert.

Q_SIGNALS:
    /// The main window came to a screen with another pixel ratio.
    void devicePixelRatioChanged();
    /// The main window came to another screen; its width may be the same.
    void maxWidthChanged();
    /// The main window came to another screen; its height may be the same.
    void maxHeightChanged();
    /// `path`, in native form, was to be shown and does not exist.
    void fileMissing(QString path);
    /// `path`, in native form, could not be shown in any way.
    void showFileError(QString path);

public Q_SLOTS:
    /// Takes pixel ratio and sizes from `screen`, also an empty size, and tells of both sizes. A
    /// null pointer is logged as critical and changes nothing.
    void screenChanged(QScreen* screen);

public:
    /// Major and minor version of the operating system, e.g. "10.0", as Qt knows them: "-1.-1" on
    /// Linux, where Qt gives none.
    Q_INVOKABLE QString operatingSystemVersion() const;
    /// The colour space of the monitor that the active window is on, or of the primary one, from
    /// its ICC profile; an info line names it. sRGB with a warning where the system has no profile,
    /// does not tell or cannot read it; an invalid colour space with a warning where Qt cannot use
    /// it. May wait a second for the desktop's colour service, and longer for a system bus that
    /// accepts a connection and then says nothing. GUI thread only: elsewhere sRGB.
    Q_INVOKABLE static QColorSpace getMonitorColorSpace();
    /// Whether the text of `path`, taken as a path, names something that exists. A URL made from a
    /// plain path works; the text of a `file:` URL is no path and gives false.
    Q_INVOKABLE bool fileExists(const QUrl& path);
    /// Whether `path` names something that exists, links followed.
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
    /// Opens the folder that the text of `path`, taken as a path, names. Anything else is logged as
    /// a warning and not opened. Whether the desktop then showed it is not known.
    Q_INVOKABLE void openFolder(const QUrl& path);
    /// The choices of a processing device: "Auto", "CPU", then the graphics devices, so that entry
    /// 2 + k is the device k of `gpuList()`.
    Q_INVOKABLE QStringList getAIProcessors();
    /// A new random identifier, e.g. "6f1d1d83-0d8f-4d0c-9a51-7f3e2f3d1c55".
    Q_INVOKABLE static QString generateUuid();
    /// The second of the places for the application's data, made if it is missing: the one that all
    /// users of the machine share, or the first, the user's own, where there is only one. Logs a
    /// warning when it cannot be made, and returns it all the same: on Linux it lies in a folder of
    /// the system, where an ordinary user cannot make it.
    Q_INVOKABLE static QString getTempDir();
    /// The main window's geometry without its frame; a null rectangle and a critical line without a
    /// main window. On Wayland every window is at (0, 0).
    Q_INVOKABLE QRect geometry();
    /// Moves and resizes the main window to `geometry` as it is, without any clamping. Refused,
    /// with a log line, are an empty rectangle and one of which neither the top left corner nor the
    /// centre is on a screen.
    Q_INVOKABLE void setGeometry(QRect geometry);
    /// An identifier of this machine that stays the same and tells nothing about it; empty where
    /// the system has none.
    Q_INVOKABLE QString machineId();
    /// The names of the graphics devices in the engine's order, duplicates included; empty when
    /// there are none. The first question may take a quarter of a second.
    Q_INVOKABLE QStringList gpuList();
    /// The processor's name.
    Q_INVOKABLE QString cpuName();
    // quint64 and not uint64_t: only its meta-type is a number in QML.
    /// The bytes available to the user on the volume that holds `path`; the largest number where
    /// there is no such volume. A volume that hangs blocks the call.
    Q_INVOKABLE static quint64 freeSpace(const QString& path);
    /// The label of the volume that holds `path`; empty where it has none or there is no such
    /// volume.
    Q_INVOKABLE static QString storageName(const QString& path);
    /// Has the engine write its summary of the machine to the log.
    Q_INVOKABLE void logSystemInfo();
    /// The largest video memory of all graphics devices in the engine's unit (GiB); 0 when there is
    /// none.
    Q_INVOKABLE float maxGpuVram();
    /// `clearClipboardTempFiles()`, then `clearThumbnailTempFiles()`.
    Q_INVOKABLE static void clearTempFiles();
    /// Removes the files of pasted bitmaps, "VOLK_Clipboard_*.png", from the temporary folder. A
    /// link is removed and not what it leads to; folders stay. What cannot be removed is skipped
    /// without a word. Without a temporary folder nothing is removed, and a warning says so.
    Q_INVOKABLE static void clearClipboardTempFiles();
    /// Removes thumbnails, "VOLK_Thumbnail_*.jpeg" and "*-thumbnail.jpeg", from the temporary
    /// folder as `clearClipboardTempFiles()` does, but for those of the files that the
    /// application's settings list under "recentFiles". When the settings cannot be read, or hold
    /// neither a text nor a list there, every "VOLK_Thumbnail_*.jpeg" stays, and a warning says so.
    Q_INVOKABLE static void clearThumbnailTempFiles();
    /// Local picture files for what the clipboard holds: the copied files of a supported format, or
    /// else the copied bitmap, written as "VOLK_Clipboard_%1.png" (%1: MD5 of its bytes) to the
    /// temporary folder, readable by the user alone. The same bitmap has the same path and is
    /// written once; the file is complete or absent.
    ///
    /// Empty when there is nothing of the kind, and, with a warning, when the bitmap cannot be read
    /// or written or something else than a file of the user's own has its name. Another program
    /// that offers the contents and does not answer holds the call up for 5 s per question of Qt's.
    Q_INVOKABLE QStringList clipboard();
    /// Whether the processor is an Apple one: the machine is, and the processor is neither Intel's
    /// nor AMD's.
    Q_INVOKABLE bool isAppleProcessor() const;
    /// The modifier keys held down at this moment, asked of the system; on platforms that cannot
    /// tell (offscreen, Wayland without the focus) none.
    Q_INVOKABLE Qt::KeyboardModifiers keyboardModifiers() const;
    /// Puts a cursor made from the picture at `resourceUrl` ("qrc:/path" or ":/path") on top of the
    /// application's cursors, its hot spot in the centre. Each call needs one `clearCursor()`. A
    /// picture that does not load gives the arrow.
    Q_INVOKABLE void setCursor(const QString& resourceUrl);
    /// Replaces the top one of the application's cursors by one as `setCursor()` makes it; does
    /// nothing when there is none.
    Q_INVOKABLE void changeCursor(const QString& resourceUrl);
    /// Takes away the top one of the application's cursors, if any.
    Q_INVOKABLE void clearCursor();
    /// The pointer's position on the desktop. On Wayland it is known only over the application's
    /// own windows.
    Q_INVOKABLE QPoint mousePosition();
    /// Asks the user's attention for the first of `QGuiApplication::allWindows()` until that window
    /// is activated. This is the newest window, child windows included, and not the main window.
    /// Does nothing when there is none.
    Q_INVOKABLE void alert();
    /// Whether the desktop is dark: true unless it is known to be light. With Qt before 6.5 the
    /// desktop's settings portal is asked, for 1 s at most, and then the palette; connecting to a
    /// session bus that accepts connections and then says nothing is not limited by that.
    Q_INVOKABLE bool darkMode();
    /// The machine's memory in GiB.
    Q_INVOKABLE double getCpuMemory();
    /// A rough estimate, in seconds, of how long a picture of `inputSize` pixels takes on the
    /// graphics device `deviceId` (its place in `gpuList()`). Three classes: devices with more than
    /// 5.6 GiB, Apple machines, all others. Sides below 0 count as 0; at most INT_MAX.
    Q_INVOKABLE int estimateRescueETASeconds(QSize inputSize, int deviceId);
    /// Replaces the contents of the file `fileName` by `text` in UTF-8 without a byte-order mark,
    /// or makes it. Failures, of which a name with a null character is one, are not reported.
    Q_INVOKABLE void writeTextToFile(const QString& fileName, const QString& text);

private:
    void setDevicePixelRatio(double ratio);
    void setDefaultDevicePixelRatio();
    void takeSizeOfPrimaryScreen();
    bool geometryInBounds(QRect rect);
    static void removeMatchingFiles(QDir dir, QStringList patterns, QStringList keptNames);

    double m_devicePixelRatio = 1.0;
    int m_maxWidth = 0;
    int m_maxHeight = 0;
};
