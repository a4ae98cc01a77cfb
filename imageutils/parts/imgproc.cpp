// SPDX-License-Identifier: Apache-2.0
#include <imageutils/imageutils_export.h>
#include <imageutils/picturefilters.h>

#include <opencv2/imgproc.hpp>

namespace {

void convertColor(const cv::Mat& from, cv::Mat& to, int conversion)
{
    cv::cvtColor(from, to, conversion);
}

void laplacian(const cv::Mat& from, cv::Mat& to)
{
    cv::Laplacian(from, to, from.depth(), 1, 1.0, 0.0, cv::BORDER_DEFAULT);
}

void resizeLinear(const cv::Mat& from, cv::Mat& to, cv::Size size)
{
    cv::resize(from, to, size, 0, 0, cv::INTER_LINEAR);
}

void warp(const cv::Mat& from, cv::Mat& to, cv::Size size, const cv::Point2f* corners,
          const cv::Point2f* newCorners)
{
    const cv::Mat transform = cv::getPerspectiveTransform(corners, newCorners);
    cv::warpPerspective(from, to, transform, size, cv::INTER_LINEAR, cv::BORDER_CONSTANT, 0);
}

} // namespace

extern "C" IMAGEUTILS_EXPORT PictureFiltersPart imageutilsPart;

const PictureFilters* imageutilsPart()
{
    static constexpr PictureFilters filters = {convertColor, laplacian, resizeLinear, warp};
    return &filters;
}
