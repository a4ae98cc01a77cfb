// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "atomicfile.h"
#include "exportformat.h"

#include <QtGui/QImage>

#include <opencv2/core.hpp>

#include <functional>

/// Gives a picture from top to bottom: an image of its next rows at each call.
using NextRows = std::function<Result<QImage>()>;

/// Writes the picture that `nextRows` gives (`Format_RGBA32FPx4`, laid out as `header` says) with
/// OpenImageIO into a temporary file, to be published as `wantedPath`. Formats that take `blocks`
/// get them. The file that comes back is complete. Where rows cannot be made, their failure comes
/// back.
Result<std::unique_ptr<AtomicFile>>
exportPicture(const NextRows& nextRows, const OIIO::ImageSpec& header, const MetadataBlocks& blocks,
              const QString& wantedPath, AtomicFile::Access access = AtomicFile::Access::AsUsual);

/// Writes the `CV_32FC3` colours `chroma` as a 24-bit bitmap, in the same way.
Result<std::unique_ptr<AtomicFile>> exportBitmap(const cv::Mat& chroma, const QString& wantedPath);
