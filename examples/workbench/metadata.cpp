// SPDX-License-Identifier: Apache-2.0
#include "metadata.h"

#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include <algorithm>
#include <array>

namespace {

/// The entries of the first directory that describe a photograph and not the layout of its file:
/// description, camera, resolution, date, artist, computer, rating, copyright, and the texts that
/// Windows adds.
constexpr std::array<quint16, 19> descriptiveTags{
    0x10D,  0x10E,  0x10F,  0x110,  0x11A,  0x11B,  0x128,  0x132,  0x13B, 0x13C,
    0x4746, 0x4749, 0x8298, 0x9C9B, 0x9C9C, 0x9C9D, 0x9C9E, 0x9C9F, 0xC614};

Exif exportedExif(const Exif& source, MetadataChoice choice, const PictureFacts& facts)
{
    constexpr quint16 sRgb = 1;
    constexpr quint16 uncalibrated = 0xFFFF;
    Exif exif;
    if (choice != MetadataChoice::None) {
        exif = source;
        std::erase_if(exif.image, [](const auto& entry) {
            return std::find(descriptiveTags.begin(), descriptiveTags.end(), entry.first) ==
                   descriptiveTags.end();
        });
        exif.photo.erase(ExifTag::MakerNote);
    }
    if (choice == MetadataChoice::NoGps)
        exif.gps.clear();
    if (facts.isSRgb) // the source's may name Adobe RGB
        exif.interoperability.clear();
    if (!exif.photo.empty()) {
        exif.photo[ExifTag::ColorSpace] =
            ExifEntry::shortNumber(facts.isSRgb ? sRgb : uncalibrated);
        exif.photo[ExifTag::PixelXDimension] = ExifEntry::longNumber(quint32(facts.size.width()));
        exif.photo[ExifTag::PixelYDimension] = ExifEntry::longNumber(quint32(facts.size.height()));
    }
    exif.image[ExifTag::Orientation] = ExifEntry::shortNumber(1);
    exif.image[ExifTag::Software] = ExifEntry::text(facts.record.toUtf8());
    return exif;
}

/// Whether a property of XMP describes the file of the source, or the place where `choice` leaves
/// it out.
bool isLeftOut(QStringView space, QStringView name, MetadataChoice choice)
{
    constexpr QStringView exif = u"http://ns.adobe.com/exif/1.0/";
    constexpr QStringView tiff = u"http://ns.adobe.com/tiff/1.0/";
    constexpr QStringView xmp = u"http://ns.adobe.com/xap/1.0/";
    if (space == exif && name.startsWith(u"GPS"))
        return choice != MetadataChoice::All;
    if (space == exif)
        return name == u"PixelXDimension" || name == u"PixelYDimension" || name == u"ColorSpace" ||
               name == u"MakerNote";
    if (space == tiff)
        return name == u"Orientation" || name == u"ImageWidth" || name == u"ImageLength" ||
               name == u"BitsPerSample" || name == u"SamplesPerPixel" || name == u"Compression" ||
               name == u"PhotometricInterpretation" || name == u"PlanarConfiguration" ||
               name == u"YCbCrSubSampling";
    return (space == xmp && name == u"Thumbnails") ||
           (space == u"http://ns.adobe.com/photoshop/1.0/" && name == u"ICCProfile");
}

void copyStart(QXmlStreamReader& reader, QXmlStreamWriter& writer, MetadataChoice choice)
{
    for (const QXmlStreamNamespaceDeclaration& space : reader.namespaceDeclarations())
        writer.writeNamespace(space.namespaceUri().toString(), space.prefix().toString());
    writer.writeStartElement(reader.namespaceUri().toString(), reader.name().toString());
    for (const QXmlStreamAttribute& attribute : reader.attributes())
        if (!isLeftOut(attribute.namespaceUri(), attribute.name(), choice))
            writer.writeAttribute(attribute);
}

/// The packet without the properties that are left out; empty where it is no XML.
QByteArray exportedXmp(const QByteArray& source, MetadataChoice choice)
{
    QXmlStreamReader reader(source);
    QByteArray result;
    QXmlStreamWriter writer(&result);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (isLeftOut(reader.namespaceUri(), reader.name(), choice))
                reader.skipCurrentElement();
            else
                copyStart(reader, writer, choice);
            break;
        case QXmlStreamReader::EndElement:
            writer.writeEndElement();
            break;
        case QXmlStreamReader::Characters:
            writer.writeCharacters(reader.text().toString());
            break;
        case QXmlStreamReader::ProcessingInstruction:
            writer.writeProcessingInstruction(reader.processingInstructionTarget().toString(),
                                              reader.processingInstructionData().toString());
            break;
        default:
            break;
        }
    }
    const bool isDamaged =
        reader.hasError() && reader.error() != QXmlStreamReader::PrematureEndOfDocumentError;
    return isDamaged ? QByteArray() : result;
}

} // namespace

MetadataBlocks exportedBlocks(const MetadataBlocks& source, MetadataChoice choice,
                              const PictureFacts& facts)
{
    MetadataBlocks blocks;
    blocks.exif = exportedExif(source.exif.value_or(Exif()), choice, facts);
    if (choice == MetadataChoice::None)
        return blocks;
    blocks.xmp = exportedXmp(source.xmp, choice);
    blocks.iptc = source.iptc;
    return blocks;
}
