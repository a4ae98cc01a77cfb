// SPDX-License-Identifier: Apache-2.0
#include "planes.h"

#include <algorithm>
#include <vector>

bool isOpaque(const cv::Mat& alpha)
{
    for (int y = 0; y < alpha.rows; ++y) {
        const float* const row = alpha.ptr<float>(y);
        if (!std::all_of(row, row + alpha.cols, [](float value) { return value == 1.0F; }))
            return false;
    }
    return true;
}

cv::Mat alphaAsColours(const cv::Mat& alpha)
{
    cv::Mat colours;
    cv::merge(std::vector<cv::Mat>{alpha, alpha, alpha}, colours);
    return colours;
}

cv::Mat coloursAsAlpha(const cv::Mat& colours)
{
    cv::Mat alpha;
    cv::extractChannel(colours, alpha, 0);
    cv::max(alpha, 0.0, alpha);
    cv::min(alpha, 1.0, alpha);
    return alpha;
}

Planes associated(const Planes& planes, bool wanted)
{
    if (planes.alpha.empty() || planes.isAssociated == wanted)
        return planes;
    Planes result{{}, planes.alpha, wanted};
    if (wanted) {
        result.chroma = planes.chroma.mul(alphaAsColours(planes.alpha));
    } else {
        cv::divide(planes.chroma, alphaAsColours(planes.alpha), result.chroma);
        result.chroma.setTo(cv::Scalar::all(0.0), planes.alpha == 0.0);
    }
    return result;
}

Planes overWhite(const Planes& planes)
{
    if (planes.alpha.empty())
        return planes;
    const cv::Mat white = cv::Scalar::all(1.0) - alphaAsColours(planes.alpha);
    return {associated(planes, true).chroma + white, {}, false};
}
