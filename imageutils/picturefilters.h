// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <opencv2/core.hpp>

/// What the library asks of OpenCV's imgproc, which is a part of its own, because loading it would
/// make every start a tenth longer. What OpenCV throws passes through.
struct PictureFilters
{
    /// `cv::cvtColor`.
    void (*convertColor)(const cv::Mat& from, cv::Mat& to, int conversion);
    /// `cv::Laplacian` of the same depth, with the smallest aperture.
    void (*laplacian)(const cv::Mat& from, cv::Mat& to);
    /// `cv::resize` by linear interpolation.
    void (*resizeLinear)(const cv::Mat& from, cv::Mat& to, cv::Size size);
    /// `cv::warpPerspective` by linear interpolation, with zeros around the picture, that takes the
    /// first four corners to the second four.
    void (*warp)(const cv::Mat& from, cv::Mat& to, cv::Size size, const cv::Point2f* corners,
                 const cv::Point2f* newCorners);
};

// What the part exports; what it gives is never null and never goes away.
extern "C" using PictureFiltersPart = const PictureFilters * ();

/// The filters, opened at first need; null, and a line of the log that begins with `function`,
/// where they are not installed.
const PictureFilters* pictureFilters(const char* function);
