// SPDX-License-Identifier: Apache-2.0
#include "planes.h"

#include <vector>

Planes cut(const Planes& planes, const QRect& part)
{
    const cv::Rect rect(part.x(), part.y(), part.width(), part.height());
    return {planes.chroma(rect), planes.alpha.empty() ? cv::Mat() : planes.alpha(rect),
            planes.isAssociated};
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
