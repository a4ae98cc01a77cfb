// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>
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

    /// What is left of a picture of `pixels` that is turned by `degrees` and cropped to its shape,
    /// in the pixels of the picture, before it is turned about its centre by `cropAngle`.
    Q_INVOKABLE static QRectF cropOf(QSizeF pixels, double degrees);

    /// How far the crop stands turned in the picture, in degrees clockwise.
    Q_INVOKABLE static double cropAngle(QSizeF pixels, double degrees);

    /// Whether the turned crop lies within the picture; false for one that is too small.
    Q_INVOKABLE static bool canCrop(QSizeF pixels, double degrees);

    /// The local path of `url`.
    Q_INVOKABLE static QString pathOf(const QUrl& url);
};
