// SPDX-License-Identifier: Apache-2.0
#include "exportformat.h"

#include "formats.h"

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
    if (isOneOf(writer, {"rla"})) // it loses samples of 8 and 16 bits at the ends of rows
        return OIIO::TypeFloat;
    if (source.is_floating_point() && storesFloats(writer))
        return source == OIIO::TypeHalf && isOneOf(writer, {"openexr"}) ? source : OIIO::TypeFloat;
    if (source.size() == 1)
        return OIIO::TypeUInt8;
    if (isOneOf(writer, {"fits", "hdr", "openexr"})) // signed or half samples would lose bits
        return OIIO::TypeFloat;
    return OIIO::TypeUInt16;
}

OIIO::TypeDesc sampleTypeOf(const OIIO::ImageOutput& writer, int bitDepth)
{
    if (bitDepth == 16)
        return isOneOf(writer, {"openexr"}) ? OIIO::TypeHalf : OIIO::TypeUInt16;
    return bitDepth == 8 ? OIIO::TypeUInt8 : OIIO::TypeFloat;
}

/// The formats in which OpenImageIO's writers of all supported versions store an ICC profile.
bool carriesProfile(const OIIO::ImageOutput& writer)
{
    return isOneOf(writer, {"jpeg", "png", "tiff"});
}

/// The formats whose samples are proportional to light by definition.
bool holdsLinearLight(const OIIO::ImageOutput& writer)
{
    return isOneOf(writer, {"hdr", "openexr"});
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
void dropTechnicalMetadata(OIIO::ImageSpec& spec)
{
    erase(spec, "(bmp|dpx|gif|jpeg|openexr|png|raw|tiff|webp):.*|compression|planarconfig");
    erase(spec, "ICCProfile(:.*)?|thumbnail_.*|textureformat|(Exif:|tiff:)?Orientation");
    erase(spec, "oiio:.*|Exif:ColorSpace|Exif:Interoperability.*|Exif:MakerNote");
    // Four numbers of 16 bits, which OpenImageIO writes as if they had 32: what lies behind them in
    // the program's memory would be in the file. The preview that they are about is not, either.
    erase(spec, "Canon:ThumbnailImageValidArea");
}

/// Leaves to OpenImageIO what we do not write ourselves. The formats that take our blocks get none
/// of it, because their files would say the same twice.
void chooseMetadata(OIIO::ImageSpec& spec, bool takesOurs, MetadataChoice choice)
{
    if (takesOurs || choice == MetadataChoice::None) {
        OIIO::ParamValueList kept;
        for (const char* name :
             {"XResolution", "YResolution", "ResolutionUnit", "PixelAspectRatio"})
            if (const OIIO::ParamValue* const value = spec.find_attribute(name))
                kept.push_back(*value);
        spec.extra_attribs = kept;
    } else if (choice == MetadataChoice::NoGps) {
        erase(spec, "GPS:.*|.*GPS(Latitude|Longitude|Altitude|TimeStamp|DateStamp).*");
    }
}

// What OpenImageIO calls these colours.
constexpr const char* linearColours = OIIO_VERSION < 30100 ? "Linear" : "lin_rec709_scene";
constexpr const char* sRgbColours = OIIO_VERSION < 30100 ? "sRGB" : "srgb_rec709_scene";

/// Says what the colours are in the ways that formats have beside profiles.
void nameColours(OIIO::ImageSpec& spec, const OIIO::ImageOutput& writer, const ColourPlan& plan)
{
    if (!plan.profile.isEmpty())
        spec.attribute("ICCProfile",
                       OIIO::TypeDesc(OIIO::TypeDesc::UINT8, int(plan.profile.size())),
                       plan.profile.constData());
    else if (holdsLinearLight(writer))
        spec.attribute("oiio:ColorSpace", linearColours);
    else if (isOneOf(writer, {"png", "jpeg2000", "webp", "heif"}))
        spec.attribute("oiio:ColorSpace", sRgbColours);
    if (!plan.keepsPrimaries)
        spec.erase_attribute("chromaticities");
}

void chooseCompression(OIIO::ImageSpec& spec, const OIIO::ImageOutput& writer,
                       const ExportSettings& settings)
{
    const auto chosen = [](const QString& text, const char* usual) {
        return text.isEmpty() ? std::string(usual) : text.toStdString();
    };
    if (isOneOf(writer, {"jpeg", "jpegxl", "heif", "webp"}))
        spec.attribute("CompressionQuality", settings.quality);
    if (isOneOf(writer, {"webp"}) && settings.isLossless)
        spec.attribute("compression", "lossless"); // see losslesswebp.h
    if (isOneOf(writer, {"jpeg"})) {
        spec.attribute("jpeg:subsampling", chosen(settings.subsampling, "4:4:4"));
        spec.attribute("jpeg:progressive", int(settings.isProgressive));
    }
    if (isOneOf(writer, {"openexr"}))
        spec.attribute("compression", chosen(settings.compression, "zip"));
    if (isOneOf(writer, {"tiff"})) // the higher levels take several times as long for a tenth less
        spec.attribute("compression", settings.compression == QLatin1String("zip")
                                          ? "zip:1"
                                          : chosen(settings.compression, "zip:1"));
    if (isOneOf(writer, {"png"}))
        spec.attribute("png:compressionLevel", 3);
}

} // namespace

std::unique_ptr<OIIO::ImageOutput> writerFor(const QString& extension)
{
    // OpenImageIO also "writes" to terminals and to nowhere, and does not know every extension.
    const QString usual = Formats::usualExtensionOf(extension);
    if (usual.isEmpty())
        return nullptr;
    auto writer = OIIO::ImageOutput::create(usual.toStdString());
    OIIO::geterror(true); // else the next one to ask gets the answer
    return writer;
}

Layout layoutFor(const OIIO::ImageOutput& writer, const Photograph& photograph, int bitDepth)
{
    Layout layout{};
    layout.hasAlpha = photograph.hasAlpha && writer.supports("alpha");
    layout.isGrey =
        photograph.isGrey && (layout.hasAlpha ? storesGreyWithAlpha(writer) : storesGrey(writer));
    // Where the format leaves both open, it stays as it was; OpenEXR knows one kind only.
    layout.isAssociated =
        layout.hasAlpha &&
        (isOneOf(writer, {"openexr"}) || (isOneOf(writer, {"tiff"}) && photograph.isAssociated));
    layout.type = bitDepth == 0 ? sampleTypeFor(writer, photograph.spec.format)
                                : sampleTypeOf(writer, bitDepth);
    return layout;
}

Result<ColourPlan> planColours(const OIIO::ImageOutput& writer, const Photograph& photograph,
                               Layout& layout, const QString& choice, Intent intent)
{
    const SourceColours& source = photograph.colours;
    const bool carries = carriesProfile(writer);
    const bool isLinear = holdsLinearLight(writer);
    const bool isKept = choice == QLatin1String("keep");
    const Profiles::Space space = Profiles::spaceOf(source.profile);
    const bool fits = (space == Profiles::Space::Grey) == layout.isGrey || source.isAssumed;
    ColourPlan plan{};
    QByteArray target = isLinear ? Profiles::power(1.0) : Profiles::sRgb();
    plan.isSRgb = !isLinear;
    if (!isKept && choice != QLatin1String("srgb")) {
        const Result<QByteArray> wanted = Profiles::fromFile(choice);
        if (!wanted)
            return wanted.failure();
        if (!carries || Profiles::spaceOf(*wanted) != Profiles::Space::Rgb)
            return Failure{carries
                               ? QStringLiteral("%1 is no profile of RGB").arg(choice)
                               : QStringLiteral("files of this format carry no colour profile")};
        target = plan.profile = *wanted;
        layout.isGrey = plan.isSRgb = false;
    } else if (isKept && carries && fits && !source.isLinear) {
        target = source.profile;
        plan.isSRgb = toSRgb(source, intent).isIdentity();
        plan.profile = source.isAssumed ? QByteArray() : source.profile;
    } else if (isKept && isLinear && source.isLinear && isOneOf(writer, {"openexr"})) {
        target = source.profile;
        plan.keepsPrimaries = source.hasOwnPrimaries;
    } else if (carries) {
        plan.profile = layout.isGrey ? Profiles::greySRgb() : target;
    }
    const auto transform = ColourTransform::between(source.profile, target, intent);
    if (!transform)
        return transform.failure();
    plan.transform = *transform;
    return plan;
}

OIIO::ImageSpec headerFor(const OIIO::ImageOutput& writer, const Photograph& photograph,
                          const Layout& layout, const ColourPlan& plan, QSize size,
                          const ExportSettings& settings, const QString& record)
{
    OIIO::ImageSpec spec(size.width(), size.height(), layout.channels(), layout.type);
    if (layout.isGrey && layout.hasAlpha) {
        spec.channelnames = {"Y", "A"};
        spec.alpha_channel = 1;
    }
    spec.extra_attribs = photograph.spec.extra_attribs;
    dropTechnicalMetadata(spec);
    chooseMetadata(spec, takesBlocks(writer.format_name()), settings.metadata);
    nameColours(spec, writer, plan);
    if (isOneOf(writer,
                {"pnm"})) // OpenImageIO 2.5 begins with the bottom row, as in files of floats
        spec.attribute("pnm:pfmflip", 0);
    spec.attribute("Orientation", 1);
    if (spec.find_attribute("Exif:PixelXDimension")) {
        spec.attribute("Exif:PixelXDimension", size.width());
        spec.attribute("Exif:PixelYDimension", size.height());
    }
    spec.attribute("Software", record.toStdString());
    // Without a description, OpenImageIO's SGI writer fills its field with bytes of the stack.
    if (isOneOf(writer, {"sgi"}) && spec.get_string_attribute("ImageDescription").empty())
        spec.attribute("ImageDescription", " ");
    if (isOneOf(writer, {"tiff"}) && !spec.find_attribute("DateTime"))
        spec.attribute("DateTime", "1970:01:01 00:00:00"); // or OpenImageIO writes the present
    if (layout.hasAlpha && !layout.isAssociated)
        spec.attribute("oiio:UnassociatedAlpha", 1);
    chooseCompression(spec, writer, settings);
    return spec;
}
