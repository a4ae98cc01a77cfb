// SPDX-License-Identifier: Apache-2.0
//
// Facts through OpenImageIO, embedded previews through libexif.
#include <metadatareader/picturefacts.h>

#include <imageutils/headers/openfile.h>
#include <imageutils/headers/readers.h>
#include <imageutils/headers/regularfile.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <libexif/exif-data.h>
#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <charconv>
#include <cmath>
#include <memory>
#include <string>

namespace {

enum class Kind { Text, Integer, Real };

struct Tag
{
    const char* key;
    const char* attribute; ///< OpenImageIO's name
    Kind kind;
};

constexpr Tag tags[] = {
    {"Make", "Make", Kind::Text},
    {"Model", "Model", Kind::Text},
    {"Software", "Software", Kind::Text},
    {"Artist", "Artist", Kind::Text},
    {"Copyright", "Copyright", Kind::Text},
    {"ImageDescription", "ImageDescription", Kind::Text},
    {"LensMake", "Exif:LensMake", Kind::Text},
    {"LensModel", "Exif:LensModel", Kind::Text},
    {"BodySerialNumber", "Exif:BodySerialNumber", Kind::Text},
    {"DateTime", "DateTime", Kind::Text},
    {"DateTimeOriginal", "Exif:DateTimeOriginal", Kind::Text},
    {"DateTimeDigitized", "Exif:DateTimeDigitized", Kind::Text},
    {"SubSecTimeOriginal", "Exif:SubsecTimeOriginal", Kind::Text},
    {"OffsetTimeOriginal", "Exif:OffsetTimeOriginal", Kind::Text},
    {"Orientation", "Orientation", Kind::Integer},
    {"ISO", "Exif:PhotographicSensitivity", Kind::Integer},
    {"ISO", "Exif:ISOSpeedRatings", Kind::Integer}, // of raw files
    {"ExposureProgram", "Exif:ExposureProgram", Kind::Integer},
    {"MeteringMode", "Exif:MeteringMode", Kind::Integer},
    {"Flash", "Exif:Flash", Kind::Integer},
    {"WhiteBalance", "Exif:WhiteBalance", Kind::Integer},
    {"ColorSpace", "Exif:ColorSpace", Kind::Integer},
    {"FocalLengthIn35mmFilm", "Exif:FocalLengthIn35mmFilm", Kind::Integer},
    {"ExposureTime", "ExposureTime", Kind::Real},
    {"FNumber", "FNumber", Kind::Real},
    {"ExposureBiasValue", "Exif:ExposureBiasValue", Kind::Real},
    {"FocalLength", "Exif:FocalLength", Kind::Real},
};

/// The double that is written like `value`: OpenImageIO keeps 1/250 as a float, and 0.004 is meant.
double widened(float value)
{
    char text[64];
    const std::to_chars_result written = std::to_chars(text, text + sizeof(text), value);
    double wide = double(value);
    std::from_chars(text, written.ptr, wide);
    return wide;
}

QVariant valueOf(const OIIO::ParamValue& attribute, Kind kind)
{
    switch (kind) {
    case Kind::Text: {
        const QString text = QString::fromStdString(attribute.get_string()).trimmed();
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    case Kind::Integer:
        return attribute.get_int();
    case Kind::Real:
        return widened(attribute.get_float());
    }
    return {};
}

/// Degrees with their minutes and seconds; negative where `reference` says `negativeReference`.
QVariant degrees(const OIIO::ImageSpec& spec, const char* name, const char* referenceName,
                 char negativeReference)
{
    const OIIO::ParamValue* const attribute = spec.find_attribute(name);
    if (!attribute || attribute->type().basevalues() < 3)
        return {};
    const double value = double(attribute->get_float_indexed(0)) +
                         double(attribute->get_float_indexed(1)) / 60 +
                         double(attribute->get_float_indexed(2)) / 3600;
    const std::string reference = spec.get_string_attribute(referenceName);
    return !reference.empty() && reference[0] == negativeReference ? -value : value;
}

QVariant altitude(const OIIO::ImageSpec& spec)
{
    const OIIO::ParamValue* const attribute = spec.find_attribute("GPS:Altitude");
    if (!attribute)
        return {};
    const double value = widened(attribute->get_float());
    return spec.get_int_attribute("GPS:AltitudeRef") == 1 ? -value : value;
}

QVariantMap valuesOf(const OIIO::ImageSpec& spec)
{
    QVariantMap values;
    const auto insert = [&values](const char* key, const QVariant& value) {
        if (value.isValid())
            values.insert(QLatin1String(key), value);
    };
    for (const Tag& tag : tags) {
        if (const OIIO::ParamValue* const attribute = spec.find_attribute(tag.attribute))
            insert(tag.key, valueOf(*attribute, tag.kind));
    }
    insert("GPSLatitude", degrees(spec, "GPS:Latitude", "GPS:LatitudeRef", 'S'));
    insert("GPSLongitude", degrees(spec, "GPS:Longitude", "GPS:LongitudeRef", 'W'));
    insert("GPSAltitude", altitude(spec));
    return values;
}

QStringList extensionsOf(const std::string& format)
{
    const auto lists = OIIO::get_extension_map();
    const auto list = lists.find(format);
    QStringList extensions;
    if (list != lists.end()) {
        for (const std::string& extension : list->second)
            extensions.append(QString::fromStdString(extension).toLower());
    }
    if (format == "heif") // as some cameras call it
        extensions.append(QStringLiteral("hif"));
    return extensions;
}

/// The rest of a JPEG file of one grey pixel, in one scan: a table of ones, the frame, a code of
/// one bit for either kind of number, and the scan.
QByteArray onePixel()
{
    const QByteArray code = QByteArray::fromHex("01") + QByteArray(16, '\0');
    return QByteArray::fromHex("ffdb004300") + QByteArray(64, '\1') +
           QByteArray::fromHex("ffc0000b080001000101011100") + QByteArray::fromHex("ffc4001400") +
           code + QByteArray::fromHex("ffc4001410") + code +
           QByteArray::fromHex("ffda0008010100003f003fffd9");
}

/// One segment of a JPEG file. Its bytes begin with the marker and the length.
struct JpegSegment
{
    int marker;
    QByteArray bytes;
};

/// The next segment of `file`; nothing where there is none that is complete. Bytes between two
/// segments are skipped, as libjpeg does, but not without end: a file may have gigabytes of holes.
std::optional<JpegSegment> nextSegment(QIODevice& file)
{
    constexpr int mostSkipped = 1 << 16;
    char byte = 0;
    bool isMarker = false;
    for (int i = 0; !isMarker; ++i) {
        const char last = byte;
        if (i == mostSkipped || !file.getChar(&byte))
            return {};
        isMarker = uchar(last) == 0xFF && uchar(byte) != 0xFF && byte != 0;
    }
    const QByteArray length = file.read(2);
    const int count = length.size() == 2 ? qFromBigEndian<quint16>(length.constData()) - 2 : -1;
    const QByteArray content = count > 0 ? file.read(count) : QByteArray();
    if (count < 0 || content.size() != count)
        return {};
    return JpegSegment{uchar(byte), '\xFF' + QByteArray(1, byte) + length + content};
}

/// A JPEG file of one grey pixel with the metadata of another one, and the size of that one's
/// picture.
struct JpegHead
{
    QByteArray file;
    int width = 0;
    int height = 0;
};

/// The head of a JPEG file of the kinds that OpenImageIO reads. Nothing for damaged files, and for
/// those with more metadata than any program writes: libjpeg takes quadratic time for the blocks.
/// Comments are left out, because OpenImageIO takes them for Exif's ImageDescription.
///
/// OpenImageIO gets this head in place of the file, because it decodes pictures in several scans
/// while it opens them, in memory and time that the file chooses.
std::optional<JpegHead> jpegHead(QIODevice& file)
{
    constexpr int mostBlocks = 1024;
    constexpr qsizetype mostBytes = 1 << 25;
    JpegHead head{file.read(2)};
    int blocks = 0;
    while (const std::optional<JpegSegment> segment = nextSegment(file)) {
        const auto& [marker, bytes] = *segment;
        const bool isFrame = (marker >= 0xC0 && marker <= 0xC2) || marker == 0xC9 || marker == 0xCA;
        const bool isMetadata = marker >= 0xE0 && marker <= 0xEF;
        if (isFrame && bytes.size() >= 9 && bytes[4] == 8) { // bits per sample
            head.height = qFromBigEndian<quint16>(bytes.constData() + 5);
            head.width = qFromBigEndian<quint16>(bytes.constData() + 7);
        } else if (isMetadata) {
            if (++blocks > mostBlocks || head.file.size() > mostBytes)
                return {};
            head.file += bytes;
        } else if (marker == 0xDA) { // the first scan
            head.file += onePixel();
            return head.width > 0 && head.height > 0 ? std::optional(head) : std::nullopt;
        }
    }
    return {};
}

/// What OpenImageIO says about a picture, and its name of the format; empty when it cannot open the
/// picture.
struct Description
{
    OIIO::ImageSpec spec;
    std::string format;
};

Description descriptionOf(const std::unique_ptr<OIIO::ImageInput>& input)
{
    if (!input)
        return {};
    return {input->spec(), input->format_name()};
}

/// The same about the JPEG file in `file`.
Description descriptionOfJpeg(QIODevice& file)
{
    const std::optional<JpegHead> head = jpegHead(file);
    if (!head)
        return {};
    OIIO::Filesystem::IOMemReader memory(const_cast<char*>(head->file.constData()),
                                         std::size_t(head->file.size()));
    Description found = descriptionOf(OIIO::ImageInput::open("head.jpg", nullptr, &memory));
    found.spec.width = head->width;
    found.spec.height = head->height;
    return found;
}

/// The same about the file at `utf8Path` that is open in `file`; `error` says why nothing was
/// found.
Description descriptionOfFile(const QFile& file, const std::string& utf8Path, std::string& error)
{
    return descriptionOf(OpenFile::open(utf8Path, RegularFile::nameFor(file, utf8Path), error));
}

struct UnrefExif
{
    void operator()(ExifData* data) const { exif_data_unref(data); }
};
using ExifDataPointer = std::unique_ptr<ExifData, UnrefExif>;

ExifDataPointer exifOfBlock(const QByteArray& block)
{
    return ExifDataPointer(exif_data_new_from_data(
        reinterpret_cast<const unsigned char*>(block.constData()), unsigned(block.size())));
}

QByteArray exifMark() { return QByteArrayLiteral("Exif\0\0"); }

/// The Exif block of a JPEG file, which stands before its pixels. libexif's own search for the
/// block gives up at segments that it does not know.
ExifDataPointer exifOfJpeg(QIODevice& file)
{
    constexpr int lengthOfMarker = 4;
    while (const std::optional<JpegSegment> segment = nextSegment(file)) {
        const QByteArray content = segment->bytes.mid(lengthOfMarker);
        if (segment->marker == 0xE1 && content.startsWith(exifMark()))
            return exifOfBlock(content);
        if (segment->marker == 0xDA) // the first scan
            break;
    }
    return {};
}

/// A TIFF file is an Exif block itself, of which libexif takes 64 KiB.
ExifDataPointer exifOfTiff(QIODevice& file) { return exifOfBlock(exifMark() + file.read(65536)); }

/// The Exif block of a file of the formats whose blocks can be read here; null for others.
ExifDataPointer exifOf(QFile& file, const std::string& format)
{
    const bool isJpeg = format == "jpeg";
    if ((!isJpeg && format != "tiff") || !file.seek(isJpeg ? 2 : 0)) // behind the start of JPEG
        return {};
    return isJpeg ? exifOfJpeg(file) : exifOfTiff(file);
}

/// Whether an altitude is one below the sea, which OpenImageIO 3.1 leaves out of TIFF files, is
/// taken from the Exif block. Where that does not say so, the altitude is left out as well.
void completeAltitude(OIIO::ImageSpec& spec, const ExifData* exif)
{
    constexpr auto tag = ExifTag(EXIF_TAG_GPS_ALTITUDE_REF);
    const ExifEntry* const reference =
        exif ? exif_content_get_entry(exif->ifd[EXIF_IFD_GPS], tag) : nullptr;
    if (reference && reference->size > 0)
        spec.attribute("GPS:AltitudeRef", int(reference->data[0]));
    else
        spec.erase_attribute("GPS:Altitude");
}

/// The time of the last change, which OpenImageIO takes from the XMP packet where there is one,
/// although a packet's time may be that of another event; empty where the block has none.
QString dateTimeOf(const ExifData* exif)
{
    const ExifEntry* const entry =
        exif ? exif_content_get_entry(exif->ifd[EXIF_IFD_0], EXIF_TAG_DATE_TIME) : nullptr;
    if (!entry || !entry->data)
        return {};
    const char* const text = reinterpret_cast<const char*>(entry->data);
    return QString::fromLatin1(text, qsizetype(qstrnlen(text, entry->size))).trimmed();
}

bool hasDescription(const ExifData* exif)
{
    return exif && exif_content_get_entry(exif->ifd[EXIF_IFD_0], EXIF_TAG_IMAGE_DESCRIPTION);
}

/// Type and size of the preview, e.g. "jpeg 160x120"; empty when there is none.
QString previewOf(const ExifData* exif)
{
    if (!exif || !exif->data || exif->size == 0)
        return {};
    QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(exif->data), qsizetype(exif->size));
    QBuffer file(&bytes);
    if (!bytes.startsWith("\xFF\xD8") || !file.open(QIODevice::ReadOnly))
        return {};
    const auto [spec, format] = descriptionOfJpeg(file);
    if (format.empty()) {
        OIIO::geterror(); // a preview that cannot be read is no error of the file
        return {};
    }
    return QStringLiteral("%1 %2x%3")
        .arg(QLatin1String(format.c_str()))
        .arg(spec.width)
        .arg(spec.height);
}

/// The size of a picture that OpenImageIO would decode, or for which it would take too much memory
/// or time, while it opens the file. OpenImageIO finds no tags in such files. A file whose bytes
/// cannot be read is refused: OpenJPEG ends the program where its reads fail.
std::optional<FoundHeader> headerOf(QFile& file)
{
    FileBytes bytes([&file](std::int64_t position, char* to, std::int64_t count) {
        return file.seek(position) ? file.read(to, count) : -1;
    });
    std::optional<FoundHeader> found = readKnownHeader(bytes);
    if (bytes.hasFailed()) {
        found.emplace();
        found->refusal = "the file cannot be read";
    }
    return found;
}

} // namespace

std::optional<PictureFacts> readPictureFacts(const QString& path, QString& error)
{
    const std::string utf8Path = path.toStdString();
    std::string reason;
    QFile file;
    if (!RegularFile::open(file, utf8Path, QFile::ReadOnly, reason)) {
        error = QString::fromStdString(reason);
        return {};
    }
    const bool isJpeg = file.peek(3) == "\xFF\xD8\xFF";
    if (const auto found = isJpeg ? std::nullopt : headerOf(file)) {
        if (!found->refusal)
            return PictureFacts{
                extensionsOf(found->format), found->header.width, found->header.height, {}};
        error = QString::fromLatin1(found->refusal);
        return {};
    }
    auto [spec, format] =
        isJpeg ? descriptionOfJpeg(file) : descriptionOfFile(file, utf8Path, reason);
    if (format.empty()) {
        error =
            isJpeg ? QString::fromStdString(OIIO::geterror()) // each thread has an error of its own
                   : QString::fromStdString(reason);
        if (error.isEmpty())
            error = QStringLiteral("the header is damaged or of an unsupported kind");
        return {};
    }
    const ExifDataPointer exif = exifOf(file, format);
    if (format == "tiff" && !spec.find_attribute("GPS:AltitudeRef"))
        completeAltitude(spec, exif.get());
    PictureFacts facts{extensionsOf(format), spec.width, spec.height, valuesOf(spec)};
    if (const QString changed = dateTimeOf(exif.get()); !changed.isEmpty())
        facts.values.insert(QStringLiteral("DateTime"), changed);
    // Without one of Exif it is the description of the XMP packet.
    if (format == "jpeg" && !hasDescription(exif.get()))
        facts.values.remove(QStringLiteral("ImageDescription"));
    // Width and height are those of the picture as HEIF's own properties turn it, which is what
    // libheif decodes; OpenImageIO 2.5 adds the orientation of the Exif block, and 2.4 does not.
    if (format == "heif")
        facts.values.remove(QStringLiteral("Orientation"));
    const QString preview = previewOf(exif.get());
    if (!preview.isEmpty())
        facts.values.insert(QStringLiteral("thumbnail"), preview);
    return facts;
}
