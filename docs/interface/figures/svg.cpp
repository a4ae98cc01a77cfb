// SPDX-License-Identifier: Apache-2.0
#include "svg.h"

#include <imageutils/cvutils.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>

namespace {

QString pointList(const QList<QPointF>& points)
{
    QString list;
    for (const QPointF& point : points)
        list += QStringLiteral("%1,%2 ").arg(point.x(), 0, 'f', 2).arg(point.y(), 0, 'f', 2);
    return list;
}

QString place(const QRectF& rect)
{
    return QStringLiteral("x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

} // namespace

Svg::Svg(int width, int height)
    : m_text(QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%2\" "
                            "viewBox=\"0 0 %1 %2\" font-family=\"sans-serif\" font-size=\"13\">\n"
                            "<rect width=\"%1\" height=\"%2\" fill=\"white\"/>\n")
                 .arg(width)
                 .arg(height))
{}

void Svg::text(QPointF at, const QString& text, const QString& style)
{
    m_text += QStringLiteral("<text x=\"%1\" y=\"%2\" %3>").arg(at.x()).arg(at.y()).arg(style) +
              text.toHtmlEscaped() + QStringLiteral("</text>\n");
}

void Svg::line(QPointF from, QPointF to, const QString& style) { polyline({from, to}, style); }

void Svg::polyline(const QList<QPointF>& points, const QString& style)
{
    m_text += QStringLiteral("<polyline fill=\"none\" points=\"%1\" %2/>\n")
                  .arg(pointList(points), style);
}

void Svg::polygon(const QList<QPointF>& points, const QString& style)
{
    m_text +=
        QStringLiteral("<polygon fill=\"none\" points=\"%1\" %2/>\n").arg(pointList(points), style);
}

void Svg::rect(const QRectF& rect, const QString& style)
{
    m_text += QStringLiteral("<rect %1 %2/>\n").arg(place(rect), style);
}

void Svg::image(const QRectF& rect, const QImage& image, const QString& style)
{
    QBuffer png;
    image.convertToFormat(QImage::Format_RGB888).save(&png, "png");
    const std::vector<unsigned char> bytes(png.data().begin(), png.data().end());
    m_text += QStringLiteral("<image %1 style=\"image-rendering:pixelated\" %2 "
                             "href=\"data:image/png;base64,%3\"/>\n")
                  .arg(place(rect), style, QString::fromStdString(CvUtils::base64Encode(bytes)));
}

bool Svg::write(const QString& path) const
{
    QFile file(path);
    const QByteArray bytes = (m_text + QStringLiteral("</svg>\n")).toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}
