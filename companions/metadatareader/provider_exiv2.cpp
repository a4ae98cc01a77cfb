// SPDX-License-Identifier: Apache-2.0
//
// Facts through Exiv2. Exiv2 is under the GPL, and so is a program with this provider.
#include <metadatareader/picturefacts.h>

#include <exiv2/exiv2.hpp>

#include <cmath>

namespace {

enum class Kind { Text, Integer, Real };

struct Tag
{
    const char* key;
    const char* exivKey;
    Kind kind;
};

constexpr Tag tags[] = {
    {"Make", "Exif.Image.Make", Kind::Text},
    {"Model", "Exif.Image.Model", Kind::Text},
    {"Software", "Exif.Image.Software", Kind::Text},
    {"Artist", "Exif.Image.Artist", Kind::Text},
    {"Copyright", "Exif.Image.Copyright", Kind::Text},
    {"ImageDescription", "Exif.Image.ImageDescription", Kind::Text},
    {"LensMake", "Exif.Photo.LensMake", Kind::Text},
    {"LensModel", "Exif.Photo.LensModel", Kind::Text},
    {"BodySerialNumber", "Exif.Photo.BodySerialNumber", Kind::Text},
    {"DateTime", "Exif.Image.DateTime", Kind::Text},
    {"DateTimeOriginal", "Exif.Photo.DateTimeOriginal", Kind::Text},
    {"DateTimeDigitized", "Exif.Photo.DateTimeDigitized", Kind::Text},
    {"SubSecTimeOriginal", "Exif.Photo.SubSecTimeOriginal", Kind::Text},
    {"OffsetTimeOriginal", "Exif.Photo.OffsetTimeOriginal", Kind::Text},
    {"Orientation", "Exif.Image.Orientation", Kind::Integer},
    {"ISO", "Exif.Photo.ISOSpeedRatings", Kind::Integer},
    {"ExposureProgram", "Exif.Photo.ExposureProgram", Kind::Integer},
    {"MeteringMode", "Exif.Photo.MeteringMode", Kind::Integer},
    {"Flash", "Exif.Photo.Flash", Kind::Integer},
    {"WhiteBalance", "Exif.Photo.WhiteBalance", Kind::Integer},
    {"ColorSpace", "Exif.Photo.ColorSpace", Kind::Integer},
    {"FocalLengthIn35mmFilm", "Exif.Photo.FocalLengthIn35mmFilm", Kind::Integer},
    {"ExposureTime", "Exif.Photo.ExposureTime", Kind::Real},
    {"FNumber", "Exif.Photo.FNumber", Kind::Real},
    {"ExposureBiasValue", "Exif.Photo.ExposureBiasValue", Kind::Real},
    {"FocalLength", "Exif.Photo.FocalLength", Kind::Real},
    {"GPSAltitude", "Exif.GPSInfo.GPSAltitude", Kind::Real},
};

/// The extensions of Exiv2's image types, the usual one first.
QStringList extensionsOf(const std::string& mimeType)
{
    static constexpr struct
    {
        const char* mimeType;
        const char* extensions;
    } types[] = {
        {"image/jpeg", "jpg jpeg jpe jif jfif jfi"},
        {"image/tiff",
         "tif tiff dng nef nrw arw sr2 srf pef 3fr fff mef mos iiq erf kdc dcr cap cs1 rwl"},
        {"image/x-adobe-dng", "dng"},
        {"image/x-nikon-nef", "nef nrw"},
        {"image/x-sony-arw", "arw"},
        {"image/x-samsung-srw", "srw"},
        {"image/x-pentax-pef", "pef"},
        {"image/x-canon-cr2", "cr2"},
        {"image/x-canon-cr3", "cr3"},
        {"image/x-canon-crw", "crw"},
        {"image/x-fuji-raf", "raf"},
        {"image/x-minolta-mrw", "mrw"},
        {"image/x-olympus-orf", "orf"},
        {"image/x-panasonic-rw2", "rw2 rwl raw"},
        {"image/png", "png"},
        {"image/webp", "webp"},
        {"image/jp2", "jp2 j2k j2c"},
        {"image/heic", "heic heif hif"},
        {"image/heif", "heic heif hif"},
        {"image/avif", "avif"},
        {"image/gif", "gif"},
        {"image/bmp", "bmp dib"},
        {"image/x-ms-bmp", "bmp dib"},
        {"image/targa", "tga tpic"},
        {"image/x-photoshop", "psd psb pdd"},
    };
    for (const auto& type : types) {
        if (mimeType == type.mimeType)
            return QString::fromLatin1(type.extensions).split(u' ');
    }
    return {};
}

QVariant valueOf(const Exiv2::Exifdatum& datum, Kind kind)
{
    const double number = kind != Kind::Text && datum.count() > 0 ? double(datum.toFloat()) : 0;
    switch (kind) {
    case Kind::Text: {
        const QString text = QString::fromStdString(datum.toString()).trimmed();
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    case Kind::Integer:
        return datum.count() > 0 && std::abs(number) < 1 << 24 ? QVariant(int(number)) : QVariant();
    case Kind::Real: {
        const Exiv2::Rational rational = datum.count() > 0 ? datum.toRational() : Exiv2::Rational();
        return rational.second == 0 ? QVariant()
                                    : QVariant(double(rational.first) / double(rational.second));
    }
    }
    return {};
}

const Exiv2::Exifdatum* find(const Exiv2::ExifData& exif, const char* key)
{
    const auto datum = exif.findKey(Exiv2::ExifKey(key));
    return datum == exif.end() ? nullptr : &*datum;
}

/// Degrees with their minutes and seconds; negative where the reference says `negativeReference`.
QVariant degrees(const Exiv2::ExifData& exif, const char* key, const char* referenceKey,
                 char negativeReference)
{
    const Exiv2::Exifdatum* const datum = find(exif, key);
    if (!datum || datum->count() < 3)
        return {};
    double value = 0;
    double unit = 1;
    for (int i = 0; i < 3; ++i, unit /= 60) {
        const Exiv2::Rational part = datum->toRational(i);
        if (part.second != 0)
            value += double(part.first) / double(part.second) * unit;
    }
    const Exiv2::Exifdatum* const reference = find(exif, referenceKey);
    const bool negative = reference && !reference->toString().empty() &&
                          reference->toString()[0] == negativeReference;
    return negative ? -value : value;
}

QVariantMap valuesOf(const Exiv2::ExifData& exif)
{
    QVariantMap values;
    const auto insert = [&values](const char* key, const QVariant& value) {
        if (value.isValid())
            values.insert(QLatin1String(key), value);
    };
    for (const Tag& tag : tags) {
        if (const Exiv2::Exifdatum* const datum = find(exif, tag.exivKey))
            insert(tag.key, valueOf(*datum, tag.kind));
    }
    insert("GPSLatitude",
           degrees(exif, "Exif.GPSInfo.GPSLatitude", "Exif.GPSInfo.GPSLatitudeRef", 'S'));
    insert("GPSLongitude",
           degrees(exif, "Exif.GPSInfo.GPSLongitude", "Exif.GPSInfo.GPSLongitudeRef", 'W'));
    const Exiv2::Exifdatum* const below = find(exif, "Exif.GPSInfo.GPSAltitudeRef");
    if (below && below->count() > 0 && below->toFloat() == 1.0f &&
        values.contains(QStringLiteral("GPSAltitude")))
        values[QStringLiteral("GPSAltitude")] = -values[QStringLiteral("GPSAltitude")].toDouble();
    return values;
}

/// Type and size of the largest preview, e.g. "jpeg 160x120"; empty when there is none.
QString previewOf(const Exiv2::Image& image)
{
    const Exiv2::PreviewPropertiesList previews =
        Exiv2::PreviewManager(image).getPreviewProperties();
    if (previews.empty())
        return {};
    const Exiv2::PreviewProperties& largest = previews.back();
    return QStringLiteral("%1 %2x%3")
        .arg(QString::fromStdString(largest.mimeType_).section(u'/', -1))
        .arg(largest.width_)
        .arg(largest.height_);
}

/// What Exiv2 needs once, before any thread reads.
bool prepareExiv2()
{
    Exiv2::XmpParser::initialize();
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute); // errors are thrown
#ifdef EXV_ENABLE_BMFF
    Exiv2::enableBMFF(true); // else HEIC and AVIF are taken for films
#endif
    return true;
}

} // namespace

std::optional<PictureFacts> readPictureFacts(const QString& path, QString&)
{
    [[maybe_unused]] static const bool prepared = prepareExiv2();
    const auto image = Exiv2::ImageFactory::open(path.toStdString());
    image->readMetadata();
    PictureFacts facts{extensionsOf(image->mimeType()), int(image->pixelWidth()),
                       int(image->pixelHeight()), valuesOf(image->exifData())};
    const QString preview = previewOf(*image);
    if (!preview.isEmpty())
        facts.values.insert(QStringLiteral("thumbnail"), preview);
    return facts;
}
