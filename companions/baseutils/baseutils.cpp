// SPDX-License-Identifier: Apache-2.0
#include <baseutils/baseutils.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <string_view>

namespace {

using Extension = std::string_view;

// The still pictures that every supported OpenImageIO reads, with one more name of HEIC ("hif", as
// some cameras write). What OpenImageIO lists besides is left out: films, picture sequences,
// volumes, medical scans, compressed buffers and its null formats are no photographs.
constexpr Extension nonRawExtensions[] = {
    "avif", "bmp",  "bw",   "cin", "dds",  "dib",  "dpx", "env",  "exr",  "fits", "gif",
    "hdr",  "heic", "heif", "hif", "ico",  "iff",  "int", "inta", "j2c",  "j2k",  "jfi",
    "jfif", "jif",  "jp2",  "jpe", "jpeg", "jpg",  "mxr", "pbm",  "pdd",  "pfm",  "pgm",
    "pic",  "png",  "pnm",  "ppm", "psb",  "psd",  "rgb", "rgba", "rgbe", "rla",  "sgi",
    "sm",   "sxr",  "tga",  "tif", "tiff", "tpic", "tx",  "vsm",  "webp", "z",
};

constexpr Extension rawExtensions[] = {
    "3fr", "arw", "bay", "bmq", "cap", "cr2", "cr3", "crw", "cs1", "dc2", "dcr",
    "dng", "drf", "dsc", "erf", "fff", "ia",  "iiq", "k25", "kc2", "kdc", "mdc",
    "mef", "mos", "mrw", "nef", "nrw", "orf", "pef", "ptx", "pxn", "qtk", "raf",
    "raw", "rdc", "rw2", "rwl", "rwz", "sr2", "srf", "srw", "sti", "x3f",
};

static_assert(std::ranges::is_sorted(nonRawExtensions) && std::ranges::is_sorted(rawExtensions));

template<std::size_t N>
void append(QStringList& list, const Extension (&extensions)[N])
{
    for (const Extension extension : extensions)
        list.append(QString::fromLatin1(extension.data(), qsizetype(extension.size())));
}

template<std::size_t N>
bool contains(const Extension (&extensions)[N], const QString& extension)
{
    const QByteArray lowered = extension.toLower().toUtf8();
    return std::ranges::binary_search(extensions,
                                      Extension(lowered.constData(), std::size_t(lowered.size())));
}

} // namespace

QString BaseUtils::getFilename(const QString& filePath) { return QFileInfo(filePath).fileName(); }

QString BaseUtils::getBaseName(const QString& filePath)
{
    return QFileInfo(filePath).completeBaseName();
}

QString BaseUtils::getPath(const QString& filePath) { return QFileInfo(filePath).path(); }

QString BaseUtils::getExtension(const QString& filePath) { return QFileInfo(filePath).suffix(); }

QUrl BaseUtils::stringToUrl(const QString& string) { return QUrl::fromLocalFile(string); }

QString BaseUtils::urlToString(const QUrl& url)
{
    return url.isLocalFile() ? url.toLocalFile() : url.toString();
}

bool BaseUtils::isSupportedFile(const QString& filePath)
{
    const QString extension = getExtension(filePath);
    return contains(nonRawExtensions, extension) || contains(rawExtensions, extension);
}

bool BaseUtils::isRawFile(const QString& filePath) { return isRawExt(getExtension(filePath)); }

bool BaseUtils::isRawExt(const QString& extension) { return contains(rawExtensions, extension); }

QStringList BaseUtils::supportedFileFormats()
{
    QStringList formats = nonRawFileFormats() + rawFileFormats();
    formats.sort();
    return formats;
}

QStringList BaseUtils::nonRawFileFormats()
{
    QStringList formats;
    append(formats, nonRawExtensions);
    return formats;
}

QStringList BaseUtils::rawFileFormats()
{
    QStringList formats;
    append(formats, rawExtensions);
    return formats;
}
