// SPDX-License-Identifier: Apache-2.0
#include <imageutils/osutils.h>

#include <imageutils/showfile_p.h>
#include <imageutils/winutils.h>

#include <QtCore/QDebug>
#include <QtCore/QStorageInfo>

namespace {

/// The operations below are declared so that their places in the meta-object hold; what is not
/// built yet says so.
void notAvailableYet(const char* operation) { qWarning() << operation << "is not available yet"; }

} // namespace

OSUtils::OSUtils(QObject* parent) : QObject(parent) {}

OSUtils::~OSUtils() = default;

double OSUtils::devicePixelRatio() const { return m_devicePixelRatio; }

int OSUtils::maxWidth() const { return m_maxWidth; }

int OSUtils::maxHeight() const { return m_maxHeight; }

QString OSUtils::username() const
{
    notAvailableYet("username");
    return {};
}

void OSUtils::screenChanged(QScreen*) { notAvailableYet("screenChanged"); }

QString OSUtils::operatingSystemVersion() const
{
    notAvailableYet("operatingSystemVersion");
    return {};
}

QColorSpace OSUtils::getMonitorColorSpace() { return WinUtils::getMonitorColorSpace(); }

bool OSUtils::fileExists(const QUrl&)
{
    notAvailableYet("fileExists");
    return false;
}

bool OSUtils::fileExists(const QString&)
{
    notAvailableYet("fileExists");
    return false;
}

void OSUtils::showFileInGraphicalShell(const QUrl& path)
{
    showFileInGraphicalShell(path.toString());
}

void OSUtils::showFileInGraphicalShell(const QString& path)
{
    showFile(this, path, std::chrono::seconds(5));
}

void OSUtils::openFolder(const QUrl&) { notAvailableYet("openFolder"); }

QStringList OSUtils::getAIProcessors()
{
    notAvailableYet("getAIProcessors");
    return {};
}

QString OSUtils::generateUuid()
{
    notAvailableYet("generateUuid");
    return {};
}

QString OSUtils::getTempDir()
{
    notAvailableYet("getTempDir");
    return {};
}

QRect OSUtils::geometry()
{
    notAvailableYet("geometry");
    return {};
}

void OSUtils::setGeometry(QRect) { notAvailableYet("setGeometry"); }

QString OSUtils::machineId()
{
    notAvailableYet("machineId");
    return {};
}

QStringList OSUtils::gpuList()
{
    notAvailableYet("gpuList");
    return {};
}

QString OSUtils::cpuName()
{
    notAvailableYet("cpuName");
    return {};
}

quint64 OSUtils::freeSpace(const QString& path)
{
    return quint64(QStorageInfo(path).bytesAvailable());
}

QString OSUtils::storageName(const QString& path) { return QStorageInfo(path).name(); }

void OSUtils::logSystemInfo() { notAvailableYet("logSystemInfo"); }

float OSUtils::maxGpuVram()
{
    notAvailableYet("maxGpuVram");
    return 0;
}

void OSUtils::clearTempFiles() { notAvailableYet("clearTempFiles"); }

void OSUtils::clearClipboardTempFiles() { notAvailableYet("clearClipboardTempFiles"); }

void OSUtils::clearThumbnailTempFiles() { notAvailableYet("clearThumbnailTempFiles"); }

QStringList OSUtils::clipboard()
{
    notAvailableYet("clipboard");
    return {};
}

bool OSUtils::isAppleProcessor() const
{
    notAvailableYet("isAppleProcessor");
    return false;
}

Qt::KeyboardModifiers OSUtils::keyboardModifiers() const
{
    notAvailableYet("keyboardModifiers");
    return {};
}

void OSUtils::setCursor(const QString&) { notAvailableYet("setCursor"); }

void OSUtils::changeCursor(const QString&) { notAvailableYet("changeCursor"); }

void OSUtils::clearCursor() { notAvailableYet("clearCursor"); }

QPoint OSUtils::mousePosition()
{
    notAvailableYet("mousePosition");
    return {};
}

void OSUtils::alert() { notAvailableYet("alert"); }

bool OSUtils::darkMode()
{
    notAvailableYet("darkMode");
    return true;
}

double OSUtils::getCpuMemory()
{
    notAvailableYet("getCpuMemory");
    return 0;
}

int OSUtils::estimateRescueETASeconds(QSize, int)
{
    notAvailableYet("estimateRescueETASeconds");
    return 0;
}

void OSUtils::writeTextToFile(const QString&, const QString&)
{
    notAvailableYet("writeTextToFile");
}
