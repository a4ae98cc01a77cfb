// SPDX-License-Identifier: Apache-2.0
//
// A plug-in, because opening OpenCV's codecs opens some 120 libraries.
#include <imageutils/imageutils_export.h>
#include <imageutils/picturewriter.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

extern "C" IMAGEUTILS_EXPORT WriteBitmapFunction imageutilsPlugin;

void imageutilsPlugin(const std::string& utf8Path, const cv::Mat& mat, int colorConversion,
                      double alpha, double beta, double scale, std::exception_ptr& thrown) noexcept
{
    try {
        cv::Mat working;
        cv::resize(mat, working, cv::Size(), scale, scale, cv::INTER_LINEAR);
        working.convertTo(working, CV_8UC3, alpha, beta);
        cv::cvtColor(working, working, colorConversion);
        cv::imwrite(utf8Path, working);
    } catch (...) {
        thrown = std::current_exception();
    }
}
