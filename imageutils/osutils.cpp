// SPDX-License-Identifier: Apache-2.0
#include <imageutils/osutils.h>

#include <imageutils/exceptions_p.h>
#include <imageutils/guiapplication_p.h>
#include <imageutils/showfile_p.h>
#include <imageutils/winutils.h>
#include <platform/writefile.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QDebug>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStorageInfo>
#include <QtCore/QUuid>
#include <QtGui/QCursor>
#include <QtGui/QDesktopServices>
#include <QtGui/QPixmap>
#include <QtGui/QWindow>

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
#include <QtGui/QStyleHints>
#else
#include <platform/colorscheme.h>

#include <QtGui/QPalette>
#endif

namespace {

/// Whether `operation`, which needs the GUI, can run here; writes a warning if not.
bool guiAvailable(const char* operation)
{
    if (onGuiThread())
        return true;
    qWarning().nospace() << operation << ": not on the thread of a QGuiApplication";
    return false;
}

QWindow* mainWindow()
{
    return onGuiThread() ? QGuiApplication::topLevelWindows().value(0) : nullptr;
}

QScreen* primaryScreen() { return onGuiThread() ? QGuiApplication::primaryScreen() : nullptr; }

/// A cursor from the picture at `resourceUrl`. "qrc:/path" without its scheme is the path of a
/// resource; such a path is accepted as well.
QCursor cursorFrom(const QString& resourceUrl)
{
    const bool isPath = resourceUrl.startsWith(QLatin1String(":/"));
    const QString path = isPath ? resourceUrl : resourceUrl.mid(3);
    // A pipe would wait for its writer, and a null character would end the name before it.
    const QFileInfo file(path);
    const bool isReadable =
        !path.contains(QChar::Null) && (file.isFile() || !file.exists()); // Qt adds suffixes
    return QCursor(isReadable ? QPixmap(path) : QPixmap(), -1,
                   -1); // -1: the hot spot is the centre
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)

bool isLightScheme()
{
    return QGuiApplication::styleHints()->colorScheme() == Qt::ColorScheme::Light;
}

#else

bool isLightPalette()
{
    const QPalette palette = QGuiApplication::palette();
    const QColor window = palette.color(QPalette::Window);
    // Qt's own palette, which is used without a theme of the desktop, is light but no preference.
    if (window == QColor(0xef, 0xef, 0xef))
        return false;
    return palette.color(QPalette::WindowText).lightness() <= window.lightness();
}

bool isLightScheme()
{
    using Platform::ColorScheme;
    const ColorScheme scheme = Platform::preferredColorScheme(std::chrono::seconds(1));
    if (scheme == ColorScheme::Dark || scheme == ColorScheme::Light)
        return scheme == ColorScheme::Light;
    return isLightPalette();
}

#endif

} // namespace

OSUtils::OSUtils(QObject* parent) : QObject(parent)
{
    if (const QWindow* window = mainWindow()) {
        connect(window, &QWindow::screenChanged, this, &OSUtils::screenChanged);
        if (const QScreen* screen = QGuiApplication::screenAt(window->position())) {
            m_maxWidth = screen->availableSize().width();
            m_maxHeight = screen->availableSize().height();
            setDevicePixelRatio(screen->devicePixelRatio());
            qInfo() << "[Window] Owned screen exists at:" << window->position()
                    << "Max width/height:" << m_maxWidth << m_maxHeight
                    << "Ratio:" << screen->devicePixelRatio() << m_devicePixelRatio;
        } else {
            qCritical() << "[Window] Could not get screen at window position, using default device "
                           "pixel ratio";
            setDefaultDevicePixelRatio();
        }
    } else {
        qWarning() << "[Window] Top level window is null, using default device pixel ratio";
        setDefaultDevicePixelRatio();
    }
    if (m_maxWidth == 0 || m_maxHeight == 0)
        takeSizeOfPrimaryScreen();
    qInfo() << "[Window] OSUtils constructor - Maximum window width/height:" << m_maxWidth
            << m_maxHeight;
}

OSUtils::~OSUtils() = default;

double OSUtils::devicePixelRatio() const { return m_devicePixelRatio; }

int OSUtils::maxWidth() const { return m_maxWidth; }

int OSUtils::maxHeight() const { return m_maxHeight; }

void OSUtils::setDevicePixelRatio(double ratio)
{
    if (ratio == m_devicePixelRatio)
        return;
    m_devicePixelRatio = ratio;
    Q_EMIT devicePixelRatioChanged();
}

void OSUtils::setDefaultDevicePixelRatio()
{
    if (const QScreen* screen = primaryScreen()) {
        setDevicePixelRatio(screen->devicePixelRatio());
        qInfo() << "[Window] Setting default device pixel ratio:" << screen->devicePixelRatio();
    } else {
        qCritical() << "[Window] No primary screen found, setting device pixel ratio to 1";
        setDevicePixelRatio(1.0);
    }
}

void OSUtils::takeSizeOfPrimaryScreen()
{
    qWarning() << "[Window] Falling back to primary screen dimensions for max width and height";
    if (const QScreen* screen = primaryScreen()) {
        m_maxWidth = screen->availableSize().width();
        m_maxHeight = screen->availableSize().height();
        qInfo() << "[Window] Primary screen max width/height:" << m_maxWidth << m_maxHeight
                << "Ratio:" << screen->devicePixelRatio() << m_devicePixelRatio;
    } else {
        qCritical() << "[Window] No primary screen found. Cannot set maximum window dimensions";
    }
}

void OSUtils::screenChanged(QScreen* screen)
{
    if (!screen) {
        qCritical() << "[Window] Screen changed to null pointer";
        return;
    }
    if (!guiAvailable("screenChanged"))
        return;
    const QSize available =
        screen->availableSize(); // a receiver of the signal may remove the screen
    const double ratio = screen->devicePixelRatio();
    neutralOnException("screenChanged", [&] {
        setDevicePixelRatio(ratio);
        m_maxWidth = available.width();
        m_maxHeight = available.height();
        Q_EMIT maxWidthChanged();
        Q_EMIT maxHeightChanged();
    });
    qInfo() << "[Window] Screen changed - Maximum window width/height:" << m_maxWidth
            << m_maxHeight;
}

QRect OSUtils::geometry()
{
    return neutralOnException("geometry", [] {
        const QWindow* window = mainWindow();
        if (!window) {
            qCritical() << "[Window] Could not get top level window geometry";
            return QRect();
        }
        const QRect geometry = window->geometry();
        qInfo() << "[Window] Top level window geometry:" << geometry;
        return geometry;
    });
}

void OSUtils::setGeometry(QRect geometry)
{
    neutralOnException("setGeometry", [&] {
        if (geometry.isEmpty()) {
            qWarning() << "[Window] Window geometry empty, not setting window position";
            return;
        }
        qInfo() << "[Window] Setting geometry called:" << geometry;
        QWindow* window = mainWindow();
        if (!window) {
            qCritical() << "[Window] Could not get top level window to set geometry";
        } else if (geometryInBounds(geometry)) {
            qInfo() << "[Window] Setting window geometry to" << geometry;
            window->setGeometry(geometry);
        } else {
            qWarning() << "[Window] Geometry out of bounds, not setting window position";
        }
    });
}

bool OSUtils::geometryInBounds(QRect rect)
{
    return QGuiApplication::screenAt(rect.topLeft()) || QGuiApplication::screenAt(rect.center());
}

QColorSpace OSUtils::getMonitorColorSpace() { return WinUtils::getMonitorColorSpace(); }

bool OSUtils::fileExists(const QUrl& path)
{
    return neutralOnException("fileExists", [&] { return fileExists(path.toString()); });
}

bool OSUtils::fileExists(const QString& path)
{
    return neutralOnException("fileExists", [&] { return QFileInfo::exists(path); });
}

void OSUtils::showFileInGraphicalShell(const QUrl& path)
{
    neutralOnException("showFileInGraphicalShell",
                       [&] { showFileInGraphicalShell(path.toString()); });
}

void OSUtils::showFileInGraphicalShell(const QString& path)
{
    neutralOnException("showFileInGraphicalShell",
                       [&] { showFile(this, path, std::chrono::seconds(5)); });
}

void OSUtils::openFolder(const QUrl& path)
{
    neutralOnException("openFolder", [&] {
        const QString folder = path.toString();
        if (!QFileInfo(folder).isDir()) {
            qWarning() << "Not a directory, not opening: " << folder;
            return;
        }
        if (!guiAvailable("openFolder"))
            return;
        qInfo() << "Opening directory: " << folder;
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
    });
}

void OSUtils::writeTextToFile(const QString& fileName, const QString& text)
{
    if (fileName.contains(QChar::Null)) // the system would take the name to end there
        return;
    neutralOnException("writeTextToFile", [&] {
        QFile file(fileName);
        const auto descriptor = Platform::openForWriting(QFile::encodeName(fileName).constData());
        const bool isOpen = descriptor
                                ? *descriptor >= 0 && file.open(*descriptor, QIODevice::WriteOnly,
                                                                QFileDevice::AutoCloseHandle)
                                : file.open(QIODevice::WriteOnly);
        if (isOpen)
            file.write(text.toUtf8());
    });
}

QString OSUtils::generateUuid()
{
    return neutralOnException("generateUuid",
                              [] { return QUuid::createUuid().toString(QUuid::WithoutBraces); });
}

quint64 OSUtils::freeSpace(const QString& path)
{
    return neutralOnException("freeSpace",
                              [&] { return quint64(QStorageInfo(path).bytesAvailable()); });
}

QString OSUtils::storageName(const QString& path)
{
    return neutralOnException("storageName", [&] { return QStorageInfo(path).name(); });
}

void OSUtils::setCursor(const QString& resourceUrl)
{
    neutralOnException("setCursor", [&] {
        if (guiAvailable("setCursor"))
            QGuiApplication::setOverrideCursor(cursorFrom(resourceUrl));
    });
}

void OSUtils::changeCursor(const QString& resourceUrl)
{
    neutralOnException("changeCursor", [&] {
        if (guiAvailable("changeCursor"))
            QGuiApplication::changeOverrideCursor(cursorFrom(resourceUrl));
    });
}

void OSUtils::clearCursor()
{
    neutralOnException("clearCursor", [] {
        if (guiAvailable("clearCursor"))
            QGuiApplication::restoreOverrideCursor();
    });
}

QPoint OSUtils::mousePosition()
{
    return guiAvailable("mousePosition") ? QCursor::pos() : QPoint();
}

Qt::KeyboardModifiers OSUtils::keyboardModifiers() const
{
    if (!guiAvailable("keyboardModifiers"))
        return {};
    return QGuiApplication::queryKeyboardModifiers();
}

void OSUtils::alert()
{
    neutralOnException("alert", [] {
        if (!guiAvailable("alert"))
            return;
        if (QWindow* window = QGuiApplication::allWindows().value(0)) {
            window->alert(0);
            // Qt has only buffered the request and would send it with the next event.
            QAbstractEventDispatcher::instance()->wakeUp();
        }
    });
}

bool OSUtils::darkMode()
{
    return neutralOnException(
        "darkMode", [] { return !guiAvailable("darkMode") || !isLightScheme(); }, true);
}
