// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pixelbuffer.h"
#include "planes.h"
#include "result.h"

#include <QtCore/QSize>

#include <OpenImageIO/imageio.h>

/// A decoded photograph and what its file said about it.
struct Photograph
{
    /// As stored, one to four channels: 8 or 16 bits where the file has as many, else floats.
    cv::Mat samples;
    bool isGrey = false;       ///< one colour channel in the file
    bool hasAlpha = false;     ///< an alpha channel in the file
    bool isAssociated = false; ///< colours are multiplied by alpha already
    OIIO::ImageSpec spec;      ///< size and samples as stored, and all metadata
};

/// The regular file at `path`, decoded; raw files are developed, CMYK becomes RGB, of several
/// pictures in one file the first is taken. Refuses headers that claim more than `maxPixels`, and
/// files that end too early or hold damaged data.
Result<Photograph> readPhotograph(const QString& path, qint64 maxPixels);

/// The size of `photograph` as a viewer shows it.
QSize uprightSize(const Photograph& photograph);

/// `photograph` upright, split by the library. Values are those of the file, full range = 1; a grey
/// value stands in all three colours; the alpha is empty where the file has none and where nothing
/// is transparent. The colours lie in `buffer`, which is made larger where it is too small.
Result<Planes> splitPhotograph(const Photograph& photograph, PixelBuffer& buffer);

/// Why a picture of `width` x `height` is too large for a limit of `maxPixels`; nothing when it is
/// not.
std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels);
