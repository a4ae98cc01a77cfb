// SPDX-License-Identifier: Apache-2.0
#include "figures.h"

#include <imageutils/cvutils.h>

#include <cmath>

namespace {

cv::Vec3f mix(const cv::Vec3f& first, const cv::Vec3f& second, float share)
{
    return first * (1 - share) + second * share;
}

/// The colour at u, v, both from 0 to 1.
cv::Vec3f colour(float u, float v)
{
    if (v > 0.76f && v < 0.93f && std::fmod(u * 20, 1.0f) < 0.3f)
        return {0.85f, 0.82f, 0.75f}; // posts of a fence
    if (std::abs(v - 0.82f) < 0.012f)
        return {0.85f, 0.82f, 0.75f};
    if (v > 0.8f + 0.02f * std::sin(9 * u + 1))
        return {0.14f, 0.3f, 0.12f};
    if (v > 0.68f + 0.05f * std::sin(5 * u + 2) + 0.008f * std::sin(70 * u))
        return {0.2f, 0.42f, 0.25f};
    if (v > 0.55f + 0.08f * std::sin(7 * u) + 0.03f * std::sin(17 * u + 1))
        return {0.42f, 0.55f, 0.55f};
    if (std::hypot((u - 0.72f) * 1.5f, v - 0.24f) < 0.09f)
        return {1.0f, 0.9f, 0.6f};
    return mix({0.3f, 0.5f, 0.85f}, {0.97f, 0.82f, 0.62f}, std::min(v / 0.6f, 1.0f));
}

} // namespace

cv::Mat landscape(cv::Size size)
{
    constexpr int fine = 4; // drawn larger and reduced, which smooths the edges
    cv::Mat picture(size * fine, CV_32FC3);
    for (int y = 0; y < picture.rows; ++y) {
        for (int x = 0; x < picture.cols; ++x)
            picture.at<cv::Vec3f>(y, x) =
                colour(float(x) / float(picture.cols), float(y) / float(picture.rows));
    }
    return CvUtils::resize(picture, 1.0 / fine, 0, 0, 0, 1 / 3.0f, 1 / 3.0f);
}

QImage toImage(const cv::Mat& picture)
{
    cv::Mat opaque;
    return CvUtils::matToQImage(picture, opaque);
}
