// SPDX-License-Identifier: Apache-2.0
#include "pictures.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtGui/QImageWriter>

#include <OpenImageIO/imageio.h>

namespace {

/// A pattern that no codec can store as a single colour.
QImage pattern(QSize size)
{
    QImage image(size, QImage::Format_RGB888);
    for (int y = 0; y < size.height(); ++y) {
        uchar* const row = image.scanLine(y);
        for (int i = 0; i < 3 * size.width(); ++i)
            row[i] = uchar((i / 24 + y / 8) * 5 % 256 + ((i ^ y) & 7));
    }
    return image;
}

bool writeByQt(const QImage& image, const QString& path, bool isProgressive)
{
    QImageWriter writer(path);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image);
}

bool writeByOpenImageIo(const QImage& image, const QString& path)
{
    const auto output = OIIO::ImageOutput::create(path.toStdString());
    const OIIO::ImageSpec spec(image.width(), image.height(), 3, OIIO::TypeDesc::UINT8);
    return output && output->open(path.toStdString(), spec) &&
           output->write_image(OIIO::TypeDesc::UINT8, image.constBits(), 3,
                               OIIO::stride_t(image.bytesPerLine())) &&
           output->close();
}

} // namespace

QString Pictures::make(const QString& folder, const QString& name, QSize size)
{
    const QString path = QDir(folder).filePath(name);
    if (QFile::exists(path))
        return path;
    const QImage image = pattern(size);
    const QString part = QDir(folder).filePath(QStringLiteral("part-") + name);
    const bool isWritten = name.endsWith(QLatin1String(".jpg"))
                               ? writeByQt(image, part, name.startsWith(QLatin1String("progr")))
                               : writeByOpenImageIo(image, part);
    return isWritten && QFile::rename(part, path) ? path : QString();
}
