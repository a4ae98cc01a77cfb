// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <imageutils/cvutils.h>
#include <imageutils/cvutils_p.h>
#include <imageutils/exceptions_p.h>
#include <imageutils/imageheader.h>
#include <platform/filestate.h>

#include <baseutils/baseutils.h>

#include <QtCore/QDebug>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMutexLocker>
#include <QtCore/QTimeZone>

#include <cmath>
#include <memory>
#include <optional>

namespace {

/// When a file changed, and whether its path names something else than a regular file.
struct FileStamp
{
    QDateTime changed; ///< invalid for a missing file
    bool isNoRegularFile = false;
};

QDateTime universalTime(qint64 milliseconds)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone::UTC);
#else
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
#endif
}

/// The stamp of the file at `path`. Where `platform/` can give it, one system call replaces
/// `QFileInfo`, which gives the same time but takes three times as long.
FileStamp stampOf(const QString& path, const std::string& utf8Path)
{
    using Kind = Platform::FileState::Kind;
    const Platform::FileState state = Platform::fileState(utf8Path.c_str());
    switch (state.kind) {
    case Kind::Missing:
        return {};
    case Kind::Regular:
    case Kind::Other:
        return {universalTime(state.changedMs), state.kind == Kind::Other};
    case Kind::Unknown:
        break;
    }
    const QFileInfo file(path);
    return {file.fileTime(QFileDevice::FileMetadataChangeTime), file.exists() && !file.isFile()};
}

QSize refuseSize(const std::string& reason)
{
    qWarning() << "Could not get image size:" << reason.c_str();
    return {};
}

/// The size of the picture in the file as a viewer shows it; invalid, with a line of the log, where
/// its header cannot be read.
QSize shownSize(const std::string& utf8Path)
{
    std::string error;
    const std::optional<ImageHeader> header = readImageHeader(utf8Path, error);
    if (!header)
        return refuseSize(error);
    const QSize size(header->width, header->height);
    return header->turned ? size.transposed() : size;
}

/// Whether files with this suffix are slow to open, so that a thumbnail pays off at any size.
bool isAlwaysThumbnailed(const QString& suffix)
{
    return BaseUtils::isRawExt(suffix) || suffix == QLatin1String("heif") ||
           suffix == QLatin1String("heic") || suffix == QLatin1String("hif");
}

bool isLargeEnoughForThumbnail(const NExifToolMetadata& imageData)
{
    constexpr qint64 leastPixels = 1 << 24; // 4096 x 4096
    const qint64 width = imageData.imageWidth();
    const qint64 height = imageData.imageHeight();
    if (width == 0 || height == 0)
        qCritical() << "Could not get image width and height via metadata. Thumbnail generation "
                       "may be incorrect."
                    << imageData.imageName();
    return width * height >= leastPixels;
}

/// The path for `NImageUtils::adjustPathWhenOverwriting`.
QString freePath(const QString& outputPath)
{
    if (!QFileInfo::exists(outputPath))
        return outputPath;
    const qsizetype dot = outputPath.lastIndexOf(u'.');
    const QString stem = dot < 0 ? outputPath : outputPath.left(dot);
    const QString extension = dot < 0 ? QString() : outputPath.mid(dot);
    for (quint64 counter = 2;; ++counter) {
        const QString candidate = stem + u'-' + QString::number(counter) + extension;
        if (!QFileInfo::exists(candidate))
            return candidate;
    }
}

/// The extension for `NImageUtils::getExportExtension`.
QString exportExtension(const QString& originalExtension, const QString& outputExtension,
                        bool rawExposureOrColorUsed)
{
    if (originalExtension.isEmpty())
        return {};
    const QString wanted = outputExtension.toLower();
    const bool raw = BaseUtils::rawFileFormats().contains(originalExtension.toLower());
    if (wanted == QLatin1String("preserve")) {
        if (!raw)
            return originalExtension;
        return rawExposureOrColorUsed ? QStringLiteral("tiff") : QStringLiteral("dng");
    }
    // A DNG is written only from a raw source whose exposure and colour were left alone.
    if (wanted == QLatin1String("dng") && (!raw || rawExposureOrColorUsed))
        return QStringLiteral("tiff");
    return outputExtension;
}

/// The decision of `NImageUtils::shouldGenerateThumbnail`.
bool isThumbnailDue(const QString& filepath, const QString& thumbnailPath,
                    const NExifToolMetadata& imageData)
{
    const QString suffix = QFileInfo(filepath).suffix().toLower();
    if (!imageData.value(QStringLiteral("thumbnail")).toString().isEmpty())
        return false;
    if (!QFile::exists(filepath))
        return false;
    if (!BaseUtils::supportedFileFormats().contains(imageData.fileType()))
        return false;
    if (!isAlwaysThumbnailed(suffix) && !isLargeEnoughForThumbnail(imageData))
        return false;
    if (!QFile::exists(thumbnailPath))
        return true;
    const QDateTime thumbnailTime =
        QFileInfo(thumbnailPath).fileTime(QFileDevice::FileModificationTime);
    const QDateTime imageTime = QFileInfo(filepath).fileTime(QFileDevice::FileModificationTime);
    return thumbnailTime.msecsTo(imageTime) >= 0;
}

/// The rectangle for `NImageUtils::getBoundingRect`.
QRect boundsOf(const QRect& rect, double rotation)
{
    if (!std::isfinite(rotation)) {
        qWarning() << "getBoundingRect: rotation must be finite, got:" << rotation;
        return {};
    }
    const std::optional<cv::Rect> bounds =
        CvUtils::enclosingRect(CvUtils::getRotatedRect(rect, rotation));
    if (!bounds) {
        qWarning() << "getBoundingRect: bounds must be within int, got:" << rect;
        return {};
    }
    return {bounds->x, bounds->y, bounds->width, bounds->height};
}

/// Gives the table of an empty cache its final size. Qt ends the program where such a table finds
/// no memory to grow, because its functions are `noexcept`; a table that records leave stays as
/// large.
template<typename Record>
bool growTable(QCache<QString, Record>& cache)
{
    constexpr int most = 127; // one record more would double the table again
    const auto usual = cache.maxCost();
    cache.setMaxCost(most);
    for (int i = 0; i < 4 * most; ++i) // its halves fill by chance
        cache.insert(QString::number(i), nullptr);
    cache.setMaxCost(0);
    cache.setMaxCost(usual);
    return true;
}

} // namespace

const float NImageUtils::HighConfidenceThreshold = 0.97f;
const float NImageUtils::LowConfidenceThreshold = 0.3f;

NImageUtils::NImageUtils(QObject* parent) : QObject(parent) {}

NImageUtils::~NImageUtils() = default;

QString NImageUtils::urlToString(const QUrl& url)
{
    return neutralOnException("urlToString", [&] { return BaseUtils::urlToString(url); });
}

QUrl NImageUtils::stringToUrl(const QString& string)
{
    return neutralOnException("stringToUrl", [&] { return BaseUtils::stringToUrl(string); });
}

QString NImageUtils::getFilename(const QString& filePath)
{
    return neutralOnException("getFilename", [&] { return BaseUtils::getFilename(filePath); });
}

QString NImageUtils::getBaseName(const QString& filePath)
{
    return neutralOnException("getBaseName", [&] { return BaseUtils::getBaseName(filePath); });
}

QString NImageUtils::getPath(const QString& filePath)
{
    return neutralOnException("getPath", [&] { return BaseUtils::getPath(filePath); });
}

QString NImageUtils::getExtension(const QString& filePath)
{
    return neutralOnException("getExtension", [&] { return BaseUtils::getExtension(filePath); });
}

bool NImageUtils::isSupportedFile(const QString& filePath)
{
    return neutralOnException("isSupportedFile",
                              [&] { return BaseUtils::isSupportedFile(filePath); });
}

bool NImageUtils::isRawFile(const QString& filePath)
{
    return neutralOnException("isRawFile", [&] { return BaseUtils::isRawFile(filePath); });
}

bool NImageUtils::isRawExt(const QString& extension)
{
    return neutralOnException("isRawExt", [&] { return BaseUtils::isRawExt(extension); });
}

bool NImageUtils::arePathsEqual(const QString& filePath, const QString& otherFilePath)
{
    return neutralOnException("arePathsEqual", [&] {
        return filePath == otherFilePath || QFileInfo(filePath) == QFileInfo(otherFilePath);
    });
}

QString NImageUtils::adjustPathWhenOverwriting(const QString& outputPath)
{
    return neutralOnException("adjustPathWhenOverwriting", [&] { return freePath(outputPath); });
}

QStringList NImageUtils::supportedFileFormats()
{
    return neutralOnException("supportedFileFormats", BaseUtils::supportedFileFormats);
}

QStringList NImageUtils::nonRawFileFormats()
{
    return neutralOnException("nonRawFileFormats", BaseUtils::nonRawFileFormats);
}

QStringList NImageUtils::rawFileFormats()
{
    return neutralOnException("rawFileFormats", BaseUtils::rawFileFormats);
}

QString NImageUtils::getExportExtension(const QString& originalExtension,
                                        const QString& outputExtension, bool rawExposureOrColorUsed)
{
    return neutralOnException("getExportExtension", [&] {
        return exportExtension(originalExtension, outputExtension, rawExposureOrColorUsed);
    });
}

QSize NImageUtils::imageSize(const QString& path)
{
    return neutralOnException("Could not get image size", [&path] {
        if (path.contains(QChar(u'\0'))) // the system would take the name before it
            return refuseSize("path holds a null character");
        const std::string utf8Path = path.toStdString();
        const FileStamp file = stampOf(path, utf8Path);
        if (imageCacheContains(path)) {
            QMutexLocker lock(&s_imageSizeMutex);
            const NSizeInfo* const cached =
                s_imageSizeCache.object(path); // null when evicted since
            const NSizeInfo kept = cached ? *cached : NSizeInfo();
            lock.unlock();
            if (kept.size.isValid() && kept.fileTime >= file.changed)
                return kept.size;
        }
        if (file.isNoRegularFile) // reading a pipe or a device might never end
            return refuseSize("not a regular file");
        const QSize size = shownSize(utf8Path);
        if (size.isValid())
            imageCacheInsert(path, new NSizeInfo{size, file.changed});
        return size;
    });
}

bool NImageUtils::imageCacheContains(const QString& path)
{
    const QMutexLocker lock(&s_imageSizeMutex);
    return s_imageSizeCache.contains(path);
}

void NImageUtils::imageCacheInsert(const QString& path, NSizeInfo* info)
{
    std::unique_ptr<NSizeInfo> owned(info);
    // A copy of the characters: those of `path` may be the caller's own (`QString::fromRawData`).
    const QString key(path.constData(), path.size());
    const QMutexLocker lock(&s_imageSizeMutex);
    [[maybe_unused]] static const bool isGrown = growTable(s_imageSizeCache);
    s_imageSizeCache.insert(key, owned.release(), 1);
}

bool NImageUtils::isValidVariant(const QVariant& variant) { return variant.isValid(); }

bool NImageUtils::isEmpty(const QRectF& rect) { return rect.isEmpty(); }

bool NImageUtils::shouldGenerateThumbnail(const QString& filepath, const QString& thumbnailPath,
                                          const NExifToolMetadata& imageData)
{
    return neutralOnException("shouldGenerateThumbnail",
                              [&] { return isThumbnailDue(filepath, thumbnailPath, imageData); });
}

bool NImageUtils::doesRectCoverRect(const QRect& rect, const QRect& otherRect)
{
    return rect.contains(otherRect, false);
}

QRect NImageUtils::getBoundingRect(const QRect& rect, double rotation)
{
    return neutralOnException("getBoundingRect", [&] { return boundsOf(rect, rotation); });
}
