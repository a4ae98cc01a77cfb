// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

/// Answers of the library that QML cannot ask for by itself.
class Library : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The name of the colour space of the monitor that the window is on; empty where the monitor
    /// tells none that Qt can use.
    Q_INVOKABLE static QString monitorColorSpace();

    /// The weight that the cubic filter with the parameters `b` and `c` gives to a sample that is
    /// `distance` samples away.
    Q_INVOKABLE static double filterWeight(double b, double c, double distance);

    /// The largest crop of a picture of `pixels` that is turned by `degrees`; croparea.h describes
    /// crops.
    Q_INVOKABLE static QRectF largestCrop(QSizeF pixels, double degrees);

    /// How far `crop` stands turned in the picture, in degrees clockwise.
    Q_INVOKABLE static double cropAngle(QRectF crop, double degrees);

    /// Whether the turned crop lies within the picture; false for one that is too small.
    Q_INVOKABLE static bool canCrop(QSizeF pixels, QRectF crop, double degrees);

    /// The crop nearest to `to` that lies within the picture, on the way from the crop `from`.
    Q_INVOKABLE static QRectF nearestCrop(QSizeF pixels, QRectF from, QRectF to, double degrees);

    /// The files on the clipboard that are not among `paths`.
    Q_INVOKABLE static QStringList otherCopiedFiles(const QStringList& paths);

    /// The local path of `url`.
    Q_INVOKABLE static QString pathOf(const QUrl& url);
};
