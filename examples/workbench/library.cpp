// SPDX-License-Identifier: Apache-2.0
#include "library.h"

#include "messages.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>

#include <QtGui/QColorSpace>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

double radiansOf(double degrees) { return degrees * std::numbers::pi / 180.0; }

} // namespace

QString Library::monitorColorSpace()
{
    const Messages::Collector collector; // a monitor without a profile is no fault
    const QColorSpace space = OSUtils::getMonitorColorSpace();
    return space.isValid() ? space.description() : QString();
}

double Library::filterWeight(double b, double c, double distance)
{
    const double t = std::abs(distance);
    if (t < 1)
        return ((12 - 9 * b - 6 * c) * t * t * t + (-18 + 12 * b + 6 * c) * t * t + 6 - 2 * b) / 6;
    if (t < 2)
        return ((-b - 6 * c) * t * t * t + (6 * b + 30 * c) * t * t + (-12 * b - 48 * c) * t +
                8 * b + 24 * c) /
               6;
    return 0;
}

QRectF Library::cropOf(QSizeF pixels, double degrees)
{
    const double sine = std::abs(std::sin(radiansOf(degrees)));
    const double cosine = std::abs(std::cos(radiansOf(degrees)));
    const double width = pixels.width();
    const double height = pixels.height();
    if (width <= 0 || height <= 0)
        return {};
    const double factor = std::min(width / (width * cosine + height * sine),
                                   height / (width * sine + height * cosine));
    const QSize size(int(width * factor), int(height * factor));
    return QRect(QPoint((int(width) - size.width()) / 2, (int(height) - size.height()) / 2), size);
}

double Library::cropAngle(QSizeF pixels, double degrees)
{
    return double(CvUtils::getRotatedRect(cropOf(pixels, degrees).toRect(), radiansOf(degrees))
                      .angle) -
           360;
}

bool Library::canCrop(QSizeF pixels, double degrees)
{
    constexpr int border = 4; // the library rounds the corners of a turned rectangle outwards
    const QRect crop = cropOf(pixels, degrees).toRect();
    const QRect picture =
        QRect(QPoint(), pixels.toSize()).adjusted(-border, -border, border, border);
    return crop.width() > 1 && crop.height() > 1 &&
           NImageUtils::doesRectCoverRect(picture,
                                          NImageUtils::getBoundingRect(crop, radiansOf(degrees)));
}

QString Library::pathOf(const QUrl& url) { return url.toLocalFile(); }
