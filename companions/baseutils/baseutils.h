// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <baseutils/baseutils_export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

/// Paths, URLs and the picture formats that the application opens. CMake target
/// `imageutils::baseutils`.
///
/// Every operation looks at the text alone and never touches the disk. Extensions are written
/// without the leading '.', in lower case.
///
/// @ingroup files
/// @par Thread safety
/// The operations are stateless; any thread may call them.
/// @par Ownership
/// Results are values.
/// @par Units
/// None.
/// @par Failure
/// An empty text or `false`. Nothing is logged or thrown.
/// @since 1.0
class BASEUTILS_EXPORT BaseUtils
{
public:
    /// The last component of `filePath` with its extension: "b.tar.gz" of "/a/b.tar.gz", "" of
    /// "/a/".
    static QString getFilename(const QString& filePath);

    /// The last component without its last extension: "b.tar" of "/a/b.tar.gz".
    static QString getBaseName(const QString& filePath);

    /// The folder part of `filePath`: "/a" of "/a/b.png", "." of a bare name, "/" of "/a".
    static QString getPath(const QString& filePath);

    /// What follows the last '.' of the last component, in the letter case given: "gz" of
    /// "/a/b.tar.gz", "" of a name without a '.'.
    static QString getExtension(const QString& filePath);

    /// The `file:` URL of the local path `string`; "file:a.png" for the relative path "a.png".
    static QUrl stringToUrl(const QString& string);

    /// The local path of `url`, the inverse of `stringToUrl`; for a URL that is not local, its full
    /// text.
    static QString urlToString(const QUrl& url);

    /// Whether the extension of `filePath`, lowered, is one of `supportedFileFormats()`. The file
    /// need not exist.
    static bool isSupportedFile(const QString& filePath);

    /// Whether the extension of `filePath`, lowered, is one of `rawFileFormats()`. The file need
    /// not exist.
    static bool isRawFile(const QString& filePath);

    /// Whether `extension` (without '.'), lowered, is one of `rawFileFormats()`.
    static bool isRawExt(const QString& extension);

    /// Every extension that the application opens: `nonRawFileFormats()` and `rawFileFormats()`
    /// together, sorted.
    static QStringList supportedFileFormats();

    /// The extensions of still pictures that are not raw camera formats, sorted.
    static QStringList nonRawFileFormats();

    /// The extensions of raw camera formats, "dng" among them, sorted.
    static QStringList rawFileFormats();
};
