// SPDX-License-Identifier: Apache-2.0
#include "exportformat.h"

#include <imageutils/imageutils.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace {

bool isOneOf(const OIIO::ImageOutput& writer, std::initializer_list<std::string_view> formats)
{
    return std::find(formats.begin(), formats.end(), writer.format_name()) != formats.end();
}

// OpenImageIO has no question for these three; some of its writers abort the program when they are
// given what they cannot store.
bool storesGrey(const OIIO::ImageOutput& writer)
{
    return isOneOf(writer, {"bmp", "dpx", "fits", "jpeg", "jpeg2000", "openexr", "png", "pnm",
                            "rla", "sgi", "targa", "tiff"});
}

bool storesGreyWithAlpha(const OIIO::ImageOutput& writer)
{
    return isOneOf(writer, {"fits", "openexr", "png", "rla", "sgi", "targa", "tiff"});
}

bool storesFloats(const OIIO::ImageOutput& writer)
{
    return isOneOf(writer, {"fits", "hdr", "openexr", "rla", "tiff"});
}

/// A writer that is asked for 16 bits and has only 8 writes 8 by itself.
OIIO::TypeDesc sampleTypeFor(const OIIO::ImageOutput& writer, const OIIO::TypeDesc& source)
{
    if (source.is_floating_point() && storesFloats(writer))
        return source == OIIO::TypeHalf && isOneOf(writer, {"openexr"}) ? source : OIIO::TypeFloat;
    if (source.size() == 1)
        return OIIO::TypeUInt8;
    if (isOneOf(writer, {"fits", "hdr", "openexr"})) // signed or half samples would lose bits
        return OIIO::TypeFloat;
    return OIIO::TypeUInt16;
}

/// Whether the colours of the profile, named at byte 16 of its header, are those of the picture. A
/// CMYK file has become RGB, and its profile would spoil it.
bool profileFits(const OIIO::ParamValue& profile, bool isGrey)
{
    constexpr int headerSize = 128;
    if (profile.type().size() < headerSize)
        return false;
    const std::string_view space(static_cast<const char*>(profile.data()) + 16, 4);
    return space == (isGrey ? "GRAY" : "RGB ");
}

/// Takes the attributes away whose names `pattern` describes, in any letter case.
void erase(OIIO::ImageSpec& spec, const char* pattern)
{
    const QRegularExpression names(
        QRegularExpression::anchoredPattern(QString::fromLatin1(pattern)),
        QRegularExpression::CaseInsensitiveOption);
    const auto isMeant = [&names](const OIIO::ParamValue& attribute) {
        return names.match(QString::fromStdString(attribute.name().string())).hasMatch();
    };
    auto& attributes = spec.extra_attribs;
    attributes.erase(std::remove_if(attributes.begin(), attributes.end(), isMeant),
                     attributes.end());
}

/// Takes away what described the source file and not the photograph.
void dropTechnicalMetadata(OIIO::ImageSpec& spec, bool isGrey)
{
    erase(spec, "(bmp|dpx|gif|jpeg|openexr|png|raw|tiff|webp):.*|compression|planarconfig");
    erase(spec, "ICCProfile:.*|thumbnail_.*|textureformat|(Exif:|tiff:)?Orientation");
    erase(spec, "oiio:(?!ColorSpace$|Gamma$).*");
    // Four numbers of 16 bits, which OpenImageIO writes as if they had 32: what lies behind them in
    // the program's memory would be in the file. The preview that they are about is not, either.
    erase(spec, "Canon:ThumbnailImageValidArea");
    const OIIO::ParamValue* const profile = spec.find_attribute("ICCProfile");
    const bool keepsProfile = profile && profileFits(*profile, isGrey);
    if (profile) // a format would write the colour space by its name as well, and contradict it
        erase(spec,
              keepsProfile ? "oiio:.*|Exif:ColorSpace" : "oiio:.*|Exif:ColorSpace|ICCProfile");
}

/// OpenImageIO's writer of TIFF passes over Exif numbers of 16 bits, and over the sensitivity, of
/// which Exif allows several. Its second name is written.
void helpTiffWriter(OIIO::ImageSpec& spec)
{
    for (OIIO::ParamValue& attribute : spec.extra_attribs)
        if (attribute.type() == OIIO::TypeUInt16 || attribute.type() == OIIO::TypeInt16)
            attribute = OIIO::ParamValue(attribute.name(), attribute.get_int());
    const int sensitivity = spec.get_int_attribute("Exif:PhotographicSensitivity");
    if (sensitivity > 0 && !spec.find_attribute("Exif:RecommendedExposureIndex"))
        spec.attribute("Exif:RecommendedExposureIndex", sensitivity);
}

void chooseCompression(OIIO::ImageSpec& spec, const OIIO::ImageOutput& writer, int quality)
{
    if (isOneOf(writer, {"jpeg", "heif", "webp"}))
        spec.attribute("CompressionQuality", quality);
    if (isOneOf(writer, {"jpeg"}))
        spec.attribute("jpeg:subsampling", "4:4:4");
    if (isOneOf(writer, {"tiff"})) // the higher levels take several times as long for a tenth less
        spec.attribute("compression", "zip:1");
    if (isOneOf(writer, {"png"}))
        spec.attribute("png:compressionLevel", 3);
}

} // namespace

std::unique_ptr<OIIO::ImageOutput> writerFor(const QString& extension)
{
    // OpenImageIO also "writes" to terminals and to nowhere: only formats of pictures count.
    // Icons cannot be read back: OpenImageIO's reader writes beyond its memory.
    const QString lower = extension.toLower();
    if (!NImageUtils::supportedFileFormats().contains(lower) || lower == QLatin1String("ico"))
        return nullptr;
    auto writer = OIIO::ImageOutput::create(lower.toStdString());
    OIIO::geterror(true); // else the next one to ask gets the answer
    return writer;
}

Layout layoutFor(const OIIO::ImageOutput& writer, const Photograph& photograph)
{
    Layout layout{};
    layout.hasAlpha = photograph.hasAlpha && writer.supports("alpha");
    layout.isGrey =
        photograph.isGrey && (layout.hasAlpha ? storesGreyWithAlpha(writer) : storesGrey(writer));
    // Where the format leaves both open, it stays as it was; OpenEXR knows one kind only.
    layout.isAssociated =
        layout.hasAlpha &&
        (isOneOf(writer, {"openexr"}) || (isOneOf(writer, {"tiff"}) && photograph.isAssociated));
    layout.type = sampleTypeFor(writer, photograph.spec.format);
    return layout;
}

OIIO::ImageSpec headerFor(const OIIO::ImageOutput& writer, const Photograph& photograph,
                          const Layout& layout, QSize size, int quality, const QString& record)
{
    OIIO::ImageSpec spec(size.width(), size.height(), layout.channels(), layout.type);
    if (layout.isGrey && layout.hasAlpha) {
        spec.channelnames = {"Y", "A"};
        spec.alpha_channel = 1;
    }
    spec.extra_attribs = photograph.spec.extra_attribs;
    dropTechnicalMetadata(spec, layout.isGrey);
    if (isOneOf(writer, {"tiff"}))
        helpTiffWriter(spec);
    if (isOneOf(writer,
                {"pnm"})) // OpenImageIO 2.5 begins with the bottom row, as in files of floats
        spec.attribute("pnm:pfmflip", 0);
    spec.attribute("Orientation", 1);
    if (spec.find_attribute("Exif:PixelXDimension")) {
        spec.attribute("Exif:PixelXDimension", size.width());
        spec.attribute("Exif:PixelYDimension", size.height());
    }
    spec.attribute("Software", record.toStdString());
    if (layout.hasAlpha && !layout.isAssociated)
        spec.attribute("oiio:UnassociatedAlpha", 1);
    chooseCompression(spec, writer, quality);
    return spec;
}
