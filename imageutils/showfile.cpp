// SPDX-License-Identifier: Apache-2.0
#include <imageutils/showfile_p.h>

#include <imageutils/exceptions_p.h>
#include <imageutils/guiapplication_p.h>
#include <imageutils/osutils.h>
#include <platform/launcher.h>
#include <platform/showitem.h>

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtGui/QDesktopServices>

namespace {

bool startLauncher(const QString& absolutePath)
{
    const auto launcher =
        Platform::fileManagerLauncher(absolutePath.toStdString(), QFileInfo(absolutePath).isDir());
    if (!launcher)
        return false;
    QStringList arguments;
    for (const std::string& argument : launcher->arguments)
        arguments.append(QString::fromStdString(argument));
    return QProcess::startDetached(QString::fromStdString(launcher->program), arguments);
}

bool openUrl(const QString& absolutePath)
{
    return onGuiThread() && QDesktopServices::openUrl(QUrl::fromLocalFile(absolutePath));
}

} // namespace

void showFile(OSUtils* sender, const QString& path, std::chrono::milliseconds limit)
{
    qWarning() << "OSUtils::showFileInGraphicalShell: " << path;
    const QString nativePath = QDir::toNativeSeparators(path);
    if (!QFileInfo::exists(path)) {
        Q_EMIT sender->fileMissing(nativePath);
        return;
    }
    // Resolved now: the current folder may be another one when the desktop has answered.
    const QString absolutePath = QDir::toNativeSeparators(QDir::current().absoluteFilePath(path));
    const auto isWanted = [sender = QPointer(sender)] { return !sender.isNull(); };
    const auto fallBack = [sender = QPointer(sender), nativePath, absolutePath](bool shown) {
        neutralOnException("showFileInGraphicalShell", [&] {
            if (shown || !sender || startLauncher(absolutePath) || openUrl(absolutePath))
                return;
            if (sender) // a handler of URLs may have deleted it
                Q_EMIT sender->showFileError(nativePath);
        });
    };
    Platform::showItem(absolutePath.toStdString(), limit, isWanted, fallBack);
}
