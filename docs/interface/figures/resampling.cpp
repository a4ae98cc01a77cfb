// SPDX-License-Identifier: Apache-2.0
#include "figures.h"

#include <imageutils/cvutils.h>

namespace {

struct Shape
{
    float b;
    float c;
    const char* name;
    const char* stroke;
};

constexpr Shape shapes[] = {
    {1, 0, "B = 1, C = 0: smoothest", "stroke=\"#1b7837\" stroke-width=\"2\""},
    {1 / 3.0f, 1 / 3.0f, "B = C = 1/3: in between", "stroke=\"#2166ac\" stroke-width=\"2\""},
    {0, 0.5f, "B = 0, C = 1/2: sharper", "stroke=\"#b2182b\" stroke-width=\"2\""},
    {0, 0, "B = C = 0: no overshoot",
     "stroke=\"#7b3294\" stroke-width=\"2\" stroke-dasharray=\"5 3\""},
};

constexpr int centre = 16;
constexpr int samplesPerPixel = 64;

/// One row of samples: the first `dark` ones 0, then `bright` ones 1, the rest 0.
cv::Mat row(int dark, int bright)
{
    cv::Mat samples(1, 2 * centre + 1, CV_32FC3, cv::Scalar::all(0));
    samples.colRange(dark, dark + bright).setTo(cv::Scalar::all(1));
    return samples;
}

/// What `resize` makes of `samples` between `from` and `to` pixels from the centre.
QList<QPointF> response(const cv::Mat& samples, const Shape& shape, double from, double to,
                        const Axes& axes)
{
    const cv::Mat result = CvUtils::resize(samples, samplesPerPixel, 1, 0, 0, shape.b, shape.c);
    QList<QPointF> curve;
    for (int x = 0; x < result.cols; ++x) {
        const double position = double(x) / samplesPerPixel - centre;
        if (position >= from && position <= to)
            curve += axes(position, double(result.at<cv::Vec3f>(0, x)[0]));
    }
    return curve;
}

void drawGrid(Svg& svg, const Axes& axes, const QString& title)
{
    for (int x = int(axes.from.left()); x <= axes.from.right(); ++x) {
        svg.line(axes(x, axes.from.top()), axes(x, axes.from.bottom()), "stroke=\"#e4e4e4\"");
        svg.text(QPointF(axes(x, 0).x(), axes.to.bottom() + 18), QString::number(x),
                 "text-anchor=\"middle\" fill=\"#666\"");
    }
    for (const double y : {0.0, 0.5, 1.0}) {
        svg.line(axes(axes.from.left(), y), axes(axes.from.right(), y),
                 y == 0 ? "stroke=\"#888\"" : "stroke=\"#e4e4e4\"");
        svg.text(axes(axes.from.left(), y) + QPointF(-8, 4), QString::number(y),
                 "text-anchor=\"end\" fill=\"#666\"");
    }
    svg.text({axes.to.left(), axes.to.top() - 10}, title, "font-weight=\"bold\"");
}

} // namespace

Svg filterShapes()
{
    Svg svg(860, 400);
    const QRectF range(-2.5, -0.2, 5, 1.4);
    const Axes impulse{range, {40, 40, 370, 260}};
    const Axes edge{range, {470, 40, 370, 260}};
    drawGrid(svg, impulse, "One bright sample (at 0), enlarged 64 times");
    drawGrid(svg, edge, "An edge between -1 and 0, enlarged 64 times");
    double y = 342;
    for (const Shape& shape : shapes) {
        svg.polyline(response(row(centre, 1), shape, -2.5, 2.5, impulse), shape.stroke);
        svg.polyline(response(row(centre, centre + 1), shape, -2.5, 2.5, edge), shape.stroke);
        svg.line({44, y}, {74, y}, shape.stroke);
        svg.text({84, y + 4}, shape.name);
        y += 16;
    }
    svg.text({470, 346}, "Horizontal: input pixels. Vertical: sample values.", "fill=\"#666\"");
    return svg;
}

Svg cappedResult()
{
    constexpr int maxWidth = 200;
    constexpr int maxHeight = 110;
    const cv::Mat picture = landscape({600, 400});
    const cv::Mat whole = CvUtils::resize(picture, 0.5, 0, 0, 0, 1 / 3.0f, 1 / 3.0f);
    const cv::Mat capped =
        CvUtils::resize(picture, 0.5, 0, maxHeight, maxWidth, 1 / 3.0f, 1 / 3.0f);
    if (cv::norm(capped, whole(cv::Rect(0, 0, maxWidth, maxHeight))) != 0)
        qFatal("the capped result is not the top left part of the whole one");
    const double fitting =
        std::min(double(maxWidth) / picture.cols, double(maxHeight) / picture.rows);
    const cv::Mat fitted =
        CvUtils::resize(picture, fitting, 0, maxHeight, maxWidth, 1 / 3.0f, 1 / 3.0f);

    Svg svg(760, 270);
    const QRectF all(20, 40, whole.cols, whole.rows);
    const QRectF left(all.topLeft(), QSizeF(maxWidth, maxHeight));
    svg.text({20, 24}, "scale 0.5, maxWidth 200, maxHeight 110", "font-weight=\"bold\"");
    svg.image(all, toImage(whole), "opacity=\"0.35\"");
    svg.image(left, toImage(capped));
    svg.rect(left, "fill=\"none\" stroke=\"#b2182b\" stroke-width=\"2\"");
    svg.text({20, 262}, "The result is the framed part. The pale rest is cut off.");
    svg.text({400, 24}, "The whole picture: scale min(200/600, 110/400)", "font-weight=\"bold\"");
    svg.image({400, 40, double(fitted.cols), double(fitted.rows)}, toImage(fitted));
    svg.rect({400, 40, maxWidth, maxHeight}, "fill=\"none\" stroke=\"#b2182b\" stroke-width=\"2\"");
    svg.text({400, 172}, QStringLiteral("%1 x %2 pixels").arg(fitted.cols).arg(fitted.rows));
    return svg;
}
