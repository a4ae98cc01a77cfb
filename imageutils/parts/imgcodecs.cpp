// SPDX-License-Identifier: Apache-2.0
//
// A part of its own, because opening OpenCV's codecs opens some 120 libraries.
#include <imageutils/imageutils_export.h>
#include <imageutils/picturewriter.h>

#include <opencv2/imgcodecs.hpp>

extern "C" IMAGEUTILS_EXPORT WritePicturePart imageutilsPart;

bool imageutilsPart(const std::string& utf8Path, const cv::Mat& mat)
{
    return cv::imwrite(utf8Path, mat);
}
