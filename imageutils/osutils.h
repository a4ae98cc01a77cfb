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
/// files, the machine, the file manager, cursor and keys, and the monitor's colours. A QML element
/// of the module `NImageUtils` 1.0.
///
/// The main window is the first of `QGuiApplication::topLevelWindows()` at the moment of the call
/// (the oldest one); no pointer to it is kept. Log lines have no category; those about windows
/// begin with "[Window]".
///
/// @ingroup desktop
/// @par Thread safety
/// Operations on windows, screens, the clipboard or the cursor belong to the GUI thread. On another
/// thread, and without a `QGuiApplication`, windows, screens and clipboard count as missing: the
/// operation then returns its result for that case and writes its log line, or does nothing and
/// writes one warning. The facts about the machine come from one object for the whole program,
/// which has no lock: one thread at a time may query them. All other operations may run on any
/// thread.
/// @par Ownership
/// Results are values. Windows and screens stay Qt's.
/// @par Units
/// Sizes and positions are device-independent pixels, memory is GiB, disk space is bytes.
/// @par Failure
/// A neutral result (an empty text or list, a null rectangle, sRGB, `false`) and one log line, as
/// named at each function. Nothing is thrown.
/// @since 1.0
class IMAGEUTILS_EXPORT OSUtils : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// An identifier of this machine; see `machineId()`.
    Q_PROPERTY(QString machineId READ machineId CONSTANT)
    /// The user's name; see `username()`.
    Q_PROPERTY(QString username READ username CONSTANT)
    /// The pixel ratio of the main window's screen; see `devicePixelRatio()`.
    Q_PROPERTY(double devicePixelRatio READ devicePixelRatio NOTIFY devicePixelRatioChanged)
    /// The available width of the main window's screen; see `maxWidth()`.
    Q_PROPERTY(int maxWidth READ maxWidth NOTIFY maxWidthChanged)
    /// The available height of the main window's screen; see `maxHeight()`.
    Q_PROPERTY(int maxHeight READ maxHeight NOTIFY maxHeightChanged)

public:
    /// Reads pixel ratio and sizes from the screen under the main window's position and follows
    /// that window from screen to screen. Without a window, or with a window off every screen,
    /// ratio and sizes are the primary screen's; so are the sizes if the window's screen has none.
    /// Without any screen the ratio is 1 and the sizes are 0. A main window that is made later is
    /// not followed. `parent` owns the object, if given.
    explicit OSUtils(QObject* parent = nullptr);
    /// Stops following the main window and any pending request to show a file.
    ~OSUtils() override;

    /// The pixel ratio of the screen that the main window is on; 1.0 until one is known.
    double devicePixelRatio() const;
    /// The available width of that screen in device-independent pixels; 0 until known.
    int maxWidth() const;
    /// The available height of that screen in device-independent pixels; 0 until known.
    int maxHeight() const;
    /// The user's name: the environment variable "USER", or "USERNAME" if that is empty; empty when
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
    /// Takes over pixel ratio and sizes from `screen`, an empty size included, and emits the change
    /// signals of both sizes. A null pointer is logged as critical and changes nothing.
    void screenChanged(QScreen* screen);

public:
    /// Major and minor version of the operating system as Qt gives them, such as "10.0", and
    /// "-1.-1" on Linux, for which Qt has none.
    Q_INVOKABLE QString operatingSystemVersion() const;
    /// The colour space of the monitor that the active window is on, or of the primary one, from
    /// its ICC profile; an info line names it. sRGB with a warning if the system has no profile or
    /// cannot read it; an invalid colour space with a warning if Qt cannot use the profile. May
    /// wait a second for the desktop's colour service, and longer for a system bus that accepts a
    /// connection and then does not answer. GUI thread only: sRGB on other threads.
    Q_INVOKABLE static QColorSpace getMonitorColorSpace();
    /// Whether the text of `path`, taken as a path, names something that exists. A URL made from a
    /// plain path works; the text of a `file:` URL is no path and gives false.
    Q_INVOKABLE bool fileExists(const QUrl& path);
    /// Whether `path` names something that exists, links followed.
    Q_INVOKABLE bool fileExists(const QString& path);
    /// `showFileInGraphicalShell(path.toString())`: the text of `path` is taken as a path, so a
    /// `file:` URL names no file.
    Q_INVOKABLE void showFileInGraphicalShell(const QUrl& path);
    /// Shows the existing file or folder `path` selected in the system's file manager; each call
    /// writes a warning line. A path that does not exist gives `fileMissing`. A relative path is
    /// resolved at the call. When the file manager
    /// does not answer, a program opens the folder (or `path` itself, a folder), then the desktop
    /// opens `path`; when that fails too, `showFileError` follows.
    ///
    /// The desktop's services are called asynchronously, for at most 5 seconds, so `showFileError`
    /// may be emitted from the event loop after the call has returned. An object that is deleted
    /// meanwhile emits nothing and opens nothing more. Only the first connection to a session bus
    /// that accepts connections and then does not answer can still block the caller. A program that
    /// wants to be safe from such a bus calls `QDBusConnection::sessionBus()` once in a thread of
    /// its own before.
    Q_INVOKABLE void showFileInGraphicalShell(const QString& path);
    /// Opens the folder that the text of `path`, taken as a path, names. Anything else is logged as
    /// a warning and not opened. Whether the desktop then showed the folder is not reported. The
    /// desktop gets the URL that `QUrl::fromLocalFile` makes of the path, so a path that begins
    /// with two slashes becomes a folder of another host, and a relative one a relative URL.
    Q_INVOKABLE void openFolder(const QUrl& path);
    /// The choices of a processing device: "Auto", "CPU", then the graphics devices, so that entry
    /// 2 + k is the device k of `gpuList()`.
    Q_INVOKABLE QStringList getAIProcessors();
    /// A new random identifier such as "6f1d1d83-0d8f-4d0c-9a51-7f3e2f3d1c55".
    Q_INVOKABLE static QString generateUuid();
    /// The second of the folders for the application's data (the one that all users of the machine
    /// share), or the first, the user's own, if there is only one. The folder is made if it is
    /// missing. If that fails, a warning is written and the path is returned all the same: on Linux
    /// the folder lies in a system folder, where an ordinary user cannot make it.
    Q_INVOKABLE static QString getTempDir();
    /// The main window's geometry without its frame; a null rectangle and a critical line without a
    /// main window. On Wayland every window is at (0, 0).
    Q_INVOKABLE QRect geometry();
    /// Moves and resizes the main window to `geometry` without any clamping. An empty rectangle,
    /// and one of which neither the top left corner nor the centre is on a screen, is refused with
    /// a log line.
    Q_INVOKABLE void setGeometry(QRect geometry);
    /// An identifier of this machine that stays the same and reveals nothing about the machine;
    /// empty if the system has none.
    Q_INVOKABLE QString machineId();
    /// The names of the graphics devices in the order of `aiutils::SystemInfo`, duplicates
    /// included; empty when there are none. The first call may take a quarter of a second.
    Q_INVOKABLE QStringList gpuList();
    /// The processor's name.
    Q_INVOKABLE QString cpuName();
    // quint64 and not uint64_t: only its meta-type is a number in QML.
    /// The bytes available to the user on the volume that holds `path`; the largest number when
    /// there is no such volume. A volume that hangs blocks the call.
    Q_INVOKABLE static quint64 freeSpace(const QString& path);
    /// The label of the volume that holds `path`; empty if it has none or there is no such volume.
    Q_INVOKABLE static QString storageName(const QString& path);
    /// Writes a summary of the machine to the log (`aiutils::SystemInfo::logSystemInfo`).
    Q_INVOKABLE void logSystemInfo();
    /// The largest video memory of all graphics devices in GiB; 0 when there are none.
    Q_INVOKABLE float maxGpuVram();
    /// `clearClipboardTempFiles()`, then `clearThumbnailTempFiles()`.
    Q_INVOKABLE static void clearTempFiles();
    /// Removes the files of pasted bitmaps, "VOLK_Clipboard_*.png", from the temporary folder. Of a
    /// link the link itself is removed, not its target; folders stay. Files that cannot be removed
    /// are skipped without a log line. Without a temporary folder nothing is removed, and a warning
    /// is written.
    Q_INVOKABLE static void clearClipboardTempFiles();
    /// Removes thumbnails, "VOLK_Thumbnail_*.jpeg" and "*-thumbnail.jpeg", from the temporary
    /// folder as `clearClipboardTempFiles()` does, except the thumbnails of files that the
    /// application's settings list under "recentFiles". If the settings cannot be read, or if the
    /// value there is neither a text nor a list, every "VOLK_Thumbnail_*.jpeg" stays, and a warning
    /// is written.
    Q_INVOKABLE static void clearThumbnailTempFiles();
    /// The picture files on the clipboard: the copied files of a supported format, or, if there are
    /// none, the copied bitmap, written as "VOLK_Clipboard_%1.png" (%1: MD5 of its bytes) to the
    /// temporary folder, readable by the user alone. The same bitmap has the same path and is
    /// written once; the file is complete or absent.
    ///
    /// Empty when the clipboard holds neither, and, with a warning, when the bitmap cannot be read
    /// or written or when its name is taken by anything but a file of the user's own. A clipboard
    /// owner that does not answer blocks the call for 5 s per request of Qt's.
    Q_INVOKABLE QStringList clipboard();
    /// Whether the processor is one of Apple's: whether the machine is one of Apple's and the
    /// processor is neither Intel's nor AMD's.
    Q_INVOKABLE bool isAppleProcessor() const;
    /// The modifier keys that are held down at this moment, as the window system reports them; none
    /// on platforms that cannot tell (offscreen, Wayland without the focus).
    Q_INVOKABLE Qt::KeyboardModifiers keyboardModifiers() const;
    /// Puts a cursor made from the picture at `resourceUrl` ("qrc:/path" or ":/path") on top of the
    /// application's cursors, its hot spot in the centre. Each call needs one `clearCursor()`. A
    /// picture that does not load gives the arrow.
    Q_INVOKABLE void setCursor(const QString& resourceUrl);
    /// Replaces the topmost of the application's cursors by one made as in `setCursor()`; does
    /// nothing when there is none.
    Q_INVOKABLE void changeCursor(const QString& resourceUrl);
    /// Removes the topmost of the application's cursors, if any.
    Q_INVOKABLE void clearCursor();
    /// The pointer's position on the desktop. On Wayland it is known only over the application's
    /// own windows.
    Q_INVOKABLE QPoint mousePosition();
    /// Requests the user's attention for the first of `QGuiApplication::allWindows()` until that
    /// window is activated. It is the newest window, child windows included, and not the main
    /// window. Does nothing when there is none.
    Q_INVOKABLE void alert();
    /// Whether the desktop is dark: true unless it is known to be light. With Qt before 6.5 the
    /// answer comes from the desktop's settings portal, with a time limit of 1 s, and then from the
    /// palette. The limit does not cover the connection to a session bus that accepts connections
    /// and then does not answer.
    Q_INVOKABLE bool darkMode();
    /// The machine's memory in GiB.
    Q_INVOKABLE double getCpuMemory();
    /// A rough estimate, in seconds, of how long a picture of `inputSize` pixels takes on the
    /// graphics device `deviceId` (its place in `gpuList()`). Three classes: devices with more than
    /// 5.6 GiB, Apple machines, all others. Sides below 0 count as 0; at most INT_MAX.
    Q_INVOKABLE int estimateRescueETASeconds(QSize inputSize, int deviceId);
    /// Writes `text` to the file `fileName` in UTF-8 without a byte-order mark, replacing its
    /// contents or making the file. Failures, a name with a null character among them, are not
    /// reported. On Unix the call never waits for another program: nothing is written to a pipe
    /// that no program reads, and only what fits to one that is nearly full.
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
