// SPDX-License-Identifier: Apache-2.0
#include "pngexif.h"

#include <QtCore/QtEndian>

#include <OpenImageIO/tiffutils.h>

#include <cstring>
#include <vector>

namespace {

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

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

} // namespace

QByteArray pngExifChunk(const OIIO::ImageSpec& header)
{
    std::vector<char> blob;
    OIIO::encode_exif(header, blob);
    QByteArray exif(blob.data(), qsizetype(blob.size()));
    if (exif.startsWith(QByteArrayView("Exif\0\0", 6))) // JPEG's way of naming the block
        exif.remove(0, 6);
    if (exif.isEmpty())
        return {};
    const QByteArray typeAndData = "eXIf" + exif;
    return bigEndian(quint32(exif.size())) + typeAndData + bigEndian(crcOf(typeAndData));
}
