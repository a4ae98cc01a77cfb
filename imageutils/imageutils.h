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
    /// The answer is OpenImageIO's. The formats below have readers of their own, since it decodes
    /// their pixels while opening, chosen by the file's first bytes; they give the same size and
    /// turn for every whole file, and ask it where they cannot know. They do not see the pixels, so
    /// a file that ends too early, or is damaged, behind a whole header has a size here:
    ///
    /// | format                      | OpenImageIO of such a file              | here            |
    /// |-----------------------------|-----------------------------------------|-----------------|
    /// | JPEG in one scan            | the header's size                       | the same        |
    /// | JPEG in several scans       | the header's size; none if damaged      | the header's    |
    /// | HEIC                        | none (also where no decoder is there)   | the header's    |
    /// | AVIF                        | none (also where no decoder is there)   | the header's    |
    /// | JPEG 2000 file (JP2)        | none                                    | the header's    |
    /// | JPEG 2000 codestream (J2K)  | none                                    | the header's    |
    /// | all others                  | as its reader says                      | the same        |
    ///
    /// A first answer for these formats takes no longer than opening and reading a small file, for
    /// PNG, TIFF and raw files some times that (`bench/bench_imagesize`). The first file of all
    /// that needs OpenImageIO costs, once, the loading of its libraries.
    Q_INVOKABLE static QSize imageSize(const QString& path);

    /// Whether `variant` holds a value of some type, a null or empty value included.
    Q_INVOKABLE static bool isValidVariant(const QVariant& variant);

    /// Whether the width or the height of `rect` is zero or negative.
    Q_INVOKABLE static bool isEmpty(const QRectF& rect);

    /// Whether a thumbnail of the image at `filepath` is to be written to `thumbnailPath`: the
    /// image exists, its file type in `imageData` is one that the application opens, `imageData`
    /// has no "thumbnail" of its own, and the image is raw or HEIF by its name or has at least 2^24
    /// pixels (4096 x 4096); then, whether the thumbnail is missing or not newer than the image.
    /// Equal times count as out of date. Nothing is written.
    ///
    /// A critical line where the size test needs a size that `imageData` does not know; `false`.
    Q_INVOKABLE static bool shouldGenerateThumbnail(const QString& filepath,
                                                    const QString& thumbnailPath,
                                                    const NExifToolMetadata& imageData);

    /// Whether every pixel of `otherRect` lies inside `rect`; edges may coincide. `false` when
    /// either is null.
    Q_INVOKABLE static bool doesRectCoverRect(const QRect& rect, const QRect& otherRect);

    /// The upright rectangle that encloses `rect` turned by `rotation` radians about its integral
    /// centre: the region that `CvUtils::applyRotation` takes for the rectangle of
    /// `CvUtils::getRotatedRect`. It counts both end pixels, so 10 x 10 at the origin, not turned,
    /// gives 11 x 11 from (-1, -1).
    ///
    /// A null rectangle and a warning for a rotation that is not finite and for bounds beyond int.
    Q_INVOKABLE static QRect getBoundingRect(const QRect& rect, double rotation);

    // Keys of parameter sets. They are the same in every process, as the seed is always 0, but they
    // rest on Qt's own hashes of texts (names among them), byte arrays, doubles and points, and for
    // types without a rule of their own on what QDataStream writes. Qt may change these from one
    // version to the next, so keys are kept together with the version of Qt. Integers, floats,
    // rectangles and sizes do not depend on it. Maps and lists may be nested to any depth; Qt's own
    // destructor of nested lists overflows an 8 MiB stack between 100,000 and 200,000 levels.

    /// `hashParams(params)` combined with a running value: `seed` unchanged where both are equal.
    static quint64 hash(quint64 seed, const QVariantMap& params);

    /// The key of a parameter set: that of its names and values in the order of the names, however
    /// they were inserted; 0 for an empty one. A value that `QVariant::toList` converts to a list
    /// that is not empty counts as that list: string lists, JSON arrays, `QList<int>`, and texts,
    /// which convert to their `QChar`s, and byte arrays, each byte of which takes the road of a
    /// type without a rule.
    ///
    /// Each value of a type without a rule of its own writes a warning with the type's number. All
    /// values of one type without stream operators give the same key.
    static quint64 hashParams(const QVariantMap& params);

    /// The key of one value by its type; 0 for an invalid variant. A text gives Qt's hash of it,
    /// not that of a list. Types without a rule as in `hashParams`.
    static quint64 hashVariant(const QVariant& variant);

private:
    /// The size of one file and the change time that the file had when it was read.
    struct NSizeInfo
    {
        QSize size;
        QDateTime fileTime;
    };

    static quint64 hashList(const QList<QVariant>& list);
    static quint64 hash(quint64 a, quint64 b);
    static bool imageCacheContains(const QString& path);
    static void imageCacheInsert(const QString& path, NSizeInfo* info);

    // Built in library.cpp, where the order of construction is kept.
    static QCache<QString, NSizeInfo> s_imageSizeCache;
    static QMutex s_imageSizeMutex;
};
