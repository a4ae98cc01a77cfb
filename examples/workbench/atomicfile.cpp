// SPDX-License-Identifier: Apache-2.0
#include "atomicfile.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <filesystem>
#include <system_error>

namespace {

QString temporaryPrefix() { return QStringLiteral(".imageutils-workbench-"); }

QString randomPath(const QString& folder, const QString& extension)
{
    const QString token = QString::number(QRandomGenerator::system()->generate64(), 36);
    return QDir(folder).filePath(temporaryPrefix() + token + QLatin1Char('.') + extension);
}

/// Gives the file a second name, which fails where anything exists, a dangling link included.
std::error_code linkTo(const QString& path, const QString& newPath)
{
    std::error_code error;
    std::filesystem::create_hard_link(QFileInfo(path).filesystemFilePath(),
                                      QFileInfo(newPath).filesystemFilePath(), error);
    return error;
}

bool isDanglingLink(const QString& path)
{
    const QFileInfo info(path);
    return info.isSymLink() && !info.exists();
}

bool isTaken(const QString& path) { return QFileInfo::exists(path) || isDanglingLink(path); }

QString numbered(const QString& path)
{
    const QFileInfo info(path);
    return info.dir().filePath(info.completeBaseName() + QLatin1String("-2.") + info.suffix());
}

} // namespace

Result<std::unique_ptr<AtomicFile>> AtomicFile::create(const QString& folder,
                                                       const QString& extension)
{
    if (!QDir().mkpath(folder))
        return Failure{QStringLiteral("cannot make the folder %1").arg(folder)};
    for (;;) {
        std::unique_ptr<AtomicFile> file(new AtomicFile(randomPath(folder, extension)));
        if (file->m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly))
            return file;
        if (!isTaken(file->m_file.fileName()))
            return Failure{
                QStringLiteral("cannot write in %1: %2").arg(folder, file->m_file.errorString())};
    }
}

AtomicFile::~AtomicFile()
{
    m_file.close();
    QFile::remove(m_file.fileName()); // m_file.remove() does not where the last bytes fail
}

Result<QString> AtomicFile::publish(const QString& wantedPath)
{
    m_file.close(); // the last bytes may fail only here
    if (m_file.error() != QFileDevice::NoError)
        return Failure{QStringLiteral("cannot be written: %1").arg(m_file.errorString())};
    const QString temporary = m_file.fileName();
    QString wanted = wantedPath;
    for (;;) {
        const QString path = NImageUtils::adjustPathWhenOverwriting(wanted);
        const std::error_code error = linkTo(temporary, path);
        if (!error)
            return path; // the destructor takes the temporary name away
        if (isDanglingLink(path))
            wanted = numbered(path); // the library calls it free
        if (isTaken(path))
            continue;                        // so it is now: someone was faster
        if (!QFile::rename(temporary, path)) // a file system without second names
            return Failure{QStringLiteral("cannot be named %1: %2")
                               .arg(path, QString::fromStdString(error.message()))};
        return path;
    }
}

void AtomicFile::sweep(const QString& folder)
{
    const QDateTime yesterday = QDateTime::currentDateTime().addDays(-1);
    const QFileInfoList leftovers = QDir(folder).entryInfoList(
        {temporaryPrefix() + QLatin1Char('*')}, QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& leftover : leftovers)
        if (leftover.lastModified() < yesterday)
            QFile::remove(leftover.filePath());
}
