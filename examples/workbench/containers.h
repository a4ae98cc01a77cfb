// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exif.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QSize>
#include <QtCore/QStringList>

#include <string>
#include <string_view>

/// What a picture's file carries beside the pixels, as bytes in which nothing was reinterpreted.
struct MetadataBlocks
{
    QByteArray profile;       ///< an ICC profile
    std::optional<Exif> exif; ///< its directories, GPS included
    QByteArray xmp;           ///< an XMP packet
    QByteArray iptc;          ///< IPTC-IIM data sets
};

/// Reads the blocks of a JPEG, JPEG 2000, PNG, WebP or TIFF file, and those of a HEIF or AVIF file
/// without IPTC, for which these have no place. A block that is damaged is left out.
MetadataBlocks readBlocks(const QString& path);

/// Puts the Exif, XMP and IPTC of `blocks` in place of those that `file` has, a complete JPEG, JPEG
/// 2000, PNG, WebP or TIFF file: each where the format has a place for it. HEIF and AVIF files get
/// the Exif, in place of `exifPlaceholder`, and the XMP. Returns what went wrong; empty when
/// nothing did, also for other formats, which stay as they are.
QString writeBlocks(QFile& file, const MetadataBlocks& blocks, QSize size, bool hasAlpha);

/// The names of the blocks that `writeBlocks` leaves out of files of the OpenImageIO format
/// `format` because they are too long for it: those above 64 KB in JPEG.
QStringList leftOutBlocks(std::string_view format, const MetadataBlocks& blocks);

/// The description with which OpenImageIO must be told to write a HEIF or AVIF file, so that
/// `writeBlocks` finds enough space for the Exif of `blocks` there: its writer of Exif in these
/// files gives the byte order wrongly, and other programs see nothing.
std::string exifPlaceholder(const MetadataBlocks& blocks);

/// Whether `writeBlocks` writes all metadata of files of the OpenImageIO format `format`.
bool takesBlocks(std::string_view format);
