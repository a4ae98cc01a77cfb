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

/// Services around image files: paths and formats, sizes from headers, thumbnails, parameter keys
/// and rectangles. The QML element `NImageUtils` of the module `NImageUtils` 1.0 gives QML access
/// to them.
///
/// Every operation is static. Extensions are written without the leading '.'.
///
/// Keys of parameter sets (`hash`, `hashParams`, `hashVariant`) are the same in every process, as
/// the seed is always 0. They use Qt's own hashes of texts (names among them), byte arrays, doubles
/// and points, and for types without a rule of their own the bytes that QDataStream writes. Qt may
/// change these from one version to the next, so keys are stored together with the version of Qt.
/// Integers, floats, rectangles and sizes do not depend on it. Maps and lists may be nested to any
/// depth, but Qt's own destructor of nested lists overflows an 8 MiB stack between 100,000 and
/// 200,000 levels.
///
/// @ingroup files
/// @par Thread safety
/// Any thread may call the operations. The cache of `imageSize` is the only shared state; a mutex
/// guards it, and no file is read while the mutex is held.
/// @par Ownership
/// Results are values; arguments are not kept.
/// @par Units
/// Sizes and rectangles are pixels, angles are radians.
/// @par Failure
/// An empty text, `false`, an invalid size or a null rectangle, as named at each function. Nothing
/// is thrown.
/// @since 1.0
class IMAGEUTILS_EXPORT NImageUtils : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The lower bound of a high confidence score.
    Q_PROPERTY(float highConfidenceThreshold MEMBER HighConfidenceThreshold CONSTANT)
    /// The upper bound of a low confidence score.
    Q_PROPERTY(float lowConfidenceThreshold MEMBER LowConfidenceThreshold CONSTANT)

public:
    /// The lower bound of a high confidence score.
    static const float HighConfidenceThreshold;
    /// The upper bound of a low confidence score.
    static const float LowConfidenceThreshold;

    /// Makes the object that QML calls; `parent` owns it, if given.
    explicit NImageUtils(QObject* parent = nullptr);
    /// Holds nothing that needs to be released.
    ~NImageUtils() override;

    // The order of the invokable operations fixes their indices in the meta-object: append, never
    // insert.

    /// The local path of `url`; for a URL that is not local, its full text. It is the inverse of
    /// `stringToUrl` for absolute local paths that begin with one slash: "//Data/a" names a host,
    /// and a relative path such as "x:1.png" reads as a URL of the scheme "x".
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

    /// Whether two paths name the same file. Equal texts do, without a look at the disk; different
    /// ones do when Qt finds that they are the same entry (links resolved). For two different paths
    /// of which neither exists Qt's answer is meaningless and often true, so do not use this
    /// function to protect an input from its output.
    Q_INVOKABLE static bool arePathsEqual(const QString& filePath, const QString& otherFilePath);

    /// `outputPath` when nothing exists there, otherwise the first free name of "stem-2.ext",
    /// "stem-3.ext", …, split at the last '.'. The name is not reserved: create the file in a mode
    /// that refuses an existing one, and call this function again if that fails. A link whose
    /// target is missing counts as free.
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
    /// An invalid size (-1 x -1) and a warning when the header cannot be read, and for anything but
    /// a regular file.
    ///
    /// JPEG, HEIC, AVIF and JPEG 2000 files, recognised by their first bytes whatever their name,
    /// are read by readers of our own, because OpenImageIO decodes pixels of these formats while it
    /// opens a file. They read bounded amounts of memory, and their answer or refusal is final.
    /// They give the same size and turn as OpenImageIO for complete files; a file that is cut off
    /// or damaged after a complete header has a size here. OpenImageIO reads all other formats:
    ///
    /// | format                      | OpenImageIO of such a file              | here            |
    /// |-----------------------------|-----------------------------------------|-----------------|
    /// | JPEG in one scan            | the header's size                       | the same        |
    /// | JPEG in several scans       | the header's size; none if damaged      | the header's    |
    /// | HEIC                        | none (nor without a decoder)            | the header's    |
    /// | AVIF                        | none (nor without a decoder)            | the header's    |
    /// | JPEG 2000 file (JP2)        | none                                    | the header's    |
    /// | JPEG 2000 codestream (J2K)  | none                                    | the header's    |
    /// | all others                  | as its reader says                      | the same        |
    ///
    /// A first answer for these formats takes no longer than opening and reading a small file; PNG,
    /// TIFF and raw files take a few times as long (`bench/bench_imagesize`). The first file that
    /// needs OpenImageIO also loads OpenImageIO's libraries, once per process.
    Q_INVOKABLE static QSize imageSize(const QString& path);

    /// Whether `variant` holds a value of any type, a null or empty value included.
    Q_INVOKABLE static bool isValidVariant(const QVariant& variant);

    /// Whether the width or the height of `rect` is zero or negative.
    Q_INVOKABLE static bool isEmpty(const QRectF& rect);

    /// Whether a thumbnail of the image at `filepath` is to be written to `thumbnailPath`: the
    /// image exists, its file type in `imageData` is one that the application opens, `imageData`
    /// has no "thumbnail" of its own, and the image is raw or HEIF by its name or has at least 2^24
    /// pixels (4096 x 4096); then, whether the thumbnail is missing or not newer than the image.
    /// Equal times count as out of date. Nothing is written.
    ///
    /// `false` and a critical line when the size test needs a size that `imageData` does not hold.
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

    /// `hashParams(params)` combined with a running value: `seed` unchanged where both are equal.
    static quint64 hash(quint64 seed, const QVariantMap& params);

    /// The key of a parameter set, computed from its names and values in the order of the names, so
    /// the order of insertion does not matter; 0 for an empty set. The entries of a `QVariantHash`
    /// count in the order of their names and those of a `QSet` in the order of their own keys, so
    /// equal values have equal keys in every process. A value that `QVariant::toList`
    /// converts to a list that is not empty counts as that list: string lists, JSON arrays,
    /// `QList<int>`, texts (lists of their `QChar`s) and byte arrays (lists of bytes, a type
    /// without a rule).
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
