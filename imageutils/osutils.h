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
    Q_INVOKABLE static QColorSpace getMonitorColorSpace();
    Q_INVOKABLE bool fileExists(const QUrl& path);
    Q_INVOKABLE bool fileExists(const QString& path);
    Q_INVOKABLE void showFileInGraphicalShell(const QUrl& path);
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
