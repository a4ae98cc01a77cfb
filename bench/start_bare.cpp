// SPDX-License-Identifier: Apache-2.0
//
// A program that loads Qt and OpenCV's core and ends: what starting costs without the library.
#include <QtGui/QImage>
#include <QtQml/QQmlEngine>

#include <opencv2/core.hpp>

int main()
{
    // Something of each, so that the linker keeps it.
    return QImage(1, 1, QImage::Format_RGB32).isNull() || cv::Mat(1, 1, CV_8U).empty() ||
           QQmlEngine::contextForObject(nullptr) != nullptr;
}
