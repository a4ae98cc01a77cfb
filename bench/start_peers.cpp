// SPDX-License-Identifier: Apache-2.0
//
// A program with what the library's headers show: Qt's modules and OpenCV's core, without the
// library.
#include <QtGui/QGuiApplication>
#include <QtQml/qqml.h>

#include <opencv2/core.hpp>

int main()
{
    return QGuiApplication::platformName().size() < 0 || cv::getTickCount() < 0 ||
           qmlTypeId("none", 1, 0, "None") >= 0;
}
