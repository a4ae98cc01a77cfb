// SPDX-License-Identifier: Apache-2.0
#include "containers.h"

#include "heifitems.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr qint64 longestBlock = 16 << 20;
constexpr QByteArrayView exifName("Exif\0\0", 6);
constexpr QByteArrayView xmpName("http://ns.adobe.com/xap/1.0/\0", 29);
constexpr QByteArrayView photoshopName("Photoshop 3.0\0", 14);
constexpr QByteArrayView xmpKeyword("XML:com.adobe.xmp\0", 18);
constexpr QByteArrayView iptcKeyword("Raw profile type iptc\0", 22);
constexpr quint16 iptcResource = 0x0404;
constexpr qsizetype boxHeader = 8; // of a box of HEIF: size and name

// The names of the boxes of JPEG 2000 that hold metadata.
constexpr QByteArrayView exifUuid("JpgTiffExif->JP2", 16);
constexpr QByteArrayView xmpUuid("\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC",
                                 16);
constexpr QByteArrayView
    iptcUuid("\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38", 16);

template<typename T>
QByteArray bigEndian(T number)
{
    QByteArray bytes(sizeof(T), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray bytesAt(QFile& file, qint64 offset, qint64 size)
{
    return size > 0 && size <= longestBlock && file.seek(offset) ? file.read(size) : QByteArray();
}

template<typename T>
T bigNumber(const QByteArray& bytes, qsizetype offset)
{
    return offset + qsizetype(sizeof(T)) <= bytes.size()
               ? qFromBigEndian<T>(bytes.constData() + offset)
               : T(0);
}

std::optional<Exif> parsedExif(const QByteArray& bytes)
{
    return parseExif([&bytes](qint64 offset, qint64 size) { return bytes.mid(offset, size); });
}

/// A piece of a file: a segment, a chunk or a box.
struct Piece
{
    QByteArray name;
    qint64 begin;   ///< of its header
    qint64 content; ///< of what is behind the header
    qint64 end;
};

/// The segments of a JPEG file before the first scan; the last one is that scan's.
QList<Piece> jpegSegments(QFile& file)
{
    QList<Piece> result;
    qint64 offset = 2;
    while (result.size() < 4096) {
        const QByteArray head = bytesAt(file, offset, 4);
        if (head.size() < 4 || uchar(head[0]) != 0xFF)
            return result;
        const qint64 end = offset + 2 + bigNumber<quint16>(head, 2);
        result.append({head.mid(1, 1), offset, offset + 4, end});
        if (uchar(head[1]) == 0xDA || uchar(head[1]) == 0xD9)
            return result;
        offset = end;
    }
    return result;
}

QList<Piece> pngChunks(QFile& file)
{
    QList<Piece> result;
    qint64 offset = 8;
    while (result.size() < 4096) {
        const QByteArray head = bytesAt(file, offset, 8);
        if (head.size() < 8)
            break;
        const qint64 end = offset + 12 + bigNumber<quint32>(head, 0);
        result.append({head.mid(4), offset, offset + 8, end});
        if (head.endsWith("IDAT") || head.endsWith("IEND"))
            break;
        offset = end;
    }
    return result;
}

QList<Piece> webpChunks(QFile& file)
{
    QList<Piece> result;
    qint64 offset = 12;
    while (result.size() < 4096) {
        const QByteArray head = bytesAt(file, offset, 8);
        if (head.size() < 8)
            break;
        quint32 size = 0;
        for (qsizetype i = 7; i >= 4; --i) // lowest byte first
            size = size << 8 | quint8(head.at(i));
        const qint64 end = offset + 8 + size;
        result.append({head.left(4), offset, offset + 8, end});
        offset = end + end % 2;
    }
    return result;
}

QByteArray contentOf(QFile& file, const Piece& piece)
{
    return bytesAt(file, piece.content, piece.end - piece.content);
}

/// The IPTC among the resources of Photoshop.
QByteArray iptcAmong(const QByteArray& resources)
{
    qsizetype at = 0;
    while (resources.mid(at, 4) == "8BIM") {
        const qsizetype nameSize = bigNumber<quint8>(resources, at + 6) + 1;
        const qsizetype sizeAt = at + 6 + nameSize + nameSize % 2;
        const qsizetype size = bigNumber<quint32>(resources, sizeAt);
        if (bigNumber<quint16>(resources, at + 4) == iptcResource)
            return resources.mid(sizeAt + 4, size);
        at = sizeAt + 4 + size + size % 2;
    }
    return {};
}

MetadataBlocks blocksOfJpeg(QFile& file)
{
    MetadataBlocks blocks;
    for (const Piece& segment : jpegSegments(file)) {
        const auto marker = uchar(segment.name[0]);
        if (marker != 0xE1 && marker != 0xED)
            continue;
        const QByteArray content = contentOf(file, segment);
        if (content.startsWith(exifName) && !blocks.exif)
            blocks.exif = parsedExif(content.mid(exifName.size()));
        else if (content.startsWith(xmpName) && blocks.xmp.isEmpty())
            blocks.xmp = content.mid(xmpName.size());
        else if (content.startsWith(photoshopName) && blocks.iptc.isEmpty())
            blocks.iptc = iptcAmong(content.mid(photoshopName.size()));
    }
    return blocks;
}

QByteArray inflated(const QByteArray& bytes)
{
    constexpr quint32 expectedSize = 1 << 16; // Qt makes more space when it is not enough
    return qUncompress(bigEndian(expectedSize) + bytes);
}

/// The packet in the content of an iTXt chunk behind the keyword: flag and method of compression,
/// two texts, and the packet.
QByteArray xmpOfText(const QByteArray& text)
{
    const qsizetype language = text.indexOf('\0', 2);
    const qsizetype keyword = language < 0 ? -1 : text.indexOf('\0', language + 1);
    if (keyword < 0)
        return {};
    const QByteArray packet = text.mid(keyword + 1);
    return text.at(0) == 0 ? packet : inflated(packet);
}

/// IPTC as image editors write it into PNG files, which have no chunk for it: as text, with a line
/// break, a name, the number of bytes, and the bytes in hexadecimal digits. `text` is what follows
/// the keyword.
QByteArray iptcOfText(const QByteArray& text)
{
    const qsizetype name = text.indexOf('\n', 1);
    const qsizetype size = name < 0 ? -1 : text.indexOf('\n', name + 1);
    if (size < 0)
        return {};
    const QByteArray bytes = QByteArray::fromHex(text.mid(size));
    return bytes.startsWith("8BIM") ? iptcAmong(bytes) : bytes;
}

MetadataBlocks blocksOfPng(QFile& file)
{
    MetadataBlocks blocks;
    for (const Piece& chunk : pngChunks(file)) {
        QByteArray content;
        if (chunk.name == "eXIf" || chunk.name.endsWith("Xt"))
            content = bytesAt(file, chunk.content, chunk.end - 4 - chunk.content);
        if (chunk.name == "eXIf")
            blocks.exif = parsedExif(content);
        else if (chunk.name == "tEXt" && content.startsWith(iptcKeyword))
            blocks.iptc = iptcOfText(content.mid(iptcKeyword.size()));
        else if (chunk.name == "zTXt" && content.startsWith(iptcKeyword))
            blocks.iptc = iptcOfText(inflated(content.mid(iptcKeyword.size() + 1)));
        else if (content.startsWith(xmpKeyword))
            blocks.xmp = xmpOfText(content.mid(xmpKeyword.size()));
    }
    return blocks;
}

MetadataBlocks blocksOfWebp(QFile& file)
{
    MetadataBlocks blocks;
    for (const Piece& chunk : webpChunks(file)) {
        if (chunk.name == "ICCP")
            blocks.profile = contentOf(file, chunk);
        if (chunk.name == "XMP ")
            blocks.xmp = contentOf(file, chunk);
        if (chunk.name == "EXIF") {
            const QByteArray content = contentOf(file, chunk);
            // Some writers put the name of JPEG's segment in front.
            blocks.exif = parsedExif(content.startsWith(exifName) ? content.mid(6) : content);
        }
    }
    return blocks;
}

MetadataBlocks blocksOfTiff(QFile& file)
{
    MetadataBlocks blocks;
    blocks.exif =
        parseExif([&file](qint64 offset, qint64 size) { return bytesAt(file, offset, size); });
    if (!blocks.exif)
        return blocks;
    if (const auto xmp = blocks.exif->image.extract(ExifTag::Xmp); !xmp.empty())
        blocks.xmp = xmp.mapped().value;
    if (const auto iptc = blocks.exif->image.extract(ExifTag::Iptc); !iptc.empty())
        blocks.iptc = iptc.mapped().value;
    return blocks;
}

/// The profile in the first box `colr` that has one, from `begin` to `end` and in the boxes that
/// lead there in HEIF and JPEG 2000.
QByteArray profileInBoxes(QFile& file, qint64 begin, qint64 end, int depth = 0)
{
    for (int boxes = 0; begin + 8 <= end && boxes < 4096; ++boxes) {
        const QByteArray head = bytesAt(file, begin, 8);
        const qint64 size = bigNumber<quint32>(head, 0);
        const QByteArray name = head.mid(4);
        if (size < 8) // reaches to the end, or has 64 bits, which only pixels need
            return {};
        const qint64 stop = std::min(begin + size, end);
        QByteArray profile;
        if (name == "colr") {
            const QByteArray content = bytesAt(file, begin + 8, stop - begin - 8);
            if (content.startsWith("prof") || content.startsWith("rICC"))
                return content.mid(4);
            if (content.startsWith('\x02')) // method 2 of JPEG 2000
                return content.mid(3);
        } else if (depth < 4 && (name == "iprp" || name == "ipco" || name == "jp2h")) {
            profile = profileInBoxes(file, begin + 8, stop, depth + 1);
        } else if (depth < 4 && name == "meta") { // has a version in front
            profile = profileInBoxes(file, begin + 12, stop, depth + 1);
        }
        if (!profile.isEmpty())
            return profile;
        begin += size;
    }
    return {};
}

/// The box of HEIF that describes all others; empty where it is not in front of them.
Piece heifMeta(QFile& file)
{
    qint64 begin = 0;
    for (int boxes = 0; boxes < 4096; ++boxes) {
        const QByteArray head = bytesAt(file, begin, boxHeader);
        const auto size = qint64(bigNumber<quint32>(head, 0));
        if (size < boxHeader || head.endsWith("mdat"))
            break;
        if (head.endsWith("meta"))
            return {"meta", begin, begin + boxHeader, begin + size};
        begin += size;
    }
    return {};
}

MetadataBlocks blocksOfHeif(QFile& file)
{
    MetadataBlocks blocks;
    blocks.profile = profileInBoxes(file, 0, file.size());
    const Piece piece = heifMeta(file);
    const QByteArray meta = bytesAt(file, piece.begin, piece.end - piece.begin);
    const FileRange xmp = heifItem(meta, heifXmp);
    blocks.xmp = bytesAt(file, xmp.begin, xmp.size);
    const FileRange exif = heifItem(meta, heifExif);
    const QByteArray content = bytesAt(file, exif.begin, exif.size);
    blocks.exif = parsedExif(content.mid(4 + qint64(bigNumber<quint32>(content, 0))));
    return blocks;
}

MetadataBlocks blocksOfJp2(QFile& file)
{
    MetadataBlocks blocks;
    blocks.profile = profileInBoxes(file, 0, file.size());
    qint64 offset = 0;
    for (int boxes = 0; boxes < 4096; ++boxes) {
        const QByteArray head = bytesAt(file, offset, 24);
        const qint64 size = bigNumber<quint32>(head, 0);
        if (size < 8)
            return blocks;
        const QByteArray uuid = head.mid(4, 4) == "uuid" ? head.mid(8) : QByteArray();
        const QByteArray content =
            uuid.isEmpty() ? QByteArray() : bytesAt(file, offset + 24, size - 24);
        if (uuid == exifUuid)
            blocks.exif = parsedExif(content);
        else if (uuid == xmpUuid)
            blocks.xmp = content;
        else if (uuid == iptcUuid)
            blocks.iptc = content;
        offset += size;
    }
    return blocks;
}

/// Replaces the bytes from `begin` to `end` of `file`; what follows is moved.
QString replace(QFile& file, qint64 begin, qint64 end, const QByteArray& bytes)
{
    constexpr qint64 step = 1 << 20;
    const qint64 size = file.size();
    const qint64 shift = begin + bytes.size() - end;
    for (qint64 moved = 0; shift != 0 && moved < size - end;) {
        const qint64 count = std::min(step, size - end - moved);
        const qint64 from = shift > 0 ? size - moved - count : end + moved;
        const QByteArray piece = bytesAt(file, from, count);
        if (piece.size() != count || !file.seek(from + shift) || file.write(piece) != count)
            return file.errorString();
        moved += count;
    }
    if (!file.seek(begin) || file.write(bytes) != bytes.size() || !file.flush() ||
        (shift < 0 && !file.resize(size + shift)))
        return file.errorString();
    return {};
}

/// What becomes one segment of a JPEG file.
struct JpegBlock
{
    const char* title;
    uchar marker;
    QByteArrayView name;
    QByteArray content;

    qsizetype size() const { return 2 + name.size() + content.size(); }
    bool isTooLong() const { return size() > 0xFFFF; } // Exif and XMP may not be divided
};

/// IPTC as one of the resources of Photoshop.
QByteArray iptcResourceOf(const MetadataBlocks& blocks)
{
    if (blocks.iptc.isEmpty())
        return {};
    return "8BIM" + bigEndian(iptcResource) + QByteArray(2, '\0') +
           bigEndian(quint32(blocks.iptc.size())) + blocks.iptc +
           QByteArray(blocks.iptc.size() % 2, '\0');
}

QByteArray exifBlockOf(const MetadataBlocks& blocks)
{
    return blocks.exif ? exifBlock(*blocks.exif) : QByteArray();
}

std::array<JpegBlock, 3> jpegBlocks(const MetadataBlocks& blocks)
{
    return {{{"Exif", 0xE1, exifName, exifBlockOf(blocks)},
             {"XMP", 0xE1, xmpName, blocks.xmp},
             {"IPTC", 0xED, photoshopName, iptcResourceOf(blocks)}}};
}

QByteArray jpegSegment(const JpegBlock& block)
{
    if (block.content.isEmpty() || block.isTooLong())
        return {};
    return QByteArray("\xFF") + char(block.marker) + bigEndian(quint16(block.size())) +
           block.name.toByteArray() + block.content;
}

QString writeIntoJpeg(QFile& file, const MetadataBlocks& blocks)
{
    QByteArray head;
    for (const JpegBlock& block : jpegBlocks(blocks))
        head += jpegSegment(block);
    QByteArray first; // JFIF's stays in front
    QByteArray others;
    qint64 end = 2;
    for (const Piece& segment : jpegSegments(file)) {
        const auto marker = uchar(segment.name[0]);
        if (marker < 0xE0 || (marker > 0xEF && marker != 0xFE))
            break;
        end = segment.end;
        if (marker != 0xE1 && marker != 0xED && marker != 0xFE)
            (marker == 0xE0 ? first : others) +=
                bytesAt(file, segment.begin, segment.end - segment.begin);
    }
    return replace(file, 2, end, first + head + others);
}

/// The CRC of PNG chunks: polynomial 0xEDB88320, bits in and out inverted.
quint32 crcOf(const QByteArray& bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

QByteArray pngChunk(const char* name, const QByteArray& content)
{
    if (content.isEmpty())
        return {};
    const QByteArray named = name + content;
    return bigEndian(quint32(content.size())) + named + bigEndian(crcOf(named));
}

/// See iptcOfText.
QByteArray textOfIptc(const QByteArray& bytes)
{
    constexpr qsizetype digitsPerLine = 72;
    const QByteArray digits = bytes.toHex();
    QByteArray text = "\niptc\n" + QByteArray::number(bytes.size()).rightJustified(8) + '\n';
    for (qsizetype at = 0; at < digits.size(); at += digitsPerLine)
        text += digits.mid(at, digitsPerLine) + '\n';
    return text;
}

QString writeIntoPng(QFile& file, const MetadataBlocks& blocks)
{
    QByteArray head;
    qint64 end = 8;
    for (const Piece& chunk : pngChunks(file)) {
        if (chunk.name == "IDAT" || chunk.name == "IEND")
            break;
        end = chunk.end;
        const bool isText = chunk.name.endsWith("Xt"); // OpenImageIO's form of the same data
        if (!isText && chunk.name != "eXIf")
            head += bytesAt(file, chunk.begin, chunk.end - chunk.begin);
    }
    if (blocks.exif) {
        head += pngChunk("eXIf", exifBlockOf(blocks));
        const auto software = blocks.exif->image.find(ExifTag::Software);
        if (software != blocks.exif->image.end())
            head +=
                pngChunk("tEXt", QByteArray("Software\0", 9) + software->second.value.chopped(1));
    }
    if (!blocks.xmp.isEmpty())
        head += pngChunk("iTXt", xmpKeyword.toByteArray() + QByteArray(4, '\0') + blocks.xmp);
    if (!blocks.iptc.isEmpty())
        head += pngChunk("tEXt", iptcKeyword.toByteArray() + textOfIptc(iptcResourceOf(blocks)));
    return replace(file, 8, end, head);
}

QByteArray webpChunk(const char* name, const QByteArray& content)
{
    if (content.isEmpty())
        return {};
    return name + littleEndian(quint32(content.size())) + content +
           QByteArray(content.size() % 2, '\0');
}

/// A WebP file with metadata begins with a chunk of flags and the size of the picture, and the
/// metadata comes last.
QString writeIntoWebp(QFile& file, const MetadataBlocks& blocks, QSize size, bool hasAlpha)
{
    const QByteArray tail = webpChunk("EXIF", exifBlockOf(blocks)) + webpChunk("XMP ", blocks.xmp);
    if (tail.isEmpty())
        return {};
    constexpr char alphaFlag = 0x10;
    constexpr char exifFlag = 0x08;
    constexpr char xmpFlag = 0x04;
    const QList<Piece> chunks = webpChunks(file);
    const bool isExtended = !chunks.isEmpty() && chunks.first().name == "VP8X";
    QByteArray flags(4, '\0');
    flags[0] = char((hasAlpha ? alphaFlag : 0) | (blocks.exif ? exifFlag : 0) |
                    (blocks.xmp.isEmpty() ? 0 : xmpFlag));
    const QByteArray extended =
        webpChunk("VP8X", flags + littleEndian(quint32(size.width() - 1)).left(3) +
                              littleEndian(quint32(size.height() - 1)).left(3));
    const qint64 end = file.size();
    if (const QString failure = replace(file, end, end, QByteArray(end % 2, '\0') + tail);
        !failure.isEmpty())
        return failure;
    const qint64 first = isExtended ? chunks.first().end : 12;
    const qint64 length = file.size() - first + 12 + extended.size() - 8;
    return replace(file, 0, first, "RIFF" + littleEndian(quint32(length)) + "WEBP" + extended);
}

/// A new first directory at the end: what describes the pixels, as OpenImageIO wrote it, and the
/// metadata.
QString writeIntoTiff(QFile& file, const MetadataBlocks& blocks)
{
    const auto written =
        parseExif([&file](qint64 offset, qint64 size) { return bytesAt(file, offset, size); });
    const QByteArray header = bytesAt(file, 0, 4);
    if (!written || !header.startsWith("II"))
        return {};
    Exif exif = blocks.exif.value_or(Exif());
    ExifDirectory layout = written->image;
    layout.erase(ExifTag::Xmp);
    layout.erase(ExifTag::Iptc);
    layout.erase(ExifTag::DateTime);                 // OpenImageIO's is the present
    exif.image.insert(layout.begin(), layout.end()); // does not replace
    if (!blocks.xmp.isEmpty())
        exif.image[ExifTag::Xmp] = ExifEntry::bytes(1, blocks.xmp);
    if (!blocks.iptc.isEmpty())
        exif.image[ExifTag::Iptc] = ExifEntry::bytes(7, blocks.iptc);
    const qint64 base = file.size() + file.size() % 2;
    if (base > 0xFFFFFFFF - longestBlock)
        return QStringLiteral("is too large for the metadata of a TIFF file");
    if (!file.seek(file.size()) || file.write(QByteArray(base - file.size(), '\0')) < 0)
        return file.errorString();
    const QByteArray directories = directoriesAt(quint32(base), exif);
    if (file.write(directories) != directories.size() || !file.seek(4) ||
        file.write(littleEndian(quint32(base))) != 4 || !file.flush())
        return file.errorString();
    return {};
}

QByteArray jp2Box(QByteArrayView uuid, const QByteArray& content)
{
    if (content.isEmpty())
        return {};
    constexpr qsizetype header = 24;
    return bigEndian(quint32(header + content.size())) + "uuid" + uuid.toByteArray() + content;
}

/// Boxes behind the picture, which OpenImageIO has written with its length.
QString writeIntoJp2(QFile& file, const MetadataBlocks& blocks)
{
    const qint64 end = file.size();
    return replace(file, end, end,
                   jp2Box(exifUuid, exifBlockOf(blocks)) + jp2Box(xmpUuid, blocks.xmp) +
                       jp2Box(iptcUuid, blocks.iptc));
}

/// Adds the XMP packet behind all that the file has, as an item of its own.
QString writeXmpIntoHeif(QFile& file, const QByteArray& xmp)
{
    const Piece meta = heifMeta(file);
    const QByteArray changed = metaWithXmp(bytesAt(file, meta.begin, meta.end - meta.begin),
                                           file.size() + boxHeader, xmp.size());
    if (changed.isEmpty())
        return {};
    const QString failure = replace(file, meta.begin, meta.end, changed);
    const QByteArray data = bigEndian(quint32(boxHeader + xmp.size())) + "mdat" + xmp;
    return failure.isEmpty() ? replace(file, file.size(), file.size(), data) : failure;
}

/// Overwrites the Exif item that OpenImageIO wrote around the placeholder. In front of its name
/// stand four bytes that say how far behind them the TIFF structure begins.
QString writeIntoHeif(QFile& file, const MetadataBlocks& blocks)
{
    const auto placeholder = QByteArray::fromStdString(exifPlaceholder(blocks));
    const qint64 searched = std::min(file.size(), longestBlock); // the item comes last
    const QByteArray tail = bytesAt(file, file.size() - searched, searched);
    const qsizetype space = tail.lastIndexOf(placeholder);
    const qsizetype name = space < 0 ? -1 : tail.lastIndexOf(exifName, space);
    if (!blocks.exif || name < 4)
        return {};
    const QByteArray item =
        bigEndian(quint32(exifName.size())) + exifName.toByteArray() + exifBlock(*blocks.exif);
    if (!file.seek(file.size() - searched + name - 4) || file.write(item) != item.size() ||
        !file.flush())
        return file.errorString();
    return blocks.xmp.isEmpty() ? QString() : writeXmpIntoHeif(file, blocks.xmp);
}

} // namespace

std::string exifPlaceholder(const MetadataBlocks& blocks)
{
    constexpr std::size_t least = 64; // so that it is not met by chance
    return std::string(least + (blocks.exif ? std::size_t(exifBlock(*blocks.exif).size()) : 0),
                       '-');
}

MetadataBlocks readBlocks(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray head = bytesAt(file, 0, 12);
    if (head.startsWith("\xFF\xD8"))
        return blocksOfJpeg(file);
    if (head.startsWith("\x89PNG"))
        return blocksOfPng(file);
    if (head.startsWith("RIFF") && head.endsWith("WEBP"))
        return blocksOfWebp(file);
    if (head.startsWith("II*") || head.startsWith(QByteArrayView("MM\0*", 4)))
        return blocksOfTiff(file);
    if (head.mid(4, 4) == "jP  ")
        return blocksOfJp2(file);
    return head.mid(4, 4) == "ftyp" ? blocksOfHeif(file) : MetadataBlocks();
}

bool takesBlocks(std::string_view format)
{
    constexpr std::array<std::string_view, 5> formats{"jpeg", "jpeg2000", "png", "tiff", "webp"};
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

QStringList leftOutBlocks(std::string_view format, const MetadataBlocks& blocks)
{
    QStringList titles;
    if (format == "jpeg")
        for (const JpegBlock& block : jpegBlocks(blocks))
            if (block.isTooLong())
                titles.append(QString::fromLatin1(block.title));
    return titles;
}

QString writeBlocks(QFile& file, const MetadataBlocks& blocks, QSize size, bool hasAlpha)
{
    const QByteArray head = bytesAt(file, 0, 12);
    if (head.startsWith("\xFF\xD8"))
        return writeIntoJpeg(file, blocks);
    if (head.startsWith("\x89PNG"))
        return writeIntoPng(file, blocks);
    if (head.endsWith("WEBP"))
        return writeIntoWebp(file, blocks, size, hasAlpha);
    if (head.startsWith("II*"))
        return writeIntoTiff(file, blocks);
    if (head.mid(4, 4) == "jP  ")
        return writeIntoJp2(file, blocks);
    return head.mid(4, 4) == "ftyp" ? writeIntoHeif(file, blocks) : QString();
}
