// SPDX-License-Identifier: Apache-2.0
//
// What OSUtils does with the clipboard and the temporary files.
#include <imageutils/osutils.h>

#include <imageutils/guiapplication_p.h>
#include <imageutils/imageutils.h>
#include <platform/ownfile.h>

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

/// The temporary folder. Where the environment names none, QDir::temp() would be the current
/// folder, whose files are nobody's temporary ones.
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
        qWarning().nospace() << operation
                             << ": not a temporary folder: " << qEnvironmentVariable("TMPDIR");
    }
    return folder;
}

/// Whether `path` can be opened as a picture. A pipe or a device would keep its reader waiting for
/// ever, so only files count; a path with a zero byte would open the file whose name ends there.
bool isLocalPicture(const QString& path)
{
    return NImageUtils::isSupportedFile(path) && !path.contains(QChar::Null) &&
           QFileInfo(path).isFile();
}

QStringList localPictures(const QList<QUrl>& urls)
{
    qInfo() << "Clipboard contains URLs. Checking if they are local image files.";
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

/// `image` as PNG; empty for a null image, as which a picture that cannot be decoded arrives.
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

/// Makes the file `path`, complete or not at all, readable by the user alone, and nothing in place
/// of or through whatever gets that name meanwhile. Should the program end in the middle, what it
/// leaves has a name that the clean-up knows.
bool writeNewFile(const QString& path, const QByteArray& bytes)
{
    QTemporaryFile file(
        QFileInfo(path).dir().filePath(QStringLiteral("VOLK_Clipboard_XXXXXX.png")));
    if (!file.open())
        return false;
    qInfo() << "Saving clipboard image to temp file:" << path;
    const bool allWritten = file.write(bytes) == bytes.size();
    file.close();
    // A full disk may be noticed when the buffer is written out, and then only error() tells.
    if (!allWritten || file.error() != QFileDevice::NoError || !file.rename(path))
        return false;
    file.setAutoRemove(false);
    return true;
}

/// The path of a file in the temporary folder that holds `image`; empty when there is none.
QString savedBitmap(const QImage& image)
{
    const std::optional<QDir> folder = temporaryFolder();
    const QByteArray png = folder ? encoded(image) : QByteArray();
    if (png.isEmpty())
        return {};
    const QByteArray digest = QCryptographicHash::hash(png, QCryptographicHash::Md5).toHex();
    const QString path =
        folder->filePath(QStringLiteral("VOLK_Clipboard_%1.png").arg(QString::fromLatin1(digest)));
    // Only a file of our own can be the one written before: anybody may guess the name.
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

/// The application's list of recent files, without a value where its settings cannot tell.
std::optional<QStringList> recentFiles()
{
    const QSettings settings;
    const QVariant value = settings.value(QStringLiteral("recentFiles"));
    // An application without an organisation has no settings, which QSettings calls an error; for
    // one without a name it takes the domain.
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

} // namespace

QStringList OSUtils::clipboard()
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
    // Asked for once: an owner that has stopped keeps us waiting anew for each question.
    const QStringList formats = data->formats();
    QStringList paths;
    if (formats.contains(QLatin1String("text/uri-list")))
        paths = localPictures(data->urls());
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

QString OSUtils::getTempDir()
{
    const QStringList places = QStandardPaths::standardLocations(QStandardPaths::AppDataLocation);
    const QString path = places.value(1, places.value(0));
    if (path.isEmpty() || !QDir(path).mkpath(QStringLiteral(".")))
        qWarning() << "Unable to locate or create temp path: " << path;
    return path;
}

void OSUtils::removeMatchingFiles(QDir dir, QStringList patterns, QStringList keptNames)
{
    dir = QDir(dir.absolutePath()); // without any filter of its own
    QSet<QString> kept;             // there may be very many entries
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
    if (!folderToClear("clearTempFiles"))
        return;
    clearClipboardTempFiles();
    clearThumbnailTempFiles();
}

void OSUtils::clearClipboardTempFiles()
{
    if (const auto folder = folderToClear("clearClipboardTempFiles"))
        removeMatchingFiles(*folder, {QStringLiteral("VOLK_Clipboard_*.png")}, {});
}

void OSUtils::clearThumbnailTempFiles()
{
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
}
