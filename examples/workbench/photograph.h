// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "metadata.h"
#include "pixelbuffer.h"
#include "planes.h"
#include "result.h"
#include "sourcecolours.h"

#include <QtCore/QFile>
#include <QtCore/QSize>
#include <QtCore/QStringList>

#include <OpenImageIO/imageio.h>

#include <memory>
#include <optional>

/// A decoded photograph and what its file said about it.
struct Photograph
{
    /// As a viewer shows them, one to four channels: 8 or 16 bits where the file has as many, else
    /// floats.
    cv::Mat samples;                         ///< empty where `decodeRows` gives them
    std::unique_ptr<QFile> file;             ///< keeps the name by which `input` was opened
    std::unique_ptr<OIIO::ImageInput> input; ///< the open file, for `decodeRows`
    bool isGrey = false;                     ///< one colour channel in the file
    bool hasAlpha = false;                   ///< an alpha channel in the file
    bool isTransparent = false;              ///< and not every pixel is opaque
    bool isAssociated = false;               ///< colours are multiplied by alpha already
    OIIO::ImageSpec spec;  ///< size and samples as stored, and what OpenImageIO decoded besides
    SourceColours colours; ///< what the samples mean
    MetadataBlocks blocks; ///< the metadata of the file
    QStringList warnings;  ///< what was decided for the user
};

/// What `readPhotograph` shall do.
struct ReadSettings
{
    qint64 maxPixels;                   ///< a header that claims more is refused
    int page = 1;                       ///< of a file of several pictures, counted from 1
    Intent intent = Intent::Perceptual; ///< for CMYK, which becomes sRGB
    bool mayBeInRows =
        false; ///< the caller takes the rows from top to bottom, where this is possible
};

/// The regular file at `path`, decoded; raw files are developed, and CMYK becomes sRGB through its
/// profile, or through the standard one, which a warning names. Refuses what a header claims beyond
/// the settings, and files that end too early or hold damaged data.
Result<Photograph> readPhotograph(const QString& path, const ReadSettings& settings);

/// The size of `photograph` as a viewer shows it.
QSize sizeOf(const Photograph& photograph);

/// The type of the samples of `photograph`, as OpenCV names it.
int sampleTypeOf(const Photograph& photograph);

/// Decodes the rows from `firstRow` on into `samples`, as many as it has. Rows come in their order.
/// Refuses damaged data.
std::optional<Failure> decodeRows(const Photograph& photograph, int firstRow, cv::Mat& samples);

/// `samples`, which are rows of `photograph`, as three channels R, G and B.
cv::Mat coloursOf(const Photograph& photograph, const cv::Mat& samples);

/// `samples`, which are rows of `photograph`, split by the library. Values are those of the file,
/// full range = 1; a grey value stands in all three colours; the alpha is empty where nothing in
/// the photograph is transparent. The colours lie in `buffer`, which is made larger where it is too
/// small.
Result<Planes> splitSamples(const Photograph& photograph, const cv::Mat& samples,
                            PixelBuffer& buffer);

/// Why a picture of `width` x `height` is too large for a limit of `maxPixels`; nothing when it is
/// not.
std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels);
