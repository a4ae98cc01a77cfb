// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <metadata/nexiftoolmetadata.h>
#include <metadatareader/metadatareader_export.h>

/// @file
/// The reader of picture metadata.

/// The metadata record of the picture file at `path`, read from its header. CMake target
/// `imageutils::metadatareader`.
///
/// `fileType()` follows the contents: the file's own extension, in lower case, if it belongs to the
/// format found, otherwise the format's first extension. It is always one of
/// `BaseUtils::supportedFileFormats()` if the format is one of still pictures. Width and height are
/// those of the format's header, even if tags say otherwise.
///
/// `value(key)` knows these keys, in the units of the Exif standard: Make, Model, Software, Artist,
/// Copyright, ImageDescription, LensMake, LensModel, BodySerialNumber, DateTime, DateTimeOriginal,
/// DateTimeDigitized, SubSecTimeOriginal, OffsetTimeOriginal (texts); Orientation, ISO,
/// ExposureProgram, MeteringMode, Flash, WhiteBalance, ColorSpace, FocalLengthIn35mmFilm (whole
/// numbers); ExposureTime (seconds), FNumber, ExposureBiasValue, FocalLength (millimetres),
/// GPSLatitude and GPSLongitude (degrees, south and west negative), GPSAltitude (metres, below the
/// sea negative); and "thumbnail": type and size of the embedded preview, e.g. "jpeg 160x120".
///
/// Two providers can be built. The default one (OpenImageIO, libexif) does not see the tags of
/// HEIC, AVIF, JPEG 2000 and WebP files, ISO and GPS of TIFF files, the previews of other files
/// than JPEG and TIFF, nor that of a TIFF whose directories lie beyond its first 64 KiB; of a file
/// whose header claims more than a picture holds it gives the size alone, or nothing. The other one
/// (Exiv2, under the GPL: build option `IMAGEUTILS_METADATA_PROVIDER=exiv2`) sees the tags and
/// previews of all of these in under a millisecond, but knows fewer formats, and of HEIC gives the
/// coded size, which may exceed the visible one.
///
/// @ingroup files
/// @par Thread safety
/// Any thread may call this function.
/// @par Ownership
/// The record is a value that belongs to the caller.
/// @par Units
/// Named at each key.
/// @par Failure
/// For an unreadable file, and for anything but a regular file, a warning is written and the record
/// holds the name alone. Nothing is thrown.
/// @since 1.0
METADATAREADER_EXPORT NExifToolMetadata readMetadata(const QString& path);
