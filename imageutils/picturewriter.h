// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <string>

namespace cv {
class Mat;
}

// What OpenCV's plug-in exports. No exception crosses the C function: the one that was thrown comes
// back in `thrown`, for the caller to throw again.
extern "C" {
using WriteBitmapFunction = void(const std::string& utf8Path, const cv::Mat& mat,
                                 int colorConversion, double alpha, double beta, double scale,
                                 std::exception_ptr& thrown) noexcept;
}

/// Scales `mat`, takes alpha times its values plus beta as bytes, converts the colours and calls
/// `cv::imwrite`. Opened at first use; null, and `error` says why, where it cannot be opened.
WriteBitmapFunction* pictureWriter(std::string& error);
