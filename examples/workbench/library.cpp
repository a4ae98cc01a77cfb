// SPDX-License-Identifier: Apache-2.0
#include "library.h"

#include "croparea.h"
#include "messages.h"

#include <imageutils/cvutils.h>
#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QColorSpace>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

double radiansOf(double degrees) { return degrees * std::numbers::pi / 180.0; }

} // namespace

QString Library::monitorColorSpace()
{
    const Messages::Collector collector; // a monitor without a profile is no fault
    const QColorSpace space = OSUtils::getMonitorColorSpace();
    return space.isValid() ? space.description() : QString();
}

double Library::filterWeight(double b, double c, double distance)
{
    const double t = std::abs(distance);
    if (t < 1)
        return ((12 - 9 * b - 6 * c) * t * t * t + (-18 + 12 * b + 6 * c) * t * t + 6 - 2 * b) / 6;
    if (t < 2)
        return ((-b - 6 * c) * t * t * t + (6 * b + 30 * c) * t * t + (-12 * b - 48 * c) * t +
                8 * b + 24 * c) /
               6;
    return 0;
}

QRectF Library::largestCrop(QSizeF pixels, double degrees)
{
    return CropArea::largest(pixels.toSize(), degrees);
}

double Library::cropAngle(QRectF crop, double degrees)
{
    return double(CvUtils::getRotatedRect(crop.toRect(), radiansOf(degrees)).angle) - 360;
}

bool Library::canCrop(QSizeF pixels, QRectF crop, double degrees)
{
    return CropArea::isWithin(pixels.toSize(), crop.toRect(), degrees);
}

QRectF Library::nearestCrop(QSizeF pixels, QRectF from, QRectF to, double degrees)
{
    return CropArea::nearest(pixels.toSize(), from.toRect(), to.toRect(), degrees);
}

QStringList Library::otherCopiedFiles(const QStringList& paths)
{
    QStringList files;
    const QMimeData* const copied = QGuiApplication::clipboard()->mimeData();
    const QList<QUrl> urls = copied ? copied->urls() : QList<QUrl>();
    for (const QUrl& url : urls)
        if (url.isLocalFile() && !paths.contains(url.toLocalFile()))
            files.append(url.toLocalFile());
    return files;
}

QString Library::pathOf(const QUrl& url) { return url.toLocalFile(); }
