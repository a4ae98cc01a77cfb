// SPDX-License-Identifier: Apache-2.0
#include "figures.h"

#include <imageutils/cvutils.h>

#include <opencv2/imgproc.hpp>

namespace {

/// `picture` with Gaussian noise: in R, G and B alike, or in the colours at a constant luminance.
cv::Mat withNoise(const cv::Mat& picture, bool inColours)
{
    cv::Mat noisy = picture.clone();
    cv::RNG random(1);
    for (int y = 0; y < noisy.rows; ++y) {
        for (int x = 0; x < noisy.cols; ++x) {
            const auto first = float(random.gaussian(0.12));
            const auto second = float(random.gaussian(0.12));
            // Green balances what red and blue add to the luminance 0.299 R + 0.587 G + 0.114 B.
            noisy.at<cv::Vec3f>(y, x) +=
                inColours ? cv::Vec3f(first, -(0.299f * first + 0.114f * second) / 0.587f, second)
                          : cv::Vec3f(first, first, first);
        }
    }
    return noisy;
}

/// The absolute Laplacian of each of Y, U and V, in three channels.
cv::Mat detail(const cv::Mat& picture)
{
    cv::Mat yuv;
    cv::cvtColor(picture, yuv, cv::COLOR_RGB2YUV);
    cv::Mat laplacian;
    cv::Laplacian(yuv, laplacian, CV_32F);
    return cv::abs(laplacian);
}

/// The sum of the chosen channels of `planes` as a grey picture.
QImage greyImage(const cv::Mat& planes, const cv::Vec3f& channels)
{
    cv::Mat sum;
    cv::transform(planes, sum, cv::Mat(channels.t()));
    cv::Mat grey;
    cv::cvtColor(sum, grey, cv::COLOR_GRAY2RGB);
    return toImage(grey);
}

} // namespace

Svg lumaNoise()
{
    const cv::Mat clean = landscape({210, 140});
    const struct
    {
        const char* name;
        cv::Mat picture;
    } rows[] = {{"noise in the luminance", withNoise(clean, false)},
                {"noise in the colours", withNoise(clean, true)}};
    Svg svg(860, 380);
    double x = 20;
    for (const char* title : {"picture", "detail of Y", "detail of U and V", "isLumaNoise"}) {
        svg.text({x, 20}, title, "font-weight=\"bold\"");
        x += 220;
    }
    double y = 34;
    for (const auto& row : rows) {
        const cv::Mat planes = detail(row.picture);
        const cv::Scalar mean = cv::mean(planes);
        const bool verdict = CvUtils::isLumaNoise(row.picture);
        if (verdict != (mean[0] > 4 * (mean[1] + mean[2])))
            qFatal("the plotted detail does not explain the result");
        svg.image({20, y, 210, 140}, toImage(row.picture));
        svg.image({240, y, 210, 140}, greyImage(planes, {1, 0, 0}));
        svg.image({460, y, 210, 140}, greyImage(planes, {0, 1, 1}));
        svg.text({20, y + 158}, row.name);
        svg.text({240, y + 158}, QStringLiteral("mean %1").arg(mean[0], 0, 'f', 3));
        svg.text({460, y + 158}, QStringLiteral("mean %1, four times: %2")
                                     .arg(mean[1] + mean[2], 0, 'f', 3)
                                     .arg(4 * (mean[1] + mean[2]), 0, 'f', 3));
        svg.text({680, y + 76}, verdict ? "true" : "false", "font-size=\"22\"");
        y += 178;
    }
    return svg;
}
