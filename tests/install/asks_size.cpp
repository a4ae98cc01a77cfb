// SPDX-License-Identifier: Apache-2.0
//
// asks_size PICTURE [turn]
//
// Writes a picture there and prints the size that the library finds, after a question that needs no
// picture; then, if so told, the size of a turned part of a picture.
#include <imageutils/cvutils.h>
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
    if (argc > 2) {
        const cv::RotatedRect part({4, 4}, {3, 2}, 45);
        const cv::Mat turned = CvUtils::applyRotation(cv::Mat(9, 9, CV_32FC3, 0.5), part);
        std::printf("%d x %d\n", turned.cols, turned.rows);
    }
    return 0;
}
