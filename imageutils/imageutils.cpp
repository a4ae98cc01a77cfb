// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils.h>

#include <imageutils/cvutils.h>
#include <imageutils/cvutils_p.h>
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

/// When a file changed, and whether something is there that is none.
struct FileStamp
{
    QDateTime changed; ///< invalid where nothing is there
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

/// The stamp by one question of our own, where the system is known, and with it the time that
/// `QFileInfo` gives: it asks for the same, but takes three times as long.
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

/// Formats that are slow to open: a thumbnail is worth its while at any size.
bool isAlwaysThumbnailed(const QString& suffix)
{
    return NImageUtils::rawFileFormats().contains(suffix) || suffix == QLatin1String("heif") ||
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

} // namespace

const float NImageUtils::HighConfidenceThreshold = 0.97f;
const float NImageUtils::LowConfidenceThreshold = 0.3f;

NImageUtils::NImageUtils(QObject* parent) : QObject(parent) {}

NImageUtils::~NImageUtils() = default;

QString NImageUtils::urlToString(const QUrl& url) { return BaseUtils::urlToString(url); }

QUrl NImageUtils::stringToUrl(const QString& string) { return BaseUtils::stringToUrl(string); }

QString NImageUtils::getFilename(const QString& filePath)
{
    return BaseUtils::getFilename(filePath);
}

QString NImageUtils::getBaseName(const QString& filePath)
{
    return BaseUtils::getBaseName(filePath);
}

QString NImageUtils::getPath(const QString& filePath) { return BaseUtils::getPath(filePath); }

QString NImageUtils::getExtension(const QString& filePath)
{
    return BaseUtils::getExtension(filePath);
}

bool NImageUtils::isSupportedFile(const QString& filePath)
{
    return BaseUtils::isSupportedFile(filePath);
}

bool NImageUtils::isRawFile(const QString& filePath) { return BaseUtils::isRawFile(filePath); }

bool NImageUtils::isRawExt(const QString& extension) { return BaseUtils::isRawExt(extension); }

bool NImageUtils::arePathsEqual(const QString& filePath, const QString& otherFilePath)
{
    return filePath == otherFilePath || QFileInfo(filePath) == QFileInfo(otherFilePath);
}

QString NImageUtils::adjustPathWhenOverwriting(const QString& outputPath)
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

QStringList NImageUtils::supportedFileFormats() { return BaseUtils::supportedFileFormats(); }

QStringList NImageUtils::nonRawFileFormats() { return BaseUtils::nonRawFileFormats(); }

QStringList NImageUtils::rawFileFormats() { return BaseUtils::rawFileFormats(); }

QString NImageUtils::getExportExtension(const QString& originalExtension,
                                        const QString& outputExtension, bool rawExposureOrColorUsed)
{
    if (originalExtension.isEmpty())
        return {};
    const QString wanted = outputExtension.toLower();
    const bool raw = rawFileFormats().contains(originalExtension.toLower());
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

QSize NImageUtils::imageSize(const QString& path)
{
    const auto refuse = [](const std::string& reason) {
        qWarning() << "Could not get image size:" << reason.c_str();
        return QSize();
    };
    if (path.contains(QChar(u'\0'))) // the system would take the name before it
        return refuse("path holds a null character");

    const std::string utf8Path = path.toStdString();
    const FileStamp file = stampOf(path, utf8Path);
    if (imageCacheContains(path)) {
        const QMutexLocker lock(&s_imageSizeMutex);
        const NSizeInfo* cached = s_imageSizeCache.object(path); // null when evicted since
        if (cached && cached->fileTime >= file.changed)
            return cached->size;
    }

    if (file.isNoRegularFile) // reading a pipe or a device might never end
        return refuse("not a regular file");
    std::string error;
    const std::optional<ImageHeader> header = readImageHeader(utf8Path, error);
    if (!header)
        return refuse(error);

    QSize size(header->width, header->height);
    if (header->turned)
        size.transpose();
    imageCacheInsert(path, new NSizeInfo{size, file.changed});
    return size;
}

bool NImageUtils::imageCacheContains(const QString& path)
{
    const QMutexLocker lock(&s_imageSizeMutex);
    return s_imageSizeCache.contains(path);
}

void NImageUtils::imageCacheInsert(const QString& path, NSizeInfo* info)
{
    const QMutexLocker lock(&s_imageSizeMutex);
    s_imageSizeCache.insert(path, info, 1);
}

bool NImageUtils::isValidVariant(const QVariant& variant) { return variant.isValid(); }

bool NImageUtils::isEmpty(const QRectF& rect) { return rect.isEmpty(); }

bool NImageUtils::shouldGenerateThumbnail(const QString& filepath, const QString& thumbnailPath,
                                          const NExifToolMetadata& imageData)
{
    const QString suffix = QFileInfo(filepath).suffix().toLower();
    if (!imageData.value(QStringLiteral("thumbnail")).toString().isEmpty())
        return false;
    if (!QFile::exists(filepath))
        return false;
    if (!supportedFileFormats().contains(imageData.fileType()))
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

bool NImageUtils::doesRectCoverRect(const QRect& rect, const QRect& otherRect)
{
    return rect.contains(otherRect, false);
}

QRect NImageUtils::getBoundingRect(const QRect& rect, double rotation)
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
