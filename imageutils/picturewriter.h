// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace cv {
class Mat;
}

// What OpenCV's part exports.
extern "C" {
using WriteBitmapFunction = bool(const std::string& utf8Path, const cv::Mat& mat,
                                 int colorConversion, double alpha, double beta, double scale);
}

/// Scales `mat`, takes alpha times its values plus beta as bytes, converts the colours and calls
/// `cv::imwrite`. Opened at first need; null, and `error` says why, where it is not installed.
WriteBitmapFunction* pictureWriter(std::string& error);
