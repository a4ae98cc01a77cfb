// SPDX-License-Identifier: Apache-2.0
#include "crop.h"

#include "upright.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <QtCore/QRect>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// The largest rectangle of the picture's shape that, turned about the picture's centre, lies in
/// it.
QRect largestCrop(const cv::Size& size, double radians)
{
    const double sine = std::abs(std::sin(radians));
    const double cosine = std::abs(std::cos(radians));
    const double factor = std::min(size.width / (size.width * cosine + size.height * sine),
                                   size.height / (size.width * sine + size.height * cosine));
    const int width = int(size.width * factor);
    const int height = int(size.height * factor);
    return {(size.width - width) / 2, (size.height - height) / 2, width, height};
}

/// The library rounds the corners of a turned rectangle outwards and counts them at both ends, so a
/// crop that reaches the edges needs this many more pixels around the picture.
constexpr int border = 4;

cv::Mat bordered(const cv::Mat& plane)
{
    cv::Mat result;
    cv::copyMakeBorder(plane, result, border, border, border, border, cv::BORDER_REPLICATE);
    return result;
}

/// The Exif orientation for a turn by `degrees`, from -180 to 180; 0 when it is no quarter turn.
int orientationForTurn(double degrees)
{
    if (degrees == 0.0)
        return 1;
    if (degrees == 90.0)
        return 6;
    if (degrees == -90.0)
        return 8;
    return std::abs(degrees) == 180.0 ? 3 : 0;
}

} // namespace

Planes turned(const Planes& planes, int orientation)
{
    if (isUpright(orientation))
        return planes;
    Planes result{turnedUpright(planes.chroma, orientation), {}, planes.isAssociated};
    if (!planes.alpha.empty())
        result.alpha = turnedUpright(planes.alpha, orientation);
    return result;
}

Result<Planes> turnedAndCropped(const Planes& planes, double degrees)
{
    // Whole turns are removed first: the library's angle is in single precision, and a large one
    // would have fewer digits after the point.
    const double turn = std::remainder(degrees, 360.0);
    if (const int orientation = orientationForTurn(turn); orientation != 0)
        return turned(planes, orientation);
    const double radians = turn * std::numbers::pi / 180.0;
    const QRect crop = largestCrop(planes.chroma.size(), radians).translated(border, border);
    const QRect region = NImageUtils::getBoundingRect(crop, radians);
    const QRect picture(0, 0, planes.chroma.cols + 2 * border, planes.chroma.rows + 2 * border);
    if (crop.width() < 2 || crop.height() < 2 || !NImageUtils::doesRectCoverRect(picture, region))
        return Failure{QStringLiteral("is too small to be turned by %1 degrees").arg(degrees)};

    const cv::RotatedRect rectangle = CvUtils::getRotatedRect(crop, radians);
    const cv::Rect part(region.x(), region.y(), region.width(), region.height());
    // Transparent pixels may hold any colour; multiplied by alpha it does not reach their
    // neighbours.
    const Planes source = associated(planes, true);
    Planes result{
        CvUtils::applyRotation(bordered(source.chroma)(part), rectangle), {}, source.isAssociated};
    if (!source.alpha.empty())
        result.alpha = CvUtils::applyRotation(bordered(source.alpha)(part), rectangle);
    return associated(result, planes.isAssociated);
}
