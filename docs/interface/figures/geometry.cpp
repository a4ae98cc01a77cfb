// SPDX-License-Identifier: Apache-2.0
#include "figures.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/mathutils.h>

Svg rotatedCrop()
{
    const cv::Mat picture = landscape({420, 280});
    const QRect rect(130, 70, 190, 120);
    constexpr double angle = 0.35;
    const cv::RotatedRect turned = CvUtils::getRotatedRect(rect, angle);
    const QRect bounds = NImageUtils::getBoundingRect(rect, angle);
    const cv::Mat covered =
        picture(cv::Rect(bounds.x(), bounds.y(), bounds.width(), bounds.height()));
    const cv::Mat crop = CvUtils::applyRotation(covered, turned);

    Svg svg(700, 350);
    const QPointF origin(20, 34);
    cv::Point2f corners[4];
    turned.points(corners);
    QList<QPointF> outline;
    for (const cv::Point2f& corner : corners)
        outline += origin + QPointF(double(corner.x), double(corner.y));
    svg.text({20, 22}, "the picture", "font-weight=\"bold\"");
    svg.image({origin, QSizeF(picture.cols, picture.rows)}, toImage(picture));
    svg.rect(QRectF(rect).translated(origin), "fill=\"none\" stroke=\"white\"");
    svg.rect(QRectF(bounds).translated(origin),
             "fill=\"none\" stroke=\"#222\" stroke-dasharray=\"5 4\"");
    svg.polygon(outline, "stroke=\"#b2182b\" stroke-width=\"2\"");
    svg.text({20, 336},
             "white: rect; red: getRotatedRect(rect, 0.35); dashed: getBoundingRect(rect, 0.35)");
    svg.text({470, 22}, "applyRotation", "font-weight=\"bold\"");
    svg.image({470, 34, double(crop.cols), double(crop.rows)}, toImage(crop));
    svg.rect({470, 34, double(crop.cols), double(crop.rows)},
             "fill=\"none\" stroke=\"#b2182b\" stroke-width=\"2\"");
    svg.text({470, 34.0 + crop.rows + 20},
             QStringLiteral("%1 x %2 pixels, upright").arg(crop.cols).arg(crop.rows));
    return svg;
}

Svg brushSizes()
{
    const QSize imageSize(4000, 3000);
    const int largest = NMathUtils::mapBrushSize(100, imageSize);
    const Axes axes{{0, 0, 100, double(largest)}, {60, 20, 420, 220}};
    Svg svg(520, 300);
    for (const int setting : {0, 25, 50, 75, 100}) {
        const int size = NMathUtils::mapBrushSize(float(setting), imageSize);
        svg.line(axes(setting, 0), axes(setting, largest), "stroke=\"#e4e4e4\"");
        svg.line(axes(0, size), axes(100, size), "stroke=\"#e4e4e4\"");
        svg.text(axes(setting, 0) + QPointF(0, 18), QString::number(setting),
                 "text-anchor=\"middle\" fill=\"#666\"");
        svg.text(axes(0, size) + QPointF(-8, 4), QString::number(size),
                 "text-anchor=\"end\" fill=\"#666\"");
    }
    QList<QPointF> curve;
    for (int setting = 0; setting <= 100; ++setting)
        curve += axes(setting, NMathUtils::mapBrushSize(float(setting), imageSize));
    svg.polyline(curve, "stroke=\"#2166ac\" stroke-width=\"2\"");
    svg.text({60, 284}, "Horizontal: brush size setting. Vertical: pixels.", "fill=\"#666\"");
    return svg;
}
