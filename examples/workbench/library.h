// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>

/// Answers of the library that QML cannot ask for by itself.
class Library : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The name of the colour space of the monitor that the window is on.
    Q_INVOKABLE static QString monitorColorSpace();

    /// How wide a brush of the setting `brushSize` is on a picture of `size` pixels, as a part of
    /// the picture's width; 0 for an empty picture.
    Q_INVOKABLE static double brushShare(double brushSize, QSizeF size);
};
