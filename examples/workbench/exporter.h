// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "atomicfile.h"
#include "exportformat.h"

#include <QtGui/QImage>

#include <opencv2/core.hpp>

/// Writes `image` (`Format_RGBA32FPx4`, laid out as `header` says) with OpenImageIO into a
/// temporary file, to be published as `wantedPath`. Formats that take `blocks` get them. The file
/// that comes back is complete.
Result<std::unique_ptr<AtomicFile>>
exportPicture(QImage& image, const OIIO::ImageSpec& header, const MetadataBlocks& blocks,
              const QString& wantedPath, AtomicFile::Access access = AtomicFile::Access::AsUsual);

/// Writes the `CV_32FC3` colours `chroma` as a 24-bit bitmap, in the same way.
Result<std::unique_ptr<AtomicFile>> exportBitmap(const cv::Mat& chroma, const QString& wantedPath);
