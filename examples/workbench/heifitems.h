// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

/// A range of bytes of a file; empty when there is none.
struct FileRange
{
    qint64 begin = 0;
    qint64 size = 0;
};

/// The kinds of items that hold metadata, as the box `iinf` has them.
inline constexpr QByteArrayView heifExif("Exif", 4);
inline constexpr QByteArrayView heifXmp("mime\0application/rdf+xml\0", 25);

/// Where the first item of the kind `kind` lies of the HEIF or AVIF file whose box `meta` is given.
FileRange heifItem(const QByteArray& meta, QByteArrayView kind);

/// The box `meta` of a HEIF or AVIF file with one more item: an XMP packet about the main picture,
/// of `size` bytes, which will stand at the offset `end` of the file as it is now. All other items
/// lie behind the box, which grows, so their places move. Empty where the box is of a kind that
/// libheif does not write.
QByteArray metaWithXmp(const QByteArray& meta, qint64 end, qsizetype size);
