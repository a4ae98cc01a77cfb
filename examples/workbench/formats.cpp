// SPDX-License-Identifier: Apache-2.0
#include "formats.h"

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
    double mostPixels;
    bool hasQuality;
};

constexpr int anySide = INT_MAX;
constexpr double anyNumber = 1e18;
// The writer of OpenImageIO 2.4 overflows its buffer above this number.
constexpr double mostGifPixels = OIIO_VERSION < 20500 ? 16'000'000 : anyNumber;

const Format formats[] = {
    {QLatin1String("AVIF"), "avif", 65'536, anyNumber, true},
    {QLatin1String("BMP"), "bmp dib", 32'767, 700'000'000, false}, // 2 GiB of 3 bytes per pixel
    {QLatin1String("DPX"), "dpx", anySide, anyNumber, false},
    {QLatin1String("FITS"), "fits", anySide, anyNumber, false},
    {QLatin1String("GIF"), "gif", 65'535, mostGifPixels, false},
    {QLatin1String("HEIF"), "heic heif heics hif", 32'767, anyNumber, true},
    {QLatin1String("IFF"), "iff z", 65'535, anyNumber, false},
    {QLatin1String("JPEG"), "jpg jpe jpeg jif jfif jfi", 65'500, anyNumber, true},
    {QLatin1String("JPEG 2000"), "jp2 j2k j2c", anySide, anyNumber, false},
    {QLatin1String("OpenEXR"), "exr sxr mxr", anySide, anyNumber, false},
    {QLatin1String("PNG"), "png", 1'000'000, anyNumber, false},
    {QLatin1String("PNM"), "ppm pgm pbm pnm pfm", anySide, anyNumber, false},
    {QLatin1String("Radiance HDR"), "hdr rgbe", anySide, anyNumber, false},
    {QLatin1String("RLA"), "rla", 32'767, anyNumber, false},
    {QLatin1String("SGI"), "sgi rgb rgba bw int inta", 65'535, anyNumber, false},
    {QLatin1String("Targa"), "tga tpic", 65'535, anyNumber, false},
    {QLatin1String("TIFF"), "tiff tif tx env sm vsm", anySide, anyNumber, false},
    {QLatin1String("WebP"), "webp", 16'383, anyNumber, true},
};

const Format* formatOf(const QString& extension)
{
    const auto has = [lower = extension.toLower()](const Format& format) {
        return QString::fromLatin1(format.extensions).split(QLatin1Char(' ')).contains(lower);
    };
    const auto found = std::find_if(std::begin(formats), std::end(formats), has);
    return found == std::end(formats) ? nullptr : found;
}

} // namespace

bool Formats::isWritable(const QString& extension) { return formatOf(extension) != nullptr; }

bool Formats::hasQuality(const QString& extension)
{
    const Format* const format = formatOf(extension);
    return format && format->hasQuality;
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
    if (double(size.width()) * size.height() > format->mostPixels)
        return QStringLiteral("%1 x %2 pixels are too many for the %3 encoder, which takes %4")
            .arg(size.width())
            .arg(size.height())
            .arg(format->name)
            .arg(format->mostPixels, 0, 'f', 0);
    return {};
}

QString Formats::writableText()
{
    QStringList names;
    for (const Format& format : formats)
        names.append(QString::fromLatin1(format.extensions).section(QLatin1Char(' '), 0, 0));
    return names.join(QLatin1String(", "));
}
