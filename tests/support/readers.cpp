// SPDX-License-Identifier: Apache-2.0
//
// readers PATH: prints the size of the picture by `imageSize`, then that of its metadata record.
#include <imageutils/imageutils.h>
#include <metadatareader/metadatareader.h>

#include <QtCore/QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const QString path = QFile::decodeName(argv[1]);
    const QSize size = NImageUtils::imageSize(path);
    const NExifToolMetadata record = readMetadata(path);
    std::printf("%d x %d, %d x %d\n", size.width(), size.height(), record.imageWidth(),
                record.imageHeight());
    return 0;
}
