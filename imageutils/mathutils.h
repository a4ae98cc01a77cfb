// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtCore/QSize>

/// Geometry of the brush tools and overlays. Every operation is static, free of state, and may be
/// called from any thread. Points and sizes are in image pixels, angles in radians.
///
/// A brush size setting is meaningful from 1 on. At 50 a brush is one unit wide, at 100 four; the
/// unit of an image is the larger of its sides divided by 32, without the fraction.
class IMAGEUTILS_EXPORT NMathUtils : public QObject
{
    Q_OBJECT

public:
    NMathUtils();
    ~NMathUtils() override;

    /// The extent in pixels of a brush of the setting `brushSize` on an image of `imageSize`: 125
    /// for 50 on 4000 x 3000. 0 for a setting below 1 or not a number; what int cannot hold becomes
    /// its largest value.
    Q_INVOKABLE static int mapBrushSize(float brushSize, const QSize& imageSize);

    /// The part of an image of `imageSize` that a brush of the setting `brushSize` at `position`
    /// can touch: the brush and a margin to every side, clipped to the image. Its width or height
    /// is 0 or negative where the position lies that far to the right of the image or below it.
    ///
    /// A null rectangle for an empty image, a negative coordinate, and a setting of exactly 0 or
    /// not a number.
    static QRect getBounds(const QPoint& position, float brushSize, const QSize& imageSize);

    /// `point` turned about `center` by `angle`, from +x towards +y: clockwise on a screen. The
    /// turned offset is rounded to single precision. An angle of 0 gives the point unchanged.
    static QPointF rotatePoint(const QPointF& point, float angle, const QPointF& center);

    /// The square of the distance between two points, in single precision.
    static float calcDistanceSquared(const QPoint& first, const QPoint& second);
};
