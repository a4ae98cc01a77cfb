// SPDX-License-Identifier: Apache-2.0
#include "sharpen.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr int channels = 3;

/// What lies between the luminance and its blur, times the amount.
cv::Mat detailOf(const cv::Mat& chroma, const Sharpening& sharpening)
{
    cv::Mat luminance;
    cv::transform(chroma, luminance, cv::Matx13f(0.2126F, 0.7152F, 0.0722F));
    cv::Mat blurred;
    cv::GaussianBlur(luminance, blurred, {}, sharpening.radius, sharpening.radius,
                     cv::BORDER_REPLICATE);
    return (luminance - blurred) * sharpening.amount;
}

} // namespace

Planes sharpened(const Planes& planes, const Sharpening& sharpening)
{
    // Transparent pixels may hold any colour; multiplied by alpha it does not reach their
    // neighbours.
    const Planes source = associated(planes, true);
    const cv::Mat detail = detailOf(source.chroma, sharpening);
    Planes result{cv::Mat(source.chroma.size(), source.chroma.type()), source.alpha,
                  source.isAssociated};
    for (int y = 0; y < detail.rows; ++y) {
        const float* const from = source.chroma.ptr<float>(y);
        const float* const added = detail.ptr<float>(y);
        float* const to = result.chroma.ptr<float>(y);
        for (int x = 0; x < detail.cols; ++x)
            for (int channel = 0; channel < channels; ++channel)
                to[channels * x + channel] = from[channels * x + channel] + added[x];
    }
    return associated(result, planes.isAssociated);
}
