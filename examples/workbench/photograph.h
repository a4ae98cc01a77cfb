// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "result.h"

#include <QtGui/QImage>

#include <OpenImageIO/imageio.h>

/// A decoded photograph and what its file said about it.
struct Photograph
{
    /// `Format_RGBA32FPx4`, turned upright. Values are those of the file, full range = 1; a grey
    /// value stands in R, G and B; A is 1 where the file has none.
    QImage pixels;
    bool isGrey = false;       ///< one colour channel in the file
    bool hasAlpha = false;     ///< an alpha channel in the file
    bool isAssociated = false; ///< colours are multiplied by alpha already
    OIIO::ImageSpec spec;      ///< size and samples as stored, and all metadata
};

/// The regular file at `path`, decoded; raw files are developed, CMYK becomes RGB, of several
/// pictures in one file the first is taken. Refuses headers that claim more than `maxPixels`, and
/// files that end too early or hold damaged data.
Result<Photograph> readPhotograph(const QString& path, qint64 maxPixels);

/// Why a picture of `width` x `height` is too large for a limit of `maxPixels`; nothing when it is
/// not.
std::optional<Failure> refuseSize(double width, double height, qint64 maxPixels);
