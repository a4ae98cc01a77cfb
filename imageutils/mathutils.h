// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <imageutils/imageutils_export.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtCore/QSize>

/// Geometry of brush tools and overlays. Every operation is static.
///
/// A brush size setting is meaningful from 1 on. At 50 a brush is one unit wide, at 100 four; the
/// unit of an image is the larger of its sides divided by 32, without the fraction.
///
/// @image html brush.svg "mapBrushSize for an image of 4000 x 3000 pixels"
///
/// @ingroup geometry
/// @par Thread safety
/// The operations keep no state; any thread may call them.
/// @par Ownership
/// Results are values.
/// @par Units
/// Points and sizes are image pixels, angles are radians.
/// @par Failure
/// 0 or a null rectangle, as named at each function. Nothing is logged or thrown.
/// @since 1.0
class IMAGEUTILS_EXPORT NMathUtils : public QObject
{
    Q_OBJECT

public:
    /// Makes an object for code that calls the operations through the meta-object.
    NMathUtils();
    /// Holds nothing that needs to be released.
    ~NMathUtils() override;

    /// The extent in pixels of a brush of the setting `brushSize` on an image of `imageSize`: 125
    /// for 50 on 4000 x 3000. 0 for a setting below 1 or not a number; what int cannot hold becomes
    /// its largest value.
    Q_INVOKABLE static int mapBrushSize(float brushSize, const QSize& imageSize);

    /// The part of an image of `imageSize` that a brush of the setting `brushSize` at `position`
    /// can touch: the brush and a margin on every side, clipped to the image. Its width or height
    /// is 0 or negative when the position lies so far to the right of the image or below it that
    /// the brush does not reach the image.
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
