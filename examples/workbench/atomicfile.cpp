// SPDX-License-Identifier: Apache-2.0
#include "atomicfile.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <filesystem>
#include <system_error>
#include <utility>

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

std::error_code makeFolder(const QString& folder)
{
    std::error_code error;
    std::filesystem::create_directories(QDir(folder).filesystemAbsolutePath(), error);
    return error;
}

/// Told the temporary name of each file before it is created.
std::function<void(const QString&)>& observer()
{
    static std::function<void(const QString&)> observer = [](const QString&) {};
    return observer;
}

} // namespace

bool isNameTaken(const QString& path)
{
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

/// The library calls the name of a dangling link free.
QString freeName(const QString& wanted)
{
    QString path = NImageUtils::adjustPathWhenOverwriting(wanted);
    for (int number = 2; isNameTaken(path); ++number)
        path = numberedName(wanted, number);
    return path;
}

QString numberedName(const QString& path, int number)
{
    const QFileInfo info(path);
    return info.dir().filePath(info.completeBaseName() + QLatin1Char('-') +
                               QString::number(number) + QLatin1Char('.') + info.suffix());
}

void AtomicFile::setObserver(std::function<void(const QString&)> newObserver)
{
    observer() = std::move(newObserver);
}

Result<std::unique_ptr<AtomicFile>> AtomicFile::create(const QString& folder,
                                                       const QString& extension, Access access)
{
    if (const std::error_code error = makeFolder(folder))
        return Failure{QStringLiteral("cannot make the folder %1: %2")
                           .arg(folder, QString::fromStdString(error.message()))};
    constexpr auto readWrite = QIODevice::ReadWrite | QIODevice::NewOnly;
    constexpr auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    for (;;) {
        std::unique_ptr<AtomicFile> file(new AtomicFile(randomPath(folder, extension)));
        QFile& qfile = file->m_file;
        observer()(qfile.fileName());
        if (access == Access::OwnerOnly ? qfile.open(readWrite, owner) : qfile.open(readWrite))
            return file;
        if (!isNameTaken(qfile.fileName()))
            return Failure{
                QStringLiteral("cannot write in %1: %2").arg(folder, qfile.errorString())};
    }
}

AtomicFile::~AtomicFile()
{
    m_file.close();
    QFile::remove(m_file.fileName()); // m_file.remove() does not where the last bytes fail
}

std::optional<Failure> AtomicFile::failureIfLost() const
{
    if (QFileInfo::exists(m_file.fileName()))
        return {};
    return Failure{QStringLiteral("its folder %1 was removed during the export")
                       .arg(QFileInfo(m_file).path())};
}

std::optional<Failure> AtomicFile::close()
{
    if (auto lost = failureIfLost())
        return lost;
    m_file.close(); // the last bytes may fail only here
    if (m_file.error() != QFileDevice::NoError)
        return Failure{QStringLiteral("cannot be written: %1").arg(m_file.errorString())};
    return {};
}

Result<QString> AtomicFile::publish(const QString& wantedPath)
{
    if (const auto failure = close())
        return *failure;
    const QString temporary = m_file.fileName();
    for (;;) {
        const QString path = freeName(wantedPath);
        const std::error_code error = linkTo(temporary, path);
        if (!error) {
            // Now, because Windows opens no file for others while one of its names is removed.
            QFile::remove(temporary);
            return path;
        }
        if (isNameTaken(path))
            continue;                        // another program was faster
        if (!QFile::rename(temporary, path)) // a file system without second names
            return Failure{QStringLiteral("cannot be named %1: %2")
                               .arg(path, QString::fromStdString(error.message()))};
        return path;
    }
}

Result<QString> AtomicFile::replace(const QString& path)
{
    if (const auto failure = close())
        return *failure;
    std::error_code error;
    std::filesystem::rename(QFileInfo(m_file).filesystemFilePath(),
                            QFileInfo(path).filesystemFilePath(), error);
    if (error)
        return Failure{QStringLiteral("cannot replace %1: %2")
                           .arg(path, QString::fromStdString(error.message()))};
    return path;
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
