// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "svg.h"

#include <opencv2/core.hpp>

// One function for each figure of the interface documentation. What a figure shows is computed by
// the library while the documentation is built.

/// The response of `CvUtils::resize` to one bright sample and to an edge, for four shapes B, C.
Svg filterShapes();
/// The part of a result that `maxWidth` and `maxHeight` leave.
Svg cappedResult();
/// `CvUtils::isLumaNoise` of a clean picture, of noise in the luminance and of noise in the
/// colours.
Svg lumaNoise();
/// A turned rectangle, its bounds and the picture that `CvUtils::applyRotation` takes from it.
Svg rotatedCrop();
/// The characters that `CvUtils::base64Decode` reads of several texts, and the bytes it returns.
Svg base64StopRule();
/// `NMathUtils::mapBrushSize` over the brush size setting.
Svg brushSizes();

/// A landscape of `size`, `CV_32FC3`, R, G, B.
cv::Mat landscape(cv::Size size);
/// The `CV_32FC3` picture as an image.
QImage toImage(const cv::Mat& picture);
