// SPDX-License-Identifier: Apache-2.0
#include <imageutils/showfile_p.h>

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

bool startLauncher(const QString& nativePath)
{
    const auto launcher =
        Platform::fileManagerLauncher(nativePath.toStdString(), QFileInfo(nativePath).isDir());
    if (!launcher)
        return false;
    QStringList arguments;
    for (const std::string& argument : launcher->arguments)
        arguments.append(QString::fromStdString(argument));
    return QProcess::startDetached(QString::fromStdString(launcher->program), arguments);
}

bool openUrl(const QString& nativePath)
{
    return onGuiThread() && QDesktopServices::openUrl(QUrl::fromLocalFile(nativePath));
}

} // namespace

void showFile(OSUtils* shower, const QString& path, std::chrono::milliseconds limit)
{
    qWarning() << "OSUtils::showFileInGraphicalShell: " << path;
    const QString nativePath = QDir::toNativeSeparators(path);
    if (!QFileInfo::exists(path)) {
        Q_EMIT shower->fileMissing(nativePath);
        return;
    }
    const auto goOn = [shower = QPointer(shower), nativePath](bool shown) {
        if (shown || !shower || startLauncher(nativePath) || openUrl(nativePath))
            return;
        Q_EMIT shower->showFileError(nativePath);
    };
    Platform::showItem(nativePath.toStdString(), limit, goOn);
}
