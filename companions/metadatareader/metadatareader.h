// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <metadata/nexiftoolmetadata.h>
#include <metadatareader/metadatareader_export.h>

/// The record of the picture file at `path`, read from its header. May be called from any thread.
///
/// `fileType()` follows the contents: the file's own extension, lowered, where it is one of the
/// format found, else the format's first; always one of `BaseUtils::supportedFileFormats()` where
/// the format is one of a still picture. Width and height are those of the format's header,
/// whatever the tags say of them.
///
/// `value(key)` knows these keys, in the units of the Exif standard: Make, Model, Software, Artist,
/// Copyright, ImageDescription, LensMake, LensModel, BodySerialNumber, DateTime, DateTimeOriginal,
/// DateTimeDigitized, SubSecTimeOriginal, OffsetTimeOriginal (texts); Orientation, ISO,
/// ExposureProgram, MeteringMode, Flash, WhiteBalance, ColorSpace, FocalLengthIn35mmFilm (whole
/// numbers); ExposureTime (seconds), FNumber, ExposureBiasValue, FocalLength (millimetres),
/// GPSLatitude and GPSLongitude (degrees, south and west negative), GPSAltitude (metres, below the
/// sea negative); and "thumbnail": type and size of the embedded preview, e.g. "jpeg 160x120".
///
/// What is no regular file, and what cannot be read, gives a record that knows only the name, and a
/// warning. Nothing is thrown.
///
/// Two providers can be built. The default one (OpenImageIO, libexif) does not see the tags of
/// HEIC, AVIF, JPEG 2000 and WebP files, ISO and GPS of TIFF files, the previews of other files
/// than JPEG and TIFF, nor that of a TIFF whose directories lie beyond its first 64 KiB; it decodes
/// HEIC, AVIF and JPEG 2000 while opening, which takes 0.1 to 2 s at 12 megapixels. The other one
/// (Exiv2, under the GPL: build option `IMAGEUTILS_METADATA_PROVIDER=exiv2`) sees the tags and
/// previews of all of these in under a millisecond, but knows fewer formats, and of HEIC gives the
/// coded size, which may exceed the visible one.
METADATAREADER_EXPORT NExifToolMetadata readMetadata(const QString& path);
