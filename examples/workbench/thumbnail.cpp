// SPDX-License-Identifier: Apache-2.0
#include "thumbnail.h"

#include "atomicfile.h"
#include "bands.h"

#include <imageutils/imageutils.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

constexpr int longestSide = 512;

/// A regular file may be an older thumbnail and is replaced. Anything else at that name was not
/// written by this program and stays.
bool makeWay(const QString& path)
{
    const QFileInfo info(path);
    if (info.isFile() && !info.isSymLink())
        return QFile::remove(path);
    return !info.exists() && !info.isSymLink();
}

} // namespace

QString thumbnailPath(const QString& path)
{
    const QString folder =
        QDir::tempPath(); // empty where the system names a folder that is missing
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        return {};
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const QString name = QString::number(qHash(absolute, 0));
    return QDir(folder).filePath(QStringLiteral("VOLK_Thumbnail_%1.jpeg").arg(name));
}

bool isThumbnailDue(const QString& path, const NExifToolMetadata& metadata)
{
    const QString thumbnail = thumbnailPath(path);
    return !thumbnail.isEmpty() && NImageUtils::shouldGenerateThumbnail(path, thumbnail, metadata);
}

Result<QString> writeThumbnail(const Photograph& photograph, Intent intent, PixelBuffer& buffer,
                               const QString& path, int quality)
{
    const QString thumbnail = thumbnailPath(path);
    ExportSettings settings;
    settings.maxWidth = settings.maxHeight = longestSide;
    const Result<Fit> fit = fitFor(sizeOf(photograph), settings);
    if (!fit)
        return fit.failure();
    const Result<Planes> small = resampledInBands(photograph, *fit, {}, buffer);
    if (!small)
        return small.failure();
    const ColourPlan colours{toSRgb(photograph.colours, intent), {}, true, false};
    const Result<QImage> image = joined(*small, colours, Layout{});
    if (!image)
        return image.failure();
    OIIO::ImageSpec header(image->width(), image->height(), 3, OIIO::TypeUInt8);
    header.attribute("CompressionQuality", quality);
    if (!makeWay(thumbnail))
        return Failure{QStringLiteral("%1 is in the way").arg(thumbnail)};
    AtomicFile::sweep(QFileInfo(thumbnail).path());
    // Every user can list the temporary folder, so only the owner may read the thumbnail.
    auto file = exportPicture([&image] { return image; }, header, {}, thumbnail,
                              AtomicFile::Access::OwnerOnly);
    return file ? (*file)->publish(thumbnail) : file.failure();
}
