// SPDX-License-Identifier: Apache-2.0
#include "crop.h"

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
    // The turned rectangle's corners are rounded outwards and counted at both ends.
    constexpr double margin = 4.0;
    const double sine = std::abs(std::sin(radians));
    const double cosine = std::abs(std::cos(radians));
    const double factor =
        std::min((size.width - margin) / (size.width * cosine + size.height * sine),
                 (size.height - margin) / (size.width * sine + size.height * cosine));
    const int width = int(size.width * factor);
    const int height = int(size.height * factor);
    return {(size.width - width) / 2, (size.height - height) / 2, width, height};
}

} // namespace

Result<Planes> turnedAndCropped(const Planes& planes, double degrees)
{
    // Without whole turns, which would take the digits of the library's angle in single precision.
    const double turn = std::remainder(degrees, 360.0);
    if (turn == 0.0)
        return planes;
    const double radians = turn * std::numbers::pi / 180.0;
    const QRect crop = largestCrop(planes.chroma.size(), radians);
    const QRect region = NImageUtils::getBoundingRect(crop, radians);
    const QRect picture(0, 0, planes.chroma.cols, planes.chroma.rows);
    if (crop.width() < 2 || crop.height() < 2 || !NImageUtils::doesRectCoverRect(picture, region))
        return Failure{QStringLiteral("is too small to be turned by %1 degrees").arg(degrees)};

    const cv::RotatedRect turned = CvUtils::getRotatedRect(crop, radians);
    const cv::Rect part(region.x(), region.y(), region.width(), region.height());
    // Transparent pixels may hold any colour; multiplied by alpha it does not reach their
    // neighbours.
    const Planes source = associated(planes, true);
    Planes result{CvUtils::applyRotation(source.chroma(part), turned), {}, source.isAssociated};
    if (!source.alpha.empty())
        result.alpha = CvUtils::applyRotation(source.alpha(part), turned);
    return associated(result, planes.isAssociated);
}
