// SPDX-License-Identifier: Apache-2.0
//
// A program that links what the library's headers need, Qt's modules and OpenCV's core, but not the
// library.
#include <QtGui/QColor>
#include <QtQml/QJSValue>

#include <opencv2/core.hpp>

int main()
{
    return QColor::colorNames().isEmpty() || !QJSValue(1).isNumber() || cv::getTickCount() < 0;
}
