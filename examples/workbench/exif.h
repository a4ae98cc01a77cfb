// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <functional>
#include <map>
#include <optional>

/// One entry of a directory of TIFF.
struct ExifEntry
{
    quint16 type;
    quint32 count;
    QByteArray value; ///< little-endian

    static ExifEntry shortNumber(quint16 number);
    static ExifEntry longNumber(quint32 number);
    static ExifEntry text(const QByteArray& ascii);
    static ExifEntry bytes(quint16 type, const QByteArray& value);
};

using ExifDirectory = std::map<quint16, ExifEntry>;

namespace ExifTag {
enum : quint16 {
    Orientation = 0x112,
    Software = 0x131,
    DateTime = 0x132,
    Xmp = 0x2BC,
    Iptc = 0x83BB,
    PhotoDirectory = 0x8769,
    GpsDirectory = 0x8825,
    UserComment = 0x9286,
    MakerNote = 0x927C,
    ColorSpace = 0xA001,
    PixelXDimension = 0xA002,
    PixelYDimension = 0xA003,
    InteroperabilityDirectory = 0xA005,
};
}

/// The directories of Exif. The embedded preview is not among them.
struct Exif
{
    ExifDirectory image;
    ExifDirectory photo;
    ExifDirectory gps;
    ExifDirectory interoperability;
};

/// `size` bytes from `offset`; fewer at the end of the data.
using ReadBytes = std::function<QByteArray(qint64 offset, qint64 size)>;

/// Reads a TIFF structure, which a whole TIFF file is, too. Nothing when it does not begin as one;
/// entries that point outside are left out.
std::optional<Exif> parseExif(const ReadBytes& read);

/// The directories as bytes for the place `base` of a little-endian TIFF structure; the first one
/// comes first.
QByteArray directoriesAt(quint32 base, const Exif& exif);

/// A whole TIFF structure.
QByteArray exifBlock(const Exif& exif);
