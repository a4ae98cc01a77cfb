// SPDX-License-Identifier: Apache-2.0
//
// The clipboard and the temporary files.
#include <imageutils/osutils.h>

#include <imageutils/exceptions_p.h>
#include <imageutils/guiapplication_p.h>
#include <imageutils/imageutils.h>
#include <platform/ownfile.h>
#include <platform/writefile.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QSet>
#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryFile>
#include <QtGui/QClipboard>
#include <QtGui/QImage>

#include <optional>

namespace {

/// The temporary folder. If the environment names none, QDir::temp() is the current folder, in
/// which no file may be removed.
std::optional<QDir> temporaryFolder()
{
    const QFileInfo folder(QDir::tempPath());
    if (!folder.isAbsolute() || !folder.isDir())
        return {};
    return QDir(folder.filePath());
}

std::optional<QDir> folderToClear(const char* operation)
{
    std::optional<QDir> folder = temporaryFolder();
    if (!folder) {
        const QString path = QDir::tempPath(); // empty for one that Qt cannot resolve
        qWarning().nospace() << operation << ": not a temporary folder: "
                             << (path.isEmpty() ? qEnvironmentVariable("TMPDIR") : path);
    }
    return folder;
}

/// Whether `path` can be opened as a picture. The reader of a pipe or a device could wait for ever,
/// so only regular files count. A path with a null character would open the file whose name ends
/// before it.
bool isLocalPicture(const QString& path)
{
    return NImageUtils::isSupportedFile(path) && !path.contains(QChar::Null) &&
           QFileInfo(path).isFile();
}

QStringList localPictures(const QMimeData& data)
{
    qInfo() << "Clipboard contains URLs. Checking if they are local image files.";
    const QList<QUrl> urls = data.urls(); // may wait for the program that offers them
    QStringList paths;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        if (const QString path = url.toLocalFile(); isLocalPicture(path))
            paths.append(path);
    }
    qInfo() << "Loading" << paths.size() << "/" << urls.size() << "URLs from clipboard.";
    return paths;
}

/// `image` as PNG; empty for a null image, which Qt gives for a picture that it cannot decode.
QByteArray encoded(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "png"))
        return {};
    return png;
}

Platform::Entry entryAt(const QString& path)
{
    return Platform::entryAt(std::filesystem::path(path.toStdU16String()));
}

/// Writes the file `path`, complete or not at all and readable by the user alone. A file or link
/// that another program creates there meanwhile is neither replaced nor followed. If this program
/// ends before the file is complete, the temporary name matches the pattern of the clean-up.
bool writeNewFile(const QString& path, const QByteArray& bytes)
{
    QTemporaryFile file(
        QFileInfo(path).dir().filePath(QStringLiteral("VOLK_Clipboard_XXXXXX.png")));
    if (!file.open())
        return false;
    qInfo() << "Saving clipboard image to temp file:" << path;
    // Not close(): a QTemporaryFile only seeks then, and errors of the file system go unnoticed.
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush() &&
                           Platform::isStored(file.handle()) != Platform::Stored::No;
    if (!isWritten || !file.rename(path))
        return false;
    file.setAutoRemove(false);
    return true;
}

/// The path of a file in the temporary folder that holds `image`; empty on failure.
QString savedBitmap(const QImage& image)
{
    const std::optional<QDir> folder = temporaryFolder();
    const QByteArray png = folder ? encoded(image) : QByteArray();
    if (png.isEmpty())
        return {};
    const QByteArray digest = QCryptographicHash::hash(png, QCryptographicHash::Md5).toHex();
    const QString path =
        folder->filePath(QStringLiteral("VOLK_Clipboard_%1.png").arg(QString::fromLatin1(digest)));
    // Other users can guess the name, so only a file of this user counts as written before.
    switch (entryAt(path)) {
    case Platform::Entry::OwnFile:
        return path;
    case Platform::Entry::Missing:
        // Another program may have pasted the same bitmap meanwhile.
        return writeNewFile(path, png) || entryAt(path) == Platform::Entry::OwnFile ? path
                                                                                    : QString();
    case Platform::Entry::Other:
        break;
    }
    return {};
}

/// The application's list of recent files; no value if its settings cannot be read.
std::optional<QStringList> recentFiles()
{
    const QSettings settings;
    const QVariant value = settings.value(QStringLiteral("recentFiles"));
    // QSettings reports an error for an application without an organisation, which has no settings.
    // It uses the domain of an organisation that has no name.
    const bool named = !QCoreApplication::organizationName().isEmpty() ||
                       !QCoreApplication::organizationDomain().isEmpty();
    if (named && settings.status() != QSettings::NoError)
        return {};
    switch (value.typeId()) {
    case QMetaType::UnknownType: // no such key, or an empty list
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return value.toStringList();
    default:
        return {};
    }
}

QString thumbnailName(const QString& path)
{
    return QStringLiteral("VOLK_Thumbnail_%1.jpeg").arg(QString::number(qHash(path, 0)));
}

QStringList importClipboard()
{
    const QClipboard* clipboard = onGuiThread() ? QGuiApplication::clipboard() : nullptr;
    if (!clipboard) {
        qCritical() << "Clipboard reference is null";
        return {};
    }
    const QMimeData* data = clipboard->mimeData(QClipboard::Clipboard);
    if (!data) {
        qCritical() << "Clipboard mime data is null";
        return {};
    }
    // Asked once, because Qt waits 5 s for each answer of an owner that has stopped.
    const QStringList formats = data->formats();
    QStringList paths;
    if (formats.contains(QLatin1String("text/uri-list")))
        paths = localPictures(*data);
    if (!paths.isEmpty() || !formats.contains(QLatin1String("application/x-qt-image")))
        return paths;

    qInfo() << "Clipboard contains an image.";
    const QString path = savedBitmap(qvariant_cast<QImage>(data->imageData()));
    if (path.isEmpty())
        qWarning() << "Could not open temp file for clipboard image";
    else
        paths.append(path);
    return paths;
}

} // namespace

QStringList OSUtils::clipboard() { return neutralOnException("clipboard", importClipboard); }

QString OSUtils::getTempDir()
{
    return neutralOnException("getTempDir", [] {
        const QStringList places =
            QStandardPaths::standardLocations(QStandardPaths::AppDataLocation);
        const QString path = places.value(1, places.value(0));
        if (path.isEmpty() || !QDir(path).mkpath(QStringLiteral(".")))
            qWarning() << "Unable to locate or create temp path: " << path;
        return path;
    });
}

void OSUtils::removeMatchingFiles(QDir dir, QStringList patterns, QStringList keptNames)
{
    dir = QDir(dir.absolutePath()); // without any filter of its own
    QSet<QString> kept;             // for folders with very many entries
    for (QString& name : keptNames)
        kept.insert(std::move(name));
    for (const QString& pattern : std::as_const(patterns)) {
        for (const QString& name : dir.entryList({pattern})) {
            if (!kept.contains(name))
                QFile::remove(dir.filePath(name));
        }
    }
}

void OSUtils::clearTempFiles()
{
    neutralOnException("clearTempFiles", [] {
        if (!folderToClear("clearTempFiles"))
            return;
        clearClipboardTempFiles();
        clearThumbnailTempFiles();
    });
}

void OSUtils::clearClipboardTempFiles()
{
    neutralOnException("clearClipboardTempFiles", [] {
        if (const auto folder = folderToClear("clearClipboardTempFiles"))
            removeMatchingFiles(*folder, {QStringLiteral("VOLK_Clipboard_*.png")}, {});
    });
}

void OSUtils::clearThumbnailTempFiles()
{
    neutralOnException("clearThumbnailTempFiles", [] {
        const auto folder = folderToClear("clearThumbnailTempFiles");
        if (!folder)
            return;
        const QString current = QStringLiteral("VOLK_Thumbnail_*.jpeg");
        const QString former = QStringLiteral("*-thumbnail.jpeg");
        if (const auto files = recentFiles()) {
            QStringList kept;
            for (const QString& path : *files)
                kept.append(thumbnailName(path));
            removeMatchingFiles(*folder, {current, former}, kept);
        } else {
            qWarning() << "clearThumbnailTempFiles: unreadable list of recent files, keeping:"
                       << current;
            removeMatchingFiles(*folder, {former}, folder->entryList({current}));
        }
    });
}
