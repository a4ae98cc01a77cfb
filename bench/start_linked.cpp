// SPDX-License-Identifier: Apache-2.0
//
// The program of start_bare.cpp with the library, of which it asks something small.
#include <imageutils/osutils.h>

#include <QtGui/QImage>
#include <QtQml/QQmlEngine>

#include <opencv2/core.hpp>

int main()
{
    return QImage(1, 1, QImage::Format_RGB32).isNull() || cv::Mat(1, 1, CV_8U).empty() ||
           QQmlEngine::contextForObject(nullptr) != nullptr || OSUtils::generateUuid().isEmpty();
}
