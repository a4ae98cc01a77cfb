// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QImage>

/// An SVG picture that is drawn element by element. Lengths are in pixels.
class Svg
{
public:
    Svg(int width, int height);

    /// A text that starts at `at`, its base line; `style` holds SVG attributes.
    void text(QPointF at, const QString& text, const QString& style = {});
    void line(QPointF from, QPointF to, const QString& style);
    void polyline(const QList<QPointF>& points, const QString& style);
    void polygon(const QList<QPointF>& points, const QString& style);
    void rect(const QRectF& rect, const QString& style);
    /// `image` with square pixels, embedded as PNG; `style` as for `text`.
    void image(const QRectF& rect, const QImage& image, const QString& style = {});

    /// Whether the picture was written to the file `path`.
    bool write(const QString& path) const;

private:
    QString m_text;
};

/// A linear map of plot coordinates to a rectangle of the picture, with y upwards.
struct Axes
{
    QRectF from;
    QRectF to;

    QPointF operator()(double x, double y) const
    {
        return {to.left() + (x - from.left()) / from.width() * to.width(),
                to.bottom() - (y - from.top()) / from.height() * to.height()};
    }
};
