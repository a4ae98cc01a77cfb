// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "metadata.h"
#include "pixelbuffer.h"
#include "planes.h"
#include "result.h"
#include "sourcecolours.h"

#include <QtCore/QSize>
#include <QtCore/QStringList>

#include <OpenImageIO/imageio.h>

/// A decoded photograph and what its file said about it.
struct Photograph
{
    /// As stored, one to four channels: 8 or 16 bits where the file has as many, else floats.
    cv::Mat samples;
    bool isGrey = false;       ///< one colour channel in the file
    bool hasAlpha = false;     ///< an alpha channel in the file
    bool isAssociated = false; ///< colours are multiplied by alpha already
    OIIO::ImageSpec spec;      ///< size and samples as stored, and what OpenImageIO decoded besides
    SourceColours colours;     ///< what the samples mean
    MetadataBlocks blocks;     ///< the metadata of the file
    QStringList warnings;      ///< what was decided for the user
};

/// What `readPhotograph` shall do.
struct ReadSettings
{
    qint64 maxPixels;                   ///< a header that claims more is refused
    int page = 1;                       ///< of a file of several pictures, counted from 1
    Intent intent = Intent::Perceptual; ///< for CMYK, which becomes sRGB
};

/// The regular file at `path`, decoded; raw files are developed, and CMYK becomes sRGB through its
/// profile, or through the standard one, which a warning names. Refuses what a header claims beyond
/// the settings, and files that end too early or hold damaged data.
Result<Photograph> readPhotograph(const QString& path, const ReadSettings& settings);

/// The size of `photograph` as a viewer shows it.
QSize uprightSize(const Photograph& photograph);

/// `photograph` upright, split by the library. Values are those of the file, full range = 1; a grey
/// value stands in all three colours; the alpha is empty where the file has none and where nothing
/// is transparent. The colours lie in `buffer`, which is made larger where it is too small.
Result<Planes> splitPhotograph(const Photograph& photograph, PixelBuffer& buffer);

/// Why a picture of `width` x `height` is too large for a limit of `maxPixels`; nothing when it is
/// not.
std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels);
