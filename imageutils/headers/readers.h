// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/headers/filebytes.h>
#include <imageutils/imageheader.h>

#include <optional>
#include <string>

/// What a reader of one format found in a file.
struct FoundHeader
{
    ImageHeader header;            ///< means something where `refusal` is null
    const char* refusal = nullptr; ///< why the file has no size
    /// Where the versions of OpenImageIO differ in whether a JPEG file is turned: a JPEG file of
    /// one pixel with the metadata of the file, for OpenImageIO to decide.
    std::string unclearTurn;
    const char* format = ""; ///< as OpenImageIO names it
};

// Readers of single formats. They are called for a file whose first bytes are those of the format
// and read nothing but headers, a bounded number of them. Without a value the file is of another
// format after all.

/// Of bitmaps only those whose run lengths OpenImageIO would expand to more than 64 MiB at once.
std::optional<FoundHeader> readBitmapHeader(FileBytes& bytes);
/// Of the other formats that OpenImageIO reads only files whose headers claim so much that
/// OpenImageIO would take more than about 64 MiB or a second to open them.
std::optional<FoundHeader> readVastClaims(FileBytes& bytes);
std::optional<FoundHeader> readJpegHeader(FileBytes& bytes);
std::optional<FoundHeader> readHeifHeader(FileBytes& bytes);
std::optional<FoundHeader> readJpeg2000Header(FileBytes& bytes);

/// Whether the Exif block of a WebP file turns its picture by a quarter. OpenImageIO gives the size
/// of such files and overlooks the block.
bool isWebpTurned(FileBytes& bytes);

/// The answer of the reader whose format the first bytes name; without a value where there is none.
std::optional<FoundHeader> readKnownHeader(FileBytes& bytes);

/// A file that cannot be an image of the format, for the reason `refusal`.
inline FoundHeader refusedHeader(const char* refusal) { return {{}, refusal, {}, ""}; }
