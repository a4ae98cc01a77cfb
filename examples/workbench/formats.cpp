// SPDX-License-Identifier: Apache-2.0
#include "formats.h"

#include <imageutils/imageutils.h>

#include <OpenImageIO/oiioversion.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <climits>

namespace {

struct Format
{
    QLatin1String name;
    const char* extensions; ///< the first one is the usual one
    int longestSide;        ///< in pixels, as far as the format or its encoder has a limit
    bool hasQuality;
    double mostPixels;
    const char* depths;            ///< the values of --bit-depth that it has
    const char* compressions = ""; ///< the usual one first
    int shortestSide = 1;          ///< that the encoder takes
};

constexpr int anySide = INT_MAX;
constexpr double anyNumber = 1e18;
// The writer of OpenImageIO 2 overflows its buffer above this number.
constexpr double mostGifPixels = OIIO_VERSION < 30000 ? 16'000'000 : anyNumber;
// The writer of OpenImageIO 2.5 alone refuses more.
constexpr bool hasShortPngSides = OIIO_VERSION >= 20500 && OIIO_VERSION < 30000;
constexpr int longestPngSide = hasShortPngSides ? 65'535 : 1'000'000;
constexpr int longestGifSide = OIIO_VERSION < 30000 ? 65'535 : 32'768; // that can be read back

// Left out are formats of which OpenImageIO has a writer: icons, because its reader of them writes
// beyond its memory; FITS, because its files have the channels as their first axis and a header
// that is not filled up, which no other program reads; IFF, because its writer takes tiles alone.
const Format formats[] = {
    {QLatin1String("AVIF"), "avif", 32'767, true, anyNumber, "8"},
    {QLatin1String("BMP"), "bmp dib", 32'767, false, 700'000'000,
     "8"}, // 2 GiB of 3 bytes per pixel
    {QLatin1String("DPX"), "dpx", anySide, false, anyNumber, "8 16"},
    {QLatin1String("GIF"), "gif", longestGifSide, false, mostGifPixels, "8"},
    {QLatin1String("HEIF"), "heic heif heics hif", 32'767, true, anyNumber, "8"},
    {QLatin1String("JPEG"), "jpg jpe jpeg jif jfif jfi", 65'500, true, anyNumber, "8"},
    {QLatin1String("JPEG 2000"), "jp2 j2k", anySide, false, anyNumber, "8 16", "", 32},
#if OIIO_VERSION >= 30000
    {QLatin1String("JPEG XL"), "jxl", anySide, true, anyNumber, "8 16"},
#endif
    {QLatin1String("OpenEXR"), "exr sxr mxr", anySide, false, anyNumber, "16 32",
     "zip none rle zips piz"},
    {QLatin1String("PNG"), "png", longestPngSide, false, anyNumber, "8 16"},
    {QLatin1String("PNM"), "ppm pgm pbm pnm", anySide, false, anyNumber, "8"},
    {QLatin1String("Radiance HDR"), "hdr rgbe", anySide, false, anyNumber, "32"},
    {QLatin1String("RLA"), "rla", 16'383, false, anyNumber, "32"},
    {QLatin1String("SGI"), "sgi rgb rgba bw int inta", 65'534, false, anyNumber, "8 16"},
    {QLatin1String("Targa"), "tga tpic", 65'535, false, anyNumber, "8"},
    {QLatin1String("TIFF"), "tiff tif tx env sm vsm", anySide, false, anyNumber, "8 16 32",
     "zip none lzw packbits"},
    {QLatin1String("WebP"), "webp", 16'383, true, anyNumber, "8"},
};

const Format* formatOf(const QString& extension)
{
    const auto has = [lower = extension.toLower()](const Format& format) {
        return QString::fromLatin1(format.extensions).split(QLatin1Char(' ')).contains(lower);
    };
    const auto found = std::find_if(std::begin(formats), std::end(formats), has);
    return found == std::end(formats) ? nullptr : found;
}

QStringList wordsIn(const char* words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool isJpeg(const Format& format) { return format.name == QLatin1String("JPEG"); }

bool isWebP(const Format& format) { return format.name == QLatin1String("WebP"); }

bool carriesProfile(const Format& format)
{
    return isJpeg(format) || format.name == QLatin1String("PNG") ||
           format.name == QLatin1String("TIFF");
}

/// Also without a setting for the quality: GIF has 256 colours, and HDR one exponent per pixel.
bool losesSome(const Format& format)
{
    return format.hasQuality || format.name == QLatin1String("GIF") ||
           format.name == QLatin1String("Radiance HDR");
}

bool isJpegXl(const QString& path)
{
    return path.endsWith(QLatin1String(".jxl"), Qt::CaseInsensitive);
}

} // namespace

bool Formats::isWritable(const QString& extension) { return formatOf(extension) != nullptr; }

QString Formats::usualExtensionOf(const QString& extension)
{
    const Format* const format = formatOf(extension);
    return format ? wordsIn(format->extensions).first() : QString();
}

QString Formats::refusalOf(const QString& extension, QSize size)
{
    const Format* const format = formatOf(extension);
    if (!format)
        return {};
    if (std::max(size.width(), size.height()) > format->longestSide)
        return QStringLiteral("%1 x %2 pixels are too many for %3, whose sides have at most %4")
            .arg(size.width())
            .arg(size.height())
            .arg(format->name)
            .arg(format->longestSide);
    if (std::min(size.width(), size.height()) < format->shortestSide)
        return QStringLiteral("%1 x %2 pixels are too few for %3, whose sides have at least %4")
            .arg(size.width())
            .arg(size.height())
            .arg(format->name)
            .arg(format->shortestSide);
    if (double(size.width()) * size.height() > format->mostPixels)
        return QStringLiteral("%1 x %2 pixels are too many for the %3 encoder, which takes %4")
            .arg(size.width())
            .arg(size.height())
            .arg(format->name)
            .arg(format->mostPixels, 0, 'f', 0);
    return {};
}

QString Formats::refusalOf(const QString& extension, const ExportSettings& settings)
{
    const Format* const format = formatOf(extension);
    if (!format)
        return {};
    const auto refused = [format](const QString& option, const QString& possible) {
        return QStringLiteral("%1 has no %2; it has %3").arg(format->name, option, possible);
    };
    const QString depth = QString::number(settings.bitDepth);
    if (settings.bitDepth != 0 && !wordsIn(format->depths).contains(depth))
        return refused(QStringLiteral("--bit-depth ") + depth,
                       wordsIn(format->depths).join(QStringLiteral(" or ")));
    const QStringList compressions = wordsIn(format->compressions);
    if (!settings.compression.isEmpty() && !compressions.contains(settings.compression))
        return refused(QStringLiteral("--compression ") + settings.compression,
                       compressions.isEmpty() ? QStringLiteral("its own alone")
                                              : compressions.join(QStringLiteral(", ")));
    if (settings.isProgressive && !isJpeg(*format))
        return QStringLiteral("--progressive is for JPEG and not for %1").arg(format->name);
    if (!settings.subsampling.isEmpty() && !isJpeg(*format))
        return QStringLiteral("--subsampling is for JPEG and not for %1").arg(format->name);
    const bool isOwnProfile =
        settings.profile != QLatin1String("keep") && settings.profile != QLatin1String("srgb");
    if (isOwnProfile && !carriesProfile(*format))
        return QStringLiteral("%1 carries no colour profile").arg(format->name);
    if (settings.isLossless && !isWebP(*format) && losesSome(*format))
        return QStringLiteral("%1 cannot be written without loss").arg(format->name);
    return {};
}

QJsonObject Formats::encodingOf(const ExportSettings& settings, const QString& extension)
{
    const Format* const format = formatOf(extension);
    QJsonObject object;
    if (!format)
        return object;
    const bool isLossless = isWebP(*format) && settings.isLossless;
    if (isLossless)
        object.insert("isLossless", true);
    else if (format->hasQuality)
        object.insert("quality", settings.quality);
    if (isJpeg(*format)) {
        object.insert("isProgressive", settings.isProgressive);
        object.insert("subsampling", settings.subsampling.isEmpty() ? QStringLiteral("4:4:4")
                                                                    : settings.subsampling);
    }
    if (const QStringList compressions = wordsIn(format->compressions); !compressions.isEmpty())
        object.insert("compression",
                      settings.compression.isEmpty() ? compressions.first() : settings.compression);
    return object;
}

bool Formats::isPhotographName(const QString& path)
{
    return NImageUtils::isSupportedFile(path) || (isJpegXl(path) && isWritable("jxl"));
}

QString Formats::refusalOfName(const QString& path)
{
    return isJpegXl(path) && !isWritable("jxl")
               ? QStringLiteral("is JPEG XL, for which OpenImageIO " OIIO_VERSION_STRING
                                " has no plug-in")
               : QString();
}

QString Formats::writableText()
{
    QStringList names;
    for (const Format& format : formats)
        names.append(QString::fromLatin1(format.extensions).section(QLatin1Char(' '), 0, 0));
    return names.join(QLatin1String(", "));
}
