// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>
#include <metadata/nexiftoolmetadata.h>

#include <QtCore/QCache>
#include <QtCore/QDateTime>
#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtQml/qqmlregistration.h>

/// Services around image files: paths and formats, sizes from headers, thumbnails, parameter keys,
/// rectangles.
///
/// Every operation is static and may be called from any thread; the QML element of the same name
/// (module `NImageUtils` 1.0) only gives QML access to them. Extensions are written without the
/// leading '.'.
class IMAGEUTILS_EXPORT NImageUtils : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(float highConfidenceThreshold MEMBER HighConfidenceThreshold CONSTANT)
    Q_PROPERTY(float lowConfidenceThreshold MEMBER LowConfidenceThreshold CONSTANT)

public:
    /// The lower bound of a high confidence score.
    static const float HighConfidenceThreshold;
    /// The upper bound of a low confidence score.
    static const float LowConfidenceThreshold;

    explicit NImageUtils(QObject* parent = nullptr);
    ~NImageUtils() override;

    // The order of the invokable operations fixes their indices in the meta-object: append, never
    // insert.

    /// The local path of `url`; for a URL that is not local, its full text.
    Q_INVOKABLE static QString urlToString(const QUrl& url);

    /// The `file:` URL of the local path `string`.
    Q_INVOKABLE static QUrl stringToUrl(const QString& string);

    /// The last component of `filePath`, with its extension.
    Q_INVOKABLE static QString getFilename(const QString& filePath);

    /// The last component of `filePath` without its last extension.
    Q_INVOKABLE static QString getBaseName(const QString& filePath);

    /// The folder part of `filePath`, "." for a bare name.
    Q_INVOKABLE static QString getPath(const QString& filePath);

    /// The last extension of `filePath`, in the letter case given; empty when there is none.
    Q_INVOKABLE static QString getExtension(const QString& filePath);

    /// Whether the name of `filePath` is one of a format that the application opens. The file need
    /// not exist.
    Q_INVOKABLE static bool isSupportedFile(const QString& filePath);

    /// Whether the name of `filePath` is one of a raw camera format. The file need not exist.
    Q_INVOKABLE static bool isRawFile(const QString& filePath);

    /// Whether `extension`, in any letter case, names a raw camera format.
    Q_INVOKABLE static bool isRawExt(const QString& extension);

    /// Whether two paths name the same file: equal texts do, without asking the disk; others when
    /// Qt finds them to be the same entry (links resolved). For two different paths of which
    /// neither exists the answer is Qt's and means nothing (it is often true), so never protect an
    /// input from its output by this.
    Q_INVOKABLE static bool arePathsEqual(const QString& filePath, const QString& otherFilePath);

    /// `outputPath` when nothing exists there, else the first free one of "stem-2.ext",
    /// "stem-3.ext", …, split at the last '.'. Nothing is reserved: create the file so that an
    /// existing one fails, and ask again then. A link whose target is missing counts as free.
    Q_INVOKABLE static QString adjustPathWhenOverwriting(const QString& outputPath);

    /// Every extension that the application opens, lower case, sorted.
    Q_INVOKABLE static QStringList supportedFileFormats();

    /// The supported extensions that are not raw camera formats, sorted.
    Q_INVOKABLE static QStringList nonRawFileFormats();

    /// The raw camera extensions, sorted.
    Q_INVOKABLE static QStringList rawFileFormats();

    /// The extension of the file that an export writes for a source of `originalExtension`:
    /// `outputExtension` as given, except that "preserve" keeps the source's own (for a raw source
    /// "dng", or "tiff" when raw exposure or colour was changed), and that "dng" becomes "tiff"
    /// unless the source is raw and was left unchanged. Compared in any letter case. Empty for an
    /// empty `originalExtension`.
    Q_INVOKABLE static QString
    getExportExtension(const QString& originalExtension,
                       const QString& outputExtension = QStringLiteral("tiff"),
                       bool rawExposureOrColorUsed = false);

    /// The size in pixels of the image file at `path` as a viewer shows it, turned by its
    /// orientation tag, read from the header alone and kept for the 100 paths used last. A kept
    /// answer is used until the file's change time is later than it was; one whose file has
    /// vanished is still used.
    ///
    /// An invalid size (-1 x -1) and a warning when the header cannot be read, and for what is no
    /// regular file.
    ///
    /// OpenImageIO decodes HEIC, AVIF, JPEG 2000 and JPEG in several scans while opening, so the
    /// first question about such a file costs as much as decoding it (0.1 to 2 s at 12 megapixels);
    /// JPEG in one scan, PNG, TIFF and raw files cost well under a millisecond.
    Q_INVOKABLE static QSize imageSize(const QString& path);

    /// Whether `variant` holds a value of some type, a null or empty value included.
    Q_INVOKABLE static bool isValidVariant(const QVariant& variant);

    /// Whether the width or the height of `rect` is zero or negative.
    Q_INVOKABLE static bool isEmpty(const QRectF& rect);

    /// Whether the image at `filepath`, known by `imageData`, is due for a thumbnail at
    /// `thumbnailPath`.
    Q_INVOKABLE static bool shouldGenerateThumbnail(const QString& filepath,
                                                    const QString& thumbnailPath,
                                                    const NExifToolMetadata& imageData);

    /// Whether every pixel of `otherRect` lies inside `rect`; edges may coincide. `false` when
    /// either is null.
    Q_INVOKABLE static bool doesRectCoverRect(const QRect& rect, const QRect& otherRect);

    /// The upright rectangle that encloses `rect` turned by `rotation` radians about its centre.
    Q_INVOKABLE static QRect getBoundingRect(const QRect& rect, double rotation);

private:
    /// The size of one file and the change time that the file had when it was read.
    struct NSizeInfo
    {
        QSize size;
        QDateTime fileTime;
    };

    static bool imageCacheContains(const QString& path);
    static void imageCacheInsert(const QString& path, NSizeInfo* info);

    // Built in library.cpp, where the order of construction is kept.
    static QCache<QString, NSizeInfo> s_imageSizeCache;
    static QMutex s_imageSizeMutex;
};
