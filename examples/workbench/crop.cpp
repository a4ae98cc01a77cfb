// SPDX-License-Identifier: Apache-2.0
#include "crop.h"

#include "croparea.h"
#include "upright.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>

#include <cmath>
#include <numbers>

namespace {

using CropArea::border;

/// `plane` with the pixels around it that a crop which reaches the edges needs.
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

Result<Planes> turnedAndCropped(const Planes& planes, double degrees, const QRect& crop)
{
    // Whole turns are removed first: the library's angle is in single precision, and a large one
    // would have fewer digits after the point.
    const double turn = std::remainder(degrees, 360.0);
    const int orientation = orientationForTurn(turn);
    if (crop.isNull() && orientation != 0)
        return turned(planes, orientation);
    const QSize size = sizeOf(planes);
    if (const QString reason = CropArea::refusalOf(size, crop, turn); !reason.isEmpty())
        return Failure{reason};
    const QRect kept = crop.isNull() ? CropArea::largest(size, turn) : crop;
    if (turn == 0.0)
        return cut(planes, kept);
    if (!CropArea::isWithin(size, kept, turn))
        return Failure{QStringLiteral("is too small to be turned by %1 degrees").arg(degrees)};
    const double radians = turn * std::numbers::pi / 180.0;
    const QRect moved = kept.translated(border, border);
    const QRect region = NImageUtils::getBoundingRect(moved, radians);
    const cv::RotatedRect rectangle = CvUtils::getRotatedRect(moved, radians);
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

QSize turnedAndCroppedSize(QSize size, double degrees, const QRect& crop)
{
    const double turn = std::remainder(degrees, 360.0);
    if (!crop.isNull())
        return crop.size();
    switch (orientationForTurn(turn)) {
    case 0:
        return CropArea::largest(size, turn).size();
    case 6:
    case 8:
        return size.transposed();
    default:
        return size;
    }
}
