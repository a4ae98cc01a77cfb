// SPDX-License-Identifier: Apache-2.0
//
// asks_size PICTURE
//
// Writes a picture there and prints its size as the library reads it, after a call that needs no
// picture.
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>

#include <QtGui/QImage>

#include <cstdio>

int main(int argc, char** argv)
{
    const QString path = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    if (OSUtils::generateUuid().isEmpty() || !QImage(6, 4, QImage::Format_RGB32).save(path))
        return 1;
    const QSize size = NImageUtils::imageSize(path);
    std::printf("%d x %d\n", size.width(), size.height());
    return 0;
}
