// SPDX-License-Identifier: Apache-2.0
#include "croparea.h"

#include <imageutils/imageutils.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

double radiansOf(double degrees) { return degrees * std::numbers::pi / 180.0; }

/// The rectangle that lies `share` of the way from `from` to `to`.
QRect between(const QRect& from, const QRect& to, double share)
{
    const auto mixed = [share](int a, int b) { return a + int(std::lround(share * (b - a))); };
    return {mixed(from.x(), to.x()), mixed(from.y(), to.y()), mixed(from.width(), to.width()),
            mixed(from.height(), to.height())};
}

/// The last rectangle on the way from `from` to `to` that lies within the picture.
QRect lastWithin(QSize size, const QRect& from, const QRect& to, double degrees)
{
    if (CropArea::isWithin(size, to, degrees))
        return to;
    constexpr int halvings = 18; // of any way of up to 262,144 pixels, to a pixel
    double within = 0;
    double beyond = 1;
    for (int i = 0; i < halvings; ++i) {
        const double middle = (within + beyond) / 2;
        const bool isWithin = CropArea::isWithin(size, between(from, to, middle), degrees);
        (isWithin ? within : beyond) = middle;
    }
    return between(from, to, within);
}

} // namespace

QRect CropArea::largest(QSize size, double degrees)
{
    if (size.isEmpty())
        return {};
    const double sine = std::abs(std::sin(radiansOf(degrees)));
    const double cosine = std::abs(std::cos(radiansOf(degrees)));
    const double factor = std::min(size.width() / (size.width() * cosine + size.height() * sine),
                                   size.height() / (size.width() * sine + size.height() * cosine));
    const int width = int(size.width() * factor);
    const int height = int(size.height() * factor);
    return {(size.width() - width) / 2, (size.height() - height) / 2, width, height};
}

bool CropArea::isWithin(QSize size, const QRect& crop, double degrees)
{
    const QRect picture(QPoint(), size);
    if (crop.width() < 2 || crop.height() < 2)
        return false;
    const double turn = std::remainder(degrees, 360.0);
    if (turn == 0.0)
        return picture.contains(crop);
    const QRect bordered = picture.adjusted(-border, -border, border, border);
    return NImageUtils::doesRectCoverRect(bordered,
                                          NImageUtils::getBoundingRect(crop, radiansOf(turn)));
}

QString CropArea::refusalOf(QSize size, const QRect& crop, double degrees)
{
    if (crop.isNull() || isWithin(size, crop, degrees))
        return {};
    return QStringLiteral("has %1x%2 pixels, which do not hold the crop %3x%4+%5+%6")
        .arg(size.width())
        .arg(size.height())
        .arg(crop.width())
        .arg(crop.height())
        .arg(crop.x())
        .arg(crop.y());
}

QRect CropArea::nearest(QSize size, const QRect& from, const QRect& to, double degrees)
{
    const QRect straight = lastWithin(size, from, to, degrees);
    const QRect across(to.x(), straight.y(), to.width(), straight.height());
    const QRect slid = lastWithin(size, straight, across, degrees);
    const QRect down(slid.x(), to.y(), slid.width(), to.height());
    return lastWithin(size, slid, down, degrees);
}

QRect CropArea::shrunk(QSize size, const QRect& crop, double degrees)
{
    const QRect middle(crop.center(), QSize(2, 2));
    return lastWithin(size, middle, crop, degrees);
}
