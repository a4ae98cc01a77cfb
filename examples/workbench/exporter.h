// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "exportformat.h"

#include <QtGui/QImage>

#include <opencv2/core.hpp>

/// Writes `image` (`Format_RGBA32FPx4`, laid out as `header` says it) with OpenImageIO to
/// `wantedPath`, or the first free name beside it. Returns the name of the file, which is whole.
Result<QString> exportPicture(QImage& image, const OIIO::ImageSpec& header,
                              const QString& wantedPath);

/// Writes the `CV_32FC3` colours `chroma` as a 24-bit bitmap, in the same way.
Result<QString> exportBitmap(const cv::Mat& chroma, const QString& wantedPath);
