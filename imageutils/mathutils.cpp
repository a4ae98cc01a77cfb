// SPDX-License-Identifier: Apache-2.0
#include <imageutils/mathutils.h>

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

/// `value` without its fraction, the nearest int where it is beyond; 0 for what is not a number.
int saturatedInt(float value)
{
    if (std::isnan(value))
        return 0;
    if (value >= -float(INT_MIN))
        return INT_MAX;
    return value <= float(INT_MIN) ? INT_MIN : int(value);
}

/// `value` rounded to single precision. It goes through memory: GCC 12 computes two such values
/// side by side at -O2 and then drops the rounding.
double roundedToSingle(double value)
{
    const volatile float rounded = float(value);
    return double(rounded);
}

} // namespace

NMathUtils::NMathUtils() = default;

NMathUtils::~NMathUtils() = default;

int NMathUtils::mapBrushSize(float brushSize, const QSize& imageSize)
{
    if (!(brushSize >= 1.0f)) // not a number, too
        return 0;
    const int wholeUnit = std::max(imageSize.width(), imageSize.height()) / 32;
    const float unit = float(wholeUnit);
    if (brushSize >= 50.0f)
        return saturatedInt(std::round(((brushSize - 50.0f) * 3.0f / 50.0f + 1.0f) * unit));
    return saturatedInt((brushSize - 0.5f) / 49.5f * unit + 0.5f);
}

QRect NMathUtils::getBounds(const QPoint& position, float brushSize, const QSize& imageSize)
{
    if (imageSize.isEmpty() || position.x() < 0 || position.y() < 0 || brushSize == 0.0f ||
        std::isnan(brushSize))
        return {};
    const qint64 extent = qint64(mapBrushSize(brushSize, imageSize)) + 1;
    // A rim of one pixel, and one more with each doubling from 64 on.
    const double rim = std::max(std::floor(std::log2(double(extent))) - 4.0, 1.0);
    const qint64 margin = qint64(rim + double(extent)) + 2;
    const qint64 left = std::max<qint64>(position.x() - margin, 0);
    const qint64 top = std::max<qint64>(position.y() - margin, 0);
    const qint64 right = std::min<qint64>(imageSize.width(), position.x() + margin);
    const qint64 bottom = std::min<qint64>(imageSize.height(), position.y() + margin);
    return {int(left), int(top), int(right - left), int(bottom - top)};
}

QPointF NMathUtils::rotatePoint(const QPointF& point, float angle, const QPointF& center)
{
    if (angle == 0.0f)
        return point;
    const double sine = double(std::sin(angle));
    const double cosine = double(std::cos(angle));
    const double dx = point.x() - center.x();
    const double dy = point.y() - center.y();
    const double x = roundedToSingle(dx * cosine - dy * sine);
    const double y = roundedToSingle(dx * sine + dy * cosine);
    return {x + center.x(), y + center.y()};
}

float NMathUtils::calcDistanceSquared(const QPoint& first, const QPoint& second)
{
    // In 64 bits: the difference of two ints may exceed int.
    const float dx = float(qint64(first.x()) - second.x());
    const float dy = float(qint64(first.y()) - second.y());
    return dx * dx + dy * dy;
}
